#include "workflow/AppController.h"

#include "BuildConfig.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "ui_MainWindow.h"
#include "widgets/AlertSheet.h"
#include "widgets/ConsoleView.h"
#include "widgets/MessageBar.h"
#include "widgets/ProgressBar.h"
#include "widgets/Spinner.h"
#include "workflow/MainWindow.h"
#include "workflow/OutputParsing.h"
#include "workflow/ProcessGroup.h"
#include "workflow/TextFormat.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <csignal>

namespace {
// Between the pull of the sources and the pull of the submodules of an
// update, so git has released the repository's lock files.
constexpr int UpdatePauseMs = 1000;
constexpr int CountdownSeconds = 10;
} // namespace

AppController::AppController(MainWindow *w, QObject *parent)
    : QObject(parent), window(w), cmakeProgram(QStringLiteral(ZELMOR_CMAKE_PROGRAM))
{
    Ui::MainWindow *ui = window->ui();
    popupSelection = ui->popupSelection;
    getSelection = ui->popupSelection;
    buttonPerform = ui->buttonPerform;
    outputField = ui->outputField;
    showSpeed = ui->showSpeed;
    spinner = ui->spinner;
    progressbar = ui->progressbar;
    messageBar = ui->messageBar;
    connect(buttonPerform, &QPushButton::clicked, this, [this] { perform(); });
    connect(messageBar, &MessageBar::actionTriggered, this, [this] { performFailureAction(); });
    connect(messageBar, &MessageBar::dismissed, this, [this] { dismissProblem(); });
    // Made first, so whoever else hears of the end knows by then whether it
    // came with a problem.
    connect(this, &AppController::operationEnded, this, &AppController::reportFailures);

    m_updatePause = new QTimer(this);
    m_updatePause->setSingleShot(true);
    m_updatePause->setInterval(UpdatePauseMs);
    connect(m_updatePause, &QTimer::timeout, this, [this] { continueAfterUpdatePause(); });

    m_publishedProgress.label = showSpeed->text();
}

AppController::~AppController()
{
    removeRegistrations();
    // Nothing a child started may outlive the application, not even one the
    // user stopped whose grace period has not run out; there is no time left
    // to give. Each QProcess then ends and reaps its own leader.
    for (QProcess *process : findChildren<QProcess *>(Qt::FindDirectChildrenOnly))
        if (process->state() != QProcess::NotRunning)
            ProcessGroup::signalGroup(process->processId(), SIGKILL);
}

void AppController::awakeFromNib()
{
    // The pop-up lists clone, modules, update, compile; the item data is the
    // tag every handler decides by.
    popupSelection->clear();
    popupSelection->addItem(tr("Get a complete copy of source codes of ZELLMOR from GitHub"), TagClone);
    popupSelection->addItem(tr("Get module initialized"), TagModules);
    popupSelection->addItem(tr("Update source codes and submodules"), TagUpdate);
    popupSelection->addItem(tr("Compile ZELMOR"), TagCompile);
    buttonPerform->setText(tr("Perform"));

    selectItemWithTag(TagClone);

    window->raise();
    window->activateWindow();

    SettingsStore &settings = SettingsStore::standard();
    rootDirectory = settings.stringValue(SettingsKeys::Workspace);
    outputDirectory = settings.stringValue(SettingsKeys::Output);
    logSwitch = settings.intValue(SettingsKeys::Log);

    buildFolder = formatText(QStringLiteral("%@/build"), {rootDirectory});

    now = 0;
    lastPercentage = 0;

    startStatusApp();
}

void AppController::perform()
{
    const QString title = buttonPerform->text();
    if (title == tr("Perform")) {
        // A pause left over from an update that was stopped must not start
        // its second pull in the middle of this operation.
        m_updatePause->stop();
        // A child the user stopped may not have ended yet (or one left
        // running by a check): its end belongs to the operation it was part
        // of, not to the one starting now.
        detachChild();
        clearProblem();
        buttonPerform->setText(tr("Stop"));
        spinner->startAnimation();
        progressbar->startAnimation();
        publishProgress();

        bool keepStage = false;
        switch (selectedTag()) {
        case TagClone:
            InstallCheck();
            break;
        case TagUpdate:
            UpdateCheck();
            break;
        case TagCompile:
            CompileCheck();
            break;
        case TagModules:
            InstallModuleCheck();
            // The check starts counting at 0 itself; when it has passed over
            // refused entries before its first clone or question, `now`
            // names the module that is under way and must stay, or that
            // module would be fetched twice.
            keepStage = true;
            break;
        default:
            outputField->setString(tr("Error"));
            spinner->stopAnimation();
            progressbar->stopAnimation();
            publishProgress();
            break;
        }
        if (!keepStage)
            now = 0;
        terminatedByUser = 0;
    } else if (title == tr("Stop")) {
        stopRequest = 1;
        stopTask();
    }
}

