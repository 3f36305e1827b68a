#pragma once
// The telephone's call state, straight from the "bluetooth" module: drivers that show
// calls on the vehicle's display listen to it themselves, besides the manager's
// setCallState.

#include <QObject>

namespace canbus {

// Connects the "bluetooth" module's callStateChanged(bool) to the driver's
// btCallStatesChangeSlot(bool). False, and nothing connected, when the head unit has
// no such module.
bool connectBluetoothCalls(QObject* driver);

} // namespace canbus
