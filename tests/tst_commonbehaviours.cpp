// What drivers share: the set-point scale, the outdoor text and its update, the record
// updates, the radar display, the key road, the source report readers and the connect
// forms. A probe driver runs the protected helpers the way a frame handler uses them.

#include <QTemporaryDir>
#include <QtTest>

#include "commondriver.h"
#include "common/sourcestate.h"
#include "common/temperature.h"
#include "framebuilders.h"
#include "inputinjector.h"
#include "platform.h"

using namespace canbus;
using testframes::bytes;

namespace {

constexpr auto kProbeProfile = DriverProfile{FrameFamily::Start2E, WalkVariant::A};

constexpr KeyRow kProbeKeys[] = {
    {1, 0x1100025},   // keyboard 166
    {7, 0x1234567},   // a code the keyboard doesn't know: number 0
};

// A vehicle whose scale differs from the shared one in two values.
constexpr SetPointRow kProbeSetPoints[] = {
    {2, false, false, "Low"},   // names its end instead of flagging it
    {30, false, true, nullptr},
};

} // namespace

class ProbeDriver : public CommonDriver
{
    Q_OBJECT
public:
    explicit ProbeDriver(const DriverProfile& profile = kProbeProfile) : CommonDriver(99, profile) {}

    using CommonDriver::updateAirData;
    using CommonDriver::updateCarbodyData;
    using CommonDriver::updateCardoorData;
    using CommonDriver::updateOutdoorBody;
    using CommonDriver::updateOutdoorTemperature;

    void key(int value, ZeroKey zero)
    {
        vehicleKey(value, [](int v) { return keyCodeFor(kProbeKeys, v); }, zero);
    }
    void setConnected(bool on) { connected = on; }
};

class TestCommonBehaviours : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void setPoints_data();
    void setPoints();
    void outdoorText_data();
    void outdoorText();
    void tenthsTextAsADoubleWouldRead();
    void outdoorUpdateSignalsOnlyOnChange();
    void recordUpdates();
    void radarDisplay_data();
    void radarDisplay();
    void keys_data();
    void keys();
    void sourceReports();
    void connectForms_data();
    void connectForms();
    void disconnectForms_data();
    void disconnectForms();

private:
    QTemporaryDir m_dataDir;
    RecordingInputInjector m_injector;
    ProbeDriver* m_driver = nullptr;
};

void TestCommonBehaviours::initTestCase()
{
    QVERIFY(m_dataDir.isValid());
    qputenv("CANBUS_DATA_DIR", m_dataDir.path().toLocal8Bit());
}

void TestCommonBehaviours::init()
{
    resetPlatformForTests();
    InputInjector::install(&m_injector);
    m_injector.clear();
    m_driver = new ProbeDriver;
    m_driver->initData();
}

void TestCommonBehaviours::cleanup()
{
    delete m_driver;
    m_driver = nullptr;
    InputInjector::install(nullptr);
}

void TestCommonBehaviours::setPoints_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("fahrenheit");
    QTest::addColumn<bool>("low");
    QTest::addColumn<bool>("high");
    QTest::addColumn<QString>("text");   // of a zone that showed "x"

    QTest::addRow("0 C low") << 0 << false << true << false << "x";
    QTest::addRow("1 C") << 1 << false << false << false << "16.0";
    QTest::addRow("28 C") << 28 << false << false << false << "29.5";
    QTest::addRow("29 C names nothing") << 29 << false << false << false << "x";
    QTest::addRow("31 C high") << 31 << false << false << true << "x";
    QTest::addRow("1 F") << 1 << true << false << false << "60";
    // the vehicle's rows take precedence
    QTest::addRow("2 row text") << 2 << true << false << false << "Low";
    QTest::addRow("30 row flag") << 30 << false << false << true << "x";
}

