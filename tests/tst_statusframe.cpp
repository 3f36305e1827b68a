// The status frames 0x7D, 0x7E and 0x7F shared by many boxes: each sub-frame into a record
// laid out like a driver's, the variants, the shared records and their signals, short frames.

#include <QtTest>

#include "canbusinterface.h"
#include "common/statusframe.h"
#include "framebuilders.h"

using canbus::StatusVariant;

using testframes::frame;
using testframes::hex;

namespace {

struct Voice { quint8 value[8] = {}; };

// A record with both kinds of storage the layouts allow: named fields and arrays.
struct TripRecord
{
    QString vehicle, speed1, speed2, odometer, distance1, distance2, distance3, consumption1,
        consumption2, temperature1, temperature2, temperature3, engine, voltage, turnRate, rpm1, rpm2;
    quint8 s7 = 0, s6 = 0, s5 = 0, s2 = 0, s1 = 0, s4 = 0, s3 = 0, low = 0, high = 0, b5 = 0, b4 = 0, b3 = 0, b2 = 0;
    quint16 word0 = 0, word1 = 0, word2 = 0, word3 = 0, word4 = 0;
    quint8 percent[5] = {};
};

using R = TripRecord;
constexpr canbus::StatusLayout<R, Voice> kLayout = {
    {&R::vehicle, &R::speed1, &R::speed2, &R::odometer, &R::distance1, &R::distance2, &R::distance3,
     &R::consumption1, &R::consumption2, &R::temperature1, &R::temperature2, &R::temperature3,
     &R::engine, &R::voltage, &R::turnRate, &R::rpm1, &R::rpm2},
    {&R::s7, &R::s6, &R::s5, &R::s2, &R::s1, &R::s4, &R::s3, &R::low, &R::high, &R::b5, &R::b4,
     &R::b3, &R::b2},
    {{&R::word0, &R::word1, &R::word2, &R::word3, &R::word4}, nullptr},
    {{}, &R::percent},
    {{}, &Voice::value},
};

// A layout that keeps only some values: the others must be skipped, not written.
constexpr canbus::StatusLayout<R, Voice> kSparseLayout = {
    {&R::vehicle}, {&R::s7}, {{}, nullptr}, {{}, nullptr}, {{}, nullptr},
};

constexpr StatusVariant kPlain = {}, kUnits = {true, true, true, 0, false};

// One row for each sub-frame's scale and unit; `data` is that of a frame 0x7D.
struct TextRow { const char* data; bool units; const char* name; QString R::*field; const char* text; };
const TextRow kTextRows[] = {
    {"0041420043", false, "vehicle", &R::vehicle, "AB"},
    {"0339300100", false, "speed", &R::speed1, "123.45KM/H"},
    {"033930010001", true, "speed", &R::speed1, "123.45MPH"},
    {"040100000f00100000010000", false, "odometer", &R::odometer, "1KM"},
    {"040100000f00100000010000", false, "distance", &R::distance1, "1.5KM"},
    {"074b000000", false, "consumption", &R::consumption1, "7.5 L/100Km"},
    {"074b000000", true, "consumption", &R::consumption1, "7.5L/100Km"},   // no unit byte: the first
    {"074b00000001", true, "consumption 2", &R::consumption2, "0KM/L"},
    {"090028ff", false, "temperature", &R::temperature1, "-40\xe2\x84\x83"},
    {"0affff", false, "engine", &R::engine, "16383.8rpm"},
    {"0be803", false, "voltage", &R::voltage, "1V"},
    {"0effff", false, "turn rate", &R::turnRate, "65535Tr/min"},
    {"0f2f003000", false, "rpm", &R::rpm1, "1rpm"},
};

// Each sub-frame's least whole size (7 and 16 as the variant with units has them).
struct SizeRow { int sub; bool units; int minimum; };
constexpr SizeRow kSizeRows[] = {
    {1, false, 6}, {2, false, 6}, {3, false, 9}, {4, false, 16}, {5, false, 6}, {6, false, 6},
    {7, true, 9}, {8, false, 7}, {9, false, 8}, {10, false, 7}, {11, false, 7}, {12, false, 15},
    {13, false, 6}, {14, false, 7}, {15, false, 9}, {16, true, 10}, {0xEF, false, 7},
};

// A bare driver with its shared records.
struct Box
{
    Box() { driver.initData(); }
    CanbusInterface driver;
    R trip;
    Voice voice;
    bool decode(const QByteArray& f, const StatusVariant& v = kPlain, bool open = true,
                const canbus::StatusLayout<R, Voice>& layout = kLayout)
    {
        return canbus::decodeStatusFrame(driver, FrameReader(f), v, layout, trip, voice, open);
    }
};

} // namespace

