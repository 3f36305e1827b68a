#pragma once
// The status frames that the boxes of many vehicles share, whatever else their
// protocols say:
//
//   0x7D  multiplexed status: byte 3 picks a sub-frame of the trip computer (speeds,
//         distances, consumption, temperatures, engine), the doors and body flags, the
//         steering angle, or the voice-control feedback (0xEF);
//   0x7E  function recognition: one flag a bit, telling which pages the vehicle has;
//   0x7F  the box's version text (some boxes send it as another type).
//
// Drivers keep the decoded values in records of their own, with their own field
// names. A StatusLayout tells, once per record type, which field takes which value;
// a StatusVariant tells the few ways in which the boxes differ. Shared records
// (CarbodyData, CardoorData, AirData) are written through the driver's getters and
// signalled on the driver.

#include <QByteArray>
#include <QString>

#include "framereader.h"

class CanbusInterface;

namespace canbus {

// Texts of the 0x7D sub-frames, each a value with its unit.
enum class StatusText : quint8 {
    Vehicle,        // 0: free text, GBK
    Speed1,         // 3
    Speed2,
    Odometer,       // 4: whole kilometres
    Distance1,      // 4: tenths
    Distance2,
    Distance3,
    Consumption1,   // 7
    Consumption2,
    Temperature1,   // 9: whole degrees
    Temperature2,
    Temperature3,
    EngineSpeed,    // 10
    Voltage,        // 11
    TurnRate,       // 14
    Rpm1,           // 15
    Rpm2,
    Count
};

// Bit fields of the 0x7D sub-frames, in the order the records list them.
enum class StatusFlag : quint8 {
    Status1Bit7,    // 1: byte 4 bits 7, 6, 5, 2, 1, 4, 3 in this order
    Status1Bit6,
    Status1Bit5,
    Status1Bit2,
    Status1Bit1,
    Status1Bit4,
    Status1Bit3,
    Status2Low,     // 2: byte 4 bits 2..0
    Status13High,   // 13: byte 4 bits 7..6, then bits 5, 4, 3, 2
    Status13Bit5,
    Status13Bit4,
    Status13Bit3,
    Status13Bit2,
    Count
};

// A run of N values of one record: either N named fields, or one array member.
template <typename Record, typename T, int N>
struct FieldSeq
{
    T Record::*fields[N];
    T (Record::*array)[N];

    T* at(Record& record, int i) const
    {
        if (i < 0 || i >= N)
            return nullptr;
        if (array)
            return &(record.*array)[i];
        return fields[i] ? &(record.*fields[i]) : nullptr;
    }
};

// Where the values of the 0x7D sub-frames go in a driver's records: `Mileage` takes
// the trip computer, `Voice` the voice-control feedback.
template <typename Mileage, typename Voice>
struct StatusLayout
{
    QString Mileage::*texts[int(StatusText::Count)];
    quint8 Mileage::*flags[int(StatusFlag::Count)];
    FieldSeq<Mileage, quint16, 5> words;      // 12: five raw words
    FieldSeq<Mileage, quint8, 5> percents;    // 16: five percentages; empty when absent
    FieldSeq<Voice, quint8, 8> voice;         // 0xEF
};

// How one vehicle's boxes differ.
struct StatusVariant
{
    // 3: byte 8 of 1 switches the speed unit to miles, in frames of 10 bytes or more.
    bool speedUnitByte = false;
    // 7: the sub-frame needs 9 bytes, and byte 8 picks the consumption unit in frames
    // of 10 bytes or more. Without it: no minimum, and the unit is always l/100 km.
    bool consumptionUnitByte = false;
    // 16: five percentages.
    bool percentPage = false;
    // 0: the text is at most this many bytes; 0 for as many as the length byte says.
    int gbkLimit = 0;
    // 9: carbodyDataChanged, ungated, after the outdoor temperature.
    bool outdoorBodySignal = false;
    // 8: the angle word read without a sign.
    bool unsignedSteering = false;
    // 11: the battery voltage replaces the body record with its signal when it differs.
    bool voltageSignal = false;
};

// What the decoder writes; a StatusLayout turns it into fields (see LayoutSink below).
class StatusSink
{
public:
    virtual ~StatusSink() = default;
    virtual QString* text(StatusText which) = 0;
    virtual quint8* flag(StatusFlag which) = 0;
    virtual quint16* word(int i) = 0;
    virtual quint8* percent(int i) = 0;
    virtual quint8* voice(int i) = 0;
};

// Decodes one 0x7D frame. The shared-record signals of the sub-frames (doors, body,
// outdoor temperature, steering) go out only while `signalsOpen`; the caller sends
// its own dataChanged, which follows every 0x7D frame, also a short one. Returns
// false for a frame too short for its sub-frame or an unknown sub-frame, which change
// nothing.
bool decodeStatusFrame(CanbusInterface& driver, const FrameReader& frame,
                       const StatusVariant& variant, StatusSink& sink, bool signalsOpen);

template <typename Mileage, typename Voice>
class LayoutSink : public StatusSink
{
public:
    LayoutSink(const StatusLayout<Mileage, Voice>& layout, Mileage& mileage, Voice& voice)
        : m_layout(layout), m_mileage(mileage), m_voice(voice) {}

