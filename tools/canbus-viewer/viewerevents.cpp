#include "viewerevents.h"

#include <cstdio>

namespace viewer {

ViewerEvents::ViewerEvents(ViewerState& state, QObject* parent)
    : QObject(parent), m_state(state), m_out(stdout)
{
}

void ViewerEvents::print(const QString& kind, const QString& text)
{
    m_out << kind << ": " << text << '\n';
    m_out.flush();
}

void ViewerEvents::notePort(PortState before)
{
    if (m_state.port() == before)
        return;
    // The window shows the port's state all the time; a line says when it changed.
    print(QStringLiteral("port"), ViewerState::portText(m_state.port()));
}

void ViewerEvents::recordState(const QString& name, const host::Fields& now)
{
    const PortState before = m_state.port();
    m_state.applyRecord(name, now);
    notePort(before);
    emit changed();
}

// The whole record came with recordState().
void ViewerEvents::record(const QString&, const host::Fields&)
{
}

void ViewerEvents::signal(const QString& source, const QString& name, const QList<QByteArray>&,
                          const QVariantList& args)
{
    if (source == QLatin1String("TipDialog") && name == QLatin1String("messageShown") && !args.isEmpty()) {
        m_state.applyPrompt(args.first().toString());
        emit changed();
    } else if (source == QLatin1String("canbus") && name == QLatin1String("outdoorTemperatureChanged") && args.size() >= 2) {
        m_state.applyOutdoor(args.at(0).toString(), args.at(1).toInt());
        emit changed();
    }
}

void ViewerEvents::key(int key, bool pressed)
{
    m_state.applyKey(key, pressed);
    emit changed();
}

void ViewerEvents::deviceCall(const QByteArray&, unsigned long, unsigned long)
{
}

void ViewerEvents::command(const QString& line)
{
    print(QStringLiteral("command"), line);
}

void ViewerEvents::trace(const QString&, const QString&)
{
}

void ViewerEvents::info(const QString& text)
{
    print(QStringLiteral("info"), text);
}

void ViewerEvents::problem(const QString& text)
{
    const PortState before = m_state.port();
    if (m_state.applyProblem(text)) {
        notePort(before);
        emit changed();
        return;
    }
    print(QStringLiteral("error"), text);
    emit status(text);
}

} // namespace viewer
