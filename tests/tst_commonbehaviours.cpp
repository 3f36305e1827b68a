// What drivers share: the set-point scale, the left/right order, the outdoor text and
// its update, the record updates, the radar display, the key road, the language
// look-up, the source report readers, the connect forms and the timer after power on.
// A small probe driver stands in for a vehicle so that the protected helpers are
// exercised the way a frame handler uses them.

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "commondriver.h"
#include "datasavecontrol.h"
#include "inputinjector.h"
#include "common/language.h"
#include "platform.h"
#include "common/sourcestate.h"
#include "common/temperature.h"

using namespace canbus;

namespace {

constexpr auto kProbeProfile = DriverProfile{FrameFamily::Start2E, WalkVariant::A};

constexpr LanguageRow kProbeLanguages[] = {
    {"en", 1},
    {"ch_jt", 23},
    {"ch_ft", 23},
};

constexpr KeyRow kProbeKeys[] = {
    {1, 0x1100025},   // keyboard 166
    {2, 0x1100024},   // keyboard 167
    {7, 0x1234567},   // a code the keyboard doesn't know: number 0
};

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(char(v));
    return out;
}

} // namespace

class ProbeDriver : public CommonDriver
{
    Q_OBJECT
public:
    explicit ProbeDriver(const DriverProfile& profile = kProbeProfile)
        : CommonDriver(99, profile) {}

    using CommonDriver::sendKeyCode;
    using CommonDriver::startAirOffTimer;
    using CommonDriver::updateAirData;
    using CommonDriver::updateCarbodyData;
    using CommonDriver::updateCardoorData;
    using CommonDriver::updateOutdoorBody;
    using CommonDriver::updateOutdoorTemperature;
    using CommonDriver::updateOutdoorText;

    void key(int value, ZeroKey zero)
    {
        vehicleKey(value, [](int v) { return keyCodeFor(kProbeKeys, v); }, zero);
    }
    void setConnected(bool on) { connected = on; }

public slots:
    void languageChanged(const QString& code)
    {
        if (const auto number = vehicleLanguage(kProbeLanguages, code))
            sendFrame(0xC6, {0x00, quint8(*number)});
    }
};

class TestCommonBehaviours : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void commonScale_data();
    void commonScale();
    void driverRowsOverrideTheScale();
    void setPointWithoutTextKeepsTheZoneText();
    void rightDriverSwapsSides();

    void outdoorText_data();
    void outdoorText();
    void tenthsTextAsADoubleWouldRead_data();
    void tenthsTextAsADoubleWouldRead();
    void outdoorUpdateSignalsOnlyOnChange();
    void outdoorBodyHalfComparesUnitAndTenths();

    void climateUpdate();
    void climateUpdateTakesWholeRecordButSwitches();
    void doorAndBodyUpdates();

    void radarDisplay_data();
    void radarDisplay();

    void keys_data();
    void keys();

    void languageLookup_data();
    void languageLookup();
    void languageSlotSendsOnlyForKnownCodes();

    void radioBands_data();
    void radioBands();
    void mediaAndPhoneReports();

    void connectForms_data();
    void connectForms();
    void requestFirstSendsTheRequestLater();
    void disconnectForms_data();
    void disconnectForms();

    void airOffTimerTellsAboutAnIdleClimate();
    void airOffTimerQuietWhileClimateRuns();

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

// ---- set points ---------------------------------------------------------------------

void TestCommonBehaviours::commonScale_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("fahrenheit");
    QTest::addColumn<bool>("low");
    QTest::addColumn<bool>("high");
    QTest::addColumn<bool>("keepText");
    QTest::addColumn<QString>("text");

    QTest::addRow("0 C low") << 0 << false << true << false << true << QString();
    QTest::addRow("1 C") << 1 << false << false << false << false << "16.0";
    QTest::addRow("28 C") << 28 << false << false << false << false << "29.5";
    QTest::addRow("29 C keeps") << 29 << false << false << false << true << QString();
    QTest::addRow("31 C high") << 31 << false << false << true << true << QString();
    QTest::addRow("32 C keeps") << 32 << false << false << false << true << QString();
    QTest::addRow("0 F low") << 0 << true << true << false << true << QString();
    QTest::addRow("1 F") << 1 << true << false << false << false << "60";
    QTest::addRow("31 F high") << 31 << true << false << true << true << QString();
}

