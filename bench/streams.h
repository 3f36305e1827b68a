#pragma once
// The byte streams the benchmarks replay: the frames of a driver's box scenarios, or
// a made-up stream of valid frames of one frame family, and the cutting of a stream
// into reads as a serial port delivers them. Everything comes from fixed seeds, so
// that every run replays the same bytes in the same reads.
//
// Needs only the frame families and the box simulator's scenario reader, so that the
// start-up program can use it without linking the module's code.

#include <QByteArray>
#include <QList>
#include <QString>

#include "fixedrandom.h"
#include "framefamily.h"

namespace bench {

// The frames the box of a scenario sends, in the order of the files of
// <scenarioDir>/<id> (by name) and of their handshake and steps. Only typed steps:
// the raw ones are the scenarios' deliberately broken frames.
QList<QByteArray> scenarioFrames(const QString& scenarioDir, int id, canbus::FrameFamily family);

// `count` valid frames of `family`, built with the family's own builder. With
// `templates` (frames the driver's parser knows) each frame takes a template's type
// and length with data bytes drawn anew; without, types and lengths are drawn too.
// The FC/FD family alternates its fixed 10-byte FD form with FC frames, the two forms
// that can follow one another in a stream.
QList<QByteArray> syntheticFrames(canbus::FrameFamily family, const QList<QByteArray>& templates,
                                  int count, quint32 seed);

// The type byte and the data bytes of a frame of `family`.
quint8 frameType(canbus::FrameFamily family, const QByteArray& frame);
QByteArray frameData(canbus::FrameFamily family, const QByteArray& frame);

// Cuts a stream into reads of minRead to maxRead bytes; the last read is the rest.
QList<QByteArray> cutIntoReads(const QByteArray& stream, quint32 seed, int minRead = 8,
                               int maxRead = 64);

} // namespace bench
