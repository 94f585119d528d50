#include "workflow/AppController.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/AlertSheet.h"
#include "widgets/ConsoleView.h"
#include "widgets/Spinner.h"
#include "workflow/MainWindow.h"
#include "workflow/ModuleRules.h"
#include "workflow/TextFormat.h"

#include <QDateTime>
#include <QFile>
#include <QSaveFile>

#include <cstdio>

// The submodule registry and operation 4: every module listed in .gitmodules
// is cloned into the workspace, one child at a time; the completion handler
// advances `now` and calls startInstallModule() again.

namespace {

void writeTextAtomically(const QString &path, const QString &text)
{
    // Failures are ignored: the config stays as it was and git reports it.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(text.toUtf8());
    file.commit();
}

// Where a module folder goes when it is kept beside a fresh clone.
QString keptModulePath(const QString &root, const QString &name)
{
    return keptPath(formatText(QStringLiteral("%@/%@"), {root, name}),
                    QDateTime::currentDateTime());
}

} // namespace

void AppController::regModule()
{
    outputField->insertText(formatText(QStringLiteral("\n%@...\n"), {tr("Registering modules")}));

    const QString config = formatText(QStringLiteral("%@/.git/config"), {rootDirectory});
    const QString backup = formatText(QStringLiteral("%@/.git/config.origin"), {rootDirectory});
    const QString gitmodules = formatText(QStringLiteral("%@/.gitmodules"), {rootDirectory});
    const std::optional<QString> modules = readUtf8File(gitmodules);
    if (modules && firstForeignGitmodulesLine(*modules) != 0) {
        // Settings other than submodule entries would be obeyed by the next
        // git command; the config is left untouched and the modules are
        // still fetched one by one, each through the URL guard.
        outputField->insertText(formatText(
            QStringLiteral("\n%@\n%@: %@%@%@\n"),
            {tr("Failure."), tr("Error"), gitmodules, tr(" holds more than submodule entries!"),
             tr(" The modules are not registered in .git/config.")}));
    } else {
        // QFile::copy never overwrites, so the backup keeps the config as it
        // was before the first registration and every later one starts from it.
        QFile::copy(config, backup);
        const std::optional<QString> pristine = readUtf8File(backup);
        writeTextAtomically(config, registeredConfigText(pristine, modules));
    }

    moduleURL = moduleURLsFromGitmodules(modules.value_or(QString()));

    outputField->insertText(
        formatText(QStringLiteral("%@\n%@...\n"), {tr("Done."), tr("Checking modules")}));
    startInstallModule();
}

void AppController::initializeURL()
{
    const std::optional<QString> modules =
        readUtf8File(formatText(QStringLiteral("%@/.gitmodules"), {rootDirectory}));
    moduleURL = moduleURLsFromGitmodules(modules.value_or(QString()));
}

void AppController::InstallModuleCheck()
{
    SettingsStore &settings = SettingsStore::standard();
    rootDirectory = settings.stringValue(SettingsKeys::Workspace);
    logSwitch = settings.intValue(SettingsKeys::Log);
    now = 0;

    outputField->setString(formatText(QStringLiteral("\n%@...\n"), {tr("Checking files")}));

    if (pathExists(rootDirectory)
        && pathExists(formatText(QStringLiteral("%@/.git"), {rootDirectory}))) {
        outputField->insertText(formatText(QStringLiteral("%@\n"), {tr("Done.")}));
        regModule();
        return;
    }
    reportMissingCheckout(rootDirectory, tr("Please re-download a complete copy of source codes."));
}

void AppController::reportMissingCheckout(const QString &path, const QString &hint)
{
    outputField->insertText(formatText(QStringLiteral("%@\n%@: %@%@%@"),
                                       {tr("Failure."), tr("Error"), path,
                                        tr(" or .git in it not found!"), hint}));
    stopRequest = 0;
    stopTask();
}

void AppController::reportRefusedModule(const QString &url, ModuleEntryVerdict verdict)
{
    const QString reason = verdict == ModuleEntryVerdict::NoName
                               ? tr(" gives no module name!")
                               : tr(" is not a plain module URL!");
    outputField->insertText(formatText(QStringLiteral("\n%@\n%@: %@%@%@\n"),
                                       {tr("Failure."), tr("Error"), url, reason,
                                        tr(" It is skipped.")}));
}

