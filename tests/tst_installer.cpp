#include "TestSupport.h"

#include "companions/installer/ComponentChecks.h"
#include "companions/installer/InstallCommands.h"
#include "companions/installer/InstallerWindow.h"
#include "companions/installer/PackageKitInstaller.h"
#include "companions/installer/PackageKitRules.h"
#include "platform/Translation.h"

#include <QAccessible>
#include <QClipboard>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTranslator>

#include <csignal>

using namespace TestSupport;
using namespace PackageKitRules;
using ComponentChecks::Component;
using ComponentChecks::Platform;
using ComponentList = QList<ComponentChecks::Component>;
using Kind = InstallOutcome::Kind;
Q_DECLARE_METATYPE(ComponentChecks::Platform)
Q_DECLARE_METATYPE(InstallOutcome::Kind)
Q_DECLARE_METATYPE(PackageKitRules::ResolveStep::Action)

namespace {

const QString installAction = "org.freedesktop.packagekit.package-install";
const QString refreshAction = "org.freedesktop.packagekit.system-sources-refresh";
// Endings that the rules decide and the window shows.
const QString notAuthorized =
    "Installing was not authorized: the password prompt was cancelled, the password was wrong, or "
    "no password prompt can be shown in this session. Click Install to try again, or run the "
    "command below in a terminal.";
const QString cancelled = "The installation was cancelled. The list shows what is installed now.";
const QString stopped = "The package manager stopped before it finished. The list shows what is "
                        "installed now; click Install to try again.";

void fakeTool(const QString &path, const QByteArray &output, int exitCode = 0)
{
    writeScript(path,
                "printf '%s\\n' '" + output + "'\nexit " + QByteArray::number(exitCode) + "\n");
}

template <typename T> T *child(QWidget &window, const char *name)
{
    return window.findChild<T *>(name);
}

QString text(InstallerWindow &window, const char *label)
{
    return child<QLabel>(window, label)->text();
}

QString rowText(InstallerWindow &window, int row)
{
    auto *table = child<QTableWidget>(window, "componentTable");
    QStringList texts;
    for (int column = 0; column < table->columnCount(); ++column)
        texts << table->item(row, column)->text();
    return texts.join('|');
}

// A real packagekitd with its dummy backend, on a private system bus with a
// polkit stand-in, in namespaces of its own: its state folders are empty
// tmpfs mounts, and killing the namespace's first process ends every process
// in it.
class PackageKitSandbox
{
public:
    // NoBus: only an address nothing listens on.
    enum class Daemon { Online, Offline, None, NoBus };

    ~PackageKitSandbox()
    {
        if (m_process.state() != QProcess::NotRunning)
            m_process.kill(); // unshare passes SIGKILL on to the namespace
        m_process.waitForFinished(30000);
        QDBusConnection::disconnectFromBus(m_name);
    }

