#include "companions/statusbar/StatusbarOptions.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

StatusbarOptions parseStatusbarArguments(const QStringList &arguments)
{
    StatusbarOptions options;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (argument == QLatin1String("--no-tray")) {
            options.headless = true;
        } else if (argument == QLatin1String("-runMode") && i + 1 < arguments.size()) {
            options.autoLaunched = arguments.at(++i) == QLatin1String("autoLaunched");
        }
    }
    return options;
}

QString mainBundleForCompanion(const QString &companionBundle)
{
    return QDir::cleanPath(companionBundle + QStringLiteral("/../../../.."));
}

QString statusSummary(const CompanionChannel::Status &status)
{
    if (status.maximum <= 0)
        return status.operation;
    const qint64 percent = std::clamp(qint64(status.value) * 100 / status.maximum, qint64(0),
                                      qint64(100));
    return QCoreApplication::translate("StatusbarCompanion", "%1 — %2%")
        .arg(status.operation)
        .arg(percent);
}

QString statusToolTip(const CompanionChannel::Status *status)
{
    QString tip = QCoreApplication::translate("StatusbarCompanion", "ZELMOR Helper");
    if (!status)
        return tip;
    tip += QLatin1Char('\n') + statusSummary(*status);
    if (!status->label.isEmpty())
        tip += QLatin1Char('\n') + status->label;
    return tip;
}
