#include "common/statusframe.h"

#include <QCoreApplication>
#include <iterator>

#include "canbusinterface.h"
#include "common/temperature.h"
#include "common/textcodec.h"

namespace canbus {

const FlagBit kFunctionFlagBits[kFunctionFlagCount] = {
    {3, 7}, {3, 6}, {3, 5}, {3, 4}, {3, 3}, {3, 2}, {3, 1},
    {4, 7},
    {5, 7}, {5, 6},
    {6, 7}, {6, 6}, {6, 5}, {6, 4},
    {7, 7},
    {8, 7}, {8, 6}, {8, 5}, {8, 4}, {8, 3}, {8, 2}, {8, 1}, {8, 0},
    {9, 7}, {9, 6},
    {10, 7},
    {11, 7}, {11, 6}, {11, 5},
    {12, 7}, {12, 6}, {12, 5}, {12, 4},
    {14, 7}, {14, 6}, {14, 5}, {14, 4},   // byte 13 carries none
};

QString scaledNumber(double value)
{
    return QString::number(value, 'g', 6);
}

QString versionText(const FrameReader& frame)
{
    return decodeUtf8(frame.bytes(kDataOffset2E, frame.at(2)));
}

void takeVersionFrame(CanbusInterface& driver, const FrameReader& frame)
{
    driver.setConnectedState(true);
    driver.setVersionData(versionText(frame));
}

namespace {

QString unit(const char* text)
{
    return QCoreApplication::translate("StatusFrame", text);
}

struct Context
{
    CanbusInterface& driver;
    const FrameReader& f;
    const StatusVariant& variant;
    StatusSink& sink;
    bool signalsOpen;