class TestStatusFrame : public QObject
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
    void flagsWordsPercentagesAndVoice();
    void sizes_data();
    void sizes();
    void sparseLayoutSkipsTheRest();
    void bodyAndDoors();
    void outdoorTemperature();
    void signalsClosed();
    void functionFlagPositions();
    void version();
};

void TestStatusFrame::texts_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(kTextRows)); ++i)
        QTest::addRow("%s %s%s", kTextRows[i].data, kTextRows[i].name, kTextRows[i].units ? " units" : "") << i;
}

void TestStatusFrame::texts()
{
    QFETCH(int, row);
    const TextRow& r = kTextRows[row];
    Box box;
    QVERIFY(box.decode(frame(0x7D, hex(r.data)), r.units ? kUnits : kPlain));
    QCOMPARE(box.trip.*r.field, QString::fromUtf8(r.text));
}

void TestStatusFrame::flagsWordsPercentagesAndVoice()
{
    Box box;
    const R& t = box.trip;
    box.decode(frame(0x7D, {1, 0b10100110}));
    box.decode(frame(0x7D, {2, 0xFD}));
    // Record order: bits 7, 6, 5, 2, 1, 4, 3; then the low three bits of sub-frame 2.
    QCOMPARE((QList<int>{t.s7, t.s6, t.s5, t.s2, t.s1, t.s4, t.s3, t.low}), (QList<int>{1, 0, 1, 1, 1, 0, 0, 5}));
    box.decode(frame(0x7D, {13, 0b11011000}));
    QCOMPARE((QList<int>{t.high, t.b5, t.b4, t.b3, t.b2}), (QList<int>{3, 0, 1, 1, 0}));
    box.decode(frame(0x7D, {12, 1, 0, 2, 0, 3, 0, 4, 0, 0xFF, 0xFF}));
    QCOMPARE((QList<int>{t.word0, t.word1, t.word2, t.word3, t.word4}), (QList<int>{1, 2, 3, 4, 65535}));

    // The percentage page exists only where the variant says so.
    QVERIFY(!box.decode(frame(0x7D, {16, 0xE4, 101, 50, 0, 0x7F})));
    QCOMPARE(int(t.percent[0]), 0);
    QVERIFY(box.decode(frame(0x7D, {16, 0xE4, 101, 50, 0, 0x7F}), kUnits));
    QCOMPARE((QList<int>{t.percent[0], t.percent[1], t.percent[2], t.percent[3], t.percent[4]}),
             (QList<int>{100, 100, 50, 0, 100}));

    // Voice: byte 4 names the item, byte 5 (for item 2 also byte 6) its value; item 5 is none.
    for (const char* item : {"0101", "020203", "0304", "0405", "0806", "4507", "4608", "0509"})
        box.decode(frame(0x7D, hex("ef") + hex(item) + hex("0000")));
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(box.voice.value), 8).toHex(), QByteArray("0102030405060708"));
}

void TestStatusFrame::sizes_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(kSizeRows)); ++i)
        QTest::addRow("sub %d%s", kSizeRows[i].sub, kSizeRows[i].units ? " units" : "") << i;
}

