// The shared vehicle records: defaults, clear, and the comparison rules that decide
// whether a driver signals a change.

#include <QtTest>

#include "airdata.h"
#include "carbodydata.h"
#include "cardoordata.h"
#include "radardata.h"

// One change to a fresh record.
struct AirChange { void (*apply)(AirData&); };
struct BodyChange { void (*apply)(CarbodyData&); };
Q_DECLARE_METATYPE(AirChange)
Q_DECLARE_METATYPE(BodyChange)

class TestRecords : public QObject
{
    Q_OBJECT
private slots:
    void airClearKeepsSwitchesAndTyres();
    void airCompare_data();
    void airCompare();
    void seatGroupFlags();
    void tyreClearKeepsFifthWarningByte();
    void bodyWarnings_data();
    void bodyWarnings();
    void doorAndRadarClearAndWarning();
};

void TestRecords::airClearKeepsSwitchesAndTyres()
{
    AirData air;
    // A control is hidden until a driver says its vehicle has it.
    QVERIFY(air.airAC == 255 && air.airWindSpeedRight == -1 && air.airRearSpare[7] == 255);
    QCOMPARE(air.tempRear2, QString(QChar(0xFF)));
    air.airValid = air.airShowFlag = 0;
    air.airAC = 1;
    air.tempLeft = QStringLiteral("22.5");
    air.rawFrame = QByteArray("\x01\x02", 2);
    air.seat.seatHotLeft = 3;
    air.tire.tirePressureFrontLeft = QStringLiteral("2.3");
    air.clear();
    QVERIFY(air.airValid == 0 && air.airShowFlag == 0);
    QCOMPARE(air.tire.tirePressureFrontLeft, QStringLiteral("2.3"));
    // A cleared record and a fresh one show the same panel.
    QVERIFY(air.compare(AirData()));
}

void TestRecords::airCompare_data()
{
    QTest::addColumn<AirChange>("change");
    QTest::addColumn<bool>("equal");
    auto row = [](const char* name, void (*change)(AirData&), bool equal) {
        QTest::newRow(name) << AirChange{change} << equal;
    };
    // What is signalled elsewhere, or not at all, is no reason for a climate signal.
    row("outdoorTemp", [](AirData& a) { a.outdoorTemp = QStringLiteral("21℃"); }, true);
    row("airShowFlag", [](AirData& a) { a.airShowFlag = 0; }, true);
    row("tire", [](AirData& a) { a.tire.tireStatus = 1; }, true);
    row("airAC", [](AirData& a) { a.airAC = 1; }, false);
    row("tempLeft", [](AirData& a) { a.tempLeft = QStringLiteral("LO"); }, false);
    row("airRearSpare[7]", [](AirData& a) { a.airRearSpare[7] = 0; }, false);
    row("seatCoolRight", [](AirData& a) { a.seat.seatCoolRight = 2; }, false);
    // The raw frame compares by size and content.
    row("rawFrame", [](AirData& a) { a.rawFrame = QByteArray("\x21\x01", 2); }, false);
    row("rawFrame longer", [](AirData& a) { a.rawFrame = QByteArray("\x21\x02\x00", 3); }, false);
}

void TestRecords::airCompare()
{
    QFETCH(AirChange, change);
    QFETCH(bool, equal);
    AirData base;
    base.rawFrame = QByteArray("\x21\x02", 2);
    AirData changed = base;
    change.apply(changed);
    QCOMPARE(changed.compare(base), equal);
    QCOMPARE(base.compare(changed), equal);
}

