#pragma once
// The command line that canbus-host and canbus-viewer share: their exit codes, the
// options both take, and how a wrong word is answered, in the tool's own name.

#include <QCommandLineParser>
#include <QString>

namespace host {

class Host;

enum ExitCode { ExitOk = 0, ExitFailure = 1, ExitUsage = 2 };

struct CommonOptions
{
    QString plugin;
    int protocol = 0;   // 0: the stored one, else the default
};

// The name and version that --version and the error messages give.
void nameTool(const QString& tool);
// The message and a pointer to --help on standard error, then exit with ExitUsage.
[[noreturn]] void usageError(const QString& text);
// The message on standard error; returns ExitFailure for main to return.
int failure(const QString& text);

// --plugin, --protocol (`protocolHelp`) and --port, the tool's own `options`, then
// --duration, which the tool reads last. --help and --version are answered here and end the run; a stray argument
// or a wrong value is a usage error.
void parseCommandLine(QCommandLineParser& parser, CommonOptions& o, const char* description,
                      const QString& defaultPlugin, const QString& protocolHelp,
                      const QList<QCommandLineOption>& options);
// A time above 0 and at most a week; 0 when the option isn't given.
double secondsAsked(const QCommandLineParser& parser, const QString& option);

// Starts the module; a protocol the catalogue lacks is a usage error, another failure
// gives false and says why in `error`.
bool startModule(Host& host, QString* error);

} // namespace host
