#include "recordwatch.h"

#include "airdata.h"
#include "carbodydata.h"
#include "cardoordata.h"
#include "radardata.h"

namespace host {

namespace {

struct RecordSource
{
    const char* signal;
    const char* name;
    const char* getter;
    const char* pointerType;
    // The record as new, to show what the first report changed; null where the host
    // can't make one (AirData's members are built by module code).
    Fields (*asNew)();
};

Fields shownFields(const char* pointerType, const void* record)
{
    const QMetaObject* meta = canbus::metaObjectFor(pointerType);
    return meta ? canbus::recordFields(*meta, record, canbus::FieldSet::Shown) : Fields();
}

bool readRecord(QObject* facade, const RecordSource& source, Fields& out)
{
    void* record = nullptr;
    if (!QMetaObject::invokeMethod(facade, source.getter, Qt::DirectConnection,
                                   QGenericReturnArgument(source.pointerType, &record))
        || !record)
        return false;
    out = shownFields(source.pointerType, record);
    return true;
}

template <typename Record>
Fields newRecordFields(const char* pointerType)
{
    const Record record;
    return shownFields(pointerType, &record);
}

const RecordSource kRecordSources[] = {
    {"airConditionerDataChanged", "air", "getAirData", "AirData*", nullptr},
    {"cardoorDataChanged", "doors", "getCardoorData", "CardoorData*",
     [] { return newRecordFields<CardoorData>("CardoorData*"); }},
    {"carbodyDataChanged", "body", "getCarbodyData", "CarbodyData*",
     [] { return newRecordFields<CarbodyData>("CarbodyData*"); }},
    {"radarDataChanged", "radar", "getRadarData", "RadarData*",
     [] { return newRecordFields<RadarData>("RadarData*"); }},
};

} // namespace

bool RecordWatch::show(QObject* facade, const QMetaMethod& signal, HostEvents& out)
{
    for (const RecordSource& r : kRecordSources) {
        Fields now;
        if (signal.name() != r.signal || !readRecord(facade, r, now))
            continue;
        const QString name = QLatin1String(r.name);
        if (!m_last.contains(name) && r.asNew)
            m_last.insert(name, r.asNew());
        const auto last = m_last.constFind(name);
        out.recordState(name, now);
        out.record(name, last == m_last.cend() ? presentFields(now) : changedFields(*last, now));
        m_last.insert(name, now);
        return true;
    }
    return false;
}

} // namespace host
