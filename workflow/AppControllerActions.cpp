#include "workflow/AppController.h"

#include "platform/Bundle.h"
#include "platform/Relaunch.h"
#include "widgets/FirstFrame.h"
#include "workflow/MainWindow.h"

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
    if (openPreferencesWindow)
        openPreferencesWindow();
}

void AppController::restartAPP()
{
    Relaunch::relaunchAfterDelay(2.0f);
}

void AppController::startStatusApp()
{
    // At launch the companion's start would take the processor from the
    // main window's first frame; it comes just after it.
    afterFirstFrame(window, [] { Bundle::launchApplication(Bundle::statusbarAppPath()); });
}

void AppController::aboutApp()
{
    activateIgnoringOtherApps(window);
    if (openAboutWindow)
        openAboutWindow();
}

void AppController::showInstallComponents()
{
    Bundle::launchApplication(Bundle::installerAppPath());
}
