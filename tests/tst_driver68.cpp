// Chery (68): frames in, commands that follow the live climate, reports whose text
// encoding follows the vehicle model, and the frames the box hears unasked.

#include <QtTest>

#include "canbus68/canbus68.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;

namespace {
Data68Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data68Info>(); }
void setModel(DriverHarness& h, int model)
{
    Data68Info d = info(h);
    d.vehicle.carModel = quint8(model);
    h.driver()->setDataInfo(QVariant::fromValue(d));
}
}

class TestDriver68 : public QObject
{
    Q_OBJECT

private slots:
    void keys();
    void climateAndBody();
    void settingsAndStatus();
    void commands_data();
    void commands();
    void fixedCommandKeys();
    void framesOut();
};

void TestDriver68::keys()
{
    DriverHarness h(68);
    // 7 sends on press and again on release, or only on release after a long press (state 2).
    for (const QByteArray& f : {frame(0x20, {7, 1}), frame(0x20, {0, 0}), frame(0x20, {7, 2}), frame(0x20, {0, 0}),
                                frame(0x20, {40, 1})})
        h.feed(f);
    h.driver()->setCallState(true);
    h.feed(frame(0x20, {5, 1}));
    QList<int> expected;   // each pressed and released
    for (int code : {0x1200027, 0x1200027, 0x1100023, 0x1200061, 0x1300058})
        expected << h.driver()->toKkmapKey(code) << 1 << h.driver()->toKkmapKey(code) << 0;
    QCOMPARE(h.keyEvents(), expected);
}

void TestDriver68::climateAndBody()
{
    DriverHarness h(68);
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x21, {0x5F, 0x86, 9, 0, 30, 0}));
    compareFields(*h.driver()->getAirData(),
                  {"airAC=1", "airInnerLoop=1", "airAuto=1", "airDual=1", "airDefrostRear=1", "airDefrostFront=1",
                   "airWindUpLeft=0", "airWindSpeedLeft=7", "airPower=1", "tempLeft=17.5", "tempLeftLow=1",
                   "tempRight=32.5", "tempRightHigh=1"});
    h.feed(frame(0x21, {0x00, 0x02, 0, 31, 1, 0}));
    compareFields(*h.driver()->getAirData(), {"airPower=0", "airWindUpRight=1", "airWindDownLeft=1",
                                              "tempLeft=17.5", "tempLeftLow=0", "tempRight=18"});
    h.feed(frame(0x10, {1, 110, 0}));
    QCOMPARE(outdoor.at(0), (QList<QVariant>{QString::fromUtf8("0.0\xe2\x84\x89"), 1}));
    h.feed(frame(0x10, {0, 255, 0}));
    QCOMPARE((QStringList{h.driver()->getAirData()->outdoorTemp, info(h).vehicle.outdoorTempText}),
             (QStringList{"--", "--"}));   // the unknown mark
    h.feed(frame(0x23, {1, 2, 3, 4, 0}));
    compareFields(*h.driver()->getRadarData(), {"radarLevels=10", "radarFrontLeft=2", "radarFrontRight=8"});
    h.driver()->setPowerOffState();
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    h.feed(frame(0x24, {0x44, 0x05, 0}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorHood=1"});
    QCOMPARE((QList<int>{doors.count(), info(h).vehicle.doorBit2}), (QList<int>{1, 1}));   // not gated
    h.feed(frame(0x29, {0x10, 0x80, 0}));
    QCOMPARE(steering.at(0), (QList<QVariant>{16, 8704, true}));
    QCOMPARE(outdoor.count(), 1);
}

void TestDriver68::settingsAndStatus()
{
    DriverHarness h(68);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    auto item = [&h](int number, int value) { h.feed(frame(0x40, {quint8(number), quint8(value), 0, 0, 0})); };
    item(10, 10);
    item(10, 255);   // no value: 10 counted from 1 stays
    QCOMPARE(int(info(h).items.item10), 11);
    item(10, 11);
    item(27, 200);
    item(2, 5);
    item(33, 9);
    item(50, 1);   // no such item: news all the same
    QCOMPARE(changed.count(), 7);
    h.feed(frame(0x41, {0xC1, 9, 3, 0x01, 0x00, 10, 0, 0, 0}));
    const Data68Info d = info(h);
    QCOMPARE((QList<int>{d.items.item10, d.items.item27, d.items.item2, d.items.item33}), (QList<int>{10, 100, 1, 7}));
    QCOMPARE((QList<int>{d.status.status7, d.status.status5, d.status.status0, d.status.level1, d.status.level2}),
             (QList<int>{1, 0, 1, 7, 3}));
    QCOMPARE((QStringList{d.status.distanceText, d.status.consumptionText}), (QStringList{"25.6KM", "2.0KMH/100KM"}));
}

void TestDriver68::commands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("climate");   // data of a 0x21 frame first
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<int>("code");
    const QByteArray feet = QByteArray::fromHex("000300000000");        // down only
    const QByteArray feetScreen = QByteArray::fromHex("000400000000");  // down and screen
    const QByteArray face = QByteArray::fromHex("000100000000");        // up only
    QTest::addRow("defrost, air down") << "AirDefrostFront" << "" << feet << false << 10;
    QTest::addRow("defrost, down and screen") << "AirDefrostFront" << "" << feetScreen << false << 9;
    QTest::addRow("defrost, air up") << "AirDefrostFront" << "" << face << false << 6;
    QTest::addRow("down, air up") << "AirWindDownFront" << "" << face << false << 8;
    QTest::addRow("down, down and screen") << "AirWindDownFront" << "" << feetScreen << false << 6;
    QTest::addRow("up, air down") << "AirWindUpFront" << "" << feet << false << 8;
    QTest::addRow("left warmer, right-hand") << "AirTempFrontLeft" << "add" << face << true << 15;
}

