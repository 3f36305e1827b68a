// Infiniti QX50 (35): climate applied byte by byte, doors on every frame, radar only in
// reverse, the two key frames, trip texts and the press-and-release climate buttons.

#include <QSignalSpy>
#include <QtTest>

#include "driverharness.h"
#include "framebuilders.h"
#include "canbus35/canbus35.h"
#include "recordcheck.h"

using testframes::frame;

class TestDriver35 : public QObject
{
    Q_OBJECT

private slots:
    void climate_data();
    void climate();
    void climateSignalsOnlyOnChange();
    void doorsRadarAndSteering();
    void keys();
    void tripTexts_data();
    void tripTexts();
    void commands_data();
    void commands();
};

void TestDriver35::climate_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("fields");
    QTest::addRow("2e2106 mode 2 fan 3") << frame(0x21, {0x5E, 2, 3, 36, 64, 0}) << false
        << QStringList{"airAC=1", "airInnerLoop=1", "airOuterLoop=0", "airAuto=1", "airDual=1",
                       "airDefrostRear=1", "airWindUpLeft=1", "airWindDownRight=1", "airDefrostFront=0",
                       "airWindSpeedLeft=3", "airPower=1", "tempLeft=18.0", "tempRight=32.0"};
    QTest::addRow("mode 5 screen, auto loop") << frame(0x21, {0x20, 5, 1, 0, 31, 0}) << false
        << QStringList{"airAutoLoop=1", "airWindUpLeft=0", "airWindDownLeft=0", "airDefrostFront=1",
                       "tempLeftLow=1", "tempRightHigh=1"};
    QTest::addRow("mode 0: off, fan kept") << frame(0x21, {0x00, 0, 4, 37, 37, 0}) << false
        << QStringList{"airPower=0", "airOnOff=0", "airWindSpeedLeft=4", "tempLeft=18.5"};
    QTest::addRow("right-hand drive swaps set points") << frame(0x21, {0, 1, 1, 36, 40, 0}) << true
        << QStringList{"tempLeft=20.0", "tempRight=18.0"};
}

void TestDriver35::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, fields);
    DriverHarness h(35);
    h.manager()->setRightDriver(rightDriver);
    h.feed(frame);
    compareFields(*h.driver()->getAirData(), fields);
}

void TestDriver35::climateSignalsOnlyOnChange()
{
    DriverHarness h(35);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(frame(0x21, {0x40, 1, 2, 40, 40, 0}));
    h.feed(frame(0x21, {0x40, 1, 2, 40, 40, 0}));
    QCOMPARE(air.count(), 1);
    // A set point outside the scale keeps the text it had.
    h.feed(frame(0x21, {0x40, 1, 2, 33, 40, 0}));
    QCOMPARE(air.count(), 2);
    compareFields(*h.driver()->getAirData(), {"tempLeft=20.0"});
}

void TestDriver35::doorsRadarAndSteering()
{
    DriverHarness h(35);
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x28, {0x44}));
    h.feed(frame(0x28, {0x44}));
    QCOMPARE(doors.count(), 2);
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorHood=1", "doorFrontRight=0"});
    h.feed(frame(0x22, {1, 2, 3, 4, 0}));   // not in reverse: nothing
    QCOMPARE(radar.count(), 0);
    h.manager()->setInReverse(true);
    h.feed(frame(0x23, {1, 2, 3, 4, 0}));
    QCOMPARE(radar.count(), 1);
    compareFields(*h.driver()->getRadarData(), {"radarLevels=10", "radarFrontLeft=2", "radarFrontRight=8"});
    h.feed(frame(0x30, {0x81, 0x02}));
    h.feed(frame(0x30, {0x01, 0x02}));
    QCOMPARE(steering.at(0), (QList<QVariant>{258, 540, true}));
    QCOMPARE(steering.at(1), (QList<QVariant>{-258, 540, true}));
}

void TestDriver35::keys()
{
    DriverHarness h(35);
    const int seek = h.driver()->toKkmapKey(0x110002E);
    const int preset = h.driver()->toKkmapKey(0x1100031);
    h.feed(frame(0x20, {3, 1}));
    h.feed(frame(0x20, {0, 0}));      // the release goes to the kept key
    h.feed(frame(0x24, {11, 2, 0}));  // a panel key goes down with its state, then up
    QCOMPARE(h.keyEvents(), (QList<int>{seek, 1, seek, 0, preset, 2, preset, 0}));
}

void TestDriver35::tripTexts_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("fields");
    QTest::addRow("2e27 km") << frame(0x27, {0x00, 0x10, 0x27, 0, 0, 0x7D, 0x00, 0})
        << QStringList{"odometerText=10000km", "rangeText=12.5km"};
    QTest::addRow("2e27 miles each by its bit") << frame(0x27, {0x01, 0x01, 0, 0, 0, 0x0A, 0x00, 0})
        << QStringList{"odometerText=1mile", "rangeText=1km"};
    QTest::addRow("2e29 l/100km") << frame(0x29, {0x02, 0, 0, 0x4B, 0x00, 0})
        << QStringList{"fuelUnit=2", "fuelText=7.5l/100km"};
    QTest::addRow("2e29 unit 3 has none") << frame(0x29, {0x03, 0, 0, 0x0A, 0x00, 0})
        << QStringList{"fuelText=1"};
}

void TestDriver35::tripTexts()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, fields);
    DriverHarness h(35);
    h.feed(frame);
    compareFields(h.driver()->getDataInfo().value<Data35Info>().mileage, fields);
}

void TestDriver35::commands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QByteArray>("press");
    QTest::addRow("AirOnOff") << "AirOnOff" << "1" << false << testframes::bytes({0x80, 0, 0, 0, 0});
    QTest::addRow("AirDUAL in byte 1") << "AirDUAL" << "1" << false << testframes::bytes({0, 0x08, 0, 0, 0});
    QTest::addRow("fan slower") << "AirWindSpeedAddSubFront" << "0" << false << testframes::bytes({0, 1, 0, 0, 0});
    QTest::addRow("left warmer") << "AirTempFrontLeft" << "add" << false << testframes::bytes({0, 0, 0, 2, 0});
    QTest::addRow("left cooler, right-hand drive") << "AirTempFrontLeft" << "sub" << true
                                                   << testframes::bytes({0, 0, 0, 0, 1});
    QTest::addRow("no such button: two zero frames") << "AirOuterLoop" << "1" << false << QByteArray(5, '\0');
}

void TestDriver35::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, rightDriver);
    QFETCH(QByteArray, press);
    DriverHarness h(35);
    h.manager()->setRightDriver(rightDriver);
    h.clearSent();
    h.driver()->setCanbusState(key, value);
    h.driver()->setCanbusState(QStringLiteral("AirSeat"), value);   // unknown: nothing
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xE1, press), frame(0xE1, QByteArray(5, '\0'))}));
}

QTEST_GUILESS_MAIN(TestDriver35)
#include "tst_driver35.moc"
