#include "companions/installer/ComponentChecks.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QStandardPaths>

namespace ComponentChecks {

namespace {

// A tool that has not answered by then is treated as not working.
constexpr int probeTimeoutMs = 10000;

QString resolve(const QString &program, const QString &searchPath)
{
    if (QDir::isAbsolutePath(program)) {
        const QFileInfo file(program);
        return file.isFile() && file.isExecutable() ? program : QString();
    }
    const QStringList folders = searchPath.split(QDir::listSeparator(), Qt::SkipEmptyParts);
    // An empty list would make findExecutable fall back to this process's
    // own PATH; an empty search path finds nothing.
    if (folders.isEmpty())
        return {};
    return QStandardPaths::findExecutable(program, folders);
}

// Runs the program to its end; the output it printed, or nothing when it
// could not start, failed or hung.
std::optional<QByteArray> runProbe(const QString &program, const QStringList &arguments,
                                   const QString &searchPath)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Scripts such as sdl2-config start other tools; they see the same PATH.
    environment.insert(QStringLiteral("PATH"), searchPath);
    // Version texts are compared in English.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(probeTimeoutMs)) {
        process.kill();
        process.waitForFinished();
        return std::nullopt;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    const QByteArray out = process.readAllStandardOutput();
    // Some tools print their version on standard error.
    return out.trimmed().isEmpty() ? process.readAllStandardError() : out;
}

} // namespace

Platform currentPlatform()
{
#ifdef Q_OS_MACOS
    return Platform::MacOS;
#else
    return Platform::Debian;
#endif
}

QList<Component> componentsFor(Platform platform)
{
    QList<Component> components;
    // On macOS cmake and SDL 2 come from Homebrew, so it is a prerequisite
    // of its own there.
    if (platform == Platform::MacOS)
        components << Component::Homebrew;
    components << Component::Git << Component::CMake << Component::Make << Component::CCompiler
               << Component::CxxCompiler << Component::Sdl2;
    return components;
}

QString displayName(Component component)
{
    switch (component) {
    case Component::Homebrew:
        return QCoreApplication::translate("ComponentChecks", "Homebrew");
    case Component::Git:
        return QCoreApplication::translate("ComponentChecks", "Git");
    case Component::CMake:
        return QCoreApplication::translate("ComponentChecks", "CMake");
    case Component::Make:
        return QCoreApplication::translate("ComponentChecks", "Make");
    case Component::CCompiler:
        return QCoreApplication::translate("ComponentChecks", "C compiler");
    case Component::CxxCompiler:
        return QCoreApplication::translate("ComponentChecks", "C++ compiler");
    case Component::Sdl2:
        return QCoreApplication::translate("ComponentChecks", "SDL 2 development files");
    }
    return {};
}

QList<Probe> probesFor(Component component, const QString &cmakeProgram)
{
    const QStringList version{QStringLiteral("--version")};
    switch (component) {
    case Component::Homebrew:
        return {{QStringLiteral("brew"), version}};
    case Component::Git:
        return {{QStringLiteral("git"), version}};
    case Component::CMake:
        // ZELMOR Helper starts cmake at this fixed path, never through PATH,
        // so a cmake elsewhere does not help it.
        return {{cmakeProgram, version}};
    case Component::Make:
        return {{QStringLiteral("make"), version}};
    case Component::CCompiler:
        return {{QStringLiteral("cc"), version},
                {QStringLiteral("gcc"), version},
                {QStringLiteral("clang"), version}};
    case Component::CxxCompiler:
        return {{QStringLiteral("c++"), version},
                {QStringLiteral("g++"), version},
                {QStringLiteral("clang++"), version}};
    case Component::Sdl2:
        return {{QStringLiteral("sdl2-config"), version},
                {QStringLiteral("pkg-config"), {QStringLiteral("--modversion"), QStringLiteral("sdl2")}}};
    }
    return {};
}

QString parseVersion(const QByteArray &output)
{
    const QString text = QString::fromLocal8Bit(output);
    static const QRegularExpression number(QStringLiteral("\\b(\\d+(?:\\.\\d+)+)"));
    const QRegularExpressionMatch match = number.match(text);
    if (match.hasMatch())
        return match.captured(1);
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (!line.trimmed().isEmpty())
            return line.trimmed();
    }
    return {};
}

QString searchPathFor(Platform platform, const QString &environmentPath)
{
    if (platform != Platform::MacOS)
        return environmentPath;
    QStringList folders = environmentPath.split(QDir::listSeparator(), Qt::SkipEmptyParts);
    for (const QString &extra : {QStringLiteral("/opt/homebrew/bin"), QStringLiteral("/usr/local/bin")}) {
        if (!folders.contains(extra))
            folders << extra;
    }
    return folders.join(QDir::listSeparator());
}

Result check(Component component, const QString &searchPath, const QString &cmakeProgram)
{
    Result result;
    result.component = component;
    for (const Probe &probe : probesFor(component, cmakeProgram)) {
        const QString program = resolve(probe.program, searchPath);
        if (program.isEmpty())
            continue;
        const auto output = runProbe(program, probe.arguments, searchPath);
        if (!output)
            continue;
        result.found = true;
        result.program = program;
        result.version = parseVersion(*output);
        break;
    }
    return result;
}

QList<Result> checkAll(Platform platform, const QString &searchPath, const QString &cmakeProgram)
{
    QList<Result> results;
    for (const Component component : componentsFor(platform))
        results << check(component, searchPath, cmakeProgram);
    return results;
}

QList<Component> missingComponents(const QList<Result> &results)
{
    QList<Component> missing;
    for (const Result &result : results) {
        if (!result.found)
            missing << result.component;
    }
    return missing;
}

} // namespace ComponentChecks
