#include "canbus91.h"

#include "framereader.h"

namespace {
constexpr int kOutdoorOffset = 85;
}

Canbus91Obj::Canbus91Obj(QObject* parent)
    : Canbus91Obj(91, parent)
{
}

Canbus91Obj::Canbus91Obj(int driverId, QObject* parent)
    : Canbus90Obj(driverId, parent)
{
}

int Canbus91Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x15:
        // Whole degrees Celsius from -85; the climate frame's outdoor byte keeps 88's scale.
        if (f.size() >= 5)
            showOutdoorTemperature(f.at(3) - kOutdoorOffset, 0);
        return 1;
    default:
        return Canbus90Obj::checkProtocolData(frame);
    }
}
