// Benz box: frames in, records, signals and keys out; reports in, frames out. Which
// signals wait for the head unit to be on is a rule of its own, with rows of its own.

#include <QtTest>
#include <functional>

#include "canbus56/canbus56.h"
#include "common/kkmapkeys.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "drivercheck.h"
#include "framebuilders.h"
#include "recordcheck.h"

using namespace testframes;
using Frames = QList<QByteArray>;
using Keys = QList<QPair<int, int>>;   // keyboard number, pressed
using Read = std::function<QString(const DriverHarness&)>;
using Action = std::function<void(DriverHarness&)>;
Q_DECLARE_METATYPE(Read)
Q_DECLARE_METATYPE(Action)

namespace {

constexpr int kId = 56;
Data56Info info(const DriverHarness& h) { return infoOf<Data56Info>(h); }
Canbus56Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus56Obj*>(h.driver()); }
QPair<int, int> key(int code, int pressed) { return {canbus::kkmapKey(code), pressed}; }
Keys tap(int code, int times = 1)
{
    Keys out;
    while (times-- > 0)
        out << key(code, 1) << key(code, 0);
    return out;
}
QStringList signalsOf(DriverHarness& h, const Frames& frames)
{
    return signalCounts(h, {"dataChanged()", "carbodyDataChanged()", "cardoorDataChanged()",
                            "airConditionerDataChanged()", "outdoorTemperatureChanged(QString,int)",
                            "trajectoryDataChanged(int,int,bool)", "radarDataChanged()"}, frames);
}

} // namespace

class TestDriver56 : public QObject
{
    Q_OBJECT

private slots:
    void connection();
    void climateAndSignals_data();
    void climateAndSignals();
    void steeringSide_data();
    void steeringSide();
    void keys_data();
    void keys();
    void records_data();
    void records();
    void outbound_data();
    void outbound();
};

void TestDriver56::connection()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, hex("2e8101017c"));
    QTRY_COMPARE(h.sentFrames(), (Frames{hex("2e900121 4d"), hex("2e900130 3e")}));
    // Any whole frame is a sign of life; the version frame asks again.
    h.feed(frame(0x14, {0x05}));
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x81, {0x00}));
    h.clearSent();
    h.feed(frame(0x7F, {'B', 'z', 0, 'x'}));
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("Bz"));
    QCOMPARE(h.sentFrames(), Frames{frame(0x90, {0x21})});
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    // The radar is drawn only while reversing.
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    h.feed(frame(0x22, {1, 2, 3, 4, 0}));
    QCOMPARE(radar.count(), 0);
}

