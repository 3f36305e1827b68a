#ifndef SCREENLOCKCTRL_H
#define SCREENLOCKCTRL_H

#include <QObject>

// The screen's day and night modes. Callers use the static functions; the
// instance carries the signals.
class ScreenLockCtrl : public QObject
{
    Q_OBJECT
public:
    static ScreenLockCtrl* getInstance();

    // Emits nightModeSet() for every call and nightModeChanged() when the mode flips.
    static void setNightMode(bool on);
    // (sic) The head unit's own spelling, kept so that callers compile against both.
    static bool isInNightModel();
    static void reset();

signals:
    void nightModeSet(bool on);
    void nightModeChanged(bool on);

private:
    ScreenLockCtrl();

    bool m_night = false;
};

#endif // SCREENLOCKCTRL_H
