#include "workflow/AppController.h"

#include "platform/Relaunch.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/AlertSheet.h"
#include "widgets/ConsoleView.h"
#include "workflow/ModuleRules.h"
#include "workflow/TextFormat.h"

// Operation 2: bring an existing checkout up to date. The check insists on a
// git workspace and on every module being a checkout of its own under the
// name the module rule derives, because "git submodule foreach" silently
// passes over modules that are not there and the user would never learn that
// they are stale.

void AppController::UpdateCheck()
{
    SettingsStore &settings = SettingsStore::standard();
    rootDirectory = settings.stringValue(SettingsKeys::Workspace);
    logSwitch = settings.intValue(SettingsKeys::Log);

    outputField->setString(formatText(QStringLiteral("\n%@...\n"), {tr("Checking files")}));

    initializeURL();
    const bool rootFound = pathExists(rootDirectory);
    const bool gitFound = pathExists(formatText(QStringLiteral("%@/.git"), {rootDirectory}));
    moduleCount = moduleURL.size();

    if (!rootFound || !gitFound) {
        reportMissingCheckout(rootDirectory,
                              tr("Please re-download a complete copy of source codes."));
        // No return: the module checks still run, so that one press of the
        // button reports everything that is missing.
    }

    qint64 found = 0;
    for (now = 0; now < moduleCount; ++now) {
        const QString &url = moduleURL.at(now);
        moduleName = moduleNameFromURL(url);
        const ModuleEntryVerdict verdict = checkModuleEntry(url, moduleName);
        if (verdict != ModuleEntryVerdict::Accepted) {
            // The module operation never fetches such a module, and its name
            // is not looked up on disk; it counts as missing, so no update
            // starts.
            reportRefusedModule(url, verdict);
            stopRequest = 0;
            stopTask();
            continue;
        }
        if (pathExists(formatText(QStringLiteral("%@/%@/.git"), {rootDirectory, moduleName}))) {
            ++found;
            continue;
        }
        reportMissingCheckout(formatText(QStringLiteral("%@/%@"), {rootDirectory, moduleName}),
                              tr("Please re-initialize it."));
    }

    if (found == moduleCount && rootFound && gitFound) {
        now = 0;
        outputField->setString(formatText(QStringLiteral("\n%@...\n"), {tr("Updating source codes")}));
        startUpdate();
    }
}

void AppController::startUpdate()
{
    now = 0;
    outputField->insertText(
        formatText(QStringLiteral("\n%@...\n"), {tr("Checking for update of ZELMOR master")}));
    runUnixTask(QStringLiteral("git pull --progress"), rootDirectory);
}

void AppController::startUpdateModule()
{
    outputField->insertText(
        formatText(QStringLiteral("\n%@...\n"), {tr("Checking for update of submodules")}));
    runUnixTask(QStringLiteral("git submodule foreach git pull --progress"), rootDirectory);
}

// Kept for a sheet that offers a restart; the first button restarts.
void AppController::alertDidEndForRestart(int returnCode)
{
    if (returnCode == AlertSheet::FirstButtonReturn)
        Relaunch::relaunchAfterDelay(2.0f);
}
