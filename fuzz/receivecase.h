#pragma once
// A receive case: which driver listens and the reads in which the box's bytes arrive.
//
//   byte 0           the driver: its index in the factory table, modulo the table's size
//   then             the byte stream, from the front
//   from the back    the size of each read in turn, 1 to 255; 0 means "all the rest"
//
// The stream and the sizes meet in the middle: a mutation of the frames leaves the cut
// points alone and the other way round.

#include <QByteArray>
#include <QList>

#include "fuzzinput.h"
#include "fuzzmodule.h"

namespace canbusfuzz {

struct ReceiveCase
{
    quint8 driverIndex = 0;
    QList<QByteArray> reads;
};

inline ReceiveCase decodeReceive(FuzzInput in)
{
    ReceiveCase c;
    c.driverIndex = in.byte();
    c.reads = takeReads(in);
    return c;
}

// The input that decodes to these reads; a read longer than 255 bytes is cut in two.
inline QByteArray encodeReceive(quint8 driverIndex, const QList<QByteArray>& reads)
{
    return QByteArray(1, char(driverIndex)) + encodeReads(reads);
}

// Returns the first malformed frame the driver sent back, or an empty array.
inline QByteArray runReceive(FuzzModule& module, const ReceiveCase& c)
{
    module.select(c.driverIndex);
    for (const QByteArray& read : c.reads)
        module.feed(read);
    module.fireTimers();   // what the frames set going: releases, requests, long presses
    const QByteArray bad = module.malformedSentFrame();
    module.settle();
    module.forget();
    return bad;
}

} // namespace canbusfuzz
