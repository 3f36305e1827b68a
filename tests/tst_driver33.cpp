// GAC Trumpchi with the RuiZiCheng box: 0x2E frames in, records, signals and keys
// out; climate buttons, seat keys, clock, sources, language, variant and touches in,
// frames out. Every frame goes the module's way: check, acknowledgement, walk, parser.

#include <QSignalSpy>
#include <QtTest>
#include <functional>

#include "canbus33/canbus33.h"
#include "datasavecontrol.h"
#include "driverharness.h"
#include "recordcheck.h"
#include "framebuilders.h"
#include "framefamily.h"

using canbus::FrameFamily;

namespace {

constexpr int kId = 33;

using namespace testframes;

Canbus33Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus33Obj*>(h.driver()); }
Data33Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data33Info>(); }

void setCarModel(DriverHarness& h, int model)
{
    Data33Info d = info(h);
    d.body.carModel = quint8(model);
    h.driver()->setDataInfo(QVariant::fromValue(d));
}


void compareAir(const AirData& a, const QStringList& expected) { compareFields(a, expected); }

using Keys = QList<QPair<int, int>>;   // keyboard number, pressed

// Keyboard numbers of the head-unit codes used below.
constexpr int kVolumeUp = 166;     // 0x1100025
constexpr int kVolumeDown = 167;   // 0x1100024
constexpr int kMute = 149;         // 0x1100023
constexpr int kPhone = 344;        // 0x1300055

} // namespace

class TestDriver33 : public QObject
{
    Q_OBJECT

private slots:
    void initialState();
    void handshake();
    void versionFrame();

    void frontClimate_data();
    void frontClimate();
    void frontClimateAppliesOnlyChangedBytes();
    void rightHandDriveSwapsSetPoints();
    void rearClimate_data();
    void rearClimate();

    void wheelKeys_data();
    void wheelKeys();
    void panelKeys_data();
    void panelKeys();

    void doorsAndBody();
    void radar_data();
    void radar();
    void leavingReverseKeepsRadar();
    void steering();

    void settings_data();
    void settings();
    void seatHeatingSetting();
    void chargingSchedule();
    void chargingDisplay_data();
    void chargingDisplay();
    void perceptionAndVehicleControl();
    void functionRecognition();
    void statusFrame_data();
    void statusFrame();

    void shortFrames_data();
    void shortFrames();

    void climateSlots_data();
    void climateSlots();
    void seatCommands_data();
    void seatCommands();
    void clock_data();
    void clock();
    void sourceReports_data();
    void sourceReports();
    void language_data();
    void language();
    void modelReport();
    void touch_data();
    void touch();
};

void TestDriver33::initialState()
{
    DriverHarness h(kId);
    QVERIFY(driver(h));
    QVERIFY(h.driver()->hadExInfo());
    QVERIFY(h.driver()->hadReverseLine());
    compareAir(*h.driver()->getAirData(),
               {"airOnOff=0", "airAC=0", "airDual=0", "airRearLock=0", "airAuto=0",
                "airInnerLoop=0", "airDefrostFront=0", "airDefrostRear=0", "airWindUpLeft=0",
                "airWindDownLeft=0", "airWindSpeedLeft=0", "airWindSpeedRight=0",
                "airShowFlag=1", "seatHotVisible=1",
                "airOuterLoop=255", "airAcMax=255"});
}

void TestDriver33::handshake()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, hex("2e8101017c"));
    // The first request at once, the second a moment later.
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0x90, {0x10, 0x00})});
    QTRY_COMPARE(h.sentFrames().size(), 2);
    QCOMPARE(h.sentFrames().at(1), frame(0x90, {0x30, 0x00}));

    // Any frame but the version leaves the box unconnected.
    h.feed(frame(0x14, {0x05}));
    QVERIFY(!h.driver()->isConnectedState());
    QVERIFY(!h.driver()->needSendDisconnect(out));

    h.feed(frame(0x30, {'V', '1', 0, 'x'}));
    h.clearSent();
    out.clear();
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QVERIFY(out.isEmpty());
    QCOMPARE(h.sentFrames().size(), 1);   // the requests go on
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x81, {0x00}));
}

void TestDriver33::versionFrame()
{
    DriverHarness h(kId);
    QSignalSpy version(h.driver(), SIGNAL(versionDataChanged(QString)));
    QCOMPARE(h.feed(frame(0x30, {'G', 'A', 'C', 0, 'z'})), 0);
    QCOMPARE(h.replies, QList<QByteArray>{hex("ff")});
    QVERIFY(h.driver()->isConnectedState());
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("GAC"));
    QCOMPARE(version.count(), 1);
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0x90, {0x10, 0x00})});
}

