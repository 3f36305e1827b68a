#pragma once
#include <QMetaType>
#include <QString>
#include <QVariantList>

#include "recordfields.h"

// Tyre page of a vehicle, embedded in AirData.
class TirePressureInformation
{
    Q_GADGET
    Q_PROPERTY(qint32 tireUnit MEMBER tireUnit)
    Q_PROPERTY(QString tirePressureFrontLeft MEMBER tirePressureFrontLeft)
    Q_PROPERTY(QString tirePressureFrontRight MEMBER tirePressureFrontRight)
    Q_PROPERTY(QString tirePressureRearLeft MEMBER tirePressureRearLeft)
    Q_PROPERTY(QString tirePressureRearRight MEMBER tirePressureRearRight)
    Q_PROPERTY(QString tirePressureSpare MEMBER tirePressureSpare)
    Q_PROPERTY(quint8 tireStatus MEMBER tireStatus)
    Q_PROPERTY(QVariantList tireWarning READ tireWarningTable)

public:
    TirePressureInformation() { clear(); }
    TirePressureInformation(const TirePressureInformation&) = default;
    TirePressureInformation& operator=(const TirePressureInformation&) = default;
    ~TirePressureInformation() = default;

    // Resets the page to "no data". The fifth byte of each warning group is a
    // page-wide flag that survives a reset.
    void clear();

    QVariantList tireWarningTable() const { return canbus::fieldList(tireWarning); }

    qint32 tireUnit = -1;
    QString tirePressureFrontLeft;
    QString tirePressureFrontRight;
    QString tirePressureRearLeft;
    QString tirePressureRearRight;
    QString tirePressureSpare;
    quint8 tireStatus = 255;
    quint8 tireWarning[3][5] = {};
};

Q_DECLARE_METATYPE(TirePressureInformation*)
