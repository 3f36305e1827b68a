#pragma once
// "field=value" checks of a record against its field description (recordfields.h):
//   compareFields(air, {"tempLeft=22", "seatHotLeft=2"});
// Integers print in decimal, texts as they are, bytes in hex. A name the record does
// not have reads "name: no such field", so the comparison fails naming it.

#include <QStringList>
#include <QtTest>

#include "recordfields.h"

QString fieldText(const QVariant& value);

template <typename Record>
QStringList fieldValues(const Record& record, const QStringList& expected)
{
    QStringList actual;
    for (const QString& item : expected) {
        const QString name = item.section(QLatin1Char('='), 0, 0);
        QVariant value;
        actual.append(canbus::readRecordField(record, name, &value)
                          ? name + QLatin1Char('=') + fieldText(value)
                          : name + QLatin1String(": no such field"));
    }
    return actual;
}

// Compares in place: compareFields(air, {"tempLeft=22"}).
template <typename Record>
void compareFields(const Record& record, const QStringList& expected)
{
    QCOMPARE(fieldValues(record, expected), expected);
}
