#include "app/ApplicationShell.h"

#include "app/AboutController.h"
#include "app/MainMenu.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "platform/AppIcons.h"
#include "platform/CompanionChannel.h"
#include "platform/DesktopNotifier.h"
#include "settings/PrefsController.h"
#include "widgets/ProgressBar.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

QByteArray companionStatusLine(const AppController &c)
{
    const QString title = c.buttonPerform ? c.buttonPerform->text() : QString();
    if (title != AppController::tr("Stop") && title != QLatin1String("Stop")) {
        // Until the user closes the message bar or starts again.
        if (c.problem)
            return CompanionChannel::problemMessage(operationName(c.problemTag),
                                                    c.problem->sentence);
        return CompanionChannel::idleMessage();
    }
    const QString operation = c.popupSelection ? c.popupSelection->currentText() : QString();
    int value = 0;
    int maximum = 0;
    // An indeterminate bar has no figure to show.
    if (c.progressbar && !c.progressbar->isIndeterminate()) {
        value = qRound(c.progressbar->doubleValue());
        maximum = qRound(c.progressbar->maxValue());
    }
    const QString label = c.showSpeed ? c.showSpeed->text() : QString();
    return CompanionChannel::statusMessage(operation, value, maximum, label);
}

ApplicationShell::ApplicationShell() = default;

ApplicationShell::~ApplicationShell() = default;

void ApplicationShell::start()
{
    ZELMORHelperAppDelegate::initialize();
    // The desktop matches the windows to its entry, and so to its icon.
    QGuiApplication::setDesktopFileName(QLatin1String(AppIcons::ApplicationId));

    m_window = std::make_unique<MainWindow>();
    m_controller = std::make_unique<AppController>(m_window.get());
    m_delegate = std::make_unique<ZELMORHelperAppDelegate>(m_window.get());
    m_menu = std::make_unique<MainMenu>(m_window.get(), m_controller.get());
    m_menu->terminate = [this] { m_delegate->terminate(); };
    m_controller->openPreferencesWindow = [this] {
        if (!m_prefs)
            m_prefs = new PrefsController(m_window.get(), m_controller.get());
        m_prefs->showWindow();
    };
    // The message bar's way out of a folder the user may not write: the
    // preferences, with the folder's chooser open.
    const auto chooseFolder = [this](void (PrefsController::*chooser)()) {
        return [this, chooser] {
            m_controller->openPreferencesWindow();
            (m_prefs->*chooser)();
        };
    };
    m_controller->chooseWorkspaceFolder = chooseFolder(&PrefsController::browserRoot);
    m_controller->chooseOutputFolder = chooseFolder(&PrefsController::browserOutput);
    m_controller->openAboutWindow = [this] {
        if (!m_about)
            m_about = new AboutController(m_window.get(), m_controller.get());
        m_about->showWindow(m_controller.get());
        m_about->timeToload();
    };

    m_publisher = std::make_unique<CompanionStatusPublisher>(statusbarAppIdentifier());
    connect(m_controller.get(), &AppController::progressChanged, m_publisher.get(),
            [this] { m_publisher->publish(companionStatusLine(*m_controller)); });

    // A user who is not at the window learns that the operation has ended.
    m_notifier = std::make_unique<DesktopNotifier>(tr("ZELMOR Helper"),
                                                   QLatin1String(AppIcons::ApplicationId));
    connect(m_controller.get(), &AppController::operationEnded, m_notifier.get(),
            [this](int tag, OperationEnd end) {
                // An end with a problem was told as such just before.
                if (m_window->isActiveWindow() || m_controller->lastEndHadProblem)
                    return;
                const OperationNotice notice = operationNotice(tag, end);
                m_notifier->notify(notice.summary, notice.body);
            });
    connect(m_controller.get(), &AppController::problemReported, m_notifier.get(),
            [this](int tag) {
                if (m_window->isActiveWindow() || !m_controller->problem)
                    return;
                const OperationNotice notice =
                    problemNotice(tag, m_controller->problem->sentence);
                m_notifier->notify(notice.summary, notice.body);
            });

    m_controller->awakeFromNib();
    m_delegate->awakeFromNib();
    m_window->show();

    connect(qApp, &QCoreApplication::aboutToQuit, m_delegate.get(),
            &ZELMORHelperAppDelegate::applicationWillTerminate);
    QApplication::setQuitOnLastWindowClosed(
        m_delegate->applicationShouldTerminateAfterLastWindowClosed());
    // A launch has finished once the event loop runs, as on the platforms
    // that announce it; by then the window system has the window to map.
    QTimer::singleShot(0, this, &ApplicationShell::finishLaunching);
}

void ApplicationShell::finishLaunching()
{
    // Every window, the about window's picture included, shows the
    // application's icon; decoding its sizes need not hold up the first frame.
    QApplication::setWindowIcon(AppIcons::application());
    m_delegate->applicationDidFinishLaunching();
    emit launchFinished();
}

void ApplicationShell::bringToFront()
{
    if (!m_window)
        return;
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}
