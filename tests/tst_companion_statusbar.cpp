#include "TestSupport.h"

#include "app/ZELMORHelperAppDelegate.h"
#include "BuildConfig.h"
#include "companions/statusbar/StatusbarCompanion.h"
#include "companions/statusbar/StatusbarOptions.h"
#include "platform/CompanionChannel.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QAction>
#include <QMenu>
#include <QProcess>

using namespace TestSupport;

// The status-bar companion: its channel (quit, status, one instance per user)
// both in this process and as the real program from the built bundle.
class TestCompanionStatusbar : public QObject
{
    Q_OBJECT

    static QString companionProgram()
    {
        return buildBundleDir() + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app/"
                                  "Contents/MacOS/ZELMORHelperStatusbarApp";
    }
    static QAction *statusAction(StatusbarCompanion &companion)
    {
        return companion.menu()->actions().constFirst();
    }
    static QStringList visibleMenuTexts(StatusbarCompanion &companion)
    {
        QStringList texts;
        for (QAction *action : companion.menu()->actions())
            if (action->isVisible() && !action->isSeparator())
                texts << action->text();
        return texts;
    }
    // Starts the built companion and waits for its end.
    static void runToEnd(QProcess &process, const QStringList &arguments)
    {
        QSignalSpy ended(&process, &QProcess::finished);
        process.start(companionProgram(), arguments);
        QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 10000);
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
    }

