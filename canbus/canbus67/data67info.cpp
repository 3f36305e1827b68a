#include "data67info.h"

namespace {
const QString kNoValue = QStringLiteral("--");
} // namespace

void NewEnergySettingInformation_2_67::clear()
{
    energyState = 0;
    consumptionNow = consumptionAverage = powerNow = powerTotal = consumptionTrip = kNoValue;
}

void NewEnergySettingInformation_3_67::clear()
{
    rangeText1 = rangeText2 = rangeText3 = kNoValue;
    chargeLevelText = chargeTimeText1 = chargeTimeText2 = kNoValue;
    chargeState = chargeDetail = 0;
}

void NewEnergySettingInformation_4_67::clear()
{
    energyText1 = energyText2 = energyTimeText = energyDistance = kNoValue;
    energyValue1 = energyValue2 = energyValue3 = kNoValue;
    energyLevel1 = energyLevel2 = 0;
}

void NewEnergySettingInformation_5_67::clear()
{
    *this = NewEnergySettingInformation_5_67();
    distanceItem = weightItem = kNoValue;
}

void Data67Info::clear()
{
    mileage.clear();
    functions.clear();
    voice.clear();
    body.clear();
    tires.clear();
    panorama.clear();
    setup.clear();
    energy1.clear();
    energy2.clear();
    energy3.clear();
    energy4.clear();
    energy5.clear();
    amplifier.clear();
}
