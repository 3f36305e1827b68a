#pragma once
// The vehicle variant the user picked for the box (setting "CanbusCAR"), and the
// repeating timer by which a driver keeps telling the box about it. 0 means that no
// variant was picked, and the drivers then send nothing.

#include <QTimer>

namespace canbus {

// The stored variant, 0 when none, values above `highest` (and below 0) held at the
// nearest end.
int storedCarModel(int highest);

// The steering wheel's button set the user picked for the box (setting
// "SteeringWheelButtonType"), 0 when none, held within 0..`highest` as above.
int storedWheelButtonType(int highest);

// A timer, child of `owner`, that calls `slot` every `intervalMs` for the owner's
// life. Being a child, it dies with the driver.
template <typename Owner, typename Slot>
QTimer* startRepeatingTimer(Owner* owner, int intervalMs, Slot slot)
{
    auto* timer = new QTimer(owner);
    QObject::connect(timer, &QTimer::timeout, owner, slot);
    timer->start(intervalMs);
    return timer;
}

// The same timer, made but not started: a driver starts and stops it itself (the
// seconds of a call, for instance).
template <typename Owner, typename Slot>
QTimer* makeTimer(Owner* owner, int intervalMs, Slot slot)
{
    auto* timer = new QTimer(owner);
    timer->setInterval(intervalMs);
    QObject::connect(timer, &QTimer::timeout, owner, slot);
    return timer;
}

} // namespace canbus
