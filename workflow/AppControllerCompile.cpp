#include "workflow/AppController.h"

// Placeholder: filled in by the work on this part of the controller.

void AppController::CompileCheck()
{
}

void AppController::startCompileOne()
{
}

void AppController::startCompileTwo()
{
}

void AppController::copyFinishedFiles()
{
}
