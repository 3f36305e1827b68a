// SAIC MG Roewe with the RuiZiCheng box: 0x2E frames in, records, signals and keys
// out; the thirteen command keys, source, phone, clock and language reports, the
// vehicle variant and panoramic gestures in, frames out.

#include <QSignalSpy>
#include <QtTest>
#include <functional>

#include "canbus72/canbus72.h"
#include "canbuscontrol.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "recordcheck.h"
#include "framebuilders.h"
#include "framefamily.h"
#include "module.h"
#include "modulemanager.h"

using canbus::FrameFamily;

namespace {

constexpr int kId = 72;

using namespace testframes;

Canbus72Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus72Obj*>(h.driver()); }
Data72Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data72Info>(); }


void compareAir(const AirData& a, const QStringList& expected) { compareFields(a, expected); }

using Keys = QList<QPair<int, int>>;

// A stand-in telephone module with the signal the box's driver listens to.
class Phone : public QObject
{
    Q_OBJECT
signals:
    void callStateChanged(bool active);
};

} // namespace

class TestDriver72 : public QObject
{
    Q_OBJECT

private slots:
    void initialState();
    void handshake();
    void versionFrame();

    void climate_data();
    void climate();
    void climateByteSixEveryFrame();
    void rearClimate_data();
    void rearClimate();

    void keys_data();
    void keys();
    void climatePanelKey();

    void radarAndDoors();
    void outdoorTemperature_data();
    void outdoorTemperature();
    void steering();
    void settingsGroups_data();
    void settingsGroups();
    void setupPages();
    void tyres_data();
    void tyres();
    void drivingAndEnergy();
    void statusFramesAreGated();
    void statusUnits_data();
    void statusUnits();
    void functionRecognition();

    void shortFrames_data();
    void shortFrames();

    void commands_data();
    void commands();
    void modelReport_data();
    void modelReport();
    void radio_data();
    void radio();
    void media();
    void phone_data();
    void phone();
    void callTimer();
    void clock();
    void language();
    void touch_data();
    void touch();
    void bluetoothCallState();
};

void TestDriver72::initialState()
{
    DriverHarness h(kId);
    QVERIFY(driver(h));
    compareAir(*h.driver()->getAirData(),
               {"airOnOff=0", "airAC=0", "airDual=0", "airAuto=0", "airInnerLoop=0", "airAutoLoop=0",
                "airDefrostFront=0", "airDefrostRear=0", "airAutoStrong=0", "airEco=0",
                "airWindFrontLeft=0", "airWindDownLeft=0", "airWindSpeedLeft=0",
                "airWindSpeedRight=0", "seatHotVisible=1", "airOuterLoop=255", "airAcMax=255"});
    const Data72Info d = info(h);
    QCOMPARE(d.body.rearDistanceText, QStringLiteral("--"));
    QCOMPARE(d.drivingMode.driveKpaText, QStringLiteral("--"));
    QCOMPARE(d.energy.energyUseText2, QStringLiteral("--"));
    QCOMPARE(d.body.voltageText, QString());
    QCOMPARE(d.trend.trendCurve1, QByteArray(51, '\0'));
    QCOMPARE(QMetaType::type("Data72Info") != QMetaType::UnknownType, true);
}

void TestDriver72::handshake()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, hex("2e8101017c"));
    QVERIFY(h.sentFrames().isEmpty());
    QTRY_COMPARE(h.sentFrames(), QList<QByteArray>{frame(0x90, {0x21, 0, 0})});

    // Any whole frame tells that the box answers.
    h.feed(frame(0x54, {1}));
    QVERIFY(h.driver()->isConnectedState());
    out.clear();
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QVERIFY(out.isEmpty());

    // The disconnect frame goes out whatever the state.
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x81, {0}));
    h.driver()->setConnectedState(false);
    out.clear();
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x81, {0}));
}

void TestDriver72::versionFrame()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.feed(frame(0x7F, {'R', 'W', 0, 'x'}));
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("RW"));
    QVERIFY(h.driver()->isConnectedState());
    QCOMPARE(changed.count(), 0);
}

