#pragma once
// Key numbers of the RuiZiCheng Peugeot boxes' key frame -> head-unit key codes. A few
// buttons answer or end a call while one is active and do their own job otherwise.

namespace keys87 {

// The code for `value` with the telephone `inCall` or not; 0 for a number outside
// `lowest`..128 or not listed.
int keyCode(int value, bool inCall, int lowest = 2);

} // namespace keys87
