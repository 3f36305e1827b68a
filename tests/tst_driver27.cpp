// Volkswagen "general" with the Hiworld box: AA 55 frames in, records, signals and
// keys out, six-byte acknowledgements back. Every frame goes the module's way: the
// family check, its reply, then the driver's walk and parser.

#include <QSignalSpy>
#include <QtTest>
#include <functional>

#include "canbus27/canbus27.h"
#include "datasavecontrol.h"
#include "driverharness.h"
#include "recordcheck.h"
#include "framefamily.h"

using canbus::FrameFamily;

namespace {

constexpr int kId = 27;

// AA 55 len type data.. cs, the length counting the data bytes.
QByteArray frame27(quint8 type, const QByteArray& data)
{
    QByteArray f("\xAA\x55", 2);
    f.append(char(data.size())).append(char(type)).append(data).append('\0');
    canbus::writeChecksum(FrameFamily::StartAA55, f);
    return f;
}

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(char(v));
    return out;
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

QString str(int v) { return QString::number(v); }

// Keyboard numbers of the head-unit codes in this vehicle's key table.
struct KeyCase { int value; int keyboard; };
constexpr KeyCase kKeyboard[] = {
    {1, 166}, {2, 167}, {3, 149}, {5, 347}, {6, 351}, {8, 232}, {9, 233}, {10, 172}, {15, 344},
    {4, 0}, {7, 0}, {11, 0}, {12, 0}, {13, 0}, {14, 0}, {16, 0}, {255, 0},
};

using Events = QList<int>;   // keyboard number, pressed, keyboard number, pressed, ...

Events keyEvents(const DriverHarness& h) { return h.keyEvents(); }

// All the driver's change signals, so that a test can say "nothing else moved".
struct Spies
{
    explicit Spies(QObject* d)
        : air(d, SIGNAL(airConditionerDataChanged())), doors(d, SIGNAL(cardoorDataChanged())),
          body(d, SIGNAL(carbodyDataChanged())), radar(d, SIGNAL(radarDataChanged())),
          speed(d, SIGNAL(speedDataChanged(int,QString))),
          outdoor(d, SIGNAL(outdoorTemperatureChanged(QString,int))),
          steering(d, SIGNAL(trajectoryDataChanged(int,int,bool))), data(d, SIGNAL(dataChanged())),
          sent(d, SIGNAL(sendDataToCan(QByteArray)))
    {
    }
    int total() const
    {
        return air.count() + doors.count() + body.count() + radar.count() + speed.count()
            + outdoor.count() + steering.count() + data.count() + sent.count();
    }
    QSignalSpy air, doors, body, radar, speed, outdoor, steering, data, sent;
};

} // namespace

class TestDriver27 : public QObject
{
    Q_OBJECT

private slots:
    void initialState();
    void connectAndDisconnectForms();
    void acknowledgements_data();
    void acknowledgements();
    void walkKeepsAnIncompleteTail();

    void climate_data();
    void climate();
    void climateRepeatIsQuiet();
    void climateIsNotGated();
    void outdoorTemperature_data();
    void outdoorTemperature();
    void doors_data();
    void doors();

    void bodyFlagsAndSpeed();
    void keys_data();
    void keys();
    void steering_data();
    void steering();
    void radar_data();
    void radar();
    void radarIgnoredOutsideReverse();

    void bodyStatusSignalsOnTheDoorSignal();
    void mileage();
    void infoAndVersion();
    void unknownType();
    void shortFrames_data();
    void shortFrames();
};

