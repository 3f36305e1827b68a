// TATA (120): 5A A5 frames in through the module's check and walk; records, signals,
// keys and the button frames out.

#include <QtTest>

#include "canbus120/canbus120.h"
#include "driverharness.h"
#include "recordcheck.h"

namespace {

using Bytes = QList<QPair<int, int>>;   // (frame byte, value); the others are 0
using Frames = QList<QByteArray>;

// A whole frame of `size` bytes, checksum included.
QByteArray frame120(int type, const Bytes& set, int size)
{
    QByteArray data(size - 5, '\0');
    for (const auto& b : set) {
        if (b.first - 4 < data.size())
            data[b.first - 4] = char(b.second);
    }
    return canbus::buildFrame(canbus::FrameFamily::Start5AA5, quint8(type), data);
}
QByteArray airFrame(const Bytes& set) { return frame120(0x31, set, 17); }

// "field=value" of whichever shared record has the field, the climate first.
QStringList fieldsOf(const CanbusInterface* d, const QStringList& expected)
{
    QStringList out;
    for (const QString& item : expected) {
        const QStringList all = fieldValues(*d->getAirData(), {item}) + fieldValues(*d->getRadarData(), {item})
                                + fieldValues(*d->getCardoorData(), {item}) + fieldValues(*d->getCarbodyData(), {item});
        out << all.filter(QStringLiteral("=")).value(0, all.first());
    }
    return out;
}

} // namespace

class TestDriver120 : public QObject
{
    Q_OBJECT

private slots:
    void startAndVersion();
    void records_data();
    void records();
    void changeSignals();
    void keys_data();
    void keys();
    void commands_data();
    void commands();
    void shortFrames_data();
    void shortFrames();
};

void TestDriver120::startAndVersion()
{
    DriverHarness h(120);
    int interval = 0;
    QByteArray out;
    QVERIFY(!h.driver()->needSendConnect(interval, out) && !h.driver()->needSendDisconnect(out));
    QVERIFY(out.isEmpty() && h.driver()->isConnectedState());
    QCOMPARE(fieldsOf(h.driver(), {"airRearLock=0", "airOuterLoop=255"}), (QStringList{"airRearLock=0", "airOuterLoop=255"}));
    // The text starts at the type byte and is cut at its NUL.
    h.feed(canbus::buildFrame(canbus::FrameFamily::Start5AA5, 0xF0, QByteArray("T1.2\0\0\0\0\0\0\0\0\0\0\0\0\0", 17)));
    QCOMPARE(h.driver()->getVersionData(), QString::fromUtf8("\xF0T1.2"));
    QCOMPARE(h.replies, Frames{QByteArray(1, '\xFF')});
    h.driver()->getRadarData()->radarRearLeft = 3;
    h.driver()->setInReverse(false);   // the radar stays
    QCOMPARE(h.driver()->getRadarData()->radarRearLeft, quint8(3));
}

