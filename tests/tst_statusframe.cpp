// The multiplexed status frames 0x7D, 0x7E and 0x7F shared by many boxes: each
// sub-frame into a record laid out like a driver's, the variants, the shared records
// and their signals, and frames too short or unknown.

#include <QSignalSpy>
#include <QtTest>

#include "canbusinterface.h"
#include "framefamily.h"
#include "common/statusframe.h"

using canbus::StatusVariant;

namespace {

QByteArray frame(int type, std::initializer_list<int> data)
{
    QByteArray bytes;
    for (int v : data)
        bytes.append(char(v));
    return canbus::buildFrame(canbus::FrameFamily::Start2E, quint8(type), bytes);
}

struct Voice
{
    quint8 value[8] = {};
};

// A record with both kinds of storage the layouts allow: named fields and arrays.
struct TripRecord
{
    QString vehicle, speed1, speed2, odometer, distance1, distance2, distance3, consumption1,
        consumption2, temperature1, temperature2, temperature3, engine, voltage, turnRate, rpm1, rpm2;
    quint8 s7 = 0, s6 = 0, s5 = 0, s2 = 0, s1 = 0, s4 = 0, s3 = 0, low = 0, high = 0, b5 = 0, b4 = 0,
           b3 = 0, b2 = 0;
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

constexpr StatusVariant kPlain = {};
constexpr StatusVariant kUnits = {true, true, true, 0, false};

QString text(const R& r, const QString& name)
{
    const QHash<QString, QString> texts = {
        {"vehicle", r.vehicle},       {"speed1", r.speed1},         {"speed2", r.speed2},
        {"odometer", r.odometer},     {"distance1", r.distance1},   {"distance2", r.distance2},
        {"distance3", r.distance3},   {"consumption1", r.consumption1},
        {"consumption2", r.consumption2}, {"temperature1", r.temperature1},
        {"temperature3", r.temperature3}, {"engine", r.engine},     {"voltage", r.voltage},
        {"turnRate", r.turnRate},     {"rpm1", r.rpm1},             {"rpm2", r.rpm2},
    };
    return texts.value(name, QStringLiteral("?"));
}

// A bare driver with its shared records.
struct Box
{
    Box() { driver.initData(); }
    CanbusInterface driver;
    R trip;
    Voice voice;
    bool decode(const QByteArray& f, const StatusVariant& v = kPlain, bool open = true)
    {
        return canbus::decodeStatusFrame(driver, FrameReader(f), v, kLayout, trip, voice, open);
    }
};

} // namespace

class TestStatusFrame : public QObject
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
    void flagsWordsAndPercentages();
    void voiceFeedback_data();
    void voiceFeedback();
    void sizes_data();
    void sizes();
    void sparseLayoutSkipsTheRest();
    void bodyAndDoors();
    void bodyFlagsSignalOnlyWhenKept();
    void outdoorTemperature();
    void signalsClosed();
    void functionFlagPositions();
    void version_data();
    void version();
};

void TestStatusFrame::texts_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("units");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    auto row = [](const QByteArray& f, bool units, const char* field, const QString& text) {
        QTest::addRow("%s%s %s", f.toHex().constData(), units ? " units" : "", field)
            << f << units << field << text;
    };
    row(frame(0x7D, {0, 'A', 'B', 0, 'C'}), false, "vehicle", "AB");
    row(frame(0x7D, {3, 0x39, 0x30, 0x01, 0x00}), false, "speed1", "123.45KM/H");
    row(frame(0x7D, {3, 0x39, 0x30, 0x01, 0x00, 1}), true, "speed1", "123.45MPH");
    row(frame(0x7D, {4, 1, 0, 0, 0x0F, 0, 0x10, 0, 0, 1, 0, 0}), false, "odometer", "1KM");
    row(frame(0x7D, {4, 1, 0, 0, 0x0F, 0, 0x10, 0, 0, 1, 0, 0}), false, "distance1", "1.5KM");
    row(frame(0x7D, {7, 0x4B, 0, 0, 0}), false, "consumption1", "7.5 L/100Km");
    row(frame(0x7D, {7, 0x4B, 0, 0, 0}), true, "consumption1", "7.5L/100Km");
    row(frame(0x7D, {7, 0x4B, 0, 0, 0, 1}), true, "consumption2", "0KM/L");
    row(frame(0x7D, {7, 0x4B, 0, 0, 0, 2}), true, "consumption1", "7.5MPG(UK)");
    row(frame(0x7D, {7, 0x4B, 0, 0, 0, 4}), true, "consumption1", "7.5l/h");
    row(frame(0x7D, {9, 0, 40, 255}), false, "temperature1", QString::fromUtf8("-40\xe2\x84\x83"));
    row(frame(0x7D, {10, 0xFF, 0xFF}), false, "engine", "16383.8rpm");
    row(frame(0x7D, {11, 0xE8, 0x03}), false, "voltage", "1V");
    row(frame(0x7D, {14, 0xFF, 0xFF}), false, "turnRate", "65535Tr/min");
    row(frame(0x7D, {15, 47, 0, 48, 0}), false, "rpm1", "1rpm");
}

