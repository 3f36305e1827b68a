// SAIC MG Roewe box: frames in, records, signals and keys out; commands and reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus72/canbus72.h"
#include "canbuscontrol.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "drivercheck.h"
#include "framebuilders.h"
#include "recordcheck.h"

using namespace testframes;
using Action = std::function<void(DriverHarness&)>;
using Frames = QList<QByteArray>;
using Keys = QList<QPair<int, int>>;   // keyboard number, pressed
using Ints = QList<int>;
Q_DECLARE_METATYPE(Action)

namespace {

constexpr int kId = 72;

Canbus72Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus72Obj*>(h.driver()); }
Data72Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data72Info>(); }
QString celsius(const char* number) { return QString::fromUtf8(number) + QChar(0x2103); }

} // namespace

class TestDriver72 : public QObject
{
    Q_OBJECT

private slots:
    void connection();
    void climate_data();
    void climate();
    void bodyAndStatus();
    void pages();
    void shortFrames_data();
    void shortFrames();
    void responses_data();
    void responses();
    void media();
};

void TestDriver72::connection()
{
    DriverHarness h(kId);
    compareFields(*h.driver()->getAirData(), {"airEco=0", "airWindFrontLeft=0", "seatHotVisible=1", "airAcMax=255"});
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, hex("2e8101017c"));
    QTRY_COMPARE(h.sentFrames(), Frames{frame(0x90, {0x21, 0, 0})});   // the climate frame, a moment later
    h.feed(frame(0x54, {1}));   // any whole frame tells that the box answers
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    h.feed(frame(0x7F, {'R', 'W', 0, 'x'}));
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("RW"));
    h.driver()->setConnectedState(false);   // the disconnect frame goes out whatever the state
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x81, {0}));
}

void TestDriver72::climate_data()
{
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    auto row = [](bool rightHand, const Frames& frames, const QStringList& e) {
        QTest::addRow("%s%s", frames[0].toHex().data(), rightHand ? " right-hand" : "") << rightHand << frames << e;
    };
    // On, A/C, AUTO, DUAL, outer loop; face and feet, fan 3 -> 6; 17 and 30 degrees.
    row(false, {frame(0x21, {0xDA, 0x13, 1, 0x00, 14, 0x40})},
        {"airOnOff=1", "airAC=1", "airAuto=1", "airDual=1", "airOuterLoop=1", "airAutoLoop=0", "airWindFrontLeft=1",
         "airWindDownLeft=1", "airWindSpeedRight=6", "tempLeft=17", "tempRight=30", "airSync=1", "airRearLock=0"});
    row(true, {frame(0x21, {0xDA, 0x13, 1, 0x00, 14, 0x40})}, {"tempLeft=30", "tempRight=17"});
    // Auto loop; screen, fan 4 and up is 7; the set-point ends.
    row(false, {frame(0x21, {0x44, 0x44, 0, 0x00, 15, 0x80})},
        {"airPower=0", "airAC=1", "airAuto=0", "airDual=0", "airAutoLoop=1", "airWindFrontLeft=0", "airWindDownLeft=0",
         "airWindSpeedLeft=7", "tempLeftLow=1", "tempRightHigh=1", "airRearLock=1", "airSync=0"});
    // The lowest degree, and a zone the vehicle doesn't show.
    row(false, {frame(0x21, {0x00, 0x00, 16, 0x00, 255, 0x00})},
        {"airInnerLoop=1", "tempLeft=16", "tempRight=", "tempRightFahrenheit=255", "tempLeftFahrenheit=0"});
    // Loop 3 sets none, direction 5 leaves the direction, 20 and 17 are no set points.
    row(false, {frame(0x21, {0x06, 0x50, 20, 0x00, 17, 0x00})},
        {"airInnerLoop=0", "airOuterLoop=0", "airAutoLoop=0", "airWindFrontLeft=0", "tempLeft=", "tempRight="});
    // Byte 6: defrost bits win over the direction, eco, seat heating in two-bit fields.
    row(false, {frame(0x21, {0x00, 0x30, 3, 0x48, 3, 0x00})},
        {"airDefrostFront=0", "airDefrostRear=1", "airEco=0", "airWindDownLeft=1", "seatHotLeft=3", "seatHotRight=0"});
    row(false, {frame(0x21, {0x00, 0x00, 3, 0xA2, 3, 0x00})},
        {"airDefrostFront=1", "airDefrostRear=0", "airEco=1", "seatHotLeft=0", "seatHotRight=3", "tempLeft=19"});
    // Rear: fan clamped to 7, set point + 16, face and feet; the ends (0 is 16), feet.
    row(false, {frame(0x11, {0x0F, 5, 1, 0, 0, 0, 0, 0})},
        {"airRearSpare[7]=7", "tempRear=21", "tempRear2=21", "airRearSpare[5]=1", "airRearSpare[6]=1"});
    row(false, {frame(0x11, {0x03, 0, 2, 0, 0, 0, 0, 0}), frame(0x11, {0x03, 0xFF, 0, 0, 0, 0, 0, 0})},
        {"tempRearLow=0", "tempRearHigh=1", "tempRear=16", "airRearSpare[1]=1", "airRearSpare[2]=0"});
    // Only byte 10 changes: the known bytes are not applied again, yet the frame is news.
    row(false, {frame(0x11, {0x01, 4, 7, 0, 0, 0, 0, 0}), frame(0x11, {0x01, 4, 7, 0, 0, 0, 0, 9})},
        {"tempRear=20", "airRearSpare[1]=255"});
}

