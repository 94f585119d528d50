#pragma once

#include <QWidget>

// The busy indicator: turns while animating, stands still otherwise.
class Spinner : public QWidget
{
    Q_OBJECT

public:
    explicit Spinner(QWidget *parent = nullptr);

    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return m_animating; }

private:
    bool m_animating = false;
};
