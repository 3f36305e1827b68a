#pragma once
// The module's record signals shown as the fields of each record that changed since
// the record was last shown. The records are read through the facade's invokable
// getters, as any host that loaded the plug-in reads them, and their fields through
// the meta-objects the module registered with the records' pointer types, so that the
// same code serves a host of the plug-in and a program linked with the module.

#include <QHash>
#include <QMetaMethod>
#include <QObject>
#include <QString>

#include "hostevents.h"
#include "shownfields.h"

namespace host {

class RecordWatch
{
public:
    // Shows `signal` of `facade` if it is a record signal whose record could be read;
    // false for any other signal, which the caller shows its own way.
    bool show(QObject* facade, const QMetaMethod& signal, HostEvents& out);
    // The next report of each record shows all its present fields again.
    void forget() { m_last.clear(); }

private:
    QHash<QString, Fields> m_last;
};

} // namespace host
