// How long ZELMOR Helper takes from exec until its main window is mapped,
// next to a bare Qt Widgets window with the same kinds of controls (a menu
// bar, a combo box, a button and a text view), started the same way in the
// same run:
//
//   xvfb-run -a dbus-run-session -- build/bench/bench_startup [rounds] [bundle]
//
// (9 rounds unless told; the bundle is this build's unless another build's
// is named, to compare two versions of the application on one machine). A desktop has a session bus; without one, Qt in
// both programs first spends tens of milliseconds starting one of its own
// through dbus-launch, which is no part of an ordinary start.
//
// The two programs start in turns, each from a fresh process and with a
// settings folder of its own in which the first launch is already over, so
// the figures are those of an ordinary start. The X server says when a
// top-level window is mapped (MapNotify on the root window); the clock runs
// from just before the program is spawned until then. One round of each is
// run first and not counted: it pays for loading the shared libraries from
// disk. Whatever a start leaves running (the companion) has ended before
// the next one. Medians count; the ratio is app / bare.

#include "BuildConfig.h"

#include <QApplication>
#include <QComboBox>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <xcb/xcb.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char **environ;

namespace {

int bareWindow(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.menuBar()->addMenu(QStringLiteral("File"))->addAction(QStringLiteral("Quit"));
    auto *central = new QWidget(&window);
    auto *layout = new QVBoxLayout(central);
    auto *combo = new QComboBox(central);
    combo->addItems({QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three"),
                     QStringLiteral("Four")});
    layout->addWidget(combo);
    layout->addWidget(new QPushButton(QStringLiteral("Perform"), central));
    layout->addWidget(new QPlainTextEdit(central));
    window.setCentralWidget(central);
    window.resize(700, 480);
    window.show();
    return app.exec();
}

double nowMs()
{
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

std::string makeFolder(const std::string &path)
{
    if (mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) {
        std::perror(path.c_str());
        std::exit(1);
    }
    return path;
}

// The environment of every start: this one's, with a home, configuration
// and runtime folder of the benchmark's own.
std::vector<std::string> environmentFor(const std::string &root, const std::string &runtime)
{
    std::vector<std::string> env;
    for (char **e = environ; *e; ++e) {
        const std::string entry(*e);
        if (entry.rfind("HOME=", 0) == 0 || entry.rfind("XDG_CONFIG_HOME=", 0) == 0
            || entry.rfind("XDG_RUNTIME_DIR=", 0) == 0 || entry.rfind("QT_QPA_PLATFORM=", 0) == 0)
            continue;
        env.push_back(entry);
    }
    env.push_back("HOME=" + makeFolder(root + "/home"));
    env.push_back("XDG_CONFIG_HOME=" + makeFolder(root + "/home/.config"));
    env.push_back("XDG_RUNTIME_DIR=" + runtime);
    env.push_back("QT_QPA_PLATFORM=xcb");
    return env;
}

pid_t spawn(const std::vector<std::string> &argv, const std::vector<std::string> &env)
{
    std::vector<char *> args;
    for (const std::string &a : argv)
        args.push_back(const_cast<char *>(a.c_str()));
    args.push_back(nullptr);
    std::vector<char *> envp;
    for (const std::string &e : env)
        envp.push_back(const_cast<char *>(e.c_str()));
    envp.push_back(nullptr);
    // A group of its own, so whatever it starts ends with it.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);
    // What the programs say (a companion without a tray says so) is not the
    // benchmark's output.
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    const int error = posix_spawn(&pid, args[0], &files, &attributes, args.data(), envp.data());
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    if (error != 0) {
        std::fprintf(stderr, "cannot start %s: %s\n", args[0], std::strerror(error));
        std::exit(1);
    }
    return pid;
}

void endGroup(pid_t pid)
{
    kill(-pid, SIGTERM);
    for (int i = 0; i < 500; ++i) {
        if (waitpid(pid, nullptr, WNOHANG) == pid)
            return;
        usleep(10000);
    }
    kill(-pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

// The application starts its companion detached, in a session of its own,
// and just after its window is mapped: the companion's start would land on
// the next program's figures. As the subreaper of everything spawned here,
// this process inherits such orphans and waits until they are gone (or ends
// them) before the next start.
void awaitLeftovers()
{
    const double start = nowMs();
    while (nowMs() - start < 5000) {
        const pid_t pid = waitpid(-1, nullptr, WNOHANG);
        if (pid < 0 && errno == ECHILD)
            return;
        if (pid == 0)
            usleep(2000);
    }
    for (const auto &entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        FILE *status = std::fopen((entry.path() / "stat").c_str(), "r");
        if (!status)
            continue;
        int pid = 0;
        int parent = 0;
        if (std::fscanf(status, "%d %*s %*c %d", &pid, &parent) == 2 && parent == getpid())
            kill(pid, SIGKILL);
        std::fclose(status);
    }
    while (waitpid(-1, nullptr, 0) > 0) {
    }
}

// Milliseconds from spawning argv until a top-level window is mapped, or -1
// when none is within 20 seconds.
double timeToMap(xcb_connection_t *x, const std::vector<std::string> &argv,
                 const std::vector<std::string> &env)
{
    while (xcb_generic_event_t *stale = xcb_poll_for_event(x))
        std::free(stale);
    const double start = nowMs();
    const pid_t pid = spawn(argv, env);
    double mapped = -1;
    pollfd fd{xcb_get_file_descriptor(x), POLLIN, 0};
    while (mapped < 0 && nowMs() - start < 20000) {
        xcb_generic_event_t *event = xcb_poll_for_event(x);
        if (!event) {
            poll(&fd, 1, 100);
            continue;
        }
        if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY) {
            const auto *map = reinterpret_cast<xcb_map_notify_event_t *>(event);
            if (!map->override_redirect)
                mapped = nowMs() - start;
        }
        std::free(event);
    }
    endGroup(pid);
    awaitLeftovers();
    return mapped;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "--bare-window") == 0)
        return bareWindow(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;

    prctl(PR_SET_CHILD_SUBREAPER, 1);
    xcb_connection_t *x = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(x)) {
        std::fprintf(stderr, "needs an X display: xvfb-run -a %s\n", argv[0]);
        return 2;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(x, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(x);

    char folder[] = "/tmp/zelmor-bench-startup-XXXXXX";
    if (!mkdtemp(folder)) {
        std::perror("mkdtemp");
        return 1;
    }
    const std::string root_folder(folder);
    // A desktop's runtime folder is in memory (/run/user/<uid>); the lock
    // file of one instance per user is synced to it, which on a disk costs
    // milliseconds no user pays.
    char memoryFolder[] = "/dev/shm/zelmor-bench-runtime-XXXXXX";
    const std::string runtime =
        mkdtemp(memoryFolder) ? std::string(memoryFolder) : makeFolder(root_folder + "/runtime");
    const std::vector<std::string> env = environmentFor(root_folder, runtime);
    const std::string bundle = argc > 2 ? argv[2] : ZELMOR_BUILD_BUNDLE_DIR;
    // The first launch is over: no sheet, the ordinary start.
    {
        const pid_t pid = spawn({bundle + "/Contents/Helpers/defaults", "write", ZELMOR_BUNDLE_ID,
                                 "First Launch", "-int", "0"},
                                env);
        waitpid(pid, nullptr, 0);
    }
    const std::vector<std::string> app{bundle + "/Contents/MacOS/" ZELMOR_EXECUTABLE};
    const std::vector<std::string> bare{argv[0], "--bare-window"};

    std::vector<double> appTimes;
    std::vector<double> bareTimes;
    for (int round = -1; round < rounds; ++round) {
        const double b = timeToMap(x, bare, env);
        const double a = timeToMap(x, app, env);
        if (a < 0 || b < 0) {
            std::fprintf(stderr, "a window was not mapped within 20 s\n");
            return 1;
        }
        if (round >= 0) {
            bareTimes.push_back(b);
            appTimes.push_back(a);
        }
    }
    xcb_disconnect(x);
    std::filesystem::remove_all(root_folder);
    std::filesystem::remove_all(runtime);

    const auto row = [](const char *name, const std::vector<double> &t) {
        std::printf("%-28s %8.1f %8.1f %8.1f\n", name, median(t),
                    *std::min_element(t.begin(), t.end()), *std::max_element(t.begin(), t.end()));
    };
    std::printf("exec until mapped, %d rounds (ms)  median      min      max\n", rounds);
    row("bare Qt Widgets window", bareTimes);
    row("ZELMOR Helper", appTimes);
    std::printf("ratio (medians)              %8.2f\n", median(appTimes) / median(bareTimes));
    return 0;
}
