// The viewer's state: what the window draws, made from the host's events, without a
// display. The viewer's run against a box is in tst_tools.

#include <QImage>
#include <QPainter>
#include <QtTest>

#include "carplan.h"
#include "commandpanel.h"
#include "viewerevents.h"
#include "viewerstate.h"

using viewer::ClimateView;
using viewer::Mode;
using viewer::PortState;
using viewer::RadarView;
using viewer::ViewerState;

Q_DECLARE_METATYPE(viewer::Mode)
Q_DECLARE_METATYPE(viewer::PortState)

namespace {

// "tempLeft=22", "airAC=1": texts stay texts where the record has a text, numbers
// are numbers as the host hands them over.
host::Fields fields(const QStringList& items)
{
    static const QStringList texts = {"tempLeft", "tempRight", "outdoorTemp"};
    host::Fields out;
    for (const QString& item : items) {
        const QString name = item.section(QLatin1Char('='), 0, 0);
        const QString value = item.section(QLatin1Char('='), 1);
        out.append({name, texts.contains(name) ? QVariant(value) : QVariant(value.toLongLong())});
    }
    return out;
}

QString noText()
{
    return QString(QChar(0xFF));
}

// The doors as letters, for a readable comparison: F front, R rear, L/R side, B bonnet, T tailgate.
QString doorText(const viewer::DoorsView& d)
{
    QString s;
    s += d.frontLeft ? QStringLiteral("FL ") : QString();
    s += d.frontRight ? QStringLiteral("FR ") : QString();
    s += d.rearLeft ? QStringLiteral("RL ") : QString();
    s += d.rearRight ? QStringLiteral("RR ") : QString();
    s += d.bonnet ? QStringLiteral("B ") : QString();
    s += d.tailgate ? QStringLiteral("T ") : QString();
    return s.trimmed();
}

Mode modeOf(const ClimateView& view, const QString& label)
{
    for (const viewer::ModeView& m : view.modes) {
        if (m.label == label)
            return m.mode;
    }
    return Mode::Absent;
}

QString linkProblem(const char* category, const char* what)
{
    return QStringLiteral("%1 [QT] [Error] [CanbusModuleImpl] line: 52 %2 /dev/pts/4").arg(QLatin1String(category), QLatin1String(what));
}

} // namespace

class TestViewer : public QObject
{
    Q_OBJECT

private slots:
    void setPoints_data();
    void setPoints();
    void modes_data();
    void modes();
    void fan_data();
    void fan();
    void doors_data();
    void doors();
    void radarScale_data();
    void radarScale();
    void radarSensorsInOrder();
    void outdoor_data();
    void outdoor();
    void keysKeepTheNewest();
    void port_data();
    void port();
    void eventsReachTheState_data();
    void eventsReachTheState();
    void commandKey_data();
    void commandKey();
    void openDoorIsDrawn();
};

void TestViewer::setPoints_data()
{
    QTest::addColumn<QStringList>("air");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");

    QTest::addRow("bare number without a unit") << QStringList{"tempLeft=22", "tempRight=23.5"} << "22" << "23.5";
    QTest::addRow("unit 0 is Celsius") << QStringList{"tempLeft=22", "tempUnit=0"} << "22\u00b0C" << "";
    QTest::addRow("unit 1 is Fahrenheit") << QStringList{"tempRight=72", "tempUnit=1"} << "" << "72\u00b0F";
    QTest::addRow("a text with its sign keeps it") << QStringList{"tempLeft=22.5\u2103", "tempUnit=0"} << "22.5\u2103" << "";
    QTest::addRow("low end shows LO") << QStringList{"tempLeft=16", "tempLeftLow=1"} << "LO" << "";
    QTest::addRow("high end shows HI") << QStringList{"tempRight=30", "tempRightHigh=1"} << "" << "HI";
    QTest::addRow("low of the right side is not the left's")
        << QStringList{"tempLeft=20", "tempRight=20", "tempRightLow=1"} << "20" << "LO";
    QTest::addRow("hidden set point") << QStringList{"tempLeft=20", "tempLeftVisible=0", "tempRight=21"} << "" << "21";
    QTest::addRow("U+00FF is no value") << QStringList{"tempLeft=" + noText()} << "" << "";
}

void TestViewer::setPoints()
{
    QFETCH(QStringList, air);
    QFETCH(QString, left);
    QFETCH(QString, right);
    ViewerState state;
    state.applyRecord(QStringLiteral("air"), fields(air));
    QCOMPARE(state.climate().tempLeft, left);
    QCOMPARE(state.climate().tempRight, right);
}

