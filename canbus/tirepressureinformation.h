#pragma once
#include <QString>

// Tyre page of a vehicle, embedded in AirData.
class TirePressureInformation
{
public:
    TirePressureInformation() { clear(); }
    TirePressureInformation(const TirePressureInformation&) = default;
    TirePressureInformation& operator=(const TirePressureInformation&) = default;
    ~TirePressureInformation() = default;

    // Resets the page to "no data". The fifth byte of each warning group is a
    // page-wide flag that survives a reset.
    void clear();

    qint32 tireUnit = -1;
    QString tirePressureFrontLeft;
    QString tirePressureFrontRight;
    QString tirePressureRearLeft;
    QString tirePressureRearRight;
    QString tirePressureSpare;
    quint8 tireStatus = 255;
    quint8 tireWarning[3][5] = {};
};
