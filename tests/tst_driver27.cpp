// Volkswagen "general" with the Hiworld box: AA 55 frames in, records, signals and keys
// out. Every frame goes the module's way: the family check, then the walk and parser.

#include <QtTest>

#include "canbus27/canbus27.h"
#include "datasavecontrol.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::bytes;

namespace {

constexpr int kId = 27;

QByteArray frame27(int type, const QByteArray& data)
{
    return canbus::buildFrame(canbus::FrameFamily::StartAA55, quint8(type), data);
}

// Data bytes 4..11 of a climate frame.
QByteArray climateFrame(std::initializer_list<int> data) { return frame27(0x73, bytes(data)); }

// Data bytes 4..17 of a body frame; the ones not given are 0.
QByteArray body(std::initializer_list<std::pair<int, int>> set)
{
    QByteArray data(14, '\0');
    for (const auto& byteValue : set)
        data[byteValue.first - 4] = char(byteValue.second);
    return frame27(0x72, data);
}

Data27Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data27Info>(); }

using Events = QList<int>;   // keyboard number, pressed, keyboard number, pressed, ...

} // namespace

class TestDriver27 : public QObject
{
    Q_OBJECT

private slots:
    void startAndVersion();
    void climate_data();
    void climate();
    void outdoorTemperature_data();
    void outdoorTemperature();

    void bodyFlagsAndSpeed();
    void keys_data();
    void keys();
    void steering_data();
    void steering();
    void radar();

    void bodyStatusAndMileage();
    void shortFrames_data();
    void shortFrames();
};

void TestDriver27::startAndVersion()
{
    // No handshake: the manager sends one empty frame and starts no retry.
    DriverHarness h(kId, true);
    QVERIFY(qobject_cast<Canbus27Obj*>(h.driver()));
    QVERIFY(h.manager()->hadReverseLine());
    QCOMPARE(h.sentFrames(), QList<QByteArray>{QByteArray()});
    // The controls this vehicle has are shown from the start, the others stay hidden.
    compareFields(*h.driver()->getAirData(), {"airOnOff=0", "airDefrostRear=0", "airWindSpeedRight=0",
                                              "airShowFlag=0", "seatHotVisible=1", "airDual=255"});
    h.watchActivity();
    QCOMPARE(h.driver()->checkProtocolData(frame27(0x55, bytes({1}))), 0);   // unknown: no effect
    h.feed(frame27(0x47, bytes({9, 8, 7})));
    QCOMPARE(h.activity(), 1);   // dataChanged
    QVERIFY(!h.driver()->isConnectedState());
    // The version frame is the box's answer; it arrives silently.
    h.feed(frame27(0xF0, QByteArray("HW-VW 1.2")));
    QCOMPARE(h.activity(), 1);
    QVERIFY(h.driver()->isConnectedState());
    QCOMPARE(info(h).infoPayload, bytes({9, 8, 7}));
    QCOMPARE(info(h).versionPayload, QByteArray("HW-VW 1.2"));
    QByteArray frame;
    QVERIFY(h.driver()->needSendDisconnect(frame) && frame.isEmpty());
}