void TestDriver33::frontClimate_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("expected");

    auto row = [](std::initializer_list<int> d, const QStringList& e) {
        const QByteArray data = bytes(d);
        QTest::addRow("2e10%s", data.toHex().constData()) << data << e;
    };
    // Byte 4: inner loop, defrost both, feet, screen, AUTO, A/C.
    row({0x20, 0xFD, 0x43, 3, 5, 0}, {"airInnerLoop=1", "airOuterLoop=0", "airDefrostFront=1",
                                      "airDefrostRear=1", "airWindDownLeft=1", "airWindDownRight=1",
                                      "airWindUpLeft=1", "airWindUpRight=1", "airAuto=1", "airAC=1",
                                      "airDual=1", "airAcMax=0", "airWindSpeedLeft=3",
                                      "airWindSpeedRight=3", "airPower=1", "airOnOff=1",
                                      "tempLeft=18.5", "tempRight=19.0", "tempLeftFahrenheit=0"});
    // Fan 0 is off; the set-point ends; byte 3 alone sets the texts of unset zones.
    row({0x16, 0x00, 0x90, 1, 57, 0}, {"airPower=0", "airOnOff=0", "airAcMax=1", "airRearLock=1",
                                      "airOuterLoop=1", "tempLeftLow=1", "tempLeftHigh=0",
                                      "tempRightHigh=1", "tempRightLow=0", "tempLeft=22",
                                      "tempRight=22", "tempLeftFahrenheit=0"});
    // 2 and 56 lie outside the degrees: the texts stay as byte 3 left them.
    row({0x19, 0x00, 0x01, 2, 56, 0}, {"tempLeft=25", "tempRight=25", "tempLeftLow=0",
                                      "tempRightHigh=0", "tempLeftFahrenheit=0"});
    // Both set points 0: the zones keep byte 3's Fahrenheit mark. Rear defrost alone.
    row({0x19, 0x20, 0x01, 0, 0, 0}, {"tempLeftFahrenheit=255", "tempRightFahrenheit=255",
                                      "airDefrostRear=1", "airDefrostFront=0"});
    // The last degree and the formula's rounding: 4 is 18.7, 55 is 31.5.
    row({0x10, 0x00, 0x01, 4, 55, 0}, {"tempLeft=18.7", "tempRight=31.5"});
}

void TestDriver33::frontClimate()
{
    QFETCH(QByteArray, data);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QCOMPARE(h.feed(frame(0x10, data)), 0);
    compareAir(*h.driver()->getAirData(), expected);
    QCOMPARE(air.count(), 1);
    // The same frame again is no news.
    h.feed(frame(0x10, data));
    QCOMPARE(air.count(), 1);
}

void TestDriver33::frontClimateAppliesOnlyChangedBytes()
{
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(frame(0x10, {0x14, 0x00, 0x02, 5, 9, 0}));
    compareAir(*h.driver()->getAirData(), {"tempLeft=19.0", "tempRight=20.0"});
    // Only byte 3 changed: both texts become its plain number.
    h.feed(frame(0x10, {0x15, 0x00, 0x02, 5, 9, 0}));
    compareAir(*h.driver()->getAirData(), {"tempLeft=21", "tempRight=21", "airWindSpeedLeft=2"});
    // A change behind the known bytes still counts as a new frame.
    h.feed(frame(0x10, {0x15, 0x00, 0x02, 5, 9, 7}));
    QCOMPARE(air.count(), 3);
    compareAir(*h.driver()->getAirData(), {"tempLeft=21"});
}

void TestDriver33::rightHandDriveSwapsSetPoints()
{
    DriverHarness h(kId);
    h.driver()->setRightDriver(true);
    h.feed(frame(0x10, {0x14, 0x00, 0x01, 5, 57, 0}));
    compareAir(*h.driver()->getAirData(),
               {"tempLeftHigh=1", "tempRightLow=0", "tempRight=19.0", "tempLeft=20"});
}

void TestDriver33::rearClimate_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("expected");
    QTest::addRow("2e1102c502") << bytes({0xC5, 2})
                                << QStringList{"airRearSpare[2]=1", "airRearSpare[0]=1",
                                               "airRearSpare[3]=5", "airRearSpare[7]=5",
                                               "tempRearVisible=1", "tempRear=18.2",
                                               "tempRear2=18.2", "tempRearLow=0"};
    QTest::addRow("2e11020001") << bytes({0x00, 1})
                                << QStringList{"airRearSpare[2]=0", "tempRearLow=1",
                                               "tempRear=\u00ff"};
    QTest::addRow("2e11020039") << bytes({0x00, 57}) << QStringList{"tempRearHigh=1"};
    QTest::addRow("2e11020037") << bytes({0x00, 55}) << QStringList{"tempRear=31.5"};
}