void TestCommonBehaviours::commonScale()
{
    QFETCH(int, value);
    QFETCH(bool, fahrenheit);
    const SetPoint p = commonSetPoint(value, fahrenheit);
    QTEST(p.low, "low");
    QTEST(p.high, "high");
    QTEST(p.keepText, "keepText");
    QTEST(p.text, "text");
}

void TestCommonBehaviours::driverRowsOverrideTheScale()
{
    static constexpr SetPointRow rows[] = {
        {0, false, false, "Low"},    // the rear zone names its ends instead of flagging them
        {31, false, false, "High"},
        {29, false, true, nullptr},
    };
    const SetPoint low = setPointWith(rows, 0, false);
    QVERIFY(!low.low);
    QVERIFY(!low.keepText);
    QCOMPARE(low.text, QStringLiteral("Low"));
    QCOMPARE(setPointWith(rows, 31, true).text, QStringLiteral("High"));
    const SetPoint odd = setPointWith(rows, 29, false);
    QVERIFY(odd.high);
    QVERIFY(odd.keepText);
    // Values without a row fall back to the shared scale.
    QCOMPARE(setPointWith(rows, 3, false).text, QStringLiteral("17.0"));
    QVERIFY(setPointWith(rows, 30, false).keepText);
}

void TestCommonBehaviours::setPointWithoutTextKeepsTheZoneText()
{
    AirData air;
    applySetPoint(air, kZoneLeft, commonSetPoint(12, false));
    QCOMPARE(air.tempLeft, QStringLiteral("21.5"));
    air.tempLeftHigh = 1;
    applySetPoint(air, kZoneLeft, commonSetPoint(29, false));
    QCOMPARE(air.tempLeft, QStringLiteral("21.5"));
    QCOMPARE(int(air.tempLeftHigh), 0);
    QCOMPARE(int(air.tempLeftLow), 0);

    applySetPoint(air, kZoneRear2, commonSetPoint(0, false));
    QCOMPARE(int(air.tempRear2Low), 1);
    QCOMPARE(air.tempRear2, QString(QChar(0xFF)));   // still "no value"
    QCOMPARE(air.tempLeft, QStringLiteral("21.5"));  // other zones untouched

    applySetPoint(air, kZoneRight, commonSetPoint(31, false));
    QCOMPARE(int(air.tempRightHigh), 1);
    QCOMPARE(int(air.tempRightLow), 0);
}

void TestCommonBehaviours::rightDriverSwapsSides()
{
    constexpr auto lhd = leftRight<int>(10, 20, false);
    constexpr auto rhd = leftRight<int>(10, 20, true);
    QCOMPARE(lhd.left, 10);
    QCOMPARE(lhd.right, 20);
    QCOMPARE(rhd.left, 20);
    QCOMPARE(rhd.right, 10);
}

// ---- outdoor temperature ------------------------------------------------------------

void TestCommonBehaviours::outdoorText_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("fahrenheit");
    QTest::addColumn<QString>("text");

    QTest::addRow("0 C") << 0.0 << false << QStringLiteral("0\u2103");
    QTest::addRow("21 C drops .0") << 21.0 << false << QStringLiteral("21\u2103");
    QTest::addRow("21.5 C") << 21.5 << false << QStringLiteral("21.5\u2103");
    QTest::addRow("-7.5 C") << -7.5 << false << QStringLiteral("-7.5\u2103");
    QTest::addRow("-3 F") << -3.0 << true << QStringLiteral("-3\u2109");
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

void TestCommonBehaviours::tenthsTextAsADoubleWouldRead_data()
{
    QTest::addColumn<int>("tenths");
    for (const int tenths : {0, 5, 9, 10, 160, 165, 295, 1234, -1, -5, -10, -75, 2147483647, -2147483647 - 1})
        QTest::addRow("%d", tenths) << tenths;
}

void TestCommonBehaviours::tenthsTextAsADoubleWouldRead()
{
    QFETCH(int, tenths);
    QCOMPARE(tenthsText(tenths), QString::number(tenths / 10.0, 'f', 1));
}

