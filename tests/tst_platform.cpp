#include "TestSupport.h"

#include "BuildConfig.h"
#include "platform/Bundle.h"
#include "platform/Relaunch.h"

#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <cstdlib>

using namespace TestSupport;

// The bundles the build produces, their programs' command lines, reading and
// launching bundles by path, and relaunching.

namespace {

constexpr int CallerEndedByQuit = 42;

// Started with ZELMOR_RELAUNCH_PROBE_BUNDLE set, this program is the caller
// of a real relaunch: it asks for one, and must end by the application's own
// termination (then exiting with CallerEndedByQuit).
const bool probeCaller = [] {
    const QByteArray bundle = qgetenv("ZELMOR_RELAUNCH_PROBE_BUNDLE");
    if (bundle.isEmpty())
        return false;
    int argc = 1;
    char name[] = "relaunch-caller";
    char *argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);
    Bundle::setMainBundlePath(QString::fromLocal8Bit(bundle));
    QTimer::singleShot(0, &app, [] { Relaunch::relaunchAfterDelay(2.0f); });
    const int rc = app.exec();
    std::exit(rc == 0 ? CallerEndedByQuit : rc);
}();

// "app", "statusbar" or "installer", as built.
QString builtBundle(const QString &program)
{
    if (program == "statusbar")
        return buildBundleDir() + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app";
    if (program == "installer")
        return buildBundleDir() + "/Contents/Library/ZELMORInstallComponets.app";
    return buildBundleDir();
}

} // namespace

