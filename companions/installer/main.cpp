#include "BuildConfig.h"
#include "companions/installer/ComponentChecks.h"
#include "companions/installer/InstallerWindow.h"
#include "platform/AppIcons.h"
#include "platform/CommandLine.h"
#include "platform/Translation.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char *argv[])
{
    // Before the application object: --help and --version need no display.
    {
        QCommandLineParser parser;
        CommandLine::prepare(parser, QCoreApplication::translate(
                                         "InstallerWindow",
                                         "Checks the tools ZELMOR Helper needs and installs the "
                                         "missing ones."));
        const auto outcome =
            CommandLine::evaluate(parser, CommandLine::fromArgv(argc, argv),
                                  QStringLiteral("ZELMOR Install Componets"),
                                  QStringLiteral(ZELMOR_VERSION));
        if (const std::optional<int> exitCode = CommandLine::report(outcome))
            return *exitCode;
    }

    QApplication app(argc, argv);
    installTranslator();
    // Part of ZELMOR Helper: the desktop files its window with the application's.
    QGuiApplication::setDesktopFileName(QLatin1String(AppIcons::ApplicationId));
    QApplication::setWindowIcon(AppIcons::application());
    const auto platform = ComponentChecks::currentPlatform();
    // cmake is checked where ZELMOR Helper will start it.
    InstallerWindow window(platform,
                           ComponentChecks::searchPathFor(platform, qEnvironmentVariable("PATH")),
                           QStringLiteral(ZELMOR_CMAKE_PROGRAM));
    window.show();
    return app.exec();
}
