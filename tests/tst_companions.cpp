#include "TestSupport.h"

#include "BuildConfig.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "companions/installer/ComponentChecks.h"
#include "companions/installer/InstallCommands.h"
#include "companions/installer/InstallerWindow.h"
#include "companions/statusbar/StatusbarCompanion.h"
#include "companions/statusbar/StatusbarOptions.h"
#include "platform/Bundle.h"
#include "platform/CompanionChannel.h"
#include "platform/PrivateRuntime.h"
#include "platform/SingleInstance.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QProcess>
#include <QTableWidget>
#include <QTranslator>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

using namespace TestSupport;
using ComponentChecks::Component;
using ComponentChecks::Platform;
using ComponentList = QList<ComponentChecks::Component>;
Q_DECLARE_METATYPE(ComponentChecks::Platform)

// The companions. The component installer: finding tools on a search path
// of fake tools, the install commands for what is missing, and its window.
// The status-bar companion: its channel (quit, status, one instance per
// user) in this process and as the real program. Local sockets: only in a
// folder of the user's own (here this test's own temporary folder, see
// isolateUser, so no companion the user runs answers), gone when their
// program ends; one running ZELMOR Helper per user.
class TestCompanions : public QObject
{
    Q_OBJECT

    static QString companionProgram()
    {
        return buildBundleDir() + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app/"
                                  "Contents/MacOS/ZELMORHelperStatusbarApp";
    }
    static QString mainProgram() { return Bundle::executablePath(buildBundleDir()); }
    static QString mainIdentifier() { return Bundle::readInfo(buildBundleDir())->identifier; }
    static mode_t modeOf(const QString &path)
    {
        struct stat info = {};
        return ::lstat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode : 0;
    }
    static QAction *statusAction(StatusbarCompanion &companion) { return companion.menu()->actions().constFirst(); }
    static QStringList visibleMenuTexts(StatusbarCompanion &companion)
    {
        QStringList texts;
        for (QAction *action : companion.menu()->actions())
            if (action->isVisible() && !action->isSeparator())
                texts << action->text();
        return texts;
    }
    static void triggerOpen(StatusbarCompanion &companion)
    {
        for (QAction *action : companion.menu()->actions())
            if (action->text() == "Open ZELMOR Helper")
                action->trigger();
    }
    // Starts a built program and waits for it to end normally with 0.
    static void runToEnd(QProcess &process, const QStringList &arguments, const QString &program = companionProgram())
    {
        QSignalSpy ended(&process, &QProcess::finished);
        process.start(program, arguments);
        QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 60000);
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
    }
    // Starts the built application and waits until it holds its place.
    static void startMain(QProcess &process)
    {
        process.start(mainProgram(), {});
        QVERIFY(process.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(mainIdentifier()), 20000);
    }

    // A program that prints text and exits with a code, as a tool would.
    static void fakeTool(const QString &path, const QByteArray &output, int exitCode = 0)
    {
        writeScript(path, "printf '%s\\n' '" + output + "'\nexit " + QByteArray::number(exitCode) + "\n");
    }

    static QString tableText(InstallerWindow &window, int row, int column)
    {
        auto *table = window.findChild<QTableWidget *>("componentTable");
        return table && table->item(row, column) ? table->item(row, column)->text() : QString();
    }

