#pragma once
// The record of the Mazda box: the trip computer of the multiplexed status frame, the
// pages the vehicle has, the clock and service values, the driving display and
// settings, fuel history, i-stop, the factory disc player, amplifier and radio, and
// the security settings. Plain values with named sub-records; the whole travels as a
// QVariant. Every clear() is the default state: numbers 0, texts as noted.

#include <QMap>
#include <QMetaType>
#include <QString>

#include "canbus32/data32info.h"
#include "dataidinfo.h"

// The Nissan box's trip computer values, and a page of five percentages (0x7D/16).
struct MileageInformation65 : TripStatus32
{
    void clear() { *this = MileageInformation65(); }

    quint8 percentItem1 = 0, percentItem2 = 0, percentItem3 = 0, percentItem4 = 0;   // 0..100
    quint8 percentItem5 = 0;
};

// Which pages the vehicle has (frame 0x7E), one flag each.
struct FunctionRecognition65
{
    void clear() { *this = FunctionRecognition65(); }

    quint8 functionItem0 = 0, functionItem1 = 0, functionItem2 = 0, functionItem3 = 0,
        functionItem4 = 0, functionItem5 = 0, functionItem6 = 0, functionItem7 = 0,
        functionItem8 = 0, functionItem9 = 0, functionItem10 = 0, functionItem11 = 0,
        functionItem12 = 0, functionItem13 = 0, functionItem14 = 0, functionItem15 = 0,
        functionItem16 = 0, functionItem17 = 0, functionItem18 = 0, functionItem19 = 0,
        functionItem20 = 0, functionItem21 = 0, functionItem22 = 0, functionItem23 = 0,
        functionItem24 = 0, functionItem25 = 0, functionItem26 = 0, functionItem27 = 0,
        functionItem28 = 0, functionItem29 = 0, functionItem30 = 0, functionItem31 = 0,
        functionItem32 = 0, functionItem33 = 0, functionItem34 = 0, functionItem35 = 0,
        functionItem36 = 0;
};

// Voice-control feedback (0x7D/0xEF): the same eight items as the Nissan box's.
using VoiceControlFeedback65 = VoiceControlFeedback32;

// The vehicle's clock as text (0x27) and the basic values of 0x30.
struct BasicInformation65
{
    void clear() { *this = BasicInformation65(); }

    QString clockText;
    quint8 basicFlag = 0, basicByte1 = 0;
    quint8 basicByte2 = 0;   // 0..12
    quint8 basicByte3 = 0;   // 0..31
    quint16 basicWord = 0;
};

// Service intervals (0x31).
struct MaintenanceInformation65
{
    void clear() { *this = MaintenanceInformation65(); }

    quint8 maintFlag1 = 0;
    quint8 maintLevel = 0;   // 0..36
    quint16 maintValue1 = 0;
    quint8 maintFlag2 = 0;
    quint16 maintValue2 = 0;
    quint8 maintFlag3 = 0;
    quint16 maintValue3 = 0;
};

// The driving display (0x40).
struct drivingDisplay65
{
    void clear() { *this = drivingDisplay65(); }

    quint8 displayItem0 = 0, displayItem1 = 0, displayItem2 = 0, displayItem3 = 0;
    quint8 displayItem4 = 0, displayItem5 = 0, displayItem6 = 0;
};

// Vehicle settings (0x41); setItem15 also follows the head unit's language.
struct setItemStatus65
{
    void clear() { *this = setItemStatus65(); }

    quint8 setItem0 = 0, setItem1 = 0, setItem2 = 0, setItem3 = 0, setItem4 = 0, setItem5 = 0,
        setItem6 = 0, setItem7 = 0, setItem8 = 0, setItem9 = 0, setItem10 = 0, setItem11 = 0,
        setItem12 = 0, setItem13 = 0, setItem14 = 0, setItem15 = 0, setItem16 = 0, setItem17 = 0,
        setItem18 = 0, setItem19 = 0, setItem20 = 0, setItem21 = 0, setItem22 = 0, setItem23 = 0,
        setItem24 = 0, setItem25 = 0, setItem26 = 0, setItem27 = 0, setItem28 = 0, setItem29 = 0;
};

// Average consumption now (0x50) and its history (0x50, 0x51); "--" until known.
struct AverageFuelHistoryInformation65
{
    void clear() { *this = AverageFuelHistoryInformation65(); }

