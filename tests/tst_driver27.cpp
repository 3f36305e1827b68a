// Volkswagen "general" with the Hiworld box: AA 55 frames in, records, signals and keys
// out. Every frame goes the module's way: the family check, then the walk and parser.

#include <QtTest>

#include "canbus27/canbus27.h"
#include "datasavecontrol.h"
#include "drivercheck.h"
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

Data27Info info(const DriverHarness& h) { return infoOf<Data27Info>(h); }

using Events = QList<int>;   // keyboard number, pressed, keyboard number, pressed, ...
using Frames = QList<QByteArray>;

// "name=value" of the climate record, else the doors', else the body's.
QStringList fields(const DriverHarness& h, const QStringList& expected)
{
    QStringList out;
    for (const QString& item : expected) {
        const QString name = item.section('=', 0, 0);
        QVariant v;
        const CanbusInterface* d = h.driver();
        const bool found = canbus::readRecordField(*d->getAirData(), name, &v)
            || canbus::readRecordField(*d->getCardoorData(), name, &v)
            || canbus::readRecordField(*d->getCarbodyData(), name, &v);
        out << name + '=' + (found ? fieldText(v) : QStringLiteral("?"));
    }
    return out;
}

} // namespace

class TestDriver27 : public QObject
{
    Q_OBJECT

private slots:
    void startAndVersion();
    void climate_data();
    void climate();

    void bodyFlagsAndSpeed();
    void keysAndSteering_data();
    void keysAndSteering();
    void radar();

    void bodyStatusAndMileage();
    void shortFrames_data();
    void shortFrames();
};

void TestDriver27::startAndVersion()
{
    // No handshake: the manager sends one empty frame and starts no retry.
    DriverHarness h(kId, true);
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
    QTest::addColumn<QStringList>("expected");   // fields of the climate, door or body record

    auto row = [](std::initializer_list<int> data, bool rhd, const QStringList& expected) {
        const QByteArray f = climateFrame(data);
        QTest::addRow("%s%s", f.toHex().constData(), rhd ? " rhd" : "") << f << rhd << expected;
    };
    // Byte 4: power, loop in bits 5..4, auto, dual, max, strong; byte 5: A/C, defrosts, seats;
    // 6, 7: set points (1 low, 255 high, 18..26 degrees, 0 unused, the rest blank); 8, 9:
    // direction in bits 6..4 and fan clamped at 7; 10: outdoor in half degrees from -40, truncated,
    // nothing below zero, 0 no reading; 11: doors, the front pair following the driver's side.
    // The frame carries no sync byte: that control disappears once a frame is taken.
    row({0x58, 0x7E, 18, 255, 0x58, 0x6F, 83, 0xA8}, false, {"airPower=1", "airOnOff=1", "airInnerLoop=1",
        "airOuterLoop=0", "airAutoLoop=0", "airAuto=1", "airDual=0", "airAcMax=0", "airAutoStrong=0", "airSync=255",
        "airAC=1", "airDefrostRear=1", "airDefrostFront=1", "seatHotRight=3", "seatHotLeft=2", "rawFrame=7e",
        "tempLeft=18", "tempLeftLow=0", "tempLeftHigh=0", "tempRightHigh=1", "tempRightLow=0", "tempRight=",
        "airWindDownLeft=1", "airWindFrontLeft=0", "airWindUpLeft=1", "airWindSpeedLeft=7", "airWindDownRight=1",
        "airWindFrontRight=1", "airWindUpRight=0", "airWindSpeedRight=7", "outdoorTemp=1\u2103",
        "outdoorTempValid=1", "outdoorTempTenths=10", "doorFrontRight=1", "doorFrontLeft=0", "doorRearLeft=1",
        "doorRearRight=0", "doorTrunk=1", "doorHood=0"});
    row({0x02, 0xA1, 1, 26, 0x65, 0x56, 0, 0}, false, {"airPower=0", "airOnOff=0", "airOuterLoop=1",
        "airInnerLoop=0", "airAuto=0", "airDual=0", "airAcMax=1", "airAutoStrong=0", "airAC=0", "airDefrostRear=1", "airDefrostFront=0", "seatHotLeft=1", "seatHotRight=0",
        "rawFrame=a1", "tempLeftLow=1", "tempLeft=", "tempRight=26", "airWindDownLeft=1", "airWindFrontLeft=1",
        "airWindUpLeft=0", "airWindSpeedLeft=5", "airWindDownRight=1", "airWindFrontRight=0", "airWindUpRight=1",
        "airWindSpeedRight=6", "outdoorTemp=0\u2103", "outdoorTempValid=0", "outdoorTempTenths=0"});
    row({0x20, 0, 17, 27, 0, 0, 60, 0}, false, {"airOuterLoop=0", "airInnerLoop=0", "airAutoLoop=0",
        "tempLeftVisible=1", "tempLeft=", "tempLeftLow=0", "tempLeftHigh=0", "tempRight=", "tempRightHigh=0",
        "outdoorTemp=0\u2103", "outdoorTempValid=1", "outdoorTempUnit=0"});
    row({0x35, 0, 0, 0, 0, 0, 0, 0}, false,
        {"airAutoLoop=1", "airInnerLoop=0", "airDual=1", "airAcMax=0", "airAutoStrong=1", "airAuto=0"});
    row({0, 0, 20, 0, 0, 0, 0, 0x94}, true, {"tempLeftVisible=0", "tempRight=20", "tempRightVisible=1",
        "doorFrontLeft=1", "doorFrontRight=0", "doorRearLeft=0", "doorRearRight=1", "doorTrunk=0", "doorHood=1"});
}

