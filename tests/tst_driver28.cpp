// Volkswagen MQB (28): 0x2E frames in, records, signals and keys out, each frame the
// module's way (family check, reply, walk, parser). Commands are in tst_driver28_commands.

#include <QSignalSpy>
#include <QtTest>
#include <functional>
#include <memory>

#include "canbus28/canbus28.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::frame;
using testframes::hex;

namespace {

constexpr int kId = 28;

Data28Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data28Info>(); }
QString str(int v) { return QString::number(v); }
QString str(const QString& s) { return s; }
QString str(const QByteArray& b) { return QString::fromLatin1(b.toHex()); }

// Data28Info is no gadget: the fields the rows read, by their name in the sub-record.
using Getter = QString (*)(const Data28Info&);
QString key(const QString& path) { return path.contains('.') ? path.section('.', 1) : path; }
#define G(path) {key(#path), [](const Data28Info& i) { return str(i.path); }}
const QHash<QString, Getter> kInfo = {
    G(frame14Payload), G(frame24Payload), G(parkingAssist.parkBit3), G(parkingAssist.parkBit0),
    G(parkingAssist.frame2ABand), G(parkingAssist.vehicleReminder1), G(parkingAssist.vehicleReminder2),
    G(parkingAssist.vehicleReminder3), G(parkingAssist.vehicleReminderFlag), G(rearAir.rearBit7), G(rearAir.rearBit3),
    G(rearAir.rearD1Bit5), G(rearAir.rearD1Level), G(rearAir.rearD2High), G(rearAir.rearD2Low),
    G(rearAir.rearTempText), G(sideRadar.sideLevels), G(sideRadar.sideGroupA[3]), G(sideRadar.sideGroupB[0]),
    G(amplifier.ampLevel), G(amplifier.ampBand5), G(amplifier.ampMode), G(bodyStatus.languageCode),
    G(bodyStatus.page20Item1), G(bodyStatus.page40Item0), G(bodyStatus.page40Item5), G(bodyStatus.page40Item9),
    G(bodyStatus.page40Item10), G(bodyStatus.pageC0Text), G(bodyStatus.pageC0Item2), G(driving.shortDistanceTextA),
    G(driving.shortValue1), G(driving.distanceTextB), G(driving.distanceTextC), G(driving.consumptionTextB),
    G(driving.durationTextA), G(driving.flowText60), G(driving.electricTextB),
    G(driving.numberText80), G(electronicDisplay.displayWord1), G(electronicDisplay.displayWord2),
    G(electronicDisplay.displayState1), G(electronicDisplay.displayState3), G(electronicDisplay.displayWord3),
    G(electronicDisplay.displayPercent), G(electronicDisplay.displayWord5), G(electronicDisplay.displayText1),
    G(electronicDisplay.displayText2), G(electricManagement.managementBit2), G(electricManagement.managementBit0),
    G(electricManagement.managementFlag), G(electricManagement.timerBlock1.hour),
    G(electricManagement.timerBlock2.hour), G(electricManagement.timerBlock2.minute),
    G(electricManagement.timerBlock2.mode), G(electricManagement.timerBlock2.flag1),
    G(electricManagement.timerBlock2.endHour), G(electricManagement.timerBlock2.percent),
    G(electricManagement.timerBlock3.hour), G(inspection.inspectionDays1), G(inspection.inspectionDays2),
    G(inspection.inspectionDistance1), G(inspection.inspectionDistance2), G(inspection.inspectionFlag),
};
#undef G

// "tempLeft=16.0": a Data28Info field above, else the shared records' by name (climate,
// doors, radar, then body; "body." for a name the climate record has too). "keys=": the
// keyboard numbers and states that reached the key device.
void check(const DriverHarness& h, const QStringList& expected)
{
    const CanbusInterface* d = h.driver();
    QStringList actual;
    for (const QString& item : expected) {
        const QString path = item.section('=', 0, 0), name = path.section('.', -1);
        QVariant v;
        const bool found = (!path.startsWith("body.") && (canbus::readRecordField(*d->getAirData(), name, &v)
                                || canbus::readRecordField(*d->getCardoorData(), name, &v)
                                || canbus::readRecordField(*d->getRadarData(), name, &v)))
            || canbus::readRecordField(*d->getCarbodyData(), name, &v);
        QStringList keys;
        for (int k : h.keyEvents())
            keys << str(k);
        const Getter get = kInfo.value(path);
        actual << path + '=' + (path == "keys" ? keys.join(' ') : get ? get(info(h)) : found ? fieldText(v) : "?");
    }
    QCOMPARE(actual, expected);
}

