#pragma once
// The trip computer, function and voice records of the SAIC box's multiplexed status
// frames, with the layout that tells the shared decoder where each value goes. The
// boxes of several later makes send the same frames into records of this shape.

#include <QString>

#include "common/statusframe.h"

// Trip, speed and engine values of frame 0x7D.
struct MileageInformation72
{
    void clear() { *this = MileageInformation72(); }

    quint8 spare0 = 0;
    quint8 spare1 = 0;
    QString mileageText;        // 4: whole kilometres
    QString distanceText1;      // 4: tenths
    QString distanceText2;
    QString distanceText3;
    quint8 status1Bit7 = 0;     // 1
    quint8 status1Bit6 = 0;
    quint8 status1Bit5 = 0;
    quint8 status1Bit2 = 0;
    quint8 status1Bit1 = 0;
    quint8 status1Bit4 = 0;
    quint8 status1Bit3 = 0;
    quint8 status2Low3 = 0;     // 2
    QString speedText1;         // 3
    QString speedText2;
    QString temperatureText1;   // 9
    QString temperatureText2;
    QString temperatureText3;
    QString engineSpeedText;    // 10
    QString batteryVoltageText; // 11
    quint16 word12[5] = {};     // 12
    QString trMinText;          // 14
    QString rpmText1;           // 15
    QString rpmText2;
    quint8 status13High2 = 0;   // 13: two bits, 0..3
    quint8 status13Bit5 = 0;
    quint8 status13Bit4 = 0;
    quint8 status13Bit3 = 0;
    quint8 status13Bit2 = 0;
    QString consumptionText1;   // 7
    QString consumptionText2;
    QString vehicleText;        // 0: GBK text
    quint8 percent16[5] = {};   // 16: 0..100
};

// Which pages the vehicle has, frame 0x7E.
struct FunctionRecognition72
{
    void clear() { *this = FunctionRecognition72(); }

    quint8 functionFlag[37] = {};
};

// Voice-control feedback, sub-frame 0xEF of frame 0x7D.
struct VoiceControlFeedback72
{
    void clear() { *this = VoiceControlFeedback72(); }

    quint8 voiceValue[8] = {};
};

namespace canbus {

inline constexpr StatusLayout<MileageInformation72, VoiceControlFeedback72> kStatusLayout72 = {
    {
        &MileageInformation72::vehicleText,
        &MileageInformation72::speedText1, &MileageInformation72::speedText2,
        &MileageInformation72::mileageText, &MileageInformation72::distanceText1,
        &MileageInformation72::distanceText2, &MileageInformation72::distanceText3,
        &MileageInformation72::consumptionText1, &MileageInformation72::consumptionText2,
        &MileageInformation72::temperatureText1, &MileageInformation72::temperatureText2,
        &MileageInformation72::temperatureText3,
        &MileageInformation72::engineSpeedText,
        &MileageInformation72::batteryVoltageText,
        &MileageInformation72::trMinText,
        &MileageInformation72::rpmText1, &MileageInformation72::rpmText2,
    },
    {
        &MileageInformation72::status1Bit7, &MileageInformation72::status1Bit6,
        &MileageInformation72::status1Bit5, &MileageInformation72::status1Bit2,
        &MileageInformation72::status1Bit1, &MileageInformation72::status1Bit4,
        &MileageInformation72::status1Bit3,
        &MileageInformation72::status2Low3,
        &MileageInformation72::status13High2, &MileageInformation72::status13Bit5,
        &MileageInformation72::status13Bit4, &MileageInformation72::status13Bit3,
        &MileageInformation72::status13Bit2,
    },
    {{}, &MileageInformation72::word12},
    {{}, &MileageInformation72::percent16},
    {{}, &VoiceControlFeedback72::voiceValue},
};

inline constexpr FieldSeq<FunctionRecognition72, quint8, 37> kFunctionFlags72 = {
    {}, &FunctionRecognition72::functionFlag};

// These boxes: unit bytes for speeds and consumption, the percentage page.
inline constexpr StatusVariant kStatusVariant72 = {true, true, true, 0, false};

} // namespace canbus