void TestDriver33::rearClimate()
{
    QFETCH(QByteArray, data);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(frame(0x11, data));
    compareAir(*h.driver()->getAirData(), expected);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(air.count(), 0);
}

void TestDriver33::wheelKeys_data()
{
    QTest::addColumn<int>("carModel");
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<QList<QByteArray>>("sent");

    using L = QList<QByteArray>;
    QTest::addRow("2e12021401 then 2e12020000") << 0 << false << L{frame(0x12, {0x14, 1}), frame(0x12, {0, 0})}
                                  << Keys{{kVolumeUp, 1}, {kVolumeUp, 0}} << L{};
    QTest::addRow("2e12023201") << 0 << false << L{frame(0x12, {0x32, 1})} << Keys{{kPhone, 1}} << L{};
    // Numbers outside the table still reach the device, as key 0.
    QTest::addRow("2e12023301") << 0 << false << L{frame(0x12, {0x33, 1})} << Keys{{0, 1}} << L{};
    QTest::addRow("reverse 2e12021201 model 4") << 4 << true << L{frame(0x12, {0x12, 1})} << Keys{}
                                                << L{frame(0xA7, {0x01})};
    QTest::addRow("reverse 2e12021401 model 10") << 10 << true << L{frame(0x12, {0x14, 1})} << Keys{}
                                                 << L{frame(0xC7, {0x03})};
    QTest::addRow("reverse 2e12021501 model 0") << 0 << true << L{frame(0x12, {0x15, 1})} << Keys{}
                                                << L{frame(0xC9, {0x01, 0x03, 0, 0})};
    QTest::addRow("reverse 2e12021701 model 10") << 10 << true << L{frame(0x12, {0x17, 1})} << Keys{}
                                                 << L{frame(0x82, {0x01})};
    QTest::addRow("reverse 2e12023201 model 14") << 14 << true << L{frame(0x12, {0x32, 1})} << Keys{}
                                                 << L{frame(0x84, {0xFF})};
    // The release repeats the last camera key, so it goes to the box too.
    QTest::addRow("reverse 2e12021101 then 0000") << 2 << true << L{frame(0x12, {0x11, 1}), frame(0x12, {0, 0})}
                                                  << Keys{} << L{frame(0x84, {0x00}), frame(0x84, {0x00})};
    // Keys that aren't camera keys behave as outside reverse.
    QTest::addRow("reverse 2e12021601") << 4 << true << L{frame(0x12, {0x16, 1})} << Keys{{kMute, 1}} << L{};
}

void TestDriver33::wheelKeys()
{
    QFETCH(int, carModel);
    QFETCH(bool, reverse);
    QFETCH(QList<QByteArray>, frames);
    QFETCH(Keys, keys);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    setCarModel(h, carModel);
    h.driver()->setInReverse(reverse);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keys(), keys);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver33::panelKeys_data()
{
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<QList<QByteArray>>("sent");

    using L = QList<QByteArray>;
    const Keys three{{kVolumeUp, 1}, {kVolumeUp, 0}, {kVolumeUp, 1},
                     {kVolumeUp, 0}, {kVolumeUp, 1}, {kVolumeUp, 0}};
    QTest::addRow("2e50021003") << false << frame(0x50, {16, 3}) << three << L{};
    QTest::addRow("reverse 2e50021003") << true << frame(0x50, {16, 3}) << three << L{};
    QTest::addRow("2e50021302") << false << frame(0x50, {19, 2})
                                << Keys{{kVolumeDown, 1}, {kVolumeDown, 0}, {kVolumeDown, 1}, {kVolumeDown, 0}}
                                << L{};
    QTest::addRow("2e50020901") << false << frame(0x50, {9, 1}) << Keys{{kMute, 1}} << L{};
    QTest::addRow("2e50022101") << false << frame(0x50, {0x21, 1}) << Keys{{188, 1}} << L{};
    QTest::addRow("reverse 2e50022101") << true << frame(0x50, {0x21, 1}) << Keys{}
                                        << L{frame(0xC9, {0x01, 0x06, 0, 0})};
    QTest::addRow("reverse 2e50022301") << true << frame(0x50, {0x23, 1}) << Keys{}
                                        << L{frame(0xC9, {0x01, 0x08, 0, 0})};
    QTest::addRow("2e50023001") << false << frame(0x50, {48, 1}) << Keys{{0, 1}} << L{};
}

