#include "common/textcodec.h"

#include <QTextCodec>

namespace canbus {

namespace {

QTextCodec* codec(const char* name)
{
    // QTextCodec keeps its codecs for the life of the process; looking one up is a
    // hash lookup, but the hot paths call this per frame, so keep the pointer.
    return QTextCodec::codecForName(name);
}

QTextCodec* utf16Codec(Utf16Order order)
{
    static QTextCodec* const be = codec("UTF-16BE");
    static QTextCodec* const le = codec("UTF-16LE");
    return order == Utf16Order::BigEndian ? be : le;
}

QByteArray upToZero(const QByteArray& bytes)
{
    const int zero = bytes.indexOf('\0');
    return zero < 0 ? bytes : bytes.left(zero);
}

} // namespace

QString decodeUtf16(const QByteArray& bytes, Utf16Order order)
{
    // The order is known: a leading FE FF is text, not a mark to act on.
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return utf16Codec(order)->toUnicode(bytes.constData(), bytes.size() & ~1, &state);
}

QString decodeUtf16Bom(const QByteArray& bytes, Utf16Order fallback)
{
    if (bytes.size() >= 2) {
        const auto b0 = static_cast<quint8>(bytes.at(0));
        const auto b1 = static_cast<quint8>(bytes.at(1));
        if (b0 == 0xFE && b1 == 0xFF)
            return decodeUtf16(bytes.mid(2), Utf16Order::BigEndian);
        if (b0 == 0xFF && b1 == 0xFE)
            return decodeUtf16(bytes.mid(2), Utf16Order::LittleEndian);
    }
    return decodeUtf16(bytes, fallback);
}

QString decodeGbk(const QByteArray& bytes)
{
    static QTextCodec* const gbk = codec("GBK");
    const QByteArray text = upToZero(bytes);
    return gbk ? gbk->toUnicode(text) : QString::fromLatin1(text);
}

QString decodeUtf8(const QByteArray& bytes)
{
    return QString::fromUtf8(upToZero(bytes));
}

QByteArray encodeUtf16(const QString& text, Utf16Order order, bool withBom)
{
    QByteArray bytes;
    if (withBom)
        bytes = order == Utf16Order::BigEndian ? QByteArray("\xFE\xFF", 2) : QByteArray("\xFF\xFE", 2);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);   // the mark is ours to add
    return bytes + utf16Codec(order)->fromUnicode(text.constData(), text.size(), &state);
}

QByteArray encodeGbk(const QString& text)
{
    static QTextCodec* const gbk = codec("GBK");
    return gbk ? gbk->fromUnicode(text) : text.toLatin1();
}

QByteArray encodeUtf8(const QString& text)
{
    return text.toUtf8();
}

} // namespace canbus
