// Takes the picture the AppStream metainfo shows: the main window at 1024x576
// halfway through a compile with the log switch on, so the console holds real
// cmake and make output, on a small project that stands in for the emulator.
//
//   zelmor_screenshot WORKSPACE PICTURE.png
//
// The workspace's path is shown in the picture, so it is given, and it must
// not exist yet: every folder made for it is removed again at the end. The
// settings, the home folder and the companions belong to a temporary user,
// as in the tests, and the window is drawn offscreen.

#include "TestSupport.h"

#include "app/ApplicationShell.h"
#include "platform/Bundle.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/ProgressBar.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

#include <cstdio>

namespace {

// Source files named after the parts of an emulator, each compiled slowly
// enough that the picture can be taken with the bar halfway.
void writeProject(const QString &workspace)
{
    const QStringList units = {
        "core/machine", "core/memory",  "core/scheduler", "core/savestate", "cpu/m68k_ops",
        "cpu/m68k_disasm", "cpu/z80",   "video/vdp",      "video/renderer", "video/sprites",
        "video/palette", "sound/ym2612", "sound/psg",     "sound/mixer",    "input/pad",
        "input/keyboard", "cart/loader", "cart/mapper",   "cart/sram",      "sdl/main",
        "sdl/audio",     "sdl/video",    "sdl/config",    "sdl/menu",       "util/crc32",
        "util/zip",      "util/ini",     "util/log",      "cheat/codes",    "netplay/session"};
    QByteArray sources;
    for (const QString &unit : units) {
        const QByteArray function = QString(unit).replace('/', '_').toUtf8();
        TestSupport::writeFile(workspace + "/src/" + unit + ".c",
                               "int " + function + "(void) { return 1; }\n");
        sources += " src/" + unit.toUtf8() + ".c";
    }
    TestSupport::writeFile(workspace + "/src/main.c", "int main(void) { return 0; }\n");
    TestSupport::writeScript(workspace + "/.slow", "sleep 0.4\nexec \"$@\"\n");
    TestSupport::writeFile(workspace + "/CMakeLists.txt",
                           "cmake_minimum_required(VERSION 3.13)\n"
                           "set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_SOURCE_DIR}/.slow)\n"
                           "project(ZELMORSDL C)\n"
                           "add_executable(ZELMORSDL src/main.c"
                               + sources + ")\n");
    TestSupport::writeFile(workspace + "/android/assets/config.ini", "[video]\n");
    TestSupport::git(workspace, {"init", "-q"});
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: zelmor_screenshot WORKSPACE PICTURE.png\n");
        return 2;
    }
    const QString workspace = QDir::cleanPath(QDir::current().absoluteFilePath(argv[1]));
    const QString picture = QDir::current().absoluteFilePath(argv[2]);
    QString made = workspace; // the uppermost folder that did not exist
    while (!QFileInfo::exists(QFileInfo(made).absolutePath()))
        made = QFileInfo(made).absolutePath();
    if (QFileInfo::exists(workspace) || !QDir().mkpath(workspace)) {
        std::fprintf(stderr, "zelmor_screenshot: %s exists or cannot be made; give another path\n",
                     qPrintable(workspace));
        return 1;
    }
    const auto removeMade = qScopeGuard([made] { QDir(made).removeRecursively(); });

    TestSupport::isolateUser();
    QApplication app(argc, argv);
    writeProject(workspace);
    // A companion that ends at once, so nothing shows in a tray.
    QTemporaryDir bundle;
    TestSupport::makeScriptBundle(bundle.path()
                                      + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app",
                                  "org.zelmor.screenshot.StatusbarApp", "exit 0\n");
    Bundle::setMainBundlePath(bundle.path());
    SettingsStore &settings = SettingsStore::standard();
    settings.setObject(SettingsKeys::FirstLaunch, 0);
    settings.setObject(SettingsKeys::Workspace, workspace);
    settings.setObject(SettingsKeys::Output, workspace + "/Output");
    settings.setObject(SettingsKeys::Log, 1);

    ApplicationShell shell;
    shell.start();
    QSignalSpy(&shell, &ApplicationShell::launchFinished).wait();
    MainWindow *window = shell.window();
    window->resize(1024, 576);
    window->show();
    AppController *controller = shell.controller();
    controller->selectItemWithTag(AppController::TagCompile);
    controller->perform();
    const bool halfway = QTest::qWaitFor(
        [controller] {
            return controller->now == 1 && controller->progressbar->doubleValue() >= 55;
        },
        120000);
    QTest::qWait(300); // the console's queue shows what has arrived
    const bool saved = halfway && window->grab().save(picture);
    controller->perform(); // Stop
    if (!QTest::qWaitFor([controller] { return controller->unixTask.isNull(); }, 30000))
        std::fprintf(stderr, "zelmor_screenshot: the compile did not stop\n");
    if (!saved) {
        std::fprintf(stderr, "zelmor_screenshot: %s\n",
                     halfway ? "the picture could not be written" : "make never got halfway");
        return 1;
    }
    std::printf("Wrote %s\n", qPrintable(picture));
    return 0;
}
