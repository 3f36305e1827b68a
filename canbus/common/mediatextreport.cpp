#include "common/mediatextreport.h"

#include "common/textcodec.h"

namespace canbus {

QString elideText(const QString& text, int maxChars, int keepChars)
{
    if (text.size() <= maxChars)
        return text;
    return text.left(keepChars) + QLatin1String("...");
}

QList<QByteArray> splitTextFrames(FrameFamily family, const SplitTextForm& form,
                                  const QByteArray& text)
{
    const int chunk = qMax(form.chunkBytes, 0);
    const QByteArray first = text.left(chunk);
    const QByteArray second = text.mid(first.size(), chunk);
    return {buildFrame(family, form.firstType, QByteArray(1, char(form.lead)) + first),
            buildFrame(family, form.secondType, QByteArray(1, char(form.lead)) + second)};
}

QByteArray utf16BeCountingMark(const QString& text)
{
    return encodeUtf16(text, Utf16Order::BigEndian) + QByteArray(2, '\0');
}

} // namespace canbus