void TestDriver27::initialState()
{
    DriverHarness h(kId);
    QVERIFY(qobject_cast<Canbus27Obj*>(h.driver()));
    QCOMPARE(h.driver()->canbusId(), kId);
    QVERIFY(h.manager()->hadReverseLine());
    const AirData& a = *h.driver()->getAirData();
    compareFields(a,
                  {"airOnOff=0", "airAC=0", "airAuto=0", "airSync=0", "airInnerLoop=0",
                   "airDefrostFront=0", "airDefrostRear=0", "airWindUpLeft=0",
                   "airWindFrontLeft=0", "airWindDownLeft=0", "airWindSpeedLeft=0",
                   "airWindUpRight=0", "airWindFrontRight=0", "airWindDownRight=0",
                   "airWindSpeedRight=0", "tempLeftVisible=1", "tempRightVisible=1",
                   "seatHotVisible=1",
                   // what this vehicle lacks stays hidden
                   "airDual=255", "airOuterLoop=255", "airAutoLoop=255", "airAcMax=255"});
    QCOMPARE(int(a.airShowFlag), 0);
    QVERIFY(h.driver()->getDataInfo().canConvert<Data27Info>());
}

void TestDriver27::connectAndDisconnectForms()
{
    // No handshake: the manager sends one empty frame and starts no retry.
    DriverHarness h(kId, true);
    QCOMPARE(h.sentFrames(), QList<QByteArray>{QByteArray()});
    int interval = -1;
    QByteArray frame;
    QVERIFY(h.driver()->needSendConnect(interval, frame));
    QCOMPARE(interval, -1);
    QVERIFY(frame.isEmpty());

    // The version frame is the box's answer.
    QCOMPARE(h.feed(frame27(0xF0, bytes({0x01}))), 0);
    QVERIFY(h.driver()->isConnectedState());
    QVERIFY(!h.driver()->needSendConnect(interval, frame));

    QVERIFY(h.driver()->needSendDisconnect(frame));
    QVERIFY(frame.isEmpty());
    QVERIFY(!h.driver()->isConnectedState());
}

void TestDriver27::acknowledgements_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("result");
    QTest::addColumn<QByteArray>("reply");

    const QByteArray good = climateFrame({0x40, 0, 20, 20, 0, 0, 100, 0});
    QByteArray bad = good;
    bad[bad.size() - 1] = char(bad.at(bad.size() - 1) + 1);
    QTest::addRow("%s", good.toHex().constData()) << good << 0 << bytes({0xAA, 0x55, 0x01, 0xFF, 0x73, 0x72});
    QTest::addRow("%s", bad.toHex().constData()) << bad << -1 << bytes({0xAA, 0x55, 0x01, 0xFE, 0x73, 0x71});
    const QByteArray version = frame27(0xF0, bytes({0x31}));
    QTest::addRow("%s", version.toHex().constData()) << version << 0 << bytes({0xAA, 0x55, 0x01, 0xFF, 0xF0, 0xEF});
    QTest::addRow("aa55") << bytes({0xAA, 0x55}) << 1 << QByteArray();
}

void TestDriver27::acknowledgements()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, result);
    QFETCH(QByteArray, reply);
    DriverHarness h(kId);
    Spies spies(h.driver());
    QCOMPARE(h.feed(frame), result);
    QCOMPARE(h.replies, reply.isEmpty() ? QList<QByteArray>{} : QList<QByteArray>{reply});
    if (result != 0)
        QCOMPARE(spies.total(), 0);   // a refused frame reaches no parser
}

void TestDriver27::walkKeepsAnIncompleteTail()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    const QByteArray a = frame27(0x47, bytes({1, 2}));
    const QByteArray b = frame27(0x47, bytes({3}));
    const QByteArray c = frame27(0x47, bytes({4, 5, 6}));
    // Two whole frames and the start of a third: the third waits for its bytes.
    QCOMPARE(h.manager()->setData(a + b + c.left(4)), a.size() + b.size());
    QCOMPARE(spies.data.count(), 2);
    QCOMPARE(h.driver()->getDataInfo().value<Data27Info>().infoPayload, bytes({3}));
}

// ---- climate frame 0x73 -------------------------------------------------------------

