#include "platform/CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <cstdio>

namespace {

// Options QGuiApplication and QApplication understand and remove from the
// arguments themselves; the first group takes a value.
const char *const QtValueOptions[] = {
    "platform", "platformpluginpath", "platformtheme", "plugin", "qmljsdebugger",
    "qwindowgeometry", "geometry", "qwindowicon", "icon", "qwindowtitle", "title",
    "session", "display", "name", "style", "stylesheet", "fontengine", "dialogs",
};
const char *const QtFlagOptions[] = {
    "reverse", "widgetcount", "nograb", "dograb", "testability", "visual", "ncols", "cmap",
};

QString programName(const QStringList &arguments)
{
    const QString name = arguments.isEmpty() ? QString() : QFileInfo(arguments.first()).fileName();
    return name.isEmpty() ? QStringLiteral("zelmor-helper") : name;
}

} // namespace

namespace CommandLine {

QStringList fromArgv(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

void prepare(QCommandLineParser &parser, const QString &description)
{
    parser.setApplicationDescription(description);
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    // Not addHelpOption(): its --help-all lists Qt's options, which needs the
    // application object this runs without.
    parser.addOption(QCommandLineOption(
        {QStringLiteral("?"), QStringLiteral("h"), QStringLiteral("help")},
        QCommandLineParser::tr("Displays help on commandline options.")));
    parser.addVersionOption();
    for (const char *name : QtValueOptions) {
        QCommandLineOption option(QString::fromLatin1(name));
        option.setValueName(QStringLiteral("value"));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
    for (const char *name : QtFlagOptions) {
        QCommandLineOption option(QString::fromLatin1(name));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
}

Outcome evaluate(QCommandLineParser &parser, const QStringList &arguments,
                 const QString &displayName, const QString &version)
{
    QStringList cleaned;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (i > 0 && arguments.at(i).startsWith(QLatin1String("-psn_")))
            continue;
        cleaned << arguments.at(i);
    }
    if (cleaned.isEmpty())
        cleaned << QString();

    const QString name = programName(cleaned);
    Outcome outcome;
    if (!parser.parse(cleaned)) {
        outcome.exitCode = 2;
        outcome.standardError = QStringLiteral("%1: %2\nTry '%1 --help' for the options it knows.\n")
                                    .arg(name, parser.errorText());
        return outcome;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        outcome.exitCode = 0;
        // Without an application object the parser cannot know the name.
        outcome.standardOutput =
            parser.helpText().replace(QLatin1String("<executable_name>"), name);
        return outcome;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        outcome.exitCode = 0;
        outcome.standardOutput = QStringLiteral("%1 %2\n").arg(displayName, version);
    }
    return outcome;
}

std::optional<int> report(const Outcome &outcome)
{
    if (!outcome.standardOutput.isEmpty()) {
        std::fputs(outcome.standardOutput.toLocal8Bit().constData(), stdout);
        std::fflush(stdout);
    }
    if (!outcome.standardError.isEmpty()) {
        std::fputs(outcome.standardError.toLocal8Bit().constData(), stderr);
        std::fflush(stderr);
    }
    return outcome.exitCode;
}

} // namespace CommandLine
