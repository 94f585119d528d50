#include "TestSupport.h"

#include "BuildConfig.h"
#include "companions/statusbar/StatusbarCompanion.h"
#include "platform/Bundle.h"
#include "platform/CompanionChannel.h"
#include "platform/PrivateRuntime.h"
#include "platform/SingleInstance.h"

#include <QAction>
#include <QMenu>
#include <QProcess>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

using namespace TestSupport;

// Local sockets: only in a folder of the user's own, gone when their program
// ends (SIGTERM included), and one running ZELMOR Helper per user.
class TestPrivateChannels : public QObject
{
    Q_OBJECT

    static QString companionProgram()
    {
        return buildBundleDir()
               + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app/Contents/MacOS/"
                 "ZELMORHelperStatusbarApp";
    }
    static QString mainProgram() { return Bundle::executablePath(buildBundleDir()); }
    static QString mainIdentifier() { return Bundle::readInfo(buildBundleDir())->identifier; }

    static mode_t modeOf(const QString &path)
    {
        struct stat info = {};
        return ::lstat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode : 0;
    }

    static void terminate(QProcess &process)
    {
        ::kill(static_cast<pid_t>(process.processId()), SIGTERM);
    }

private slots:
    // Where sockets go: the runtime folder when it is private, else a folder
    // of our own in the temporary folder; a fallback that is not ours alone
    // is refused.
    void privateFolder_data()
    {
        QTest::addColumn<QString>("runtime");  // none, private, open, relative
        QTest::addColumn<QString>("fallback"); // none, open, link, foreign
        QTest::addColumn<QString>("expected"); // runtime, fallback, refused
        QTest::newRow("private runtime folder") << "private" << "none" << "runtime";
        QTest::newRow("no runtime folder") << "none" << "none" << "fallback";
        QTest::newRow("runtime folder open to others") << "open" << "none" << "fallback";
        QTest::newRow("relative runtime folder") << "relative" << "none" << "fallback";
        QTest::newRow("fallback kept private") << "none" << "private" << "fallback";
        QTest::newRow("fallback open to others") << "none" << "open" << "refused";
        QTest::newRow("fallback is a link") << "none" << "link" << "refused";
        QTest::newRow("fallback of another user") << "none" << "foreign" << "refused";
    }
    void privateFolder()
    {
        QFETCH(QString, runtime);
        QFETCH(QString, fallback);
        QFETCH(QString, expected);
        if (fallback == "foreign" && ::geteuid() != 0)
            QSKIP("giving a folder to another user needs root");

        QTemporaryDir dir;
        const QByteArray savedRuntime = qgetenv("XDG_RUNTIME_DIR");
        const QByteArray savedTemp = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(dir.path()));
        const QString runtimeDir = dir.path() + "/xdg";
        const QString fallbackDir = dir.path() + "/zelmor-runtime-" + QString::number(::getuid());
        QDir().mkpath(runtimeDir);
        ::chmod(QFile::encodeName(runtimeDir).constData(), runtime == "open" ? 0755 : 0700);
        if (runtime == "none")
            qunsetenv("XDG_RUNTIME_DIR");
        else
            qputenv("XDG_RUNTIME_DIR", runtime == "relative" ? QByteArray("xdg")
                                                             : QFile::encodeName(runtimeDir));
        if (fallback == "link") {
            QFile::link(runtimeDir, fallbackDir);
        } else if (fallback != "none") {
            QDir().mkpath(fallbackDir);
            ::chmod(QFile::encodeName(fallbackDir).constData(), fallback == "open" ? 0777 : 0700);
            if (fallback == "foreign")
                QCOMPARE(::chown(QFile::encodeName(fallbackDir).constData(), 65534, 65534), 0);
        }

        const QString found = PrivateRuntime::directory();
        qputenv("XDG_RUNTIME_DIR", savedRuntime);
        qputenv("TMPDIR", savedTemp);

