#include "common/payloadcache.h"

namespace canbus {

bool PayloadCache::changed(const FrameReader& frame, int index) const
{
    const int cached = index - m_offset;
    if (cached < 0 || cached >= m_bytes.size())
        return true;
    return static_cast<quint8>(m_bytes.at(cached)) != frame.at(index);
}

bool PayloadCache::changed(const FrameReader& frame, std::initializer_list<int> indexes) const
{
    for (int index : indexes) {
        if (changed(frame, index))
            return true;
    }
    return false;
}

bool PayloadCache::store(const QByteArray& payload)
{
    if (!differs(payload))
        return false;
    m_bytes = payload;
    return true;
}

QByteArray PayloadCache::dataBytes(const FrameReader& frame)
{
    return frame.bytes(kDataOffset2E, frame.at(2));
}

} // namespace canbus