void TestStatusFrame::texts()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, units);
    QFETCH(QString, field);
    QFETCH(QString, text);
    Box box;
    QVERIFY(box.decode(frame, units ? kUnits : kPlain));
    QCOMPARE(::text(box.trip, field), text);
}

void TestStatusFrame::flagsWordsAndPercentages()
{
    Box box;
    box.decode(frame(0x7D, {1, 0b10100110}));
    const R& t = box.trip;
    // Record order: bits 7, 6, 5, 2, 1, 4, 3.
    QCOMPARE((QList<int>{t.s7, t.s6, t.s5, t.s2, t.s1, t.s4, t.s3}), (QList<int>{1, 0, 1, 1, 1, 0, 0}));
    box.decode(frame(0x7D, {2, 0xFD}));
    QCOMPARE(int(t.low), 5);
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
}

void TestStatusFrame::voiceFeedback_data()
{
    QTest::addColumn<int>("item");
    QTest::addColumn<QList<int>>("values");
    QTest::addRow("1") << 1 << QList<int>{7, 0, 0, 0, 0, 0, 0, 0};
    QTest::addRow("2") << 2 << QList<int>{0, 7, 9, 0, 0, 0, 0, 0};
    QTest::addRow("3") << 3 << QList<int>{0, 0, 0, 7, 0, 0, 0, 0};
    QTest::addRow("4") << 4 << QList<int>{0, 0, 0, 0, 7, 0, 0, 0};
    QTest::addRow("8") << 8 << QList<int>{0, 0, 0, 0, 0, 7, 0, 0};
    QTest::addRow("45") << 0x45 << QList<int>{0, 0, 0, 0, 0, 0, 7, 0};
    QTest::addRow("46") << 0x46 << QList<int>{0, 0, 0, 0, 0, 0, 0, 7};
    QTest::addRow("5") << 5 << QList<int>{0, 0, 0, 0, 0, 0, 0, 0};
}

void TestStatusFrame::voiceFeedback()
{
    QFETCH(int, item);
    QFETCH(QList<int>, values);
    Box box;
    box.decode(frame(0x7D, {0xEF, item, 7, 9}));
    QList<int> actual;
    for (quint8 v : box.voice.value)
        actual << v;
    QCOMPARE(actual, values);
}

void TestStatusFrame::sizes_data()
{
    QTest::addColumn<int>("sub");
    QTest::addColumn<bool>("units");
    QTest::addColumn<int>("minimum");
    const struct { int sub; bool units; int minimum; } rows[] = {
        {1, false, 6}, {2, false, 6}, {3, false, 9}, {4, false, 16}, {5, false, 6}, {6, false, 6},
        {7, true, 9}, {8, false, 7}, {9, false, 8}, {10, false, 7}, {11, false, 7}, {12, false, 15},
        {13, false, 6}, {14, false, 7}, {15, false, 9}, {16, true, 10}, {0xEF, false, 7},
    };
    for (const auto& r : rows)
        QTest::addRow("sub %d%s", r.sub, r.units ? " units" : "") << r.sub << r.units << r.minimum;
}

void TestStatusFrame::sizes()
{
    QFETCH(int, sub);
    QFETCH(bool, units);
    QFETCH(int, minimum);
    Box box;
    const QByteArray whole = frame(0x7D, {sub, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1});
    // Short by one, either cut or with a length byte to match: nothing happens.
    QVERIFY(!box.decode(whole.left(minimum - 1), units ? kUnits : kPlain));
    QByteArray shorter = whole.left(minimum - 1);
    shorter[2] = char(minimum - 5);
    QVERIFY(!box.decode(shorter, units ? kUnits : kPlain));
    QCOMPARE(box.trip.s7 + box.trip.low + box.trip.word0 + box.trip.percent[0] + box.voice.value[0], 0);
    QVERIFY(box.decode(whole.left(minimum), units ? kUnits : kPlain));
}

