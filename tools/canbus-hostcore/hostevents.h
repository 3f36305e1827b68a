#pragma once
// Where a host puts what the module does. canbus-host prints it (HostOutput); the
// viewer draws it. The host calls these from the event loop's thread only.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariantList>

#include "shownfields.h"

namespace host {

class HostEvents
{
public:
    virtual ~HostEvents() = default;

    // A record signal with the record's shown fields that changed since the last one.
    virtual void record(const QString& name, const Fields& changed) = 0;
    // The same record whole, its shown fields as they are now; comes just before
    // record(). For a sink that keeps the state rather than the changes.
    virtual void recordState(const QString& name, const Fields& now)
    {
        Q_UNUSED(name)
        Q_UNUSED(now)
    }
    // A signal of the module or of a platform stand-in, with its parameters' names.
    virtual void signal(const QString& source, const QString& name, const QList<QByteArray>& parameterNames,
                        const QVariantList& args) = 0;
    // A key the module injected: the virtual keyboard number and its direction.
    virtual void key(int key, bool pressed) = 0;
    virtual void deviceCall(const QByteArray& device, unsigned long request, unsigned long arg) = 0;
    // A command line the host is about to run.
    virtual void command(const QString& line) = 0;
    // A debug line of the module's link or manager, when tracing.
    virtual void trace(const QString& category, const QString& text) = 0;
    virtual void info(const QString& text) = 0;
    // Problems while running, the module's warnings among them; they don't end the host.
    virtual void problem(const QString& text) = 0;
};

} // namespace host
