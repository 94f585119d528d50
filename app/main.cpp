#include "app/Bundle.h"
#include "app/MainWindow.h"
#include "settings/SettingsStore.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    SettingsStore::standard().registerApplicationDefaults(Bundle::mainBundlePath());
    Bundle::exposeHelpersOnPath();
    MainWindow window;
    window.show();
    return app.exec();
}
