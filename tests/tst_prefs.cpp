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

#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTimer>

using namespace TestSupport;
using Chooser = PrefsController::Chooser;
Q_DECLARE_METATYPE(PrefsController::Chooser)

// The preferences window: what it loads and stores, its folder choosers, the
// login agent behind its startup switch, and "Reset All".

namespace {

SettingsStore &store()
{
    return SettingsStore::standard();
}

void storeAll(const QVariantMap &values)
{
    for (auto it = values.begin(); it != values.end(); ++it)
        store().setObject(it.key(), it.value());
}

QString autostartFolder()
{
    return homeDir() + "/.config/autostart";
}

QString agentPath()
{
    return autostartFolder() + "/" + Bundle::readInfo(Bundle::statusbarAppPath())->identifier + ".desktop";
}

// The field, chooser button and setting of the workspace or the output.
struct PathRow
{
    QLineEdit *field;
    QPushButton *button;
    QString key;
};
PathRow pathRow(PrefsController &prefs, bool workspace)
{
    return workspace ? PathRow{prefs.rootText, prefs.browserRootButton, SettingsKeys::Workspace}
                     : PathRow{prefs.outputText, prefs.browserOutputButton, SettingsKeys::Output};
}

// Records the order in which watched widgets become disabled.
class DisableRecorder : public QObject
{
public:
    QStringList order;
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange && !static_cast<QWidget *>(watched)->isEnabled())
            order.append(watched->objectName());
        return false;
    }
};

const QString Countdown = QStringLiteral(
    "ZELMOR Helper must restart to take effects of changes.\n"
    "You can restart the application later through the menu bar item.\n \nCount down %1 secs...");

// Reset All on a window; returns its restart alert.
AlertSheet *resetAll(PrefsController &prefs)
{
    prefs.resetAll();
    const auto sheets = AlertSheet::openSheets();
    return sheets.isEmpty() ? nullptr : sheets.last();
}

// Folders that exist, for the pure folder rules.
auto existing(const QStringList &folders)
{
    return [folders](const QString &path) { return folders.contains(path); };
}

} // namespace

class TestPrefs : public QObject
{
    Q_OBJECT

    QList<float> m_relaunches;
    QTemporaryDir m_dir;

private slots:
    void initTestCase()
    {
        // The built bundle, in a folder whose name has a blank: its
        // companion is what the login agent starts, its tool what Reset All runs.
        Bundle::setMainBundlePath(buildBundleDir());
        Bundle::exposeHelpersOnPath();
        QVERIFY(Bundle::statusbarAppPath().contains(' '));
        store().registerApplicationDefaults(Bundle::mainBundlePath());
        Relaunch::setHandler([this](float delay) { m_relaunches.append(delay); });
        QDir(m_dir.path()).mkpath("Dev/inner");
    }
    void init()
    {
        store().persisted().removeDomain();
        PrefsController::setFolderChooser({});
        m_relaunches.clear();
        QDir(autostartFolder()).removeRecursively();
        QDir().mkpath(autostartFolder());
    }

    void textsAndPages()
    {
        PrefsController prefs(nullptr);
        QCOMPARE(prefs.window()->windowTitle(), "Preferences");
        // The two texts whose odd spelling is easiest to "fix" by mistake.
        QCOMPARE(prefs.pathsPopMessage->text(),
                 "If you want to use 'ZELMOR' as the default name of workspace  and 'Output' as "
                 "the name of output folder, you just need to choose the parent folder of them. "
                 "Otherwise, you need to choose the complete path.");
        QCOMPARE(prefs.enableStartup->text().remove('&'), // as shown, without its mnemonic
                 "Enable ZELMOR Helper Statusbar App Statup at Login");

        prefs.showWindow();
        prefs.showWindow();
        QVERIFY(prefs.window()->isVisible());
        QVERIFY(prefs.pathsView->isVisible() && !prefs.switchView->isVisible());
        prefs.toolbarSwitch->trigger();
        QVERIFY(!prefs.pathsView->isVisible() && prefs.switchView->isVisible());
        prefs.toolbarPaths->trigger();
        QVERIFY(prefs.pathsView->isVisible() && !prefs.switchView->isVisible());
        prefs.helpButton->click();
        QVERIFY(prefs.popover->isShown());
        QCOMPARE(prefs.popover->positioningView(), prefs.helpButton);
        QCOMPARE(prefs.popover->edge(), Popover::MaxXEdge);
    }

