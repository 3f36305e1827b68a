// Volkswagen MQB with the RuiZiCheng box: 0x2E frames in, records, signals and keys
// out. Every frame goes the module's way: the family check, its one-byte reply, then
// the driver's walk and parser. Commands and reports to the box are in
// tst_driver28_commands.cpp.

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QtTest>
#include <functional>

#include "canbus28/canbus28.h"
#include "driverharness.h"
#include "framefamily.h"

using canbus::FrameFamily;

namespace {

constexpr int kId = 28;

QByteArray frame28(quint8 type, std::initializer_list<quint8> data)
{
    return canbus::buildFrame(FrameFamily::Start2E, type, data);
}

QByteArray frame28(quint8 type, const QByteArray& data)
{
    return canbus::buildFrame(FrameFamily::Start2E, type, data);
}

// A frame of `type` with `n` data bytes of `fill`: the sizes a handler must refuse.
QByteArray sized(quint8 type, int n, char fill = '\x01')
{
    return frame28(type, QByteArray(n, fill));
}

QString str(int v) { return QString::number(v); }
QString str(const QString& s) { return s; }
QString str(const QByteArray& b) { return QString::fromLatin1(b.toHex()); }

using Getter = std::function<QString(CanbusInterface*)>;

#define AIR(f) {"air." #f, [](CanbusInterface* d) { return str(d->getAirData()->f); }}
#define DOOR(f) {"door." #f, [](CanbusInterface* d) { return str(d->getCardoorData()->f); }}
#define BODY(f) {"body." #f, [](CanbusInterface* d) { return str(d->getCarbodyData()->f); }}
#define RADAR(f) {"radar." #f, [](CanbusInterface* d) { return str(d->getRadarData()->f); }}
#define INFO(f) {#f, [](CanbusInterface* d) { return str(d->getDataInfo().value<Data28Info>().f); }}

const QHash<QString, Getter> kFields = {
    AIR(id), AIR(airPower), AIR(airOnOff), AIR(airAC), AIR(airInnerLoop), AIR(airOuterLoop),
    AIR(airAutoStrong), AIR(airAuto), AIR(airDual), AIR(airDefrostMax), AIR(airRearLock),
    AIR(airWindUpLeft), AIR(airWindFrontLeft), AIR(airWindDownLeft), AIR(airWindSpeedLeft),
    AIR(airWindUpRight), AIR(airWindFrontRight), AIR(airWindDownRight), AIR(airWindSpeedRight),
    AIR(tempLeft), AIR(tempRight), AIR(tempRear), AIR(tempLeftLow), AIR(tempLeftHigh),
    AIR(tempRightLow), AIR(tempRightHigh), AIR(tempRearLow), AIR(tempRearHigh),
    AIR(tempLeftVisible), AIR(tempRightVisible), AIR(tempRearVisible), AIR(tempUnit),
    AIR(tempLeftFahrenheit), AIR(tempRightFahrenheit), AIR(tempRearFahrenheit),
    AIR(airDefrostFront), AIR(airDefrostRear), AIR(airAutoLoop), AIR(airEco), AIR(airAcMax),
    AIR(airState3), AIR(airState4), AIR(airSync), AIR(airShowFlag), AIR(seat.seatHotVisible),
    AIR(seat.seatHotLeft), AIR(seat.seatHotRight), AIR(seat.seatCoolLeft), AIR(seat.seatCoolRight),
    AIR(seat.seatGroup4Extra[0]), AIR(seat.seatGroup4Extra[1]), AIR(outdoorTemp),
    AIR(outdoorTempValid), AIR(outdoorTempUnit), AIR(tire.tireUnit),
    AIR(tire.tirePressureFrontLeft), AIR(tire.tirePressureFrontRight),
    AIR(tire.tirePressureRearLeft), AIR(tire.tirePressureRearRight), AIR(tire.tireStatus),
    AIR(tire.tireWarning[0][0]), AIR(tire.tireWarning[0][1]), AIR(tire.tireWarning[0][2]),
    AIR(tire.tireWarning[0][3]), AIR(tire.tireWarning[1][0]), AIR(tire.tireWarning[1][1]),
    AIR(tire.tireWarning[1][2]), AIR(tire.tireWarning[1][3]), DOOR(doorFrontLeft),
    DOOR(doorFrontRight), DOOR(doorRearLeft), DOOR(doorRearRight), DOOR(doorTrunk), DOOR(doorHood),
    BODY(outdoorTempUnit), BODY(outdoorTempTenths), BODY(speed2Unit), BODY(odometer),
    BODY(odometerUnit), RADAR(radarOn), RADAR(radarLevels), RADAR(radarFrontLeft),
    RADAR(radarFrontLeftMid), RADAR(radarFrontRightMid), RADAR(radarFrontRight),
    RADAR(radarRearLeft), RADAR(radarRearLeftMid), RADAR(radarRearRightMid), RADAR(radarRearRight),
    INFO(amplifier.ampBand1), INFO(amplifier.ampBand2), INFO(amplifier.ampBand3),
    INFO(amplifier.ampBand4), INFO(amplifier.ampBand5), INFO(amplifier.ampLevel),
    INFO(amplifier.ampMode), INFO(bodyStatus.languageCode), INFO(bodyStatus.page10Item0),
    INFO(bodyStatus.page10Item1), INFO(bodyStatus.page20Item0), INFO(bodyStatus.page20Item1),
    INFO(bodyStatus.page20Item2), INFO(bodyStatus.page20Item3), INFO(bodyStatus.page40Item0),
    INFO(bodyStatus.page40Item1), INFO(bodyStatus.page40Item10), INFO(bodyStatus.page40Item2),
    INFO(bodyStatus.page40Item3), INFO(bodyStatus.page40Item4), INFO(bodyStatus.page40Item5),
    INFO(bodyStatus.page40Item6), INFO(bodyStatus.page40Item7), INFO(bodyStatus.page40Item8),
    INFO(bodyStatus.page40Item9), INFO(bodyStatus.page52Item0), INFO(bodyStatus.page52Item1),
    INFO(bodyStatus.page52Item2), INFO(bodyStatus.page52Item3), INFO(bodyStatus.page52Item4),
    INFO(bodyStatus.page70Item0), INFO(bodyStatus.page70Item1), INFO(bodyStatus.page70Item2),
    INFO(bodyStatus.page70Item3), INFO(bodyStatus.page70Item4), INFO(bodyStatus.page70Item5),
    INFO(bodyStatus.page70Item6), INFO(bodyStatus.page70Item7), INFO(bodyStatus.page70Item8),
    INFO(bodyStatus.pageA0Item0), INFO(bodyStatus.pageA0Item1), INFO(bodyStatus.pageA0Item2),
    INFO(bodyStatus.pageA0Item3), INFO(bodyStatus.pageA0Item4), INFO(bodyStatus.pageA0Item5),
    INFO(bodyStatus.pageA0Item6), INFO(bodyStatus.pageA0Item7), INFO(bodyStatus.pageB1Item0),
    INFO(bodyStatus.pageB1Item1), INFO(bodyStatus.pageB1Item2), INFO(bodyStatus.pageB1Item3),
    INFO(bodyStatus.pageB1Item4), INFO(bodyStatus.pageB1Item5), INFO(bodyStatus.pageB1Item6),
    INFO(bodyStatus.pageC0Item0), INFO(bodyStatus.pageC0Item1), INFO(bodyStatus.pageC0Item2),
    INFO(bodyStatus.pageC0Raw), INFO(bodyStatus.pageC0Text), INFO(driving.consumptionText61),
    INFO(driving.consumptionTextA), INFO(driving.consumptionTextB), INFO(driving.consumptionTextC),
    INFO(driving.distanceTextB), INFO(driving.distanceTextC), INFO(driving.durationTextA),
    INFO(driving.electricTextB), INFO(driving.flowText60), INFO(driving.numberText80),
    INFO(driving.shortDistanceTextA), INFO(driving.shortDistanceTextC), INFO(driving.shortValue1),
    INFO(electricManagement.managementBit0), INFO(electricManagement.managementBit1),
    INFO(electricManagement.managementBit2), INFO(electricManagement.managementFlag),
    INFO(electricManagement.timerBlock1.bit6), INFO(electricManagement.timerBlock1.bit7),
    INFO(electricManagement.timerBlock1.endHour), INFO(electricManagement.timerBlock1.endMinute),
    INFO(electricManagement.timerBlock1.flag1), INFO(electricManagement.timerBlock1.flag7),
    INFO(electricManagement.timerBlock1.hour), INFO(electricManagement.timerBlock1.minute),
    INFO(electricManagement.timerBlock1.mode), INFO(electricManagement.timerBlock1.percent),
    INFO(electricManagement.timerBlock1.startHour),
    INFO(electricManagement.timerBlock1.startMinute), INFO(electricManagement.timerBlock2.bit4),
    INFO(electricManagement.timerBlock2.bit7), INFO(electricManagement.timerBlock2.endHour),
    INFO(electricManagement.timerBlock2.endMinute), INFO(electricManagement.timerBlock2.flag1),
    INFO(electricManagement.timerBlock2.flag7), INFO(electricManagement.timerBlock2.hour),
    INFO(electricManagement.timerBlock2.minute), INFO(electricManagement.timerBlock2.mode),
    INFO(electricManagement.timerBlock2.percent), INFO(electricManagement.timerBlock2.startHour),
    INFO(electricManagement.timerBlock2.startMinute), INFO(electricManagement.timerBlock3.hour),
    INFO(electronicDisplay.displayByte), INFO(electronicDisplay.displayPercent),
    INFO(electronicDisplay.displayState1), INFO(electronicDisplay.displayState2),
    INFO(electronicDisplay.displayState3), INFO(electronicDisplay.displayText1),
    INFO(electronicDisplay.displayText2), INFO(electronicDisplay.displayWord1),
    INFO(electronicDisplay.displayWord2), INFO(electronicDisplay.displayWord3),
    INFO(electronicDisplay.displayWord4), INFO(electronicDisplay.displayWord5),
    INFO(frame14Payload), INFO(frame25Payload), INFO(frame2APayload),
    INFO(inspection.inspectionDays1), INFO(inspection.inspectionDays2),
    INFO(inspection.inspectionDistance1), INFO(inspection.inspectionDistance2),
    INFO(inspection.inspectionFlag), INFO(parkingAssist.consumerPrompt1),
    INFO(parkingAssist.consumerPrompt2), INFO(parkingAssist.consumerPrompt3),
    INFO(parkingAssist.frame14Byte0), INFO(parkingAssist.frame14Byte1),
    INFO(parkingAssist.frame2ABand), INFO(parkingAssist.parkBit0), INFO(parkingAssist.parkBit1),
    INFO(parkingAssist.parkBit2), INFO(parkingAssist.parkBit3),
    INFO(parkingAssist.vehicleReminder1), INFO(parkingAssist.vehicleReminder2),
    INFO(parkingAssist.vehicleReminder3), INFO(parkingAssist.vehicleReminder4),
    INFO(parkingAssist.vehicleReminder5), INFO(parkingAssist.vehicleReminder6),
    INFO(parkingAssist.vehicleReminderFlag), INFO(rearAir.rearBit3), INFO(rearAir.rearBit7),
    INFO(rearAir.rearD1Bit5), INFO(rearAir.rearD1Bit6), INFO(rearAir.rearD1Level),
    INFO(rearAir.rearD2High), INFO(rearAir.rearD2Low), INFO(rearAir.rearTempText),
    INFO(sideRadar.sideGroupA[0]), INFO(sideRadar.sideGroupA[3]), INFO(sideRadar.sideGroupB[0]),
    INFO(sideRadar.sideGroupB[1]), INFO(sideRadar.sideGroupB[2]), INFO(sideRadar.sideGroupB[3]),
    INFO(sideRadar.sideLevels),
};

#undef AIR
#undef DOOR
#undef BODY
#undef RADAR
#undef INFO

// "field=value" items against the driver's records.
void compareFields(CanbusInterface* driver, const QStringList& expected)
{
    for (const QString& item : expected) {
        const QString name = item.section(QLatin1Char('='), 0, 0);
        QVERIFY2(kFields.contains(name), qPrintable(name));
        QCOMPARE(name + QLatin1Char('=') + kFields.value(name)(driver), item);
    }
}

using Events = QList<int>;   // keyboard number, pressed, keyboard number, pressed, ...

Events keyEvents(const DriverHarness& h) { return h.keyEvents(); }

// All the driver's change signals, so that a test can say "nothing else moved".
struct Spies
{
    explicit Spies(QObject* d)
        : air(d, SIGNAL(airConditionerDataChanged())), doors(d, SIGNAL(cardoorDataChanged())),
          body(d, SIGNAL(carbodyDataChanged())), radar(d, SIGNAL(radarDataChanged())),
          outdoor(d, SIGNAL(outdoorTemperatureChanged(QString,int))),
          steering(d, SIGNAL(trajectoryDataChanged(int,int,bool))), data(d, SIGNAL(dataChanged())),
          version(d, SIGNAL(versionDataChanged(QString))), sent(d, SIGNAL(sendDataToCan(QByteArray)))
    {
    }
    int total() const
    {
        return air.count() + doors.count() + body.count() + radar.count() + outdoor.count()
            + steering.count() + data.count() + version.count() + sent.count();
    }
    QSignalSpy air, doors, body, radar, outdoor, steering, data, version, sent;
};

void addFrameRows(const QList<QPair<QByteArray, QStringList>>& rows)
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("expected");
    for (const auto& row : rows)
        QTest::addRow("%s", row.first.toHex().constData()) << row.first << row.second;
}

