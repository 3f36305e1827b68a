#include "common/temperature.h"

namespace canbus {

namespace {
constexpr int kScaleLow = 0;
constexpr int kScaleHigh = 31;
constexpr int kFirstDegree = 1;
constexpr int kLastDegree = 28;
constexpr int kFahrenheitOffset = 59;   // 1 is 60 ℉
} // namespace

SetPoint commonSetPoint(int value, bool fahrenheit)
{
    SetPoint p;
    if (value == kScaleLow) {
        p.low = true;
    } else if (value == kScaleHigh) {
        p.high = true;
    } else if (value >= kFirstDegree && value <= kLastDegree) {
        p.keepText = false;
        p.text = fahrenheit ? QString::number(value + kFahrenheitOffset)
                            : tenthsText(160 + 5 * (value - 1));
    }
    return p;
}

SetPoint setPointFromRow(const SetPointRow& row)
{
    SetPoint p;
    p.low = row.low;
    p.high = row.high;
    if (row.text) {
        p.keepText = false;
        p.text = QString::fromUtf8(row.text);
    }
    return p;
}

void applySetPoint(AirData& air, const TempZone& zone, const SetPoint& point)
{
    air.*zone.low = point.low ? 1 : 0;
    air.*zone.high = point.high ? 1 : 0;
    if (!point.keepText)
        air.*zone.text = point.text;
}

QString outdoorTemperatureText(double value, bool fahrenheit)
{
    QString text = QString::number(value, 'f', 1);
    if (text.endsWith(QLatin1String(".0")))
        text.chop(2);
    // "-0" of a small negative value reads as a plain zero.
    if (text == QLatin1String("-0"))
        text = QStringLiteral("0");
    text.append(QChar(fahrenheit ? kFahrenheitSign : kCelsiusSign));
    return text;
}

QString tenthsText(int tenths)
{
    // Digits from the back; the magnitude of INT_MIN fits in 64 bits.
    char text[16];
    char* p = text + sizeof text;
    qint64 magnitude = tenths < 0 ? -qint64(tenths) : qint64(tenths);
    *--p = char('0' + magnitude % 10);
    *--p = '.';
    magnitude /= 10;
    do {
        *--p = char('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude > 0);
    if (tenths < 0)
        *--p = '-';
    return QString::fromLatin1(p, int(text + sizeof text - p));
}

QString oneDecimalCelsius(int degrees)
{
    return tenthsText(degrees * 10) + QChar(kCelsiusSign);
}

} // namespace canbus
