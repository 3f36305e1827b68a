#include "mcuscenario.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QRegularExpression>
#include <QStringList>

#include <cmath>

#include "mcusimulator.h"

namespace {

constexpr int kMaxWaitMs = 3600 * 1000;
constexpr int kDefaultHoldMs = 100;

// Reads the fields of one step; each reader returns false and leaves a message behind.
class StepReader
{
public:
    StepReader(const QJsonObject& step, int number) : m_step(step), m_number(number) {}

    QString error() const { return m_error; }

    bool integer(const QString& field, int min, int max, int& out)
    {
        const QJsonValue value = m_step.value(field);
        const double d = value.toDouble(std::nan(""));
        if (!value.isDouble() || std::floor(d) != d || d < min || d > max)
            return failField(field, QStringLiteral("a whole number from %1 to %2").arg(min).arg(max));
        out = int(d);
        return true;
    }

    bool optionalInteger(const QString& field, int min, int max, int fallback, int& out)
    {
        if (!m_step.contains(field)) {
            out = fallback;
            return true;
        }
        return integer(field, min, max, out);
    }

    bool boolean(const QString& field, bool& out)
    {
        const QJsonValue value = m_step.value(field);
        if (!value.isBool())
            return failField(field, QStringLiteral("true or false"));
        out = value.toBool();
        return true;
    }

    // A string out of `choices`; `index` is its place in the list.
    bool choice(const QString& field, const QStringList& choices, int& index)
    {
        const QString text = m_step.value(field).toString();
        index = choices.indexOf(text);
        if (index < 0)
            return failField(field, QStringLiteral("one of \"%1\"").arg(choices.join(QStringLiteral("\", \""))));
        return true;
    }

    bool optionalChoice(const QString& field, const QStringList& choices, int fallback, int& index)
    {
        if (!m_step.contains(field)) {
            index = fallback;
            return true;
        }
        return choice(field, choices, index);
    }

    QString text(const QString& field, const QString& fallback) const
    {
        return m_step.value(field).toString(fallback);
    }

    bool hexBytes(const QString& field, int exactSize, QByteArray& out)
    {
        const QJsonValue value = m_step.value(field);
        QString text = value.toString();
        text.remove(QRegularExpression(QStringLiteral("\\s")));
        static const QRegularExpression hex(QStringLiteral("^([0-9A-Fa-f]{2})+$"));
        const bool sized = exactSize < 0 || text.size() == 2 * exactSize;
        if (!value.isString() || !hex.match(text).hasMatch() || !sized) {
            const QString what = exactSize < 0
                ? QStringLiteral("hexadecimal bytes such as \"2e 09 01 01 f4\"")
                : QStringLiteral("%1 bytes in hexadecimal").arg(exactSize);
            return failField(field, what);
        }
        out = QByteArray::fromHex(text.toLatin1());
        return true;
    }

    bool onlyFields(const QStringList& allowed)
    {
        for (const QString& key : m_step.keys()) {
            if (!allowed.contains(key))
                return fail(QStringLiteral("unknown field \"%1\"").arg(key));
        }
        return true;
    }

    bool fail(const QString& message)
    {
        m_error = QStringLiteral("step %1: %2").arg(m_number).arg(message);
        return false;
    }

private:
    bool failField(const QString& field, const QString& expected)
    {
        return fail(QStringLiteral("\"%1\" must be %2").arg(field, expected));
    }