void TestDriver72::climate_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<QStringList>("expected");

    auto row = [](std::initializer_list<int> d, bool rightHand, const QStringList& e) {
        const QByteArray data = bytes(d);
        QTest::addRow("2e21%s%s", data.toHex().constData(), rightHand ? " right-hand" : "")
            << data << rightHand << e;
    };
    // On, A/C, AUTO, DUAL, outer loop; face and feet, fan 3 -> 6; 17 and 30 degrees.
    row({0xDA, 0x13, 1, 0x00, 14, 0x40}, false,
        {"airPower=1", "airOnOff=1", "airAC=1", "airAuto=1", "airDual=1", "airInnerLoop=0",
         "airOuterLoop=1", "airAutoLoop=0", "airWindFrontLeft=1", "airWindDownLeft=1",
         "airDefrostFront=0", "airWindSpeedLeft=6", "airWindSpeedRight=6", "tempLeft=17",
         "tempRight=30", "airSync=1", "airRearLock=0"});
    row({0xDA, 0x13, 1, 0x00, 14, 0x40}, true, {"tempLeft=30", "tempRight=17"});
    // Auto loop; screen, fan 4 and up is 7; the ends and the lowest degree.
    row({0x04, 0x44, 0, 0x00, 15, 0x80}, false,
        {"airPower=0", "airAutoLoop=1", "airInnerLoop=0", "airWindFrontLeft=0", "airWindDownLeft=0",
         "airWindSpeedLeft=7", "tempLeftLow=1", "tempRightHigh=1", "airRearLock=1", "airSync=0"});
    row({0x00, 0x00, 16, 0x00, 255, 0x00}, false,
        {"airInnerLoop=1", "tempLeft=16", "tempRight=", "tempRightFahrenheit=255",
         "tempLeftFahrenheit=0"});
    // Loop value 3 sets none; direction 5 leaves the direction as it was.
    row({0x06, 0x50, 20, 0x00, 17, 0x00}, false,
        {"airInnerLoop=0", "airOuterLoop=0", "airAutoLoop=0", "airWindFrontLeft=0",
         "airWindSpeedLeft=0", "tempLeft=", "tempRight="});
    // Byte 6: defrost bits win, eco, seat heating in two-bit fields.
    row({0x00, 0x00, 3, 0xF2, 3, 0x00}, false,
        {"airDefrostFront=1", "airDefrostRear=1", "airEco=1", "seatHotLeft=3",
         "seatHotRight=3", "tempLeft=19"});
    row({0x00, 0x30, 3, 0x08, 3, 0x00}, false,
        {"airDefrostFront=0", "airWindDownLeft=1", "seatHotLeft=3", "seatHotRight=0"});
}

void TestDriver72::climate()
{
    QFETCH(QByteArray, data);
    QFETCH(bool, rightHand);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightHand);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.feed(frame(0x21, data));
    compareAir(*h.driver()->getAirData(), expected);
    QCOMPARE(air.count(), 1);
    h.feed(frame(0x21, data));
    QCOMPARE(air.count(), 1);
    QCOMPARE(changed.count(), 0);
}

void TestDriver72::climateByteSixEveryFrame()
{
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    const QByteArray f = frame(0x21, {0x80, 0x40, 5, 0x80, 5, 0});
    h.feed(f);
    // The same frame again: byte 6 is written again, byte 4 is not.
    h.driver()->getAirData()->airDefrostFront = 0;
    h.driver()->getAirData()->airWindDownLeft = 1;
    h.feed(f);
    compareAir(*h.driver()->getAirData(), {"airDefrostFront=1", "airWindDownLeft=1"});
    QCOMPARE(air.count(), 1);
}

void TestDriver72::rearClimate_data()
{
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("signalCount");
    using L = QList<QByteArray>;
    QTest::addRow("2e1108 0f050100") << L{frame(0x11, {0x0F, 5, 1, 0, 0, 0, 0, 0})}
                               << QStringList{"airRearSpare[3]=7", "airRearSpare[7]=7",
                                              "tempRearVisible=1", "tempRear=21", "tempRear2=21",
                                              "airRearSpare[1]=1", "airRearSpare[2]=1",
                                              "airRearSpare[5]=1", "airRearSpare[6]=1"}
                               << 1;
    QTest::addRow("ends") << L{frame(0x11, {0x03, 0, 2, 0, 0, 0, 0, 0}), frame(0x11, {0x03, 0xFF, 0, 0, 0, 0, 0, 0})}
                          << QStringList{"airRearSpare[3]=3", "tempRearLow=0", "tempRearHigh=1",
                                         "tempRear=16", "airRearSpare[1]=1", "airRearSpare[2]=0"}
                          << 2;
    // Only byte 10 changes: the known bytes are not applied again, yet the frame is news.
    QTest::addRow("cache") << L{frame(0x11, {0x01, 4, 7, 0, 0, 0, 0, 0}), frame(0x11, {0x01, 4, 7, 0, 0, 0, 0, 9})}
                           << QStringList{"tempRear=20", "airRearSpare[1]=255"} << 2;
}

void TestDriver72::rearClimate()
{
    QFETCH(QList<QByteArray>, frames);
    QFETCH(QStringList, expected);
    QFETCH(int, signalCount);
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    for (const QByteArray& f : frames)
        h.feed(f);
    compareAir(*h.driver()->getAirData(), expected);
    QCOMPARE(air.count(), signalCount);
}