void TestStatusFrame::sparseLayoutSkipsTheRest()
{
    CanbusInterface driver;
    driver.initData();
    R trip;
    Voice voice;
    const auto decode = [&](const QByteArray& f) {
        return canbus::decodeStatusFrame(driver, FrameReader(f), kUnits, kSparseLayout, trip, voice, true);
    };
    QVERIFY(decode(frame(0x7D, {1, 0xFF})));
    QVERIFY(decode(frame(0x7D, {3, 1, 2, 3, 4, 1})));
    QVERIFY(decode(frame(0x7D, {12, 1, 0, 2, 0, 3, 0, 4, 0, 5, 0})));
    QVERIFY(decode(frame(0x7D, {16, 1, 2, 3, 4, 5})));
    QVERIFY(decode(frame(0x7D, {0xEF, 1, 9})));
    QCOMPARE(int(trip.s7), 1);
    QCOMPARE(int(trip.s6), 0);
    QCOMPARE(trip.speed1, QString());
    QCOMPARE(int(trip.word0), 0);
    QCOMPARE(int(trip.percent[0]), 0);
    QCOMPARE(int(voice.value[0]), 0);
}

void TestStatusFrame::bodyAndDoors()
{
    Box box;
    QSignalSpy body(&box.driver, SIGNAL(carbodyDataChanged()));
    QSignalSpy doors(&box.driver, SIGNAL(cardoorDataChanged()));
    box.decode(frame(0x7D, {3, 0x10, 0x27, 0x20, 0x4E}));
    const CarbodyData& b = *box.driver.getCarbodyData();
    QCOMPARE(int(b.speedUnit), 0);
    QCOMPARE(int(b.vehicleSpeed), 10000);
    QCOMPARE(int(b.vehicleSpeed2), 20000);
    box.decode(frame(0x7D, {3, 0x10, 0x27, 0x20, 0x4E}));
    QCOMPARE(body.count(), 1);
    box.decode(frame(0x7D, {4, 0x56, 0x34, 0x12, 0, 0, 0, 0, 0, 0, 0, 0}));
    QCOMPARE(b.odometer, 0x123456);
    QCOMPARE(int(b.odometerUnit), 0);
    QCOMPARE(body.count(), 2);
    // Sub-frame 11 stores the voltage and tells nobody.
    box.decode(frame(0x7D, {11, 0x39, 0x30}));
    QCOMPARE(int(b.batteryVoltage), 123);
    QCOMPARE(body.count(), 2);

    box.decode(frame(0x7D, {5, 0xFC}));
    const CardoorData& d = *box.driver.getCardoorData();
    QCOMPARE((QList<int>{d.doorFrontLeft, d.doorFrontRight, d.doorRearLeft, d.doorRearRight, d.doorTrunk, d.doorHood}),
             (QList<int>{1, 1, 1, 1, 1, 1}));
    box.decode(frame(0x7D, {5, 0xFC}));
    QCOMPARE(doors.count(), 1);
}

void TestStatusFrame::bodyFlagsSignalOnlyWhenKept()
{
    Box box;
    QSignalSpy body(&box.driver, SIGNAL(carbodyDataChanged()));
    const CarbodyData& b = *box.driver.getCarbodyData();
    // From the defaults (255) the three flags change: stored, no signal.
    box.decode(frame(0x7D, {6, 0x36}));
    QCOMPARE((QList<int>{b.bodyFlag1, b.bodyFlag2, b.bodyFlag31, b.bodyWarning36}), (QList<int>{1, 1, 1, 0}));
    QCOMPARE(body.count(), 0);
    // The same three flags again: now the panel hears of it, whatever the warning did.
    box.decode(frame(0x7D, {6, 0x06}));
    QCOMPARE(int(b.bodyWarning36), 1);
    QCOMPARE(body.count(), 1);
    box.decode(frame(0x7D, {6, 0x07}));
    QCOMPARE(int(b.bodyFlag1), 0);
    QCOMPARE(body.count(), 1);
}

void TestStatusFrame::outdoorTemperature()
{
    Box box;
    QSignalSpy outdoor(&box.driver, SIGNAL(outdoorTemperatureChanged(QString,int)));
    QSignalSpy body(&box.driver, SIGNAL(carbodyDataChanged()));
    box.decode(frame(0x7D, {9, 0, 65, 0}));
    box.decode(frame(0x7D, {9, 0, 65, 0}));
    const QString text = QString::fromUtf8("25.0\xe2\x84\x83");
    QCOMPARE(box.driver.getAirData()->outdoorTemp, text);
    QCOMPARE(int(box.driver.getAirData()->outdoorTempUnit), 0);
    QCOMPARE(outdoor.count(), 2);   // every frame, changed or not
    QCOMPARE(outdoor.at(0), (QList<QVariant>{text, 0}));
    QCOMPARE(int(box.driver.getCarbodyData()->outdoorTempTenths), 250);
    QCOMPARE(body.count(), 0);
    const StatusVariant withBody = {false, false, false, 0, true};
    box.decode(frame(0x7D, {9, 0, 0, 0}), withBody, false);
    QCOMPARE(int(box.driver.getCarbodyData()->outdoorTempTenths), -400);
    QCOMPARE(body.count(), 1);
    QCOMPARE(outdoor.count(), 2);
}

