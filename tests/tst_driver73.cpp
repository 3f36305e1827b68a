// Dongfeng S560 (73) and the Scenery boxes that take its frames (74 to 76).

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
    void keysDoorsAndRadar()
    {
        DriverHarness h(73);
        h.feed(frame(0x21, {241, 3}));   // a knob: byte 4 counts its steps
        h.feed(frame(0x21, {135, 2}));
        h.feed(frame(0x21, {135, 3}));
        const int knob = h.driver()->toKkmapKey(0x1100024), key = h.driver()->toKkmapKey(0x110002F);
        QCOMPARE(h.keyEvents(), (QList<int>{knob, 1, knob, 0, knob, 1, knob, 0, knob, 1, knob, 0, key, 1, key, 0}));
        h.watchActivity();
        h.driver()->setPowerOffState();
        h.feed(frame(0x22, {0x88, 0xA0}));   // the doors are gated, the body is not
        compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorFrontRight=0", "doorTrunk=1"});
        compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=1", "bodyFlag2=1", "bodyFlag31=1"});
        h.driver()->setPowerOnState();
        h.feed(frame(0x22, {0x88, 0x48}));
        compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=0", "bodyFlag1=1", "bodyFlag2=0"});
        QCOMPARE(h.activity(), 2);   // two body signals, every frame, nothing else
        // Nibbles count in thirds of the bars: 15 is 10, 1 is 0.
        h.feed(frame(0x24, {0xF1, 0x53, 0x60, 0}));
        compareFields(*h.driver()->getRadarData(), {"radarLevels=8", "radarFrontLeft=10", "radarFrontRight=0",
                                                    "radarRearLeft=3", "radarRearRight=2", "radarRearLeftMid=4"});
    }

    void climate_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QStringList>("expected");
        QTest::addRow("c0040910") << hex("c0040910")
            << QStringList{"airPower=1", "airAC=1", "airOuterLoop=1", "airWindDownRight=1", "airDefrostFront=1",
                           "airWindSpeedLeft=7", "tempLeftHigh=1", "tempRight=16", "tempLeftFahrenheit=255"};
        QTest::addRow("2006020000") << hex("2006020000")
            << QStringList{"airInnerLoop=1", "airDefrostRear=1", "airWindSpeedLeft=2", "tempLeftLow=1", "tempLeft=0"};
        QTest::addRow("000700ff") << hex("000700ff") << QStringList{"tempLeft=", "tempRight=", "airWindFrontLeft=0"};
    }

    void climate()
    {
        QFETCH(QByteArray, data);
        QFETCH(QStringList, expected);
        DriverHarness h(73);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        h.feed(frame(0x23, data));
        h.feed(frame(0x23, data));   // the same bytes again: no signal
        compareFields(*h.driver()->getAirData(), expected);
        QCOMPARE(air.count(), 1);
    }

    void touchAndLink()
    {
        DriverHarness h(73);
        auto* d = qobject_cast<Canbus73Obj*>(h.driver());
        // On 900 x 600: a tap at the top middle, one at the centre (nothing), a swipe down.
        for (const QList<int>& m : QList<QList<int>>{{450, 100, 460, 110}, {450, 300, 450, 300}, {450, 100, 460, 221}}) {
            d->setTcanBussend(m[0], m[1], 900, 600, 0);
            d->setTcanBussend(m[2], m[3], 900, 600, 2);
        }
        QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0x84, {3}), frame(0x84, {1})}));
        h.clearSent();
        int interval = 0;
        QByteArray out;
        h.driver()->needSendConnect(interval, out);
        QTRY_COMPARE(h.sentFrames(), QList<QByteArray>{frame(0x90, {0x23})});
        QVERIFY(h.driver()->needSendDisconnect(out));   // whatever the state
        QCOMPARE(out, hex("2e8101007d"));
        for (int id : {74, 75, 76}) {   // each box of the make walks 73's frames
            DriverHarness sibling(id);
            sibling.feed(frame(0x24, {0xF0, 0, 0, 0}));
            QCOMPARE(int(sibling.driver()->getRadarData()->radarFrontLeft), 10);
        }
    }
};

QTEST_GUILESS_MAIN(TestDriver73)
#include "tst_driver73.moc"
