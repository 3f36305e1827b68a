// Jeep box (88) and its variants (89 to 92, rows where they differ): frames in, records,
// signals and keys out; commands and reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus88/canbus88.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "drivercheck.h"
#include "framebuilders.h"
#include "recordcheck.h"

using namespace testframes;
using Action = std::function<void(DriverHarness&)>;
using Read = std::function<QString(const Data88Info&)>;
using Frames = QList<QByteArray>;
using Ints = QList<int>;
Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Read)

namespace {

Canbus88Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus88Obj*>(h.driver()); }
Data88Info info(const DriverHarness& h) { return infoOf<Data88Info>(h); }
QString sign(const char* number, ushort unit) { return QString::fromUtf8(number) + QChar(unit); }

// ASCII as UTF-16, most significant byte first.
QByteArray wide(const char* text)
{
    QByteArray out;
    for (const char* c = text; *c; ++c)
        out.append('\0').append(*c);
    return out;
}

// The 37-byte text frame: code, 31 bytes of text, a spare byte; the radio's frequency
// takes the text's last byte and the spare one.
QByteArray textFrame(int code, const QByteArray& text, int high = -1, int low = 0)
{
    QByteArray data(33, '\0');
    data[0] = char(code);
    data.replace(1, text.size(), text);
    if (high >= 0) {
        data[31] = char(high);
        data[32] = char(low);
    }
    return frame(0x90, data);
}

QByteArray airFrame(int b3, int b4, int b5, int b6, int b7, int b8 = 0, int b9 = 0, int b10 = 0)
{
    return frame(0x05, {b3, b4, b5, b6, b7, b8, b9, b10});
}

} // namespace

class TestDriver88 : public QObject
{
    Q_OBJECT

private slots:
    void connection();
    void climate_data();
    void climate();
    void climateSignals();
    void pages_data();
    void pages();
    void body();
    void responses_data();
    void responses();
};

void TestDriver88::connection()
{
    DriverHarness h(88);
    int interval = 0;
    QByteArray out;
    QVERIFY(!h.driver()->needSendDisconnect(out));   // nothing to leave yet
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(ints({interval}) + ' ' + out.toHex(), QStringLiteral("1000 2e88010175"));
    QCOMPARE(h.sentFrames(), Frames{hex("2ef1010508")});   // the state request goes at once
    h.feed(frame(0x30, {'J', '8', 0, 'x'}));
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("J8"));
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QCOMPARE(h.sentFrames().size(), 2);   // asked again, also when connected
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x88, {0}));
    QCOMPARE(h.driver()->checkProtocolData(frame(0x34, {1, 2, 3})), 0);
    QCOMPARE(h.driver()->checkProtocolData(frame(0x07, {1})), 1);   // short: counted, not read
}

