#include "TestSupport.h"

#include "platform/Bundle.h"
#include "platform/Relaunch.h"
#include "settings/LoginAgent.h"
#include "settings/PrefsController.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/AlertSheet.h"
#include "widgets/FolderChoice.h"
#include "widgets/Popover.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

using namespace TestSupport;

namespace {

SettingsStore &store()
{
    return SettingsStore::standard();
}

// What a screen reader's or voice control's Toggle does: the box changes
// without a click.
void toggle(QAbstractButton *box)
{
    auto *actions = QAccessible::queryAccessibleInterface(box)->actionInterface();
    QVERIFY(actions && actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
}

void storeAll(const QVariantMap &values)
{
    for (auto it = values.begin(); it != values.end(); ++it)
        store().setObject(it.key(), it.value());
}

const QString Countdown = QStringLiteral(
    "ZELMOR Helper must restart to take effects of changes.\n"
    "You can restart the application later through the menu bar item.\n \nCount down %1 secs...");

} // namespace

class TestPrefs : public QObject
{
    Q_OBJECT

    QList<float> m_relaunches;
    QTemporaryDir m_dir;
    const QString m_autostart = homeDir() + "/.config/autostart";
    QString m_agent;

private slots:
    void initTestCase()
    {
        // The built bundle's path has a blank; Reset All runs its tool.
        Bundle::setMainBundlePath(buildBundleDir());
        Bundle::exposeHelpersOnPath();
        QVERIFY(Bundle::statusbarAppPath().contains(' '));
        const QString identifier = Bundle::readInfo(Bundle::statusbarAppPath())->identifier;
        m_agent = m_autostart + "/" + identifier + ".desktop";
        store().registerApplicationDefaults(Bundle::mainBundlePath());
        Relaunch::setHandler([this](float delay) { m_relaunches.append(delay); });
        QDir(m_dir.path()).mkpath("Dev/inner");
    }
    void init()
    {
        store().persisted().removeDomain();
        m_relaunches.clear();
        QDir(m_autostart).removeRecursively();
        QDir().mkpath(m_autostart);
    }

    // A fresh user's window, what its switches store, and what a later one loads.
    void windowLoadsAndStores()
    {
        PrefsController prefs(nullptr);
        // Filling the window writes nothing, so registered defaults stay defaults.
        QVERIFY(store().persisted().values().isEmpty());
        QCOMPARE(prefs.window()->windowTitle(), "Preferences");
        // The two texts whose odd spelling is easiest to "fix" by mistake.
        QCOMPARE(prefs.pathsPopMessage->text(),
                 "If you want to use 'ZELMOR' as the default name of workspace  and 'Output' as "
                 "the name of output folder, you just need to choose the parent folder of them. "
                 "Otherwise, you need to choose the complete path.");
        QCOMPARE(prefs.enableStartup->text().remove('&'), // as shown, without its mnemonic
                 "Enable ZELMOR Helper Statusbar App Statup at Login");
        QCOMPARE(prefs.outputText->text(), SettingsKeys::DefaultOutput);
        QVERIFY(prefs.defaultToZELMORCheckbox->isChecked() && prefs.rootText->isReadOnly());

        prefs.showWindow();
        QVERIFY(prefs.pathsView->isVisible() && !prefs.switchView->isVisible());
        prefs.helpButton->click();
        QVERIFY(prefs.popover->isShown());
        QCOMPARE(prefs.popover->edge(), Popover::MaxXEdge);
        prefs.toolbarSwitch->trigger();
        QVERIFY(!prefs.pathsView->isVisible() && prefs.switchView->isVisible());

        // The quit switch and Reset Warnings store strings, compared with "1".
        // A Toggle stores what a click stores, here and for every switch below.
        prefs.enableLogCheckBox->click();
        QCOMPARE(store().objectForKey(SettingsKeys::Log), QVariant(1));
        prefs.openquitWithHelperCheckBox->click();
        QCOMPARE(store().objectForKey(SettingsKeys::QuitStatusbarApp), QVariant(QString("1")));
        toggle(prefs.openquitWithHelperCheckBox);
        QCOMPARE(store().objectForKey(SettingsKeys::QuitStatusbarApp), QVariant(QString("0")));
        store().setObject(SettingsKeys::FirstLaunch, 0);
        prefs.switchResetWarnings->click();
        QCOMPARE(store().objectForKey(SettingsKeys::FirstLaunch), QVariant(QString("1")));

        storeAll({{SettingsKeys::DefaultNameZELMOR, 0}, {SettingsKeys::QuitStatusbarApp, "1"}});
        PrefsController later(nullptr);
        QVERIFY(!later.defaultToZELMORCheckbox->isChecked() && !later.outputText->isReadOnly());
        QVERIFY(later.enableLogCheckBox->isChecked());
        QVERIFY(later.openquitWithHelperCheckBox->isChecked());
        toggle(later.enableLogCheckBox);
        QCOMPARE(store().objectForKey(SettingsKeys::Log), QVariant(0));

        // Every edit stores the whole text, an emptied field included.
        for (QLineEdit *field : {later.rootText, later.outputText}) {
            const QString key =
                field == later.rootText ? SettingsKeys::Workspace : SettingsKeys::Output;
            QTest::keyClicks(field, "/w");
            QCOMPARE(store().persisted().value(key), QVariant(field->text()));
            field->selectAll();
            QTest::keyClick(field, Qt::Key_Backspace);
            QCOMPARE(store().persisted().value(key), QVariant(QString("")));
        }
    }

