#include "canbus92.h"

#include "../canbus88/jeepsetpoints.h"
#include "framereader.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);
constexpr int kOutdoorOffset = 85;
}

Canbus92Obj::Canbus92Obj(QObject* parent)
    : Canbus88Obj(92, kProfile, parent)
{
}

int Canbus92Obj::checkProtocolData(const QByteArray& frame)
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
    case 0x09:
        // The word is centred on 0x700 and grows to the left.
        if (f.size() >= 6)
            emit trajectoryDataChanged(qint16(quint16(0x700 - f.be16(3))), 1200, true);
        return 1;
    default:
        return Canbus88Obj::checkProtocolData(frame);
    }
}
