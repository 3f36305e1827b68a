#include "data79info.h"

namespace {
const QString kNoValue = QStringLiteral("--");
constexpr int kHistoryDays = 31;
} // namespace

void energyInformation79::clear()
{
    powerText = motorPowerText = energyUseText = powerText3 = powerText4 = kNoValue;
    percent1 = percent2 = 0;
}

void energyEfficientDriving79::clear()
{
    for (QMap<int, QVariant>* map : {&dateByIndex, &valueByIndex, &distanceByIndex, &useByIndex}) {
        map->clear();
        for (int day = 0; day < kHistoryDays; ++day)
            map->insert(day, kNoValue);
    }
}

void Data79Info::clear()
{
    mileage.clear();
    functions.clear();
    voice.clear();
    vehicle.clear();
    setup.clear();
    energy.clear();
    history.clear();
}