void TestCommonBehaviours::outdoorUpdateSignalsOnlyOnChange()
{
    QSignalSpy text(m_driver, &CanbusInterface::outdoorTemperatureChanged);
    QSignalSpy body(m_driver, &CanbusInterface::carbodyDataChanged);

    m_driver->updateOutdoorTemperature(21.5, 0, true);
    QCOMPARE(text.count(), 1);
    QCOMPARE(text.at(0).at(0).toString(), QStringLiteral("21.5\u2103"));
    QCOMPARE(text.at(0).at(1).toInt(), 0);
    QCOMPARE(m_driver->getAirData()->outdoorTemp, QStringLiteral("21.5\u2103"));
    QCOMPARE(int(m_driver->getAirData()->outdoorTempValid), 1);
    QCOMPARE(int(m_driver->getAirData()->outdoorTempUnit), 0);
    QCOMPARE(body.count(), 1);
    QCOMPARE(int(m_driver->getCarbodyData()->outdoorTempUnit), 0);
    QCOMPARE(int(m_driver->getCarbodyData()->outdoorTempTenths), 215);

    m_driver->updateOutdoorTemperature(21.5, 0, true);
    QCOMPARE(text.count(), 1);
    QCOMPARE(body.count(), 1);

    // Same text, validity lost: the text half signals, the body half has nothing new.
    m_driver->updateOutdoorTemperature(21.5, 0, false);
    QCOMPARE(text.count(), 2);
    QCOMPARE(int(m_driver->getAirData()->outdoorTempValid), 0);
    QCOMPARE(body.count(), 1);

    m_driver->updateOutdoorTemperature(70, 1, false);
    QCOMPARE(text.count(), 3);
    QCOMPARE(text.at(2).at(0).toString(), QStringLiteral("70\u2109"));
    QCOMPARE(text.at(2).at(1).toInt(), 1);
    QCOMPARE(int(m_driver->getAirData()->outdoorTempUnit), 1);
    QCOMPARE(body.count(), 2);
}

void TestCommonBehaviours::outdoorBodyHalfComparesUnitAndTenths()
{
    QSignalSpy body(m_driver, &CanbusInterface::carbodyDataChanged);
    // The body record starts with tenths 0 and an unknown unit: a first 0 ℃ is news.
    QVERIFY(m_driver->updateOutdoorBody(0, 0));
    QVERIFY(!m_driver->updateOutdoorBody(0, 0));
    QVERIFY(m_driver->updateOutdoorBody(0, 1));
    QVERIFY(m_driver->updateOutdoorBody(-40.5, 1));
    QCOMPARE(int(m_driver->getCarbodyData()->outdoorTempTenths), -405);
    // Far out of range: bounded, not overflowed.
    QVERIFY(m_driver->updateOutdoorBody(1e9, 1));
    QCOMPARE(int(m_driver->getCarbodyData()->outdoorTempTenths), 32767);
    QCOMPARE(body.count(), 4);
}

// ---- record updates -----------------------------------------------------------------

void TestCommonBehaviours::climateUpdate()
{
    QSignalSpy spy(m_driver, &CanbusInterface::airConditionerDataChanged);
    AirData fresh;
    fresh.airAC = 1;
    applySetPoint(fresh, kZoneLeft, commonSetPoint(5, false));

    QVERIFY(m_driver->updateAirData(fresh));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(m_driver->getAirData()->id, 99);
    QCOMPARE(int(m_driver->getAirData()->airAC), 1);
    QCOMPARE(m_driver->getAirData()->tempLeft, QStringLiteral("18.0"));

    // The identical frame again: nothing to tell.
    QVERIFY(!m_driver->updateAirData(fresh));
    QCOMPARE(spy.count(), 1);

    // A gated driver updates silently.
    fresh.airAC = 0;
    QVERIFY(m_driver->updateAirData(fresh, false));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(int(m_driver->getAirData()->airAC), 0);
}

void TestCommonBehaviours::climateUpdateTakesWholeRecordButSwitches()
{
    AirData& live = *m_driver->getAirData();
    live.airShowFlag = 0;
    live.outdoorTemp = QStringLiteral("5\u2103");
    live.tire.tirePressureFrontLeft = QStringLiteral("2.3 bar");

    AirData fresh;
    fresh.airAuto = 1;
    QVERIFY(m_driver->updateAirData(fresh));
    QCOMPARE(int(live.airShowFlag), 0);
    QCOMPARE(int(live.airValid), 1);
    // What the climate frame doesn't carry falls back to the defaults.
    QCOMPARE(live.outdoorTemp, QString());
    QCOMPARE(live.tire.tirePressureFrontLeft, QStringLiteral("--"));
}