void TestCommonBehaviours::setPoints()
{
    QFETCH(int, value);
    QFETCH(bool, fahrenheit);
    AirData air;
    air.tempLeft = air.tempRight = QStringLiteral("x");
    air.tempLeftHigh = air.tempLeftLow = 1;
    applySetPoint(air, kZoneLeft, setPointWith(kProbeSetPoints, value, fahrenheit));
    QTEST(bool(air.tempLeftLow), "low");
    QTEST(bool(air.tempLeftHigh), "high");
    QTEST(air.tempLeft, "text");
    QCOMPARE(air.tempRight, QStringLiteral("x"));   // other zones untouched
}

void TestCommonBehaviours::outdoorText_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("fahrenheit");
    QTest::addColumn<QString>("text");

    QTest::addRow("21 C drops .0") << 21.0 << false << QStringLiteral("21\u2103");
    QTest::addRow("98.6 F") << 98.6 << true << QStringLiteral("98.6\u2109");
    QTest::addRow("one decimal rounds") << 20.04 << false << QStringLiteral("20\u2103");
    QTest::addRow("negative zero") << -0.01 << false << QStringLiteral("0\u2103");
}

void TestCommonBehaviours::outdoorText()
{
    QFETCH(double, value);
    QFETCH(bool, fahrenheit);
    QTEST(outdoorTemperatureText(value, fahrenheit), "text");
}

void TestCommonBehaviours::tenthsTextAsADoubleWouldRead()
{
    for (const int tenths : {0, 5, 165, -5, -10, 2147483647, -2147483647 - 1})
        QCOMPARE(tenthsText(tenths), QString::number(tenths / 10.0, 'f', 1));
}

void TestCommonBehaviours::outdoorUpdateSignalsOnlyOnChange()
{
    QSignalSpy text(m_driver, &CanbusInterface::outdoorTemperatureChanged);
    QSignalSpy body(m_driver, &CanbusInterface::carbodyDataChanged);
    const AirData& air = *m_driver->getAirData();
    const CarbodyData& carbody = *m_driver->getCarbodyData();

    m_driver->updateOutdoorTemperature(21.5, 0, true);
    m_driver->updateOutdoorTemperature(21.5, 0, true);
    QCOMPARE(text.takeFirst(), (QVariantList{QStringLiteral("21.5\u2103"), 0}));
    QCOMPARE(int(carbody.outdoorTempTenths), 215);
    QCOMPARE(text.count() + body.count(), 1);
    // Same text, validity lost: the text half signals, the body half has nothing new.
    m_driver->updateOutdoorTemperature(21.5, 0, false);
    QCOMPARE(int(air.outdoorTempValid), 0);
    QCOMPARE(text.count() + body.count(), 2);
    m_driver->updateOutdoorTemperature(70, 1, false);
    QCOMPARE(text.at(1), (QVariantList{QStringLiteral("70\u2109"), 1}));
    QVERIFY(air.outdoorTempUnit == 1 && carbody.outdoorTempUnit == 1);
    QCOMPARE(body.count(), 2);

    // The body half compares unit and tenths; a value far out of range is bounded.
    QVERIFY(m_driver->updateOutdoorBody(-40.5, 1));
    QCOMPARE(int(carbody.outdoorTempTenths), -405);
    QVERIFY(m_driver->updateOutdoorBody(-40.5, 0));
    QVERIFY(m_driver->updateOutdoorBody(1e9, 1));
    QCOMPARE(int(carbody.outdoorTempTenths), 32767);
}


