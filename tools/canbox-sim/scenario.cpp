#include "scenario.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <cmath>

#include "hexbytes.h"

namespace canbox {

namespace {

const QSet<QString> kTopKeys = {QStringLiteral("description"), QStringLiteral("protocol"),
                                QStringLiteral("waitForConnect"), QStringLiteral("handshake"),
                                QStringLiteral("steps")};
const QSet<QString> kStepKeys = {QStringLiteral("delay"), QStringLiteral("type"),
                                 QStringLiteral("data"), QStringLiteral("raw"),
                                 QStringLiteral("sum"), QStringLiteral("note")};

QString quoted(const QString& key)
{
    return QLatin1Char('"') + key + QLatin1Char('"');
}

// Reads one document. Every helper records the first rule broken and returns a
// neutral value; callers test failed() before they go on.
class Reader
{
public:
    bool failed() const { return !m_error.isEmpty(); }
    QString error() const { return m_error; }

    void fail(const QString& text)
    {
        if (m_error.isEmpty())
            m_error = text;
    }

    // A JSON number that is a whole number in [low, high]; the range test comes
    // before the conversion, so no out-of-range double ever reaches an int.
    int wholeNumber(const QJsonValue& v, double low, double high, const QString& what)
    {
        const double d = v.toDouble();
        if (!v.isDouble() || d != std::floor(d) || d < low || d > high) {
            fail(QStringLiteral("%1 must be a whole number from %2 to %3")
                     .arg(what).arg(qint64(low)).arg(qint64(high)));
            return 0;
        }
        return int(d);
    }

    quint8 byteValue(const QJsonValue& v, const QString& what)
    {
        if (!v.isString())
            return quint8(wholeNumber(v, 0, 255, what));
        quint8 b = 0;
        if (!parseHexByte(v.toString(), b))
            fail(QStringLiteral("%1: '%2' is not a hex byte").arg(what, v.toString()));
        return b;
    }

    QByteArray bytesValue(const QJsonValue& v, int maxBytes, const QString& what)
    {
        QByteArray bytes;
        if (v.isString()) {
            QString why;
            if (!parseHexBytes(v.toString(), bytes, &why))
                fail(what + QStringLiteral(": ") + why);
        } else if (v.isArray()) {
            const QJsonArray items = v.toArray();
            for (int i = 0; i < items.size() && !failed(); ++i)
                bytes.append(char(byteValue(items.at(i), QStringLiteral("%1[%2]").arg(what).arg(i))));
        } else {
            fail(what + QStringLiteral(" must be a hex string or an array of bytes"));
        }
        if (bytes.size() > maxBytes)
            fail(QStringLiteral("%1 has %2 bytes, at most %3 fit").arg(what).arg(bytes.size()).arg(maxBytes));
        return bytes;
    }

    QString text(const QJsonValue& v, const QString& what)
    {
        if (!v.isString())
            fail(what + QStringLiteral(" must be text"));
        return v.toString();
    }

    void checkKeys(const QJsonObject& object, const QSet<QString>& allowed, const QString& where)
    {
        for (auto it = object.begin(); it != object.end(); ++it) {
            if (!allowed.contains(it.key()))
                fail(QStringLiteral("%1unknown key %2").arg(where, quoted(it.key())));
        }
    }

    ScenarioStep step(const QJsonValue& value, const QString& where)
    {
        ScenarioStep step;
        if (!value.isObject()) {
            fail(where + QStringLiteral("a step must be an object"));
            return step;
        }
        const QJsonObject o = value.toObject();
        checkKeys(o, kStepKeys, where);
        const bool hasType = o.contains(QLatin1String("type"));
        const bool hasRaw = o.contains(QLatin1String("raw"));
        if (hasType == hasRaw)
            fail(where + QStringLiteral("needs either \"type\" (with \"data\") or \"raw\""));
        if (hasRaw && o.contains(QLatin1String("data")))
            fail(where + QStringLiteral("\"data\" belongs to a typed step; a raw step has all its bytes in \"raw\""));
        if (o.contains(QLatin1String("sum")) && (!hasRaw || !o.value(QLatin1String("sum")).isBool()))
            fail(where + QStringLiteral("\"sum\" is true or false, on a raw step"));
        if (failed())
            return step;

        if (o.contains(QLatin1String("delay")))
            step.delayMs = wholeNumber(o.value(QLatin1String("delay")), 0, kMaxDelayMs, where + quoted(QStringLiteral("delay")));
        if (o.contains(QLatin1String("note")))
            step.note = text(o.value(QLatin1String("note")), where + quoted(QStringLiteral("note")));
        if (hasRaw) {
            step.raw = true;
            step.sum = o.value(QLatin1String("sum")).toBool();
            step.data = bytesValue(o.value(QLatin1String("raw")), kMaxRawBytes, where + quoted(QStringLiteral("raw")));
            if (step.data.isEmpty())
                fail(where + QStringLiteral("\"raw\" has no bytes"));
        } else {
            step.type = byteValue(o.value(QLatin1String("type")), where + quoted(QStringLiteral("type")));
            if (o.contains(QLatin1String("data")))
                step.data = bytesValue(o.value(QLatin1String("data")), kMaxDataBytes, where + quoted(QStringLiteral("data")));
        }
        return step;
    }

