#include "frameparts.h"

#include "framereader.h"

namespace canbox {

using canbus::FrameFamily;

namespace {

struct Layout
{
    FrameFamily family;
    int typeIndex;
    int dataIndex;
    int checksumBytes;
};
constexpr Layout kLayouts[] = {
    {FrameFamily::Start2E, 1, 3, 1},     // 2E type len data.. cs
    {FrameFamily::StartAA55, 3, 4, 1},   // AA 55 len type data.. cs
    {FrameFamily::Start5AA5, 3, 4, 1},   // 5A A5 len type data.. cs
    {FrameFamily::StartFD8, 2, 3, 1},    // FD len type data.. cs
    {FrameFamily::StartFD16, 2, 3, 2},   // FD len type data.. csHi csLo
    {FrameFamily::StartFCFD, 2, 3, 1},   // FC|FD len type data.. cs
};

// Link frames of the 0x2E boxes: connect and disconnect share a type and differ in
// their first data byte; a request names the frame type wanted.
constexpr quint8 kLinkType = 0x81;
constexpr quint8 kRequestType = 0x90;

const Layout& layoutOf(FrameFamily family)
{
    for (const Layout& l : kLayouts) {
        if (l.family == family)
            return l;
    }
    return kLayouts[0];
}

} // namespace

FrameParts frameParts(FrameFamily family, const QByteArray& frame)
{
    const Layout& l = layoutOf(family);
    FrameParts parts;
    parts.type = canbus::byteAt(frame, l.typeIndex);
    const int dataSize = frame.size() - l.dataIndex - l.checksumBytes;
    if (dataSize > 0)
        parts.data = frame.mid(l.dataIndex, dataSize);
    return parts;
}

bool hasConnectHandshake(FrameFamily family)
{
    return family == FrameFamily::Start2E;
}

bool isConnectFrame(FrameFamily family, const FrameParts& parts)
{
    return hasConnectHandshake(family) && parts.type == kLinkType && parts.data.size() == 1
        && canbus::byteAt(parts.data, 0) == 0x01;
}

bool isDisconnectFrame(FrameFamily family, const FrameParts& parts)
{
    return hasConnectHandshake(family) && parts.type == kLinkType && parts.data.size() == 1
        && canbus::byteAt(parts.data, 0) == 0x00;
}

int requestedType(FrameFamily family, const FrameParts& parts)
{
    if (!hasConnectHandshake(family) || parts.type != kRequestType || parts.data.isEmpty())
        return -1;
    return canbus::byteAt(parts.data, 0);
}

QString linkMeaning(FrameFamily family, const FrameParts& parts)
{
    if (isConnectFrame(family, parts))
        return QStringLiteral("connect");
    if (isDisconnectFrame(family, parts))
        return QStringLiteral("disconnect");
    const int wanted = requestedType(family, parts);
    if (wanted >= 0)
        return QStringLiteral("request for frame 0x%1").arg(wanted, 2, 16, QLatin1Char('0'));
    return QString();
}

} // namespace canbox
