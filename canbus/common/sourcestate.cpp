#include "common/sourcestate.h"

#include "canbusinterface.h"

namespace canbus {

QVariant sourceItem(const QList<QVariant>& items, int i)
{
    return (i >= 0 && i < items.size()) ? items.at(i) : QVariant();
}

namespace {

struct BandRow { int band; RadioBand radio; const char* name; };
constexpr BandRow kBands[] = {
    {2, RadioBand::FM1, "FM1"},
    {3, RadioBand::FM2, "FM2"},
    {4, RadioBand::FM3, "FM3"},
    {5, RadioBand::AM1, "AM1"},
    {6, RadioBand::AM2, "AM2"},
};

struct MediaRow { int source; MediaGroup group; };
constexpr MediaRow kMediaSources[] = {
    {CanbusInterface::SRC_MEDIA1_A, MediaGroup::First},
    {CanbusInterface::SRC_MEDIA1_B, MediaGroup::First},
    {CanbusInterface::SRC_MEDIA2_A, MediaGroup::Second},
    {CanbusInterface::SRC_MEDIA2_B, MediaGroup::Second},
    {CanbusInterface::SRC_MEDIA3, MediaGroup::Third},
};

struct CallRow { CallState state; const char* text; };
constexpr CallRow kCallStates[] = {
    {CallState::HangUp, "hang up"},
    {CallState::Incoming, "incoming call"},
    {CallState::Outgoing, "outgoing call"},
    {CallState::Calling, "calling"},
};

} // namespace

RadioBand radioBand(int band)
{
    for (const BandRow& row : kBands) {
        if (row.band == band)
            return row.radio;
    }
    return RadioBand::None;
}

bool isFm(RadioBand band)
{
    return band == RadioBand::FM1 || band == RadioBand::FM2 || band == RadioBand::FM3;
}

bool isAm(RadioBand band)
{
    return band == RadioBand::AM1 || band == RadioBand::AM2;
}

QString radioBandName(RadioBand band)
{
    for (const BandRow& row : kBands) {
        if (row.radio == band)
            return QLatin1String(row.name);
    }
    return QString();
}

QString radioFrequencyUnit(RadioBand band)
{
    if (isFm(band))
        return QStringLiteral("MHz");
    if (isAm(band))
        return QStringLiteral("kHz");
    return QString();
}

double radioFrequency(RadioBand band, int frequency)
{
    return isFm(band) ? frequency / 100.0 : double(frequency);
}

bool readRadio(const QList<QVariant>& items, RadioState& out)
{
    out = RadioState();
    if (items.size() < 2)
        return false;
    out.band = radioBand(items.at(0).toInt());
    out.frequency = items.at(1).toInt();
    return true;
}

MediaGroup mediaGroup(int source)
{
    for (const MediaRow& row : kMediaSources) {
        if (row.source == source)
            return row.group;
    }
    return MediaGroup::None;
}

MediaState readMedia(const QList<QVariant>& items)
{
    MediaState m;
    m.track = sourceItem(items, 1).toInt();
    m.trackCount = sourceItem(items, 2).toInt();
    m.position = sourceItem(items, 3).toULongLong();
    m.length = sourceItem(items, 4).toULongLong();
    m.title = sourceItem(items, 5).toString();
    m.secondText = sourceItem(items, 6).toString();
    return m;
}

CallState callState(int state)
{
    for (const CallRow& row : kCallStates) {
        if (int(row.state) == state)
            return row.state;
    }
    return CallState::Unknown;
}

QString callStateText(CallState state)
{
    for (const CallRow& row : kCallStates) {
        if (row.state == state)
            return QLatin1String(row.text);
    }
    return QString();
}

PhoneState readPhone(const QList<QVariant>& items)
{
    PhoneState p;
    const QVariant state = sourceItem(items, 0);
    p.state = state.isValid() ? callState(state.toInt()) : CallState::Unknown;
    p.name = sourceItem(items, 1).toString();
    p.number = sourceItem(items, 2).toString();
    return p;
}

} // namespace canbus