    void setText(StatusText which, const QString& value) const
    {
        if (QString* t = sink.text(which))
            *t = value;
    }
    void setFlag(StatusFlag which, int value) const
    {
        if (quint8* b = sink.flag(which))
            *b = quint8(value);
    }
    // Replaces the body record by `copy` when they differ, with its signal.
    void storeBody(const CarbodyData& copy) const
    {
        CarbodyData* body = driver.getCarbodyData();
        if (!body || copy.compare(*body))
            return;
        *body = copy;
        if (signalsOpen)
            emit driver.carbodyDataChanged();
    }
    CarbodyData bodyCopy() const
    {
        const CarbodyData* body = driver.getCarbodyData();
        return body ? *body : CarbodyData();
    }
};

// Frame bytes 4 and 6, little-endian words; 24-bit values low byte first.
constexpr int kFirst = 4;

void vehicleText(const Context& c)
{
    int count = c.f.at(2) - 1;
    if (c.variant.gbkLimit > 0)
        count = qMin(count, c.variant.gbkLimit);
    c.setText(StatusText::Vehicle, decodeGbk(c.f.bytes(kFirst, count)));
}

void statusBits(const Context& c)
{
    static constexpr int kBits[] = {7, 6, 5, 2, 1, 4, 3};
    for (int i = 0; i < 7; ++i)
        c.setFlag(StatusFlag(int(StatusFlag::Status1Bit7) + i), c.f.bit(kFirst, kBits[i]));
}

void statusLow(const Context& c)
{
    c.setFlag(StatusFlag::Status2Low, c.f.bits(kFirst, 0, 3));
}

void speeds(const Context& c)
{
    CarbodyData copy = c.bodyCopy();
    copy.speedUnit = 0;
    copy.vehicleSpeed = c.f.le16(4);
    copy.speed2Unit = 0;
    copy.vehicleSpeed2 = c.f.le16(6);
    c.storeBody(copy);
    const bool miles = c.variant.speedUnitByte && c.f.size() >= 10 && c.f.at(8) == 1;
    const QString u = miles ? unit("MPH") : unit("KM/H");
    c.setText(StatusText::Speed1, scaledNumber(c.f.le16(4) * 0.01) + u);
    c.setText(StatusText::Speed2, scaledNumber(c.f.le16(6) * 0.01) + u);
}

void distances(const Context& c)
{
    const QString km = unit("KM");
    c.setText(StatusText::Odometer, QString::number(c.f.le24(4)) + km);
    c.setText(StatusText::Distance1, scaledNumber(c.f.le16(7) * 0.1) + km);
    c.setText(StatusText::Distance2, scaledNumber(c.f.le24(9) * 0.1) + km);
    c.setText(StatusText::Distance3, scaledNumber(c.f.le24(12) * 0.1) + km);
    CarbodyData copy = c.bodyCopy();
    copy.odometerUnit = 0;
    copy.odometer = qint32(c.f.le24(4));
    c.storeBody(copy);
}

void doors(const Context& c)
{
    CardoorData fresh;
    fresh.doorFrontLeft = c.f.bit(kFirst, 6);
    fresh.doorFrontRight = c.f.bit(kFirst, 7);
    fresh.doorRearLeft = c.f.bit(kFirst, 4);
    fresh.doorRearRight = c.f.bit(kFirst, 5);
    fresh.doorTrunk = c.f.bit(kFirst, 3);
    fresh.doorHood = c.f.bit(kFirst, 2);
    CardoorData* doors = c.driver.getCardoorData();
    if (!doors || fresh.compare(*doors))
        return;
    *doors = fresh;
    if (c.signalsOpen)
        emit c.driver.cardoorDataChanged();
}

void bodyFlags(const Context& c)
{
    CarbodyData* body = c.driver.getCarbodyData();
    if (!body)
        return;
    CarbodyData copy = *body;
    copy.bodyFlag1 = c.f.bit(kFirst, 0) ? 0 : 1;
    copy.bodyFlag2 = c.f.bit(kFirst, 1);
    copy.bodyFlag31 = c.f.bit(kFirst, 2);
    copy.bodyWarning36 = c.f.bits(kFirst, 4, 2) == 3 ? 0 : 1;
    // The boxes signal only when the three flags stayed as they were, and store the
    // copy either way; the panels of these vehicles are built around that order.
    const bool flagsKept = copy.bodyFlag1 == body->bodyFlag1 && copy.bodyFlag2 == body->bodyFlag2
        && copy.bodyFlag31 == body->bodyFlag31;
    *body = copy;
    if (flagsKept && c.signalsOpen)
        emit c.driver.carbodyDataChanged();
}

void consumption(const Context& c)
{
    if (!c.variant.consumptionUnitByte) {
        const QString form = QStringLiteral("%1 ") + unit("L/100Km");
        c.setText(StatusText::Consumption1, form.arg(scaledNumber(c.f.le16(4) * 0.1)));
        c.setText(StatusText::Consumption2, form.arg(scaledNumber(c.f.le16(6) * 0.1)));
        return;
    }
    static constexpr const char* kUnits[] = {"L/100Km", "KM/L", "MPG(UK)", "MPG(US)", "l/h"};
    QString u = unit(kUnits[0]);
    if (c.f.size() >= 10 && c.f.at(8) < std::size(kUnits))
        u = unit(kUnits[c.f.at(8)]);
    c.setText(StatusText::Consumption1, scaledNumber(c.f.le16(4) * 0.1) + u);
    c.setText(StatusText::Consumption2, scaledNumber(c.f.le16(6) * 0.1) + u);
}

void steering(const Context& c)
{
    if (c.signalsOpen) {
        const int angle = c.variant.unsignedSteering ? int(c.f.le16(4)) : int(c.f.sle16(4));
        emit c.driver.trajectoryDataChanged(angle, 540, true);
    }
}

void temperatures(const Context& c)
{
    const QString sign = unit("\u2103");
    const int outdoor = c.f.at(5) - 40;
    // One decimal and the sign, ".0" included: these boxes' panels show it so.
    const QString text = QString::number(double(outdoor), 'f', 1) + QChar(kCelsiusSign);
    if (AirData* air = c.driver.getAirData()) {
        air->outdoorTempUnit = 0;
        air->outdoorTempValid = 1;
        air->outdoorTemp = text;
    }
    if (c.signalsOpen)
        emit c.driver.outdoorTemperatureChanged(text, 0);
    if (CarbodyData* body = c.driver.getCarbodyData()) {
        body->outdoorTempUnit = 0;
        body->outdoorTempTenths = qint16(outdoor * 10);
        if (c.variant.outdoorBodySignal)
            emit c.driver.carbodyDataChanged();
    }
    c.setText(StatusText::Temperature1, QString::number(c.f.at(4) - 40) + sign);
    c.setText(StatusText::Temperature2, QString::number(c.f.at(5) - 40) + sign);
    c.setText(StatusText::Temperature3, QString::number(c.f.at(6) - 40) + sign);
}

void engineSpeed(const Context& c)
{
    const quint16 word = c.f.le16(4);
    c.setText(StatusText::EngineSpeed, scaledNumber(word * 0.25) + unit("rpm"));
    CarbodyData* body = c.driver.getCarbodyData();
    if (!body)
        return;
    CarbodyData copy = *body;
    copy.engineSpeed = 100 * (word >> 2);
    // The record takes the copy, and the panel hears of it, only when nothing
    // changed: the engine speed of this sub-frame never reaches the body record.
    if (copy.compare(*body)) {
        *body = copy;
        if (c.signalsOpen)
            emit c.driver.carbodyDataChanged();
    }
}

void voltage(const Context& c)
{
    const quint16 word = c.f.le16(4);
    c.setText(StatusText::Voltage, scaledNumber(word * 0.001) + unit("V"));
    if (c.variant.voltageSignal) {
        CarbodyData copy = c.bodyCopy();
        copy.batteryVoltage = quint16(word / 100);
        c.storeBody(copy);
        return;
    }
    CarbodyData* body = c.driver.getCarbodyData();
    if (body)
        body->batteryVoltage = quint16(word / 100);   // no signal of its own
}

void rawWords(const Context& c)
{
    for (int i = 0; i < 5; ++i) {
        if (quint16* w = c.sink.word(i))
            *w = c.f.le16(4 + 2 * i);
    }
}

void stateBits(const Context& c)
{
    c.setFlag(StatusFlag::Status13High, c.f.bits(kFirst, 6, 2));
    for (int i = 0; i < 4; ++i)
        c.setFlag(StatusFlag(int(StatusFlag::Status13Bit5) + i), c.f.bit(kFirst, 5 - i));
}

void turnRate(const Context& c)
{
    c.setText(StatusText::TurnRate, QString::number(c.f.le16(4)) + unit("Tr/min"));
}

void rpm(const Context& c)
{
    c.setText(StatusText::Rpm1, QString::number(c.f.le16(4) / 24) + unit("rpm"));
    c.setText(StatusText::Rpm2, QString::number(c.f.le16(6) / 24) + unit("rpm"));
}

void percentages(const Context& c)
{
    for (int i = 0; i < 5; ++i) {
        if (quint8* p = c.sink.percent(i))
            *p = qMin<quint8>(c.f.at(4 + i) & 0x7F, 100);
    }
}

// Voice-control feedback: byte 4 names the item, byte 5 (and for item 2 byte 6)
// carries its value.
void voiceFeedback(const Context& c)
{
    struct VoiceRow { quint8 item; quint8 first; quint8 count; };
    static constexpr VoiceRow kItems[] = {
        {1, 0, 1}, {2, 1, 2}, {3, 3, 1}, {4, 4, 1}, {8, 5, 1}, {0x45, 6, 1}, {0x46, 7, 1},
    };
    for (const VoiceRow& row : kItems) {
        if (row.item != c.f.at(4))
            continue;
        for (int i = 0; i < row.count; ++i) {
            if (quint8* v = c.sink.voice(row.first + i))
                *v = c.f.at(5 + i);
        }
    }
}

struct SubFrame
{
    quint8 sub;
    quint8 minimum;   // whole frame size
    void (*handle)(const Context&);
};

constexpr SubFrame kSubFrames[] = {
    {0, 0, &vehicleText},
    {1, 6, &statusBits},
    {2, 6, &statusLow},
    {3, 9, &speeds},
    {4, 16, &distances},
    {5, 6, &doors},
    {6, 6, &bodyFlags},
    {7, 0, &consumption},    // 9 with the unit byte
    {8, 7, &steering},
    {9, 8, &temperatures},
    {10, 7, &engineSpeed},
    {11, 7, &voltage},
    {12, 15, &rawWords},
    {13, 6, &stateBits},
    {14, 7, &turnRate},
    {15, 9, &rpm},
    {16, 10, &percentages},  // only on boxes with the percentage page
    {0xEF, 7, &voiceFeedback},
};

const SubFrame* subFrame(quint8 sub, const StatusVariant& variant)
{
    if (sub == 16 && !variant.percentPage)
        return nullptr;
    for (const SubFrame& row : kSubFrames) {
        if (row.sub == sub)
            return &row;
    }
    return nullptr;
}

int minimumOf(const SubFrame& row, const StatusVariant& variant)
{
    return row.sub == 7 && variant.consumptionUnitByte ? 9 : row.minimum;
}

} // namespace

bool decodeStatusFrame(CanbusInterface& driver, const FrameReader& frame,
                       const StatusVariant& variant, StatusSink& sink, bool signalsOpen)
{
    const SubFrame* row = subFrame(frame.at(3), variant);
    if (!row || frame.size() < minimumOf(*row, variant))
        return false;
    row->handle(Context{driver, frame, variant, sink, signalsOpen});
    return true;
}

} // namespace canbus
