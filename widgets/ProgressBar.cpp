#include "widgets/ProgressBar.h"

#include <climits>

namespace {
int toInt(double value)
{
    return static_cast<int>(qBound<double>(INT_MIN, value, INT_MAX));
}
} // namespace

ProgressBar::ProgressBar(QWidget *parent) : QProgressBar(parent)
{
    apply();
}

void ProgressBar::setIndeterminate(bool indeterminate)
{
    m_indeterminate = indeterminate;
    apply();
}

void ProgressBar::startAnimation()
{
    m_animating = true;
    apply();
}

void ProgressBar::stopAnimation()
{
    m_animating = false;
    apply();
}

void ProgressBar::setMinValue(double value)
{
    m_min = value;
    apply();
}

void ProgressBar::setMaxValue(double value)
{
    m_max = value;
    apply();
}

void ProgressBar::setDoubleValue(double value)
{
    m_value = value;
    apply();
}

void ProgressBar::apply()
{
    if (m_indeterminate) {
        // QProgressBar animates a zero range by itself; a stopped
        // indeterminate bar shows as empty.
        if (m_animating) {
            setRange(0, 0);
        } else {
            setRange(0, 1);
            setValue(0);
        }
        return;
    }
    if (m_max <= m_min) {
        // An empty range would make QProgressBar show its busy animation; a
        // determinate bar with nothing to count is simply empty.
        setRange(0, 1);
        setValue(0);
        return;
    }
    setRange(toInt(m_min), toInt(m_max));
    setValue(toInt(qBound(m_min, m_value, m_max)));
}
