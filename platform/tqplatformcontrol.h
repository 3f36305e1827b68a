#ifndef TQPLATFORMCONTROL_H
#define TQPLATFORMCONTROL_H

#include <QHash>
#include <QObject>

namespace tqplfctrl {

// Low-level board control: GPIO lines. Callers take the instance with
// GetInstance(), use it, and give it back with ReleaseInstance(); the
// desktop counts the references so that a missing release shows.
class TQPlatformControl : public QObject
{
    Q_OBJECT
public:
    static TQPlatformControl* GetInstance();
    static void ReleaseInstance();
    // The same object without taking a reference, for hosts and tests that
    // only watch the signals.
    static TQPlatformControl* peekInstance();

    // Drives line `pin` of bank `group` to `value` (0 low, anything else high).
    // Returns 0 for success.
    int GpioWrite(int group, int pin, int value);
    // -1 for a line never written.
    int GpioRead(int group, int pin) const;

    int references() const;
    int writeCount() const;
    void reset();

signals:
    void instanceAcquired(int references);
    void instanceReleased(int references);
    void gpioWritten(int group, int pin, int value);

private:
    TQPlatformControl();

    QHash<quint64, int> m_lines;
    int m_references = 0;
    int m_writes = 0;
};

} // namespace tqplfctrl

#endif // TQPLATFORMCONTROL_H
