#include "TestSupport.h"

#include "companions/installer/ComponentChecks.h"
#include "companions/installer/InstallCommands.h"
#include "companions/installer/InstallerWindow.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QTableWidget>

using namespace TestSupport;
using ComponentChecks::Component;
using ComponentChecks::Platform;
using ComponentList = QList<ComponentChecks::Component>;

Q_DECLARE_METATYPE(ComponentChecks::Platform)

// The component installer: finding tools on a search path of fake tools,
// the install commands for what is missing, and the window that shows both.
class TestInstallerChecks : public QObject
{
    Q_OBJECT

    // A program that prints text and exits with a code, as a tool would.
    static void fakeTool(const QString &path, const QByteArray &output, int exitCode = 0)
    {
        writeScript(path, "printf '%s\\n' '" + output + "'\nexit " + QByteArray::number(exitCode) + "\n");
    }

    // Every tool, each found by a different route: cc and c++ are absent so
    // gcc and clang++ answer, sdl2-config is absent so pkg-config answers.
    static void fakeAllTools(const QString &bin, const QString &cmake)
    {
        fakeTool(bin + "/git", "git version 2.39.2");
        fakeTool(cmake, "cmake version 3.25.1\n\nCMake suite maintained by Kitware");
        fakeTool(bin + "/make", "GNU Make 4.3\nBuilt for x86_64-pc-linux-gnu");
        fakeTool(bin + "/gcc", "gcc (Debian 12.2.0-14) 12.2.0");
        fakeTool(bin + "/clang++", "Debian clang version 14.0.6");
        fakeTool(bin + "/pkg-config", "2.26.5");
    }

    static QString tableText(InstallerWindow &window, int row, int column)
    {
        auto *table = window.findChild<QTableWidget *>("componentTable");
        return table && table->item(row, column) ? table->item(row, column)->text() : QString();
    }

private slots:
    void versions_data()
    {
        columns<QByteArray, QString>({"output", "version"});
        QTest::newRow("git") << QByteArray("git version 2.39.2\n") << "2.39.2";
        QTest::newRow("gcc") << QByteArray("gcc (Debian 12.2.0-14) 12.2.0\nCopyright") << "12.2.0";
        QTest::newRow("apple clang")
            << QByteArray("Apple clang version 15.0.0 (clang-1500.1.0.2.5)") << "15.0.0";
        QTest::newRow("bare") << QByteArray("2.26.5\n") << "2.26.5";
        QTest::newRow("no number") << QByteArray("\n  custom build  \nmore") << "custom build";
        QTest::newRow("empty") << QByteArray() << QString();
    }
    void versions()
    {
        QFETCH(QByteArray, output);
        QTEST(ComponentChecks::parseVersion(output), "version");
    }

    void nothingFound()
    {
        QTemporaryDir dir;
        // A cmake on the search path does not count: only the fixed path does.
        fakeTool(dir.path() + "/cmake", "cmake version 3.25.1");
        const auto results =
            ComponentChecks::checkAll(Platform::Debian, dir.path(), dir.path() + "/fixed/cmake");
        QCOMPARE(ComponentChecks::missingComponents(results),
                 (ComponentList{Component::Git, Component::CMake, Component::Make,
                                Component::CCompiler, Component::CxxCompiler, Component::Sdl2}));
        // An empty search path is not this process's PATH.
        QVERIFY(!ComponentChecks::check(Component::Git, QString(), {}).found);
    }

    // A program that is there but does not work is missing: a compiler shim
    // that fails, pkg-config without SDL 2, a file that cannot be run.
    void brokenToolsAreMissing()
    {
        QTemporaryDir dir;
        fakeTool(dir.path() + "/cc", "xcode-select: note: no developer tools were found", 1);
        fakeTool(dir.path() + "/pkg-config", "Package sdl2 was not found", 1);
        writeFile(dir.path() + "/git", "#!/bin/sh\necho git version 2.0\n");
        writeFile(dir.path() + "/fixed/cmake", "#!/bin/sh\necho cmake version 3.0\n");
        const QString path = dir.path();
        QVERIFY(!ComponentChecks::check(Component::CCompiler, path, {}).found);
        QVERIFY(!ComponentChecks::check(Component::Sdl2, path, {}).found);
        QVERIFY(!ComponentChecks::check(Component::Git, path, {}).found);
        QVERIFY(!ComponentChecks::check(Component::CMake, path, path + "/fixed/cmake").found);
        // A working candidate later in the list still answers.
        fakeTool(dir.path() + "/clang", "clang version 16.0.0");
        const auto compiler = ComponentChecks::check(Component::CCompiler, path, {});
        QVERIFY(compiler.found);
        QCOMPARE(compiler.program, dir.path() + "/clang");
    }

