#include "companions/statusbar/StatusbarOptions.h"

#include "BuildConfig.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <algorithm>

StatusbarOptions parseStatusbarArguments(const QStringList &arguments, CommandLine::Outcome *outcome)
{
    QCommandLineParser parser;
    CommandLine::prepare(parser, QCoreApplication::translate(
                                     "StatusbarCompanion",
                                     "Shows the operation ZELMOR Helper is running in the system tray."));
    const QCommandLineOption runMode(
        QStringLiteral("runMode"),
        QCoreApplication::translate("StatusbarCompanion",
                                    "How it was started; \"autoLaunched\" (at login) skips the greeting."),
        QStringLiteral("mode"));
    const QCommandLineOption noTray(
        QStringLiteral("no-tray"),
        QCoreApplication::translate("StatusbarCompanion",
                                    "Run without a tray icon (sessions without a tray)."));
    parser.addOption(runMode);
    parser.addOption(noTray);

    StatusbarOptions options;
    const CommandLine::Outcome result =
        CommandLine::evaluate(parser, arguments, QStringLiteral("ZELMOR Helper Statusbar App"),
                              QStringLiteral(ZELMOR_VERSION));
    if (outcome)
        *outcome = result;
    if (result.exitCode)
        return options;
    options.headless = parser.isSet(noTray);
    options.autoLaunched = parser.value(runMode) == QLatin1String("autoLaunched");
    return options;
}

QString mainBundleForCompanion(const QString &companionBundle)
{
    return QDir::cleanPath(companionBundle + QStringLiteral("/../../../.."));
}

QString statusSummary(const CompanionChannel::Status &status)
{
    if (status.problem)
        return QCoreApplication::translate("StatusbarCompanion", "%1 ended with a problem: %2")
            .arg(status.operation, status.label);
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
    if (!status->label.isEmpty() && !status->problem)
        tip += QLatin1Char('\n') + status->label;
    return tip;
}
