#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QCommandLineParser;

// The command line of every program of the bundle, read before the program
// makes its application object: --help and --version answer without a
// display, and a mistyped option stops the program before any window opens.
namespace CommandLine {

// What reading the command line decided.
struct Outcome
{
    // Set when the program ends here: 0 after --help or --version, 2 after
    // an option it does not know.
    std::optional<int> exitCode;
    QString standardOutput; // the help or version text
    QString standardError;  // what was wrong, and where to look
};

// argv as the program received it, its name first.
QStringList fromArgv(int argc, char *argv[]);

// Adds --help and --version, and Qt's own options (-platform, -style and the
// like, hidden from the help), which the application object takes out later.
// Words with one dash are options ("-runMode"), as in the platform's own
// launchers.
void prepare(QCommandLineParser &parser, const QString &description);

// Parses arguments (the program's name first) with a prepared parser. The
// platform's own additions (the "-psn_…" process serial number some macOS
// launchers pass) are dropped first. displayName and version make the
// --version line, "ZELMOR Helper 1.0.0".
Outcome evaluate(QCommandLineParser &parser, const QStringList &arguments,
                 const QString &displayName, const QString &version);

// Writes the outcome's texts to standard output and standard error; returns
// its exit code.
std::optional<int> report(const Outcome &outcome);

} // namespace CommandLine
