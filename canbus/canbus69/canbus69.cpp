#include "canbus69.h"

#include <QCoreApplication>

#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"
#include "common/doorbyte.h"
#include "framereader.h"

namespace {

// The climate frame 0x11 is asked for 200 ms behind every connect call; the disconnect
// frame goes out whatever the state.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .requesting(0x11, 0x00)
        .requestAfter(200)
        .disconnecting(canbus::DisconnectForm::Always);

constexpr int kHighestCarModel = 4;
constexpr int kModelReportMs = 3000;
constexpr int kCallTickMs = 1000;
constexpr int kSteeringRange = 12000;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,        &AirData::airAC,           &AirData::airAuto,
    &AirData::airOuterLoop,    &AirData::airInnerLoop,    &AirData::airDefrostRear,
    &AirData::airWindUpLeft,   &AirData::airWindDownLeft, &AirData::airWindSpeedLeft,
    &AirData::airWindUpRight,  &AirData::airWindDownRight,
};

// Frame 0x11 byte 4: where the air goes, on both sides.
struct AirDirection { quint8 up; quint8 down; quint8 screen; };
constexpr AirDirection kDirections[] = {
    {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1},
};
constexpr quint8 kFanMax = 7;
constexpr int kOutdoorUnknownByte = 4;   // the box marks an unknown reading here, not in byte 8
constexpr int kOutdoorByte = 8;

// Frame 0x3A: items 1 to 11 and their clamps; a clamp of 1 makes a flag of the value.
constexpr quint8 OriginalCarSettingItemInformationFeedback69::*kItems[] = {
    &OriginalCarSettingItemInformationFeedback69::item1, &OriginalCarSettingItemInformationFeedback69::item2,
    &OriginalCarSettingItemInformationFeedback69::item3, &OriginalCarSettingItemInformationFeedback69::item4,
    &OriginalCarSettingItemInformationFeedback69::item5, &OriginalCarSettingItemInformationFeedback69::item6,
    &OriginalCarSettingItemInformationFeedback69::item7, &OriginalCarSettingItemInformationFeedback69::item8,
    &OriginalCarSettingItemInformationFeedback69::item9, &OriginalCarSettingItemInformationFeedback69::item10,
    &OriginalCarSettingItemInformationFeedback69::item11,
};
constexpr quint8 kItemClamps[] = {1, 1, 2, 4, 4, 2, 3, 1, 1, 21, 1};

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

QString oneDecimal(double value, const char* unit)
{
    return QString::number(value, 'f', 1) + QCoreApplication::translate("Canbus69Obj", unit);
}

// One side's set point: 0..30 half degrees from 17, 128..160 half degrees from 16.
void applySetPoint(AirData& a, const canbus::TempZone& zone, quint8 AirData::*fahrenheit, int v)
{
    a.*zone.low = v == 0 || v == 128;
    a.*zone.high = v == 30 || v == 160;
    a.*fahrenheit = 0;
    if (v <= 30)
        a.*zone.text = QString::number(v * 0.5 + 17, 'g', 6);
    else if (v >= 128 && v <= 160)
        a.*zone.text = QString::number((v - 128) * 0.5 + 16, 'g', 6);
}

// Radar: 0 nothing, else the box's distance class, nearest first; 8-bit as the box
// computes it (a class above 5 wraps).
quint8 radarBars(quint8 v) { return v == 0 ? 0 : quint8((5 - v) * 2); }

} // namespace

Canbus69Obj::Canbus69Obj(QObject* parent)
    : RecordDriver(69, kProfile, parent)
{
}

void Canbus69Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airShowFlag = 0;
    info()->vehicle.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
    if (!callTimer)
        callTimer = canbus::makeTimer(this, kCallTickMs, &Canbus69Obj::CallSelectSlot);
}

bool Canbus69Obj::hadExInfo() const { return true; }
bool Canbus69Obj::hadReverseLine() const { return true; }