void TestStatusFrame::signalsClosed()
{
    Box box;
    QList<QSignalSpy*> spies;
    for (const char* signal : {SIGNAL(carbodyDataChanged()), SIGNAL(cardoorDataChanged()),
                               SIGNAL(trajectoryDataChanged(int,int,bool)),
                               SIGNAL(outdoorTemperatureChanged(QString,int))})
        spies << new QSignalSpy(&box.driver, signal);
    for (const QByteArray& f : {frame(0x7D, {3, 1, 2, 3, 4}), frame(0x7D, {5, 0xFF}),
                                frame(0x7D, {6, 0x07}), frame(0x7D, {6, 0x07}), frame(0x7D, {8, 1, 2}),
                                frame(0x7D, {9, 1, 2, 3}), frame(0x7D, {10, 0, 0})})
        QVERIFY(box.decode(f, kPlain, false));
    for (QSignalSpy* spy : spies)
        QCOMPARE(spy->count(), 0);
    qDeleteAll(spies);
    QCOMPARE(int(box.driver.getCardoorData()->doorHood), 1);
}

void TestStatusFrame::functionFlagPositions()
{
    struct All { quint8 flag[37] = {}; };
    constexpr canbus::FieldSeq<All, quint8, 37> kAll = {{}, &All::flag};
    // One frame per flag, with only that flag's bit set: exactly that flag is 1.
    const int bits[][2] = {{3, 7}, {3, 6}, {3, 5}, {3, 4}, {3, 3}, {3, 2}, {3, 1}, {4, 7}, {5, 7}, {5, 6},
                           {6, 7}, {6, 6}, {6, 5}, {6, 4}, {7, 7}, {8, 7}, {8, 6}, {8, 5}, {8, 4}, {8, 3},
                           {8, 2}, {8, 1}, {8, 0}, {9, 7}, {9, 6}, {10, 7}, {11, 7}, {11, 6}, {11, 5},
                           {12, 7}, {12, 6}, {12, 5}, {12, 4}, {14, 7}, {14, 6}, {14, 5}, {14, 4}};
    for (int i = 0; i < 37; ++i) {
        QByteArray f = frame(0x7E, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        f[bits[i][0]] = char(1 << bits[i][1]);
        All all;
        canbus::decodeFunctionFrame(FrameReader(f), kAll, all);
        for (int j = 0; j < 37; ++j)
            QCOMPARE(int(all.flag[j]), j == i ? 1 : 0);
    }
    // Byte 13 and the low bits that carry nothing.
    All all;
    QByteArray f = frame(0x7E, {0x01, 0x7F, 0x3F, 0x0F, 0x7F, 0, 0x3F, 0x7F, 0x1F, 0x0F, 0xFF, 0x0F});
    canbus::decodeFunctionFrame(FrameReader(f), kAll, all);
    for (quint8 v : all.flag)
        QCOMPARE(int(v), 0);
}

void TestStatusFrame::version_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("text");
    QTest::addRow("2e7f03563100") << frame(0x7F, {'V', '1', 0}) << "V1";
    QTest::addRow("2e7f0256...") << frame(0x7F, {'V', '1', 0}).left(5) << "V1";
    QTest::addRow("utf8") << frame(0x7F, {0xC3, 0xA9}) << QString::fromUtf8("\xc3\xa9");
    QTest::addRow("bad utf8") << frame(0x7F, {0xFF, 'a'}) << QString::fromUtf8("\xef\xbf\xbd" "a");
    QTest::addRow("2e7f") << QByteArray("\x2e\x7f", 2) << "";
}

void TestStatusFrame::version()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, text);
    CanbusInterface driver;
    QSignalSpy version(&driver, SIGNAL(versionDataChanged(QString)));
    canbus::takeVersionFrame(driver, FrameReader(frame));
    QVERIFY(driver.isConnectedState());
    QCOMPARE(driver.getVersionData(), text);
    QCOMPARE(version.count(), 1);
}

QTEST_GUILESS_MAIN(TestStatusFrame)
#include "tst_statusframe.moc"