void TestDriver56::climateAndSignals_data()
{
    QTest::addColumn<bool>("powered");
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("told");
    auto row = [](bool powered, bool rightHand, const Frames& frames, const QStringList& e, const QStringList& told) {
        QTest::addRow("%s%s%s", frames.last().toHex().constData(), rightHand ? " right-hand" : "",
                      powered ? "" : " off") << powered << rightHand << frames << e << told;
    };
    // Alternating bits, the fan held at 7, the set-point ends, both seat fields.
    row(true, false, {frame(0x21, {0xD5, 0xAF, 30, 254, 0x0E, 0x07})},
        {"airPower=1", "airOnOff=1", "airAC=1", "airOuterLoop=1", "airInnerLoop=0", "airAuto=1", "airDual=1",
         "airDefrostRear=1", "airWindUpRight=1", "airWindFrontLeft=0", "airWindDownRight=1", "airWindSpeedLeft=7",
         "airWindSpeedRight=7", "tempLeft=15.0", "tempLeftLow=0", "tempRightHigh=1", "seatHotLeft=2", "seatHotRight=3"},
        {"dataChanged x1", "airConditionerDataChanged x1"});
    row(true, false, {frame(0x21, {0x2A, 0x46, 0, 64, 0x01, 0})},
        {"airPower=0", "airAC=0", "airInnerLoop=1", "airOuterLoop=0", "airAuto=0", "airDual=0", "airDefrostRear=0",
         "airWindUpLeft=0", "airWindFrontRight=1", "airWindDownLeft=0", "airWindSpeedRight=6", "tempLeftLow=1",
         "tempRight=32.0", "tempLeftFahrenheit=0", "seatHotLeft=1", "seatHotRight=0"},
        {"dataChanged x1", "airConditionerDataChanged x1"});
    // Right-hand drive exchanges the zones; 29 and 65 lie outside the half degrees.
    row(true, true, {frame(0x21, {0, 0, 31, 65, 0, 0})}, {"tempLeft=", "tempRight=15.5", "tempRightLow=0"},
        {"dataChanged x1", "airConditionerDataChanged x1"});
    // A frame that moved only byte 3 still applies it; the last byte is no news.
    row(true, false, {frame(0x21, {0x80, 1, 40, 40, 0, 0}), frame(0x21, {0x00, 1, 40, 40, 0, 0}),
                      frame(0x21, {0x00, 1, 40, 40, 0, 3})},
        {"airPower=0", "airWindSpeedLeft=1", "tempLeft=20.0"}, {"dataChanged x3", "airConditionerDataChanged x2"});
    // While off the record follows and the climate is still told.
    row(false, false, {frame(0x21, {0x80, 0, 0, 0, 0, 0})}, {"airOnOff=1"}, {"airConditionerDataChanged x1"});
    // Which signals wait for the head unit to be on.
    const QStringList none;
    row(false, false, {frame(0x25, {3, 0}), frame(0x39, {1, 1, 1, 0}), frame(0x40, {1, 0}), frame(0x7E, QByteArray(11, 1))},
        none, none);
    row(true, false, {frame(0x25, {3, 0}), frame(0x7E, QByteArray(11, 1))}, none, {"dataChanged x2"});
    // The body bits are told, though the body record never changes.
    row(true, false, {frame(0x24, {0x07})}, none, {"dataChanged x1", "carbodyDataChanged x1"});
    // Speeds are told whatever the power; a short one still says dataChanged.
    row(false, false, {frame(0x07, {1, 0x2C}), frame(0x08, {0}), frame(0x14, {0x33})}, none,
        {"dataChanged x3", "carbodyDataChanged x1"});
    // Warnings wait for power, doors don't.
    row(false, false, {frame(0x41, {0x01, 0x81})}, none, {"dataChanged x1", "cardoorDataChanged x1"});
    row(true, false, {frame(0x41, {0x01, 0x81})}, none,
        {"dataChanged x1", "carbodyDataChanged x1", "cardoorDataChanged x1"});
    // The outdoor temperature is told on every frame, also one that repeats.
    row(false, false, {frame(0x41, {0x02, 0, 0xFB, 0, 0, 0}), frame(0x41, {0x02, 0, 0xFB, 0, 0, 0})}, none,
        {"dataChanged x2", "outdoorTemperatureChanged x2"});
    // The status frame's own signals wait for power, a short one included.
    row(false, false, {frame(0x7D, {5, 0x80}), frame(0x7D, {8, 5, 0}), frame(0x7D, {9})}, none, none);
    row(true, false, {frame(0x7D, {5, 0x80}), frame(0x7D, {8, 5, 0}), frame(0x7D, {3})}, none,
        {"dataChanged x3", "cardoorDataChanged x1", "trajectoryDataChanged x1"});
    // Steering and radar (the test reverses) whatever the power.
    row(false, false, {frame(0x26, {5, 0x80, 0}), frame(0x22, {1, 2, 3, 4, 0})}, none,
        {"trajectoryDataChanged x1", "radarDataChanged x1"});
}

void TestDriver56::climateAndSignals()
{
    QFETCH(bool, powered);
    QFETCH(bool, rightHand);
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    QFETCH(QStringList, told);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightHand);
    if (!powered)
        h.driver()->setPowerOffState();
    h.driver()->setInReverse(true);
    QCOMPARE(signalsOf(h, frames), told);
    compareFields(*h.driver()->getAirData(), expected);
}

// Bit 15 of the little-endian word says the wheel is turned to the positive side.
void TestDriver56::steeringSide_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<int>("angle");
    QTest::addRow("05 81 positive") << QByteArray("\x05\x81", 2) << 0x105;
    QTest::addRow("05 01 negative") << QByteArray("\x05\x01", 2) << -0x105;
}

void TestDriver56::steeringSide()
{
    QFETCH(QByteArray, word);
    QFETCH(int, angle);
    DriverHarness h(kId);
    QSignalSpy spy(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x26, word + QByteArray(1, 0)));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), angle);
    QCOMPARE(spy.at(0).at(1).toInt(), 540);
}

