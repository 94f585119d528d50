#include "workflow/OperationNotice.h"

#include <QCoreApplication>

namespace {

// The same texts as the pop-up and the console, so one translation serves
// both.
QString text(const char *english)
{
    return QCoreApplication::translate("AppController", english);
}

} // namespace

OperationNotice operationNotice(int tag, OperationEnd end)
{
    OperationNotice notice;
    switch (tag) {
    case 1:
        notice.summary = text("Get a complete copy of source codes of ZELLMOR from GitHub");
        break;
    case 2:
        notice.summary = text("Update source codes and submodules");
        break;
    case 3:
        notice.summary = text("Compile ZELMOR");
        break;
    case 4:
        notice.summary = text("Get module initialized");
        break;
    default:
        notice.summary = QCoreApplication::translate("OperationNotice", "ZELMOR Helper");
        break;
    }
    switch (end) {
    case OperationEnd::AllDone:
        notice.body = text("All done.");
        break;
    case OperationEnd::Done:
        notice.body = text("Done.");
        break;
    case OperationEnd::TerminatedByUser:
        notice.body = text("Task terminated by user.");
        break;
    }
    return notice;
}
