#include "companions/installer/PackageInstaller.h"

#ifdef Q_OS_MACOS
#include "companions/installer/HomebrewInstaller.h"
#else
#include "companions/installer/InstallCommands.h"
#include "companions/installer/PackageKitInstaller.h"

#include <QDBusConnection>
#endif

std::unique_ptr<PackageInstaller> PackageInstaller::forThisSystem(const QString &cmakeProgram)
{
#ifdef Q_OS_MACOS
    Q_UNUSED(cmakeProgram) // Homebrew's cmake is linked from the command shown
    return std::make_unique<HomebrewInstaller>();
#else
    return std::make_unique<PackageKitInstaller>(QDBusConnection::systemBus(),
                                                 InstallCommands::debianPackages(), cmakeProgram);
#endif
}

InstallOutcome PackageInstaller::installed()
{
    return {InstallOutcome::Kind::Installed, tr("Installation finished."), true};
}

InstallOutcome PackageInstaller::cancelled()
{
    return {InstallOutcome::Kind::Cancelled,
            tr("The installation was cancelled. The list shows what is installed now."), true};
}
