#pragma once

#include <QFrame>
#include <QPointer>
#include <QRect>

// A small transient bubble that points at a control: it opens beside an
// anchor, never takes the keyboard from the window below, and closes on the
// next click elsewhere, on Escape, or when the anchor's window goes away.
//
// It is declared in interface files as a child of the window it belongs to
// (outside that window's layout); being a tool window of its own, it stays
// hidden until shown.
class Popover : public QFrame
{
    Q_OBJECT

public:
    // Edge numbers as the rest of the application knows them: 0 left of the
    // anchor, 1 below, 2 right, 3 above.
    enum Edge { MinXEdge = 0, MinYEdge = 1, MaxXEdge = 2, MaxYEdge = 3 };

    explicit Popover(QWidget *parent = nullptr);

    // Shows the popover beside rect (in view's coordinates) on the given
    // edge. Without a view, or with one whose window is hidden, there is
    // nothing to point at: only shown() is emitted, so the request is still
    // observable.
    void showRelativeToRect(const QRect &rect, QWidget *view, Edge preferredEdge);
    void close();

    bool isShown() const { return isVisible(); }
    QWidget *positioningView() const { return m_view; }
    Edge edge() const { return m_edge; }

signals:
    // Every request to show, including repeated ones.
    void shown();
    // A click on the popover's content.
    void clicked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QPointer<QWidget> m_view;
    Edge m_edge = MaxYEdge;
    bool m_filtering = false;
};

// Where a popover of the given size goes beside anchor (both in global
// coordinates): its near side touches the anchor's edge with a small gap, and
// it is centred along that edge.
QRect popoverGeometry(const QRect &anchor, const QSize &size, Popover::Edge edge);