void TestCommonBehaviours::recordUpdates()
{
    QSignalSpy airSignal(m_driver, &CanbusInterface::airConditionerDataChanged);
    AirData& live = *m_driver->getAirData();
    live.airShowFlag = 0;
    live.outdoorTemp = QStringLiteral("5\u2103");
    AirData fresh;
    fresh.airAC = 1;
    QVERIFY(m_driver->updateAirData(fresh));
    QCOMPARE(airSignal.count(), 1);
    QVERIFY(live.id == 99 && live.airAC == 1);
    // The per-driver switch stays; what the frame doesn't carry falls back to defaults.
    QCOMPARE(int(live.airShowFlag), 0);
    QCOMPARE(live.outdoorTemp, QString());
    QVERIFY(!m_driver->updateAirData(fresh));   // the identical frame: nothing to tell
    // A gated driver updates silently.
    fresh.airAC = 0;
    QVERIFY(m_driver->updateAirData(fresh, false));
    QCOMPARE(airSignal.count(), 1);
    QCOMPARE(int(live.airAC), 0);

    QSignalSpy doors(m_driver, &CanbusInterface::cardoorDataChanged);
    QSignalSpy body(m_driver, &CanbusInterface::carbodyDataChanged);
    CardoorData open;
    open.doorTrunk = 1;
    QVERIFY(m_driver->updateCardoorData(open) && !m_driver->updateCardoorData(open) && doors.count() == 1);
    CarbodyData b = *m_driver->getCarbodyData();
    b.batteryVoltage = 124;
    QVERIFY(m_driver->updateCarbodyData(b, false));
    QVERIFY(!m_driver->updateCarbodyData(b));
    QCOMPARE(int(m_driver->getCarbodyData()->batteryVoltage), 124);
    QCOMPARE(body.count(), 0);
}

void TestCommonBehaviours::radarDisplay_data()
{
    // Front left, front left mid, front right mid, front right, then the rear likewise.
    QTest::addColumn<QByteArray>("sensors");
    QTest::addColumn<int>("radarOn");

    QTest::addRow("all 0: off") << bytes({0, 0, 0, 0, 0, 0, 0, 0}) << 0;
    QTest::addRow("bars, one rear") << bytes({0, 0, 0, 0, 0, 0, 0, 4}) << 1;
    QTest::addRow("distance, all far") << bytes({11, 11, 11, 11, 11, 11, 11, 11}) << 0;
    QTest::addRow("distance, one near") << bytes({255, 11, 255, 255, 255, 255, 10, 255}) << 1;
}

void TestCommonBehaviours::radarDisplay()
{
    QFETCH(QByteArray, sensors);
    RadarData& r = *m_driver->getRadarData();
    quint8 RadarData::*fields[] = {&RadarData::radarFrontLeft, &RadarData::radarFrontLeftMid,
                                   &RadarData::radarFrontRightMid, &RadarData::radarFrontRight,
                                   &RadarData::radarRearLeft, &RadarData::radarRearLeftMid,
                                   &RadarData::radarRearRightMid, &RadarData::radarRearRight};
    for (int i = 0; i < 8; ++i)
        r.*fields[i] = quint8(sensors.at(i));
    r.radarOn = 7;   // whatever it was, the display decides anew
    m_driver->RadarDisplay();
    QTEST(int(r.radarOn), "radarOn");
}

void TestCommonBehaviours::keys_data()
{
    // Key frame values in turn, and (keyboard number, pressed) of what reaches the keyboard.
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<bool>("sendZero");
    QTest::addColumn<QList<int>>("events");

    QTest::addRow("press and release") << bytes({1, 0}) << false << QList<int>{166, 1, 166, 0};
    QTest::addRow("unlisted value, skipped") << bytes({4, 0}) << false << QList<int>{};
    QTest::addRow("unlisted value, sent") << bytes({4, 0}) << true << QList<int>{0, 1, 0, 0};
    // A code the keyboard doesn't know is still a code: it goes out as number 0.
    QTest::addRow("code without keyboard number") << bytes({7, 0}) << false << QList<int>{0, 1, 0, 0};
}

void TestCommonBehaviours::keys()
{
    QFETCH(QByteArray, values);
    QFETCH(bool, sendZero);
    for (char v : values)
        m_driver->key(quint8(v), sendZero ? ZeroKey::Send : ZeroKey::Skip);
    QList<int> seen;
    for (const auto& call : m_injector.calls(RecordingInputInjector::Call::Ioctl))
        seen << int(call.request) - 768 << int(call.arg);
    QTEST(seen, "events");
    QVERIFY(m_injector.openDescriptors().isEmpty());   // each event closes the device again
}