void TestDriver27::climate_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("expected");

    auto row = [](const QByteArray& f, bool rhd, const QStringList& expected) {
        QTest::addRow("%s%s", f.toHex().constData(), rhd ? " rhd" : "") << f << rhd << expected;
    };
    row(climateFrame({0x58, 0, 0, 0, 0, 0, 0, 0}), false,
        {"airPower=1", "airOnOff=1", "airInnerLoop=1", "airOuterLoop=0", "airAutoLoop=0",
         "airAuto=1", "airDual=0", "airAcMax=0", "airAutoStrong=0", "id=27",
         "airShowFlag=0"});
    row(climateFrame({0x00, 0, 0, 0, 0, 0, 0, 0}), false,
        {"airPower=0", "airOnOff=0", "airOuterLoop=1", "airInnerLoop=0", "airAutoLoop=0"});
    row(climateFrame({0x20, 0, 0, 0, 0, 0, 0, 0}), false,
        {"airOuterLoop=0", "airInnerLoop=0", "airAutoLoop=0"});
    row(climateFrame({0x37, 0, 0, 0, 0, 0, 0, 0}), false,
        {"airAutoLoop=1", "airInnerLoop=0", "airOuterLoop=0", "airDual=1", "airAcMax=1",
         "airAutoStrong=1", "airAuto=0"});
    row(climateFrame({0, 0x7E, 0, 0, 0, 0, 0, 0}), false,
        {"airAC=1", "airDefrostRear=1", "airDefrostFront=1", "seatHotRight=3",
         "seatHotLeft=2", "seatHotVisible=1", "rawFrame=7e"});
    row(climateFrame({0, 0xA1, 0, 0, 0, 0, 0, 0}), false,
        {"airAC=0", "airDefrostRear=1", "airDefrostFront=0", "seatHotLeft=1", "seatHotRight=0",
         "rawFrame=a1"});
    // set points: 0 unused, 1 low, 255 high, 18..26 whole degrees, the rest blank
    row(climateFrame({0, 0, 20, 255, 0, 0, 0, 0}), false,
        {"tempLeftVisible=1", "tempLeft=20", "tempLeftLow=0", "tempLeftHigh=0",
         "tempRightVisible=1", "tempRightHigh=1", "tempRightLow=0", "tempRight=",
         "tempLeftFahrenheit=0", "tempRightFahrenheit=0"});
    row(climateFrame({0, 0, 1, 0, 0, 0, 0, 0}), false,
        {"tempLeftLow=1", "tempLeft=", "tempRightVisible=0", "tempRight="});
    row(climateFrame({0, 0, 18, 26, 0, 0, 0, 0}), false, {"tempLeft=18", "tempRight=26"});
    row(climateFrame({0, 0, 17, 27, 0, 0, 0, 0}), false,
        {"tempLeftVisible=1", "tempLeft=", "tempLeftLow=0", "tempLeftHigh=0",
         "tempRightVisible=1", "tempRight=", "tempRightLow=0", "tempRightHigh=0"});
    row(climateFrame({0, 0, 20, 22, 0, 0, 0, 0}), true, {"tempLeft=22", "tempRight=20"});
    row(climateFrame({0, 0, 1, 255, 0, 0, 0, 0}), true, {"tempLeftHigh=1", "tempRightLow=1"});
    // air direction and fan, the fan clamped at 7
    row(climateFrame({0, 0, 0, 0, 0x75, 0x0F, 0, 0}), false,
        {"airWindDownLeft=1", "airWindFrontLeft=1", "airWindUpLeft=1", "airWindSpeedLeft=5",
         "airWindDownRight=0", "airWindFrontRight=0", "airWindUpRight=0",
         "airWindSpeedRight=7"});
    row(climateFrame({0, 0, 0, 0, 0x28, 0x47, 0, 0}), false,
        {"airWindDownLeft=0", "airWindFrontLeft=1", "airWindUpLeft=0", "airWindSpeedLeft=7",
         "airWindDownRight=1", "airWindSpeedRight=7"});
    row(climateFrame({0, 0, 0, 0, 0x18, 0x06, 0, 0}), false,
        {"airWindUpLeft=1", "airWindSpeedLeft=7", "airWindSpeedRight=6"});
    // this frame carries no sync byte: the control disappears once the frame is taken
    row(climateFrame({0x40, 0, 0, 0, 0, 0, 0, 0}), false, {"airSync=255"});
}

