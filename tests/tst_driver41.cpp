// Audi Q3 (41) and the Audi box that takes its frames (40): keys, doors with two body
// flags, the steering angle, two silent body bytes, the version and the link frames.

#include <QSignalSpy>
#include <QtTest>

#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;

class TestDriver41 : public QObject
{
    Q_OBJECT

private slots:
    void doorsAndBodyFlags_data();
    void doorsAndBodyFlags();
    void steeringAndSilentBodyBytes();
    void keys_data();
    void keys();
    void versionAndUnknownTypes();
    void linkFrames();
    void audiBoxTakesTheSameFrames();
};

void TestDriver41::doorsAndBodyFlags_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("doors");
    QTest::addColumn<QStringList>("body");
    // D0 from bit 7: front right, front left, rear right, rear left, trunk; no bonnet.
    QTest::addRow("2e2402a401") << frame(0x24, {0xA4, 0x01})
        << QStringList{"doorFrontRight=1", "doorFrontLeft=0", "doorRearRight=1", "doorRearLeft=0",
                       "doorTrunk=0", "doorHood=0"}
        << QStringList{"bodyFlag2=1", "bodyFlag1=1"};
    QTest::addRow("2e24025808") << frame(0x24, {0x58, 0x08})
        << QStringList{"doorFrontLeft=1", "doorRearLeft=1", "doorTrunk=1"}
        << QStringList{"bodyFlag2=0", "bodyFlag1=0"};
}

void TestDriver41::doorsAndBodyFlags()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, doors);
    QFETCH(QStringList, body);
    DriverHarness h(41);
    QSignalSpy doorSignal(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy bodySignal(h.driver(), SIGNAL(carbodyDataChanged()));
    QCOMPARE(h.feed(frame), 0);
    compareFields(*h.driver()->getCardoorData(), doors);
    compareFields(*h.driver()->getCarbodyData(), body);
    QCOMPARE(doorSignal.count(), 1);
    QCOMPARE(bodySignal.count(), 1);
    h.feed(frame);   // nothing changed: nothing said
    QCOMPARE(doorSignal.count() + bodySignal.count(), 2);
}

void TestDriver41::steeringAndSilentBodyBytes()
{
    DriverHarness h(41);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x26, {0x81, 0x02}));
    h.feed(frame(0x26, {0x81, 0x02}));   // no change, still news
    h.feed(frame(0x26, {0x01, 0x02}));
    QCOMPARE(steering.count(), 3);
    QCOMPARE(steering.at(1), (QList<QVariant>{258, 540, true}));
    QCOMPARE(steering.at(2), (QList<QVariant>{-258, 540, true}));
    h.watchActivity();
    h.feed(frame(0x14, {0x05, 0x07}));
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag31=5", "bodyByte32=7"});
    QCOMPARE(h.activity(), 0);
}

void TestDriver41::keys_data()
{
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<QList<int>>("events");   // keyboard number, state, ...
    using L = QList<QByteArray>;
    QTest::addRow("press and release") << L{frame(0x20, {1, 1}), frame(0x20, {0, 0})}
                                       << QList<int>{166, 1, 166, 0};
    // D0 0 repeats the last key with whatever state D1 carries.
    QTest::addRow("repeat with state 2") << L{frame(0x20, {6, 1}), frame(0x20, {0, 2})}
                                         << QList<int>{149, 1, 149, 2};
}

void TestDriver41::keys()
{
    QFETCH(QList<QByteArray>, frames);
    QFETCH(QList<int>, events);
    DriverHarness h(41);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keyEvents(), events);
}

void TestDriver41::versionAndUnknownTypes()
{
    DriverHarness h(41);
    QCOMPARE(h.driver()->checkProtocolData(frame(0x21, {1, 2, 3})), 0);
    QVERIFY(!h.driver()->isConnectedState());
    QCOMPARE(h.driver()->checkProtocolData(frame(0xFF, QByteArray("Q3 1.2\0x", 8))), 1);
    QVERIFY(h.driver()->isConnectedState());
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("Q3 1.2"));
    QCOMPARE(int(h.driver()->getAirData()->airValid), 0);
}

void TestDriver41::linkFrames()
{
    DriverHarness h(41);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, testframes::hex("2e8101017c"));
    QByteArray off;
    QVERIFY(!h.driver()->needSendDisconnect(off));
    // The request follows every call, connected or not.
    h.driver()->setConnectedState(true);
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xF1, {0x01}), frame(0xF1, {0x01})}));
    QVERIFY(h.driver()->needSendDisconnect(off));
    QCOMPARE(off, testframes::hex("2e8101007d"));
}

void TestDriver41::audiBoxTakesTheSameFrames()
{
    DriverHarness h(40);
    QCOMPARE(h.driver()->canbusId(), 40);
    h.feed(frame(0x24, {0x40, 0x00}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1"});
}

QTEST_GUILESS_MAIN(TestDriver41)
#include "tst_driver41.moc"