    // Empty when the services answer, otherwise why they cannot run here.
    QString start(Daemon daemon)
    {
        if (daemon == Daemon::NoBus) {
            m_bus = QDBusConnection::connectToBus("unix:path=" + socket(), m_name);
            return {};
        }
        for (const char *needed :
             {"unshare", "dbus-daemon", "bash", "/usr/libexec/packagekitd",
              "/usr/lib/x86_64-linux-gnu/packagekit-backend/libpk_backend_dummy.so",
              "/var/lib/PackageKit", "/var/cache/PackageKit"})
            if (QStandardPaths::findExecutable(needed).isEmpty() && !QFileInfo::exists(needed))
                return QString(needed)
                       + " is missing (Debian's util-linux, dbus-daemon, packagekit)";
        int exitCode = -1;
        run("/usr/bin/python3", {"-c", "import dbusmock"}, {}, &exitCode);
        if (exitCode != 0)
            return "/usr/bin/python3 has no dbusmock (Debian's python3-dbusmock)";

        const QString conf = R"(<busconfig><type>system</type><listen>unix:path=%1</listen>
<auth>EXTERNAL</auth><policy context="default"><allow user="*"/><allow own="*"/>
<allow send_type="method_call"/><allow send_destination="*"/><allow receive_sender="*"/>
</policy></busconfig>)";
        writeFile(m_dir.filePath("bus.conf"), conf.arg(socket()).toLocal8Bit());
        const char *script = R"(set -eu
for state in /var/lib/PackageKit /var/cache/PackageKit; do mount -t tmpfs tmpfs $state; done
export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$1/bus
# Forked, it returns once the bus listens: packagekitd gives up on a bus not there yet.
dbus-daemon --config-file="$1/bus.conf" --fork --print-address >/dev/null
/usr/bin/python3 -m dbusmock --system --template polkitd &
[ "$2" = none ] || /usr/libexec/packagekitd --backend=dummy --disable-timer --keep-environment &
wait
)";
        QStringList arguments{"--user", "--map-root-user", "--mount",     "--pid",
                              "--fork", "--kill-child",    "--mount-proc"};
        if (daemon == Daemon::Offline)
            arguments << "--net"; // only a loopback device: the daemon sees no network
        arguments << "bash"
                  << "-c" << script << "sandbox" << m_dir.path()
                  << (daemon == Daemon::None ? "none" : "packagekit");
        m_process.setStandardInputFile(QProcess::nullDevice());
        m_process.start("unshare", arguments);
        QStringList names{"org.freedesktop.PolicyKit1"};
        if (daemon != Daemon::None)
            names << "org.freedesktop.PackageKit";
        const auto up = [&] {
            if (!m_bus.isConnected() && QFileInfo::exists(socket())) {
                QDBusConnection::disconnectFromBus(m_name); // may be bound, not yet listening
                m_bus = QDBusConnection::connectToBus("unix:path=" + socket(), m_name);
            }
            return std::all_of(names.begin(), names.end(), [&](const QString &name) {
                return m_bus.isConnected() && m_bus.interface()->isServiceRegistered(name);
            });
        };
        const auto ended = [&] { return m_process.state() == QProcess::NotRunning; };
        if (QTest::qWaitFor([&] { return ended() || up(); }, 30000) && !ended())
            return {};
        return "the sandbox did not start: " + m_bus.lastError().message() + " "
               + QString::fromLocal8Bit(m_process.readAllStandardError());
    }

    QDBusConnection bus() const { return m_bus; }

    bool allow(const QStringList &actions)
    {
        QDBusInterface polkit("org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority",
                              "org.freedesktop.DBus.Mock", m_bus);
        return QDBusReply<void>(polkit.call("SetAllowed", actions)).isValid();
    }

    // Kills packagekitd alone, as a crash would.
    bool killDaemon() const
    {
        QList<qint64> pending{m_process.processId()};
        while (!pending.isEmpty()) {
            const qint64 pid = pending.takeFirst();
            if (readFile(QString("/proc/%1/comm").arg(pid)).trimmed() == "packagekitd")
                return ::kill(pid_t(pid), SIGKILL) == 0;
            const QString children =
                QString::fromLatin1(readFile(QString("/proc/%1/task/%1/children").arg(pid)));
            for (const QString &child : children.split(' ', Qt::SkipEmptyParts))
                pending << child.toLongLong();
        }
        return false;
    }

private:
    QString socket() const { return m_dir.filePath("bus"); }

    QTemporaryDir m_dir;
    QProcess m_process;
    // A name of its own: a connection of an earlier sandbox may live on in
    // objects that are not deleted yet.
    const QString m_name = "zelmor-test-packagekit-" + QString::number(++s_sandboxes);
    QDBusConnection m_bus{QString()};
    static inline int s_sandboxes = 0;
};

using Daemon = PackageKitSandbox::Daemon;

} // namespace
Q_DECLARE_METATYPE(PackageKitSandbox::Daemon)

class TestInstaller : public QObject
{
    Q_OBJECT

    // Every tool but the given ones, in a folder of its own; cmake at its
    // fixed place there.
    QString toolsWithout(const QStringList &missing)
    {
        const QString bin = m_tools.path() + "/" + QString::number(++m_toolSets);
        for (const char *tool : {"git", "cmake", "make", "cc", "c++", "sdl2-config"})
            if (!missing.contains(tool))
                fakeTool(bin + "/" + tool, "1.0");
        return bin;
    }

