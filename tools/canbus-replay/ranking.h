#pragma once
// Which protocol a capture speaks: the protocols ordered by the frames their driver
// took and understood, then by what the module made of them (records, keys, signals),
// then by frames taken at all, then by the fewest refused and dropped. Frames of a
// family pass every protocol of that family alike; the types a vehicle's parser knows,
// and what it decodes from them, set the right one apart.

#include <QList>
#include <QString>

#include "replayedmodule.h"

namespace replay {

QList<Summary> ranked(QList<Summary> summaries);

// "frames: 12 accepted (1 of unknown type), 0 refused; 3 bytes dropped; 14 sent"
QString summaryText(const Summary& s);

} // namespace replay
