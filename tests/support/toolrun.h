#pragma once
// The tools as a user runs them, from a suite: started beside the suite's build, under
// the cross build's emulator where there is one, with their output kept.

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace toolrun {

constexpr int kRunTimeoutMs = 60000;

// The built tool `name` (tools/<name>/<name> in the build tree).
QString toolPath(const char* name);

// A tool's run to its end; the exit code is -1 when it didn't end by itself.
struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

// A QProcess that starts its child with a plain fork. QProcess itself clones with a
// pidfd where the kernel has one; qemu's user-mode emulation, which runs the suites
// in a cross build, passes Qt's check for that but refuses the clone, and the start
// fails. With a subclass Qt falls back to fork(), which works natively and emulated.
class ToolProcess : public QProcess
{
protected:
    void setupChildProcess() override {}
};

// Starts a tool. In a cross build the suite itself runs under an emulator, which does
// not follow it into the programs it starts: they are started under it too.
void startTool(QProcess& p, const QString& program, const QStringList& args);

Run run(const char* tool, const QStringList& args, const QByteArray& input = QByteArray());

// A simulator running in the background, from the line that names its port on.
class Sim
{
public:
    explicit Sim(const char* tool = "canbox-sim") : m_tool(tool) {}
    ~Sim() { output(); }

    bool start(const QStringList& args);
    QString port() const { return m_port; }
    // Everything it printed; stops it first so that nothing is missing.
    QString output();

private:
    const char* m_tool;
    ToolProcess m_process;
    QString m_port;
    QString m_output;
};

// The JSON objects of a tool's --json output whose "event" is `event`.
QList<QJsonObject> events(const QString& output, const QString& event);

} // namespace toolrun