void TestDriver72::keys_data()
{
    QTest::addColumn<bool>("inCall");
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<QList<QByteArray>>("sent");
    using L = QList<QByteArray>;

    QTest::addRow("2e20020101") << false << L{frame(0x20, {1, 1})} << Keys{{166, 1}, {166, 0}} << L{};
    QTest::addRow("2e20020103") << false << L{frame(0x20, {1, 3})} << Keys{} << L{};
    // A release frame repeats the last key number with the next press.
    QTest::addRow("2e20028001 then 2e20020001") << false << L{frame(0x20, {0x80, 1}), frame(0x20, {0, 1})}
                                                << Keys{{148, 1}, {148, 0}, {148, 1}, {148, 0}} << L{};
    QTest::addRow("2e20020601 idle") << false << L{frame(0x20, {6, 1})} << Keys{{149, 1}, {149, 0}} << L{};
    QTest::addRow("2e20020601 in call") << true << L{frame(0x20, {6, 1})} << Keys{{179, 1}, {179, 0}} << L{};
    QTest::addRow("2e20021f01") << false << L{frame(0x20, {31, 1})} << Keys{{0, 1}, {0, 0}} << L{};
    QTest::addRow("2e20021701") << false << L{frame(0x20, {23, 1})} << Keys{} << L{frame(0x82, {1})};
    QTest::addRow("2e20021702") << false << L{frame(0x20, {23, 2})} << Keys{{0, 1}, {0, 0}} << L{};
    // 20 with state 2 is an ordinary key with no code.
}

void TestDriver72::keys()
{
    QFETCH(bool, inCall);
    QFETCH(QList<QByteArray>, frames);
    QFETCH(Keys, keys);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    h.driver()->setCallState(inCall);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keys(), keys);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver72::climatePanelKey()
{
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(frame(0x20, {20, 1}));
    QCOMPARE(CanbusControl::otherProperty(QStringLiteral("ShowAirconditioner")), QVariant(1));
    QCOMPARE(air.count(), 1);
    QVERIFY(h.keys().isEmpty());
}

void TestDriver72::radarAndDoors()
{
    DriverHarness h(kId);
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.feed(frame(0x22, {1, 2, 3, 4, 35}));
    h.feed(frame(0x23, {0, 12, 0, 0, 120}));
    const RadarData& r = *h.driver()->getRadarData();
    QCOMPARE(int(r.radarLevels), 9);
    QCOMPARE(int(r.radarRearRight), 4);
    QCOMPARE(int(r.radarFrontLeftMid), 12);
    // On the distance scale the rear bars are close.
    QCOMPARE(int(r.radarOn), 1);
    QCOMPARE(radar.count(), 2);
    QCOMPARE(info(h).body.rearDistanceText, QStringLiteral("35cm"));
    QCOMPARE(info(h).body.frontDistanceText, QStringLiteral("120cm"));
    // All eight beyond 10 on the distance scale: nothing near.
    h.feed(frame(0x23, {11, 12, 11, 11, 0}));
    h.feed(frame(0x22, {11, 11, 11, 11, 0}));
    QCOMPARE(int(r.radarOn), 0);

    // Leaving reverse keeps the bars.
    h.driver()->setInReverse(true);
    h.driver()->setInReverse(false);
    QCOMPARE(int(r.radarRearRight), 11);

    // Doors are gated by the power state; the body flags are not.
    h.driver()->setPowerOffState();
    h.feed(frame(0x24, {0xFC, 0x1F}));
    QCOMPARE(doors.count(), 0);
    QCOMPARE(body.count(), 1);
    const CardoorData& d = *h.driver()->getCardoorData();
    QCOMPARE(int(d.doorFrontLeft), 1);
    QCOMPARE(int(d.doorTrunk), 1);
    QCOMPARE(int(d.doorHood), 0);   // this frame has no bonnet bit
    const CarbodyData& b = *h.driver()->getCarbodyData();
    QCOMPARE((QList<int>{b.bodyWarning36, b.bodyFlag0, b.bodyFlag31, b.bodyFlag1, b.bodyFlag2}),
             (QList<int>{1, 1, 1, 1, 1}));
    h.driver()->setPowerOnState();
    h.feed(frame(0x24, {0x40, 0x1F}));
    QCOMPARE(doors.count(), 1);
    QCOMPARE(body.count(), 1);
}

void TestDriver72::outdoorTemperature_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("signalCount");
    QTest::addRow("2e2701a5") << 0xA5 << QString::fromUtf8("-37.0\xe2\x84\x83") << 1;
    QTest::addRow("2e270115") << 0x15 << QString::fromUtf8("21.0\xe2\x84\x83") << 1;
    QTest::addRow("2e270180") << 0x80 << QString::fromUtf8("0.0\xe2\x84\x83") << 1;
    QTest::addRow("2e2701ff") << 0xFF << "--" << 0;
}

void TestDriver72::outdoorTemperature()
{
    QFETCH(int, raw);
    QFETCH(QString, text);
    QFETCH(int, signalCount);
    DriverHarness h(kId);
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.feed(frame(0x27, {raw}));
    QCOMPARE(h.driver()->getAirData()->outdoorTemp, text);
    QCOMPARE(info(h).body.outdoorTempText, text);
    QCOMPARE(outdoor.count(), signalCount);
    if (signalCount)
        QCOMPARE(outdoor.at(0), (QList<QVariant>{text, 0}));
}

void TestDriver72::steering()
{
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x29, {0x00, 0x80}));
    h.feed(frame(0x29, {0x10, 0x80}));
    h.feed(frame(0x29, {0x00, 0x00}));
    QCOMPARE(steering.at(0), (QList<QVariant>{0, 7763, true}));
    QCOMPARE(steering.at(1), (QList<QVariant>{-16, 7763, true}));
    QCOMPARE(steering.at(2), (QList<QVariant>{-32768, 7763, true}));
}

