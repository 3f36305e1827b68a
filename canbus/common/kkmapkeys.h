#pragma once
// Head-unit key codes and the numbers of the kernel's virtual keyboards. Both the CAN
// box drivers and the MCU link inject keys through the same table.

namespace canbus {

// The keyboards' ioctl numbers start above the kernel's own key codes: a key number k
// is sent as the ioctl request k + kKeyIoctlBase with 1 for down and 0 for up.
constexpr int kKeyIoctlBase = 768;

// Head-unit key code (0x11xxxxx, 0x12xxxxx, 0x13xxxxx) -> virtual keyboard number;
// 0 for a code that has none.
int kkmapKey(int code);

} // namespace canbus
