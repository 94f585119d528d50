#include "workflow/ProcessGroup.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace ProcessGroup {

void becomeLeader()
{
    ::setpgid(0, 0);
}

void adopt(qint64 pid)
{
    if (pid > 0)
        ::setpgid(static_cast<pid_t>(pid), static_cast<pid_t>(pid));
}

bool signalGroup(qint64 pgid, int signal)
{
    // Never 0 or 1: kill(0, …) and kill(-1, …) reach far more than a child.
    if (pgid <= 1)
        return false;
    return ::kill(-static_cast<pid_t>(pgid), signal) == 0;
}

bool isAlive(qint64 pgid)
{
    if (pgid <= 1)
        return false;
    // EPERM still means someone is there.
    return ::kill(-static_cast<pid_t>(pgid), 0) == 0 || errno == EPERM;
}

} // namespace ProcessGroup