void TestDriver27::climate_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("expected");   // fields of the climate or the door record

    auto row = [](std::initializer_list<int> data, bool rhd, const QStringList& expected) {
        const QByteArray f = climateFrame(data);
        QTest::addRow("%s%s", f.toHex().constData(), rhd ? " rhd" : "") << f << rhd << expected;
    };
    // The frame carries no sync byte: that control disappears once a frame is taken.
    row({0x58, 0, 0, 0, 0, 0, 0, 0}, false, {"airPower=1", "airOnOff=1", "airInnerLoop=1", "airOuterLoop=0",
        "airAutoLoop=0", "airAuto=1", "airDual=0", "airAcMax=0", "airAutoStrong=0", "id=27", "airSync=255"});
    row({0x00, 0, 0, 0, 0, 0, 0, 0}, false, {"airPower=0", "airOnOff=0", "airOuterLoop=1", "airInnerLoop=0"});
    row({0x20, 0, 0, 0, 0, 0, 0, 0}, false, {"airOuterLoop=0", "airInnerLoop=0", "airAutoLoop=0"});
    row({0x37, 0, 0, 0, 0, 0, 0, 0}, false,
        {"airAutoLoop=1", "airInnerLoop=0", "airDual=1", "airAcMax=1", "airAutoStrong=1", "airAuto=0"});
    row({0, 0x7E, 0, 0, 0, 0, 0, 0}, false,
        {"airAC=1", "airDefrostRear=1", "airDefrostFront=1", "seatHotRight=3", "seatHotLeft=2", "rawFrame=7e"});
    row({0, 0xA1, 0, 0, 0, 0, 0, 0}, false,
        {"airAC=0", "airDefrostRear=1", "airDefrostFront=0", "seatHotLeft=1", "seatHotRight=0", "rawFrame=a1"});
    // set points: 0 unused, 1 low, 255 high, 18..26 whole degrees, the rest blank
    row({0, 0, 20, 255, 0, 0, 0, 0}, false,
        {"tempLeft=20", "tempLeftLow=0", "tempLeftHigh=0", "tempRightHigh=1", "tempRightLow=0", "tempRight="});
    row({0, 0, 1, 0, 0, 0, 0, 0}, false, {"tempLeftLow=1", "tempLeft=", "tempRightVisible=0"});
    row({0, 0, 18, 26, 0, 0, 0, 0}, false, {"tempLeft=18", "tempRight=26"});
    row({0, 0, 17, 27, 0, 0, 0, 0}, false,
        {"tempLeftVisible=1", "tempLeft=", "tempLeftLow=0", "tempLeftHigh=0", "tempRight=", "tempRightHigh=0"});
    row({0, 0, 20, 255, 0, 0, 0, 0}, true, {"tempLeftHigh=1", "tempLeft=", "tempRight=20"});
    // air direction in bits 6, 5, 4 and the fan in bits 3..0, clamped at 7
    row({0, 0, 0, 0, 0x58, 0x6F, 0, 0}, false,
        {"airWindDownLeft=1", "airWindFrontLeft=0", "airWindUpLeft=1", "airWindSpeedLeft=7",
         "airWindDownRight=1", "airWindFrontRight=1", "airWindUpRight=0", "airWindSpeedRight=7"});
    row({0, 0, 0, 0, 0x65, 0x56, 0, 0}, false,
        {"airWindDownLeft=1", "airWindFrontLeft=1", "airWindUpLeft=0", "airWindSpeedLeft=5",
         "airWindDownRight=1", "airWindFrontRight=0", "airWindUpRight=1", "airWindSpeedRight=6"});
    // doors: the front pair follows the driver's side
    row({0, 0, 0, 0, 0, 0, 0, 0x80}, false, {"doorFrontRight=1", "doorFrontLeft=0"});
    row({0, 0, 0, 0, 0, 0, 0, 0x80}, true, {"doorFrontLeft=1", "doorFrontRight=0"});
    row({0, 0, 0, 0, 0, 0, 0, 0x28}, false, {"doorRearLeft=1", "doorRearRight=0", "doorTrunk=1", "doorHood=0"});
    row({0, 0, 0, 0, 0, 0, 0, 0x14}, false, {"doorRearLeft=0", "doorRearRight=1", "doorTrunk=0", "doorHood=1"});
}

void TestDriver27::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.manager()->setRightDriver(rightDriver);
    h.manager()->setPowerOffState();   // neither record is gated on power
    h.watchActivity();
    QCOMPARE(h.feed(frame), 0);
    QVERIFY(h.activity() > 0);
    if (expected.first().startsWith(QLatin1String("door")))
        compareFields(*h.driver()->getCardoorData(), expected);
    else
        compareFields(*h.driver()->getAirData(), expected);
    // The same frame again is no news.
    h.watchActivity();
    h.feed(frame);
    QCOMPARE(h.activity(), 0);
}

void TestDriver27::outdoorTemperature_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("valid");

    // half degrees from -40, truncated, nothing below zero
    QTest::addRow("00") << 0 << "0\u2103" << 0;
    QTest::addRow("3c") << 60 << "0\u2103" << 1;
    QTest::addRow("53") << 83 << "1\u2103" << 1;
    QTest::addRow("82") << 130 << "25\u2103" << 1;
}