void TestRecords::seatGroupFlags()
{
    // A copy leaves both group flags behind; an assignment copies all.
    SeatHeatingData seat;
    seat.seatGroup3Visible = seat.seatGroup4Visible = 1;
    seat.seatGroup3Left = 2;
    seat.seatGroup4Extra[1] = 9;
    const SeatHeatingData copy(seat);
    QVERIFY(copy.seatGroup3Visible == 0 && copy.seatGroup4Visible == 0);
    QVERIFY(copy.seatGroup3Left == 2 && copy.seatGroup4Extra[1] == 9);
    SeatHeatingData assigned;
    assigned = seat;
    QCOMPARE(assigned.seatGroup3Visible, quint8(1));

    // The climate record compares its fourth group flag with the other's third; the
    // other's fourth and its own third aren't looked at: a one-sided rule.
    AirData a;
    AirData b;
    a.seat.seatGroup4Visible = 1;
    QVERIFY(!a.compare(b));
    b.seat.seatGroup3Visible = 1;
    QVERIFY(a.compare(b));
    b.seat.seatGroup4Visible = 1;
    QVERIFY(a.compare(b) && !b.compare(a));
}

void TestRecords::tyreClearKeepsFifthWarningByte()
{
    TirePressureInformation tyres;
    for (auto& group : tyres.tireWarning)
        std::fill(std::begin(group), std::end(group), quint8(7));
    tyres.tireUnit = 2;
    tyres.tirePressureRearRight = QStringLiteral("35");
    tyres.clear();
    QVERIFY(tyres.tireUnit == -1 && tyres.tireStatus == 255);
    QCOMPARE(tyres.tirePressureRearRight, QStringLiteral("--"));
    for (const auto& group : tyres.tireWarning)
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(group), 5), QByteArray("\0\0\0\0\x07", 5));
}

void TestRecords::bodyWarnings_data()
{
    QTest::addColumn<BodyChange>("change");
    QTest::addColumn<bool>("warning");
    QTest::addColumn<bool>("warning1");
    auto row = [](const char* name, void (*change)(CarbodyData&), bool warning, bool warning1) {
        QTest::newRow(name) << BodyChange{change} << warning << warning1;
    };
    row("defaults", [](CarbodyData&) {}, false, false);
    row("30 set", [](CarbodyData& b) { b.bodyWarning30 = 1; }, true, true);
    row("36 set", [](CarbodyData& b) { b.bodyWarning36 = 1; }, true, true);
    row("37 only in the first view", [](CarbodyData& b) { b.bodyWarning37 = 1; }, true, false);
    row("flag1 cleared only in the second", [](CarbodyData& b) { b.bodyFlag1 = 0; }, false, true);
    row("value 2 is no warning",
        [](CarbodyData& b) { b.bodyWarning30 = b.bodyWarning36 = b.bodyWarning37 = 2; }, false, false);
}

void TestRecords::bodyWarnings()
{
    QFETCH(BodyChange, change);
    CarbodyData body;
    change.apply(body);
    QTEST(body.isWarningState(), "warning");
    QTEST(body.isWarningState1(), "warning1");

    CarbodyData other = body;
    other.bodyWarning37 = quint8(body.bodyWarning37 + 1);
    QVERIFY(other.compareWarningPart(body));   // 37 is not part of the warning pair
    QVERIFY(!other.compare(body));
}

void TestRecords::doorAndRadarClearAndWarning()
{
    CardoorData doors;
    doors.doorHood = 1;
    QVERIFY(doors.isWarningState() && !doors.compare(CardoorData()));
    doors.clear();
    QVERIFY(!doors.isWarningState());

    RadarData radar;
    QVERIFY(!radar.isWarningState());
    radar.radarRearRight = 3;
    radar.radarLevels = 12;
    QVERIFY(radar.isWarningState());
    radar.clear();
    QVERIFY(radar.radarOn == 0 && radar.radarLevels == 12 && radar.radarRearRight == 0);
    // With the display taken down, sensors alone don't warn.
    radar.radarFrontLeft = 4;
    QVERIFY(!radar.isWarningState());
    radar.radarOn = 1;
    QVERIFY(radar.isWarningState());
}

QTEST_APPLESS_MAIN(TestRecords)
#include "tst_records.moc"