void AppController::startInstallModule()
{
    spinner->startAnimation();
    moduleCount = moduleURL.size();

    // The URLs come from a downloaded file and go into a shell line: one that
    // yields no folder name, or that the shell or git could take for more
    // than a URL and a folder, is reported and passed over, and nothing on
    // disk is touched for it.
    QString url;
    QString name;
    while (now < moduleCount) {
        url = moduleURL.at(now);
        name = moduleNameFromURL(url);
        const ModuleEntryVerdict verdict = checkModuleEntry(url, name);
        if (verdict == ModuleEntryVerdict::Accepted)
            break;
        reportRefusedModule(url, verdict);
        now += 1;
    }

    if (!(now < moduleCount)) {
        terminatedByUser = 0;
        if (unixTask)
            terminateChildGroup(unixTask);
        notifiedForComplete();
        return;
    }

    moduleName = name;
    if (pathExists(formatText(QStringLiteral("%@/%@/.git"), {rootDirectory, moduleName}))) {
        showAlertAtWindow(
            window, tr("Module Exists"),
            formatText(QStringLiteral("%@ '%@'\n%@"),
                       {tr("Found submodule"), moduleName, tr("How to deal with it?")}),
            tr("Keep"), tr("Replace"), tr("Skip"),
            [this](int returnCode) { moduleAlertDidEnd(returnCode); });
        return;
    }

    outputField->setString(
        formatText(QStringLiteral("\n%@ %@...\n"), {tr("Getting module"), moduleName}));
    outputField->insertText(formatText(QStringLiteral("\n%@: %@/%@\n\n"),
                                       {tr("Location"), rootDirectory, moduleName}));
    // A folder without .git, such as the empty placeholder the main clone
    // leaves, is in git's way. The name comes from a downloaded file and may
    // be that of anything in the workspace (the output folder lives there by
    // default): what holds something is moved aside, as "Keep" would, never
    // removed.
    const QString folder = formatText(QStringLiteral("%@/%@"), {rootDirectory, moduleName});
    if (isEmptyFolder(folder))
        removeItem(folder);
    else if (pathExists(folder))
        moveItem(folder, keptModulePath(rootDirectory, moduleName));
    runUnixTask(formatText(QStringLiteral("git clone --progress %@ %@"), {url, moduleName}),
                rootDirectory);
}

void AppController::moduleAlertDidEnd(int returnCode)
{
    // Out of the way at once: the next question may open from here.
    if (m_questionSheet)
        m_questionSheet->orderOut();

    // The folder is removed or moved by name: only a name that passed the
    // guard can stand for a module folder (an empty one is the workspace).
    const bool keepOrReplace = returnCode == AlertSheet::FirstButtonReturn
                               || returnCode == AlertSheet::SecondButtonReturn;
    if (keepOrReplace
        && checkModuleEntry(moduleURL.value(now), moduleName) != ModuleEntryVerdict::Accepted) {
        std::fprintf(stderr, "Error alert sheet.\n");
        return;
    }
    const QString folder = formatText(QStringLiteral("%@/%@"), {rootDirectory, moduleName});
    const QString kept = keptModulePath(rootDirectory, moduleName);
    switch (returnCode) {
    case AlertSheet::ThirdButtonReturn: // Skip
        outputField->insertText(
            formatText(QStringLiteral("\n%@ %@\n"), {tr("Skip module"), moduleName}));
        now += 1;
        startInstallModule();
        break;
    case AlertSheet::SecondButtonReturn: // Replace: the same module is fetched afresh
        removeItem(folder);
        startInstallModule();
        break;
    case AlertSheet::FirstButtonReturn: // Keep beside the fresh copy
        moveItem(folder, kept);
        startInstallModule();
        break;
    default:
        std::fprintf(stderr, "Error alert sheet.\n");
        break;
    }
}

void AppController::timeCountdownOfReadytoInstallModule()
{
    // The sheet has counted and rewritten its question; at 0 it has ended
    // without a button, and the handler's dismiss branch has restored the
    // idle look before the module operation begins.
    if (countdown() != 0)
        return;
    outputField->insertText(tr("Ready to start initializing modules. Please wait..."));
    selectItemWithTag(TagModules);
    InstallModuleCheck();
}

void AppController::alertDidEndForReadytoInstallModule(int returnCode)
{
    if (iAlert)
        iAlert->stopCountdown();
    if (returnCode == AlertSheet::FirstButtonReturn) {
        outputField->insertText(tr("Ready to start initializing modules. Please wait..."));
        selectItemWithTag(TagModules);
        InstallModuleCheck();
        return;
    }
    stopRequest = 0;
    stopTask();
    if (iAlert)
        iAlert->orderOut();
}
