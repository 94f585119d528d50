#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <memory>

// Shared by the test programs: an isolated user, fixture repositories, and
// the paths of what the build produced.
namespace TestSupport {

// Every test program runs as a fresh user: HOME and XDG_CONFIG_HOME point into
// a temporary folder, git reads no global or system configuration and has an
// identity for commits, and everything speaks English. Called by
// ZELMOR_TEST_MAIN before the application object exists.
void isolateUser();
QString homeDir();

// Runs a program to its end (tests may block; the application never does).
// Returns standard output; fails the current test on a non-zero exit.
QByteArray run(const QString &program, const QStringList &arguments,
               const QString &folder = QString(), int *exitCode = nullptr);
QByteArray git(const QString &folder, const QStringList &arguments, int *exitCode = nullptr);

void writeFile(const QString &path, const QByteArray &content);
QByteArray readFile(const QString &path);

// An executable shell script (script without its #! line).
void writeScript(const QString &path, const QByteArray &script,
                 const QByteArray &shell = "/bin/sh");

// Stand-ins for slow or unreachable tools: shell scripts in a folder that is
// first on PATH while the object lives, so the children the application
// starts meanwhile run them instead of the real tools.
class FakeTools
{
public:
    FakeTools();
    ~FakeTools();
    FakeTools(const FakeTools &) = delete;
    FakeTools &operator=(const FakeTools &) = delete;
    // The program name runs script (without its #! line) in bash.
    void add(const QString &name, const QByteArray &script) const;

private:
    QTemporaryDir m_bin;
    QByteArray m_path;
};

// A repository with one commit holding the given files (relative path ->
// content), cloned bare into "<bare>" so it can be cloned and pushed to.
// Returns the bare repository's path.
QString makeBareRepository(const QString &parentFolder, const QString &name,
                           const QMap<QString, QByteArray> &files);

// A bundle "<bundle>/Contents/{Info.plist,MacOS/probe}" whose program is the
// given shell script (without its #! line).
void makeScriptBundle(const QString &bundle, const QString &identifier, const QByteArray &script);

// A .gitmodules entry as git writes it.
inline QString gitmodulesEntry(const QString &name, const QString &url)
{
    return QStringLiteral("[submodule \"%1\"]\n\tpath = %1\n\turl = %2\n").arg(name, url);
}

// The bundle the build produced, and its programs.
QString buildBundleDir();

// The seed of a randomised test: ZELMOR_TEST_SEED when it is given, a fresh
// one otherwise. It is printed, so that a failing run can be repeated.
quint32 randomSeed();

// The columns of a data-driven test in one line:
// columns<QString, int>({"text", "value"}).
template <typename... Types>
void columns(const std::array<const char *, sizeof...(Types)> &names)
{
    std::size_t i = 0;
    (QTest::addColumn<Types>(names[i++]), ...);
}

} // namespace TestSupport

#define ZELMOR_TEST_MAIN(TestClass)                                                                \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        TestSupport::isolateUser();                                                                \
        QApplication app(argc, argv);                                                              \
        app.setAttribute(Qt::AA_Use96Dpi, true);                                                   \
        TestClass tc;                                                                              \
        QTEST_SET_MAIN_SOURCE_PATH                                                                 \
        return QTest::qExec(&tc, argc, argv);                                                      \
    }