    const QJsonObject& m_step;
    int m_number;
    QString m_error;
};

// Requests of the MCU with a known meaning: FF 55 09 01 <a> <b> ...
struct NamedRequest { const char* name; quint8 a, b; };
constexpr NamedRequest kNamedRequests[] = {
    {"open-carplay", 0x02, 0x00},
    {"open-carlife", 0x01, 0x00},
    {"ask-source", 0x04, 0x00},
    {"ask-projection", 0x05, 0x00},
    {"bring-carplay", 0x09, 0x00},
};

using Frames = QList<McuScenarioFrame>;

QString onOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

bool readKey(StepReader& r, int wait, Frames& out)
{
    static const QStringList actions = {QStringLiteral("tap"), QStringLiteral("press"), QStringLiteral("release")};
    enum { Tap, Press, Release };
    int number = 0;
    int action = Tap;
    int hold = 0;
    if (!r.integer(QStringLiteral("key"), 0, 255, number)
        || !r.optionalChoice(QStringLiteral("action"), actions, Tap, action)
        || !r.optionalInteger(QStringLiteral("hold"), 0, kMaxWaitMs, kDefaultHoldMs, hold))
        return false;
    const QString key = QStringLiteral("key %1").arg(number);
    if (action != Release)
        out.append({wait, mcusim::keyFrame(quint8(number), 1), key + QStringLiteral(" pressed")});
    if (action != Press)
        out.append({action == Tap ? hold : wait, mcusim::keyFrame(quint8(number), 0), key + QStringLiteral(" released")});
    return true;
}

bool readTouch(StepReader& r, int wait, Frames& out)
{
    static const QStringList phases = {QStringLiteral("down"), QStringLiteral("move"), QStringLiteral("up")};
    int phase = 0;
    int x = 0;
    int y = 0;
    if (!r.choice(QStringLiteral("touch"), phases, phase) || !r.integer(QStringLiteral("x"), 0, 0xFFF, x)
        || !r.integer(QStringLiteral("y"), 0, 0xFFF, y))
        return false;
    out.append({wait, mcusim::touchFrame(quint8(phase + 1), x, y),
                QStringLiteral("touch %1 at %2,%3").arg(phases.at(phase)).arg(x).arg(y)});
    return true;
}

bool readIgnition(StepReader& r, int wait, Frames& out)
{
    bool on = false;
    if (!r.boolean(QStringLiteral("ignition"), on))
        return false;
    out.append({wait, mcusim::ignitionFrame(on), QStringLiteral("ignition ") + onOff(on)});
    return true;
}

bool readNight(StepReader& r, int wait, Frames& out)
{
    bool on = false;
    if (!r.boolean(QStringLiteral("night"), on))
        return false;
    out.append({wait, mcusim::nightModeFrame(on), QStringLiteral("night mode ") + onOff(on)});
    return true;
}

bool readReverse(StepReader& r, int wait, Frames& out)
{
    bool on = false;
    if (!r.boolean(QStringLiteral("reverse"), on))
        return false;
    out.append({wait, mcusim::requestFrame(0x0B, on ? 0x01 : 0x00), QStringLiteral("reverse gear ") + onOff(on)});
    return true;
}

bool readRequest(StepReader& r, int wait, Frames& out)
{
    QStringList names;
    for (const NamedRequest& req : kNamedRequests)
        names << QLatin1String(req.name);
    int index = 0;
    if (!r.choice(QStringLiteral("request"), names, index))
        return false;
    const NamedRequest& req = kNamedRequests[index];
    out.append({wait, mcusim::requestFrame(req.a, req.b), QStringLiteral("request ") + names.at(index)});
    return true;
}

bool readSelect(StepReader& r, int wait, Frames& out)
{
    int choice = 0;
    if (!r.integer(QStringLiteral("select"), 0, 5, choice))
        return false;
    out.append({wait, mcusim::requestFrame(0x0A, quint8(choice)), QStringLiteral("select %1").arg(choice)});
    return true;
}

bool readVersion(StepReader& r, int wait, Frames& out)
{
    QByteArray v;
    if (!r.hexBytes(QStringLiteral("version"), 3, v))
        return false;
    out.append({wait, mcusim::versionFrame(quint8(v[0]), quint8(v[1]), quint8(v[2])),
                QStringLiteral("version ") + QString::fromLatin1(v.toHex().toUpper())});
    return true;
}

bool readRaw(StepReader& r, int wait, Frames& out)
{
    QByteArray raw;
    if (!r.hexBytes(QStringLiteral("raw"), -1, raw))
        return false;
    out.append({wait, raw, r.text(QStringLiteral("label"), QStringLiteral("raw bytes"))});
    return true;
}

// The things a step can send, the fields each takes besides its own and "wait", and
// the reader that turns the step into frames.
struct Action { const char* name; const char* extraFields; bool (*read)(StepReader&, int, Frames&); };
constexpr Action kActions[] = {
    {"key", "action,hold", readKey},
    {"touch", "x,y", readTouch},
    {"ignition", "", readIgnition},
    {"night", "", readNight},
    {"reverse", "", readReverse},
    {"request", "", readRequest},
    {"select", "", readSelect},
    {"version", "", readVersion},
    {"raw", "label", readRaw},
};

bool readStep(const QJsonObject& step, int number, Frames& out, QString& error)
{
    StepReader r(step, number);
    const Action* action = nullptr;
    for (const Action& a : kActions) {
        if (!step.contains(QLatin1String(a.name)))
            continue;
        if (action) {
            r.fail(QStringLiteral("\"%1\" and \"%2\" in one step").arg(QLatin1String(action->name), QLatin1String(a.name)));
            error = r.error();
            return false;
        }
        action = &a;
    }
    QStringList allowed = {QStringLiteral("wait")};
    if (action) {
        allowed << QLatin1String(action->name)
                << QString::fromLatin1(action->extraFields).split(QLatin1Char(','), Qt::SkipEmptyParts);
    }
    int wait = 0;
    bool ok = r.onlyFields(allowed) && r.optionalInteger(QStringLiteral("wait"), 0, kMaxWaitMs, 0, wait);
    if (ok && action) {
        ok = action->read(r, wait, out);
    } else if (ok && step.contains(QStringLiteral("wait"))) {
        // A step of only "wait" pauses the scenario.
        out.append({wait, QByteArray(), QStringLiteral("pause")});
    } else if (ok) {
        ok = r.fail(QStringLiteral("nothing to send: name one of key, touch, ignition, night, reverse, "
                                   "request, select, version, raw"));
    }
    if (!ok)
        error = r.error();
    return ok;
}

} // namespace

