#include "widgets/Spinner.h"

#include "widgets/AccessibleRoles.h"

#include <QAccessible>
#include <QPainter>

namespace {
constexpr int Spokes = 12;
constexpr int StepMs = 80; // one turn a second, roughly
} // namespace

namespace {
// A screen reader says "busy" while the spinner turns.
void announceBusy(Spinner *spinner)
{
    QAccessible::State changed;
    changed.busy = true;
    QAccessibleStateChangeEvent event(spinner, changed);
    QAccessible::updateAccessibility(&event);
}
} // namespace

Spinner::Spinner(QWidget *parent) : QWidget(parent)
{
    AccessibleRoles::install();
    setFixedSize(16, 16);
    m_timer.setInterval(StepMs);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % Spokes;
        update();
    });
}

void Spinner::startAnimation()
{
    if (m_animating)
        return;
    m_animating = true;
    m_timer.start();
    update();
    announceBusy(this);
}

void Spinner::stopAnimation()
{
    if (!m_animating)
        return;
    m_animating = false;
    m_timer.stop();
    update();
    announceBusy(this);
}

void Spinner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    const qreal radius = qMin(width(), height()) / 2.0;
    QColor color = palette().color(QPalette::WindowText);
    QPen pen(color, qMax<qreal>(1.5, radius / 5.0), Qt::SolidLine, Qt::RoundCap);
    for (int spoke = 0; spoke < Spokes; ++spoke) {
        // The leading spoke is darkest; the others fade behind it.
        const int age = (m_step - spoke + Spokes) % Spokes;
        color.setAlphaF(m_animating ? 1.0 - age / static_cast<qreal>(Spokes) : 0.2);
        pen.setColor(color);
        painter.setPen(pen);
        painter.save();
        painter.rotate(spoke * 360.0 / Spokes);
        painter.drawLine(QPointF(0, -radius * 0.45), QPointF(0, -radius * 0.9));
        painter.restore();
    }
}
