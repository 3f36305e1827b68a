// Writes the starting corpora of the fuzz targets:
//
//   fuzz_seedgen <scenarios dir> <dictionary> <corpus dir>
//
// fuzz_receive gets, for every driver, the frames of its box scenarios (scenarios/<id>/)
// read by read, all in one go and cut at odd places, and for every driver frames of
// all 256 types of its family. fuzz_commands gets, for every driver, every command
// key of the dictionary with the usual values, and one of each other request, once on
// a fresh driver and once after the box's frames have filled its records. fuzz_mcu
// gets the MCU scenarios (scenarios/mcu/) read by read and cut at odd places, and whole
// firmware updates of a few sizes, with a request out of range among them.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cstdio>

#include "commandcase.h"
#include "driverfactory.h"
#include "fixedrandom.h"
#include "mcucase.h"
#include "mcuscenario.h"
#include "mcusimulator.h"
#include "framefamily.h"
#include "receivecase.h"
#include "scenario.h"

namespace {

using canbusfuzz::encodeReceive;
namespace op = canbusfuzz::command;

bool writeSeed(const QString& dir, const QString& name, const QByteArray& bytes)
{
    QFile file(dir + QLatin1Char('/') + name + QStringLiteral(".bin"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file.fileName()));
        return false;
    }
    return true;
}

QList<QByteArray> cutAnywhere(const QByteArray& stream, FixedRandom& rng)
{
    QList<QByteArray> reads;
    for (int pos = 0; pos < stream.size();) {
        const int n = 1 + int(rng.next(12));
        reads.append(stream.mid(pos, n));
        pos += n;
    }
    return reads;
}

QList<QByteArray> scenarioFrames(const QString& path, canbus::FrameFamily family)
{
    canbox::Scenario scenario;
    QString error;
    if (!canbox::loadScenario(path, scenario, &error)) {
        std::fprintf(stderr, "skipped: %s\n", qPrintable(error));
        return {};
    }
    QList<QByteArray> frames;
    for (const canbox::ScenarioStep& step : scenario.handshake + scenario.steps)
        frames.append(step.wireBytes(family));
    return frames;
}

QStringList scenarioFiles(const QString& scenarioDir, int id)
{
    const QDir dir(scenarioDir + QLatin1Char('/') + QString::number(id));
    QStringList files;
    for (const QString& file : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name))
        files.append(dir.filePath(file));
    return files;
}

bool writeReceiveSeeds(const QString& scenarioDir, const QString& out)
{
    const int count = canbusfuzz::FuzzModule::driverCount();
    bool ok = true;
    for (int i = 0; i < count; ++i) {
        const canbus::DriverEntry& e = canbusfuzz::FuzzModule::entry(quint8(i));
        const quint8 index = quint8(i);
        FixedRandom rng(quint32(e.id));

        for (const QString& file : scenarioFiles(scenarioDir, e.id)) {
            const QList<QByteArray> frames = scenarioFrames(file, e.family);
            if (frames.isEmpty())
                continue;
            const QString base = QStringLiteral("seed-%1-%2").arg(e.id).arg(QFileInfo(file).baseName());
            ok &= writeSeed(out, base + QStringLiteral("-frames"), encodeReceive(index, frames));
            ok &= writeSeed(out, base + QStringLiteral("-stream"),
                            encodeReceive(index, {frames.join()}));
            ok &= writeSeed(out, base + QStringLiteral("-cut"),
                            encodeReceive(index, cutAnywhere(frames.join(), rng)));
        }

        // Frames of every type with some data bytes, a quarter of the types a seed.
        for (int quarter = 0; quarter < 4; ++quarter) {
            QList<QByteArray> frames;
            for (int type = quarter * 64; type < (quarter + 1) * 64; ++type) {
                // Lengths up to 32 bytes reach handlers that want a long frame.
                QByteArray data(1 + int(rng.next(32)), '\0');
                for (char& c : data)
                    c = char(rng.next(256));
                frames.append(canbus::buildFrame(e.family, quint8(type), data));
            }
            ok &= writeSeed(out, QStringLiteral("seed-%1-types%2").arg(e.id).arg(quarter),
                            encodeReceive(index, frames));
        }
    }
    return ok;
}

