#pragma once

#include <QByteArray>
#include <QObject>

#include <memory>

class AboutController;
class AppController;
class CompanionStatusPublisher;
class DesktopNotifier;
class MainMenu;
class MainWindow;
class PrefsController;
class ZELMORHelperAppDelegate;

// What the status-bar companion is told about the controller's state: the
// running operation with its bar and speed while the button reads "Stop",
// idle otherwise.
QByteArray companionStatusLine(const AppController &controller);

// The running application: the main window with its controller, menus and
// delegate, in the order the application starts them.
class ApplicationShell : public QObject
{
    Q_OBJECT

public:
    ApplicationShell();
    ~ApplicationShell() override;

    // Defaults, main window and titles, then the window shows; termination
    // is hooked to the application's end. What the first frame does not
    // need (the window icon, the finished launch with its settings writes
    // and first-launch sheets) follows on the event loop's first turn,
    // signalled by launchFinished(). Call once, with the application object
    // made.
    void start();
    // Another start of the application asked for this one: the main window
    // comes forward, restored if it was minimized.
    void bringToFront();

    MainWindow *window() const { return m_window.get(); }
    AppController *controller() const { return m_controller.get(); }
    ZELMORHelperAppDelegate *delegate() const { return m_delegate.get(); }
    MainMenu *menu() const { return m_menu.get(); }
    // Made on the first request from the menus, then shown again; children
    // of the controller, which ends them.
    PrefsController *prefsController() const { return m_prefs; }
    AboutController *aboutController() const { return m_about; }

signals:
    void launchFinished();

private:
    void finishLaunching();

    // Ended in the reverse order: the controllers, which point into the
    // window, before the window.
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<DesktopNotifier> m_notifier;
    std::unique_ptr<CompanionStatusPublisher> m_publisher;
    std::unique_ptr<AppController> m_controller;
    std::unique_ptr<ZELMORHelperAppDelegate> m_delegate;
    std::unique_ptr<MainMenu> m_menu;
    PrefsController *m_prefs = nullptr;
    AboutController *m_about = nullptr;
};
