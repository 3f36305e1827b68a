#include "carbodydata.h"

bool CarbodyData::compare(const CarbodyData& o) const
{
    return bodyFlag0 == o.bodyFlag0 && bodyFlag1 == o.bodyFlag1 && bodyFlag2 == o.bodyFlag2
        && odometerUnit == o.odometerUnit && odometer == o.odometer
        && bodyValue8 == o.bodyValue8 && engineSpeed == o.engineSpeed
        && speedUnit == o.speedUnit && vehicleSpeed == o.vehicleSpeed
        && speed2Unit == o.speed2Unit && vehicleSpeed2 == o.vehicleSpeed2
        && batteryVoltage == o.batteryVoltage && bodyByte26 == o.bodyByte26
        && fuelConsumptionUnit == o.fuelConsumptionUnit && fuelConsumption == o.fuelConsumption
        && bodyWarning30 == o.bodyWarning30 && bodyFlag31 == o.bodyFlag31
        && bodyByte32 == o.bodyByte32 && outdoorTempUnit == o.outdoorTempUnit
        && outdoorTempTenths == o.outdoorTempTenths && bodyWarning36 == o.bodyWarning36
        && bodyWarning37 == o.bodyWarning37 && bodyFlag38 == o.bodyFlag38;
}
