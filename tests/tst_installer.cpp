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
#include <QRegularExpression>
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

// A real packagekitd with its dummy backend, on a private system bus with a
// polkit stand-in, in namespaces of its own: its state folders are empty
// tmpfs mounts, and killing the namespace's first process ends every process
// in it.
class PackageKitSandbox
{
public:
    enum class Daemon { Online, Offline, None };

    ~PackageKitSandbox()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill(); // unshare passes SIGKILL on to the namespace
            m_process.waitForFinished(30000);
        }
        QDBusConnection::disconnectFromBus(m_name);
    }

    // Empty when the daemon answers, otherwise why it cannot run here.
    QString start(Daemon daemon)
    {
        const QStringList needed{"unshare", "dbus-daemon", "bash"};
        for (const QString &program : needed)
            if (QStandardPaths::findExecutable(program).isEmpty())
                return program + " is not installed";
        for (const char *file :
             {"/usr/libexec/packagekitd",
              "/usr/lib/x86_64-linux-gnu/packagekit-backend/libpk_backend_dummy.so",
              "/var/lib/PackageKit", "/var/cache/PackageKit"})
            if (!QFileInfo::exists(file))
                return QString(file) + " is missing (Debian's packagekit)";
        int exitCode = -1;
        run("/usr/bin/python3", {"-c", "import dbusmock"}, {}, &exitCode);
        if (exitCode != 0)
            return "/usr/bin/python3 has no dbusmock (Debian's python3-dbusmock)";

        writeFile(m_dir.filePath("bus.conf"),
                  "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration "
                  "1.0//EN\" \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
                  "<busconfig><type>system</type><listen>unix:path="
                      + QFile::encodeName(socket())
                      + "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
                        "<allow user=\"*\"/><allow own=\"*\"/><allow send_type=\"method_call\"/>"
                        "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
                        "</policy></busconfig>\n");
        const char *script = R"(set -eu
mount -t tmpfs tmpfs /var/lib/PackageKit
mount -t tmpfs tmpfs /var/cache/PackageKit
export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$1/bus
dbus-daemon --config-file="$1/bus.conf" --nofork &
/usr/bin/python3 -m dbusmock --system --template polkitd &
if [ "$2" = packagekit ]; then
    /usr/libexec/packagekitd --backend=dummy --disable-timer --keep-environment &
fi
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
        if (!QTest::qWaitFor([this] { return QFileInfo::exists(socket()) || ended(); }, 30000)
            || ended())
            return "no private bus started: "
                   + QString::fromLocal8Bit(m_process.readAllStandardError());
        m_bus = QDBusConnection::connectToBus("unix:path=" + socket(), m_name);
        QStringList names{"org.freedesktop.PolicyKit1"};
        if (daemon != Daemon::None)
            names << "org.freedesktop.PackageKit";
        const bool up = QTest::qWaitFor(
            [&] {
                for (const QString &name : names)
                    if (!m_bus.interface()->isServiceRegistered(name))
                        return false;
                return true;
            },
            30000);
        return up ? QString()
                  : "the services did not start: "
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
    bool ended() const { return m_process.state() == QProcess::NotRunning; }

    QTemporaryDir m_dir;
    QProcess m_process;
    // A name of its own: a connection of an earlier sandbox may live on in
    // objects that are not deleted yet.
    const QString m_name = "zelmor-test-packagekit-" + QString::number(++s_sandboxes);
    QDBusConnection m_bus{QString()};
    static inline int s_sandboxes = 0;
};

} // namespace
Q_DECLARE_METATYPE(PackageKitSandbox::Daemon)
namespace {

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

} // namespace

// The component installer: what it checks, the commands it shows, and how it
// installs through a real PackageKit.
class TestInstaller : public QObject
{
    Q_OBJECT

    // Every tool but the given ones, in a folder of its own; cmake at its
    // fixed place there.
    QString toolsWithout(const ComponentList &missing)
    {
        const QString bin = m_tools.path() + "/" + QString::number(++m_toolSets);
        const QList<std::pair<Component, QString>> tools{
            {Component::Git, "git"},         {Component::CMake, "cmake"},
            {Component::Make, "make"},       {Component::CCompiler, "cc"},
            {Component::CxxCompiler, "c++"}, {Component::Sdl2, "sdl2-config"}};
        for (const auto &[component, name] : tools)
            if (!missing.contains(component))
                fakeTool(bin + "/" + name, "1.0");
        return bin;
    }

