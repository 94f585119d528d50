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

    // Defaults, main window, titles, first-launch sheets; termination is
    // hooked to the application's end. Call once, with the application
    // object made.
    void start();
    // Another start of the application asked for this one: the main window
    // comes forward, restored if it was minimized.
    void bringToFront();

    MainWindow *window() const { return m_window.get(); }
    AppController *controller() const { return m_controller; }
    ZELMORHelperAppDelegate *delegate() const { return m_delegate; }
    MainMenu *menu() const { return m_menu; }
    // Made on the first request from the menus, then shown again.
    PrefsController *prefsController() const { return m_prefs; }
    AboutController *aboutController() const { return m_about; }

private:
    std::unique_ptr<MainWindow> m_window;
    AppController *m_controller = nullptr;
    ZELMORHelperAppDelegate *m_delegate = nullptr;
    MainMenu *m_menu = nullptr;
    CompanionStatusPublisher *m_publisher = nullptr;
    DesktopNotifier *m_notifier = nullptr;
    PrefsController *m_prefs = nullptr;
    AboutController *m_about = nullptr;
};