void TestDriver68::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, climate);
    QFETCH(bool, rightDriver);
    QFETCH(int, code);
    DriverHarness h(68);
    h.driver()->setRightDriver(rightDriver);
    h.feed(frame(0x21, climate));
    h.driver()->setCanbusState(key, value);
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0xA8, {code, 1})});
    QTRY_COMPARE(h.sentFrames().value(1), frame(0xA8, {code, 0}));
}

void TestDriver68::fixedCommandKeys()
{
    DriverHarness h(68);
    const QList<QPair<const char*, const char*>> keys = {
        {"AirOnOff", ""}, {"AirAC", ""}, {"AirAUTO", ""}, {"AirDUAL", ""}, {"AirInnerLoop", "on"}, {"AirInnerLoop", "off"},
        {"AirWindSpeedAddSubFront", "1"}, {"AirWindSpeedAddSubFront", "0"}, {"AirTempFrontLeft", "sub"},
        {"AirTempFrontRight", "add"}, {"AirTempFrontRight", "sub"}, {"AirDefrostRear", ""}, {"AirSYNC", ""}};
    QList<int> codes;
    for (const auto& k : keys) {
        h.clearSent();
        h.driver()->setCanbusState(QLatin1String(k.first), QLatin1String(k.second));
        codes << (h.sentFrames().isEmpty() ? -1 : int(quint8(h.sentFrames().first().at(3))));
    }
    QCOMPARE(codes, (QList<int>{0, 1, 2, 3, 4, 5, 11, 12, 14, 15, 16, 20, -1}));
}

void TestDriver68::framesOut()
{
    DriverHarness h(68);
    h.driver()->setSrcState(CanbusInterface::SRC_RADIO, {5, 1008});
    h.driver()->setSrcState(CanbusInterface::SRC_PHONE, {3, QStringLiteral("Bo"), QStringLiteral("12")});
    setModel(h, 3);
    h.driver()->setSrcState(CanbusInterface::SRC_PHONE, {7, QStringLiteral("Bo"), QStringLiteral("12")});
    const QByteArray wide = QByteArray("\x00" "1" "\x00" "2" "\x00" ":" "\x00" "B" "\x00" "o", 10);
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xC0, {1, 1, 17, 0xF0, 0x03, 0, 0, 0}),
                                               frame(0xC0, {5, 0, 0, 0, 0, 0, 0, 0}), frame(0xC5, QByteArray("\x02\x01" "Bo", 4)),
                                               frame(0xC0, {5, 0, 0, 0, 0, 0, 0, 0}),
                                               frame(0xC5, QByteArray("\x00\x01", 2) + wide)}));
    // State 3 started the call timer; state 7 leaves it running.
    h.clearSent();
    QTRY_VERIFY(h.sentFrames().contains(frame(0xC3, {1, 0, 0, 0})));

    h.clearSent();
    setModel(h, 0);
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA2_A, {0, 1, 2, 0, 0, QStringLiteral("T"), QStringLiteral("A")});
    QTRY_VERIFY(h.sentFrames().contains(frame(0x71, QByteArray("\x12" "A", 2))));
    QVERIFY(h.sentFrames().contains(frame(0x70, QByteArray("\x12" "T", 2))));
    QCOMPARE(h.sentFrames().first(), frame(0xC0, {9, 0, 0, 0, 0, 0, 0, 0}));

    h.clearSent();
    auto* d = qobject_cast<Canbus68Obj*>(h.driver());
    d->setCurrentTime(13, 5, 7);
    d->languageChanged(QStringLiteral("ko"));
    d->languageChanged(QStringLiteral("en"));
    d->exitSelectSlot();   // no model chosen: nothing
    setModel(h, 5);
    d->exitSelectSlot();
    for (const QPoint& p : {QPoint(450, 300), QPoint(450, 300), QPoint(450, 100), QPoint(300, 300)})
        d->setTcanBussend(p.x(), p.y(), 900, 600, 2);
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xA6, {0, 0, 0, 13, 5, 0, 0}), frame(0xC6, {0, 1}),
                                               frame(0xEE, {4, 5}), frame(0xA7, {17}), frame(0xA7, {16}),
                                               frame(0xA7, {1})}));
    QCOMPARE(int(info(h).items.item0), 1);
}

QTEST_GUILESS_MAIN(TestDriver68)
#include "tst_driver68.moc"
