#pragma once
// Media texts (title, artist) reported to the box in a fixed pair of frames: each frame
// is [type, count + 1, lead, count text bytes], the first carrying up to one chunk of
// the text, the second the next chunk. Both frames go out every time, the second empty
// for a short text, so the box's display never keeps the tail of an older title.
//
//   const canbus::SplitTextForm title{0x70, 0x71, 0x10, 20};
//   for (const QByteArray& f : canbus::splitTextFrames(family, title, bytes))
//       emit sendDataToCan(f);

#include <QByteArray>
#include <QList>
#include <QString>

#include "framefamily.h"

namespace canbus {

// A text longer than `maxChars` characters keeps its first `keepChars` and gets "..."
// behind them; a shorter one, or one of exactly `maxChars`, stays as it is.
QString elideText(const QString& text, int maxChars, int keepChars);

struct SplitTextForm
{
    quint8 firstType;
    quint8 secondType;
    quint8 lead;       // the byte in front of the text in both frames
    int chunkBytes;    // text bytes per frame at most
};

// The two frames of `text` (already encoded); bytes past two chunks are dropped.
QList<QByteArray> splitTextFrames(FrameFamily family, const SplitTextForm& form,
                                  const QByteArray& text);

// UTF-16BE without the byte-order mark, followed by two zero bytes. Some boxes' text
// frames are sized by the encoding *with* its mark while the mark itself is left out:
// the count then takes in the two bytes behind the text, sent here as zeros.
QByteArray utf16BeCountingMark(const QString& text);

} // namespace canbus
