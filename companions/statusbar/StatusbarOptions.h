#pragma once

#include "platform/CompanionChannel.h"

#include <QString>
#include <QStringList>

// How the status-bar companion was started, and the few texts and paths it
// derives without touching the desktop.
struct StatusbarOptions
{
    // "-runMode autoLaunched": started by the login agent, so it comes up
    // without greeting the user.
    bool autoLaunched = false;
    // "--no-tray": for sessions without a tray (servers, test machines). The
    // companion still takes its place as the one instance, follows the
    // channel and quits when asked; it just has nothing to show.
    bool headless = false;
};

// The program's arguments, the program name first as QCoreApplication gives
// them. Unknown arguments are ignored: the platform adds some of its own.
StatusbarOptions parseStatusbarArguments(const QStringList &arguments);

// The companion lives at <main>.app/Contents/Library/LoginItems/<companion>.app.
QString mainBundleForCompanion(const QString &companionBundle);

// One line naming the running operation and, when a figure is known, how far
// it has come: "Compiling ZELMOR — 42%".
QString statusSummary(const CompanionChannel::Status &status);
// The tray tooltip: the application's name, then the operation, then its label.
QString statusToolTip(const CompanionChannel::Status *status);
