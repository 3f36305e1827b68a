#pragma once
// The records' fields read by name. Each shared record (and any DataNNInfo that opts in)
// is a Q_GADGET whose Q_PROPERTY list is the one description of its fields: the host's
// views, the tests' "field=value" checks and the field tools all read it here, never
// from a list of their own.
//
// Names are flat: a nested record (the seat and tyre groups of AirData) is a pointer
// property whose own fields are listed under their own names, which the records keep
// distinct. A list field reads one element as "name[i]", or "name[i][j]" for a table.
// Fields a panel draws are DESIGNABLE; bookkeeping (raw bytes, spare slots, the record's
// id) is DESIGNABLE false and read only when asked for.
//
// Everything here is inline and reaches a record only through its QMetaObject, so a host
// that holds none of the module's code reads the records with the meta-objects the
// plug-in registered (metaObjectFor).

#include <QMetaObject>
#include <QMetaProperty>
#include <QMetaType>
#include <QPair>
#include <QString>
#include <QVariant>
#include <QVector>

namespace canbus {

using RecordFields = QVector<QPair<QString, QVariant>>;

enum class FieldSet { Shown, All };

namespace detail {

inline QVariant normalised(const QVariant& value)
{
    // Every integer travels as a qlonglong: a quint8 would otherwise be a character.
    switch (value.userType()) {
    case QMetaType::Char: case QMetaType::SChar: case QMetaType::UChar:
    case QMetaType::Short: case QMetaType::UShort: case QMetaType::Int:
    case QMetaType::UInt: case QMetaType::Long: case QMetaType::ULong:
    case QMetaType::LongLong: case QMetaType::ULongLong: case QMetaType::Bool:
        return QVariant(value.toLongLong());
    default:
        return value;
    }
}

// The record behind a pointer-to-gadget property, or null when the property is a value.
inline const QMetaObject* nestedRecord(const QMetaProperty& property, const QVariant& value,
                                       const void** record)
{
    const int type = property.userType();
    if (!(QMetaType::typeFlags(type) & QMetaType::PointerToGadget))
        return nullptr;
    *record = *static_cast<const void* const*>(value.constData());
    return *record ? QMetaType::metaObjectForType(type) : nullptr;
}

inline void collect(const QMetaObject& meta, const void* record, FieldSet set, RecordFields& out)
{
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty p = meta.property(i);
        if (set == FieldSet::Shown && !p.isDesignable())
            continue;
        const QVariant value = p.readOnGadget(record);
        const void* inner = nullptr;
        if (const QMetaObject* nested = nestedRecord(p, value, &inner))
            collect(*nested, inner, set, out);
        else
            out.append({QString::fromLatin1(p.name()), normalised(value)});
    }
}

// "name[i][j]" -> name and indices; false when the brackets are malformed.
inline bool splitIndices(const QString& path, QString* name, QVector<int>* indices)
{
    const int open = path.indexOf(QLatin1Char('['));
    *name = path.left(open);
    if (open < 0)
        return !name->isEmpty();
    QString rest = path.mid(open);
    while (!rest.isEmpty()) {
        const int close = rest.indexOf(QLatin1Char(']'));
        bool ok = false;
        const int index = close > 1 && rest.startsWith(QLatin1Char('[')) ? rest.mid(1, close - 1).toInt(&ok) : -1;
        if (!ok || index < 0)
            return false;
        indices->append(index);
        rest = rest.mid(close + 1);
    }
    return !name->isEmpty();
}

inline bool find(const QMetaObject& meta, const void* record, const QString& name, QVariant* out)
{
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty p = meta.property(i);
        const QVariant value = p.readOnGadget(record);
        const void* inner = nullptr;
        if (const QMetaObject* nested = nestedRecord(p, value, &inner)) {
            if (find(*nested, inner, name, out))
                return true;
        } else if (name == QLatin1String(p.name())) {
            *out = normalised(value);
            return true;
        }
    }
    return false;
}

} // namespace detail

// The fields of a record in the order it declares them.
inline RecordFields recordFields(const QMetaObject& meta, const void* record, FieldSet set = FieldSet::All)
{
    RecordFields out;
    if (record)
        detail::collect(meta, record, set, out);
    return out;
}

// One field by name ("tempLeft", "seatHotLeft", "tireWarning[0][3]"). False, and `out`
// untouched, when the record has no such field or the index lies outside the list.
inline bool readRecordField(const QMetaObject& meta, const void* record, const QString& path, QVariant* out)
{
    QString name;
    QVector<int> indices;
    QVariant value;
    if (!record || !detail::splitIndices(path, &name, &indices) || !detail::find(meta, record, name, &value))
        return false;
    for (int index : indices) {
        if (value.userType() != QMetaType::QVariantList)
            return false;
        const QVariantList list = value.toList();
        if (index >= list.size())
            return false;
        value = detail::normalised(list.at(index));
    }
    *out = value;
    return true;
}

template <typename Record>
RecordFields recordFields(const Record& record, FieldSet set = FieldSet::All)
{
    return recordFields(Record::staticMetaObject, &record, set);
}

template <typename Record>
bool readRecordField(const Record& record, const QString& path, QVariant* out)
{
    return readRecordField(Record::staticMetaObject, &record, path, out);
}

// The meta-object of a record type the module registered by name ("AirData"), for code
// that does not link the module; null when no such type is registered.
inline const QMetaObject* metaObjectFor(const char* typeName)
{
    const int type = QMetaType::type(typeName);
    return type == QMetaType::UnknownType ? nullptr : QMetaType::metaObjectForType(type);
}

// Helpers for a record's list properties: arrays as the QVariantList a property carries.
template <typename T, int N>
QVariantList fieldList(const T (&values)[N])
{
    QVariantList list;
    list.reserve(N);
    for (const T& v : values)
        list.append(qlonglong(v));
    return list;
}

template <typename T, int Rows, int Columns>
QVariantList fieldList(const T (&values)[Rows][Columns])
{
    QVariantList list;
    list.reserve(Rows);
    for (const auto& row : values)
        list.append(QVariant(fieldList(row)));
    return list;
}

} // namespace canbus
