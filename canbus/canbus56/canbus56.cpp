#include "canbus56.h"

#include "common/bluetoothcalls.h"
#include "framereader.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "common/vehiclemodel.h"

namespace {

// Every whole frame marks the box as answering (walk A).
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};

constexpr int kHighestCarModel = 3;
constexpr int kModelReportMs = 3000;

// The box's data request, sent at once, and a second one a moment later.
constexpr quint8 kRequestType = 0x90;
constexpr quint8 kFirstRequest = 0x21;
constexpr quint8 kSecondRequest = 0x30;

// Climate controls this vehicle has: shown from the start.
constexpr quint8 AirData::*kClimateControls[] = {
    &AirData::airOnOff,         &AirData::airAC,             &AirData::airDual,
    &AirData::airAuto,          &AirData::airInnerLoop,      &AirData::airDefrostRear,
    &AirData::airWindUpLeft,    &AirData::airWindFrontLeft,  &AirData::airWindDownLeft,
    &AirData::airWindSpeedLeft, &AirData::airWindUpRight,    &AirData::airWindFrontRight,
    &AirData::airWindDownRight,
};

// Frame 0x39: bytes 3 and 4 pick an option, byte 5 is its value, held at `max` (1 for
// the on/off options). Pairs not listed change nothing.
struct OptionRow
{
    quint8 group;
    quint8 item;
    quint8 BodyInformation56::*field;
    quint8 max;
};
constexpr OptionRow kOptions[] = {
    {1, 1, &BodyInformation56::language, 1},
    {2, 1, &BodyInformation56::option10, 1},
    {2, 2, &BodyInformation56::option11, 4},
    {2, 3, &BodyInformation56::option12, 4},
    {3, 1, &BodyInformation56::option13, 1},
    {3, 2, &BodyInformation56::option14, 1},
};

// Selectors of frame 0x41 and the frame size each needs.
constexpr quint8 kWarningsAndDoors = 0x01;
constexpr quint8 kOutdoorAndRange = 0x02;
constexpr quint8 kVariant = 0x80;
constexpr int kOutdoorFrameMinimum = 10;
constexpr int kVariantFrameMinimum = 7;

// The steering angle of frame 0x26 on a scale of 540 either way.
constexpr int kSteeringRange = 540;

bool fits(const FrameReader& f, int minimum) { return f.size() >= minimum; }

} // namespace

Canbus56Obj::Canbus56Obj(QObject* parent)
    : RecordDriver(56, kProfile, parent)
{
}

void Canbus56Obj::initData()
{
    RecordDriver::initData();
    showClimateControls(kClimateControls);
    airData->airRearLock = 0;
    airData->airShowFlag = 1;
    airData->seat.seatHotVisible = 1;
    canbus::connectBluetoothCalls(this);
    startExitSelectTimer(kModelReportMs);
    info()->body.carModel = quint8(canbus::storedCarModel(kHighestCarModel));
}

bool Canbus56Obj::hadExInfo() const { return true; }
bool Canbus56Obj::hadReverseLine() const { return true; }

bool Canbus56Obj::needSendConnect(int& intervalMs, QByteArray& frame)
{
    // Both requests go out on every call, also once the box has answered.
    sendFrame(kRequestType, {kFirstRequest});
    emitDataLater(makeFrame(kRequestType, {kSecondRequest}), canbus::kRequestDelayMs);
    return RecordDriver::needSendConnect(intervalMs, frame);
}

int Canbus56Obj::endStep()
{
    if (powerOn)
        emit dataChanged();
    return 1;
}

void Canbus56Obj::emitIfPowered(void (CanbusInterface::*signal)())
{
    if (powerOn)
        (this->*signal)();
}

int Canbus56Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x07:
        if (fits(f, 6))
            onSpeed(f);
        emit dataChanged();   // also for a short frame
        return 1;
    case 0x08:
        if (fits(f, 6))
            onEngineSpeed(f);
        emit dataChanged();
        return 1;
    case 0x14:
        if (fits(f, 5)) {
            info()->body.bodyByte = f.at(3);
            emit dataChanged();
        }
        return 1;
    case 0x20: if (fits(f, 6)) onWheelKey(f); return 1;
    case 0x21: if (fits(f, 10)) onClimate(f); return 1;
    case 0x22: if (fits(f, 8)) onRadar(f, false); return 1;
    case 0x23: if (fits(f, 8)) onRadar(f, true); return 1;
    case 0x24: if (fits(f, 5)) onBodyBits(f); return 1;
    case 0x25:
        if (!fits(f, 6))
            return 1;
        info()->body.statusBit1 = f.bit(3, 1);
        info()->body.statusBit0 = f.bit(3, 0);
        return endStep();
    case 0x26: if (fits(f, 6)) onTrajectory(f); return 1;
    case 0x27: if (fits(f, 6)) onCentralKey(f); return 1;
    case 0x29: if (fits(f, 5)) onMouseOrKnob(f); return 1;
    case 0x30:
    case 0x7F:
        onVersion(f);
        return 1;
    case 0x39:
        if (!fits(f, 7))
            return 1;
        onOptions(f);
        return endStep();
    case 0x40:
        if (!fits(f, 5))
            return 1;
        info()->body.bodyActive = f.at(3) != 0 ? 1 : 0;
        return endStep();
    case 0x41: if (fits(f, 5)) onBodyPage(f); return 1;
    case 0x7D:
        onStatus(f);
        return endStep();   // also for a short or unknown sub-frame
    case 0x7E:
        if (!fits(f, canbus::kFunctionFrameMinimum))
            return 1;
        onFunctions(f);
        return endStep();
    default: return 0;
    }
}