int Canbus69Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    auto& v = info()->vehicle;
    switch (f.at(1)) {
    case 0x02: if (fits(f, 6)) onKey(f, true); return 1;
    case 0x21: if (fits(f, 6)) onKey(f, false); return 1;
    case 0x11: if (fits(f, 10)) onClimate(f); return 1;
    case 0x22: if (fits(f, 8)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 8)) onRadar(f, true); return 1;
    case 0x28: if (fits(f, 6)) onDoors(f); return 1;
    case 0x30:
        if (fits(f, 6))
            emit trajectoryDataChanged(f.signMagnitude16(3), kSteeringRange, true);
        return 1;
    case 0x38: if (fits(f, 12)) onTyres(f); return 1;
    case 0x39:
        if (fits(f, 8)) {
            for (int i = 0; i < 4; ++i)
                airData->tire.tireWarning[1][i] = qMin<quint8>(f.at(3 + i), 3);
            emit dataChanged();
        }
        return 1;
    case 0x3A: if (fits(f, 6)) onSettingItem(f); return 1;
    case 0x3B:
        if (fits(f, 5)) {
            auto& p = info()->panoramic;
            p.panoramicBit6 = f.bit(3, 6);
            p.panoramicView = f.bits(3, 4, 2);
            p.panoramicMode = qMin<quint8>(f.lowNibble(3), 9);
            emit dataChanged();
        }
        return 1;
    case 0x3C:
        if (fits(f, 6)) {
            v.frame3CValue1 = qMin<quint8>(f.at(3), 2);
            v.frame3CValue2 = qMin<quint8>(f.at(4), 2);
            emit dataChanged();
        }
        return 1;
    case 0x3D: if (fits(f, 7)) onBattery(f); return 1;
    case 0x3E: if (fits(f, 16)) onEnergy(f); return 1;
    case 0x40:
        // Its minimum is below the bytes it reads: the reader answers 0 past the end.
        if (fits(f, 2)) {
            auto& s = info()->settings;
            s.settingHigh = f.at(3) > 63;
            s.settingBit7 = f.bit(4, 7);
            s.settingBit6 = f.bit(4, 6);
            s.settingBit5 = f.bit(4, 5);
            emit dataChanged();
        }
        return 1;
    case 0x50:
        if (fits(f, 6)) {
            auto& p = info()->panoramic;
            p.panoramicByte = f.at(3);
            p.panoramicBit0 = f.bit(4, 0);
            p.panoramicBit1 = f.bit(4, 1);
            p.panoramicBit2 = f.bit(4, 2);
            emit dataChanged();
        }
        return 1;
    case 0x7F: canbus::takeVersionFrame(*this, f); return 1;
    default: return 0;
    }
}

void Canbus69Obj::onKey(const FrameReader& f, bool panel)
{
    if (f.at(3) != 0)
        keyValue = f.at(3);
    if (f.at(4) != 0)
        keyState = f.at(4);
    const int code = panel ? getQtPanelButtonsValue(keyValue) : getQtKeyFromValue(keyValue);
    sendKeyCode(code, f.at(4), canbus::ZeroKey::Send);
}

void Canbus69Obj::onClimate(const FrameReader& f)
{
    AirData& a = *airData;
    if (airFrameCache.changed(f, 3)) {
        a.airAC = f.bit(3, 6);
        const int loop = f.bits(3, 4, 2);
        a.airOuterLoop = loop == 0;
        a.airInnerLoop = loop == 1;
        a.airAuto = f.bit(3, 3);
        a.airDefrostRear = f.bit(3, 1);
    }
    if (airFrameCache.changed(f, 4) && f.at(4) < std::size(kDirections)) {
        const AirDirection& d = kDirections[f.at(4)];
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
        applySetPoint(a, canbus::kZoneLeft, &AirData::tempLeftFahrenheit, sides.left);
        applySetPoint(a, canbus::kZoneRight, &AirData::tempRightFahrenheit, sides.right);
    }
    // A moving outdoor reading says nothing new about the climate: the panel hears of
    // the frame only while it stays.
    const bool outdoorMoved = airFrameCache.changed(f, kOutdoorByte);
    if (outdoorMoved) {
        info()->vehicle.outdoorTempText =
            showOutdoorCelsius(f.at(kOutdoorUnknownByte) != 0xFF, f.at(kOutdoorByte) - 40);
        emit dataChanged();
    }
    if (airFrameCache.store(canbus::PayloadCache::dataBytes(f)) && !outdoorMoved)
        emit airConditionerDataChanged();
}