void TestStatusFrame::sizes()
{
    QFETCH(int, row);
    const SizeRow& r = kSizeRows[row];
    const StatusVariant& variant = r.units ? kUnits : kPlain;
    Box box;
    const QByteArray whole = frame(0x7D, {r.sub, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1});
    // Short by one, either cut or with a length byte to match: nothing happens.
    QVERIFY(!box.decode(whole.left(r.minimum - 1), variant));
    QByteArray shorter = whole.left(r.minimum - 1);
    shorter[2] = char(r.minimum - 5);
    QVERIFY(!box.decode(shorter, variant));
    QVERIFY(box.decode(whole.left(r.minimum), variant));
}

void TestStatusFrame::sparseLayoutSkipsTheRest()
{
    Box box;
    for (const QByteArray& f : {frame(0x7D, {1, 0xFF}), frame(0x7D, {3, 1, 2, 3, 4, 1}),
                                frame(0x7D, {12, 1, 0, 2, 0, 3, 0, 4, 0, 5, 0}), frame(0x7D, {16, 1, 2, 3, 4, 5}),
                                frame(0x7D, {0xEF, 1, 9})})
        QVERIFY(box.decode(f, kUnits, true, kSparseLayout));
    const R& t = box.trip;
    QCOMPARE((QList<int>{t.s7, t.s6, t.word0, t.percent[0], box.voice.value[0]}), (QList<int>{1, 0, 0, 0, 0}));
    QCOMPARE(t.speed1, QString());
}

void TestStatusFrame::bodyAndDoors()
{
    Box box;
    QSignalSpy body(&box.driver, SIGNAL(carbodyDataChanged()));
    QSignalSpy doors(&box.driver, SIGNAL(cardoorDataChanged()));
    const CarbodyData& b = *box.driver.getCarbodyData();
    box.decode(frame(0x7D, {3, 0x10, 0x27, 0x20, 0x4E}));
    box.decode(frame(0x7D, {3, 0x10, 0x27, 0x20, 0x4E}));   // the same: no signal
    QCOMPARE((QList<int>{b.speedUnit, b.vehicleSpeed, b.vehicleSpeed2, body.count()}), (QList<int>{0, 10000, 20000, 1}));
    box.decode(frame(0x7D, {4, 0x56, 0x34, 0x12, 0, 0, 0, 0, 0, 0, 0, 0}));
    QCOMPARE((QList<int>{b.odometer, b.odometerUnit, body.count()}), (QList<int>{0x123456, 0, 2}));
    // Sub-frame 11 stores the voltage and tells nobody.
    box.decode(frame(0x7D, {11, 0x39, 0x30}));
    QCOMPARE((QList<int>{b.batteryVoltage, body.count()}), (QList<int>{123, 2}));

    box.decode(frame(0x7D, {5, 0x54}));   // bits 6, 4, 2
    box.decode(frame(0x7D, {5, 0x54}));
    const CardoorData& d = *box.driver.getCardoorData();
    QCOMPARE((QList<int>{d.doorFrontLeft, d.doorFrontRight, d.doorRearLeft, d.doorRearRight, d.doorTrunk, d.doorHood}),
             (QList<int>{1, 0, 1, 0, 0, 1}));
    QCOMPARE(doors.count(), 1);

    // From the defaults (255) the three body flags change: stored, no signal.
    body.clear();
    box.decode(frame(0x7D, {6, 0x36}));
    QCOMPARE((QList<int>{b.bodyFlag1, b.bodyFlag2, b.bodyFlag31, b.bodyWarning36, body.count()}),
             (QList<int>{1, 1, 1, 0, 0}));
    // The same three flags again: now the panel hears of it, whatever the warning did.
    box.decode(frame(0x7D, {6, 0x06}));
    QCOMPARE((QList<int>{b.bodyWarning36, body.count()}), (QList<int>{1, 1}));
    box.decode(frame(0x7D, {6, 0x07}));
    QCOMPARE((QList<int>{b.bodyFlag1, body.count()}), (QList<int>{0, 1}));
}