void TestDriver33::panelKeys()
{
    QFETCH(bool, reverse);
    QFETCH(QByteArray, frame);
    QFETCH(Keys, keys);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    h.driver()->setInReverse(reverse);
    h.feed(frame);
    QCOMPARE(h.keys(), keys);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver33::doorsAndBody()
{
    DriverHarness h(kId);
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.feed(frame(0x24, {0xC4, 0x05}));
    const CardoorData& d = *h.driver()->getCardoorData();
    QCOMPARE(int(d.doorFrontLeft), 1);
    QCOMPARE(int(d.doorFrontRight), 1);
    QCOMPARE(int(d.doorRearLeft), 0);
    QCOMPARE(int(d.doorHood), 1);
    const CarbodyData& b = *h.driver()->getCarbodyData();
    QCOMPARE(int(b.bodyFlag2), 1);
    QCOMPARE(int(b.bodyFlag1), 0);
    QCOMPARE(int(b.bodyFlag31), 1);
    h.feed(frame(0x24, {0xC4, 0x05}));
    QCOMPARE(doors.count(), 1);
    QCOMPARE(body.count(), 1);
    h.feed(frame(0x24, {0x08, 0x05}));
    QCOMPARE(doors.count(), 2);
    QCOMPARE(int(d.doorTrunk), 1);
    QCOMPARE(body.count(), 1);
}

void TestDriver33::radar_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QList<int>>("sensors");   // front 4, rear 4
    QTest::addColumn<int>("levels");
    QTest::addColumn<int>("radarOn");

    // Distances: the segment borders.
    QTest::addRow("2e3306010019191a23") << frame(0x33, {1, 0, 25, 26, 35, 36})
                                        << QList<int>{1, 2, 2, 3, 0, 0, 0, 0} << 10 << 1;
    QTest::addRow("2e320601002d2e696a") << frame(0x32, {1, 0, 45, 46, 105, 106})
                                        << QList<int>{0, 0, 0, 0, 3, 4, 9, 10} << 10 << 1;
    // Bars on the box's own scale.
    QTest::addRow("2e330600080003000c") << frame(0x33, {0, 8, 0, 3, 0, 12})
                                        << QList<int>{0, 3, 0, 12} + QList<int>{0, 0, 0, 0} << 8 << 1;
    QTest::addRow("2e33060008000000") << frame(0x33, {0, 8, 0, 0, 0, 0})
                                      << QList<int>{0, 0, 0, 0, 0, 0, 0, 0} << 8 << 0;
}

void TestDriver33::radar()
{
    QFETCH(QByteArray, frame);
    QFETCH(QList<int>, sensors);
    QFETCH(int, levels);
    QFETCH(int, radarOn);
    DriverHarness h(kId);
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(frame);
    const RadarData& r = *h.driver()->getRadarData();
    QCOMPARE((QList<int>{r.radarFrontLeft, r.radarFrontLeftMid, r.radarFrontRightMid, r.radarFrontRight,
                         r.radarRearLeft, r.radarRearLeftMid, r.radarRearRightMid, r.radarRearRight}),
             sensors);
    QCOMPARE(int(r.radarLevels), levels);
    QCOMPARE(int(r.radarOn), radarOn);
    QCOMPARE(radar.count(), 1);
}

void TestDriver33::leavingReverseKeepsRadar()
{
    DriverHarness h(kId);
    h.driver()->setInReverse(true);
    h.feed(frame(0x32, {0, 10, 1, 2, 3, 4}));
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.driver()->setInReverse(false);
    QCOMPARE(radar.count(), 0);
    QCOMPARE(int(h.driver()->getRadarData()->radarRearRight), 4);
    QVERIFY(!h.driver()->isInReverse());
}

void TestDriver33::steering()
{
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x31, {0x1E, 0x10}));
    h.feed(frame(0x31, {0x00, 0x00}));
    QCOMPARE(steering.count(), 2);
    QCOMPARE(steering.at(0), (QList<QVariant>{16, 4864, true}));
    QCOMPARE(steering.at(1), (QList<QVariant>{-7680, 4864, true}));
}

void TestDriver33::settings_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("stored");

    struct Row { int index; int value; int stored; };
    const Row rows[] = {
        // Clamps at the limit of each kind, and a value just inside one.
        {1, 9, 2}, {7, 21, 20}, {7, 20, 20}, {11, 9, 3}, {42, 33, 32}, {50, 4, 3},
    };
    for (const Row& r : rows)
        QTest::addRow("2e5202%02x%02x", r.index, r.value) << r.index << r.value << r.stored;
}