void Canbus56Obj::onVersion(const FrameReader& f)
{
    setConnectedState(true);
    sendFrame(kRequestType, {kFirstRequest});
    setVersionData(canbus::versionText(f));
}

void Canbus56Obj::onSpeed(const FrameReader& f)
{
    const int word = f.be16(3);
    CarbodyData body = *carbodyData;
    body.vehicleSpeed = quint16(100 * word);   // the record's field keeps 16 bits of it
    info()->body.speedText = tr("%1km/h").arg(word);
    updateCarbodyData(body);
}

void Canbus56Obj::onEngineSpeed(const FrameReader& f)
{
    const int word = f.be16(3);
    CarbodyData body = *carbodyData;
    body.engineSpeed = 100 * word;
    info()->body.rpmText = tr("%1RPM").arg(word);
    updateCarbodyData(body);
}

void Canbus56Obj::onBodyBits(const FrameReader& f)
{
    BodyInformation56& b = info()->body;
    b.bodyBit2 = f.bit(3, 2);
    b.bodyBit1 = f.bit(3, 1);
    b.bodyBit0 = f.bit(3, 0);
    // The box's body flags of this frame never reach the body record; the panel is
    // told all the same, so that it reads the record again.
    emitIfPowered(&CanbusInterface::carbodyDataChanged);
    emitIfPowered(&CanbusInterface::dataChanged);
}

void Canbus56Obj::onTrajectory(const FrameReader& f)
{
    // Bit 15 of the little-endian word marks the positive side.
    const int word = f.le16(3);
    const int angle = (word & 0x8000) ? (word & 0x7FFF) : -word;
    emit trajectoryDataChanged(angle, kSteeringRange, true);
}

void Canbus56Obj::onOptions(const FrameReader& f)
{
    for (const OptionRow& row : kOptions) {
        if (row.group == f.at(3) && row.item == f.at(4))
            info()->body.*row.field = qMin<quint8>(f.at(5), row.max);
    }
}

void Canbus56Obj::onBodyPage(const FrameReader& f)
{
    switch (f.at(3)) {
    case kWarningsAndDoors:
        onWarningsAndDoors(f);
        break;
    case kOutdoorAndRange:
        if (fits(f, kOutdoorFrameMinimum))
            onOutdoorAndRange(f);
        break;
    case kVariant:
        if (fits(f, kVariantFrameMinimum))
            onVariant(f);
        break;
    default:
        break;
    }
}

void Canbus56Obj::onWarningsAndDoors(const FrameReader& f)
{
    CarbodyData body = *carbodyData;
    body.bodyWarning36 = f.bit(4, 6) ? 1 : f.bit(4, 7);
    updateCarbodyData(body, powerOn);
    CardoorData doors;
    doors.doorFrontLeft = f.bit(4, 0);
    doors.doorFrontRight = f.bit(4, 1);
    doors.doorRearLeft = f.bit(4, 2);
    doors.doorRearRight = f.bit(4, 3);
    doors.doorTrunk = f.bit(4, 4);
    info()->body.bodyBit1 = f.bit(4, 5) ? 0 : 1;
    updateCardoorData(doors);
    emit dataChanged();
}

void Canbus56Obj::onOutdoorAndRange(const FrameReader& f)
{
    // Tenths of a degree; bit 15 set for the cold side, counted down from 65536.
    const int word = f.be16(4);
    const QString number = (word & 0x8000) ? QStringLiteral("-%1").arg(canbus::scaledNumber((65536 - word) * 0.1))
                                           : canbus::scaledNumber(word * 0.1);
    const QString text = number + QChar(canbus::kCelsiusSign);
    AirData& a = *airData;
    if (text != a.outdoorTemp || a.outdoorTempValid != 1) {
        a.outdoorTempUnit = 0;
        a.outdoorTempValid = 1;
        a.outdoorTemp = text;
    }
    emit outdoorTemperatureChanged(a.outdoorTemp, 0);
    BodyInformation56& b = info()->body;
    b.rangeText = tr("%1Km").arg(f.be24(6));
    b.outdoorText = a.outdoorTemp;
    emit dataChanged();
}

void Canbus56Obj::onVariant(const FrameReader& f)
{
    BodyInformation56& b = info()->body;
    b.carModel = qMin<quint8>(f.at(4), kHighestCarModel);
    b.carOption = qMin<quint8>(f.at(5), 3);
    emit dataChanged();
}

void Canbus56Obj::onStatus(const FrameReader& f)
{
    canbus::decodeTripStatus(*this, f, info()->mileage, info()->voice, powerOn);
}

void Canbus56Obj::onFunctions(const FrameReader& f)
{
    canbus::decodeFunctionFlags(f, info()->functions);
}

void Canbus56Obj::exitSelectSlot()
{
    const quint8 model = info() ? info()->body.carModel : 0;
    if (model != 0)
        sendFrame(0x85, {model});
}
