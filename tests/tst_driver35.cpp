// Infiniti QX50 (35): climate applied byte by byte, doors on every frame, radar only in
// reverse, the two key frames, trip texts and the press-and-release climate buttons.

#include <QSignalSpy>
#include <QtTest>

#include "canbus35/canbus35.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::bytes;
using testframes::frame;

class TestDriver35 : public QObject
{
    Q_OBJECT

private slots:
    void climate_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<bool>("rightDriver");
        QTest::addColumn<QStringList>("fields");
        QTest::addRow("mode 2 fan 3") << frame(0x21, {0x5E, 2, 3, 36, 64, 0}) << false
            << QStringList{"airAC=1", "airInnerLoop=1", "airAuto=1", "airDual=1", "airDefrostRear=1",
                           "airWindUpLeft=1", "airWindDownRight=1", "airPower=1", "tempLeft=18.0", "tempRight=32.0"};
        QTest::addRow("mode 5, auto loop, ends") << frame(0x21, {0x20, 5, 1, 0, 31, 0}) << false
            << QStringList{"airAutoLoop=1", "airWindUpLeft=0", "airDefrostFront=1", "tempLeftLow=1", "tempRightHigh=1"};
        QTest::addRow("mode 0: off, fan kept") << frame(0x21, {0, 0, 4, 37, 37, 0}) << false
            << QStringList{"airPower=0", "airWindSpeedLeft=4", "tempLeft=18.5"};
        QTest::addRow("right-hand drive") << frame(0x21, {0, 1, 1, 36, 40, 0}) << true
            << QStringList{"tempLeft=20.0", "tempRight=18.0"};
    }

    void climate()
    {
        QFETCH(QByteArray, frame);
        QFETCH(bool, rightDriver);
        QFETCH(QStringList, fields);
        DriverHarness h(35);
        h.manager()->setRightDriver(rightDriver);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        h.feed(frame);
        h.feed(frame);   // the same bytes again: nothing said
        compareFields(*h.driver()->getAirData(), fields);
        QCOMPARE(air.count(), 1);
    }

    void framesIn()
    {
        DriverHarness h(35);
        QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
        QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
        QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
        h.feed(frame(0x28, {0x44}));
        h.feed(frame(0x28, {0x44}));   // every frame is news
        QCOMPARE(doors.count(), 2);
        compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorHood=1"});
        h.feed(frame(0x22, {1, 2, 3, 4, 0}));   // not in reverse: no radar
        h.manager()->setInReverse(true);
        h.feed(frame(0x23, {1, 2, 3, 4, 0}));
        QCOMPARE(radar.count(), 1);
        compareFields(*h.driver()->getRadarData(), {"radarLevels=10", "radarFrontLeft=2", "radarRearLeft=0"});
        h.feed(frame(0x30, {0x01, 0x02}));
        QCOMPARE(steering.at(0), (QList<QVariant>{-258, 540, true}));
        // Wheel key with its release; a panel key goes down with its state, then up.
        const int seek = h.driver()->toKkmapKey(0x110002E);
        const int preset = h.driver()->toKkmapKey(0x1100031);
        h.feed(frame(0x20, {3, 1}));
        h.feed(frame(0x20, {0, 0}));
        h.feed(frame(0x24, {11, 2, 0}));
        QCOMPARE(h.keyEvents(), (QList<int>{seek, 1, seek, 0, preset, 2, preset, 0}));
        // Trip texts, each distance with the unit of its own bit.
        h.feed(frame(0x27, {0x01, 0x10, 0x27, 0, 0, 0x7D, 0x00, 0}));
        h.feed(frame(0x29, {0x02, 0, 0, 0x4B, 0x00, 0}));
        compareFields(h.driver()->getDataInfo().value<Data35Info>().mileage,
                      {"odometerText=10000mile", "rangeText=12.5km", "fuelText=7.5l/100km"});
    }

    void commands_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("rightDriver");
        QTest::addColumn<QByteArray>("press");
        QTest::addRow("AirDUAL") << "AirDUAL" << "1" << false << bytes({0, 0x08, 0, 0, 0});
        QTest::addRow("fan slower") << "AirWindSpeedAddSubFront" << "0" << false << bytes({0, 1, 0, 0, 0});
        QTest::addRow("left warmer") << "AirTempFrontLeft" << "add" << false << bytes({0, 0, 0, 2, 0});
        QTest::addRow("left cooler, right-hand") << "AirTempFrontLeft" << "sub" << true << bytes({0, 0, 0, 0, 1});
        QTest::addRow("no such button") << "AirOuterLoop" << "1" << false << QByteArray(5, '\0');
    }

    void commands()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(bool, rightDriver);
        QFETCH(QByteArray, press);
        DriverHarness h(35);
        h.manager()->setRightDriver(rightDriver);
        h.clearSent();
        h.driver()->setCanbusState(key, value);
        QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xE1, press), frame(0xE1, QByteArray(5, '\0'))}));
    }
};

QTEST_GUILESS_MAIN(TestDriver35)
#include "tst_driver35.moc"