    void loadsStates_data()
    {
        columns<QVariantMap, bool, bool, bool>({"stored", "defaultName", "log", "quit"});
        QTest::newRow("fresh user") << QVariantMap{} << true << false << false;
        QTest::newRow("switches stored as numbers")
            << QVariantMap{{SettingsKeys::DefaultNameZELMOR, 0}, {SettingsKeys::Log, 1},
                           {SettingsKeys::QuitStatusbarApp, 1}} << false << true << true;
        QTest::newRow("quit as the string") << QVariantMap{{SettingsKeys::QuitStatusbarApp, "1"}} << true << false << true;
    }
    void loadsStates()
    {
        QFETCH(QVariantMap, stored);
        QFETCH(bool, defaultName);
        storeAll(stored);
        PrefsController prefs(nullptr);
        QCOMPARE(prefs.rootText->text(), store().stringValue(SettingsKeys::Workspace));
        QCOMPARE(prefs.outputText->text(), store().stringValue(SettingsKeys::Output));
        QCOMPARE(prefs.defaultToZELMORCheckbox->isChecked(), defaultName);
        QCOMPARE(prefs.rootText->isReadOnly(), defaultName);
        QCOMPARE(prefs.outputText->isReadOnly(), defaultName);
        QTEST(prefs.enableLogCheckBox->isChecked(), "log");
        QTEST(prefs.openquitWithHelperCheckBox->isChecked(), "quit");
        // Loading writes nothing, so registered defaults stay defaults.
        QCOMPARE(store().persisted().values(), stored);
    }

    void defaultNameSwitch_data()
    {
        columns<QString, QString, QString, QString>({"workspace", "output", "newWorkspace", "newOutput"});
        QTest::newRow("substring kept")
            << "/x/ZELMORsrc" << "/Developer/ZELMOR/Output" << "/x/ZELMORsrc" << "/Developer/ZELMOR/Output";
        QTest::newRow("other case extended") << "/x/zelmor" << "/Developer/ZELMOR/Out"
                                             << "/x/zelmor/ZELMOR" << "/Developer/ZELMOR/Out/ZELMOR/Output";
        QTest::newRow("output from its own text")
            << "/Users/a/ZELMOR" << "/Users/a/Out" << "/Users/a/ZELMOR" << "/Users/a/Out/ZELMOR/Output";
        QTest::newRow("trailing slash kept") << "/a/" << "" << "/a//ZELMOR" << "/ZELMOR/Output";
    }
    void defaultNameSwitch()
    {
        QFETCH(QString, workspace);
        QFETCH(QString, output);
        QFETCH(QString, newWorkspace);
        QFETCH(QString, newOutput);
        storeAll({{SettingsKeys::DefaultNameZELMOR, 0}, {SettingsKeys::Workspace, workspace},
                  {SettingsKeys::Output, output}});
        PrefsController prefs(nullptr);
        // On, off and on again: the second turn finds the names and adds nothing.
        for (const bool on : {true, false, true}) {
            prefs.defaultToZELMORCheckbox->click();
            QCOMPARE(store().objectForKey(SettingsKeys::DefaultNameZELMOR), QVariant(on ? 1 : 0));
            QCOMPARE(prefs.rootText->isReadOnly(), on);
            QCOMPARE(prefs.outputText->isReadOnly(), on);
            QCOMPARE(prefs.rootText->text(), newWorkspace);
            QCOMPARE(prefs.outputText->text(), newOutput);
            QCOMPARE(store().stringValue(SettingsKeys::Workspace), newWorkspace);
            QCOMPARE(store().stringValue(SettingsKeys::Output), newOutput);
        }
    }