// Feeds the row's frame to a fresh driver; it must be taken whole and emit dataChanged.
void checkDataFrame()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    QSignalSpy data(h.driver(), SIGNAL(dataChanged()));
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(data.count(), 1);
    compareFields(h.driver(), expected);
}

} // namespace

class TestDriver28 : public QObject
{
    Q_OBJECT

private slots:
    void initialState();
    void connectForm();
    void disconnectForm();
    void replies_data();
    void replies();
    void walkKeepsAnIncompleteTail();
    void version();

    void climate_data();
    void climate();
    void climateRepeatIsQuiet();
    void climateWaitsAfterPowerOn();
    void pqAndOldModelBoxes();
    void climateResetsOutdoorAndTyres();
    void rearClimate_data();
    void rearClimate();

    void outdoorTemperature_data();
    void outdoorTemperature();
    void doors_data();
    void doors();

    void wheelKeys_data();
    void wheelKeys();

    void radar_data();
    void radar();
    void radarOutsideReverse();
    void radarDisplay_data();
    void radarDisplay();
    void steering();

    void parking_data();
    void parking() { checkDataFrame(); }
    void settingsPages_data();
    void settingsPages();
    void drivingData_data();
    void drivingData();
    void amplifierAndDisplay_data();
    void amplifierAndDisplay() { checkDataFrame(); }
    void electricManagement_data();
    void electricManagement() { checkDataFrame(); }
    void inspection_data();
    void inspection();
    void tyres_data();
    void tyres() { checkDataFrame(); }

