// GM box (and the make's rows built on it): frames in, records, signals and keys out;
// slots and reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus37/canbus37.h"
#include "datasavecontrol.h"
#include "drivercheck.h"
#include "framebuilders.h"
#include "recordcheck.h"

using namespace testframes;
using Action = std::function<void(DriverHarness&)>;
using Frames = QList<QByteArray>;
using Keys = QList<QPair<int, int>>;   // head-unit key code, pressed
Q_DECLARE_METATYPE(Action)

namespace {

constexpr int kId = 37;
const QString kCelsius = QString(QChar(0x2103));

Canbus37Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus37Obj*>(h.driver()); }
Data37Info info(const DriverHarness& h) { return infoOf<Data37Info>(h); }

void setModel(DriverHarness& h, int carModel, int wheelButtons)
{
    Data37Info d = info(h);
    d.body.carModel = quint8(carModel);
    d.parking.steeringWheelButtonType = quint8(wheelButtons);
    h.driver()->setDataInfo(QVariant::fromValue(d));
}

// A field of the driver's record, else of the climate record (tyres, seats).
QStringList readFields(const DriverHarness& h, const QStringList& expected)
{
    const Data37Info d = info(h);
    QStringList out;
    for (const QString& item : expected) {
        const QString name = item.section(QLatin1Char('='), 0, 0);
        QVariant v;
        const bool found = canbus::readRecordField(d, name, &v) || canbus::readRecordField(*h.driver()->getAirData(), name, &v);
        out.append(found ? name + QLatin1Char('=') + fieldText(v) : name + QStringLiteral(": no such field"));
    }
    return out;
}

} // namespace

class TestDriver37 : public QObject
{
    Q_OBJECT

private slots:
    void connection();
    void climate_data();
    void climate();
    void keys_data();
    void keys();
    void body();
    void pages_data();
    void pages();
    void shortFrames_data();
    void shortFrames();
    void outbound_data();
    void outbound();
    void variants();
};

void TestDriver37::connection()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(ints({interval}) + ' ' + out.toHex(), QStringLiteral("1000 2e8101017c"));
    // The climate request at once, the version request a moment later.
    QTRY_COMPARE(h.sentFrames(), (Frames{hex("2e9001036b"), frame(0x90, {0x30})}));
    h.feed(frame(0x24, {0x40, 0}));   // walk B: only the version connects
    QVERIFY(!h.driver()->needSendDisconnect(out));
    setModel(h, 0, 2);
    h.clearSent();
    QCOMPARE(h.feed(frame(0x30, {'G', 'M', 0, 'x'})), 0);
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("GM"));
    QCOMPARE(h.sentFrames(), (Frames{frame(0x83, {0x81, 2}), frame(0x90, {0x03})}));
    out.clear();
    QVERIFY(!h.driver()->needSendConnect(interval, out) && out.isEmpty());
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x81, {0x00}));
}