void TestDriver56::keys_data()
{
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<Keys>("keys");
    auto row = [](const Frames& frames, const Keys& keys) {
        QTest::addRow("%s", frames.last().toHex().constData()) << frames << keys;
    };
    // A release (0) repeats the last number; state 2 is a press, 3 a release.
    row({frame(0x20, {3, 1}), frame(0x20, {0, 0})}, {key(0x110002E, 1), key(0x110002E, 0)});
    row({frame(0x20, {7, 2}), frame(0x20, {7, 3})}, {key(0x1200027, 1), key(0x1200027, 0)});
    row({frame(0x20, {18, 1})}, {key(0, 1)});   // no such key: the device still hears it
    // All sources share the last number, each with its own table.
    row({frame(0x20, {1, 1}), frame(0x27, {0, 0})}, {key(0x1100025, 1), key(0x110002F, 0)});
    row({frame(0x29, {1, 4, 1})}, {key(0x110002E, 1)});
    row({frame(0x29, {1, 4})}, {});
    // The mouse's middle button acts on release, by how long it was held.
    row({frame(0x29, {1, 10, 1, 0}), frame(0x29, {1, 0, 0, 0})}, tap(0x1100023));
    row({frame(0x29, {1, 10, 2, 0}), frame(0x29, {1, 0, 0, 0})}, tap(0x1200030));
    // The knob: 1..3 steps up, 253..255 three to one steps down.
    row({frame(0x29, {2, 3})}, tap(0x1100025, 3));
    row({frame(0x29, {2, 254})}, tap(0x1100024, 2));
    row({frame(0x29, {2, 4})}, {});
}

void TestDriver56::keys()
{
    QFETCH(Frames, frames);
    QFETCH(Keys, keys);
    DriverHarness h(kId);
    for (const QByteArray& f : frames)
        QCOMPARE(h.feed(f), 0);
    QCOMPARE(h.keys(), keys);
}

void TestDriver56::records_data()
{
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<Read>("read");
    QTest::addColumn<QString>("expected");
    auto row = [](const Frames& frames, const Read& read, const QString& expected) {
        QTest::addRow("%s", frames.last().toHex().constData()) << frames << read << expected;
    };
    auto body = [](const DriverHarness& h) { return h.driver()->getCarbodyData(); };
    row({frame(0x07, {0x01, 0x2C, 0})},
        [=](const DriverHarness& h) { return info(h).body.speedText + ints({body(h)->vehicleSpeed}); }, "300km/h30000");
    // Frame 0x24's flags never reach the body record.
    row({frame(0x14, {0x33}), frame(0x24, {0x05}), frame(0x25, {0x02, 0}), frame(0x40, {7})}, [=](const DriverHarness& h) {
        const BodyInformation56 b = info(h).body;
        return ints({b.bodyByte, b.bodyBit2, b.bodyBit1, b.bodyBit0, body(h)->bodyFlag31, body(h)->bodyFlag1,
                     b.statusBit1, b.statusBit0, b.bodyActive});
    }, "51 1 0 1 255 255 1 0 1");
    row({frame(0x39, {1, 1, 5, 0}), frame(0x39, {2, 2, 9, 0}), frame(0x39, {2, 3, 3, 0}), frame(0x39, {3, 2, 1, 0}),
         frame(0x39, {2, 4, 1, 0})}, [](const DriverHarness& h) {
        const BodyInformation56 b = info(h).body;
        return ints({b.language, b.option10, b.option11, b.option12, b.option13, b.option14});
    }, "1 0 4 3 0 1");
    // Warning: bit 6, else bit 7; doors from bit 0; bit 5 clear sets bodyBit1.
    row({frame(0x41, {0x01, 0x9F})}, [=](const DriverHarness& h) {
        const CardoorData& d = *h.driver()->getCardoorData();
        return ints({body(h)->bodyWarning36, d.doorFrontLeft, d.doorFrontRight, d.doorRearLeft, d.doorRearRight,
                     d.doorTrunk, info(h).body.bodyBit1});
    }, "1 1 1 1 1 1 1");
    auto warning = [=](const DriverHarness& h) { return ints({body(h)->bodyWarning36, info(h).body.bodyBit1}); };
    row({frame(0x41, {0x01, 0x64})}, warning, "1 0");
    row({frame(0x41, {0x02, 0xFF, 0xF6, 0x01, 0x02, 0x03})}, [](const DriverHarness& h) {
        return h.driver()->getAirData()->outdoorTemp + info(h).body.outdoorText + info(h).body.rangeText;
    }, QString::fromUtf8("-1\u2103-1\u210366051Km"));
    auto outdoor = [](const DriverHarness& h) { return h.driver()->getAirData()->outdoorTemp; };
    row({frame(0x41, {0x02, 0x00, 0xFB, 0, 0, 0})}, outdoor, QString::fromUtf8("25.1\u2103"));
    row({frame(0x41, {0x02, 0x00, 0xFB, 0, 0})}, outdoor, "");
    // Status sub-frames: unit bytes in the longer frames, the level page.
    // Byte 8 of the climate frame goes to the driver's own record.
    row({frame(0x21, {0, 0, 0, 0, 0, 0x06})},
        [](const DriverHarness& h) { return ints({info(h).body.airExtraFlag, info(h).body.airExtraMode}); }, "1 2");
    auto units = [](const DriverHarness& h) { return info(h).mileage.speedTextB + info(h).mileage.consumptionTextB; };
    row({frame(0x7D, {3, 0x10, 0x27, 0x20, 0x4E, 1}), frame(0x7D, {7, 0x0F, 0, 0x1E, 0, 3})}, units, "200MPH3MPG(US)");
    row({frame(0x7D, {16, 0x85, 0xE4, 50, 0xFF, 0})}, [](const DriverHarness& h) {
        const canbus::TripComputerRecord m = info(h).mileage;
        return ints({m.levelA, m.levelB, m.levelC, m.levelD, m.levelE});
    }, "5 100 50 100 0");
    row({frame(0x23, {1, 2, 3, 9, 0})}, [](const DriverHarness& h) {
        const RadarData& r = *h.driver()->getRadarData();
        return ints({r.radarLevels, r.radarFrontLeft, r.radarFrontLeftMid, r.radarFrontRightMid, r.radarFrontRight});
    }, "7 1 2 3 9");
    // Byte 13 carries no flag; byte 14's high nibble the last four.
    row({frame(0x7E, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0xFF, 0x90})}, [](const DriverHarness& h) {
        const canbus::FunctionFlags37 f = info(h).functions;
        return ints({f.function[32], f.function[33], f.function[34], f.function[36]});
    }, "1 1 0 1");
}

