// The Chana Auchan box's own pages: automatic parking prompts (frame 0x33), tyres in
// bar and their warning flags (0x38, 0x39), the vehicle settings with the tyre-reset
// messages (0x52) and the energy-management times (0x53).

#include "canbus64.h"

#include "framereader.h"
#include "tipdialog.h"

namespace {

struct Prompt { quint8 value; const char* text; };

// Frame 0x33 byte 4; values not listed give no text.
constexpr Prompt kParkPrompts[] = {
    {0, QT_TRANSLATE_NOOP("Canbus64Obj", "Exit the automatic parking interface")},
    {1, QT_TRANSLATE_NOOP("Canbus64Obj", "Searching for right parking space - parallel right parking space")},
    {2, QT_TRANSLATE_NOOP("Canbus64Obj", "Searching for left parking space - parallel left parking space")},
    {3, QT_TRANSLATE_NOOP("Canbus64Obj", "Searching for right parking space - vertical right parking space")},
    {4, QT_TRANSLATE_NOOP("Canbus64Obj", "Searching for left parking space - vertical left parking space")},
    {9, QT_TRANSLATE_NOOP("Canbus64Obj", "Found a parking space - please park - parallel to the right parking space")},
    {10, QT_TRANSLATE_NOOP("Canbus64Obj", "Found a parking space - please park - parallel left parking space")},
    {11, QT_TRANSLATE_NOOP("Canbus64Obj", "Found a parking space - please park - vertical right parking space")},
    {12, QT_TRANSLATE_NOOP("Canbus64Obj", "Found a parking space - please park - vertical left parking space")},
    {13, QT_TRANSLATE_NOOP("Canbus64Obj", "The parking space has been found - please engage the R gear - parallel to the right parking space")},
    {14, QT_TRANSLATE_NOOP("Canbus64Obj", "The parking space has been found - please engage the R gear - parallel to the left parking space")},
    {15, QT_TRANSLATE_NOOP("Canbus64Obj", "The parking space has been found - please engage the R gear - vertical right parking space")},
    {16, QT_TRANSLATE_NOOP("Canbus64Obj", "The parking space has been found - please engage the R gear - vertical left parking space")},
    {17, QT_TRANSLATE_NOOP("Canbus64Obj", "Please switch to R gear again")},
    {18, QT_TRANSLATE_NOOP("Canbus64Obj", "The parking space has been found - please engage the R gear - the right side parking space")},
    {19, QT_TRANSLATE_NOOP("Canbus64Obj", "Parallel parking space - please engage R gear")},
    {20, QT_TRANSLATE_NOOP("Canbus64Obj", "The parking space has been found - please engage the R gear - the left side parking space of the inclined row")},
    {21, QT_TRANSLATE_NOOP("Canbus64Obj", "Parallel parking space - please select the turn signal signal to select the parking position - no carbit")},
    {22, QT_TRANSLATE_NOOP("Canbus64Obj", "No Signal - Up Arrow")},
    {34, QT_TRANSLATE_NOOP("Canbus64Obj", "No signal - D gear")},
    {35, QT_TRANSLATE_NOOP("Canbus64Obj", "No signal-R gear")},
    {36, QT_TRANSLATE_NOOP("Canbus64Obj", "No signal - stop")},
    {37, QT_TRANSLATE_NOOP("Canbus64Obj", "No signal - wait")},
    {38, QT_TRANSLATE_NOOP("Canbus64Obj", "No signal - slow")},
    {39, QT_TRANSLATE_NOOP("Canbus64Obj", "No signal-\u221A ")},
    {40, QT_TRANSLATE_NOOP("Canbus64Obj", "Others remain unchanged, and the middle right area is canceled")},
    {41, QT_TRANSLATE_NOOP("Canbus64Obj", "Parking Cancellation")},
    {42, QT_TRANSLATE_NOOP("Canbus64Obj", "The speed is too high, the parking is canceled")},
    {43, QT_TRANSLATE_NOOP("Canbus64Obj", "Manually taken over, parking canceled")},
    {47, QT_TRANSLATE_NOOP("Canbus64Obj", "Please check the radar probe")},
    {48, QT_TRANSLATE_NOOP("Canbus64Obj", "Automatic parking system failure")},
    {49, QT_TRANSLATE_NOOP("Canbus64Obj", "The system is temporarily interrupted, please take over manually")},
    {50, QT_TRANSLATE_NOOP("Canbus64Obj", "Please slow down - the speed is too fast, please slow down")},
    {51, QT_TRANSLATE_NOOP("Canbus64Obj", "Timeout, parking canceled")},
    {52, QT_TRANSLATE_NOOP("Canbus64Obj", "Off path, parking canceled")},
    {55, QT_TRANSLATE_NOOP("Canbus64Obj", "Parallel parking space - the path is smooth, please drive out - no parking space")},
    {56, QT_TRANSLATE_NOOP("Canbus64Obj", "Searching for parking space on the right - diagonal parking space on the right")},
    {57, QT_TRANSLATE_NOOP("Canbus64Obj", "Searching for left parking space - diagonal left parking space")},
    {58, QT_TRANSLATE_NOOP("Canbus64Obj", "Parking space found - please park - right side parking space")},
    {59, QT_TRANSLATE_NOOP("Canbus64Obj", "Parking space found - please park - left side parking space")},
};

// Frame 0x52 selector 12: the tyre-pressure reset, shown as a message.
constexpr Prompt kTyreMessages[] = {
    {0, QT_TRANSLATE_NOOP("Canbus64Obj", "normal tire pressure")},
    {1, QT_TRANSLATE_NOOP("Canbus64Obj", "Tire pressure will be reset while driving")},
    {2, QT_TRANSLATE_NOOP("Canbus64Obj", "Tire pressure reset failed, please stop and try again")},
    {3, QT_TRANSLATE_NOOP("Canbus64Obj", "Tire pressure reset successfully")},
    {4, QT_TRANSLATE_NOOP("Canbus64Obj", "Tire pressure reset in progress")},
    {16, QT_TRANSLATE_NOOP("Canbus64Obj", "Abnormal tire pressure")},
};

template <std::size_t N>
const char* promptFor(const Prompt (&rows)[N], int value)
{
    for (const Prompt& row : rows) {
        if (row.value == value)
            return row.text;
    }
    return nullptr;
}

// Frame 0x52: the highest value of each setting, by runs of selectors.
struct SetupRange { quint8 first; quint8 last; quint8 max; };
constexpr SetupRange kSetupRanges[] = {
    {1, 9, 2},    {10, 10, 4},  {11, 11, 3},  {13, 15, 3},  {16, 17, 2},  {18, 18, 4},
    {19, 20, 2},  {21, 21, 4},  {22, 22, 3},  {23, 27, 2},  {28, 28, 3},  {29, 31, 2},
    {32, 32, 1},  // on or off: any value but 0 is on
    {33, 33, 4},  {34, 34, 3},  {35, 38, 2},  {39, 39, 6},  {40, 40, 2},  {41, 41, 20},
    {42, 49, 2},  {50, 50, 7},  {51, 55, 2},  {56, 56, 3},  {57, 57, 2},  {58, 58, 4},
    {59, 62, 2},  {63, 65, 3},  {66, 66, 4},  {67, 67, 3},  {68, 70, 12}, {71, 74, 2},
};
constexpr int kTyreMessageSelector = 12;
constexpr int kFirstSetupSelector = 0x80;
constexpr quint8 kFirstSetupMax = 2;

// Tyre pressure: 70 units a bar, 0.1 bar below the raw value; 255 and values under 7
// mean no reading.
QString tyreText(quint8 raw)
{
    if (raw == 255 || raw < 7)
        return Canbus64Obj::tr("--");
    return QStringLiteral("%1bar").arg(QString::number(raw / 70.0 - 0.1, 'f', 1));
}

// "y/m/d-h:m" without padding.
QString dateTimeText(int year, int month, int day, int hour, int minute)
{
    return QStringLiteral("%1/%2/%3-%4:%5").arg(year).arg(month).arg(day).arg(hour).arg(minute);
}

bool bytesAre(const FrameReader& f, int first, std::initializer_list<quint8> values)
{
    int i = first;
    for (quint8 v : values) {
        if (f.at(i++) != v)
            return false;
    }
    return true;
}

} // namespace

