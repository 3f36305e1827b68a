#pragma once
// The door byte that many 0x2E boxes send: b7 front right, b6 front left, b5 rear
// right, b4 rear left, b3 the boot, and b2 the bonnet where the box reports one.

#include "cardoordata.h"
#include "framereader.h"

namespace canbus {

enum class Bonnet { Absent, Bit2 };

inline CardoorData doorsFromByte(const FrameReader& f, int byte, Bonnet bonnet)
{
    CardoorData doors;
    doors.doorFrontRight = f.bit(byte, 7);
    doors.doorFrontLeft = f.bit(byte, 6);
    doors.doorRearRight = f.bit(byte, 5);
    doors.doorRearLeft = f.bit(byte, 4);
    doors.doorTrunk = f.bit(byte, 3);
    doors.doorHood = bonnet == Bonnet::Bit2 ? f.bit(byte, 2) : 0;
    return doors;
}

} // namespace canbus
