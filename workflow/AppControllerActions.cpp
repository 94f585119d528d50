#include "workflow/AppController.h"

#include "app/AboutController.h"
#include "app/Bundle.h"
#include "app/MainWindow.h"
#include "app/Relaunch.h"
#include "settings/PrefsController.h"

namespace {
// The application comes forward with its main window, whatever other
// application was in front.
void activateIgnoringOtherApps(MainWindow *window)
{
    if (!window)
        return;
    window->raise();
    window->activateWindow();
}
} // namespace

void AppController::showPrefs()
{
    activateIgnoringOtherApps(window);
    if (!prefsController)
        prefsController = new PrefsController(window, this);
    prefsController->showWindow();
}

void AppController::restartAPP()
{
    Relaunch::relaunchAfterDelay(2.0f);
}

void AppController::startStatusApp()
{
    Bundle::launchApplication(Bundle::statusbarAppPath());
}

void AppController::aboutApp()
{
    activateIgnoringOtherApps(window);
    if (!aboutController)
        aboutController = new AboutController(window, this);
    aboutController->showWindow(this);
    aboutController->timeToload();
}

void AppController::showInstallComponents()
{
    Bundle::launchApplication(Bundle::installerAppPath());
}