void TestDriver72::settingsGroups_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("item");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("stored");
    auto row = [](int g, int i, int v, const char* field, int stored) {
        QTest::addRow("2e3903%02x%02x%02x", g, i, v) << g << i << v << field << stored;
    };
    row(2, 1, 0xA0, "group2Item1Bit7", 1);
    row(2, 2, 0xAB, "group2Item2", 0x0B);
    row(3, 1, 9, "group3Item1", 4);
    row(6, 22, 250, "group6Item22", 240);
    row(7, 1, 11, "group7Item1", 10);
    row(9, 7, 200, "group9Item7", 152);
    row(4, 1, 5, "group4Item2", 0);   // group 4 has no item 1
}

void TestDriver72::settingsGroups()
{
    QFETCH(int, group);
    QFETCH(int, item);
    QFETCH(int, value);
    QFETCH(QString, field);
    QFETCH(int, stored);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    h.feed(frame(0x39, {group, item, value}));
    QCOMPARE(changed.count(), 1);
    const VehicleSetupInformation_4_72 s = info(h).setup4;
    const QHash<QString, int> fields = {
        {"group1Item2", s.group1Item2},       {"group2Item1Bit7", s.group2Item1Bit7},
        {"group2Item1Bit6", s.group2Item1Bit6}, {"group2Item1Bit5", s.group2Item1Bit5},
        {"group2Item2", s.group2Item2},       {"group3Item1", s.group3Item1},
        {"group6Item22", s.group6Item22},     {"group6Item19", s.group6Item19},
        {"group7Item1", s.group7Item1},       {"group9Item7", s.group9Item7},
        {"group9Item6", s.group9Item6},       {"group10Item1", s.group10Item1},
        {"group4Item2", s.group4Item2},
    };
    QCOMPARE(fields.value(field, -1), stored);
}

void TestDriver72::setupPages()
{
    DriverHarness h(kId);
    h.feed(frame(0x40, {0x90, 0xAF, 0x45, 0}));
    const VehicleSetupInformation72 s = info(h).setup;
    QCOMPARE((QList<int>{s.byte3Bit7, s.byte3Bit6, s.byte3Bit5, s.byte3Bit4}), (QList<int>{1, 0, 0, 1}));
    QCOMPARE((QList<int>{s.byte4Bit7, s.byte4Bit6, s.byte4Bit5, s.byte4Low}), (QList<int>{1, 0, 1, 9}));
    QCOMPARE((QList<int>{s.byte5Bit7, s.byte5Bit6, s.byte5Bit5, s.byte5Low}), (QList<int>{0, 1, 0, 5}));

    h.feed(frame(0x41, {0x3D, 0x78, 0, 0, 0, 12, 0x0C, 0x30, 0x7E, 9, 0x64, 3}));
    const VehicleSetupInformation_2_72 s2 = info(h).setup2;
    QCOMPARE(int(s2.byte3Bits5To4), 2);   // 3 clamped
    QCOMPARE(int(s2.byte3Bit0), 1);
    QCOMPARE(int(s2.byte3Bit1), 0);
    QCOMPARE(int(s2.byte4Bits6To5), 2);
    QCOMPARE(int(s2.byte4Bits4To3), 2);
    QCOMPARE(int(s2.byte8), 10);
    QCOMPARE(int(s2.byte9Bits3To2), 3);   // not clamped
    QCOMPARE(int(s2.byte10Bits5To4), 2);
    QCOMPARE(int(s2.byte11Bits6To5), 2);
    QCOMPARE(int(s2.byte11Bits2To1), 2);
    QCOMPARE(int(s2.byte12), 9);
    QCOMPARE(int(s2.byte13Bits6To5), 2);
    QCOMPARE(int(s2.byte13Bit2), 1);
    QCOMPARE(int(s2.byte14), 2);

    h.feed(frame(0x44, {0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF}));
    QCOMPARE(int(info(h).warnings.warningFlag[1]), 1);
    QCOMPARE(int(info(h).warnings.warningFlag[0]), 0);
    QCOMPARE(int(info(h).warnings.warningFlag[13]), 1);

    h.feed(frame(0x50, {0x9E, 12}));
    const PanoramicInformation72 p = info(h).panoramic;
    QCOMPARE((QList<int>{p.byte3Bit7, p.byte3Bit4, p.byte3Bits3To2, p.byte3Bit1, p.byte3Bit0, p.byte4}),
             (QList<int>{1, 1, 3, 1, 0, 9}));

    h.feed(frame(0x43, {38}));
    QCOMPARE(info(h).body.oilColourText, QStringLiteral("yellow"));
    h.feed(frame(0x43, {251}));
    QCOMPARE(info(h).body.oilColourText, QStringLiteral("grey"));
    h.feed(frame(0x43, {37}));
    QCOMPARE(info(h).body.oilColourText, QStringLiteral("green"));
}

