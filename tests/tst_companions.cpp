#include "TestSupport.h"

#include "BuildConfig.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "companions/statusbar/StatusbarCompanion.h"
#include "companions/statusbar/StatusbarOptions.h"
#include "platform/Bundle.h"
#include "platform/CompanionChannel.h"
#include "platform/PrivateRuntime.h"
#include "platform/SingleInstance.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QAction>
#include <QLocalServer>
#include <QLockFile>
#include <QMenu>
#include <QProcess>
#include <QTranslator>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

using namespace TestSupport;

// The companions and one ZELMOR Helper per user. Local sockets live in this
// test's own private folder (see isolateUser), so nothing the user runs answers.
class TestCompanions : public QObject
{
    Q_OBJECT

    static QString companionBundle()
    {
        return buildBundleDir() + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app";
    }
    static QString companionProgram() { return Bundle::executablePath(companionBundle()); }
    static QString mainProgram() { return Bundle::executablePath(buildBundleDir()); }
    static QString mainIdentifier() { return Bundle::readInfo(buildBundleDir())->identifier; }
    static mode_t modeOf(const QString &path)
    {
        struct stat info = {};
        return ::lstat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode : 0;
    }
    static void runToEnd(QProcess &process, const QStringList &arguments,
                         const QString &program = companionProgram())
    {
        QSignalSpy ended(&process, &QProcess::finished);
        process.start(program, arguments);
        QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 60000);
        QVERIFY(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0);
    }

