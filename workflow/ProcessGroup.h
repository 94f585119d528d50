#pragma once

#include <QtGlobal>

// Every child of the runner leads a process group of its own, so that Stop
// reaches what the shell started too (git's own children, the second command
// of a compound line), not only /bin/bash. POSIX; the group's id is the
// child's process id.
namespace ProcessGroup {

// Runs in the child between fork and exec (QProcess::setChildProcessModifier),
// so only async-signal-safe calls. A new session, not only a new group: a
// tool that asks on the terminal the application was started from (ssh's
// host-key question) then fails and says so, instead of being stopped for
// reading from a terminal it does not own, which would hang the operation.
void becomeLeader();

// Sends signal to every process of the group; false when there is no such
// group (it has ended, or the child has not yet made it).
bool signalGroup(qint64 pgid, int signal);

} // namespace ProcessGroup
