#include "widgets/FirstFrame.h"

#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace {

// Long enough for any start to show its window, short enough that the work
// still comes while the user looks at the window.
constexpr int kGraceMs = 2000;

class FirstFrameWatch : public QObject
{
public:
    FirstFrameWatch(QWidget *window, std::function<void()> work)
        : QObject(window), m_window(window), m_work(std::move(work))
    {
        window->installEventFilter(this);
        watchHandle();
        QTimer::singleShot(kGraceMs, this, &FirstFrameWatch::run);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // The native window exists from the first show on.
        if (watched == m_window && event->type() == QEvent::Show)
            watchHandle();
        // The window paints while it handles its expose; the work comes in
        // the next turn of the loop, once the frame went out.
        if (watched == m_handle && event->type() == QEvent::Expose && m_handle->isExposed())
            QTimer::singleShot(0, this, &FirstFrameWatch::run);
        return false;
    }

private:
    void watchHandle()
    {
        QWindow *handle = m_window->windowHandle();
        if (!handle || handle == m_handle)
            return;
        m_handle = handle;
        handle->installEventFilter(this);
    }
    void run()
    {
        if (!m_work)
            return;
        const std::function<void()> work = std::move(m_work);
        m_work = nullptr;
        deleteLater();
        work();
    }

    QWidget *m_window;
    QPointer<QWindow> m_handle;
    std::function<void()> m_work;
};

} // namespace

void afterFirstFrame(QWidget *window, std::function<void()> work)
{
    if (!window || (window->windowHandle() && window->windowHandle()->isExposed())) {
        work();
        return;
    }
    new FirstFrameWatch(window, std::move(work));
}
