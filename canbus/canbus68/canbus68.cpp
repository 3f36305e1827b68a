#include "canbus68.h"

#include <QCoreApplication>
#include <optional>

#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"
#include "common/doorbyte.h"
#include "framereader.h"

namespace {

// The climate frame 0x21 is asked for 200 ms behind every connect call; the disconnect
// frame goes out whatever the state.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x21, 0x00)
        .requestAfter(200)
        .disconnecting(canbus::DisconnectForm::Always);

constexpr int kHighestCarModel = 12;
constexpr int kModelReportMs = 3000;
constexpr int kCallTickMs = 1000;
constexpr int kSteeringRange = 8704;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,        &AirData::airAC,            &AirData::airDual,
    &AirData::airAuto,         &AirData::airOuterLoop,     &AirData::airInnerLoop,
    &AirData::airDefrostFront, &AirData::airDefrostRear,   &AirData::airWindUpLeft,
    &AirData::airWindDownLeft, &AirData::airWindSpeedLeft, &AirData::airWindUpRight,
    &AirData::airWindDownRight,
};

// Frame 0x20. Key 5 and 40 answer a call while one rings or runs; 7 also acts on
// release (see onKey).
constexpr canbus::KeyRow kKeys[] = {
    {1, 0x1100025},  {2, 0x1100024},  {3, 0x110002E},  {4, 0x110002F},  {5, 0x1100023},
    {6, 0x1300059},  {7, 0x1200027},  {8, 0x1300055},  {16, 0x1200065}, {17, 0x1200066},
    {18, 0x1200030}, {19, 0x110002F}, {20, 0x110002E}, {21, 0x1100023}, {22, 0x1400033},
    {23, 0x1200027}, {24, 0x1400016}, {25, 0x130000C}, {32, 0x1100025}, {33, 0x1100024},
    {34, 0x120002F}, {35, 0x1100029}, {36, 0x120002B}, {37, 0x1200029}, {38, 0x110002C},
    {39, 0x1200061}, {40, 0x1200061}, {41, 0x1200061}, {42, 0x130000C}, {43, 0x130000C},
    {44, 0x110002E}, {45, 0x110002F}, {46, 0x1100025}, {47, 0x1100024},
};
constexpr int kCallKeyInCall = 0x1300058;
constexpr int kReleaseKey = 7;
constexpr int kReleaseKeyHeld = 0x1100023;

// Frame 0x21 byte 4: where the air goes, on both sides.
struct AirDirection { quint8 up; quint8 down; quint8 screen; };
constexpr AirDirection kDirections[] = {
    {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1}, {0, 0, 1},
};
constexpr quint8 kFanMax = 7;

// Frame 0x40: how each item stores its value.
using Items = SettingItemStatusInformation68;
using ItemRule = std::optional<quint8> (*)(quint8 value);
std::optional<quint8> flag(quint8 value) { return quint8(value != 0); }
template <quint8 Max>
std::optional<quint8> clampTo(quint8 value) { return qMin(value, Max); }
// Item 10 counts from 1 on the display; 255 is no value.
std::optional<quint8> item10(quint8 value)
{
    if (value == 255)
        return std::nullopt;
    return value < 11 ? quint8(value + 1) : quint8(10);
}
struct ItemRow { quint8 item; quint8 Items::*field; ItemRule rule; };
constexpr ItemRow kItems[] = {
    {0, &Items::item0, &flag},
    {1, &Items::item1, &clampTo<2>},
    {2, &Items::item2, &flag},
    {3, &Items::item3, &flag},
    {4, &Items::item4, &flag},
    {5, &Items::item5, &flag},
    {6, &Items::item6, &flag},
    {7, &Items::item7, &flag},
    {8, &Items::item8, &clampTo<2>},
    {9, &Items::item9, &clampTo<21>},
    {10, &Items::item10, &item10},
    {11, &Items::item11, &flag},
    {12, &Items::item12, &flag},
    {13, &Items::item13, &flag},
    {14, &Items::item14, &flag},
    {15, &Items::item15, &flag},
    {16, &Items::item16, &flag},
    {17, &Items::item17, &flag},
    {18, &Items::item18, &flag},
    {19, &Items::item19, &flag},
    {20, &Items::item20, &clampTo<2>},
    {21, &Items::item21, &clampTo<3>},
    {22, &Items::item22, &flag},
    {23, &Items::item23, &flag},
    {24, &Items::item24, &flag},
    {25, &Items::item25, &flag},
    {26, &Items::item26, &flag},
    {27, &Items::item27, &clampTo<100>},
    {28, &Items::item28, &flag},
    {29, &Items::item29, &flag},
    {30, &Items::item30, &flag},
    {31, &Items::item31, &flag},
    {32, &Items::item32, &clampTo<5>},
    {33, &Items::item33, &clampTo<7>},
    {34, &Items::item34, &flag},
    {35, &Items::item35, &flag},
    {36, &Items::item36, &flag},
    {37, &Items::item37, &flag},
    {38, &Items::item38, &clampTo<4>},
    {39, &Items::item39, &clampTo<3>},
    {40, &Items::item40, &flag},
    {41, &Items::item41, &flag},
    {42, &Items::item42, &flag},
    {254, &Items::item254, &flag},
    {255, &Items::item255, &flag},
};

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

