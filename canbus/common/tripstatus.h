#pragma once
// The trip-computer, function and voice pages in the form the Benz box (driver 56)
// introduced and the Chana box (64) repeats: the multiplexed frame 0x7D with its speed and
// consumption unit bytes and the percentage page (sub-frame 16), the 37 flags of
// frame 0x7E, and change signals that keep quiet while the unit is off. Nothing here
// belongs to one vehicle, so that every driver with this box form shares it.

#include <QString>

#include "common/statusframe.h"

class CanbusInterface;

namespace canbus {

// The trip computer of frame 0x7D.
struct TripComputerRecord
{
    void clear() { *this = TripComputerRecord(); }

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
    QString speedTextA;       // 3, "KM/H" or "MPH"
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
    QString consumptionTextA; // 7, with the unit byte 8 picks
    QString consumptionTextB;
    quint8 gbkPrefixByte = 0; // kept and copied; no frame fills it
    QString gbkText;          // 0
    quint8 levelA = 0;        // 16: percentages, bit 7 dropped, at most 100
    quint8 levelB = 0;
    quint8 levelC = 0;
    quint8 levelD = 0;
    quint8 levelE = 0;
};

// Frame 0x7E: which pages the vehicle has, one flag a bit.
struct FunctionFlags37
{
    void clear() { *this = FunctionFlags37(); }
    quint8 function[kFunctionFlagCount] = {};
};

// Sub-frame 0xEF of frame 0x7D: the voice-control feedback.
struct VoiceFeedback8
{
    void clear() { *this = VoiceFeedback8(); }
    quint8 voiceFeedback[8] = {};
};

// Decodes frame 0x7D; the shared-record signals of its sub-frames go out only while
// `powerOn`. The caller ends with its own dataChanged, gated alike.
void decodeTripStatus(CanbusInterface& driver, const FrameReader& frame, TripComputerRecord& trip,
                      VoiceFeedback8& voice, bool powerOn);

// Decodes frame 0x7E (14 bytes or more).
void decodeFunctionFlags(const FrameReader& frame, FunctionFlags37& flags);

} // namespace canbus
