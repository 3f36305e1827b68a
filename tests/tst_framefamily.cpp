// The six link frame families: the check's result codes in the order its rules apply,
// checksums, acknowledgements, outbound frames, and the walk variants down to their 8-bit
// position arithmetic; last, a real driver of each variant: does a frame mark it connected?

#include <QtTest>

#include "canbusinterface.h"
#include "driverharness.h"
#include "framefamily.h"
#include "framereader.h"

using canbus::FrameFamily;
using canbus::WalkVariant;

namespace {

using F = FrameFamily;
using W = WalkVariant;

// frameLength before a check, and the marker of rows whose extent the check need not know.
constexpr int kUnset = -100;
constexpr int kOpen = -200;

struct CheckRow { F family; const char* bytes; int result; int frameLength; const char* reply; };
constexpr CheckRow kCheckRows[] = {
    {F::Start2E, "2e8101017c", 0, 5, "ff"},              // bytes 1..3 sum to 0x83, ~ is 0x7C
    {F::Start2E, "2e8101017d", -1, 5, "f0"},
    {F::Start2E, "2e8101017c2e81", 0, 5, "ff"},          // only the first frame counts
    {F::Start2E, "2eff02ffff00", 0, 6, "ff"},            // the sum 0x2FF keeps its low byte
    {F::Start2E, "", -1, kOpen, ""},
    {F::Start2E, "7e8101017c", -1, kOpen, ""},
    {F::Start2E, "2e", 1, kOpen, ""},
    {F::Start2E, "2e8100", -1, kOpen, ""},
    {F::Start2E, "2e810101", 1, kOpen, ""},              // size L + 3: the checksum is missing
    {F::StartAA55, "aa5501410041", 0, 6, "aa5501ff4140"},    // the ack carries the type
    {F::StartAA55, "aa5501410042", -1, 6, "aa5501fe413f"},
    {F::StartAA55, "aa550372102030d4", 0, 8, "aa5501ff7271"},
    {F::StartAA55, "aa5501ff00ff", 0, 6, "aa5501fffffe"},    // sum 0x100, less 1 is 0xFF
    {F::StartAA55, "aa", 1, kOpen, ""},
    {F::StartAA55, "ab", -1, kOpen, ""},
    {F::StartAA55, "aa54", -1, kOpen, ""},
    {F::StartAA55, "aa55", 1, kOpen, ""},
    {F::StartAA55, "aa5500", -1, kOpen, ""},
    {F::StartAA55, "aa55014100", 1, kOpen, ""},          // size L + 4: the checksum is missing
    {F::Start5AA5, "5aa5023d020141", 0, 7, "ff"},
    {F::Start5AA5, "5aa5023d020142", -1, 7, "fe"},
    {F::Start5AA5, "5a00023d020141", 0, 7, "ff"},        // the second start byte isn't examined
    {F::Start5AA5, "a5a5023d020141", -1, kOpen, ""},
    {F::Start5AA5, "a55a", 1, kOpen, ""},                // below 3 bytes nothing is looked at
    {F::Start5AA5, "5aa5023d0201", 1, kOpen, ""},
    {F::StartFD8, "fd0509020313", 0, 6, ""},             // no acknowledgement either way
    {F::StartFD8, "fd0509020314", -1, 6, ""},
    {F::StartFD8, "fd0509020313fd", 0, 6, ""},
    {F::StartFD8, "fd04ffff02", 0, 5, ""},
    {F::StartFD8, "fc0509020313", -1, kOpen, ""},
    {F::StartFD8, "fd", 1, kOpen, ""},
    {F::StartFD8, "fd0009", -1, kOpen, ""},
    {F::StartFD8, "fd05090203", 1, kOpen, ""},           // size L: the checksum is missing
    {F::StartFD16, "fd050401000a", 0, 6, ""},
    {F::StartFD16, "fd0504010a00", -1, 6, ""},           // high byte first
    {F::StartFD16, "fd06ffffff0303", 0, 7, ""},
    {F::StartFD16, "fd06ffffff0203", -1, 7, ""},         // all 16 bits are compared
    {F::StartFD16, "fd0200", -1, 3, ""},                 // L below 3: sum 0, but byte 1 is L
    {F::StartFD16, "fd00", 1, kOpen, ""},
    {F::StartFCFD, "fc0509020313", 0, 6, ""},
    {F::StartFCFD, "fc0509020314", -1, 6, ""},
    {F::StartFCFD, "fc", 1, kOpen, ""},
    {F::StartFCFD, "fc0009", -1, kOpen, ""},
    {F::StartFCFD, "fd09c005ff00000000cd", 1, kOpen, ""},  // whole, but alone: wait
    {F::StartFCFD, "fd09c005ff00000000cd00", 0, 10, ""},
    {F::StartFCFD, "fd09c005ff00000000ce00", -1, 10, ""},
    {F::StartFCFD, "fd0509020313fd", -1, 7, ""},         // the whole buffer is one frame
    {F::StartFCFD, "fd0f0102030419", 0, 7, ""},          // whatever byte 1 says
    {F::StartFCFD, "fd05090203", 1, kOpen, ""},
    {F::StartFCFD, "fe0509020313", -1, kOpen, ""},
};

struct ChecksumRow { F family; const char* before; const char* after; };
constexpr ChecksumRow kChecksumRows[] = {
    {F::Start2E, "2e81010100", "2e8101017c"},
    {F::StartAA55, "aa5501ff4100", "aa5501ff4140"},
    {F::Start5AA5, "5aa5023d020100", "5aa5023d020141"},
    {F::StartFD8, "fd0509020300", "fd0509020313"},
    {F::StartFD16, "fd0504010000", "fd050401000a"},
    {F::StartFD16, "fd06ffffff0000", "fd06ffffff0303"},
    {F::StartFD16, "2e0306010100", "2e030601000a"},       // by size, not by the length byte
    {F::StartFCFD, "fd09c005ff0000000000", "fd09c005ff00000000cd"},
    {F::StartFCFD, "fd05840112", "fd0584018a"},           // a length byte above the size
};

struct BuildRow { F family; quint8 type; const char* data; const char* frame; };
constexpr BuildRow kBuildRows[] = {
    {F::Start5AA5, 0x3D, "0201", "5aa5023d020141"},
    {F::StartFCFD, 0xC0, "05ff00000000", "fd09c005ff00000000cd"},
    {F::StartFCFD, 0x09, "0203", "fd0509020313"},
};

// Where each family puts the type byte and the first data byte.
struct FamilyRow { F family; int typeAt; int dataAt; };
constexpr FamilyRow kFamilies[] = {
    {F::Start2E, 1, 3}, {F::StartAA55, 3, 4}, {F::Start5AA5, 3, 4},
    {F::StartFD8, 2, 3}, {F::StartFD16, 2, 3}, {F::StartFCFD, 2, 3},
};

struct AckRow { F family; quint8 value; const char* ack; const char* nack; };
constexpr AckRow kAckRows[] = {
    {F::Start2E, 0xF0, "f0", "f0"},
    {F::StartAA55, 0x41, "aa5501ff4140", "aa5501fe413f"},
    {F::StartAA55, 0x00, "aa5501ff00ff", "aa5501fe00fe"},
    {F::Start5AA5, 0xFE, "fe", "fe"},
    {F::StartFCFD, 0xFF, "ff", "ff"},
};

struct WalkRow { W variant; const char* bytes; const char* frames; int consumed; };
// B shares A's rules and D shares C's; only their connect marks differ (see the drivers below).
constexpr WalkRow kWalkRows[] = {
    {W::A, "2e8101017c2e2403010203d2", "0+5 5+7", 12},
    {W::A, "2e810101", "", 0},                           // below 5 bytes
    {W::A, "2e8101017c2e2403010203", "0+5", 11},         // an incomplete tail is dropped
    {W::A, "2e8101017c0001020304", "0+5", 10},
    {W::A, "2e8101017c2e81007c7c", "0+5", 10},
    {W::A, "0001020304", "", 5},
    {W::C, "2e8101017c2e2403010203d2", "0+5 5+7", 12},
    {W::C, "2e8101017c2e2403010203", "0+5", 5},          // an incomplete tail waits
    {W::C, "2e8101017c00", "0+5", 5},                    // too short to tell junk from a start
    {W::C, "2e8101017c000102", "0+5", 8},
    {W::C, "2e8101017c2e8100", "0+5", 8},
    {W::C, "2e810101", "", 0},
    {W::E, "fd0509020313fd050401000a", "0+6 6+6", 12},
    {W::E, "fd0509020313fd05090203", "0+6", 11},         // an incomplete tail is dropped
    {W::E, "fd0509020313fd0009020300", "0+6", 12},
    {W::E, "fd05090203132e8101017c", "0+6", 11},
    {W::E, "fd03090c", "", 0},                           // a whole frame, but below 5 bytes
    {W::E, "fc0509020313", "", 6},
    {W::F, "fd09c005ff00000000cd", "0+10", 10},
    {W::F, "fd0f0102030419", "0+6", 7},                  // six bytes whatever byte 1 says
    {W::F, "fd0509020313fd09", "0+6 6+10", 16},          // a short FD tail is taken
    {W::F, "fd0509", "", 0},                             // below 4 bytes
    {W::F, "fc0509020313fd0509020313", "0+6 6+6", 12},
    {W::F, "fc0509020313fc05090203", "0+6", 11},         // L reaches the end: no frame
    {W::F, "fc0009020313", "", 6},
    {W::F, "000102030405", "", 6},
    {W::G, "aa5501410041aa550372102030d4", "0+6 6+8", 14},
    {W::G, "aa5503721020", "0+8", 8},                    // the first frame is the check's
    {W::G, "aa5501410041aa550372102030", "0+6", 6},      // an incomplete tail waits
    {W::G, "aa550141004100", "0+6", 7},
    {W::G, "aa5501410041aa5600", "0+6", 9},
    {W::G, "aa5501410041ab5501", "0+6", 9},
    {W::G, "aa5501410041aa5500", "0+6", 9},
    {W::G, "aa55014100", "", 0},                         // below 6 bytes
    {W::H, "5aa5023d0201415aa501410041", "0+7 7+6", 13},
    {W::H, "5aa5023d0201415a0001410041", "0+7 7+6", 13},   // either start byte will do
    {W::H, "5aa5023d02014100a501410041", "0+7 7+6", 13},
    {W::H, "5aa5023d020141000001410041", "0+7", 13},
    {W::H, "5aa5023d0201415aa5023d0201", "0+7", 13},     // an incomplete tail is dropped
    {W::H, "5aa5023d0201415aa5003d0201", "0+7", 13},
    {W::H, "5aa5023d0201", "", 6},                       // the first frame is tested too
    {W::H, "5aa50141", "", 0},
};

// Buffers of one frame repeated; past 255 bytes the position wraps.
struct WrapRow { W variant; const char* frame; int copies; int frames; int lastStart; int consumed; };
constexpr WrapRow kWrapRows[] = {
    {W::A, "2e010401020304f0", 32, 32, 248, 0},     // 256 bytes: the count wraps to 0
    {W::A, "2e010401020304f0", 40, 40, 56, 64},     // 320 bytes: frames 33.. start at 0 again
    {W::A, "2e8101017c", 60, 52, 255, 300},         // wraps onto byte 4, a checksum: junk
    {W::C, "2e010401020304f0", 40, 40, 56, 64},
    {W::D, "2e010401020304f0", 512, 512, 248, 0},
    {W::F, "fc0709010203041a", 40, 40, 56, 64},
    {W::G, "aa550372102030d4", 40, 40, 56, 64},
};

// One driver of each variant. The type 0x6B is none of these drivers' connect answer, so
// only the walk can make the box connected. extraUsed: how much of a partial second frame
// (the good frame's own first three bytes) the walk lets go.
struct DriverRow { int id; F family; W variant; bool marksConnected; const char* reply; int extraUsed; };
constexpr DriverRow kDriverRows[] = {
    {41, F::Start2E, W::A, true, "ff", 3},
    {33, F::Start2E, W::B, false, "ff", 3},
    {29, F::Start2E, W::C, false, "ff", 0},
    {28, F::Start2E, W::D, true, "ff", 0},
    {67, F::StartFD16, W::E, true, "", 3},
    {66, F::StartFCFD, W::F, true, "", 6},          // the FD tail is taken as a 6-byte frame
    {27, F::StartAA55, W::G, false, "aa5501ff6b6a", 0},
    {120, F::Start5AA5, W::H, true, "ff", 3},
};

char variantName(W variant) { return char('A' + int(variant)); }
const char* name(F family) { return canbus::familyName(family); }
QByteArray hex(const char* text) { return QByteArray::fromHex(text); }
const char* shown(const char* bytes) { return *bytes ? bytes : "empty"; }

QString rowName(const CheckRow& r) { return QString::asprintf("%s %s", name(r.family), shown(r.bytes)); }
QString rowName(const ChecksumRow& r) { return QString::asprintf("%s %s", name(r.family), r.before); }
QString rowName(const BuildRow& r) { return QString::asprintf("%s %s", name(r.family), r.frame); }
QString rowName(const AckRow& r) { return QString::asprintf("%s %02x", name(r.family), r.value); }
QString rowName(const WalkRow& r) { return QString::asprintf("%c %s", variantName(r.variant), shown(r.bytes)); }
QString rowName(const WrapRow& r)
{
    return QString::asprintf("%c %d x %s", variantName(r.variant), r.copies, r.frame);
}
QString rowName(const DriverRow& r) { return QString::asprintf("%d %c", r.id, variantName(r.variant)); }

// One data row per table row, named by it; a test reads its row by index.
template <typename Row, size_t N>
void addRows(const Row (&rows)[N])
{
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < N; ++i)
        QTest::newRow(qPrintable(rowName(rows[i]))) << int(i);
}