void TestDriver33::settings()
{
    QFETCH(int, index);
    QFETCH(int, value);
    QFETCH(int, stored);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.feed(frame(0x52, {index, value}));
    QCOMPARE(changed.count(), 1);
    const OriginalCarSettings33 s = info(h).settings;
    const QHash<int, int> fields = {
        {1, s.language}, {2, s.setting2}, {4, s.setting4}, {7, s.setting7}, {9, s.setting9},
        {10, s.setting10}, {11, s.setting11}, {17, s.setting17}, {18, s.setting18},
        {21, s.setting21}, {24, s.setting24}, {32, s.setting32}, {37, s.setting37},
        {41, s.setting41}, {42, s.setting42}, {49, s.setting49}, {50, s.setting50},
    };
    QCOMPARE(fields.value(index, -1), stored);

    // Settings 9 and 10 repeat quietly; the others signal every time.
    h.feed(frame(0x52, {index, value}));
    QCOMPARE(changed.count(), index == 9 || index == 10 ? (value > 30 ? 2 : 1) : 2);
}

void TestDriver33::seatHeatingSetting()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(frame(0x52, {22, 7}));
    h.feed(frame(0x52, {23, 2}));
    compareAir(*h.driver()->getAirData(), {"seatHotLeft=7", "seatHotRight=2"});
    QCOMPARE(air.count(), 2);
    QCOMPARE(changed.count(), 0);
    // Beyond the table: nothing stored, still news.
    h.feed(frame(0x52, {51, 1}));
    QCOMPARE(changed.count(), 1);
}

void TestDriver33::chargingSchedule()
{
    DriverHarness h(kId);
    // Hour 23 and minute 45 from bytes 3/4; hour 31 and minute 63 clamped; flags.
    h.feed(frame(0x53, {0x05, 0xED, 0x07, 0xFF, 0xA5, 0xFE, 0xEF, 12, 3, 0x81}));
    const NewEnergyInformation33 e = info(h).newEnergy;
    QCOMPARE(int(e.timeAHour), 23);
    QCOMPARE(int(e.timeAMinute), 45);
    QCOMPARE(int(e.timeBHour), 23);
    QCOMPARE(int(e.timeBMinute), 59);
    QCOMPARE((QList<int>{e.flag0, e.flag1, e.flag2, e.flag3, e.flag4, e.flag5, e.flag6, e.flag7}),
             (QList<int>{1, 0, 1, 0, 0, 1, 0, 1}));
    QCOMPARE(int(e.lowBits), 6);
    QCOMPARE(int(e.timeCHour), 23);   // 0xFE >> 3 = 31
    QCOMPARE(int(e.timeCMinute), 59); // 0xEF >> 2 = 59
    QCOMPARE(int(e.levelA), 10);
    QCOMPARE(int(e.levelB), 3);
    QCOMPARE(int(e.highFlag), 1);
    QCOMPARE(int(e.lowMode), 1);
}

void TestDriver33::chargingDisplay_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    QTest::addRow("0") << 0x00 << "without";
    QTest::addRow("16") << 0x10 << " Before starting, please remove the connector";
    QTest::addRow("30") << 0x1E << "Please note that the plug lock failed  ";
    QTest::addRow("31") << 0x1F << "";
    QTest::addRow("c2") << 0xC2 << "charging";   // the flags above the state
}

void TestDriver33::chargingDisplay()
{
    QFETCH(int, state);
    QFETCH(QString, text);
    DriverHarness h(kId);
    h.feed(frame(0x54, {5, 9, 0x7C, 0x01, 0x2D, 0x00, 0x2C, 0x01, 0x01, 0x00, state}));
    const NewEnergyDisplayInformation33 d = info(h).newEnergyDisplay;
    QCOMPARE(d.timeText, QStringLiteral("9:5"));
    QCOMPARE(d.voltageTextA, QStringLiteral("380V"));
    QCOMPARE(d.percentText, QStringLiteral("4.5%"));
    QCOMPARE(d.currentText, QStringLiteral("30A"));
    QCOMPARE(d.voltageTextB, QStringLiteral("1V"));
    QCOMPARE(d.statusText, text);
    QCOMPARE(int(d.displayFlagA), state >> 7);
    QCOMPARE(int(d.displayFlagB), (state >> 6) & 1);
}

void TestDriver33::perceptionAndVehicleControl()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.feed(frame(0x55, {8, 5}));
    h.feed(frame(0x55, {1, 1}));
    h.feed(frame(0x55, {9, 1}));   // no such setting: still news
    QCOMPARE(changed.count(), 3);
    QCOMPARE(int(info(h).perception.perception8), 2);
    QCOMPARE(int(info(h).perception.perception1), 1);

    h.feed(frame(0x58, {101, 0, 50, 1, 5, 4, 0x05, 200, 100, 0}));
    const VehicleControlInformation33 c = info(h).vehicleControl;
    QCOMPARE((QList<int>{c.controlLevel0, c.controlLevel1, c.controlLevel2, c.controlLevel3}),
             (QList<int>{100, 0, 50, 1}));
    QCOMPARE((QList<int>{c.controlActive0, c.controlActive1, c.controlActive2, c.controlActive3}),
             (QList<int>{1, 0, 1, 1}));
    QCOMPARE((QList<int>{c.controlSteps0, c.controlSteps1}), (QList<int>{4, 4}));
    QCOMPARE((QList<int>{c.controlFlag0, c.controlFlag1, c.controlFlag2}), (QList<int>{1, 0, 1}));
    QCOMPARE(int(c.controlLevel4), 100);
    QCOMPARE(int(c.controlLevel5), 100);
}

