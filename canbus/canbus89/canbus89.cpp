#include "canbus89.h"

#include "../canbus88/jeepsetpoints.h"
#include "framereader.h"

namespace {
constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A}
        .linkFrames(0x88);
}

Canbus89Obj::Canbus89Obj(QObject* parent)
    : Canbus88Obj(89, kProfile, parent)
{
}

int Canbus89Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    switch (f.at(1)) {
    case 0x05:
        if (f.size() >= 12)
            decodeClimate(f, variantAirCache, {VentLayout::SplitRight, &jeep::halfDegreesLeft,
                                                 &jeep::halfDegreesRight});
        return 1;
    default:
        return Canbus88Obj::checkProtocolData(frame);
    }
}
