#include "app/ApplicationShell.h"

#include "app/AboutController.h"
#include "app/MainMenu.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "platform/CompanionChannel.h"
#include "settings/PrefsController.h"
#include "widgets/ProgressBar.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

QByteArray companionStatusLine(const AppController &c)
{
    const QString title = c.buttonPerform ? c.buttonPerform->text() : QString();
    if (title != AppController::tr("Stop") && title != QLatin1String("Stop"))
        return CompanionChannel::idleMessage();
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

ApplicationShell::~ApplicationShell()
{
    // The controllers point into the window; they go first.
    delete m_menu;
    delete m_delegate;
    delete m_controller;
    delete m_publisher;
}

void ApplicationShell::start()
{
    ZELMORHelperAppDelegate::initialize();

    m_window = std::make_unique<MainWindow>();
    m_controller = new AppController(m_window.get());
    m_delegate = new ZELMORHelperAppDelegate(m_window.get());
    m_menu = new MainMenu(m_window.get(), m_controller);
    m_menu->terminate = [this] { m_delegate->terminate(); };
    m_controller->openPreferencesWindow = [this] {
        if (!m_prefs)
            m_prefs = new PrefsController(m_window.get(), m_controller);
        m_prefs->showWindow();
    };
    m_controller->openAboutWindow = [this] {
        if (!m_about)
            m_about = new AboutController(m_window.get(), m_controller);
        m_about->showWindow(m_controller);
        m_about->timeToload();
    };

    m_publisher = new CompanionStatusPublisher(statusbarAppIdentifier());
    connect(m_controller, &AppController::progressChanged, m_publisher,
            [this] { m_publisher->publish(companionStatusLine(*m_controller)); });

    m_controller->awakeFromNib();
    m_delegate->awakeFromNib();
    m_window->show();
    m_delegate->applicationDidFinishLaunching();

    connect(qApp, &QCoreApplication::aboutToQuit, m_delegate,
            &ZELMORHelperAppDelegate::applicationWillTerminate);
    QApplication::setQuitOnLastWindowClosed(
        m_delegate->applicationShouldTerminateAfterLastWindowClosed());
}