    // A shown window whose checks have run, installing through the sandbox's
    // PackageKit with the given table.
    std::unique_ptr<InstallerWindow> window(PackageKitSandbox &sandbox, const QString &bin,
                                            const InstallCommands::PackageTable &table)
    {
        auto installer =
            std::make_unique<PackageKitInstaller>(sandbox.bus(), table, bin + "/cmake");
        m_installer = installer.get();
        auto w = std::make_unique<InstallerWindow>(Platform::Debian, bin, bin + "/cmake",
                                                   std::move(installer));
        QSignalSpy checked(w.get(), &InstallerWindow::checksFinished);
        w->show();
        if (!checked.wait(30000))
            return nullptr;
        return w;
    }

    PackageKitInstaller *m_installer = nullptr;
    QTemporaryDir m_tools;
    int m_toolSets = 0;

private slots:
    void commands_data()
    {
        columns<Platform, ComponentList, QString, QStringList>(
            {"platform", "missing", "cmakeProgram", "commands"});
        using C = Component;
        const QString local = "/usr/local/bin/cmake";
        QTest::newRow("debian, component order, packaged cmake path")
            << Platform::Debian << ComponentList{C::Sdl2, C::CMake, C::Git} << "/usr/bin/cmake"
            << QStringList{"sudo apt-get install git cmake libsdl2-dev"};
        QTest::newRow("debian, cmake expected in /usr/local/bin")
            << Platform::Debian << ComponentList{C::CMake} << local
            << QStringList{"sudo apt-get install cmake", "sudo ln -sf /usr/bin/cmake " + local};
        QTest::newRow("macos, sdl only") << Platform::MacOS << ComponentList{C::Sdl2} << local
                                         << QStringList{"brew install sdl2"};
        QTest::newRow("macos, everything")
            << Platform::MacOS << ComponentList{C::Homebrew,  C::Git,         C::CMake, C::Make,
                                                C::CCompiler, C::CxxCompiler, C::Sdl2}
            << local
            << QStringList{"xcode-select --install",
                           "/bin/bash -c \"$(curl -fsSL "
                           "https://raw.githubusercontent.com/Homebrew/install/HEAD/install.sh)\"",
                           "eval \"$(/opt/homebrew/bin/brew shellenv 2>/dev/null || "
                           "/usr/local/bin/brew shellenv)\"",
                           "brew install cmake sdl2",
                           "test -e /usr/local/bin/cmake || { sudo mkdir -p /usr/local/bin && "
                           "sudo ln -s \"$(brew --prefix)/bin/cmake\" /usr/local/bin/cmake; }"};
    }
    void commands()
    {
        QFETCH(Platform, platform);
        QFETCH(ComponentList, missing);
        QFETCH(QString, cmakeProgram);
        QTEST(InstallCommands::commandsFor(platform, missing, cmakeProgram), "commands");
    }

    // In the window a tool that is there but does not work is missing (cmake
    // away from its expected place, a failing cc, a make that cannot run); the
    // second check finds each by another route (gcc, clang++, pkg-config).
    void findingTools()
    {
        QCOMPARE(ComponentChecks::parseVersion("\n  custom build  \nmore"),
                 QString("custom build"));
        QCOMPARE(ComponentChecks::parseVersion({}), QString());
        // An empty search path is not this process's PATH.
        QVERIFY(!ComponentChecks::check(Component::Git, QString(), {}).found);
        QCOMPARE(ComponentChecks::searchPathFor(Platform::MacOS, "/usr/bin:/bin:/usr/local/bin"),
                 QString("/usr/bin:/bin:/usr/local/bin:/opt/homebrew/bin"));
        QCOMPARE(ComponentChecks::searchPathFor(Platform::Debian, "/usr/bin:/bin"),
                 QString("/usr/bin:/bin"));

        const QString bin = m_tools.path() + "/my tools", cmake = bin + "/fixed/cmake";
        fakeTool(bin + "/git", "git version 2.39.2");
        fakeTool(bin + "/sdl2-config", "2.26.5");
        fakeTool(bin + "/cmake", "cmake version 3.25.1");
        fakeTool(bin + "/cc", "xcode-select: note: no developer tools were found", 1);
        writeFile(bin + "/make", "#!/bin/sh\necho GNU Make 4.3\n");
        InstallerWindow window(Platform::Debian, bin, cmake);
        QSignalSpy finished(&window, &InstallerWindow::checksFinished);
        QVERIFY(window.isChecking());
        QVERIFY(finished.wait(30000));
        QCOMPARE(rowText(window, 0), "Git|Found, version 2.39.2|" + bin + "/git");
        QCOMPARE(rowText(window, 1), "CMake|Missing|not at " + cmake);
        const QString command = "sudo apt-get install cmake make gcc g++\nsudo mkdir -p '" + bin
                                + "/fixed' && sudo ln -sf /usr/bin/cmake '" + cmake + "'";
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
        QStringList found;
        for (const auto &result : window.results())
            found << result.program << result.version;
        QCOMPARE(found, (QStringList{bin + "/git", "2.39.2", cmake, "3.25.1", bin + "/make", "4.3",
                                     bin + "/gcc", "12.2.0", bin + "/clang++", "14.0.6",
                                     bin + "/pkg-config", "2.26.5"}));
        QCOMPARE(text(window, "messageLabel"), "Everything ZELMOR Helper needs is installed.");
    }

