#pragma once
// Frames of a fixed size that carry a text at a fixed place. Some boxes take every
// text in a frame of one length whatever the text's own: the text is laid into the
// frame's bytes from its place on, as far as the box reads, and a text that runs up to
// the frame's end is cut by the checksum, which takes the last byte. The other bytes
// keep what they held, so that a driver may send one buffer twice with another text.
//
//   QByteArray frame = makeFrame(0x99, QByteArray(34, '\0'));
//   canbus::placeText(frame, 7, encodeUtf16(band, LittleEndian), 27);
//   autoCalculateChecksum(frame);

#include <QByteArray>

namespace canbus {

// Writes up to `maxBytes` bytes of `text` into `frame` from byte `from` on, never past
// the frame's last byte (its checksum position, which the checksum overwrites later).
// Returns how many bytes were written: 0 when `from` lies outside the frame.
int placeText(QByteArray& frame, int from, const QByteArray& text, int maxBytes);

} // namespace canbus
