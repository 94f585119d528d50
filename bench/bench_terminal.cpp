// Streams output of several shapes through the real runner and console, with
// "log" on, and prints for each how the window keeps up, next to the same
// stream shown by xterm on the same display:
//
//   xvfb-run -a build/bench/bench_terminal        (needs X11; xterm optional)
//   build/bench/bench_terminal <shape> [MB]       one shape (0-4), in this process
//
// Each shape runs in a process of its own, so its peak memory is its own.
// Figures: seconds until the child has ended and the console has shown
// everything, less the same for an empty stream (starting bash and cat and
// seeing them end), MB/s, the longest gap between two ticks of a 1 ms timer
// while it streams (what a user feels as a freeze) and the thread's own CPU
// time within that gap (the part that is ours on a busy machine), peak
// memory (VmHWM), and the seconds `xterm -e cat` takes for the same file,
// less its own start and end, as a ratio of throughputs. A stream that takes
// well under a second is timed several times on both sides and the fastest
// run counts, as a single run that short mostly measures the machine's mood.

#include "platform/MemoryReuse.h"
#include "widgets/ConsoleView.h"
#include "widgets/SliceBudget.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

struct Shape
{
    const char *name;
    qint64 bytes;
    // Appends the next piece of the stream (i counts pieces).
    std::function<void(QByteArray &, qint64 i, qint64 written, qint64 total)> piece;
};

const QList<Shape> &shapes()
{
    static const QList<Shape> list = {
        {"make-like lines", 50 << 20,
         [](QByteArray &out, qint64 i, qint64 written, qint64 total) {
             out += QStringLiteral("[%1%] Building CXX object src/core/CMakeFiles/zelmor_core.dir/"
                                   "hle/service/module_%2/implementation_%3.cpp.o\n")
                        .arg(written * 100 / total, 3)
                        .arg(i % 97)
                        .arg(i)
                        .toLatin1();
             if (i % 50 == 0)
                 out += "In file included from /src/core/hle/kernel.h:12,\n"
                        "warning: unused parameter 'context' [-Wunused-parameter]\n";
         }},
        {"git-like CR progress", 20 << 20,
         [](QByteArray &out, qint64 i, qint64, qint64) {
             // Phases of 5000 updates, each ending with its final figures.
             const qint64 update = i % 5000;
             const char *phase = (i / 5000) % 2 ? "Resolving deltas" : "Receiving objects";
             if (update == 4999) {
                 out += QStringLiteral("%1: 100% (5000/5000), 29.00 MiB | 4.20 MiB/s, done.\n")
                            .arg(phase)
                            .toLatin1();
             } else {
                 out += QStringLiteral("%1: %2% (%3/5000), %4.%5 MiB | 4.20 MiB/s   \r")
                            .arg(phase)
                            .arg(update / 50, 3)
                            .arg(update)
                            .arg(update / 170)
                            .arg(update % 100, 2, 10, QLatin1Char('0'))
                            .toLatin1();
             }
         }},
        {"1 MB without a line feed", 1 << 20,
         [](QByteArray &out, qint64, qint64, qint64) { out += QByteArray(4000, 'x') + ' '; }},
        {"20 MB without a line feed", 20 << 20,
         [](QByteArray &out, qint64, qint64, qint64) { out += QByteArray(4000, 'x') + ' '; }},
        {"colour compiler output", 20 << 20,
         [](QByteArray &out, qint64 i, qint64, qint64) {
             out += QStringLiteral("\x1b[01m\x1b[K../src/video/renderer_%1.cpp:%2:17:\x1b[m\x1b[K "
                                   "\x1b[01;35m\x1b[Kwarning: \x1b[m\x1b[Kunused variable "
                                   "'\x1b[01m\x1b[Kframe_%1\x1b[m\x1b[K' [\x1b[01;35m\x1b[K"
                                   "-Wunused-variable\x1b[m\x1b[K]\n"
                                   "  %2 |     int \x1b[01;35m\x1b[Kframe_%1\x1b[m\x1b[K = 0;\n"
                                   "     |         \x1b[01;35m\x1b[K^~~~~~~~\x1b[m\x1b[K\n")
                        .arg(i % 89)
                        .arg(i % 2000 + 1)
                        .toLatin1();
         }},
    };
    return list;
}

bool writeShape(const Shape &shape, const QString &path)
{
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    QByteArray block;
    qint64 written = 0;
    for (qint64 i = 0; written + block.size() < shape.bytes; ++i) {
        shape.piece(block, i, written + block.size(), shape.bytes);
        if (block.size() > (1 << 20)) {
            written += out.write(block);
            block.clear();
        }
    }
    out.write(block);
    return true;
}

QString memoryLine(const char *key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return QStringLiteral("?");
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return QString::fromLatin1(line.mid(qstrlen(key)).simplified());
    }
    return QStringLiteral("?");
}

