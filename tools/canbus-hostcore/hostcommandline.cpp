#include "hostcommandline.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

#include "host.h"

namespace host {

void nameTool(const QString& tool)
{
    QCoreApplication::setApplicationName(tool);
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
}

void usageError(const QString& text)
{
    const QByteArray tool = QCoreApplication::applicationName().toUtf8();
    std::fprintf(stderr, "%s: error: %s\nTry '%s --help'.\n", tool.constData(), qUtf8Printable(text), tool.constData());
    std::exit(ExitUsage);
}

int failure(const QString& text)
{
    std::fprintf(stderr, "%s: error: %s\n", qUtf8Printable(QCoreApplication::applicationName()), qUtf8Printable(text));
    return ExitFailure;
}

void parseCommandLine(QCommandLineParser& parser, CommonOptions& o, const char* description,
                      const QString& defaultPlugin, const QString& protocolHelp,
                      const QList<QCommandLineOption>& options)
{
    parser.setApplicationDescription(QString::fromUtf8(description));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {QStringLiteral("plugin"), QStringLiteral("The plug-in file to load (default: %1).").arg(defaultPlugin),
         QStringLiteral("path")},
        {{QStringLiteral("p"), QStringLiteral("protocol")}, protocolHelp, QStringLiteral("id")},
        {QStringLiteral("port"),
         QStringLiteral("Serial port of the CAN box (default: $CANBUS_BOX_PORT, else /dev/ttyS4)."),
         QStringLiteral("path")},
    });
    parser.addOptions(options);
    parser.addOption({QStringLiteral("duration"), QStringLiteral("Exit after <s> seconds."), QStringLiteral("s")});
    if (!parser.parse(QCoreApplication::arguments()))
        usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(ExitOk);
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (!parser.positionalArguments().isEmpty())
        usageError(QStringLiteral("unexpected argument '%1'").arg(parser.positionalArguments().first()));

    o.plugin = parser.isSet(QStringLiteral("plugin")) ? parser.value(QStringLiteral("plugin")) : defaultPlugin;
    if (parser.isSet(QStringLiteral("protocol"))) {
        bool ok = false;
        o.protocol = parser.value(QStringLiteral("protocol")).toInt(&ok);
        if (!ok || o.protocol < 1)
            usageError(QStringLiteral("there is no vehicle protocol '%1' in the catalogue").arg(parser.value(QStringLiteral("protocol"))));
    }
}

double secondsAsked(const QCommandLineParser& parser, const QString& option)
{
    constexpr double kMaxSeconds = 7 * 24 * 3600.0;
    if (!parser.isSet(option))
        return 0;
    bool ok = false;
    const double value = parser.value(option).toDouble(&ok);
    if (!ok || !(value > 0) || value > kMaxSeconds)
        usageError(QStringLiteral("--%1 wants seconds above 0, not '%2'").arg(option, parser.value(option)));
    return value;
}

bool startModule(Host& host, QString* error)
{
    switch (host.start(error)) {
    case Host::Started:
        return true;
    case Host::NoSuchProtocol:
        usageError(*error);
    case Host::Failed:
        break;
    }
    return false;
}

} // namespace host
