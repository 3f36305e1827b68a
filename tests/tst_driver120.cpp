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

QList<int> strokes(const DriverHarness& h, const QList<int>& codes)
{
    QList<int> out;
    for (int code : codes)
        out << h.driver()->toKkmapKey(code) << 1 << h.driver()->toKkmapKey(code) << 0;
    return out;
}

} // namespace

class TestDriver120 : public QObject
{
    Q_OBJECT

private slots:
    void startAndVersion();
    void climate_data();
    void climate();
    void climateSignals();
    void bodySteeringAndSpeeds();
    void keys_data();
    void keys();
    void radar_data();
    void radar();
    void commands_data();
    void commands();
    void shortFrames_data();
    void shortFrames();
};

void TestDriver120::startAndVersion()
{
    DriverHarness h(120);
    QVERIFY(h.driver()->isConnectedState());
    int interval = 0;
    QByteArray out;
    QVERIFY(!h.driver()->needSendConnect(interval, out) && !h.driver()->needSendDisconnect(out));
    QVERIFY(out.isEmpty() && h.driver()->isConnectedState());
    compareFields(*h.driver()->getAirData(), {"airPower=1", "airRearLock=0", "airOuterLoop=255"});
    QCOMPARE(h.driver()->getDataInfo().value<Data120Info>().car.carText[6], QStringLiteral("---"));
    // The text starts at the type byte and is cut at its NUL.
    QByteArray data(17, '\0');
    data.replace(0, 4, "T1.2");
    h.feed(canbus::buildFrame(canbus::FrameFamily::Start5AA5, 0xF0, data));
    QCOMPARE(h.driver()->getVersionData(), QString::fromUtf8("\xF0T1.2"));
    QCOMPARE(h.replies, Frames{QByteArray(1, '\xFF')});
    h.driver()->getRadarData()->radarRearLeft = 3;
    h.driver()->setInReverse(false);   // the radar stays
    QCOMPARE(h.driver()->getRadarData()->radarRearLeft, quint8(3));
}

void TestDriver120::climate_data()
{
    QTest::addColumn<Bytes>("set");
    QTest::addColumn<QStringList>("fields");
    QTest::addRow("b4.6 on, b4.3 auto") << Bytes{{4, 0x48}} << QStringList{"airOnOff=1", "airAuto=1", "airAC=0", "airPower=1"};
    QTest::addRow("b5.6 A/C") << Bytes{{5, 0x40}} << QStringList{"airAC=1", "airOnOff=0", "airOuterLoop=1"};
    QTest::addRow("loop 1 inner") << Bytes{{5, 0x08}} << QStringList{"airInnerLoop=1", "airOuterLoop=0", "airAutoLoop=0"};
    QTest::addRow("loop 3 none") << Bytes{{5, 0x18}} << QStringList{"airInnerLoop=0", "airOuterLoop=0", "airAutoLoop=0"};
    QTest::addRow("b6.4 front defrost") << Bytes{{6, 0x10}} << QStringList{"airDefrostFront=1", "airDefrostRear=0"};
    QTest::addRow("direction 5") << Bytes{{8, 5}} << QStringList{"airWindFrontLeft=1", "airWindDownRight=1", "airWindUpLeft=0", "airState7=0"};
    QTest::addRow("direction 12") << Bytes{{8, 12}} << QStringList{"airWindUpRight=1", "airWindDownLeft=1", "airWindFrontRight=0"};
    QTest::addRow("direction 0") << Bytes{} << QStringList{"airState6=1", "airState7=1", "airWindDownLeft=0"};
    QTest::addRow("fans b9 left, b7 right") << Bytes{{9, 3}, {7, 5}} << QStringList{"airWindSpeedLeft=3", "airWindSpeedRight=5"};
    QTest::addRow("b10 45 half degrees") << Bytes{{10, 45}} << QStringList{"tempLeft=22.5", "tempRight=22.5", "tempLeftLow=0"};
    QTest::addRow("set point 254") << Bytes{{10, 254}} << QStringList{"tempLeftLow=1", "tempRightLow=1", "tempRightHigh=0", "tempLeft="};
    QTest::addRow("set point 255") << Bytes{{10, 255}} << QStringList{"tempLeftHigh=1", "tempRightHigh=1", "tempLeftLow=0"};
    QTest::addRow("outdoor 0") << Bytes{} << QStringList{"outdoorTempValid=0", "outdoorTemp=0"};
    QTest::addRow("outdoor 60 frost") << Bytes{{15, 60}} << QStringList{"outdoorTempValid=1", "outdoorTemp=0"};
    QTest::addRow("outdoor 131 cut") << Bytes{{15, 131}} << QStringList{"outdoorTemp=25", "outdoorTempUnit=0"};
}

