#include "canbus91.h"

#include "../canbus88/jeepsetpoints.h"
#include "framereader.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);
constexpr int kOutdoorOffset = 85;
}

Canbus91Obj::Canbus91Obj(QObject* parent)
    : Canbus88Obj(91, kProfile, parent)
{
}

int Canbus91Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x05:
        if (f.size() >= 12)
            decodeClimate(f, variantAirCache, {VentLayout::SplitRight, &jeep::halfDegreesFromOne,
                                                 &jeep::halfDegreesFromOne});
        return 1;
    case 0x15:
        // Whole degrees Celsius from -85; the climate frame's outdoor byte keeps 88's scale.
        if (f.size() >= 5)
            showOutdoorTemperature(f.at(3) - kOutdoorOffset, 0);
        return 1;
    default:
        return Canbus88Obj::checkProtocolData(frame);
    }
}
