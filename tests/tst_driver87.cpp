// Peugeot Citroen (87): climate, the record's frames, radar, keys, commands and what
// the head unit reports.

#include <QtTest>

#include "canbus87/canbus87.h"
#include "canbuscontrol.h"
#include "datetimectrl.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::bytes;
using testframes::hex;

namespace {

QByteArray fd(int type, const QByteArray& data)
{
    return canbus::buildFrame(canbus::FrameFamily::StartFD8, quint8(type), data);
}
QByteArray fd(int type, std::initializer_list<int> data) { return fd(type, bytes(data)); }

Data87Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data87Info>(); }
Canbus87Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus87Obj*>(h.driver()); }

template <std::size_t N>
QString list(const std::array<quint8, N>& values)
{
    QStringList out;
    for (quint8 v : values)
        out << QString::number(v);
    return out.join(QLatin1Char(','));
}

// What a row reads back from the record.
struct Probe
{
    QString (*read)(const Data87Info&);
};

} // namespace
Q_DECLARE_METATYPE(Probe)

class TestDriver87 : public QObject
{
    Q_OBJECT

private slots:
    void climate_data();
    void climate();
    void climateRepeated();
    void recordFrames_data();
    void recordFrames();
    void doorsRadarSteering();
    void keys_data();
    void keys();
    void commands_data();
    void commands();
    void reports();
    void gestures_data();
    void gestures();
    void shortFrames();
};

void TestDriver87::climate_data()
{
    QTest::addColumn<QByteArray>("data");   // bytes 3 to 9
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("fields");
    auto row = [](const char* name, const QByteArray& data, const QStringList& fields, bool rightDriver = false) {
        QTest::addRow("%s", name) << data << rightDriver << fields;
    };
    row("5d: AC, fresh air, auto loop, auto, dual, rear defrost", bytes({0x5D, 0, 1, 1, 0, 0, 0}),
        {"airAC=1", "airPower=0", "airOnOff=0", "airInnerLoop=0", "airOuterLoop=1", "airAutoLoop=1", "airAuto=1",
         "airDual=1", "airDefrostRear=1"});
    row("a0: power and recirculation", bytes({0xA0, 0, 1, 1, 0, 0, 0}),
        {"airPower=1", "airOnOff=1", "airAC=0", "airInnerLoop=1", "airOuterLoop=0"});
    row("af: up and down vents, fan held at 7", bytes({0, 0xAF, 1, 1, 0, 0, 0}),
        {"airWindUpLeft=1", "airWindUpRight=1", "airWindFrontLeft=0", "airWindDownRight=1", "airWindSpeedLeft=7",
         "airWindSpeedRight=7"});
    row("2c 2d: half degrees", bytes({0, 0, 44, 45, 0, 0, 0}),
        {"tempLeft=22", "tempRight=22.5", "tempLeftVisible=1", "tempLeftFahrenheit=0"});
    row("2c 2d: exchanged on a right-hand drive", bytes({0, 0, 44, 45, 0, 0, 0}), {"tempLeft=22.5", "tempRight=22"}, true);
    row("00 ff: low and high ends", bytes({0, 0, 0, 255, 0, 0, 0}),
        {"tempLeftLow=1", "tempLeftHigh=0", "tempLeft=0", "tempRightHigh=1", "tempRightLow=0"});
    row("81: Fahrenheit and front defrost", bytes({0, 0, 72, 255, 0x81, 0, 0}),
        {"tempLeft=72", "tempRight=255", "tempLeftFahrenheit=1", "tempRightFahrenheit=1", "airDefrostFront=1"});
}

void TestDriver87::climate()
{
    QFETCH(QByteArray, data);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, fields);
    DriverHarness h(87);
    h.driver()->setRightDriver(rightDriver);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(fd(0x21, data));
    compareFields(*h.driver()->getAirData(), fields);
    QCOMPARE(air.count(), 1);
}

void TestDriver87::climateRepeated()
{
    DriverHarness h(87);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy record(h.driver(), SIGNAL(dataChanged()));
    h.feed(fd(0x21, {0x40, 0x02, 44, 44, 0, 0, 0xC0}));
    QCOMPARE(info(h).body.airModeByte, quint8(2));   // 3 held at 2
    h.driver()->getAirData()->airAC = 0;
    h.driver()->getAirData()->airWindSpeedLeft = 0;
    h.feed(fd(0x21, {0x40, 0x02, 44, 44, 0, 0, 0xC0}));   // the same again: nothing looked at
    QCOMPARE(h.driver()->getAirData()->airAC, quint8(0));
    h.feed(fd(0x21, {0x40, 0x05, 44, 44, 0, 0, 0xC0}));   // only the fan byte moved
    compareFields(*h.driver()->getAirData(), {"airAC=0", "airWindSpeedLeft=5"});
    QCOMPARE((QList<int>{air.count(), record.count()}), (QList<int>{2, 1}));
}

