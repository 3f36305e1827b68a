#pragma once
// Hears any signal of any object and hands over its name and arguments as QVariants,
// so that one piece of code can show every signal of the module and the platform
// without a slot written for each. Arguments of a type the meta-type system doesn't
// know come through as invalid QVariants.

#include <QByteArrayList>
#include <QMetaMethod>
#include <QObject>
#include <QVariantList>
#include <QVector>

#include <functional>

namespace host {

class SignalTap : public QObject
{
public:
    using Handler = std::function<void(const QMetaMethod& signal, const QVariantList& args)>;

    // Listens to the named signals of `source` (by name, without arguments), or to all
    // its signals but those of QObject itself when `names` is empty.
    SignalTap(QObject* source, const QByteArrayList& names, Handler handler, QObject* parent = nullptr);

    int tappedCount() const { return m_signals.size(); }

    // Each tapped signal arrives as a call of a method index past QObject's own; this
    // is where the call is taken apart. The class has no moc'ed methods of its own.
    int qt_metacall(QMetaObject::Call call, int id, void** args) override;

private:
    QVector<QMetaMethod> m_signals;
    Handler m_handler;
};

} // namespace host
