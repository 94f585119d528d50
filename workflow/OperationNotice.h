#pragma once

#include <QString>

// How an operation came to its end, as the console's last line says it.
enum class OperationEnd {
    AllDone,          // "All done.": the update and the compile
    Done,             // "Done." ends the module download
    TerminatedByUser, // "Task terminated by user."
};

// What the desktop is told when an operation has ended while the user was
// elsewhere: the operation, named as in the pop-up, and how it ended.
struct OperationNotice
{
    QString summary;
    QString body;
};

// tag is the pop-up tag of the operation that ended (AppController::Tag);
// an unknown tag is told as the application's own name.
OperationNotice operationNotice(int tag, OperationEnd end);

// The operation ended with a problem: it says so, and the sentence that
// tells what went wrong.
OperationNotice problemNotice(int tag, const QString &sentence);

// The operation's name as the pop-up shows it.
QString operationName(int tag);
