// Audi Q3 (41) and the Audi box that takes its frames (40).

#include <QtTest>

#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;

class TestDriver41 : public QObject
{
    Q_OBJECT

private slots:
    void frames();
    void versionAndLinkFrames();
};

void TestDriver41::frames()
{
    DriverHarness h(41);
    h.watchActivity();
    // D0 from bit 7: front right, front left, rear right, rear left, trunk. D1 bit 3 clear sets flag 1.
    h.feed(frame(0x24, {0xA4, 0x01}));
    h.feed(frame(0x24, {0xA4, 0x01}));   // nothing changed: nothing said
    QCOMPARE(h.activity(), 2);
    compareFields(*h.driver()->getCardoorData(),
                  {"doorFrontRight=1", "doorFrontLeft=0", "doorRearRight=1", "doorRearLeft=0", "doorTrunk=0"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag2=1", "bodyFlag1=1"});
    h.feed(frame(0x24, {0x58, 0x08}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=0", "doorFrontLeft=1", "doorTrunk=1"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag2=0", "bodyFlag1=0"});
    h.watchActivity();
    h.feed(frame(0x14, {0x05, 0x07}));   // kept without a word
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag31=5", "bodyByte32=7"});
    QCOMPARE(h.activity(), 0);

    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    for (int d0 : {0x81, 0x81, 0x01})   // every frame is news
        h.feed(frame(0x26, {d0, 0x02}));
    QCOMPARE(steering.count(), 3);
    QCOMPARE(steering.at(1) + steering.at(2), (QList<QVariant>{258, 540, true, -258, 540, true}));
    h.feed(frame(0x20, {6, 1}));
    h.feed(frame(0x20, {0, 2}));   // D0 0 repeats the last key with D1's state
    QCOMPARE(h.keyEvents(), (QList<int>{149, 1, 149, 2}));

    DriverHarness audi(40);
    audi.feed(frame(0x24, {0x40, 0x00}));
    compareFields(*audi.driver()->getCardoorData(), {"doorFrontLeft=1"});
}

void TestDriver41::versionAndLinkFrames()
{
    DriverHarness h(41);
    QCOMPARE(h.driver()->checkProtocolData(frame(0x21, {1, 2, 3})), 0);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out) && interval == 1000);
    QCOMPARE(out, testframes::hex("2e8101017c"));
    QCOMPARE(h.driver()->checkProtocolData(frame(0xFF, QByteArray("Q3 1.2\0x", 8))), 1);
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("Q3 1.2"));
    QVERIFY(!h.driver()->needSendConnect(interval, out));   // connected; the request still follows
    QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xF1, {0x01}), frame(0xF1, {0x01})}));
}

QTEST_GUILESS_MAIN(TestDriver41)
#include "tst_driver41.moc"
