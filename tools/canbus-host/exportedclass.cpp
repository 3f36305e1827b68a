#include "exportedclass.h"

#include <QByteArray>
#include <QLibrary>
#include <QMetaObject>

namespace host {

const QMetaObject* exportedMetaObject(QLibrary& library, const char* className)
{
    // The linker's name of `className::staticMetaObject` on this platform's C++ ABI,
    // the name a module linking the class would be resolved against.
    const QByteArray name(className);
    const QByteArray symbol = "_ZN" + QByteArray::number(name.size()) + name + "16staticMetaObjectE";
    auto* metaObject = reinterpret_cast<const QMetaObject*>(library.resolve(symbol.constData()));
    // A stray symbol of that name that isn't the class's own is not taken.
    if (!metaObject || qstrcmp(metaObject->className(), className) != 0)
        return nullptr;
    return metaObject;
}

} // namespace host