void TestDriver56::records()
{
    QFETCH(Frames, frames);
    QFETCH(Read, read);
    QFETCH(QString, expected);
    DriverHarness h(kId);
    h.driver()->setInReverse(true);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(read(h), expected);
}

void TestDriver56::outbound_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<Frames>("sent");
    auto clock = [](bool format24, int hour, bool date) -> Action {
        return [=](DriverHarness& h) {
            DataSaveControl::saveSettingData("Time24hFormat", format24, {});
            DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2024, 3, 9), QTime(hour, 5, 7)));
            date ? h.driver()->setCurrentData(1, 1, 1) : h.driver()->setCurrentTime(1, 1, 1);
            DateTimeCtrl::getInstance()->clearFixedDateTime();
        };
    };
    QTest::addRow("24h 13:05") << clock(true, 13, false) << Frames{hex("2ec506 00 18 03 09 0d 05 fe")};
    QTest::addRow("12h 00:05 date") << clock(false, 0, true) << Frames{frame(0xC5, {1, 0x18, 3, 9, 12, 5})};
    auto source = [](int type, const QVariantList& items) -> Action {
        return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
    };
    auto text = [](int code, const QByteArray& bytes) {
        QByteArray data(0x22, '\0');
        data[0] = char(code);
        data.replace(1, bytes.size(), bytes);
        return frame(0xC4, data);
    };
    QTest::addRow("radio FM3") << source(1, {4, 9850})
        << Frames{frame(0xC0, {1, 1}), frame(0xC2, {2, 0x7A, 0x26, 0}), text(3, "98.5MHZ")};
    QTest::addRow("radio AM1") << source(1, {5, 1602})
        << Frames{frame(0xC0, {1, 1}), frame(0xC2, {0x10, 0x42, 0x06, 0}), text(4, "1602KHZ")};
    QTest::addRow("media 17") << source(17, {0, 0x0102, 0x0304, 3725, 0, QString(40, 'a')})
        << Frames{frame(0xC0, {9, 0x11}), frame(0xC3, {4, 3, 2, 1, 2, 5}), text(10, QByteArray(33, 'a'))};
    QTest::addRow("phone 3") << source(24, {3, QString::fromUtf8("\xc3\xa9"), "1"})
                             << Frames{frame(0xC0, {5, 0x40}), frame(0xC6, {4, 1, 0xC3, 0xA9})};
    auto language = [](const char* name, int stored) -> Action {
        return [=](DriverHarness& h) {
            driver(h)->languageChanged(name);
            QCOMPARE(int(info(h).body.language), stored);
        };
    };
    QTest::addRow("language en") << language("en", 1) << Frames{hex("2ec703010100 33")};
    QTest::addRow("variant 0") << Action([](DriverHarness& h) { driver(h)->exitSelectSlot(); }) << Frames{};
    QTest::addRow("variant 7") << Action([](DriverHarness& h) {
        DataSaveControl::saveSettingData("CanbusCAR", 7, QString());
        h.manager()->setId(33, false);   // selected again, the driver reads it
        h.manager()->setId(kId, false);
        h.clearSent();
        driver(h)->exitSelectSlot();
    }) << Frames{frame(0x85, {3})};
}

void TestDriver56::outbound()
{
    QFETCH(Action, action);
    QFETCH(Frames, sent);
    DriverHarness h(kId);
    action(h);
    QCOMPARE(h.sentFrames(), sent);
}

QTEST_GUILESS_MAIN(TestDriver56)
#include "tst_driver56.moc"