    QString currentAverageText = QStringLiteral("--");
    QString fuelText1 = QStringLiteral("--"), fuelText2 = QStringLiteral("--"),
        fuelText3 = QStringLiteral("--"), fuelText4 = QStringLiteral("--"),
        fuelText5 = QStringLiteral("--"), fuelText6 = QStringLiteral("--"),
        fuelText7 = QStringLiteral("--"), fuelText8 = QStringLiteral("--"),
        fuelText9 = QStringLiteral("--"), fuelText10 = QStringLiteral("--"),
        fuelText11 = QStringLiteral("--"), fuelText12 = QStringLiteral("--"),
        fuelText13 = QStringLiteral("--"), fuelText14 = QStringLiteral("--"),
        fuelText15 = QStringLiteral("--"), fuelText16 = QStringLiteral("--"),
        fuelText17 = QStringLiteral("--"), fuelText18 = QStringLiteral("--"),
        fuelText19 = QStringLiteral("--"), fuelText20 = QStringLiteral("--"),
        fuelText21 = QStringLiteral("--");
};

// The engine's stop-start system (0x52); "--" until known.
struct I_StopInformation65
{
    void clear() { *this = I_StopInformation65(); }

    quint8 iStopBit7 = 0, iStopBit6 = 0, iStopBit5 = 0, iStopBit4 = 0, iStopBit3 = 0;
    quint8 iStopLevel = 0;   // 0..4
    QString iStopTimeA = QStringLiteral("--"), iStopTimeB = QStringLiteral("--");
    quint8 iStopPercent = 0;   // 0..100
    QString iStopDistance = QStringLiteral("--"), iStopDuration = QStringLiteral("--"),
        iStopConsumption = QStringLiteral("--");
};

// The factory disc player (0x60, 0x61, 0x62).
struct CD_DVDMediaInformation65
{
    void clear() { *this = CD_DVDMediaInformation65(); }

    quint8 discPower = 0;
    quint8 discState = 0;   // 0..5
    quint8 discBit7 = 0, discBit6 = 0, discBit5 = 0, discBit4 = 0, discBit3 = 0;
    quint16 discTrack = 0, discTotal = 0;
    QString discTime = QStringLiteral("--:--:--"), discTotalTime = QStringLiteral("--:--:--");
    QString discText1, discText2, discText3;
};

// The factory amplifier (0x70, 0x71).
struct OriginalCarAmplifierSettings65
{
    void clear() { *this = OriginalCarAmplifierSettings65(); }

    quint8 ampItem0 = 0, ampItem1 = 0, ampItem2 = 0, ampItem3 = 0, ampItem4 = 0, ampItem5 = 0,
        ampItem6 = 0, ampItem7 = 0, ampItem8 = 0, ampItem9 = 0, ampItem10 = 0, ampItem11 = 0,
        ampItem12 = 0;
};

// The factory radio (0x72) and its presets by number (0x73).
struct OriginalCarRadioStatusInformation65
{
    void clear() { *this = OriginalCarRadioStatusInformation65(); }

    quint8 radioIsAm = 0;
    quint8 radioPreset = 0;   // 0..6
    QString radioFrequencyText = QStringLiteral("--");
    QMap<quint8, QString> radioPresets;
};

// Security settings (0x74).
struct SecuritySettingsStatusInformation65
{
    void clear() { *this = SecuritySettingsStatusInformation65(); }

    quint8 securityItem0 = 0, securityItem1 = 0, securityItem2 = 0, securityItem3 = 0,
        securityItem4 = 0, securityItem5 = 0, securityItem6 = 0, securityItem7 = 0,
        securityItem8 = 0, securityItem9 = 0, securityItem10 = 0, securityItem11 = 0,
        securityItem12 = 0, securityItem13 = 0, securityItem14 = 0, securityItem15 = 0,
        securityItem16 = 0, securityItem17 = 0, securityItem18 = 0, securityItem19 = 0,
        securityItem20 = 0, securityItem21 = 0, securityItem22 = 0, securityItem23 = 0,
        securityItem24 = 0, securityItem25 = 0, securityItem26 = 0, securityItem27 = 0,
        securityItem28 = 0, securityItem29 = 0, securityItem30 = 0, securityItem31 = 0,
        securityItem32 = 0, securityItem33 = 0, securityItem34 = 0, securityItem35 = 0,
        securityItem36 = 0, securityItem37 = 0;
};

class Data65Info : public DataIdInfo
{
public:
    void clear() { *this = Data65Info(); }

    MileageInformation65 mileage;
    FunctionRecognition65 functions;
    VoiceControlFeedback65 voice;
    BasicInformation65 basic;
    MaintenanceInformation65 maintenance;
    drivingDisplay65 driving;
    setItemStatus65 setItems;
    AverageFuelHistoryInformation65 fuelHistory;
    I_StopInformation65 iStop;
    CD_DVDMediaInformation65 disc;
    OriginalCarAmplifierSettings65 amplifier;
    OriginalCarRadioStatusInformation65 radio;
    SecuritySettingsStatusInformation65 security;
};
Q_DECLARE_METATYPE(Data65Info)