    void unknownTypes_data();
    void unknownTypes();
    void wrongSizes_data();
    void wrongSizes();
};

// ---- link ---------------------------------------------------------------------------

void TestDriver28::initialState()
{
    DriverHarness h(kId);
    QVERIFY(qobject_cast<Canbus28Obj*>(h.driver()));
    QCOMPARE(h.driver()->canbusId(), kId);
    QVERIFY(h.manager()->hadExInfo());
    QVERIFY(h.manager()->hadReverseLine());
    compareFields(h.driver(),
                  {"air.airOnOff=0", "air.airAC=0", "air.airAuto=0", "air.airSync=0", "air.airDual=0",
                   "air.airInnerLoop=0", "air.airDefrostFront=0", "air.airDefrostRear=0",
                   "air.airWindUpLeft=0", "air.airWindFrontLeft=0", "air.airWindDownLeft=0",
                   "air.airWindSpeedLeft=0", "air.airWindUpRight=0", "air.airWindFrontRight=0",
                   "air.airWindDownRight=0", "air.airWindSpeedRight=0", "air.airShowFlag=1",
                   "air.tempLeftVisible=1", "air.tempRightVisible=1", "air.seat.seatHotVisible=1",
                   // what this vehicle lacks stays hidden
                   "air.airEco=255", "air.airAcMax=255", "air.airOuterLoop=255"});
    QVERIFY(h.driver()->getDataInfo().canConvert<Data28Info>());
}

void TestDriver28::connectForm()
{
    DriverHarness h(kId);
    int interval = 0;
    QByteArray frame;
    QVERIFY(h.driver()->needSendConnect(interval, frame));
    QCOMPARE(interval, 1000);
    QCOMPARE(frame, QByteArray::fromHex("2e8101017c"));
    // The request for the version frame follows each call, also once connected.
    const QByteArray request = QByteArray::fromHex("2e900230003d");
    QTRY_COMPARE(h.sentFrames(), QList<QByteArray>{request});

    h.clearSent();
    QCOMPARE(h.feed(frame28(0x30, {'1'})), 0);
    QVERIFY(h.driver()->isConnectedState());
    frame.clear();
    QVERIFY(!h.driver()->needSendConnect(interval, frame));
    QVERIFY(frame.isEmpty());
    QTRY_COMPARE(h.sentFrames(), QList<QByteArray>{request});
}

void TestDriver28::disconnectForm()
{
    DriverHarness h(kId);
    QByteArray frame;
    QVERIFY(!h.driver()->needSendDisconnect(frame));
    QVERIFY(frame.isEmpty());
    // Any whole frame marks the box as there.
    h.feed(frame28(0x41, {0}));
    QVERIFY(h.driver()->isConnectedState());
    QVERIFY(h.driver()->needSendDisconnect(frame));
    QCOMPARE(frame, QByteArray::fromHex("2e8101007d"));
}

void TestDriver28::replies_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("result");
    QTest::addColumn<QByteArray>("reply");
    const QByteArray good = frame28(0x24, {0x40, 0x00});
    QByteArray bad = good;
    bad[bad.size() - 1] = char(bad.at(bad.size() - 1) ^ 0x01);
    QTest::addRow("%s", good.toHex().constData()) << good << 0 << QByteArray("\xFF", 1);
    QTest::addRow("%s", bad.toHex().constData()) << bad << -1 << QByteArray("\xF0", 1);
    QTest::addRow("2e2402") << QByteArray::fromHex("2e2402") << 1 << QByteArray();
    QTest::addRow("2e2400") << QByteArray::fromHex("2e2400") << -1 << QByteArray();
}

void TestDriver28::replies()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, result);
    QFETCH(QByteArray, reply);
    DriverHarness h(kId);
    Spies spies(h.driver());
    QCOMPARE(h.feed(bytes), result);
    QCOMPARE(h.replies, reply.isEmpty() ? QList<QByteArray>{} : QList<QByteArray>{reply});
    if (result != 0)
        QCOMPARE(spies.total(), 0);
}

void TestDriver28::walkKeepsAnIncompleteTail()
{
    DriverHarness h(kId);
    QSignalSpy data(h.driver(), SIGNAL(dataChanged()));
    const QByteArray a = frame28(0x14, {1, 2, 3});
    const QByteArray b = frame28(0x41, {0});
    const QByteArray c = frame28(0x14, {4, 5, 6});
    QCOMPARE(h.manager()->setData(a + b + c.left(5)), a.size() + b.size());
    QCOMPARE(data.count(), 2);
    QCOMPARE(h.driver()->getDataInfo().value<Data28Info>().frame14Payload,
             QByteArray::fromHex("010203"));
    QVERIFY(h.driver()->isConnectedState());
}

void TestDriver28::version()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    const QByteArray payload("MQB 2.4\0junk", 12);
    QCOMPARE(h.feed(frame28(0x30, payload)), 0);
    QVERIFY(h.driver()->isConnectedState());
    QCOMPARE(h.driver()->getVersionData(), QStringLiteral("MQB 2.4"));
    QCOMPARE(spies.version.count(), 1);
    QCOMPARE(spies.data.count(), 1);
    QCOMPARE(h.driver()->getDataInfo().value<Data28Info>().versionPayload, payload);
}

// ---- climate ------------------------------------------------------------------------

