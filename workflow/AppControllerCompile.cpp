#include "workflow/AppController.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/ConsoleView.h"
#include "workflow/ModuleRules.h"
#include "workflow/TextFormat.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

// Operation 3: cmake, make, then the copy into the output folder. Every run is
// a build from scratch: the build folder is emptied first, because a cache
// left by an older checkout (or another cmake) breaks the configure step in
// ways a user cannot diagnose.

namespace {

// Copies source to destination, recursively for a folder; links are copied
// as links. Like a file-manager copy it refuses to replace an existing
// destination and does not create missing parent folders.
void copyItem(const QString &source, const QString &destination)
{
    const QFileInfo info(source);
    if (pathExists(destination) || QFileInfo(destination).isSymLink())
        return;
    if (info.isSymLink()) {
        QFile::link(info.symLinkTarget(), destination);
        return;
    }
    if (!info.isDir()) {
        QFile::copy(source, destination);
        return;
    }
    if (!QDir().mkdir(destination))
        return;
    const QStringList entries = QDir(source).entryList(QDir::AllEntries | QDir::Hidden
                                                       | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &entry : entries)
        copyItem(source + QLatin1Char('/') + entry, destination + QLatin1Char('/') + entry);
}

// Replaces whatever stands at target with a fresh copy of source.
void replaceWithCopy(const QString &source, const QString &target, bool targetExisted)
{
    if (targetExisted)
        removeItem(target);
    copyItem(source, target);
}

// The build folder is handled twice by the check, both times by what the
// first test found; an absent folder is only created.
void prepareBuildFolder(const QString &buildFolder, bool existed)
{
    if (existed)
        removeItem(buildFolder);
    QDir().mkpath(buildFolder);
}

} // namespace

void AppController::CompileCheck()
{
    SettingsStore &settings = SettingsStore::standard();
    rootDirectory = settings.stringValue(SettingsKeys::Workspace);
    outputDirectory = settings.stringValue(SettingsKeys::Output);
    logSwitch = settings.intValue(SettingsKeys::Log);
    buildFolder = formatText(QStringLiteral("%@/build"), {rootDirectory});

    outputField->setString(formatText(QStringLiteral("\n%@...\n"), {tr("Checking files")}));

    // The copy stage empties the output folder; one chosen by mistake as the
    // home folder, or above the workspace, would take everything in them.
    if (wouldRemoveAny(outputDirectory, {QDir::homePath(), rootDirectory})) {
        outputField->insertText(formatText(
            QStringLiteral("\n%@\n%@: %@%@\n"),
            {tr("Failure."), tr("Error"), outputDirectory,
             tr(" is your home folder or the workspace, or holds one of them! Compiling empties "
                "the output folder: please choose another one.")}));
        stopRequest = 0;
        stopTask();
        return;
    }

    const bool buildExisted = pathExists(buildFolder);
    prepareBuildFolder(buildFolder, buildExisted);

    const QString sdlFolder = formatText(QStringLiteral("%@/SDL"), {rootDirectory});
    const QString sdlAssets = formatText(QStringLiteral("%@/assets"), {sdlFolder});
    const QString androidAssets = formatText(QStringLiteral("%@/android/assets"), {rootDirectory});
    const QString rootAssets = formatText(QStringLiteral("%@/assets"), {rootDirectory});
    const QString gitFolder = formatText(QStringLiteral("%@/.git"), {rootDirectory});

    // All four answers are taken before anything is copied.
    const bool androidFound = pathExists(androidAssets);
    const bool sdlAssetsFound = pathExists(sdlAssets);
    const bool rootAssetsFound = pathExists(rootAssets);
    const bool gitFound = pathExists(gitFolder);

    if (androidFound) {
        // The desktop build reads its assets from two places; both are
        // derived from the Android tree, which is the one kept up to date.
        replaceWithCopy(androidAssets, rootAssets, rootAssetsFound);
        replaceWithCopy(androidAssets, sdlAssets, sdlAssetsFound);
    } else {
        outputField->insertText(formatText(
            QStringLiteral("\n%@%@\n"),
            {formatText(tr("'asssets' not found in %@/Android."), {rootDirectory}),
             tr("Please re-download a complete copy of source codes.")}));
        stopRequest = 0;
        stopTask();
        // No return: with a checkout present the build is still attempted,
        // and cmake reports what the missing assets break.
    }

    prepareBuildFolder(buildFolder, buildExisted);

    if (gitFound) {
        startCompileOne();
        return;
    }
    outputField->insertText(
        formatText(QStringLiteral("\n%@%@\n"),
                   {formatText(tr(".git not found in %@."), {rootDirectory}),
                    tr("Please re-download a complete copy of source codes.")}));
    stopRequest = 0;
    stopTask();
}

void AppController::startCompileOne()
{
    outputField->setString(formatText(QStringLiteral("\n%@...\n"), {tr("Compiling")}));
    outputField->insertText(formatText(QStringLiteral("\n%@: %@\n%@: %@\n"),
                                       {tr("Build in"), buildFolder, tr("Output"), outputDirectory}));
    // Started directly, not through a shell: the folder is the working
    // directory, so a workspace path with blanks still configures.
    launchChild(cmakeProgram, {QStringLiteral("..")}, buildFolder);
}

void AppController::startCompileTwo()
{
    // "$1" stays literal; with no further argument the shell expands it to
    // nothing.
    launchChild(QStringLiteral("/bin/bash"), {QStringLiteral("-c"), QStringLiteral("make -j3 $1")},
                buildFolder);
}

void AppController::copyFinishedFiles()
{
    outputField->insertText(
        formatText(QStringLiteral("\n%@...\n"), {tr("Moving files to output folder")}));

    // The output folder holds one build only; anything else in it goes.
    if (pathExists(outputDirectory))
        removeItem(outputDirectory);
    QDir().mkpath(outputDirectory);

    const QString home = QDir::homePath();
    const QString homeLang = formatText(QStringLiteral("%@/lang"), {home});
    if (pathExists(homeLang))
        removeItem(homeLang);

    // The paths go in unquoted, as the user's shell would take them; cp
    // reports the failure when one contains a blank.
    const QString line = formatText(
        QStringLiteral("cp -R %@/assets %@/assets/ && cp %@/ZELMORSDL %@ && cp -R %@/lang %@"),
        {buildFolder, outputDirectory, buildFolder, outputDirectory, rootDirectory, home});
    runUnixTask(line, buildFolder);
}