void TestDriver72::tyres_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QStringList>("expected");
    QTest::addRow("kpa") << 0 << QStringList{"tirePressureFrontLeft=250kpa", "tireStatus=0"};
    QTest::addRow("bar") << 1 << QStringList{"tirePressureFrontLeft=2.5bar", "tireStatus=1"};
    QTest::addRow("psi") << 2 << QStringList{"tirePressureRearRight=32psi", "tireStatus=2"};
    QTest::addRow("3") << 3 << QStringList{"tirePressureFrontLeft=25", "tireStatus=2"};
}

void TestDriver72::tyres()
{
    QFETCH(int, unit);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.driver()->getAirData()->tire.tireWarning[2][3] = 7;
    h.feed(frame(0x52, {0x10, 0x01, 25, 26, 27, 32, 5, 0, 0, 0xFF, unit, 0}));
    compareAir(*h.driver()->getAirData(),
               expected + QStringList{"tireWarning[0][0]=1", "tireWarning[0][1]=0",
                                      "tireWarning[0][3]=1", "tireWarning[2][0]=5",
                                      "tireWarning[2][3]=7"});
}

void TestDriver72::drivingAndEnergy()
{
    DriverHarness h(kId);
    h.feed(frame(0x53, {9, 0xF8, 65, 0xEC, 50, 30, 0}));
    const drivingMode72 m = info(h).drivingMode;
    QCOMPARE((QList<int>{m.driveMode, m.driveHigh2, m.driveMid2, m.driveBit3}), (QList<int>{4, 2, 2, 1}));
    QCOMPARE(m.driveTempText1, QString::fromUtf8("25\xe2\x84\x83"));
    QCOMPARE(m.drivePressureText, QStringLiteral("-2.0Bar"));
    QCOMPARE(m.driveKpaText, QStringLiteral("2.00Kpa"));
    QCOMPARE(m.driveTempText2, QString::fromUtf8("-10\xe2\x84\x83"));

    h.feed(frame(0x54, {5}));
    QCOMPARE(int(info(h).energy.energyMode), 2);
    h.feed(frame(0x60, {9, 0x01, 0x2C, 0, 0, 0, 7, 0x00, 0x7B, 0x00, 0x05, 0}));
    const energyManagement72 e = info(h).energy;
    QCOMPARE(int(e.energyFlow), 7);
    QCOMPARE(e.energyText1, QStringLiteral("300.0km"));
    QCOMPARE(e.energyText3, QStringLiteral("7.0km"));
    QCOMPARE(e.energyUseText1, QStringLiteral("12.3kWh/100km"));
    QCOMPARE(e.energyUseText2, QStringLiteral("0.5kWh/100km"));

    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.driver()->setPowerOffState();
    h.feed(frame(0x61, {0x01, 0x90}));
    QCOMPARE(info(h).body.rangeText, QStringLiteral("400.0km"));
    QCOMPARE(h.driver()->getCarbodyData()->engineSpeed, 40000);
    QCOMPARE(body.count(), 1);
    h.feed(frame(0x62, {0x01, 0x5E, 0xFF, 0xF6, 0}));
    QCOMPARE(info(h).body.voltageText, QStringLiteral("350.0V"));
    QCOMPARE(info(h).body.currentText, QStringLiteral("-10.0A"));

    QByteArray curve;
    for (int i = 0; i < 51; ++i)
        curve.append(char(i + 1));
    h.feed(frame(0x64, curve + QByteArray(2, '\0')));
    QCOMPARE(info(h).trend.trendCurve2, curve);
}

void TestDriver72::statusFramesAreGated()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.driver()->setPowerOffState();
    h.feed(frame(0x7D, {3, 0x10, 0x0E, 0x64, 0x00}));
    h.feed(frame(0x7D, {8, 0xFF, 0xFF}));
    h.feed(frame(0x7D, {0x33}));
    h.feed(frame(0x7E, QByteArray(11, '\xFF')));
    QCOMPARE(changed.count() + body.count() + steering.count(), 0);
    // The record was still written.
    QCOMPARE(h.driver()->getCarbodyData()->vehicleSpeed, quint16(3600));
    QCOMPARE(info(h).mileage.speedText1, QStringLiteral("36KM/H"));
    QCOMPARE(int(info(h).functions.functionFlag[32]), 1);
    h.driver()->setPowerOnState();
    h.feed(frame(0x7D, {8, 0xFF, 0xFF}));
    QCOMPARE(steering.count(), 1);
    QCOMPARE(steering.at(0), (QList<QVariant>{-1, 540, true}));
    QCOMPARE(changed.count(), 1);
}

