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
#include "widgets/Popover.h"
#include "workflow/AppController.h"
#include "workflow/OperationNotice.h"

#include <QClipboard>
#include <QComboBox>
#include <QDBusConnection>
#include <QFileDialog>
#include <QMainWindow>
#include <QMenu>
#include <QProcess>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>

using namespace TestSupport;

namespace {

SettingsStore &store()
{
    return SettingsStore::standard();
}

// Stands in for the desktop's notification service on the test's own bus.
class FakeNotifications : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Call
    {
        QString application, icon, summary, body;
        QVariantMap hints;
    };
    QList<Call> calls;

public slots:
    uint Notify(const QString &application, uint, const QString &icon, const QString &summary,
                const QString &body, const QStringList &, const QVariantMap &hints, int)
    {
        calls.append({application, icon, summary, body, hints});
        emit notified();
        return uint(calls.size());
    }

signals:
    void notified();
};

// Stands in for a language: every text it knows comes back in brackets.
class BracketTranslator : public QTranslator
{
public:
    QString translate(const char *, const char *sourceText, const char *, int) const override
    {
        return QStringLiteral("[%1]").arg(QString::fromUtf8(sourceText));
    }
    bool isEmpty() const override { return false; }
};

// Records the settings at each moment the first-launch sheet appears.
class SheetWatcher : public QObject
{
public:
    QStringList paths; // workspace, output, workspace, output...
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->objectName() == "firstLaunch")
            paths << store().stringValue(SettingsKeys::Workspace)
                  << store().stringValue(SettingsKeys::Output);
        return false;
    }
};

// The main window with its menus; the console holds three lines.
struct MenuHarness : ControllerHarness
{
    MainMenu menu{&window, &controller};
    MenuHarness()
    {
        view()->setString("alpha beta\nALPHA gamma\nalpha");
        window.activateWindow();
    }
    Ui::MainWindow *ui() { return window.ui(); }
    ConsoleView *view() const { return controller.outputField; }
    QPair<int, int> selection() const
    {
        const QTextCursor c = view()->textCursor();
        return {c.selectionStart(), c.selectionEnd()};
    }
    void select(int start, int end)
    {
        QTextCursor c = view()->textCursor();
        c.setPosition(start);
        c.setPosition(end, QTextCursor::KeepAnchor);
        view()->setTextCursor(c);
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

// A companion listening under the status-bar identifier; quit counts its requests.
struct Companion
{
    CompanionChannelServer server;
    QSignalSpy quit{&server, &CompanionChannelServer::quitRequested};
    explicit Companion(const QString &id) : server(id) { QVERIFY(server.listen()); }
};

} // namespace

// Start-up, first launch and wizard, menus, the about window, finding in the
// console, desktop notifications and termination of the application, through
// the shell the program's main() starts.
class TestAppShell : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_bundle = m_dir.path() + "/Fake Helper.app";
        m_statusbarMarker = m_dir.path() + "/statusbar started";
        m_installerMarker = m_dir.path() + "/installer started";
        m_statusbarId = QString("org.zelmor.test%1.StatusbarApp").arg(QCoreApplication::applicationPid());
        // Companions whose programs append a line to a marker file.
        makeScriptBundle(m_bundle + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app",
                         m_statusbarId, "echo started >> '" + m_statusbarMarker.toUtf8() + "'\n");
        makeScriptBundle(m_bundle + "/Contents/Library/ZELMORInstallComponets.app",
                         "org.zelmor.test.Installer", "echo started >> '" + m_installerMarker.toUtf8() + "'\n");
        Bundle::setMainBundlePath(m_bundle);
        Relaunch::setHandler([this](float delay) { m_relaunches.append(delay); });

