#pragma once

#include "TestSupport.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/AlertSheet.h"
#include "widgets/ConsoleView.h"
#include "widgets/ProgressBar.h"
#include "widgets/Spinner.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QPushButton>

// How long a child running real git, cmake or make may take on a busy machine.
constexpr int Patience = 60000;

using TestSupport::gitmodulesEntry;

// What the console shows of a download that went well.
inline QString cloneTranscript(const QString &workspace)
{
    return "\nDownloading source codes...\n\nLocation: " + workspace + "\n\n\nDone.\n";
}

// What the console shows while a module is being fetched.
inline QString moduleTranscript(const QString &workspace, const QString &name)
{
    return "\nGetting module " + name + "...\n\nLocation: " + workspace + "/" + name + "\n\n";
}

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

    // A sheet left open by a failed test must not answer for the next one.
    static void endSheets()
    {
        for (AlertSheet *sheet : AlertSheet::openSheets())
            sheet->endSheet();
    }
    static AlertSheet *waitForSheet()
    {
        if (!QTest::qWaitFor([] { return !AlertSheet::openSheets().isEmpty(); }, Patience))
            return nullptr;
        return AlertSheet::openSheets().constLast();
    }

    static void configure(const QString &workspace, const QString &output, const QVariant &log)
    {
        SettingsStore &settings = SettingsStore::standard();
        settings.setObject(SettingsKeys::Workspace, workspace);
        settings.setObject(SettingsKeys::Output, output);
        settings.setObject(SettingsKeys::Log, log);
    }
};
