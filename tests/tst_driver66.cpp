// Old Mazda (66): the untyped climate frames, the typed 0xFC frames, the amplifier frame,
// the keys and the frames the head unit sends.

#include <QtTest>

#include "canbus66/canbus66.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::bytes;
using testframes::hex;

namespace {
// An untyped climate frame: FD, four data bytes, their sum.
QByteArray climate(int b1, int b2, int b3, int b4)
{
    QByteArray f = bytes({0xFD, b1, b2, b3, b4, 0});
    canbus::writeChecksum(canbus::FrameFamily::StartFCFD, f);
    return f;
}
QByteArray typed(int type, std::initializer_list<int> data)
{
    QByteArray f = canbus::buildFrame(canbus::FrameFamily::StartFCFD, quint8(type), bytes(data));
    f[0] = char(0xFC);
    return f;
}
Data66Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data66Info>(); }
}

class TestDriver66 : public QObject
{
    Q_OBJECT

private slots:
    void climateFrame_data();
    void climateFrame();
    void climateRepeats();
    void typedFrames_data();
    void typedFrames();
    void keys_data();
    void keys();
    void amplifier_data();
    void amplifier();
    void framesOut();
};

void TestDriver66::climateFrame_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("fields");
    QTest::addRow("fd14000305") << climate(20, 0x00, 0x03, 0x05)
        << QStringList{"tempLeft=20.5", "tempRight=20.5", "tempLeftFahrenheit=0", "airWindSpeedRight=3", "airPower=1"};
    QTest::addRow("fd07000000") << climate(7, 0x00, 0x00, 0x00)
        << QStringList{"tempLeft=7", "tempRightFahrenheit=255", "tempLeftLow=0", "airOnOff=0"};
    QTest::addRow("fd00000000") << climate(0, 0x00, 0x00, 0x00) << QStringList{"tempLeftLow=1", "tempRight=0"};
    QTest::addRow("fdff000000") << climate(255, 0x00, 0x00, 0x00) << QStringList{"tempRightHigh=1", "tempLeftLow=0"};
    QTest::addRow("fdfe000000") << climate(254, 0x00, 0x00, 0x00) << QStringList{"tempLeft=--"};
    QTest::addRow("fd20001f0f") << climate(32, 0x00, 0x1F, 0x0F) << QStringList{"tempLeft=33.5", "airWindSpeedLeft=15"};
    QTest::addRow("fd64008213") << climate(100, 0x00, 0x82, 0x13)
        << QStringList{"outdoorTemp=0.3℃", "outdoorTempUnit=0", "outdoorTempValid=1", "airWindSpeedLeft=2"};
    QTest::addRow("fd5f008000") << climate(95, 0x00, 0x80, 0x00) << QStringList{"outdoorTemp=-5.0℃", "airOnOff=0"};
    QTest::addRow("fd14010000") << climate(20, 0x01, 0, 0) << QStringList{"airAC=1", "airAuto=0", "airOuterLoop=1"};
    QTest::addRow("fd14800000") << climate(20, 0x80, 0, 0) << QStringList{"airInnerLoop=1", "airOuterLoop=0", "airAC=0"};
    QTest::addRow("fd14240000") << climate(20, 0x24, 0, 0)
        << QStringList{"airAuto=1", "airDefrostRear=1", "airDefrostFront=0", "airWindFrontLeft=0"};
    QTest::addRow("fd14580000") << climate(20, 0x58, 0, 0)
        << QStringList{"airWindFrontRight=1", "airWindDownLeft=1", "airDefrostFront=1", "airDefrostRear=0"};
}

void TestDriver66::climateFrame()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, fields);
    DriverHarness h(66);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QCOMPARE(h.feed(frame), 0);
    compareFields(*h.driver()->getAirData(), fields);
    QCOMPARE(air.count(), 1);
}

void TestDriver66::climateRepeats()
{
    DriverHarness h(66);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.feed(climate(100, 0, 0x80, 0));   // 0.0, as the driver starts: no outdoor news
    h.feed(climate(100, 0, 0x80, 0));   // a repeat says nothing
    h.feed(climate(100, 0, 0x81, 0));   // the fan moved: the outdoor group runs again
    h.feed(climate(100, 0, 0x81, 2));
    QCOMPARE((QList<int>{air.count(), outdoor.count(), changed.count()}), (QList<int>{3, 1, 3}));
    QCOMPARE(outdoor.at(0), (QList<QVariant>{QStringLiteral("0.2℃"), 0}));
    QCOMPARE(info(h).basic.outdoorText, QStringLiteral("0.2℃"));
    h.feed(climate(20, 0, 0, 0));
    h.feed(climate(40, 0, 0, 0));   // no set point in 40: the text stays
    compareFields(*h.driver()->getAirData(), {"tempLeft=20.0", "tempRight=20.0"});
}