struct Walked
{
    QVector<QPair<int, int>> frames;   // start, length
    int consumed = 0;
};

Walked walkAll(W variant, const QByteArray& data)
{
    Walked out;
    canbus::FrameWalker walk(variant, data);
    // Every frame steps over at least one byte, so more frames than bytes means a walk
    // that doesn't end: give up and let the comparison fail instead of hanging.
    while (out.frames.size() <= data.size() && walk.next())
        out.frames.append({walk.frameStart(), walk.frameLength()});
    out.consumed = walk.consumed();
    return out;
}

QString spans(const Walked& walked)
{
    QStringList parts;
    for (const auto& f : walked.frames)
        parts << QStringLiteral("%1+%2").arg(f.first).arg(f.second);
    return parts.join(QLatin1Char(' '));
}

QByteArray sampleData(int size)
{
    QByteArray data;
    for (int i = 0; i < size; ++i)
        data.append(char(i * 37 + 5));
    return data;
}

} // namespace

class TestFrameFamily : public QObject
{
    Q_OBJECT

private slots:
    void checkFrame_data() { addRows(kCheckRows); }
    void checkFrame();
    void writeChecksum_data() { addRows(kChecksumRows); }
    void writeChecksum();
    void buildFrame_data() { addRows(kBuildRows); }
    void buildFrame();
    void builtFramePassesItsCheck_data();
    void builtFramePassesItsCheck();
    void acknowledgements_data() { addRows(kAckRows); }
    void acknowledgements();
    void walk_data() { addRows(kWalkRows); }
    void walk();
    void positionWraps_data() { addRows(kWrapRows); }
    void positionWraps();
    void driverConnectsOnWalk_data() { addRows(kDriverRows); }
    void driverConnectsOnWalk();
};

