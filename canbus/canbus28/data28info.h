#pragma once
// The record of the MQB driver: what the vehicle reports beyond the shared climate,
// door, body and radar records. Plain values with named sub-records; the whole travels
// as a QVariant (getDataInfo / setDataInfo), so everything here copies by value.
// Every clear() is the default state: numbers 0, texts empty unless said otherwise.

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include "dataidinfo.h"

// Parking assistance and the vehicle's reminders (frames 0x14, 0x25, 0x2A, 0x60, 0x62).
class ParkingAssistStatus
{
public:
    void clear() { *this = ParkingAssistStatus(); }

    quint8 parkBit3 = 0, parkBit2 = 0, parkBit1 = 0, parkBit0 = 0;
    quint8 frame14Byte0 = 0, frame14Byte1 = 0;
    quint8 frame2ABand = 0;   // 0..6
    QString vehicleReminder1, vehicleReminder2, vehicleReminder3;
    QString vehicleReminder4, vehicleReminder5, vehicleReminder6;
    quint8 vehicleReminderFlag = 0;
    QString consumerPrompt1, consumerPrompt2, consumerPrompt3;
};

// Rear climate panel (frame 0x28).
class RearSeatAirConditioner
{
public:
    void clear() { *this = RearSeatAirConditioner(); }

    quint8 rearBit7 = 0, rearBit3 = 0;
    quint8 rearD1Bit6 = 0, rearD1Bit5 = 0, rearD1Level = 0;
    quint8 rearD2High = 0, rearD2Low = 0;
    QString rearTempText;
};

// Side radar sensors (frames 0x32, 0x33).
class SideRadar
{
public:
    void clear() { *this = SideRadar(); }

    quint8 sideLevels = 0;
    quint8 sideGroupA[4] = {0, 0, 0, 0};
    quint8 sideGroupB[4] = {0, 0, 0, 0};
};

// The factory amplifier (frame 0x51).
class AmplifierInformation
{
public:
    void clear() { *this = AmplifierInformation(); }

    quint8 ampLevel = 0;   // 0..30
    quint8 ampBand1 = 0, ampBand2 = 0, ampBand3 = 0, ampBand4 = 0, ampBand5 = 0;   // 0..18
    quint8 ampMode = 0;    // 0..7
};

// The vehicle's settings pages (frame 0x40), one byte per item, named by the page that
// fills it and the item's place there; languageCode also follows the head unit's
// language.
class BodyStatusInformation
{
public:
    void clear() { *this = BodyStatusInformation(); }

    quint8 page10Item0 = 0;
    quint8 page20Item0 = 0, page20Item1 = 0, page20Item2 = 0, page20Item3 = 0;
    quint8 page30Item0 = 0, page30Item1 = 0, page30Item2 = 0, page30Item3 = 0;
    quint8 page31Item0 = 0, page31Item1 = 0, page31Item2 = 0, page31Item3 = 0, page31Item4 = 0,
        page31Item5 = 0, page31Item6 = 0, page31Item7 = 0, page31Item8 = 0, page31Item9 = 0;
    quint8 page40Item0 = 0, page40Item1 = 0, page40Item2 = 0, page40Item3 = 0, page40Item4 = 0,
        page40Item5 = 0, page40Item6 = 0, page40Item7 = 0, page40Item8 = 0, page40Item9 = 0,
        page40Item10 = 0;
    quint8 page50Item0 = 0, page50Item1 = 0, page50Item2 = 0, page50Item3 = 0, page50Item4 = 0,
        page50Item5 = 0, page50Item6 = 0;
    quint8 page51Item0 = 0, page51Item1 = 0, page51Item2 = 0, page51Item3 = 0, page51Item4 = 0,
        page51Item5 = 0, page51Item6 = 0, page51Item7 = 0;
    quint8 page52Item0 = 0, page52Item1 = 0, page52Item2 = 0, page52Item3 = 0, page52Item4 = 0;
    quint8 page60Item0 = 0, page60Item1 = 0, page60Item2 = 0, page60Item3 = 0, page60Item4 = 0;
    quint8 page70Item0 = 0, page70Item1 = 0, page70Item2 = 0, page70Item3 = 0, page70Item4 = 0,
        page70Item5 = 0, page70Item6 = 0, page70Item7 = 0, page70Item8 = 0;
    quint8 page80Item0 = 0, page80Item1 = 0, page80Item2 = 0, page80Item3 = 0, page80Item4 = 0,
        page80Item5 = 0, page80Item6 = 0, page80Item7 = 0, page80Item8 = 0, page80Item9 = 0;
    quint8 page90Item0 = 0, page90Item1 = 0, page90Item2 = 0, page90Item3 = 0, page90Item4 = 0,
        page90Item5 = 0, page90Item6 = 0, page90Item7 = 0;
    quint8 pageA0Item0 = 0, pageA0Item1 = 0, pageA0Item2 = 0, pageA0Item3 = 0, pageA0Item4 = 0,
        pageA0Item5 = 0, pageA0Item6 = 0, pageA0Item7 = 0;
    quint8 pageB0Item0 = 0, pageB0Item1 = 0, pageB0Item2 = 0, pageB0Item3 = 0, pageB0Item4 = 0,
        pageB0Item5 = 0;
    quint8 pageB1Item0 = 0, pageB1Item1 = 0, pageB1Item2 = 0, pageB1Item3 = 0, pageB1Item4 = 0,
        pageB1Item5 = 0, pageB1Item6 = 0;
    quint8 pageB2Item0 = 0, pageB2Item1 = 0, pageB2Item2 = 0, pageB2Item3 = 0;
    quint8 pageC0Item0 = 0;
    QString pageC0Text;
    quint8 pageC0Item1 = 0, pageC0Item2 = 0, pageC0Raw = 0;
    quint8 pageC1Item0 = 0, pageC1Item1 = 0, pageC1Item2 = 0;
    quint8 languageCode = 0;
    quint8 page10Item1 = 0;
};