void TestCommonBehaviours::sourceReports()
{
    const std::pair<int, RadioBand> bands[] = {{2, RadioBand::FM1}, {6, RadioBand::AM2}, {7, RadioBand::None}};
    for (const auto& b : bands) {
        RadioState state;
        QVERIFY(readRadio({b.first, 8750}, state) && state.band == b.second && state.frequency == 8750);
        QVERIFY(!readRadio({b.first}, state) && state.band == RadioBand::None);   // no frequency
    }
    const std::pair<int, MediaGroup> groups[] = {{13, MediaGroup::First}, {16, MediaGroup::Second},
        {22, MediaGroup::Third}, {15, MediaGroup::None}, {24, MediaGroup::None}};
    for (const auto& g : groups)
        QCOMPARE(int(mediaGroup(g.first)), int(g.second));
    // Short reports read as zeros and empty texts.
    const MediaState m = readMedia({0, 3});
    QVERIFY(m.track == 3 && m.trackCount == 0 && m.title.isEmpty());
    QVERIFY(readPhone({}).state == CallState::Unknown);
    QCOMPARE(callStateText(callState(0)), QStringLiteral("hang up"));
    QCOMPARE(callStateText(callState(1)), QStringLiteral("incoming call"));
    QCOMPARE(callStateText(callState(4)), QString());
}

void TestCommonBehaviours::connectForms_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("result");
    QTest::addColumn<int>("interval");
    QTest::addColumn<QByteArray>("frame");

    using F = ConnectForm;
    const QByteArray on = bytes({0x2E, 0x81, 0x01, 0x01, 0x7C});
    QTest::addRow("simple, waiting") << int(F::Simple) << false << true << 1000 << on;
    QTest::addRow("simple, answered") << int(F::Simple) << true << false << -1 << QByteArray();
    QTest::addRow("base, waiting") << int(F::Base) << false << true << -1 << QByteArray();
    QTest::addRow("poll only") << int(F::PollOnly) << false << true << 1000 << QByteArray();
    QTest::addRow("never") << int(F::Never) << false << false << -1 << QByteArray();
}

void TestCommonBehaviours::connectForms()
{
    QFETCH(int, form);
    QFETCH(bool, connected);
    ProbeDriver d(kProbeProfile.connecting(ConnectForm(form)));
    d.setConnected(connected);
    int interval = -1;   // left alone unless the form sets it
    QByteArray frame;
    QTEST(d.needSendConnect(interval, frame), "result");
    QTEST(interval, "interval");
    QTEST(frame, "frame");
}

void TestCommonBehaviours::disconnectForms_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("stillConnected");

    using F = DisconnectForm;
    const QByteArray off = bytes({0x2E, 0x81, 0x01, 0x00, 0x7D});
    QTest::addRow("common, connected") << int(F::Common) << true << true << off << true;
    QTest::addRow("common, not connected") << int(F::Common) << false << false << QByteArray() << false;
    QTest::addRow("always") << int(F::Always) << false << true << off << false;
    QTest::addRow("base") << int(F::Base) << true << true << QByteArray() << false;
    QTest::addRow("never") << int(F::Never) << true << false << QByteArray() << true;
}

void TestCommonBehaviours::disconnectForms()
{
    QFETCH(int, form);
    QFETCH(bool, connected);
    ProbeDriver d(kProbeProfile.disconnecting(DisconnectForm(form)));
    d.setConnected(connected);
    QByteArray frame;
    QTEST(d.needSendDisconnect(frame), "result");
    QTEST(frame, "frame");
    QTEST(d.isConnectedState(), "stillConnected");
}

QTEST_MAIN(TestCommonBehaviours)
#include "tst_commonbehaviours.moc"
