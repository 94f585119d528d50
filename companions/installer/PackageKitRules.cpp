#include "companions/installer/PackageKitRules.h"

#include <QCoreApplication>
#include <QLocale>

using ComponentChecks::Component;
using Kind = InstallOutcome::Kind;

namespace PackageKitRules {

namespace {

// The context of the texts in the string table.
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PackageKitRules)
};

InstallOutcome outcome(Kind kind, const QString &sentence, bool canRetry = true)
{
    return {kind, sentence, canRetry};
}

QString listed(const QStringList &names)
{
    return QLocale().createSeparatedList(names);
}

} // namespace

int progressFor(uint percentage)
{
    return percentage > 100 ? -1 : int(percentage);
}

QString statusText(uint status)
{
    switch (status) {
    case StatusWait:
    case StatusWaitingForLock:
        return Texts::tr("Waiting for another installer…");
    case StatusWaitingForAuth:
        return Texts::tr("Waiting for authentication");
    case StatusSetup:
    case StatusRunning:
    case StatusInfo:
    case StatusLoadingCache:
        return Texts::tr("Starting");
    case StatusQuery:
    case StatusDepResolve:
        return Texts::tr("Looking up packages");
    case StatusRefreshCache:
    case StatusDownloadRepository:
    case StatusDownloadPackagelist:
    case StatusDownloadFilelist:
    case StatusDownloadChangelog:
    case StatusDownloadGroup:
    case StatusDownloadUpdateinfo:
        return Texts::tr("Refreshing package lists");
    case StatusDownload:
        return Texts::tr("Downloading");
    case StatusInstall:
    case StatusTestCommit:
    case StatusCommit:
        return Texts::tr("Installing");
    case StatusSigCheck:
        return Texts::tr("Checking signatures");
    case StatusCleanup:
        return Texts::tr("Finishing");
    case StatusCancel:
        return Texts::tr("Cancelling");
    case StatusFinished:
        return Texts::tr("Finished");
    default:
        return Texts::tr("Working");
    }
}

QString packageName(const QString &packageId)
{
    return packageId.section(QLatin1Char(';'), 0, 0);
}

QString statusLine(uint status, const QString &packageId)
{
    const QString name = packageName(packageId);
    // Only these name the package they work on; after them the last
    // package would be stale.
    if (name.isEmpty() || (status != StatusDownload && status != StatusInstall))
        return statusText(status);
    return Texts::tr("%1: %2").arg(statusText(status), name);
}

QStringList packagesToRequest(const QList<Component> &missing,
                              const InstallCommands::PackageTable &table,
                              const QString &cmakeProgram, bool packagedCmakeRuns)
{
    QList<Component> wanted = missing;
    if (packagedCmakeRuns
        && cmakeProgram != InstallCommands::packagedCmake(ComponentChecks::Platform::Debian))
        wanted.removeAll(Component::CMake);
    return InstallCommands::packageNames(wanted, table);
}

ResolveStep afterResolve(const QStringList &requested, const QStringList &foundIds, bool refreshed)
{
    ResolveStep step;
    for (const QString &name : requested) {
        const auto found = std::find_if(foundIds.begin(), foundIds.end(),
                                        [&](const QString &id) { return packageName(id) == name; });
        if (found == foundIds.end())
            step.unavailable << name;
        else
            step.packageIds << *found;
    }
    if (step.unavailable.isEmpty())
        step.action = ResolveStep::Action::Install;
    else if (!refreshed)
        step.action = ResolveStep::Action::OfferRefresh;
    else if (step.packageIds.isEmpty())
        step.action = ResolveStep::Action::NothingAvailable;
    else
        step.action = ResolveStep::Action::Install;
    return step;
}

InstallOutcome outcomeOf(uint exit, std::optional<uint> error, const QString &details,
                         const QStringList &unavailable)
{
    if (exit == ExitSuccess) {
        InstallOutcome done = PackageInstaller::installed();
        if (!unavailable.isEmpty())
            done.sentence += QLatin1Char(' ')
                             + Texts::tr("Not available from this system's package "
                                         "sources: %1.")
                                   .arg(listed(unavailable));
        return done;
    }
    if (exit == ExitCancelled || exit == ExitCancelledPriority
        || error == ErrorTransactionCancelled)
        return PackageInstaller::cancelled();
    if (exit == ExitKilled)
        return stoppedMidway();
    if (exit == ExitNeedUntrusted || error == ErrorCannotInstallRepoUnsigned)
        return outcome(
            Kind::Failed,
            Texts::tr("Nothing was installed: the packages are not signed by a source this "
                      "system trusts. Check the package sources in the system's software "
                      "settings, or run the command below in a terminal."),
            false);
    switch (error.value_or(0)) {
    case ErrorNotAuthorized:
        return outcome(
            Kind::Failed,
            Texts::tr("Installing was not authorized: the password prompt was cancelled, "
                      "the password was wrong, or no password prompt can be shown in this "
                      "session. Click Install to try again, or run the command below in a "
                      "terminal."));
    case ErrorCannotGetLock:
        return outcome(Kind::Failed, Texts::tr("Another installer is using the package manager. "
                                               "Wait until it has finished, then click Install "
                                               "again."));
    case ErrorNoNetwork:
    case ErrorPackageDownloadFailed:
    case ErrorRepoNotAvailable:
    case ErrorNoMoreMirrorsToTry:
        return outcome(Kind::Failed, Texts::tr("The packages could not be downloaded. Check the "
                                               "internet connection, then click Install again."));
    case ErrorNoSpaceOnDevice:
        return outcome(Kind::Failed, Texts::tr("There is not enough free disk space. Free some "
                                               "space, then click Install again."));
    default:
        break;
    }
    if (details.trimmed().isEmpty())
        return outcome(Kind::Failed, Texts::tr("The package manager could not install the "
                                               "packages. Run the command below in a terminal to "
                                               "see why."));
    return outcome(Kind::Failed, Texts::tr("The package manager could not install the packages: "
                                           "%1")
                                     .arg(details.trimmed()));
}

InstallOutcome noPackageKit()
{
    return outcome(Kind::Failed,
                   Texts::tr("PackageKit, which installs software on this system, is "
                             "not available. Run the command below in a terminal, "
                             "then click Check Again."),
                   false);
}

InstallOutcome offline()
{
    return outcome(Kind::Failed, Texts::tr("This computer is offline. Connect it to the internet, "
                                           "then click Install again."));
}

InstallOutcome stoppedMidway()
{
    return outcome(Kind::Failed, Texts::tr("The package manager stopped before it finished. The "
                                           "list shows what is installed now; click Install to "
                                           "try again."));
}

InstallOutcome offerRefresh(const QStringList &unavailable)
{
    return outcome(Kind::NeedsRefresh,
                   Texts::tr("This system's package lists do not know %1. Refresh "
                             "the package lists and try again?")
                       .arg(listed(unavailable)));
}

InstallOutcome nothingAvailable(const QStringList &unavailable)
{
    return outcome(Kind::Failed,
                   Texts::tr("%1 cannot be found in this system's package sources, "
                             "even after refreshing the package lists. Check the "
                             "package sources in the system's software settings, "
                             "or run the command below in a terminal.")
                       .arg(listed(unavailable)),
                   false);
}

} // namespace PackageKitRules