void TestDriver27::outdoorTemperature()
{
    QFETCH(int, raw);
    QFETCH(QString, text);
    QFETCH(int, valid);
    DriverHarness h(kId);
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.feed(climateFrame({0, 0, 0, 0, 0, 0, raw, 0}));
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(outdoor.at(0), (QVariantList{text, 0}));
    compareFields(*h.driver()->getCarbodyData(),
                  {"outdoorTempUnit=0", "outdoorTempTenths=" + QString::number(text.chopped(1).toInt() * 10)});
    // A climate change that leaves the outdoor byte alone says nothing about it, and
    // the climate record taken keeps the outdoor state.
    h.feed(climateFrame({0x40, 0, 0, 0, 0, 0, raw, 0}));
    QCOMPARE(outdoor.count(), 1);
    compareFields(*h.driver()->getAirData(),
                  {"outdoorTemp=" + text, "outdoorTempValid=" + QString::number(valid), "outdoorTempUnit=0"});
}


void TestDriver27::bodyFlagsAndSpeed()
{
    DriverHarness h(kId);
    QSignalSpy speed(h.driver(), SIGNAL(speedDataChanged(int,QString)));
    QSignalSpy bodySignal(h.driver(), SIGNAL(carbodyDataChanged()));
    const QByteArray f = body({{4, 0x08}, {5, 60}, {7, 0x33}});
    h.feed(f);
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag1=0", "bodyFlag2=0", "bodyFlag31=51"});
    QCOMPARE(speed.takeFirst(), (QVariantList{60, QStringLiteral("Km/h")}));
    // The same payload: only the record notice that every body frame gives.
    h.watchActivity();
    h.feed(f);
    QCOMPARE(h.activity(), 1);
    h.feed(body({{4, 0x04}, {5, 61}, {7, 0x33}}));
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag1=1", "bodyFlag2=1"});
    QVERIFY(speed.count() == 1 && bodySignal.count() == 2);
}

void TestDriver27::keys_data()
{
    QTest::addColumn<QList<int>>("keyBytes");   // byte 6 of successive body frames
    QTest::addColumn<Events>("events");

    // The first frame differs in size from the empty start, so its 0 is a release of key 0.
    QTest::addRow("release at start") << QList<int>{0} << Events{0, 0};
    QTest::addRow("held over frames") << QList<int>{5, 5, 5, 0} << Events{347, 1, 347, 0};
    QTest::addRow("release goes to the last key") << QList<int>{1, 3, 0} << Events{166, 1, 149, 1, 149, 0};
    QTest::addRow("key without a code") << QList<int>{4, 0} << Events{0, 1, 0, 0};
}

void TestDriver27::keys()
{
    QFETCH(QList<int>, keyBytes);
    DriverHarness h(kId);
    for (int k : keyBytes)
        h.feed(body({{6, k}}));
    QTEST(h.keyEvents(), "events");
}

void TestDriver27::steering_data()
{
    QTest::addColumn<QList<int>>("pairs");     // bytes 8, 9 of successive frames
    QTest::addColumn<QList<int>>("angles");    // trajectory angles signalled

    QTest::addRow("straight at start") << QList<int>{0, 0} << QList<int>{0};
    QTest::addRow("left held") << QList<int>{10, 0, 10, 0} << QList<int>{-10};
    QTest::addRow("left then right") << QList<int>{10, 0, 0, 5} << QList<int>{-10, 5};
    QTest::addRow("back to straight") << QList<int>{0, 7, 0, 0} << QList<int>{7, 0};
    QTest::addRow("one side changes") << QList<int>{3, 4, 3, 6} << QList<int>{-3, 4, 6};
    QTest::addRow("left 255") << QList<int>{255, 0} << QList<int>{-255};
}

void TestDriver27::steering()
{
    QFETCH(QList<int>, pairs);
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    for (int i = 0; i + 1 < pairs.size(); i += 2)
        h.feed(body({{8, pairs.at(i)}, {9, pairs.at(i + 1)}}));
    QList<int> seen;
    for (const auto& args : steering) {
        seen << args.at(0).toInt();
        QCOMPARE(args.mid(1), (QVariantList{140, true}));
    }
    QTEST(seen, "angles");
}