void TestDriver28::climate_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("rightDriver");
    QTest::addColumn<QStringList>("expected");
    auto row = [](std::initializer_list<quint8> d, bool rhd, const QStringList& expected) {
        const QByteArray f = frame28(0x21, d);
        QTest::addRow("%s%s", f.toHex().constData(), rhd ? " rhd" : "") << f << rhd << expected;
    };
    row({0x80, 0, 0, 0, 0, 0, 0, 0, 0}, false,
        {"air.id=28", "air.airPower=1", "air.airOnOff=1", "air.airAC=0", "air.airInnerLoop=0",
         "air.airOuterLoop=1", "air.airRearLock=0", "air.airAuto=0"});
    row({0x7F, 0, 0, 0, 0, 0, 0, 0, 0}, false,
        {"air.airPower=0", "air.airOnOff=0", "air.airAC=1", "air.airInnerLoop=1",
         "air.airOuterLoop=0", "air.airAutoStrong=1", "air.airAuto=1", "air.airDual=1",
         "air.airDefrostMax=1", "air.airRearLock=1"});
    row({0, 0xE5, 0, 0, 0, 0, 0, 0, 0}, false,
        {"air.airWindUpLeft=1", "air.airWindFrontLeft=1", "air.airWindDownLeft=1",
         "air.airWindUpRight=1", "air.airWindFrontRight=1", "air.airWindDownRight=1",
         "air.airWindSpeedLeft=5", "air.airWindSpeedRight=5"});
    // set points: 1..28 in half degrees from 16, 0 low, 31 high, 29 and 30 nothing
    row({0, 0, 1, 28, 0, 0, 0, 5, 0}, false,
        {"air.tempLeft=16.0", "air.tempRight=29.5", "air.tempRear=18.0", "air.tempUnit=0",
         "air.tempLeftVisible=1", "air.tempRightVisible=1", "air.tempRearVisible=1",
         "air.tempLeftLow=0", "air.tempRightHigh=0", "air.tempLeftFahrenheit=0"});
    row({0, 0, 0, 31, 0, 0, 0, 0, 0}, false,
        {"air.tempLeftLow=1", "air.tempLeftHigh=0", "air.tempLeft=", "air.tempRightHigh=1",
         "air.tempRightLow=0", "air.tempRight=", "air.tempRearLow=1"});
    row({0, 0, 29, 30, 0, 0, 0, 31, 0}, false,
        {"air.tempLeft=", "air.tempLeftLow=0", "air.tempLeftHigh=0", "air.tempRight=",
         "air.tempRightLow=0", "air.tempRightHigh=0", "air.tempRearHigh=1",
         "air.tempRear=\u00ff"});
    row({0, 0, 1, 28, 0x01, 0, 0, 2, 0}, false,
        {"air.tempLeft=60", "air.tempRight=87", "air.tempRear=61", "air.tempUnit=1",
         "air.tempLeftFahrenheit=1", "air.tempRightFahrenheit=1", "air.tempRearFahrenheit=1"});
    row({0, 0, 2, 10, 0, 0, 0, 0, 0}, true, {"air.tempLeft=20.5", "air.tempRight=16.5"});
    row({0, 0, 0, 0, 0xF8, 0, 0, 0, 0}, false,
        {"air.airDefrostFront=1", "air.airDefrostRear=1", "air.airAutoLoop=1", "air.airEco=1",
         "air.airAcMax=1", "air.tempUnit=0"});
    row({0, 0, 0, 0, 0, 0xD3, 0xB7, 0, 0xE0}, false,
        {"air.seat.seatHotVisible=1", "air.seat.seatHotLeft=5", "air.seat.seatHotRight=3",
         "air.seat.seatCoolLeft=2", "air.seat.seatCoolRight=3", "air.airState3=1",
         "air.airState4=3", "air.seat.seatGroup4Extra[0]=1", "air.seat.seatGroup4Extra[1]=3"});
    // the frame has no sync byte: the control hides once a frame is taken
    row({0x80, 0, 0, 0, 0, 0, 0, 0, 0}, false, {"air.airSync=255", "air.airShowFlag=1"});
}

void TestDriver28::climate()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, rightDriver);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.driver()->setRightDriver(rightDriver);
    Spies spies(h.driver());
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(spies.air.count(), 1);
    QCOMPARE(spies.total(), 1);
    compareFields(h.driver(), expected);
}

void TestDriver28::climateRepeatIsQuiet()
{
    DriverHarness h(kId);
    QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
    const QByteArray f = frame28(0x21, {0x80, 0x23, 4, 4, 0, 0, 0, 0, 0});
    h.feed(f);
    h.feed(f);
    QCOMPARE(air.count(), 1);
    h.feed(frame28(0x21, {0x80, 0x24, 4, 4, 0, 0, 0, 0, 0}));
    QCOMPARE(air.count(), 2);
}

void TestDriver28::climateWaitsAfterPowerOn()
{
    DriverHarness h(kId);
    auto* d = qobject_cast<Canbus28Obj*>(h.driver());
    QSignalSpy air(d, SIGNAL(airConditionerDataChanged()));
    // Right after power on the record follows the vehicle silently ...
    d->setPowerOnState();
    h.feed(frame28(0x21, {0x80, 0x01, 4, 4, 0, 0, 0, 0, 0}));
    QCOMPARE(air.count(), 0);
    compareFields(d, {"air.airPower=1", "air.airWindSpeedLeft=1"});
    // ... until the wait is over.
    d->onPowerTimerOut();
    h.feed(frame28(0x21, {0x80, 0x02, 4, 4, 0, 0, 0, 0, 0}));
    QCOMPARE(air.count(), 1);
    // Powered off, nothing is shown either.
    d->setPowerOffState();
    h.feed(frame28(0x21, {0x80, 0x03, 4, 4, 0, 0, 0, 0, 0}));
    QCOMPARE(air.count(), 1);
    compareFields(d, {"air.airWindSpeedLeft=3"});
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
        h.feed(frame28(0x21, {0x80, 0x01, 4, 4, 0, 0, 0, 0, 0}));
        QCOMPARE(air.count(), 1);
        compareFields(d, {"air.id=" + str(id), "air.airWindSpeedLeft=1"});
        QVERIFY(!d->isConnectedState());   // frames alone don't mark the link here
        int interval = 0;
        QByteArray out;
        QVERIFY(d->needSendConnect(interval, out));
        QCOMPARE(out, frame28(0x81, {0x01}));
        QMetaObject::invokeMethod(d, "languageChanged", Q_ARG(QString, QStringLiteral("en")));
        QTest::qWait(200);   // no request for the version follows either
        QVERIFY(h.sentFrames().isEmpty());
    }
}

void TestDriver28::climateResetsOutdoorAndTyres()
{
    DriverHarness h(kId);
    h.feed(frame28(0x27, {0x00, 0xD7, 0x00}));
    h.feed(frame28(0x66, {0, 25, 25, 25, 25, 0}));
    compareFields(h.driver(), {"air.outdoorTemp=21\u2103", "air.tire.tirePressureFrontLeft=2.5 bar"});
    h.feed(frame28(0x21, {0x80, 0, 4, 4, 0, 0, 0, 0, 0}));
    compareFields(h.driver(),
                  {"air.outdoorTemp=", "air.outdoorTempValid=0", "air.outdoorTempUnit=-1",
                   "air.tire.tirePressureFrontLeft=--", "air.tire.tirePressureRearRight=--",
                   "air.tire.tireStatus=255", "air.tire.tireUnit=-1"});
}

