#include "companions/installer/InstallCommands.h"

#include <QFileInfo>
#include <QRegularExpression>

using ComponentChecks::Component;
using ComponentChecks::Platform;

namespace InstallCommands {

namespace {

QString brewFormula(Component component)
{
    switch (component) {
    case Component::CMake:
        return QStringLiteral("cmake");
    case Component::Sdl2:
        return QStringLiteral("sdl2");
    default:
        return {};
    }
}

// git, make and the compilers all come with Apple's command line tools.
bool fromCommandLineTools(Component component)
{
    return component == Component::Git || component == Component::Make
           || component == Component::CCompiler || component == Component::CxxCompiler;
}

QString linkCmakeCommand(Platform platform, const QString &cmakeProgram)
{
    const QString target = shellQuote(cmakeProgram);
    const QString folder = shellQuote(QFileInfo(cmakeProgram).path());
    if (platform == Platform::Debian) {
        // Debian always has /usr/local/bin; any other folder may need making.
        const QString link = QStringLiteral("sudo ln -sf /usr/bin/cmake %1").arg(target);
        if (QFileInfo(cmakeProgram).path() == QLatin1String("/usr/local/bin"))
            return link;
        return QStringLiteral("sudo mkdir -p %1 && %2").arg(folder, link);
    }
    // Homebrew's own folder is /usr/local on Intel Macs, so the fixed path
    // may already be Homebrew's cmake; it is linked only when it is not there.
    return QStringLiteral("test -e %1 || { sudo mkdir -p %2 && sudo ln -s %3 %1; }")
        .arg(target, folder, packagedCmake(platform));
}

} // namespace

PackageTable debianPackages()
{
    return {{Component::Git, QStringLiteral("git")},
            {Component::CMake, QStringLiteral("cmake")},
            {Component::Make, QStringLiteral("make")},
            {Component::CCompiler, QStringLiteral("gcc")},
            {Component::CxxCompiler, QStringLiteral("g++")},
            {Component::Sdl2, QStringLiteral("libsdl2-dev")}};
}

QStringList packageNames(const QList<Component> &missing, const PackageTable &packages)
{
    QStringList names;
    for (const Component component : ComponentChecks::componentsFor(Platform::Debian)) {
        if (missing.contains(component) && packages.contains(component))
            names << packages.value(component);
    }
    return names;
}

QString packagedCmake(Platform platform)
{
    return platform == Platform::Debian ? QStringLiteral("/usr/bin/cmake")
                                        : QStringLiteral("\"$(brew --prefix)/bin/cmake\"");
}

QString shellQuote(const QString &word)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_./+:@%=,-]+$"));
    if (plain.match(word).hasMatch())
        return word;
    QString quoted = word;
    quoted.replace(QLatin1Char('\''), QStringLiteral("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

QStringList commandsFor(Platform platform, const QList<Component> &missing,
                        const QString &cmakeProgram)
{
    QStringList commands;
    const bool cmakeMissing = missing.contains(Component::CMake);
    // Packages are named in the order the components are listed, whatever
    // the order of the missing list.
    const QList<Component> order = ComponentChecks::componentsFor(platform);

    if (platform == Platform::Debian) {
        const QStringList names = packageNames(missing, debianPackages());
        if (!names.isEmpty())
            commands << QStringLiteral("sudo apt-get install ") + names.join(QLatin1Char(' '));
        if (cmakeMissing && cmakeProgram != packagedCmake(platform))
            commands << linkCmakeCommand(platform, cmakeProgram);
        return commands;
    }

    QStringList formulas;
    bool commandLineTools = false;
    for (const Component component : order) {
        if (!missing.contains(component))
            continue;
        commandLineTools = commandLineTools || fromCommandLineTools(component);
        if (!brewFormula(component).isEmpty())
            formulas << brewFormula(component);
    }
    // Homebrew needs the command line tools, so they come first.
    if (commandLineTools)
        commands << QStringLiteral("xcode-select --install");
    if (missing.contains(Component::Homebrew)) {
        commands << QStringLiteral("/bin/bash -c \"$(curl -fsSL "
                                   "https://raw.githubusercontent.com/Homebrew/install/HEAD/install.sh)\"");
        // A fresh Homebrew is not on this shell's PATH yet (on Apple silicon
        // it lives in /opt/homebrew); the next line needs it.
        commands << QStringLiteral("eval \"$(/opt/homebrew/bin/brew shellenv 2>/dev/null || "
                                   "/usr/local/bin/brew shellenv)\"");
    }
    if (!formulas.isEmpty())
        commands << QStringLiteral("brew install ") + formulas.join(QLatin1Char(' '));
    if (cmakeMissing)
        commands << linkCmakeCommand(platform, cmakeProgram);
    return commands;
}

} // namespace InstallCommands