void TestDriver88::climate_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    auto row = [](int id, bool rightHand, const Frames& frames, const QStringList& e) {
        QTest::addRow("%d %s%s", id, frames.last().toHex().data(), rightHand ? " right-hand" : "")
            << id << rightHand << frames << e;
    };
    // On, A/C, max, auto, inner loop, front defrost; fan clamped to 7; up and face; 22 and 70 F.
    const QByteArray full = airFrame(0xF5, 0x0C, 0x50, 22, 70, 0x9F);
    row(88, false, {full},
        {"airOnOff=1", "airAC=1", "airAcMax=1", "airAuto=1", "airInnerLoop=1", "airOuterLoop=0", "airDefrostFront=1",
         "airWindSpeedLeft=7", "airWindUpLeft=1", "airWindFrontRight=1", "airWindDownLeft=0", "tempLeft=22",
         "tempRight=70", "tempRightFahrenheit=1", "seatHotLeft=2", "seatCoolLeft=1", "seatCoolRight=2"});
    // Right-hand drive swaps set points and heaters; the coolers stay.
    row(88, true, {full}, {"tempLeft=70", "tempRight=22", "seatHotLeft=3", "seatHotRight=2", "seatCoolLeft=1"});
    // Auto loop, rear defrost, feet; the ends; values off the scale keep the text.
    row(88, false, {airFrame(0x0A, 0x03, 0x20, 0, 127)},
        {"airAutoLoop=1", "airInnerLoop=0", "airDefrostRear=1", "airDefrostFront=0", "airWindSpeedRight=3",
         "airWindDownRight=1", "airWindUpRight=0", "tempLeftLow=1", "tempLeftHigh=0", "tempRightHigh=1"});
    row(88, false, {airFrame(0, 0, 0, 20, 30), airFrame(0, 0, 0, 13, 31)},
        {"airOuterLoop=1", "tempLeft=20", "tempRight=30", "tempLeftLow=0"});
    // Variants: only the right side's vents, the rear outlets beside them; half degrees.
    row(89, false, {airFrame(0, 0, 0x70, 14, 17)},
        {"airWindUpRight=1", "airWindFrontRight=1", "airWindDownLeft=1", "airWindDownRight=1", "airWindUpLeft=0",
         "airWindFrontLeft=0", "airRearSpare[0]=1", "airRearSpare[1]=1", "tempLeft=15", "tempRight=16.5"});
    row(89, false, {airFrame(0, 0, 0x20, 20, 40), airFrame(0, 0, 0x20, 41, 14)},
        {"airWindFrontRight=1", "airWindDownRight=0", "tempLeft=18", "tempRight=28"});
    row(90, false, {airFrame(0, 0, 0, 2, 31), airFrame(0, 0, 0, 0, 60)},
        {"tempLeftLow=1", "tempLeft=16.5", "tempRight=31", "tempRightFahrenheit=0"});
    row(91, false, {airFrame(0, 0, 0x40, 1, 32)}, {"airWindUpRight=1", "airWindUpLeft=0", "tempLeft=16", "tempRight="});
    // Outdoor: Celsius up to 125 with an offset of 40, above it Fahrenheit without; 91 on
    // has its own frame from -85, its climate frame keeps 88's scale.
    row(88, false, {airFrame(0, 0, 0, 0, 0, 0, 0, 125)}, {"outdoorTemp=85.0\u2103", "outdoorTempUnit=0"});
    row(88, false, {airFrame(0, 0, 0, 0, 0, 0, 0, 126)}, {"outdoorTemp=258.8\u2109", "outdoorTempUnit=1"});
    row(88, false, {frame(0x15, {1})}, {"outdoorTemp=-39.0\u2103"});
    row(92, false, {frame(0x15, {0})}, {"outdoorTemp=-85.0\u2103"});
    row(92, false, {airFrame(0, 0, 0, 0, 0, 0, 0, 40)}, {"outdoorTemp=0.0\u2103"});
}

void TestDriver88::climate()
{
    QFETCH(int, id);
    QFETCH(bool, rightHand);
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    DriverHarness h(id);
    h.driver()->setRightDriver(rightHand);
    for (const QByteArray& f : frames)
        h.feed(f);
    compareFields(*h.driver()->getAirData(), expected);
}

void TestDriver88::climateSignals()
{
    DriverHarness h(88);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    h.feed(airFrame(0x80, 1, 0, 20, 20, 0, 0x00, 60));
    h.feed(airFrame(0x80, 1, 0, 20, 20, 0, 0x80, 61));   // only bytes 9 and 10: not the panel's news
    QCOMPARE((Ints{air.count(), changed.count(), info(h).vehicle.airByte9Bit7}), (Ints{1, 2, 1}));
    QCOMPARE(outdoor.value(1), (QList<QVariant>{sign("21.0", 0x2103), 0}));
    QCOMPARE(info(h).vehicle.outdoorTempText, sign("21.0", 0x2103));
    h.feed(airFrame(0x80, 2, 0, 20, 20, 0, 0x80, 61));
    QCOMPARE(air.count(), 2);
    // A set point the cache already holds is not applied again.
    h.driver()->getAirData()->tempLeft = QStringLiteral("x");
    h.feed(airFrame(0x80, 3, 0, 20, 20, 0, 0x80, 61));
    compareFields(*h.driver()->getAirData(), {"tempLeft=x", "airWindSpeedLeft=3"});
}

