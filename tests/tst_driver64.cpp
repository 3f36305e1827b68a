// Chana Auchan box (64) and the Chana box that takes its frames (63): frames in, records,
// signals and keys out; commands, touches and reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus64/canbus64.h"
#include "datasavecontrol.h"
#include "drivercheck.h"
#include "framebuilders.h"
#include "recordcheck.h"
#include "tipdialog.h"

using namespace testframes;
using Action = std::function<void(DriverHarness&)>;
using Frames = QList<QByteArray>;
using Keys = QList<QPair<int, int>>;   // keyboard number (or raw code), pressed
using Ints = QList<int>;
Q_DECLARE_METATYPE(Action)

namespace {

constexpr int kId = 64;

Canbus64Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus64Obj*>(h.driver()); }
Data64Info info(const DriverHarness& h) { return infoOf<Data64Info>(h); }

void setCarModel(DriverHarness& h, int model)
{
    Data64Info d = info(h);
    d.parking.carModel = quint8(model);
    h.driver()->setDataInfo(QVariant::fromValue(d));
}

void feedAll(DriverHarness& h, const Frames& frames)
{
    for (const QByteArray& f : frames)
        QCOMPARE(h.feed(f), 0);
}

} // namespace

class TestDriver64 : public QObject
{
    Q_OBJECT

private slots:
    void connection();
    void climate_data();
    void climate();
    void keys_data();
    void keys();
    void radarAndDoors();
    void pages();
    void shortFrames_data();
    void shortFrames();
    void outbound_data();
    void outbound();
};

void TestDriver64::connection()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out) && interval == 1000);
    QCOMPARE(out, hex("2e8101017c"));
    // The request at once, the data request a moment later.
    QTRY_COMPARE(h.sentFrames(), (Frames{frame(0x90, {0x21, 0x00}), frame(0xF1, {0x01})}));
    h.clearSent();
    QCOMPARE(h.feed(frame(0xFF, {'C', 'A', 0, 'x'})), 0);
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("CA"));
    QCOMPARE(h.sentFrames(), Frames{frame(0x90, {0x21, 0x00})});
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QVERIFY(h.driver()->needSendDisconnect(out) && out == frame(0x81, {0x00}));

    // 63: the plain connect frame, no requests, and the make's frames.
    DriverHarness yuexiang(63);
    yuexiang.clearSent();   // the disconnect of the driver before
    QVERIFY(yuexiang.driver()->needSendConnect(interval, out) && out == hex("2e8101017c"));
    QTest::qWait(200);
    QCOMPARE(yuexiang.sentFrames(), Frames{});
    yuexiang.feed(frame(0x3A, {0x20, 0, 0}));
    compareFields(*yuexiang.driver()->getCardoorData(), {"doorFrontLeft=1"});
}

void TestDriver64::climate_data()
{
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    auto row = [](const Frames& frames, const QStringList& e) {
        QTest::addRow("%s", frames.last().toHex().constData()) << frames << e;
    };
    // Modes of byte 3; the fan clamps to 7; 30 is the high end with its own text.
    row({frame(0x21, {0x19, 9, 0, 30, 0})},
        {"airAuto=1", "airAC=1", "airDefrostRear=1", "airInnerLoop=0", "airOuterLoop=1", "airWindSpeedLeft=7",
         "airWindSpeedRight=7", "airOnOff=1", "airPower=1", "airWindUpLeft=1", "airWindDownRight=0",
         "tempLeftHigh=1", "tempRightLow=0", "tempLeft=32.5", "tempRight=32.5"});
    // The distribution byte decides the windscreen over byte 3's bit; 0 is the low end.
    row({frame(0x21, {0x06, 0, 2, 0, 0})},
        {"airInnerLoop=1", "airOuterLoop=0", "airDefrostFront=0", "airWindDownLeft=1", "airWindUpRight=0",
         "airOnOff=0", "airPower=0", "tempLeftLow=1", "tempRightHigh=0", "tempLeft=17.5"});
    // A later byte 3 alone sets the windscreen again; an unknown distribution and a set
    // point past the scale keep what was there.
    row({frame(0x21, {0x00, 1, 1, 1, 0}), frame(0x21, {0x02, 1, 7, 31, 0})},
        {"airDefrostFront=1", "airWindUpLeft=1", "airWindDownLeft=1", "tempLeft=18.0", "tempRightHigh=0",
         "tempLeftLow=0"});
}

