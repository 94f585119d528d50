#pragma once

#include "workflow/FailureDiagnosis.h"
#include "workflow/OperationNotice.h"
#include "workflow/OutputTail.h"

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QStringDecoder>
#include <QStringList>

#include <functional>
#include <optional>

enum class ModuleEntryVerdict;
class AlertSheet;
class ConsoleView;
class MainWindow;
class MessageBar;
class ProgressBar;
class QComboBox;
class QLabel;
class QPushButton;
class QTimer;
class Spinner;

// Controller of the main window and the workflow engine: the four operations
// as a chain of child processes, one at a time, all on the main thread.
//
// Member names follow the names the rest of the application (and its users'
// bug reports) know them by; outlets and state are public so the shell and the
// tests can reach them without accessor boilerplate.
class AppController : public QObject
{
    Q_OBJECT

public:
    // Operation tags of the pop-up items.
    enum Tag { TagClone = 1, TagUpdate = 2, TagCompile = 3, TagModules = 4 };

    explicit AppController(MainWindow *window, QObject *parent = nullptr);
    ~AppController() override;

    // Fills the pop-up, titles, reads the settings, starts the companion.
    void awakeFromNib();

    // --- Outlets -----------------------------------------------------------
    MainWindow *window = nullptr;          // parent of every sheet
    QComboBox *popupSelection = nullptr;   // the operation pop-up...
    QComboBox *getSelection = nullptr;     // ...the same one, as the handlers read it
    QPushButton *buttonPerform = nullptr;  // "Perform" / "Stop"
    ConsoleView *outputField = nullptr;
    QLabel *showSpeed = nullptr;
    Spinner *spinner = nullptr;
    ProgressBar *progressbar = nullptr;
    MessageBar *messageBar = nullptr;      // says what went wrong, below the console

    // --- State ---------------------------------------------------------------
    QPointer<AlertSheet> iAlert;       // the ready-to-install-modules prompt, which counts down
    QTimer *timer() const;             // its one-second tick
    qint32 countdown() const;          // its seconds left
    QString rootDirectory;
    QString outputDirectory;
    QString buildFolder;
    QString moduleName;
    QStringList moduleURL;
    // The preferences and about windows belong to the layers above; their
    // owner fills these in, and showPrefs()/aboutApp() only bring the main
    // window forward and ask for them.
    std::function<void()> openPreferencesWindow;
    std::function<void()> openAboutWindow;
    // The preferences' folder choosers, for a folder the user may not write.
    std::function<void()> chooseWorkspaceFolder;
    std::function<void()> chooseOutputFolder;
    QPointer<QProcess> unixTask;       // the current child
    qint32 now = 0;                    // stage counter

    // Values the original kept at file scope; one controller exists per
    // process, so members behave the same.
    int stopRequest = 0;        // the next stopTask is the user's Stop
    int terminatedByUser = 0;   // the child was killed by Stop
    int logSwitch = 0;          // "log" as read at the start of the operation
    qint32 lastPercentage = 0;
    qint64 moduleCount = 0;

    // What the message bar shows: the first failed stage of the operation
    // that ended last, with the operation's tag; empty once the bar is
    // closed or the next operation starts.
    std::optional<Diagnosis> problem;
    int problemTag = 0;
    // Whether the last operationEnded came with a problem (reported just
    // before it through problemReported).
    bool lastEndHadProblem = false;

    // The cmake program the compile operation starts; the build-time default.
    QString cmakeProgram;

    // --- Actions ---------------------------------------------------------------
    void perform();
    void showPrefs();
    void restartAPP();
    void startStatusApp();
    void aboutApp();
    void showInstallComponents();

    // --- Runner --------------------------------------------------------------
    void runUnixTask(const QString &command, const QString &path);
    void stopTask();

    // --- Output handlers and completion ------------------------------------------
    void notifiedForStdOutput(const QByteArray &chunk);
    void notifiedForStdError(const QByteArray &chunk);
    void notifiedForComplete();
    AlertSheet *showAlertAtWindow(QWidget *window, const QString &title, const QString &message,
                                  const QString &first, const QString &second,
                                  const QString &third, std::function<void(int)> didEnd);

    // --- Operation 1: source download ----------------------------------------
    void InstallCheck();
    void alertDidEndforInstall(int returnCode);
    void startInstall();

