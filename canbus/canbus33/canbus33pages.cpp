// The GAC Trumpchi box's own pages: original-car settings (frame 0x52) and the
// new-energy schedule and charging display (frames 0x53, 0x54).

#include "canbus33.h"

#include "framereader.h"
#include "common/statusframe.h"


namespace {

// Frame 0x52: setting index -> field and the highest value it takes. Settings 22
// and 23 are the seat heating levels of the climate record.
using Settings = OriginalCarSettings33;
struct SettingRow { quint8 index; quint8 Settings::*field; quint8 max; };
constexpr SettingRow kSettings[] = {
    {1, &Settings::language, 2},    {2, &Settings::setting2, 2},    {3, &Settings::setting3, 2},
    {4, &Settings::setting4, 3},    {5, &Settings::setting5, 2},    {6, &Settings::setting6, 2},
    {7, &Settings::setting7, 20},   {8, &Settings::setting8, 3},    {9, &Settings::setting9, 30},
    {10, &Settings::setting10, 30}, {11, &Settings::setting11, 3},  {12, &Settings::setting12, 2},
    {13, &Settings::setting13, 2},  {14, &Settings::setting14, 2},  {15, &Settings::setting15, 2},
    {16, &Settings::setting16, 2},  {17, &Settings::setting17, 2},  {18, &Settings::setting18, 3},
    {19, &Settings::setting19, 2},  {20, &Settings::setting20, 2},  {21, &Settings::setting21, 3},
    {24, &Settings::setting24, 2},  {25, &Settings::setting25, 2},  {26, &Settings::setting26, 2},
    {27, &Settings::setting27, 2},  {28, &Settings::setting28, 2},  {29, &Settings::setting29, 2},
    {30, &Settings::setting30, 2},  {31, &Settings::setting31, 2},  {32, &Settings::setting32, 5},
    {33, &Settings::setting33, 2},  {34, &Settings::setting34, 2},  {35, &Settings::setting35, 2},
    {36, &Settings::setting36, 2},  {37, &Settings::setting37, 3},  {38, &Settings::setting38, 3},
    {39, &Settings::setting39, 3},  {40, &Settings::setting40, 2},  {41, &Settings::setting41, 7},
    {42, &Settings::setting42, 32}, {43, &Settings::setting43, 2},  {44, &Settings::setting44, 2},
    {45, &Settings::setting45, 2},  {46, &Settings::setting46, 2},  {47, &Settings::setting47, 2},
    {48, &Settings::setting48, 2},  {49, &Settings::setting49, 2},  {50, &Settings::setting50, 3},
};

constexpr int kSeatHotLeftSetting = 22;
constexpr int kSeatHotRightSetting = 23;

// Settings 9 and 10 repeat often unchanged; only a new raw value is news.
bool reportsOnlyChanges(int index) { return index == 9 || index == 10; }

// Frame 0x54: the charging state, low five bits of byte 13.
constexpr const char* kChargingStates[32] = {
    QT_TRANSLATE_NOOP("Canbus33Obj", "without"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "preparing"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "charging"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "full charge"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "End of charge"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Charging error, please reconnect"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Charging system failure"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Power equipment stopped working"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Discharging"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Stop discharge"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Discharge system failure"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Low battery, unable to discharge"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Discharge conditions are not met"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Low battery, please pay attention"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Battery heating"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Battery heats up"),
    QT_TRANSLATE_NOOP("Canbus33Obj", " Before starting, please remove the connector"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Put the gear to P gear before charging"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Please connect the load"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "The connector temperature is too high, please change the charging port"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Please check the connector"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Function failed to start, please try again"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Plug-in unlock failed, please unlock again"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Unlock successfully, please unplug the connector"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Operation error, please try again"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Remove the connector before shifting gears"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Charging (discharging) system failure"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Waiting for charging appointment"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "External equipment overload"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Plug lock failure, energy-saving charging"),
    QT_TRANSLATE_NOOP("Canbus33Obj", "Please note that the plug lock failed  "),
    nullptr,   // no text
};

quint8 hourOf(int value) { return quint8(qMin(value, 23)); }
quint8 minuteOf(int value) { return quint8(qMin(value, 59)); }

} // namespace

void Canbus33Obj::onSetting(const FrameReader& f)
{
    const int index = f.at(3);
    const quint8 value = f.at(4);
    if (index == kSeatHotLeftSetting || index == kSeatHotRightSetting) {
        airData->seat.seatHotVisible = 1;
        (index == kSeatHotLeftSetting ? airData->seat.seatHotLeft : airData->seat.seatHotRight) = value;
        emit airConditionerDataChanged();
        return;
    }
    Settings& settings = info()->settings;
    if (index == 0)
        settings.settingText.clear();
    for (const SettingRow& row : kSettings) {
        if (row.index != index)
            continue;
        if (reportsOnlyChanges(index) && settings.*row.field == value)
            return;
        settings.*row.field = qMin(value, row.max);
    }
    emit dataChanged();
}

void Canbus33Obj::onChargingSchedule(const FrameReader& f)
{
    NewEnergyInformation33& e = info()->newEnergy;
    // A time of day is five bits of hour spread over two bytes and six bits of minute.
    e.timeAHour = hourOf((f.at(3) & 7) * 4 + (f.at(4) >> 6));
    e.timeAMinute = minuteOf(f.at(4) & 63);
    e.timeBHour = hourOf((f.at(5) & 7) * 4 + (f.at(6) >> 6));
    e.timeBMinute = minuteOf(f.at(6) & 63);
    quint8 NewEnergyInformation33::*const flags[] = {
        &NewEnergyInformation33::flag0, &NewEnergyInformation33::flag1,
        &NewEnergyInformation33::flag2, &NewEnergyInformation33::flag3,
        &NewEnergyInformation33::flag4, &NewEnergyInformation33::flag5,
        &NewEnergyInformation33::flag6, &NewEnergyInformation33::flag7,
    };
    for (int bit = 0; bit < 8; ++bit)
        e.*flags[bit] = f.bit(7, bit);
    e.lowBits = f.at(8) & 7;
    e.timeCHour = hourOf(f.at(8) >> 3);
    e.timeCMinute = minuteOf(f.at(9) >> 2);
    e.levelA = qMin<quint8>(f.at(10), 10);
    e.levelB = qMin<quint8>(f.at(11), 10);
    e.highFlag = f.bit(12, 7);
    e.lowMode = f.at(12) & 3;
    emit dataChanged();
}

void Canbus33Obj::onChargingDisplay(const FrameReader& f)
{
    NewEnergyDisplayInformation33& d = info()->newEnergyDisplay;
    d.timeText = QStringLiteral("%1:%2").arg(f.at(4)).arg(f.at(3));
    d.voltageTextA = QStringLiteral("%1V").arg(f.le16(5));
    d.percentText = QStringLiteral("%1%").arg(canbus::scaledNumber(f.le16(7) * 0.1));
    d.currentText = QStringLiteral("%1A").arg(canbus::scaledNumber(f.le16(9) * 0.1));
    d.voltageTextB = QStringLiteral("%1V").arg(f.le16(11));
    d.displayFlagA = f.bit(13, 7);
    d.displayFlagB = f.bit(13, 6);
    const char* state = kChargingStates[f.at(13) & 0x1F];
    d.statusText = state ? tr(state) : QString();
    emit dataChanged();
}
