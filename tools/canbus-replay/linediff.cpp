#include "linediff.h"

#include <algorithm>
#include <vector>

namespace replay {

namespace {

QStringList byPosition(const QStringList& a, const QStringList& b)
{
    QStringList out;
    for (int i = 0; i < std::max(a.size(), b.size()); ++i) {
        const bool inA = i < a.size();
        const bool inB = i < b.size();
        if (inA && inB && a.at(i) == b.at(i))
            continue;
        if (inA)
            out.append(QStringLiteral("- ") + a.at(i));
        if (inB)
            out.append(QStringLiteral("+ ") + b.at(i));
    }
    return out;
}

} // namespace

QStringList lineDiff(const QStringList& a, const QStringList& b, qint64 maxCells)
{
    const int n = a.size();
    const int m = b.size();
    if (qint64(n + 1) * (m + 1) > maxCells)
        return byPosition(a, b);
    // common[i][j]: the longest shared run of a[i..] and b[j..].
    std::vector<int> common(size_t(n + 1) * size_t(m + 1), 0);
    auto at = [&](int i, int j) -> int& { return common[size_t(i) * size_t(m + 1) + size_t(j)]; };
    for (int i = n - 1; i >= 0; --i) {
        for (int j = m - 1; j >= 0; --j)
            at(i, j) = a.at(i) == b.at(j) ? at(i + 1, j + 1) + 1 : std::max(at(i + 1, j), at(i, j + 1));
    }
    QStringList out;
    int i = 0;
    int j = 0;
    while (i < n || j < m) {
        if (i < n && j < m && a.at(i) == b.at(j)) {
            ++i;
            ++j;
        } else if (j >= m || (i < n && at(i + 1, j) >= at(i, j + 1))) {
            out.append(QStringLiteral("- ") + a.at(i++));
        } else {
            out.append(QStringLiteral("+ ") + b.at(j++));
        }
    }
    return out;
}

} // namespace replay
