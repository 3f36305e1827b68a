#pragma once
#include <QByteArray>
#include <QMetaType>
#include <QString>
#include <QVariantList>

#include "recordfields.h"

#include "seatheatingdata.h"
#include "tirepressureinformation.h"

// The climate record that every driver fills.
//
// Panel convention: the control bytes from airOnOff to airWindSpeedRight start at 255
// (-1 for the signed ones), which tells the panel that the vehicle has no such control.
// A driver's initData sets to 0 the controls its vehicle has.
class AirData
{
    Q_GADGET
    Q_PROPERTY(quint8 airPower MEMBER airPower)
    Q_PROPERTY(quint8 airOnOff MEMBER airOnOff)
    Q_PROPERTY(quint8 airAC MEMBER airAC)
    Q_PROPERTY(quint8 airAcMax MEMBER airAcMax)
    Q_PROPERTY(quint8 airAuto MEMBER airAuto)
    Q_PROPERTY(quint8 airAutoSoft MEMBER airAutoSoft)
    Q_PROPERTY(quint8 airAutoStrong MEMBER airAutoStrong)
    Q_PROPERTY(quint8 airDual MEMBER airDual)
    Q_PROPERTY(quint8 airSync MEMBER airSync)
    Q_PROPERTY(quint8 airInnerLoop MEMBER airInnerLoop)
    Q_PROPERTY(quint8 airOuterLoop MEMBER airOuterLoop)
    Q_PROPERTY(quint8 airAutoLoop MEMBER airAutoLoop)
    Q_PROPERTY(quint8 airEco MEMBER airEco)
    Q_PROPERTY(qint8 airRearLock MEMBER airRearLock)
    Q_PROPERTY(quint8 tempLeftVisible MEMBER tempLeftVisible)
    Q_PROPERTY(QString tempLeft MEMBER tempLeft)
    Q_PROPERTY(quint8 tempLeftLow MEMBER tempLeftLow)
    Q_PROPERTY(quint8 tempLeftHigh MEMBER tempLeftHigh)
    Q_PROPERTY(quint8 tempRightVisible MEMBER tempRightVisible)
    Q_PROPERTY(QString tempRight MEMBER tempRight)
    Q_PROPERTY(quint8 tempRightLow MEMBER tempRightLow)
    Q_PROPERTY(quint8 tempRightHigh MEMBER tempRightHigh)
    Q_PROPERTY(qint8 tempUnit MEMBER tempUnit)
    Q_PROPERTY(quint8 tempRearVisible MEMBER tempRearVisible)
    Q_PROPERTY(QString tempRear MEMBER tempRear)
    Q_PROPERTY(quint8 airDefrostFront MEMBER airDefrostFront)
    Q_PROPERTY(quint8 airDefrostMax MEMBER airDefrostMax)
    Q_PROPERTY(quint8 airDefrostRear MEMBER airDefrostRear)
    Q_PROPERTY(quint8 airWindUpLeft MEMBER airWindUpLeft)
    Q_PROPERTY(quint8 airWindFrontLeft MEMBER airWindFrontLeft)
    Q_PROPERTY(quint8 airWindDownLeft MEMBER airWindDownLeft)
    Q_PROPERTY(quint8 airWindSpeedLeft MEMBER airWindSpeedLeft)
    Q_PROPERTY(quint8 airWindUpRight MEMBER airWindUpRight)
    Q_PROPERTY(quint8 airWindFrontRight MEMBER airWindFrontRight)
    Q_PROPERTY(quint8 airWindDownRight MEMBER airWindDownRight)
    Q_PROPERTY(qint8 airWindSpeedRight MEMBER airWindSpeedRight)
    Q_PROPERTY(quint8 outdoorTempValid MEMBER outdoorTempValid)
    Q_PROPERTY(QString outdoorTemp MEMBER outdoorTemp)
    Q_PROPERTY(qint8 outdoorTempUnit MEMBER outdoorTempUnit)
    Q_PROPERTY(quint8 airShowFlag MEMBER airShowFlag)
    Q_PROPERTY(quint8 airValid MEMBER airValid)
    Q_PROPERTY(SeatHeatingData* seat READ seatRecord)
    Q_PROPERTY(qint32 id MEMBER id DESIGNABLE false)
    Q_PROPERTY(quint8 tempLeftFahrenheit MEMBER tempLeftFahrenheit DESIGNABLE false)
    Q_PROPERTY(quint8 tempRightFahrenheit MEMBER tempRightFahrenheit DESIGNABLE false)
    Q_PROPERTY(quint8 tempRearLow MEMBER tempRearLow DESIGNABLE false)
    Q_PROPERTY(quint8 tempRearHigh MEMBER tempRearHigh DESIGNABLE false)
    Q_PROPERTY(quint8 tempRearFahrenheit MEMBER tempRearFahrenheit DESIGNABLE false)
    Q_PROPERTY(quint8 tempRear2Low MEMBER tempRear2Low DESIGNABLE false)
    Q_PROPERTY(quint8 tempRear2High MEMBER tempRear2High DESIGNABLE false)
    Q_PROPERTY(quint8 tempRear2Fahrenheit MEMBER tempRear2Fahrenheit DESIGNABLE false)
    Q_PROPERTY(QString tempRear2 MEMBER tempRear2 DESIGNABLE false)
    Q_PROPERTY(quint8 airState1 MEMBER airState1 DESIGNABLE false)
    Q_PROPERTY(quint8 airState2 MEMBER airState2 DESIGNABLE false)
    Q_PROPERTY(quint8 airState3 MEMBER airState3 DESIGNABLE false)
    Q_PROPERTY(quint8 airState4 MEMBER airState4 DESIGNABLE false)
    Q_PROPERTY(quint8 airState5 MEMBER airState5 DESIGNABLE false)
    Q_PROPERTY(quint8 airState6 MEMBER airState6 DESIGNABLE false)
    Q_PROPERTY(quint8 airState7 MEMBER airState7 DESIGNABLE false)
    Q_PROPERTY(QByteArray rawFrame MEMBER rawFrame DESIGNABLE false)
    Q_PROPERTY(QVariantList airRearSpare READ airRearSpareList DESIGNABLE false)
    Q_PROPERTY(TirePressureInformation* tire READ tireRecord DESIGNABLE false)

public:
    AirData() = default;   // the member initialisers are the cleared state
    AirData(const AirData&) = default;
    AirData& operator=(const AirData&) = default;
    ~AirData() = default;

