#pragma once

#include <QProgressBar>

// A bar with a minimum, a maximum, a value, an indeterminate mode and an
// animation that can be stopped while indeterminate.
class ProgressBar : public QProgressBar
{
    Q_OBJECT

public:
    explicit ProgressBar(QWidget *parent = nullptr);

    void setIndeterminate(bool indeterminate);
    bool isIndeterminate() const { return m_indeterminate; }
    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return m_animating; }
    void setMinValue(double value);
    void setMaxValue(double value);
    void setDoubleValue(double value);
    double minValue() const { return m_min; }
    double maxValue() const { return m_max; }
    double doubleValue() const { return m_value; }

private:
    void apply();

    bool m_indeterminate = true;
    bool m_animating = false;
    double m_min = 0;
    double m_max = 100;
    double m_value = 0;
};