// Seconds xterm needs to show the file, less its own start and end.
double xtermSeconds(const QString &file, int repeats)
{
    const QString xterm = QStandardPaths::findExecutable(QStringLiteral("xterm"));
    if (xterm.isEmpty() || qEnvironmentVariableIsEmpty("DISPLAY"))
        return -1;
    auto timed = [&](const QString &command) {
        QElapsedTimer clock;
        clock.start();
        QProcess process;
        process.start(xterm, {"-geometry", "120x40", "-e", "/bin/sh", "-c", command});
        process.waitForFinished(-1);
        return clock.nsecsElapsed() / 1e9;
    };
    double best = -1;
    for (int run = 0; run < repeats; ++run) {
        const double idle = timed(QStringLiteral("true"));
        const double seconds = timed("cat '" + file + "'") - idle;
        best = best < 0 ? seconds : std::min(best, seconds);
    }
    return best;
}

// Runs one shape through the window in this process and prints one row.
int runShape(int index, qint64 megabytes)
{
    keepFreedMemoryForReuse(); // as the application does
    Shape shape = shapes().at(index);
    if (megabytes > 0)
        shape.bytes = megabytes << 20;
    QTemporaryDir dir;
    const QString file = dir.path() + QStringLiteral("/stream");
    const QString empty = dir.path() + QStringLiteral("/empty");
    if (!writeShape(shape, file) || !QFile(empty).open(QIODevice::WriteOnly))
        return 1;
    const qint64 size = QFileInfo(file).size();

    MainWindow window;
    AppController controller(&window);
    controller.awakeFromNib();
    window.resize(900, 600);
    window.show();
    controller.selectItemWithTag(AppController::TagCompile);
    controller.logSwitch = 1;
    auto stream = [&](const QString &path) {
        // Past the last compile stage, so the end of the stream ends the
        // operation instead of starting the next stage.
        controller.now = 2;
        controller.runUnixTask("cat '" + path + "'", dir.path());
    };

    qint64 longestStallNs = 0;
    qint64 longestCpuStallNs = 0;
    qint64 lastCpuNs = 0;
    QElapsedTimer sinceTick;
    QTimer probe;
    probe.setInterval(1);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        longestStallNs = qMax(longestStallNs, sinceTick.nsecsElapsed());
        sinceTick.restart();
        const qint64 cpu = SliceBudget::threadCpuNs();
        longestCpuStallNs = qMax(longestCpuStallNs, cpu - lastCpuNs);
        lastCpuNs = cpu;
    });

    QElapsedTimer clock;
    QTimer done;
    done.setInterval(1);
    double idleSeconds = -1;
    double seconds = -1;
    const int repeats = size < (4 << 20) ? 5 : 1;
    int runs = 0;
    QObject::connect(&done, &QTimer::timeout, [&] {
        if (controller.unixTask || controller.outputField->hasPending())
            return;
        if (idleSeconds < 0) {
            // The empty stream first, then the real one from a fresh start.
            idleSeconds = clock.nsecsElapsed() / 1e9;
            QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
            if (clearRefs.open(QIODevice::WriteOnly))
                clearRefs.write("5"); // the peak starts afresh from here
            longestStallNs = longestCpuStallNs = 0;
        } else {
            const double run = std::max(1e-3, clock.nsecsElapsed() / 1e9 - idleSeconds);
            seconds = seconds < 0 ? run : std::min(seconds, run);
        }
        if (runs++ < repeats) {
            clock.start();
            sinceTick.start();
            lastCpuNs = SliceBudget::threadCpuNs();
            stream(file);
            return;
        }
        probe.stop();
        done.stop();
        const double megabytes = size / 1048576.0;
        const double xterm = xtermSeconds(file, repeats);
        const QString ratio = xterm > 0 ? QString::number(xterm / seconds, 'f', 1) + "x"
                                        : QStringLiteral("n/a");
        std::printf("%-26s %6.1f MB %8.2f s %8.1f MB/s %6.1f ms %6.1f ms %12s %9s %8s\n",
                    shape.name, megabytes, seconds, megabytes / seconds, longestStallNs / 1e6,
                    longestCpuStallNs / 1e6,
                    qPrintable(memoryLine("VmHWM:")),
                    xterm > 0 ? qPrintable(QString::number(xterm, 'f', 2) + " s") : "n/a",
                    qPrintable(ratio));
        std::fflush(stdout);
        QCoreApplication::quit();
    });

    QTimer::singleShot(200, [&] {
        clock.start();
        sinceTick.start();
        lastCpuNs = SliceBudget::threadCpuNs();
        probe.start();
        done.start();
        stream(empty);
    });
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1) {
        QApplication app(argc, argv);
        return runShape(QByteArray(argv[1]).toInt(), argc > 2 ? QByteArray(argv[2]).toLongLong() : 0);
    }
    QCoreApplication app(argc, argv);
    std::printf("platform: %s\n", qEnvironmentVariableIsEmpty("DISPLAY")
                                      ? "no DISPLAY (offscreen?), no xterm comparison"
                                      : qPrintable("X11 display " + qEnvironmentVariable("DISPLAY")));
    std::printf("%-26s %9s %10s %13s %9s %9s %12s %9s %8s\n", "stream", "size", "absorbed",
                "throughput", "stall", "(cpu)", "peak memory", "xterm", "vs xterm");
    std::fflush(stdout);
    for (int i = 0; i < shapes().size(); ++i) {
        QProcess one;
        one.setProcessChannelMode(QProcess::ForwardedChannels);
        one.start(QCoreApplication::applicationFilePath(), {QString::number(i)});
        one.waitForFinished(-1);
    }
    return 0;
}
