#include "canbus97.h"

#include <QCoreApplication>

#include "common/bitfields.h"
#include "common/bluetoothcalls.h"
#include "common/keytable.h"
#include "common/language.h"
#include "common/statusframe.h"
#include "common/doorbyte.h"
#include "framereader.h"

namespace {

// Every whole frame marks the box as answering; the disconnect frame goes out whatever
// the state. No request frame.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .disconnecting(canbus::DisconnectForm::Always);

constexpr int kExitSelectMs = 3000;
constexpr int kSteeringRange = 550;

// Climate controls: shown, though this box reports no climate.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airValid,         &AirData::airOnOff,          &AirData::airAC,
    &AirData::airDual,          &AirData::airAuto,           &AirData::airInnerLoop,
    &AirData::airAutoLoop,      &AirData::airDefrostFront,   &AirData::airDefrostRear,
    &AirData::airAutoStrong,    &AirData::airEco,            &AirData::airWindUpLeft,
    &AirData::airWindFrontLeft, &AirData::airWindDownLeft,   &AirData::airWindSpeedLeft,
    &AirData::airWindUpRight,   &AirData::airWindFrontRight, &AirData::airWindDownRight,
};

// Frame 0x20: steering-wheel keys.
constexpr canbus::KeyRow kWheelKeys[] = {
    {1, 0x1100025},  {2, 0x1100024},  {3, 0x110002F},  {4, 0x110002E},  {6, 0x1100023},
    {7, 0x1200027},  {8, 0x1300055},  {9, 0x120002B},  {11, 0x1300058}, {12, 0x1300059},
    {33, 0x1100031}, {34, 0x1100032}, {35, 0x1100033}, {36, 0x1100034}, {38, 0x130000C},
};
// Key 37 answers on release, by how it went down: a short press or a long one.
constexpr int kAnswerKey = 37;
constexpr int kAnswerShort = 0x1100023;
constexpr int kAnswerLong = 0x1200030;

// Frame 0x21: the panel's keys.
constexpr canbus::KeyRow kPanelKeys[] = {
    {1, 0x1100029}, {2, 0x1200061}, {3, 0x1300060}, {4, 0x1200061}, {5, 0x110002A},
    {6, 0x130000C}, {7, 0x110002B}, {8, 0x110002F}, {9, 0x110002E},
};

// The display language rides in the clock frame.
constexpr canbus::LanguageRow kLanguages[] = {
    {"en", 2},
    {"ch_jt", 1},
    {"ch_ft", 1},
};

constexpr canbus::BitField<setItemStatus97> kItems[] = {
    canbus::bitOf(&setItemStatus97::itemBit7, 3, 7),
    canbus::bitOf(&setItemStatus97::itemBit6, 3, 6),
    canbus::bitOf(&setItemStatus97::itemBit5, 3, 5),
    canbus::bitOf(&setItemStatus97::itemBit4, 3, 4),
    canbus::bitOf(&setItemStatus97::itemBit3, 3, 3),
    canbus::byteOf(&setItemStatus97::itemByte4, 4, 2),
};

// These boxes take the SAIC box's status frames, but tell the body record about the
// outdoor temperature of sub-frame 9.
constexpr canbus::StatusVariant kStatusVariant97 = {true, true, true, 0, true};
constexpr quint8 kOutdoorSubFrame = 9;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

QString oneDecimal(double value, const char* unit)
{
    return QString::number(value, 'f', 1) + QCoreApplication::translate("Canbus97Obj", unit);
}

} // namespace

Canbus97Obj::Canbus97Obj(QObject* parent)
    : RecordDriver(97, kProfile, parent)
{
}

void Canbus97Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kExitSelectMs);
}

// The radar stays as it is when the gear leaves reverse.
void Canbus97Obj::setInReverse(bool) {}

bool Canbus97Obj::hadExInfo() const { return true; }
bool Canbus97Obj::hadReverseLine() const { return true; }

void Canbus97Obj::exitSelectSlot() {}

void Canbus97Obj::emitGated(void (CanbusInterface::*signal)())
{
    if (powerOn)
        (this->*signal)();
}

int Canbus97Obj::checkProtocolData(const QByteArray& frame)
{
    // A frame below its type's minimum changes nothing; some types read past theirs,
    // where the reader answers 0.
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x20: if (fits(f, 6)) onWheelKey(f); return 1;
    case 0x21: if (fits(f, 6)) onPanelKey(f); return 1;
    case 0x22: if (fits(f, 5)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 5)) onRadar(f, true); return 1;
    case 0x24: if (fits(f, 6)) onDoors(f); return 1;
    case 0x25: if (fits(f, 12)) onTyres(f); return 1;
    case 0x29:
        if (fits(f, 6))
            emit trajectoryDataChanged(qint16(quint16(-f.be16(3))), kSteeringRange, true);
        return 1;
    case 0x30: canbus::takeVersionFrame(*this, f); return 1;
    case 0x32:
        if (fits(f, 7)) {
            info()->body.languageCode = qMin<quint8>(f.at(5), 2);
            emit dataChanged();
        }
        return 1;
    case 0x33: if (fits(f, 13)) onFuel(f); return 1;
    case 0x40: if (fits(f, 5)) onItems(f); return 1;
    case 0x41:
        if (fits(f, 5)) {
            info()->fuel.speedText = oneDecimal(f.at(3), "KM/H");
            emit dataChanged();
        }
        return 1;
    case 0x7D: onStatus(f); return 1;
    case 0x7E:
        if (fits(f, canbus::kFunctionFrameMinimum)) {
            canbus::decodeFunctionFrame(f, canbus::kFunctionFlags72, info()->functions);
            emitGated(&CanbusInterface::dataChanged);
        }
        return 1;
    default: return 0;
    }
}