    void chooser_data()
    {
        columns<Chooser, int, QString>({"which", "defaultName", "stored"});
        QTest::newRow("workspace, switch on") << Chooser::Workspace << 1 << "/Users/a/Dev/ZELMOR";
        QTest::newRow("workspace, switch off") << Chooser::Workspace << 0 << "/Users/a/Dev";
        QTest::newRow("output, switch on") << Chooser::Output << 1 << "/Users/a/Dev/ZELMOR/Output";
        QTest::newRow("output, switch off") << Chooser::Output << 0 << "/Users/a/Dev";
    }
    void chooser()
    {
        QFETCH(Chooser, which);
        QFETCH(int, defaultName);
        QFETCH(QString, stored);
        store().setObject(SettingsKeys::DefaultNameZELMOR, defaultName);
        PrefsController prefs(nullptr);
        QList<std::function<void(std::optional<QString>)>> pending;
        PrefsController::setFolderChooser([&](QWidget *window, Chooser asked, auto done) {
            QCOMPARE(window, prefs.window());
            QCOMPARE(asked, which);
            pending.append(done);
        });
        const PathRow row = pathRow(prefs, which == Chooser::Workspace);
        const QString before = row.field->text();

        row.button->click();
        QCOMPARE(pending.size(), 1);
        pending.takeFirst()(std::nullopt);
        QCOMPARE(row.field->text(), before);
        QVERIFY(!store().persisted().value(row.key).isValid());

        // The switch counts as it was at the click, not when the chooser ends.
        row.button->click();
        store().setObject(SettingsKeys::DefaultNameZELMOR, 1 - defaultName);
        pending.takeFirst()(QStringLiteral("/Users/a/Dev"));
        QCOMPARE(store().objectForKey(row.key), QVariant(stored));
        QCOMPARE(row.field->text(), stored);
        QCOMPARE(prefs.pathStr, stored);
    }

    // Where a folder chooser opens, and which folder it gives back.
    void shownFolder_data()
    {
        columns<QString, QString>({"typed", "expected"});
        // The dialog shows /a/Dev, which holds inner/; /b and /home/u/x exist.
        QTest::newRow("nothing typed") << "" << "/a/Dev";
        QTest::newRow("a highlighted entry's name") << "inner" << "/a/Dev";
        QTest::newRow("absolute path") << "/b" << "/b";
        QTest::newRow("trailing slash, dot segments") << "/b/./" << "/b";
        QTest::newRow("relative path") << "inner/" << "/a/Dev/inner";
        QTest::newRow("parent") << "../Dev/inner" << "/a/Dev/inner";
        QTest::newRow("home") << "~/x" << "/home/u/x";
        QTest::newRow("typed folder missing") << "/nowhere" << "/a/Dev";
        QTest::newRow("blanks kept") << "/b c" << "/a/Dev";
    }
    void shownFolder()
    {
        QFETCH(QString, typed);
        QTEST(FolderChoice::shownFolder("/a/Dev", typed, "/home/u",
                                        existing({"/a/Dev", "/a/Dev/inner", "/b", "/home/u/x"})),
              "expected");
    }

    void startFolder_data()
    {
        columns<QString, QString, QString>({"stored", "appended", "expected"});
        // /a and /a/Dev exist; nothing below them; home is /home/u.
        QTest::newRow("parent of the default name") << "/a/Dev/ZELMOR" << "/ZELMOR" << "/a/Dev";
        QTest::newRow("output's default names") << "/a/Dev/ZELMOR/Output" << "/ZELMOR/Output" << "/a/Dev";
        QTest::newRow("complete path, existing") << "/a/Dev" << "" << "/a/Dev";
        QTest::newRow("complete path, missing") << "/a/Dev/x/y" << "" << "/a/Dev";
        QTest::newRow("no default name in it") << "/a/Dev/src" << "/ZELMOR" << "/a/Dev";
        QTest::newRow("nothing of it exists") << "/Developer/ZELMOR" << "/ZELMOR" << "/";
        QTest::newRow("unnormalised root") << "//ZELMOR" << "/ZELMOR" << "/";
        QTest::newRow("empty") << "" << "/ZELMOR" << "/home/u";
        QTest::newRow("relative") << "src" << "" << "/home/u";
        QTest::newRow("home") << "~/ZELMOR" << "/ZELMOR" << "/home/u";
    }
    void startFolder()
    {
        QFETCH(QString, stored);
        QFETCH(QString, appended);
        QTEST(FolderChoice::startFolder(stored, appended, "/home/u", existing({"/", "/a", "/a/Dev", "/home/u"})),
              "expected");
    }

