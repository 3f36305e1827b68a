#include "recordcheck.h"

#include <QByteArray>

QString fieldText(const QVariant& value)
{
    if (value.userType() == QMetaType::QByteArray)
        return QString::fromLatin1(value.toByteArray().toHex());
    return value.toString();
}
