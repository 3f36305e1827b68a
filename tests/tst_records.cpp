// The shared vehicle records: defaults, clear, and the comparison rules that decide
// whether a driver signals a change.

#include <QtTest>

#include "airdata.h"
#include "carbodydata.h"
#include "cardoordata.h"
#include "radardata.h"

class TestRecords : public QObject
{
    Q_OBJECT
private slots:
    void airDefaultsAreHiddenControls();
    void airClearKeepsSwitchesAndTyres();
    void airCompareIgnoresWhatIsSignalledElsewhere_data();
    void airCompareIgnoresWhatIsSignalledElsewhere();
    void airCompareSeatGroupsCrosswise();
    void airCompareRawFrame_data();
    void airCompareRawFrame();
    void seatCopyDropsGroupFlags();
    void tyreClearKeepsFifthWarningByte();
    void doorWarningAndClear();
    void bodyWarnings_data();
    void bodyWarnings();
    void radarClearAndWarning();
};

void TestRecords::airDefaultsAreHiddenControls()
{
    const AirData air;
    QCOMPARE(air.airValid, quint8(1));
    QCOMPARE(air.airShowFlag, quint8(1));
    QCOMPARE(air.tempLeftVisible, quint8(1));
    QCOMPARE(air.tempRear, QString(QChar(0xFF)));
    QCOMPARE(air.tempRear2, QString(QChar(0xFF)));
    QCOMPARE(air.airAC, quint8(255));
    QCOMPARE(air.airWindSpeedRight, qint8(-1));
    QCOMPARE(air.airRearLock, qint8(-1));
    QCOMPARE(air.tempUnit, qint8(-1));
    for (quint8 spare : air.airRearSpare)
        QCOMPARE(spare, quint8(255));
    QCOMPARE(air.tire.tirePressureSpare, QStringLiteral("--"));
}

void TestRecords::airClearKeepsSwitchesAndTyres()
{
    AirData air;
    air.airValid = 0;
    air.airShowFlag = 0;
    air.airAC = 1;
    air.tempLeft = QStringLiteral("22.5");
    air.tempRear = QStringLiteral("20");
    air.rawFrame = QByteArray("\x01\x02", 2);
    air.seat.seatHotLeft = 3;
    air.tire.tirePressureFrontLeft = QStringLiteral("2.3");
    air.clear();
    QCOMPARE(air.airValid, quint8(0));
    QCOMPARE(air.airShowFlag, quint8(0));
    QCOMPARE(air.airAC, quint8(255));
    QVERIFY(air.tempLeft.isEmpty());
    QCOMPARE(air.tempRear, QString(QChar(0xFF)));
    QVERIFY(air.rawFrame.isEmpty());
    QCOMPARE(air.seat.seatHotLeft, quint8(0));
    QCOMPARE(air.tire.tirePressureFrontLeft, QStringLiteral("2.3"));
    // A cleared record and a fresh one show the same panel.
    AirData fresh;
    QVERIFY(air.compare(fresh));
}

void TestRecords::airCompareIgnoresWhatIsSignalledElsewhere_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<bool>("equal");
    QTest::addRow("outdoorTemp") << 0 << true;
    QTest::addRow("outdoorTempUnit") << 1 << true;
    QTest::addRow("outdoorTempValid") << 2 << true;
    QTest::addRow("airShowFlag") << 3 << true;
    QTest::addRow("tire") << 4 << true;
    QTest::addRow("airAC") << 5 << false;
    QTest::addRow("tempLeft") << 6 << false;
    QTest::addRow("airRearSpare") << 7 << false;
    QTest::addRow("tempUnit") << 8 << false;
    QTest::addRow("airWindSpeedRight") << 9 << false;
    QTest::addRow("id") << 10 << false;
}

void TestRecords::airCompareIgnoresWhatIsSignalledElsewhere()
{
    QFETCH(int, field);
    QFETCH(bool, equal);
    const AirData base;
    AirData changed;
    switch (field) {
    case 0: changed.outdoorTemp = QStringLiteral("21℃"); break;
    case 1: changed.outdoorTempUnit = 1; break;
    case 2: changed.outdoorTempValid = 1; break;
    case 3: changed.airShowFlag = 0; break;
    case 4: changed.tire.tireStatus = 1; break;
    case 5: changed.airAC = 1; break;
    case 6: changed.tempLeft = QStringLiteral("LO"); break;
    case 7: changed.airRearSpare[7] = 0; break;
    case 8: changed.tempUnit = 0; break;
    case 9: changed.airWindSpeedRight = 3; break;
    case 10: changed.id = 27; break;
    }
    QCOMPARE(changed.compare(base), equal);
    QCOMPARE(base.compare(changed), equal);
}

void TestRecords::airCompareSeatGroupsCrosswise()
{
    AirData a;
    AirData b;
    // This record's fourth group flag is compared with the other's third.
    a.seat.seatGroup4Visible = 1;
    QVERIFY(!a.compare(b));
    b.seat.seatGroup3Visible = 1;
    QVERIFY(a.compare(b));
    // The other's fourth flag and this record's third flag are not looked at.
    b.seat.seatGroup4Visible = 1;
    a.seat.seatGroup3Visible = 0;
    QVERIFY(a.compare(b));
    // Which makes the rule one-sided: b's fourth flag meets a's cleared third flag.
    QVERIFY(!b.compare(a));
    // Ordinary seat levels compare plainly.
    AirData c;
    c.seat.seatCoolRight = 2;
    QVERIFY(!c.compare(AirData()));
}