void TestDriver72::climate()
{
    QFETCH(bool, rightHand);
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightHand);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    for (const QByteArray& f : frames)
        h.feed(f);
    compareFields(*h.driver()->getAirData(), expected);
    h.feed(frames.last());   // the same frame again is no news
    QCOMPARE(air.count(), frames.size());
}

void TestDriver72::bodyAndStatus()
{
    DriverHarness h(kId);
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    // While the power is off doors and status pages are written but not signalled; body flags are.
    h.driver()->setPowerOffState();
    QCOMPARE(signalCounts(h, {"dataChanged()", "cardoorDataChanged()", "carbodyDataChanged()"},
                          {frame(0x24, {0xFC, 0x1F}), frame(0x7D, {3, 0x10, 0x0E, 0x64, 0x00}),
                           frame(0x7D, {8, 0xFF, 0xFF}), frame(0x7E, QByteArray(11, '\xFF'))}),
             QStringList{"carbodyDataChanged x1"});
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorTrunk=1", "doorHood=0"});   // no bonnet bit
    compareFields(*h.driver()->getCarbodyData(), {"bodyWarning36=1", "bodyFlag0=1", "bodyFlag31=1", "bodyFlag1=1"});
    QCOMPARE(h.driver()->getCarbodyData()->vehicleSpeed, quint16(3600));
    h.driver()->setPowerOnState();
    QCOMPARE(signalCounts(h, {"dataChanged()"}, {frame(0x7D, {8, 0xFF, 0xFF})}), QStringList{"dataChanged x1"});
    QCOMPARE(steering.value(0), (QList<QVariant>{-1, 540, true}));
    h.feed(frame(0x7D, {3, 0x10, 0x0E, 0x64, 0x00, 1}));
    QCOMPARE(info(h).mileage.speedText1, QStringLiteral("36MPH"));   // this box's speeds carry a unit byte

    const RadarData& r = *h.driver()->getRadarData();
    h.driver()->setInReverse(true);
    h.feed(frame(0x22, {1, 2, 3, 4, 35}));
    h.feed(frame(0x23, {0, 12, 0, 0, 120}));
    h.driver()->setInReverse(false);   // leaving reverse keeps the bars
    QCOMPARE((Ints{r.radarLevels, r.radarRearRight, r.radarFrontLeftMid}), (Ints{9, 4, 12}));
    QCOMPARE(info(h).body.rearDistanceText, QStringLiteral("35cm"));
    h.feed(frame(0x29, {0x10, 0x80}));
    h.feed(frame(0x29, {0x00, 0x00}));
    QCOMPARE(steering.mid(1), (QList<QList<QVariant>>{{-16, 7763, true}, {-32768, 7763, true}}));
    // Outdoor temperature in sign and magnitude; 0xFF is "--", without a signal.
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    for (int raw : {0xA5, 0xFF})
        h.feed(frame(0x27, {raw}));
    QCOMPARE(outdoor.count(), 1);
    QCOMPARE(outdoor.at(0), (QList<QVariant>{celsius("-37.0"), 0}));
    QCOMPARE(info(h).body.outdoorTempText, QStringLiteral("--"));
}

