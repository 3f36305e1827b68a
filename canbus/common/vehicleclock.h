#pragma once
// The time of day a vehicle keeps sending. Boxes repeat it with every status round, often
// several times a second; setting the head unit's clock at each one would pull its seconds
// back and costs a local-time conversion per frame, so the clock follows the vehicle when
// the vehicle's hour or minute moves.

namespace canbus {

class VehicleClock
{
public:
    enum class Seconds { Keep, Zero };

    // Sets today's time of day to hour:minute when they differ from the last time followed;
    // invalid times are ignored. True when the clock was set.
    bool follow(int hour, int minute, Seconds seconds, int flag);

    // The next time followed is set even when it is the last one again: after the head
    // unit's clock was set some other way.
    void forget() { m_lastMinuteOfDay = -1; }

private:
    int m_lastMinuteOfDay = -1;
};

} // namespace canbus
