#pragma once
#include <QMetaType>
#include <QtGlobal>

#include <array>

// Parking radar bars: each sensor is the number of bars lit on a scale of 0 to
// radarLevels; 0 means nothing detected.
class RadarData
{
    Q_GADGET
    Q_PROPERTY(quint8 radarOn MEMBER radarOn)
    Q_PROPERTY(quint8 radarLevels MEMBER radarLevels)
    Q_PROPERTY(quint8 radarFrontLeft MEMBER radarFrontLeft)
    Q_PROPERTY(quint8 radarFrontLeftMid MEMBER radarFrontLeftMid)
    Q_PROPERTY(quint8 radarFrontRightMid MEMBER radarFrontRightMid)
    Q_PROPERTY(quint8 radarFrontRight MEMBER radarFrontRight)
    Q_PROPERTY(quint8 radarRearLeft MEMBER radarRearLeft)
    Q_PROPERTY(quint8 radarRearLeftMid MEMBER radarRearLeftMid)
    Q_PROPERTY(quint8 radarRearRightMid MEMBER radarRearRightMid)
    Q_PROPERTY(quint8 radarRearRight MEMBER radarRearRight)

public:
    RadarData() = default;
    RadarData(const RadarData&) = default;
    RadarData& operator=(const RadarData&) = default;
    ~RadarData() = default;

    bool isWarningState() const
    {
        bool anySensor = false;
        for (quint8 s : sensors())
            anySensor = anySensor || s != 0;
        return anySensor && radarOn == 1;
    }
    // Front left to right, then rear left to right.
    std::array<quint8, 8> sensors() const
    {
        return {radarFrontLeft, radarFrontLeftMid, radarFrontRightMid, radarFrontRight,
                radarRearLeft,  radarRearLeftMid,  radarRearRightMid,  radarRearRight};
    }
    // Takes the display down; the scale belongs to the vehicle and stays.
    void clear()
    {
        const quint8 levels = radarLevels;
        *this = RadarData();
        radarOn = 0;
        radarLevels = levels;
    }

    quint8 radarOn = 1;
    quint8 radarLevels = 10;
    quint8 radarFrontLeft = 0;
    quint8 radarFrontLeftMid = 0;
    quint8 radarFrontRightMid = 0;
    quint8 radarFrontRight = 0;
    quint8 radarRearLeft = 0;
    quint8 radarRearLeftMid = 0;
    quint8 radarRearRightMid = 0;
    quint8 radarRearRight = 0;
};

Q_DECLARE_METATYPE(RadarData)
Q_DECLARE_METATYPE(RadarData*)
