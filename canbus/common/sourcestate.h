#pragma once
// What the head unit's source reports (setSrcState) carry, read once for all drivers:
// the radio band and frequency, the media position and texts, the call state. A
// driver only turns these into its box's frames.

#include <QList>
#include <QString>
#include <QVariant>

namespace canbus {

// Item i of a source report, or an invalid QVariant when the list is shorter.
QVariant sourceItem(const QList<QVariant>& items, int i);

// Radio (source 1): item 0 is the band, item 1 the frequency.
enum class RadioBand : quint8 { None = 0, FM1, FM2, FM3, AM1, AM2 };

RadioBand radioBand(int band);                // 2..4 FM1..FM3, 5..6 AM1..AM2
bool isFm(RadioBand band);
bool isAm(RadioBand band);
QString radioBandName(RadioBand band);        // "FM1".."AM2", empty for None
QString radioFrequencyUnit(RadioBand band);   // "MHz" for FM, "kHz" for AM, empty for None
// The reported frequency in the band's unit: FM comes in hundredths of MHz, AM in kHz.
double radioFrequency(RadioBand band, int frequency);

struct RadioState
{
    RadioBand band = RadioBand::None;
    int frequency = 0;    // as reported
};
// Needs both items; false and a default state otherwise.
bool readRadio(const QList<QVariant>& items, RadioState& out);

// Media sources (13/14, 16/17, 22): which of the head unit's three media inputs.
enum class MediaGroup : quint8 { None = 0, First, Second, Third };
MediaGroup mediaGroup(int source);

struct MediaState
{
    int track = 0;            // item 1, as reported (drivers that count from 1 add it)
    int trackCount = 0;       // item 2
    qulonglong position = 0;  // item 3, seconds
    qulonglong length = 0;    // item 4, seconds
    QString title;            // item 5
    QString secondText;       // item 6
};
// Missing items read as 0 or empty.
MediaState readMedia(const QList<QVariant>& items);

// Telephone (source 24): item 0 the call state, items 1 and 2 name and number.
enum class CallState : int { HangUp = 0, Incoming = 1, Outgoing = 2, Calling = 3, Unknown = -1 };
CallState callState(int state);
QString callStateText(CallState state);   // "hang up", "incoming call", ... ; empty for Unknown

struct PhoneState
{
    CallState state = CallState::Unknown;
    QString name;
    QString number;
};
PhoneState readPhone(const QList<QVariant>& items);

} // namespace canbus