// Trip computer texts (frame 0x50), each a number followed by its unit.
class DrivingData
{
public:
    void clear() { *this = DrivingData(); }

    quint16 shortValue1 = 0;
    quint16 shortValue2 = 0;
    QString shortDistanceTextA, shortDistanceTextB, shortDistanceTextC;
    QString distanceTextA, distanceTextB, distanceTextC;
    QString consumptionTextA, consumptionTextB, consumptionTextC;
    QString speedTextA, speedTextB, speedTextC;
    QString durationTextA, durationTextB, durationTextC;
    QString consumptionText61;
    QString flowText60;
    QString electricTextA, electricTextB, electricTextC;
    QString numberText80;
};

// The electric drive display (frames 0x52, 0x53).
class ElectronicSisplay28
{
public:
    void clear() { *this = ElectronicSisplay28(); }

    quint16 displayWord1 = 0, displayWord2 = 0;
    quint16 displayState1 = 0;   // 0..2
    quint16 displayState2 = 0;   // 0..1
    quint16 displayState3 = 0;   // 0..4
    quint8 displayByte = 0;
    quint16 displayWord3 = 0, displayWord4 = 0;
    quint8 displayPercent = 0;   // 0..100
    quint16 displayWord5 = 0;
    QByteArray displayText1, displayText2;
};

// Service intervals (frame 0x63); a report in a state the panel can't show reads "--".
class VehicleConditionInspection28
{
public:
    void clear() { *this = VehicleConditionInspection28(); }

    QString inspectionDays1, inspectionDistance1, inspectionDays2, inspectionDistance2;
    quint8 inspectionFlag = 0;
};

// One departure or charging timer of the electric management (frame 0x54).
class ElectricTimer28
{
public:
    void clear() { *this = ElectricTimer28(); }

    quint8 hour = 0, minute = 0;
    quint8 bit7 = 0, bit6 = 0, bit5 = 0, bit4 = 0;
    quint8 mode = 0;
    quint8 flag7 = 0, flag6 = 0, flag5 = 0, flag4 = 0, flag3 = 0, flag2 = 0, flag1 = 0;
    quint8 startHour = 0, startMinute = 0, endHour = 0, endMinute = 0;
    quint8 percent = 0;
};

class ElectricManagementStatus28
{
public:
    void clear() { *this = ElectricManagementStatus28(); }

    quint8 managementBit2 = 0, managementBit1 = 0, managementBit0 = 0;
    ElectricTimer28 timerBlock1, timerBlock2, timerBlock3;
    quint8 managementFlag = 0;
};

class Data28Info : public DataIdInfo
{
public:
    void clear() { *this = Data28Info(); }

    QByteArray frame14Payload;
    QByteArray frame24Payload;
    QByteArray frame25Payload;
    QByteArray spareBytes16;    // no frame fills it
    QByteArray frame2APayload;
    QByteArray versionPayload;
    quint8 spareFlags[7] = {0, 0, 0, 0, 0, 0, 0};   // no frame fills them
    ParkingAssistStatus parkingAssist;
    RearSeatAirConditioner rearAir;
    SideRadar sideRadar;
    AmplifierInformation amplifier;
    BodyStatusInformation bodyStatus;
    DrivingData driving;
    ElectronicSisplay28 electronicDisplay;
    VehicleConditionInspection28 inspection;
    ElectricManagementStatus28 electricManagement;
};
Q_DECLARE_METATYPE(Data28Info)
