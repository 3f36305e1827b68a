// Dongfeng S560 (73) and the Scenery boxes that take its frames (74 to 76): knob and key
// frames, doors with an ungated body signal, a climate frame applied byte by byte,
// radar nibbles, and gestures out.

#include <QSignalSpy>
#include <QtTest>

#include "canbus73/canbus73.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using testframes::hex;

class TestDriver73 : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void doorsAndBody();
    void climate_data();
    void climate();
    void radar();
    void touch_data();
    void touch();
    void linkAndSiblings();
};

void TestDriver73::keys_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("code");
    QTest::addColumn<QList<int>>("states");
    QTest::addRow("knob 241, 3 steps") << frame(0x21, {241, 3}) << 0x1100024 << QList<int>{1, 0, 1, 0, 1, 0};
    QTest::addRow("key 135 held") << frame(0x21, {135, 2}) << 0x110002F << QList<int>{1};
    QTest::addRow("key 135 state 3") << frame(0x21, {135, 3}) << 0x110002F << QList<int>{0};
}

void TestDriver73::keys()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, code);
    QFETCH(QList<int>, states);
    DriverHarness h(73);
    h.feed(frame);
    QList<int> expected;
    for (int s : states)
        expected << h.driver()->toKkmapKey(code) << s;
    QCOMPARE(h.keyEvents(), expected);
}

void TestDriver73::doorsAndBody()
{
    DriverHarness h(73);
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.driver()->setPowerOffState();
    h.feed(frame(0x22, {0x88, 0xA0}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorFrontRight=0", "doorTrunk=1"});
    compareFields(*h.driver()->getCarbodyData(),
                  {"bodyWarning36=1", "bodyFlag1=0", "bodyFlag2=1", "bodyFlag31=1"});
    h.driver()->setPowerOnState();
    h.feed(frame(0x22, {0x88, 0x48}));
    compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=0", "bodyFlag1=1", "bodyFlag2=0"});
    QCOMPARE(doors.count(), 0);   // gated, then unchanged
    QCOMPARE(body.count(), 2);    // every frame
    QCOMPARE(changed.count(), 0);
}

void TestDriver73::climate_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("expected");
    QTest::addRow("on, A/C, feet and screen, fan clamped, high")
        << hex("c0040910")
        << QStringList{"airPower=1", "airAC=1", "airInnerLoop=0", "airOuterLoop=1", "airWindFrontLeft=0",
                       "airWindDownRight=1", "airDefrostFront=1", "airDefrostRear=0", "airWindSpeedLeft=7",
                       "tempLeftHigh=1", "tempRight=16", "tempLeftFahrenheit=255"};
    QTest::addRow("loop, rear screen, low") << hex("2006020000")
        << QStringList{"airInnerLoop=1", "airDefrostRear=1", "airWindSpeedLeft=2", "tempLeftLow=1", "tempLeft=0"};
    QTest::addRow("no set point, unknown direction") << hex("000700ff")
        << QStringList{"tempLeft=", "tempRight=", "airWindFrontLeft=0"};
}

void TestDriver73::climate()
{
    QFETCH(QByteArray, data);
    QFETCH(QStringList, expected);
    DriverHarness h(73);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(frame(0x23, data));
    h.feed(frame(0x23, data));
    compareFields(*h.driver()->getAirData(), expected);
    QCOMPARE(air.count(), 1);
}

void TestDriver73::radar()
{
    DriverHarness h(73);
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(frame(0x24, {0xF1, 0x53, 0x60, 0}));
    compareFields(*h.driver()->getRadarData(),
                  {"radarLevels=8", "radarFrontLeft=10", "radarFrontLeftMid=10", "radarFrontRight=0",
                   "radarRearLeft=3", "radarRearRight=2", "radarRearLeftMid=4", "radarRearRightMid=4"});
    QCOMPARE(radar.count(), 1);
}

void TestDriver73::touch_data()
{
    QTest::addColumn<QList<int>>("move");   // press x, y, release x, y on 900 x 600
    QTest::addColumn<QByteArray>("sent");
    QTest::addRow("tap top middle") << QList<int>{450, 100, 460, 110} << frame(0x84, {3});
    QTest::addRow("tap right middle") << QList<int>{800, 300, 800, 300} << frame(0x84, {6});
    QTest::addRow("tap centre") << QList<int>{450, 300, 450, 300} << QByteArray();
    QTest::addRow("tap corner") << QList<int>{100, 100, 100, 100} << QByteArray();
    QTest::addRow("swipe down") << QList<int>{450, 100, 460, 221} << frame(0x84, {1});
    QTest::addRow("swipe up") << QList<int>{450, 500, 450, 379} << frame(0x84, {2});
    QTest::addRow("swipe sideways") << QList<int>{100, 300, 400, 300} << QByteArray();
}

void TestDriver73::touch()
{
    QFETCH(QList<int>, move);
    QFETCH(QByteArray, sent);
    DriverHarness h(73);
    auto* d = qobject_cast<Canbus73Obj*>(h.driver());
    d->setTcanBussend(move[0], move[1], 900, 600, 0);
    d->setTcanBussend(move[2], move[3], 900, 600, 2);
    QCOMPARE(h.sentFrames(), sent.isEmpty() ? QList<QByteArray>{} : QList<QByteArray>{sent});
}

void TestDriver73::linkAndSiblings()
{
    DriverHarness h(73);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QTRY_COMPARE(h.sentFrames(), QList<QByteArray>{frame(0x90, {0x23})});
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, hex("2e8101007d"));
    for (int id : {74, 75, 76}) {
        DriverHarness sibling(id);
        QCOMPARE(sibling.driver()->canbusId(), id);
        sibling.feed(frame(0x24, {0xF0, 0, 0, 0}));
        QCOMPARE(int(sibling.driver()->getRadarData()->radarFrontLeft), 10);
    }
}

QTEST_GUILESS_MAIN(TestDriver73)
#include "tst_driver73.moc"