void TestDriver88::pages_data()
{
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<Read>("read");
    QTest::addColumn<QString>("expected");
    auto row = [](const Frames& frames, const Read& read, const char* e) {
        QTest::addRow("%s", frames.last().toHex().data()) << frames << read << QString::fromUtf8(e);
    };
    row({frame(0x02, {201, 0})}, [](const Data88Info& d) { return ints({d.vehicle.frame02Value}); }, "200");
    row({frame(0x06, {0xA0, 0x5F, 13, 0})}, [](const Data88Info& d) {
        const auto& r = d.rear;
        return ints({r.rearBit7, r.rearBit6, r.rearFan, r.rearLow}) + ' ' + r.rearTempText;
    }, "1 0 3 15 14.5\u2103");
    // Settings: a clamped pair, the pair one less, a three-bit clamp, the last bytes, the language.
    row({frame(0x07, {0xC1, 0x20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x07, 0x80, 0x40, 20, 0})}, [](const Data88Info& d) {
        const auto& s = d.settings;
        return ints({s.byte3Bits7To6, s.byte4Bits5To4, s.byte14Bits2To0, s.byte15Bit7, s.byte16Bit6, s.languageCode});
    }, "2 1 6 1 1 15");
    row({frame(0x07, QByteArray(16, '\x10'))}, [](const Data88Info& d) { return ints({d.settings.byte4Bits5To4}); }, "0");
    row({frame(0x0B, {24, 0xFF})}, [](const Data88Info& d) {
        return ints({d.vehicle.frame0BHour, d.vehicle.frame0BHigh2, d.vehicle.frame0BLow6});
    }, "23 2 15");
    // CD: the playing time's high byte is shifted by five: 1 and 2 give 34 s.
    row({frame(0x10, {0x3A, 0x01, 0x02, 0x00, 0x10, 1, 2, 1, 2, 3, 0})}, [](const Data88Info& d) {
        return ints({d.cd.cdState, d.cd.cdMode, d.cd.cdTrack, d.cd.cdTotal}) + ' ' + d.cd.cdPlayTime + ' ' + d.cd.cdDiscTime;
    }, "2 9 258 16 0:0:34 1:2:3");
    row({frame(0x11, {2, 0, 0, 0, 'A', 0x20, 0xAC}), frame(0x11, {4, 0, 0, 0, 'B'})},
        [](const Data88Info& d) { return QStringList{d.cd.cdTitle, d.cd.cdArtist, d.cd.cdAlbum}.join(' '); },
        "-- A\u20AC --");
    // Amplifier bands count from 1 and stop at 18.
    row({frame(0x31, {0xFF, 0, 1, 19, 20, 7, 0x07, 0x80, 0})}, [](const Data88Info& d) {
        const auto& a = d.amplifier;
        return ints({a.ampOn, a.ampVolume, a.ampBand[0], a.ampBand[1], a.ampBand[2], a.ampBand[3], a.ampBand[4],
                     a.ampField2, a.ampBit0, a.ampBit7, a.ampBit6});
    }, "1 38 0 0 18 18 6 3 1 1 0");
    row({frame(0x32, {9, 2, 0xB8, 0x50, 0})}, [](const Data88Info& d) {
        const auto& p = d.performance;
        return ints({p.perfMode, p.perfOn, p.byte5Bits4To3, p.byte6Bit6, p.byte6Bits4To3});
    }, "5 1 2 1 2");
    // Hybrid: the third power with b7 set is "--" and the bits beside it still count.
    row({frame(0x33, {0, 9, 0x03, 0xFF, 120, 0x80, 0x70, 0})}, [](const Data88Info& d) {
        const auto& y = d.hybrid;
        return ints({y.hybridState, y.hybridBit6, y.hybridBit4}) + ' ' + y.hybridText1 + ' ' + y.hybridText2 + ' '
               + y.hybridText3;
    }, "8 1 1 1023KW -5KW --");
    row({frame(0x33, {0, 0, 0x04, 0x00, 200, 0x05, 0})},
        [](const Data88Info& d) { return QStringList{d.hybrid.hybridText1, d.hybrid.hybridText2, d.hybrid.hybridText3}.join(' '); },
        "-- 75KW 5KW");
    // Charge timers: day parts held at 3, hours at 23.
    row({frame(0x33, {2, 3, 0x7F, 0xF7, 0x3F, 0x98, 0x00, 0x7D, 0x01, 0x3C})}, [](const Data88Info& d) {
        const auto& y = d.hybrid;
        return ints({y.timerOn, y.byte5Bits6To5, y.byte5Bits4To0, y.byte6Bit7, y.byte8Bits4To0}) + ' ' + y.hybridTime1
               + ' ' + y.hybridTime2;
    }, "1 3 23 1 23 2:5 5:16");
    row({frame(0x33, {3, 1, 101, 0}), frame(0x33, {7, 0, 0})},
        [](const Data88Info& d) { return ints({d.hybrid.hybridOn, d.hybrid.hybridPercent}); }, "1 100");
}