    // --- Submodule registry and operation 4 ----------------------------------------
    void regModule();
    void initializeURL();
    void InstallModuleCheck();
    void startInstallModule();
    void moduleAlertDidEnd(int returnCode);
    void timeCountdownOfReadytoInstallModule();
    void alertDidEndForReadytoInstallModule(int returnCode);

    // --- Operation 2: update ----------------------------------------------------
    void UpdateCheck();
    void startUpdate();
    void startUpdateModule();
    void alertDidEndForRestart(int returnCode);

    // --- Operation 3: compile and package ------------------------------------------
    void CompileCheck();
    void startCompileOne();
    void startCompileTwo();
    void copyFinishedFiles();

    // The message bar's button: does what the diagnosis offers.
    void performFailureAction();
    // The message bar was closed.
    void dismissProblem();

    int selectedTag() const;
    void selectItemWithTag(int tag);

signals:
    // The operation's progress changed (the companion shows it).
    void progressChanged();
    // The operation with this tag has ended; the console has just said how.
    void operationEnded(int tag, OperationEnd end);
    // An operation (tag) ended with a failed stage; `problem` says what.
    // For the download this comes with its "Done.", before the modules are
    // offered.
    void problemReported(int tag);

private:
    // Starts program with arguments in folder, wired to the output handlers
    // and the completion; shared by the runner and the compile stages.
    void launchChild(const QString &program, const QStringList &arguments,
                     const QString &folder);

    // Drops every connection launchChild made, for every child still around.
    void removeRegistrations();
    // Gives up the reference to a child; it is freed once it has ended.
    void releaseChild(QProcess *process);
    // The current child stops being current, running or not: its output and
    // its end are ignored from now on.
    void detachChild();
    // SIGTERM to the child's process group at once, SIGKILL to what is left
    // of it after a grace period.
    void terminateChildGroup(QProcess *process);
    // Tells the shell when what the companion shows may have changed.
    void publishProgress(bool force = false);
    // Replaces the speed label (the idle label, or git's speed).
    void setSpeedText(const QString &text);
    // The ready-to-install-modules prompt, after a clone.
    void openReadyToInstallModulePrompt();
    // After the one-second pause between the two pulls of an update.
    void continueAfterUpdatePause();
    // A check found no git checkout at path: the failure message with the
    // hint, then the idle look.
    void reportMissingCheckout(const QString &path, const QString &hint);
    // A module entry the guard refused (checkModuleEntry) is reported, and
    // passed over.
    void reportRefusedModule(const QString &url, ModuleEntryVerdict verdict);

    // What the current child is and what it wrote, kept whatever the
    // console shows of it.
    struct ChildRecord
    {
        QString program;
        QString tool;
        OutputTail output;
        OutputTail errors;
        bool consoleGaveUpErrors = false;
    };
    void recordNewChild(const QString &program, const QStringList &arguments);
    // The current child ended (or could not start): a failure is kept for
    // the end of the operation. The user's Stop is no failure.
    void noteChildEnded(const QProcess &process);
    void noteChildNotStarted();
    void keepFailure(StageResult result);
    // At the end of an operation: the first failure kept goes to the bar.
    void reportFailures(int tag, OperationEnd end);
    void showProblem(int tag, const Diagnosis &diagnosis);
    void clearProblem();
    Surroundings surroundings() const;

    ChildRecord m_child;
    std::optional<StageResult> m_firstFailure;
    QList<QMetaObject::Connection> m_registrations;
    QStringDecoder m_stdoutDecoder{QStringDecoder::Utf8};
    QStringDecoder m_stderrDecoder{QStringDecoder::Utf8};
    // Set by notifiedForStdError when a chunk ended in the range error: the
    // standard error of that child is no longer read.
    bool m_stderrGivenUp = false;
    QTimer *m_updatePause = nullptr;
    QPointer<AlertSheet> m_questionSheet; // the last Keep/Replace question

    struct ProgressState
    {
        int tag = 0; // the operation the pop-up names
        bool indeterminate = true;
        bool animating = false;
        double maximum = 0;
        double value = 0;
        QString label;
        bool operator==(const ProgressState &) const = default;
    };
    ProgressState m_publishedProgress;
};