void TestDriver28::rearClimate_data()
{
    addFrameRows({
        {frame28(0x28, {0x88, 0x6F, 0x77, 5, 0}),
         {"rearAir.rearBit7=1", "rearAir.rearBit3=1", "rearAir.rearD1Bit6=1", "rearAir.rearD1Bit5=1",
          "rearAir.rearD1Level=15", "rearAir.rearD2High=7", "rearAir.rearD2Low=7",
          "rearAir.rearTempText=18.0"}},
        {frame28(0x28, {0x77, 0x90, 0x08, 0, 0}),
         {"rearAir.rearBit7=0", "rearAir.rearBit3=0", "rearAir.rearD1Bit6=0", "rearAir.rearD1Bit5=0",
          "rearAir.rearD1Level=0", "rearAir.rearD2High=0", "rearAir.rearD2Low=0",
          "rearAir.rearTempText=Low"}},
        {frame28(0x28, {0, 0, 0, 31, 0}), {"rearAir.rearTempText=High"}},
        {frame28(0x28, {0, 0, 0, 29, 0}), {"rearAir.rearTempText="}},
    });
}

void TestDriver28::rearClimate()
{
    checkDataFrame();
}

// ---- outdoor temperature and doors ---------------------------------------------------

void TestDriver28::outdoorTemperature_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("tenths");
    auto row = [](std::initializer_list<quint8> d, const QString& text, int unit, int tenths) {
        const QByteArray f = frame28(0x27, d);
        QTest::addRow("%s", f.toHex().constData()) << f << text << unit << tenths;
    };
    row({0x00, 0xD7, 0x00}, QStringLiteral("21\u2103"), 0, 215);
    row({0x01, 0x2C, 0x03}, QStringLiteral("81\u2109"), 1, 812);
    row({0xFE, 0xF6, 0xFF}, QStringLiteral("-1\u2103"), 0, -10);   // only bit 0 is the unit
    row({0x00, 0xFB, 0xFF}, QStringLiteral("0\u2103"), 0, -5);     // cut towards zero
    row({0x00, 0x00, 0x80}, QStringLiteral("-3276\u2103"), 0, -32768);
}

void TestDriver28::outdoorTemperature()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, text);
    QFETCH(int, unit);
    QFETCH(int, tenths);
    DriverHarness h(kId);
    Spies spies(h.driver());
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(spies.outdoor.count(), 1);
    QCOMPARE(spies.outdoor.at(0).at(0).toString(), text);
    QCOMPARE(spies.outdoor.at(0).at(1).toInt(), unit);
    QCOMPARE(spies.body.count(), 1);
    QCOMPARE(spies.data.count(), 1);
    QCOMPARE(spies.air.count(), 0);
    compareFields(h.driver(), {"air.outdoorTemp=" + text, "air.outdoorTempValid=1",
                               "air.outdoorTempUnit=" + str(unit), "body.outdoorTempUnit=" + str(unit),
                               "body.outdoorTempTenths=" + str(tenths)});
    // The same reading again: the text is not sent twice, the body record is.
    h.feed(frame);
    QCOMPARE(spies.outdoor.count(), 1);
    QCOMPARE(spies.body.count(), 2);
}

void TestDriver28::doors_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QByteArray>("payload");
    auto row = [](std::initializer_list<quint8> d, const QStringList& expected, const QByteArray& payload) {
        const QByteArray f = frame28(0x24, d);
        QTest::addRow("%s", f.toHex().constData()) << f << expected << payload;
    };
    const QStringList allOpen = {"door.doorFrontRight=1", "door.doorFrontLeft=1", "door.doorRearRight=1",
                                 "door.doorRearLeft=1", "door.doorTrunk=1", "door.doorHood=1"};
    // The slice's length comes from D2, which in a frame this size is its checksum.
    row({0xFC, 0x00}, allOpen, QByteArray::fromHex("fc00dd"));
    row({0x40, 0x00}, {"door.doorFrontLeft=1", "door.doorFrontRight=0", "door.doorHood=0"},
        QByteArray::fromHex("400099"));
    row({0xD7, 0x00}, {"door.doorFrontRight=1", "door.doorFrontLeft=1", "door.doorRearLeft=1",
                       "door.doorRearRight=0", "door.doorTrunk=0", "door.doorHood=1"},
        QByteArray::fromHex("d700"));
}

void TestDriver28::doors()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, expected);
    QFETCH(QByteArray, payload);
    DriverHarness h(kId);
    Spies spies(h.driver());
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(spies.doors.count(), 1);
    QCOMPARE(spies.data.count(), 1);
    compareFields(h.driver(), expected);
    QCOMPARE(h.driver()->getDataInfo().value<Data28Info>().frame24Payload, payload);
    h.feed(frame);
    QCOMPARE(spies.doors.count(), 1);
    QCOMPARE(spies.data.count(), 2);
}

// ---- keys ---------------------------------------------------------------------------

void TestDriver28::wheelKeys_data()
{
    QTest::addColumn<QList<QByteArray>>("frames");
    QTest::addColumn<Events>("events");
    auto row = [](const char* name, const QList<QByteArray>& frames, const Events& events) {
        QTest::addRow("%s", name) << frames << events;
    };
    row("press and release", {frame28(0x20, {1, 1}), frame28(0x20, {0, 0})}, {166, 1, 166, 0});
    row("release goes to the last key", {frame28(0x20, {2, 1}), frame28(0x20, {0, 0}), frame28(0x20, {0, 1})},
        {167, 1, 167, 0, 167, 1});
    row("release with no key before", {frame28(0x20, {0, 0})}, {0, 0});
    row("unknown number is key 0", {frame28(0x20, {1, 1}), frame28(0x20, {9, 1})}, {166, 1, 0, 1});
    row("second frame: press and release", {frame28(0x2F, {17})}, {347, 1, 347, 0});
    row("second frame: 3 stays down", {frame28(0x2F, {3})}, {232, 1});
    row("second frame: 5 is nothing", {frame28(0x2F, {5})}, {});
    row("second frame: unknown", {frame28(0x2F, {9})}, {0, 1, 0, 0});
    row("second frame then release", {frame28(0x2F, {2}), frame28(0x20, {0, 0})}, {233, 1, 233, 0, 233, 0});
}

void TestDriver28::wheelKeys()
{
    QFETCH(QList<QByteArray>, frames);
    QFETCH(Events, events);
    DriverHarness h(kId);
    for (const QByteArray& f : frames)
        QCOMPARE(h.feed(f), 0);
    QCOMPARE(keyEvents(h), events);
}

// ---- radar and steering -------------------------------------------------------------

void TestDriver28::radar_data()
{
    addFrameRows({
        {frame28(0x22, {0, 15, 16, 165, 0, 0}),
         {"radar.radarRearLeft=1", "radar.radarRearLeftMid=1", "radar.radarRearRightMid=2",
          "radar.radarRearRight=11", "radar.radarFrontLeft=0", "radar.radarLevels=12", "radar.radarOn=1"}},
        {frame28(0x23, {166, 255, 30, 31, 0, 0}),
         {"radar.radarFrontLeft=0", "radar.radarFrontLeftMid=0", "radar.radarFrontRightMid=2",
          "radar.radarFrontRight=3", "radar.radarRearLeft=0", "radar.radarLevels=12", "radar.radarOn=1"}},
        {frame28(0x23, {45, 46, 150, 151, 7, 7, 7}),
         {"radar.radarFrontLeft=3", "radar.radarFrontLeftMid=4", "radar.radarFrontRightMid=10",
          "radar.radarFrontRight=11"}},
    });
}