void TestDriver33::functionRecognition()
{
    DriverHarness h(kId);
    // Byte 3 bit 0, byte 4 bits 6..0 and byte 13 carry no flag.
    h.feed(frame(0x7E, {0x81, 0x7F, 0x40, 0x10, 0x80, 0x01, 0x00, 0x00, 0x00, 0x10, 0xFF}));
    const FunctionRecognition33 f = info(h).functions;
    QCOMPARE(int(f.function0), 1);
    QCOMPARE(int(f.function6), 0);
    QCOMPARE(int(f.function7), 0);
    QCOMPARE(int(f.function9), 1);
    QCOMPARE(int(f.function13), 1);
    QCOMPARE(int(f.function14), 1);
    QCOMPARE(int(f.function22), 1);
    QCOMPARE(int(f.function32), 1);
    QCOMPARE(int(f.function31), 0);
}

void TestDriver33::statusFrame_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");

    auto row = [](const QByteArray& f, const char* field, const QString& text) {
        QTest::addRow("%s", f.toHex().constData()) << f << field << text;
    };
    row(frame(0x7D, {7, 0xE8, 0x03, 0x0A, 0x00}), "consumptionTextA", "100 L/100Km");
    row(frame(0x7D, {3, 0x10, 0x0E, 0x00}), "speedTextA", "");   // one byte short
    row(frame(0x7D, {3, 0x10, 0x0E, 0x64, 0x00}), "speedTextA", "36KM/H");
    row(frame(0x7D, {10, 0x10, 0x27}), "engineSpeedText", "2500rpm");
    row(frame(0x7D, {0, 0xC4, 0xE3, 0x00, 0x41}), "gbkText", QString::fromUtf8("\xe4\xbd\xa0"));
    row(frame(0x7D, {9, 0x41, 0x41, 0x28}), "temperatureTextB", QString::fromUtf8("25\xe2\x84\x83"));
}

void TestDriver33::statusFrame()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, field);
    QFETCH(QString, text);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.driver()->setPowerOffState();   // this box's pages are not held back while off
    h.feed(frame);
    QCOMPARE(changed.count(), 1);
    const MileageInformation33 m = info(h).mileage;
    const QHash<QString, QString> texts = {
        {"consumptionTextA", m.consumptionTextA}, {"speedTextA", m.speedTextA},
        {"engineSpeedText", m.engineSpeedText},   {"gbkText", m.gbkText},
        {"temperatureTextB", m.temperatureTextB},
    };
    QCOMPARE(texts.value(field), text);
    // The engine speed of sub-frame 10 never reaches the body record.
    QCOMPARE(h.driver()->getCarbodyData()->engineSpeed, 0);
}

void TestDriver33::shortFrames_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("minimum");
    const int rows[][2] = {{0x10, 9}, {0x11, 6}, {0x12, 6}, {0x14, 5}, {0x24, 6}, {0x31, 6},
                           {0x32, 10}, {0x33, 10}, {0x40, 5}, {0x41, 5}, {0x50, 6}, {0x52, 6},
                           {0x53, 14}, {0x54, 15}, {0x55, 6}, {0x58, 13}, {0x7E, 14}};
    for (const auto& r : rows)
        QTest::addRow("2e%02x below %d", r[0], r[1]) << r[0] << r[1];
}

void TestDriver33::shortFrames()
{
    QFETCH(int, type);
    QFETCH(int, minimum);
    DriverHarness h(kId);
    h.driver()->setInReverse(true);
    h.watchActivity();
    const QByteArray data(minimum - 4, '\x55');
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data).left(minimum - 1)), 1);
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data.left(minimum - 5))), 1);
    QCOMPARE(h.activity(), 0);
    // The whole frame does something.
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data)), 1);
    QVERIFY(h.activity() > 0);
}

