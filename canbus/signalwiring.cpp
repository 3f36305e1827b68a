#include "signalwiring.h"

#include <QMetaMethod>

namespace canbus {

bool connectIfPresent(QObject* sender, const char* signal, QObject* receiver, const char* method,
                      bool toSignal)
{
    if (!sender || !receiver)
        return false;
    const QMetaObject* sm = sender->metaObject();
    const QMetaObject* rm = receiver->metaObject();
    const int si = sm->indexOfSignal(QMetaObject::normalizedSignature(signal).constData());
    const QByteArray target = QMetaObject::normalizedSignature(method);
    const int ri = toSignal ? rm->indexOfSignal(target.constData())
                            : rm->indexOfSlot(target.constData());
    if (si < 0 || ri < 0)
        return false;
    return bool(QObject::connect(sender, sm->method(si), receiver, rm->method(ri)));
}

} // namespace canbus
