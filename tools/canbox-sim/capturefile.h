#pragma once
// What crossed the line between a CAN box and the head unit, as canbox-sim --record
// writes it and canbus-replay reads it back:
//
//   # canbox-sim capture: protocol 28 (...)
//   0.512 in 2e 21 09 c8 63 0d 0d 00 00 00 0d 00 cb
//   0.530 out ff
//
// "in" is what the head unit read, "out" what it wrote, each as one read or write of
// the port. The reader takes more than its own recordings: hex dumps without time or
// direction (everything then goes in), the module's own debug log, whose manager
// lines dump every frame it received ("func: setData line: n 0x2e 0x21 ..."), and raw
// bytes. A line it can't use is reported with its number and the rest is read.

#include <QByteArray>
#include <QList>
#include <QString>

namespace canbox {

struct CaptureEntry
{
    enum Direction { In, Out };
    int line = 0;           // 0 in a raw capture
    double seconds = -1;    // when it crossed; -1 where the capture keeps no time
    Direction direction = In;
    QByteArray bytes;
};

struct CaptureProblem
{
    int line = 0;
    QString text;
};

struct Capture
{
    // Raw: the bytes of the file as they came off the port, one entry holding them all.
    enum Kind { Raw, Text, ModuleLog };
    Kind kind = Text;
    int protocol = 0;       // named by a recording's header or selected in a log; 0 if none
    int protocolLine = 0;   // the header's line
    QList<CaptureEntry> entries;
    QList<CaptureProblem> problems;
};

// Reads a capture of any kind; `raw` takes the content as raw bytes whatever it looks like.
Capture readCapture(const QByteArray& content, bool raw = false);

// The bytes of a debug line of the module's manager or link that dumps a frame it
// received (In) or sent (Out); false for any other line. A dump that isn't hex sets
// `error` and returns true with no bytes.
bool moduleLogBytes(const QString& line, CaptureEntry::Direction* direction, QByteArray* bytes, QString* error);

// A recording's first line, and one line of it.
QByteArray captureHeader(int protocol, const QString& about);
QByteArray captureLine(double seconds, CaptureEntry::Direction direction, const QByteArray& bytes);

} // namespace canbox