void TestDriver88::pages()
{
    QFETCH(Frames, frames);
    QFETCH(Read, read);
    QFETCH(QString, expected);
    DriverHarness h(88);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(read(info(h)), expected);
    QCOMPARE(changed.count(), frames.size());   // unknown sub-frames too
}

void TestDriver88::body()
{
    DriverHarness h(88);
    h.driver()->setPowerOffState();   // doors are told whatever the power
    QSignalSpy doors(h.driver(), SIGNAL(cardoorDataChanged()));
    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x0A, {0xFF, 0xA8}));   // byte 3 is not the doors'
    h.feed(frame(0x0A, {0x00, 0xA8}));
    QCOMPARE(doors.count(), 1);
    compareFields(*h.driver()->getCardoorData(), {"doorFrontLeft=1", "doorFrontRight=0", "doorRearLeft=1",
                                                  "doorRearRight=0", "doorTrunk=1", "doorHood=0"});
    h.feed(frame(0x22, {1, 2, 3, 4}));
    const RadarData& r = *h.driver()->getRadarData();
    QCOMPARE((Ints{r.radarLevels, r.radarRearLeft, r.radarRearRight}), (Ints{9, 2, 8}));
    h.feed(frame(0x23, {5, 0, 0, 0}));
    QCOMPARE((Ints{r.radarLevels, r.radarFrontLeft, r.radarRearLeftMid}), (Ints{10, 10, 4}));
    h.feed(frame(0x09, {0x00, 0x10}));
    DriverHarness h92(92);
    QSignalSpy steering92(h92.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h92.feed(frame(0x09, {0x07, 0x00}));
    h92.feed(frame(0x09, {0x06, 0xFF}));
    QCOMPARE(steering.value(0), (QList<QVariant>{-16, 540, true}));
    QCOMPARE(steering92.mid(0), (QList<QList<QVariant>>{{0, 1200, true}, {1, 1200, true}}));
}

