#include "app/ApplicationShell.h"
#include "platform/Translation.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ZELMOR Helper"));
    installTranslator();
    ApplicationShell shell;
    shell.start();
    return app.exec();
}