void TestDriver120::climate()
{
    QFETCH(Bytes, set);
    QFETCH(QStringList, fields);
    DriverHarness h(120);
    h.driver()->setPowerOffState();   // the panel hears of it all the same
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(airFrame(set));
    compareFields(*h.driver()->getAirData(), fields);
    QCOMPARE(air.count(), 1);
}

void TestDriver120::climateSignals()
{
    DriverHarness h(120);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    const Frames frames{airFrame({{10, 44}, {15, 130}}), airFrame({{10, 44}, {15, 130}}),
                        airFrame({{10, 254}, {15, 130}}),   // the text goes: news
                        airFrame({{10, 255}, {15, 131}}),   // high/low and outdoor alone: none
                        airFrame({{10, 255}, {15, 131}, {8, 3}})};   // down, right side compared
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(air.count(), 3);
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(outdoor.at(0), (QList<QVariant>{"25", 0}));
}

void TestDriver120::bodySteeringAndSpeeds()
{
    DriverHarness h(120);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame120(0x13, {{6, 0}, {7, 255}}, 15));   // 255 counts as 0: no news
    h.feed(frame120(0x13, {{6, 1}, {7, 2}}, 15));
    QCOMPARE(h.driver()->getCarbodyData()->bodyValue8, 258);
    const QByteArray body = frame120(0x11, {{4, 0x0B}, {9, 7}, {10, 0x01}, {11, 0x02}}, 15);
    h.feed(body);
    h.feed(body);   // flag 1 is compared and never kept: news again
    compareFields(*h.driver()->getCarbodyData(),
                  {"bodyFlag1=255", "bodyFlag2=255", "bodyFlag31=1", "bodyByte32=1", "bodyFlag0=7", "bodyValue8=0"});
    h.feed(frame120(0x11, {{10, 0xFF}, {11, 0xFE}}, 15));   // 65534 - 65535
    h.driver()->setPowerOffState();
    h.feed(body);
    QCOMPARE(steering.count(), 3);
    QCOMPARE(steering.at(0) + steering.at(2), (QList<QVariant>{258, 540, true, -1, 540, true}));
    h.feed(frame120(0x32, {{6, 0x03}, {7, 0xE8}, {8, 0}, {9, 50}}, 19));
    h.feed(frame120(0x32, {{6, 0x03}, {7, 0xE8}, {8, 0}, {9, 50}}, 19));   // the engine is not kept
    h.feed(frame120(0x32, {{6, 0}, {7, 255}, {8, 0}, {9, 50}}, 19));
    QCOMPARE(h.driver()->getCarbodyData()->vehicleSpeed, quint16(50));
    QCOMPARE(changed.count(), 7);
    h.feed(frame120(0x12, {{6, 0x8C}}, 15));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorFrontRight=0", "doorTrunk=1", "doorHood=0"});
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
    QTest::addRow("wheel 4 idle") << Frames{wheel(4, 1)} << false << QList<int>{0x1300055};
    QTest::addRow("wheel 4 in a call") << Frames{wheel(4, 1)} << true << QList<int>{0x1300058};
    QTest::addRow("panel 43, b5 1") << Frames{panel(43, 1), panel(43, 2)} << false << QList<int>{0x110002C};
    QTest::addRow("panel 40 idle") << Frames{panel(40, 1)} << false << QList<int>{0x1300059};
    QTest::addRow("volume 0 to 3") << Frames{knob(1, 3)} << false << QList<int>{0x1100025, 0x1100025, 0x1100025};
    QTest::addRow("volume 250 to 3") << Frames{knob(1, 250), knob(1, 3)} << false << QList<int>{0x1100024, 0x1100025};
    QTest::addRow("tune 10 to 8") << Frames{knob(2, 10), knob(2, 8)} << false
                                  << QList<int>{0x110002E, 0x110002F, 0x110002F};
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
    QCOMPARE(h.keyEvents(), strokes(h, codes));
}

