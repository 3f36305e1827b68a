#include "screenlockctrl.h"

ScreenLockCtrl::ScreenLockCtrl() = default;

ScreenLockCtrl* ScreenLockCtrl::getInstance()
{
    static auto* instance = new ScreenLockCtrl;
    return instance;
}

void ScreenLockCtrl::setNightMode(bool on)
{
    ScreenLockCtrl* self = getInstance();
    const bool changed = self->m_night != on;
    self->m_night = on;
    emit self->nightModeSet(on);
    if (changed)
        emit self->nightModeChanged(on);
}

bool ScreenLockCtrl::isInNightModel()
{
    return getInstance()->m_night;
}

void ScreenLockCtrl::reset()
{
    getInstance()->m_night = false;
}