// The driver's signals that `act` set off, short names with their arguments, sorted:
// "carbody data outdoorTemperature(21\u2103,0)".
QString emitted(QObject* d, const std::function<void()>& act)
{
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    QStringList names, out;
    for (int i = QObject::staticMetaObject.methodCount(); i < d->metaObject()->methodCount(); ++i) {
        const QMetaMethod m = d->metaObject()->method(i);
        if (m.methodType() == QMetaMethod::Signal) {
            names << QString(m.name()).remove(QRegularExpression("(Data)?Changed$"));
            spies.push_back(std::make_unique<QSignalSpy>(d, ("2" + m.methodSignature()).constData()));
        }
    }
    act();
    for (int i = 0; i < names.size(); ++i) {
        for (const QList<QVariant>& args : *spies[size_t(i)]) {
            QStringList a;
            for (const QVariant& v : args)
                a << v.toString();
            out << names[i] + (a.isEmpty() ? QString() : '(' + a.join(',') + ')');
        }
    }
    out.sort();
    return out.join(' ');
}

} // namespace

class TestDriver28 : public QObject
{
    Q_OBJECT

private slots:
    void link();
    void frames_data();
    void frames();
    void radarDisplay();
    void badInput();
    void pqAndOldModelBoxes();
};

// Replies, the walk and "any frame connects" are the family's (tst_framefamily).
void TestDriver28::link()
{
    DriverHarness h(kId);
    CanbusInterface* d = h.driver();
    // What the vehicle has shows from the start, what it lacks stays hidden.
    check(h, {"airOnOff=0", "airWindSpeedRight=0", "airShowFlag=1", "tempRightVisible=1", "seatHotVisible=1",
              "airEco=255", "airOuterLoop=255"});
    int interval = 0;
    QByteArray out;
    QVERIFY(d->needSendConnect(interval, out));
    QCOMPARE(interval, 1000);
    QCOMPARE(out, hex("2e8101017c"));
    // The version request follows each call, later, also once connected.
    QTRY_COMPARE(h.sentFrames(), QList<QByteArray>{hex("2e900230003d")});
    const QByteArray version("MQB 2.4\0junk", 12);
    QCOMPARE(emitted(d, [&] { h.feed(frame(0x30, version)); }), QStringLiteral("data version(MQB 2.4)"));
    QCOMPARE(info(h).versionPayload, version);
    QVERIFY(d->needSendDisconnect(out));
    QCOMPARE(out, hex("2e8101007d"));
    h.clearSent();
    QVERIFY(!d->needSendConnect(interval, out));
    QTRY_COMPARE(h.sentFrames(), QList<QByteArray>{hex("2e900230003d")});
}