void TestDriver66::typedFrames_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("radar");
    QTest::addColumn<QVariantList>("steering");
    QTest::addRow("fc0a3201..ff3219") << typed(0x32, {1, 0, 0xFF, 0x32, 0x19, 0x18, 0})
        << QStringList{"radarLevels=10", "radarRearLeft=10", "radarRearLeftMid=2", "radarRearRightMid=1",
                       "radarRearRight=0", "radarOn=1"} << QVariantList{};
    QTest::addRow("fc0a320004..") << typed(0x32, {0, 4, 0, 3, 0x19, 0, 0})
        << QStringList{"radarLevels=4", "radarRearLeftMid=3", "radarRearRightMid=25", "radarFrontLeftMid=0"}
        << QVariantList{};
    QTest::addRow("fc0529401e") << typed(0x29, {0x40, 0x1E}) << QStringList{} << QVariantList{0, 5680, true};
    QTest::addRow("fc0529411e") << typed(0x29, {0x41, 0x1E}) << QStringList{} << QVariantList{-1, 5680, true};
    QTest::addRow("fc0529001e") << typed(0x29, {0x00, 0x1E}) << QStringList{} << QVariantList{64, 5680, true};
    QTest::addRow("fc03 short radar") << typed(0x32, {1, 0, 0xFF}) << QStringList{"radarRearLeft=0"} << QVariantList{};
}

void TestDriver66::typedFrames()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, radar);
    QFETCH(QVariantList, steering);
    DriverHarness h(66);
    QSignalSpy turned(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    QCOMPARE(h.feed(frame), 0);
    QVERIFY(h.driver()->isConnectedState());
    compareFields(*h.driver()->getRadarData(), radar);
    QCOMPARE(turned.isEmpty() ? QVariantList{} : turned.at(0), steering);
}

void TestDriver66::keys_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("call");
    QTest::addColumn<int>("code");
    QTest::addRow("fc0412 01") << 1 << false << 0x1400016;
    QTest::addRow("fc0412 11") << 17 << false << 0x1200027;
    QTest::addRow("fc0412 17") << 23 << false << 0x110002F;
    QTest::addRow("fc0412 17 in a call") << 23 << true << 0x1300058;
    QTest::addRow("fc0412 18 in a call") << 24 << true << 0x1300059;
    QTest::addRow("fc0412 31") << 49 << false << 0x1300059;
    QTest::addRow("fc0412 08 unknown") << 8 << false << 0;
}

void TestDriver66::keys()
{
    QFETCH(int, value);
    QFETCH(bool, call);
    QFETCH(int, code);
    DriverHarness h(66);
    h.driver()->setCallState(call);
    h.feed(typed(0x12, {value}));
    h.feed(typed(0x12, {0}));   // the release reaches the key that went down
    const int number = h.driver()->toKkmapKey(code);
    QCOMPARE(h.keyEvents(), (QList<int>{number, 1, number, 0}));
}

void TestDriver66::amplifier_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("fields");
    const auto amp = [](std::initializer_list<int> d) {
        return canbus::buildFrame(canbus::FrameFamily::StartFCFD, 0x31, bytes(d));
    };
    QTest::addRow("fd0931181916174003") << amp({24, 25, 22, 23, 64, 3})
        << QStringList{"ampValue1=16", "ampValue2=16", "ampValue3=12", "ampValue4=14", "ampValue5=63", "ampFlag=1"};
    QTest::addRow("fd0931080a0a0b0502") << amp({8, 10, 10, 11, 5, 2})
        << QStringList{"ampValue1=0", "ampValue2=2", "ampValue3=0", "ampValue4=1", "ampValue5=5", "ampFlag=0"};
    QTest::addRow("fd0932 other type")
        << canbus::buildFrame(canbus::FrameFamily::StartFCFD, 0x32, bytes({24, 25, 22, 23, 64, 3}))
        << QStringList{"ampValue1=0"};
    QTest::addRow("fc0411 basic flag") << typed(0x11, {2}) << QStringList{"basicFlag=1", "ampValue1=0"};
}

void TestDriver66::amplifier()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, fields);
    DriverHarness h(66);
    h.driver()->checkProtocolData(frame);
    compareFields(info(h), fields);
}

void TestDriver66::framesOut()
{
    DriverHarness h(66);
    h.driver()->checkProtocolData(canbus::buildFrame(canbus::FrameFamily::StartFCFD, 0x31, bytes({20, 9, 15, 12, 7, 1})));
    int interval = 0;
    QByteArray out = "x";
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QVERIFY(out.isEmpty());
    // The sum covers bytes 1 to 3 and lands where the value stood.
    QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{hex("fd0584018a"), hex("fd0584028b"), hex("fd0584048d"),
                                                    hex("fd0584058e"), hex("fd05840a93"), hex("fd05840b94")}));
    h.clearSent();
    QMetaObject::invokeMethod(h.driver(), "setTcanBussend", Q_ARG(int, 10), Q_ARG(int, 20), Q_ARG(int, 800),
                              Q_ARG(int, 480), Q_ARG(int, 0));
    QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{hex("fd04058089"), hex("fd04050009")}));
    h.clearSent();
    h.feed(typed(0x11, {0}));
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QByteArray bye;
    QVERIFY(!h.driver()->needSendDisconnect(bye));
    QVERIFY(h.sentFrames().isEmpty());
}

QTEST_GUILESS_MAIN(TestDriver66)
#include "tst_driver66.moc"
