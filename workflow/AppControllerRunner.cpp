#include "workflow/AppController.h"

#include "widgets/ConsoleView.h"
#include "widgets/ProgressBar.h"
#include "widgets/Spinner.h"
#include "workflow/OutputParsing.h"
#include "workflow/ProcessGroup.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <csignal>
#include <cstdio>

namespace {
// How long the processes of a stopped child have to end after SIGTERM
// before they get SIGKILL.
constexpr int StopGraceMs = 3000;
} // namespace

// The runner: one child at a time, its output delivered chunk by chunk on the
// main thread, its end reported through notifiedForComplete().

void AppController::runUnixTask(const QString &command, const QString &path)
{
    // The command is one ready-made shell line; nothing is quoted here.
    launchChild(QStringLiteral("/bin/bash"), {QStringLiteral("-c"), command}, path);
}

void AppController::launchChild(const QString &program, const QStringList &arguments,
                                const QString &folder)
{
    auto *process = new QProcess(this);
    process->setProgram(program);
    process->setArguments(arguments);
    process->setWorkingDirectory(folder);
    // A group of its own, so Stop reaches everything the child starts.
    process->setChildProcessModifier(&ProcessGroup::becomeLeader);

    // The previous child, if any, is left running; it is no longer the
    // current one, so nothing it does reaches this operation.
    detachChild();
    unixTask = process;
    recordNewChild(program, arguments);
    m_stdoutDecoder = QStringDecoder(QStringDecoder::Utf8);
    m_stderrDecoder = QStringDecoder(QStringDecoder::Utf8);

    // Each handler first asks whether this is still the current child: the
    // output and the end of one the user stopped and then replaced by a new
    // operation must neither show up in nor advance that operation.
    m_registrations.append(connect(process, &QProcess::readyReadStandardOutput, this,
                                   [this, process] {
                                       if (process != unixTask)
                                           return;
                                       const QByteArray chunk = process->readAllStandardOutput();
                                       m_child.output.append(chunk);
                                       notifiedForStdOutput(chunk);
                                   }));
    m_registrations.append(connect(
        process, &QProcess::readyReadStandardError, this, [this, process] {
            if (process != unixTask)
                return;
            const QByteArray chunk = process->readAllStandardError();
            // Once the console has given up on this stream, only the record
            // of the child still reads it, so the reason of a failure is
            // kept; the console sees nothing more of it.
            m_child.errors.append(chunk);
            if (m_child.consoleGaveUpErrors)
                return;
            m_stderrGivenUp = false;
            notifiedForStdError(chunk);
            if (m_stderrGivenUp)
                m_child.consoleGaveUpErrors = true;
        }));
    m_registrations.append(connect(process, &QProcess::finished, this, [this, process] {
        if (process != unixTask)
            return;
        noteChildEnded(*process);
        notifiedForComplete();
    }));

    connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        if (process == unixTask)
            noteChildNotStarted();
        // The operation stays in its running look; Stop still brings the
        // window back.
        std::fprintf(stderr, "ZELMOR Helper: could not start %s in %s: %s\n",
                     qPrintable(process->program()), qPrintable(process->workingDirectory()),
                     qPrintable(process->errorString()));
    });
    connect(process, &QProcess::finished, process, &QObject::deleteLater);

    // Standard input stays an open pipe that is never written: a child that
    // asks for input waits rather than reading an end of file.
    process->start(QIODevice::ReadWrite);
}

void AppController::detachChild()
{
    QProcess *process = unixTask;
    if (!process)
        return;
    unixTask = nullptr;
    // What it still writes is drained and dropped, never buffered.
    process->closeReadChannel(QProcess::StandardOutput);
    process->closeReadChannel(QProcess::StandardError);
    releaseChild(process);
}

