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

} // namespace

class TestPlatform : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(!probeCaller);
        // What this program starts runs where there is no display.
        qputenv("QT_QPA_PLATFORM", "xcb");
        qunsetenv("DISPLAY");
        qunsetenv("WAYLAND_DISPLAY");
    }

    // A test program does not run from a bundle: its folder stands in. The
    // built bundle holds its two companions; broken bundles are not read,
    // launching what is not there fails quietly, and a bundle's program is
    // started detached with the arguments.
    void bundles()
    {
        QCOMPARE(Bundle::mainBundlePath(), QCoreApplication::applicationDirPath());
        Bundle::setMainBundlePath(buildBundleDir());
        QCOMPARE(Bundle::mainBundleIdentifier(), QString(ZELMOR_BUNDLE_ID));
        QCOMPARE(Bundle::readInfo(Bundle::statusbarAppPath())->identifier,
                 QString(ZELMOR_BUNDLE_ID) + "StatusbarApp");
        QCOMPARE(Bundle::readInfo(Bundle::installerAppPath())->identifier,
                 QString(ZELMOR_INSTALLER_BUNDLE_ID));
        Bundle::setMainBundlePath({});

        QTemporaryDir dir;
        QVERIFY(!Bundle::readInfo(dir.path() + "/Missing.app"));
        writeFile(dir.path() + "/NoExe.app/Contents/Info.plist",
                  "<plist><dict><key>CFBundleIdentifier</key><string>x.y</string></dict></plist>");
        QVERIFY(!Bundle::readInfo(dir.path() + "/NoExe.app"));
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
        columns<QString, QString, int, QString>({"bundle", "arguments", "exitCode", "said"});
        const QString app = buildBundleDir(), version = ZELMOR_VERSION;
        const QString statusbar = app + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app";
        const QString installer = app + "/Contents/Library/ZELMORInstallComponets.app";
        const QString tryHelp = "\nTry '%1 --help' for the options it knows.\n";
        QTest::newRow("app, a Qt option's value is not an option")
            << app << "-style fusion --version" << 0 << "ZELMOR Helper " + version + "\n";
        QTest::newRow("app, unknown option") << app << "--bogus" << 2
            << "ZELMORHelper: Unknown option 'bogus'." + tryHelp.arg("ZELMORHelper");
        QTest::newRow("statusbar --help") << statusbar << "--help" << 0
            << "Usage: ZELMORHelperStatusbarApp [options]\n"
               "Shows the operation ZELMOR Helper is running in the system tray.\n\nOptions:\n"
               "  -?, -h, --help    Displays help on commandline options.\n"
               "  -v, --version     Displays version information.\n"
               "  --runMode <mode>  How it was started; \"autoLaunched\" (at login) skips the\n"
               "                    greeting.\n"
               "  --no-tray         Run without a tray icon (sessions without a tray).\n";
        QTest::newRow("statusbar --version") << statusbar << "-runMode autoLaunched --version" << 0
            << "ZELMOR Helper Statusbar App " + version + "\n";
        QTest::newRow("statusbar, run mode without its value") << statusbar << "-runMode" << 2
            << "ZELMORHelperStatusbarApp: Missing value after '-runMode'."
                   + tryHelp.arg("ZELMORHelperStatusbarApp");
        QTest::newRow("installer --version")
            << installer << "--version" << 0 << "ZELMOR Install Componets " + version + "\n";
    }
    void commandLineWithoutADisplay()
    {
        QFETCH(QString, bundle);
        QFETCH(QString, arguments);
        QFETCH(int, exitCode);
        QProcess process;
        process.start(Bundle::executablePath(bundle), arguments.split(' '));
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), exitCode);
        // An answer goes to standard output, a refusal to standard error; never both.
        const QByteArray out = process.readAllStandardOutput();
        const QByteArray err = process.readAllStandardError();
        QVERIFY2((exitCode == 0 ? err : out).isEmpty(), (out + err).constData());
        QTEST(QString::fromLocal8Bit(exitCode == 0 ? out : err), "said");
    }

    // The shell line has "%f" of the delay and the path in double quotes, so
    // a caller in a bundle with blanks in its path can ask for a relaunch: it
    // terminates at once, and its bundle's program starts after the delay.
    void relaunch()
    {
        QTemporaryDir dir;
        const QString bundle = dir.path() + "/with blanks/Relaunch Probe.app";
        const QString marker = dir.path() + "/came back";
        makeScriptBundle(bundle, "org.zelmor.test.RelaunchProbe",
                         "echo back >> '" + marker.toUtf8() + "'\n");
#ifdef Q_OS_MACOS
        QCOMPARE(Relaunch::command(0.5f, bundle),
                 QString(R"(sleep 0.500000; open "%1")").arg(bundle));
#else
        QCOMPARE(Relaunch::command(0.5f, bundle),
                 QString(R"(sleep 0.500000; exec "%1/Contents/MacOS/probe")").arg(bundle));
        // Not started from a bundle: the running program comes back.
        QCOMPARE(Relaunch::command(2.0f, dir.path()),
                 R"(sleep 2.000000; exec ")" + QCoreApplication::applicationFilePath() + '"');
#endif
        qputenv("ZELMOR_RELAUNCH_PROBE_BUNDLE", QFile::encodeName(bundle));
        QProcess caller;
        // The detached shell inherits the caller's streams; forwarding them
        // keeps it from holding pipes this test would wait on.
        caller.setProcessChannelMode(QProcess::ForwardedChannels);
        caller.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(caller.waitForFinished(30000));
        QCOMPARE(caller.exitStatus(), QProcess::NormalExit);
        QCOMPARE(caller.exitCode(), CallerEndedByQuit);
        QVERIFY2(!QFile::exists(marker), "the program came back before the caller ended");
        // The shell creates the file before echo writes to it: wait for the line.
        QTRY_COMPARE_WITH_TIMEOUT(readFile(marker), QByteArray("back\n"), 30000);
    }
};

ZELMOR_TEST_MAIN(TestPlatform)
#include "tst_platform.moc"