void TestDriver88::responses_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<Action>("action");
    QTest::addColumn<Frames>("sent");
    auto row = [](const char* name, const Action& action, const Frames& sent, int id = 88) {
        QTest::addRow("%s", name) << id << action << sent;
    };
    auto command = [](const char* key, const char* value, bool rightHand = false, int airOn = 0) -> Action {
        return [=](DriverHarness& h) {
            h.driver()->setRightDriver(rightHand);
            h.driver()->getAirData()->airOnOff = quint8(airOn);
            h.driver()->setCanbusState(key, value);
        };
    };
    auto press = [](int code) { return Frames{frame(0x95, {code, 1}), frame(0x95, {code, 0})}; };
    // Keys: head-unit codes each pressed and released, in order.
    auto keys = [](const Frames& frames, const Ints& codes) -> Action {
        return [=](DriverHarness& h) {
            for (const QByteArray& f : frames)
                h.feed(f);
            Ints expected;
            for (int code : codes)
                expected << h.driver()->toKkmapKey(code) << 1 << h.driver()->toKkmapKey(code) << 0;
            QCOMPARE(h.keyEvents(), expected);
        };
    };
    row("2e011101", keys({frame(0x01, {17, 1})}, {0x1100025}), {});
    row("2e011102", keys({frame(0x01, {17, 2})}, {}), {});
    row("2e011400 then 2e010001", keys({frame(0x01, {20, 0}), frame(0x01, {0, 1})}, {0x110002E}), {});
    row("2e040a01", keys({frame(0x04, {10, 1})}, {0x1200030}), {});
    row("2e040b01", keys({frame(0x04, {11, 1})}, {0}), {});   // unknown: number 0 still goes
    row("92 2e011801", keys({frame(0x01, {24, 1})}, {0x1300058}), {}, 92);
    row("AirOnOff while on", command("AirOnOff", "", false, 1), press(16));
    row("AirOnOff while off", command("AirOnOff", ""), press(9));
    row("AirWindSpeedAddSubFront 1", command("AirWindSpeedAddSubFront", "1"), press(29));
    row("AirTempFrontLeft add", command("AirTempFrontLeft", "add"), press(31));
    row("AirTempFrontLeft sub right-hand", command("AirTempFrontLeft", "sub", true), press(32));
    row("SeatHotLeft right-hand", command("SeatHotLeft", "", true), press(0x32), 92);
    row("unknown key", command("AirDual", "1"), {});
    auto variant = [](int model) -> Action {
        return [=](DriverHarness& h) {
            DataSaveControl::saveSettingData("CanbusCAR", model, {});
            h.manager()->setId(72, false);   // selected again, the driver reads it
            h.manager()->setId(88, false);
            h.clearSent();
            driver(h)->exitSelectSlot();
        };
    };
    row("variant 0", variant(0), {});
    row("variant 5", variant(5), {frame(0xEE, {0x60, 1})});
    auto source = [](int type, const QVariantList& items) -> Action {
        return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
    };
    // Only the low 16 bits of the frequency count: 0x674A is 264.42 MHz.
    row("radio FM 0x12674a", source(1, {2, 0x12674A}), {textFrame(1, wide("264.42MHZ"), 0x67, 0x4A)});
    row("radio AM 1008", source(1, {6, 1008}), {textFrame(2, wide("1008KHZ"), 0x03, 0xF0)});
    row("radio one item", source(1, {2}), {});
    // A title of 20 characters keeps 15 and the first byte of the 16th.
    const QString title = QString(15, 'a') + QChar(0x20AC) + QString(4, 'b');
    row("media title 20", source(16, {0, 1, 2, 3, 4, title, "artist"}),
        {textFrame(6, wide("aaaaaaaaaaaaaaa") + '\x20')});
    row("media same title", [](DriverHarness& h) {
        h.driver()->setSrcState(CanbusInterface::SRC_MEDIA1_B, {0, 0, 0, 0, 0, "T"});
        h.driver()->setSrcState(CanbusInterface::SRC_MEDIA3, {0, 0, 0, 0, 0, "T"});
    }, {textFrame(4, wide("T"))});
    const QByteArray page = hex("fd09c005ff0000000032");
    row("phone 1", source(24, {1, "A", "1"}), {page, textFrame(10, wide("1: A"))});
    row("phone 7", source(24, {7, "A", "1"}), {page, textFrame(0, wide("1: A"))});
    row("clock 12h", [](DriverHarness& h) {
        DataSaveControl::saveSettingData("Time24hFormat", false, {});
        DateTimeCtrl::getInstance()->setFixedDateTime(QDateTime(QDate(2024, 3, 9), QTime(21, 5, 7)));
        h.driver()->setCurrentTime(1, 2, 3);
        DateTimeCtrl::getInstance()->clearFixedDateTime();
    }, {frame(0xC6, {0x50, 0x80 | 21, 5, 7, 24, 3, 9})});
    row("language fa", [](DriverHarness& h) {
        driver(h)->languageChanged("fa");
        QCOMPARE(int(info(h).settings.languageCode), 2);
    }, {frame(0x97, {0x53, 2})});
    row("language ko", [](DriverHarness& h) { driver(h)->languageChanged("ko"); }, {});
}

void TestDriver88::responses()
{
    QFETCH(int, id);
    QFETCH(Action, action);
    QFETCH(Frames, sent);
    DriverHarness h(id);
    action(h);
    QTRY_COMPARE(h.sentFrames(), sent);
}

QTEST_GUILESS_MAIN(TestDriver88)
#include "tst_driver88.moc"