void TestViewer::modes_data()
{
    QTest::addColumn<QStringList>("air");
    QTest::addColumn<QString>("label");
    QTest::addColumn<Mode>("mode");

    QTest::addRow("255: the vehicle has no such control") << QStringList{"airAC=255"} << "A/C" << Mode::Absent;
    QTest::addRow("-1: absent too (signed fields)") << QStringList{"airAC=-1"} << "A/C" << Mode::Absent;
    QTest::addRow("never reported: absent") << QStringList{} << "A/C" << Mode::Absent;
    QTest::addRow("0 is off") << QStringList{"airAC=0"} << "A/C" << Mode::Off;
    QTest::addRow("any other value is on") << QStringList{"airAC=2"} << "A/C" << Mode::On;
    QTest::addRow("recirculation is the inner loop") << QStringList{"airInnerLoop=1", "airOuterLoop=0"} << "RECIRC" << Mode::On;
    QTest::addRow("fresh air is the outer loop") << QStringList{"airInnerLoop=1", "airOuterLoop=0"} << "FRESH" << Mode::Off;
    QTest::addRow("rear defrost is not the front's") << QStringList{"airDefrostFront=1", "airDefrostRear=0"} << "DEF REAR" << Mode::Off;
    QTest::addRow("feet are the downward wind") << QStringList{"airWindDownLeft=1", "airWindUpLeft=0"} << "FEET" << Mode::On;
}

void TestViewer::modes()
{
    QFETCH(QStringList, air);
    QFETCH(QString, label);
    QFETCH(Mode, mode);
    ViewerState state;
    state.applyRecord(QStringLiteral("air"), fields(air));
    QCOMPARE(modeOf(state.climate(), label), mode);
}

void TestViewer::fan_data()
{
    QTest::addColumn<QStringList>("air");
    QTest::addColumn<int>("fan");
    QTest::addColumn<Mode>("power");

    QTest::addRow("no blower") << QStringList{"airWindSpeedLeft=255"} << -1 << Mode::Absent;
    QTest::addRow("step 0 is a step") << QStringList{"airWindSpeedLeft=0", "airPower=0"} << 0 << Mode::Off;
    QTest::addRow("the left blower, not the right") << QStringList{"airWindSpeedLeft=3", "airWindSpeedRight=6"} << 3 << Mode::Absent;
    QTest::addRow("power from airPower") << QStringList{"airPower=1"} << -1 << Mode::On;
    QTest::addRow("power from airOnOff when airPower is off") << QStringList{"airPower=0", "airOnOff=1"} << -1 << Mode::On;
}

void TestViewer::fan()
{
    QFETCH(QStringList, air);
    QFETCH(int, fan);
    QFETCH(Mode, power);
    ViewerState state;
    state.applyRecord(QStringLiteral("air"), fields(air));
    QCOMPARE(state.climate().fan, fan);
    QCOMPARE(state.climate().power, power);
}

void TestViewer::doors_data()
{
    QTest::addColumn<QStringList>("first");
    QTest::addColumn<QStringList>("then");
    QTest::addColumn<QString>("open");

    QTest::addRow("bonnet is the hood, tailgate the trunk") << QStringList{"doorHood=1", "doorTrunk=0"} << QStringList{} << "B";
    QTest::addRow("sides not swapped")
        << QStringList{"doorFrontLeft=0", "doorFrontRight=1", "doorRearLeft=1", "doorRearRight=0"} << QStringList{} << "FR RL";
    QTest::addRow("255: no such door, drawn closed") << QStringList{"doorFrontLeft=255"} << QStringList{} << "";
    QTest::addRow("a report is the whole record: a closed door closes")
        << QStringList{"doorFrontLeft=1", "doorRearRight=1"} << QStringList{"doorFrontLeft=0", "doorRearRight=1"} << "RR";
}

void TestViewer::doors()
{
    QFETCH(QStringList, first);
    QFETCH(QStringList, then);
    QFETCH(QString, open);
    ViewerState state;
    state.applyRecord(QStringLiteral("doors"), fields(first));
    if (!then.isEmpty())
        state.applyRecord(QStringLiteral("doors"), fields(then));
    QCOMPARE(doorText(state.doors()), open);
}

void TestViewer::radarScale_data()
{
    QTest::addColumn<int>("lit");
    QTest::addColumn<int>("levels");
    QTest::addColumn<double>("share");
    QTest::addColumn<double>("nearness");

    QTest::addRow("nothing there") << 0 << 10 << 0.0 << 0.0;
    QTest::addRow("one bar is the nearest") << 1 << 10 << 0.1 << 1.0;
    QTest::addRow("the full scale is the farthest") << 10 << 10 << 1.0 << 0.0;
    QTest::addRow("in between, by the scale") << 4 << 7 << 4.0 / 7 << 0.5;
    QTest::addRow("past the scale is clamped") << 12 << 10 << 1.0 << 0.0;
    QTest::addRow("no scale lights nothing") << 3 << 0 << 0.0 << 0.0;
}

