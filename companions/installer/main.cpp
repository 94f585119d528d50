#include "BuildConfig.h"
#include "companions/installer/ComponentChecks.h"
#include "companions/installer/InstallerWindow.h"
#include "platform/Translation.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    installTranslator();
    const auto platform = ComponentChecks::currentPlatform();
    // cmake is checked where ZELMOR Helper will start it.
    InstallerWindow window(platform,
                           ComponentChecks::searchPathFor(platform, qEnvironmentVariable("PATH")),
                           QStringLiteral(ZELMOR_CMAKE_PROGRAM));
    window.show();
    return app.exec();
}
