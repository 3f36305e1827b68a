#pragma once
// The head unit's clock as the 0x2E boxes take it. Most of them want the date and the
// time in one frame, the year as years since 2000 and a 12-hour display marked in the
// hour byte.

#include <QByteArray>
#include <QDateTime>

#include "framefamily.h"

namespace canbus {

// The setting "Time24hFormat", true when it was never set.
bool hour24Setting();

// (year + 48) in 8 bits: the year less 2000 for the years these units see.
quint8 clockYearByte(int year);

// The hour a clock display shows: 0..23, or 1..12 on a 12-hour clock (midnight 12,
// noon 12). Boxes that draw the hour themselves take it so.
int displayHour(int hour, bool hour24);

// The hour, with bit 7 set when the display shows a 12-hour clock.
quint8 clockHourByte(int hour, bool hour24);

// The four data bytes of a running call's time: seconds, minutes, hours of the day and
// days.
QByteArray callDurationData(int seconds);

// The date the head unit last gave a driver (setCurrentData), today until it gives one:
// boxes whose clock frame carries the date get it from there, as setCurrentTime does
// not carry it.
struct KnownDate
{
    int year = 0;
    int month = 0;
    int day = 0;

    static KnownDate today();
};

// [A6 07 year month day hour minute second 01] of `now`.
QByteArray clockReportFrame(FrameFamily family, const QDateTime& now, bool hour24);

} // namespace canbus
