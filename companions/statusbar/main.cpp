#include "BuildConfig.h"
#include "companions/statusbar/StatusbarCompanion.h"
#include "companions/statusbar/StatusbarOptions.h"
#include "platform/AppIcons.h"
#include "platform/Bundle.h"
#include "platform/CommandLine.h"
#include "platform/PrivateRuntime.h"
#include "platform/TerminationSignals.h"
#include "platform/Translation.h"

#include <QApplication>
#include <QSystemTrayIcon>

#include <cstdio>

namespace {

void say(const QString &text)
{
    std::fprintf(stderr, "ZELMORHelperStatusbarApp: %s\n", qPrintable(text));
}

} // namespace

int main(int argc, char *argv[])
{
    // Before the application object: --help and --version need no display.
    CommandLine::Outcome outcome;
    const StatusbarOptions options =
        parseStatusbarArguments(CommandLine::fromArgv(argc, argv), &outcome);
    if (const std::optional<int> exitCode = CommandLine::report(outcome))
        return *exitCode;

    QApplication app(argc, argv);
    // Only the tray menu ever opens; closing it must not end the program.
    app.setQuitOnLastWindowClosed(false);
    installTranslator();
    // The channel's socket goes away with the companion, however it is ended.
    quitOnTerminationSignals();
    QGuiApplication::setDesktopFileName(QLatin1String(AppIcons::CompanionId));
    QApplication::setWindowIcon(AppIcons::companion());

    if (!options.headless && !QSystemTrayIcon::isSystemTrayAvailable()) {
        // Not a failure: the user's desktop simply has nowhere to put the icon,
        // and a login agent should not report an error every session.
        say(QCoreApplication::translate("StatusbarCompanion",
                                        "No system tray is available on this desktop; exiting."));
        return 0;
    }

    // The channel is named after the identifier in this bundle's Info.plist,
    // the same one ZELMOR Helper reads when it asks the companion to quit.
    const QString ownBundle = Bundle::mainBundlePath();
    const auto info = Bundle::readInfo(ownBundle);
    const QString identifier = info ? info->identifier : QStringLiteral(ZELMOR_STATUSBAR_BUNDLE_ID);

    // Without a folder of the user's own there is no safe place for the
    // channel; the reason is already on standard error.
    if (PrivateRuntime::directory().isEmpty())
        return 1;

    StatusbarCompanion companion(identifier, mainBundleForCompanion(ownBundle), options);
    QObject::connect(&companion, &StatusbarCompanion::quitRequested, &app, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    if (!companion.start()) {
        // ZELMOR Helper starts the companion every time it starts, and the
        // login agent may have done so already: a second start is normal, so
        // it ends successfully and leaves the first instance alone.
        say(QCoreApplication::translate("StatusbarCompanion",
                                        "Another instance is already running; exiting."));
        return 0;
    }
    return app.exec();
}