void TestDriver27::radar()
{
    DriverHarness h(kId);
    h.manager()->setInReverse(true);
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(body({}));
    QCOMPARE(radar.count(), 1);   // the first frame counts as changed throughout
    // Bytes 10..17, rear then front, each from the left: 25 units a bar, 255 none.
    const QByteArray f = body({{10, 25}, {11, 50}, {12, 255}, {14, 254}, {15, 100}, {16, 249}, {17, 1}});
    h.feed(f);
    QCOMPARE(radar.count(), 2);
    compareFields(*h.driver()->getRadarData(),
                  {"radarRearLeft=1", "radarRearLeftMid=2", "radarRearRightMid=0", "radarRearRight=0",
                   "radarFrontLeft=10", "radarFrontLeftMid=4", "radarFrontRightMid=9",
                   "radarFrontRight=0", "radarOn=1"});
    h.feed(f);
    QCOMPARE(radar.count(), 2);

    // Out of reverse the radar bytes are ignored; so they are with the radar switched
    // off in the factory settings.
    h.manager()->setInReverse(false);
    h.feed(body({{10, 100}, {14, 50}}));
    QCOMPARE(radar.count(), 3);   // the one of leaving reverse
    QCOMPARE(int(h.driver()->getRadarData()->radarRearLeft), 0);
    DataSaveControl::saveFactoryData(QStringLiteral("CanRadarEnable"), false);
    h.manager()->setId(0, false);
    h.manager()->setId(kId, false);
    h.manager()->setInReverse(true);
    QSignalSpy radarOff(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(body({{10, 100}, {14, 50}}));
    QCOMPARE(radarOff.count(), 0);
}


void TestDriver27::bodyStatusAndMileage()
{
    // The body status has always been announced on the door signal, and on that alone.
    DriverHarness h(kId);
    h.watchActivity();
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    const QByteArray f = frame27(0x12, bytes({0, 0, 0, 0, 0, 0, 0xA0, 0, 12, 6}));
    h.feed(f);
    h.feed(f);
    compareFields(*h.driver()->getCarbodyData(),
                  {"bodyByte26=1", "bodyWarning36=1", "bodyFlag38=0", "batteryVoltage=1206"});
    QVERIFY(h.activity() == 1 && doors.count() == 1);
    h.feed(frame27(0x12, bytes({0, 0, 0, 0, 0, 0, 0x10, 0, 12, 7})));
    compareFields(*h.driver()->getCarbodyData(),
                  {"bodyByte26=0", "bodyWarning36=0", "bodyFlag38=1", "batteryVoltage=1207"});

    QSignalSpy bodySignal(h.driver(), SIGNAL(carbodyDataChanged()));
    QSignalSpy data(h.driver(), SIGNAL(dataChanged()));
    const QByteArray payload = bytes({0x01, 0x02, 0x03, 0, 0, 0, 0, 0, 0x0B, 0xB8});
    h.feed(frame27(0x13, payload));
    compareFields(*h.driver()->getCarbodyData(), {"odometer=66051", "engineSpeed=300000"});
    QCOMPARE(info(h).mileagePayload, payload);
    QVERIFY(bodySignal.count() == 2 && data.count() == 1);   // raw engine speed, then scaled

    // Engine stopped: the raw and scaled values agree, so a repeat is quiet.
    const QByteArray stopped = frame27(0x13, bytes({0x01, 0x02, 0x04, 0, 0, 0, 0, 0, 0, 0}));
    h.feed(stopped);
    h.feed(stopped);
    QCOMPARE(bodySignal.count(), 3);
    QCOMPARE(h.driver()->getCarbodyData()->odometer, 66052);
}

void TestDriver27::shortFrames_data()
{
    QTest::addColumn<QByteArray>("frame");
    // Each type with one data byte, and with one byte fewer than it is read to.
    const struct { int type; int dataBytes; } need[] = {{0x12, 10}, {0x13, 10}, {0x72, 14}, {0x73, 8}};
    for (const auto& n : need) {
        for (int size : {1, n.dataBytes - 1}) {
            const QByteArray f = frame27(n.type, QByteArray(size, char(0xFF)));
            QTest::addRow("%s", f.toHex().constData()) << f;
        }
    }
}

void TestDriver27::shortFrames()
{
    QFETCH(QByteArray, frame);
    DriverHarness h(kId);
    h.manager()->setInReverse(true);
    h.watchActivity();
    const CarbodyData bodyBefore = *h.driver()->getCarbodyData();
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(h.driver()->checkProtocolData(frame), 1);
    QCOMPARE(h.activity(), 0);
    QVERIFY(h.driver()->getCarbodyData()->compare(bodyBefore));
}

QTEST_MAIN(TestDriver27)
#include "tst_driver27.moc"
