#include "datetimectrl.h"

#include <QAbstractEventDispatcher>
#include <QThread>
#include <QTime>
#include <QTimer>

namespace {

int minuteOfDay(const QTime& t)
{
    return t.hour() * 60 + t.minute();
}

} // namespace

DateTimeCtrl::DateTimeCtrl()
{
    refreshZone();
    remember(getCurrentDateTime());
}

DateTimeCtrl* DateTimeCtrl::getInstance()
{
    static auto* instance = new DateTimeCtrl;
    instance->ensurePolling();
    return instance;
}

QDateTime DateTimeCtrl::currentDateTime()
{
    return getInstance()->getCurrentDateTime();
}

QDateTime DateTimeCtrl::getCurrentDateTime() const
{
    if (m_fixed.isValid())
        return m_fixed;
    return QDateTime::fromMSecsSinceEpoch(QDateTime::currentMSecsSinceEpoch() + m_offsetMs,
                                          Qt::OffsetFromUTC, m_utcOffsetS);
}

void DateTimeCtrl::setCurrentDateTime(const QDate& date, int hour, int minute, int second, int flag)
{
    const QTime time(hour, minute, second);
    if (!date.isValid() || !time.isValid())
        return;
    const QDateTime target = m_fixed.isValid() ? QDateTime(date, time)
                                               : QDateTime(date, time, Qt::OffsetFromUTC, m_utcOffsetS);
    if (m_fixed.isValid())
        m_fixed = target;
    else
        m_offsetMs = target.toMSecsSinceEpoch() - QDateTime::currentMSecsSinceEpoch();
    m_lastFlag = flag;
    remember(target);
    emit dateTimeSet(target, flag);
    emit timeChanged(hour, minute, second);
    emit dateChanged(date.year(), date.month(), date.day());
}

void DateTimeCtrl::setFixedDateTime(const QDateTime& dateTime)
{
    m_fixed = dateTime;
    poll();
}

void DateTimeCtrl::clearFixedDateTime()
{
    m_fixed = QDateTime();
    poll();
}

bool DateTimeCtrl::isFixed() const
{
    return m_fixed.isValid();
}

int DateTimeCtrl::lastSetFlag() const
{
    return m_lastFlag;
}

void DateTimeCtrl::reset()
{
    m_fixed = QDateTime();
    m_offsetMs = 0;
    m_lastFlag = 0;
    refreshZone();
    // A reset is not a change of the clock that listeners asked to follow.
    remember(getCurrentDateTime());
}

void DateTimeCtrl::ensurePolling()
{
    // A timer needs an event loop in the thread that owns this object; callers
    // before the application exists, or from other threads, get the clock
    // without the change signals until the owner thread asks again.
    if (m_timer || QThread::currentThread() != thread()
        || !QAbstractEventDispatcher::instance(thread()))
        return;
    m_timer = new QTimer(this);
    m_timer->setInterval(1000);
    connect(m_timer, &QTimer::timeout, this, &DateTimeCtrl::poll);
    m_timer->start();
}

void DateTimeCtrl::refreshZone()
{
    m_utcOffsetS = QDateTime::currentDateTime().offsetFromUtc();
}

void DateTimeCtrl::poll()
{
    refreshZone();
    const QDateTime now = getCurrentDateTime();
    if (!now.isValid())
        return;
    const bool minuteMoved = minuteOfDay(now.time()) != m_lastMinuteOfDay || now.date() != m_lastDate;
    const bool dayMoved = now.date() != m_lastDate;
    remember(now);
    if (minuteMoved)
        emit timeChanged(now.time().hour(), now.time().minute(), now.time().second());
    if (dayMoved)
        emit dateChanged(now.date().year(), now.date().month(), now.date().day());
}

void DateTimeCtrl::remember(const QDateTime& now)
{
    m_lastDate = now.date();
    m_lastMinuteOfDay = minuteOfDay(now.time());
}
