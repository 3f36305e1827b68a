// Ford box: frames in, records, signals and keys out; commands and reports in, frames out.

#include <QtTest>
#include <functional>

#include "canbus48/canbus48.h"
#include "datasavecontrol.h"
#include "drivercheck.h"
#include "framebuilders.h"
#include "recordcheck.h"

using namespace testframes;
using Action = std::function<void(DriverHarness&)>;
using Frames = QList<QByteArray>;
using Keys = QList<QPair<int, int>>;   // keyboard number, pressed
Q_DECLARE_METATYPE(Action)

namespace {

constexpr int kId = 48;

Canbus48Obj* driver(const DriverHarness& h) { return qobject_cast<Canbus48Obj*>(h.driver()); }
Data48Info info(const DriverHarness& h) { return infoOf<Data48Info>(h); }

// A button press [AC code 00] and, 100 ms later, its release.
Frames button(int code) { return {frame(0xC6, {0xAC, code, 0}), frame(0xC6, {0xAC, 0, 0})}; }

} // namespace

class TestDriver48 : public QObject
{
    Q_OBJECT

private slots:
    void connection();
    void climate_data();
    void climate();
    void climateSignals();
    void bodyAndRadar();
    void keys_data();
    void keys();
    void records_data();
    void records();
    void shortFrames_data();
    void shortFrames();
    void outbound_data();
    void outbound();
};

void TestDriver48::connection()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray out;
    QVERIFY(h.driver()->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, hex("2e8101017c"));
    // 0x21 at once, 0x27 after 100 ms, 0x30 after 150 ms.
    QCOMPARE(h.sentFrames(), Frames{frame(0x90, {0x21, 0})});
    QTRY_COMPARE(h.sentFrames(), (Frames{frame(0x90, {0x21, 0}), frame(0x90, {0x27, 0}), frame(0x90, {0x30, 0})}));
    h.feed(frame(0x14, {0x05}));   // any other frame leaves the box unconnected
    QVERIFY(!h.driver()->needSendDisconnect(out));
    h.clearSent();
    QCOMPARE(h.feed(frame(0x30, {'F', '1', 0, 'x'})), 0);
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("F1"));
    QTRY_COMPARE(h.sentFrames(), (Frames{frame(0x90, {0x21, 0}), frame(0x90, {0x27, 0})}));
    h.clearSent();
    QVERIFY(!h.driver()->needSendConnect(interval, out));
    QCOMPARE(h.sentFrames().size(), 1);   // the requests go on
    QVERIFY(h.driver()->needSendDisconnect(out));
    QCOMPARE(out, frame(0x81, {0x00}));
}

void TestDriver48::climate_data()
{
    QTest::addColumn<bool>("rightHand");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    auto row = [](bool rightHand, const Frames& frames, const QStringList& e) {
        QTest::addRow("%s%s", frames.last().toHex().constData(), rightHand ? " right-hand" : "") << rightHand << frames << e;
    };
    // Alternating bits; byte 4's bit 4 has the last word on the power.
    row(false, {frame(0x21, {0xA5, 0x53, 31, 59, 0xA3, 0xF6, 7, 3, 0x52, 0})},
        {"airOnOff=1", "airPower=1", "airAC=0", "airInnerLoop=1", "airOuterLoop=0", "airAuto=0", "airDual=1",
         "airDefrostRear=1", "airWindUpLeft=0", "airWindFrontRight=1", "airWindDownLeft=0", "airWindSpeedRight=3",
         "tempLeft=15.5", "tempRight=29.5", "tempRearVisible=1", "airDefrostFront=1", "airRearSpare[1]=1",
         "airRearSpare[6]=1", "airRearSpare[7]=7", "tempRear=\x03", "tempRear2Fahrenheit=255",
         "seatHotLeft=254", "seatHotRight=2", "outdoorTemp=-10.0\u2103", "outdoorTempValid=1"});
    row(false, {frame(0x21, {0x5A, 0x2C, 0, 127, 0x40, 0, 0, 10, 0x36, 0})},
        {"airOnOff=0", "airPower=0", "airAC=1", "airOuterLoop=1", "airAuto=1", "airDefrostRear=0",
         "airWindUpRight=0", "airWindDownRight=1", "airWindSpeedLeft=12", "tempLeftLow=1", "tempLeftHigh=0",
         "tempRightHigh=1", "tempLeft=", "tempRearVisible=0", "airDefrostFront=0", "outdoorTempValid=0",
         "tempRear=\u00ff", "seatHotLeft=3", "seatHotRight=253"});
    // 30 and 60 lie outside the degrees; a right-hand-drive vehicle sends its side first.
    row(false, {frame(0x21, {0, 0, 30, 60, 0, 0, 0, 0, 0, 0})}, {"tempLeft=", "tempRight=", "tempLeftVisible=1"});
    row(true, {frame(0x21, {0, 0, 40, 127, 0, 0, 0, 0, 0, 0})}, {"tempRight=20.0", "tempLeftHigh=1", "tempRightHigh=0"});
    // Only groups that moved apply: the second frame's byte 3 is the same, its byte 4 not.
    row(false, {frame(0x21, {0x80, 0x10, 0, 0, 0, 0, 0, 0, 0, 0}), frame(0x21, {0x80, 0x00, 0, 0, 0, 0, 0, 0, 0, 0})},
        {"airOnOff=1", "airPower=0"});
}

