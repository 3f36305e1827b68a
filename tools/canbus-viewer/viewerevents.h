#pragma once
// The viewer's end of the host: what the module does goes into the viewer's state,
// and the window hears that something changed. The port's fate and the host's
// problems are also printed, a line each, for whoever started the viewer from a
// terminal or a script.

#include <QObject>
#include <QTextStream>

#include "hostevents.h"
#include "viewerstate.h"

namespace viewer {

class ViewerEvents : public QObject, public host::HostEvents
{
    Q_OBJECT
public:
    explicit ViewerEvents(ViewerState& state, QObject* parent = nullptr);

    void recordState(const QString& name, const host::Fields& now) override;
    void record(const QString& name, const host::Fields& changed) override;
    void signal(const QString& source, const QString& name, const QList<QByteArray>& parameterNames,
                const QVariantList& args) override;
    void key(int key, bool pressed) override;
    void deviceCall(const QByteArray& device, unsigned long request, unsigned long arg) override;
    void command(const QString& line) override;
    void trace(const QString& category, const QString& text) override;
    void info(const QString& text) override;
    void problem(const QString& text) override;

signals:
    void changed();
    // A line worth a glance in the status bar.
    void status(const QString& text);

private:
    void print(const QString& kind, const QString& text);
    void notePort(PortState before);

    ViewerState& m_state;
    QTextStream m_out;
};

} // namespace viewer