private slots:
    // Local sockets live in this test's own temporary folder (see
    // isolateUser): no companion the user runs, nor another test's, answers.
    void initTestCase() { QVERIFY(!CompanionChannel::isRunning(ZELMOR_STATUSBAR_BUNDLE_ID)); }

    void arguments_data()
    {
        columns<QStringList, bool, bool>({"arguments", "autoLaunched", "headless"});
        QTest::newRow("by hand") << QStringList{"prog"} << false << false;
        QTest::newRow("login agent") << QStringList{"prog", "-runMode", "autoLaunched"} << true << false;
        QTest::newRow("other run mode") << QStringList{"prog", "-runMode", "manual"} << false << false;
        QTest::newRow("run mode without value") << QStringList{"prog", "-runMode"} << false << false;
        QTest::newRow("headless, platform noise")
            << QStringList{"prog", "-psn_0_12345", "--no-tray", "-runMode", "autoLaunched"} << true
            << true;
        // The program's own name is never an option.
        QTest::newRow("name only") << QStringList{"--no-tray"} << false << false;
    }
    void arguments()
    {
        QFETCH(QStringList, arguments);
        const StatusbarOptions options = parseStatusbarArguments(arguments);
        QTEST(options.autoLaunched, "autoLaunched");
        QTEST(options.headless, "headless");
    }

    // "Open ZELMOR Helper" starts the bundle the companion lives in.
    void openStartsTheEnclosingBundle()
    {
        QTemporaryDir dir;
        const QString mainBundle = dir.path() + "/ZELMOR Helper.app";
        const QString marker = dir.path() + "/opened";
        makeScriptBundle(mainBundle, "org.zelmor.test.main", "touch '" + QFile::encodeName(marker) + "'\n");
        const QString found = mainBundleForCompanion(
            mainBundle + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app");
        QCOMPARE(found, mainBundle);

        StatusbarCompanion companion("org.zelmor.test.open", found, {false, true});
        for (QAction *action : companion.menu()->actions())
            if (action->text() == "Open ZELMOR Helper")
                action->trigger();
        QTRY_VERIFY(QFile::exists(marker));
    }

    void summary_data()
    {
        columns<int, int, QString>({"value", "maximum", "expected"});
        QTest::newRow("no figure") << 5 << 0 << "Compiling ZELMOR";
        QTest::newRow("start") << 0 << 250 << "Compiling ZELMOR — 0%";
        QTest::newRow("rounds down") << 2 << 3 << "Compiling ZELMOR — 66%";
        QTest::newRow("done") << 250 << 250 << "Compiling ZELMOR — 100%";
        QTest::newRow("past the end") << 300 << 250 << "Compiling ZELMOR — 100%";
        QTest::newRow("negative") << -4 << 250 << "Compiling ZELMOR — 0%";
        QTest::newRow("large figures") << 2000000000 << 2100000000 << "Compiling ZELMOR — 95%";
    }
    void summary()
    {
        QFETCH(int, value);
        QFETCH(int, maximum);
        QTEST(statusSummary({"Compiling ZELMOR", value, maximum, {}}), "expected");
    }

    // What ZELMOR Helper publishes shows in the menu and tooltip, and goes
    // away on "idle" or when ZELMOR Helper goes away.
    void statusFollowsTheChannel()
    {
        const QString id = "org.zelmor.test.status";
        StatusbarCompanion companion(id, "/nowhere/ZELMOR Helper.app", {false, true});
        QSignalSpy quits(&companion, &StatusbarCompanion::quitRequested);
        QVERIFY(companion.start());
        QCOMPARE(visibleMenuTexts(companion), (QStringList{"Open ZELMOR Helper", "Quit"}));
        QCOMPARE(companion.toolTip(), "ZELMOR Helper");
        {
            CompanionStatusPublisher publisher(id);
            publisher.publish(CompanionChannel::statusMessage("Compiling ZELMOR", 42, 100, "make"));
            QTRY_COMPARE(visibleMenuTexts(companion),
                         (QStringList{"Compiling ZELMOR — 42%", "Open ZELMOR Helper", "Quit"}));
            QVERIFY(!statusAction(companion)->isEnabled());
            QCOMPARE(companion.toolTip(), "ZELMOR Helper\nCompiling ZELMOR — 42%\nmake");
            publisher.publish(CompanionChannel::idleMessage());
            QTRY_VERIFY(!statusAction(companion)->isVisible());
            QCOMPARE(companion.toolTip(), "ZELMOR Helper");
            publisher.publish(CompanionChannel::statusMessage("Downloading source codes", 0, 0, {}));
            QTRY_COMPARE(companion.toolTip(), "ZELMOR Helper\nDownloading source codes");
        }
        // The publisher is gone in the middle of an operation.
        QTRY_VERIFY(!statusAction(companion)->isVisible());
        QCOMPARE(companion.toolTip(), "ZELMOR Helper");
        QCOMPARE(quits.count(), 0);
        // One instance per identifier, even within one process.
        StatusbarCompanion second(id, {}, {false, true});
        QVERIFY(!second.start());
        QVERIFY(CompanionChannel::requestQuit(id));
        QTRY_COMPARE(quits.count(), 1);

        // The menu's own "Quit" asks the same.
        companion.menu()->actions().constLast()->trigger();
        QCOMPARE(quits.count(), 2);
    }

    // The built program: it takes the channel, refuses a second instance
    // and quits when ZELMOR Helper ends with its quit switch on. A second start is routine (ZELMOR
    // Helper starts the companion each time it starts), so it exits with 0.
    void builtCompanionQuitsOnRequest()
    {
        const QString id = ZELMOR_STATUSBAR_BUNDLE_ID;
        QProcess first;
        QSignalSpy firstEnded(&first, &QProcess::finished);
        first.start(companionProgram(), {"--no-tray"});
        QVERIFY(first.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(id), 10000);

        QProcess second;
        runToEnd(second, {"--no-tray", "-runMode", "autoLaunched"});
        QVERIFY(second.readAllStandardError().contains("already running"));
        QCOMPARE(first.state(), QProcess::Running);
        QVERIFY(CompanionChannel::isRunning(id));

        SettingsStore::standard().setObject(SettingsKeys::QuitStatusbarApp, QStringLiteral("1"));
        QCOMPARE(quitStatusbarAppIfAsked(id), CompanionQuit::Asked);
        QTRY_COMPARE_WITH_TIMEOUT(firstEnded.count(), 1, 10000);
        QCOMPARE(first.exitStatus(), QProcess::NormalExit);
        QCOMPARE(first.exitCode(), 0);
        QVERIFY(!CompanionChannel::isRunning(id));
    }

    // Offscreen there is no tray: the companion says so and leaves without
    // taking the channel, however it was started.
    void withoutTrayItExitsCleanly_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("by hand") << QStringList{};
        QTest::newRow("login agent") << QStringList{"-runMode", "autoLaunched"};
    }
    void withoutTrayItExitsCleanly()
    {
        QFETCH(QStringList, arguments);
        QProcess process;
        runToEnd(process, arguments);
        QVERIFY(process.readAllStandardError().contains("No system tray is available"));
        QVERIFY(!CompanionChannel::isRunning(ZELMOR_STATUSBAR_BUNDLE_ID));
    }
};

ZELMOR_TEST_MAIN(TestCompanionStatusbar)
#include "tst_companion_statusbar.moc"
