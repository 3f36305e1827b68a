#include "canbus53.h"

#include "common/bluetoothcalls.h"
#include "common/commandvalue.h"

namespace {

// Walks as the boxes that decide their connection themselves, but asks and answers as
// the Honda box does.
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::B}
        .requesting(0x30, 0x00);

constexpr quint8 kCommandType = 0xC6;
constexpr quint8 kAirFlowCommand = 0xAC;   // also the compressor
constexpr quint8 kFanCommand = 0xAD;
constexpr int kFanTop = 7;
constexpr int kFanBeyond = 8;

// The air-flow combinations code 0xAC takes.
constexpr quint8 kFaceAndFeet = 3;
constexpr quint8 kFeet = 4;
constexpr quint8 kFeetAndScreen = 5;
constexpr quint8 kScreen = 6;
constexpr quint8 kAcOn = 1;
constexpr quint8 kAcOff = 2;

// Each key toggles one direction out of the live combination, or the compressor; the
// argument is the state wanted, read from the record, not from the value.
struct Command
{
    const char* key;
    quint8 (*arg)(const AirData& air);
};

bool on(quint8 flag) { return flag == 1; }

quint8 towardsScreen(const AirData& a) { return on(a.airWindUpRight) ? kFeetAndScreen : kScreen; }
quint8 towardsFace(const AirData& a)
{
    if (on(a.airWindFrontRight))
        return on(a.airWindDownRight) ? kFeetAndScreen : kScreen;
    return on(a.airWindDownRight) ? kFeet : kFaceAndFeet;
}
quint8 towardsFeet(const AirData& a)
{
    if (on(a.airWindDownRight))
        return kFaceAndFeet;
    if (on(a.airWindUpRight))
        return kScreen;
    return on(a.airWindFrontRight) ? kFeet : kFeetAndScreen;
}
quint8 compressor(const AirData& a) { return on(a.airAC) ? kAcOff : kAcOn; }

constexpr Command kCommands[] = {
    {"AirWindUpFront", &towardsScreen},
    {"AirWindFrontFront", &towardsFace},
    {"AirWindDownFront", &towardsFeet},
    {"AirAC", &compressor},
};

} // namespace

Canbus53Obj::Canbus53Obj(QObject* parent)
    : Canbus31Obj(53, kProfile, parent)
{
    qRegisterMetaType<Data53Info>();
    // A screen made for 31 reads this record as its own.
    if (!QMetaType::hasRegisteredConverterFunction<Data53Info, Data31Info>())
        QMetaType::registerConverter<Data53Info, Data31Info>();
}

void Canbus53Obj::initData()
{
    if (!dataInfo)
        dataInfo = new Data53Info;
    initRecords();
    canbus::connectBluetoothCalls(this);
    if (!variantSelectTimer)
        variantSelectTimer = startModelTimer();
}

QVariant Canbus53Obj::getDataInfo() const
{
    return info() ? QVariant::fromValue(static_cast<const Data53Info&>(*info())) : QVariant();
}

void Canbus53Obj::setDataInfo(const QVariant& value)
{
    if (!info() || !value.canConvert<Data31Info>())
        return;
    *static_cast<Data31Info*>(info()) = value.value<Data31Info>();
    emit dataChanged();
}

void Canbus53Obj::setCanbusState(const QString& type, const QString& value)
{
    if (!airData)
        return;
    if (type == QLatin1String("AirWindSpeedAddSubFront")) {
        // One step from the live speed; a speed past the top comes back to it.
        const int speed = airData->airWindSpeedLeft;
        const int next = value == QLatin1String("1") ? (speed >= kFanBeyond ? kFanTop : speed + 1)
                                                     : qMax(speed - 1, 0);
        sendFrame(kCommandType, {kFanCommand, quint8(next)});
        return;
    }
    if (const Command* command = canbus::findCommand(kCommands, type))
        sendFrame(kCommandType, {kAirFlowCommand, command->arg(*airData)});
}