void TestDriver87::recordFrames_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<Probe>("probe");
    QTest::addColumn<QString>("expected");
    const Probe body{[](const Data87Info& i) { return list(std::array<quint8, 4>{i.body.bodyByte0, i.body.bodyLevel,
                                                                                i.body.bodyFlag7, i.body.bodyLevel7}); }};
    QTest::addRow("01: byte 5") << fd(0x01, {1, 2, 51, 4}) << body << "51,0,0,0";
    QTest::addRow("27: level held at 31") << fd(0x27, {40, 0}) << body << "0,31,0,0";
    QTest::addRow("40: flag and level held at 7") << fd(0x40, {0x8F, 0}) << body << "0,0,1,7";
    const Probe preset{[](const Data87Info& i) { return list(i.preset.flags) + QStringLiteral(" %1:%2")
                                                        .arg(i.preset.presetHour).arg(i.preset.presetMinute); }};
    QTest::addRow("22 80 023b: 571 minutes") << fd(0x22, {0x80, 0x02, 0x3B, 0}) << preset << "1,0,0,0,0,0,0,0 9:31";
    QTest::addRow("22 01 05a1: past a day") << fd(0x22, {0x01, 0x05, 0xA1, 0}) << preset << "0,0,0,0,0,0,0,1 0:1";
    const Probe charge{[](const Data87Info& i) { const auto& c = i.charging;
        return list(std::array<quint8, 4>{c.chargeHour, c.chargeMinute, c.chargeFlag, c.chargeLevel}); }};
    QTest::addRow("52 005b: 91 minutes") << fd(0x52, {0x00, 0x5B}) << charge << "1,31,0,0";
    QTest::addRow("52 05a0: a whole day is 23") << fd(0x52, {0x05, 0xA0}) << charge << "23,0,0,0";
    QTest::addRow("53 83: flag, level held at 2") << fd(0x53, {0x83, 0}) << charge << "0,0,1,2";
    const Probe speeds{[](const Data87Info& i) { return list(i.memorySpeed.values) + ' ' + list(i.cruising.values); }};
    QTest::addRow("3b 84: six flags then speeds") << fd(0x3B, {0x84, 1, 2, 3, 4, 5, 0}) << speeds
            << "1,0,0,0,0,1,1,2,3,4,5 0,0,0,0,0,0,0,0,0,0,0,0,0,0";
    QTest::addRow("3d: twelve bytes") << fd(0x3D, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) << speeds
            << "0,0,0,0,0,0,0,0,0,0,0 1,2,3,4,5,6,7,8,9,10,11,12,0,0";
    QTest::addRow("3f 40: second flag") << fd(0x3F, {0x40, 0}) << speeds
            << "0,0,0,0,0,0,0,0,0,0,0 0,0,0,0,0,0,0,0,0,0,0,0,0,1";
    const Probe items{[](const Data87Info& i) { return list(i.items.flags); }};
    QTest::addRow("41 c1: bit 7 first") << fd(0x41, {0xC1, 0}) << items << "1,1,0,0,0,0,0,1";
    const Probe flow{[](const Data87Info& i) { return QString::number(i.energyFlow.energyFlowMode) + ' '
                                                      + list(i.energyFlow.flags); }};
    QTest::addRow("50 f5 81: mode held at 9") << fd(0x50, {0xF5, 0x81, 0}) << flow << "9 1,0,0,0,0,0,0,1";
    const Probe stats{[](const Data87Info& i) { const auto& s = i.statistics;
        return QStringList{QString::number(s.statKwhMode), s.statKwh, QString::number(s.statFuelMode), s.statFuel,
                           list(s.kwhBars), list(s.fuelBars)}.join(' '); }};
    QTest::addRow("51 00: electric page") << fd(0x51, {0, 5, 0x01, 0x2D, 31, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9})
            << stats << "2 30.1kwh 0 -- 30,2,0,0,0,0,0,0,0,0,0,9 0,0,0,0,0,0";
    QTest::addRow("51 01: fuel page") << fd(0x51, {1, 1, 0, 55, 12, 3, 0, 0, 0, 7, 8}) << stats
            << "0 -- 1 5.5L/100KM 0,0,0,0,0,0,0,0,0,0,0,0 10,3,0,0,0,7";
    const Probe trip{[](const Data87Info& i) { const auto& t = i.trip;
        return QStringList{t.tripConsumption, t.tripRange, t.tripDistance, t.tripTime, t.tripSpeed, t.trip1Consumption,
                           t.trip1Speed, t.trip1Distance, t.trip2Consumption, t.trip2Speed, t.trip2Distance}.join(' '); }};
    QTest::addRow("33: at the limits") << fd(0x33, {0x0B, 0xB8, 0x07, 0xD0, 0x17, 0x70, 1, 2, 3, 0x30, 0x39})
            << trip << "300L/100KM 2000KM 6000KM 1:2:3 123.45km/h -- -- -- -- -- --";
    QTest::addRow("33: past the limits") << fd(0x33, {0x0B, 0xB9, 0x07, 0xD1, 0x17, 0x71, 255, 2, 3, 0, 0})
            << trip << "-- -- -- --:--:-- 0km/h -- -- -- -- -- --";
    QTest::addRow("34: first trip at the limits") << fd(0x34, {0x00, 0x4B, 0x00, 0xFA, 0x27, 0x0F}) << trip
            << "-- -- -- --:--:-- -- 7.5L/100KM 250KM/H 9999KM -- -- --";
    QTest::addRow("35: second trip") << fd(0x35, {0x00, 0x0A, 0x00, 0x32, 0x00, 0x10}) << trip
            << "-- -- -- --:--:-- -- -- -- -- 1L/100KM 50KM/H 16KM";
    const Probe status{[](const Data87Info& i) { return list(i.status.values); }};
    QTest::addRow("38: levels and their clamps") << fd(0x38, {0, 0x83, 0x5B, 0xA5, 0xD7, 0x1F, 0x7E}) << status
            << "1,0,0,0,0,0,2,0,1,0,2,1,1,5,0,0,1,0,1,3,1,0,3,1,0,0,0,1,2,0,1,8,1,0";
}

