#pragma once
// The record of the GAC Trumpchi box: new-energy pages, original-car settings, the
// trip computer and the function, voice, perception and vehicle-control pages. Every
// sub-record starts, and is cleared, to zeros and empty texts.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"

// Charging schedule, frame 0x53.
struct NewEnergyInformation33
{
    void clear() { *this = NewEnergyInformation33(); }

    quint8 timeAHour = 0;   // clamped to 23, minutes to 59
    quint8 timeAMinute = 0;
    quint8 timeBHour = 0;
    quint8 timeBMinute = 0;
    quint8 flag0 = 0;       // bits 0..7 of byte 7
    quint8 flag1 = 0;
    quint8 flag2 = 0;
    quint8 flag3 = 0;
    quint8 flag4 = 0;
    quint8 flag5 = 0;
    quint8 flag6 = 0;
    quint8 flag7 = 0;
    quint8 lowBits = 0;
    quint8 timeCHour = 0;
    quint8 timeCMinute = 0;
    quint8 levelA = 0;      // clamped to 10
    quint8 levelB = 0;
    quint8 highFlag = 0;
    quint8 lowMode = 0;
};

// Charging display, frame 0x54.
struct NewEnergyDisplayInformation33
{
    void clear() { *this = NewEnergyDisplayInformation33(); }

    QString timeText;       // "h:m"
    QString voltageTextA;   // "%1V"
    QString percentText;    // "%1%"
    QString currentText;    // "%1A"
    QString voltageTextB;
    quint8 displayFlagA = 0;
    quint8 displayFlagB = 0;
    QString statusText;     // charging state, translated
};

// Original-car settings by index, frame 0x52 (settings 22 and 23 are the seat heating
// levels of AirData), and the body mode of frames 0x40 and 0x41.
struct OriginalCarSettings33
{
    void clear() { *this = OriginalCarSettings33(); }

    QString settingText;
    quint8 language = 0;   // setting 1: 1 Chinese, 2 English
    quint8 setting2 = 0;
    quint8 setting3 = 0;
    quint8 setting4 = 0;
    quint8 setting5 = 0;
    quint8 setting6 = 0;
    quint8 setting7 = 0;
    quint8 setting8 = 0;
    quint8 setting9 = 0;
    quint8 setting10 = 0;
    quint8 setting11 = 0;
    quint8 setting12 = 0;
    quint8 setting13 = 0;
    quint8 setting14 = 0;
    quint8 setting15 = 0;
    quint8 setting16 = 0;
    quint8 setting17 = 0;
    quint8 setting18 = 0;
    quint8 setting19 = 0;
    quint8 setting20 = 0;
    quint8 setting21 = 0;
    quint8 setting24 = 0;
    quint8 setting25 = 0;
    quint8 setting26 = 0;
    quint8 setting27 = 0;
    quint8 setting28 = 0;
    quint8 setting29 = 0;
    quint8 setting30 = 0;
    quint8 setting31 = 0;
    quint8 setting32 = 0;
    quint8 setting33 = 0;
    quint8 setting34 = 0;
    quint8 setting35 = 0;
    quint8 setting36 = 0;
    quint8 setting37 = 0;
    quint8 setting38 = 0;
    quint8 setting39 = 0;
    quint8 setting40 = 0;
    quint8 setting41 = 0;
    quint8 setting42 = 0;
    quint8 setting43 = 0;
    quint8 setting44 = 0;
    quint8 setting45 = 0;
    quint8 setting46 = 0;
    quint8 setting47 = 0;
    quint8 setting48 = 0;
    quint8 setting49 = 0;
    quint8 setting50 = 0;
    quint8 bodyMode = 0;     // frame 0x40, clamped to 5
    quint8 bodyActive = 0;   // frame 0x41
    quint8 reservedSetting = 0;
};

struct BodyInformation33
{
    void clear() { *this = BodyInformation33(); }

    quint8 bodyReserved = 0;
    quint8 carModel = 0;     // the vehicle variant ("CanbusCAR"), 0 none, up to 15
};

// Trip computer, sub-frames of frame 0x7D.
struct MileageInformation33
{
    void clear() { *this = MileageInformation33(); }

