#include "common/fixedtextframe.h"

#include <QtGlobal>

namespace canbus {

int placeText(QByteArray& frame, int from, const QByteArray& text, int maxBytes)
{
    if (from < 0 || from >= frame.size() || maxBytes <= 0)
        return 0;
    const int count = qMin(qMin(text.size(), maxBytes), frame.size() - from);
    frame.replace(from, count, text.constData(), count);
    return count;
}

} // namespace canbus