void TestDriver87::recordFrames()
{
    QFETCH(QByteArray, frame);
    QFETCH(Probe, probe);
    QFETCH(QString, expected);
    DriverHarness h(87);
    QSignalSpy record(h.driver(), SIGNAL(dataChanged()));
    h.feed(frame);
    QCOMPARE(probe.read(info(h)), expected);
    QCOMPARE(record.count(), 1);
}

void TestDriver87::doorsRadarSteering()
{
    DriverHarness h(87);
    h.driver()->setPowerOffState();   // this box's signals go on while the unit is off
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.feed(fd(0x38, {0xA8, 0, 0, 0x07, 0, 0, 0}));
    h.feed(fd(0x38, {0xA8, 0, 0, 0x07, 0, 0, 0}));
    compareFields(*h.driver()->getCardoorData(),
                  {"doorFrontLeft=1", "doorFrontRight=0", "doorRearLeft=1", "doorRearRight=0", "doorTrunk=1"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag2=1", "bodyFlag1=1", "bodyFlag31=1"});
    QCOMPARE(doors.count(), 1);
    h.feed(fd(0x32, {0, 1, 2, 3, 4, 5, 9, 0}));   // rear 1 2 3, front 4 5 9
    compareFields(*h.driver()->getRadarData(),
                  {"radarLevels=10", "radarRearLeft=8", "radarRearLeftMid=6", "radarRearRightMid=6",
                   "radarRearRight=4", "radarFrontLeft=2", "radarFrontLeftMid=0", "radarFrontRight=0",
                   "radarOn=1"});
    h.feed(fd(0x29, {100, 0, 0}));
    QCOMPARE(steering.at(0), (QList<QVariant>{-100, 5450, true}));
    h.feed(fd(0x36, {0x85, 0}));
    h.feed(fd(0x36, {0x15, 0}));
    QCOMPARE(outdoor.at(0), (QList<QVariant>{QStringLiteral("-5.0℃"), 0}));
    QCOMPARE(info(h).trip.outdoorText, QStringLiteral("21.0℃"));
}

void TestDriver87::keys_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("inCall");
    QTest::addColumn<int>("code");   // 0 for no key
    QTest::addRow("02") << 2 << false << 0x1100029;
    QTest::addRow("11 out of a call") << 17 << false << 0x1200027;
    QTest::addRow("11 in a call") << 17 << true << 0x120002B;
    QTest::addRow("2d in a call keeps its key") << 45 << true << 0x120002B;
    QTest::addRow("80: the highest") << 128 << false << 0x1200030;
    QTest::addRow("81: past the highest") << 129 << false << 0;
    QTest::addRow("01: below the lowest") << 1 << false << 0;
    QTest::addRow("2f: the climate panel instead") << 0x2F << false << 0;
}

void TestDriver87::keys()
{
    QFETCH(int, value);
    QFETCH(bool, inCall);
    QFETCH(int, code);
    DriverHarness h(87);
    h.driver()->setCallState(inCall);
    QSignalSpy panel(CanbusControl::getInstance(), SIGNAL(otherPropertyChanged(QString,QVariant)));
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    h.feed(fd(0x02, {value, 0}));
    const int panelShown = value == 0x2F ? 1 : 0;
    QCOMPARE((QList<int>{panel.count(), air.count()}), (QList<int>{panelShown, panelShown}));
    h.feed(fd(0x02, {0, 0}));   // nothing to release: each report is a whole press
    const int key = h.driver()->toKkmapKey(code);
    QCOMPARE(h.keyEvents(), code ? (QList<int>{key, 1, key, 0}) : QList<int>{});
}

void TestDriver87::commands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("state");   // climate field set to 1 first, or empty
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addRow("AirOnOff: press and release") << "AirOnOff" << "" << "" << false
            << QList<QByteArray>{hex("fd058a0c019c"), hex("fd058a0c009b")};
    QTest::addRow("AirAC while on") << "AirAC" << "" << "airAC" << false << QList<QByteArray>{fd(0x8A, {2, 0})};
    QTest::addRow("AirDUAL") << "AirDUAL" << "" << "airAuto" << false << QList<QByteArray>{fd(0x8A, {11, 1})};
    QTest::addRow("fan up") << "AirWindSpeedAddSubFront" << "1" << "" << false << QList<QByteArray>{fd(0x8A, {10, 1})};
    QTest::addRow("left warmer") << "AirTempFrontLeft" << "add" << "" << false << QList<QByteArray>{fd(0x8A, {4, 1})};
    QTest::addRow("left cooler, right-hand drive") << "AirTempFrontLeft" << "sub" << "" << true
            << QList<QByteArray>{fd(0x8A, {5, 2})};
    QTest::addRow("unknown key") << "AirRearLock" << "1" << "" << false << QList<QByteArray>{};
}