void TestDriver120::radar_data()
{
    QTest::addColumn<Bytes>("sensors");   // bytes 4..7: rear left, left middle, right middle, right
    QTest::addColumn<QStringList>("fields");
    QTest::addRow("all clear") << Bytes{} << QStringList{"radarOn=0", "radarLevels=6"};
    QTest::addRow("b4..7 in order") << Bytes{{4, 1}, {5, 2}, {6, 3}, {7, 4}}
                                    << QStringList{"radarRearLeft=1", "radarRearLeftMid=2", "radarRearRightMid=3", "radarRearRight=4", "radarOn=1"};
    QTest::addRow("middle 0, right 3") << Bytes{{7, 3}} << QStringList{"radarOn=1"};
    QTest::addRow("middle 6, others 7") << Bytes{{4, 7}, {5, 6}, {6, 7}, {7, 7}} << QStringList{"radarOn=1"};
    QTest::addRow("all 7") << Bytes{{4, 7}, {5, 7}, {6, 7}, {7, 7}} << QStringList{"radarOn=0"};
    QTest::addRow("middle 0, others 255") << Bytes{{4, 255}, {6, 255}, {7, 255}} << QStringList{"radarOn=1"};
}

void TestDriver120::radar()
{
    QFETCH(Bytes, sensors);
    QFETCH(QStringList, fields);
    DriverHarness h(120);
    h.driver()->getRadarData()->radarFrontLeftMid = 200;   // the front plays no part
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(frame120(0x41, sensors, 17));
    compareFields(*h.driver()->getRadarData(), fields);
    QCOMPARE(radar.count(), 1);
}

void TestDriver120::commands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("press");
    QTest::addRow("AirAC") << "AirAC" << "" << QByteArray::fromHex("5aa5023d020141");
    QTest::addRow("AirWindSpeedAddSubFront 1") << "AirWindSpeedAddSubFront" << "1" << QByteArray::fromHex("5aa5023d0b014a");
    QTest::addRow("AirWindSpeedAddSubFront 0") << "AirWindSpeedAddSubFront" << "0" << QByteArray::fromHex("5aa5023d0c014b");
    QTest::addRow("AirTempFrontRight add") << "AirTempFrontRight" << "add" << QByteArray::fromHex("5aa5023d0d014c");
    QTest::addRow("AirTempFrontLeft sub") << "AirTempFrontLeft" << "sub" << QByteArray::fromHex("5aa5023d0e014d");
    QTest::addRow("AirWindUpFront") << "AirWindUpFront" << "1" << QByteArray();
}

void TestDriver120::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, press);
    DriverHarness h(120);
    h.driver()->setCanbusState(key, value);
    QTest::qWait(300);   // the release is half a second behind
    QCOMPARE(h.sentFrames(), press.isEmpty() ? Frames{} : Frames{press});
    if (press.isEmpty())
        return;
    QByteArray release = press;
    release[5] = 0;
    release[6] = char(press[6] - 1);
    QTRY_COMPARE(h.sentFrames(), (Frames{press, release}));
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