void TestDriver72::pages()
{
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    // Groups and items: a bit, a low nibble, a clamp, a flag; a pair the vehicle lacks.
    for (const Ints& f : {Ints{2, 1, 0xA0}, Ints{2, 2, 0xAB}, Ints{9, 7, 200}, Ints{4, 2, 5}, Ints{4, 1, 0}})
        h.feed(frame(0x39, {f[0], f[1], f[2]}));
    const VehicleSetupInformation_4_72 g = info(h).setup4;
    QCOMPARE((Ints{g.group2Item1Bit7, g.group2Item1Bit6, g.group2Item2, g.group9Item7, g.group4Item2}),
             (Ints{1, 0, 0x0B, 152, 1}));
    QCOMPARE(changed.count(), 5);
    // Tyres: warnings by nibble, 0xFF keeps the old one; byte 13 the unit and scale.
    AirData& air = *h.driver()->getAirData();
    air.tire.tireWarning[2][3] = 7;
    h.feed(frame(0x52, {0x10, 0x01, 25, 26, 27, 32, 5, 0, 0, 0xFF, 0, 0}));
    compareFields(air, {"tirePressureFrontLeft=250kpa", "tirePressureRearRight=320kpa", "tireStatus=0",
                        "tireWarning[0][0]=1", "tireWarning[0][1]=0", "tireWarning[2][0]=5", "tireWarning[2][3]=7"});
    h.feed(frame(0x52, {0x10, 0x01, 25, 26, 27, 32, 5, 0, 0, 0xFF, 3, 0}));
    compareFields(air, {"tirePressureFrontLeft=25", "tireStatus=2"});   // unknown unit: bare numbers
    h.feed(frame(0x53, {9, 0xF8, 65, 0xEC, 50, 30, 0}));
    const drivingMode72 m = info(h).drivingMode;
    QCOMPARE((Ints{m.driveMode, m.driveHigh2, m.driveMid2, m.driveBit3}), (Ints{4, 2, 2, 1}));
    QCOMPARE((QStringList{m.driveTempText1, m.drivePressureText, m.driveKpaText, m.driveTempText2}),
             (QStringList{celsius("25"), "-2.0Bar", "2.00Kpa", celsius("-10")}));
    h.feed(frame(0x54, {5}));
    h.feed(frame(0x60, {9, 0x01, 0x2C, 0, 0, 0, 7, 0x00, 0x7B, 0x00, 0x05, 0}));
    const energyManagement72 e = info(h).energy;
    QCOMPARE((Ints{e.energyMode, e.energyFlow}), (Ints{2, 7}));
    QCOMPARE((QStringList{e.energyText1, e.energyText3, e.energyUseText1, e.energyUseText2}),
             (QStringList{"300.0km", "7.0km", "12.3kWh/100km", "0.5kWh/100km"}));
    // The range rides in the engine speed, signalled whatever the power state.
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.driver()->setPowerOffState();
    h.feed(frame(0x61, {0x01, 0x90}));
    h.feed(frame(0x62, {0x01, 0x5E, 0xFF, 0xF6, 0}));
    QCOMPARE((QStringList{info(h).body.rangeText, info(h).body.voltageText, info(h).body.currentText}),
             (QStringList{"400.0km", "350.0V", "-10.0A"}));
    QCOMPARE(h.driver()->getCarbodyData()->engineSpeed, 40000);
    QCOMPARE(body.count(), 1);
    const QByteArray curve = QByteArray(1, 9) + QByteArray(49, 0) + QByteArray(3, 7);
    h.feed(frame(0x64, curve));
    QCOMPARE(info(h).trend.trendCurve2, curve.left(51));
}

