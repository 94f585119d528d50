#include "workflow/ProcessGroup.h"

#include <csignal>
#include <unistd.h>

namespace ProcessGroup {

void becomeLeader()
{
    ::setsid();
}

bool signalGroup(qint64 pgid, int signal)
{
    // Never 0 or 1: kill(0, …) and kill(-1, …) reach far more than a child.
    if (pgid <= 1)
        return false;
    return ::kill(-static_cast<pid_t>(pgid), signal) == 0;
}

} // namespace ProcessGroup
