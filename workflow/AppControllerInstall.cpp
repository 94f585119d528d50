#include "workflow/AppController.h"

#include "BuildConfig.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/AlertSheet.h"
#include "widgets/ConsoleView.h"
#include "workflow/MainWindow.h"
#include "workflow/ModuleRules.h"
#include "workflow/TextFormat.h"

#include <QDateTime>
#include <QDir>

// Operation 1: a complete copy of the emulator's sources into the workspace.

void AppController::InstallCheck()
{
    SettingsStore &settings = SettingsStore::standard();
    rootDirectory = settings.stringValue(SettingsKeys::Workspace);
    logSwitch = settings.intValue(SettingsKeys::Log);

    outputField->setString(formatText(QStringLiteral("\n%@...\n"), {tr("Checking files")}));

    // Only .git decides: a workspace folder without it is cloned into.
    if (!pathExists(formatText(QStringLiteral("%@/.git"), {rootDirectory}))) {
        startInstall();
        return;
    }
    const QString message = formatText(
        QStringLiteral("%@\n%@\n \n%@"),
        {formatText(tr("%@ already exists. It may be source codes."), {rootDirectory}),
         tr("Folder will add current date as extension if you choose to keep it."),
         tr("How to deal with it?")});
    // "Notice" has always been shown untranslated.
    showAlertAtWindow(window, QStringLiteral("Notice"), message, tr("Keep"), tr("Replace"),
                      tr("Cancel"), [this](int returnCode) { alertDidEndforInstall(returnCode); });
}

void AppController::alertDidEndforInstall(int returnCode)
{
    const QString kept = keptPath(rootDirectory, QDateTime::currentDateTime());
    switch (returnCode) {
    case AlertSheet::ThirdButtonReturn: // Cancel
        terminatedByUser = 0;
        stopRequest = 0;
        stopTask();
        break;
    case AlertSheet::SecondButtonReturn: // Replace: the whole workspace goes, not only its .git
        removeItem(rootDirectory);
        startInstall();
        break;
    case AlertSheet::FirstButtonReturn: // Keep, under the date suffix; if that fails git says why
        moveItem(rootDirectory, kept);
        startInstall();
        break;
    default:
        break;
    }
}

void AppController::startInstall()
{
    outputField->setString(
        formatText(QStringLiteral("\n%@...\n"), {tr("Downloading source codes")}));
    outputField->insertText(
        formatText(QStringLiteral("\n%@: %@\n\n"), {tr("Location"), rootDirectory}));
    // The workspace path goes in unquoted: the shell splits one with blanks.
    const QString command = QStringLiteral("git clone --progress ")
                            + QStringLiteral(ZELMOR_SOURCE_REPOSITORY_URL) + u' ' + rootDirectory;
    runUnixTask(command, QDir::homePath());
}