        // A session bus of the test's own; the fake owns the notification
        // service's name there, so no real one is started on demand.
        m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address",
                                    "--address=unix:dir=" + m_dir.path()});
        QVERIFY(m_bus.waitForReadyRead(10000));
        const QByteArray address = m_bus.readLine().trimmed();
        QVERIFY(!address.isEmpty());
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        QDBusConnection service = QDBusConnection::connectToBus(QString::fromUtf8(address), "fake");
        QVERIFY(service.registerObject("/org/freedesktop/Notifications", &m_fake,
                                       QDBusConnection::ExportAllSlots));
        QVERIFY(service.registerService("org.freedesktop.Notifications"));
        QVERIFY(QDBusConnection::sessionBus().isConnected());
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
        QFile::remove(m_statusbarMarker);
        QFile::remove(m_installerMarker);
        m_answers.clear();
        m_relaunches.clear();
        ZELMORHelperAppDelegate::setFolderChooser(
            [this](QWidget *parent, const QString &prompt, std::function<void(const QString &)> done) {
                m_chooserParent = parent;
                m_chooserPrompt = prompt;
                done(m_answers.isEmpty() ? QString() : m_answers.takeFirst());
            });
    }

    void cleanup() { m_shell.reset(); }

    void firstLaunchResetsBothPathsBeforeTheSheet()
    {
        store().setObject(SettingsKeys::Workspace, "/home/me/src");
        store().setObject(SettingsKeys::Output, "/home/me/out");
        SheetWatcher watcher;
        qApp->installEventFilter(&watcher);
        start();
        qApp->removeEventFilter(&watcher);

        QCOMPARE(watcher.paths, (QStringList{"/Developer/ZELMOR", "/Developer/ZELMOR/Output"}));
        QCOMPARE(store().stringValue(SettingsKeys::AppLocation), m_bundle);
        QCOMPARE(store().intValue(SettingsKeys::FirstLaunch), 1);

        ZELMORHelperAppDelegate *d = delegate();
        QVERIFY(d->firstLaunchWindow && d->firstLaunchWindow->isVisible());
        QCOMPARE(d->firstLaunchWindow->windowModality(), Qt::WindowModal);
        QCOMPARE(d->firstLaunchWindow->parentWidget(), m_shell->window());
        QCOMPARE(d->firstTitle->text(), "Welcome");
        QCOMPARE(d->firstMessage->text(),
                 "You need to install Xcode(larger in file size but recommend) or command line "
                 "tool(needless for Xcode), homebrew, cmake, sdl.\n \n(cmake and sdl can be "
                 "installed through homebrew)");
        QCOMPARE(d->firstPopMessage->text(), "Don't know how to install? Click here to try wizard.");
        expectPopover(d->tryWizardPopover, d->tryWizardButton, Popover::MaxYEdge);
    }

    // Quitting with the first sheet open starts the sequence over; neither
    // Escape nor closing the window ends the sheet.
    void firstLaunchIsClearedOnlyByItsOK()
    {
        start();
        m_shell.reset();
        store().setObject(SettingsKeys::Workspace, "/home/me/src");
        start();
        ZELMORHelperAppDelegate *d = delegate();
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), "/Developer/ZELMOR");
        QTest::keyClick(d->firstLaunchWindow, Qt::Key_Escape);
        QTest::keyClick(d->firstLaunchWindow, Qt::Key_Escape);
        d->firstLaunchWindow->close();
        QVERIFY(d->firstLaunchWindow && d->firstLaunchWindow->isVisible());
        QCOMPARE(store().intValue(SettingsKeys::FirstLaunch), 1);

        QTest::mouseClick(d->firstOKButton, Qt::LeftButton);
        const QVariant cleared = store().objectForKey(SettingsKeys::FirstLaunch);
        QVERIFY(cleared.typeId() != QMetaType::QString); // a number, not the text "0"
        QCOMPARE(cleared.toInt(), 0);
        QVERIFY(!d->firstLaunchWindow);
        QVERIFY(d->wizardWindow && d->wizardWindow->isVisible());
        QCOMPARE(d->wizardWindow->windowModality(), Qt::WindowModal);
        QCOMPARE(d->wizardTitle->text(), "Initialization");
        QCOMPARE(d->wizardBrowseOutputButton->text().remove('&'), "Select");
        QCOMPARE(store().intValue(SettingsKeys::Initialization), 1);
        QTest::keyClick(d->wizardWindow, Qt::Key_Escape);
        QVERIFY(d->wizardWindow->isVisible());

        // The wizard's help opens left of its button.
        auto *help = d->wizardWindow->findChild<QToolButton *>("wizardHelpButton");
        QVERIFY(help);
        QTest::mouseClick(help, Qt::LeftButton);
        expectPopover(d->iniPopover, help, Popover::MinXEdge);
        QVERIFY(!d->wizardPopMessage->text().isEmpty());
    }

    // clicks: W the workspace chooser, O the output chooser, answered in turn
    void wizardStoresTheChosenFolders_data()
    {
        columns<QString, QStringList, QString, QString, QString, QString>(
            {"clicks", "answers", "workspace", "output", "workspaceField", "outputField"});
        QTest::newRow("same parent") << "WO" << QStringList{"/tmp/P", "/tmp/P"} << "/tmp/P/ZELMOR"
            << "/tmp/P/ZELMOR/Output" << "/tmp/P/ZELMOR" << "/tmp/P/ZELMOR/Output";
        QTest::newRow("blanks") << "WO" << QStringList{"/my src", "/c"} << "/my src/ZELMOR"
            << "/c/ZELMOR/Output" << "/my src/ZELMOR" << "/c/ZELMOR/Output";
        QTest::newRow("root, unnormalised") << "WO" << QStringList{"/", "/"} << "//ZELMOR"
            << "//ZELMOR/Output" << "//ZELMOR" << "//ZELMOR/Output";
        QTest::newRow("both cancelled") << "WO" << QStringList{"", ""} << "/Developer/ZELMOR"
            << "/Developer/ZELMOR/Output" << "" << "";
        QTest::newRow("second choice cancelled") << "WW" << QStringList{"/first", ""}
            << "/first/ZELMOR" << "/Developer/ZELMOR/Output" << "/first/ZELMOR" << "";
    }
    void wizardStoresTheChosenFolders()
    {
        QFETCH(QString, clicks);
        QFETCH(QStringList, answers);
        start();
        ZELMORHelperAppDelegate *d = delegate();
        QTest::mouseClick(d->firstOKButton, Qt::LeftButton);
        QVERIFY(d->wizardWindow);

        m_answers = answers;
        for (QChar click : clicks) {
            QTest::mouseClick(click == 'W' ? d->wizardBrowseWorkspaceButton : d->wizardBrowseOutputButton,
                              Qt::LeftButton);
            QCOMPARE(m_chooserParent, d->wizardWindow.data());
            QCOMPARE(m_chooserPrompt, "Select");
        }
        QTEST(store().stringValue(SettingsKeys::Workspace), "workspace");
        QTEST(store().stringValue(SettingsKeys::Output), "output");
        QTEST(d->iniWorkSpaceText->text(), "workspaceField");
        QTEST(d->iniOutputText->text(), "outputField");
        QCOMPARE(d->inipathStr.isEmpty(), answers.constLast().isEmpty());

        QTest::mouseClick(d->wizardOKButton, Qt::LeftButton);
        QCOMPARE(store().intValue(SettingsKeys::Initialization), 0);
        QVERIFY(!d->wizardWindow);
    }

    // The wizard's real chooser opens at the stored paths.
    void wizardChooserOpensAtTheStoredPath_data()
    {
        QTest::addColumn<bool>("workspace");
        QTest::newRow("workspace") << true;
        QTest::newRow("output") << false;
    }
    void wizardChooserOpensAtTheStoredPath()
    {
        QFETCH(bool, workspace);
        ZELMORHelperAppDelegate::setFolderChooser({});
        start();
        ZELMORHelperAppDelegate *d = delegate();
        d->closeFirstLaunch();
        const QString dev = m_dir.path() + "/Dev";
        QVERIFY(QDir().mkpath(dev));
        store().setObject(SettingsKeys::Workspace, dev + "/ZELMOR");
        store().setObject(SettingsKeys::Output, dev + "/ZELMOR/Output");
        (workspace ? d->wizardBrowseWorkspaceButton : d->wizardBrowseOutputButton)->click();
        QFileDialog *dialog = nullptr;
        QTRY_VERIFY((dialog = d->wizardWindow->findChild<QFileDialog *>()) && dialog->isVisible());
        QCOMPARE(dialog->directory().absolutePath(), dev);
        dialog->reject();
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), dev + "/ZELMOR");
    }

    // "Reset Warnings" stores the text "1": the whole sequence, path reset
    // included, comes back at the next start; "First Launch" 0 writes nothing
    // but "App Location".
    void resetWarningsBringsTheSequenceBack()
    {
        store().setObject(SettingsKeys::Workspace, "/home/me/src");
        start(0);
        QVERIFY(!delegate()->firstLaunchWindow);
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), "/home/me/src");
        QVERIFY(!store().persisted().value(SettingsKeys::Output).isValid());
        QCOMPARE(store().stringValue(SettingsKeys::AppLocation), m_bundle);
        m_shell.reset();

        store().setObject(SettingsKeys::FirstLaunch, QStringLiteral("1"));
        start();
        QVERIFY(delegate()->firstLaunchWindow && delegate()->firstLaunchWindow->isVisible());
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), "/Developer/ZELMOR");
    }

    void companionsAreLaunchedFromTheirBundles()
    {
        start(); // every start launches the status-bar companion
        QTRY_VERIFY(QFile::exists(m_statusbarMarker));
        QTest::mouseClick(delegate()->tryWizardButton, Qt::LeftButton);
        QTRY_VERIFY(QFile::exists(m_installerMarker));
        QVERIFY(delegate()->firstLaunchWindow->isVisible()); // the sheet stays

        QFile::remove(m_statusbarMarker);
        QFile::remove(m_installerMarker);
        ui()->menuLaunchStatus->trigger();
        ui()->menuInstallCompo->trigger();
        QTRY_VERIFY(QFile::exists(m_statusbarMarker));
        QTRY_VERIFY(QFile::exists(m_installerMarker));
    }

    void menusAreTitledInOrderAndReachTheirActions()
    {
        start(0);
        QCOMPARE(m_shell->window()->windowTitle(), "ZELMOR Helper");
        auto titles = [](QMenu *menu) {
            QStringList list;
            for (QAction *a : menu->actions())
                if (!a->isSeparator())
                    list << a->text().remove('&'); // as shown, without mnemonics
            return list;
        };
        QCOMPARE(ui()->menuAppName->title().remove('&'), "ZELMOR Helper");
        QCOMPARE(titles(ui()->menuAppName),
                 (QStringList{"About ZELMOR Helper", "Re-launch ZELMOR Helper",
                              "Launch ZELMOR Helper Statusbar App", "Install Essentials",
                              "Preferences...", "Hide ZELMOR Helper", "Hide Others", "Show All",
                              "Quit ZELMOR Helper"}));
        QCOMPARE(titles(ui()->menuEdit), (QStringList{"Copy", "Select All", "Find"}));
        QCOMPARE(titles(ui()->menuFindDir),
                 (QStringList{"Find...", "Find Next", "Find Previous", "Use Selection for Find",
                              "Jump to Selection"}));
        QCOMPARE(titles(ui()->menuWindow), (QStringList{"Minimize", "Zoom", "Bring All to Front"}));
        for (QAction *a : {ui()->menuQuit, ui()->menuCopy, ui()->menuFind, ui()->menuFindNext})
            QVERIFY2(!a->shortcut().isEmpty(), qPrintable(a->text()));

        ui()->menuRelaunchHelper->trigger();
        QCOMPARE(m_relaunches, QList<float>{2.0f});
        ui()->menuAbout->trigger();
        QVERIFY(m_shell->aboutController());
        ui()->menuPrefs->trigger();
        PrefsController *prefs = m_shell->prefsController();
        QVERIFY(prefs && prefs->window()->isVisible());
        ui()->menuPrefs->trigger();
        QCOMPARE(m_shell->prefsController(), prefs); // the same window again
    }

    void titlesComeFromTheStringTable()
    {
        QVERIFY(QTranslator().load(":/i18n/zelmorhelper_en.qm")); // the table ships
        BracketTranslator language;
        QCoreApplication::installTranslator(&language);
        start();
        QCoreApplication::removeTranslator(&language);
        QCOMPARE(ui()->menuAbout->text().remove('&'), "[About ZELMOR Helper]");
        QCOMPARE(ui()->menuAppName->title().remove('&'), "[ZELMOR Helper]");
        QCOMPARE(delegate()->firstTitle->text(), "[Welcome]");
        QCOMPARE(m_shell->window()->windowTitle(), "[ZELMOR Helper]");
    }

    void windowMenuActsOnTheWindow()
    {
        start(0);
        QMainWindow *w = m_shell->window();
        ui()->menuZoom->trigger();
        QTRY_VERIFY(w->isMaximized());
        ui()->menuZoom->trigger();
        QTRY_VERIFY(!w->isMaximized());
        ui()->menuMini->trigger();
        QTRY_VERIFY(w->isMinimized());
        ui()->menuShowAll->trigger();
        QVERIFY(w->isMinimized()); // only what Hide hid comes back

        w->showNormal();
        ui()->menuHideHelper->trigger();
        QTRY_VERIFY(w->isMinimized());
        ui()->menuShowAll->trigger();
        QTRY_VERIFY(!w->isMinimized());
        QVERIFY(w->isVisible());
    }

    // The quit switch asks the companion (whose identifier comes from its
    // own Info.plist) to quit, at once and at termination; nothing listening
    // is reported as such.
    void quitSwitch_data()
    {
        columns<QVariant, QString, int>({"value", "listener", "expected"});
        QTest::newRow("text 1") << QVariant("1") << m_statusbarId << int(CompanionQuit::Asked);
        QTest::newRow("number 1") << QVariant(1) << m_statusbarId << int(CompanionQuit::NotAsked);
        QTest::newRow("text 0") << QVariant("0") << m_statusbarId << int(CompanionQuit::NotAsked);
        QTest::newRow("registered default") << QVariant() << m_statusbarId << int(CompanionQuit::NotAsked);
        QTest::newRow("nobody listens") << QVariant("1") << "" << int(CompanionQuit::NotRunning);
    }
    void quitSwitch()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, listener);
        QFETCH(int, expected);
        start(0);
        if (value.isValid())
            store().setObject(SettingsKeys::QuitStatusbarApp, value);
        QCOMPARE(statusbarAppIdentifier(), m_statusbarId);
        if (listener.isEmpty()) {
            QCOMPARE(int(quitStatusbarAppIfAsked("org.zelmor.test.Nobody")), expected);
            return;
        }
        Companion companion(listener);
        QCOMPARE(int(quitStatusbarAppIfAsked(m_statusbarId)), expected);
        const bool asked = expected == int(CompanionQuit::Asked);
        if (asked)
            QVERIFY(companion.quit.wait(5000));
        companion.quit.clear();
        delegate()->applicationWillTerminate();
        QCOMPARE(companion.quit.wait(asked ? 5000 : 300), asked);
    }

    void companionIsToldTheProgress()
    {
        start(0);
        AppController *c = m_shell->controller();
        CompanionChannelServer companion(m_statusbarId);
        QVERIFY(companion.listen());
        QSignalSpy status(&companion, &CompanionChannelServer::statusReceived);
        QSignalSpy idle(&companion, &CompanionChannelServer::idleReceived);

        QCOMPARE(companionStatusLine(*c), CompanionChannel::idleMessage());
        c->buttonPerform->setText(AppController::tr("Stop"));
        c->popupSelection->setCurrentIndex(3);
        c->progressbar->setIndeterminate(true);
        const QString operation = c->popupSelection->currentText();
        QCOMPARE(companionStatusLine(*c),
                 CompanionChannel::statusMessage(operation, 0, 0, c->showSpeed->text()));
        c->progressbar->setIndeterminate(false);
        c->progressbar->setMaxValue(200);
        c->progressbar->setDoubleValue(50);
        c->showSpeed->setText("1.5 MiB/s");
        QCOMPARE(companionStatusLine(*c),
                 CompanionChannel::statusMessage(operation, 50, 200, "1.5 MiB/s"));

        emit c->progressChanged();
        QVERIFY(status.wait(5000));
        const auto received = status.first().first().value<CompanionChannel::Status>();
        QCOMPARE(received.operation, operation);
        QCOMPARE(received.maximum, 200);
        // A switch of the pop-up alone (after a clone, to the module
        // download, while git's lone "Cloning into" line moves no bar) is
        // told as well.
        c->selectItemWithTag(AppController::TagModules);
        QVERIFY(status.wait(5000));
        QCOMPARE(status.last().first().value<CompanionChannel::Status>().operation,
                 QString("Get module initialized"));
        c->buttonPerform->setText(AppController::tr("Perform"));
        emit c->progressChanged();
        QVERIFY(idle.wait(5000));
    }

    void findInText_data()
    {
        columns<QString, int, int, bool, int>(
            {"needle", "selectionStart", "selectionEnd", "backward", "expected"});
        // Text: "ab cab CAB ab" (matches of "ab" at 0, 4, 8, 11)
        QTest::newRow("next from start") << "ab" << 0 << 0 << false << 0;
        QTest::newRow("next after selection") << "ab" << 4 << 6 << false << 8;
        QTest::newRow("next ignores case") << "cab" << 0 << 5 << false << 7;
        QTest::newRow("next wraps") << "ab" << 11 << 13 << false << 0;
        QTest::newRow("previous") << "ab" << 8 << 10 << true << 4;
        QTest::newRow("previous wraps") << "ab" << 0 << 2 << true << 11;
        QTest::newRow("only match found again") << "cab c" << 3 << 8 << false << 3;
        QTest::newRow("absent") << "zz" << 0 << 0 << false << -1;
        QTest::newRow("empty needle") << "" << 0 << 0 << false << -1;
        QTest::newRow("selection past the end") << "ab" << 40 << 50 << true << 11;
    }
    void findInText()
    {
        QFETCH(QString, needle);
        QFETCH(int, selectionStart);
        QFETCH(int, selectionEnd);
        QFETCH(bool, backward);
        const TextMatch match =
            ::findInText("ab cab CAB ab", needle, selectionStart, selectionEnd, backward);
        QTEST(int(match.start), "expected");
        if (match.found())
            QCOMPARE(match.length, needle.size());
    }

    // The keyboard drives the find bar: typing finds as it goes, Return goes
    // on, Shift+Return goes back, Escape closes it.
    void findBarFromTheKeyboard()
    {
        MenuHarness m;
        QVERIFY(QTest::qWaitForWindowActive(&m.window));
        ConsoleFindBar *bar = m.menu.findBar();
        QVERIFY(!bar->isVisible());
        m.ui()->menuFind->trigger();
        QVERIFY(bar->isVisible());
        QTRY_COMPARE(QApplication::focusWidget(), bar->findField());
        QTest::keyClicks(bar->findField(), "alpha");
        QCOMPARE(m.selection(), qMakePair(0, 5));
        for (const auto &[start, end] : {std::pair{11, 16}, std::pair{23, 28}, std::pair{0, 5}}) {
            QTest::keyClick(bar->findField(), Qt::Key_Return);
            QCOMPARE(m.selection(), qMakePair(start, end));
        }
        QTest::keyClick(bar->findField(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(m.selection(), qMakePair(23, 28));
        QTest::keyClick(bar->findField(), Qt::Key_Escape);
        QVERIFY(!bar->isVisible());
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(m.view()));
    }

    // Find Next and Previous, Use Selection for Find, Jump to Selection,
    // Copy and Select All act on the console.
    void editMenuActsOnTheConsole()
    {
        MenuHarness m;
        m.menu.findBar()->setFindString("alpha");
        m.ui()->menuFindNext->trigger();
        QCOMPARE(m.selection(), qMakePair(0, 5));
        m.ui()->menuFindNext->trigger();
        QCOMPARE(m.selection(), qMakePair(11, 16));
        m.ui()->menuFindPre->trigger();
        QCOMPARE(m.selection(), qMakePair(0, 5));
        m.select(17, 22); // "gamma"
        m.ui()->menuFindSelect->trigger();
        QCOMPARE(m.menu.findBar()->findString(), "gamma");
        m.select(0, 0);
        m.ui()->menuFindNext->trigger();
        QCOMPARE(m.selection(), qMakePair(17, 22));
        m.menu.findBar()->setFindString("zeta");
        QVERIFY(!m.menu.findBar()->findNext());
        QCOMPARE(m.selection(), qMakePair(17, 22)); // a miss leaves the selection

        m.select(6, 10);
        m.ui()->menuCopy->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), "beta");
        m.ui()->menuSelectAll->trigger();
        QCOMPARE(m.selection(), qMakePair(0, int(m.view()->toPlainText().size())));

        QStringList lines;
        for (int i = 0; i < 400; ++i)
            lines << QString("line %1").arg(i);
        m.view()->setString(lines.join('\n'));
        const int at = int(m.view()->toPlainText().indexOf("line 390"));
        m.select(at, at + 8);
        m.view()->verticalScrollBar()->setValue(0);
        m.ui()->menuJump->trigger();
        QVERIFY(m.view()->verticalScrollBar()->value() > 0);
    }

    // Each request schedules its own one-shot timer: two quick requests show
    // the popover twice, and no more; it opens above the creator line.
    void aboutPopoverOncePerRequest()
    {
        start(0);
        m_shell->controller()->aboutApp();
        AboutController *about = m_shell->aboutController();
        QVERIFY(about);
        QSignalSpy shown(about->popoverMe(), &Popover::shown);
        QCOMPARE(shown.count(), 0); // half a second later, not at once
        m_shell->controller()->aboutApp();
        QCOMPARE(m_shell->aboutController(), about); // made once, shown again
        QVERIFY(about->window()->isVisible());
        QTRY_COMPARE(shown.count(), 2);
        QVERIFY(!shown.wait(1000));
        expectPopover(about->popoverMe(), about->creator, Popover::MaxYEdge);
    }

    // Closing the window before the timer fires does not cancel the popover
    // request, but nothing appears without the window.
    void closedAboutWindowStillGetsItsPopoverRequest()
    {
        AboutController about;
        QSignalSpy shown(about.popoverMe(), &Popover::shown);
        about.showWindow(this);
        about.timeToload();
        about.window()->close();
        QVERIFY(shown.wait(5000));
        QCOMPARE(shown.count(), 1);
        QVERIFY(!about.popoverMe()->isShown());
    }

    void popoverGeometryTouchesTheChosenEdge_data()
    {
        columns<int, QRect>({"edge", "expected"});
        // Anchor (100,100) 40x20, popover 60x30, gap 4.
        QTest::newRow("left (0)") << 0 << QRect(36, 94, 60, 30);
        QTest::newRow("below (1)") << 1 << QRect(89, 124, 60, 30);
        QTest::newRow("right (2)") << 2 << QRect(144, 94, 60, 30);
        QTest::newRow("above (3)") << 3 << QRect(89, 66, 60, 30);
    }
    void popoverGeometryTouchesTheChosenEdge()
    {
        QFETCH(int, edge);
        QTEST(popoverGeometry(QRect(100, 100, 40, 20), QSize(60, 30), Popover::Edge(edge)), "expected");
    }

    // A transient popover: the next click elsewhere closes it.
    void popoverClosesOnAClickElsewhere()
    {
        QWidget host;
        host.resize(200, 100);
        auto *popover = new Popover(&host);
        host.show();
        popover->showRelativeToRect(host.rect(), &host, Popover::MinYEdge);
        QVERIFY(popover->isShown());
        QSignalSpy clicked(popover, &Popover::clicked);
        QTest::mouseClick(popover, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        QTest::mouseClick(&host, Qt::LeftButton);
        QVERIFY(!popover->isShown());
    }

    void noticeNamesTheOperationAndHowItEnded_data()
    {
        columns<int, OperationEnd, QString, QString>({"tag", "end", "summary", "body"});
        using C = AppController;
        QTest::newRow("compile") << int(C::TagCompile) << OperationEnd::AllDone << "Compile ZELMOR" << "All done.";
        QTest::newRow("update") << int(C::TagUpdate) << OperationEnd::AllDone
                                << "Update source codes and submodules" << "All done.";
        QTest::newRow("modules") << int(C::TagModules) << OperationEnd::Done << "Get module initialized" << "Done.";
        QTest::newRow("clone stopped") << int(C::TagClone) << OperationEnd::TerminatedByUser
            << "Get a complete copy of source codes of ZELLMOR from GitHub" << "Task terminated by user.";
        QTest::newRow("no operation") << 0 << OperationEnd::Done << "ZELMOR Helper" << "Done.";
    }
    void noticeNamesTheOperationAndHowItEnded()
    {
        QFETCH(int, tag);
        QFETCH(OperationEnd, end);
        const OperationNotice notice = operationNotice(tag, end);
        QTEST(notice.summary, "summary");
        QTEST(notice.body, "body");
    }

    // The end of a real compile's last stage, first with the main window
    // active, then with another window in front. Calls on one connection
    // arrive in order, so the single notification that arrives proves the
    // first end sent none.
    void onlyAnInactiveWindowIsNotified()
    {
        start(0);
        AppController *c = m_shell->controller();
        MainWindow *window = m_shell->window();
        m_fake.calls.clear();
        QSignalSpy notified(&m_fake, &FakeNotifications::notified);

        QApplication::setActiveWindow(window);
        QTRY_VERIFY(window->isActiveWindow());
        endCompile(c);
        QTRY_VERIFY(c->outputField->string().endsWith("All done.\n"));
        QVERIFY(!c->unixTask);

        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        QTRY_VERIFY(!window->isActiveWindow());
        c->selectItemWithTag(AppController::TagUpdate);
        c->buttonPerform->setText(AppController::tr("Stop"));
        c->runUnixTask("sleep 30", m_dir.path());
        c->perform(); // Stop
        QVERIFY(notified.wait(10000));
        QCOMPARE(m_fake.calls.size(), 1);
        const FakeNotifications::Call call = m_fake.calls.first();
        QCOMPARE(call.application, QString("ZELMOR Helper"));
        QCOMPARE(call.summary, QString("Update source codes and submodules"));
        QCOMPARE(call.body, QString("Task terminated by user."));
        QCOMPARE(call.icon, QString("org.zelmor.ZELMORHelper"));
        QCOMPARE(call.hints.value("desktop-entry").toString(), QString("org.zelmor.ZELMORHelper"));

        endCompile(c);
        QVERIFY(notified.wait(10000));
        QCOMPARE(m_fake.calls.last().summary, QString("Compile ZELMOR"));
        QCOMPARE(m_fake.calls.last().body, QString("All done."));
    }

    // Last, since it runs the application to its end: closing the main
    // window ends it, and the end asks the companion to quit.
    void closingTheMainWindowEndsTheApplication()
    {
        store().setObject(SettingsKeys::QuitStatusbarApp, QStringLiteral("1"));
        start(0);
        Companion companion(m_statusbarId);
        QTimer::singleShot(20000, qApp, [] { QCoreApplication::exit(1); });
        QTimer::singleShot(0, m_shell->window(), &QWidget::close);
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(companion.quit.count() == 1 || companion.quit.wait(5000));
    }

private:
    // The compile's copy stage ends: "All done.".
    void endCompile(AppController *c)
    {
        c->selectItemWithTag(AppController::TagCompile);
        c->buttonPerform->setText(AppController::tr("Stop"));
        c->now = 2;
        c->terminatedByUser = 0;
        c->runUnixTask("true", m_dir.path());
    }

    // firstLaunch < 0 leaves the setting as it is.
    void start(int firstLaunch = -1)
    {
        if (firstLaunch >= 0)
            store().setObject(SettingsKeys::FirstLaunch, firstLaunch);
        m_shell = std::make_unique<ApplicationShell>();
        m_shell->start();
    }
    ZELMORHelperAppDelegate *delegate() const { return m_shell->delegate(); }
    Ui::MainWindow *ui() const { return m_shell->window()->ui(); }

    QTemporaryDir m_dir;
    QProcess m_bus;
    FakeNotifications m_fake;
    QString m_bundle, m_statusbarMarker, m_installerMarker, m_statusbarId;
    std::unique_ptr<ApplicationShell> m_shell;
    QStringList m_answers;
    QWidget *m_chooserParent = nullptr;
    QString m_chooserPrompt;
    QList<float> m_relaunches;
};

ZELMOR_TEST_MAIN(TestAppShell)
#include "tst_appshell.moc"