void Canbus64Obj::onParkPrompt(const FrameReader& f)
{
    automaticParkingStatus64& p = info()->parking;
    p.parkState = qMin<quint8>(f.at(3), 4);
    const char* text = promptFor(kParkPrompts, f.at(4));
    p.parkPrompt = text ? tr(text) : QString();
    emit dataChanged();
}

void Canbus64Obj::onTyres(const FrameReader& f)
{
    TirePressureInformation& t = airData->tire;
    for (int i = 0; i < 4; ++i)
        t.tireWarning[2][i] = qMin<quint8>(f.at(3 + i), 140);
    t.tirePressureFrontLeft = tyreText(f.at(7));
    t.tirePressureFrontRight = tyreText(f.at(8));
    t.tirePressureRearLeft = tyreText(f.at(9));
    t.tirePressureRearRight = tyreText(f.at(10));
    emit dataChanged();
}

void Canbus64Obj::onTyreFlags(const FrameReader& f)
{
    quint8* flags = info()->tireWarnings.tireFlag;
    for (int i = 0; i < 32; ++i)
        flags[i] = f.bit(3 + i / 8, 7 - i % 8);
    emit dataChanged();
}

void Canbus64Obj::onSetup(const FrameReader& f)
{
    vehicleSetupInformation64& s = info()->setup;
    const int selector = f.at(3);
    const quint8 value = f.at(4);
    if (selector == kTyreMessageSelector) {
        const char* text = promptFor(kTyreMessages, value);
        if (text)
            TipDialog::showMessage(tr(text), 0);
    } else if (selector == kFirstSetupSelector) {
        s.setupFirst = qMin(value, kFirstSetupMax);
    } else {
        for (const SetupRange& r : kSetupRanges) {
            if (selector >= r.first && selector <= r.last)
                s.setup[selector] = qMin(value, r.max);
        }
    }
    emit dataChanged();
}