void TestCommonBehaviours::doorAndBodyUpdates()
{
    QSignalSpy doors(m_driver, &CanbusInterface::cardoorDataChanged);
    QSignalSpy body(m_driver, &CanbusInterface::carbodyDataChanged);

    CardoorData open;
    open.doorTrunk = 1;
    QVERIFY(m_driver->updateCardoorData(open));
    QVERIFY(!m_driver->updateCardoorData(open));
    QCOMPARE(doors.count(), 1);
    QVERIFY(m_driver->getCardoorData()->isWarningState());

    CarbodyData b = *m_driver->getCarbodyData();
    b.batteryVoltage = 124;
    QVERIFY(m_driver->updateCarbodyData(b, false));
    QCOMPARE(body.count(), 0);
    QCOMPARE(int(m_driver->getCarbodyData()->batteryVoltage), 124);
    b.odometer = 1000;
    QVERIFY(m_driver->updateCarbodyData(b));
    QVERIFY(!m_driver->updateCarbodyData(b));
    QCOMPARE(body.count(), 1);
}

// ---- radar --------------------------------------------------------------------------

void TestCommonBehaviours::radarDisplay_data()
{
    // Sensors in the order front left, front left mid, front right mid, front right,
    // rear left, rear left mid, rear right mid, rear right.
    QTest::addColumn<QByteArray>("sensors");
    QTest::addColumn<int>("radarOn");

    QTest::addRow("all 0: off") << bytes({0, 0, 0, 0, 0, 0, 0, 0}) << 0;
    QTest::addRow("all 255: off") << bytes({255, 255, 255, 255, 255, 255, 255, 255}) << 0;
    QTest::addRow("bars, one rear") << bytes({0, 0, 0, 0, 0, 0, 0, 4}) << 1;
    QTest::addRow("bars, 10 is still bars") << bytes({0, 10, 0, 0, 0, 0, 0, 0}) << 1;
    QTest::addRow("bars, large outer value") << bytes({200, 0, 0, 0, 0, 0, 0, 0}) << 1;
    QTest::addRow("distance, all far") << bytes({11, 11, 11, 11, 11, 11, 11, 11}) << 0;
    QTest::addRow("distance, one near") << bytes({255, 11, 255, 255, 255, 255, 10, 255}) << 1;
    QTest::addRow("distance, near zero") << bytes({255, 200, 255, 255, 0, 255, 255, 255}) << 1;
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

// ---- keys ---------------------------------------------------------------------------

void TestCommonBehaviours::keys_data()
{
    // A sequence of key frame values and what reaches the keyboard:
    // pairs of (keyboard number, pressed).
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<bool>("sendZero");
    QTest::addColumn<QList<int>>("events");

    QTest::addRow("press and release") << bytes({1, 0}) << false << QList<int>{166, 1, 166, 0};
    QTest::addRow("release goes to the held key")
        << bytes({1, 2, 0}) << false << QList<int>{166, 1, 167, 1, 167, 0};
    QTest::addRow("release with nothing held, sent") << bytes({0}) << true << QList<int>{0, 0};
    QTest::addRow("unlisted value, skipped") << bytes({4, 0}) << false << QList<int>{};
    QTest::addRow("unlisted value, sent") << bytes({4, 0}) << true << QList<int>{0, 1, 0, 0};
    // A code the keyboard doesn't know is still a code: it goes out as number 0.
    QTest::addRow("code without keyboard number") << bytes({7, 0}) << false
                                                   << QList<int>{0, 1, 0, 0};
}

void TestCommonBehaviours::keys()
{
    QFETCH(QByteArray, values);
    QFETCH(bool, sendZero);
    QFETCH(QList<int>, events);
    for (char v : values)
        m_driver->key(quint8(v), sendZero ? ZeroKey::Send : ZeroKey::Skip);
    QList<int> seen;
    for (const auto& call : m_injector.calls(RecordingInputInjector::Call::Ioctl))
        seen << int(call.request) - 768 << int(call.arg);
    QCOMPARE(seen, events);
    // Every event opened and closed the device again.
    QVERIFY(m_injector.openDescriptors().isEmpty());
}

// ---- language -----------------------------------------------------------------------

void TestCommonBehaviours::languageLookup_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("number");   // -1: none

    QTest::addRow("en") << "en" << 1;
    QTest::addRow("ch_jt") << "ch_jt" << 23;
    QTest::addRow("ch_ft") << "ch_ft" << 23;
    QTest::addRow("listed but not in the table") << "ko" << -1;
    QTest::addRow("unknown") << "xx" << -1;
    QTest::addRow("empty") << "" << -1;
    QTest::addRow("case matters") << "EN" << -1;
}