void TestDriver120::records_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("fields");
    // Byte 8 of 0 lights the two states of their own; byte 15 of 0 is no reading.
    QTest::addRow("31: b4.6 on, b4.3 auto, b5.6 A/C") << airFrame({{4, 0x48}, {5, 0x40}})
        << QStringList{"airOnOff=1", "airAuto=1", "airAC=1", "airPower=1", "airOuterLoop=1", "airState6=1", "airState7=1",
                       "outdoorTempValid=0", "outdoorTemp=0"};
    QTest::addRow("31: loop 1 inner") << airFrame({{5, 0x08}}) << QStringList{"airInnerLoop=1", "airOuterLoop=0", "airAutoLoop=0"};
    QTest::addRow("31: b6.4 front defrost") << airFrame({{6, 0x10}}) << QStringList{"airDefrostFront=1", "airDefrostRear=0"};
    QTest::addRow("31: direction 5") << airFrame({{8, 5}}) << QStringList{"airWindFrontLeft=1", "airWindDownRight=1", "airWindUpLeft=0", "airState7=0"};
    QTest::addRow("31: direction 12") << airFrame({{8, 12}}) << QStringList{"airWindUpRight=1", "airWindDownLeft=1", "airWindFrontRight=0"};
    QTest::addRow("31: fans b9 left, b7 right") << airFrame({{9, 3}, {7, 5}}) << QStringList{"airWindSpeedLeft=3", "airWindSpeedRight=5"};
    QTest::addRow("31: b10 45 half degrees") << airFrame({{10, 45}}) << QStringList{"tempLeft=22.5", "tempRight=22.5", "tempLeftLow=0"};
    QTest::addRow("31: set point 254") << airFrame({{10, 254}}) << QStringList{"tempLeftLow=1", "tempRightLow=1", "tempRightHigh=0", "tempLeft="};
    QTest::addRow("31: outdoor 60 frost") << airFrame({{15, 60}}) << QStringList{"outdoorTempValid=1", "outdoorTemp=0"};
    QTest::addRow("31: outdoor 131 cut") << airFrame({{15, 131}}) << QStringList{"outdoorTemp=25", "outdoorTempUnit=0"};
    QTest::addRow("11: b4.1, b4.0, b9 kept; b4.3, b4.2 not") << frame120(0x11, {{4, 0x0F}, {9, 7}}, 15)
                                                           << QStringList{"bodyFlag1=255", "bodyFlag2=255", "bodyFlag31=1", "bodyByte32=1", "bodyFlag0=7"};
    QTest::addRow("12: b6 from bit 7") << frame120(0x12, {{6, 0x8C}}, 15) << QStringList{"doorFrontLeft=1", "doorFrontRight=0", "doorTrunk=1", "doorHood=0"};
    QTest::addRow("13: b6..7 255 is 0") << frame120(0x13, {{7, 255}}, 15) << QStringList{"bodyValue8=0"};
    QTest::addRow("13: b6..7 big-endian") << frame120(0x13, {{6, 1}, {7, 2}}, 15) << QStringList{"bodyValue8=258"};
    QTest::addRow("32: b8..9 speed, engine not kept") << frame120(0x32, {{6, 3}, {7, 0xE8}, {8, 1}, {9, 2}}, 19) << QStringList{"vehicleSpeed=258", "engineSpeed=0"};
    // Rear only; the second sensor tells bars (up to 6) from distances (7 up, 255 none).
    QTest::addRow("41: b4..7 rear") << frame120(0x41, {{4, 1}, {5, 2}, {6, 3}, {7, 4}}, 17)
                                    << QStringList{"radarRearLeft=1", "radarRearLeftMid=2", "radarRearRightMid=3", "radarRearRight=4", "radarOn=1", "radarLevels=6"};
    QTest::addRow("41: middle 0, others 255") << frame120(0x41, {{4, 255}, {6, 255}, {7, 255}}, 17) << QStringList{"radarOn=1"};
    QTest::addRow("41: middle 6, others 7") << frame120(0x41, {{4, 7}, {5, 6}, {6, 7}, {7, 7}}, 17) << QStringList{"radarOn=1"};
    QTest::addRow("41: all 7") << frame120(0x41, {{4, 7}, {5, 7}, {6, 7}, {7, 7}}, 17) << QStringList{"radarOn=0"};
}

void TestDriver120::records()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, fields);
    DriverHarness h(120);
    h.driver()->getRadarData()->radarFrontLeftMid = 200;   // the front plays no part
    h.feed(frame);
    QCOMPARE(fieldsOf(h.driver(), fields), fields);
}

void TestDriver120::changeSignals()
{
    DriverHarness h(120);
    h.driver()->setPowerOffState();   // gates the steering alone
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    const QByteArray body = frame120(0x11, {{4, 0x0B}, {9, 7}, {10, 0x01}, {11, 0x02}}, 15);
    const QByteArray speeds = frame120(0x32, {{6, 0x03}, {7, 0xE8}}, 19);
    for (const QByteArray& f : {airFrame({{10, 44}, {15, 130}}), airFrame({{10, 44}, {15, 130}}),
                                airFrame({{10, 254}, {15, 130}}),   // the text goes: news
                                airFrame({{10, 255}, {15, 131}}),   // high/low and the outdoor fraction: none
                                airFrame({{10, 255}, {15, 131}, {8, 3}}), body, speeds, speeds})
        h.feed(f);
    h.driver()->setPowerOnState();
    for (const QByteArray& f : {body, frame120(0x11, {{4, 0x0B}, {9, 7}, {10, 0xFF}, {11, 0xFE}}, 15)})
        h.feed(f);
    // Flag 1 and the engine speed are compared but never kept: every such frame is news.
    QCOMPARE((QList<int>{air.count(), outdoor.count(), changed.count()}), (QList<int>{3, 1, 5}));
    QCOMPARE(outdoor.at(0), (QList<QVariant>{"25", 0}));
    QCOMPARE(steering.count(), 2);
    QCOMPARE(steering.at(0) + steering.at(1), (QList<QVariant>{258, 540, true, -1, 540, true}));
}

