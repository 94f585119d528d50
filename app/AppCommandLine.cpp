#include "app/AppCommandLine.h"

#include "BuildConfig.h"
#include "platform/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>

std::optional<int> handleCommandLine(int argc, char *argv[])
{
    QCommandLineParser parser;
    CommandLine::prepare(parser, QCoreApplication::translate(
                                     "AppCommandLine",
                                     "Fetches, updates and compiles the sources of the ZELMOR emulator."));
    return CommandLine::report(CommandLine::evaluate(parser, CommandLine::fromArgv(argc, argv),
                                                     QStringLiteral("ZELMOR Helper"),
                                                     QStringLiteral(ZELMOR_VERSION)));
}