void TestDriver27::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.manager()->setRightDriver(rightDriver);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(air.count(), 1);
    compareFields(*h.driver()->getAirData(), expected);
}

void TestDriver27::climateRepeatIsQuiet()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    const QByteArray f = climateFrame({0x58, 0x41, 20, 21, 0x13, 0x13, 120, 0xC0});
    h.feed(f);
    QCOMPARE(spies.air.count(), 1);
    QCOMPARE(spies.doors.count(), 1);
    QCOMPARE(spies.outdoor.count(), 1);
    QCOMPARE(spies.body.count(), 1);
    h.feed(f);
    QCOMPARE(spies.total(), 4);
    // A change of one set point alone is news again.
    h.feed(climateFrame({0x58, 0x41, 20, 22, 0x13, 0x13, 120, 0xC0}));
    QCOMPARE(spies.air.count(), 2);
    QCOMPARE(spies.total(), 5);
}

void TestDriver27::climateIsNotGated()
{
    DriverHarness h(kId);
    h.manager()->setPowerOffState();
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    h.feed(climateFrame({0x40, 0, 0, 0, 0, 0, 0, 0x40}));
    QCOMPARE(air.count(), 1);
    QCOMPARE(doors.count(), 1);
}

void TestDriver27::outdoorTemperature_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("valid");
    QTest::addColumn<int>("tenths");

    // half degrees from -40, nothing below zero
    QTest::addRow("00") << 0 << QStringLiteral("0\u2103") << 0 << 0;
    QTest::addRow("3c") << 60 << QStringLiteral("0\u2103") << 1 << 0;
    QTest::addRow("50") << 80 << QStringLiteral("0\u2103") << 1 << 0;
    QTest::addRow("53") << 83 << QStringLiteral("1\u2103") << 1 << 10;
    QTest::addRow("64") << 100 << QStringLiteral("10\u2103") << 1 << 100;
    QTest::addRow("82") << 130 << QStringLiteral("25\u2103") << 1 << 250;
    QTest::addRow("ff") << 255 << QStringLiteral("87\u2103") << 1 << 870;
}

void TestDriver27::outdoorTemperature()
{
    QFETCH(int, raw);
    QFETCH(QString, text);
    QFETCH(int, valid);
    QFETCH(int, tenths);
    DriverHarness h(kId);
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.feed(climateFrame({0, 0, 0, 0, 0, 0, raw, 0}));
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(outdoor.at(0).at(0).toString(), text);
    QCOMPARE(outdoor.at(0).at(1).toInt(), 0);
    // The climate record taken after the outdoor update keeps its outdoor state.
    compareFields(*h.driver()->getAirData(),
                  {"outdoorTemp=" + text, "outdoorTempValid=" + str(valid), "outdoorTempUnit=0"});
    compareFields(*h.driver()->getCarbodyData(),
                  {"outdoorTempUnit=0", "outdoorTempTenths=" + str(tenths)});

    // A climate change that leaves the outdoor byte alone says nothing about it.
    h.feed(climateFrame({0x40, 0, 0, 0, 0, 0, raw, 0}));
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(h.driver()->getAirData()->outdoorTemp, text);
}

void TestDriver27::doors_data()
{
    QTest::addColumn<int>("open");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("expected");

    QTest::addRow("80") << 0x80 << false
                        << QStringList{"doorFrontRight=1", "doorFrontLeft=0"};
    QTest::addRow("40") << 0x40 << false
                        << QStringList{"doorFrontLeft=1", "doorFrontRight=0"};
    QTest::addRow("80 rhd") << 0x80 << true
                            << QStringList{"doorFrontLeft=1", "doorFrontRight=0"};
    QTest::addRow("40 rhd") << 0x40 << true
                            << QStringList{"doorFrontRight=1", "doorFrontLeft=0"};
    QTest::addRow("3c") << 0x3C << false
                        << QStringList{"doorRearLeft=1", "doorRearRight=1", "doorTrunk=1",
                                       "doorHood=1", "doorFrontLeft=0", "doorFrontRight=0"};
    QTest::addRow("24") << 0x24 << true
                        << QStringList{"doorRearLeft=1", "doorRearRight=0", "doorTrunk=0",
                                       "doorHood=1"};
}