void TestDriver48::climate()
{
    QFETCH(bool, rightHand);
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightHand);
    for (const QByteArray& f : frames)
        QCOMPARE(h.feed(f), 0);
    compareFields(*h.driver()->getAirData(), expected);
}

void TestDriver48::climateSignals()
{
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
    const QByteArray warm = frame(0x21, {0x80, 0, 40, 40, 0, 20, 0, 0, 0, 0});
    h.feed(warm);
    h.feed(warm);   // a repeat is no news
    QCOMPARE((QList<int>{air.count(), outdoor.count()}), (QList<int>{1, 1}));
    h.feed(frame(0x21, {0x80, 0, 40, 40, 0, 21, 0, 0, 0, 0}));   // only the outdoor byte moved
    QCOMPARE((QList<int>{air.count(), outdoor.count()}), (QList<int>{1, 2}));
    QCOMPARE(outdoor.last(), (QList<QVariant>{QString::fromUtf8("21.0\xe2\x84\x83"), 0}));
    h.feed(frame(0x21, {0x80, 0, 41, 40, 0, 21, 0, 0, 0, 0}));
    QCOMPARE((QList<int>{air.count(), outdoor.count()}), (QList<int>{2, 2}));
    h.feed(frame(0x21, {0x80, 0, 42, 40, 0, 22, 0, 0, 0, 0}));   // both moved: only the outdoor signals
    QCOMPARE((QList<int>{air.count(), outdoor.count()}), (QList<int>{2, 3}));
}

