#pragma once
// The text encodings boxes use for names, titles and messages, in both directions.
// Decoding never fails: bytes that don't form text become U+FFFD or are cut where the
// encoding's rule says the text ends.

#include <QByteArray>
#include <QString>

namespace canbus {

enum class Utf16Order { BigEndian, LittleEndian };

// UTF-16 without a byte-order mark; an odd last byte is dropped.
QString decodeUtf16(const QByteArray& bytes, Utf16Order order);
// UTF-16 that may start with a byte-order mark, which then decides the order; without
// one, `fallback` is used.
QString decodeUtf16Bom(const QByteArray& bytes, Utf16Order fallback = Utf16Order::BigEndian);
// GBK up to the first zero byte; a character cut off at the end is dropped.
QString decodeGbk(const QByteArray& bytes);
// UTF-8 up to the first zero byte.
QString decodeUtf8(const QByteArray& bytes);

QByteArray encodeUtf16(const QString& text, Utf16Order order, bool withBom = false);
QByteArray encodeGbk(const QString& text);
QByteArray encodeUtf8(const QString& text);

} // namespace canbus
