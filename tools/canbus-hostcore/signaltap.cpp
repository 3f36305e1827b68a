#include "signaltap.h"

namespace host {

SignalTap::SignalTap(QObject* source, const QByteArrayList& names, Handler handler, QObject* parent)
    : QObject(parent), m_handler(std::move(handler))
{
    if (!source)
        return;
    const QMetaObject* meta = source->metaObject();
    const int firstOwn = QObject::staticMetaObject.methodCount();
    for (int i = firstOwn; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() != QMetaMethod::Signal)
            continue;
        if (!names.isEmpty() && !names.contains(method.name()))
            continue;
        // The receiving index is ours to number: QObject's method count plus the
        // position of the signal in m_signals.
        if (QMetaObject::connect(source, i, this, firstOwn + m_signals.size(), Qt::DirectConnection))
            m_signals.append(method);
    }
}

int SignalTap::qt_metacall(QMetaObject::Call call, int id, void** args)
{
    id = QObject::qt_metacall(call, id, args);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    if (id < m_signals.size()) {
        const QMetaMethod& signal = m_signals.at(id);
        QVariantList values;
        for (int i = 0; i < signal.parameterCount(); ++i) {
            const int type = signal.parameterType(i);
            if (type == QMetaType::QVariant)
                values.append(*static_cast<const QVariant*>(args[i + 1]));
            else if (type != QMetaType::UnknownType)
                values.append(QVariant(type, args[i + 1]));
            else
                values.append(QVariant());
        }
        m_handler(signal, values);
    }
    return id - m_signals.size();
}

} // namespace host
