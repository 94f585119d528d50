#include "workflow/AppController.h"

// Placeholder: filled in by the work on this part of the controller.

void AppController::InstallCheck()
{
}

void AppController::alertDidEndforInstall(int)
{
}

void AppController::startInstall()
{
}