void TestDriver27::doors()
{
    QFETCH(int, open);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.manager()->setRightDriver(rightDriver);
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    h.feed(climateFrame({0, 0, 0, 0, 0, 0, 0, open}));
    QCOMPARE(doors.count(), 1);
    compareFields(*h.driver()->getCardoorData(), expected);
    h.feed(climateFrame({0, 0, 0, 0, 0, 0, 0, 0}));
    QCOMPARE(doors.count(), 2);
    QVERIFY(!h.driver()->getCardoorData()->isWarningState());
}

// ---- body frame 0x72 ----------------------------------------------------------------

void TestDriver27::bodyFlagsAndSpeed()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    h.feed(body({{4, 0x08}, {5, 60}, {7, 0x33}}));
    compareFields(*h.driver()->getCarbodyData(),
                  {"bodyFlag1=0", "bodyFlag2=0", "bodyFlag31=51"});
    QCOMPARE(spies.speed.count(), 1);
    QCOMPARE(spies.speed.at(0).at(0).toInt(), 60);
    QCOMPARE(spies.speed.at(0).at(1).toString(), QStringLiteral("Km/h"));
    QCOMPARE(spies.body.count(), 1);
    QCOMPARE(spies.data.count(), 1);

    // The same payload: only the record notice that every body frame gives.
    h.feed(body({{4, 0x08}, {5, 60}, {7, 0x33}}));
    QCOMPARE(spies.speed.count(), 1);
    QCOMPARE(spies.body.count(), 1);
    QCOMPARE(spies.data.count(), 2);

    h.feed(body({{4, 0x04}, {5, 61}, {7, 0x33}}));
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag1=1", "bodyFlag2=1"});
    QCOMPARE(spies.speed.count(), 2);
    QCOMPARE(spies.body.count(), 2);
}

void TestDriver27::keys_data()
{
    QTest::addColumn<QList<int>>("keyBytes");   // byte 6 of successive body frames
    QTest::addColumn<Events>("events");

    QTest::addRow("press, release") << QList<int>{1, 0} << Events{166, 1, 166, 0};
    // The first frame differs in size from the empty start, so its 0 is a release of
    // key 0.
    QTest::addRow("release at start") << QList<int>{0} << Events{0, 0};
    QTest::addRow("held over frames") << QList<int>{5, 5, 5, 0} << Events{347, 1, 347, 0};
    QTest::addRow("release goes to the last key")
        << QList<int>{2, 3, 0} << Events{167, 1, 149, 1, 149, 0};
    QTest::addRow("key without a code") << QList<int>{4, 0} << Events{0, 1, 0, 0};
    QTest::addRow("repeated release") << QList<int>{9, 0, 0} << Events{233, 1, 233, 0};
}

void TestDriver27::keys()
{
    QFETCH(QList<int>, keyBytes);
    QFETCH(Events, events);
    DriverHarness h(kId);
    for (int k : keyBytes)
        h.feed(body({{6, k}}));
    QCOMPARE(keyEvents(h), events);
}

void TestDriver27::steering_data()
{
    QTest::addColumn<QList<int>>("pairs");     // bytes 8, 9 of successive frames
    QTest::addColumn<QList<int>>("angles");    // trajectory angles signalled

    QTest::addRow("straight at start") << QList<int>{0, 0} << QList<int>{0};
    QTest::addRow("left") << QList<int>{10, 0} << QList<int>{-10};
    QTest::addRow("left held") << QList<int>{10, 0, 10, 0} << QList<int>{-10};
    QTest::addRow("left then right") << QList<int>{10, 0, 0, 5} << QList<int>{-10, 5};
    QTest::addRow("back to straight") << QList<int>{0, 7, 0, 0} << QList<int>{7, 0};
    QTest::addRow("both readings") << QList<int>{3, 4} << QList<int>{-3, 4};
    QTest::addRow("one side changes") << QList<int>{3, 4, 3, 6} << QList<int>{-3, 4, 6};
    QTest::addRow("left 255") << QList<int>{255, 0} << QList<int>{-255};
}