    // A window whose checks have run, installing through the sandbox's
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

    // Presses Install and waits until the checks after the installation
    // have run.
    static bool installAndCheck(InstallerWindow &w)
    {
        QSignalSpy checked(&w, &InstallerWindow::checksFinished);
        child<QPushButton>(w, "installButton")->click();
        return w.isInstalling() && checked.wait(60000);
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

        QTemporaryDir dir;
        const QString bin = dir.path() + "/my tools", cmake = bin + "/fixed/cmake";
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
        QCOMPARE(window.installCommand(), QString());
        QStringList found;
        for (const auto &result : window.results())
            found << result.program << result.version;
        QCOMPARE(found, (QStringList{bin + "/git", "2.39.2", cmake, "3.25.1", bin + "/make", "4.3",
                                     bin + "/gcc", "12.2.0", bin + "/clang++", "14.0.6",
                                     bin + "/pkg-config", "2.26.5"}));
        // Nothing missing: nothing to install.
        QVERIFY(!child<QPushButton>(window, "installButton")->isVisible());
        QCOMPARE(text(window, "messageLabel"), "Everything ZELMOR Helper needs is installed.");
    }

    // What the window says while PackageKit works: the status and, while it
    // downloads or installs, the package; the bar goes busy on 101.
    void statusLine_data()
    {
        columns<uint, QString, QString>({"status", "packageId", "line"});
        const QString sdl = "libsdl2-dev;2.26.5+dfsg-1;amd64;debian";
        QTest::newRow("authentication") << uint(StatusWaitingForAuth) << ""
                                        << "Waiting for authentication";
        QTest::newRow("queued") << uint(StatusWait) << ""
                                << "Waiting for another installer…";
        QTest::newRow("lock") << uint(StatusWaitingForLock) << sdl
                              << "Waiting for another installer…";
        QTest::newRow("download") << uint(StatusDownload) << sdl << "Downloading: libsdl2-dev";
        QTest::newRow("install") << uint(StatusInstall) << sdl << "Installing: libsdl2-dev";
        QTest::newRow("install, no package yet") << uint(StatusInstall) << ""
                                                 << "Installing";
        QTest::newRow("looking up: no package named")
            << uint(StatusQuery) << sdl << "Looking up packages";
        QTest::newRow("package lists") << uint(StatusDownloadPackagelist) << ""
                                       << "Refreshing package lists";
        QTest::newRow("unknown value") << 99u << ""
                                       << "Working";
    }
    void statusLine()
    {
        QFETCH(uint, status);
        QFETCH(QString, packageId);
        QTEST(PackageKitRules::statusLine(status, packageId), "line");
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
            "The installation was cancelled. The list shows what is installed now.");
        row("not authorized", ExitFailed, ErrorNotAuthorized, Kind::Failed, true,
            "Installing was not authorized: the password prompt was cancelled, the password was "
            "wrong, or no password prompt can be shown in this session. Click Install to try "
            "again, or run the command below in a terminal.");
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
        row("killed", ExitKilled, -1, Kind::Failed, true,
            "The package manager stopped before it finished. The list shows what is installed "
            "now; click Install to try again.");
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
        if (const QString reason = sandbox.start(PackageKitSandbox::Daemon::Online);
            !reason.isEmpty())
            QSKIP(qPrintable(reason));
        QVERIFY(sandbox.allow({installAction}));
        const QString bin = toolsWithout({Component::Git, Component::Sdl2});
        auto w =
            window(sandbox, bin, {{Component::Git, "libawesome"}, {Component::Sdl2, "foobar"}});
        QVERIFY(w);
        QCOMPARE(text(*w, "messageLabel"), "Click Install to install what is missing.");
        QCOMPARE(w->installCommand(), "sudo apt-get install git libsdl2-dev");
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

