#pragma once
// The type and data bytes of a whole frame of a family, and what the box makes of
// the link frames that every head unit sends alike.

#include <QByteArray>
#include <QString>

#include "framefamily.h"

namespace canbox {

struct FrameParts
{
    quint8 type = 0;
    QByteArray data;   // between the header and the checksum
};

FrameParts frameParts(canbus::FrameFamily family, const QByteArray& frame);

// "connect", "disconnect", "request for frame 0x30"; empty for a frame whose meaning
// belongs to the vehicle's driver.
QString linkMeaning(canbus::FrameFamily family, const FrameParts& parts);

// The head unit's connect and disconnect frames (0x81 with 1 or 0) and its request for
// a frame type (0x90 with the type first) in the families that have them.
bool isConnectFrame(canbus::FrameFamily family, const FrameParts& parts);
bool isDisconnectFrame(canbus::FrameFamily family, const FrameParts& parts);
// The type asked for, or -1 when the frame isn't a request.
int requestedType(canbus::FrameFamily family, const FrameParts& parts);

// Families whose box waits for the head unit's connect frame before it talks.
bool hasConnectHandshake(canbus::FrameFamily family);

} // namespace canbox