void TestFrameFamily::checkFrame()
{
    QFETCH(int, row);
    const CheckRow& r = kCheckRows[row];
    const QByteArray bytes = hex(r.bytes);
    int length = kUnset;
    QByteArray reply;
    QCOMPARE(canbus::checkFrame(r.family, bytes, length, reply), r.result);
    if (r.frameLength != kOpen)
        QCOMPARE(length, r.frameLength);
    QCOMPARE(reply.toHex(), QByteArray(r.reply));

    // A good frame cut anywhere before its end is incomplete, never refused: the link keeps
    // the bytes until the rest arrives. (Not so the FD form of FC/FD, whose buffer is the frame.)
    if (r.result != 0 || (r.family == F::StartFCFD && bytes.startsWith('\xFD') && bytes.at(1) != 9))
        return;
    for (int size = 1; size < r.frameLength; ++size) {
        reply.clear();
        QVERIFY2(canbus::checkFrame(r.family, bytes.left(size), length, reply) == 1,
                 bytes.left(size).toHex().constData());
        QVERIFY(reply.isEmpty());
    }
}

void TestFrameFamily::writeChecksum()
{
    QFETCH(int, row);
    const ChecksumRow& r = kChecksumRows[row];
    QByteArray frame = hex(r.before);
    canbus::writeChecksum(r.family, frame);
    QCOMPARE(frame.toHex(), QByteArray(r.after));
    // A driver may hand over a frame too short to hold a checksum: it must not grow.
    for (int size = 0; size < 4; ++size) {
        QByteArray cut = hex(r.before).left(size);
        canbus::writeChecksum(r.family, cut);
        QCOMPARE(cut.size(), size);
    }
}

