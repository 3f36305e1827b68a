#include "recordfields.h"

#include "airdata.h"
#include "carbodydata.h"
#include "cardoordata.h"
#include "radardata.h"

namespace host {

namespace {

// Numbers as plain integers (a quint8 would otherwise travel as a character) and
// texts as they are.
QVariant value(const QString& text) { return text; }
template <typename T>
QVariant value(T number) { return QVariant(qlonglong(number)); }

template <typename Record>
struct Field
{
    const char* name;
    QVariant (*read)(const Record&);
};

#define FIELD(Record, member) {#member, [](const Record& r) { return value(r.member); }}
#define SEAT(member) {#member, [](const AirData& r) { return value(r.seat.member); }}

const Field<AirData> kAirFields[] = {
    FIELD(AirData, airPower), FIELD(AirData, airOnOff), FIELD(AirData, airAC),
    FIELD(AirData, airAcMax), FIELD(AirData, airAuto), FIELD(AirData, airAutoSoft),
    FIELD(AirData, airAutoStrong), FIELD(AirData, airDual), FIELD(AirData, airSync),
    FIELD(AirData, airInnerLoop), FIELD(AirData, airOuterLoop), FIELD(AirData, airAutoLoop),
    FIELD(AirData, airEco), FIELD(AirData, airRearLock),
    FIELD(AirData, tempLeftVisible), FIELD(AirData, tempLeft), FIELD(AirData, tempLeftLow),
    FIELD(AirData, tempLeftHigh), FIELD(AirData, tempRightVisible), FIELD(AirData, tempRight),
    FIELD(AirData, tempRightLow), FIELD(AirData, tempRightHigh), FIELD(AirData, tempUnit),
    FIELD(AirData, tempRearVisible), FIELD(AirData, tempRear),
    FIELD(AirData, airDefrostFront), FIELD(AirData, airDefrostMax), FIELD(AirData, airDefrostRear),
    FIELD(AirData, airWindUpLeft), FIELD(AirData, airWindFrontLeft), FIELD(AirData, airWindDownLeft),
    FIELD(AirData, airWindSpeedLeft), FIELD(AirData, airWindUpRight), FIELD(AirData, airWindFrontRight),
    FIELD(AirData, airWindDownRight), FIELD(AirData, airWindSpeedRight),
    FIELD(AirData, outdoorTempValid), FIELD(AirData, outdoorTemp), FIELD(AirData, outdoorTempUnit),
    FIELD(AirData, airShowFlag), FIELD(AirData, airValid),
    SEAT(seatHotVisible), SEAT(seatHotLeft), SEAT(seatHotRight),
    SEAT(seatCoolVisible), SEAT(seatCoolLeft), SEAT(seatCoolRight),
};

const Field<CardoorData> kDoorFields[] = {
    FIELD(CardoorData, doorFrontLeft), FIELD(CardoorData, doorFrontRight),
    FIELD(CardoorData, doorRearLeft), FIELD(CardoorData, doorRearRight),
    FIELD(CardoorData, doorTrunk), FIELD(CardoorData, doorHood),
};

const Field<CarbodyData> kBodyFields[] = {
    FIELD(CarbodyData, vehicleSpeed), FIELD(CarbodyData, speedUnit),
    FIELD(CarbodyData, engineSpeed), FIELD(CarbodyData, odometer), FIELD(CarbodyData, odometerUnit),
    FIELD(CarbodyData, outdoorTempTenths), FIELD(CarbodyData, outdoorTempUnit),
    FIELD(CarbodyData, batteryVoltage), FIELD(CarbodyData, fuelConsumption),
    FIELD(CarbodyData, fuelConsumptionUnit), FIELD(CarbodyData, vehicleSpeed2),
    FIELD(CarbodyData, speed2Unit), FIELD(CarbodyData, bodyValue8),
    FIELD(CarbodyData, bodyFlag0), FIELD(CarbodyData, bodyFlag1), FIELD(CarbodyData, bodyFlag2),
    FIELD(CarbodyData, bodyFlag31), FIELD(CarbodyData, bodyFlag38), FIELD(CarbodyData, bodyByte26),
    FIELD(CarbodyData, bodyByte32), FIELD(CarbodyData, bodyWarning30),
    FIELD(CarbodyData, bodyWarning36), FIELD(CarbodyData, bodyWarning37),
};

const Field<RadarData> kRadarFields[] = {
    FIELD(RadarData, radarOn), FIELD(RadarData, radarLevels),
    FIELD(RadarData, radarFrontLeft), FIELD(RadarData, radarFrontLeftMid),
    FIELD(RadarData, radarFrontRightMid), FIELD(RadarData, radarFrontRight),
    FIELD(RadarData, radarRearLeft), FIELD(RadarData, radarRearLeftMid),
    FIELD(RadarData, radarRearRightMid), FIELD(RadarData, radarRearRight),
};

#undef FIELD
#undef SEAT

template <typename Record, std::size_t N>
Fields read(const Field<Record> (&table)[N], const Record& record)
{
    Fields fields;
    fields.reserve(int(N));
    for (const Field<Record>& f : table)
        fields.append({QLatin1String(f.name), f.read(record)});
    return fields;
}

} // namespace

Fields airFields(const AirData& record) { return read(kAirFields, record); }
Fields doorFields(const CardoorData& record) { return read(kDoorFields, record); }
Fields bodyFields(const CarbodyData& record) { return read(kBodyFields, record); }
Fields radarFields(const RadarData& record) { return read(kRadarFields, record); }

Fields changedFields(const Fields& before, const Fields& now)
{
    Fields changed;
    for (int i = 0; i < now.size(); ++i) {
        if (i >= before.size() || before.at(i) != now.at(i))
            changed.append(now.at(i));
    }
    return changed;
}

Fields presentFields(const Fields& fields)
{
    static const QString noText(QChar(0xFF));
    Fields present;
    for (const auto& field : fields) {
        const QVariant& v = field.second;
        const bool absent = v.userType() == QMetaType::QString
            ? (v.toString().isEmpty() || v.toString() == noText)
            : (v.toLongLong() == 255 || v.toLongLong() == -1);
        if (!absent)
            present.append(field);
    }
    return present;
}

} // namespace host
