#pragma once

#include <QtGlobal>

// Every child of the runner leads a process group of its own, so that Stop
// reaches what the shell started too (git's own children, the second command
// of a compound line), not only /bin/bash. POSIX; the group's id is the
// child's process id.
namespace ProcessGroup {

// Runs in the child between fork and exec (QProcess::setChildProcessModifier):
// only async-signal-safe calls.
void becomeLeader();

// The parent's half of the same move, for the moment before the child has
// made it itself; harmless once the child has run its program.
void adopt(qint64 pid);

// Sends signal to every process of the group; false when none is left.
bool signalGroup(qint64 pgid, int signal);

// Whether any process (a zombie not yet reaped included) is in the group.
bool isAlive(qint64 pgid);

} // namespace ProcessGroup