void TestDriver72::statusUnits_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    auto row = [](const QByteArray& f, const char* field, const QString& text) {
        QTest::addRow("%s", f.toHex().constData()) << f << field << text;
    };
    row(frame(0x7D, {3, 0x10, 0x0E, 0x64, 0x00, 1}), "speedText1", "36MPH");
    row(frame(0x7D, {3, 0x10, 0x0E, 0x64, 0x00, 2}), "speedText1", "36KM/H");
    row(frame(0x7D, {7, 0xE8, 0x03, 0x0A, 0x00}), "consumptionText1", "100L/100Km");
    row(frame(0x7D, {7, 0xE8, 0x03, 0x0A, 0x00, 3}), "consumptionText2", "1MPG(US)");
    row(frame(0x7D, {7, 0xE8, 0x03, 0x0A}), "consumptionText1", "");   // needs 9 bytes here
    row(frame(0x7D, {4, 0x40, 0x42, 0x0F, 0x05, 0x00, 0x39, 0x30, 0x00, 0xFF, 0xFF, 0xFF}),
        "mileageText", "1000000KM");
    row(frame(0x7D, {4, 0x40, 0x42, 0x0F, 0x05, 0x00, 0x39, 0x30, 0x00, 0xFF, 0xFF, 0xFF}),
        "distanceText2", "1234.5KM");
    row(frame(0x7D, {4, 0x40, 0x42, 0x0F, 0x05, 0x00, 0x39, 0x30, 0x00, 0xFF, 0xFF, 0xFF}),
        "distanceText3", "1.67772e+06KM");
    row(frame(0x7D, {14, 0xD2, 0x04}), "trMinText", "1234Tr/min");
    row(frame(0x7D, {11, 0x39, 0x30}), "batteryVoltageText", "12.345V");
}

void TestDriver72::statusUnits()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, field);
    QFETCH(QString, text);
    DriverHarness h(kId);
    h.feed(frame);
    const MileageInformation72 m = info(h).mileage;
    const QHash<QString, QString> texts = {
        {"speedText1", m.speedText1}, {"consumptionText1", m.consumptionText1},
        {"consumptionText2", m.consumptionText2}, {"mileageText", m.mileageText},
        {"distanceText2", m.distanceText2}, {"distanceText3", m.distanceText3},
        {"rpmText2", m.rpmText2}, {"trMinText", m.trMinText},
        {"batteryVoltageText", m.batteryVoltageText},
    };
    QCOMPARE(texts.value(field), text);
}

void TestDriver72::functionRecognition()
{
    DriverHarness h(kId);
    // Byte 13 carries nothing; byte 14 the last four flags.
    h.feed(frame(0x7E, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0x90}));
    const FunctionRecognition72 f = info(h).functions;
    QCOMPARE(int(f.functionFlag[32]), 0);
    QCOMPARE(int(f.functionFlag[33]), 1);
    QCOMPARE(int(f.functionFlag[34]), 0);
    QCOMPARE(int(f.functionFlag[36]), 1);
}

void TestDriver72::shortFrames_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("minimum");
    // A few guards of each kind: climate, keys and body, settings, energy, trend, status.
    const int rows[][2] = {{0x11, 12}, {0x21, 10}, {0x24, 6}, {0x41, 16}, {0x44, 18},
                           {0x52, 15}, {0x60, 15}, {0x64, 55}, {0x7E, 14}};
    for (const auto& r : rows)
        QTest::addRow("2e%02x below %d", r[0], r[1]) << r[0] << r[1];
}

void TestDriver72::shortFrames()
{
    QFETCH(int, type);
    QFETCH(int, minimum);
    DriverHarness h(kId);
    h.watchActivity();
    const QByteArray data(minimum - 4, '\x01');
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data).left(minimum - 1)), 1);
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data.left(minimum - 5))), 1);
    QCOMPARE(h.activity(), 0);
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data)), 1);
    QVERIFY(h.activity() > 0);
    QCOMPARE(h.driver()->checkProtocolData(frame(0x30, {1})), 0);
}

void TestDriver72::commands_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("face");
    QTest::addColumn<int>("feet");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("data");
    auto row = [](const char* type, const char* value, int face, int feet, int code, int data) {
        QTest::addRow("%s %s %d%d", type, value, face, feet) << type << value << face << feet << code << data;
    };
    row("AirOnOff", "", 0, 0, 5, 1);
    row("AirAC", "0", 0, 0, 8, 1);
    row("AirDefrostRear", "", 0, 0, 7, 1);
    row("AirWindSpeedAddSubFront", "1", 0, 0, 4, 1);
    row("AirWindSpeedAddSubFront", "0", 0, 0, 4, 2);
    row("AirWindDownFront", "", 1, 1, 16, 1);
    row("AirWindDownFront", "", 1, 0, 16, 2);
    row("AirWindDownFront", "", 0, 1, 16, 3);
    row("AirWindFrontFront", "", 1, 1, 16, 3);
    row("AirWindFrontFront", "", 1, 0, 16, 1);
    row("AirTempFrontLeft", "add", 0, 0, 1, 1);
    row("AirTempFrontRight", "sub", 0, 0, 1, 2);
}

void TestDriver72::commands()
{
    QFETCH(QString, type);
    QFETCH(QString, value);
    QFETCH(int, face);
    QFETCH(int, feet);
    QFETCH(int, code);
    QFETCH(int, data);
    DriverHarness h(kId);
    h.driver()->getAirData()->airWindFrontLeft = quint8(face);
    h.driver()->getAirData()->airWindDownLeft = quint8(feet);
    h.driver()->setCanbusState(type, value);
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0x8A, {code, data})});
    // The release follows.
    QTRY_COMPARE(h.sentFrames().size(), 2);
    QCOMPARE(h.sentFrames().at(1), frame(0x8A, {code, 0}));
}

