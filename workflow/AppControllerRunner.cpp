#include "workflow/AppController.h"

// Placeholder: filled in by the work on this part of the controller.

void AppController::runUnixTask(const QString &, const QString &)
{
}

void AppController::stopTask()
{
}

void AppController::launchChild(const QString &, const QStringList &, const QString &)
{
}

void AppController::notifiedForStdOutput(const QByteArray &)
{
}

void AppController::notifiedForStdError(const QByteArray &)
{
}