void TestDriver72::shortFrames_data()
{
    addShortFrameRows("2e", {{0x11, 12}, {0x21, 10}, {0x24, 6}, {0x41, 16}, {0x44, 18}, {0x52, 15}, {0x60, 15},
                             {0x64, 55}, {0x7E, 14}});
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

void TestDriver72::responses_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<Frames>("sent");
    QTest::addColumn<Keys>("keys");
    auto row = [](const char* name, const Action& action, const Frames& sent, const Keys& keys = {}) {
        QTest::addRow("%s", name) << action << sent << keys;
    };
    auto press = [](int value, int state, bool inCall = false) -> Action {
        return [=](DriverHarness& h) { h.driver()->setCallState(inCall); h.feed(frame(0x20, {value, state})); };
    };
    // Each key report is a whole press; states above 2 are none; an unknown number is key 0.
    row("2e20020103", press(1, 3), {});
    row("2e20020501", press(5, 1), {}, {{0, 1}, {0, 0}});
    row("2e20020601", press(6, 1), {}, {{149, 1}, {149, 0}});
    row("2e20020601 in call", press(6, 1, true), {}, {{179, 1}, {179, 0}});
    // 23 asks for the box's page and 20 opens the climate panel; with state 2, 23 is a key with no code.
    row("2e20021701", press(23, 1), {frame(0x82, {1})});
    row("2e20021401", [](DriverHarness& h) {
        h.feed(frame(0x20, {20, 1}));
        QCOMPARE(CanbusControl::otherProperty(QStringLiteral("ShowAirconditioner")), QVariant(1));
    }, {});
    row("2e20021702", press(23, 2), {}, {{0, 1}, {0, 0}});
    // A release repeats the last number with the next press.
    row("2e20028001 2e20020001", [](DriverHarness& h) { h.feed(frame(0x20, {0x80, 1})); h.feed(frame(0x20, {0, 1})); },
        {}, {{148, 1}, {148, 0}, {148, 1}, {148, 0}});

    // A command is a press, then its release; the direction buttons step from where the air goes.
    auto command = [](const char* type, const char* value, int face, int feet) -> Action {
        return [=](DriverHarness& h) {
            h.driver()->getAirData()->airWindFrontLeft = quint8(face);
            h.driver()->getAirData()->airWindDownLeft = quint8(feet);
            h.driver()->setCanbusState(type, value);
        };
    };
    auto pressed = [](int code, int value) { return Frames{frame(0x8A, {code, value}), frame(0x8A, {code, 0})}; };
    row("AirDefrostRear", command("AirDefrostRear", "", 0, 0), pressed(7, 1));
    row("AirWindSpeedAddSubFront 1", command("AirWindSpeedAddSubFront", "1", 0, 0), pressed(4, 1));
    row("AirTempFrontRight sub", command("AirTempFrontRight", "sub", 0, 0), pressed(1, 2));
    row("AirWindDownFront 11", command("AirWindDownFront", "", 1, 1), pressed(16, 1));
    row("AirWindDownFront 01", command("AirWindDownFront", "", 0, 1), pressed(16, 3));
    row("AirWindFrontFront 11", command("AirWindFrontFront", "", 1, 1), pressed(16, 3));
    row("AirWindFrontFront 01", command("AirWindFrontFront", "", 0, 1), pressed(16, 2));

    // The stored variant, clamped to 19, on the box's two pages of eight and eleven.
    auto variant = [](int model) -> Action {
        return [=](DriverHarness& h) {
            DataSaveControl::saveSettingData("CanbusCAR", model, {});
            h.manager()->setId(71, false);   // selected again, the driver reads it
            h.manager()->setId(kId, false);
            h.clearSent();
            driver(h)->exitSelectSlot();
        };
    };
    row("variant 0", variant(0), {});
    row("variant 8", variant(8), {frame(0xEE, {0x50, 7})});
    row("variant 9", variant(9), {frame(0xEE, {0x51, 0})});
    row("variant 25", variant(25), {frame(0xEE, {0x51, 10})});
    auto source = [](int type, const QVariantList& items) -> Action {
        return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
    };
    row("radio FM1 9850", source(1, {2, 9850}), {frame(0xC0, {1, 1, 1, 0x26, 0x7A, 0})});
    row("radio one item", source(1, {2}), {});
    // Number and name ("1:A") in UTF-16BE; any state but 0 to 3 is 4; talking (3) starts the call's clock.
    const QByteArray phone = frame(0xC0, {6, 0});
    auto call = [](int code) { return frame(0xB0, {code, 1, 0, '1', 0, ':', 0, 'A'}); };
    row("phone 9", source(24, {9, "A", "1"}), {phone, call(4)});
    row("phone 3", source(24, {3, "A", "1"}), {phone, call(3), frame(0xB1, {0, 1})});
    row("phone 3 then 0", [](DriverHarness& h) {   // hanging up stops the clock
        h.driver()->setSrcState(CanbusInterface::SRC_PHONE, {3, "A", "1"});
        h.driver()->setSrcState(CanbusInterface::SRC_PHONE, {0, "A", "1"});
        QTest::qWait(1200);
    }, {phone, call(3), phone, call(0)});
    // The date and time come from the clock; the 12-hour form marks the hour's top bit.
    row("clock 12h", [](DriverHarness& h) {
        DataSaveControl::saveSettingData("Time24hFormat", false, {});
        DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2024, 3, 9), QTime(21, 5, 7)));
        h.driver()->setCurrentTime(1, 2, 3);
        DateTimeCtrl::getInstance()->clearFixedDateTime();
    }, {frame(0xA6, {24, 3, 9, 0x80 | 21, 5, 7, 1})});
    row("language en", [](DriverHarness& h) {
        driver(h)->languageChanged("en");
        QCOMPARE(int(info(h).setup4.group10Item1), 2);   // the setting page keeps it
    }, {frame(0xC6, {0x0A, 1, 2})});
    row("language ko", [](DriverHarness& h) { driver(h)->languageChanged("ko"); }, {});
    // Panoramic gestures (900 x 600): nine buttons and sideways swipes if the camera page says so.
    auto gesture = [](bool full, int x0, int y0, int x1, int y1) -> Action {
        return [=](DriverHarness& h) {
            h.feed(frame(0x50, {full ? 0x02 : 0x00, 0}));
            driver(h)->setTcanBussend(x0, y0, 900, 600, 0);
            driver(h)->setTcanBussend(x1, y1, 900, 600, 2);
        };
    };
    row("full tap 450,300", gesture(true, 450, 300, 455, 295), {frame(0x82, {2})});
    row("plain tap 450,300", gesture(false, 450, 300, 455, 295), {frame(0x82, {3})});
    row("plain swipe up", gesture(false, 450, 400, 460, 279), {frame(0x82, {0})});
    row("full swipe left", gesture(true, 800, 300, 500, 330), {frame(0x82, {18})});
}

