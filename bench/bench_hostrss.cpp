// Peak RSS of the canbus-host tool with one driver selected: runs it on a
// pseudo-terminal for --duration seconds and prints one JSON line with the child's
// ru_maxrss as wait4 reports it.
//
//   bench_hostrss --protocol 27 [--duration 2] [--host path]

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ptypair.h"

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({
        {QStringLiteral("host"), QStringLiteral("The canbus-host program."), QStringLiteral("path"),
         QStringLiteral(BENCH_HOST)},
        {QStringLiteral("protocol"), QStringLiteral("Protocol id."), QStringLiteral("id")},
        {QStringLiteral("duration"), QStringLiteral("Seconds the host runs."), QStringLiteral("s"),
         QStringLiteral("2")},
    });
    parser.process(app);
    const QByteArray host = QFile::encodeName(parser.value(QStringLiteral("host")));
    const QByteArray protocol = parser.value(QStringLiteral("protocol")).toLocal8Bit();
    const QByteArray duration = parser.value(QStringLiteral("duration")).toLocal8Bit();

    PtyPair box;
    if (!box.isOpen()) {
        std::printf("{\"error\": \"no pseudo-terminal\"}\n");
        return 1;
    }
    const QByteArray port = QFile::encodeName(box.slavePath());

    const pid_t pid = fork();
    if (pid < 0) {
        std::printf("{\"error\": \"fork failed\"}\n");
        return 1;
    }
    if (pid == 0) {
        const int null = ::open("/dev/null", O_RDWR);
        dup2(null, STDIN_FILENO);
        dup2(null, STDOUT_FILENO);
        dup2(null, STDERR_FILENO);
        execl(host.constData(), host.constData(), "--protocol", protocol.constData(), "--port",
              port.constData(), "--duration", duration.constData(), static_cast<char*>(nullptr));
        _exit(127);
    }

    // Read what the host writes towards the box, so that its port never blocks.
    int status = 0;
    rusage usage{};
    for (;;) {
        const pid_t done = wait4(pid, &status, WNOHANG, &usage);
        if (done == pid)
            break;
        if (done < 0) {
            std::printf("{\"error\": \"wait4 failed\"}\n");
            return 1;
        }
        pollfd p{box.masterFd(), POLLIN, 0};
        if (::poll(&p, 1, 20) > 0)
            box.readAvailable();
    }
    const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    std::printf("{\"protocol\": %s, \"maxrss_kib\": %ld, \"exit\": %d}\n", protocol.constData(),
                usage.ru_maxrss, exitCode);
    return exitCode == 0 ? 0 : 1;
}
