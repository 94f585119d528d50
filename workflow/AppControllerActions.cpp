#include "workflow/AppController.h"

// Placeholder: filled in by the work on this part of the controller.

void AppController::showPrefs()
{
}

void AppController::restartAPP()
{
}

void AppController::startStatusApp()
{
}

void AppController::aboutApp()
{
}

void AppController::showInstallComponents()
{
}
