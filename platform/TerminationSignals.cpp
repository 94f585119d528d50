#include "platform/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// [0] is written by the handler, [1] read by the event loop.
int signalPair[2] = {-1, -1};

// Only async-signal-safe calls here: one write of one byte.
void onSignal(int number)
{
    const int saved = errno;
    const char byte = static_cast<char>(number);
    [[maybe_unused]] const ssize_t written = ::write(signalPair[0], &byte, 1);
    errno = saved;
}

} // namespace

void quitOnTerminationSignals()
{
    if (signalPair[0] != -1)
        return;
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPair) != 0) {
        signalPair[0] = signalPair[1] = -1;
        return;
    }
    for (const int fd : signalPair) {
        ::fcntl(fd, F_SETFD, FD_CLOEXEC);
        // A burst of signals must never block the handler.
        ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | O_NONBLOCK);
    }
    auto *notifier =
        new QSocketNotifier(signalPair[1], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [] {
        char bytes[16];
        while (::read(signalPair[1], bytes, sizeof bytes) > 0) {
        }
        // exit(), not quit(): quit() first asks every window to close and
        // gives up when one stays open (a sheet), but a termination signal
        // is not a question. aboutToQuit is emitted either way.
        QCoreApplication::exit(0);
    });

    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(number, &action, nullptr);
}
