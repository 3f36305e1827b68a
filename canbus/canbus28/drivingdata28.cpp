#include "drivingdata28.h"

#include <QCoreApplication>
#include <cstddef>

#include "dataindex28.h"
#include "framereader.h"

using mqb::D;

namespace {

// How an item's value is read and printed. The divisions are those of the vehicle's
// own display: whole tenths are dropped before a one-decimal print, so such texts
// always end in ".0".
enum class Value : quint8 {
    Count,              // D2 D3 little-endian, whole number
    DistanceTenths,     // D2..D5 little-endian, signed, / 10, whole number
    TenthsFixed,        // D2 D3 little-endian / 10 (whole), one decimal
    CountFixedAtD1,     // D1 D2 little-endian, one decimal
    CountFixed,         // D2 D3 little-endian, one decimal
    SignedTenthsFloat,  // D2 D3 little-endian, signed, / 10.0, six significant digits
    ByteAtD1,           // D1, whole number
};

// Unit text by the selector D1 & mask; no matching row gives no unit.
struct UnitRow { quint8 selector; const char* text; };
struct Units { quint8 mask; const UnitRow* rows; std::size_t count; };

template <std::size_t N>
constexpr Units units(quint8 mask, const UnitRow (&rows)[N]) { return {mask, rows, N}; }
constexpr Units kNoUnit{0, nullptr, 0};

#define UNIT(text) QT_TRANSLATE_NOOP("Canbus28Obj", text)
constexpr UnitRow kDistance[] = {{0, UNIT("km")}, {1, UNIT("mi")}};
constexpr UnitRow kConsumption[] = {
    {0, UNIT("L/100km")},
    {1, UNIT("km/L")},
    {2, UNIT("mpg(UK)")},
    {3, UNIT(" mpg(US)")},   // the vehicle's display has the blank
    {4, UNIT("l/h")},
    {18, UNIT("kWh/100km")},
    {19, UNIT("km/kWh")},
    {20, UNIT("kWh/mi")},
    {21, UNIT("mi/kWh")},
};
constexpr UnitRow kSpeed[] = {{0, UNIT("km/h")}, {1, UNIT("mph")}};
constexpr UnitRow kDuration[] = {{0, UNIT("minute")}};
constexpr UnitRow kFlow[] = {{0, UNIT("gal/h")}, {1, UNIT("l/h")}};
constexpr UnitRow kConsumption61[] = {
    {0, UNIT("L/100km")},
    {1, UNIT("km/L")},
    {2, UNIT("mpg(UK)")},
    {3, UNIT("mpg(US)")},
};
constexpr UnitRow kElectric[] = {{0, UNIT("kwh/100km")}, {1, UNIT("km/kwh")}};
#undef UNIT

struct Item
{
    quint8 item;
    QString DrivingData::*text;
    Value value;
    Units unit;
    quint16 DrivingData::*count;   // also keeps the raw count, or null
};

using Trip = DrivingData;
constexpr Item kItems[] = {
    {0x10, &Trip::shortDistanceTextA, Value::Count, units(0x01, kDistance), &Trip::shortValue1},
    {0x11, &Trip::shortDistanceTextB, Value::Count, units(0x01, kDistance), &Trip::shortValue2},
    {0x12, &Trip::shortDistanceTextC, Value::Count, units(0x01, kDistance), nullptr},
    {0x20, &Trip::distanceTextA, Value::DistanceTenths, units(0x01, kDistance), nullptr},
    {0x21, &Trip::distanceTextB, Value::DistanceTenths, units(0x01, kDistance), nullptr},
    {0x22, &Trip::distanceTextC, Value::DistanceTenths, units(0x01, kDistance), nullptr},   // odometer
    {0x30, &Trip::consumptionTextA, Value::TenthsFixed, units(0xFF, kConsumption), nullptr},
    {0x31, &Trip::consumptionTextB, Value::TenthsFixed, units(0xFF, kConsumption), nullptr},
    {0x32, &Trip::consumptionTextC, Value::TenthsFixed, units(0xFF, kConsumption), nullptr},
    {0x40, &Trip::speedTextA, Value::TenthsFixed, units(0xFF, kSpeed), nullptr},
    {0x41, &Trip::speedTextB, Value::TenthsFixed, units(0xFF, kSpeed), nullptr},
    {0x42, &Trip::speedTextC, Value::TenthsFixed, units(0xFF, kSpeed), nullptr},
    {0x50, &Trip::durationTextA, Value::CountFixedAtD1, units(0x00, kDuration), nullptr},
    {0x51, &Trip::durationTextB, Value::CountFixedAtD1, units(0x00, kDuration), nullptr},
    {0x52, &Trip::durationTextC, Value::CountFixedAtD1, units(0x00, kDuration), nullptr},
    {0x60, &Trip::flowText60, Value::CountFixed, units(0x01, kFlow), nullptr},
    {0x61, &Trip::consumptionText61, Value::TenthsFixed, units(0x03, kConsumption61), nullptr},
    {0x70, &Trip::electricTextA, Value::SignedTenthsFloat, units(0x01, kElectric), nullptr},
    {0x71, &Trip::electricTextB, Value::SignedTenthsFloat, units(0x01, kElectric), nullptr},
    {0x72, &Trip::electricTextC, Value::SignedTenthsFloat, units(0x01, kElectric), nullptr},
    {0x80, &Trip::numberText80, Value::ByteAtD1, kNoUnit, nullptr},
};

constexpr quint8 kOdometerItem = 0x22;

const Item* findItem(int item)
{
    for (const Item& row : kItems) {
        if (row.item == item)
            return &row;
    }
    return nullptr;
}

QString unitText(const Units& units, quint8 selector)
{
    for (std::size_t i = 0; i < units.count; ++i) {
        if (units.rows[i].selector == (selector & units.mask))
            return QCoreApplication::translate("Canbus28Obj", units.rows[i].text);
    }
    return QString();
}

qint32 distance(const FrameReader& f)
{
    return static_cast<qint32>(f.le32(D(2))) / 10;
}

QString number(const FrameReader& f, Value value)
{
    switch (value) {
    case Value::Count:
        return QString::number(f.le16(D(2)));
    case Value::DistanceTenths:
        return QString::number(distance(f));
    case Value::TenthsFixed:
        return QString::number(double(f.le16(D(2)) / 10), 'f', 1);
    case Value::CountFixedAtD1:
        return QString::number(double(f.le16(D(1))), 'f', 1);
    case Value::CountFixed:
        return QString::number(double(f.le16(D(2))), 'f', 1);
    case Value::SignedTenthsFloat:
        return QString::number(f.sle16(D(2)) / 10.0, 'g', 6);
    case Value::ByteAtD1:
        return QString::number(f.d(1));
    }
    return QString();
}

} // namespace

void decodeDrivingItem28(const FrameReader& f, DrivingData& driving, CarbodyData& body)
{
    const Item* item = findItem(f.d(0));
    if (!item)
        return;
    driving.*item->text = number(f, item->value) + unitText(item->unit, f.d(1));
    if (item->count)
        driving.*item->count = f.le16(D(2));
    if (item->item == kOdometerItem) {
        body.odometerUnit = f.d(1) & 0x01;
        body.odometer = distance(f);
    }
}