// The words of a libFuzzer dictionary: one quoted string a line, \xNN and \\ escapes.
QList<QByteArray> dictionaryWords(const QString& path)
{
    QFile file(path);
    QList<QByteArray> words;
    if (!file.open(QIODevice::ReadOnly))
        return words;
    static const QRegularExpression quoted(QStringLiteral("^\\s*(?:\\w+\\s*=\\s*)?\"(.*)\"\\s*$"));
    while (!file.atEnd()) {
        const QRegularExpressionMatch m = quoted.match(QString::fromUtf8(file.readLine()));
        if (!m.hasMatch())
            continue;
        const QByteArray raw = m.captured(1).toUtf8();
        QByteArray word;
        for (int i = 0; i < raw.size(); ++i) {
            if (raw.at(i) == '\\' && i + 3 < raw.size() && raw.at(i + 1) == 'x') {
                word.append(char(raw.mid(i + 2, 2).toInt(nullptr, 16)));
                i += 3;
            } else if (raw.at(i) == '\\' && i + 1 < raw.size()) {
                word.append(raw.at(++i));
            } else {
                word.append(raw.at(i));
            }
        }
        words.append(word);
    }
    return words;
}

QByteArray text(const char* s) { return QByteArray(s).append('\0'); }
QByteArray text(const QByteArray& s) { return QByteArray(s).append('\0'); }
QByteArray int32(qint32 v)
{
    QByteArray b;
    for (int i = 0; i < 4; ++i)
        b.append(char((quint32(v) >> (8 * i)) & 0xFF));
    return b;
}
QByteArray opByte(op::Op o) { return QByteArray(1, char(o)); }

// One of each request the head unit makes besides the command keys.
QByteArray everyRequest()
{
    QByteArray s;
    s += opByte(op::Source) + char(1) + char(2) + char(0) + int32(2) + char(0) + int32(9850);
    s += opByte(op::Source) + char(13) + char(7) + char(0) + int32(3) + char(0) + int32(12)
         + char(0) + int32(65) + char(0) + int32(240) + char(2) + text("Title") + char(2)
         + text("Artist");
    s += opByte(op::Source) + char(24) + char(3) + char(0) + int32(3) + char(2) + text("Name")
         + char(2) + text("0123456789");
    s += opByte(op::Source) + char(22) + char(0);
    s += opByte(op::Time) + int32(13) + int32(45) + int32(30);
    s += opByte(op::Date) + int32(2024) + int32(2) + int32(29);
    s += opByte(op::Reverse) + char(1) + opByte(op::Reverse) + char(0);
    s += opByte(op::Call) + char(1) + opByte(op::Call) + char(0);
    s += opByte(op::Eq) + int32(1) + int32(5);
    s += opByte(op::Power) + char(0) + opByte(op::Power) + char(1);
    s += opByte(op::ReverseLine) + char(1) + opByte(op::RightDriver) + char(1);
    s += opByte(op::Language) + text("ch_jt") + opByte(op::Language) + text("en");
    // The panel signals in kPanel's order: thirteen without arguments, two levels,
    // three switches, one touch.
    for (int i = 0; i < 13; ++i)
        s += opByte(op::Panel) + char(i);
    s += opByte(op::Panel) + char(13) + int32(2) + opByte(op::Panel) + char(14) + int32(1);
    for (int i = 15; i < 18; ++i)
        s += opByte(op::Panel) + char(i) + char(1);
    s += opByte(op::Panel) + char(18) + int32(100) + int32(80) + int32(800) + int32(480) + int32(0);
    s += opByte(op::Panel) + char(18) + int32(500) + int32(90) + int32(800) + int32(480) + int32(2);
    s += opByte(op::DriverSlot) + char(0) + opByte(op::DriverSlot) + char(1);
    s += opByte(op::DriverSlot) + char(2) + char(1) + opByte(op::DriverSlot) + char(3);
    s += opByte(op::FireTimers) + opByte(op::Settle);
    return s;
}

// Read operations that bring the box's frames in, so that commands meet a driver whose
// records are filled: the frames of its scenarios, or a few frames of its family.
QByteArray boxReads(const QString& scenarioDir, const canbus::DriverEntry& e)
{
    QByteArray frames;
    for (const QString& file : scenarioFiles(scenarioDir, e.id))
        frames += scenarioFrames(file, e.family).join();
    if (frames.isEmpty()) {
        for (quint8 type : {0x20, 0x21, 0x22, 0x24, 0x41, 0x72, 0x73})
            frames += canbus::buildFrame(e.family, type, QByteArray(8, '\x01'));
    }
    QByteArray ops;
    for (int pos = 0; pos < frames.size(); pos += 255) {
        const QByteArray part = frames.mid(pos, 255);
        ops += opByte(op::Read) + char(part.size()) + part;
    }
    return ops;
}