void TestCommonBehaviours::languageLookup()
{
    QFETCH(QString, code);
    QFETCH(int, number);
    const auto found = vehicleLanguage(kProbeLanguages, code);
    QCOMPARE(found.has_value(), number >= 0);
    if (found)
        QCOMPARE(*found, number);
    QVERIFY(isLanguageCode(QStringLiteral("ps")));
    QVERIFY(!isLanguageCode(QStringLiteral("de")));
}

void TestCommonBehaviours::languageSlotSendsOnlyForKnownCodes()
{
    QSignalSpy sent(m_driver, &CanbusInterface::sendDataToCan);
    m_driver->languageChanged(QStringLiteral("xby"));
    m_driver->languageChanged(QStringLiteral("nonsense"));
    QCOMPARE(sent.count(), 0);
    m_driver->languageChanged(QStringLiteral("ch_ft"));
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent.at(0).at(0).toByteArray(), buildFrame(FrameFamily::Start2E, 0xC6, {0x00, 23}));
}

// ---- source reports -----------------------------------------------------------------

void TestCommonBehaviours::radioBands_data()
{
    QTest::addColumn<int>("band");
    QTest::addColumn<int>("radio");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<int>("frequency");
    QTest::addColumn<double>("value");

    QTest::addRow("1 none") << 1 << int(RadioBand::None) << QString() << QString() << 100 << 100.0;
    QTest::addRow("2 FM1") << 2 << int(RadioBand::FM1) << "FM1" << "MHz" << 8750 << 87.5;
    QTest::addRow("5 AM1") << 5 << int(RadioBand::AM1) << "AM1" << "kHz" << 531 << 531.0;
    QTest::addRow("7 none") << 7 << int(RadioBand::None) << QString() << QString() << 0 << 0.0;
}

void TestCommonBehaviours::radioBands()
{
    QFETCH(int, band);
    QFETCH(int, frequency);
    const RadioBand b = radioBand(band);
    QTEST(int(b), "radio");
    QTEST(radioBandName(b), "name");
    QTEST(radioFrequencyUnit(b), "unit");
    QFETCH(double, value);
    QVERIFY(qFuzzyCompare(1.0 + radioFrequency(b, frequency), 1.0 + value));

    RadioState state;
    QVERIFY(readRadio({band, frequency}, state));
    QCOMPARE(state.band, b);
    QCOMPARE(state.frequency, frequency);
    QVERIFY(!readRadio({band}, state));
    QCOMPARE(state.band, RadioBand::None);
}

void TestCommonBehaviours::mediaAndPhoneReports()
{
    QCOMPARE(mediaGroup(13), MediaGroup::First);
    QCOMPARE(mediaGroup(16), MediaGroup::Second);
    QCOMPARE(mediaGroup(22), MediaGroup::Third);
    QCOMPARE(mediaGroup(15), MediaGroup::None);
    QCOMPARE(mediaGroup(24), MediaGroup::None);

    const MediaState m = readMedia({0, 4, 12, qulonglong(75), qulonglong(240),
                                    QStringLiteral("Title"), QStringLiteral("Artist")});
    QCOMPARE(m.track, 4);
    QCOMPARE(m.trackCount, 12);
    QCOMPARE(m.position, 75ull);
    QCOMPARE(m.title, QStringLiteral("Title"));
    // A short report reads as zeros and empty texts.
    const MediaState shortReport = readMedia({0, 3});
    QCOMPARE(shortReport.track, 3);
    QCOMPARE(shortReport.trackCount, 0);
    QCOMPARE(shortReport.title, QString());
    QVERIFY(!sourceItem({}, 0).isValid());
    QVERIFY(!sourceItem({1}, -1).isValid());

    QCOMPARE(callStateText(callState(0)), QStringLiteral("hang up"));
    QCOMPARE(callStateText(callState(1)), QStringLiteral("incoming call"));
    QCOMPARE(callState(4), CallState::Unknown);
    QCOMPARE(callStateText(CallState::Unknown), QString());

    const PhoneState p = readPhone({1, QStringLiteral("Anna"), QStringLiteral("0123")});
    QCOMPARE(p.state, CallState::Incoming);
    QCOMPARE(p.name, QStringLiteral("Anna"));
    QCOMPARE(readPhone({}).state, CallState::Unknown);
}