    // The real chooser opens where choosing again gives back the stored
    // path, and a folder typed into it is the one stored; cancelled, it
    // stores nothing.
    void realChooserTakesTheTypedFolder_data()
    {
        columns<int, QString, QString>({"defaultName", "typed", "stored"}); // relative to m_dir
        QTest::newRow("typed, switch on") << 1 << "/Dev/inner" << "/Dev/inner/ZELMOR";
        QTest::newRow("typed, switch off") << 0 << "/Dev/inner" << "/Dev/inner";
        QTest::newRow("an entry's name only") << 1 << "inner" << "/Dev/ZELMOR";
        QTest::newRow("cancelled") << 1 << "" << "/Dev/ZELMOR";
    }
    void realChooserTakesTheTypedFolder()
    {
        QFETCH(int, defaultName);
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        const QString dev = m_dir.path() + "/Dev";
        storeAll({{SettingsKeys::DefaultNameZELMOR, defaultName},
                  {SettingsKeys::Workspace, defaultName ? dev + "/ZELMOR" : dev}});
        PrefsController prefs(nullptr);
        prefs.showWindow();
        prefs.browserRootButton->click();
        QFileDialog *panel = nullptr;
        QTRY_VERIFY((panel = prefs.window()->findChild<QFileDialog *>()) && panel->isVisible());
        QCOMPARE(panel->windowModality(), Qt::WindowModal);
        QCOMPARE(panel->fileMode(), QFileDialog::Directory);
        QCOMPARE(panel->labelText(QFileDialog::Accept), "Select");
        QCOMPARE(panel->directory().absolutePath(), dev);
        if (typed.isEmpty()) {
            static_cast<QDialog *>(panel)->reject();
        } else {
            auto *name = panel->findChild<QLineEdit *>("fileNameEdit");
            QVERIFY(name);
            panel->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(panel));
            name->setFocus();
            QTest::keyClicks(name, typed.startsWith('/') ? m_dir.path() + typed : typed);
            QTest::keyClick(name, Qt::Key_Return);
        }
        QTRY_VERIFY(!prefs.window()->findChild<QFileDialog *>());
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), m_dir.path() + stored);
        QCOMPARE(prefs.rootText->text(), m_dir.path() + stored);
    }

    void typingStoresWholeText_data()
    {
        QTest::addColumn<bool>("workspace");
        QTest::newRow("workspace") << true;
        QTest::newRow("output") << false;
    }
    void typingStoresWholeText()
    {
        QFETCH(bool, workspace);
        store().setObject(SettingsKeys::DefaultNameZELMOR, 0);
        PrefsController prefs(nullptr);
        const PathRow row = pathRow(prefs, workspace);
        QTest::keyClicks(row.field, "/w");
        QCOMPARE(store().objectForKey(row.key), QVariant(row.field->text()));
        QVERIFY(row.field->text().endsWith("/w"));
        row.field->selectAll();
        QTest::keyClick(row.field, Qt::Key_Backspace);
        QCOMPARE(store().objectForKey(row.key), QVariant(QString("")));
        QCOMPARE(prefs.rootDirectory, SettingsKeys::DefaultWorkspace);
    }

    void switchesStoreTheirEncodings()
    {
        PrefsController prefs(nullptr);
        prefs.enableLogCheckBox->click();
        QCOMPARE(store().objectForKey(SettingsKeys::Log), QVariant(1));
        prefs.openquitWithHelperCheckBox->click();
        QCOMPARE(store().objectForKey(SettingsKeys::QuitStatusbarApp), QVariant(QString("1")));
        QVERIFY(store().isEqualToString(SettingsKeys::QuitStatusbarApp, "1"));
        prefs.openquitWithHelperCheckBox->click();
        QCOMPARE(store().objectForKey(SettingsKeys::QuitStatusbarApp), QVariant(QString("0")));
        store().setObject(SettingsKeys::FirstLaunch, 0);
        prefs.switchResetWarnings->click();
        QCOMPARE(store().objectForKey(SettingsKeys::FirstLaunch), QVariant(QString("1")));
        QVERIFY(AlertSheet::openSheets().isEmpty());
    }

    void agentExecArgument_data()
    {
        columns<QString, QString>({"argument", "written"});
        QTest::newRow("plain") << "/opt/z/app" << "/opt/z/app";
        QTest::newRow("blanks") << "/a b/app" << "\"/a b/app\"";
        QTest::newRow("dollar") << "/a$b" << "\"/a\\\\$b\"";
        QTest::newRow("backslash") << "/a\\b" << "\"/a\\\\\\\\b\"";
        QTest::newRow("percent quoted") << "/a b%c" << "\"/a b%%c\"";
    }
    void agentExecArgument()
    {
        QFETCH(QString, argument);
        QTEST(LoginAgent::desktopExecArgument(argument), "written");
    }

    void agentsFolder_data()
    {
        columns<QString, QString>({"xdg", "folder"});
        QTest::newRow("set") << "/xdg/conf" << "/xdg/conf/autostart";
        QTest::newRow("unset") << "" << "HOME/.config/autostart";
        QTest::newRow("relative") << "conf" << "HOME/.config/autostart";
    }
    void agentsFolder()
    {
        QFETCH(QString, xdg);
        QFETCH(QString, folder);
        const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", xdg.toUtf8());
        const QString got = LoginAgent::agentsFolder();
        qputenv("XDG_CONFIG_HOME", saved);
        QCOMPARE(got, folder.replace("HOME", QDir::homePath()));
    }

    void launchAgentPlist()
    {
        QCOMPARE(LoginAgent::launchAgentPlist("org.z.HelperStatusbarApp", "/A b/Z & Co.app/Contents/MacOS/s"),
                 QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                            "<plist version=\"1.0\">\n\t<dict>\n"
                            "\t\t<key>Label</key>\n\t\t<string>org.z.HelperStatusbarApp</string>\n"
                            "\t\t<key>ProgramArguments</key>\n\t\t<array>\n"
                            "\t\t\t<string>/A b/Z &amp; Co.app/Contents/MacOS/s</string>\n"
                            "\t\t\t<string>-runMode</string>\n\t\t\t<string>autoLaunched</string>\n"
                            "\t\t</array>\n\t\t<key>RunAtLoad</key>\n\t\t<true/>\n\t</dict>\n</plist>\n"));
    }

    // The startup switch writes a valid entry and removes it; the window
    // shows whether one is there and, filling itself, touches nothing.
    void startupSwitchInstallsTheAgent()
    {
        {
            PrefsController prefs(nullptr);
            QVERIFY(!prefs.enableStartup->isChecked() && !LoginAgent::isInstalled());
            prefs.enableStartup->click();
            QCOMPARE(LoginAgent::agentFilePath(), agentPath());
            const QString executable = Bundle::executablePath(Bundle::statusbarAppPath());
            QCOMPARE(readFile(agentPath()),
                     "[Desktop Entry]\nType=Application\nName=ZELMOR Helper Statusbar App\nExec=\""
                         + executable.toUtf8()
                         + "\" -runMode autoLaunched\nX-GNOME-Autostart-enabled=true\n");
            QVERIFY(LoginAgent::isInstalled());
            int exitCode = -1;
            QCOMPARE(run("desktop-file-validate", {agentPath()}, QString(), &exitCode), QByteArray());
            QCOMPARE(exitCode, 0);
            prefs.enableStartup->click();
            QVERIFY(!QFileInfo::exists(agentPath()));
            // Removing it twice is silent, and the folder stays.
            LoginAgent::uninstall();
            QVERIFY(!LoginAgent::isInstalled());
            QVERIFY(QFileInfo(autostartFolder()).isDir());
        }
        writeFile(agentPath(), "made by hand\n");
        PrefsController prefs(nullptr);
        QVERIFY(prefs.enableStartup->isChecked());
        QCOMPARE(readFile(agentPath()), QByteArray("made by hand\n"));
    }

    // Install leaves what is there alone: an entry (not even touched), a
    // missing folder, a folder in the entry's place (which counts as there).
    void installKeepsWhatIsThere()
    {
        writeFile(agentPath(), "[Desktop Entry]\nmine\n");
        const QDateTime old = QDateTime::currentDateTime().addDays(-3);
        {
            QFile file(agentPath());
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(old, QFileDevice::FileModificationTime));
        }
        LoginAgent::install();
        QCOMPARE(readFile(agentPath()), QByteArray("[Desktop Entry]\nmine\n"));
        QCOMPARE(QFileInfo(agentPath()).lastModified(), old);

        QDir(autostartFolder()).removeRecursively();
        LoginAgent::install();
        QVERIFY(!QFileInfo::exists(autostartFolder()));
        QDir().mkpath(agentPath());
        LoginAgent::install();
        QVERIFY(QFileInfo(agentPath()).isDir());
        QVERIFY(LoginAgent::isInstalled());

        // Without a companion in the bundle there is nothing to name: nothing
        // counts as installed, and nothing is written or removed.
        Bundle::setMainBundlePath(m_dir.path());
        QVERIFY(!LoginAgent::isInstalled());
        LoginAgent::install();
        LoginAgent::uninstall();
        Bundle::setMainBundlePath(buildBundleDir());
        QVERIFY(QFileInfo(agentPath()).isDir());
        QCOMPARE(QDir(autostartFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
    }

    // Last, since their child removes the domain in the background.
    void resetAllDeletesDomainAndAsksToRestart()
    {
        storeAll({{SettingsKeys::Workspace, "/mine"}, {SettingsKeys::FirstLaunch, 0}});
        QMainWindow mainWindow;
        PrefsController prefs(&mainWindow);
        prefs.showWindow();

        DisableRecorder recorder;
        const QStringList expectedOrder{"rootText", "outputText", "browserOutputButton",
                                        "browserRootButton", "defaultToZELMORCheckbox",
                                        "enableLogCheckBox", "enableStartup",
                                        "openquitWithHelperCheckBox"};
        for (const QString &name : expectedOrder)
            prefs.window()->findChild<QWidget *>(name)->installEventFilter(&recorder);

        AlertSheet *alert = resetAll(prefs);
        QCOMPARE(recorder.order, expectedOrder);
        QVERIFY(prefs.switchResetAll->isEnabled() && prefs.switchResetWarnings->isEnabled());
        const QString caution("* Please restart ZELMOR Helper to take effect(s).");
        QCOMPARE(prefs.cautionText->text(), caution);
        QCOMPARE(mainWindow.windowTitle(), caution);

        QVERIFY(alert);
        QCOMPARE(alert->parentWidget(), prefs.window());
        QCOMPARE(alert->buttonTitles(), QStringList({"Restart", "Later"}));
        QCOMPARE(alert->text(), QString("Notice"));
        QCOMPARE(alert->informativeText(), Countdown.arg(10));
        QCOMPARE(prefs.timer->interval(), 1000);

        // The child removes the whole persisted domain through the bundle's tool.
        QTRY_COMPARE(store().persisted().state(), DefaultsDomain::State::Missing);
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), SettingsKeys::DefaultWorkspace);

        // The timer drives the countdown by itself, to 0 and the relaunch.
        QTRY_COMPARE_WITH_TIMEOUT(m_relaunches, QList<float>{2.0f}, 15000);
        QCOMPARE(prefs.countdown, 0);
        QVERIFY(!prefs.timer->isActive());
        QVERIFY(AlertSheet::openSheets().isEmpty());
    }

    // The countdown ticks down the text; at 0, or on Restart, the
    // application relaunches; Later leaves the windows as they are.
    void resetAllAnswers_data()
    {
        columns<int, int>({"answer", "relaunched"});
        QTest::newRow("none, count to 0") << 0 << 1;
        QTest::newRow("Restart") << 1000 << 1;
        QTest::newRow("Later") << 1001 << 0;
    }
    void resetAllAnswers()
    {
        QFETCH(int, answer);
        QFETCH(int, relaunched);
        PrefsController prefs(nullptr);
        prefs.showWindow();
        AlertSheet *alert = resetAll(prefs);
        QVERIFY(alert);
        for (int left = 9; left >= 1; --left) {
            prefs.timeCountdownOfSettingChanged();
            QCOMPARE(alert->informativeText(), Countdown.arg(left));
            QVERIFY(m_relaunches.isEmpty());
        }
        if (answer == 0) {
            prefs.timeCountdownOfSettingChanged();
            QCOMPARE(alert->informativeText(), Countdown.arg(0));
            QVERIFY(!prefs.timer->isActive());
        } else {
            alert->buttonFor(answer)->click();
            QCOMPARE(prefs.timer->isActive(), relaunched == 1);
        }
        QCOMPARE(m_relaunches, relaunched ? QList<float>{2.0f} : QList<float>{});
        if (answer != 1000)
            QVERIFY(!alert->isVisible());
        if (answer == 1001) {
            QVERIFY(!prefs.rootText->isEnabled());
            // Pressing again starts over with a fresh count of 10.
            AlertSheet *again = resetAll(prefs);
            QVERIFY(again && again != alert);
            QCOMPARE(prefs.countdown, 10);
            QVERIFY(prefs.timer->isActive());
        }
    }
};

ZELMOR_TEST_MAIN(TestPrefs)
#include "tst_prefs.moc"