        QCOMPARE(percents.last(), 100);
        // From busy (101) on, the install's figures only go up.
        const auto installing = std::find(percents.rbegin(), percents.rend(), -1).base();
        QStringList seen;
        for (const int percent : percents)
            seen << QString::number(percent);
        QVERIFY2(percents.end() - installing > 20 && std::is_sorted(installing, percents.end()),
                 qPrintable(seen.join(' ')));
        QVERIFY2(statuses.contains("Waiting for authentication"), qPrintable(statuses.join(", ")));
        QVERIFY2(!statuses.filter(QRegularExpression("^Installing: gtkhtml2")).isEmpty(),
                 qPrintable(statuses.join(", ")));
        // Only a wait that lasts says another installer is in the way.
        QVERIFY2(!statuses.contains("Waiting for another installer…"),
                 qPrintable(statuses.join(", ")));
        QCOMPARE(text(*w, "messageLabel"), "Installation finished.");
        QCOMPARE(rowText(*w, 0), "Git|Found, version 2.39.2|" + bin + "/git");
        QCOMPARE(rowText(*w, 5),
                 "SDL 2 development files|Found, version 2.26.5|" + bin + "/sdl2-config");
        QVERIFY(!bar->isVisible() && !status->isVisible());
        QVERIFY(!child<QPushButton>(*w, "installButton")->isVisible());
        QCOMPARE(w->installCommand(), QString());
    }

    // Polkit says no at once: the window says why, Install stays, and the
    // command is there as the other way.
    void refusedByPolkit()
    {
        PackageKitSandbox sandbox;
        if (const QString reason = sandbox.start(PackageKitSandbox::Daemon::Online);
            !reason.isEmpty())
            QSKIP(qPrintable(reason));
        QVERIFY(sandbox.allow({}));
        auto w = window(sandbox, toolsWithout({Component::Sdl2}), {{Component::Sdl2, "foobar"}});
        QVERIFY(w);
        QVERIFY(installAndCheck(*w));
        QVERIFY(text(*w, "messageLabel").startsWith("Installing was not authorized"));
        auto *install = child<QPushButton>(*w, "installButton");
        QVERIFY(install->isVisible() && install->isEnabled());
        QVERIFY(child<QPlainTextEdit>(*w, "commandText")->isVisible());
        QCOMPARE(w->installCommand(), "sudo apt-get install libsdl2-dev");
        QCOMPARE(text(*w, "commandLabel"), "Or run this in a terminal, then click Check Again:");
    }

    // A name the package sources do not know: one refresh of the lists is
    // offered, and after it the window names what is still unavailable.
    void unknownPackage()
    {
        PackageKitSandbox sandbox;
        if (const QString reason = sandbox.start(PackageKitSandbox::Daemon::Online);
            !reason.isEmpty())
            QSKIP(qPrintable(reason));
        QVERIFY(sandbox.allow({installAction, refreshAction}));
        auto w =
            window(sandbox, toolsWithout({Component::Sdl2}), {{Component::Sdl2, "nosuchpackage"}});
        QVERIFY(w);
        QVERIFY(installAndCheck(*w));
        QCOMPARE(text(*w, "messageLabel"),
                 "This system's package lists do not know nosuchpackage. Refresh the package "
                 "lists and try again?");
        auto *refresh = child<QPushButton>(*w, "refreshButton");
        QVERIFY(refresh->isVisible());
        QSignalSpy checked(w.get(), &InstallerWindow::checksFinished);
        refresh->click();
        QVERIFY(w->isInstalling());
        QTRY_COMPARE_WITH_TIMEOUT(text(*w, "statusLabel"), "Refreshing package lists", 20000);
        QVERIFY(checked.wait(60000));
        QVERIFY(text(*w, "messageLabel").startsWith("nosuchpackage cannot be found"));
        QVERIFY(!refresh->isVisible());
        QVERIFY(!child<QPushButton>(*w, "installButton")->isEnabled());
    }

    // No PackageKit: no bus at all, a bus without the daemon, and a daemon
    // that says it is offline each end in their own sentence, before any
    // transaction.
    void packageKitUnavailable_data()
    {
        columns<PackageKitSandbox::Daemon, bool, QString>({"daemon", "canRetry", "sentence"});
        const QString none = "PackageKit, which installs software on this system, is not "
                             "available. Run the command below in a terminal, then click Check "
                             "Again.";
        QTest::newRow("no daemon") << PackageKitSandbox::Daemon::None << false << none;
        QTest::newRow("offline") << PackageKitSandbox::Daemon::Offline << true
                                 << "This computer is offline. Connect it to the internet, then "
                                    "click Install again.";
    }
    void packageKitUnavailable()
    {
        QFETCH(PackageKitSandbox::Daemon, daemon);
        QFETCH(bool, canRetry);
        PackageKitSandbox sandbox;
        if (const QString reason = sandbox.start(daemon); !reason.isEmpty())
            QSKIP(qPrintable(reason));
        auto w = window(sandbox, toolsWithout({Component::Sdl2}), {{Component::Sdl2, "foobar"}});
        QVERIFY(w);
        QVERIFY(installAndCheck(*w));
        QTEST(text(*w, "messageLabel"), "sentence");
        QCOMPARE(child<QPushButton>(*w, "installButton")->isEnabled(), canRetry);
        QCOMPARE(w->installCommand(), "sudo apt-get install libsdl2-dev");
    }
    void noSystemBus()
    {
        const QString bin = toolsWithout({Component::Sdl2});
        auto installer = std::make_unique<PackageKitInstaller>(
            QDBusConnection::connectToBus("unix:path=" + m_tools.path() + "/nobus", "zelmor-nobus"),
            InstallCommands::PackageTable{{Component::Sdl2, "foobar"}}, bin + "/cmake");
        InstallerWindow w(Platform::Debian, bin, bin + "/cmake", std::move(installer));
        QSignalSpy checked(&w, &InstallerWindow::checksFinished);
        QVERIFY(checked.wait(30000));
        w.show();
        QVERIFY(installAndCheck(w));
        QVERIFY(text(w, "messageLabel").startsWith("PackageKit, which installs software"));
        QDBusConnection::disconnectFromBus("zelmor-nobus");
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

    // Stopped while downloading, by Escape (while PackageKit allows a
    // cancel) or by the daemon's death: the window says which, checks
    // again, reports nothing as installed and offers Install again.
    void stoppedWhileDownloading_data()
    {
        columns<bool, QString>({"byEscape", "sentence"});
        QTest::newRow("escape cancels")
            << true << "The installation was cancelled. The list shows what is installed now.";
        QTest::newRow("daemon killed") << false
                                       << "The package manager stopped before it finished. The "
                                          "list shows what is installed now; click Install to "
                                          "try again.";
    }
    void stoppedWhileDownloading()
    {
        QFETCH(bool, byEscape);
        PackageKitSandbox sandbox;
        if (const QString reason = sandbox.start(PackageKitSandbox::Daemon::Online);
            !reason.isEmpty())
            QSKIP(qPrintable(reason));
        QVERIFY(sandbox.allow({installAction}));
        auto w = window(sandbox, toolsWithout({Component::Sdl2}), {{Component::Sdl2, "foobar"}});
        QVERIFY(w);
        QSignalSpy checked(w.get(), &InstallerWindow::checksFinished);
        child<QPushButton>(*w, "installButton")->click();
        auto *cancel = child<QPushButton>(*w, "cancelButton");
        QTRY_VERIFY_WITH_TIMEOUT(
            text(*w, "statusLabel").startsWith("Downloading") && cancel->isEnabled(), 20000);
        if (byEscape)
            QTest::keyClick(w.get(), Qt::Key_Escape);
        else
            QVERIFY(sandbox.killDaemon());
        QVERIFY(checked.wait(30000));
        QVERIFY(w->isVisible()); // Escape cancelled, it did not close
        QTEST(text(*w, "messageLabel"), "sentence");
        QVERIFY(rowText(*w, 5).contains("|Missing|"));
        QVERIFY(!cancel->isVisible() && child<QPushButton>(*w, "installButton")->isEnabled());
    }
};

ZELMOR_TEST_MAIN(TestInstaller)
#include "tst_installer.moc"
