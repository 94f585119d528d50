#include "workflow/AppController.h"

// Placeholder: filled in by the work on this part of the controller.

void AppController::regModule()
{
}

void AppController::initializeURL()
{
}

void AppController::InstallModuleCheck()
{
}

void AppController::startInstallModule()
{
}

void AppController::moduleAlertDidEnd(int)
{
}

void AppController::timeCountdownOfReadytoInstallModule()
{
}

void AppController::alertDidEndForReadytoInstallModule(int)
{
}
