#include "widgets/Popover.h"

#include "widgets/AccessibleRoles.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>

namespace {
constexpr int Gap = 4;

Popover::Edge oppositeEdge(Popover::Edge edge)
{
    switch (edge) {
    case Popover::MinXEdge:
        return Popover::MaxXEdge;
    case Popover::MaxXEdge:
        return Popover::MinXEdge;
    case Popover::MinYEdge:
        return Popover::MaxYEdge;
    case Popover::MaxYEdge:
        break;
    }
    return Popover::MinYEdge;
}
} // namespace

QRect popoverGeometry(const QRect &anchor, const QSize &size, Popover::Edge edge)
{
    QRect r(QPoint(0, 0), size);
    switch (edge) {
    case Popover::MinXEdge:
        r.moveTopRight(QPoint(anchor.left() - Gap - 1, anchor.center().y() - size.height() / 2));
        break;
    case Popover::MaxXEdge:
        r.moveTopLeft(QPoint(anchor.right() + Gap + 1, anchor.center().y() - size.height() / 2));
        break;
    case Popover::MinYEdge:
        r.moveTopLeft(QPoint(anchor.center().x() - size.width() / 2, anchor.bottom() + Gap + 1));
        break;
    case Popover::MaxYEdge:
        r.moveBottomLeft(QPoint(anchor.center().x() - size.width() / 2, anchor.top() - Gap - 1));
        break;
    }
    return r;
}

Popover::Popover(QWidget *parent) : QFrame(parent)
{
    AccessibleRoles::install();
    // A tool window keeps it above its parent without a taskbar entry, and
    // not activating it leaves the keyboard with the sheet below.
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    hide();
}

void Popover::showRelativeToRect(const QRect &rect, QWidget *view, Edge preferredEdge)
{
    m_edge = preferredEdge;
    m_view = view;
    emit shown();
    // A bubble pointing into a window nobody sees would float on its own.
    if (!view || !view->window()->isVisible())
        return;

    adjustSize();
    const QRect anchor(view->mapToGlobal(rect.topLeft()), rect.size());
    QRect target = popoverGeometry(anchor, size(), preferredEdge);
    if (QScreen *screen = view->screen()) {
        const QRect avail = screen->availableGeometry();
        // Without room on the preferred side the popover turns to the
        // opposite one, then slides along the screen's edge to fit.
        if (avail.isValid() && !avail.contains(target)) {
            const QRect opposite = popoverGeometry(anchor, size(), oppositeEdge(preferredEdge));
            if (avail.contains(opposite))
                target = opposite;
        }
        if (avail.isValid() && target.width() <= avail.width() && target.height() <= avail.height()) {
            target.moveLeft(std::clamp(target.left(), avail.left(), avail.right() - target.width() + 1));
            target.moveTop(std::clamp(target.top(), avail.top(), avail.bottom() - target.height() + 1));
        }
    }
    move(target.topLeft());
    show();
    raise();

    if (!m_filtering) {
        // Any click elsewhere in the application closes a transient popover,
        // as does hiding the window it points into.
        qApp->installEventFilter(this);
        m_filtering = true;
    }
}

void Popover::close()
{
    hide();
}

bool Popover::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        auto *widget = qobject_cast<QWidget *>(watched);
        if (widget && widget->window() != this)
            hide();
    } else if (event->type() == QEvent::Hide && m_view && watched == m_view->window()) {
        hide();
    } else if (event->type() == QEvent::ShortcutOverride
               && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && isVisible()) {
        // Claimed before any window's Escape shortcut can take it.
        event->accept();
        return true;
    } else if (event->type() == QEvent::KeyPress
               && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && isVisible()) {
        // Escape first closes the popover, not the sheet beneath it.
        hide();
        return true;
    }
    return false;
}

void Popover::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        hide();
        return;
    }
    QFrame::keyPressEvent(event);
}

void Popover::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
    QFrame::mouseReleaseEvent(event);
}

void Popover::hideEvent(QHideEvent *event)
{
    if (m_filtering) {
        qApp->removeEventFilter(this);
        m_filtering = false;
    }
    QFrame::hideEvent(event);
}
