#include "common/sourcereport.h"

namespace canbus {

namespace {

struct BandCode { RadioBand band; quint8 code; };
constexpr BandCode kBandCodes[] = {
    {RadioBand::FM1, 0x01},
    {RadioBand::FM2, 0x02},
    {RadioBand::FM3, 0x03},
    {RadioBand::AM1, 0x11},
    {RadioBand::AM2, 0x12},
};

constexpr quint8 kRadioSource = 0x01;
constexpr quint8 kRadioPlaying = 0x01;
constexpr quint8 kMediaPlaying = 0x11;

quint8 low(int v) { return quint8(v & 0xFF); }
quint8 high(int v) { return quint8((v >> 8) & 0xFF); }

} // namespace

quint8 radioBandCode(RadioBand band)
{
    for (const BandCode& row : kBandCodes) {
        if (row.band == band)
            return row.code;
    }
    return 0;
}

QByteArray radioReportFrame(FrameFamily family, const RadioState& radio)
{
    // The three bytes behind the frequency carry nothing for the radio.
    return buildFrame(family, kSourceReportType,
                      {kRadioSource, kRadioPlaying, radioBandCode(radio.band),
                       low(radio.frequency), high(radio.frequency), 0, 0, 0});
}

QByteArray mediaPlayReportFrame(FrameFamily family, quint8 source, int track, int count,
                                qulonglong positionSeconds)
{
    return buildFrame(family, kSourceReportType,
                      {source, kMediaPlaying, low(track), high(track), low(count), high(count),
                       quint8((positionSeconds / 60) & 0xFF), quint8(positionSeconds % 60)});
}

} // namespace canbus