void TestDriver28::frames_data()
{
    QTest::addColumn<QString>("state");   // "rhd", "forward" (not reversing), power on / off; else reversing
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("emitted");
    QTest::addColumn<QStringList>("fields");
    auto row = [](const QByteArray& f, const char* emitted, const QStringList& fields, const char* state = "") {
        QTest::addRow("%s%s", f.toHex().constData(), state) << QString(state) << f << QString(emitted) << fields;
    };
    const char* air = "airConditioner";   // the frame has no sync byte: once one is taken, that control hides
    row(frame(0x21, {0x80, 0, 0, 0, 0, 0, 0, 0, 0}), air, {"id=28", "airPower=1", "airOnOff=1", "airAC=0",
        "airInnerLoop=0", "airOuterLoop=1", "airRearLock=0", "airSync=255"});
    row(frame(0x21, {0x7F, 0xAD, 0, 0, 0, 0, 0, 0, 0}), air, {"airPower=0", "airAC=1", "airInnerLoop=1",
        "airOuterLoop=0", "airAutoStrong=1", "airAuto=1", "airDual=1", "airDefrostMax=1", "airRearLock=1",
        "airWindUpLeft=1", "airWindFrontRight=0", "airWindDownRight=1", "airWindSpeedLeft=13",
        "airWindSpeedRight=13"});
    // set points 1..28: half degrees from 16 (the scale's ends are the shared set point's)
    row(frame(0x21, {0, 0, 1, 28, 0, 0, 0, 5, 0}), air, {"tempLeft=16.0", "tempRight=29.5", "tempRear=18.0",
        "tempUnit=0", "tempRearVisible=1"});
    row(frame(0x21, {0, 0, 1, 28, 0x01, 0, 0, 2, 0}), air, {"tempLeft=60", "tempRight=87", "tempRear=61",
        "tempUnit=1", "tempRearFahrenheit=1"});
    row(frame(0x21, {0, 0, 2, 10, 0, 0, 0, 0, 0}), air, {"tempLeft=20.5", "tempRight=16.5"}, "rhd");
    row(frame(0x21, {0, 0, 0, 0, 0xA8, 0xD3, 0xB7, 0, 0xE0}), air, {"airDefrostFront=1", "airDefrostRear=0",
        "airAutoLoop=1", "airEco=0", "airAcMax=1", "seatHotLeft=5", "seatHotRight=3", "seatCoolLeft=2",
        "seatCoolRight=3", "airState3=1", "airState4=3", "seatGroup4Extra[0]=1", "seatGroup4Extra[1]=3"});
    // The panel: silent while the vehicle replays its state after power on and when off;
    // quiet for a repeat. A changed frame takes the whole record, outdoor reading and tyres too.
    const QByteArray fan1 = frame(0x21, {0x80, 1, 4, 4, 0, 0, 0, 0, 0});
    row(fan1, "", {"airWindSpeedLeft=1"}, "power on");
    row(fan1, air, {"airWindSpeedLeft=1"}, "power on, waited");
    row(fan1, "", {"airWindSpeedLeft=1"}, "off");
    row(frame(0x27, {0x00, 0xD7, 0x00}) + frame(0x66, {0, 25, 25, 25, 25, 0}) + fan1 + fan1,
        "airConditioner carbody data data outdoorTemperature(21\u2103,0)",
        {"outdoorTemp=", "outdoorTempValid=0", "tirePressureFrontLeft=--", "tireStatus=255"});
    row(frame(0x28, {0x88, 0x2F, 0x57, 5, 0}), "data", {"rearBit7=1", "rearBit3=1", "rearD1Bit5=1", "rearD1Level=15",
        "rearD2High=5", "rearD2Low=7", "rearTempText=18.0"});
    row(frame(0x28, {0x77, 0xD0, 0x08, 0, 0}), "data", {"rearBit7=0", "rearBit3=0", "rearD1Level=0", "rearD2High=0",
        "rearTempText=Low"});
    row(frame(0x28, {0, 0, 0, 31, 0}), "data", {"rearTempText=High"});

    row(frame(0x27, {0x01, 0x2C, 0x03}), "carbody data outdoorTemperature(81\u2109,1)",
        {"outdoorTemp=81\u2109", "body.outdoorTempUnit=1", "body.outdoorTempTenths=812"});
    // only bit 0 is the unit; whole degrees, cut towards zero
    row(frame(0x27, {0xFE, 0xFB, 0xFF}), "carbody data outdoorTemperature(0\u2103,0)",
        {"body.outdoorTempUnit=0", "body.outdoorTempTenths=-5"});
    // The slice's length comes from D2, which in a frame this size is its checksum.
    row(frame(0x24, {0xD7, 0x01}), "cardoor data", {"doorFrontRight=1", "doorFrontLeft=1", "doorRearRight=0",
        "doorRearLeft=1", "doorTrunk=0", "doorHood=1", "frame24Payload=d7"});

    // bars of 15 from 1; beyond 165 nothing
    row(frame(0x22, {0, 15, 16, 165, 0, 0}), "radar", {"radarRearLeft=1", "radarRearLeftMid=1", "radarRearRightMid=2",
        "radarRearRight=11", "radarFrontLeft=0", "radarLevels=12", "radarOn=1"});
    row(frame(0x23, {166, 255, 30, 31, 0, 0, 0}), "radar", {"radarFrontLeft=0", "radarFrontLeftMid=0",
        "radarFrontRightMid=2", "radarFrontRight=3", "radarRearLeft=0"});
    row(frame(0x22, {5, 5, 5, 5, 0, 0}), "", {"radarRearLeft=0", "radarLevels=10"}, "forward");
    // steering: a new angle only (straight ahead is where it starts), signed, on this vehicle's range
    row(frame(0x29, {0x00, 0x00}), "", {});
    row(frame(0x29, {0x10, 0x00}) + frame(0x29, {0x10, 0x00}), "trajectory(16,19918,true)", {});
    row(frame(0x29, {0xF0, 0xFF}), "trajectory(-16,19918,true)", {});

    // keys: D0 0 is the release of the last key; 0x2F presses and releases, but 3 and 4 stay down
    row(frame(0x20, {2, 1}) + frame(0x20, {0, 0}) + frame(0x20, {0, 1}), "", {"keys=167 1 167 0 167 1"});
    row(frame(0x20, {0, 0}), "", {"keys=0 0"});
    row(frame(0x2F, {17}), "", {"keys=347 1 347 0"});
    row(frame(0x2F, {3}), "", {"keys=232 1"});
    row(frame(0x2F, {5}), "", {"keys="});
    row(frame(0x2F, {2}) + frame(0x20, {0, 0}), "", {"keys=233 1 233 0 233 0"});

    row(frame(0x14, {1, 2, 3}), "data", {"frame14Payload=010203"});
    row(frame(0x25, {0x0A, 0xFF}), "data", {"parkBit3=1", "parkBit0=0"});
    row(frame(0x2A, {0, 35}), "data", {"frame2ABand=0"});
    row(frame(0x2A, {0x03, 0xE9}), "data", {"frame2ABand=6"});
    row(frame(0x32, {1, 2, 3, 4, 5, 6}) + frame(0x33, {9, 8, 7, 6, 0, 0}), "data data", {"sideLevels=6",
        "sideGroupA[3]=4", "sideGroupB[0]=9"});
    // D0 counts the reminders; those past it keep their text.
    row(frame(0x60, {2, 18, 0, 5, 5, 5, 5, 1, 0}), "data", {"vehicleReminder1=Driver door open",
        "vehicleReminder2=Trailer mode", "vehicleReminder3=", "vehicleReminderFlag=1"});

    row(frame(0x40, {0x00, 50, 0, 0, 0}), "data", {"languageCode=43"});
    row(frame(0x40, {0x20, 0x02, 0x11, 0x22, 0}), "carbody data", {"page20Item1=1", "body.speed2Unit=1"});
    row(frame(0x40, {0x40, 0x05, 0x3C, 0xD2, 0xF7}), "data", {"page40Item0=1", "page40Item5=3", "page40Item9=3",
        "page40Item10=1"});
    row(frame(0x40, {0xC0, 0x03, 60, 0x80, 150}), "data", {"pageC0Text=16.0\u2103", "pageC0Item2=100"});
    row(frame(0x40, {0xC0, 0, 0, 0, 0}), "data", {"pageC0Text=LO"});
    row(frame(0x40, {0xC0, 0, 59, 0, 0}), "data", {"pageC0Text="});

    row(frame(0x50, {0x10, 1, 0x34, 0x12, 0, 0}), "data", {"shortDistanceTextA=4660mi", "shortValue1=4660"});
    row(frame(0x50, {0x21, 0, 0xF6, 0xFF, 0xFF, 0xFF}), "data", {"distanceTextB=-1km"});
    row(frame(0x50, {0x22, 1, 0x39, 0x30, 0x01, 0}), "carbody data", {"distanceTextC=7788mi", "body.odometer=7788",
        "body.odometerUnit=1"});
    row(frame(0x50, {0x31, 3, 0x4B, 0x00, 0, 0}), "data", {"consumptionTextB=7.0 mpg(US)"});
    row(frame(0x50, {0x50, 0x5A, 0x00, 0xAA, 0, 0}), "data", {"durationTextA=90.0minute"});
    row(frame(0x50, {0x60, 2, 0x0F, 0x00, 0, 0}), "data", {"flowText60=15.0gal/h"});
    row(frame(0x50, {0x71, 1, 0x85, 0xFF, 0, 0}), "data", {"electricTextB=-12.3km/kwh"});
    row(frame(0x50, {0x13, 1, 1, 1, 1, 1}), "data", {"shortDistanceTextA=", "numberText80="});

    row(frame(0x51, {31, 19, 18, 0, 5, 255, 8}), "data", {"ampLevel=30", "ampBand5=18", "ampMode=7"});
    row(frame(0x52, {0x12, 0x34, 0xAB, 0xCD, 0xFC, 7, 0x01, 0x02, 0x03, 0x04, 101}), "data", {"displayWord1=4660",
        "displayWord2=43981", "displayState1=2", "displayState3=4", "displayWord3=258", "displayPercent=100"});
    row(frame(0x53, {0x00, 0x34, 0x12}), "data", {"displayWord5=4660"});
    row(frame(0x53, QByteArray(1, '\x11') + QByteArray(40, 'x')), "data", {"displayText2=" + str(QByteArray(30, 'x'))});
    const QByteArray text = frame(0x52, hex("10414243444546474849"));   // not 15 bytes: read as 0x53
    row(text, "data", {"displayText1=" + str(text.mid(4)), "displayWord1=0"});

    row(frame(0x54, {0x00, 0x05}), "data", {"managementBit2=1", "managementBit0=1"});
    row(frame(0x54, {0x02, 24, 60, 0x42, 0x02, 1, 70, 3, 4, 101}), "data", {"timerBlock2.hour=23",
        "timerBlock2.minute=59", "timerBlock2.mode=2", "timerBlock2.flag1=1", "timerBlock2.endHour=3",
        "timerBlock2.percent=100", "timerBlock1.hour=0"});
    row(frame(0x54, {0x03, 5, 6, 0, 0, 1, 2, 3, 4}), "data", {"timerBlock3.hour=0"});   // too short for a timer
    row(frame(0x54, {0x80, 0x07}), "data", {"managementFlag=1"});

    row(frame(0x63, {0x10, 0x01, 0x1E, 0x00}), "data", {"inspectionDays1=30day"});
    row(frame(0x63, {0x10, 0x02, 0x05, 0x00}), "data", {"inspectionDays1=Overdue by 5 day"});
    row(frame(0x63, {0x20, 0x02, 0x2C, 0x01}), "data", {"inspectionDays2=Overdue by 300day"});
    row(frame(0x63, {0x11, 0x01, 0x0C, 0x00}), "data", {"inspectionDistance1=distance 1200km"});
    row(frame(0x63, {0x21, 0x22, 0x0C, 0x00}), "data", {"inspectionDistance2=Overdue by 1200mi"});
    row(frame(0x63, {0x10, 0x00, 0x05, 0x00}), "data", {"inspectionDays1=--"});
    row(frame(0x63, {0x22, 0x01}), "data", {"inspectionFlag=1"});
    row(frame(0x63, {0x30, 0x01, 0x05, 0x00}), "", {"inspectionDays1=", "inspectionFlag=0"});

    row(frame(0x66, {3, 25, 26, 24, 0, 0}), "data", {"tireUnit=3", "tirePressureFrontLeft=2.5 bar",
        "tirePressureRearLeft=2.4 bar", "tirePressureRearRight=0.0 bar", "tireStatus=0"});
    row(frame(0x66, {0, 25, 0, 0, 0, 7}), "data", {"tirePressureFrontLeft=25.0 bar"});
    row(frame(0x68, {0x05, 9}), "data", {"tireWarning[0][0]=1", "tireWarning[0][1]=0", "tireWarning[0][2]=1",
        "tireWarning[0][3]=0", "tireWarning[1][0]=4", "tireWarning[1][3]=4"});
}