    QString* text(StatusText which) override
    {
        QString Mileage::*field = m_layout.texts[int(which)];
        return field ? &(m_mileage.*field) : nullptr;
    }
    quint8* flag(StatusFlag which) override
    {
        quint8 Mileage::*field = m_layout.flags[int(which)];
        return field ? &(m_mileage.*field) : nullptr;
    }
    quint16* word(int i) override { return m_layout.words.at(m_mileage, i); }
    quint8* percent(int i) override { return m_layout.percents.at(m_mileage, i); }
    quint8* voice(int i) override { return m_layout.voice.at(m_voice, i); }

private:
    const StatusLayout<Mileage, Voice>& m_layout;
    Mileage& m_mileage;
    Voice& m_voice;
};

template <typename Mileage, typename Voice>
bool decodeStatusFrame(CanbusInterface& driver, const FrameReader& frame,
                       const StatusVariant& variant, const StatusLayout<Mileage, Voice>& layout,
                       Mileage& mileage, Voice& voice, bool signalsOpen)
{
    LayoutSink<Mileage, Voice> sink(layout, mileage, voice);
    return decodeStatusFrame(driver, frame, variant, sink, signalsOpen);
}

// Frame 0x7E: the frame's position of each function flag, in record order. A record
// with fewer flags takes the first ones.
struct FlagBit
{
    quint8 byte;
    quint8 bit;
};
constexpr int kFunctionFlagCount = 37;
extern const FlagBit kFunctionFlagBits[kFunctionFlagCount];
constexpr int kFunctionFrameMinimum = 14;

template <typename Record, int N>
void decodeFunctionFrame(const FrameReader& frame, const FieldSeq<Record, quint8, N>& flags,
                         Record& record)
{
    static_assert(N <= kFunctionFlagCount, "the frame has no more flags");
    for (int i = 0; i < N; ++i) {
        if (quint8* flag = flags.at(record, i))
            *flag = frame.bit(kFunctionFlagBits[i].byte, kFunctionFlagBits[i].bit) ? 1 : 0;
    }
}

// The version frame: the data bytes up to the first zero, as UTF-8.
QString versionText(const FrameReader& frame);
// Marks the box as answering and hands it the version text.
void takeVersionFrame(CanbusInterface& driver, const FrameReader& frame);

// "%1" of a scaled value as the boxes' texts print it: the general format with six
// significant digits, so 12.5 stays 12.5 and 3.0 becomes 3.
QString scaledNumber(double value);

} // namespace canbus
