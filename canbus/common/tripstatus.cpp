#include "tripstatus.h"

#include "canbusinterface.h"

namespace canbus {

namespace {

using Trip = TripComputerRecord;

constexpr StatusLayout<Trip, VoiceFeedback8> kLayout = {
    {
        &Trip::gbkText,
        &Trip::speedTextA, &Trip::speedTextB,
        &Trip::odometerText, &Trip::distanceTextA, &Trip::distanceTextB, &Trip::distanceTextC,
        &Trip::consumptionTextA, &Trip::consumptionTextB,
        &Trip::temperatureTextA, &Trip::temperatureTextB, &Trip::temperatureTextC,
        &Trip::engineSpeedText,
        &Trip::voltageText,
        &Trip::turnRateText,
        &Trip::rpmTextA, &Trip::rpmTextB,
    },
    {
        &Trip::statusFlag0, &Trip::statusFlag1, &Trip::statusFlag2, &Trip::statusFlag3,
        &Trip::statusFlag4, &Trip::statusFlag5, &Trip::statusFlag6,
        &Trip::statusLowBits,
        &Trip::stateField, &Trip::stateFlag0, &Trip::stateFlag1, &Trip::stateFlag2, &Trip::stateFlag3,
    },
    {{&Trip::rawWord0, &Trip::rawWord1, &Trip::rawWord2, &Trip::rawWord3, &Trip::rawWord4}, nullptr},
    {{&Trip::levelA, &Trip::levelB, &Trip::levelC, &Trip::levelD, &Trip::levelE}, nullptr},
    {{}, &VoiceFeedback8::voiceFeedback},
};

// Unit bytes behind the speeds and the consumption, and the percentage page.
constexpr StatusVariant kVariant = [] {
    StatusVariant v;
    v.speedUnitByte = true;
    v.consumptionUnitByte = true;
    v.percentPage = true;
    return v;
}();

constexpr FieldSeq<FunctionFlags37, quint8, kFunctionFlagCount> kFlags = {{}, &FunctionFlags37::function};

} // namespace

void decodeTripStatus(CanbusInterface& driver, const FrameReader& frame, TripComputerRecord& trip,
                      VoiceFeedback8& voice, bool powerOn)
{
    decodeStatusFrame(driver, frame, kVariant, kLayout, trip, voice, powerOn);
}

void decodeFunctionFlags(const FrameReader& frame, FunctionFlags37& flags)
{
    decodeFunctionFrame(frame, kFlags, flags);
}

} // namespace canbus
