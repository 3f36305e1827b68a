// The further FD boxes: Pentium X80 (83) and the Peugeot box that keeps the vehicle's
// display (86), where they differ from 87.

#include <QtTest>

#include "canbus86/canbus86.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::bytes;

namespace {
QByteArray fd(int type, std::initializer_list<int> data)
{
    return canbus::buildFrame(canbus::FrameFamily::StartFD8, quint8(type), bytes(data));
}
}

class TestDriver83 : public QObject
{
    Q_OBJECT

private slots:
    void climate83_data();
    void climate83();
    void keysSteeringRadar83();
    void frames86();
};

void TestDriver83::climate83_data()
{
    QTest::addColumn<QByteArray>("data");   // bytes 3 to 8
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("fields");
    auto row = [](const char* name, const QByteArray& data, const QStringList& fields, bool rightDriver = false) {
        QTest::addRow("%s", name) << data << rightDriver << fields;
    };
    row("7f: every switch but the loop", bytes({22, 0x7F, 0, 0, 0, 22}),
        {"airInnerLoop=1", "airOuterLoop=0", "airPower=0", "airDefrostFront=1", "airDefrostRear=1",
         "airWindDownRight=1", "airWindFrontLeft=1", "airAuto=1", "airEco=1", "airAC=1"});
    row("2f 53: dual, fan held at 7, power, tenths by nibble", bytes({22, 0, 0x2F, 0x53, 0, 23}),
        {"airDual=1", "airWindSpeedLeft=7", "airWindSpeedRight=7", "airPower=1", "airOnOff=1", "tempLeft=22.5",
         "tempRight=23.3", "tempRightVisible=1"});
    row("53: exchanged on a right-hand drive", bytes({22, 0, 0, 0x53, 0, 23}), {"tempLeft=23.3", "tempRight=22.5"}, true);
    row("00 ff: the ends", bytes({0, 0, 0, 0x50, 0, 255}),
        {"tempLeftLow=1", "tempLeft=0.5", "tempRightHigh=1", "tempRightLow=0"});
}

void TestDriver83::climate83()
{
    QFETCH(QByteArray, data);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, fields);
    DriverHarness h(83);
    h.driver()->setRightDriver(rightDriver);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    const QByteArray frame = canbus::buildFrame(canbus::FrameFamily::StartFD8, 0x10, data);
    h.feed(frame);
    h.driver()->getAirData()->airAC = 9;
    h.feed(frame);   // repeated: nothing looked at, nothing said
    QCOMPARE(h.driver()->getAirData()->airAC, quint8(9));
    h.driver()->getAirData()->airAC = data.at(1) & 1;
    compareFields(*h.driver()->getAirData(), fields);
    QCOMPARE(air.count(), 1);
}

void TestDriver83::keysSteeringRadar83()
{
    DriverHarness h(83);
    for (int value : {17, 49, 50, 23, 0})   // only 17..22, 48 and 49 are keys
        h.feed(fd(0x12, {value, 0}));
    const int stop = h.driver()->toKkmapKey(0x1200027), next = h.driver()->toKkmapKey(0x1300059);
    QCOMPARE(h.keyEvents(), (QList<int>{stop, 1, stop, 0, next, 1, next, 0}));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(fd(0x30, {0x81, 0x2C, 0}));
    h.feed(fd(0x30, {0x01, 0x2C, 0}));
    QCOMPARE(steering.at(0) + steering.at(1), (QList<QVariant>{300, 5000, true, -300, 5000, true}));
    h.feed(fd(0x32, {0, 4, 1, 2, 3, 4}));   // bars as they come
    compareFields(*h.driver()->getRadarData(), {"radarLevels=4", "radarRearLeft=1", "radarRearRight=4"});
    h.feed(fd(0x32, {1, 10, 255, 51, 25, 0}));   // brought from 255 to ten
    compareFields(*h.driver()->getRadarData(),
                  {"radarLevels=10", "radarRearLeft=10", "radarRearLeftMid=2", "radarRearRightMid=0"});
}

void TestDriver83::frames86()
{
    DriverHarness h(86);
    h.driver()->setPowerOffState();
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(fd(0x08, {1, 3, 5, 2, 4, 0, 0}));   // byte 4 is the scale and a sensor
    compareFields(*h.driver()->getRadarData(),
                  {"radarLevels=3", "radarFrontLeft=8", "radarFrontLeftMid=4", "radarFrontRightMid=4",
                   "radarFrontRight=0", "radarRearLeft=6", "radarRearLeftMid=2", "radarRearRight=0"});
    QCOMPARE(radar.count(), 1);
    for (int value : {5, 7, 2})   // 87's table from 7 on
        h.feed(fd(0x02, {value, 0}));
    const int key = h.driver()->toKkmapKey(0x1100041);
    QCOMPARE(h.keyEvents(), (QList<int>{key, 1, key, 0}));
    h.feed(fd(0x33, {0x00, 0x4B, 0x07, 0xD1, 0x00, 0x10}));
    h.feed(fd(0x35, {0x00, 0x0A, 0x00, 0xFB, 0x00, 0x10}));
    h.feed(fd(0x36, {0x83, 0}));
    const Data86Info info = h.driver()->getDataInfo().value<Data86Info>();
    QCOMPARE((QStringList{info.tripConsumption, info.tripRange, info.trip2Distance, info.trip1Speed, info.outdoorText}),
             (QStringList{"7.5L/100KM", "--", "16KM", "--", "-3.0℃"}));
    QCOMPARE(h.driver()->checkProtocolData(fd(0x21, {1, 2, 3, 4, 5, 6, 7})), 0);   // no climate frame
    QCOMPARE(h.driver()->getAirData()->airValid, quint8(0));
    h.clearSent();
    h.driver()->setSrcState(CanbusInterface::srctype(1), {5, 1008});
    h.driver()->setSrcState(CanbusInterface::srctype(14), {0, 7, 12, 185});
    h.driver()->setSrcState(CanbusInterface::srctype(22), {0, 1, 2, 61});
    h.driver()->setSrcState(CanbusInterface::srctype(24), {1, QStringLiteral("Ann")});   // no call report
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{fd(0x09, {2, 5, 10, 8}), fd(0x09, {13, 7, 12, 3, 5}),
                                               fd(0x09, {0, 1, 2, 1, 1})}));
}

QTEST_GUILESS_MAIN(TestDriver83)
#include "tst_driver83.moc"
