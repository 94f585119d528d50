#include "app/AppCommandLine.h"
#include "app/ApplicationShell.h"
#include "platform/Bundle.h"
#include "platform/MemoryReuse.h"
#include "platform/SingleInstance.h"
#include "platform/TerminationSignals.h"
#include "platform/Translation.h"

#include <QApplication>

#include <memory>

int main(int argc, char *argv[])
{
    keepFreedMemoryForReuse();
    // Before the application object: --help and --version need no display.
    if (const std::optional<int> exitCode = handleCommandLine(argc, argv))
        return *exitCode;
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ZELMOR Helper"));
    installTranslator();
    // SIGTERM ends the run like Quit does: the companion is asked to quit
    // when the user wants that, and the instance's socket is removed.
    quitOnTerminationSignals();

    // One instance per user: a second start brings the running window
    // forward and ends, before it touches the settings.
    SingleInstance instance(Bundle::mainBundleIdentifier());
    std::unique_ptr<ApplicationShell> shell;
    QObject::connect(&instance, &SingleInstance::handedOver, &app,
                     [] { QCoreApplication::exit(0); });
    QObject::connect(&instance, &SingleInstance::becamePrimary, &app, [&shell] {
        shell = std::make_unique<ApplicationShell>();
        shell->start();
    });
    QObject::connect(&instance, &SingleInstance::activationRequested, &app, [&shell] {
        if (shell)
            shell->bringToFront();
    });
    instance.start();
    const int status = app.exec();
    shell.reset();
    return status;
}