void TestDriver87::commands()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, state);
    QFETCH(bool, rightDriver);
    QFETCH(QList<QByteArray>, frames);
    DriverHarness h(87);
    h.driver()->setRightDriver(rightDriver);
    const QMetaObject& air = AirData::staticMetaObject;
    if (!state.isEmpty())
        QVERIFY(air.property(air.indexOfProperty(qPrintable(state))).writeOnGadget(h.driver()->getAirData(), 1));
    h.driver()->setCanbusState(key, value);
    QTest::qWait(400);
    QCOMPARE(h.sentFrames(), frames);
}

void TestDriver87::reports()
{
    DriverHarness h(87);
    Canbus87Obj* d = driver(h);
    int interval = 0;
    QByteArray out;
    QVERIFY(d->needSendConnect(interval, out) && interval == 1000 && out.isEmpty());
    QCOMPARE(h.driver()->checkProtocolData(fd(0x7F, QByteArray("PSA 2.1\0x", 9))), 1);
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("PSA 2.1"));
    QVERIFY(!d->needSendConnect(interval, out));   // the request still goes out
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{hex("fd048f21b4"), hex("fd048f21b4")}));
    h.clearSent();

    for (const char* code : {"ch_ft", "ps", "th", "xx"})
        d->languageChanged(QLatin1String(code));
    d->setSrcState(CanbusInterface::srctype(1), {5, 1008});
    d->setSrcState(CanbusInterface::srctype(1), {2, 9850});
    d->setSrcState(CanbusInterface::srctype(1), {2});   // no frequency: nothing
    d->setSrcState(CanbusInterface::srctype(16), {0, 3, 300, 0, 0, QStringLiteral("Été")});
    d->setSrcState(CanbusInterface::srctype(22), {0, 1, 2, 0, 0, QStringLiteral("Été")});   // same title
    d->setSrcState(CanbusInterface::srctype(9), {1, 2});
    QTRY_COMPARE(h.sentFrames().size(), 7);
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{
        fd(0x80, {0x0B, 39}), fd(0x80, {0x0B, 49}), hex("fd09c00101 1003f000 ce"), fd(0xC0, {1, 1, 0, 0x26, 0x7A, 0}),
        fd(0xC0, {12, 1, 0x01, 0x2C, 0, 3}), fd(0xC0, {11, 1, 0, 2, 0, 1}),
        fd(0xC3, {3, 0xC3, 0x89, 't', 0xC3, 0xA9})}));
    h.clearSent();
    d->setSrcState(CanbusInterface::srctype(24), {1, QStringLiteral("Ann"), QStringLiteral("12")});
    QTRY_COMPARE(h.sentFrames().size(), 2);
    QCOMPARE(h.sentFrames(), (QList<QByteArray>{fd(0xC0, {5, 0xFF, 0, 0, 0, 0}),
                                               fd(0xC3, QByteArray("\x03incoming call: Ann  12"))}));
    h.clearSent();

    Data87Info page = info(h);
    page.body.exitSelectMode = 2;
    page.body.exitSelectValue = 5;
    d->setDataInfo(QVariant::fromValue(page));
    d->setCurrentTime(0, 0, 0);
    QTRY_COMPARE(h.sentFrames().size(), 2);
    const QDateTime now = DateTimeCtrl::getInstance()->getCurrentDateTime();
    const QByteArray clock = h.sentFrames().at(0);
    QCOMPARE(clock.left(6), hex("fd08a6") + bytes({(now.date().year() + 48) & 0xFF, now.date().month(),
                                                  now.date().day()}));
    QCOMPARE(clock, fd(0xA6, bytes({clock[3], clock[4], clock[5], clock[6], clock[7]})));
    QCOMPARE(h.sentFrames().at(1), hex("fd06a70105b3"));   // a length byte one above its size
}

