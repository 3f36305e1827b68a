#include "streams.h"

#include <QDir>

#include <cstdio>

#include "scenario.h"

namespace bench {

using canbus::FrameFamily;

QList<QByteArray> scenarioFrames(const QString& scenarioDir, int id, FrameFamily family)
{
    const QDir dir(scenarioDir + QLatin1Char('/') + QString::number(id));
    QList<QByteArray> frames;
    for (const QString& file : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        canbox::Scenario scenario;
        QString error;
        if (!canbox::loadScenario(dir.filePath(file), scenario, &error)) {
            std::fprintf(stderr, "skipped: %s\n", qPrintable(error));
            continue;
        }
        for (const canbox::ScenarioStep& step : scenario.handshake + scenario.steps) {
            if (!step.raw)
                frames.append(step.wireBytes(family));
        }
    }
    return frames;
}

namespace {

// Where the type byte sits and how many bytes frame it around the data.
struct Layout
{
    int typeAt;
    int head;   // bytes before the data
    int tail;   // checksum bytes after it
};

Layout layoutOf(FrameFamily family)
{
    switch (family) {
    case FrameFamily::Start2E: return {1, 3, 1};
    case FrameFamily::StartAA55:
    case FrameFamily::Start5AA5: return {3, 4, 1};
    case FrameFamily::StartFD8:
    case FrameFamily::StartFCFD: return {2, 3, 1};
    case FrameFamily::StartFD16: return {2, 3, 2};
    }
    return {1, 3, 1};
}

QByteArray randomBytes(FixedRandom& rng, int n)
{
    QByteArray data(n, '\0');
    for (char& c : data)
        c = char(rng.next(256));
    return data;
}

// An FC frame: the FD8 layout under another start byte, which its checksum leaves out.
QByteArray fcFrame(quint8 type, const QByteArray& data)
{
    QByteArray frame = canbus::buildFrame(FrameFamily::StartFCFD, type, data);
    frame[0] = char(0xFC);
    canbus::writeChecksum(FrameFamily::StartFCFD, frame);
    return frame;
}

} // namespace

quint8 frameType(FrameFamily family, const QByteArray& frame)
{
    const int at = layoutOf(family).typeAt;
    return at < frame.size() ? quint8(frame.at(at)) : 0;
}

QByteArray frameData(FrameFamily family, const QByteArray& frame)
{
    const Layout l = layoutOf(family);
    return frame.mid(l.head, qMax(0, frame.size() - l.head - l.tail));
}

QList<QByteArray> syntheticFrames(FrameFamily family, const QList<QByteArray>& templates, int count,
                                  quint32 seed)
{
    FixedRandom rng(seed);
    QList<QByteArray> frames;
    for (int i = 0; i < count; ++i) {
        if (!templates.isEmpty()) {
            const QByteArray& t = templates.at(int(rng.next(quint32(templates.size()))));
            frames.append(canbus::buildFrame(family, frameType(family, t),
                                             randomBytes(rng, frameData(family, t).size())));
        } else if (family == FrameFamily::StartFCFD) {
            const quint8 type = quint8(rng.between(0x01, 0xFE));
            // FD 09: the fixed 10-byte form, six data bytes.
            frames.append(i % 2 ? fcFrame(type, randomBytes(rng, rng.between(1, 12)))
                                : canbus::buildFrame(family, type, randomBytes(rng, 6)));
        } else {
            frames.append(canbus::buildFrame(family, quint8(rng.between(0x01, 0xFE)),
                                             randomBytes(rng, rng.between(1, 12))));
        }
    }
    return frames;
}

QList<QByteArray> cutIntoReads(const QByteArray& stream, quint32 seed, int minRead, int maxRead)
{
    FixedRandom rng(seed);
    QList<QByteArray> reads;
    for (int pos = 0; pos < stream.size();) {
        const int n = rng.between(minRead, maxRead);
        reads.append(stream.mid(pos, n));
        pos += n;
    }
    return reads;
}

} // namespace bench