    void defaultNameSwitch_data()
    {
        columns<QString, QString, QString, QString>({"root", "out", "newRoot", "newOut"});
        QTest::newRow("substring kept") << "/x/ZELMORsrc" << "/Developer/ZELMOR/Output"
                                        << "/x/ZELMORsrc" << "/Developer/ZELMOR/Output";
        QTest::newRow("extended as typed")
            << "/x/zelmor/" << "/d/ZELMOR/O" << "/x/zelmor//ZELMOR" << "/d/ZELMOR/O/ZELMOR/Output";
    }
    void defaultNameSwitch()
    {
        QFETCH(QString, root);
        QFETCH(QString, out);
        storeAll({{SettingsKeys::DefaultNameZELMOR, 0}, {SettingsKeys::Workspace, root},
                  {SettingsKeys::Output, out}});
        PrefsController prefs(nullptr);
        // On, off and on again: the second turn finds the names and adds nothing.
        for (const bool on : {true, false, true}) {
            if (on)
                prefs.defaultToZELMORCheckbox->click();
            else
                toggle(prefs.defaultToZELMORCheckbox);
            QCOMPARE(store().objectForKey(SettingsKeys::DefaultNameZELMOR), QVariant(on ? 1 : 0));
            QCOMPARE(prefs.rootText->isReadOnly(), on);
            QTEST(store().stringValue(SettingsKeys::Workspace), "newRoot");
            QTEST(store().stringValue(SettingsKeys::Output), "newOut");
        }
    }

    // Where a chooser opens for a stored path (minus the default names), and
    // which folder it gives back for what was typed while it showed /a/Dev.
    void folderChoice_data()
    {
        columns<bool, QString, QString, QString>({"opening", "path", "appended", "expected"});
        QTest::newRow("open at the parent of the default names")
            << true << "/a/Dev/ZELMOR/Output" << "/ZELMOR/Output" << "/a/Dev";
        QTest::newRow("open, no names in it") << true << "/a/Dev/src" << "/ZELMOR" << "/a/Dev";
        QTest::newRow("open, nothing of it exists") << true << "/Developer/ZELMOR" << "" << "/";
        QTest::newRow("open, empty") << true << "" << "/ZELMOR" << "/home/u";
        QTest::newRow("a highlighted entry's name") << false << "inner" << "" << "/a/Dev";
        QTest::newRow("relative, parent") << false << "../Dev/inner" << "" << "/a/Dev/inner";
        QTest::newRow("home") << false << "~/x" << "" << "/home/u/x";
        QTest::newRow("typed folder missing") << false << "/nowhere" << "" << "/a/Dev";
    }
    void folderChoice()
    {
        QFETCH(bool, opening);
        QFETCH(QString, path);
        QFETCH(QString, appended);
        // Nothing else exists; home is /home/u.
        const QStringList folders{"/", "/a", "/a/Dev", "/a/Dev/inner", "/home/u/x"};
        const auto isFolder = [&](const QString &folder) { return folders.contains(folder); };
        QTEST(opening ? FolderChoice::startFolder(path, appended, "/home/u", isFolder)
                      : FolderChoice::shownFolder("/a/Dev", path, "/home/u", isFolder),
              "expected");
    }