    void commands_data()
    {
        columns<Platform, ComponentList, QString, QStringList>(
            {"platform", "missing", "cmakeProgram", "commands"});
        const ComponentList all{Component::Git,       Component::CMake,       Component::Make,
                                Component::CCompiler, Component::CxxCompiler, Component::Sdl2};
        QTest::newRow("debian, nothing missing")
            << Platform::Debian << ComponentList{} << "/usr/local/bin/cmake" << QStringList{};
        QTest::newRow("debian, everything, packaged cmake path")
            << Platform::Debian << all << "/usr/bin/cmake"
            << QStringList{"sudo apt-get install git cmake make gcc g++ libsdl2-dev"};
        QTest::newRow("debian, listed in component order")
            << Platform::Debian << ComponentList{Component::Sdl2, Component::CxxCompiler}
            << "/usr/bin/cmake" << QStringList{"sudo apt-get install g++ libsdl2-dev"};
        QTest::newRow("debian, cmake expected in /usr/local/bin")
            << Platform::Debian << ComponentList{Component::CMake} << "/usr/local/bin/cmake"
            << QStringList{"sudo apt-get install cmake",
                           "sudo ln -sf /usr/bin/cmake /usr/local/bin/cmake"};
        QTest::newRow("debian, cmake expected in a folder with a blank")
            << Platform::Debian << ComponentList{Component::CMake} << "/opt/my tools/cmake"
            << QStringList{"sudo apt-get install cmake",
                           "sudo mkdir -p '/opt/my tools' && sudo ln -sf /usr/bin/cmake "
                           "'/opt/my tools/cmake'"};
        QTest::newRow("macos, compiler only")
            << Platform::MacOS << ComponentList{Component::CCompiler} << "/usr/local/bin/cmake"
            << QStringList{"xcode-select --install"};
        QTest::newRow("macos, sdl only") << Platform::MacOS << ComponentList{Component::Sdl2}
                                         << "/usr/local/bin/cmake"
                                         << QStringList{"brew install sdl2"};
        QTest::newRow("macos, everything")
            << Platform::MacOS << (ComponentList{Component::Homebrew} + all)
            << "/usr/local/bin/cmake"
            << QStringList{
                   "xcode-select --install",
                   "/bin/bash -c \"$(curl -fsSL "
                   "https://raw.githubusercontent.com/Homebrew/install/HEAD/install.sh)\"",
                   "eval \"$(/opt/homebrew/bin/brew shellenv 2>/dev/null || /usr/local/bin/brew "
                   "shellenv)\"",
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

    void macSearchPathReachesHomebrew()
    {
        QCOMPARE(ComponentChecks::searchPathFor(Platform::MacOS, "/usr/bin:/bin:/usr/local/bin"),
                 QString("/usr/bin:/bin:/usr/local/bin:/opt/homebrew/bin"));
        QCOMPARE(ComponentChecks::searchPathFor(Platform::Debian, "/usr/bin:/bin"),
                 QString("/usr/bin:/bin"));
    }

    // The window: what it lists, the command it offers and copies, and a
    // second check after the user installed the rest.
    void windowShowsWhatIsMissing()
    {
        QTemporaryDir dir;
        const QString cmake = dir.path() + "/fixed/cmake";
        fakeTool(dir.path() + "/git", "git version 2.39.2");
        fakeTool(dir.path() + "/sdl2-config", "2.26.5");

        InstallerWindow window(Platform::Debian, dir.path(), cmake);
        QSignalSpy finished(&window, &InstallerWindow::checksFinished);
        QVERIFY(window.isChecking());
        QVERIFY(finished.wait(30000));
        QCOMPARE(tableText(window, 0, 0), QString("Git"));
        QCOMPARE(tableText(window, 0, 1), QString("Found, version 2.39.2"));
        QCOMPARE(tableText(window, 0, 2), dir.path() + "/git");
        QCOMPARE(tableText(window, 1, 1), QString("Missing"));
        QCOMPARE(tableText(window, 1, 2), "not at " + cmake);
        QCOMPARE(tableText(window, 5, 1), QString("Found, version 2.26.5"));
        const QString command = "sudo apt-get install cmake make gcc g++\n"
                                "sudo mkdir -p "
                                + dir.path() + "/fixed && sudo ln -sf /usr/bin/cmake " + cmake;
        QCOMPARE(window.installCommand(), command);
        window.copyCommand();
        QCOMPARE(QGuiApplication::clipboard()->text(), command);

        // Every tool now, each found by its own route, with its version.
        const QString bin = dir.path();
        QFile::remove(bin + "/sdl2-config");
        fakeAllTools(bin, cmake);
        window.checkAgain();
        QVERIFY(finished.wait(30000));
        QCOMPARE(window.installCommand(), QString());
        QCOMPARE(ComponentChecks::missingComponents(window.results()), ComponentList{});
        QStringList found;
        for (const auto &result : window.results())
            found << result.program << result.version;
        QCOMPARE(found, (QStringList{bin + "/git", "2.39.2", cmake, "3.25.1", bin + "/make", "4.3",
                                     bin + "/gcc", "12.2.0", bin + "/clang++", "14.0.6",
                                     bin + "/pkg-config", "2.26.5"}));
    }
};

ZELMOR_TEST_MAIN(TestInstallerChecks)
#include "tst_installer_checks.moc"
