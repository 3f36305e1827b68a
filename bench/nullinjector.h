#pragma once
// Key and touch events go nowhere, as fast as a device that takes them: every open
// succeeds, every ioctl is counted and dropped. A recorder would grow with every key
// and put its own allocations into the figures.

#include <cstdint>

#include "inputinjector.h"

namespace bench {

class NullInputInjector : public InputInjector
{
public:
    int open(const char*, int) override { return 100; }
    int ioctl(int, unsigned long, unsigned long) override
    {
        ++m_events;
        return 0;
    }
    int ioctlData(int, unsigned long, void*, std::size_t) override
    {
        ++m_events;
        return 0;
    }
    int close(int) override { return 0; }

    std::uint64_t events() const { return m_events; }

private:
    std::uint64_t m_events = 0;
};

} // namespace bench
