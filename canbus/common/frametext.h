#pragma once
// Texts that the head unit reports to the box (titles, names, numbers): encoded, and
// cut to what a frame can carry. A frame's length byte counts at most 250 data bytes,
// so a long title is shortened at a character boundary rather than letting the length
// bytes of the frame and of the text disagree.

#include <QByteArray>
#include <QString>

#include "common/textcodec.h"

namespace canbus {

// UTF-16 without a byte-order mark, at most `maxBytes` bytes: whole code units, and
// never half a surrogate pair.
QByteArray utf16Text(const QString& text, Utf16Order order, int maxBytes);

// UTF-8, at most `maxBytes` bytes, never ending inside a character.
QByteArray utf8Text(const QString& text, int maxBytes);

} // namespace canbus