void TestDriver33::climateSlots_data()
{
    QTest::addColumn<QString>("slot");
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<int>("code");
    const struct { const char* slot; int left; int right; } rows[] = {
        {"SetSwitch", 0, 0}, {"SetrearDefrostLeftL", 23, 23},
        {"SetleftPlus", 13, 15}, {"SetleftLess", 14, 16}, {"SetrightPlus", 15, 13},
        {"SetrightLess", 16, 14},
    };
    for (const auto& r : rows) {
        QTest::addRow("%s", r.slot) << r.slot << false << r.left;
        QTest::addRow("%s right-hand", r.slot) << r.slot << true << r.right;
    }
}

void TestDriver33::climateSlots()
{
    QFETCH(QString, slot);
    QFETCH(bool, rightHand);
    QFETCH(int, code);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightHand);
    QVERIFY(QMetaObject::invokeMethod(h.driver(), qPrintable(slot)));
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0xA8, {code, 1})});
}

void TestDriver33::seatCommands_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QList<QByteArray>>("sent");
    QTest::addRow("SeatHotLeft") << "SeatHotLeft" << QList<QByteArray>{hex("2e8302160262"), hex("2e8302160163")};
    QTest::addRow("SeatHotRight") << "SeatHotRight" << QList<QByteArray>{frame(0x83, {0x17, 2}), frame(0x83, {0x17, 1})};
    QTest::addRow("AirAC") << "AirAC" << QList<QByteArray>{frame(0x83, {0, 0}), frame(0x83, {0, 1})};
}

void TestDriver33::seatCommands()
{
    QFETCH(QString, type);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    h.driver()->setCanbusState(type, QStringLiteral("whatever"));
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver33::clock_data()
{
    QTest::addColumn<bool>("format24");
    QTest::addColumn<int>("hour");
    QTest::addColumn<QByteArray>("sent");
    QTest::addRow("24h 00:07") << true << 0 << frame(0xC8, {7, 0, 1, 0});
    QTest::addRow("24h 13:07") << true << 13 << frame(0xC8, {7, 13, 1, 1});
    QTest::addRow("12h 00:07") << false << 0 << frame(0xC8, {7, 12, 0, 0});
    QTest::addRow("12h 12:07") << false << 12 << frame(0xC8, {7, 12, 0, 0});
    QTest::addRow("12h 15:07") << false << 15 << frame(0xC8, {7, 3, 0, 1});
}

void TestDriver33::clock()
{
    QFETCH(bool, format24);
    QFETCH(int, hour);
    QFETCH(QByteArray, sent);
    DriverHarness h(kId);
    DataSaveControl::saveSettingData(QStringLiteral("Time24hFormat"), format24, QString());
    h.driver()->setCurrentTime(hour, 7, 30);
    QCOMPARE(h.sentFrames(), QList<QByteArray>{sent});
}

void TestDriver33::sourceReports_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<QVariantList>("items");
    QTest::addColumn<QList<QByteArray>>("sent");
    using L = QList<QByteArray>;

    QTest::addRow("radio FM2") << 1 << QVariantList{3, 9850} << L{frame(0xC0, {1, 2, 0x7A, 0x26, 0})};
    QTest::addRow("radio AM1") << 1 << QVariantList{5, 1008} << L{frame(0xC0, {1, 0x11, 0xF0, 0x03, 0})};
    QTest::addRow("radio one item") << 1 << QVariantList{3} << L{};
    // Title "Ab": n = 4 encoded bytes, the frame 2E C0 09 code FF 10 01 04 0 'A' 0 'b'.
    QTest::addRow("media 16") << 16 << QVariantList{0, 0x0102, 0x0304, 0x10506, 0x0708, "Ab", "x"}
                              << L{frame(0xC0, {9, 0, 3, 4, 1, 2, 5, 6, 7, 8}),
                                   frame(0xC0, {9, 0xFF, 0x10, 0x01, 4, 0, 'A', 0, 'b'})};
    QTest::addRow("media 22 no title") << 22 << QVariantList{0, 1, 2, 3, 4}
                                       << L{frame(0xC0, {11, 0, 0, 2, 0, 1, 0, 3, 0, 4}),
                                            frame(0xC0, {11, 0xFF, 0x10, 0x01, 0})};
    QTest::addRow("phone 3") << 24 << QVariantList{3, QString::fromUtf8("\xc3\xa9t"), "123"}
                             << L{frame(0xC0, {5, 2, 0, 0, 1, 3, 0xC3, 0xA9, 't'})};
    QTest::addRow("source 2") << 2 << QVariantList{1, 2} << L{};
}

void TestDriver33::sourceReports()
{
    QFETCH(int, source);
    QFETCH(QVariantList, items);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    h.driver()->setSrcState(CanbusInterface::srctype(source), items);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver33::language_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("value");
    QTest::addRow("en") << "en" << 2;
    QTest::addRow("ch_jt") << "ch_jt" << 1;
    QTest::addRow("ch_ft") << "ch_ft" << 1;
    QTest::addRow("ja") << "ja" << 0;
}