QString oneDecimal(double value, const char* unit)
{
    return QString::number(value, 'f', 1) + QCoreApplication::translate("Canbus68Obj", unit);
}

} // namespace

Canbus68Obj::Canbus68Obj(QObject* parent)
    : RecordDriver(68, kProfile, parent)
{
}

void Canbus68Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airShowFlag = 0;
    info()->vehicle.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
    if (!callTimer)
        callTimer = canbus::makeTimer(this, kCallTickMs, &Canbus68Obj::CallSelectSlot);
}

bool Canbus68Obj::hadExInfo() const { return true; }
bool Canbus68Obj::hadReverseLine() const { return true; }

int Canbus68Obj::getQtKeyFromValue(int value) const
{
    if ((value == 5 || value == 40) && callState)
        return kCallKeyInCall;
    return canbus::keyCodeFor(kKeys, value);
}

int Canbus68Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x10: if (fits(f, 6)) onOutdoorTemperature(f); return 1;
    case 0x20: if (fits(f, 6)) onKey(f); return 1;
    case 0x21: if (fits(f, 9)) onClimate(f); return 1;
    case 0x22: if (fits(f, 8)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 8)) onRadar(f, true); return 1;
    case 0x24: if (fits(f, 6)) onDoors(f); return 1;
    case 0x29:
        if (fits(f, 6))
            emit trajectoryDataChanged(qint16(quint16(f.le16(3) - 0x8000)), kSteeringRange, true);
        return 1;
    case 0x30: canbus::takeVersionFrame(*this, f); return 1;
    case 0x40: if (fits(f, 9)) onSettingItem(f); return 1;
    case 0x41: if (fits(f, 12)) onStatus(f); return 1;
    default: return 0;
    }
}

void Canbus68Obj::onOutdoorTemperature(const FrameReader& f)
{
    AirData& a = *airData;
    a.outdoorTempUnit = qint8(f.at(3));
    a.outdoorTempValid = 1;
    if (f.at(4) == 0xFF) {
        a.outdoorTemp = QStringLiteral("--");
    } else {
        // Half degrees from -55; the display always shows one decimal.
        const QChar sign(f.at(3) == 1 ? canbus::kFahrenheitSign : canbus::kCelsiusSign);
        a.outdoorTemp = canbus::tenthsText(f.at(4) * 5 - 550) + sign;
        emit outdoorTemperatureChanged(a.outdoorTemp, a.outdoorTempUnit);
    }
    info()->vehicle.outdoorTempText = a.outdoorTemp;
    emit dataChanged();
}

