#include "common/clockreport.h"

#include "datasavecontrol.h"
#include "datetimectrl.h"

namespace canbus {

namespace {
constexpr quint8 kClockType = 0xA6;
constexpr quint8 kTwelveHourMark = 0x80;
constexpr quint8 kClockFromHeadUnit = 0x01;   // the last byte: the head unit's clock
} // namespace

bool hour24Setting()
{
    return DataSaveControl::readSettingData(QStringLiteral("Time24hFormat"), true, QString()).toBool();
}

KnownDate KnownDate::today()
{
    const QDate date = DateTimeCtrl::getInstance()->getCurrentDateTime().date();
    return KnownDate{date.year(), date.month(), date.day()};
}

quint8 clockYearByte(int year)
{
    return quint8((year + 48) & 0xFF);
}

int displayHour(int hour, bool hour24)
{
    if (hour24)
        return hour;
    return hour == 0 ? 12 : (hour > 12 ? hour - 12 : hour);
}

quint8 clockHourByte(int hour, bool hour24)
{
    const quint8 h = quint8(hour & 0x7F);
    return hour24 ? h : quint8(h | kTwelveHourMark);
}

QByteArray clockReportFrame(FrameFamily family, const QDateTime& now, bool hour24)
{
    const QDate d = now.date();
    const QTime t = now.time();
    return buildFrame(family, kClockType,
                      {clockYearByte(d.year()), quint8(d.month()), quint8(d.day()),
                       clockHourByte(t.hour(), hour24), quint8(t.minute()), quint8(t.second()),
                       kClockFromHeadUnit});
}

QByteArray callDurationData(int seconds)
{
    const char data[] = {char(seconds % 60), char(seconds / 60 % 60), char(seconds / 3600 % 24), char(seconds / 86400)};
    return QByteArray(data, sizeof data);
}

} // namespace canbus