void TestFrameFamily::buildFrame()
{
    QFETCH(int, row);
    const BuildRow& r = kBuildRows[row];
    QCOMPARE(canbus::buildFrame(r.family, r.type, hex(r.data)).toHex(), QByteArray(r.frame));
}

void TestFrameFamily::builtFramePassesItsCheck_data()
{
    QTest::addColumn<int>("family");   // a row of kFamilies
    QTest::addColumn<int>("dataSize");
    for (int i = 0; i < int(std::size(kFamilies)); ++i) {
        // 300 is more than any length byte can count: buildFrame must still give a
        // frame that its own check accepts. The 5-byte FD form of FC/FD is only ever sent.
        for (int size : {1, 2, 6, 40, 300}) {
            if (kFamilies[i].family != F::StartFCFD || size != 1)
                QTest::addRow("%s %d data bytes", name(kFamilies[i].family), size) << i << size;
        }
    }
}

void TestFrameFamily::builtFramePassesItsCheck()
{
    QFETCH(int, family);
    QFETCH(int, dataSize);
    const FamilyRow& f = kFamilies[family];
    const QByteArray data = sampleData(dataSize);
    const QByteArray frame = canbus::buildFrame(f.family, 0x6B, data);
    // The 10-byte FD form of FC/FD is taken once a further byte follows it.
    const QByteArray follower = f.family == F::StartFCFD && dataSize == 6 ? hex("00") : QByteArray();
    int length = kUnset;
    QByteArray reply;
    QCOMPARE(canbus::checkFrame(f.family, frame + follower, length, reply), 0);
    QCOMPARE(length, frame.size());
    QCOMPARE(canbus::byteAt(frame, f.typeAt), quint8(0x6B));
    const int head = qMin(6, dataSize);
    QCOMPARE(frame.mid(f.dataAt, head).toHex(), data.left(head).toHex());
}

