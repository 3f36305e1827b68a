#include "tripcomputer87.h"

#include <QCoreApplication>

#include "canbusinterface.h"
#include "common/statusframe.h"
#include "common/temperature.h"
#include "framereader.h"

namespace trip87 {

namespace {

QString unit(const char* text)
{
    return QCoreApplication::translate("TripComputer87", text);
}

// "--" past the box's limit for the value.
QString limited(quint16 value, quint16 limit, const QString& text)
{
    return value <= limit ? text : QStringLiteral("--");
}

// Tenths of litres per 100 km, shown up to 300.0.
QString consumption(quint16 tenths)
{
    return limited(tenths, 3000, canbus::scaledNumber(tenths * 0.1) + unit("L/100KM"));
}

QString whole(quint16 value, quint16 limit, const char* suffix)
{
    return limited(value, limit, QString::number(value) + unit(suffix));
}

} // namespace

void decodeCurrentTrip(const FrameReader& f, TripTexts87& texts)
{
    texts.tripConsumption = consumption(f.be16(3));
    texts.tripRange = whole(f.be16(5), 2000, "KM");
    texts.tripDistance = whole(f.be16(7), 6000, "KM");
}

void decodeStoredTrip(const FrameReader& f, StoredTrip which, TripTexts87& texts)
{
    const bool first = which == StoredTrip::First;
    (first ? texts.trip1Consumption : texts.trip2Consumption) = consumption(f.be16(3));
    (first ? texts.trip1Speed : texts.trip2Speed) = whole(f.be16(5), 250, "KM/H");
    (first ? texts.trip1Distance : texts.trip2Distance) = whole(f.be16(7), 9999, "KM");
}

int outdoorDegrees(const FrameReader& f)
{
    const int magnitude = f.at(3) & 0x7F;
    return f.bit(3, 7) ? -magnitude : magnitude;
}

QString outdoorText(int degrees)
{
    return canbus::oneDecimalCelsius(degrees);
}

QString showOutdoor(CanbusInterface& driver, const FrameReader& f)
{
    const QString text = outdoorText(outdoorDegrees(f));
    if (AirData* air = driver.getAirData()) {
        air->outdoorTempUnit = 0;
        air->outdoorTempValid = 1;
        air->outdoorTemp = text;
    }
    emit driver.outdoorTemperatureChanged(text, 0);
    return text;
}

quint8 radarBars(quint8 count)
{
    const int b = qMin<int>(count, 5);
    return b == 0 ? 0 : quint8((5 - b) * 2);
}

} // namespace trip87
