// The records' one description of their fields, as the host and the tests read it.

#include <QtTest>

#include "airdata.h"
#include "carbodydata.h"
#include "recordcheck.h"

class TestRecordFields : public QObject
{
    Q_OBJECT

private slots:
    void readsByName_data();
    void readsByName();
    void shownSetLeavesOutBookkeeping();
};

void TestRecordFields::readsByName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    // A quint8 must not come out as a character, a qint8 keeps its sign.
    QTest::newRow("unsigned byte") << "airOnOff" << "airOnOff=255";
    QTest::newRow("signed byte") << "airRearLock" << "airRearLock=-1";
    QTest::newRow("text") << "tempLeft" << "tempLeft=22.5";
    QTest::newRow("bytes") << "rawFrame" << "rawFrame=2e01";
    // The seat group is read in place: a copy would clear its group flags.
    QTest::newRow("nested, not copied") << "seatGroup3Visible" << "seatGroup3Visible=1";
    QTest::newRow("list element") << "airRearSpare[7]" << "airRearSpare[7]=9";
    QTest::newRow("table element") << "tireWarning[2][4]" << "tireWarning[2][4]=1";
    QTest::newRow("unknown name") << "airWarp" << "airWarp: no such field";
    QTest::newRow("index outside") << "airRearSpare[8]" << "airRearSpare[8]: no such field";
    QTest::newRow("index on a value") << "airOnOff[0]" << "airOnOff[0]: no such field";
    QTest::newRow("broken brackets") << "airRearSpare[x" << "airRearSpare[x: no such field";
    QTest::newRow("empty") << "" << ": no such field";
}

void TestRecordFields::readsByName()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    AirData air;
    air.tempLeft = QStringLiteral("22.5");
    air.rawFrame = QByteArray("\x2e\x01", 2);
    air.seat.seatGroup3Visible = 1;
    air.airRearSpare[7] = 9;
    air.tire.tireWarning[2][4] = 1;
    QCOMPARE(fieldValues(air, {path}), QStringList{expected});
}

void TestRecordFields::shownSetLeavesOutBookkeeping()
{
    QStringList shown;
    for (const auto& field : canbus::recordFields(AirData(), canbus::FieldSet::Shown))
        shown.append(field.first);
    QVERIFY(shown.contains(QLatin1String("seatHotLeft")));
    for (const char* hidden : {"rawFrame", "id", "airState1", "seatGroup3Visible", "tireStatus", "seat"})
        QVERIFY2(!shown.contains(QLatin1String(hidden)), hidden);
    // Every field once, nested ones under their own names.
    const auto all = canbus::recordFields(CarbodyData());
    QCOMPARE(all.size(), 23);
    QCOMPARE(all.first().first, QStringLiteral("vehicleSpeed"));
}

QTEST_GUILESS_MAIN(TestRecordFields)
#include "tst_recordfields.moc"