bool writeCommandSeeds(const QString& scenarioDir, const QString& dictionary, const QString& out)
{
    const QList<QByteArray> words = dictionaryWords(dictionary);
    const int count = canbusfuzz::FuzzModule::driverCount();
    bool ok = true;
    for (int i = 0; i < count; ++i) {
        const canbus::DriverEntry& e = canbusfuzz::FuzzModule::entry(quint8(i));
        const int id = e.id;
        const QByteArray head(1, char(i));
        ok &= writeSeed(out, QStringLiteral("seed-%1-requests").arg(id), head + everyRequest());
        ok &= writeSeed(out, QStringLiteral("seed-%1-filled").arg(id),
                        head + boxReads(scenarioDir, e) + everyRequest());
        // Every word as a key with the values the tables test for, a few keys a seed.
        QByteArray keys;
        int part = 0;
        for (const QByteArray& word : words) {
            for (const char* value : {"1", "0", "on", "add", "sub"})
                keys += opByte(op::StateText) + text(word) + text(value);
            keys += opByte(op::StateNumber) + text(word) + int32(3);
            if (keys.size() > 1500 || &word == &words.last()) {
                ok &= writeSeed(out, QStringLiteral("seed-%1-keys%2").arg(id).arg(part++), head + keys);
                keys.clear();
            }
        }
    }
    return ok;
}

} // namespace

bool writeMcuSeeds(const QString& scenarioDir, const QString& out)
{
    bool ok = true;
    FixedRandom rng(4242);
    const QDir dir(scenarioDir + QStringLiteral("/mcu"));
    for (const QString& file : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        McuScenario scenario;
        QString error;
        if (!loadMcuScenario(dir.filePath(file), scenario, error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            ok = false;
            continue;
        }
        QList<QByteArray> frames;
        for (const McuScenarioFrame& frame : scenario.frames)
            frames.append(frame.bytes);
        const QString base = QStringLiteral("seed-mcu-%1").arg(QFileInfo(file).baseName());
        ok &= writeSeed(out, base + QStringLiteral("-frames"), canbusfuzz::encodeMcu(false, 0, frames));
        ok &= writeSeed(out, base + QStringLiteral("-cut"), canbusfuzz::encodeMcu(false, 0, cutAnywhere(frames.join(), rng)));
    }
    // Whole updates as the MCU runs them: ready, every packet asked for, done.
    for (const int size : {1, 128, 129, 1000, canbusfuzz::kMaxFirmwareSize}) {
        const quint32 packets = quint32((size + 127) / 128);
        QList<QByteArray> replies{mcusim::updateReadyFrame(), mcusim::packetRequestFrame(packets)};
        for (quint32 n = 0; n < packets; ++n)
            replies.append(mcusim::packetRequestFrame(n));
        replies.append(mcusim::updateDoneFrame());
        ok &= writeSeed(out, QStringLiteral("seed-mcu-update-%1").arg(size), canbusfuzz::encodeMcu(true, size, replies));
    }
    return ok;
}

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s <scenarios dir> <dictionary> <corpus dir>\n", argv[0]);
        return 2;
    }
    const QString corpus = QString::fromLocal8Bit(argv[3]);
    const QString receive = corpus + QStringLiteral("/fuzz_receive");
    const QString commands = corpus + QStringLiteral("/fuzz_commands");
    const QString mcu = corpus + QStringLiteral("/fuzz_mcu");
    if (!QDir().mkpath(receive) || !QDir().mkpath(commands) || !QDir().mkpath(mcu)) {
        std::fprintf(stderr, "cannot create %s\n", qPrintable(corpus));
        return 1;
    }
    const bool ok = writeReceiveSeeds(QString::fromLocal8Bit(argv[1]), receive)
        && writeCommandSeeds(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]), commands)
        && writeMcuSeeds(QString::fromLocal8Bit(argv[1]), mcu);
    return ok ? 0 : 1;
}
