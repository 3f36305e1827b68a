#pragma once
// The trip computer, outdoor and radar values of the RuiZiCheng Peugeot boxes. The box that
// keeps the vehicle's own display (86) sends the same frames as the full one (87), so
// both decode them here.

#include <QString>
#include <QtGlobal>

class CanbusInterface;
class FrameReader;

// Texts read "--" until their frame came, and again for a value past its limit.
struct TripTexts87
{
    void clear() { *this = TripTexts87(); }

    QString tripConsumption = QStringLiteral("--");
    QString tripRange = QStringLiteral("--");
    QString tripDistance = QStringLiteral("--");
    QString trip1Consumption = QStringLiteral("--");
    QString trip1Speed = QStringLiteral("--");
    QString trip1Distance = QStringLiteral("--");
    QString trip2Consumption = QStringLiteral("--");
    QString trip2Speed = QStringLiteral("--");
    QString trip2Distance = QStringLiteral("--");
    QString outdoorText = QStringLiteral("--");
};

namespace trip87 {

// Frame 0x33, bytes 3 to 8: consumption, range and distance since the start.
void decodeCurrentTrip(const FrameReader& f, TripTexts87& texts);
// Frames 0x34 and 0x35: the two stored trips, consumption, average speed, distance.
enum class StoredTrip { First, Second };
void decodeStoredTrip(const FrameReader& f, StoredTrip which, TripTexts87& texts);

// Frame 0x36: byte 3 in whole degrees Celsius, bit 7 the sign. The box's display keeps
// the ".0" of a whole number, and so does this text ("21.0℃").
int outdoorDegrees(const FrameReader& f);
QString outdoorText(int degrees);
// The climate record takes the text (always valid, in Celsius) and the panel hears of
// it with every frame; the text is returned for the driver's own record.
QString showOutdoor(CanbusInterface& driver, const FrameReader& f);

// The box's radar count, 1 near to 5 far and 0 for nothing seen, as bars of a ten-bar
// display, full when near. A count past 5 is as far as 5.
quint8 radarBars(quint8 count);

} // namespace trip87