void TestRecords::airCompareRawFrame_data()
{
    QTest::addColumn<QByteArray>("mine");
    QTest::addColumn<QByteArray>("theirs");
    QTest::addColumn<bool>("equal");
    QTest::addRow("both empty") << QByteArray() << QByteArray() << true;
    QTest::addRow("same") << QByteArray("\x21\x01") << QByteArray("\x21\x01") << true;
    QTest::addRow("one byte differs") << QByteArray("\x21\x01") << QByteArray("\x21\x02") << false;
    QTest::addRow("sizes differ") << QByteArray("\x21\x01\x00", 3) << QByteArray("\x21\x01") << false;
}

void TestRecords::airCompareRawFrame()
{
    QFETCH(QByteArray, mine);
    QFETCH(QByteArray, theirs);
    QFETCH(bool, equal);
    AirData a;
    AirData b;
    a.rawFrame = mine;
    b.rawFrame = theirs;
    QCOMPARE(a.compare(b), equal);
}

void TestRecords::seatCopyDropsGroupFlags()
{
    SeatHeatingData seat;
    seat.seatHotVisible = 1;
    seat.seatGroup3Visible = 1;
    seat.seatGroup3Left = 2;
    seat.seatGroup4Visible = 1;
    seat.seatGroup4Level = 5;
    seat.seatGroup4Extra[1] = 9;
    const SeatHeatingData copy(seat);
    QCOMPARE(copy.seatHotVisible, quint8(1));
    QCOMPARE(copy.seatGroup3Visible, quint8(0));
    QCOMPARE(copy.seatGroup3Left, quint8(2));
    QCOMPARE(copy.seatGroup4Visible, quint8(0));
    QCOMPARE(copy.seatGroup4Level, quint8(5));
    QCOMPARE(copy.seatGroup4Extra[1], quint8(9));
    SeatHeatingData assigned;
    assigned = seat;
    QCOMPARE(assigned.seatGroup3Visible, quint8(1));
}

void TestRecords::tyreClearKeepsFifthWarningByte()
{
    TirePressureInformation tyres;
    for (auto& group : tyres.tireWarning) {
        for (quint8& b : group)
            b = 7;
    }
    tyres.tireUnit = 2;
    tyres.tireStatus = 0;
    tyres.tirePressureRearRight = QStringLiteral("35");
    tyres.clear();
    QCOMPARE(tyres.tireUnit, -1);
    QCOMPARE(tyres.tireStatus, quint8(255));
    QCOMPARE(tyres.tirePressureRearRight, QStringLiteral("--"));
    for (const auto& group : tyres.tireWarning) {
        for (int i = 0; i < 4; ++i)
            QCOMPARE(group[i], quint8(0));
        QCOMPARE(group[4], quint8(7));
    }
}

void TestRecords::doorWarningAndClear()
{
    CardoorData doors;
    QVERIFY(!doors.isWarningState());
    doors.doorHood = 1;
    QVERIFY(doors.isWarningState());
    QVERIFY(!doors.compare(CardoorData()));
    doors.clear();
    QVERIFY(!doors.isWarningState());
    QVERIFY(doors.compare(CardoorData()));
}

void TestRecords::bodyWarnings_data()
{
    QTest::addColumn<int>("warning30");
    QTest::addColumn<int>("warning36");
    QTest::addColumn<int>("warning37");
    QTest::addColumn<int>("flag1");
    QTest::addColumn<bool>("warning");
    QTest::addColumn<bool>("warning1");
    QTest::addRow("defaults") << 255 << 255 << 255 << 255 << false << false;
    QTest::addRow("30 set") << 1 << 255 << 255 << 255 << true << true;
    QTest::addRow("36 set") << 255 << 1 << 255 << 255 << true << true;
    QTest::addRow("37 only in the first view") << 255 << 255 << 1 << 255 << true << false;
    QTest::addRow("flag1 cleared only in the second") << 255 << 255 << 255 << 0 << false << true;
    QTest::addRow("value 2 is no warning") << 2 << 2 << 2 << 1 << false << false;
}

void TestRecords::bodyWarnings()
{
    QFETCH(int, warning30);
    QFETCH(int, warning36);
    QFETCH(int, warning37);
    QFETCH(int, flag1);
    QFETCH(bool, warning);
    QFETCH(bool, warning1);
    CarbodyData body;
    body.bodyWarning30 = quint8(warning30);
    body.bodyWarning36 = quint8(warning36);
    body.bodyWarning37 = quint8(warning37);
    body.bodyFlag1 = quint8(flag1);
    QCOMPARE(body.isWarningState(), warning);
    QCOMPARE(body.isWarningState1(), warning1);

    CarbodyData other = body;
    QVERIFY(other.compare(body));
    other.bodyWarning37 = quint8(warning37 + 1);
    QVERIFY(other.compareWarningPart(body));   // 37 is not part of the warning pair
    QVERIFY(!other.compare(body));
    other.fuelConsumption = 1;
    other.bodyWarning37 = body.bodyWarning37;
    QVERIFY(!other.compare(body));
}

void TestRecords::radarClearAndWarning()
{
    RadarData radar;
    QCOMPARE(radar.radarOn, quint8(1));
    QCOMPARE(radar.radarLevels, quint8(10));
    QVERIFY(!radar.isWarningState());
    radar.radarRearRight = 3;
    radar.radarLevels = 12;
    QVERIFY(radar.isWarningState());
    radar.clear();
    QCOMPARE(radar.radarOn, quint8(0));
    QCOMPARE(radar.radarLevels, quint8(12));
    QCOMPARE(radar.radarRearRight, quint8(0));
    QVERIFY(!radar.isWarningState());
    // With the display taken down, sensors alone don't warn.
    radar.radarFrontLeft = 4;
    QVERIFY(!radar.isWarningState());
    radar.radarOn = 1;
    QVERIFY(radar.isWarningState());
}

QTEST_APPLESS_MAIN(TestRecords)
#include "tst_records.moc"
