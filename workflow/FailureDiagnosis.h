#pragma once

#include <QString>
#include <QStringList>

// Turns what a failed child left behind into one sentence a user who never
// opens a terminal can act on. Pure: everything it needs to know about the
// machine (may the folders be written, how much room the disk has) is
// handed in, so tests reach every rule with captured tool output.

// How one child of an operation ended, and the last lines it wrote.
struct StageResult
{
    int tag = 0;             // the operation (AppController::Tag) when it ended
    int stage = 0;           // the stage counter when it ended
    QString tool;            // the program the user would name: git, cmake, make, cp
    bool notStarted = false; // the child could not be started at all
    bool signalled = false;  // ended by a signal other than the user's Stop
    int status = 0;          // exit code, or the number of that signal
    QStringList errorLines;  // last lines of standard error, oldest first
    QStringList outputLines; // last lines of standard output, oldest first

    bool failed() const { return notStarted || signalled || status != 0; }
};

// What the caller finds on the machine at the moment of the diagnosis.
struct Surroundings
{
    QString workspace;
    QString output;
    // Whether the folder, or the nearest folder above it that exists, may
    // be written by this user.
    bool workspaceWritable = true;
    bool outputWritable = true;
    // Free bytes on the disk that holds each folder; negative when unknown.
    qint64 workspaceFreeBytes = -1;
    qint64 outputFreeBytes = -1;
    // The failed child's program exists and may be run (only asked when it
    // could not be started).
    bool programFound = true;
};

enum class FailureKind {
    Network,           // host not found, connection refused or timed out
    Access,            // repository not found, or it asks for a login
    Permission,        // a folder the user may not write
    DiskFull,          // no space left on the device
    ToolMissing,       // git, cmake or make is not installed
    PackageMissing,    // cmake did not find a package the project requires
    CompileError,      // the compiler reported an error
    PullBlocked,       // local changes or a conflict stop git pull
    WorkspaceNotEmpty, // the workspace holds files but no download
    Other,
};

// The one thing the message offers to do.
enum class FailureAction {
    None,
    TryAgain,             // the same operation once more
    ChooseWorkspace,      // the preferences' chooser for the workspace
    ChooseOutput,         // ... for the output folder
    InstallEssentials,    // the component installer
    MoveAsideAndDownload, // keep the workspace under the date suffix, clone again
};

struct Diagnosis
{
    FailureKind kind = FailureKind::Other;
    QString sentence; // for the user, translated
    QString evidence; // the tool's own line that shows it
    FailureAction action = FailureAction::None;
    // What the sentence names: the tool, package, "file:line", the folder,
    // the files in the way (comma-separated).
    QString subject;
};

// stage must have failed (StageResult::failed()).
Diagnosis diagnoseFailure(const StageResult &stage, const Surroundings &surroundings);

// The title of the action's button; empty for FailureAction::None.
QString failureActionTitle(FailureAction action);