void TestDriver37::climate_data()
{
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("airSignals");
    auto row = [](const char* rule, bool rightHand, const Frames& frames, const QStringList& e, int airSignals) {
        QTest::addRow("%s %s", frames.last().toHex().constData(), rule) << rightHand << frames << e << airSignals;
    };
    row("bits of bytes 3 and 4, set points, seats, outdoor, state", false,
        {frame(0x03, {0xD3, 0x06, 3, 28, 0x21, 0xFB, 0x86})},
        {"airOnOff=1", "airInnerLoop=0", "airOuterLoop=1", "airDefrostRear=1", "airAutoLoop=0", "airWindSpeedLeft=3",
         "airWindUpLeft=1", "airWindFrontRight=1", "airWindDownLeft=0", "airDefrostFront=0", "tempLeft=18.0",
         "tempRight=30.5", "seatHotLeft=2", "seatHotRight=1", "outdoorTemp=-5.0" + kCelsius, "airAC=1",
         "airStateTop=1", "airStateMode=1", "airStateLow=0"}, 0);
    row("inverse bits, top fan, windscreen, set-point ends", false, {frame(0x03, {0x2C, 0x12, 0, 30, 0, 0, 0x08})},
        {"airOnOff=0", "airInnerLoop=1", "airOuterLoop=0", "airAutoLoop=1", "airDefrostRear=0", "airWindSpeedRight=7",
         "airDefrostFront=1", "airWindUpLeft=0", "tempLeftLow=1", "tempRightHigh=1", "tempRightLow=0", "tempRight=",
         "airAC=0", "airStateMode=2", "airPower=1"}, 0);
    row("right-hand drive swaps the set points; values beyond the half degrees", true,
        {frame(0x03, {0x80, 1, 29, 36, 0, 0, 0})}, {"tempLeft=32.0", "tempRight=16.0", "tempLeftHigh=0"}, 1);
    row("distribution 10 keeps the last one", false,
        {frame(0x03, {0x80, 8, 1, 1, 0, 0, 0}), frame(0x03, {0x80, 10, 31, 1, 0, 0, 0})},
        {"airWindUpRight=1", "airWindFrontLeft=0", "airWindDownRight=1", "tempLeft=16.5"}, 2);
    // The A/C bit of byte 3 counts only when it moved; byte 9 has the last word.
    row("A/C bit unmoved", false, {frame(0x03, {0xC0, 1, 1, 1, 0, 0, 0}), frame(0x03, {0xC1, 1, 1, 1, 0, 0, 0})},
        {"airAC=0", "airWindSpeedLeft=1"}, 2);
    row("the same frame again", false, {frame(0x03, {0x80, 1, 1, 1, 0, 0, 0}), frame(0x03, {0x80, 1, 1, 1, 0, 0, 0})},
        {"airOnOff=1"}, 1);
    row("outdoor and mode tell their own news", false,
        {frame(0x03, {0x80, 1, 1, 1, 0, 0, 0}), frame(0x03, {0x81, 1, 1, 1, 0, 25, 0}), frame(0x03, {0x82, 1, 1, 1, 0, 25, 4})},
        {"outdoorTemp=25.0" + kCelsius, "airStateMode=1"}, 1);
    // Power falls only at the frame that turns a running climate off; off and staying
    // off with the set points unmoved is no news.
    row("turned off", false, {frame(0x03, {0x80, 1, 1, 1, 0, 0, 0}), frame(0x03, {0x00, 1, 1, 1, 0, 0, 0})},
        {"airPower=0", "airOnOff=0"}, 2);
    row("stays off", false,
        {frame(0x03, {0x80, 1, 1, 1, 0, 0, 0}), frame(0x03, {0x00, 1, 1, 1, 0, 0, 0}), frame(0x03, {0x01, 1, 1, 1, 0, 0, 0})},
        {"airPower=1", "airWindSpeedLeft=1"}, 2);
    row("off without data: only the mode", false, {frame(0x03, {0x80, 1, 0xFF, 0xFF, 0x11, 0, 0x0C})},
        {"airOnOff=0", "airStateMode=3", "seatHotLeft=0", "tempLeft="}, 0);
    // Rear: half degrees, the outlets' table, then byte 4's high nibble over two entries.
    row("rear", false, {frame(0x45, {45, 0x53, 0, 0, 0})},
        {"tempRear=22.5", "tempRear2=22.5", "tempRearLow=0", "airRearSpare[5]=0", "airRearSpare[1]=0", "airRearSpare[6]=1",
         "airRearSpare[2]=1", "airRearSpare[3]=5", "airRearSpare[7]=5"}, 0);
    row("rear ends, outlets 5 keep", false, {frame(0x45, {0, 0x11, 0, 0, 0}), frame(0x45, {255, 0x05, 0, 0, 0})},
        {"tempRearLow=0", "tempRearHigh=1", "tempRear2High=1", "airRearSpare[5]=1", "airRearSpare[7]=0"}, 0);
    row("seat cooling", false, {frame(0x13, {0x21})}, {"seatCoolVisible=1", "seatCoolLeft=2", "seatCoolRight=1"}, 1);
}