    // While downloading or installing the status line names the package.
    void statusLine_data()
    {
        columns<uint, QString, QString>({"status", "packageId", "line"});
        const auto row = [](const char *name, uint status, const QString &id, const char *line) {
            QTest::newRow(name) << status << id << QString(line);
        };
        const QString sdl = "libsdl2-dev;2.26.5+dfsg-1;amd64;debian";
        row("authentication", StatusWaitingForAuth, "", "Waiting for authentication");
        row("queued", StatusWait, "", "Waiting for another installer…");
        row("lock", StatusWaitingForLock, sdl, "Waiting for another installer…");
        row("download", StatusDownload, sdl, "Downloading: libsdl2-dev");
        row("install", StatusInstall, sdl, "Installing: libsdl2-dev");
        row("install, no package yet", StatusInstall, "", "Installing");
        row("looking up: no package named", StatusQuery, sdl, "Looking up packages");
        row("package lists", StatusDownloadPackagelist, "", "Refreshing package lists");
        row("unknown value", 99, "", "Working");
    }
    void statusLine()
    {
        QFETCH(uint, status);
        QFETCH(QString, packageId);
        QTEST(PackageKitRules::statusLine(status, packageId), "line");
    }

    // The bar goes busy on PackageKit's "unknown" percentage.
    void progress()
    {
        QCOMPARE(progressFor(PercentageUnknown), -1);
        QCOMPARE(progressFor(0), 0);
        QCOMPARE(progressFor(100), 100);
    }

    // Every ending gets its sentence; only what cannot change by trying
    // again takes Install away.
    void outcomes_data()
    {
        columns<uint, int, QString, QStringList, Kind, bool, QString>(
            {"exit", "error", "details", "unavailable", "kind", "canRetry", "sentence"});
        const auto row = [](const char *name, uint exit, int error, Kind kind, bool retry,
                            const QString &sentence, const QString &details = {},
                            const QStringList &unavailable = {}) {
            QTest::newRow(name) << exit << error << details << unavailable << kind << retry
                                << sentence;
        };
        row("success", ExitSuccess, -1, Kind::Installed, true, "Installation finished.");
        row("success, something left out", ExitSuccess, -1, Kind::Installed, true,
            "Installation finished. Not available from this system's package sources: a, b.", {},
            {"a", "b"});
        row("cancelled", ExitCancelled, ErrorTransactionCancelled, Kind::Cancelled, true,
            cancelled);
        row("not authorized", ExitFailed, ErrorNotAuthorized, Kind::Failed, true, notAuthorized);
        row("lock held", ExitFailed, ErrorCannotGetLock, Kind::Failed, true,
            "Another installer is using the package manager. Wait until it has finished, then "
            "click Install again.");
        const QString untrusted =
            "Nothing was installed: the packages are not signed by a source this system trusts. "
            "Check the package sources in the system's software settings, or run the command "
            "below in a terminal.";
        row("untrusted error", ExitFailed, ErrorCannotInstallRepoUnsigned, Kind::Failed, false,
            untrusted);
        row("untrusted exit", ExitNeedUntrusted, -1, Kind::Failed, false, untrusted);
        row("download failed", ExitFailed, ErrorPackageDownloadFailed, Kind::Failed, true,
            "The packages could not be downloaded. Check the internet connection, then click "
            "Install again.");
        row("killed", ExitKilled, -1, Kind::Failed, true, stopped);
        row("other error with details", ExitFailed, ErrorDepResolutionFailed, Kind::Failed, true,
            "The package manager could not install the packages: libfoo conflicts with libbar",
            " libfoo conflicts with libbar\n");
        row("other error, nothing said", ExitFailed, -1, Kind::Failed, true,
            "The package manager could not install the packages. Run the command below in a "
            "terminal to see why.");
    }
    void outcomes()
    {
        QFETCH(uint, exit);
        QFETCH(int, error);
        QFETCH(QString, details);
        QFETCH(QStringList, unavailable);
        const InstallOutcome outcome = outcomeOf(
            exit, error < 0 ? std::nullopt : std::optional<uint>(error), details, unavailable);
        QTEST(outcome.kind, "kind");
        QTEST(outcome.canRetry, "canRetry");
        QTEST(outcome.sentence, "sentence");
    }

