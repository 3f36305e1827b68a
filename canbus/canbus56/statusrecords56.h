#pragma once
// The trip computer, function and voice records that the Benz box fills from its
// multiplexed status frames (0x7D, 0x7E), with the layout and variant that tell the
// shared decoder where each value goes. The boxes of later makes that send the same
// frames in the same shape take these records as they are.

#include <QString>

#include "common/statusframe.h"

// Trip, speed and engine values of frame 0x7D.
struct MileageInformation56
{
    void clear() { *this = MileageInformation56(); }

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
    quint8 gbkPrefixByte = 0; // kept, never filled
    QString gbkText;          // 0
    quint8 levelA = 0;        // 16: 0..100
    quint8 levelB = 0;
    quint8 levelC = 0;
    quint8 levelD = 0;
    quint8 levelE = 0;
};

// Which pages the vehicle has, frame 0x7E.
struct FunctionRecognition56
{
    void clear() { *this = FunctionRecognition56(); }

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
    quint8 function33 = 0;   // byte 14 bits 7..4: byte 13 carries none
    quint8 function34 = 0;
    quint8 function35 = 0;
    quint8 function36 = 0;
};

// Voice-control feedback, sub-frame 0xEF of frame 0x7D.
struct VoiceControlFeedback56
{
    void clear() { *this = VoiceControlFeedback56(); }

    quint8 voiceFeedback0 = 0;
    quint8 voiceFeedback1 = 0;
    quint8 voiceFeedback2 = 0;
    quint8 voiceFeedback3 = 0;
    quint8 voiceFeedback4 = 0;
    quint8 voiceFeedback5 = 0;
    quint8 voiceFeedback6 = 0;
    quint8 voiceFeedback7 = 0;
};

namespace canbus {

// These boxes name the speed and consumption units in byte 8 of their longer frames
// and have the five-level page (sub-frame 16).
inline constexpr StatusVariant kStatusVariant56 = {true, true, true, 0, false};

inline constexpr StatusLayout<MileageInformation56, VoiceControlFeedback56> kStatusLayout56 = {
    {
        &MileageInformation56::gbkText,
        &MileageInformation56::speedTextA, &MileageInformation56::speedTextB,
        &MileageInformation56::odometerText, &MileageInformation56::distanceTextA,
        &MileageInformation56::distanceTextB, &MileageInformation56::distanceTextC,
        &MileageInformation56::consumptionTextA, &MileageInformation56::consumptionTextB,
        &MileageInformation56::temperatureTextA, &MileageInformation56::temperatureTextB,
        &MileageInformation56::temperatureTextC,
        &MileageInformation56::engineSpeedText,
        &MileageInformation56::voltageText,
        &MileageInformation56::turnRateText,
        &MileageInformation56::rpmTextA, &MileageInformation56::rpmTextB,
    },
    {
        &MileageInformation56::statusFlag0, &MileageInformation56::statusFlag1,
        &MileageInformation56::statusFlag2, &MileageInformation56::statusFlag3,
        &MileageInformation56::statusFlag4, &MileageInformation56::statusFlag5,
        &MileageInformation56::statusFlag6,
        &MileageInformation56::statusLowBits,
        &MileageInformation56::stateField, &MileageInformation56::stateFlag0,
        &MileageInformation56::stateFlag1, &MileageInformation56::stateFlag2,
        &MileageInformation56::stateFlag3,
    },
    {{&MileageInformation56::rawWord0, &MileageInformation56::rawWord1,
      &MileageInformation56::rawWord2, &MileageInformation56::rawWord3,
      &MileageInformation56::rawWord4},
     nullptr},
    {{&MileageInformation56::levelA, &MileageInformation56::levelB, &MileageInformation56::levelC,
      &MileageInformation56::levelD, &MileageInformation56::levelE},
     nullptr},
    {{&VoiceControlFeedback56::voiceFeedback0, &VoiceControlFeedback56::voiceFeedback1,
      &VoiceControlFeedback56::voiceFeedback2, &VoiceControlFeedback56::voiceFeedback3,
      &VoiceControlFeedback56::voiceFeedback4, &VoiceControlFeedback56::voiceFeedback5,
      &VoiceControlFeedback56::voiceFeedback6, &VoiceControlFeedback56::voiceFeedback7},
     nullptr},
};

inline constexpr FieldSeq<FunctionRecognition56, quint8, kFunctionFlagCount> kFunctionFlags56 = {
    {
        &FunctionRecognition56::function0,  &FunctionRecognition56::function1,
        &FunctionRecognition56::function2,  &FunctionRecognition56::function3,
        &FunctionRecognition56::function4,  &FunctionRecognition56::function5,
        &FunctionRecognition56::function6,  &FunctionRecognition56::function7,
        &FunctionRecognition56::function8,  &FunctionRecognition56::function9,
        &FunctionRecognition56::function10, &FunctionRecognition56::function11,
        &FunctionRecognition56::function12, &FunctionRecognition56::function13,
        &FunctionRecognition56::function14, &FunctionRecognition56::function15,
        &FunctionRecognition56::function16, &FunctionRecognition56::function17,
        &FunctionRecognition56::function18, &FunctionRecognition56::function19,
        &FunctionRecognition56::function20, &FunctionRecognition56::function21,
        &FunctionRecognition56::function22, &FunctionRecognition56::function23,
        &FunctionRecognition56::function24, &FunctionRecognition56::function25,
        &FunctionRecognition56::function26, &FunctionRecognition56::function27,
        &FunctionRecognition56::function28, &FunctionRecognition56::function29,
        &FunctionRecognition56::function30, &FunctionRecognition56::function31,
        &FunctionRecognition56::function32, &FunctionRecognition56::function33,
        &FunctionRecognition56::function34, &FunctionRecognition56::function35,
        &FunctionRecognition56::function36,
    },
    nullptr,
};

} // namespace canbus
