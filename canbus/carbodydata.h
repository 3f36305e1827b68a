#pragma once
#include <QMetaType>
#include <QtGlobal>

// Driving data and body state flags.
class CarbodyData
{
    Q_GADGET
    Q_PROPERTY(quint16 vehicleSpeed MEMBER vehicleSpeed)
    Q_PROPERTY(qint8 speedUnit MEMBER speedUnit)
    Q_PROPERTY(qint32 engineSpeed MEMBER engineSpeed)
    Q_PROPERTY(qint32 odometer MEMBER odometer)
    Q_PROPERTY(quint8 odometerUnit MEMBER odometerUnit)
    Q_PROPERTY(qint16 outdoorTempTenths MEMBER outdoorTempTenths)
    Q_PROPERTY(quint8 outdoorTempUnit MEMBER outdoorTempUnit)
    Q_PROPERTY(quint16 batteryVoltage MEMBER batteryVoltage)
    Q_PROPERTY(quint16 fuelConsumption MEMBER fuelConsumption)
    Q_PROPERTY(qint8 fuelConsumptionUnit MEMBER fuelConsumptionUnit)
    Q_PROPERTY(quint16 vehicleSpeed2 MEMBER vehicleSpeed2)
    Q_PROPERTY(quint8 speed2Unit MEMBER speed2Unit)
    Q_PROPERTY(qint32 bodyValue8 MEMBER bodyValue8)
    Q_PROPERTY(quint8 bodyFlag0 MEMBER bodyFlag0)
    Q_PROPERTY(quint8 bodyFlag1 MEMBER bodyFlag1)
    Q_PROPERTY(quint8 bodyFlag2 MEMBER bodyFlag2)
    Q_PROPERTY(quint8 bodyFlag31 MEMBER bodyFlag31)
    Q_PROPERTY(quint8 bodyFlag38 MEMBER bodyFlag38)
    Q_PROPERTY(quint8 bodyByte26 MEMBER bodyByte26)
    Q_PROPERTY(quint8 bodyByte32 MEMBER bodyByte32)
    Q_PROPERTY(quint8 bodyWarning30 MEMBER bodyWarning30)
    Q_PROPERTY(quint8 bodyWarning36 MEMBER bodyWarning36)
    Q_PROPERTY(quint8 bodyWarning37 MEMBER bodyWarning37)

public:
    CarbodyData() = default;
    CarbodyData(const CarbodyData&) = default;
    CarbodyData& operator=(const CarbodyData&) = default;
    ~CarbodyData() = default;

    bool isWarningState() const
    {
        return bodyWarning36 == 1 || bodyWarning37 == 1 || bodyWarning30 == 1;
    }
    // The second warning view counts a cleared bodyFlag1 as a warning too.
    bool isWarningState1() const
    {
        return bodyWarning36 == 1 || bodyFlag1 == 0 || bodyWarning30 == 1;
    }
    bool compareWarningPart(const CarbodyData& o) const
    {
        return bodyWarning36 == o.bodyWarning36 && bodyWarning30 == o.bodyWarning30;
    }
    bool compare(const CarbodyData& o) const;

    quint8 bodyFlag0 = 255;
    quint8 bodyFlag1 = 255;
    quint8 bodyFlag2 = 255;
    quint8 odometerUnit = 255;
    qint32 odometer = 0;
    qint32 bodyValue8 = 0;
    qint32 engineSpeed = 0;
    qint8 speedUnit = -1;
    quint16 vehicleSpeed = 0;
    quint8 speed2Unit = 255;
    quint16 vehicleSpeed2 = 0;
    quint16 batteryVoltage = 0;
    quint8 bodyByte26 = 0;
    qint8 fuelConsumptionUnit = -1;
    quint16 fuelConsumption = 0;
    quint8 bodyWarning30 = 255;
    quint8 bodyFlag31 = 255;
    quint8 bodyByte32 = 0;
    quint8 outdoorTempUnit = 255;
    qint16 outdoorTempTenths = 0;
    quint8 bodyWarning36 = 255;
    quint8 bodyWarning37 = 255;
    quint8 bodyFlag38 = 255;
};

Q_DECLARE_METATYPE(CarbodyData)
Q_DECLARE_METATYPE(CarbodyData*)
