#include "common/frametext.h"

namespace canbus {

QByteArray utf16Text(const QString& text, Utf16Order order, int maxBytes)
{
    int units = qMax(0, maxBytes) / 2;
    if (units >= text.size())
        return encodeUtf16(text, order);
    if (units > 0 && text.at(units - 1).isHighSurrogate())
        --units;
    return encodeUtf16(text.left(units), order);
}

QByteArray utf8Text(const QString& text, int maxBytes)
{
    const QByteArray bytes = encodeUtf8(text);
    if (bytes.size() <= maxBytes)
        return bytes;
    int n = qMax(0, maxBytes);
    // Step back over continuation bytes (10xxxxxx) to the start of the cut character.
    while (n > 0 && (static_cast<quint8>(bytes.at(n)) & 0xC0) == 0x80)
        --n;
    return bytes.left(n);
}

} // namespace canbus