void TestDriver28::radar()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    h.driver()->setInReverse(true);
    Spies spies(h.driver());
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(spies.radar.count(), 1);
    QCOMPARE(spies.total(), 1);
    compareFields(h.driver(), expected);
}

void TestDriver28::radarOutsideReverse()
{
    DriverHarness h(kId);
    Spies spies(h.driver());
    QCOMPARE(h.feed(frame28(0x22, {5, 5, 5, 5, 0, 0})), 0);
    QCOMPARE(spies.total(), 0);
    compareFields(h.driver(), {"radar.radarRearLeft=0", "radar.radarLevels=10"});
}

void TestDriver28::radarDisplay_data()
{
    QTest::addColumn<QList<int>>("sensors");   // FL FLM FRM FR RL RLM RRM RR
    QTest::addColumn<int>("on");
    QTest::addRow("all 0") << QList<int>{0, 0, 0, 0, 0, 0, 0, 0} << 1;
    QTest::addRow("clear at the thresholds") << QList<int>{5, 9, 9, 5, 5, 12, 12, 5} << 0;
    QTest::addRow("rear left close") << QList<int>{5, 9, 9, 5, 4, 12, 12, 5} << 1;
    // each sensor one step nearer than its own "clear"
    QTest::addRow("front left close") << QList<int>{4, 9, 9, 5, 5, 12, 12, 5} << 1;
    QTest::addRow("front left middle close") << QList<int>{5, 8, 9, 5, 5, 12, 12, 5} << 1;
    QTest::addRow("rear left middle close") << QList<int>{5, 9, 9, 5, 5, 11, 12, 5} << 1;
}

void TestDriver28::radarDisplay()
{
    QFETCH(QList<int>, sensors);
    QFETCH(int, on);
    DriverHarness h(kId);
    auto* d = qobject_cast<Canbus28Obj*>(h.driver());
    RadarData& r = *d->getRadarData();
    quint8* fields[] = {&r.radarFrontLeft, &r.radarFrontLeftMid, &r.radarFrontRightMid, &r.radarFrontRight,
                        &r.radarRearLeft, &r.radarRearLeftMid, &r.radarRearRightMid, &r.radarRearRight};
    for (int i = 0; i < 8; ++i)
        *fields[i] = quint8(sensors.at(i));
    r.radarOn = quint8(1 - on);
    d->RadarDisplay();
    QCOMPARE(int(r.radarOn), on);
}

void TestDriver28::steering()
{
    DriverHarness h(kId);
    QSignalSpy steer(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
    h.feed(frame28(0x29, {0x00, 0x00}));   // straight ahead is where it starts
    QCOMPARE(steer.count(), 0);
    h.feed(frame28(0x29, {0x10, 0x00}));
    h.feed(frame28(0x29, {0x10, 0x00}));
    h.feed(frame28(0x29, {0xF0, 0xFF}));
    h.feed(frame28(0x29, {0x00, 0x80}));
    QCOMPARE(steer.count(), 3);
    QCOMPARE(steer.at(0), (QList<QVariant>{16, 19918, true}));
    QCOMPARE(steer.at(1), (QList<QVariant>{-16, 19918, true}));
    QCOMPARE(steer.at(2), (QList<QVariant>{-32768, 19918, true}));
}

// ---- Data28Info frames --------------------------------------------------------------

void TestDriver28::parking_data()
{
    auto band = [](int value, int expected) {
        const QByteArray f = frame28(0x2A, {quint8(value >> 8), quint8(value & 0xFF)});
        return qMakePair(f, QStringList{"parkingAssist.frame2ABand=" + str(expected),
                                         "frame2APayload=" + str(f.mid(3, 2))});
    };
    addFrameRows({
        {frame28(0x14, {1, 2, 3}),
         {"frame14Payload=010203", "parkingAssist.frame14Byte0=1", "parkingAssist.frame14Byte1=2"}},
        {frame28(0x25, {0x0A, 0xFF}),
         {"parkingAssist.parkBit3=1", "parkingAssist.parkBit2=0", "parkingAssist.parkBit1=1",
          "parkingAssist.parkBit0=0", "frame25Payload=0aff"}},
        band(35, 0), band(36, 1), band(250, 4), band(251, 5), band(1001, 6),
        {frame28(0x32, {1, 2, 3, 4, 5, 6}),
         {"sideRadar.sideLevels=6", "sideRadar.sideGroupA[0]=1", "sideRadar.sideGroupA[3]=4",
          "sideRadar.sideGroupB[0]=0"}},
        {frame28(0x33, {9, 8, 7, 6, 0, 0}),
         {"sideRadar.sideLevels=6", "sideRadar.sideGroupB[0]=9", "sideRadar.sideGroupB[1]=8",
          "sideRadar.sideGroupB[2]=7", "sideRadar.sideGroupB[3]=6", "sideRadar.sideGroupA[0]=0"}},
    });
}

void TestDriver28::settingsPages_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("expected");
    auto row = [](std::initializer_list<quint8> d, const QStringList& expected) {
        const QByteArray f = frame28(0x40, d);
        QTest::addRow("%s", f.toHex().constData()) << f << expected;
    };
    row({0x00, 50, 0, 0, 0}, {"bodyStatus.languageCode=43"});
    row({0x00, 7, 0, 0, 0}, {"bodyStatus.languageCode=7"});
    row({0x20, 0x03, 0x11, 0x22, 0},
        {"bodyStatus.page20Item0=1", "bodyStatus.page20Item1=1", "bodyStatus.page20Item2=17",
         "bodyStatus.page20Item3=34", "body.speed2Unit=1"});
    row({0x40, 0x05, 0x3C, 0xD2, 0xF7},
        {"bodyStatus.page40Item0=1", "bodyStatus.page40Item1=0", "bodyStatus.page40Item2=1",
         "bodyStatus.page40Item3=0", "bodyStatus.page40Item4=12", "bodyStatus.page40Item5=3",
         "bodyStatus.page40Item6=2", "bodyStatus.page40Item7=13", "bodyStatus.page40Item8=7",
         "bodyStatus.page40Item9=3", "bodyStatus.page40Item10=1"});
    row({0x52, 150, 100, 0xFF, 255},
        {"bodyStatus.page52Item0=100", "bodyStatus.page52Item1=100", "bodyStatus.page52Item2=2",
         "bodyStatus.page52Item3=11", "bodyStatus.page52Item4=100"});
    row({0x70, 0x93, 0x55, 0, 0},
        {"bodyStatus.page70Item0=2", "bodyStatus.page70Item1=2", "bodyStatus.page70Item2=1",
         "bodyStatus.page70Item3=0", "bodyStatus.page70Item4=1", "bodyStatus.page70Item5=0",
         "bodyStatus.page70Item6=1", "bodyStatus.page70Item7=0", "bodyStatus.page70Item8=1"});
    row({0xA0, 0x39, 0x30, 0x01, 0x07},
        {"bodyStatus.pageA0Item0=1", "bodyStatus.pageA0Item1=1", "bodyStatus.pageA0Item2=8",
         "bodyStatus.pageA0Item3=2", "bodyStatus.pageA0Item4=0", "bodyStatus.pageA0Item5=0",
         "bodyStatus.pageA0Item6=1", "bodyStatus.pageA0Item7=5"});
    row({0xB1, 0x10, 0x0F, 0xE0, 0},
        {"bodyStatus.pageB1Item0=1", "bodyStatus.pageB1Item1=0", "bodyStatus.pageB1Item2=0",
         "bodyStatus.pageB1Item3=15", "bodyStatus.pageB1Item4=1", "bodyStatus.pageB1Item5=1",
         "bodyStatus.pageB1Item6=1"});
    row({0xC0, 0x03, 60, 0x80, 150},
        {"bodyStatus.pageC0Item0=3", "bodyStatus.pageC0Raw=60", "bodyStatus.pageC0Text=16.0\u2103",
         "bodyStatus.pageC0Item1=1", "bodyStatus.pageC0Item2=100"});
    row({0xC0, 0, 0, 0, 0}, {"bodyStatus.pageC0Text=LO"});
    row({0xC0, 0, 59, 0, 0}, {"bodyStatus.pageC0Text="});
    // a page the vehicle doesn't have changes nothing
    row({0x11, 0xFF, 0xFF, 0xFF, 0xFF}, {"bodyStatus.page10Item0=0", "bodyStatus.page10Item1=0"});
}

