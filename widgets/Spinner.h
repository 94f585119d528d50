#pragma once

#include <QTimer>
#include <QWidget>

// The busy indicator: turns while animating, stands still otherwise. It stays
// on screen when stopped, drawn faintly, so the layout never jumps.
class Spinner : public QWidget
{
    Q_OBJECT

public:
    explicit Spinner(QWidget *parent = nullptr);

    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return m_animating; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_animating = false;
    int m_step = 0;
    QTimer m_timer;
};
