#pragma once

#include "companions/installer/ComponentChecks.h"

#include <QMap>
#include <QStringList>

// The commands that install missing components on this platform, one shell
// command a line, ready to paste into a terminal.
namespace InstallCommands {

// The package that provides each component. Only names from such a table
// ever reach a package manager.
using PackageTable = QMap<ComponentChecks::Component, QString>;

// Debian's package names; Homebrew and the command line tools have no entry.
PackageTable debianPackages();

// The packages that provide the missing components, in the order the
// components are listed whatever the order of the missing list.
QStringList packageNames(const QList<ComponentChecks::Component> &missing,
                         const PackageTable &packages);

// Where the platform's package manager puts cmake: ZELMOR Helper starts
// cmake at a fixed path, so when that path is elsewhere a link is made.
QString packagedCmake(ComponentChecks::Platform platform);

// Debian: "sudo apt-get install" with the package names. macOS: Homebrew's
// installer when Homebrew is missing, "xcode-select --install" for git, make
// and the compilers, "brew install" for cmake and SDL 2. Empty when nothing
// is missing.
QStringList commandsFor(ComponentChecks::Platform platform,
                        const QList<ComponentChecks::Component> &missing,
                        const QString &cmakeProgram);

// Quotes a word for the POSIX shell when it needs it.
QString shellQuote(const QString &word);

} // namespace InstallCommands
