#include "viewerstate.h"

#include <algorithm>

namespace viewer {

namespace {

// The panel's modes, in the order they are drawn: a label and the climate field.
struct ModeField
{
    const char* label;
    const char* field;
};
constexpr ModeField kModes[] = {
    {"A/C", "airAC"},
    {"MAX A/C", "airAcMax"},
    {"AUTO", "airAuto"},
    {"DUAL", "airDual"},
    {"SYNC", "airSync"},
    {"RECIRC", "airInnerLoop"},
    {"FRESH", "airOuterLoop"},
    {"ECO", "airEco"},
    {"DEF FRONT", "airDefrostFront"},
    {"DEF MAX", "airDefrostMax"},
    {"DEF REAR", "airDefrostRear"},
    {"FACE", "airWindFrontLeft"},
    {"WINDSCREEN", "airWindUpLeft"},
    {"FEET", "airWindDownLeft"},
};

constexpr const char* kFrontSensors[] = {"radarFrontLeft", "radarFrontLeftMid", "radarFrontRightMid", "radarFrontRight"};
constexpr const char* kRearSensors[] = {"radarRearLeft", "radarRearLeftMid", "radarRearRightMid", "radarRearRight"};

// The records' marks for "no such control": 255 unsigned, -1 signed.
bool isAbsentNumber(const QVariant& value)
{
    return !value.isValid() || value.toLongLong() == 255 || value.toLongLong() == -1;
}

QString unitSign(int unit)
{
    switch (unit) {
    case 0:
        return QStringLiteral("\u00b0C");
    case 1:
        return QStringLiteral("\u00b0F");
    default:
        return QString();
    }
}

// Drivers write some temperatures with their sign and some without.
QString withUnit(const QString& text, int unit)
{
    bool numeric = false;
    text.toDouble(&numeric);
    return numeric ? text + unitSign(unit) : text;
}

const QString& noText()
{
    static const QString text(QChar(0xFF));
    return text;
}

} // namespace

double RadarView::share(int lit, int levels)
{
    if (levels <= 0 || lit <= 0)
        return 0.0;
    return std::min(1.0, double(lit) / levels);
}

double RadarView::nearness(int lit, int levels)
{
    if (lit <= 0 || levels <= 1 || lit >= levels)
        return 0.0;
    return double(levels - lit) / (levels - 1);
}

ViewerState::ViewerState() = default;

void ViewerState::applyRecord(const QString& name, const host::Fields& now)
{
    const QHash<QString, QVariant> kept = m_records.value(name);
    QHash<QString, QVariant> fields;
    bool outdoorChanged = false;
    for (const auto& field : now) {
        fields.insert(field.first, field.second);
        if (field.first.startsWith(QLatin1String("outdoorTemp")) && kept.value(field.first) != field.second)
            outdoorChanged = true;
    }
    m_records.insert(name, fields);
    // The newest report of the outdoor temperature wins, whichever way it came.
    if (outdoorChanged && name == QLatin1String("air") && fields.value(QStringLiteral("outdoorTempValid")).toInt() == 1)
        m_outdoorSource = OutdoorSource::Air;
    else if (outdoorChanged && name == QLatin1String("body") && !isAbsentNumber(fields.value(QStringLiteral("outdoorTempUnit"))))
        m_outdoorSource = OutdoorSource::Body;
    // Data from the box. A lost port is back only when the module says so: a record
    // can also come of a command (reverse and the radar) with no box behind it.
    if (m_port != PortState::Lost)
        m_port = PortState::Receiving;
}

void ViewerState::keep(QStringList& lines, const QString& line)
{
    lines.prepend(line);
    while (lines.size() > kKeptLines)
        lines.removeLast();
}

void ViewerState::applyKey(int key, bool pressed)
{
    // A press and its release are one line: the release only completes it.
    const QString down = QStringLiteral("key %1").arg(key);
    if (!pressed && !m_keys.isEmpty() && m_keys.first() == down) {
        m_keys.first() = down + QStringLiteral(" (released)");
        return;
    }
    keep(m_keys, pressed ? down : down + QStringLiteral(" up"));
}

void ViewerState::applyPrompt(const QString& text)
{
    keep(m_prompts, text);
}

void ViewerState::applyOutdoor(const QString& text, int unit)
{
    m_outdoorSignal = withUnit(text, unit);
    m_outdoorSource = OutdoorSource::Signal;
}

bool ViewerState::applyProblem(const QString& text)
{
    // Only the CAN box's link: the MCU's port has its own category.
    if (!text.startsWith(QLatin1String("canbus.link ")))
        return false;
    PortState next = m_port;
    if (text.contains(QLatin1String(" port lost:")))
        next = PortState::Lost;
    else if (text.contains(QLatin1String(" port reopened:")))
        next = PortState::Back;
    const bool changed = next != m_port;
    m_port = next;
    return changed;
}

QVariant ViewerState::field(const QString& record, const QString& name) const
{
    return m_records.value(record).value(name);
}

Mode ViewerState::mode(const QString& record, const QString& name) const
{
    const QVariant value = field(record, name);
    if (isAbsentNumber(value))
        return Mode::Absent;
    return value.toLongLong() != 0 ? Mode::On : Mode::Off;
}

int ViewerState::number(const QString& record, const QString& name, int absent) const
{
    const QVariant value = field(record, name);
    return isAbsentNumber(value) ? absent : value.toInt();
}

QString ViewerState::setPoint(const char* text, const char* low, const char* high, const char* visible) const
{
    const QString air = QStringLiteral("air");
    if (field(air, QLatin1String(visible)).isValid() && field(air, QLatin1String(visible)).toInt() == 0)
        return QString();
    if (field(air, QLatin1String(low)).toInt() == 1)
        return QStringLiteral("LO");
    if (field(air, QLatin1String(high)).toInt() == 1)
        return QStringLiteral("HI");
    const QString value = field(air, QLatin1String(text)).toString();
    if (value == noText())
        return QString();
    return withUnit(value, number(air, QStringLiteral("tempUnit"), -1));
}

ClimateView ViewerState::climate() const
{
    const QString air = QStringLiteral("air");
    ClimateView view;
    // Boxes report the climate as switched on either way.
    view.power = mode(air, QStringLiteral("airPower"));
    if (view.power != Mode::On && mode(air, QStringLiteral("airOnOff")) == Mode::On)
        view.power = Mode::On;
    view.tempLeft = setPoint("tempLeft", "tempLeftLow", "tempLeftHigh", "tempLeftVisible");
    view.tempRight = setPoint("tempRight", "tempRightLow", "tempRightHigh", "tempRightVisible");
    view.fan = number(air, QStringLiteral("airWindSpeedLeft"), -1);
    for (const ModeField& m : kModes)
        view.modes.append({QLatin1String(m.label), mode(air, QLatin1String(m.field))});
    return view;
}

DoorsView ViewerState::doors() const
{
    const QString doors = QStringLiteral("doors");
    const auto open = [&](const char* name) { return mode(doors, QLatin1String(name)) == Mode::On; };
    DoorsView view;
    view.frontLeft = open("doorFrontLeft");
    view.frontRight = open("doorFrontRight");
    view.rearLeft = open("doorRearLeft");
    view.rearRight = open("doorRearRight");
    view.bonnet = open("doorHood");
    view.tailgate = open("doorTrunk");
    return view;
}

RadarView ViewerState::radar() const
{
    const QString radar = QStringLiteral("radar");
    RadarView view;
    // Until the first report the scale is the record's own default.
    view.on = number(radar, QStringLiteral("radarOn"), 0) == 1;
    view.levels = number(radar, QStringLiteral("radarLevels"), 0);
    for (const char* name : kFrontSensors)
        view.front.append(std::max(0, number(radar, QLatin1String(name), 0)));
    for (const char* name : kRearSensors)
        view.rear.append(std::max(0, number(radar, QLatin1String(name), 0)));
    return view;
}

QString ViewerState::outdoor() const
{
    switch (m_outdoorSource) {
    case OutdoorSource::Signal:
        return m_outdoorSignal;
    case OutdoorSource::Air:
        return withUnit(field(QStringLiteral("air"), QStringLiteral("outdoorTemp")).toString(),
                        number(QStringLiteral("air"), QStringLiteral("outdoorTempUnit"), -1));
    case OutdoorSource::Body: {
        const int unit = number(QStringLiteral("body"), QStringLiteral("outdoorTempUnit"), -1);
        if (unit < 0)
            return QString();
        const double tenths = field(QStringLiteral("body"), QStringLiteral("outdoorTempTenths")).toDouble();
        return QString::number(tenths / 10.0, 'f', 1) + unitSign(unit);
    }
    case OutdoorSource::None:
        break;
    }
    return QString();
}

QString ViewerState::portText(PortState state)
{
    switch (state) {
    case PortState::Waiting:
        return QStringLiteral("port open, waiting for the box");
    case PortState::Receiving:
        return QStringLiteral("receiving");
    case PortState::Lost:
        return QStringLiteral("port lost, retrying every second");
    case PortState::Back:
        return QStringLiteral("port back");
    }
    return QString();
}

} // namespace viewer
