#pragma once
// What two protocols made of one capture, line against line: the longest run of lines
// both share stays, the rest is marked as the first's ("-") or the second's ("+").

#include <QStringList>

namespace replay {

// The lines of `a` and `b` that the other lacks, in order, "- " or "+ " in front.
// Beyond `maxCells` comparisons the lines are paired by position instead.
QStringList lineDiff(const QStringList& a, const QStringList& b, qint64 maxCells = 16 * 1000 * 1000);

} // namespace replay