void TestDriver64::climate()
{
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    feedAll(h, frames);
    compareFields(*h.driver()->getAirData(), expected);
    h.feed(frames.last());   // the same frame again is no news
    QCOMPARE(air.count(), frames.size());
}

void TestDriver64::keys_data()
{
    QTest::addColumn<bool>("call");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<Keys>("keys");
    auto row = [](bool call, const Frames& frames, const Keys& keys) {
        QTest::addRow("%s%s", call ? "call " : "", frames[0].toHex().constData()) << call << frames << keys;
    };
    // A release (0) goes to the last key; byte 4 of 1 or 2 is a press, anything else not.
    row(false, {frame(0x20, {1, 1}), frame(0x20, {0, 0})}, {{166, 1}, {166, 0}});
    row(false, {frame(0x20, {5, 3})}, {{149, 0}});
    row(false, {frame(0x20, {3, 2})}, {{233, 1}});
    row(true, {frame(0x20, {3, 1})}, {{351, 1}});
    row(false, {frame(0x20, {11, 1})}, {{0, 1}});   // no such key: the device still hears it
    // Held buttons act on release, by how they were pressed, with their codes as they are.
    row(false, {frame(0x20, {29, 2}), frame(0x20, {29, 0})}, {{0x1400015, 1}, {0x1400015, 0}});
    // A short press gives the short code; the release clears it, so a second one sends nothing.
    row(false, {frame(0x20, {31, 1}), frame(0x20, {31, 0}), frame(0x20, {31, 0})}, {{0x1100036, 1}, {0x1100036, 0}});
}

void TestDriver64::keys()
{
    QFETCH(bool, call);
    QFETCH(Frames, frames);
    QFETCH(Keys, keys);
    DriverHarness h(kId);
    h.driver()->setCallState(call);
    feedAll(h, frames);
    QCOMPARE(h.keys(), keys);
}

void TestDriver64::radarAndDoors()
{
    DriverHarness h(kId);
    const RadarData& r = *h.driver()->getRadarData();
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    // Levels counted down from 4 in steps of two, 0 clear; distances of 15 a bar.
    h.feed(frame(0x22, {1, 3, 0, 4, 0}));
    QCOMPARE((Ints{r.radarRearLeft, r.radarRearLeftMid, r.radarRearRightMid, r.radarRearRight, r.radarLevels}),
             (Ints{6, 2, 0, 0, 8}));
    h.feed(frame(0x27, {14, 15, 44, 150, 0}));
    QCOMPARE((Ints{r.radarFrontLeft, r.radarFrontLeftMid, r.radarFrontRightMid, r.radarFrontRight, r.radarLevels,
                   r.radarOn}),
             (Ints{0, 1, 2, 10, 10, 1}));
    QCOMPARE(radar.count(), 2);

    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x29, {0x01, 0x02, 0}));
    h.feed(frame(0x29, {0xFF, 0xFE, 0}));
    QCOMPARE(steering.at(0) + steering.at(1), (QList<QVariant>{-258, 5488, true, 2, 5488, true}));

    // Doors from bit 5 down; the distance is a big-endian word. While off the record
    // follows and nothing is said.
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    h.feed(frame(0x3A, {0x6A, 0x01, 0x02}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorFrontRight=0", "doorRearLeft=1",
                                                 "doorRearRight=0", "doorTrunk=1", "doorHood=0"});
    QCOMPARE(info(h).parking.distanceText, QStringLiteral("258KM"));
    QCOMPARE(int(info(h).parking.doorExtraFlag), 1);
    h.driver()->setPowerOffState();
    h.feed(frame(0x3A, {0x11, 0, 0}));
    compareFields(*h.driver()->getCardoorData(), {"doorFrontRight=1", "doorHood=1", "doorTrunk=0"});
    QCOMPARE(doors.count(), 1);
}