// ---- connect and disconnect ---------------------------------------------------------

void TestCommonBehaviours::connectForms_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("result");
    QTest::addColumn<int>("interval");
    QTest::addColumn<QByteArray>("frame");

    const QByteArray connectFrame = bytes({0x2E, 0x81, 0x01, 0x01, 0x7C});
    QTest::addRow("simple, waiting") << int(ConnectForm::Simple) << false << true << 1000
                                     << connectFrame;
    QTest::addRow("simple, answered") << int(ConnectForm::Simple) << true << false << -1
                                      << QByteArray();
    QTest::addRow("request first, waiting") << int(ConnectForm::RequestFirst) << false << true
                                            << 1000 << connectFrame;
    QTest::addRow("request first, answered") << int(ConnectForm::RequestFirst) << true << false
                                             << -1 << QByteArray();
    QTest::addRow("base, waiting") << int(ConnectForm::Base) << false << true << -1 << QByteArray();
    QTest::addRow("base, answered") << int(ConnectForm::Base) << true << false << -1 << QByteArray();
    QTest::addRow("poll only") << int(ConnectForm::PollOnly) << false << true << 1000
                               << QByteArray();
    QTest::addRow("never") << int(ConnectForm::Never) << false << false << -1 << QByteArray();
}

void TestCommonBehaviours::connectForms()
{
    QFETCH(int, form);
    QFETCH(bool, connected);
    ProbeDriver d(kProbeProfile.requesting(0x30, 0x00).connecting(ConnectForm(form)));
    d.setConnected(connected);
    int interval = -1;   // left alone unless the form sets it
    QByteArray frame;
    QTEST(d.needSendConnect(interval, frame), "result");
    QTEST(interval, "interval");
    QTEST(frame, "frame");
}

void TestCommonBehaviours::requestFirstSendsTheRequestLater()
{
    ProbeDriver d(kProbeProfile.requesting(0x30, 0x00));
    d.setConnected(true);
    QSignalSpy sent(&d, &CanbusInterface::sendDataToCan);
    int interval = 0;
    QByteArray frame;
    QVERIFY(!d.needSendConnect(interval, frame));
    QCOMPARE(sent.count(), 0);   // not at once
    QVERIFY(sent.wait(5000));
    QCOMPARE(sent.at(0).at(0).toByteArray(), bytes({0x2E, 0x90, 0x02, 0x30, 0x00, 0x3D}));
}

void TestCommonBehaviours::disconnectForms_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("stillConnected");

    const QByteArray off = bytes({0x2E, 0x81, 0x01, 0x00, 0x7D});
    QTest::addRow("common, connected") << int(DisconnectForm::Common) << true << true << off << true;
    QTest::addRow("common, not connected") << int(DisconnectForm::Common) << false << false
                                           << QByteArray() << false;
    QTest::addRow("always") << int(DisconnectForm::Always) << false << true << off << false;
    QTest::addRow("base") << int(DisconnectForm::Base) << true << true << QByteArray() << false;
    QTest::addRow("never") << int(DisconnectForm::Never) << true << false << QByteArray() << true;
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

// ---- timer after power on -----------------------------------------------------------

void TestCommonBehaviours::airOffTimerTellsAboutAnIdleClimate()
{
    QSignalSpy spy(m_driver, &CanbusInterface::airConditionerDataChanged);
    m_driver->startAirOffTimer(0);
    m_driver->startAirOffTimer(0);   // one pending timer, not two
    QVERIFY(spy.wait(5000));
    QTest::qWait(20);
    QCOMPARE(spy.count(), 1);
}

void TestCommonBehaviours::airOffTimerQuietWhileClimateRuns()
{
    m_driver->getAirData()->airPower = 1;
    QSignalSpy spy(m_driver, &CanbusInterface::airConditionerDataChanged);
    m_driver->startAirOffTimer(0);
    QTest::qWait(20);
    QCOMPARE(spy.count(), 0);
    // The timer is gone: a new one can be started and fires.
    m_driver->getAirData()->airPower = 0;
    m_driver->startAirOffTimer(0);
    QVERIFY(spy.wait(5000));
}

QTEST_MAIN(TestCommonBehaviours)
#include "tst_commonbehaviours.moc"