void TestDriver48::bodyAndRadar()
{
    DriverHarness h(kId);
    h.watchActivity();
    const QByteArray doors = frame(0x24, {0xA8, 0x08, 0xFF, 0xC0, 0xC0, 0x60, 0});
    h.feed(doors);
    h.feed(doors);   // the same doors, body and page: nothing said
    QCOMPARE(h.activity(), 3);
    compareFields(*h.driver()->getCardoorData(),
                  {"doorFrontRight=1", "doorFrontLeft=0", "doorRearRight=1", "doorRearLeft=0", "doorTrunk=1", "doorHood=0"});
    compareFields(*h.driver()->getCarbodyData(), {"bodyFlag2=0", "bodyFlag1=0"});
    compareFields(info(h), {"basic0=1", "basic7=1", "basic8=2", "basic9=0", "basic14=2", "basic15=0", "basic19=2"});

    h.feed(frame(0x63, {1, 2, 3, 1, 0, 10, 0x42, 100, 102, 0, 4, 50, 60, 61, 255, 0x9F, 0x12, 120}));
    compareFields(*h.driver()->getCarbodyData(), {"odometer=66051", "bodyValue8=256", "fuelConsumptionUnit=2",
                                                  "fuelConsumption=21", "bodyByte26=66"});
    compareFields(*h.driver()->getAirData(),
                  {"tireStatus=2", "tirePressureFrontLeft=275.0KPA", "tirePressureFrontRight=280.5KPA",
                   "tirePressureRearLeft=0.0KPA", "tirePressureRearRight=11.0KPA", "tireWarning[2][0]=246",
                   "tireWarning[2][1]=0", "tireWarning[2][3]=195", "tireWarning[0][0]=7", "tireWarning[0][1]=7",
                   "tireWarning[0][2]=1", "tireWarning[0][3]=2"});
    compareFields(info(h), {"basicPercent=100"});
    QSignalSpy body(h.driver(), SIGNAL(carbodyDataChanged()));
    h.feed(frame(0x14, {5}));
    QCOMPARE(body.count(), 1);
    QCOMPARE(int(h.driver()->getCarbodyData()->bodyByte32), 5);

    QSignalSpy steering(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame(0x29, {0xFF, 0x38}));
    QCOMPARE(steering.value(0), (QList<QVariant>{-200, 540, true}));

    // Radar only in reverse, in thirds of a bar; leaving reverse clears it.
    QSignalSpy radar(h.driver(), SIGNAL(radarDataChanged()));
    QCOMPARE(h.feed(frame(0x23, {3, 5, 30, 0, 0, 0, 0, 0})), 0);
    QCOMPARE(radar.count(), 0);
    h.driver()->setInReverse(true);
    h.feed(frame(0x23, {3, 5, 30, 0, 0, 0, 0, 0}));
    h.feed(frame(0x22, {0, 0, 2, 33, 0, 0, 0, 0}));
    compareFields(*h.driver()->getRadarData(), {"radarFrontLeft=1", "radarFrontLeftMid=1", "radarFrontRightMid=10",
                                                "radarFrontRight=0", "radarRearRightMid=0", "radarRearRight=11",
                                                "radarLevels=10", "radarOn=1"});
    h.driver()->setInReverse(false);
    compareFields(*h.driver()->getRadarData(), {"radarFrontRightMid=0", "radarOn=0"});
    QCOMPARE(radar.count(), 3);
}

void TestDriver48::keys_data()
{
    QTest::addColumn<bool>("inCall");
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<Keys>("keys");
    auto row = [](bool inCall, const Frames& frames, const Keys& keys) {
        QByteArray name;
        for (const QByteArray& f : frames)
            name += f.mid(3, 2).toHex() + ' ';
        QTest::addRow("%s%s", name.constData(), inCall ? "in call" : "") << inCall << frames << keys;
    };
    // A press is a whole press and release; the release frame does nothing.
    row(false, {frame(0x20, {1, 1}), frame(0x20, {0, 0})}, {{166, 1}, {166, 0}});
    row(false, {frame(0x20, {2, 1}), frame(0x20, {0, 2})}, {{167, 1}, {167, 0}, {167, 1}, {167, 0}});
    // Key 6 waits for its release and takes the state of its press.
    row(false, {frame(0x20, {6, 2})}, {});
    row(false, {frame(0x20, {6, 2}), frame(0x20, {0, 0})}, {{179, 1}, {179, 0}});
    row(false, {frame(0x20, {6, 1}), frame(0x20, {6, 0})}, {{344, 1}, {344, 0}});
    row(true, {frame(0x20, {82, 1})}, {{347, 1}, {347, 0}});
    row(false, {frame(0x20, {82, 1})}, {{232, 1}, {232, 0}});
    row(false, {frame(0x20, {200, 1})}, {{0, 1}, {0, 0}});
}

void TestDriver48::keys()
{
    QFETCH(bool, inCall);
    QFETCH(Frames, frames);
    QFETCH(Keys, keys);
    DriverHarness h(kId);
    h.driver()->setCallState(inCall);
    for (const QByteArray& f : frames)
        h.feed(f);
    QCOMPARE(h.keys(), keys);
}

