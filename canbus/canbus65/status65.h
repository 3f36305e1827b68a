#pragma once
// The multiplexed status frame (0x7D) and the function flags (0x7E) as the Mazda box
// sends them; the Mitsubishi box sends both alike and decodes them here too.

#include "data65info.h"

class CanbusInterface;
class FrameReader;

namespace canbus65 {

// One 0x7D frame into the records; the shared-record signals of its sub-frames go out
// only while `signalsOpen`. False for a frame too short for its sub-frame or an unknown
// sub-frame, which change nothing.
bool decodeStatus(CanbusInterface& driver, const FrameReader& f, MileageInformation65& mileage,
                  VoiceControlFeedback65& voice, bool signalsOpen);

// One 0x7E frame of at least 14 bytes into the flags.
void decodeFunctions(const FrameReader& f, FunctionRecognition65& functions);

} // namespace canbus65