bool parseMcuScenario(const QByteArray& json, McuScenario& scenario, QString& error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        error = QStringLiteral("not valid JSON: %1 at byte %2").arg(parseError.errorString()).arg(parseError.offset);
        return false;
    }
    if (!document.isObject()) {
        error = QStringLiteral("the scenario must be a JSON object with a \"steps\" list");
        return false;
    }
    const QJsonObject root = document.object();
    static const QStringList topLevel = {QStringLiteral("description"), QStringLiteral("loop"), QStringLiteral("steps")};
    for (const QString& key : root.keys()) {
        if (!topLevel.contains(key)) {
            error = QStringLiteral("unknown field \"%1\" (expected description, loop, steps)").arg(key);
            return false;
        }
    }
    McuScenario result;
    const QJsonValue description = root.value(QStringLiteral("description"));
    const QJsonValue loop = root.value(QStringLiteral("loop"));
    const QJsonValue steps = root.value(QStringLiteral("steps"));
    if (!description.isUndefined() && !description.isString()) {
        error = QStringLiteral("\"description\" must be text");
        return false;
    }
    if (!loop.isUndefined() && !loop.isBool()) {
        error = QStringLiteral("\"loop\" must be true or false");
        return false;
    }
    if (!steps.isArray() || steps.toArray().isEmpty()) {
        error = QStringLiteral("\"steps\" must be a list with at least one step");
        return false;
    }
    result.description = description.toString();
    result.loop = loop.toBool(false);
    int number = 0;
    for (const QJsonValue& step : steps.toArray()) {
        ++number;
        if (!step.isObject()) {
            error = QStringLiteral("step %1: must be an object such as {\"key\": 14}").arg(number);
            return false;
        }
        if (!readStep(step.toObject(), number, result.frames, error))
            return false;
    }
    scenario = result;
    return true;
}

bool loadMcuScenario(const QString& path, McuScenario& scenario, QString& error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("%1: cannot read: %2").arg(path, file.errorString());
        return false;
    }
    // Scenarios are small; anything huge is not one.
    constexpr qint64 kMaxScenarioBytes = 4 * 1024 * 1024;
    if (file.size() > kMaxScenarioBytes) {
        error = QStringLiteral("%1: larger than %2 bytes, not a scenario").arg(path).arg(kMaxScenarioBytes);
        return false;
    }
    if (!parseMcuScenario(file.readAll(), scenario, error)) {
        error = QStringLiteral("%1: %2").arg(path, error);
        return false;
    }
    return true;
}
