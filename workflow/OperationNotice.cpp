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

QString operationName(int tag)
{
    switch (tag) {
    case 1:
        return text("Get a complete copy of source codes of ZELLMOR from GitHub");
    case 2:
        return text("Update source codes and submodules");
    case 3:
        return text("Compile ZELMOR");
    case 4:
        return text("Get module initialized");
    default:
        return QCoreApplication::translate("OperationNotice", "ZELMOR Helper");
    }
}

OperationNotice operationNotice(int tag, OperationEnd end)
{
    OperationNotice notice;
    notice.summary = operationName(tag);
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

OperationNotice problemNotice(int tag, const QString &sentence)
{
    return {QCoreApplication::translate("OperationNotice", "%1 ended with a problem")
                .arg(operationName(tag)),
            sentence};
}
