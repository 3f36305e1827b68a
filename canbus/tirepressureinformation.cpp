#include "tirepressureinformation.h"

void TirePressureInformation::clear()
{
    const QString none = QStringLiteral("--");
    tireUnit = -1;
    tirePressureFrontLeft = none;
    tirePressureFrontRight = none;
    tirePressureRearLeft = none;
    tirePressureRearRight = none;
    tirePressureSpare = none;
    tireStatus = 255;
    for (auto& group : tireWarning) {
        for (int tyre = 0; tyre < 4; ++tyre)
            group[tyre] = 0;
    }
}
