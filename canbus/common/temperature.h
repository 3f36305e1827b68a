#pragma once
// Climate set points and the outdoor temperature as the panel shows them.
//
// Most boxes send a set point as one byte on a shared scale: 0 the low end, 31 the
// high end, 1..28 degrees (16.0 to 29.5 in half steps, or 60 to 87 in Fahrenheit).
// 29 and 30 name nothing, so the zone keeps the text it had. A driver whose vehicle
// differs in a few values lists those values as rows; a driver with a scale of its
// own builds SetPoint values itself and still applies them through applySetPoint.

#include <QString>
#include <cstddef>

#include "airdata.h"

namespace canbus {

// What one set-point byte says about a zone of the panel.
struct SetPoint
{
    bool low = false;
    bool high = false;
    bool keepText = true;   // no text in this byte: the zone's text stays as it was
    QString text;
};

// The shared scale.
SetPoint commonSetPoint(int value, bool fahrenheit);

// A value of a vehicle's scale that differs from the shared one. `text` null keeps
// the zone's text; otherwise it is the zone's new text in either unit.
struct SetPointRow
{
    quint8 value;
    bool low;
    bool high;
    const char* text;
};

SetPoint setPointFromRow(const SetPointRow& row);

// The shared scale with the driver's rows taking precedence.
template <std::size_t N>
SetPoint setPointWith(const SetPointRow (&rows)[N], int value, bool fahrenheit)
{
    for (const SetPointRow& row : rows) {
        if (row.value == value)
            return setPointFromRow(row);
    }
    return commonSetPoint(value, fahrenheit);
}

// The fields of AirData that make up one temperature zone.
struct TempZone
{
    quint8 AirData::*low;
    quint8 AirData::*high;
    QString AirData::*text;
};

constexpr TempZone kZoneLeft{&AirData::tempLeftLow, &AirData::tempLeftHigh, &AirData::tempLeft};
constexpr TempZone kZoneRight{&AirData::tempRightLow, &AirData::tempRightHigh, &AirData::tempRight};
constexpr TempZone kZoneRear{&AirData::tempRearLow, &AirData::tempRearHigh, &AirData::tempRear};
constexpr TempZone kZoneRear2{&AirData::tempRear2Low, &AirData::tempRear2High, &AirData::tempRear2};

// Sets the zone's low and high flags and, unless the point keeps it, its text.
void applySetPoint(AirData& air, const TempZone& zone, const SetPoint& point);

// The two values of a left/right pair as the panel's left and right. Boxes send
// them driver's side first, so on a right-hand-drive vehicle they are exchanged.
template <typename T>
struct Sides
{
    T left;
    T right;
};

template <typename T>
constexpr Sides<T> leftRight(T driverFirst, T second, bool rightDriver)
{
    return rightDriver ? Sides<T>{second, driverFirst} : Sides<T>{driverFirst, second};
}

// Unit signs of the outdoor temperature.
constexpr char16_t kCelsiusSign = u'\u2103';
constexpr char16_t kFahrenheitSign = u'\u2109';

// "21.5℃", "21℃", "-3℉": one decimal, a whole number without its ".0", then the sign.
QString outdoorTemperatureText(double value, bool fahrenheit);

// Tenths of a degree with one decimal, "22.5", "-0.5", "16.0": what
// QString::number(tenths / 10.0, 'f', 1) writes, without formatting a double, which
// costs more than the rest of a climate frame.
QString tenthsText(int tenths);

// Whole degrees Celsius as some boxes' displays show them: always one decimal, "21.0℃".
QString oneDecimalCelsius(int degrees);

} // namespace canbus