void TestFrameFamily::acknowledgements()
{
    QFETCH(int, row);
    const AckRow& r = kAckRows[row];
    // Whatever `out` held before is replaced, not appended to.
    QByteArray out = hex("0102030405060708");
    canbus::makeAck(r.family, out, r.value);
    QCOMPARE(out.toHex(), QByteArray(r.ack));
    out = hex("0102030405060708");
    canbus::makeNack(r.family, out, r.value);
    QCOMPARE(out.toHex(), QByteArray(r.nack));
}

void TestFrameFamily::walk()
{
    QFETCH(int, row);
    const WalkRow& r = kWalkRows[row];
    const Walked walked = walkAll(r.variant, hex(r.bytes));
    QCOMPARE(spans(walked), QString::fromLatin1(r.frames));
    QCOMPARE(walked.consumed, r.consumed);
}

void TestFrameFamily::positionWraps()
{
    QFETCH(int, row);
    const WrapRow& r = kWrapRows[row];
    const Walked walked = walkAll(r.variant, hex(r.frame).repeated(r.copies));
    QCOMPARE(walked.frames.size(), r.frames);
    QCOMPARE(walked.frames.last().first, r.lastStart);
    QCOMPARE(walked.consumed, r.consumed);
}

void TestFrameFamily::driverConnectsOnWalk()
{
    QFETCH(int, row);
    const DriverRow& r = kDriverRows[row];
    QCOMPARE(canbus::walkMarksConnected(r.variant), r.marksConnected);
    DriverHarness h(r.id);
    QVERIFY(h.driver());
    // Some boxes count as connected from the start; only the walk is looked at here.
    h.driver()->setConnectedState(false);
    const QByteArray frame = canbus::buildFrame(r.family, 0x6B, {0x01, 0x02});
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(h.driver()->isConnectedState(), r.marksConnected);
    QCOMPARE(h.replies.isEmpty() ? QByteArray() : h.replies.first().toHex(), QByteArray(r.reply));

    // The driver walks with its own variant: a partial second frame is kept or dropped.
    QCOMPARE(h.manager()->setData(frame + frame.left(3)), frame.size() + r.extraUsed);
}

QTEST_GUILESS_MAIN(TestFrameFamily)
#include "tst_framefamily.moc"