void TestDriver33::language()
{
    QFETCH(QString, language);
    QFETCH(int, value);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    driver(h)->languageChanged(language);
    QCOMPARE(h.sentFrames(), value ? QList<QByteArray>{frame(0x83, {1, value})} : QList<QByteArray>{});
    QCOMPARE(int(info(h).settings.language), value);
    QCOMPARE(changed.count(), value ? 1 : 0);
}

void TestDriver33::modelReport()
{
    {
        DriverHarness h(kId);
        driver(h)->exitSelectSlot();
        QVERIFY(h.sentFrames().isEmpty());
    }
    // The stored variant, clamped, is what the timer reports.
    DriverHarness h(kId);
    DataSaveControl::saveSettingData(QStringLiteral("CanbusCAR"), 40, QString());
    h.manager()->setId(34, false);
    h.manager()->setId(kId, false);
    QCOMPARE(int(info(h).body.carModel), 15);
    h.clearSent();
    driver(h)->exitSelectSlot();
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0xE2, {2, 15})});
}

void TestDriver33::touch_data()
{
    QTest::addColumn<int>("carModel");
    QTest::addColumn<QList<int>>("touch");   // x, y, w, h, model
    QTest::addColumn<QList<QByteArray>>("sent");
    using L = QList<QByteArray>;

    // On a 1280 x 720 picture the point is the box's point.
    QTest::addRow("model 1") << 0 << QList<int>{450, 360, 1280, 720, 1} << L{};
    QTest::addRow("centre 450,360") << 0 << QList<int>{450, 360, 1280, 720, 2}
                                    << L{frame(0xC9, {2, 0x1C, 0x01, 0x68}), frame(0xC9, {5, 0, 0, 0})};
    QTest::addRow("zone 0 corner 807,0") << 0 << QList<int>{807, 0, 1280, 720, 2}
                                         << L{frame(0xC9, {2, 0x32, 0, 0}), frame(0xC9, {0, 0, 0, 0})};
    QTest::addRow("zone 0 corner 900,93") << 0 << QList<int>{900, 93, 1280, 720, 2}
                                          << L{frame(0xC9, {2, 0x38, 0, 93}), frame(0xC9, {0, 0, 0, 0})};
    QTest::addRow("beside zone 0 901,93") << 0 << QList<int>{901, 93, 1280, 720, 2}
                                          << L{frame(0xC9, {2, 0x38, 0, 93})};
    QTest::addRow("zone 3 border 389,300") << 0 << QList<int>{389, 300, 1280, 720, 2}
                                           << L{frame(0xC9, {2, 0x18, 0x01, 0x2C}), frame(0xC9, {3, 0, 0, 0})};
    // y 420 lies in zone 5 and zone 2: the first row wins.
    QTest::addRow("shared border 450,420") << 0 << QList<int>{450, 420, 1280, 720, 2}
                                           << L{frame(0xC9, {2, 0x1C, 0x01, 0xA4}), frame(0xC9, {5, 0, 0, 0})};
    QTest::addRow("bottom 700,720") << 0 << QList<int>{700, 720, 1280, 720, 2}
                                    << L{frame(0xC9, {2, 0x2B, 0x02, 0xD0}), frame(0xC9, {8, 0, 0, 0})};
    // Scaled from a 640 x 360 picture, truncated.
    QTest::addRow("scaled 225,180 of 640x360") << 0 << QList<int>{225, 180, 640, 360, 2}
                                               << L{frame(0xC9, {2, 0x1C, 0x01, 0x68}), frame(0xC9, {5, 0, 0, 0})};
    // The wide screen has no zones; x scales to 2000.
    QTest::addRow("wide model 8") << 8 << QList<int>{640, 360, 1280, 720, 2}
                                  << L{frame(0xC9, {2, 0x3E, 0x01, 0x68})};
    QTest::addRow("no picture") << 0 << QList<int>{10, 10, 0, 0, 2} << L{};
    QTest::addRow("outside -5,-5") << 0 << QList<int>{-5, -5, 1280, 720, 2}
                                   << L{frame(0xC9, {2, 0xFF, 0x0F, 0xFB})};
}

void TestDriver33::touch()
{
    QFETCH(int, carModel);
    QFETCH(QList<int>, touch);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    setCarModel(h, carModel);
    driver(h)->setTcanBussend(touch[0], touch[1], touch[2], touch[3], touch[4]);
    QCOMPARE(h.sentFrames(), sent);
}

QTEST_GUILESS_MAIN(TestDriver33)
#include "tst_driver33.moc"
