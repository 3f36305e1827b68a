#pragma once
#include <QByteArray>
#include <QMetaType>
#include <QString>

#include "seatheatingdata.h"
#include "tirepressureinformation.h"

// The climate record that every driver fills.
//
// Panel convention: the control bytes from airOnOff to airWindSpeedRight start at 255
// (-1 for the signed ones), which tells the panel that the vehicle has no such control.
// A driver's initData sets to 0 the controls its vehicle has.
class AirData
{
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
