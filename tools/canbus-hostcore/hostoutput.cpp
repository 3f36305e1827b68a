#include "hostoutput.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaType>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace host {

namespace {

constexpr int kBarWidth = 30;

QString objectName(const QVariant& value)
{
    const QObject* object = value.value<QObject*>();
    if (!object)
        return QStringLiteral("null");
    return object->objectName().isEmpty() ? QString::fromLatin1(object->metaObject()->className())
                                          : object->objectName();
}

} // namespace

HostOutput::HostOutput(Format format)
    : m_format(format), m_out(stdout), m_terminal(format == Text && ::isatty(STDOUT_FILENO))
{
    m_clock.start();
}

HostOutput::HostOutput(Format format, QString* lines) : m_format(format), m_out(lines), m_terminal(false)
{
    m_clock.start();
}

QString HostOutput::valueText(const QVariant& value)
{
    switch (int(value.userType())) {
    case QMetaType::UnknownType:
        return QStringLiteral("?");
    case QMetaType::QString:
        return QLatin1Char('"') + value.toString() + QLatin1Char('"');
    case QMetaType::QByteArray:
        return QStringLiteral("[") + QString::fromLatin1(value.toByteArray().toHex(' ')) + QLatin1Char(']');
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QMetaType::QObjectStar:
        return objectName(value);
    case QMetaType::QVariantList: {
        QStringList items;
        for (const QVariant& item : value.toList())
            items.append(valueText(item));
        return QLatin1Char('[') + items.join(QStringLiteral(", ")) + QLatin1Char(']');
    }
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return QString::number(value.toInt());   // a number, not a character
    default:
        return value.toString();
    }
}

QJsonValue HostOutput::valueJson(const QVariant& value)
{
    switch (int(value.userType())) {
    case QMetaType::UnknownType:
        return QJsonValue();
    case QMetaType::QByteArray:
        return QString::fromLatin1(value.toByteArray().toHex(' '));
    case QMetaType::QObjectStar:
        return objectName(value);
    case QMetaType::QVariantList: {
        QJsonArray items;
        for (const QVariant& item : value.toList())
            items.append(valueJson(item));
        return items;
    }
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return value.toInt();
    default: {
        const QJsonValue json = QJsonValue::fromVariant(value);
        return json.isNull() ? QJsonValue(value.toString()) : json;
    }
    }
}

void HostOutput::emitLine(const QString& kind, const QString& text, QJsonObject json)
{
    if (!m_bar.isEmpty())
        m_out << "\r\033[K";   // the line goes where the bar was; the bar below it
    const double t = m_seconds ? m_seconds() : m_clock.elapsed() / 1000.0;
    if (m_format == Json) {
        json.insert(QStringLiteral("t"), t);
        json.insert(QStringLiteral("event"), kind);
        m_out << QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact)) << '\n';
    } else {
        m_out << QStringLiteral("%1  %2 %3").arg(t, 7, 'f', 3).arg(kind, -7).arg(text) << '\n';
    }
    drawBar();
    m_out.flush();
}

void HostOutput::drawBar()
{
    if (!m_bar.isEmpty())
        m_out << "\r" << m_bar;
}

QString HostOutput::progressBar(int percent)
{
    const int p = std::clamp(percent, 0, 100);
    const int done = p * kBarWidth / 100;
    return QStringLiteral("[%1%2] %3%").arg(QString(done, QLatin1Char('#')), QString(kBarWidth - done, QLatin1Char('-')))
        .arg(p, 3);
}

void HostOutput::progress(int percent)
{
    // The link repeats a value now and then (each start of a pass is 0 again).
    if (percent == m_lastPercent)
        return;
    m_lastPercent = percent;
    const QString bar = progressBar(percent);
    if (!m_terminal) {
        emitLine(m_format == Json ? QStringLiteral("progress") : QStringLiteral("update"), bar,
                 {{QStringLiteral("percent"), percent}});
        return;
    }
    m_bar = QStringLiteral("%1  %2 %3").arg(m_clock.elapsed() / 1000.0, 7, 'f', 3).arg(QStringLiteral("update"), -7).arg(bar);
    drawBar();
    m_out.flush();
}

void HostOutput::endProgress()
{
    if (!m_bar.isEmpty())
        m_out << '\n';
    m_bar.clear();
    m_lastPercent = -1;
    m_out.flush();
}

void HostOutput::record(const QString& name, const Fields& changed)
{
    QStringList parts;
    QJsonObject values;
    for (const auto& field : changed) {
        parts.append(field.first + QLatin1Char('=') + valueText(field.second));
        values.insert(field.first, valueJson(field.second));
    }
    const QString text = parts.isEmpty() ? QStringLiteral("(signalled, no change)") : parts.join(QLatin1Char(' '));
    QJsonObject json{{QStringLiteral("record"), name}, {QStringLiteral("changed"), values}};
    if (m_format == Json)
        emitLine(QStringLiteral("record"), text, json);
    else
        emitLine(name, text, json);
}

void HostOutput::signal(const QString& source, const QString& name, const QList<QByteArray>& parameterNames,
                        const QVariantList& args)
{
    QStringList parts;
    QJsonObject values;
    for (int i = 0; i < args.size(); ++i) {
        const QString param = i < parameterNames.size() && !parameterNames.at(i).isEmpty()
            ? QString::fromLatin1(parameterNames.at(i))
            : QStringLiteral("arg%1").arg(i);
        parts.append(param + QLatin1Char('=') + valueText(args.at(i)));
        values.insert(param, valueJson(args.at(i)));
    }
    const QString text = QStringLiteral("%1.%2 %3").arg(source, name, parts.join(QLatin1Char(' '))).trimmed();
    emitLine(QStringLiteral("signal"), text,
             {{QStringLiteral("source"), source}, {QStringLiteral("name"), name}, {QStringLiteral("args"), values}});
}

void HostOutput::key(int key, bool pressed)
{
    emitLine(QStringLiteral("key"), QStringLiteral("%1 %2").arg(key).arg(pressed ? QStringLiteral("down") : QStringLiteral("up")),
             {{QStringLiteral("key"), key}, {QStringLiteral("pressed"), pressed}});
}

void HostOutput::deviceCall(const QByteArray& device, unsigned long request, unsigned long arg)
{
    const QString path = QString::fromLocal8Bit(device);
    emitLine(QStringLiteral("device"), QStringLiteral("%1 ioctl %2 %3").arg(path).arg(request).arg(arg),
             {{QStringLiteral("device"), path}, {QStringLiteral("request"), double(request)},
              {QStringLiteral("arg"), double(arg)}});
}

void HostOutput::command(const QString& line)
{
    emitLine(QStringLiteral("command"), line, {{QStringLiteral("text"), line}});
}

void HostOutput::trace(const QString& category, const QString& text)
{
    emitLine(QStringLiteral("trace"), category + QLatin1Char(' ') + text,
             {{QStringLiteral("category"), category}, {QStringLiteral("text"), text}});
}

void HostOutput::info(const QString& text)
{
    emitLine(QStringLiteral("info"), text, {{QStringLiteral("text"), text}});
}

void HostOutput::problem(const QString& text)
{
    emitLine(QStringLiteral("error"), text, {{QStringLiteral("text"), text}});
}

void HostOutput::event(const QString& kind, const QString& text, const QJsonObject& json)
{
    emitLine(kind, text, json);
}

} // namespace host
