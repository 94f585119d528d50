// Streams make-like output through the real runner and console, with "log"
// on and "Compile ZELMOR" selected, and prints how the window keeps up:
//
//   bench_console [megabytes]        (default 50; run with QT_QPA_PLATFORM=offscreen)
//
// Figures: seconds until the child has ended and the console has shown
// everything, the longest gap between two ticks of a 1 ms timer while it
// streams (what a user feels as a freeze), peak memory, and the time the same
// stream takes into `cat > /dev/null` for a ratio.

#include "widgets/ConsoleView.h"
#include "widgets/ProgressBar.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

// Writes about `bytes` of what a big parallel build prints.
bool writeMakeLikeLines(const QString &path, qint64 bytes)
{
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    QByteArray block;
    for (int i = 0; out.size() + block.size() < bytes; ++i) {
        const int percent = static_cast<int>((out.size() + block.size()) * 100 / bytes);
        block += QStringLiteral("[%1%] Building CXX object src/core/CMakeFiles/zelmor_core.dir/"
                                "hle/service/module_%2/implementation_%3.cpp.o\n")
                     .arg(percent, 3)
                     .arg(i % 97)
                     .arg(i)
                     .toLatin1();
        if (i % 50 == 0)
            block += "In file included from /src/core/hle/kernel.h:12,\n"
                     "warning: unused parameter 'context' [-Wunused-parameter]\n";
        if (block.size() > (1 << 20)) {
            out.write(block);
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
        return QStringLiteral("unknown");
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return QString::fromLatin1(line.mid(qstrlen(key)).simplified());
    }
    return QStringLiteral("unknown");
}

// Starts the peak memory figure afresh from what the process holds now.
void resetPeakMemory()
{
    QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
    if (clearRefs.open(QIODevice::WriteOnly))
        clearRefs.write("5");
}

double secondsOfCatToNull(const QString &file)
{
    QElapsedTimer clock;
    clock.start();
    QProcess cat;
    cat.start(QStringLiteral("/bin/bash"), {QStringLiteral("-c"), "cat '" + file + "' | cat > /dev/null"});
    cat.waitForFinished(-1);
    return clock.nsecsElapsed() / 1e9;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const qint64 megabytes = argc > 1 ? QByteArray(argv[1]).toLongLong() : 50;

    QTemporaryDir dir;
    const QString file = dir.path() + QStringLiteral("/make.log");
    if (!writeMakeLikeLines(file, megabytes * 1024 * 1024))
        return 1;
    const qint64 size = QFileInfo(file).size();

    MainWindow window;
    AppController controller(&window);
    controller.awakeFromNib();
    window.resize(900, 600);
    window.show();
    controller.selectItemWithTag(AppController::TagCompile);
    controller.logSwitch = 1;
    // Past the last compile stage, so the end of the stream ends the
    // operation instead of starting the next stage.
    controller.now = 2;

    qint64 longestStallNs = 0;
    QElapsedTimer sinceTick;
    QTimer probe;
    probe.setInterval(1);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        longestStallNs = qMax(longestStallNs, sinceTick.nsecsElapsed());
        sinceTick.restart();
    });

    QElapsedTimer clock;
    QString baseline;
    QTimer done;
    done.setInterval(1);
    QObject::connect(&done, &QTimer::timeout, [&] {
        if (controller.unixTask || controller.outputField->hasPending())
            return;
        const double seconds = clock.nsecsElapsed() / 1e9;
        probe.stop();
        done.stop();
        const double catSeconds = secondsOfCatToNull(file);
        std::printf("stream:            %.1f MB of make-like lines through bash -c cat\n",
                    size / 1048576.0);
        std::printf("absorbed in:       %.2f s (%.1f MB/s)\n", seconds, size / 1048576.0 / seconds);
        std::printf("longest stall:     %.1f ms\n", longestStallNs / 1e6);
        std::printf("peak memory:       %s (%s before the stream)\n",
                    qPrintable(memoryLine("VmHWM:")), qPrintable(baseline));
        std::printf("cat > /dev/null:   %.3f s (console takes %.0fx as long)\n", catSeconds,
                    seconds / catSeconds);
        std::printf("console lines:     %d (bar at %.0f of %.0f)\n",
                    controller.outputField->document()->blockCount(),
                    controller.progressbar->doubleValue(), controller.progressbar->maxValue());
        QCoreApplication::quit();
    });

    QTimer::singleShot(0, [&] {
        baseline = memoryLine("VmRSS:");
        resetPeakMemory();
        clock.start();
        sinceTick.start();
        probe.start();
        done.start();
        controller.runUnixTask("cat '" + file + "'", dir.path());
    });
    return app.exec();
}
