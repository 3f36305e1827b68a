#pragma once
// The data bytes of the last frame of one type. Boxes repeat their climate frames
// several times a second: a handler applies only the bytes that moved and tells the
// panel only when the frame as a whole changed.
//
//   if (cache.changed(f, 4)) decodeModes(f);
//   if (cache.changed(f, {6, 7})) decodeSetPoints(f);
//   if (cache.store(PayloadCache::dataBytes(f))) emit airConditionerDataChanged();

#include <QByteArray>
#include <initializer_list>

#include "framereader.h"

namespace canbus {

class PayloadCache
{
public:
    // `dataOffset`: frame index of the first data byte (3 in the 0x2E family).
    explicit PayloadCache(int dataOffset = kDataOffset2E) : m_offset(dataOffset) {}

    bool isEmpty() const { return m_bytes.isEmpty(); }
    const QByteArray& bytes() const { return m_bytes; }
    void clear() { m_bytes.clear(); }

    // Whether frame byte `index` differs from the same byte of the cached frame. An
    // empty cache, or one too short to hold the byte, counts as changed, so that the
    // first frame of a kind is applied whole.
    bool changed(const FrameReader& frame, int index) const;
    // Whether any of the bytes differs: steps that read several bytes run as one.
    bool changed(const FrameReader& frame, std::initializer_list<int> indexes) const;

    // Whether `payload` differs from the cached bytes, sizes included.
    bool differs(const QByteArray& payload) const { return payload != m_bytes; }
    // Keeps `payload`; returns whether it differed from what was kept before.
    bool store(const QByteArray& payload);

    // The data bytes of a 0x2E frame as its length byte counts them, cut at the
    // frame's end.
    static QByteArray dataBytes(const FrameReader& frame);

private:
    QByteArray m_bytes;
    int m_offset;
};

} // namespace canbus
