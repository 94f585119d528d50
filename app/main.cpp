#include "app/AppCommandLine.h"
#include "app/ApplicationShell.h"
#include "platform/Translation.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    // Before the application object: --help and --version need no display.
    if (const std::optional<int> exitCode = handleCommandLine(argc, argv))
        return *exitCode;
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ZELMOR Helper"));
    installTranslator();
    ApplicationShell shell;
    shell.start();
    return app.exec();
}