void TestViewer::radarScale()
{
    QFETCH(int, lit);
    QFETCH(int, levels);
    QFETCH(double, share);
    QFETCH(double, nearness);
    QCOMPARE(RadarView::share(lit, levels), share);
    QCOMPARE(RadarView::nearness(lit, levels), nearness);
}

// Left to right, front up; a sensor of 255 (no such sensor) is nothing there.
void TestViewer::radarSensorsInOrder()
{
    ViewerState state;
    QCOMPARE(state.radar().on, false);
    state.applyRecord(QStringLiteral("radar"),
                      fields({"radarOn=1", "radarLevels=8", "radarFrontLeft=1", "radarFrontLeftMid=2",
                              "radarFrontRightMid=3", "radarFrontRight=4", "radarRearLeft=5", "radarRearLeftMid=6",
                              "radarRearRightMid=7", "radarRearRight=255"}));
    const RadarView radar = state.radar();
    QVERIFY(radar.on);
    QCOMPARE(radar.levels, 8);
    QCOMPARE(radar.front, (QVector<int>{1, 2, 3, 4}));
    QCOMPARE(radar.rear, (QVector<int>{5, 6, 7, 0}));
}

void TestViewer::outdoor_data()
{
    QTest::addColumn<QStringList>("steps");   // "air:f=v,f=v", "body:...", "signal:text:unit"
    QTest::addColumn<QString>("shown");

    QTest::addRow("nothing reported") << QStringList{} << "";
    QTest::addRow("air with its valid flag") << QStringList{"air:outdoorTempValid=1,outdoorTemp=20,outdoorTempUnit=0"} << "20\u00b0C";
    QTest::addRow("air without its valid flag") << QStringList{"air:outdoorTempValid=0,outdoorTemp=20,outdoorTempUnit=0"} << "";
    QTest::addRow("body in tenths, below zero") << QStringList{"body:outdoorTempTenths=-55,outdoorTempUnit=0"} << "-5.5\u00b0C";
    QTest::addRow("body without a unit is no reading") << QStringList{"body:outdoorTempTenths=200,outdoorTempUnit=255"} << "";
    QTest::addRow("the signal's text") << QStringList{"signal:19.0\u2103:0"} << "19.0\u2103";
    QTest::addRow("the newest wins: body after the signal")
        << QStringList{"signal:19:0", "body:outdoorTempTenths=215,outdoorTempUnit=0"} << "21.5\u00b0C";
    QTest::addRow("an air report that leaves the temperature alone doesn't win")
        << QStringList{"air:outdoorTempValid=1,outdoorTemp=20,outdoorTempUnit=0", "signal:18:0",
                       "air:outdoorTempValid=1,outdoorTemp=20,outdoorTempUnit=0,airAC=1"}
        << "18\u00b0C";
}

void TestViewer::outdoor()
{
    QFETCH(QStringList, steps);
    QFETCH(QString, shown);
    ViewerState state;
    for (const QString& step : steps) {
        const QString kind = step.section(QLatin1Char(':'), 0, 0);
        if (kind == QLatin1String("signal"))
            state.applyOutdoor(step.section(QLatin1Char(':'), 1, 1), step.section(QLatin1Char(':'), 2).toInt());
        else
            state.applyRecord(kind, fields(step.section(QLatin1Char(':'), 1).split(QLatin1Char(','))));
    }
    QCOMPARE(state.outdoor(), shown);
}

void TestViewer::keysKeepTheNewest()
{
    ViewerState state;
    state.applyKey(166, true);
    state.applyKey(166, false);
    // A release of another key than the last press stands alone.
    state.applyKey(12, false);
    QCOMPARE(state.keys(), (QStringList{"key 12 up", "key 166 (released)"}));
    for (int k = 1; k <= ViewerState::kKeptLines; ++k)
        state.applyKey(k, true);
    QCOMPARE(state.keys().size(), ViewerState::kKeptLines);
    QCOMPARE(state.keys().first(), QStringLiteral("key %1").arg(ViewerState::kKeptLines));
    QCOMPARE(state.keys().last(), QStringLiteral("key 1"));
}

