#include "hexbytes.h"

#include <QRegularExpression>
#include <QStringList>

namespace canbox {

namespace {

bool hexDigitsToBytes(QStringView digits, QByteArray& out)
{
    if (digits.isEmpty() || digits.size() % 2 != 0)
        return false;
    for (int i = 0; i < digits.size(); i += 2) {
        bool ok = false;
        const uint value = digits.mid(i, 2).toString().toUInt(&ok, 16);
        if (!ok)
            return false;
        out.append(static_cast<char>(value));
    }
    return true;
}

QStringView withoutPrefix(QStringView token)
{
    if (token.size() > 2 && token[0] == QLatin1Char('0')
        && (token[1] == QLatin1Char('x') || token[1] == QLatin1Char('X')))
        return token.mid(2);
    return token;
}

} // namespace

bool parseHexByte(const QString& text, quint8& out)
{
    const QStringView digits = withoutPrefix(QStringView(text).trimmed());
    if (digits.isEmpty() || digits.size() > 2)
        return false;
    bool ok = false;
    const uint value = digits.toString().toUInt(&ok, 16);
    if (!ok)
        return false;
    out = static_cast<quint8>(value);
    return true;
}

bool parseHexBytes(const QString& text, QByteArray& out, QString* error)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,]+"));
    const QStringList tokens = text.split(separators, Qt::SkipEmptyParts);
    QByteArray bytes;
    for (const QString& token : tokens) {
        const QStringView digits = withoutPrefix(token);
        bool ok;
        if (digits.size() == 1) {
            quint8 b = 0;
            ok = parseHexByte(token, b);
            if (ok)
                bytes.append(static_cast<char>(b));
        } else {
            ok = hexDigitsToBytes(digits, bytes);
        }
        if (!ok) {
            if (error)
                *error = QStringLiteral("'%1' is not hex bytes").arg(token);
            return false;
        }
    }
    out = bytes;
    return true;
}

QString spacedHex(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}

} // namespace canbox
