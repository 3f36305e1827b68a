#include "quitonsignal.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace canbox {

namespace {

int g_pipe[2] = {-1, -1};

// Only async-signal-safe work here: one byte into the pipe.
void onSignal(int)
{
    const char byte = 1;
    const ssize_t ignored = ::write(g_pipe[1], &byte, 1);
    (void)ignored;
}

} // namespace

bool quitOnTerminationSignals()
{
    if (g_pipe[0] >= 0)
        return true;
    if (::pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return false;
    auto* notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, QCoreApplication::instance(), [] {
        char buffer[16];
        while (::read(g_pipe[0], buffer, sizeof buffer) > 0) {
        }
        QCoreApplication::quit();
    });
    struct sigaction action{};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int sig : {SIGINT, SIGTERM, SIGHUP})
        ::sigaction(sig, &action, nullptr);
    return true;
}

} // namespace canbox
