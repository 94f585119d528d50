#pragma once

#include <QByteArray>
#include <QString>

// Starting the status-bar companion at the user's login. The companion's own
// bundle names the agent (its identifier) and the program (its executable);
// the agent is one file per user that the desktop's login service reads:
//   macOS: ~/Library/LaunchAgents/<identifier>.plist (launch agent)
//   other: $XDG_CONFIG_HOME/autostart/<identifier>.desktop (autostart entry)
// The file is the only state: nothing records elsewhere whether it exists.
namespace LoginAgent {

// The folder the login service reads. It is never created here: a user
// without it gets no agent, silently.
QString agentsFolder();
// The agent file for the companion bundle inside the running application's
// bundle; empty when the companion cannot be read.
QString agentFilePath();
// Whether anything (a file, or even a folder) can be reached at the agent
// file's path; what the preferences check box shows.
bool isInstalled();

// Writes the agent file unless an entry other than a folder already stands
// there; an existing file is kept whatever it holds. Failures are ignored.
void install();
// Removes the agent file; a missing file or a failed removal is ignored.
void uninstall();

// The launch agent property list: Label, ProgramArguments (the executable,
// "-runMode", "autoLaunched") and RunAtLoad, in that order.
QByteArray launchAgentPlist(const QString &label, const QString &executable);
// The autostart entry starting `executable -runMode autoLaunched`.
QByteArray autostartEntry(const QString &name, const QString &executable);
// One argument of a Desktop Entry "Exec" line: quoted when it holds a
// reserved character, "%" doubled, then escaped as a string value.
QString desktopExecArgument(const QString &argument);

} // namespace LoginAgent