    // The chooser opens on the window where choosing again gives back what is
    // stored, and its folder is stored named by the switch as it was at the
    // click; a cancel stores nothing.
    void chosenFolderIsNamedByTheSwitchAtTheClick_data()
    {
        columns<bool, int, QString, QString>({"workspace", "defaultName", "chosen", "stored"});
        QTest::newRow("workspace, on") << true << 1 << "/p" << "/p/ZELMOR";
        QTest::newRow("output, on") << false << 1 << "/p" << "/p/ZELMOR/Output";
        QTest::newRow("workspace, off, as chosen") << true << 0 << "/p/" << "/p/";
        QTest::newRow("output, off") << false << 0 << "/p" << "/p";
        QTest::newRow("cancelled") << false << 1 << "" << "<dev>/ZELMOR/Output";
    }
    void chosenFolderIsNamedByTheSwitchAtTheClick()
    {
        QFETCH(bool, workspace);
        QFETCH(int, defaultName);
        QFETCH(QString, chosen);
        QFETCH(QString, stored);
        const QString key = workspace ? SettingsKeys::Workspace : SettingsKeys::Output;
        const QString dev = m_dir.path() + "/Dev";
        const QString names = !defaultName ? "" : workspace ? "/ZELMOR" : "/ZELMOR/Output";
        storeAll({{SettingsKeys::DefaultNameZELMOR, defaultName}, {key, dev + names}});
        PrefsController prefs(nullptr);
        QList<FolderChoice::Request> requests;
        FolderChoice::setChooser([&](const FolderChoice::Request &request, auto done) {
            requests << request;
            // The switch turns while the chooser is up.
            store().setObject(SettingsKeys::DefaultNameZELMOR, 1 - defaultName);
            done(chosen.isEmpty() ? std::nullopt : std::optional<QString>(chosen));
        });
        const auto restore = qScopeGuard([] { FolderChoice::setChooser({}); });
        (workspace ? prefs.browserRootButton : prefs.browserOutputButton)->click();
        QCOMPARE(requests.size(), 1);
        QCOMPARE(requests.first().window, prefs.window());
        QCOMPARE(requests.first().start, dev);
        QCOMPARE(requests.first().prompt, "Select");
        QCOMPARE(requests.first().answer, FolderChoice::Answer::ShownFolder);
        stored.replace("<dev>", dev);
        QCOMPARE(store().stringValue(key), stored);
        QCOMPARE((workspace ? prefs.rootText : prefs.outputText)->text(), stored);
    }

    void agentTexts()
    {
        QCOMPARE(LoginAgent::desktopExecArgument("/opt/z/app"), "/opt/z/app");
        QCOMPARE(LoginAgent::desktopExecArgument("/a\\b"), "\"/a\\\\\\\\b\"");
        QCOMPARE(LoginAgent::desktopExecArgument("/a b%c"), "\"/a b%%c\"");
        const QString executable = "/A b/Z & Co.app/Contents/MacOS/s";
        QCOMPARE(LoginAgent::launchAgentPlist("org.z.HelperStatusbarApp", executable),
                 QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                            "<plist version=\"1.0\">\n\t<dict>\n"
                            "\t\t<key>Label</key>\n\t\t<string>org.z.HelperStatusbarApp</string>\n"
                            "\t\t<key>ProgramArguments</key>\n\t\t<array>\n"
                            "\t\t\t<string>/A b/Z &amp; Co.app/Contents/MacOS/s</string>\n"
                            "\t\t\t<string>-runMode</string>\n\t\t\t<string>autoLaunched</string>\n"
                            "\t\t</array>\n\t\t<key>RunAtLoad</key>\n\t\t<true/>\n"
                            "\t</dict>\n</plist>\n"));
    }

    // The switch writes a valid entry and removes it; otherwise what is there
    // stays (a hand-made entry, no folder, a folder in its place, no companion).
    void startupSwitchAndWhatIsThere()
    {
        qputenv("XDG_CONFIG_HOME", "/xdg/conf");
        QCOMPARE(LoginAgent::agentsFolder(), "/xdg/conf/autostart");
        // A relative one counts as unset: the entry still goes to HOME/.config.
        qputenv("XDG_CONFIG_HOME", "conf");
        const QByteArray config = QFile::encodeName(homeDir() + "/.config");
        const auto restore = qScopeGuard([config] { qputenv("XDG_CONFIG_HOME", config); });
        {
            PrefsController prefs(nullptr);
            prefs.enableStartup->click();
            const QString executable = Bundle::executablePath(Bundle::statusbarAppPath());
            QCOMPARE(readFile(m_agent),
                     "[Desktop Entry]\nType=Application\nName=ZELMOR Helper Statusbar App\nExec=\""
                         + executable.toUtf8()
                         + "\" -runMode autoLaunched\nX-GNOME-Autostart-enabled=true\n");
            int exitCode = -1;
            QCOMPARE(run("desktop-file-validate", {m_agent}, {}, &exitCode), QByteArray());
            QCOMPARE(exitCode, 0);
            toggle(prefs.enableStartup);
            QVERIFY(!QFileInfo::exists(m_agent));
            LoginAgent::uninstall(); // a second time: silent, and the folder stays
            QVERIFY(QFileInfo(m_autostart).isDir());
        }
        writeFile(m_agent, "made by hand\n");
        QVERIFY(PrefsController(nullptr).enableStartup->isChecked());
        LoginAgent::install();
        QCOMPARE(readFile(m_agent), QByteArray("made by hand\n"));

        QDir(m_autostart).removeRecursively();
        LoginAgent::install();
        QVERIFY(!QFileInfo::exists(m_autostart));
        QDir().mkpath(m_agent);
        LoginAgent::install();
        QVERIFY(QFileInfo(m_agent).isDir() && LoginAgent::isInstalled());

        Bundle::setMainBundlePath(m_dir.path());
        QVERIFY(!LoginAgent::isInstalled());
        LoginAgent::install();
        LoginAgent::uninstall();
        Bundle::setMainBundlePath(buildBundleDir());
        QCOMPARE(QDir(m_autostart).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size(), 1);
        QVERIFY(QFileInfo(m_agent).isDir());
    }

