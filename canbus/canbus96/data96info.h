#pragma once
// The record of the Mitsubishi box: the trip computer, pages and voice feedback of the
// status frames it shares with the Mazda box, a body byte and the outdoor text, the
// factory amplifier, fuel texts and the vehicle settings. Every clear() is the default
// state: numbers 0, texts empty.

#include <QMetaType>
#include <QString>

#include "canbus65/data65info.h"
#include "dataidinfo.h"

// The status frames (0x7D, 0x7E) are the Mazda box's, into the same records.
using MileageInformation96 = MileageInformation65;
using FunctionRecognition96 = FunctionRecognition65;
using VoiceControlFeedback96 = VoiceControlFeedback65;

// Frame 0x24, and the outdoor temperature of 0x7D/9 as text.
struct bodySetting96
{
    void clear() { *this = bodySetting96(); }

    quint8 bodyRaw = 0;
    QString outdoorText;
};

// The factory amplifier (frame 0x17).
struct AmplifierInformation96
{
    void clear() { *this = AmplifierInformation96(); }

    quint8 ampLevel1 = 0, ampLevel2 = 0;                        // 0..22
    quint8 ampMode = 0;                                         // 0..4
    quint8 ampBand1 = 0, ampBand2 = 0, ampBand3 = 0;            // 0..10
    quint8 ampBand4 = 0;                                        // 0..6
    quint8 ampVolume = 0;                                       // 0..45
    quint8 ampChoice1 = 0, ampChoice2 = 0, ampChoice3 = 0;      // 0..2
    quint8 ampOption1 = 0, ampOption2 = 0;                      // 0..3
    quint8 ampFlag = 0;
};

// Range and consumption (frame 0x40).
struct fuelConsumptionInformation96
{
    void clear() { *this = fuelConsumptionInformation96(); }

    QString fuelDistanceText, fuelTextA, fuelTextB, fuelTextC;
};

// Vehicle settings (frame 0x50), one byte an item.
struct SettingItemInformation96
{
    void clear() { *this = SettingItemInformation96(); }

    quint8 settingItem0 = 0, settingItem1 = 0, settingItem2 = 0, settingItem3 = 0,
        settingItem4 = 0, settingItem5 = 0, settingItem6 = 0, settingItem7 = 0,
        settingItem8 = 0, settingItem9 = 0, settingItem10 = 0, settingItem11 = 0,
        settingItem12 = 0, settingItem13 = 0, settingItem14 = 0, settingItem15 = 0,
        settingItem16 = 0, settingItem17 = 0, settingItem18 = 0, settingItem19 = 0,
        settingItem20 = 0, settingItem21 = 0, settingItem22 = 0, settingItem23 = 0,
        settingItem24 = 0, settingItem25 = 0, settingItem26 = 0, settingItem27 = 0,
        settingItem28 = 0, settingItem29 = 0, settingItem30 = 0, settingItem31 = 0;
};

class Data96Info : public DataIdInfo
{
public:
    void clear() { *this = Data96Info(); }

    MileageInformation96 mileage;
    FunctionRecognition96 functions;
    VoiceControlFeedback96 voice;
    bodySetting96 body;
    AmplifierInformation96 amplifier;
    fuelConsumptionInformation96 fuel;
    SettingItemInformation96 settings;
};
Q_DECLARE_METATYPE(Data96Info)