void TestDriver72::modelReport_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QByteArray>("sent");
    QTest::addRow("0") << 0 << QByteArray();
    QTest::addRow("1") << 1 << frame(0xEE, {0x50, 0});
    QTest::addRow("8") << 8 << frame(0xEE, {0x50, 7});
    QTest::addRow("9") << 9 << frame(0xEE, {0x51, 0});
    QTest::addRow("19") << 19 << frame(0xEE, {0x51, 10});
    QTest::addRow("25") << 25 << frame(0xEE, {0x51, 10});   // clamped when read
}

void TestDriver72::modelReport()
{
    QFETCH(int, model);
    QFETCH(QByteArray, sent);
    DriverHarness h(kId);
    DataSaveControl::saveSettingData(QStringLiteral("CanbusCAR"), model, QString());
    h.manager()->setId(71, false);
    h.manager()->setId(kId, false);
    h.clearSent();
    driver(h)->exitSelectSlot();
    QCOMPARE(h.sentFrames(), sent.isEmpty() ? QList<QByteArray>{} : QList<QByteArray>{sent});
}

void TestDriver72::radio_data()
{
    QTest::addColumn<QVariantList>("items");
    QTest::addColumn<QList<QByteArray>>("sent");
    using L = QList<QByteArray>;
    QTest::addRow("FM1 9850") << QVariantList{2, 9850} << L{frame(0xC0, {1, 1, 1, 0x26, 0x7A, 0})};
    QTest::addRow("AM2 1008") << QVariantList{6, 1008} << L{frame(0xC0, {1, 1, 18, 0x03, 0xF0, 0})};
    QTest::addRow("one item") << QVariantList{2} << L{};
}

void TestDriver72::radio()
{
    QFETCH(QVariantList, items);
    QFETCH(QList<QByteArray>, sent);
    DriverHarness h(kId);
    h.driver()->setSrcState(CanbusInterface::SRC_RADIO, items);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver72::media()
{
    DriverHarness h(kId);
    const QVariantList items{0, 3, 10, 125, 3700, "Ab", QString::fromUtf8("\xe2\x82\xac")};
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA2_A, items);
    // Length 3700 s: 61 min 40 s; position 125 s: 2 min 5 s.
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0xC1, {61, 40, 2, 5})});
    // "Ab" is 4 bytes, the euro sign 2: the length byte counts both with their marks, + 3.
    const QByteArray texts = frame(0xC0, {8, 0xFF, 0x01, 0, 'A', 0, 'b', 0, 0, 0x20, 0xAC, 0, 0});
    QCOMPARE(int(texts.at(2)), 13);
    QTRY_COMPARE(h.sentFrames().size(), 2);
    QCOMPARE(h.sentFrames().at(1), texts);

    // Unchanged texts go once only; the time every time.
    h.clearSent();
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, items);
    QTest::qWait(300);
    QCOMPARE(h.sentFrames(), QList<QByteArray>{frame(0xC1, {61, 40, 2, 5})});
    h.clearSent();
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, QVariantList{0, 0, 0, 0, 0, "C", ""});
    QTRY_COMPARE(h.sentFrames().size(), 2);
    QCOMPARE(h.sentFrames().at(1), frame(0xC0, {5, 0xFF, 0x01, 0, 'C', 0, 0, 0, 0}));

    // A title too long for one frame is cut, and the frame stays whole.
    h.clearSent();
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, QVariantList{0, 0, 0, 0, 0, QString(300, 'x'), "y"});
    QTRY_COMPARE(h.sentFrames().size(), 2);
    const QByteArray longFrame = h.sentFrames().at(1);
    QCOMPARE(int(quint8(longFrame.at(2))), longFrame.size() - 4);
    QCOMPARE(longFrame.size(), 4 + 3 + 120 + 2 + 2 + 2);
}

void TestDriver72::phone_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("code");
    QTest::addRow("hang up") << 0 << 0;
    QTest::addRow("incoming") << 1 << 1;
    QTest::addRow("other") << 9 << 4;
}

void TestDriver72::phone()
{
    QFETCH(int, state);
    QFETCH(int, code);
    DriverHarness h(kId);
    h.driver()->setSrcState(CanbusInterface::SRC_PHONE, QVariantList{state, "Al", "12"});
    // "12:Al" in UTF-16BE is ten bytes.
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xC0, {6, 0}),
                                                frame(0xB0, {code, 1, 0, '1', 0, '2', 0, ':', 0, 'A', 0, 'l'})}));
}

void TestDriver72::callTimer()
{
    DriverHarness h(kId);
    h.driver()->setSrcState(CanbusInterface::SRC_PHONE, QVariantList{3, "A", "1"});
    h.clearSent();
    // The timer counts the call's seconds; each tick tells the box.
    QTRY_VERIFY(!h.sentFrames().isEmpty());
    QCOMPARE(h.sentFrames().first(), frame(0xB1, {0, 1}));
    h.driver()->setSrcState(CanbusInterface::SRC_PHONE, QVariantList{0, "A", "1"});
    h.clearSent();
    QTest::qWait(1300);
    QVERIFY(h.sentFrames().isEmpty());
    // The slot itself: minutes and seconds.
    for (int i = 0; i < 61; ++i)
        driver(h)->CallSelectSlot();
    QCOMPARE(h.sentFrames().last(), frame(0xB1, {1, 1}));
}