void TestDriver37::climate()
{
    QFETCH(bool, rightHand);
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    QFETCH(int, airSignals);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightHand);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    for (const QByteArray& f : frames)
        QCOMPARE(h.feed(f), 0);
    QCOMPARE(readFields(h, expected), expected);
    QCOMPARE(air.count(), airSignals);
}

void TestDriver37::keys_data()
{
    QTest::addColumn<bool>("call");
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<Frames>("sent");
    auto row = [](bool call, bool reverse, const Frames& frames, const Keys& keys, const Frames& sent) {
        QTest::addRow("%s%s%s", call ? "call " : "", reverse ? "reverse " : "", frames[0].toHex().constData())
            << call << reverse << frames << keys << sent;
    };
    // A release (0) goes to the last key, also across the wheel and the panel.
    row(false, false, {frame(0x01, {8, 1}), frame(0x01, {0, 0})}, {{0x1100025, 1}, {0x1100025, 0}}, {});
    row(false, false, {frame(0x01, {1, 1}), frame(0x02, {0, 0})}, {{0x1100025, 1}, {0x1200030, 0}}, {});
    row(false, false, {frame(0x01, {6, 1})}, {{0x1300055, 1}}, {});
    row(true, false, {frame(0x01, {7, 1})}, {{0x1300059, 1}}, {});
    row(false, false, {frame(0x01, {11, 1})}, {{0, 1}}, {});
    // Reversing: a press of 3 or 4 picks the camera's view; their release is a key.
    row(false, true, {frame(0x01, {3, 1})}, {}, {frame(0x99, {0, 0, 0, 0, 0, 0})});
    row(false, true, {frame(0x01, {3, 0})}, {{0x110002E, 0}}, {});
    row(false, true, {frame(0x02, {3, 1})}, {{0x110002E, 1}}, {});
}

void TestDriver37::keys()
{
    QFETCH(bool, call);
    QFETCH(bool, reverse);
    QFETCH(Frames, frames);
    QFETCH(Keys, keys);
    QFETCH(Frames, sent);
    DriverHarness h(kId);
    h.driver()->setCallState(call);
    h.driver()->setInReverse(reverse);
    for (const QByteArray& f : frames)
        h.feed(f);
    Keys expected;
    for (const auto& k : keys)
        expected.append({h.driver()->toKkmapKey(k.first), k.second});
    QCOMPARE(h.keys(), expected);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver37::body()
{
    DriverHarness h(kId);
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    h.feed(frame(0x24, {0xAC, 0}));
    h.feed(frame(0x24, {0xAC, 0}));   // news every time; the bonnet has no bit here
    compareFields(*h.driver()->getCardoorData(),
                  {"doorFrontRight=1", "doorFrontLeft=0", "doorRearRight=1", "doorRearLeft=0", "doorTrunk=1", "doorHood=0"});
    QCOMPARE(doors.count(), 2);
    h.feed(frame(0x04, {0xC5}));
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag31=1", "bodyByte32=69"});

    // -40 sixteenths truncate to -2, then the sign turns.
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x26, {0xD8, 0xFF}));
    QCOMPARE(steering.value(0), (QList<QVariant>{2, 573, true}));
    QSignalSpy speed(h.driver(), SIGNAL(speedDataChanged(int,QString)));
    h.feed(frame(0x0B, {0x03, 0xC8}));
    QCOMPARE(speed.value(0), (QList<QVariant>{60, "Km/h"}));
    QCOMPARE(info(h).parking.speedText, QStringLiteral("60Km/h"));

    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    const RadarData& r = *h.driver()->getRadarData();
    h.feed(frame(0x22, {1, 2, 3, 4}));
    h.feed(frame(0x22, {1, 2, 3, 4}));   // a repeat redraws nothing
    h.feed(frame(0x23, {0, 5, 0, 0}));
    QCOMPARE((QList<int>{r.radarRearLeft, r.radarRearLeftMid, r.radarRearRightMid, r.radarRearRight, r.radarFrontLeftMid,
                         r.radarLevels, r.radarOn}),
             (QList<int>{1, 2, 3, 4, 5, 10, 1}));
    QCOMPARE(radar.count(), 2);
}

