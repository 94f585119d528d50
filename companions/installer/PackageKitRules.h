#pragma once

#include "companions/installer/InstallCommands.h"
#include "companions/installer/PackageInstaller.h"

#include <QStringList>

#include <optional>

// What PackageKit's answers mean for the user: the values of its D-Bus
// interface that matter here, and the decisions taken on them. No D-Bus in
// here, so every decision is tested on its own.
namespace PackageKitRules {

// Transaction status (the Status property).
enum Status : uint {
    StatusWait = 1,
    StatusSetup = 2,
    StatusRunning = 3,
    StatusQuery = 4,
    StatusInfo = 5,
    StatusRefreshCache = 7,
    StatusDownload = 8,
    StatusInstall = 9,
    StatusCleanup = 11,
    StatusDepResolve = 13,
    StatusSigCheck = 14,
    StatusTestCommit = 15,
    StatusCommit = 16,
    StatusFinished = 18,
    StatusCancel = 19,
    StatusDownloadRepository = 20,
    StatusDownloadPackagelist = 21,
    StatusDownloadFilelist = 22,
    StatusDownloadChangelog = 23,
    StatusDownloadGroup = 24,
    StatusDownloadUpdateinfo = 25,
    StatusLoadingCache = 27,
    StatusWaitingForLock = 30,
    StatusWaitingForAuth = 31,
};

// How a transaction ended (the Finished signal).
enum Exit : uint {
    ExitSuccess = 1,
    ExitFailed = 2,
    ExitCancelled = 3,
    ExitKilled = 6,
    ExitNeedUntrusted = 8,
    ExitCancelledPriority = 9,
};

// The ErrorCode signal's codes that get a sentence of their own.
enum Error : uint {
    ErrorNoNetwork = 2,
    ErrorPackageNotFound = 8,
    ErrorPackageDownloadFailed = 10,
    ErrorDepResolutionFailed = 13,
    ErrorTransactionCancelled = 17,
    ErrorCannotGetLock = 26,
    ErrorRepoNotAvailable = 37,
    ErrorNoMoreMirrorsToTry = 43,
    ErrorNoSpaceOnDevice = 46,
    ErrorNotAuthorized = 48,
    ErrorCannotInstallRepoUnsigned = 50,
};

// Info of the Package signal for a package being handled.
enum Info : uint { InfoDownloading = 10, InfoInstalling = 12 };

// Bit fields: filters are bit (1 << value) of their enum, so are flags.
constexpr quint64 ResolveFilters = (quint64(1) << 3)     // not installed
                                   | (quint64(1) << 16)  // newest
                                   | (quint64(1) << 18); // this architecture
constexpr quint64 OnlyTrusted = quint64(1) << 1;
constexpr uint NetworkOffline = 1; // the daemon's NetworkState
constexpr uint PercentageUnknown = 101;

// The bar's value for a Percentage: 0..100, or -1 for busy.
int progressFor(uint percentage);

// The status line: what PackageKit is doing, and with which package when it
// says ("name;version;arch;data").
QString statusText(uint status);
QString statusLine(uint status, const QString &packageId);
QString packageName(const QString &packageId);

// The packages to look up for the missing components. cmake is left out
// when the package's cmake is already there and only the link to the place
// ZELMOR Helper starts it from is missing: the package cannot add that.
QStringList packagesToRequest(const QList<ComponentChecks::Component> &missing,
                              const InstallCommands::PackageTable &table,
                              const QString &cmakeProgram, bool packagedCmakeRuns);

// After Resolve: install what was found, or offer one refresh of the package
// lists while something is unknown, or give up when nothing is left.
struct ResolveStep
{
    enum class Action { Install, OfferRefresh, NothingAvailable };
    Action action = Action::Install;
    QStringList packageIds;  // to install
    QStringList unavailable; // requested names nothing was found for
};
ResolveStep afterResolve(const QStringList &requested, const QStringList &foundIds, bool refreshed);

// The end of a transaction, from its exit code and the first error it sent;
// unavailable names what was left out after a refresh.
InstallOutcome outcomeOf(uint exit, std::optional<uint> error, const QString &details,
                         const QStringList &unavailable = {});

InstallOutcome noPackageKit();
InstallOutcome offline();
InstallOutcome stoppedMidway();
InstallOutcome offerRefresh(const QStringList &unavailable);
InstallOutcome nothingAvailable(const QStringList &unavailable);

} // namespace PackageKitRules
