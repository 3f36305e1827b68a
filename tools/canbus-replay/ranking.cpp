#include "ranking.h"

#include <algorithm>
#include <tuple>

namespace replay {

QList<Summary> ranked(QList<Summary> summaries)
{
    std::stable_sort(summaries.begin(), summaries.end(), [](const Summary& a, const Summary& b) {
        // Larger is better for the first three, smaller for the rest.
        return std::make_tuple(b.understood(), b.events, b.accepted, a.refused, a.dropped, a.protocol)
            < std::make_tuple(a.understood(), a.events, a.accepted, b.refused, b.dropped, b.protocol);
    });
    return summaries;
}

QString summaryText(const Summary& s)
{
    return QStringLiteral("protocol %1: %2 bytes in; frames: %3 accepted (%4 of unknown type), %5 refused; "
                          "%6 bytes dropped; %7 sent")
        .arg(s.protocol)
        .arg(s.bytesIn)
        .arg(s.accepted)
        .arg(s.unknown)
        .arg(s.refused)
        .arg(s.dropped)
        .arg(s.sent);
}

} // namespace replay