void TestDriver37::pages_data()
{
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    auto row = [](const Frames& frames, const QStringList& e) {
        QTest::addRow("%s", frames.last().toHex().constData()) << frames << e;
    };
    row({frame(0x05, {0x96, 0x09})}, {"airControl0=2", "airControl1=1", "airControl2=1", "airControl3=1", "airControl4=0",
                                      "airControl5=0", "airControl6=1", "airControl7=1"});
    row({frame(0x05, {0xFF, 0xFF})}, {"airControl0=2", "airControl1=2", "airControl7=2", "airControl5=1"});
    row({frame(0x06, {0xB5, 0x6A})}, {"bodyControl0=1", "bodyControl1=1", "bodyControl2=1", "bodyControl3=0",
                                      "bodyControl4=2", "bodyControl5=1", "bodyControl6=0", "bodyControl7=3",
                                      "bodyControl8=0", "bodyControl9=1", "bodyControl11=1", "bodyControl12=0"});
    row({frame(0x0A, {0xF7, 0xFF, 0x0C, 0x03, 0x80})},
        {"bodySetting3=1", "bodySetting4=1", "bodySetting5=2", "bodySetting6=2", "bodySetting10=1", "bodySetting11=2",
         "bodySetting15=0", "bodySetting16=3", "bodySetting18=0", "bodySetting24=0", "bodySetting25=2", "bodySetting26=1"});
    row({frame(0x07, {0x02})}, {"byte07=0"});
    row({frame(0x09, {9})}, {"onStarState=4"});
    row({frame(0x43, {0xA0, 0x33, 0, 0})}, {"bodyState0=1", "bodyState1=0", "bodyState2=1", "bodyState3=51"});
    row({frame(0x44, {0x5C, 0, 0, 0})}, {"airSetting0=0", "airSetting1=1", "airSetting2=0", "airSetting3=2", "airSetting4=1"});
    row({frame(0x47, {0xFF, 0xA8, 0x50, 0x11})}, {"hybrid0=1", "hybrid1=8", "hybrid2=1", "hybrid3=0", "hybrid7=0",
                                                  "hybrid8=0", "hybrid9=1", "hybrid11=1", "hybrid12=17"});
    row({frame(0x08, {0x13, 0x8A, 0xB0, 0xCF, 0x12, 0, 0, 0, 0, 0})}, {"phoneNumber=138*#012"});
    QByteArray text(24, '\0');
    text.replace(1, 4, "WiFi");
    row({frame(0x41, text)}, {"accessPoint=Access Point:WiFi", "password="});
    row({frame(0x42, text)}, {"password=password:WiFi"});
    // Prompt 0 keeps the shown prompt, one past the table empties it.
    row({frame(0x48, {0xA0, 7, 13, 0}), frame(0x48, {0, 0, 0, 0})},
        {"parkFlag0=0", "parkPrompt=Stop and enter reverse gear (left side position)"});
    row({frame(0x48, {0xA0, 7, 42, 0})}, {"parkFlag0=1", "parkFlag1=0", "parkFlag2=1", "parkByte=7",
                                         "parkPrompt=Drive forward (left vertical parking space)"});
    row({frame(0x48, {0, 0, 13, 0}), frame(0x48, {0, 0, 43, 0})}, {"parkPrompt="});
    row({frame(0x4A, {1, 0, 60, 61, 62, 63})}, {"tireStatus=2", "tirePressureFrontLeft=240.0KPa",
                                                "tirePressureRearRight=252.0KPa"});
    row({frame(0x4A, {2, 0x12, 0x34, 0x56, 0x78})}, {"tripWordA=4660", "tripWordB=22136"});
    row({frame(0x4A, {3, 0xA0, 0, 0x30, 0x39, 60, 0, 0x7B, 0, 0x55, 1, 0, 0, 0, 0, 0, 0, 0})},
        {"tripDistanceA=1234.5miles", "tripSpeedA=60.0km/h", "tripEconomyA=12.3gal", "tripConsumptionA=8.5L/100km",
         "tripDistanceB=6553.6miles"});
    row({frame(0x4A, {3, 0x50, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})},
        {"tripDistanceA=0.1km", "tripSpeedA=0.0mph", "tripEconomyA=0.0L", "tripConsumptionB=0.0miles/gal"});
    row({frame(0x4A, {3, 0x50, 0, 0, 1})}, {"tripDistanceA="});
}

