#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// What ZELMOR Helper needs installed before it can download and compile
// ZELMOR, and how to tell whether it is there. Checks run the tools
// themselves: a program that exists but does not run (such as a compiler
// shim waiting for developer tools to be installed) counts as missing.
namespace ComponentChecks {

enum class Component { Homebrew, Git, CMake, Make, CCompiler, CxxCompiler, Sdl2 };
enum class Platform { Debian, MacOS };

Platform currentPlatform();

// In the order the window lists them.
QList<Component> componentsFor(Platform platform);
QString displayName(Component component);

// One way to find a component: a program and the arguments that make it
// print its version. A bare name is looked up on the search path; an
// absolute path (cmake's) is used as it stands.
struct Probe
{
    QString program;
    QStringList arguments;
};
// The ways to find a component, tried in order until one works.
QList<Probe> probesFor(Component component, const QString &cmakeProgram);

// The first version number ("2.39.2") in a tool's output; when there is none,
// its first non-empty line.
QString parseVersion(const QByteArray &output);

// The search path to check on this platform. Programs started from the
// macOS Finder see a minimal PATH, so the folders Homebrew installs into are
// added there.
QString searchPathFor(Platform platform, const QString &environmentPath);

struct Result
{
    Component component = Component::Git;
    bool found = false;
    QString program; // the absolute path that answered
    QString version;
};

// These block while the tools run (a few seconds at worst); call them off
// the user interface's thread. searchPath has the form of PATH.
Result check(Component component, const QString &searchPath, const QString &cmakeProgram);
QList<Result> checkAll(Platform platform, const QString &searchPath, const QString &cmakeProgram);

QList<Component> missingComponents(const QList<Result> &results);

} // namespace ComponentChecks
