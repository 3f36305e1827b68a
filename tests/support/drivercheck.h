#pragma once
// Pieces the driver suites share: the driver's own record, numbers joined for one
// comparison, which signals a frame set off, and the shortest whole frame of a type.
#include <QSignalSpy>
#include <QStringList>
#include <QtTest>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>
#include "driverharness.h"

// The driver's own record (getDataInfo) as its type.
template <typename Info>
Info infoOf(const DriverHarness& h)
{
    return h.driver()->getDataInfo().value<Info>();
}

// "1 0 255": several numbers compared at once, the failure naming them all.
inline QString ints(std::initializer_list<int> values)
{
    QStringList out;
    for (int v : values)
        out << QString::number(v);
    return out.join(QLatin1Char(' '));
}

// Feeds the frames and names each of the driver's signals that went out, with its
// count ("dataChanged x2"), in the order of `names` (normalised signatures).
inline QStringList signalCounts(DriverHarness& h, std::initializer_list<const char*> names,
                                const QList<QByteArray>& frames)
{
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (const char* s : names)
        spies.push_back(std::make_unique<QSignalSpy>(h.driver(), QByteArray("2").append(s).constData()));
    for (const QByteArray& f : frames)
        h.feed(f);
    QStringList out;
    auto name = names.begin();
    for (std::size_t i = 0; i < spies.size(); ++i, ++name) {
        if (!spies[i]->isEmpty())
            out << QStringLiteral("%1 x%2").arg(QString(*name).section('(', 0, 0)).arg(spies[i]->count());
    }
    return out;
}

// Rows "type" and "minimum" (whole-frame length) named "<family><type> below <minimum>".
inline void addShortFrameRows(const char* family, std::initializer_list<std::pair<int, int>> rows)
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("minimum");
    for (const auto& r : rows)
        QTest::addRow("%s%02x below %d", family, r.first, r.second) << r.first << r.second;
}

// A frame one byte short of `whole` is taken (the check says 1) but does nothing;
// `whole` itself is acted on.
inline void verifyShortFrame(DriverHarness& h, const QByteArray& whole)
{
    h.watchActivity();
    QCOMPARE(h.driver()->checkProtocolData(whole.left(whole.size() - 1)), 1);
    QCOMPARE(h.activity(), 0);
    QCOMPARE(h.driver()->checkProtocolData(whole), 1);
    QVERIFY(h.activity() > 0);
}