void TestDriver64::pages()
{
    DriverHarness h(kId);
    TipDialog::reset();
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    feedAll(h, {frame(0x30, {0x80}), frame(0x31, {0x7F}), frame(0x32, {12}), frame(0x33, {9, 39, 0}),
                frame(0x3B, {30})});
    const Data64Info a = info(h);
    QCOMPARE((Ints{a.panoramic.panoramicFlagA, a.panoramic.panoramicFlagB, a.panoramic.panoramicMode,
                   a.parking.parkState, a.parking.parkValue}),
             (Ints{1, 0, 9, 4, 21}));
    QCOMPARE(a.parking.parkPrompt, QString::fromUtf8("No signal-\xe2\x88\x9a "));
    h.feed(frame(0x33, {0, 5, 0}));   // a gap in the prompts: no text
    QCOMPARE(info(h).parking.parkPrompt, QString());

    // Tyres: 70 a bar less 0.1; 255 and under 7 are no reading; warnings clamp to 140.
    h.feed(frame(0x38, {141, 0, 5, 140, 7, 6, 255, 77}));
    const TirePressureInformation& t = h.driver()->getAirData()->tire;
    QCOMPARE((QStringList{t.tirePressureFrontLeft, t.tirePressureFrontRight, t.tirePressureRearLeft,
                          t.tirePressureRearRight}),
             (QStringList{"0.0bar", "--", "--", "1.0bar"}));
    QCOMPARE((Ints{t.tireWarning[2][0], t.tireWarning[2][2], t.tireWarning[1][0]}), (Ints{140, 5, 0}));
    h.feed(frame(0x39, {0x80, 0, 0x40, 0x01}));
    const TirePressureWarningMessage64 w = info(h).tireWarnings;
    QCOMPARE((Ints{w.tireFlag[0], w.tireFlag[1], w.tireFlag[17], w.tireFlag[31], w.tireFlag[30]}), (Ints{1, 0, 1, 1, 0}));

    // Settings clamp to their own maximum; 32 is on or off; 12 shows a message.
    for (const Ints& s : {Ints{41, 25}, Ints{32, 5}, Ints{0x80, 9}, Ints{12, 3}, Ints{12, 5}})
        h.feed(frame(0x52, {s[0], s[1]}));
    const vehicleSetupInformation64 s = info(h).setup;
    QCOMPARE((Ints{s.setup[41], s.setup[32], s.setupFirst}), (Ints{20, 1, 2}));
    QCOMPARE(TipDialog::messages(), (QList<QPair<QString, int>>{{"Tire pressure reset successfully", 0}}));
    QCOMPARE(changed.count(), 13);

    // Energy: the first time in one packing, the second in another; the marks say none.
    h.feed(frame(0x53, {0x98, 0x31, 0x2F, 0x8E, 0x2C, 0xA8, 0xF7, 0x7C, 0x03, 7, 9, 0, 0x58, 0}));
    EnergyManagementSetupInformation64 e = info(h).energy;
    QCOMPARE((QStringList{e.energyTextA, e.energyTextB, e.energyRangeText}),
             (QStringList{"2024/3/18-31:7", "2022/5/7-23:31", "11.0KM"}));
    QCOMPARE((Ints{e.energyHourA, e.energyMinuteA, e.energyHourB, e.energyMinuteB, e.energyFlagA, e.energyFlagB,
                   e.energyByteA, e.energyByteB}),
             (Ints{23, 7, 23, 31, 1, 1, 7, 9}));
    h.feed(frame(0x53, {0, 0, 15, 254, 0, 0, 31, 252, 0, 0, 0, 0, 0, 0}));
    e = info(h).energy;
    QCOMPARE((QStringList{e.energyTextA, e.energyTextB}), (QStringList{"--", "--"}));
    QCOMPARE(int(e.energyHourA), 23);

    // The shared trip computer with its unit byte; quiet while off.
    h.feed(frame(0x7D, {3, 0x10, 0x27, 0, 0, 1, 0}));
    QCOMPARE(info(h).mileage.speedTextA, QStringLiteral("100MPH"));
    const int before = changed.count();
    h.driver()->setPowerOffState();
    h.feed(frame(0x7D, {3, 0x20, 0x27, 0, 0, 0, 0}));
    QCOMPARE(changed.count(), before);
    QCOMPARE(info(h).mileage.speedTextA, QStringLiteral("100.16KM/H"));
}

void TestDriver64::shortFrames_data()
{
    addShortFrameRows("2e", {{0x20, 6}, {0x21, 8}, {0x22, 8}, {0x27, 8}, {0x29, 6}, {0x32, 5}, {0x33, 6},
                             {0x38, 12}, {0x39, 8}, {0x3B, 5}, {0x52, 6}, {0x53, 18}, {0x7E, 14}});
}

