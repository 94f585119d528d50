#pragma once

#include "platform/CommandLine.h"
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

// The program's arguments, the program name first, as main() receives them
// (Qt's own options such as -platform included). The platform's additions
// ("-psn_…") are passed over; any other unknown option ends the program:
// outcome, when given, receives what --help, --version or a mistake prints
// and the exit code the program ends with before it makes its application
// object.
StatusbarOptions parseStatusbarArguments(const QStringList &arguments,
                                         CommandLine::Outcome *outcome = nullptr);

// The companion lives at <main>.app/Contents/Library/LoginItems/<companion>.app.
QString mainBundleForCompanion(const QString &companionBundle);

// One line naming the running operation and, when a figure is known, how far
// it has come: "Compiling ZELMOR — 42%"; for an operation that ended with a
// problem, that and the sentence saying what went wrong.
QString statusSummary(const CompanionChannel::Status &status);
// The tray tooltip: the application's name, then the operation, then its label.
QString statusToolTip(const CompanionChannel::Status *status);
