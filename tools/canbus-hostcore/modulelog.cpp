#include "modulelog.h"

#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QStringList>

#include "hostevents.h"

namespace host {

namespace {

HostEvents* g_output = nullptr;
bool g_trace = false;
QtMessageHandler g_previousHandler = nullptr;
QLoggingCategory::CategoryFilter g_previousFilter = nullptr;
QFile* g_logFile = nullptr;

// The categories whose debug lines carry the frames.
constexpr const char* kTracedCategories[] = {"canbus.link", "canbus.manager", "canbus.mcu"};

// What the module's functions are doing to the link, as the trace line names it.
struct Action
{
    const char* function;
    const char* label;
};
constexpr Action kActions[] = {
    {"sendCanbusData", "write"},
    {"setData", "read"},
};

// The MCU link labels its frames in the message itself.
struct Label
{
    const char* prefix;
    const char* label;
};
constexpr Label kLabels[] = {
    {"recv: ", "read"},
    {"send: ", "write"},
};

bool isModuleCategory(const char* name)
{
    return qstrncmp(name, "canbus", 6) == 0;
}

bool isTraced(const char* name)
{
    for (const char* traced : kTracedCategories) {
        if (qstrcmp(name, traced) == 0)
            return true;
    }
    return false;
}

void filter(QLoggingCategory* category)
{
    if (g_previousFilter)
        g_previousFilter(category);
    if (!isModuleCategory(category->categoryName()))
        return;
    const bool traced = g_trace && isTraced(category->categoryName());
    category->setEnabled(QtDebugMsg, traced || g_logFile);
    category->setEnabled(QtInfoMsg, traced || g_logFile);
    category->setEnabled(QtWarningMsg, true);
    category->setEnabled(QtCriticalMsg, true);
}

// "0x2e 0x81 0x1 " -> "2e 81 01", as the box simulator writes bytes; other text as it is.
QString bytesText(const QString& text)
{
    static const QRegularExpression hexDump(QStringLiteral("^(0x[0-9a-f]{1,2} )*0x[0-9a-f]{1,2} ?$"));
    if (text.isEmpty())
        return QStringLiteral("(nothing)");
    if (!hexDump.match(text).hasMatch())
        return text;
    QStringList bytes = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QString& b : bytes)
        b = b.mid(2).rightJustified(2, QLatin1Char('0'));
    return bytes.join(QLatin1Char(' '));
}

// "[QT] [CanbusModuleImpl] func: sendCanbusData line: 114 0x2e 0x81" -> "write 2e 81"
QString shortened(const QString& message)
{
    static const QRegularExpression debugLine(QStringLiteral("^\\[QT\\] \\[[^\\]]*\\] func: (\\w+) line: \\d+ ?(.*)$"));
    const QRegularExpressionMatch m = debugLine.match(message);
    if (!m.hasMatch())
        return message;
    for (const Action& a : kActions) {
        if (m.captured(1) == QLatin1String(a.function))
            return QLatin1String(a.label) + QLatin1Char(' ') + bytesText(m.captured(2));
    }
    const QString text = m.captured(2);
    for (const Label& l : kLabels) {
        if (text.startsWith(QLatin1String(l.prefix)))
            return QLatin1String(l.label) + QLatin1Char(' ') + bytesText(text.mid(int(qstrlen(l.prefix))));
    }
    return m.captured(1) + QLatin1Char(' ') + m.captured(2);
}

void handler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const char* category = context.category ? context.category : "";
    if (!g_output || !isModuleCategory(category)) {
        if (g_previousHandler)
            g_previousHandler(type, context, message);
        return;
    }
    if (g_logFile) {
        // As the head unit's logger writes it: the category, then the module's line.
        g_logFile->write(QByteArray(category) + ": " + message.toUtf8() + '\n');
        g_logFile->flush();
    }
    if (type == QtDebugMsg || type == QtInfoMsg) {
        if (g_trace && isTraced(category))
            g_output->trace(QString::fromLatin1(category), shortened(message));
    } else {
        g_output->problem(QString::fromLatin1(category) + QLatin1Char(' ') + message);
    }
}

} // namespace

void routeModuleLog(HostEvents* output, bool trace, QFile* logFile)
{
    g_output = output;
    g_trace = trace;
    g_logFile = logFile;
    g_previousHandler = qInstallMessageHandler(handler);
    g_previousFilter = QLoggingCategory::installFilter(filter);
}

} // namespace host