void TestDriver37::pages()
{
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    for (const QByteArray& f : frames)
        QCOMPARE(h.driver()->checkProtocolData(f), 1);
    QCOMPARE(readFields(h, expected), expected);
    QCOMPARE(changed.count(), frames.size());
}

void TestDriver37::shortFrames_data()
{
    addShortFrameRows("2e", {{0x03, 11}, {0x04, 5}, {0x05, 6}, {0x06, 6}, {0x07, 5}, {0x08, 14}, {0x09, 5}, {0x0A, 9},
                             {0x0B, 6}, {0x0C, 5}, {0x0D, 5}, {0x13, 5}, {0x22, 8}, {0x23, 8}, {0x24, 6}, {0x26, 6},
                             {0x41, 28}, {0x42, 28}, {0x43, 8}, {0x44, 8}, {0x47, 7}, {0x48, 7}, {0x49, 5}});
}

void TestDriver37::shortFrames()
{
    QFETCH(int, type);
    QFETCH(int, minimum);
    DriverHarness h(kId);
    const QByteArray data(minimum - 4, '\x55');
    verifyShortFrame(h, frame(type, data));
    // Types the box does not send are not handled.
    for (int unknown : {0x00, 0x10, 0x4B, 0x7D})
        QCOMPARE(h.driver()->checkProtocolData(frame(unknown, data)), 0);
}