void Canbus68Obj::onKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        keyValue = f.at(3);
    const int state = f.at(4);
    if (state != 0)
        keyState = state;
    int code = 0;
    if (keyValue == kReleaseKey && state == 0) {
        // Let go: a short press gives its key again, a long one another.
        if (keyState == 1)
            code = getQtKeyFromValue(keyValue);
        else if (keyState == 2)
            code = kReleaseKeyHeld;
        else
            return;
    } else if (state == 1) {
        code = getQtKeyFromValue(keyValue);
    } else {
        return;
    }
    sendKeyCode(code, 1, canbus::ZeroKey::Send);
    sendKeyCode(code, 0, canbus::ZeroKey::Send);
}

void Canbus68Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    if (airFrameCache.changed(f, 3)) {
        a.airAC = f.bit(3, 6);
        const int loop = f.bits(3, 4, 2);
        a.airOuterLoop = loop == 0;
        a.airInnerLoop = loop == 1;
        a.airAuto = f.bit(3, 3);
        a.airDual = f.bit(3, 2);
        a.airDefrostRear = f.bit(3, 1);
        a.airDefrostFront = f.bit(3, 0);
    }
    const int direction = f.at(4) & 0x7F;
    if (airFrameCache.changed(f, 4) && direction < int(std::size(kDirections))) {
        const AirDirection& d = kDirections[direction];
        a.airWindUpLeft = a.airWindUpRight = d.up;
        a.airWindDownLeft = a.airWindDownRight = d.down;
        a.airDefrostFront = d.screen;
    }
    if (airFrameCache.changed(f, 5)) {
        const quint8 fan = qMin(f.at(5), kFanMax);
        a.airWindSpeedLeft = fan;
        a.airWindSpeedRight = qint8(fan);
        a.airPower = a.airOnOff = f.at(5) != 0;
    }
    if (airFrameCache.changed(f, {6, 7})) {
        const auto sides = canbus::leftRight<int>(f.at(6), f.at(7), rightDriver);
        a.tempLeftVisible = 1;
        const canbus::TempZone* zones[] = {&canbus::kZoneLeft, &canbus::kZoneRight};
        const int values[] = {sides.left, sides.right};
        for (int i = 0; i < 2; ++i) {
            a.*zones[i]->low = values[i] == 0;
            a.*zones[i]->high = values[i] == 30;
            if (values[i] < 31)
                a.*zones[i]->text = QString::number(values[i] * 0.5 + 17.5, 'g', 6);
        }
        a.tempLeftFahrenheit = a.tempRightFahrenheit = 0;
    }
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)))
        emit airConditionerDataChanged();
}

void Canbus68Obj::onRadar(const FrameReader& f, bool front)
{
    showRadarEnd(front, 10, f, 3, [](quint8 raw) { return quint8(raw * 2); });
}

void Canbus68Obj::onDoors(const FrameReader& f)
{
    const CardoorData doors = canbus::doorsFromByte(f, 3, canbus::Bonnet::Bit2);
    updateCardoorData(doors);
    auto& v = info()->vehicle;
    v.doorBit2 = f.bit(4, 2);
    v.doorBit1 = f.bit(4, 1);
    v.doorBit0 = f.bit(4, 0);
    emit dataChanged();
}

void Canbus68Obj::onSettingItem(const FrameReader& f)
{
    for (const ItemRow& row : kItems) {
        if (row.item != f.at(3))
            continue;
        if (const std::optional<quint8> value = row.rule(f.at(4)))
            info()->items.*row.field = *value;
        break;
    }
    emit dataChanged();
}

void Canbus68Obj::onStatus(const FrameReader& f)
{
    SetItemStatus_2_information68& s = info()->status;
    s.status7 = f.bit(3, 7);
    s.status5 = f.bit(3, 5);
    s.status4 = f.bit(3, 4);
    s.status3 = f.bit(3, 3);
    s.status2 = f.bit(3, 2);
    s.status1 = f.bit(3, 1);
    s.status0 = f.bit(3, 0);
    s.level1 = qMin<quint8>(f.at(4), 7);
    s.level2 = qMin<quint8>(f.at(5), 7);
    s.distanceText = oneDecimal(f.be16(6) * 0.1, "KM");
    s.consumptionText = oneDecimal(f.at(8) * 0.2, "KMH/100KM");
    emit dataChanged();
}
