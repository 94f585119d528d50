#include "platform/Relaunch.h"

#include "platform/Bundle.h"

#include <QCoreApplication>
#include <QProcess>

#include <cstdio>

namespace {
std::function<void(float)> &handler()
{
    static std::function<void(float)> h;
    return h;
}
} // namespace

namespace Relaunch {

QString command(float delaySeconds, const QString &bundlePath)
{
    const QString delay = QString::asprintf("%f", static_cast<double>(delaySeconds));
#ifdef Q_OS_MACOS
    return QStringLiteral("sleep %1; open \"%2\"").arg(delay, bundlePath);
#else
    // No `open` here: start the bundle's program; outside a bundle, the
    // program that is running now.
    QString program = Bundle::executablePath(bundlePath);
    if (program.isEmpty())
        program = QCoreApplication::applicationFilePath();
    return QStringLiteral("sleep %1; exec \"%2\"").arg(delay, program);
#endif
}

void relaunchAfterDelay(float delaySeconds)
{
    if (handler()) {
        handler()(delaySeconds);
        return;
    }
    const QString line = command(delaySeconds, Bundle::mainBundlePath());
    if (!QProcess::startDetached(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line})) {
        // Not terminating keeps the user's only running instance alive.
        std::fprintf(stderr, "ZELMOR Helper: cannot start /bin/sh to relaunch\n");
        return;
    }
    QCoreApplication::quit();
}

void setHandler(std::function<void(float)> h)
{
    handler() = std::move(h);
}

} // namespace Relaunch