void TestDriver120::keys_data()
{
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<bool>("call");
    QTest::addColumn<QList<int>>("codes");
    auto wheel = [](int key, int state) { return frame120(0x11, {{6, key}, {7, state}}, 15); };
    auto panel = [](int key, int state) { return frame120(0x21, {{4, key}, {5, state}}, 7); };
    auto knob = [](int which, int counter) { return frame120(0x22, {{4, which}, {5, counter}}, 7); };
    QTest::addRow("wheel 9, b7 1") << Frames{wheel(9, 1), wheel(9, 0)} << false << QList<int>{0x110002E};
    QTest::addRow("wheel 4 in a call") << Frames{wheel(4, 1)} << true << QList<int>{0x1300058};
    QTest::addRow("panel 43, b5 1") << Frames{panel(43, 1), panel(43, 2)} << false << QList<int>{0x110002C};
    QTest::addRow("panel 40 idle") << Frames{panel(40, 1)} << false << QList<int>{0x1300059};
    QTest::addRow("volume 250 to 3") << Frames{knob(1, 250), knob(1, 3)} << false << QList<int>{0x1100024, 0x1100025};
    QTest::addRow("tune 10 to 8") << Frames{knob(2, 10), knob(2, 8)} << false << QList<int>{0x110002E, 0x110002F, 0x110002F};
    QTest::addRow("knobs count apart") << Frames{knob(2, 4), knob(1, 1), knob(3, 9)} << false
                                       << QList<int>{0x110002E, 0x110002E, 0x110002E, 0x110002E, 0x1100025};
}

void TestDriver120::keys()
{
    QFETCH(Frames, frames);
    QFETCH(bool, call);
    QFETCH(QList<int>, codes);
    DriverHarness h(120);
    h.driver()->setCallState(call);
    for (const QByteArray& f : frames)
        h.feed(f);
    QList<int> strokes;
    for (int code : codes)
        strokes << h.driver()->toKkmapKey(code) << 1 << h.driver()->toKkmapKey(code) << 0;
    QCOMPARE(h.keyEvents(), strokes);
}

void TestDriver120::commands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<Frames>("frames");   // the press, then the release
    auto hex = [](const char* press, const char* release) { return Frames{QByteArray::fromHex(press), QByteArray::fromHex(release)}; };
    QTest::addRow("AirAC") << "AirAC" << "" << hex("5aa5023d020141", "5aa5023d020040");
    QTest::addRow("AirWindSpeedAddSubFront 0") << "AirWindSpeedAddSubFront" << "0" << hex("5aa5023d0c014b", "5aa5023d0c004a");
    QTest::addRow("AirTempFrontRight add") << "AirTempFrontRight" << "add" << hex("5aa5023d0d014c", "5aa5023d0d004b");
    QTest::addRow("AirWindUpFront") << "AirWindUpFront" << "1" << Frames{};
}

void TestDriver120::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(Frames, frames);
    DriverHarness h(120);
    h.driver()->setCanbusState(key, value);
    QTest::qWait(300);   // the release is half a second behind
    QCOMPARE(h.sentFrames(), frames.mid(0, 1));
    QTRY_COMPARE(h.sentFrames(), frames);
}

void TestDriver120::shortFrames_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("result");
    // Each would change something at its minimum (byte 5 of a 6-byte key frame is its checksum).
    for (const auto& r : QList<QPair<int, int>>{{0x11, 15}, {0x12, 15}, {0x13, 15}, {0x21, 7}, {0x22, 7},
                                                {0x31, 17}, {0x32, 19}, {0x41, 17}, {0xF0, 22}})
        QTest::addRow("5aa5 %02x below %d", r.first, r.second)
            << frame120(r.first, {{4, 2}, {5, 1}, {6, 0x80}, {9, 9}}, r.second - 1) << 1;
    QTest::addRow("5aa5 3d known") << frame120(0x3D, {{4, 1}}, 20) << 1;
    QTest::addRow("5aa5 15 unknown") << frame120(0x15, {{4, 1}}, 20) << 0;
}

void TestDriver120::shortFrames()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, result);
    DriverHarness h(120);
    h.watchActivity();
    QCOMPARE(h.driver()->checkProtocolData(frame), result);
    QCOMPARE(h.activity(), 0);
}

QTEST_GUILESS_MAIN(TestDriver120)
#include "tst_driver120.moc"
