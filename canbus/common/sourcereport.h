#pragma once
// The source frames (type 0xC0, eight data bytes) that several 0x2E boxes take from
// the head unit: which source plays, the radio band and frequency, or the media track
// and position. Texts go by other frames (mediatextreport.h).

#include <QByteArray>

#include "framefamily.h"
#include "common/sourcestate.h"

namespace canbus {

constexpr quint8 kSourceReportType = 0xC0;

// The band as these boxes number it: FM1..FM3 1..3, AM1 0x11, AM2 0x12, none 0.
quint8 radioBandCode(RadioBand band);

// [C0 08 01 01 band freqLow freqHigh 00 00 00]: radio, the frequency as the head unit
// reports it, low byte first.
QByteArray radioReportFrame(FrameFamily family, const RadioState& radio);

// [C0 08 source 11 trackLow trackHigh countLow countHigh minutes seconds]: a media
// source (`source` the box's number for it) at a track and a position in seconds.
QByteArray mediaPlayReportFrame(FrameFamily family, quint8 source, int track, int count,
                                qulonglong positionSeconds);

} // namespace canbus
