#pragma once
// The record of the Nissan box: trip computer and body texts, the factory amplifier,
// vehicle settings, the pages the vehicle has, voice feedback and the factory
// multimedia. Plain values with named sub-records; the whole travels as a QVariant.
// Every clear() is the default state: numbers 0, texts empty.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"

// Distances, speeds, temperatures and engine values (frames 0x09, 0x27, 0x28, 0x6A and
// the sub-frames of 0x7D named beside each field). The boxes of other makes that send
// the same multiplexed status frame keep these values under the same names.
struct TripStatus32
{

    quint8 distanceUnitB = 0, distanceUnitA = 0;   // 0x27: 1 km, 0 miles
    QString odometerText, distanceTextB, distanceTextC, distanceTextD;   // 0x27, 0x7D/4
    quint8 statusBit7 = 0, statusBit6 = 0, statusBit5 = 0, statusBit4 = 0;   // 0x7D/1, 0x28
    quint8 statusBit3 = 0, statusBit2 = 0, statusBit1 = 0;
    quint8 statusLow3 = 0;                     // 0x7D/2
    QString speedTextA, speedTextB;            // 0x6A, 0x7D/3
    QString tempTextA, tempTextB, tempTextC;   // 0x7D/9
    QString engineText, voltageText;           // 0x09, 0x7D/10, 0x7D/11
    quint16 statusWord1 = 0, statusWord2 = 0, statusWord3 = 0, statusWord4 = 0, statusWord5 = 0;
    QString revolutionText;                    // 0x7D/14
    QString rotationTextA, rotationTextB;      // 0x7D/15
    quint8 frame13High = 0, frame13Bit5 = 0, frame13Bit4 = 0, frame13Bit3 = 0, frame13Bit2 = 0;
    QString consumptionTextA, consumptionTextB;   // 0x7D/7
    QString statusText;                        // 0x7D/0
};

struct MileageInformation32 : TripStatus32
{
    void clear() { *this = MileageInformation32(); }

    quint8 carModel = 0;                       // "CanbusCAR", 0..4
};

// The factory amplifier (frame 0x93): bands 5..10 around a middle of 5.
struct AmplifierInformation32
{
    void clear() { *this = AmplifierInformation32(); }

    quint8 ampVolume = 0;   // 0..40
    quint8 ampBand1 = 0, ampBand2 = 0, ampBand3 = 0, ampBand4 = 0;
    quint8 ampMode = 0;     // 0..5
    quint8 ampFlagA = 0;
    quint8 ampBand5 = 0;
    quint8 ampFlagB = 0;
};

// Vehicle settings (frames 0x0A, 0x94, 0x95 and the clock frame 0x60); languageCode
// also follows the head unit's language.
struct VehicleSettingInformation32
{
    void clear() { *this = VehicleSettingInformation32(); }

    quint8 settingBit7 = 0, settingBit6 = 0, settingBit5 = 0;
    quint8 settingD1Bit7 = 0, settingD1High = 0, settingD1Bit4 = 0, settingD1Low = 0;
    quint8 settingD2Bit7 = 0, settingD2Bit6 = 0;
    quint8 languageCode = 0;
    quint8 settingRaw21 = 0;
    quint8 frame0ABit7 = 0;
    quint8 frame0AValue = 0;   // 0..49
};

// Which pages the vehicle has (frame 0x7E), one flag each.
struct FunctionRecognition32
{
    void clear() { *this = FunctionRecognition32(); }

    quint8 functionItem0 = 0, functionItem1 = 0, functionItem2 = 0, functionItem3 = 0,
        functionItem4 = 0, functionItem5 = 0, functionItem6 = 0, functionItem7 = 0,
        functionItem8 = 0, functionItem9 = 0, functionItem10 = 0, functionItem11 = 0,
        functionItem12 = 0, functionItem13 = 0, functionItem14 = 0, functionItem15 = 0,
        functionItem16 = 0, functionItem17 = 0, functionItem18 = 0, functionItem19 = 0,
        functionItem20 = 0, functionItem21 = 0, functionItem22 = 0, functionItem23 = 0,
        functionItem24 = 0, functionItem25 = 0, functionItem26 = 0, functionItem27 = 0,
        functionItem28 = 0, functionItem29 = 0, functionItem30 = 0, functionItem31 = 0,
        functionItem32 = 0;
};

// Voice-control feedback (sub-frame 0xEF of frame 0x7D).
struct VoiceControlFeedback32
{
    void clear() { *this = VoiceControlFeedback32(); }

    quint8 voiceItem0 = 0, voiceItem1 = 0, voiceItem2 = 0, voiceItem3 = 0;
    quint8 voiceItem4 = 0, voiceItem5 = 0, voiceItem6 = 0, voiceItem7 = 0;
};

// The factory radio and disc player (frames 0x03, 0x04, 0x06, 0x07, 0x68).
struct MultimediaInformation32
{
    void clear() { *this = MultimediaInformation32(); }

    quint8 mediaBit7 = 0, mediaBit6 = 0, mediaBit5 = 0, mediaBit4 = 0, mediaBit3 = 0;
    quint8 discRawMinus1 = 0, discRaw = 0;
    QString radioFrequencyText;
    quint8 audioBit7 = 0, audioBit6 = 0, audioBit5 = 0, audioBit4 = 0, audioBit3 = 0;
    quint8 audioLow = 0;
    quint8 audioLevel1 = 0, audioLevel2 = 0, audioLevel3 = 0;   // 0..2 each
    quint8 audioLevel4 = 0, audioLevel5 = 0, audioLevel6 = 0;
    quint8 playByte0 = 0, playByte1 = 0;
    QString playTimeText, playStateText;
    quint8 trayCount = 0;   // 0..5
    quint8 trayItem1 = 0, trayItem2 = 0, trayItem3 = 0, trayItem4 = 0;   // 0..10
    quint8 trayFlag = 0;
};

// The surround-view screens keep their state elsewhere; the record has its place.
struct PanoramicImageUIInformation32
{
    void clear() {}
};

class Data32Info : public DataIdInfo
{
public:
    void clear() { *this = Data32Info(); }

    MileageInformation32 mileage;
    AmplifierInformation32 amplifier;
    VehicleSettingInformation32 vehicleSetting;
    FunctionRecognition32 functions;
    VoiceControlFeedback32 voice;
    MultimediaInformation32 multimedia;
    PanoramicImageUIInformation32 panorama;
};
Q_DECLARE_METATYPE(Data32Info)
