#include "ControllerHarness.h"

#include "app/AboutController.h"
#include "app/ApplicationShell.h"
#include "app/MainMenu.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "platform/Bundle.h"
#include "platform/CompanionChannel.h"
#include "platform/Relaunch.h"
#include "settings/PrefsController.h"
#include "ui_MainWindow.h"
#include "widgets/ConsoleFindBar.h"
#include "widgets/FolderChoice.h"
#include "widgets/Popover.h"
#include "workflow/AppController.h"
#include "workflow/OperationNotice.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QDBusConnection>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

using namespace TestSupport;

namespace {

// Stands in for the desktop's notification service on the test's own bus.
class FakeNotifications : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QList<QStringList> calls; // application, icon, summary, body, desktop entry

public slots:
    uint Notify(const QString &application, uint, const QString &icon, const QString &summary,
                const QString &body, const QStringList &, const QVariantMap &hints, int)
    {
        calls.append({application, icon, summary, body, hints.value("desktop-entry").toString()});
        return uint(calls.size());
    }
};

// Open beside anchor on edge, covering none of it (above it for MaxYEdge).
void expectPopover(Popover *popover, QWidget *anchor, Popover::Edge edge)
{
    QVERIFY(popover->isShown());
    QCOMPARE(popover->positioningView(), anchor);
    QCOMPARE(popover->edge(), edge);
    const QRect at = popover->geometry(), of(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    QVERIFY(edge == Popover::MaxYEdge ? at.bottom() < of.top() : !at.intersects(of));
}

} // namespace