private slots:
    // The program's own name is never an option; a bad option leaves the defaults.
    void arguments()
    {
        const auto parsed = [](const QStringList &arguments) {
            const StatusbarOptions options = parseStatusbarArguments(arguments);
            return std::pair(options.autoLaunched, options.headless);
        };
        QCOMPARE(parsed({"prog", "-runMode"}), std::pair(false, false));
        QCOMPARE(parsed({"prog", "-psn_0_1", "--no-tray", "-runMode", "autoLaunched"}),
                 std::pair(true, true));
        QCOMPARE(parsed({"--no-tray"}), std::pair(false, false));
    }

    // What ZELMOR Helper publishes shows until "idle" or until it goes away;
    // large figures must not overflow the percentage.
    void statusFollowsTheChannel()
    {
        const QString id = "org.zelmor.test.status", name = "ZELMOR Helper";
        StatusbarCompanion companion(id, "/nowhere/ZELMOR Helper.app", {false, true});
        QAction *status = companion.menu()->actions().constFirst();
        QAction *quit = companion.menu()->actions().constLast();
        QSignalSpy quits(&companion, &StatusbarCompanion::quitRequested);
        QVERIFY(companion.start());
        {
            CompanionStatusPublisher publisher(id);
            publisher.publish(CompanionChannel::statusMessage("Compiling ZELMOR", 2000000000,
                                                              2100000000, "make"));
            QTRY_VERIFY(status->isVisible());
            QCOMPARE(status->text(), "Compiling ZELMOR — 95%");
            QVERIFY(!status->isEnabled());
            QCOMPARE(companion.toolTip(), name + "\nCompiling ZELMOR — 95%\nmake");
            publisher.publish(CompanionChannel::idleMessage());
            QTRY_VERIFY(!status->isVisible());
            publisher.publish(
                CompanionChannel::statusMessage("Downloading source codes", 0, 0, {}));
            QTRY_COMPARE(companion.toolTip(), name + "\nDownloading source codes");
        }
        // The publisher is gone in the middle of an operation.
        QTRY_VERIFY(!status->isVisible());
        QCOMPARE(companion.toolTip(), name);
        // One instance per identifier, even within one process.
        QVERIFY(!StatusbarCompanion(id, {}, {false, true}).start());
        QCOMPARE(quit->text(), "Quit");
        quit->trigger();
        QCOMPARE(quits.count(), 1); // and not when the publisher left
    }

    // Without a tray the built program says so in the user's language. With
    // --no-tray a second start is refused with 0 (it is routine), and the
    // socket, only this user's, goes whether it is asked to quit or killed.
    void builtCompanionOwnsItsChannel()
    {
        const char *noTray = "No system tray is available on this desktop; exiting.";
        QTranslator french;
        QVERIFY(french.load(":/i18n/zelmorhelper_fr.qm"));
        // English last: it is what the test started with.
        for (const QString language : {"fr:de", "en"}) {
            qputenv("LANGUAGE", language.toUtf8());
            QProcess process;
            runToEnd(process, {"-runMode", "autoLaunched"});
            const QString said = QString::fromUtf8(process.readAllStandardError());
            const QString text =
                language == "en" ? QString(noTray) : french.translate("StatusbarCompanion", noTray);
            QVERIFY2(said.contains("ZELMORHelperStatusbarApp: " + text + "\n"), qPrintable(said));
        }

        const QString id = ZELMOR_STATUSBAR_BUNDLE_ID, socket = CompanionChannel::serverName(id);
        for (bool byQuit : {true, false}) {
            QProcess first;
            first.start(companionProgram(), {"--no-tray"});
            QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(id), 10000);
            QCOMPARE(modeOf(socket) & (S_IFMT | 077), mode_t(S_IFSOCK));
            QCOMPARE(modeOf(QFileInfo(socket).absolutePath()) & 0777, mode_t(0700));
            if (byQuit) {
                QProcess second;
                runToEnd(second, {"--no-tray", "-runMode", "autoLaunched"});
                QVERIFY(second.readAllStandardError().contains("already running"));
                SettingsStore::standard().setObject(SettingsKeys::QuitStatusbarApp, QString("1"));
                QCOMPARE(quitStatusbarAppIfAsked(id), CompanionQuit::Asked);
            } else {
                ::kill(static_cast<pid_t>(first.processId()), SIGTERM);
            }
            QVERIFY(first.waitForFinished(10000));
            QVERIFY(first.exitStatus() == QProcess::NormalExit && first.exitCode() == 0);
            QVERIFY(!QFileInfo::exists(socket) && !CompanionChannel::isRunning(id));
        }
    }

    // Sockets go to the runtime folder only when it is private; a fallback
    // folder that is not ours alone is refused and left as it was found.
    void privateFolder()
    {
        QTemporaryDir dir;
        const QByteArray savedRuntime = qgetenv("XDG_RUNTIME_DIR"), savedTemp = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(dir.path()));
        const QString runtime = dir.path() + "/xdg";
        const QString fallback = dir.path() + "/zelmor-runtime-" + QString::number(::getuid());
        QCOMPARE(::mkdir(QFile::encodeName(runtime).constData(), 0700), 0);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime));
        QCOMPARE(PrivateRuntime::directory(), runtime);
        ::chmod(QFile::encodeName(runtime).constData(), 0755);
        QCOMPARE(PrivateRuntime::directory(), fallback);
        QCOMPARE(modeOf(fallback) & (S_IFMT | 0777), mode_t(S_IFDIR | 0700));

        ::chmod(QFile::encodeName(fallback).constData(), 0777);
        QCOMPARE(PrivateRuntime::directory(), QString());
        QCOMPARE(modeOf(fallback) & 0777, mode_t(0777));
        QVERIFY(QDir().rmdir(fallback) && QFile::link(runtime, fallback));
        QCOMPARE(PrivateRuntime::directory(), QString());
        if (::geteuid() == 0) {
            QVERIFY(QFile::remove(fallback) && QDir().mkdir(fallback));
            QCOMPARE(::chown(QFile::encodeName(fallback).constData(), 65534, 65534), 0);
            QCOMPARE(PrivateRuntime::directory(), QString());
        }
        qputenv("XDG_RUNTIME_DIR", savedRuntime);
        qputenv("TMPDIR", savedTemp);
    }

    // A second start (also through the companion's menu) brings the running
    // one (here: this test) forward and ends. A start while a run is ending
    // (still listening, no longer answering, as during a relaunch) waits for
    // it to go and takes its place; one that never goes is taken for hung. A
    // run killed outright leaves its lock and socket behind for the next
    // start to take over.
    void applicationIsOnePerUser()
    {
        auto running = std::make_unique<SingleInstance>(mainIdentifier());
        const QString socket = running->socketPath(), lock = running->lockPath();
        QSignalSpy activations(running.get(), &SingleInstance::activationRequested);
        QSignalSpy primary(running.get(), &SingleInstance::becamePrimary);
        running->start();
        // A free place is taken at once, before the event loop turns: the
        // first window is built without waiting for it.
        QCOMPARE(primary.count(), 1);
        QProcess process;
        runToEnd(process, {}, mainProgram());
        QCOMPARE(activations.count(), 1);
        StatusbarCompanion companion("org.zelmor.test.channels",
                                     mainBundleForCompanion(companionBundle()), {false, true});
        for (QAction *action : companion.menu()->actions())
            if (action->text() == "Open ZELMOR Helper")
                action->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(activations.count(), 2, 20000);
        running.reset();

        // SIGTERM ends a run normally and removes both.
        for (const int signal : {SIGKILL, SIGTERM}) {
            process.start(mainProgram(), {});
            QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(mainIdentifier()), 20000);
            ::kill(static_cast<pid_t>(process.processId()), signal);
            QVERIFY(process.waitForFinished(60000));
            QCOMPARE(QFileInfo::exists(socket), signal == SIGKILL);
            QCOMPARE(QFileInfo::exists(lock), signal == SIGKILL);
            // A run killed while it starts its companion leaves the socket
            // open in that child until it has become the companion. Until then
            // a connection is taken, and would pass for the next run's before
            // that run can end cleanly.
            QTRY_VERIFY_WITH_TIMEOUT(!CompanionChannel::isRunning(mainIdentifier()), 20000);
        }
        QVERIFY(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0);

        // A run that is ending: it holds its place and takes connections
        // without answering them.
        {
            QLockFile held(lock);
            QVERIFY(held.tryLock(0));
            QLocalServer ending;
            QVERIFY(ending.listen(socket));
            QProcess given;
            runToEnd(given, {}, mainProgram());
            QVERIFY(given.readAllStandardError().contains("does not answer"));
            delete ending.nextPendingConnection();
            process.start(mainProgram(), {});
            QVERIFY(ending.waitForNewConnection(20000));
        }
        QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(mainIdentifier()), 20000);
        ::kill(static_cast<pid_t>(process.processId()), SIGTERM);
        QVERIFY(process.waitForFinished(60000) && process.exitCode() == 0);
    }
};

ZELMOR_TEST_MAIN(TestCompanions)
#include "tst_companions.moc"