void TestDriver37::outbound_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<Frames>("sent");
    auto slot = [](const char* name, bool rightHand, QGenericArgument arg = QGenericArgument()) -> Action {
        return [=](DriverHarness& h) {
            h.driver()->setRightDriver(rightHand);
            QVERIFY(QMetaObject::invokeMethod(h.driver(), name, arg));
        };
    };
    QTest::addRow("SetleftPlus") << slot("SetleftPlus", false) << Frames{hex("2e8202070470")};
    QTest::addRow("SetleftPlus right-hand") << slot("SetleftPlus", true) << Frames{frame(0x82, {7, 20})};
    static const int seat1 = 1, seat2 = 2;
    QTest::addRow("LeftHeatingButton 1") << slot("LeftHeatingButton", false, Q_ARG(int, seat1)) << Frames{frame(0x82, {7, 22})};
    QTest::addRow("LeftHeatingButton 2") << slot("LeftHeatingButton", false, Q_ARG(int, seat2)) << Frames{};
    QTest::addRow("RightHeatingButton 2") << slot("RightHeatingButton", false, Q_ARG(int, seat2)) << Frames{frame(0x82, {7, 24})};
    auto clock = [](bool format24) -> Action {
        return [=](DriverHarness& h) {
            DataSaveControl::saveSettingData("Time24hFormat", format24, {});
            h.driver()->setCurrentTime(13, 7, 30);
        };
    };
    QTest::addRow("24h 13:07") << clock(true) << Frames{frame(0x89, {13, 7, 0})};
    QTest::addRow("12h 13:07") << clock(false) << Frames{frame(0x89, {13, 7, 1})};
    auto source = [](int type, const QVariantList& items) -> Action {
        return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
    };
    auto text = [](int code, const char* t) { return frame(0xC0, QByteArray(1, char(code)) + t); };
    QTest::addRow("radio FM3") << source(1, {4, 9850}) << Frames{text(1, "98.5MHz")};
    QTest::addRow("radio AM1") << source(1, {5, 0x103E7}) << Frames{text(2, "999KHz")};
    QTest::addRow("radio band 7") << source(1, {7, 9850}) << Frames{text(0, "87.5MHz")};
    QTest::addRow("media 16") << source(16, {0, 3, 12, 3725, 7384}) << Frames{text(6, "1:2:5/2:3:4--3/12")};
    QTest::addRow("media 22 at hour 256") << source(22, {0, 1, 2, 921605, 0}) << Frames{text(5, "0:0:5/0:0:0--1/2")};
    QTest::addRow("phone") << source(24, {1, "a", "b"}) << Frames{};
    auto language = [](const char* name, int stored) -> Action {
        return [=](DriverHarness& h) {
            driver(h)->languageChanged(name);
            QCOMPARE(int(info(h).parking.byte12), stored);
        };
    };
    QTest::addRow("language en") << language("en", 1) << Frames{frame(0x87, {1})};
    QTest::addRow("language ja") << language("ja", 0) << Frames{};
    auto touch = [](int model) -> Action {
        return [=](DriverHarness& h) { driver(h)->setTcanBussend(400, 240, 800, 480, model); };
    };
    QTest::addRow("touch pressed") << touch(0) << Frames{frame(0x98, {1, 0x01, 0xFF, 0x01, 0xF4, 0})};
    QTest::addRow("touch model 1") << touch(1) << Frames{};
    // The timer: variant counted from 0 on the wire, trajectory asked for in reverse.
    auto countdown = [](int carModel, int buttons, bool reverse) -> Action {
        return [=](DriverHarness& h) {
            setModel(h, carModel, buttons);
            h.driver()->setInReverse(reverse);
            driver(h)->onCountdown();
        };
    };
    QTest::addRow("countdown 5, buttons 2") << countdown(5, 2, false) << Frames{frame(0xE2, {4}), frame(0x83, {0x81, 2})};
    QTest::addRow("countdown 1 reverse") << countdown(1, 0, true) << Frames{frame(0xE2, {0}), frame(0x90, {0x26})};
    QTest::addRow("countdown 0 reverse") << countdown(0, 0, true) << Frames{};
    QTest::addRow("stored 40 and 9") << Action([](DriverHarness& h) {
        DataSaveControl::saveSettingData("CanbusCAR", 40, QString());
        DataSaveControl::saveSettingData("SteeringWheelButtonType", 9, QString());
        h.manager()->setId(33, false);   // selected again, the driver reads both
        h.manager()->setId(kId, false);
        h.clearSent();
        driver(h)->onCountdown();
    }) << Frames{frame(0xE2, {33}), frame(0x83, {0x81, 3})};
}

void TestDriver37::outbound()
{
    QFETCH(Action, action);
    QFETCH(Frames, sent);
    DriverHarness h(kId);
    action(h);
    QCOMPARE(h.sentFrames(), sent);
}

void TestDriver37::variants()
{
    for (int id : {38, 39}) {
        DriverHarness h(id);
        int interval = 0;
        QByteArray out;
        // Their own link form: the connect frame alone, no requests.
        QVERIFY(h.driver()->needSendConnect(interval, out));
        QCOMPARE(out, hex("2e8101017c"));
        QTest::qWait(200);
        QCOMPARE(h.sentFrames(), Frames{});
        // The make's frames decode, the version connects.
        h.feed(frame(0x24, {0x40, 0}));
        QCOMPARE(int(h.driver()->getCardoorData()->doorFrontLeft), 1);
        h.feed(frame(0x30, {'B', 0}));
        QVERIFY(!h.driver()->needSendConnect(interval, out));
        QVERIFY(h.driver()->needSendDisconnect(out));
    }
}

QTEST_GUILESS_MAIN(TestDriver37)
#include "tst_driver37.moc"