void TestDriver48::records_data()
{
    QTest::addColumn<Frames>("frames");
    QTest::addColumn<QStringList>("expected");
    auto row = [](const Frames& frames, const QStringList& e) {
        QTest::addRow("%s", frames.last().toHex().constData()) << frames << e;
    };
    row({frame(0x25, {0x08, 9})}, {"parkFlagA=1", "parkFlagB=0", "parkValue=9"});
    row({frame(0x31, {0x84, 0x20})}, {"park0=1", "park1=0", "park5=1", "park6=0", "park8=1"});
    // Settings by selector and rule: clamp to 2, flag, percent, raw, the three-step item.
    row({frame(0x28, {0x00, 5}), frame(0x28, {0x02, 7}), frame(0x28, {0x21, 150}), frame(0x28, {0x22, 200})},
        {"item0=2", "item2=1", "item12=100", "item13=200"});
    row({frame(0x28, {0x71, 2}), frame(0x28, {0x70, 3}), frame(0x28, {0x06, 1})}, {"item31=1", "item30=2", "item3=0"});
    row({frame(0x28, {0x71, 3})}, {"item31=2"});
    // Air quality colours at their borders.
    row({frame(0x2A, {7, 0, 35})}, {"windCode=7", "windColor=green"});
    row({frame(0x2A, {7, 0, 36})}, {"windColor=yellow"});
    row({frame(0x2A, {7, 1, 0xFE})}, {"windColor=black"});
    row({frame(0x32, {11, 0x01, 0x2C, 101, 13, 12})},
        {"windLevel=10", "windHours=30h", "windPercent=100", "windStepA=12", "windStepB=12"});
    row({frame(0x32, {1, 0, 5, 0, 0, 0})}, {"windHours=0.5h"});
    row({frame(0x61, {0x8A, 100})}, {"windFlag=1", "windSteps=7", "windValue=100"});
    row({frame(0x61, {0x05, 99})}, {"windFlag=0", "windSteps=5", "windValue=99"});
    row({frame(0x62, {0xFE, 0x21, 0xF7, 0xE0, 31})},
        {"amp0=14", "amp1=14", "amp2=2", "amp3=1", "amp4=14", "amp5=3", "amp6=1", "amp7=2", "amp8=30"});
    row({frame(0x64, {0xF8, 0xB6, 0xCB, 0x2E, 0xF1})},
        {"massage0=1", "massage1=2", "massage2=2", "massage3=10", "massage4=6", "massage5=10", "massage6=2",
         "massage7=2", "massage8=2", "massage9=10", "massage10=10", "massage11=0", "massage12=1"});
    // The SYNC display.
    row({frame(0x40, {9})}, {"syncMode=3"});
    row({frame(0x50, {7, 1, 2, 11, 3, 12, 4})},
        {"syncMenu=calling", "syncByteA=1", "syncByteB=2", "syncLayout=Dial a number", "syncByteC=3",
         "syncAudio=IPOD", "syncByteD=4"});
    row({frame(0x50, {1, 0, 0, 9, 0, 1, 0})}, {"syncMenu=", "syncLayout=", "syncAudio="});
    row({frame(0x51, {5, 0x12, 0})}, {"lineName=Menu text 5", "lineStyle=Gray text/transparent background", "lineFlag=1"});
    row({frame(0x51, {18, 0x01, 0})}, {"lineName=Dialog button right", "lineStyle="});
    row({frame(0x52, {1, 2, 13}), frame(0x53, {23, 59, 0})}, {"timerTextA=01:02:13", "timerTextB=23:59:00"});
    row({frame(0x78, {9, 0x7B, 0x5F, 0, 0})},
        {"syncState=9", "syncBit0=1", "syncBit1=1", "syncBit3=1", "syncBit5=1", "syncBit6=1", "syncHigh=4", "syncLow=4"});
    row({frame(0x55, {3, 8})}, {"commandState=2", "commandValue=8"});
    // A frequency word below 9800 is in kHz, else in hundredths of MHz.
    row({frame(0x56, {1, 0x47, 0x26, 0, 0, 0})}, {"commandText=9799KHz"});
    row({frame(0x56, {1, 0x48, 0x26, 0, 0, 0})}, {"commandText=98.0MHz"});
    row({frame(0x56, {2, 11, 0, 0, 0}), frame(0x56, {0x11, 8, 0, 0, 0}), frame(0x56, {0x12, 200, 0, 0, 0})},
        {"commandLevel=10", "commandStep=7", "commandByte=200"});
    // The original unit's media.
    row({frame(0x65, {1, 3, 0x04, 0x35, 9, 0})}, {"mediaBand=3", "mediaFrequency=107.7MHz", "mediaByte=9"});
    row({frame(0x65, {1, 4, 0x03, 0xF0, 0, 0})}, {"mediaBand=4", "mediaFrequency=1008KHz"});
    row({frame(0x65, {2, 1, 2, 3, 4, 0})}, {"mediaWordA=258", "mediaWordB=772"});
    row({frame(0x66, {1, 2, 3, 14, 5, 6})}, {"mediaTimeA=01:02:03", "mediaTimeB=14:05:06"});
    row({frame(0x67, {4, 5, 0x80})}, {"mediaByte0=4", "mediaByte1=5", "mediaFlag0=1", "mediaFlag1=0"});
    // UTF-16 text ends at its first zero byte, inside a character too.
    row({frame(0x68, {1, 0, 2, 0, 0x4E, 0x2D, 0x00, 0x41})},
        {"textByte0=1", "textEncoding=0", "textByte2=2", "mediaText=\u4e2d"});
    row({frame(0x68, {1, 0, 0, 0, 0x4E, 0x2D}), frame(0x68, {1, 2, 0, 0, 0x4E, 0x2D})}, {"mediaText="});
}