void Canbus64Obj::onEnergy(const FrameReader& f)
{
    EnergyManagementSetupInformation64& e = info()->energy;
    // The two times are packed differently; each stays as the box lays it out.
    if (bytesAre(f, 3, {0, 0, 15, 254})) {
        e.energyTextA = tr("--");
    } else {
        const int hour = (f.at(5) & 15) * 2 + (f.at(6) >> 7);
        const int minute = (f.at(6) >> 1) & 63;
        e.energyTextA = dateTimeText((f.at(3) & 127) + 2000, f.at(4) >> 4,
                                     (f.at(4) & 1) * 16 + (f.at(5) >> 4), hour, minute);
        e.energyHourA = quint8(qMin(hour, 23));
        e.energyMinuteA = quint8(qMin(minute, 59));
    }
    if (bytesAre(f, 7, {0, 0, 31, 252})) {
        e.energyTextB = tr("--");
    } else {
        const int hour = f.at(9) & 31;
        const int minute = f.at(10) >> 2;
        e.energyTextB = dateTimeText((f.at(7) >> 1) + 2000, (f.at(7) & 1) * 8 + (f.at(8) >> 5),
                                     (f.at(8) & 3) * 8 + (f.at(9) >> 5), hour, minute);
        e.energyHourB = quint8(qMin(hour, 23));
        e.energyMinuteB = quint8(qMin(minute, 59));
    }
    e.energyFlagA = f.bit(11, 1);
    e.energyFlagB = f.bit(11, 0);
    e.energyByteA = f.at(12);
    e.energyByteB = f.at(13);
    e.energyRangeText = QStringLiteral("%1KM").arg(QString::number(double(f.at(15) >> 3), 'f', 1));
    emit dataChanged();
}
