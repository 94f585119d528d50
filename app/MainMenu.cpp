#include "app/MainMenu.h"

#include "ui_MainWindow.h"
#include "widgets/ConsoleFindBar.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QLineEdit>
#include <QTextEdit>

namespace {

// The platform's own key for an item where it has one; the interface file's
// otherwise.
void usePlatformShortcut(QAction *action, QKeySequence::StandardKey key)
{
    const QList<QKeySequence> keys = QKeySequence::keyBindings(key);
    if (!keys.isEmpty())
        action->setShortcuts(keys);
}

bool isUserWindow(const QWidget *w)
{
    const Qt::WindowType type = w->windowType();
    return w->isWindow() && type != Qt::Popup && type != Qt::ToolTip && type != Qt::Tool
           && type != Qt::Desktop;
}

} // namespace

MainMenu::MainMenu(MainWindow *window, AppController *controller, QObject *parent)
    : QObject(parent), m_window(window)
{
    Ui::MainWindow *ui = window->ui();
    m_console = ui->outputField;

    usePlatformShortcut(ui->menuPrefs, QKeySequence::Preferences);
    usePlatformShortcut(ui->menuQuit, QKeySequence::Quit);
    usePlatformShortcut(ui->menuCopy, QKeySequence::Copy);
    usePlatformShortcut(ui->menuSelectAll, QKeySequence::SelectAll);
    usePlatformShortcut(ui->menuFind, QKeySequence::Find);
    usePlatformShortcut(ui->menuFindNext, QKeySequence::FindNext);
    usePlatformShortcut(ui->menuFindPre, QKeySequence::FindPrevious);

    connect(ui->menuAbout, &QAction::triggered, controller, &AppController::aboutApp);
    connect(ui->menuRelaunchHelper, &QAction::triggered, controller, &AppController::restartAPP);
    connect(ui->menuLaunchStatus, &QAction::triggered, controller, &AppController::startStatusApp);
    connect(ui->menuInstallCompo, &QAction::triggered, controller,
            &AppController::showInstallComponents);
    connect(ui->menuPrefs, &QAction::triggered, controller, &AppController::showPrefs);
    connect(ui->menuHideHelper, &QAction::triggered, this, &MainMenu::hideApplication);
    connect(ui->menuHideOthers, &QAction::triggered, this, &MainMenu::hideOtherApplications);
    connect(ui->menuShowAll, &QAction::triggered, this, &MainMenu::unhideAllApplications);
    connect(ui->menuQuit, &QAction::triggered, this, [this] {
        if (terminate)
            terminate();
        else
            QCoreApplication::quit();
    }, Qt::QueuedConnection);

    connect(ui->menuCopy, &QAction::triggered, this, &MainMenu::copy);
    connect(ui->menuSelectAll, &QAction::triggered, this, &MainMenu::selectAll);
    // Quitting, the preferences and finding answer their keys in every window
    // of the application; the modal ones (sheets, alerts, choosers) carry
    // Quit themselves, since a window they block cannot answer for them.
    for (QAction *everywhere : {ui->menuQuit, ui->menuPrefs, ui->menuFind})
        everywhere->setShortcutContext(Qt::ApplicationShortcut);
    m_quit = ui->menuQuit;
    qApp->installEventFilter(this);

    connect(ui->menuFind, &QAction::triggered, this, [this] {
        // From another window, the search goes to the main window's console.
        if (m_window && QApplication::activeWindow() != m_window) {
            m_window->raise();
            m_window->activateWindow();
        }
        findBar()->showFindBar();
    });
    connect(ui->menuFindNext, &QAction::triggered, this, [this] { findBar()->findNext(); });
    connect(ui->menuFindPre, &QAction::triggered, this, [this] { findBar()->findPrevious(); });
    connect(ui->menuFindSelect, &QAction::triggered, this,
            [this] { findBar()->useSelectionForFind(); });
    connect(ui->menuJump, &QAction::triggered, this, [this] { findBar()->jumpToSelection(); });

    connect(ui->menuMini, &QAction::triggered, this, &MainMenu::performMiniaturize);
    connect(ui->menuZoom, &QAction::triggered, this, &MainMenu::performZoom);
    connect(ui->menuFront, &QAction::triggered, this, &MainMenu::arrangeInFront);

#ifndef Q_OS_MACOS
    // No window system here lets one application hide the others.
    ui->menuHideOthers->setEnabled(false);
#endif
}

ConsoleFindBar *MainMenu::findBar()
{
    if (m_findBar)
        return m_findBar;
    // The find bar sits right under the console it searches.
    m_findBar = new ConsoleFindBar(m_console, m_window);
    QWidget *central = m_window->centralWidget();
    auto *box = central ? qobject_cast<QBoxLayout *>(central->layout()) : nullptr;
    if (box && box->indexOf(m_console) >= 0)
        box->insertWidget(box->indexOf(m_console) + 1, m_findBar);
    else if (central && central->layout())
        central->layout()->addWidget(m_findBar);
    return m_findBar;
}

bool MainMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && m_quit) {
        auto *dialog = qobject_cast<QDialog *>(watched);
        if (dialog && dialog->isWindow() && !dialog->actions().contains(m_quit))
            dialog->addAction(m_quit);
    }
    return QObject::eventFilter(watched, event);
}

void MainMenu::hideApplication()
{
    m_hidden.clear();
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (isUserWindow(w) && w->isVisible() && !w->isMinimized()) {
            m_hidden.append(w);
            w->showMinimized();
        }
    }
}

void MainMenu::hideOtherApplications()
{
}

void MainMenu::unhideAllApplications()
{
    for (const QPointer<QWidget> &w : std::as_const(m_hidden)) {
        if (w && w->isMinimized()) {
            w->setWindowState(w->windowState() & ~Qt::WindowMinimized);
            w->show();
        }
    }
    m_hidden.clear();
    if (m_window)
        m_window->activateWindow();
}

QWidget *MainMenu::textTarget() const
{
    QWidget *focus = QApplication::focusWidget();
    if (qobject_cast<QLineEdit *>(focus) || qobject_cast<QTextEdit *>(focus)
        || qobject_cast<QPlainTextEdit *>(focus))
        return focus;
    return m_console;
}

void MainMenu::copy()
{
    if (QWidget *target = textTarget())
        QMetaObject::invokeMethod(target, "copy");
}

void MainMenu::selectAll()
{
    if (QWidget *target = textTarget())
        QMetaObject::invokeMethod(target, "selectAll");
}

QWidget *MainMenu::keyWindow() const
{
    QWidget *active = QApplication::activeWindow();
    return active ? active : m_window;
}

void MainMenu::performMiniaturize()
{
    if (QWidget *w = keyWindow())
        w->showMinimized();
}

void MainMenu::performZoom()
{
    QWidget *w = keyWindow();
    if (!w)
        return;
    if (w->isMaximized())
        w->showNormal();
    else
        w->showMaximized();
}

void MainMenu::arrangeInFront()
{
    QWidget *key = keyWindow();
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (isUserWindow(w) && w->isVisible() && w != key)
            w->raise();
    }
    // The window the user works in stays on top of the others.
    if (key) {
        key->raise();
        key->activateWindow();
    }
}
