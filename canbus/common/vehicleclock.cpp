#include "vehicleclock.h"

#include <QDateTime>

#include "datetimectrl.h"

namespace canbus {

bool VehicleClock::follow(int hour, int minute, Seconds seconds, int flag)
{
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59)
        return false;
    const int minuteOfDay = hour * 60 + minute;
    if (minuteOfDay == m_lastMinuteOfDay)
        return false;
    m_lastMinuteOfDay = minuteOfDay;
    DateTimeCtrl* clock = DateTimeCtrl::getInstance();
    const QDateTime now = clock->getCurrentDateTime();
    const int second = seconds == Seconds::Keep ? now.time().second() : 0;
    clock->setCurrentDateTime(now.date(), hour, minute, second, flag);
    return true;
}

} // namespace canbus
