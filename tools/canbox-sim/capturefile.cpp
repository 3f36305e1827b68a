#include "capturefile.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTextCodec>

#include <algorithm>

#include "hexbytes.h"

namespace canbox {

namespace {

// More control bytes than this share of a file, and it is taken for raw bytes.
constexpr int kBinaryPercent = 10;

// The module's debug lines that dump a frame, by the function that writes them.
struct DumpLine
{
    const char* function;
    CaptureEntry::Direction direction;
};
constexpr DumpLine kDumpLines[] = {
    {"setData", CaptureEntry::In},
    {"sendCanbusData", CaptureEntry::Out},
};

bool isControl(char c)
{
    const auto b = static_cast<unsigned char>(c);
    return (b < 0x20 && c != '\t' && c != '\n' && c != '\r') || b == 0x7f;
}

bool looksBinary(const QByteArray& content)
{
    int controls = 0;
    for (const char c : content)
        controls += isControl(c) ? 1 : 0;
    return qint64(controls) * 100 > qint64(content.size()) * kBinaryPercent;
}

bool validUtf8(const QByteArray& line)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(line.constData(), line.size(), &state);
    return state.invalidChars == 0;
}

bool isModuleLog(const QList<QByteArray>& lines)
{
    for (const QByteArray& line : lines) {
        CaptureEntry::Direction direction;
        QByteArray bytes;
        QString error;
        if (moduleLogBytes(QString::fromUtf8(line), &direction, &bytes, &error))
            return true;
    }
    return false;
}

// "# canbox-sim capture: protocol 28 (...)"
void readHeader(const QString& text, int line, Capture& capture)
{
    static const QRegularExpression header(QStringLiteral("^#.*\\bprotocol (\\d+)\\b"));
    const QRegularExpressionMatch m = header.match(text);
    if (m.hasMatch() && capture.protocol == 0) {
        capture.protocol = m.captured(1).toInt();
        capture.protocolLine = line;
    }
}

// "[seconds] [in|out] hex bytes"; a time always has its decimal point, so that a
// dump's first byte isn't taken for one.
void readTextLine(const QString& text, int line, Capture& capture)
{
    static const QRegularExpression form(QStringLiteral("^\\s*(?:(\\d+\\.\\d*)\\s+)?(?:(in|out)\\b\\s*)?(.*)$"));
    const QRegularExpressionMatch m = form.match(text);
    CaptureEntry entry;
    entry.line = line;
    if (!m.captured(1).isEmpty())
        entry.seconds = m.captured(1).toDouble();
    entry.direction = m.captured(2) == QLatin1String("out") ? CaptureEntry::Out : CaptureEntry::In;
    QString error;
    if (!parseHexBytes(m.captured(3), entry.bytes, &error)) {
        capture.problems.append({line, error});
        return;
    }
    if (entry.bytes.isEmpty()) {
        capture.problems.append({line, QStringLiteral("no bytes")});
        return;
    }
    capture.entries.append(entry);
}

// The manager logs each protocol it selects: "func: setId line: n <words> 28". The
// first one the log names is the one its frames are played with.
void readSelection(const QString& text, int line, Capture& capture)
{
    static const QRegularExpression selection(QStringLiteral("\\bfunc: setId line: \\d+ .*\\D(\\d+)\\s*$"));
    const QRegularExpressionMatch m = selection.match(text);
    if (m.hasMatch() && capture.protocol == 0 && m.captured(1).toInt() > 0) {
        capture.protocol = m.captured(1).toInt();
        capture.protocolLine = line;
    }
}

void readLogLine(const QString& text, int line, Capture& capture)
{
    CaptureEntry entry;
    entry.line = line;
    QString error;
    if (!moduleLogBytes(text, &entry.direction, &entry.bytes, &error)) {
        readSelection(text, line, capture);
        return;   // the rest of a log says nothing about the line
    }
    if (!error.isEmpty())
        capture.problems.append({line, error});
    else
        capture.entries.append(entry);
}

} // namespace

bool moduleLogBytes(const QString& line, CaptureEntry::Direction* direction, QByteArray* bytes, QString* error)
{
    static const QRegularExpression dump(QStringLiteral("\\bfunc: (\\w+) line: \\d+(.*)$"));
    const QRegularExpressionMatch m = dump.match(line);
    if (!m.hasMatch())
        return false;
    for (const DumpLine& d : kDumpLines) {
        if (m.captured(1) != QLatin1String(d.function))
            continue;
        // Only a dump: the same functions log words too ("reset serialport ...").
        const QString text = m.captured(2).trimmed();
        if (!text.startsWith(QLatin1String("0x")) && !text.isEmpty())
            return false;
        *direction = d.direction;
        bytes->clear();
        if (!parseHexBytes(text, *bytes, error))
            return true;
        if (bytes->isEmpty())
            *error = QStringLiteral("the dump has no bytes");
        return true;
    }
    return false;
}

Capture readCapture(const QByteArray& content, bool raw)
{
    Capture capture;
    if (raw || looksBinary(content)) {
        capture.kind = Capture::Raw;
        if (!content.isEmpty())
            capture.entries.append({0, -1, CaptureEntry::In, content});
        return capture;
    }
    QList<QByteArray> lines = content.split('\n');
    const bool lastCut = !content.isEmpty() && !content.endsWith('\n');
    if (!lastCut)
        lines.removeLast();   // what follows the last newline: nothing
    capture.kind = isModuleLog(lines) ? Capture::ModuleLog : Capture::Text;
    for (int i = 0; i < lines.size(); ++i) {
        const int number = i + 1;
        QByteArray bytes = lines.at(i);
        if (bytes.endsWith('\r'))
            bytes.chop(1);
        if (!validUtf8(bytes) || std::any_of(bytes.cbegin(), bytes.cend(), isControl)) {
            capture.problems.append({number, QStringLiteral("binary noise; the line is skipped")});
            continue;
        }
        if (lastCut && number == lines.size())
            capture.problems.append({number, QStringLiteral("the last line has no end; it may be cut short")});
        const QString text = QString::fromUtf8(bytes);
        if (text.trimmed().isEmpty())
            continue;
        if (text.startsWith(QLatin1Char('#'))) {
            readHeader(text, number, capture);
            continue;
        }
        if (capture.kind == Capture::ModuleLog)
            readLogLine(text, number, capture);
        else
            readTextLine(text, number, capture);
    }
    return capture;
}

QByteArray captureHeader(int protocol, const QString& about)
{
    return QStringLiteral("# canbox-sim capture: protocol %1 (%2)\n"
                          "# seconds, then in (what the head unit read) or out (what it wrote), then the bytes\n")
        .arg(protocol)
        .arg(about)
        .toUtf8();
}

QByteArray captureLine(double seconds, CaptureEntry::Direction direction, const QByteArray& bytes)
{
    return QStringLiteral("%1 %2 %3\n")
        .arg(seconds, 0, 'f', 3)
        .arg(direction == CaptureEntry::In ? QStringLiteral("in") : QStringLiteral("out"), spacedHex(bytes))
        .toUtf8();
}

} // namespace canbox