void TestStatusFrame::outdoorTemperature()
{
    Box box;
    QSignalSpy outdoor(&box.driver, SIGNAL(outdoorTemperatureChanged(QString,int)));
    QSignalSpy body(&box.driver, SIGNAL(carbodyDataChanged()));
    box.decode(frame(0x7D, {9, 0, 65, 0}));
    box.decode(frame(0x7D, {9, 0, 65, 0}));
    QCOMPARE(box.driver.getAirData()->outdoorTemp, QString::fromUtf8("25.0\xe2\x84\x83"));
    QCOMPARE(outdoor.count(), 2);   // every frame, changed or not
    QCOMPARE(outdoor.at(0), (QList<QVariant>{box.driver.getAirData()->outdoorTemp, 0}));
    QCOMPARE((QList<int>{box.driver.getCarbodyData()->outdoorTempTenths, body.count()}), (QList<int>{250, 0}));
    // A variant whose body hears of the reading, gate or not.
    box.decode(frame(0x7D, {9, 0, 0, 0}), StatusVariant{false, false, false, 0, true}, false);
    QCOMPARE(int(box.driver.getCarbodyData()->outdoorTempTenths), -400);
    QCOMPARE(body.count() * 10 + outdoor.count(), 12);
}

void TestStatusFrame::signalsClosed()
{
    Box box;
    int heard = 0;
    const auto count = [&heard] { ++heard; };
    QObject::connect(&box.driver, &CanbusInterface::carbodyDataChanged, count);
    QObject::connect(&box.driver, &CanbusInterface::cardoorDataChanged, count);
    QObject::connect(&box.driver, &CanbusInterface::trajectoryDataChanged, count);
    QObject::connect(&box.driver, &CanbusInterface::outdoorTemperatureChanged, count);
    for (const QByteArray& f : {frame(0x7D, {3, 1, 2, 3, 4}), frame(0x7D, {5, 0xFF}),
                                frame(0x7D, {6, 0x07}), frame(0x7D, {6, 0x07}), frame(0x7D, {8, 1, 2}),
                                frame(0x7D, {9, 1, 2, 3}), frame(0x7D, {10, 0, 0})})
        QVERIFY(box.decode(f, kPlain, false));
    QCOMPARE(heard, 0);
    QCOMPARE(int(box.driver.getCardoorData()->doorHood), 1);   // stored all the same
}

void TestStatusFrame::functionFlagPositions()
{
    struct All { quint8 flag[37] = {}; };
    constexpr canbus::FieldSeq<All, quint8, 37> kAll = {{}, &All::flag};
    // Each bit of bytes 3 to 14 alone: in frame order the bits set flags 0, 1, ... 36, one
    // each; the masks show which bits of each byte carry one.
    int next = 0;
    QByteArray masks(12, '\0');
    for (int i = 0; i < 12 * 8; ++i) {
        QByteArray f = frame(0x7E, QByteArray(12, '\0'));
        f[3 + i / 8] = char(0x80 >> (i % 8));
        All all;
        canbus::decodeFunctionFrame(FrameReader(f), kAll, all);
        for (int j = 0; j < 37; ++j) {
            if (all.flag[j]) {
                QCOMPARE(j, next++);
                masks[i / 8] = char(masks.at(i / 8) | f.at(3 + i / 8));
            }
        }
    }
    QCOMPARE(masks.toHex(), QByteArray("fe80c0f080ffc080e0f000f0"));
    QCOMPARE(next, 37);
}

void TestStatusFrame::version()
{
    // Up to the first zero; a frame cut short, or without its length byte, gives what it holds.
    const QList<QPair<QByteArray, QString>> rows = {
        {frame(0x7F, {'V', '1', 0}), "V1"}, {frame(0x7F, {'V', '1', 0}).left(5), "V1"}, {hex("2e7f"), ""}};
    for (const auto& row : rows) {
        CanbusInterface driver;
        QSignalSpy version(&driver, SIGNAL(versionDataChanged(QString)));
        canbus::takeVersionFrame(driver, FrameReader(row.first));
        QVERIFY(driver.isConnectedState());
        QCOMPARE(driver.getVersionData(), row.second);
        QCOMPARE(version.count(), 1);
    }
}

QTEST_GUILESS_MAIN(TestStatusFrame)
#include "tst_statusframe.moc"
