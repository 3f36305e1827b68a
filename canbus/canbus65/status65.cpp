#include "status65.h"

#include "canbus32/tripstatus32.h"
#include "common/statusframe.h"
#include "framereader.h"

namespace {

// As the Nissan box, but the speed and consumption sub-frames carry a unit byte and
// there is a page of five percentages.
constexpr canbus::StatusVariant kStatusVariant = {true, true, true, 0, false, true, true};

using M = MileageInformation65;
constexpr auto kStatusLayout = tripStatusLayout<M, VoiceControlFeedback65>(
    {{&M::percentItem1, &M::percentItem2, &M::percentItem3, &M::percentItem4, &M::percentItem5},
     nullptr});

using F = FunctionRecognition65;
constexpr canbus::FieldSeq<F, quint8, 37> kFunctionItems = {
    {&F::functionItem0, &F::functionItem1, &F::functionItem2, &F::functionItem3,
     &F::functionItem4, &F::functionItem5, &F::functionItem6, &F::functionItem7,
     &F::functionItem8, &F::functionItem9, &F::functionItem10, &F::functionItem11,
     &F::functionItem12, &F::functionItem13, &F::functionItem14, &F::functionItem15,
     &F::functionItem16, &F::functionItem17, &F::functionItem18, &F::functionItem19,
     &F::functionItem20, &F::functionItem21, &F::functionItem22, &F::functionItem23,
     &F::functionItem24, &F::functionItem25, &F::functionItem26, &F::functionItem27,
     &F::functionItem28, &F::functionItem29, &F::functionItem30, &F::functionItem31,
     &F::functionItem32, &F::functionItem33, &F::functionItem34, &F::functionItem35,
     &F::functionItem36},
    nullptr,
};

} // namespace

namespace canbus65 {

bool decodeStatus(CanbusInterface& driver, const FrameReader& f, MileageInformation65& mileage,
                  VoiceControlFeedback65& voice, bool signalsOpen)
{
    return canbus::decodeStatusFrame(driver, f, kStatusVariant, kStatusLayout, mileage, voice,
                                     signalsOpen);
}

void decodeFunctions(const FrameReader& f, FunctionRecognition65& functions)
{
    canbus::decodeFunctionFrame(f, kFunctionItems, functions);
}

} // namespace canbus65
