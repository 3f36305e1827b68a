// Old Mazda (66): the untyped climate frames, the typed 0xFC frames, the amplifier frame,
// the keys and the frames the head unit sends.

#include <QtTest>

#include "canbus66/canbus66.h"
#include "driverharness.h"
#include "framebuilders.h"
#include "recordcheck.h"

using testframes::bytes;
using testframes::hex;

namespace {
// An untyped climate frame: FD, four data bytes, their sum.
QByteArray climate(int b1, int b2, int b3, int b4)
{
    QByteArray f = bytes({0xFD, b1, b2, b3, b4, 0});
    canbus::writeChecksum(canbus::FrameFamily::StartFCFD, f);
    return f;
}
QByteArray fd(int type, std::initializer_list<int> data)
{
    return canbus::buildFrame(canbus::FrameFamily::StartFCFD, quint8(type), bytes(data));
}
QByteArray typed(int type, std::initializer_list<int> data) { return fd(type, data).replace(0, 1, "\xFC"); }
Data66Info info(const DriverHarness& h) { return h.driver()->getDataInfo().value<Data66Info>(); }
}

class TestDriver66 : public QObject
{
    Q_OBJECT

private slots:
    void frames_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QStringList>("fields");   // climate, radar and the driver's own record
        QTest::addRow("fd14000305") << climate(20, 0, 0x03, 0x05) << QStringList{"tempLeft=20.5", "tempRight=20.5",
                                        "tempLeftFahrenheit=0", "airWindSpeedRight=3", "airPower=1", "airOnOff=1"};
        QTest::addRow("fd07000000") << climate(7, 0, 0, 0)
            << QStringList{"tempLeft=7", "tempRightFahrenheit=255", "airOnOff=0"};
        QTest::addRow("fd00000000") << climate(0, 0, 0, 0)
            << QStringList{"tempLeftLow=1", "tempRight=0", "tempRightHigh=0"};
        QTest::addRow("fdff000000") << climate(255, 0, 0, 0) << QStringList{"tempRightHigh=1", "tempLeftLow=0"};
        QTest::addRow("fdfe000000") << climate(254, 0, 0, 0) << QStringList{"tempLeft=--"};
        QTest::addRow("fd20001f0f") << climate(32, 0, 0x1F, 0x0F) << QStringList{"tempLeft=33.5", "airWindSpeedLeft=15"};
        QTest::addRow("fd64008213") << climate(100, 0, 0x82, 0x13)
            << QStringList{"outdoorTemp=0.3℃", "outdoorTempUnit=0", "outdoorTempValid=1", "airWindSpeedLeft=2",
                           "outdoorText=0.3℃"};
        QTest::addRow("fd5f008000") << climate(95, 0, 0x80, 0) << QStringList{"outdoorTemp=-5.0℃", "airOnOff=0"};
        // Each mode bit set once, and the loop both ways.
        QTest::addRow("fd14340000") << climate(20, 0x34, 0, 0) << QStringList{"airAC=0", "airAuto=1",
                                        "airDefrostRear=1", "airOuterLoop=1", "airWindDownLeft=1", "airWindFrontLeft=0"};
        QTest::addRow("fd14e90000") << climate(20, 0xE9, 0, 0) << QStringList{"airInnerLoop=1", "airOuterLoop=0",
                                        "airWindFrontLeft=1", "airWindFrontRight=1", "airWindDownRight=0",
                                        "airDefrostRear=1", "airDefrostFront=1", "airAC=1"};
        QTest::addRow("fc0a3201..ff3219") << typed(0x32, {1, 0, 0xFF, 0x32, 0x19, 0x18, 0}) << QStringList{
            "radarLevels=10", "radarRearLeft=10", "radarRearLeftMid=2", "radarRearRightMid=1", "radarOn=1"};
        QTest::addRow("fc0a320004..") << typed(0x32, {0, 4, 0, 3, 0x19, 0, 0}) << QStringList{
            "radarLevels=4", "radarRearLeftMid=3", "radarRearRightMid=25", "radarFrontLeftMid=0"};
        QTest::addRow("fc041102") << typed(0x11, {2}) << QStringList{"basicFlag=1"};
        QTest::addRow("fd0931180916174001") << fd(0x31, {24, 9, 22, 23, 64, 1}) << QStringList{
            "ampValue1=16", "ampValue2=1", "ampValue3=12", "ampValue4=14", "ampValue5=63", "ampFlag=1"};
        QTest::addRow("fd0932 other type") << fd(0x32, {24, 9, 22, 23, 64, 1}) << QStringList{"ampValue1=0"};
    }

    void frames()
    {
        QFETCH(QByteArray, frame);
        QFETCH(QStringList, fields);
        DriverHarness h(66);
        // The 10-byte form passes the check only with a further byte behind it.
        QCOMPARE(h.feed(frame + (frame.size() == 10 ? bytes({0xFD}) : QByteArray())), 0);
        QVERIFY(h.driver()->isConnectedState());
        QStringList actual = fieldValues(*h.driver()->getAirData(), fields);
        for (const QStringList& other : {fieldValues(*h.driver()->getRadarData(), fields), fieldValues(info(h), fields)})
            for (int i = 0; i < actual.size(); ++i)
                if (actual[i].endsWith(QLatin1String(": no such field")))
                    actual[i] = other[i];
        QCOMPARE(actual, fields);
    }

    void climateRepeats()
    {
        DriverHarness h(66);
        QSignalSpy air(h.driver(), SIGNAL(airConditionerDataChanged()));
        QSignalSpy outdoor(h.driver(), SIGNAL(outdoorTemperatureChanged(QString,int)));
        QSignalSpy changed(h.driver(), SIGNAL(dataChanged()));
        h.feed(climate(100, 0, 0x80, 0));   // 0.0, as the driver starts: no outdoor news
        h.feed(climate(100, 0, 0x80, 0));   // a repeat says nothing
        h.feed(climate(100, 0, 0x81, 0));   // the fan moved: the outdoor group runs again
        h.feed(climate(100, 0, 0x81, 2));
        QCOMPARE((QList<int>{air.count(), outdoor.count(), changed.count()}), (QList<int>{3, 1, 3}));
        QCOMPARE(outdoor.at(0), (QList<QVariant>{QStringLiteral("0.2℃"), 0}));
        h.feed(climate(20, 0, 0, 0));
        h.feed(climate(40, 0, 0, 0));   // no set point in 40: the text stays
        compareFields(*h.driver()->getAirData(), {"tempLeft=20.0", "tempRight=20.0"});
    }

    void keys()
    {
        DriverHarness h(66);
        // Each key pressed, then released by a 0 that names no key of its own.
        const auto press = [&h](int value) { h.feed(typed(0x12, {value})); h.feed(typed(0x12, {0})); };
        press(1);
        press(23);
        h.driver()->setCallState(true);   // 23 and 24 answer and hang up during a call
        press(23);
        press(24);
        press(8);   // no such key: the code 0 still goes out
        QList<int> expected;
        for (int code : {0x1400016, 0x110002F, 0x1300058, 0x1300059, 0})
            expected << h.driver()->toKkmapKey(code) << 1 << h.driver()->toKkmapKey(code) << 0;
        QCOMPARE(h.keyEvents(), expected);
    }

    void steeringAndFramesOut()
    {
        DriverHarness h(66);
        QSignalSpy turned(h.driver(), SIGNAL(trajectoryDataChanged(int,int,bool)));
        for (int low : {0x40, 0x41, 0x00})   // 7744 is straight ahead, the word little-endian
            h.feed(typed(0x29, {low, 0x1E}));
        QCOMPARE(turned.at(0) + turned.at(1) + turned.at(2), (QVariantList{0, 5680, true, -1, 5680, true, 64, 5680, true}));
        h.driver()->setConnectedState(false);
        int interval = 0;
        QByteArray out = "x";
        QVERIFY(h.driver()->needSendConnect(interval, out) && interval == 1000 && out.isEmpty());
        // The sum of bytes 1 to 3 lands where the amplifier value stood.
        QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{hex("fd0584018a"), hex("fd0584028b"), hex("fd0584048d"),
                                                        hex("fd0584058e"), hex("fd05840a93"), hex("fd05840b94")}));
        h.clearSent();
        qobject_cast<Canbus66Obj*>(h.driver())->setTcanBussend(10, 20, 800, 480, 0);
        QTRY_COMPARE(h.sentFrames(), (QList<QByteArray>{hex("fd04058089"), hex("fd04050009")}));
        h.feed(typed(0x11, {0}));   // connected: nothing more, and no disconnect frame
        QVERIFY(!h.driver()->needSendConnect(interval, out) && !h.driver()->needSendDisconnect(out) && out.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestDriver66)
#include "tst_driver66.moc"