void TestDriver27::steering()
{
    QFETCH(QList<int>, pairs);
    QFETCH(QList<int>, angles);
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    for (int i = 0; i + 1 < pairs.size(); i += 2)
        h.feed(body({{8, pairs.at(i)}, {9, pairs.at(i + 1)}}));
    QList<int> seen;
    for (const auto& args : steering) {
        seen << args.at(0).toInt();
        QCOMPARE(args.at(1).toInt(), 140);
        QCOMPARE(args.at(2).toBool(), true);
    }
    QCOMPARE(seen, angles);
}

void TestDriver27::radar_data()
{
    QTest::addColumn<QList<int>>("raw");    // bytes 10..17
    QTest::addColumn<QStringList>("expected");

    QTest::addRow("bars") << QList<int>{25, 50, 255, 0, 254, 100, 249, 1}
                          << QStringList{"radarRearLeft=1", "radarRearLeftMid=2",
                                         "radarRearRightMid=0", "radarRearRight=0",
                                         "radarFrontLeft=10", "radarFrontLeftMid=4",
                                         "radarFrontRightMid=9", "radarFrontRight=0",
                                         "radarOn=1"};
    QTest::addRow("nothing near") << QList<int>{255, 255, 255, 255, 255, 255, 255, 255}
                                  << QStringList{"radarRearLeft=0", "radarFrontLeftMid=0",
                                                 "radarOn=0"};
    QTest::addRow("below one bar") << QList<int>{24, 0, 0, 0, 0, 0, 0, 0}
                                   << QStringList{"radarRearLeft=0", "radarOn=0"};
}

void TestDriver27::radar()
{
    QFETCH(QList<int>, raw);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.manager()->setInReverse(true);
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(body({}));   // an earlier frame, so that only the radar bytes change
    QCOMPARE(radar.count(), 1);   // the first frame counts as changed throughout
    QByteArray data(14, '\0');
    for (int i = 0; i < 8; ++i)
        data[6 + i] = char(raw.at(i));
    const QByteArray f = frame27(0x72, data);
    h.feed(f);
    QCOMPARE(radar.count(), 2);
    compareFields(*h.driver()->getRadarData(), expected);
    h.feed(f);
    QCOMPARE(radar.count(), 2);
}

void TestDriver27::radarIgnoredOutsideReverse()
{
    DriverHarness h(kId);
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(body({{10, 100}, {14, 50}}));
    QCOMPARE(radar.count(), 0);
    QCOMPARE(int(h.driver()->getRadarData()->radarRearLeft), 0);

    // With the radar switched off in the factory settings, reverse doesn't help.
    DataSaveControl::saveFactoryData(QStringLiteral("CanRadarEnable"), false);
    h.manager()->setId(0, false);
    h.manager()->setId(kId, false);
    h.manager()->setInReverse(true);
    QSignalSpy radar2(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(body({{10, 100}, {14, 50}}));
    QCOMPARE(radar2.count(), 0);
}

// ---- other frames -------------------------------------------------------------------

void TestDriver27::bodyStatusSignalsOnTheDoorSignal()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    const QByteArray f = frame27(0x12, bytes({0, 0, 0, 0, 0, 0, 0xA0, 0, 12, 6}));
    h.feed(f);
    compareFields(*h.driver()->getCarbodyData(),
                  {"bodyByte26=1", "bodyWarning36=1", "bodyFlag38=0", "batteryVoltage=1206"});
    QCOMPARE(spies.doors.count(), 1);
    QCOMPARE(spies.total(), 1);
    h.feed(f);
    QCOMPARE(spies.total(), 1);
    h.feed(frame27(0x12, bytes({0, 0, 0, 0, 0, 0, 0x10, 0, 12, 7})));
    compareFields(*h.driver()->getCarbodyData(),
                  {"bodyByte26=0", "bodyWarning36=0", "bodyFlag38=1", "batteryVoltage=1207"});
    QCOMPARE(spies.doors.count(), 2);
}

