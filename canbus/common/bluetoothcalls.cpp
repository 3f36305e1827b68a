#include "common/bluetoothcalls.h"

#include "modulemanager.h"
#include "signalwiring.h"

namespace canbus {

bool connectBluetoothCalls(QObject* driver)
{
    const auto peer = tqappframework::ModuleManager::self()->getModule(QStringLiteral("bluetooth"));
    QObject* phone = peer ? peer->getModuleObj() : nullptr;
    return connectIfPresent(phone, "callStateChanged(bool)", driver, "btCallStatesChangeSlot(bool)");
}

} // namespace canbus