    // Last ones, since Reset All's child removes the domain in the background.

    // The window freezes, says why, and asks for a restart; "Later" stops the
    // count and leaves the window frozen. The child removes every setting.
    void resetAllFreezesTheWindowAndAsks()
    {
        storeAll({{SettingsKeys::Workspace, "/mine"}, {SettingsKeys::FirstLaunch, 0}});
        QMainWindow mainWindow;
        PrefsController prefs(&mainWindow);
        prefs.showWindow();
        prefs.switchResetAll->click();
        for (const char *name :
             {"rootText", "outputText", "browserOutputButton", "browserRootButton",
              "defaultToZELMORCheckbox", "enableLogCheckBox", "enableStartup",
              "openquitWithHelperCheckBox"})
            QVERIFY2(!prefs.window()->findChild<QWidget *>(name)->isEnabled(), name);
        QVERIFY(prefs.switchResetAll->isEnabled() && prefs.switchResetWarnings->isEnabled());
        const QString caution("* Please restart ZELMOR Helper to take effect(s).");
        QCOMPARE(prefs.cautionText->text(), caution);
        QCOMPARE(mainWindow.windowTitle(), caution);
        AlertSheet *alert = prefs.iAlert;
        QCOMPARE(alert->parentWidget(), prefs.window());
        QCOMPARE(alert->buttonTitles(), QStringList({"Restart", "Later"}));
        QCOMPARE(alert->text(), QString("Notice"));
        QCOMPARE(alert->informativeText(), Countdown.arg(10));
        alert->buttonFor(AlertSheet::SecondButtonReturn)->click();
        QVERIFY(!alert->isVisible() && !prefs.timer()->isActive() && !prefs.rootText->isEnabled());

        // The child removes the whole persisted domain through the bundle's tool.
        QTRY_COMPARE(store().persisted().state(), DefaultsDomain::State::Missing);
        QVERIFY(m_relaunches.isEmpty());
    }

    // Unanswered, a fresh alert counts 10 to 0, one a second, then relaunches.
    void restartAlertCountsDownToARelaunch()
    {
        PrefsController prefs(nullptr);
        prefs.showWindow();
        prefs.switchResetAll->click();
        prefs.switchResetAll->click(); // a second Reset All starts afresh
        AlertSheet *alert = prefs.iAlert;
        QCOMPARE(alert->informativeText(), Countdown.arg(10));
        QCOMPARE(prefs.timer()->interval(), 1000);
        QSignalSpy ticks(prefs.timer(), &QTimer::timeout);
        QVERIFY(ticks.wait(5000));
        QCOMPARE(alert->informativeText(), Countdown.arg(9));
        QTRY_COMPARE_WITH_TIMEOUT(m_relaunches, QList<float>{2.0f}, 15000);
        QCOMPARE(ticks.size(), 10);
        QCOMPARE(alert->informativeText(), Countdown.arg(0));
        QVERIFY(!alert->isVisible() && !prefs.timer()->isActive());
    }

    void restartRelaunchesAtOnce()
    {
        PrefsController prefs(nullptr);
        prefs.showWindow();
        prefs.switchResetAll->click();
        prefs.iAlert->buttonFor(AlertSheet::FirstButtonReturn)->click();
        QCOMPARE(m_relaunches, QList<float>{2.0f});
    }
};

ZELMOR_TEST_MAIN(TestPrefs)
#include "tst_prefs.moc"