    // Names go to PackageKit only from the table, in the list's order; a
    // cmake that the package already provides is not asked for again.
    void packagesToRequest_data()
    {
        columns<ComponentList, QString, bool, QStringList>(
            {"missing", "cmakeProgram", "packagedCmakeRuns", "packages"});
        using C = Component;
        QTest::newRow("table order, no table entry skipped")
            << ComponentList{C::Sdl2, C::Homebrew, C::Git} << "/usr/bin/cmake" << true
            << QStringList{"git", "libsdl2-dev"};
        QTest::newRow("cmake at the packaged path")
            << ComponentList{C::CMake} << "/usr/bin/cmake" << true << QStringList{"cmake"};
        QTest::newRow("cmake elsewhere, package there: only the link is missing")
            << ComponentList{C::CMake, C::Make} << "/usr/local/bin/cmake" << true
            << QStringList{"make"};
        QTest::newRow("cmake elsewhere, package missing too")
            << ComponentList{C::CMake} << "/usr/local/bin/cmake" << false << QStringList{"cmake"};
    }
    void packagesToRequest()
    {
        QFETCH(ComponentList, missing);
        QFETCH(QString, cmakeProgram);
        QFETCH(bool, packagedCmakeRuns);
        QTEST(PackageKitRules::packagesToRequest(missing, InstallCommands::debianPackages(),
                                                 cmakeProgram, packagedCmakeRuns),
              "packages");
    }

    // Unknown names: one refresh is offered; after it, what is found is
    // installed and the rest named, or nothing happens when nothing is found.
    void afterResolve_data()
    {
        using Action = ResolveStep::Action;
        columns<QStringList, bool, Action, QStringList, QStringList>(
            {"found", "refreshed", "action", "ids", "unavailable"});
        const QString a = "a;1;amd64;debian", b = "b;2;amd64;debian";
        QTest::newRow("all found")
            << QStringList{b, a} << false << Action::Install << QStringList{a, b} << QStringList{};
        QTest::newRow("a prefix is not a name")
            << QStringList{"ab;1;amd64;debian", b} << false << Action::OfferRefresh
            << QStringList{b} << QStringList{"a"};
        QTest::newRow("after the refresh, the rest")
            << QStringList{b} << true << Action::Install << QStringList{b} << QStringList{"a"};
        QTest::newRow("after the refresh, nothing")
            << QStringList{} << true << Action::NothingAvailable << QStringList{}
            << QStringList{"a", "b"};
    }
    void afterResolve()
    {
        QFETCH(QStringList, found);
        QFETCH(bool, refreshed);
        const ResolveStep step = PackageKitRules::afterResolve({"a", "b"}, found, refreshed);
        QTEST(step.action, "action");
        QTEST(step.packageIds, "ids");
        QTEST(step.unavailable, "unavailable");
    }