void TestDriver27::mileage()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    const QByteArray payload = bytes({0x01, 0x02, 0x03, 0, 0, 0, 0, 0, 0x0B, 0xB8});
    h.feed(frame27(0x13, payload));
    compareFields(*h.driver()->getCarbodyData(),
                  {"odometer=66051", "engineSpeed=300000"});
    QCOMPARE(h.driver()->getDataInfo().value<Data27Info>().mileagePayload, payload);
    // once with the raw engine speed, once scaled
    QCOMPARE(spies.body.count(), 2);
    QCOMPARE(spies.data.count(), 1);

    // Engine stopped: the raw and scaled values agree, so a repeat is quiet.
    const QByteArray stopped = frame27(0x13, bytes({0x01, 0x02, 0x04, 0, 0, 0, 0, 0, 0, 0}));
    h.feed(stopped);
    QCOMPARE(spies.body.count(), 3);
    h.feed(stopped);
    QCOMPARE(spies.body.count(), 3);
    QCOMPARE(h.driver()->getCarbodyData()->odometer, 66052);
}

void TestDriver27::infoAndVersion()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    h.feed(frame27(0x47, bytes({9, 8, 7})));
    QCOMPARE(spies.data.count(), 1);
    h.feed(frame27(0xF0, QByteArray("HW-VW 1.2")));
    QCOMPARE(spies.total(), 1);   // the version arrives silently
    const Data27Info info = h.driver()->getDataInfo().value<Data27Info>();
    QCOMPARE(info.infoPayload, bytes({9, 8, 7}));
    QCOMPARE(info.versionPayload, QByteArray("HW-VW 1.2"));
    QVERIFY(info.unusedPayload.isEmpty());
    QVERIFY(info.spare.isEmpty());
    QVERIFY(h.driver()->isConnectedState());
}

void TestDriver27::unknownType()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    const QByteArray f = frame27(0x55, bytes({1, 2, 3}));
    QCOMPARE(h.feed(f), 0);
    QCOMPARE(h.driver()->checkProtocolData(f), 0);
    QCOMPARE(spies.total(), 0);
    QVERIFY(!h.driver()->isConnectedState());
}

void TestDriver27::shortFrames_data()
{
    QTest::addColumn<QByteArray>("frame");
    // Every type with fewer data bytes than it is read to, down to one.
    const struct { int type; int dataBytes; } need[] = {
        {0x12, 10}, {0x13, 10}, {0x72, 14}, {0x73, 8},
    };
    for (const auto& n : need) {
        for (int size = 1; size < n.dataBytes; ++size) {
            const QByteArray f = frame27(quint8(n.type), QByteArray(size, char(0xFF)));
            QTest::addRow("%s", f.toHex().constData()) << f;
        }
    }
}

void TestDriver27::shortFrames()
{
    QFETCH(QByteArray, frame);
    DriverHarness h(kId);
    h.manager()->setInReverse(true);
    Spies spies(h.driver());
    const AirData airBefore = *h.driver()->getAirData();
    const CarbodyData bodyBefore = *h.driver()->getCarbodyData();
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(h.driver()->checkProtocolData(frame), 1);
    QCOMPARE(spies.total(), 0);
    QVERIFY(h.keys().isEmpty());
    QVERIFY(h.driver()->getAirData()->compare(airBefore));
    QVERIFY(h.driver()->getCarbodyData()->compare(bodyBefore));
}

QTEST_MAIN(TestDriver27)
#include "tst_driver27.moc"
