#include "workflow/AppController.h"

// Placeholder: filled in by the work on this part of the controller.

void AppController::UpdateCheck()
{
}

void AppController::startUpdate()
{
}

void AppController::startUpdateModule()
{
}

void AppController::alertDidEndForRestart(int)
{
}
