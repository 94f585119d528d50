#include "workflow/AppController.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/MessageBar.h"
#include "workflow/ModuleRules.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QStorageInfo>

#include <unistd.h>

// Watching the children for failure. The console tells what the tools said
// and every stage counts as done, as it always has; this only looks on, and
// when an operation ends with a stage that failed, the message bar says in
// one sentence what went wrong and offers the way out.

namespace {

// The folder itself or, when it does not exist yet, the nearest one above
// it that does: where the operation would have to create it.
QString nearestExisting(const QString &path)
{
    QString folder = QDir::cleanPath(path);
    while (!folder.isEmpty() && !QFileInfo::exists(folder)) {
        const QString parent = QFileInfo(folder).path();
        if (parent == folder)
            break;
        folder = parent;
    }
    return folder;
}

bool mayWrite(const QString &path)
{
    if (path.isEmpty())
        return true;
    // access() and not the permission bits: it also knows read-only mounts,
    // and that root writes wherever the bits say no.
    return ::access(QFile::encodeName(nearestExisting(path)).constData(), W_OK) == 0;
}

qint64 freeBytes(const QString &path)
{
    if (path.isEmpty())
        return -1;
    const QStorageInfo storage(nearestExisting(path));
    return storage.isValid() ? storage.bytesAvailable() : -1;
}

// The name the user would know the program by: the tool a shell line
// starts, or the program itself.
QString toolName(const QString &program, const QStringList &arguments)
{
    if (arguments.size() == 2 && arguments.constFirst() == QLatin1String("-c"))
        return arguments.constLast().section(QLatin1Char(' '), 0, 0, QString::SectionSkipEmpty);
    return QFileInfo(program).fileName();
}

} // namespace

void AppController::recordNewChild(const QString &program, const QStringList &arguments)
{
    m_child = ChildRecord();
    m_child.program = program;
    m_child.tool = toolName(program, arguments);
}

void AppController::noteChildEnded(const QProcess &process)
{
    // The child the user stopped ended by the signal Stop sent.
    if (terminatedByUser == 1)
        return;
    StageResult result;
    result.signalled = process.exitStatus() == QProcess::CrashExit;
    result.status = process.exitCode();
    keepFailure(std::move(result));
}

void AppController::noteChildNotStarted()
{
    StageResult result;
    result.notStarted = true;
    keepFailure(std::move(result));
    // Nothing ends this operation by itself: it keeps its running look, as
    // it always has, so the problem is told now.
    reportFailures(selectedTag(), OperationEnd::Done);
}

void AppController::keepFailure(StageResult result)
{
    if (!result.failed() || m_firstFailure)
        return;
    result.tag = selectedTag();
    result.stage = now;
    result.tool = m_child.tool;
    result.errorLines = m_child.errors.lines();
    result.outputLines = m_child.output.lines();
    m_firstFailure = std::move(result);
}

void AppController::reportFailures(int tag, OperationEnd end)
{
    const std::optional<StageResult> failure = std::exchange(m_firstFailure, std::nullopt);
    lastEndHadProblem = false;
    if (!failure || end == OperationEnd::TerminatedByUser)
        return;
    showProblem(tag, diagnoseFailure(*failure, surroundings()));
}

void AppController::showProblem(int tag, const Diagnosis &diagnosis)
{
    problem = diagnosis;
    problemTag = tag;
    lastEndHadProblem = true;
    if (messageBar)
        messageBar->showMessage(diagnosis.sentence, diagnosis.evidence,
                                failureActionTitle(diagnosis.action));
    emit problemReported(tag);
    publishProgress(true);
}

void AppController::clearProblem()
{
    m_firstFailure.reset();
    problem.reset();
    lastEndHadProblem = false;
    if (messageBar)
        messageBar->clear();
}

void AppController::dismissProblem()
{
    clearProblem();
    publishProgress(true);
}

Surroundings AppController::surroundings() const
{
    SettingsStore &settings = SettingsStore::standard();
    Surroundings s;
    s.workspace = settings.stringValue(SettingsKeys::Workspace);
    s.output = settings.stringValue(SettingsKeys::Output);
    s.workspaceWritable = mayWrite(s.workspace);
    s.outputWritable = mayWrite(s.output);
    s.workspaceFreeBytes = freeBytes(s.workspace);
    s.outputFreeBytes = freeBytes(s.output);
    s.programFound = QFileInfo(m_child.program).isExecutable();
    return s;
}

void AppController::performFailureAction()
{
    if (!problem)
        return;
    const FailureAction action = problem->action;
    const int tag = problemTag;
    // What starts an operation waits until none runs.
    const bool idle = buttonPerform->text() == tr("Perform");
    switch (action) {
    case FailureAction::None:
        return;
    case FailureAction::ChooseWorkspace:
        if (chooseWorkspaceFolder)
            chooseWorkspaceFolder();
        return;
    case FailureAction::ChooseOutput:
        if (chooseOutputFolder)
            chooseOutputFolder();
        return;
    case FailureAction::InstallEssentials:
        showInstallComponents();
        return;
    case FailureAction::TryAgain:
        if (!idle)
            return;
        selectItemWithTag(tag);
        perform();
        return;
    case FailureAction::MoveAsideAndDownload: {
        if (!idle)
            return;
        // As the download's Keep answer does: the folder stays, under the
        // date suffix, and the download starts into a free place.
        const QString workspace = SettingsStore::standard().stringValue(SettingsKeys::Workspace);
        moveItem(workspace, keptPath(workspace, QDateTime::currentDateTime()));
        selectItemWithTag(TagClone);
        perform();
        return;
    }
    }
}