void TestDriver28::settingsPages()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    Spies spies(h.driver());
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(spies.data.count(), 1);
    QCOMPARE(spies.body.count(), frame.at(3) == 0x20 ? 1 : 0);
    compareFields(h.driver(), expected);
}

void TestDriver28::drivingData_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("expected");
    auto row = [](std::initializer_list<quint8> d, const QStringList& expected) {
        const QByteArray f = frame28(0x50, d);
        QTest::addRow("%s", f.toHex().constData()) << f << expected;
    };
    row({0x10, 0, 0x34, 0x12, 0, 0}, {"driving.shortDistanceTextA=4660km", "driving.shortValue1=4660"});
    row({0x12, 2, 0xFF, 0xFF, 0, 0}, {"driving.shortDistanceTextC=65535km", "driving.shortValue1=0"});
    row({0x21, 0, 0xF6, 0xFF, 0xFF, 0xFF}, {"driving.distanceTextB=-1km"});
    row({0x22, 1, 0x39, 0x30, 0x01, 0}, {"driving.distanceTextC=7788mi", "body.odometer=7788",
                                         "body.odometerUnit=1"});
    row({0x31, 3, 0x4B, 0x00, 0, 0}, {"driving.consumptionTextB=7.0 mpg(US)"});
    row({0x32, 21, 0x64, 0x00, 0, 0}, {"driving.consumptionTextC=10.0mi/kWh"});
    row({0x30, 5, 0x4B, 0x00, 0, 0}, {"driving.consumptionTextA=7.0"});
    row({0x50, 0x5A, 0x00, 0xAA, 0, 0}, {"driving.durationTextA=90.0minute"});
    row({0x60, 2, 0x0F, 0x00, 0, 0}, {"driving.flowText60=15.0gal/h"});
    row({0x61, 0x07, 0x4B, 0x00, 0, 0}, {"driving.consumptionText61=7.0mpg(US)"});
    row({0x71, 1, 0x85, 0xFF, 0, 0}, {"driving.electricTextB=-12.3km/kwh"});
    row({0x13, 1, 1, 1, 1, 1}, {"driving.shortDistanceTextA=", "driving.numberText80="});
}

void TestDriver28::drivingData()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, expected);
    DriverHarness h(kId);
    Spies spies(h.driver());
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(spies.data.count(), 1);
    QCOMPARE(spies.body.count(), frame.at(3) == 0x22 ? 1 : 0);
    compareFields(h.driver(), expected);
}

void TestDriver28::amplifierAndDisplay_data()
{
    QByteArray text14 = frame28(0x52, QByteArray::fromHex("10414243444546474849"));
    addFrameRows({
        {frame28(0x51, {31, 19, 18, 0, 5, 255, 8}),
         {"amplifier.ampLevel=30", "amplifier.ampBand1=18", "amplifier.ampBand2=18",
          "amplifier.ampBand3=0", "amplifier.ampBand4=5", "amplifier.ampBand5=18", "amplifier.ampMode=7"}},
        {frame28(0x52, {0x12, 0x34, 0xAB, 0xCD, 0xFC, 7, 0x01, 0x02, 0x03, 0x04, 101}),
         {"electronicDisplay.displayWord1=4660", "electronicDisplay.displayWord2=43981",
          "electronicDisplay.displayState1=2", "electronicDisplay.displayState2=1",
          "electronicDisplay.displayState3=4", "electronicDisplay.displayByte=7",
          "electronicDisplay.displayWord3=258", "electronicDisplay.displayWord4=772",
          "electronicDisplay.displayPercent=100"}},
        {frame28(0x53, {0x00, 0x34, 0x12}), {"electronicDisplay.displayWord5=4660"}},
        {frame28(0x53, {0x10, 'A', 'B'}),
         {"electronicDisplay.displayText1=" + str(frame28(0x53, {0x10, 'A', 'B'}).mid(4))}},
        {frame28(0x53, QByteArray(1, '\x11') + QByteArray(40, 'x')),
         {"electronicDisplay.displayText2=" + str(QByteArray(30, 'x'))}},
        // a 0x52 of another size is read as 0x53
        {text14, {"electronicDisplay.displayText1=" + str(text14.mid(4)),
                  "electronicDisplay.displayWord1=0"}},
    });
}

void TestDriver28::electricManagement_data()
{
    addFrameRows({
        {frame28(0x54, {0x00, 0x05}),
         {"electricManagement.managementBit2=1", "electricManagement.managementBit1=0",
          "electricManagement.managementBit0=1"}},
        {frame28(0x54, {0x02, 24, 60, 0xF3, 0xFE, 30, 70, 23, 59, 101}),
         {"electricManagement.timerBlock2.hour=23", "electricManagement.timerBlock2.minute=59",
          "electricManagement.timerBlock2.bit7=1", "electricManagement.timerBlock2.bit4=1",
          "electricManagement.timerBlock2.mode=3", "electricManagement.timerBlock2.flag7=1",
          "electricManagement.timerBlock2.flag1=1", "electricManagement.timerBlock2.startHour=23",
          "electricManagement.timerBlock2.startMinute=59", "electricManagement.timerBlock2.endHour=23",
          "electricManagement.timerBlock2.endMinute=59", "electricManagement.timerBlock2.percent=100",
          "electricManagement.timerBlock1.hour=0"}},
        {frame28(0x54, {0x01, 5, 6, 0x82, 0x02, 1, 2, 3, 4, 50}),
         {"electricManagement.timerBlock1.hour=5", "electricManagement.timerBlock1.minute=6",
          "electricManagement.timerBlock1.bit7=1", "electricManagement.timerBlock1.bit6=0",
          "electricManagement.timerBlock1.mode=2", "electricManagement.timerBlock1.flag7=0",
          "electricManagement.timerBlock1.flag1=1", "electricManagement.timerBlock1.startHour=1",
          "electricManagement.timerBlock1.startMinute=2", "electricManagement.timerBlock1.endHour=3",
          "electricManagement.timerBlock1.endMinute=4", "electricManagement.timerBlock1.percent=50"}},
        {frame28(0x54, {0x03, 5, 6, 0, 0, 1, 2, 3, 4}), {"electricManagement.timerBlock3.hour=0"}},
        {frame28(0x54, {0x04, 5, 6, 0, 0, 1, 2, 3, 4, 50}),
         {"electricManagement.timerBlock1.hour=0", "electricManagement.managementFlag=0"}},
        {frame28(0x54, {0x80, 0x07}), {"electricManagement.managementFlag=1"}},
        {frame28(0x54, {0x80, 0x00}), {"electricManagement.managementFlag=0"}},
    });
}