    // Return installs both packages in one transaction; the bar follows
    // PackageKit's percentage up to 100, the status line names the steps,
    // and afterwards the checks find what the packages brought.
    void installSucceeds()
    {
        PackageKitSandbox sandbox;
        if (const QString reason = sandbox.start(Daemon::Online); !reason.isEmpty())
            QSKIP(qPrintable(reason));
        QVERIFY(sandbox.allow({installAction}));
        const QString bin = toolsWithout({"git", "sdl2-config"});
        auto w =
            window(sandbox, bin, {{Component::Git, "libawesome"}, {Component::Sdl2, "foobar"}});
        QVERIFY(w);
        QCOMPARE(text(*w, "messageLabel"), "Click Install to install what is missing.");
        auto *bar = child<QProgressBar>(*w, "progressBar");
        auto *status = child<QLabel>(*w, "statusLabel");
        QCOMPARE(QAccessible::queryAccessibleInterface(bar)->text(QAccessible::Name),
                 "Installation progress");
        QCOMPARE(QAccessible::queryAccessibleInterface(status)->text(QAccessible::Name),
                 "Installation status");

        QList<int> percents;
        QStringList statuses;
        connect(m_installer, &PackageInstaller::progressChanged, this, [&](int percent) {
            percents << percent;
            // What the packages would bring, arriving while they install.
            if (percent >= 50 && !QFile::exists(bin + "/git")) {
                fakeTool(bin + "/git", "git version 2.39.2");
                fakeTool(bin + "/sdl2-config", "2.26.5");
            }
        });
        connect(m_installer, &PackageInstaller::statusChanged, this,
                [&](const QString &line) { statuses << line; });
        QSignalSpy checked(w.get(), &InstallerWindow::checksFinished);
        QTest::keyClick(w.get(), Qt::Key_Return);
        QVERIFY(w->isInstalling());
        // While PackageKit cannot stop (the dummy: from the install step on)
        // Cancel is off and Escape neither cancels nor closes.
        auto *cancel = child<QPushButton>(*w, "cancelButton");
        QVERIFY(cancel->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!statuses.isEmpty() && statuses.last().startsWith("Installing")
                                     && !cancel->isEnabled(),
                                 10000);
        QTest::keyClick(w.get(), Qt::Key_Escape);
        QVERIFY(w->isVisible());
        QVERIFY(checked.wait(60000));

        // From busy (-1) on, the install's figures only go up, to 100.
        const auto installing = std::find(percents.rbegin(), percents.rend(), -1).base();
        QVERIFY2(percents.last() == 100 && percents.end() - installing > 20
                     && std::is_sorted(installing, percents.end()),
                 qPrintable(QDebug::toString(percents)));
        const QString said = statuses.join(", ");
        QVERIFY2(statuses.contains("Waiting for authentication"), qPrintable(said));
        QVERIFY2(said.contains("Installing: gtkhtml2"), qPrintable(said));
        // Only a wait that lasts says another installer is in the way.
        QVERIFY2(!statuses.contains("Waiting for another installer…"), qPrintable(said));
        QCOMPARE(text(*w, "messageLabel"), "Installation finished.");
        QCOMPARE(rowText(*w, 5),
                 "SDL 2 development files|Found, version 2.26.5|" + bin + "/sdl2-config");
        QCOMPARE(w->installCommand(), QString());
        QVERIFY(!bar->isVisible() && !status->isVisible()
                && !child<QPushButton>(*w, "installButton")->isVisible());
    }

