#pragma once

#include "TestSupport.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/ConsoleView.h"
#include "widgets/ProgressBar.h"
#include "widgets/Spinner.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QPushButton>

// The main window and its controller as the application sets them up. The
// controller reads the settings when it wakes, so configure them first. A
// test that uses this includes a workflow/ header itself, which is what links
// it with the libraries.
struct ControllerHarness
{
    MainWindow window;
    AppController controller{&window};

    ControllerHarness()
    {
        controller.awakeFromNib();
        window.show();
    }
    QString console() { return controller.outputField->string(); }
    QString button() const { return controller.buttonPerform->text(); }
    void perform(int tag)
    {
        controller.selectItemWithTag(tag);
        controller.perform();
    }
    // The idle look after an operation ended or was given up.
    bool isIdle() const
    {
        return button() == QLatin1String("Perform") && !controller.spinner->isAnimating();
    }

    static void configure(const QString &workspace, const QString &output, const QVariant &log)
    {
        SettingsStore &settings = SettingsStore::standard();
        settings.setObject(SettingsKeys::Workspace, workspace);
        settings.setObject(SettingsKeys::Output, output);
        settings.setObject(SettingsKeys::Log, log);
    }
};
