#pragma once
// Frame index of data byte Dn of a 0x2E frame, so that this driver's tables read the
// way its protocol sheet writes them ("D2 bits 7..4" is bitsOf(&X::f, D(2), 7, 4)).
#include "framereader.h"

namespace toyota {
constexpr int D(int n)
{
    return canbus::kDataOffset2E + n;
}
} // namespace toyota