void TestDriver72::clock()
{
    DriverHarness h(kId);
    DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2024, 3, 9), QTime(21, 5, 7)));
    h.driver()->setCurrentTime(1, 2, 3);
    DataSaveControl::saveSettingData(QStringLiteral("Time24hFormat"), false, QString());
    h.driver()->setCurrentTime(1, 2, 3);
    DateTimeCtrl::getInstance()->clearFixedDateTime();
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xA6, {24, 3, 9, 21, 5, 7, 1}),
                                                frame(0xA6, {24, 3, 9, 0x80 | 21, 5, 7, 1})}));
}

void TestDriver72::language()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    driver(h)->languageChanged(QStringLiteral("ko"));
    QVERIFY(h.sentFrames().isEmpty());
    driver(h)->languageChanged(QStringLiteral("ch_ft"));
    driver(h)->languageChanged(QStringLiteral("en"));
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{frame(0xC6, {0x0A, 1, 1}), frame(0xC6, {0x0A, 1, 2})}));
    QCOMPARE(int(info(h).setup4.group10Item1), 2);
    QCOMPARE(changed.count(), 2);
}

void TestDriver72::touch_data()
{
    QTest::addColumn<bool>("full");
    QTest::addColumn<QList<int>>("press");     // x, y
    QTest::addColumn<QList<int>>("release");   // x, y
    QTest::addColumn<int>("code");             // -1: nothing sent

    // A 900 x 600 screen: the lines lie at x 300, 600 and y 200, 400.
    auto tap = [](bool full, int x, int y, int code) {
        QTest::addRow("%s tap %d,%d", full ? "full" : "plain", x, y)
            << full << QList<int>{x, y} << QList<int>{x + 5, y - 5} << code;
    };
    tap(true, 450, 300, 2);
    tap(false, 450, 300, 3);
    tap(false, 450, 500, 8);
    tap(false, 800, 300, 10);
    tap(false, 800, 500, -1);
    tap(true, 800, 500, 9);
    tap(true, 100, 100, 5);
    // On a line: nothing.
    QTest::addRow("tap on x 300") << true << QList<int>{300, 300} << QList<int>{300, 300} << -1;
    QTest::addRow("tap just off 301") << true << QList<int>{301, 300} << QList<int>{301, 300} << 2;
    // 20 pixels is still a tap, 21 is not.
    QTest::addRow("moved 20") << false << QList<int>{430, 280} << QList<int>{450, 300} << 3;
    QTest::addRow("moved 21 short") << false << QList<int>{429, 300} << QList<int>{450, 300} << -1;
    // Swipes: more than a fifth of the height (120) down or up, less than 180 across.
    QTest::addRow("swipe down") << false << QList<int>{450, 100} << QList<int>{460, 221} << 1;
    QTest::addRow("down 120 only") << false << QList<int>{450, 100} << QList<int>{450, 220} << -1;
    QTest::addRow("down, wide") << false << QList<int>{100, 100} << QList<int>{280, 300} << -1;
    QTest::addRow("swipe left") << true << QList<int>{800, 300} << QList<int>{500, 330} << 18;
    QTest::addRow("swipe right") << true << QList<int>{100, 300} << QList<int>{400, 330} << 19;
}

void TestDriver72::touch()
{
    QFETCH(bool, full);
    QFETCH(QList<int>, press);
    QFETCH(QList<int>, release);
    QFETCH(int, code);
    DriverHarness h(kId);
    if (full)
        h.feed(frame(0x50, {0x02, 0}));
    Canbus72Obj* d = driver(h);
    d->setTcanBussend(press[0], press[1], 900, 600, 0);
    d->setTcanBussend(release[0], release[1], 900, 600, 1);   // a move: nothing
    QVERIFY(h.sentFrames().isEmpty());
    d->setTcanBussend(release[0], release[1], 900, 600, 2);
    QCOMPARE(h.sentFrames(), code < 0 ? QList<QByteArray>{} : QList<QByteArray>{frame(0x82, {code})});
}

void TestDriver72::bluetoothCallState()
{
    Phone phone;
    DriverHarness h(kId);
    tqappframework::ModuleManager::self()->registerModule(
        QStringLiteral("bluetooth"),
        QSharedPointer<tqappframework::Module>(new tqappframework::PeerModule(QStringLiteral("bluetooth"), &phone)));
    h.manager()->setId(71, false);
    h.manager()->setId(kId, false);
    emit phone.callStateChanged(true);
    // The driver made the connection when it started.
    QVERIFY(QObject::disconnect(&phone, SIGNAL(callStateChanged(bool)), h.driver(),
                                SLOT(btCallStatesChangeSlot(bool))));
    tqappframework::ModuleManager::self()->unregisterModule(QStringLiteral("bluetooth"));
}

QTEST_GUILESS_MAIN(TestDriver72)
#include "tst_driver72.moc"