void TestDriver64::shortFrames()
{
    QFETCH(int, type);
    QFETCH(int, minimum);
    DriverHarness h(kId);
    const QByteArray data(minimum - 4, '\x55');
    QCOMPARE(h.driver()->checkProtocolData(frame(type, data.left(minimum - 5))), 1);   // whole, one byte short
    verifyShortFrame(h, frame(type, data));
    QCOMPARE(h.driver()->checkProtocolData(frame(0x24, data)), 0);
}

void TestDriver64::outbound_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<int>("waitMs");
    QTest::addColumn<Frames>("sent");
    // A command after the climate frames `climate`, on variant `model`.
    auto command = [](int model, const Frames& climate, const char* type, const char* value) -> Action {
        return [=](DriverHarness& h) {
            setCarModel(h, model);
            feedAll(h, climate);
            h.clearSent();
            h.driver()->setCanbusState(type, value);
        };
    };
    const Frames none;
    // Variants without buttons: the wanted state, worked out from the record.
    QTest::addRow("AirAC model 0") << command(0, none, "AirAC", "1") << 0 << Frames{hex("2ea602000057")};
    QTest::addRow("AirOnOff on") << command(0, {frame(0x21, {0, 1, 0, 10, 0})}, "AirOnOff", "") << 0
                                 << Frames{frame(0xA6, {3, 0})};
    QTest::addRow("fan up at 7") << command(0, {frame(0x21, {0, 7, 0, 10, 0})}, "AirWindSpeedAddSubFront", "1")
                                 << 0 << Frames{frame(0xA6, {8, 7})};
    QTest::addRow("fan down at 0") << command(0, none, "AirWindSpeedAddSubFront", "0") << 0
                                   << Frames{frame(0xA6, {8, 1})};
    QTest::addRow("temp add at 30") << command(0, {frame(0x21, {0, 1, 0, 30, 0})}, "AirTempFrontLeft", "add")
                                    << 0 << Frames{frame(0xA6, {9, 31})};
    QTest::addRow("temp other at 12") << command(0, {frame(0x21, {0, 1, 0, 12, 0})}, "AirTempFrontRight", "x")
                                      << 0 << Frames{frame(0xA6, {9, 12})};
    // Windscreen with the up vent: byte 3 sets it behind an unchanged distribution.
    const Frames upAndScreen = {frame(0x21, {0, 1, 0, 10, 0}), frame(0x21, {2, 1, 0, 10, 0})};
    QTest::addRow("defrost U D") << command(0, upAndScreen, "AirDefrostFront", "") << 0 << Frames{frame(0xA6, {7, 1})};
    QTest::addRow("down U W") << command(0, {frame(0x21, {0, 1, 1, 10, 0})}, "AirWindDownFront", "") << 0
                              << Frames{frame(0xA6, {7, 1})};
    // Variants with buttons: the press at once and its release 150 ms later.
    QTest::addRow("AirAC model 5") << command(5, none, "AirAC", "1") << 300
                                   << Frames{frame(0x86, {0x02, 0, 0, 0, 0, 0}), frame(0x86, {0, 0, 0, 0, 0, 0})};
    QTest::addRow("down model 10 U W") << command(10, {frame(0x21, {0, 1, 1, 10, 0})}, "AirWindDownFront", "") << 0
                                       << Frames{frame(0x86, {0, 0, 2, 0, 0, 0})};

    auto clock = [](bool format24, int hour) -> Action {
        return [=](DriverHarness& h) {
            DataSaveControl::saveSettingData("Time24hFormat", format24, {});
            h.driver()->setCurrentTime(hour, 7, 30);
        };
    };
    QTest::addRow("24h 00:07") << clock(true, 0) << 0 << Frames{frame(0xC8, {7, 0, 1})};
    QTest::addRow("12h 13:07") << clock(false, 13) << 0 << Frames{frame(0xC8, {7, 1, 0})};
    auto source = [](int type, const QVariantList& items) -> Action {
        return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
    };
    QTest::addRow("radio AM1") << source(1, {5, 0x0213}) << 300
                               << Frames{frame(0xC0, {1, 0x11, 0x13, 0x02, 0}), frame(0x75, {1, 3, 2, 0x13, 0, 0, 0, 1})};
    QTest::addRow("phone 2") << source(24, {2, "Al", "12"}) << 300
                             << Frames{frame(0xC0, {5, 3, 0, 0, 1, 2, 'A', 'l'}), frame(0xC0, {5, 3, 0, 0, 2, 2, '1', '2'})};
    // Length before position; the texts only when they changed.
    QTest::addRow("media 22 twice") << Action([](DriverHarness& h) {
        const QVariantList items = {0, 0x0102, 0x0304, 0x0506, 0x0708, "T", ""};
        h.driver()->setSrcState(CanbusInterface::srctype(22), items);
        QTest::qWait(300);
        h.driver()->setSrcState(CanbusInterface::srctype(22), items);
    }) << 300 << Frames{frame(0xC0, {11, 0, 3, 4, 1, 2, 7, 8, 5, 6}), frame(0x75, {11, 0, 0, 0, 0, 0, 0, 1}),
                        frame(0xC0, {11, 0xFF, 0x12, 0x01, 1, 'T'}),
                        frame(0xC0, {11, 0, 3, 4, 1, 2, 7, 8, 5, 6}), frame(0x75, {11, 0, 0, 0, 0, 0, 0, 1})};
    QTest::addRow("language ch_ft") << Action([](DriverHarness& h) {
        driver(h)->languageChanged("ch_ft");
        driver(h)->languageChanged("ko");
        QCOMPARE(int(info(h).setup.setup[57]), 1);
    }) << 0 << Frames{frame(0x83, {0x39, 1})};
    QTest::addRow("variant 7") << Action([](DriverHarness& h) { setCarModel(h, 7); driver(h)->exitSelectSlot(); })
                               << 0 << Frames{frame(0xEE, {3, 7})};
    // Reverse only tells the camera its view, late, on the way out as well.
    QTest::addRow("reverse off mode 4") << Action([](DriverHarness& h) {
        h.feed(frame(0x32, {4}));
        h.driver()->setInReverse(false);
        QVERIFY(!h.driver()->isInReverse());
        QTest::qWait(2500);
        QCOMPARE(h.sentFrames(), Frames{});
    }) << 900 << Frames{frame(0xA7, {2})};
    QTest::addRow("reverse mode 0") << Action([](DriverHarness& h) { h.driver()->setInReverse(true); }) << 3100
                                    << Frames{};

    // Touches on a picture of 1600 x 960: the point on the box's 800 x 480 screen.
    auto touch = [](int mode, const QList<Ints>& points) -> Action {
        return [=](DriverHarness& h) {
            h.feed(frame(0x32, {mode}));
            for (const Ints& p : points)
                driver(h)->setTcanBussend(p[0], p[1], 1600, 960, p[2]);
        };
    };
    QTest::addRow("mode 1 at 314,108") << touch(1, {{629, 217, 2}}) << 0 << Frames{frame(0xA7, {1})};
    QTest::addRow("mode 7 at 98,200") << touch(7, {{196, 400, 2}}) << 0 << Frames{frame(0xA7, {0x10})};
    QTest::addRow("mode 3 cycle twice") << touch(3, {{1000, 900, 2}, {1000, 900, 2}}) << 0
                                        << Frames{frame(0xA8, {1, 0}), frame(0xA8, {2, 0})};
    QTest::addRow("mode 6 upper middle") << touch(6, {{600, 200, 2}}) << 0 << Frames{frame(0xA7, {0x11})};
    QTest::addRow("mode 0 left pressed") << touch(0, {{200, 200, 1}, {200, 200, 2}}) << 0
                                         << Frames{frame(0x85, {0, 20}), frame(0x85, {0, 0})};
    QTest::addRow("mode 0 right released") << touch(0, {{802, 200, 2}, {802, 200, 1}}) << 0
                                           << Frames{frame(0xA8, {1, 0})};
}

void TestDriver64::outbound()
{
    QFETCH(Action, action);
    QFETCH(int, waitMs);
    QFETCH(Frames, sent);
    DriverHarness h(kId);
    action(h);
    if (waitMs > 0)
        QTest::qWait(waitMs);
    QCOMPARE(h.sentFrames(), sent);
}

QTEST_GUILESS_MAIN(TestDriver64)
#include "tst_driver64.moc"