void TestViewer::port_data()
{
    QTest::addColumn<QStringList>("problems");   // "record" stands for a record from the box
    QTest::addColumn<PortState>("state");

    QTest::addRow("open, nothing yet") << QStringList{} << PortState::Waiting;
    QTest::addRow("a record: receiving") << QStringList{"record"} << PortState::Receiving;
    QTest::addRow("the box's port lost") << QStringList{"record", linkProblem("canbus.link", "port lost:")} << PortState::Lost;
    QTest::addRow("the MCU's port is not the box's") << QStringList{"record", linkProblem("canbus.mcu", "port lost:")}
                                                     << PortState::Receiving;
    QTest::addRow("back") << QStringList{linkProblem("canbus.link", "port lost:"), linkProblem("canbus.link", "port reopened:")}
                          << PortState::Back;
    QTest::addRow("back and receiving")
        << QStringList{linkProblem("canbus.link", "port lost:"), linkProblem("canbus.link", "port reopened:"), "record"}
        << PortState::Receiving;
    QTest::addRow("a record while lost is not the port's return")
        << QStringList{"record", linkProblem("canbus.link", "port lost:"), "record"} << PortState::Lost;
    QTest::addRow("another warning of the link changes nothing")
        << QStringList{linkProblem("canbus.link", "port lost:"), linkProblem("canbus.link", "onSetBaudRate reset serialport fail.")}
        << PortState::Lost;
}

void TestViewer::port()
{
    QFETCH(QStringList, problems);
    QFETCH(PortState, state);
    ViewerState s;
    for (const QString& p : problems) {
        if (p == QLatin1String("record"))
            s.applyRecord(QStringLiteral("doors"), fields({"doorHood=0"}));
        else
            s.applyProblem(p);
    }
    QCOMPARE(s.port(), state);
}

void TestViewer::eventsReachTheState_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariantList>("args");
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("outdoor");

    QTest::addRow("a prompt") << "TipDialog" << "messageShown" << QVariantList{QStringLiteral("Tyre pressure low"), 0}
                              << "Tyre pressure low" << "";
    QTest::addRow("the outdoor temperature") << "canbus" << "outdoorTemperatureChanged"
                                             << QVariantList{QStringLiteral("-3"), 0} << "" << "-3\u00b0C";
    QTest::addRow("a prompt of the module itself is no platform prompt")
        << "canbus" << "messageShown" << QVariantList{QStringLiteral("x"), 0} << "" << "";
    QTest::addRow("a signal without its arguments is dropped") << "TipDialog" << "messageShown" << QVariantList{} << "" << "";
}

void TestViewer::eventsReachTheState()
{
    QFETCH(QString, source);
    QFETCH(QString, name);
    QFETCH(QVariantList, args);
    QFETCH(QString, prompt);
    QFETCH(QString, outdoor);
    ViewerState state;
    viewer::ViewerEvents events(state);
    QSignalSpy changed(&events, &viewer::ViewerEvents::changed);
    events.signal(source, name, {"text", "type"}, args);
    QCOMPARE(state.prompts().value(0), prompt);
    QCOMPARE(state.outdoor(), outdoor);
    QCOMPARE(changed.count(), prompt.isEmpty() && outdoor.isEmpty() ? 0 : 1);
}

void TestViewer::commandKey_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("sent");

    QTest::addRow("a key") << "AirAC" << "AirAC";
    QTest::addRow("blanks around it go") << "  AirAUTO " << "AirAUTO";
    QTest::addRow("a blank inside is two words") << "Air AC" << "";
    QTest::addRow("a digit first is no key") << "1Air" << "";
}

void TestViewer::commandKey()
{
    QFETCH(QString, typed);
    QFETCH(QString, sent);
    QCOMPARE(viewer::CommandPanel::commandKey(typed), sent);
}

// An open door swings out of the body: where a closed door leaves background, an open
// one is painted.
void TestViewer::openDoorIsDrawn()
{
    viewer::CarPlan plan;
    plan.resize(260, 380);
    const auto render = [&plan](const viewer::DoorsView& doors) {
        plan.setView(doors, RadarView());
        QImage image(plan.size(), QImage::Format_RGB32);
        plan.render(&image);
        return image;
    };
    viewer::DoorsView open;
    open.frontLeft = true;
    const QImage closedImage = render(viewer::DoorsView());
    const QImage openImage = render(open);
    // Left of the body, beside the front door: only the open door reaches there.
    int changedLeft = 0;
    int changedRight = 0;
    for (int y = 0; y < plan.height(); ++y) {
        for (int x = 0; x < plan.width(); ++x) {
            if (closedImage.pixel(x, y) != openImage.pixel(x, y))
                ++(x < plan.width() / 2 ? changedLeft : changedRight);
        }
    }
    QVERIFY(changedLeft > 0);
    QCOMPARE(changedRight, 0);
}

QTEST_MAIN(TestViewer)
#include "tst_viewer.moc"
