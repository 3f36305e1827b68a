#ifndef DATETIMECTRL_H
#define DATETIMECTRL_H

#include <QDate>
#include <QDateTime>
#include <QObject>

class QTimer;

// The head unit's clock. On the desktop it never touches the system clock: a
// set time is kept as an offset from it. A one-second poll reports the clock
// as it moves: timeChanged() when the minute changes, dateChanged() when the
// day changes.
class DateTimeCtrl : public QObject
{
    Q_OBJECT
public:
    static DateTimeCtrl* getInstance();
    static QDateTime currentDateTime();

    QDateTime getCurrentDateTime() const;

    // Sets the clock to `date` and the time of day; `flag` tells where the time
    // came from (the vehicle passes 1) and is kept as given. Emits timeChanged()
    // and dateChanged() at once, whether or not they differ from before.
    // An invalid date or time is refused.
    void setCurrentDateTime(const QDate& date, int hour, int minute, int second, int flag);

    // Stops the clock at `dateTime` until clearFixedDateTime(), for tests that
    // need a clock that doesn't move. setCurrentDateTime() moves the fixed value.
    void setFixedDateTime(const QDateTime& dateTime);
    void clearFixedDateTime();
    bool isFixed() const;

    int lastSetFlag() const;
    // Back to the system clock, with no offset and no fixed value.
    void reset();

signals:
    void timeChanged(int hour, int minute, int second);
    void dateChanged(int year, int month, int day);
    // Once for each accepted setCurrentDateTime().
    void dateTimeSet(QDateTime dateTime, int flag);

private:
    DateTimeCtrl();
    void ensurePolling();
    void poll();
    // The local zone's offset, taken at start, at each poll and at a reset: every
    // conversion through the C library's local time would look the zone up again, and
    // vehicles set the clock many times a second. A change of zone or of summer time is
    // seen within the poll's second.
    void refreshZone();
    void remember(const QDateTime& now);

    QTimer* m_timer = nullptr;
    qint64 m_offsetMs = 0;
    int m_utcOffsetS = 0;
    QDateTime m_fixed;
    int m_lastFlag = 0;
    QDate m_lastDate;
    int m_lastMinuteOfDay = -1;
};

#endif // DATETIMECTRL_H