void TestDriver28::inspection_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("signalCount");
    auto row = [](std::initializer_list<quint8> d, const QStringList& expected, int signalCount = 1) {
        const QByteArray f = frame28(0x63, d);
        QTest::addRow("%s", f.toHex().constData()) << f << expected << signalCount;
    };
    row({0x10, 0x01, 0x1E, 0x00}, {"inspection.inspectionDays1=30day"});
    row({0x10, 0x02, 0x05, 0x00}, {"inspection.inspectionDays1=Overdue by 5 day"});
    row({0x20, 0x01, 0x2C, 0x01}, {"inspection.inspectionDays2=300day"});
    row({0x11, 0x01, 0x0C, 0x00}, {"inspection.inspectionDistance1=distance 1200km"});
    row({0x11, 0x22, 0x0C, 0x00}, {"inspection.inspectionDistance1=Overdue by 1200mi"});
    row({0x21, 0x01, 0xFF, 0xFF}, {"inspection.inspectionDistance2=distance 6553500km"});
    row({0x10, 0x00, 0x05, 0x00}, {"inspection.inspectionDays1=--"});
    row({0x22, 0x01}, {"inspection.inspectionFlag=1"});
    row({0x30, 0x01, 0x05, 0x00}, {"inspection.inspectionDays1=", "inspection.inspectionFlag=0"}, 0);
}

void TestDriver28::inspection()
{
    QFETCH(QByteArray, frame);
    QFETCH(QStringList, expected);
    QFETCH(int, signalCount);
    DriverHarness h(kId);
    QSignalSpy data(h.driver(), SIGNAL(dataChanged()));
    QCOMPARE(h.feed(frame), 0);
    QCOMPARE(data.count(), signalCount);
    compareFields(h.driver(), expected);
}

void TestDriver28::tyres_data()
{
    addFrameRows({
        {frame28(0x66, {3, 25, 26, 24, 0, 0}),
         {"air.tire.tireUnit=3", "air.tire.tirePressureFrontLeft=2.5 bar",
          "air.tire.tirePressureFrontRight=2.6 bar", "air.tire.tirePressureRearLeft=2.4 bar",
          "air.tire.tirePressureRearRight=0.0 bar", "air.tire.tireStatus=0"}},
        {frame28(0x66, {0, 70, 71, 0, 255, 1}),
         {"air.tire.tirePressureFrontLeft=35.0 psi", "air.tire.tirePressureFrontRight=35.5 psi",
          "air.tire.tirePressureRearLeft=0.0 psi", "air.tire.tirePressureRearRight=127.5 psi",
          "air.tire.tireStatus=1"}},
        {frame28(0x66, {0, 25, 0, 0, 0, 2}), {"air.tire.tirePressureFrontLeft=250.0 kPa"}},
        {frame28(0x66, {0, 25, 0, 0, 0, 7}),
         {"air.tire.tirePressureFrontLeft=25.0 bar", "air.tire.tireStatus=7"}},
        {frame28(0x68, {0x05, 9}),
         {"air.tire.tireWarning[0][0]=1", "air.tire.tireWarning[0][1]=0", "air.tire.tireWarning[0][2]=1",
          "air.tire.tireWarning[0][3]=0", "air.tire.tireWarning[1][0]=4", "air.tire.tireWarning[1][3]=4"}},
        {frame28(0x68, {0xFA, 3}),
         {"air.tire.tireWarning[0][0]=0", "air.tire.tireWarning[0][1]=1", "air.tire.tireWarning[0][3]=1",
          "air.tire.tireWarning[1][1]=3", "air.tire.tireWarning[1][2]=3"}},
    });
}

// ---- the record and bad input --------------------------------------------------------

void TestDriver28::unknownTypes_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("handled");
    for (int type : {0x00, 0x2B, 0x61, 0xFF}) {
        const QByteArray f = frame28(quint8(type), {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
        QTest::addRow("%s", f.toHex().constData()) << f << 0;
    }
    const QByteArray ignored = frame28(0x26, {1, 2});
    QTest::addRow("%s", ignored.toHex().constData()) << ignored << 1;
}

void TestDriver28::unknownTypes()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, handled);
    DriverHarness h(kId);
    Spies spies(h.driver());
    QCOMPARE(h.driver()->checkProtocolData(frame), handled);
    QCOMPARE(spies.total(), 0);
    QVERIFY(h.keys().isEmpty());
}

void TestDriver28::wrongSizes_data()
{
    QTest::addColumn<QByteArray>("frame");
    auto row = [](quint8 type, int dataBytes) {
        const QByteArray f = sized(type, dataBytes);
        QTest::addRow("%s", f.toHex().constData()) << f;
    };
    row(0x14, 1);
    row(0x21, 8);
    row(0x21, 10);
    row(0x22, 5);
    row(0x24, 1);
    row(0x25, 3);
    row(0x27, 2);
    row(0x28, 4);
    row(0x2A, 3);
    row(0x32, 5);
    row(0x40, 4);
    row(0x40, 6);
    row(0x50, 5);
    row(0x51, 6);
    row(0x60, 7);
    row(0x62, 2);
    row(0x66, 5);
    row(0x68, 1);
    // Straight to the parser: a frame cut anywhere.
    QTest::addRow("2e") << QByteArray::fromHex("2e");
    QTest::addRow("2e4009") << QByteArray::fromHex("2e4009");
}

void TestDriver28::wrongSizes()
{
    QFETCH(QByteArray, frame);
    DriverHarness h(kId);
    h.driver()->setInReverse(true);   // so that radar frames would act
    const Data28Info before = h.driver()->getDataInfo().value<Data28Info>();
    Spies spies(h.driver());
    QCOMPARE(h.driver()->checkProtocolData(frame), frame.size() > 1 ? 1 : 0);
    QCOMPARE(spies.total(), 0);
    QVERIFY(h.keys().isEmpty());
    const Data28Info after = h.driver()->getDataInfo().value<Data28Info>();
    QCOMPARE(after.frame14Payload, before.frame14Payload);
    QCOMPARE(after.driving.shortDistanceTextA, before.driving.shortDistanceTextA);
    QCOMPARE(int(after.amplifier.ampLevel), int(before.amplifier.ampLevel));
}

QTEST_GUILESS_MAIN(TestDriver28)
#include "tst_driver28.moc"
