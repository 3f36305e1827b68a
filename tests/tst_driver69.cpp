// JAC Refinery (69): keys by vehicle model and call, climate with two set-point scales and
// an outdoor reading that holds the panel's signal back, the other frames in, and the frames out.

#include <QtTest>

#include "canbus69/canbus69.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using testframes::hex;

namespace {
Data69Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data69Info>(); }
void setModel(DriverHarness& h, int model)
{
    Data69Info d = info(h);
    d.vehicle.carModel = quint8(model);
    h.driver()->setDataInfo(QVariant::fromValue(d));
}
}

class TestDriver69 : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void climate();
    void radarDoorsTyresItemsAndEnergy();
    void reports();
    void touch_data();
    void touch();
};

void TestDriver69::keys_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<bool>("inCall");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("code");   // sent with the frame's state
    QTest::addRow("wheel 7, model 3") << 3 << false << frame(0x21, {7, 1}) << 0x1300055;
    QTest::addRow("wheel 7, model 0") << 0 << false << frame(0x21, {7, 1}) << 0x1200027;
    QTest::addRow("wheel 129, model 4") << 4 << false << frame(0x21, {129, 2}) << 0x1100029;
    QTest::addRow("wheel 129, model 3") << 3 << false << frame(0x21, {129, 1}) << 0x1200029;
    QTest::addRow("wheel 10 in a call") << 0 << true << frame(0x21, {10, 1}) << 0x1300059;
    QTest::addRow("panel 7") << 0 << false << frame(0x02, {7, 1}) << 0x1200062;
}

void TestDriver69::keys()
{
    QFETCH(int, model);
    QFETCH(bool, inCall);
    QFETCH(QByteArray, frame);
    QFETCH(int, code);
    DriverHarness h(69);
    setModel(h, model);
    h.driver()->setCallState(inCall);
    h.feed(frame);
    QCOMPARE(h.keyEvents(), (QList<int>{h.driver()->toKkmapKey(code), frame.at(4)}));
}

void TestDriver69::climate()
{
    DriverHarness h(69);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    // The first frame moves the outdoor byte from nothing: the panel hears nothing yet.
    h.feed(frame(0x11, {0x40, 0xFF, 9, 0, 30, 0x3D, 0}));
    compareFields(*h.driver()->getAirData(),
                  {"airAC=1", "airOuterLoop=1", "airWindSpeedLeft=7", "tempLeft=17", "tempLeftLow=1",
                   "tempRight=32", "tempRightHigh=1", "outdoorTemp=--"});
    QCOMPARE(air.count() + outdoor.count(), 0);
    h.feed(frame(0x11, {0x10, 0x02, 1, 128, 161, 0x3D, 0}));
    compareFields(*h.driver()->getAirData(), {"airInnerLoop=1", "airWindUpLeft=1", "airWindDownRight=1",
                                              "tempLeft=16", "tempLeftLow=1", "tempRight=32"});
    QCOMPARE(air.count(), 1);
    h.feed(frame(0x11, {0x10, 0x02, 1, 128, 160, 0xFF, 0}));
    QCOMPARE(h.driver()->getAirData()->outdoorTemp, QString::fromUtf8("215.0\xe2\x84\x83"));
    QCOMPARE(outdoor.count() + air.count(), 2);
}