void Canbus97Obj::onWheelKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        keyValue = f.at(3);
    const int state = f.at(4);
    if (state == 1 || state == 2)
        keyState = state;
    int code = 0;
    if (keyValue == kAnswerKey) {
        if (state != 0)
            return;
        code = keyState == 2 ? kAnswerLong : kAnswerShort;
    } else {
        if (state != 1)
            return;
        code = canbus::keyCodeFor(kWheelKeys, keyValue);
    }
    // The box sends no release of its own: each report is a whole press.
    sendKeyCode(code, 1, canbus::ZeroKey::Send);
    sendKeyCode(code, 0, canbus::ZeroKey::Send);
}

void Canbus97Obj::onPanelKey(const FrameReader& f)
{
    if (f.at(3) != 0)
        keyValue = f.at(3);
    if (f.at(4) != 1)
        return;
    const int code = canbus::keyCodeFor(kPanelKeys, keyValue);
    sendKeyCode(code, 1, canbus::ZeroKey::Send);
    sendKeyCode(code, 0, canbus::ZeroKey::Send);
}

void Canbus97Obj::onRadar(const FrameReader& f, bool front)
{
    // The box counts half bars.
    showRadarEnd(front, 9, f, 3, [](quint8 raw) { return quint8(raw * 2); });
}

void Canbus97Obj::onDoors(const FrameReader& f)
{
    const CardoorData doors = canbus::doorsFromByte(f, 3, canbus::Bonnet::Bit2);
    updateCardoorData(doors, powerOn);
    CarbodyData body = *carbodyData;
    body.bodyWarning36 = f.bit(4, 4) || f.bit(4, 3);
    body.bodyFlag31 = f.bit(4, 2);
    body.bodyFlag2 = f.bit(4, 0);
    body.bodyFlag1 = f.bit(4, 1) ? 0 : 1;
    updateCarbodyData(body);
}

void Canbus97Obj::onTyres(const FrameReader& f)
{
    // The box sends the pressures already scaled.
    TirePressureInformation& t = airData->tire;
    t.tireStatus = 0;
    QString TirePressureInformation::*pressures[] = {
        &TirePressureInformation::tirePressureFrontLeft, &TirePressureInformation::tirePressureFrontRight,
        &TirePressureInformation::tirePressureRearLeft, &TirePressureInformation::tirePressureRearRight};
    for (int i = 0; i < 4; ++i)
        t.*pressures[i] = oneDecimal(f.be16(3 + 2 * i), "bar");
    emit dataChanged();
}

void Canbus97Obj::onFuel(const FrameReader& f)
{
    FuelConsumptionAndMileageInformation97& fuel = info()->fuel;
    fuel.fuelText = oneDecimal(f.be16(3) * 0.1, "L");
    fuel.percentText = oneDecimal(f.be16(5), "%");
    fuel.distanceText = oneDecimal(f.be16(7), "KM");
    fuel.totalText = oneDecimal((f.at(9) << 16) | f.be16(10), "KM");
    emit dataChanged();
}

void Canbus97Obj::onItems(const FrameReader& f)
{
    canbus::applyBitFields(kItems, f, info()->items);
    emit dataChanged();
}

void Canbus97Obj::onStatus(const FrameReader& f)
{
    canbus::decodeStatusFrame(*this, f, kStatusVariant97, canbus::kStatusLayout72, info()->mileage,
                              info()->voice, powerOn);
    if (f.at(3) == kOutdoorSubFrame)
        info()->body.outdoorTempText = airData->outdoorTemp;
    emitGated(&CanbusInterface::dataChanged);   // also for a short or unknown sub-frame
}

void Canbus97Obj::setCurrentTime(int hour, int minute, int)
{
    sendFrame(0x82, {quint8(hour), quint8(minute), info()->body.languageCode});
}

void Canbus97Obj::languageChanged(const QString& language)
{
    const std::optional<int> v = canbus::vehicleLanguage(kLanguages, language);
    if (!v)
        return;
    sendFrame(0x82, {0x00, 0x00, quint8(*v)});
    info()->body.languageCode = quint8(*v);
    emit dataChanged();
}

void Canbus97Obj::setTcanBussend(int, int, int, int, int)
{
    sendFrame(0x83, {0x04, quint8(info()->items.itemBit4 == 0 ? 1 : 0)});
}