    // Back to "no data"; airValid and airShowFlag (per-driver switches) and the tyre
    // page are left as they are.
    void clear();

    // True when nothing the panel shows differs. The outdoor temperature, the tyre page
    // and the two switches are not compared: they are signalled by other means. The
    // third and fourth seat groups are compared crosswise (this record's fourth group
    // flag against the other's third) and rawFrame by containment.
    bool compare(const AirData& other) const;

    // For the field description: the nested groups are read in place (a copy of the seat
    // group would lose its group flags) and the spare bytes as a list.
    SeatHeatingData* seatRecord() const { return const_cast<SeatHeatingData*>(&seat); }
    TirePressureInformation* tireRecord() const { return const_cast<TirePressureInformation*>(&tire); }
    QVariantList airRearSpareList() const { return canbus::fieldList(airRearSpare); }

    qint32 id = 0;
    quint8 airValid = 1;
    quint8 airPower = 0;
    quint8 airShowFlag = 1;
    quint8 tempLeftVisible = 1;
    quint8 tempLeftLow = 0;
    quint8 tempLeftHigh = 0;
    quint8 tempRightVisible = 1;
    quint8 tempRightLow = 0;
    quint8 tempRightHigh = 0;
    quint8 tempLeftFahrenheit = 0;
    quint8 tempRightFahrenheit = 0;
    QString tempLeft;
    QString tempRight;
    quint8 tempRearVisible = 0;
    quint8 tempRearLow = 0;
    quint8 tempRearHigh = 0;
    quint8 tempRearFahrenheit = 0;
    QString tempRear = QString(QChar(0xFF));   // U+00FF: no value
    quint8 tempRear2Low = 0;
    quint8 tempRear2High = 0;
    quint8 tempRear2Fahrenheit = 0;
    QString tempRear2 = QString(QChar(0xFF));
    quint8 outdoorTempValid = 0;
    qint8 outdoorTempUnit = -1;
    QString outdoorTemp;
    qint8 tempUnit = -1;

    quint8 airOnOff = 255;
    quint8 airAC = 255;
    quint8 airAcMax = 255;
    quint8 airState1 = 255;
    quint8 airSync = 255;
    quint8 airDual = 255;
    quint8 airAuto = 255;
    quint8 airAutoSoft = 255;
    quint8 airAutoStrong = 255;
    quint8 airState2 = 255;
    quint8 airInnerLoop = 255;
    quint8 airAutoLoop = 255;
    quint8 airOuterLoop = 255;
    qint8 airRearLock = -1;
    quint8 airEco = 255;
    quint8 airState3 = 255;
    quint8 airState4 = 255;
    quint8 airDefrostFront = 255;
    quint8 airDefrostMax = 255;
    quint8 airDefrostRear = 255;
    quint8 airState5 = 255;
    quint8 airWindUpLeft = 255;
    quint8 airWindFrontLeft = 255;
    quint8 airWindDownLeft = 255;
    quint8 airState6 = 255;
    quint8 airWindSpeedLeft = 255;
    quint8 airWindUpRight = 255;
    quint8 airWindFrontRight = 255;
    quint8 airWindDownRight = 255;
    quint8 airState7 = 255;
    qint8 airWindSpeedRight = -1;
    quint8 airRearSpare[8] = {255, 255, 255, 255, 255, 255, 255, 255};

    SeatHeatingData seat;
    TirePressureInformation tire;
    QByteArray rawFrame;
};

Q_DECLARE_METATYPE(AirData)
Q_DECLARE_METATYPE(AirData*)