void TestDriver27::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    QFETCH(bool, rightDriver);
    h.manager()->setRightDriver(rightDriver);
    h.manager()->setPowerOffState();   // neither record is gated on power
    h.watchActivity();
    QCOMPARE(h.feed(frame), 0);
    QVERIFY(h.activity() > 0);
    QCOMPARE(fields(h, expected), expected);
    // The same frame again is no news: the record taken keeps the outdoor state.
    h.watchActivity();
    h.feed(frame);
    QCOMPARE(h.activity(), 0);
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

void TestDriver27::keysAndSteering_data()
{
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<Events>("events");
    QTest::addColumn<QList<int>>("angles");   // trajectory angles signalled
    auto keys = [](QList<int> values) {   // byte 6 of successive body frames
        Frames out;
        for (int v : values)
            out << body({{6, v}});
        return out;
    };
    // The first frame differs in size from the empty start: its 0s are a release of key 0
    // and straight ahead.
    QTest::addRow("release at start") << keys({0}) << Events{0, 0} << QList<int>{0};
    QTest::addRow("held over frames") << keys({5, 5, 5, 0}) << Events{347, 1, 347, 0} << QList<int>{0};
    QTest::addRow("release goes to the last key") << keys({1, 3, 0}) << Events{166, 1, 149, 1, 149, 0} << QList<int>{0};
    QTest::addRow("key without a code") << keys({4, 0}) << Events{0, 1, 0, 0} << QList<int>{0};
    // Bytes 8 and 9: left and right, a new reading only.
    QTest::addRow("one side changes") << Frames{body({{8, 3}, {9, 4}}), body({{8, 3}, {9, 6}})} << Events{0, 0}
                                      << QList<int>{-3, 4, 6};
    QTest::addRow("back to straight") << Frames{body({{9, 7}}), body({})} << Events{0, 0} << QList<int>{7, 0};
    QTest::addRow("left 255 held") << Frames{body({{8, 255}}), body({{8, 255}})} << Events{0, 0} << QList<int>{-255};
}

void TestDriver27::keysAndSteering()
{
    QFETCH(Frames, frames);
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    for (const QByteArray& f : frames)
        h.feed(f);
    QList<int> seen;
    for (const auto& args : steering) {
        seen << args.at(0).toInt();
        QCOMPARE(args.mid(1), (QVariantList{140, true}));
    }
    QTEST(h.keyEvents(), "events");
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
    h.feed(f);
    QCOMPARE(radar.count(), 2);   // a repeat is quiet
    compareFields(*h.driver()->getRadarData(), {"radarRearLeft=1", "radarRearLeftMid=2", "radarRearRightMid=0",
        "radarRearRight=0", "radarFrontLeft=10", "radarFrontLeftMid=4", "radarFrontRightMid=9", "radarFrontRight=0",
        "radarOn=1"});

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

    // The raw engine speed is signalled, then the scaled one.
    const QByteArray payload = bytes({0x01, 0x02, 0x03, 0, 0, 0, 0, 0, 0x0B, 0xB8});
    QCOMPARE(signalCounts(h, {"carbodyDataChanged()", "dataChanged()"}, {frame27(0x13, payload)}),
             (QStringList{"carbodyDataChanged x2", "dataChanged x1"}));
    compareFields(*h.driver()->getCarbodyData(), {"odometer=66051", "engineSpeed=300000"});
    QCOMPARE(info(h).mileagePayload, payload);
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