void TestDriver28::frames()
{
    QFETCH(QString, state);
    QFETCH(QByteArray, frame);
    QFETCH(QString, emitted);
    QFETCH(QStringList, fields);
    DriverHarness h(kId);
    auto* d = qobject_cast<Canbus28Obj*>(h.driver());
    d->setRightDriver(state == "rhd");
    d->setInReverse(state != "forward");
    if (state.startsWith("power on"))
        d->setPowerOnState();
    if (state == "power on, waited")
        d->onPowerTimerOut();
    if (state == "off")
        d->setPowerOffState();
    QCOMPARE(::emitted(d, [&] { h.feed(frame); }), emitted);
    check(h, fields);
}

// Each sensor reads "clear" at its own distance: the overlay goes only when all do.
void TestDriver28::radarDisplay()
{
    DriverHarness h(kId);
    RadarData& r = *h.driver()->getRadarData();
    quint8* sensors[] = {&r.radarFrontLeft, &r.radarFrontLeftMid, &r.radarFrontRightMid, &r.radarFrontRight,
                         &r.radarRearLeft, &r.radarRearLeftMid, &r.radarRearRightMid, &r.radarRearRight};
    const quint8 clear[] = {5, 9, 9, 5, 5, 12, 12, 5};
    QList<int> on;
    r.radarOn = 1;
    for (int close = -1; close < 8; ++close) {   // -1: all at their threshold, else one a step nearer
        for (int i = 0; i < 8; ++i)
            *sensors[i] = quint8(clear[i] - (i == close));
        qobject_cast<Canbus28Obj*>(h.driver())->RadarDisplay();
        on << r.radarOn;
    }
    QCOMPARE(on, (QList<int>{0, 1, 1, 1, 1, 1, 1, 1, 1}));
}