void TestDriver69::radarDoorsTyresItemsAndEnergy()
{
    DriverHarness h(69);
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.feed(frame(0x22, {5, 6, 1, 0, 0}));
    compareFields(*h.driver()->getRadarData(),
                  {"radarLevels=10", "radarRearLeft=0", "radarRearLeftMid=254", "radarRearRightMid=8"});
    h.feed(frame(0x28, {0x84, 0xC8, 0}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=1", "doorHood=1"});
    compareFields(*h.driver()->getCarbodyData(),
                  {"bodyWarning37=1", "bodyWarning36=0", "bodyFlag2=1", "bodyFlag31=1"});
    h.feed(frame(0x28, {0x84, 0x08, 0}));   // bits 4 and 3 as before: no warning news
    QCOMPARE(body.count(), 1);
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag31=0"});
    h.feed(frame(0x38, {1, 2, 3, 4, 200, 0, 0, 0, 0}));
    compareFields(*h.driver()->getAirData(), {"tireWarning[2][3]=4", "tirePressureFrontLeft=5.5bar"});
    h.feed(frame(0x39, {9, 0, 0, 0, 0}));
    compareFields(*h.driver()->getAirData(), {"tireWarning[1][0]=3"});

    h.feed(frame(0x3A, {10, 30, 0}));
    h.feed(frame(0x3A, {8, 5, 0}));
    h.feed(frame(0x3E, {0x01, 0x00, 0x00, 0, 10, 150, 3, 12, 0, 0, 0, 8, 0}));
    QCOMPARE(h.driver()->checkProtocolData(hex("2e4000")), 1);   // read past its data
    const Data69Info d = info(h);
    QCOMPARE((QList<int>{d.items.item10, d.items.item8, d.energy.batteryPercent, d.energy.chargeState}),
             (QList<int>{21, 1, 100, 2}));   // item 10 clamps at 21, item 8 is a flag
    QCOMPARE((QStringList{d.energy.rangeText, d.energy.useText1, d.energy.energyText3}),
             (QStringList{"6553.6km", "1.2km/kwh", "6.0km"}));
}

void TestDriver69::reports()
{
    DriverHarness h(69);
    h.driver()->setSrcState(CanbusInterface::SRC_RADIO, {2, 9850});
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, {0, 1, 2, 3725, 4000, QStringLiteral("T")});
    h.driver()->setSrcState(CanbusInterface::SRC_PHONE, {1, QStringLiteral("Anna")});
    DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2026, 3, 9), QTime(7, 0, 5)));
    h.driver()->setCurrentTime(0, 0, 0);
    DateTimeCtrl::getInstance()->clearFixedDateTime();
    auto* d = qobject_cast<Canbus69Obj*>(h.driver());
    setModel(h, 3);
    d->exitSelectSlot();
    setModel(h, 2);
    d->exitSelectSlot();
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0x75, {1, 1, 0x03, 0xD9, 0, 0, 0, 1}),
                                               frame(0x75, {6, 0, 0, 0, 0, 62, 5, 1}),
                                               frame(0x82, {0xEA, 0x37, 9, 7, 0, 0}), frame(0xEE, {0x53, 2})}));
    h.clearSent();
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QTest::qWait(175);
    QVERIFY(h.sentFrames().isEmpty());   // the request waits 200 ms, not the usual 150
    QTRY_COMPARE(h.sentFrames(), QList<QByteArray>{frame(0x90, {0x11, 0x00})});
}

void TestDriver69::touch_data()
{
    QTest::addColumn<int>("view");
    QTest::addColumn<QList<int>>("move");   // press x, y, release x, y on 900 x 600
    QTest::addColumn<int>("code");          // -1: nothing
    QTest::addRow("centre, view 2") << 2 << QList<int>{450, 300, 455, 305} << 3;
    QTest::addRow("centre, view 3") << 3 << QList<int>{450, 300, 450, 300} << 4;
    QTest::addRow("left edge") << 0 << QList<int>{100, 300, 100, 300} << 7;
    QTest::addRow("corner") << 0 << QList<int>{100, 100, 100, 100} << -1;
    QTest::addRow("wide swipe down") << 0 << QList<int>{100, 100, 500, 300} << 10;
}

void TestDriver69::touch()
{
    QFETCH(int, view);
    QFETCH(QList<int>, move);
    QFETCH(int, code);
    DriverHarness h(69);
    h.feed(frame(0x3B, {quint8(view << 4), 0}));
    auto* d = qobject_cast<Canbus69Obj*>(h.driver());
    d->setTcanBussend(move[0], move[1], 900, 600, 0);
    d->setTcanBussend(move[2], move[3], 900, 600, 2);
    QCOMPARE(h.sentFrames(), code < 0 ? QList<QByteArray>{} : QList<QByteArray>{frame(0x84, {quint8(code)})});
}

QTEST_GUILESS_MAIN(TestDriver69)
#include "tst_driver69.moc"