private slots:
    void initTestCase() { QVERIFY(!CompanionChannel::isRunning(ZELMOR_STATUSBAR_BUNDLE_ID)); }

    // The program's own name is never an option.
    void arguments_data()
    {
        columns<QStringList, bool, bool>({"arguments", "autoLaunched", "headless"});
        QTest::newRow("by hand") << QStringList{"prog"} << false << false;
        QTest::newRow("login agent") << QStringList{"prog", "-runMode", "autoLaunched"} << true << false;
        QTest::newRow("other run mode") << QStringList{"prog", "-runMode", "manual"} << false << false;
        QTest::newRow("run mode without value") << QStringList{"prog", "-runMode"} << false << false;
        QTest::newRow("headless, platform noise")
            << QStringList{"prog", "-psn_0_12345", "--no-tray", "-runMode", "autoLaunched"} << true << true;
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
        const QString mainBundle = dir.path() + "/ZELMOR Helper.app", marker = dir.path() + "/opened";
        makeScriptBundle(mainBundle, "org.zelmor.test.main", "touch '" + QFile::encodeName(marker) + "'\n");
        const QString found = mainBundleForCompanion(mainBundle + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app");
        QCOMPARE(found, mainBundle);
        StatusbarCompanion companion("org.zelmor.test.open", found, {false, true});
        triggerOpen(companion);
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
        const QString id = "org.zelmor.test.status", name = "ZELMOR Helper";
        StatusbarCompanion companion(id, "/nowhere/ZELMOR Helper.app", {false, true});
        QSignalSpy quits(&companion, &StatusbarCompanion::quitRequested);
        QVERIFY(companion.start());
        QCOMPARE(visibleMenuTexts(companion), (QStringList{"Open ZELMOR Helper", "Quit"}));
        QCOMPARE(companion.toolTip(), name);
        {
            CompanionStatusPublisher publisher(id);
            publisher.publish(CompanionChannel::statusMessage("Compiling ZELMOR", 42, 100, "make"));
            QTRY_COMPARE(visibleMenuTexts(companion), (QStringList{"Compiling ZELMOR — 42%", "Open ZELMOR Helper", "Quit"}));
            QVERIFY(!statusAction(companion)->isEnabled());
            QCOMPARE(companion.toolTip(), name + "\nCompiling ZELMOR — 42%\nmake");
            publisher.publish(CompanionChannel::idleMessage());
            QTRY_VERIFY(!statusAction(companion)->isVisible());
            QCOMPARE(companion.toolTip(), name);
            publisher.publish(CompanionChannel::statusMessage("Downloading source codes", 0, 0, {}));
            QTRY_COMPARE(companion.toolTip(), name + "\nDownloading source codes");
        }
        // The publisher is gone in the middle of an operation.
        QTRY_VERIFY(!statusAction(companion)->isVisible());
        QCOMPARE(companion.toolTip(), name);
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

    // Offscreen there is no tray: the companion says so, in the user's
    // language (it loads the application's table), and leaves without taking
    // the channel, however it was started.
    void withoutTrayItExitsCleanly_data()
    {
        columns<QStringList, QString>({"arguments", "language"});
        QTest::newRow("by hand") << QStringList{} << "en";
        QTest::newRow("login agent") << QStringList{"-runMode", "autoLaunched"} << "en";
        QTest::newRow("German") << QStringList{} << "de";
        QTest::newRow("French, German second") << QStringList{} << "fr:de";
        QTest::newRow("Spanish") << QStringList{} << "es";
    }
    void withoutTrayItExitsCleanly()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, language);
        const char *english = "No system tray is available on this desktop; exiting.";
        QString expected = english;
        if (language != "en") {
            QTranslator table;
            QVERIFY(table.load(":/i18n/zelmorhelper_" + language.left(2) + ".qm"));
            expected = table.translate("StatusbarCompanion", english);
            QVERIFY(!expected.isEmpty() && expected != QLatin1String(english));
        }
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LANGUAGE", language);
        process.setProcessEnvironment(environment);
        runToEnd(process, arguments);
        const QString said = QString::fromUtf8(process.readAllStandardError());
        QVERIFY2(said.contains(expected), qPrintable(said));
        QVERIFY(!CompanionChannel::isRunning(ZELMOR_STATUSBAR_BUNDLE_ID));
    }

    // The built program listens in the private folder, on a socket only
    // this user may use; it refuses a second instance (a routine start, so
    // with 0), quits when ZELMOR Helper ends with its quit switch on, and
    // removes its socket whether it quits or is terminated.
    void builtCompanionOwnsItsChannel()
    {
        const QString id = ZELMOR_STATUSBAR_BUNDLE_ID, socket = CompanionChannel::serverName(id);
        QCOMPARE(QFileInfo(socket).absolutePath(), qEnvironmentVariable("XDG_RUNTIME_DIR"));
        for (bool byQuit : {true, false}) {
            QProcess first;
            QSignalSpy firstEnded(&first, &QProcess::finished);
            first.start(companionProgram(), {"--no-tray"});
            QVERIFY(first.waitForStarted());
            QTRY_VERIFY_WITH_TIMEOUT(CompanionChannel::isRunning(id), 10000);
            QVERIFY(S_ISSOCK(modeOf(socket)));
            QCOMPARE(modeOf(socket) & 077, mode_t(0));
            QCOMPARE(modeOf(QFileInfo(socket).absolutePath()) & 0777, mode_t(0700));
            if (byQuit) {
                QProcess second;
                runToEnd(second, {"--no-tray", "-runMode", "autoLaunched"});
                QVERIFY(second.readAllStandardError().contains("already running"));
                QVERIFY(first.state() == QProcess::Running && CompanionChannel::isRunning(id));
                SettingsStore::standard().setObject(SettingsKeys::QuitStatusbarApp, QStringLiteral("1"));
                QCOMPARE(quitStatusbarAppIfAsked(id), CompanionQuit::Asked);
            } else {
                ::kill(static_cast<pid_t>(first.processId()), SIGTERM);
            }
            QTRY_COMPARE_WITH_TIMEOUT(firstEnded.count(), 1, 10000);
            QCOMPARE(first.exitStatus(), QProcess::NormalExit);
            QCOMPARE(first.exitCode(), 0);
            QVERIFY(!QFileInfo::exists(socket) && !CompanionChannel::isRunning(id));
        }
    }

    // Where sockets go: the runtime folder when it is private, else a folder
    // of our own in the temporary folder; a fallback that is not ours alone
    // is refused (and left as it was found).
    void privateFolder_data()
    {
        // runtime: none, private, open, relative; fallback: none, private, open, link, foreign
        columns<QString, QString, QString>({"runtime", "fallback", "expected"});
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
        const QByteArray savedRuntime = qgetenv("XDG_RUNTIME_DIR"), savedTemp = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(dir.path()));
        const QString runtimeDir = dir.path() + "/xdg";
        const QString fallbackDir = dir.path() + "/zelmor-runtime-" + QString::number(::getuid());
        QDir().mkpath(runtimeDir);
        ::chmod(QFile::encodeName(runtimeDir).constData(), runtime == "open" ? 0755 : 0700);
        if (runtime == "none")
            qunsetenv("XDG_RUNTIME_DIR");
        else
            qputenv("XDG_RUNTIME_DIR", runtime == "relative" ? QByteArray("xdg") : QFile::encodeName(runtimeDir));
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

        QCOMPARE(found, expected == "runtime" ? runtimeDir : expected == "fallback" ? fallbackDir : QString());
        if (!found.isEmpty())
            QCOMPARE(modeOf(found) & (S_IFMT | 0777), mode_t(S_IFDIR | 0700));
        if (fallback == "open")
            QCOMPARE(modeOf(fallbackDir) & 0777, mode_t(0777));
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
        const QString socket = first->socketPath(), lock = first->lockPath();
        QVERIFY(QFileInfo::exists(socket) && QFileInfo::exists(lock));

        SingleInstance second(id);
        QSignalSpy secondPrimary(&second, &SingleInstance::becamePrimary);
        QSignalSpy handedOver(&second, &SingleInstance::handedOver);
        second.start();
        QTRY_COMPARE(handedOver.count(), 1);
        QTRY_COMPARE(activations.count(), 1);
        QCOMPARE(secondPrimary.count(), 0);

        first.reset();
        QVERIFY(!QFileInfo::exists(socket) && !QFileInfo::exists(lock));
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
        runToEnd(second, {}, mainProgram());
        QCOMPARE(activations.count(), 1);
        StatusbarCompanion companion("org.zelmor.test.channels", buildBundleDir(), {false, true});
        triggerOpen(companion);
        QTRY_COMPARE_WITH_TIMEOUT(activations.count(), 2, 20000);
    }

    // The built application: a run killed outright leaves its lock and
    // socket behind, which the next start takes over; SIGTERM ends that run
    // normally and removes both.
    void applicationTakesOverStaleInstanceAndCleansUp()
    {
        SingleInstance probe(mainIdentifier());
        const QString socket = probe.socketPath(), lock = probe.lockPath();
        QProcess killed, next;
        startMain(killed);
        ::kill(static_cast<pid_t>(killed.processId()), SIGKILL);
        QVERIFY(killed.waitForFinished(10000));
        QVERIFY(QFileInfo::exists(socket) && QFileInfo::exists(lock));

        QSignalSpy ended(&next, &QProcess::finished);
        startMain(next);
        QCOMPARE(next.state(), QProcess::Running);
        ::kill(static_cast<pid_t>(next.processId()), SIGTERM);
        QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 60000);
        QCOMPARE(next.exitStatus(), QProcess::NormalExit);
        QCOMPARE(next.exitCode(), 0);
        QVERIFY(!QFileInfo::exists(socket) && !QFileInfo::exists(lock));
    }

    void versions_data()
    {
        columns<QByteArray, QString>({"output", "version"});
        QTest::newRow("git") << QByteArray("git version 2.39.2\n") << "2.39.2";
        QTest::newRow("gcc") << QByteArray("gcc (Debian 12.2.0-14) 12.2.0\nCopyright") << "12.2.0";
        QTest::newRow("apple clang") << QByteArray("Apple clang version 15.0.0 (clang-1500.1.0.2.5)") << "15.0.0";
        QTest::newRow("bare") << QByteArray("2.26.5\n") << "2.26.5";
        QTest::newRow("no number") << QByteArray("\n  custom build  \nmore") << "custom build";
        QTest::newRow("empty") << QByteArray() << QString();
    }
    void versions()
    {
        QFETCH(QByteArray, output);
        QTEST(ComponentChecks::parseVersion(output), "version");
    }

    // A program that is there but does not work is missing: a compiler shim
    // that fails, pkg-config without SDL 2, a file that cannot be run.
    void missingAndBrokenTools()
    {
        QTemporaryDir dir;
        const QString path = dir.path();
        // A cmake on the search path does not count: only the fixed path does.
        fakeTool(path + "/cmake", "cmake version 3.25.1");
        QCOMPARE(ComponentChecks::missingComponents(ComponentChecks::checkAll(Platform::Debian, path, path + "/fixed/cmake")),
                 (ComponentList{Component::Git, Component::CMake, Component::Make, Component::CCompiler,
                                Component::CxxCompiler, Component::Sdl2}));
        // An empty search path is not this process's PATH.
        QVERIFY(!ComponentChecks::check(Component::Git, QString(), {}).found);

        fakeTool(path + "/cc", "xcode-select: note: no developer tools were found", 1);
        fakeTool(path + "/pkg-config", "Package sdl2 was not found", 1);
        writeFile(path + "/git", "#!/bin/sh\necho git version 2.0\n");
        writeFile(path + "/fixed/cmake", "#!/bin/sh\necho cmake version 3.0\n");
        QVERIFY(!ComponentChecks::check(Component::CCompiler, path, {}).found);
        QVERIFY(!ComponentChecks::check(Component::Sdl2, path, {}).found);
        QVERIFY(!ComponentChecks::check(Component::Git, path, {}).found);
        QVERIFY(!ComponentChecks::check(Component::CMake, path, path + "/fixed/cmake").found);
        // A working candidate later in the list still answers.
        fakeTool(path + "/clang", "clang version 16.0.0");
        const auto compiler = ComponentChecks::check(Component::CCompiler, path, {});
        QVERIFY(compiler.found);
        QCOMPARE(compiler.program, path + "/clang");

        QCOMPARE(ComponentChecks::searchPathFor(Platform::MacOS, "/usr/bin:/bin:/usr/local/bin"),
                 QString("/usr/bin:/bin:/usr/local/bin:/opt/homebrew/bin"));
        QCOMPARE(ComponentChecks::searchPathFor(Platform::Debian, "/usr/bin:/bin"), QString("/usr/bin:/bin"));
    }

    void commands_data()
    {
        columns<Platform, ComponentList, QString, QStringList>({"platform", "missing", "cmakeProgram", "commands"});
        using C = Component;
        const ComponentList all{C::Git, C::CMake, C::Make, C::CCompiler, C::CxxCompiler, C::Sdl2};
        const QString local = "/usr/local/bin/cmake";
        QTest::newRow("debian, nothing missing") << Platform::Debian << ComponentList{} << local << QStringList{};
        QTest::newRow("debian, everything, packaged cmake path") << Platform::Debian << all << "/usr/bin/cmake"
            << QStringList{"sudo apt-get install git cmake make gcc g++ libsdl2-dev"};
        QTest::newRow("debian, listed in component order") << Platform::Debian << ComponentList{C::Sdl2, C::CxxCompiler}
            << "/usr/bin/cmake" << QStringList{"sudo apt-get install g++ libsdl2-dev"};
        QTest::newRow("debian, cmake expected in /usr/local/bin") << Platform::Debian << ComponentList{C::CMake} << local
            << QStringList{"sudo apt-get install cmake", "sudo ln -sf /usr/bin/cmake /usr/local/bin/cmake"};
        QTest::newRow("debian, cmake expected in a folder with a blank") << Platform::Debian << ComponentList{C::CMake}
            << "/opt/my tools/cmake" << QStringList{"sudo apt-get install cmake",
                   "sudo mkdir -p '/opt/my tools' && sudo ln -sf /usr/bin/cmake '/opt/my tools/cmake'"};
        QTest::newRow("macos, compiler only") << Platform::MacOS << ComponentList{C::CCompiler} << local
                                              << QStringList{"xcode-select --install"};
        QTest::newRow("macos, sdl only") << Platform::MacOS << ComponentList{C::Sdl2} << local
                                         << QStringList{"brew install sdl2"};
        QTest::newRow("macos, everything") << Platform::MacOS << (ComponentList{C::Homebrew} + all) << local
            << QStringList{"xcode-select --install",
                   "/bin/bash -c \"$(curl -fsSL https://raw.githubusercontent.com/Homebrew/install/HEAD/install.sh)\"",
                   "eval \"$(/opt/homebrew/bin/brew shellenv 2>/dev/null || /usr/local/bin/brew shellenv)\"",
                   "brew install cmake sdl2",
                   "test -e /usr/local/bin/cmake || { sudo mkdir -p /usr/local/bin && sudo ln -s "
                   "\"$(brew --prefix)/bin/cmake\" /usr/local/bin/cmake; }"};
    }
    void commands()
    {
        QFETCH(Platform, platform);
        QFETCH(ComponentList, missing);
        QFETCH(QString, cmakeProgram);
        QTEST(InstallCommands::commandsFor(platform, missing, cmakeProgram), "commands");
    }

    // The window: what it lists, the command it offers and copies, and a
    // second check after the user installed the rest, each tool found by a
    // different route (cc and c++ are absent so gcc and clang++ answer,
    // sdl2-config is absent so pkg-config answers).
    void windowShowsWhatIsMissing()
    {
        QTemporaryDir dir;
        const QString bin = dir.path(), cmake = bin + "/fixed/cmake";
        fakeTool(bin + "/git", "git version 2.39.2");
        fakeTool(bin + "/sdl2-config", "2.26.5");
        InstallerWindow window(Platform::Debian, bin, cmake);
        QSignalSpy finished(&window, &InstallerWindow::checksFinished);
        QVERIFY(window.isChecking());
        QVERIFY(finished.wait(30000));
        QCOMPARE(tableText(window, 0, 0) + "|" + tableText(window, 0, 1) + "|" + tableText(window, 0, 2),
                 "Git|Found, version 2.39.2|" + bin + "/git");
        QCOMPARE(tableText(window, 1, 1) + "|" + tableText(window, 1, 2), "Missing|not at " + cmake);
        QCOMPARE(tableText(window, 5, 1), QString("Found, version 2.26.5"));
        const QString command = "sudo apt-get install cmake make gcc g++\nsudo mkdir -p " + bin
                                + "/fixed && sudo ln -sf /usr/bin/cmake " + cmake;
        QCOMPARE(window.installCommand(), command);
        window.copyCommand();
        QCOMPARE(QGuiApplication::clipboard()->text(), command);

        QFile::remove(bin + "/sdl2-config");
        fakeTool(cmake, "cmake version 3.25.1\n\nCMake suite maintained by Kitware");
        fakeTool(bin + "/make", "GNU Make 4.3\nBuilt for x86_64-pc-linux-gnu");
        fakeTool(bin + "/gcc", "gcc (Debian 12.2.0-14) 12.2.0");
        fakeTool(bin + "/clang++", "Debian clang version 14.0.6");
        fakeTool(bin + "/pkg-config", "2.26.5");
        window.checkAgain();
        QVERIFY(finished.wait(30000));
        QCOMPARE(window.installCommand(), QString());
        QStringList found;
        for (const auto &result : window.results())
            found << result.program << result.version;
        QCOMPARE(found, (QStringList{bin + "/git", "2.39.2", cmake, "3.25.1", bin + "/make", "4.3", bin + "/gcc",
                                     "12.2.0", bin + "/clang++", "14.0.6", bin + "/pkg-config", "2.26.5"}));
    }
};

ZELMOR_TEST_MAIN(TestCompanions)
#include "tst_companions.moc"