// Types it doesn't know are refused; a known type of the wrong size is taken and dropped.
void TestDriver28::badInput()
{
    DriverHarness h(kId);
    h.driver()->setInReverse(true);   // so that radar frames would act
    h.watchActivity();
    for (int type : {0x00, 0x2B, 0x61, 0xFF})
        QCOMPARE(h.driver()->checkProtocolData(frame(type, hex("0102030405060708090a"))), 0);
    const QList<QPair<int, int>> sizes = {{0x14, 1}, {0x21, 8}, {0x21, 10}, {0x22, 5}, {0x24, 1}, {0x25, 3},
        {0x26, 2}, {0x27, 2}, {0x28, 4}, {0x2A, 3}, {0x32, 5}, {0x40, 4}, {0x40, 6}, {0x50, 5}, {0x51, 6},
        {0x60, 7}, {0x62, 2}, {0x66, 5}, {0x68, 1}};
    for (const auto& s : sizes) {
        const QByteArray f = frame(s.first, QByteArray(s.second, 1));
        QVERIFY2(h.driver()->checkProtocolData(f) == 1, f.toHex().constData());
    }
    // Straight to the parser: a frame cut anywhere.
    QCOMPARE(h.driver()->checkProtocolData(hex("2e")), 0);
    QCOMPARE(h.driver()->checkProtocolData(hex("2e4009")), 1);
    QCOMPARE(h.activity(), 0);
    QCOMPARE(info(h).frame14Payload, QByteArray());
}

// 29 and 34 take this box's frames on their own walk and link, and differ from it where
// the common behaviours say: no wait after power on, no display language.
void TestDriver28::pqAndOldModelBoxes()
{
    for (int id : {29, 34}) {
        DriverHarness h(id);
        CanbusInterface* d = h.driver();
        QVERIFY(d->inheritedById(kId));
        QSignalSpy air(d, SIGNAL(airConditionerDataChanged()));
        d->setPowerOnState();
        h.feed(frame(0x21, {0x80, 0x01, 4, 4, 0, 0, 0, 0, 0}));
        QCOMPARE(air.count(), 1);
        check(h, {"id=" + str(id), "airWindSpeedLeft=1"});
        QVERIFY(!d->isConnectedState());   // frames alone don't mark the link here
        int interval = 0;
        QByteArray out;
        QVERIFY(d->needSendConnect(interval, out));
        QCOMPARE(out, frame(0x81, {0x01}));
        QMetaObject::invokeMethod(d, "languageChanged", Q_ARG(QString, QStringLiteral("en")));
        QTest::qWait(200);   // no request for the version follows either
        QVERIFY(h.sentFrames().isEmpty());
    }
}

QTEST_GUILESS_MAIN(TestDriver28)
#include "tst_driver28.moc"
