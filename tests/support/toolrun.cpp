#include "toolrun.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonDocument>
#include <QRegularExpression>

namespace toolrun {

QString toolPath(const char* name)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../tools/%1/%1").arg(QLatin1String(name)));
}

void startTool(QProcess& p, const QString& program, const QStringList& args)
{
    const QStringList emulator =
        QString::fromLocal8Bit(qgetenv("CANBUS_TOOL_EMULATOR")).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (emulator.isEmpty())
        p.start(program, args);
    else
        p.start(emulator.first(), emulator.mid(1) + QStringList{program} + args);
}

Run run(const char* tool, const QStringList& args, const QByteArray& input)
{
    ToolProcess p;
    startTool(p, toolPath(tool), args);
    p.write(input);
    p.closeWriteChannel();
    const bool ended = p.waitForFinished(kRunTimeoutMs) && p.exitStatus() == QProcess::NormalExit;
    return {ended ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

bool Sim::start(const QStringList& args)
{
    static const QRegularExpression portLine(QStringLiteral("^(?:canbox-sim: (?:pty|device)|MCU simulator on) (.+)$"));
    startTool(m_process, toolPath(m_tool), args);
    while (m_process.canReadLine() || m_process.waitForReadyRead(kRunTimeoutMs)) {
        while (m_process.canReadLine()) {
            const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
            m_output += line + QLatin1Char('\n');
            const QRegularExpressionMatch match = portLine.match(line);
            if (match.hasMatch()) {
                m_port = match.captured(1);
                return true;
            }
        }
    }
    return false;
}

QString Sim::output()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(10000))
            m_process.kill();
        m_process.waitForFinished(5000);
    }
    return m_output += QString::fromUtf8(m_process.readAllStandardOutput());
}

QList<QJsonObject> events(const QString& output, const QString& event)
{
    QList<QJsonObject> found;
    for (const QString& line : output.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QJsonObject o = QJsonDocument::fromJson(line.toUtf8()).object();
        if (o.value(QLatin1String("event")).toString() == event)
            found.append(o);
    }
    return found;
}

} // namespace toolrun