    quint8 mileageReserved0 = 0;
    quint8 mileageReserved1 = 0;
    QString odometerText;     // 4
    QString distanceTextA;
    QString distanceTextB;
    QString distanceTextC;
    quint8 statusFlag0 = 0;   // 1: byte 4 bits 7, 6, 5, 2, 1, 4, 3
    quint8 statusFlag1 = 0;
    quint8 statusFlag2 = 0;
    quint8 statusFlag3 = 0;
    quint8 statusFlag4 = 0;
    quint8 statusFlag5 = 0;
    quint8 statusFlag6 = 0;
    quint8 statusLowBits = 0; // 2
    QString speedTextA;       // 3
    QString speedTextB;
    QString temperatureTextA; // 9
    QString temperatureTextB;
    QString temperatureTextC;
    QString engineSpeedText;  // 10
    QString voltageText;      // 11
    quint16 rawWord0 = 0;     // 12
    quint16 rawWord1 = 0;
    quint16 rawWord2 = 0;
    quint16 rawWord3 = 0;
    quint16 rawWord4 = 0;
    QString turnRateText;     // 14
    QString rpmTextA;         // 15
    QString rpmTextB;
    quint8 stateField = 0;    // 13
    quint8 stateFlag0 = 0;
    quint8 stateFlag1 = 0;
    quint8 stateFlag2 = 0;
    quint8 stateFlag3 = 0;
    QString consumptionTextA; // 7
    QString consumptionTextB;
    QString gbkText;          // 0
};

// Which pages the vehicle has, frame 0x7E.
struct FunctionRecognition33
{
    void clear() { *this = FunctionRecognition33(); }

    quint8 function0 = 0;
    quint8 function1 = 0;
    quint8 function2 = 0;
    quint8 function3 = 0;
    quint8 function4 = 0;
    quint8 function5 = 0;
    quint8 function6 = 0;
    quint8 function7 = 0;
    quint8 function8 = 0;
    quint8 function9 = 0;
    quint8 function10 = 0;
    quint8 function11 = 0;
    quint8 function12 = 0;
    quint8 function13 = 0;
    quint8 function14 = 0;
    quint8 function15 = 0;
    quint8 function16 = 0;
    quint8 function17 = 0;
    quint8 function18 = 0;
    quint8 function19 = 0;
    quint8 function20 = 0;
    quint8 function21 = 0;
    quint8 function22 = 0;
    quint8 function23 = 0;
    quint8 function24 = 0;
    quint8 function25 = 0;
    quint8 function26 = 0;
    quint8 function27 = 0;
    quint8 function28 = 0;
    quint8 function29 = 0;
    quint8 function30 = 0;
    quint8 function31 = 0;
    quint8 function32 = 0;
};

// Voice-control feedback, sub-frame 0xEF of frame 0x7D.
struct VoiceControlFeedback33
{
    void clear() { *this = VoiceControlFeedback33(); }

    quint8 voiceFeedback0 = 0;
    quint8 voiceFeedback1 = 0;
    quint8 voiceFeedback2 = 0;
    quint8 voiceFeedback3 = 0;
    quint8 voiceFeedback4 = 0;
    quint8 voiceFeedback5 = 0;
    quint8 voiceFeedback6 = 0;
    quint8 voiceFeedback7 = 0;
};

// Intelligent perception page, frame 0x55: eight settings of 0 to 2.
struct IntelligentPerceptionSystemInformation33
{
    void clear() { *this = IntelligentPerceptionSystemInformation33(); }

    quint8 perception1 = 0;
    quint8 perception2 = 0;
    quint8 perception3 = 0;
    quint8 perception4 = 0;
    quint8 perception5 = 0;
    quint8 perception6 = 0;
    quint8 perception7 = 0;
    quint8 perception8 = 0;
};

// Vehicle control page, frame 0x58.
struct VehicleControlInformation33
{
    void clear() { *this = VehicleControlInformation33(); }

    quint8 controlLevel0 = 0;   // clamped to 100
    quint8 controlLevel1 = 0;
    quint8 controlLevel2 = 0;
    quint8 controlLevel3 = 0;
    quint8 controlSteps0 = 0;   // clamped to 4
    quint8 controlSteps1 = 0;
    quint8 controlFlag0 = 0;
    quint8 controlFlag1 = 0;
    quint8 controlFlag2 = 0;
    quint8 controlLevel4 = 0;   // clamped to 100
    quint8 controlLevel5 = 0;   // over 99 becomes 100
    quint8 controlActive0 = 0;  // the matching level byte is not 0
    quint8 controlActive1 = 0;
    quint8 controlActive2 = 0;
    quint8 controlActive3 = 0;
};

class Data33Info : public DataIdInfo
{
public:
    void clear();

    NewEnergyInformation33 newEnergy;
    NewEnergyDisplayInformation33 newEnergyDisplay;
    OriginalCarSettings33 settings;
    BodyInformation33 body;
    MileageInformation33 mileage;
    FunctionRecognition33 functions;
    VoiceControlFeedback33 voice;
    IntelligentPerceptionSystemInformation33 perception;
    VehicleControlInformation33 vehicleControl;
};
Q_DECLARE_METATYPE(Data33Info)