void TestDriver48::records()
{
    QFETCH(Frames, frames);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
    for (const QByteArray& f : frames)
        QCOMPARE(h.feed(f), 0);
    compareFields(info(h), expected);
    QCOMPARE(changed.count(), frames.size());
}

void TestDriver48::shortFrames_data()
{
    addShortFrameRows("2e", {{0x14, 5}, {0x20, 6}, {0x21, 14}, {0x24, 10}, {0x25, 6}, {0x27, 5}, {0x28, 6},
                             {0x2A, 7}, {0x31, 6}, {0x32, 10}, {0x40, 5}, {0x50, 7}, {0x51, 7}, {0x52, 7},
                             {0x55, 6}, {0x56, 9}, {0x60, 6}, {0x61, 6}, {0x62, 9}, {0x63, 22}, {0x64, 9},
                             {0x65, 9}, {0x66, 9}, {0x67, 7}, {0x68, 7}, {0x78, 9}});
}

void TestDriver48::shortFrames()
{
    QFETCH(int, type);
    QFETCH(int, minimum);
    DriverHarness h(kId);
    verifyShortFrame(h, frame(type, QByteArray(minimum - 4, '\x01')));
}

void TestDriver48::outbound_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<Frames>("sent");
    auto state = [](const char* type, const char* value, bool rightHand = false, int seat = 0) -> Action {
        return [=](DriverHarness& h) {
            h.driver()->setRightDriver(rightHand);
            h.feed(frame(0x21, {0, 0, 0, 0, 0, 0, 0, 0, seat, 0}));
            h.clearSent();
            h.driver()->setCanbusState(type, value);
        };
    };
    QTest::addRow("AirDefrostRear") << state("AirDefrostRear", "1") << button(6);
    QTest::addRow("AirTempFrontLeft add") << state("AirTempFrontLeft", "add") << button(26);
    QTest::addRow("AirTempFrontLeft sub") << state("AirTempFrontLeft", "sub") << button(27);
    QTest::addRow("AirTempFrontLeft add right-hand") << state("AirTempFrontLeft", "add", true) << button(28);
    QTest::addRow("AirTempFrontRight sub right-hand") << state("AirTempFrontRight", "sub", true) << button(27);
    QTest::addRow("AirWindSpeedAddSubFront 0") << state("AirWindSpeedAddSubFront", "0") << button(31);
    // Seat buttons by the level shown: nibble 5 heats at 2, nibble 2 cools at -2, 9 is 6.
    QTest::addRow("SeatHotLeft at 2") << state("SeatHotLeft", "", false, 0x05) << button(7);
    QTest::addRow("SeatHotLeft at -2") << state("SeatHotLeft", "", false, 0x02) << button(8);
    QTest::addRow("SeatHotRight at 6") << state("SeatHotRight", "", false, 0x90) << button(0);
    QTest::addRow("unknown") << state("AirRearLock", "1") << Frames{};
    QTest::addRow("clock") << Action([](DriverHarness& h) {
        h.driver()->setCurrentData(2024, 5, 31);
        h.driver()->setCurrentTime(23, 59, 58);
    }) << Frames{frame(0x82, {24, 5, 31, 23, 59, 0})};
    auto source = [](int type, const QVariantList& items) -> Action {
        return [=](DriverHarness& h) { h.driver()->setSrcState(CanbusInterface::srctype(type), items); };
    };
    QTest::addRow("radio FM2") << source(1, {3, 9850}) << Frames{frame(0xC0, {1, 1, 0x7A, 0x26, 0})};
    QTest::addRow("radio AM1") << source(1, {5, 531}) << Frames{frame(0xC0, {1, 0x10, 0x6C, 0xCF, 0})};
    QTest::addRow("radio one item") << source(1, {3}) << Frames{};
    // Track, count, then the position as hours, minutes, seconds; the texts in one
    // buffer sized by the first, whose tail the shorter second leaves standing.
    QTest::addRow("media 13") << source(13, {0, 0x0102, 0x0304, 3723, 0, "ABC", "x", "Z"})
        << Frames{frame(0xC0, {2, 2, 1, 4, 3, 1, 2, 3}),
                  frame(0xC1, {1, 0, 0, 0, 0, 0, 'A', 0, 'B', 0, 'C', 0, 0}),
                  frame(0xC1, {2, 0, 0, 0, 0, 0, 'Z', 0, 'B', 0, 'C', 0, 0})};
    QTest::addRow("media long title") << source(22, {0, 1, 1, 0, 0, "abcdefghijklmnop"})
        << Frames{frame(0xC0, {2, 1, 0, 1, 0, 0, 0, 0}),
                  frame(0xC1, {1, 0, 0, 0, 0, 0, 'a', 0, 'b', 0, 'c', 0, 'd', 0, 'e', 0, 'f', 0, 'g', 0, 'h', 0, 'i', 0, 'j'}),
                  frame(0xC1, {2, 0, 0, 0, 0, 0, 'a', 0, 'b', 0, 'c', 0, 'd', 0, 'e', 0, 'f', 0, 'g', 0, 'h', 0, 'i', 0, 'j'})};
    QTest::addRow("phone incoming") << source(24, {1, "A", "12"})
        << Frames{frame(0xC7, {0x66, 6, 0, 0}), frame(0xCA, {1, 0, 'A'}), frame(0xCA, {3, 0, '1', 0, '2'})};
    QTest::addRow("phone calling") << source(24, {3}) << Frames{frame(0xC7, {0x66, 3, 0, 0}), frame(0xCA, {1}), frame(0xCA, {3})};
    auto language = [](const char* name, int stored) -> Action {
        return [=](DriverHarness& h) {
            driver(h)->languageChanged(name);
            QCOMPARE(int(info(h).park.languageCode), stored);
        };
    };
    QTest::addRow("language ch_ft") << language("ch_ft", 28) << Frames{frame(0xC6, {0xA4, 28, 0})};
    QTest::addRow("language ja") << language("ja", 0) << Frames{};
    QTest::addRow("variant 0") << Action([](DriverHarness& h) { driver(h)->exitSelectSlot(); }) << Frames{};
    QTest::addRow("variant 9") << Action([](DriverHarness& h) {
        DataSaveControl::saveSettingData("CanbusCAR", 9, QString());
        h.manager()->setId(33, false);   // selected again, the driver reads it
        h.manager()->setId(kId, false);
        h.clearSent();
        driver(h)->exitSelectSlot();
    }) << Frames{frame(0x91, {7, 0})};
}

void TestDriver48::outbound()
{
    QFETCH(Action, action);
    QFETCH(Frames, sent);
    DriverHarness h(kId);
    action(h);
    // A button's release follows 100 ms later.
    if (!sent.isEmpty() && sent.first().at(1) == char(0xC6) && sent.first().at(3) == char(0xAC)) {
        QCOMPARE(h.sentFrames(), sent.mid(0, 1));
        QTRY_COMPARE(h.sentFrames(), sent);
        return;
    }
    QCOMPARE(h.sentFrames(), sent);
}

QTEST_GUILESS_MAIN(TestDriver48)
#include "tst_driver48.moc"
