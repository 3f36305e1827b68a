// southeast DX7/DX3/DX5 (97): keys with the answer key that acts on release, doors and
// body flags, radar in half bars, tyres, steering, fuel values, settings items, the
// shared status frames, and the clock, language and touch frames out.

#include <QSignalSpy>
#include <QtTest>

#include "canbus97/canbus97.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using testframes::hex;

namespace {
constexpr int kId = 97;
Data97Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data97Info>(); }
}

class TestDriver97 : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void doorsAndBodyGating();
    void radarTyresSteeringFuel();
    void statusFrames();
    void clockLanguageAndTouch();
    void guardsAndLink();
};

void TestDriver97::keys_data()
{
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<int>("code");   // pressed and released once; 0: nothing
    using L = QList<QByteArray>;
    QTest::addRow("37 long, released") << L{frame(0x20, {37, 2}), frame(0x20, {0, 0})} << 0x1200030;
    QTest::addRow("37 short, released") << L{frame(0x20, {37, 1}), frame(0x20, {0, 0})} << 0x1100023;
    QTest::addRow("37 held") << L{frame(0x20, {37, 1})} << 0;
    QTest::addRow("wheel 12 pressed") << L{frame(0x20, {12, 1})} << 0x1300059;
    QTest::addRow("wheel 12 state 2") << L{frame(0x20, {12, 2})} << 0;
    QTest::addRow("panel 5 pressed") << L{frame(0x21, {5, 1})} << 0x110002A;
}

void TestDriver97::keys()
{
    QFETCH(QList<QByteArray>, frames);
    QFETCH(int, code);
    DriverHarness h(kId);
    for (const QByteArray& f : frames)
        h.feed(f);
    const int key = h.driver()->toKkmapKey(code);
    QCOMPARE(h.keyEvents(), code ? (QList<int>{key, 1, key, 0}) : QList<int>{});
}

void TestDriver97::doorsAndBodyGating()
{
    DriverHarness h(kId);
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.driver()->setPowerOffState();
    h.feed(frame(0x24, {0x84, 0x0A}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=1", "doorFrontLeft=0", "doorHood=1"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=1", "bodyFlag1=0", "bodyFlag2=0"});
    QCOMPARE(doors.count(), 0);   // gated
    QCOMPARE(body.count(), 1);    // not gated
    h.driver()->setPowerOnState();
    h.feed(frame(0x24, {0x10, 0x05}));
    compareFields(*h.driver()->getCardoorData(), {"doorRearLeft=1", "doorHood=0"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=0", "bodyFlag31=1", "bodyFlag1=1", "bodyFlag2=1"});
    QCOMPARE(doors.count(), 1);
}

void TestDriver97::radarTyresSteeringFuel()
{
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x23, {1, 2, 3, 4}));
    compareFields(*h.driver()->getRadarData(), {"radarLevels=9", "radarFrontLeft=2", "radarFrontRight=8"});
    h.feed(frame(0x25, {0, 23, 0x01, 0x00, 0, 0, 0, 0, 0}));
    compareFields(*h.driver()->getAirData(), {"tirePressureFrontLeft=23.0bar",
                                              "tirePressureFrontRight=256.0bar", "tireStatus=0"});
    h.feed(frame(0x29, {0x00, 0x10, 0}));
    QCOMPARE(steering.at(0), (QList<QVariant>{-16, 550, true}));
    h.feed(frame(0x33, {0x01, 0xF4, 0, 55, 0x01, 0x2C, 0x01, 0x00, 0x00, 0}));
    const FuelConsumptionAndMileageInformation97 fuel = info(h).fuel;
    QCOMPARE(fuel.fuelText, QStringLiteral("50.0L"));
    QCOMPARE(fuel.percentText, QStringLiteral("55.0%"));
    QCOMPARE(fuel.distanceText, QStringLiteral("300.0KM"));
    QCOMPARE(fuel.totalText, QStringLiteral("65536.0KM"));
}

void TestDriver97::statusFrames()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.driver()->setPowerOffState();
    // Sub-frame 9: the body hears of the outdoor temperature, gate or not.
    h.feed(frame(0x7D, {9, 0x41, 0x41, 0x28}));
    QCOMPARE(body.count(), 1);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(info(h).body.outdoorTempText, h.driver()->getAirData()->outdoorTemp);
    QVERIFY(!info(h).body.outdoorTempText.isEmpty());
    h.driver()->setPowerOnState();
    h.feed(frame(0x7D, {3, 0x10, 0x0E, 0x64, 0x00}));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(info(h).mileage.speedText1, QStringLiteral("36KM/H"));
}

void TestDriver97::clockLanguageAndTouch()
{
    DriverHarness h(kId);
    auto* d = qobject_cast<Canbus97Obj*>(h.driver());
    d->languageChanged(QStringLiteral("ko"));
    d->languageChanged(QStringLiteral("en"));
    d->setCurrentTime(13, 5, 59);
    h.feed(frame(0x32, {0, 0, 9, 0}));   // the box's own choice, clamped
    d->setCurrentTime(7, 0, 0);
    d->setTcanBussend(1, 2, 3, 4, 0);
    h.feed(frame(0x40, {0x10, 0}));
    d->setTcanBussend(1, 2, 3, 4, 2);
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0x82, {0, 0, 2}), frame(0x82, {13, 5, 2}),
                                               frame(0x82, {7, 0, 2}), frame(0x83, {4, 1}),
                                               frame(0x83, {4, 0})}));
}

void TestDriver97::guardsAndLink()
{
    DriverHarness h(kId);
    h.watchActivity();
    QCOMPARE(h.driver()->checkProtocolData(frame(0x25, {0, 23, 0, 0, 0, 0, 0})), 1);   // below 12
    QCOMPARE(h.driver()->checkProtocolData(frame(0x26, {1, 2, 3})), 0);
    QCOMPARE(h.activity(), 0);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(out, hex("2e8101017c"));
    QVERIFY(h.driver()->needSendDisconnect(out));   // whatever the state
    QCOMPARE(out, hex("2e8101007d"));
}

QTEST_GUILESS_MAIN(TestDriver97)
#include "tst_driver97.moc"