    QList<ScenarioStep> steps(const QJsonValue& value, const QString& listName)
    {
        QList<ScenarioStep> steps;
        if (!value.isArray()) {
            fail(quoted(listName) + QStringLiteral(" must be an array of steps"));
            return steps;
        }
        const QJsonArray items = value.toArray();
        for (int i = 0; i < items.size() && !failed(); ++i) {
            const QString where = listName == QLatin1String("steps")
                ? QStringLiteral("step %1: ").arg(i + 1)
                : QStringLiteral("%1 step %2: ").arg(listName).arg(i + 1);
            steps.append(step(items.at(i), where));
        }
        return steps;
    }

    Scenario document(const QByteArray& json)
    {
        Scenario scenario;
        QJsonParseError syntax;
        const QJsonDocument doc = QJsonDocument::fromJson(json, &syntax);
        if (syntax.error != QJsonParseError::NoError) {
            fail(QStringLiteral("not valid JSON at %1: %2").arg(position(json, syntax.offset), syntax.errorString()));
            return scenario;
        }
        if (doc.isArray()) {
            scenario.steps = steps(doc.array(), QStringLiteral("steps"));
            return scenario;
        }
        const QJsonObject o = doc.object();
        checkKeys(o, kTopKeys, QString());
        if (!o.contains(QLatin1String("steps")))
            fail(QStringLiteral("no \"steps\": a scenario is a list of steps"));
        if (failed())
            return scenario;
        scenario.steps = steps(o.value(QLatin1String("steps")), QStringLiteral("steps"));
        if (o.contains(QLatin1String("handshake")))
            scenario.handshake = steps(o.value(QLatin1String("handshake")), QStringLiteral("handshake"));
        if (o.contains(QLatin1String("description")))
            scenario.description = text(o.value(QLatin1String("description")), QStringLiteral("\"description\""));
        if (o.contains(QLatin1String("protocol")))
            scenario.protocol = wholeNumber(o.value(QLatin1String("protocol")), 1, 255, QStringLiteral("\"protocol\""));
        if (o.contains(QLatin1String("waitForConnect"))) {
            const QJsonValue wait = o.value(QLatin1String("waitForConnect"));
            if (!wait.isBool())
                fail(QStringLiteral("\"waitForConnect\" must be true or false"));
            scenario.waitForConnect = wait.toBool() ? 1 : 0;
        }
        return scenario;
    }

private:
    // "line 3, column 7" for an offset into the text.
    static QString position(const QByteArray& json, int offset)
    {
        int line = 1;
        int column = 1;
        for (int i = 0; i < offset && i < json.size(); ++i) {
            if (json.at(i) == '\n') {
                ++line;
                column = 1;
            } else {
                ++column;
            }
        }
        return QStringLiteral("line %1, column %2").arg(line).arg(column);
    }

    QString m_error;
};

} // namespace

QByteArray ScenarioStep::wireBytes(canbus::FrameFamily family) const
{
    if (!raw)
        return canbus::buildFrame(family, type, data);
    if (!sum)
        return data;
    // Room for the checksum, which the family writes over the frame's last byte(s).
    QByteArray frame = data + QByteArray(family == canbus::FrameFamily::StartFD16 ? 2 : 1, '\0');
    canbus::writeChecksum(family, frame);
    return frame;
}

bool parseScenario(const QByteArray& json, Scenario& out, QString* error)
{
    Reader reader;
    const Scenario scenario = reader.document(json);
    if (reader.failed()) {
        if (error)
            *error = reader.error();
        return false;
    }
    out = scenario;
    return true;
}

bool loadScenario(const QString& path, Scenario& out, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("%1: cannot read: %2").arg(path, file.errorString());
        return false;
    }
    QString why;
    if (!parseScenario(file.readAll(), out, &why)) {
        if (error)
            *error = path + QStringLiteral(": ") + why;
        return false;
    }
    out.name = QFileInfo(path).fileName();
    return true;
}

} // namespace canbox