// The application as main() starts it, from the first launch to its end.
class TestAppShell : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_bundle = m_dir.path() + "/Fake Helper.app";
        m_statusbarMarker = m_dir.path() + "/statusbar started";
        m_installerMarker = m_dir.path() + "/installer started";
        m_statusbarId =
            QString("org.zelmor.test%1.StatusbarApp").arg(QCoreApplication::applicationPid());
        makeScriptBundle(m_bundle + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app",
                         m_statusbarId, "echo started >> '" + m_statusbarMarker.toUtf8() + "'\n");
        makeScriptBundle(m_bundle + "/Contents/Library/ZELMORInstallComponets.app",
                         "org.zelmor.test.Installer",
                         "echo started >> '" + m_installerMarker.toUtf8() + "'\n");
        Bundle::setMainBundlePath(m_bundle);
        // Checkouts as far as the checks look: one listing a module, one not.
        QVERIFY(QDir().mkpath(modulesWorkspace() + "/.git"));
        QVERIFY(QDir().mkpath(plainWorkspace() + "/.git"));
        writeFile(modulesWorkspace() + "/.gitmodules",
                  gitmodulesEntry("lang", "https://host/owner/emu-lang.git").toUtf8());
        Relaunch::setHandler([this](float delay) { m_relaunches.append(delay); });

        // A bus of our own, where the fake keeps a real notifier from starting on demand.
        m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address",
                                    "--address=unix:dir=" + m_dir.path()});
        QVERIFY(m_bus.waitForReadyRead(10000));
        const QByteArray address = m_bus.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        QDBusConnection service = QDBusConnection::connectToBus(QString::fromUtf8(address), "fake");
        QVERIFY(service.registerObject("/org/freedesktop/Notifications", &m_fake,
                                       QDBusConnection::ExportAllSlots));
        QVERIFY(service.registerService("org.freedesktop.Notifications"));
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus("fake");
        m_bus.terminate();
        m_bus.waitForFinished(10000);
    }

    void init()
    {
        store().persisted().removeDomain();
        store().setObject(SettingsKeys::FirstLaunch, 0); // no sheet unless a test asks
        QFile::remove(m_statusbarMarker);
        QFile::remove(m_installerMarker);
    }

    void cleanup() { m_shell.reset(); }

    // What needs no shell; first, as the closed About window must have no icon yet.
    void beforeTheShellStarts()
    {
        const QRect anchor(100, 100, 40, 20); // popovers keep a gap of 4
        const QSize size(60, 30);
        QCOMPARE(popoverGeometry(anchor, size, Popover::MinXEdge), QRect(36, 94, 60, 30));
        QCOMPARE(popoverGeometry(anchor, size, Popover::MinYEdge), QRect(89, 124, 60, 30));
        QCOMPARE(popoverGeometry(anchor, size, Popover::MaxXEdge), QRect(144, 94, 60, 30));
        QCOMPARE(popoverGeometry(anchor, size, Popover::MaxYEdge), QRect(89, 66, 60, 30));
        // What the find bar never passes: no needle, a selection past the end.
        QCOMPARE(int(findInText("ab cab", "", 0, 0, false).start), -1);
        QCOMPARE(int(findInText("ab cab", "AB", 40, 50, true).start), 4);
        const auto notice = [](int tag, OperationEnd end) {
            const OperationNotice n = operationNotice(tag, end);
            return n.summary + " / " + n.body;
        };
        QCOMPARE(notice(AppController::TagCompile, OperationEnd::AllDone),
                 "Compile ZELMOR / All done.");
        QCOMPARE(notice(AppController::TagModules, OperationEnd::Done),
                 "Get module initialized / Done.");
        QCOMPARE(notice(AppController::TagClone, OperationEnd::TerminatedByUser),
                 "Get a complete copy of source codes of ZELLMOR from GitHub / Task terminated "
                 "by user.");
        QCOMPARE(notice(0, OperationEnd::Done), "ZELMOR Helper / Done."); // no operation

        // A popover request outlives its closed window, unseen.
        AboutController about;
        QSignalSpy shown(about.popoverMe(), &Popover::shown);
        about.showWindow(this);
        about.timeToload();
        about.window()->close();
        QVERIFY(shown.wait(5000));
        QVERIFY(!about.popoverMe()->isShown());
    }

    // A first launch (the text "1" counts) resets both folders and shows the
    // prerequisites, with a popover that offers the installer.
    void firstLaunchSheetListsThePrerequisites()
    {
        store().setObject(SettingsKeys::FirstLaunch, QStringLiteral("1"));
        store().setObject(SettingsKeys::Workspace, "/home/me/src");
        store().setObject(SettingsKeys::Output, "/home/me/out");
        start();
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), "/Developer/ZELMOR");
        QCOMPARE(store().stringValue(SettingsKeys::Output), "/Developer/ZELMOR/Output");
        ZELMORHelperAppDelegate *d = delegate();
        QVERIFY(d->firstLaunchWindow && d->firstLaunchWindow->isVisible());
        QCOMPARE(d->firstLaunchWindow->windowModality(), Qt::WindowModal);
        QCOMPARE(d->firstTitle->text(), "Welcome");
        QCOMPARE(d->firstMessage->text(),
                 "You need to install Xcode(larger in file size but recommend) or command line "
                 "tool(needless for Xcode), homebrew, cmake, sdl.\n \n(cmake and sdl can be "
                 "installed through homebrew)");
        QCOMPARE(d->firstPopMessage->text(),
                 "Don't know how to install? Click here to try wizard.");
        expectPopover(d->tryWizardPopover, d->tryWizardButton, Popover::MaxYEdge);
        QTest::mouseClick(d->tryWizardButton, Qt::LeftButton);
        QTRY_VERIFY(QFile::exists(m_installerMarker));
        QVERIFY(!d->tryWizardPopover->isShown()); // a click elsewhere closes it
    }

    // Neither Escape nor closing ends the sheet, and quitting with it open
    // brings it back; only its OK clears the first launch, as a number.
    void firstLaunchSheetEndsOnlyThroughOK()
    {
        store().setObject(SettingsKeys::FirstLaunch, QStringLiteral("1"));
        start();
        ZELMORHelperAppDelegate *d = delegate();
        QTest::mouseClick(d->tryWizardButton, Qt::LeftButton); // the popover goes
        QTest::keyClick(d->firstLaunchWindow, Qt::Key_Escape);
        d->firstLaunchWindow->close();
        QVERIFY(d->firstLaunchWindow && d->firstLaunchWindow->isVisible());
        m_shell.reset();
        start();
        d = delegate();
        QVERIFY(d->firstLaunchWindow && d->firstLaunchWindow->isVisible());
        QTest::keyClick(d->firstLaunchWindow, Qt::Key_Escape);
        QVERIFY(!d->tryWizardPopover->isShown()); // Escape takes the popover first
        QVERIFY(d->firstLaunchWindow && d->firstLaunchWindow->isVisible());
        QTest::mouseClick(d->firstOKButton, Qt::LeftButton);
        const QVariant cleared = store().objectForKey(SettingsKeys::FirstLaunch);
        QVERIFY(cleared.typeId() != QMetaType::QString); // a number, not the text "0"
        QCOMPARE(cleared.toInt(), 0);
        QVERIFY(!d->firstLaunchWindow);
    }

    // The sheet's OK opens the wizard, which asks for the initialization
    // until its own OK.
    void wizardFollowsTheFirstLaunchSheet()
    {
        ZELMORHelperAppDelegate *d = openWizard();
        QVERIFY(d->wizardWindow->isVisible());
        QCOMPARE(d->wizardWindow->windowModality(), Qt::WindowModal);
        QCOMPARE(d->wizardTitle->text(), "Initialization");
        QCOMPARE(store().intValue(SettingsKeys::Initialization), 1);
        auto *help = d->wizardWindow->findChild<QToolButton *>("wizardHelpButton");
        QTest::mouseClick(help, Qt::LeftButton);
        expectPopover(d->iniPopover, help, Popover::MinXEdge);

        QTest::mouseClick(d->wizardOKButton, Qt::LeftButton);
        QCOMPARE(store().intValue(SettingsKeys::Initialization), 0);
        QVERIFY(!d->wizardWindow);
    }

    // The wizard's choosers take parent folders as given and always add the
    // default names; a cancel keeps what is stored.
    void wizardStoresTheChosenParentFolders()
    {
        ZELMORHelperAppDelegate *d = openWizard();
        QStringList answers{m_dir.path(), "/", "", ""}, starts;
        FolderChoice::setChooser([&](const FolderChoice::Request &request, auto done) {
            starts << request.start;
            const QString answer = answers.takeFirst();
            done(answer.isEmpty() ? std::nullopt : std::optional<QString>(answer));
        });
        const auto restore = qScopeGuard([] { FolderChoice::setChooser({}); });
        QTest::mouseClick(d->wizardBrowseWorkspaceButton, Qt::LeftButton);
        QTest::mouseClick(d->wizardBrowseOutputButton, Qt::LeftButton);
        const QString workspace = m_dir.path() + "/ZELMOR";
        QCOMPARE(d->iniWorkSpaceText->text(), workspace);
        QCOMPARE(d->iniOutputText->text(), "//ZELMOR/Output");
        QTest::mouseClick(d->wizardBrowseWorkspaceButton, Qt::LeftButton);
        QTest::mouseClick(d->wizardBrowseOutputButton, Qt::LeftButton);
        QVERIFY(d->inipathStr.isEmpty());
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), workspace);
        QCOMPARE(store().stringValue(SettingsKeys::Output), "//ZELMOR/Output");
        // It opens where choosing again gives back what is stored.
        QCOMPARE(starts.mid(2), (QStringList{m_dir.path(), "/"}));
    }

    // The real chooser is window-modal and answers each window's question.
    // The wizard asks for a folder to put its own in, so the entry the user
    // highlighted (or named) is the one chosen, the folder shown when none
    // is; the preferences ask for the parent they look at, so they take the
    // folder the chooser shows, a folder path typed into it counting and a
    // highlighted or named entry not.
    void chooserAnswersEachWindowByItsOwnRule_data()
    {
        columns<bool, QString, QString, QString>({"wizard", "answer", "text", "stored"});
        for (const bool wizard : {true, false}) {
            const char *window = wizard ? "wizard" : "preferences";
            const QString entry = wizard ? "/Dev/inner/ZELMOR" : "/Dev/ZELMOR";
            QTest::addRow("%s, highlighted entry", window) << wizard << "highlight" << "inner"
                                                           << entry;
            QTest::addRow("%s, nothing highlighted", window) << wizard << "accept" << ""
                                                             << "/Dev/ZELMOR";
            QTest::addRow("%s, typed path", window) << wizard << "type" << "<dir>/Dev/inner"
                                                    << "/Dev/inner/ZELMOR";
            QTest::addRow("%s, entry name", window) << wizard << "type" << "inner" << entry;
            QTest::addRow("%s, cancelled", window) << wizard << "cancel" << "" << "/Dev/src";
        }
    }
    void chooserAnswersEachWindowByItsOwnRule()
    {
        QFETCH(bool, wizard);
        QFETCH(QString, answer);
        QFETCH(QString, text);
        QFETCH(QString, stored);
        QDir(m_dir.path()).mkpath("Dev/inner");
        QWidget *window = nullptr;
        QAbstractButton *select = nullptr;
        if (wizard) {
            window = openWizard()->wizardWindow;
            select = delegate()->wizardBrowseWorkspaceButton;
        } else {
            start();
            ui()->menuPrefs->trigger();
            window = m_shell->prefsController()->window();
            select = m_shell->prefsController()->browserRootButton;
        }
        store().setObject(SettingsKeys::Workspace, m_dir.path() + "/Dev/src"); // opens at Dev
        select->click();
        QFileDialog *dialog = nullptr;
        QTRY_VERIFY((dialog = window->findChild<QFileDialog *>()) && dialog->isVisible());
        QCOMPARE(dialog->windowModality(), Qt::WindowModal);
        QCOMPARE(dialog->labelText(QFileDialog::Accept), "Select");
        QCOMPARE(dialog->directory().absolutePath(), m_dir.path() + "/Dev");
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        // The widgets learn of it a moment after the window system: until
        // then the field has no focus, and the dialog writes what it
        // highlights into it while the keys arrive.
        QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget *>(dialog));
        if (answer == "cancel") {
            static_cast<QDialog *>(dialog)->reject();
        } else if (answer == "type") {
            auto *name = dialog->findChild<QLineEdit *>("fileNameEdit");
            name->setFocus();
            QTest::keyClicks(name, text.replace("<dir>", m_dir.path()));
            QTest::keyClick(name, Qt::Key_Return);
        } else {
            if (answer == "highlight")
                highlightEntry(dialog, m_dir.path() + "/Dev/" + text);
            QPushButton *accept = nullptr;
            for (auto *button : dialog->findChildren<QPushButton *>())
                if (button->text() == "Select")
                    accept = button;
            QVERIFY(accept && accept->isEnabled());
            QTest::mouseClick(accept, Qt::LeftButton);
        }
        QTRY_VERIFY(!window->findChild<QFileDialog *>());
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), m_dir.path() + stored);
    }

    // A start that is not the first: no sheet, nothing written but the
    // bundle's place, and the companion launched.
    void startWritesOnlyTheBundlePlace()
    {
        start();
        QVERIFY(!delegate()->firstLaunchWindow);
        QVERIFY(!store().persisted().value(SettingsKeys::Output).isValid());
        QCOMPARE(store().stringValue(SettingsKeys::AppLocation), m_bundle);
        QTRY_VERIFY(QFile::exists(m_statusbarMarker));
    }

    void menusAndWindowTitled()
    {
        start();
        QCOMPARE(m_shell->window()->windowTitle(), "ZELMOR Helper");
        QStringList titles; // as shown, without mnemonics
        for (QMenu *menu :
             {ui()->menuAppName, ui()->menuEdit, ui()->menuFindDir, ui()->menuWindow}) {
            titles << menu->title().remove('&');
            for (QAction *a : menu->actions())
                if (!a->isSeparator())
                    titles << a->text().remove('&');
        }
        QCOMPARE(titles, (QStringList{"ZELMOR Helper", "About ZELMOR Helper",
                                      "Re-launch ZELMOR Helper",
                                      "Launch ZELMOR Helper Statusbar App", "Install Essentials",
                                      "Preferences...", "Hide ZELMOR Helper", "Hide Others",
                                      "Show All", "Quit ZELMOR Helper", "Edit", "Copy",
                                      "Select All", "Find", "Find", "Find...", "Find Next",
                                      "Find Previous", "Use Selection for Find",
                                      "Jump to Selection", "Window", "Minimize", "Zoom",
                                      "Bring All to Front"}));
        for (QAction *a : {ui()->menuQuit, ui()->menuCopy, ui()->menuFind, ui()->menuFindNext})
            QVERIFY2(!a->shortcut().isEmpty(), qPrintable(a->text()));
    }

    // Typing finds as it goes, Return goes on, Shift+Return back, Escape
    // closes; the Find and Edit menus act on the console.
    void findingInTheConsole()
    {
        start();
        MainWindow *w = m_shell->window();
        ConsoleView *view = m_shell->controller()->outputField;
        ConsoleFindBar *bar = m_shell->menu()->findBar();
        auto selection = [view] {
            const QTextCursor c = view->textCursor();
            return qMakePair(c.selectionStart(), c.selectionEnd());
        };
        view->setString("alpha beta\nALPHA gamma\nalpha");
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w));
        ui()->menuFind->trigger();
        QTest::keyClicks(bar->findField(), "alpha");
        QCOMPARE(selection(), qMakePair(0, 5));
        QTest::keyClick(bar->findField(), Qt::Key_Return);
        QCOMPARE(selection(), qMakePair(11, 16));
        QTest::keyClick(bar->findField(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(selection(), qMakePair(0, 5));
        QTest::keyClick(bar->findField(), Qt::Key_Escape);
        QVERIFY(!bar->isVisible());
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(view));

        ui()->menuFindPre->trigger(); // both ways round the end
        QCOMPARE(selection(), qMakePair(23, 28));
        bar->setFindString("gamma");
        ui()->menuFindNext->trigger();
        QCOMPARE(selection(), qMakePair(17, 22));
        bar->setFindString("zeta");
        QVERIFY(!bar->findNext());
        QCOMPARE(selection(), qMakePair(17, 22)); // a miss leaves the selection
        ui()->menuFindSelect->trigger();
        QCOMPARE(bar->findString(), "gamma");
        ui()->menuCopy->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), "gamma");
        m_shell->controller()->buttonPerform->setFocus(); // the console answers without focus
        ui()->menuSelectAll->trigger();
        QCOMPARE(selection(), qMakePair(0, int(view->toPlainText().size())));
        view->setString(QString("line\n").repeated(400) + "last");
        bar->setFindString("last");
        QVERIFY(bar->findNext());
        view->verticalScrollBar()->setValue(0);
        ui()->menuJump->trigger();
        QVERIFY(view->verticalScrollBar()->value() > 0);
    }

    // Show All brings back only what Hide hid, not what Minimize did.
    void windowMenuZoomsMinimizesAndHides()
    {
        start();
        MainWindow *w = m_shell->window();
        ui()->menuZoom->trigger();
        QTRY_VERIFY(w->isMaximized());
        ui()->menuZoom->trigger();
        QTRY_VERIFY(!w->isMaximized());
        ui()->menuMini->trigger();
        QTRY_VERIFY(w->isMinimized());
        ui()->menuShowAll->trigger();
        QVERIFY(w->isMinimized());
        w->showNormal();
        ui()->menuHideHelper->trigger();
        QTRY_VERIFY(w->isMinimized());
        ui()->menuShowAll->trigger();
        QTRY_VERIFY(!w->isMinimized());
    }

    void relaunchAndInstallerMenus()
    {
        start();
        ui()->menuRelaunchHelper->trigger();
        QCOMPARE(m_relaunches, QList<float>{2.0f});
        ui()->menuInstallCompo->trigger();
        QTRY_VERIFY(QFile::exists(m_installerMarker));
    }

    // Each About shows the popover once, half a second later.
    void aboutShowsItsPopoverOnceEachTime()
    {
        start();
        ui()->menuAbout->trigger();
        AboutController *about = m_shell->aboutController();
        QSignalSpy shown(about->popoverMe(), &Popover::shown);
        ui()->menuAbout->trigger();
        QTRY_COMPARE(shown.count(), 2);
        // A third show would come within half a second of the second; twice
        // that is enough to see that none comes.
        QVERIFY(!shown.wait(1000));
        expectPopover(about->popoverMe(), about->creator, Popover::MaxYEdge);
        QSignalSpy clicked(about->popoverMe(), &Popover::clicked);
        QTest::mouseClick(about->popoverMe(), Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        about->window()->close(); // the popover goes with its window
        QVERIFY(!about->popoverMe()->isShown());
    }

    // What git reports of a module's download reaches the companion, and so
    // does a switch of the pop-up alone, which moves no bar; Stop tells it the
    // window is idle.
    void companionHearsTheProgress()
    {
        const FakeTools tools;
        tools.add("git", "printf 'Receiving objects:  25%% (50/200), 1.23 MiB | 1.5 MiB/s   \\r' >&2\n"
                         "sleep 30\n");
        start();
        AppController *c = m_shell->controller();
        CompanionChannelServer companion(m_statusbarId);
        QVERIFY(companion.listen());
        QSignalSpy status(&companion, &CompanionChannelServer::statusReceived);
        QSignalSpy idle(&companion, &CompanionChannelServer::idleReceived);
        store().setObject(SettingsKeys::Workspace, modulesWorkspace());
        c->selectItemWithTag(AppController::TagModules);
        c->perform();
        QTRY_COMPARE(companionStatusLine(*c),
                     CompanionChannel::statusMessage("Get module initialized", 50, 200, "1.5 MiB/s"));
        // Lines sent before the switch may still be on their way, so only the
        // last one received counts.
        const auto lastOperation = [&status] {
            return status.isEmpty()
                ? QString()
                : status.last().first().value<CompanionChannel::Status>().operation;
        };
        QTRY_COMPARE(lastOperation(), QString("Get module initialized"));
        c->selectItemWithTag(AppController::TagClone);
        QTRY_COMPARE_WITH_TIMEOUT(lastOperation(),
                                  QString("Get a complete copy of source codes of ZELLMOR from GitHub"),
                                  5000);
        c->perform(); // Stop
        QVERIFY(idle.wait(5000));
        QTRY_VERIFY(c->outputField->string().endsWith("\nTask terminated by user.\n"));
    }

    // The desktop hears of an end only while the window is inactive; calls
    // arrive in order, so the second end's notice alone proves the first
    // sent none.
    void desktopHearsOfAnEndOnlyWhileInactive()
    {
        const FakeTools tools;
        tools.add("git", "sleep 30\n");
        start();
        AppController *c = m_shell->controller();
        store().setObject(SettingsKeys::Workspace, plainWorkspace());
        QApplication::setActiveWindow(m_shell->window());
        QTRY_VERIFY(m_shell->window()->isActiveWindow());
        c->selectItemWithTag(AppController::TagModules); // no modules: ends at once
        c->perform();
        QVERIFY(c->outputField->string().endsWith("\nDone.\n"));
        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        QTRY_VERIFY(!m_shell->window()->isActiveWindow());
        c->selectItemWithTag(AppController::TagUpdate);
        c->perform();
        c->perform(); // Stop
        QTRY_COMPARE_WITH_TIMEOUT(
            m_fake.calls,
            (QList<QStringList>{{"ZELMOR Helper", "org.zelmor.ZELMORHelper",
                                 "Update source codes and submodules", "Task terminated by user.",
                                 "org.zelmor.ZELMORHelper"}}),
            10000);
    }

    // Last, as it runs the application to its end, which asks the companion to quit;
    // only the text "1" asks that.
    void closingTheMainWindowEndsTheApplication()
    {
        ZELMORHelperAppDelegate::initialize(); // registers the text "0"
        QCOMPARE(quitStatusbarAppIfAsked(m_statusbarId), CompanionQuit::NotAsked);
        store().setObject(SettingsKeys::QuitStatusbarApp, 1);
        QCOMPARE(quitStatusbarAppIfAsked(m_statusbarId), CompanionQuit::NotAsked);
        store().setObject(SettingsKeys::QuitStatusbarApp, QStringLiteral("1"));
        QCOMPARE(quitStatusbarAppIfAsked("org.zelmor.test.Nobody"), CompanionQuit::NotRunning);
        start();
        CompanionChannelServer companion(m_statusbarId);
        QVERIFY(companion.listen());
        QSignalSpy quit(&companion, &CompanionChannelServer::quitRequested);
        QTimer::singleShot(20000, qApp, [] { QCoreApplication::exit(1); });
        QTimer::singleShot(0, m_shell->window(), &QWidget::close);
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(quit.count() == 1 || quit.wait(5000));
    }

private:
    static SettingsStore &store() { return SettingsStore::standard(); }
    QString modulesWorkspace() const { return m_dir.path() + "/modules-ws"; }
    QString plainWorkspace() const { return m_dir.path() + "/plain-ws"; }
    void start()
    {
        m_shell = std::make_unique<ApplicationShell>();
        m_shell->start();
        QVERIFY(QSignalSpy(m_shell.get(), &ApplicationShell::launchFinished).wait());
    }
    ZELMORHelperAppDelegate *delegate() const { return m_shell->delegate(); }
    // A first launch, past its first sheet.
    ZELMORHelperAppDelegate *openWizard()
    {
        store().setObject(SettingsKeys::FirstLaunch, 1);
        start();
        delegate()->firstOKButton->click();
        return delegate();
    }
    Ui::MainWindow *ui() const { return m_shell->window()->ui(); }
    // Clicks the entry at `path` in the file view the chooser shows, once
    // the view has listed it.
    static void highlightEntry(QFileDialog *dialog, const QString &path)
    {
        QAbstractItemView *view = nullptr;
        QFileSystemModel *files = nullptr;
        for (auto *candidate : dialog->findChildren<QAbstractItemView *>()) {
            auto *model = qobject_cast<QFileSystemModel *>(candidate->model());
            if (model && candidate->isVisible() && !qobject_cast<QHeaderView *>(candidate)) {
                view = candidate;
                files = model;
            }
        }
        QVERIFY(view);
        const QModelIndex entry = files->index(path);
        QTRY_VERIFY(view->visualRect(entry).isValid());
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(entry).center());
        QVERIFY(view->selectionModel()->isRowSelected(entry.row(), entry.parent()));
    }

    QTemporaryDir m_dir;
    QProcess m_bus;
    FakeNotifications m_fake;
    QString m_bundle, m_statusbarMarker, m_installerMarker, m_statusbarId;
    std::unique_ptr<ApplicationShell> m_shell;
    QList<float> m_relaunches;
};

ZELMOR_TEST_MAIN(TestAppShell)
#include "tst_appshell.moc"