    // An installation that ends without installing: each way gets its
    // sentence, the command stays as the other way, and Install is offered
    // again unless trying again cannot help. Stopped while downloading, by
    // Escape (while PackageKit allows a cancel) or by the daemon's death. A
    // name the package sources do not know gets one refresh of the lists.
    void installEndsShort_data()
    {
        columns<Daemon, QStringList, QString, QString, bool, QString>(
            {"daemon", "allowed", "package", "stop", "canRetry", "sentence"});
        const QString none = "PackageKit, which installs software on this system, is not "
                             "available. Run the command below in a terminal, then click Check "
                             "Again.";
        const QStringList nothing, install{installAction};
        const auto row = [](const char *name, Daemon daemon, const QStringList &allowed,
                            const char *stop, bool retry, const QString &sentence,
                            const char *package = "foobar") {
            QTest::newRow(name) << daemon << allowed << QString(package) << QString(stop) << retry
                                << sentence;
        };
        row("no system bus", Daemon::NoBus, nothing, "", false, none);
        row("no daemon", Daemon::None, nothing, "", false, none);
        row("offline", Daemon::Offline, install, "", true,
            "This computer is offline. Connect it to the internet, then click Install again.");
        row("refused by polkit", Daemon::Online, nothing, "", true, notAuthorized);
        row("escape cancels", Daemon::Online, install, "escape", true, cancelled);
        row("daemon killed", Daemon::Online, install, "kill", true, stopped);
        row("unknown package", Daemon::Online, {installAction, refreshAction}, "", true,
            "This system's package lists do not know nosuchpackage. Refresh the package lists and "
            "try again?",
            "nosuchpackage");
    }
    void installEndsShort()
    {
        QFETCH(Daemon, daemon);
        QFETCH(QStringList, allowed);
        QFETCH(QString, package);
        QFETCH(QString, stop);
        QFETCH(bool, canRetry);
        PackageKitSandbox sandbox;
        if (const QString reason = sandbox.start(daemon); !reason.isEmpty())
            QSKIP(qPrintable(reason));
        QVERIFY(daemon == Daemon::NoBus || sandbox.allow(allowed));
        auto w = window(sandbox, toolsWithout({"sdl2-config"}), {{Component::Sdl2, package}});
        QVERIFY(w);
        QSignalSpy checked(w.get(), &InstallerWindow::checksFinished);
        auto *install = child<QPushButton>(*w, "installButton");
        install->click();
        QVERIFY(w->isInstalling());
        auto *cancel = child<QPushButton>(*w, "cancelButton");
        if (!stop.isEmpty()) {
            QTRY_VERIFY_WITH_TIMEOUT(
                text(*w, "statusLabel").startsWith("Downloading") && cancel->isEnabled(), 20000);
            if (stop == "escape")
                QTest::keyClick(w.get(), Qt::Key_Escape);
            else
                QVERIFY(sandbox.killDaemon());
        }
        QVERIFY(checked.wait(60000));
        QVERIFY(w->isVisible()); // Escape cancelled, it did not close
        QTEST(text(*w, "messageLabel"), "sentence");
        QVERIFY(rowText(*w, 5).contains("|Missing|"));
        QVERIFY(!cancel->isVisible());
        QVERIFY(install->isVisible());
        QCOMPARE(install->isEnabled(), canRetry);
        QVERIFY(child<QPlainTextEdit>(*w, "commandText")->isVisible());
        QCOMPARE(w->installCommand(), "sudo apt-get install libsdl2-dev");
        QCOMPARE(text(*w, "commandLabel"), "Or run this in a terminal, then click Check Again:");
        auto *refresh = child<QPushButton>(*w, "refreshButton");
        QCOMPARE(refresh->isVisible(), package == "nosuchpackage");
        if (!refresh->isVisible())
            return;

        refresh->click();
        QVERIFY(w->isInstalling());
        QTRY_COMPARE_WITH_TIMEOUT(text(*w, "statusLabel"), "Refreshing package lists", 20000);
        QVERIFY(checked.wait(60000));
        QVERIFY(text(*w, "messageLabel").startsWith("nosuchpackage cannot be found"));
        QVERIFY(!refresh->isVisible() && !install->isEnabled());
    }

    // On Linux the first-launch sheet's prerequisites name this system's
    // tools and the menu item that installs them, in every language, in the
    // key's two parts; the key itself stays.
    void welcomeTextOnLinux_data()
    {
        columns<QString>({"language"});
        for (const char *language : {"de", "fr", "es"})
            QTest::newRow(language) << QString(language);
    }
    void welcomeTextOnLinux()
    {
        QFETCH(QString, language);
        const char *context = "ZELMORHelperAppDelegate";
        const char *key = "You need to install Xcode(larger in file size but recommend) or "
                          "command line tool(needless for Xcode), homebrew, cmake, sdl.\n \n(cmake "
                          "and sdl can be installed through homebrew)";
        if (language == "de") { // once: what the programs install in English
            QCOMPARE(installTranslator(), "en");
            QCOMPARE(QCoreApplication::translate(context, key),
                     "You need to install git, cmake, make, a C/C++ compiler and the SDL 2 "
                     "development files.\n \n(Install Essentials in the ZELMOR Helper menu "
                     "installs them)");
        }
        QTranslator main, forLinux;
        QVERIFY(main.load(":/i18n/zelmorhelper_" + language + ".qm"));
        QVERIFY(forLinux.load(":/i18n/zelmorhelper_linux_" + language + ".qm"));
        const QString text = forLinux.translate(context, key);
        QCOMPARE(text.count("\n \n"), 1);
        QVERIFY2(text.contains("git, cmake, make, ") && text.contains("C/C++")
                     && text.contains("SDL 2")
                     && text.contains(main.translate(context, "Install Essentials")),
                 qPrintable(text));
    }
};

ZELMOR_TEST_MAIN(TestInstaller)
#include "tst_installer.moc"
