#pragma once
// This process's memory as the kernel counts it.

namespace bench {

// A "kB" field of /proc/self/status (VmRSS, VmHWM, ...), in KiB; -1 if absent.
long statusKiB(const char* field);

} // namespace bench