        if (expected == "runtime")
            QCOMPARE(found, runtimeDir);
        else if (expected == "fallback")
            QCOMPARE(found, fallbackDir);
        else
            QCOMPARE(found, QString());
        if (!found.isEmpty()) {
            QVERIFY(S_ISDIR(modeOf(found)));
            QCOMPARE(modeOf(found) & 0777, mode_t(0700));
        }
        // A folder refused is left as it was found.
        if (fallback == "open")
            QCOMPARE(modeOf(fallbackDir) & 0777, mode_t(0777));
    }

    // The built companion listens in the private folder, on a socket only
    // this user may use, and removes it when it is terminated.
    void companionSocketGoneAfterSigterm()
    {
        const QString socket = CompanionChannel::serverName(ZELMOR_STATUSBAR_BUNDLE_ID);
        QCOMPARE(QFileInfo(socket).absolutePath(), qEnvironmentVariable("XDG_RUNTIME_DIR"));

        QProcess companion;
        QSignalSpy ended(&companion, &QProcess::finished);
        companion.start(companionProgram(), {"--no-tray"});
        QVERIFY(companion.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(ZELMOR_STATUSBAR_BUNDLE_ID), 10000);
        QVERIFY(S_ISSOCK(modeOf(socket)));
        QCOMPARE(modeOf(socket) & 077, mode_t(0));
        QCOMPARE(modeOf(QFileInfo(socket).absolutePath()) & 0777, mode_t(0700));

        terminate(companion);
        QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 10000);
        QCOMPARE(companion.exitStatus(), QProcess::NormalExit);
        QCOMPARE(companion.exitCode(), 0);
        QVERIFY(!QFileInfo::exists(socket));
        QVERIFY(!CompanionChannel::isRunning(ZELMOR_STATUSBAR_BUNDLE_ID));
    }

    // Within one process: the first instance stays, a second one hands over,
    // and when the first ends the next start is the first again.
    void secondInstanceHandsOver()
    {
        const QString id = "org.zelmor.test.single";
        auto first = std::make_unique<SingleInstance>(id);
        QSignalSpy firstPrimary(first.get(), &SingleInstance::becamePrimary);
        QSignalSpy activations(first.get(), &SingleInstance::activationRequested);
        first->start();
        QTRY_COMPARE(firstPrimary.count(), 1);
        QVERIFY(QFileInfo::exists(first->socketPath()));
        QVERIFY(QFileInfo::exists(first->lockPath()));

        SingleInstance second(id);
        QSignalSpy secondPrimary(&second, &SingleInstance::becamePrimary);
        QSignalSpy handedOver(&second, &SingleInstance::handedOver);
        second.start();
        QTRY_COMPARE(handedOver.count(), 1);
        QTRY_COMPARE(activations.count(), 1);
        QCOMPARE(secondPrimary.count(), 0);

        const QString socket = first->socketPath();
        const QString lock = first->lockPath();
        first.reset();
        QVERIFY(!QFileInfo::exists(socket));
        QVERIFY(!QFileInfo::exists(lock));
        SingleInstance third(id);
        QSignalSpy thirdPrimary(&third, &SingleInstance::becamePrimary);
        third.start();
        QTRY_COMPARE(thirdPrimary.count(), 1);
    }

    // The built application started while ZELMOR Helper runs (here: this
    // test holding its place) asks it to come forward and ends at once; the
    // companion's "Open ZELMOR Helper" starts it and so does the same.
    void startingAgainBringsTheRunningOneForward()
    {
        SingleInstance running(mainIdentifier());
        QSignalSpy primary(&running, &SingleInstance::becamePrimary);
        QSignalSpy activations(&running, &SingleInstance::activationRequested);
        running.start();
        QTRY_COMPARE(primary.count(), 1);

        QProcess second;
        QSignalSpy ended(&second, &QProcess::finished);
        second.start(mainProgram(), {});
        QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 60000);
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(activations.count(), 1);

        StatusbarCompanion companion("org.zelmor.test.channels", buildBundleDir(), {false, true});
        for (QAction *action : companion.menu()->actions()) {
            if (action->text() == "Open ZELMOR Helper")
                action->trigger();
        }
        QTRY_COMPARE_WITH_TIMEOUT(activations.count(), 2, 20000);
    }

    // The built application: a run killed outright leaves its lock and
    // socket behind, which the next start takes over; SIGTERM ends that run
    // normally and removes both.
    void applicationTakesOverStaleInstanceAndCleansUp()
    {
        SingleInstance probe(mainIdentifier());
        const QString socket = probe.socketPath();
        const QString lock = probe.lockPath();

        QProcess killed;
        killed.start(mainProgram(), {});
        QVERIFY(killed.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(mainIdentifier()), 20000);
        ::kill(static_cast<pid_t>(killed.processId()), SIGKILL);
        QVERIFY(killed.waitForFinished(10000));
        QVERIFY(QFileInfo::exists(socket));
        QVERIFY(QFileInfo::exists(lock));

        QProcess next;
        QSignalSpy ended(&next, &QProcess::finished);
        next.start(mainProgram(), {});
        QVERIFY(next.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(mainIdentifier()), 20000);
        QCOMPARE(next.state(), QProcess::Running);

        terminate(next);
        QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 60000);
        QCOMPARE(next.exitStatus(), QProcess::NormalExit);
        QCOMPARE(next.exitCode(), 0);
        QVERIFY(!QFileInfo::exists(socket));
        QVERIFY(!QFileInfo::exists(lock));
    }
};

ZELMOR_TEST_MAIN(TestPrivateChannels)
#include "tst_private_channels.moc"