void Canbus69Obj::onRadar(const FrameReader& f, bool front)
{
    showRadarEnd(front, 10, f, 3, &radarBars);
}

void Canbus69Obj::onDoors(const FrameReader& f)
{
    const CardoorData doors = canbus::doorsFromByte(f, 3, canbus::Bonnet::Bit2);
    updateCardoorData(doors);

    auto& v = info()->vehicle;
    CarbodyData& body = *carbodyData;
    if (f.bit(4, 4) != v.doorBit4 || f.bit(4, 3) != v.doorBit3) {
        body.bodyWarning37 = !f.bit(4, 4);
        body.bodyWarning36 = !f.bit(4, 3);
        emit carbodyDataChanged();
    }
    body.bodyFlag2 = f.bit(4, 6);
    body.bodyFlag31 = f.bit(4, 7);
    v.doorBit7 = f.bit(4, 7);
    v.doorBit6 = f.bit(4, 6);
    v.doorBit4 = f.bit(4, 4);
    v.doorBit3 = f.bit(4, 3);
    v.doorBit2 = f.bit(4, 2);
    emit dataChanged();
}

void Canbus69Obj::onTyres(const FrameReader& f)
{
    TirePressureInformation& t = airData->tire;
    QString TirePressureInformation::*pressures[] = {
        &TirePressureInformation::tirePressureFrontLeft, &TirePressureInformation::tirePressureFrontRight,
        &TirePressureInformation::tirePressureRearLeft, &TirePressureInformation::tirePressureRearRight};
    for (int i = 0; i < 4; ++i) {
        t.tireWarning[2][i] = f.at(3 + i);
        t.*pressures[i] = oneDecimal(f.at(7 + i) * 0.02745, "bar");
    }
    emit dataChanged();
}

void Canbus69Obj::onSettingItem(const FrameReader& f)
{
    const int item = f.at(3);
    if (item >= 1 && item <= int(std::size(kItems))) {
        const quint8 clamp = kItemClamps[item - 1];
        const quint8 value = f.at(4);
        info()->items.*kItems[item - 1] = clamp == 1 ? quint8(value != 0) : qMin(value, clamp);
    }
    emit dataChanged();
}

void Canbus69Obj::onBattery(const FrameReader& f)
{
    auto& v = info()->vehicle;
    v.currentText = oneDecimal(f.at(3) * 0.1, "A");
    v.voltageText = oneDecimal(f.be16(4) * 0.1, "V");
    emit dataChanged();
}

void Canbus69Obj::onEnergy(const FrameReader& f)
{
    energyInformation69& e = info()->energy;
    e.rangeText = oneDecimal(((f.at(3) << 16) | f.be16(4)) * 0.1, "km");
    e.tripText = oneDecimal(f.be16(6) * 0.1, "km");
    e.batteryPercent = qMin<quint8>(f.at(8), 100);
    e.chargeState = qMin<quint8>(f.at(9), 2);
    e.useText1 = oneDecimal(f.at(10) * 0.1, "km/kwh");
    e.useText2 = oneDecimal(f.at(11) * 0.1, "km/kwh");
    e.energyText1 = oneDecimal(f.at(12) * 0.1, "km");
    e.energyText2 = oneDecimal(f.at(13) * 0.1, "km");
    e.energyText3 = oneDecimal(f.at(14) * 0.75, "km");
    emit dataChanged();
}