void AppController::terminateChildGroup(QProcess *process)
{
    const qint64 group = process->processId();
    if (group <= 0)
        return;
    // A child stopped the moment it was started may not lead its group yet;
    // then nothing else is in the group either.
    if (!ProcessGroup::signalGroup(group, SIGTERM))
        process->terminate();
    // Whatever ignores SIGTERM is killed after the grace period; the timer
    // never holds up the window.
    QPointer<QProcess> stopped = process;
    QTimer::singleShot(StopGraceMs, this, [this, group, stopped] {
        // Once the whole group is gone its id may have been given to a new
        // child, which leads a group of the same id.
        if (unixTask && unixTask != stopped && unixTask->processId() == group)
            return;
        if (!ProcessGroup::signalGroup(group, SIGKILL) && stopped
            && stopped->state() != QProcess::NotRunning)
            stopped->kill();
    });
}

void AppController::releaseChild(QProcess *process)
{
    if (!process)
        return;
    if (process->state() == QProcess::NotRunning)
        process->deleteLater();
    // A running one deletes itself when it ends (connected at launch).
}

void AppController::removeRegistrations()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_registrations))
        disconnect(connection);
    m_registrations.clear();
}

void AppController::stopTask()
{
    spinner->stopAnimation();
    progressbar->setIndeterminate(true);
    progressbar->stopAnimation();
    if (stopRequest == 1) {
        terminatedByUser = 1;
        if (unixTask)
            terminateChildGroup(unixTask);
    }
    buttonPerform->setText(tr("Perform"));
    showSpeed->setText(OutputParsing::IdleSpeedLabel.toString());
    publishProgress(true);
}

void AppController::notifiedForStdOutput(const QByteArray &chunk)
{
    if (chunk.isEmpty())
        return;
    // A character cut by the chunk boundary is completed by the next chunk.
    const QString text = m_stdoutDecoder.decode(chunk);
    if (logSwitch == 1)
        outputField->insertToolOutput(text);

    if (selectedTag() == TagCompile) {
        progressbar->setMaxValue(100);
        progressbar->setMinValue(0);
        progressbar->setIndeterminate(false);
        if (const auto value = OutputParsing::makeProgressValue(text))
            progressbar->setDoubleValue(*value);
        publishProgress();
    }
}

void AppController::notifiedForStdError(const QByteArray &chunk)
{
    if (chunk.isEmpty())
        return;
    const QString text = m_stderrDecoder.decode(chunk);
    if (logSwitch == 1)
        outputField->insertToolOutput(text);

    const int tag = selectedTag();
    if (tag != TagClone && tag != TagModules)
        return;

    const OutputParsing::CloneProgress progress = OutputParsing::cloneProgress(text);
    if (progress.outcome == OutputParsing::CloneProgress::TooFewPieces) {
        // No speed text can be built from so few pieces: the handling of this
        // chunk ends here, and with it the reading of this child's standard
        // error (git's lone "Cloning into ..." line comes this way).
        std::fprintf(stderr,
                     "ZELMOR Helper: progress text of %d pieces has no speed field; "
                     "standard error of this child is no longer read\n",
                     progress.pieces);
        m_stderrGivenUp = true;
        return;
    }
    progressbar->setIndeterminate(false);
    progressbar->setMinValue(0);
    if (progress.outcome == OutputParsing::CloneProgress::NoNumbers) {
        std::fprintf(stderr,
                     "ZELMOR Helper: progress text without figures; "
                     "standard error of this child is no longer read\n");
        m_stderrGivenUp = true;
        publishProgress();
        return;
    }
    lastPercentage = progress.percentage;
    progressbar->setMaxValue(progress.maximum);
    progressbar->setDoubleValue(progress.value);
    progressbar->update();
    setSpeedText(progress.label);
    publishProgress();
}

void AppController::setSpeedText(const QString &text)
{
    showSpeed->setText(text);
    publishProgress();
}

void AppController::publishProgress(bool force)
{
    ProgressState state;
    state.tag = selectedTag();
    state.indeterminate = progressbar->isIndeterminate();
    state.animating = progressbar->isAnimating();
    state.maximum = progressbar->maxValue();
    state.value = progressbar->doubleValue();
    state.label = showSpeed->text();
    if (!force && state == m_publishedProgress)
        return;
    m_publishedProgress = state;
    emit progressChanged();
}
