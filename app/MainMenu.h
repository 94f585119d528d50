#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>

class AppController;
class ConsoleFindBar;
class MainWindow;
class QAction;
class QPlainTextEdit;
class QWidget;

// Gives the menu bar of the main window its actions: the controller's
// actions, the console's copying and finding, and the window-system actions
// of the application and Window menus. Titles are the delegate's business.
class MainMenu : public QObject
{
    Q_OBJECT

public:
    MainMenu(MainWindow *window, AppController *controller, QObject *parent = nullptr);

    // Made on first use: most runs never search, and a start that builds it
    // shows its window later.
    ConsoleFindBar *findBar();

    // What Quit does; the application's plain quit when empty.
    std::function<void()> terminate;

    // Application menu. Hiding minimises: on window systems without a hidden
    // state that is the one way the user can still bring the windows back.
    void hideApplication();
    void hideOtherApplications();
    void unhideAllApplications();

    // Edit menu: the focused text control, or the console when the focus is
    // elsewhere.
    void copy();
    void selectAll();

    // Window menu, acting on the active window of the application.
    void performMiniaturize();
    void performZoom();
    void arrangeInFront();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *keyWindow() const;
    QWidget *textTarget() const;

    MainWindow *m_window;
    QPlainTextEdit *m_console = nullptr;
    ConsoleFindBar *m_findBar = nullptr;
    QPointer<QAction> m_quit;
    QList<QPointer<QWidget>> m_hidden;
};