void TestDriver72::responses()
{
    QFETCH(Action, action);
    QFETCH(Frames, sent);
    QFETCH(Keys, keys);
    DriverHarness h(kId);
    action(h);
    QTRY_COMPARE(h.sentFrames(), sent);
    QCOMPARE(h.keys(), keys);
}

void TestDriver72::media()
{
    DriverHarness h(kId);
    const QVariantList items{0, 3, 10, 125, 3700, "Ab", QString::fromUtf8("\xe2\x82\xac")};
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA2_A, items);
    // 3700 s long, at 125 s; the texts a moment later, in UTF-16BE with two zero bytes each.
    QCOMPARE(h.sentFrames(), Frames{frame(0xC1, {61, 40, 2, 5})});
    QTRY_COMPARE(h.sentFrames().value(1), frame(0xC0, {8, 0xFF, 0x01, 0, 'A', 0, 'b', 0, 0, 0x20, 0xAC, 0, 0}));
    h.clearSent();
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, items);
    QTest::qWait(300);   // unchanged texts go once only, the time every time
    QCOMPARE(h.sentFrames(), Frames{frame(0xC1, {61, 40, 2, 5})});
    h.clearSent();   // a title too long for one frame is cut, and the frame stays whole
    h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, QVariantList{0, 0, 0, 0, 0, QString(300, 'x'), "y"});
    QTRY_COMPARE(h.sentFrames().value(1).size(), 4 + 3 + 120 + 2 + 2 + 2);
}

QTEST_GUILESS_MAIN(TestDriver72)
#include "tst_driver72.moc"