void TestDriver87::gestures_data()
{
    QTest::addColumn<QList<int>>("move");   // press x, y, release x, y on 1000 x 600
    QTest::addColumn<int>("level");         // frame 0x40's display level
    QTest::addColumn<int>("code");          // -1 for none
    QTest::addRow("middle, level 1") << QList<int>{500, 300, 510, 310} << 1 << 5;
    QTest::addRow("middle, level 3") << QList<int>{500, 300, 500, 300} << 3 << 2;
    QTest::addRow("middle, level 4") << QList<int>{500, 300, 500, 300} << 4 << -1;
    QTest::addRow("top third") << QList<int>{900, 100, 900, 100} << 1 << 6;
    QTest::addRow("up by a fifth") << QList<int>{500, 400, 500, 280} << 1 << 9;
    QTest::addRow("down, less than a fifth") << QList<int>{500, 100, 500, 219} << 1 << -1;
    QTest::addRow("moved 21: no tap") << QList<int>{500, 300, 521, 300} << 1 << -1;
}

void TestDriver87::gestures()
{
    QFETCH(QList<int>, move);
    QFETCH(int, level);
    QFETCH(int, code);
    DriverHarness h(87);
    h.feed(fd(0x40, {level, 0}));
    driver(h)->setTcanBussend(move[0], move[1], 1000, 600, 0);
    driver(h)->setTcanBussend(move[2], move[3], 1000, 600, 2);
    const QByteArray expected = hex("fd05a8") + bytes({code, (0x05 + 0xA8 + code) & 0xFF});   // one short
    QCOMPARE(h.sentFrames(), code >= 0 ? QList<QByteArray>{expected} : QList<QByteArray>{});
}

void TestDriver87::shortFrames()
{
    // One byte short of each type's least size: handled, and nothing changes.
    const QList<QPair<int, int>> minimums = {{0x01, 7}, {0x02, 5}, {0x21, 11}, {0x22, 7}, {0x27, 5}, {0x29, 6},
                                             {0x32, 11}, {0x33, 15}, {0x34, 10}, {0x38, 11}, {0x3B, 10},
                                             {0x40, 5}, {0x50, 7}, {0x52, 5}};
    DriverHarness h(87);
    h.watchActivity();
    for (const auto& m : minimums) {
        const QByteArray frame = fd(m.first, QByteArray(m.second - 5, char(0xFF)));
        QCOMPARE(h.driver()->checkProtocolData(frame), 1);
    }
    QCOMPARE(h.activity(), 0);
    QCOMPARE(h.driver()->checkProtocolData(fd(0x30, {1, 2})), 0);
}

QTEST_GUILESS_MAIN(TestDriver87)
#include "tst_driver87.moc"
