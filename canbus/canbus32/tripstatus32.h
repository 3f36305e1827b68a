#pragma once
// Where the values of the multiplexed status frame (0x7D) go in the records built on
// TripStatus32 and VoiceControlFeedback32: the Nissan box's and those of the makes
// whose boxes send the frame alike. A record with the percentage page names its five
// fields; the others leave them out.

#include "common/statusframe.h"
#include "data32info.h"

template <typename Mileage, typename Voice>
constexpr canbus::StatusLayout<Mileage, Voice> tripStatusLayout(
    canbus::FieldSeq<Mileage, quint8, 5> percents = {{}, nullptr})
{
    using M = TripStatus32;
    using V = VoiceControlFeedback32;
    return {
        {
            &M::statusText,
            &M::speedTextA, &M::speedTextB,
            &M::odometerText, &M::distanceTextB, &M::distanceTextC, &M::distanceTextD,
            &M::consumptionTextA, &M::consumptionTextB,
            &M::tempTextA, &M::tempTextB, &M::tempTextC,
            &M::engineText,
            &M::voltageText,
            &M::revolutionText,
            &M::rotationTextA, &M::rotationTextB,
        },
        {
            // Sub-frame 1 carries bits 7, 6, 5, 2, 1, 4, 3 in the decoder's order; the
            // record names them by their place on the vehicle's page.
            &M::statusBit7, &M::statusBit6, &M::statusBit5,
            &M::statusBit4, &M::statusBit3, &M::statusBit2, &M::statusBit1,
            &M::statusLow3,
            &M::frame13High, &M::frame13Bit5, &M::frame13Bit4, &M::frame13Bit3, &M::frame13Bit2,
        },
        {{&M::statusWord1, &M::statusWord2, &M::statusWord3, &M::statusWord4, &M::statusWord5}, nullptr},
        percents,
        {{&V::voiceItem0, &V::voiceItem1, &V::voiceItem2, &V::voiceItem3, &V::voiceItem4,
          &V::voiceItem5, &V::voiceItem6, &V::voiceItem7}, nullptr},
    };
}
