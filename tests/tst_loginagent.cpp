#include "TestSupport.h"

#include "platform/Bundle.h"
#include "settings/LoginAgent.h"
#include "settings/PrefsController.h"
#include "settings/SettingsStore.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QProcessEnvironment>

class TestLoginAgent : public QObject
{
    Q_OBJECT

private:
    QString autostartFolder() const { return TestSupport::homeDir() + "/.config/autostart"; }
    QString entryPath() const
    {
        return autostartFolder() + "/" + Bundle::readInfo(Bundle::statusbarAppPath())->identifier
            + ".desktop";
    }

private slots:
    void initTestCase()
    {
        // The built bundle lives in a folder whose name has a blank.
        Bundle::setMainBundlePath(TestSupport::buildBundleDir());
        QVERIFY(Bundle::readInfo(Bundle::statusbarAppPath()));
        QVERIFY(Bundle::statusbarAppPath().contains(' '));
        SettingsStore::standard().registerApplicationDefaults(Bundle::mainBundlePath());
    }

    void init()
    {
        QDir(autostartFolder()).removeRecursively();
        QDir().mkpath(autostartFolder());
    }

    void execArgument_data()
    {
        TestSupport::columns<QString, QString>({"argument", "written"});
        QTest::newRow("plain") << "/opt/z/app" << "/opt/z/app";
        QTest::newRow("blanks") << "/a b/app" << "\"/a b/app\"";
        QTest::newRow("dollar") << "/a$b" << "\"/a\\\\$b\"";
        QTest::newRow("backslash") << "/a\\b" << "\"/a\\\\\\\\b\"";
        QTest::newRow("percent quoted") << "/a b%c" << "\"/a b%%c\"";
    }
    void execArgument()
    {
        QFETCH(QString, argument);
        QTEST(LoginAgent::desktopExecArgument(argument), "written");
    }

    void agentsFolder_data()
    {
        TestSupport::columns<QString, QString>({"xdg", "folder"});
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
        QCOMPARE(got, QString(folder).replace("HOME", QDir::homePath()));
    }

    void launchAgentPlist()
    {
        const QByteArray expected =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n"
            "\t<dict>\n"
            "\t\t<key>Label</key>\n"
            "\t\t<string>org.z.HelperStatusbarApp</string>\n"
            "\t\t<key>ProgramArguments</key>\n"
            "\t\t<array>\n"
            "\t\t\t<string>/A b/Z &amp; Co.app/Contents/MacOS/s</string>\n"
            "\t\t\t<string>-runMode</string>\n"
            "\t\t\t<string>autoLaunched</string>\n"
            "\t\t</array>\n"
            "\t\t<key>RunAtLoad</key>\n"
            "\t\t<true/>\n"
            "\t</dict>\n"
            "</plist>\n";
        QCOMPARE(LoginAgent::launchAgentPlist("org.z.HelperStatusbarApp",
                                              "/A b/Z & Co.app/Contents/MacOS/s"),
                 expected);
    }

    void installWritesValidEntryAndUninstallRemovesIt()
    {
        QVERIFY(!LoginAgent::isInstalled());
        LoginAgent::install();
        QCOMPARE(LoginAgent::agentFilePath(), entryPath());
        const QString executable = Bundle::executablePath(Bundle::statusbarAppPath());
        QCOMPARE(TestSupport::readFile(entryPath()),
                 QByteArray("[Desktop Entry]\n"
                            "Type=Application\n"
                            "Name=ZELMOR Helper Statusbar App\n"
                            "Exec=\"" + executable.toUtf8() + "\" -runMode autoLaunched\n"
                            "X-GNOME-Autostart-enabled=true\n"));
        QVERIFY(LoginAgent::isInstalled());

        int exitCode = -1;
        const QByteArray report =
            TestSupport::run("desktop-file-validate", {entryPath()}, QString(), &exitCode);
        QCOMPARE(exitCode, 0);
        QCOMPARE(report, QByteArray());

        // Removing it twice is silent, and the folder stays.
        LoginAgent::uninstall();
        QVERIFY(!LoginAgent::isInstalled());
        LoginAgent::uninstall();
        QVERIFY(!LoginAgent::isInstalled());
        QVERIFY(QFileInfo(autostartFolder()).isDir());
    }

    // Install leaves what is there alone: an entry (not even touched), a
    // missing folder, a folder in the entry's place (which counts as there).
    void installKeepsWhatIsThere()
    {
        TestSupport::writeFile(entryPath(), "[Desktop Entry]\nmine\n");
        const QDateTime old = QDateTime::currentDateTime().addDays(-3);
        {
            QFile file(entryPath());
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(old, QFileDevice::FileModificationTime));
        }
        LoginAgent::install();
        QCOMPARE(TestSupport::readFile(entryPath()), QByteArray("[Desktop Entry]\nmine\n"));
        QCOMPARE(QFileInfo(entryPath()).lastModified(), old);

        QDir(autostartFolder()).removeRecursively();
        LoginAgent::install();
        QVERIFY(!QFileInfo::exists(autostartFolder()));
        QDir().mkpath(entryPath());
        LoginAgent::install();
        QVERIFY(QFileInfo(entryPath()).isDir());
        QVERIFY(LoginAgent::isInstalled());
    }

    void checkBoxShowsFileWhenWindowLoads()
    {
        {
            PrefsController prefs(nullptr);
            QVERIFY(!prefs.enableStartup->isChecked());
            // The user's click installs; the box keeps what the user set.
            prefs.enableStartup->click();
            QVERIFY(QFileInfo::exists(entryPath()));
            prefs.enableStartup->click();
            QVERIFY(!QFileInfo::exists(entryPath()));
        }
        TestSupport::writeFile(entryPath(), "made by hand\n");
        PrefsController prefs(nullptr);
        QVERIFY(prefs.enableStartup->isChecked());
    }
};

ZELMOR_TEST_MAIN(TestLoginAgent)
#include "tst_loginagent.moc"
