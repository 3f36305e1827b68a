#include "common/vehiclemodel.h"

#include "datasavecontrol.h"

namespace canbus {

int storedCarModel(int highest)
{
    const int stored =
        DataSaveControl::readSettingData(QStringLiteral("CanbusCAR"), 0, QString()).toInt();
    return qBound(0, stored, highest);
}

int storedWheelButtonType(int highest)
{
    const int stored = DataSaveControl::readSettingData(QStringLiteral("SteeringWheelButtonType"), 0,
                                                        QString()).toInt();
    return qBound(0, stored, highest);
}

} // namespace canbus