void AppController::notifiedForComplete()
{
    // The exit status is never consulted: every stage counts as done.
    releaseChild(unixTask);
    unixTask = nullptr;
    removeRegistrations();
    setSpeedText(OutputParsing::IdleSpeedLabel.toString());

    const QString done = tr("Done.");
    if (terminatedByUser == 1) {
        outputField->insertText(formatText(QStringLiteral("\n%@\n"), {tr("Task terminated by user.")}));
        buttonPerform->setText(tr("Perform"));
        emit operationEnded(selectedTag(), OperationEnd::TerminatedByUser);
    } else {
        const int tag = selectedTag();
        if (tag == TagModules) {
            if (now >= moduleCount) {
                now = 0;
                terminatedByUser = 0;
                stopRequest = 0;
                stopTask();
                outputField->insertText(formatText(QStringLiteral("\n%@\n"), {done}));
                emit operationEnded(tag, OperationEnd::Done);
            } else {
                now += 1;
                startInstallModule();
            }
        } else if (tag == TagUpdate) {
            if (now > 0) {
                stopRequest = 0;
                stopTask();
                outputField->insertText(
                    formatText(QStringLiteral("%@\n \n%@\n"), {done, tr("All done.")}));
                emit operationEnded(tag, OperationEnd::AllDone);
            } else {
                outputField->insertText(formatText(QStringLiteral("%@\n"), {done}));
                // The window stays responsive during the pause; the second
                // pull starts when it is over.
                m_updatePause->start();
            }
        } else if (tag == TagCompile) {
            if (now == 0) {
                now = 1;
                startCompileTwo();
            } else if (now == 1) {
                now = 2;
                copyFinishedFiles();
            } else {
                outputField->insertText(formatText(QStringLiteral("%@\n"), {done}));
                outputField->insertText(formatText(QStringLiteral("\n%@\n"), {tr("All done.")}));
                stopRequest = 0;
                stopTask();
                emit operationEnded(tag, OperationEnd::AllDone);
            }
        } else if (tag == TagClone) {
            outputField->insertText(formatText(QStringLiteral("\n%@\n"), {done}));
            openReadyToInstallModulePrompt();
            // The download is over; what follows is another operation.
            reportFailures(tag, OperationEnd::Done);
        } else if (terminatedByUser == 0) {
            stopRequest = 0;
            stopTask();
            outputField->insertText(formatText(QStringLiteral("\n%@\n"), {done}));
            buttonPerform->setText(tr("Perform"));
            emit operationEnded(tag, OperationEnd::Done);
        }
    }
    setSpeedText(OutputParsing::IdleSpeedLabel.toString());
}

void AppController::continueAfterUpdatePause()
{
    if (terminatedByUser == 1) {
        outputField->insertText(formatText(QStringLiteral("\n%@\n"), {tr("Task terminated by user.")}));
        emit operationEnded(selectedTag(), OperationEnd::TerminatedByUser);
        return;
    }
    now += 1;
    startUpdateModule();
}

void AppController::openReadyToInstallModulePrompt()
{
    if (iAlert)
        iAlert->deleteLater();
    iAlert = new AlertSheet(window);
    iAlert->addButtonWithTitle(tr("Perform"));
    iAlert->addButtonWithTitle(tr("Cancel"));
    iAlert->setMessageText(tr("Ready to install modules"));
    iAlert->setCountdown(
        CountdownSeconds,
        [](int count) {
            // Until the first tick the question names plain "modules".
            const QString question =
                count == CountdownSeconds
                    ? tr("Main source codes are ready. Do you want to get modules initialized "
                         "right now?")
                    : tr("Main source codes are ready. Do you want to get essential modules "
                         "initialized right now?");
            return formatText(
                QStringLiteral("%@\n%@..."),
                {question, formatText(tr("Count down %d secs"), {QString::number(count)})});
        },
        [this] { timeCountdownOfReadytoInstallModule(); });
    // Kept, hidden, once answered, until the next prompt replaces it.
    iAlert->beginSheet(window,
                       [this](int returnCode) { alertDidEndForReadytoInstallModule(returnCode); });
}

QTimer *AppController::timer() const
{
    return iAlert ? iAlert->countdownTimer() : nullptr;
}

qint32 AppController::countdown() const
{
    return iAlert ? iAlert->countdown() : 0;
}

AlertSheet *AppController::showAlertAtWindow(QWidget *parentWindow, const QString &title,
                                             const QString &message, const QString &first,
                                             const QString &second, const QString &third,
                                             std::function<void(int)> didEnd)
{
    auto *sheet = new AlertSheet(parentWindow);
    sheet->addButtonWithTitle(first);
    sheet->addButtonWithTitle(second);
    sheet->addButtonWithTitle(third);
    sheet->setMessageText(title);
    sheet->setInformativeText(message);
    m_questionSheet = sheet;
    // The sheet is not reused: it goes once its handler has run.
    QPointer<AlertSheet> guard = sheet;
    sheet->beginSheet(parentWindow, [guard, handler = std::move(didEnd)](int returnCode) {
        if (handler)
            handler(returnCode);
        if (guard)
            guard->deleteLater();
    });
    return sheet;
}

int AppController::selectedTag() const
{
    const QVariant tag = getSelection->currentData();
    return tag.isValid() ? tag.toInt() : 0;
}

void AppController::selectItemWithTag(int tag)
{
    const int index = getSelection->findData(tag);
    if (index >= 0)
        getSelection->setCurrentIndex(index);
    // The companion names the operation from the pop-up: the module download
    // that follows a clone must replace the clone's name there at once, even
    // when nothing else it shows changes.
    publishProgress();
}