class TestPlatform : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(!probeCaller);
        m_bundle = m_dir.path() + "/with blanks/Relaunch Probe.app";
        m_marker = m_dir.path() + "/came back";
        makeScriptBundle(m_bundle, "org.zelmor.test.RelaunchProbe",
                         "echo back >> '" + m_marker.toUtf8() + "'\n");
    }

    void builtBundlesHaveTheirShape_data()
    {
        columns<QString, QString>({"program", "identifier"});
        QTest::newRow("main") << "app" << ZELMOR_BUNDLE_ID;
        QTest::newRow("status bar") << "statusbar" << QString(ZELMOR_BUNDLE_ID) + "StatusbarApp";
        QTest::newRow("installer") << "installer" << ZELMOR_INSTALLER_BUNDLE_ID;
    }
    void builtBundlesHaveTheirShape()
    {
        QFETCH(QString, program);
        const QString bundle = builtBundle(program);
        const auto info = Bundle::readInfo(bundle);
        QVERIFY(info);
        QTEST(info->identifier, "identifier");
        QVERIFY(!info->name.isEmpty() && !info->version.isEmpty());
        const QString exe = Bundle::executablePath(bundle);
        QCOMPARE(exe, bundle + "/Contents/MacOS/" + info->executable);
        QVERIFY(QFileInfo(exe).isExecutable() && QFileInfo(bundle + "/Contents/Resources").isDir());
    }

    // A test program does not run from a bundle: its folder stands in.
    void mainBundleFoundFromItsProgram()
    {
        QCOMPARE(Bundle::mainBundlePath(), QCoreApplication::applicationDirPath());
        Bundle::setMainBundlePath(buildBundleDir());
        QCOMPARE(Bundle::mainBundleIdentifier(), QString(ZELMOR_BUNDLE_ID));
        Bundle::setMainBundlePath({});
    }

    // Broken bundles are not read and launching what is not there fails
    // quietly; a bundle's program is started detached with the arguments.
    void bundlesByPath()
    {
        QTemporaryDir dir;
        QVERIFY(!Bundle::readInfo(dir.path() + "/Missing.app"));
        writeFile(dir.path() + "/NoExe.app/Contents/Info.plist",
                  "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>"
                  "<key>CFBundleIdentifier</key><string>x.y</string></dict></plist>");
        QVERIFY(!Bundle::readInfo(dir.path() + "/NoExe.app"));
        writeFile(dir.path() + "/Garbage.app/Contents/Info.plist", "<plist><dict><key>");
        QVERIFY(!Bundle::readInfo(dir.path() + "/Garbage.app"));
        QVERIFY(!Bundle::launchApplication(dir.path() + "/Missing.app"));

        const QString bundle = dir.path() + "/With Blank.app", marker = dir.path() + "/ran";
        makeScriptBundle(bundle, "x.y", QString("echo \"$@\" > \"%1\"\n").arg(marker).toUtf8());
        QVERIFY(Bundle::launchApplication(bundle, {"-runMode", "autoLaunched"}));
        QTRY_COMPARE_WITH_TIMEOUT(readFile(marker), QByteArray("-runMode autoLaunched\n"), 10000);
    }

    // The three programs answer --help and --version and refuse what they do
    // not know, all before any window: they run here with a display that does
    // not exist, where making the application object would abort.
    void commandLineWithoutADisplay_data()
    {
        // the texts are contained in what the program printed
        columns<QString, QStringList, int, QString, QString>({"program", "arguments", "exitCode", "out", "err"});
        const QString version = QStringLiteral(ZELMOR_VERSION);
        QTest::newRow("app --help") << "app" << QStringList{"--help"} << 0 << "Usage: ZELMORHelper [options]" << "";
        QTest::newRow("app -h") << "app" << QStringList{"-h"} << 0 << "--version" << "";
        QTest::newRow("app --version") << "app" << QStringList{"--version"} << 0 << "ZELMOR Helper " + version + "\n" << "";
        QTest::newRow("app unknown") << "app" << QStringList{"--bogus"} << 2 << "" << "ZELMORHelper: Unknown option 'bogus'.";
        QTest::newRow("app value of a Qt option is not an option")
            << "app" << QStringList{"-style", "fusion", "--version"} << 0 << version << "";
        QTest::newRow("statusbar --help") << "statusbar" << QStringList{"--help"} << 0 << "--runMode <mode>" << "";
        QTest::newRow("statusbar --version") << "statusbar" << QStringList{"-runMode", "autoLaunched", "--version"}
                                             << 0 << "ZELMOR Helper Statusbar App " + version + "\n" << "";
        QTest::newRow("statusbar unknown") << "statusbar" << QStringList{"--bogus"} << 2 << "" << "Unknown option 'bogus'.";
        QTest::newRow("statusbar run mode without its value")
            << "statusbar" << QStringList{"-runMode"} << 2 << "" << "Missing value after '-runMode'.";
        QTest::newRow("installer --help") << "installer" << QStringList{"--help"} << 0
                                          << "Usage: ZELMORInstallComponets [options]" << "";
        QTest::newRow("installer --version") << "installer" << QStringList{"--version"} << 0
                                             << "ZELMOR Install Componets " + version + "\n" << "";
        QTest::newRow("installer unknown") << "installer" << QStringList{"-x"} << 2 << "" << "Unknown option 'x'.";
    }
    void commandLineWithoutADisplay()
    {
        QFETCH(QString, program);
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(Bundle::executablePath(builtBundle(program)), arguments);
        QVERIFY(process.waitForFinished(30000));
        QFETCH(QString, out);
        QFETCH(QString, err);
        const QString printed = QString::fromLocal8Bit(process.readAllStandardOutput());
        const QString said = QString::fromLocal8Bit(process.readAllStandardError());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), exitCode);
        QVERIFY2(printed.contains(out) && said.contains(err), qPrintable(printed + said));
        if (exitCode == 0)
            QVERIFY2(said.isEmpty(), qPrintable(said));
        else
            QVERIFY2(printed.isEmpty() && said.contains("--help"), qPrintable(printed + said));
    }

    // The shell line: "%f" of the delay, and the path in double quotes so
    // blanks survive.
    void relaunchCommand_data()
    {
        columns<float, QString, QString>({"delay", "bundle", "expected"});
#ifdef Q_OS_MACOS
        QTest::newRow("2.0") << 2.0f << "/Applications/B.app" << R"(sleep 2.000000; open "/Applications/B.app")";
        QTest::newRow("0.5") << 0.5f << "/Applications/B.app" << R"(sleep 0.500000; open "/Applications/B.app")";
        QTest::newRow("blanks") << 2.0f << m_bundle << QString(R"(sleep 2.000000; open "%1")").arg(m_bundle);
#else
        const QString program = m_bundle + "/Contents/MacOS/probe";
        QTest::newRow("2.0, blanks") << 2.0f << m_bundle << QString(R"(sleep 2.000000; exec "%1")").arg(program);
        QTest::newRow("0.5") << 0.5f << m_bundle << QString(R"(sleep 0.500000; exec "%1")").arg(program);
        // Not started from a bundle: the running program comes back.
        QTest::newRow("no bundle") << 2.0f << m_dir.path()
            << QString(R"(sleep 2.000000; exec "%1")").arg(QCoreApplication::applicationFilePath());
#endif
    }
    void relaunchCommand()
    {
        QFETCH(float, delay);
        QFETCH(QString, bundle);
        QTEST(Relaunch::command(delay, bundle), "expected");
    }

    // A caller in a bundle with blanks in its path asks for a relaunch: it
    // terminates at once, and its bundle's program starts after the delay.
    void realRelaunchComesBackAfterTheCallerEnded()
    {
        QProcess caller;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("ZELMOR_RELAUNCH_PROBE_BUNDLE", m_bundle);
        caller.setProcessEnvironment(env);
        // The detached shell inherits the caller's streams; forwarding them
        // keeps it from holding pipes this test would wait on.
        caller.setProcessChannelMode(QProcess::ForwardedChannels);
        caller.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(caller.waitForFinished(30000));
        QCOMPARE(caller.exitStatus(), QProcess::NormalExit);
        QCOMPARE(caller.exitCode(), CallerEndedByQuit);
        QVERIFY2(!QFile::exists(m_marker), "the program came back before the caller ended");
        // The shell creates the file before echo writes to it: wait for the line.
        QTRY_COMPARE_WITH_TIMEOUT(readFile(m_marker), QByteArray("back\n"), 30000);
    }

private:
    QTemporaryDir m_dir;
    QString m_bundle;
    QString m_marker;
};

ZELMOR_TEST_MAIN(TestPlatform)
#include "tst_platform.moc"
