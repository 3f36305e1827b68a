// The commands a user types into canbus-host, one a line.

#include "host.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include "hexbytes.h"
#include "languagemanager.h"

namespace host {

const Host::Command Host::kCommands[] = {
    {"help", "help                     this list", &Host::help},
    {"raw", "raw 2e 81 01 01 7c       write these bytes to the box as they are", &Host::raw},
    {"reverse", "reverse on|off           the gear lever in or out of reverse", &Host::reverse},
    {"power", "power on|off             the head unit's power, as the microcontroller reports it", &Host::power},
    {"call", "call on|off              a telephone call starts or ends", &Host::call},
    {"language", "language CODE            the system language (en, ch_jt, ko ...)", &Host::language},
    {"source", "source TYPE [ARG ...]    the audio source and its details (1 radio, 13 media ...)", &Host::source},
    {"quit", "quit                     end the host", &Host::quit},
};

namespace {

// "on" / "off" and their usual synonyms; anything else is refused.
bool onOff(const QStringList& args, bool& value)
{
    static const QStringList on = {QStringLiteral("on"), QStringLiteral("1"), QStringLiteral("true")};
    static const QStringList off = {QStringLiteral("off"), QStringLiteral("0"), QStringLiteral("false")};
    if (args.size() != 1)
        return false;
    const QString word = args.first().toLower();
    value = on.contains(word);
    return value || off.contains(word);
}

} // namespace

void Host::runCommand(const QString& line)
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    static const QRegularExpression commandKey(QStringLiteral("^[A-Za-z][A-Za-z0-9_]*$"));
    QStringList words = line.trimmed().split(blanks, Qt::SkipEmptyParts);
    if (words.isEmpty() || words.first().startsWith(QLatin1Char('#')))
        return;
    m_out.command(words.join(QLatin1Char(' ')));
    const QString name = words.takeFirst();
    for (const Command& c : kCommands) {
        if (name == QLatin1String(c.name)) {
            if (!(this->*c.run)(words))
                m_out.problem(QStringLiteral("usage: %1").arg(QString::fromLatin1(c.usage).simplified()));
            return;
        }
    }
    // Anything else is a command key of the driver with its value: "AirAC 1".
    if (!commandKey.match(name).hasMatch()) {
        m_out.problem(QStringLiteral("unknown command '%1'; 'help' lists them").arg(name));
        return;
    }
    sendCommandKey(name, words.join(QLatin1Char(' ')));
}

void Host::sendCommandKey(const QString& key, const QString& value)
{
    callFacade("sendCanbusStateToCan", Q_ARG(QString, key), Q_ARG(QString, value));
}

// The facade's slots are called by name, as a host that loaded the plug-in does.
void Host::callFacade(const char* slot, QGenericArgument first, QGenericArgument second)
{
    if (!m_facade || !QMetaObject::invokeMethod(m_facade, slot, Qt::DirectConnection, first, second))
        m_out.problem(QStringLiteral("the module has no slot %1").arg(QLatin1String(slot)));
}

bool Host::help(const QStringList&)
{
    m_out.info(QStringLiteral("commands (one a line):"));
    m_out.info(QStringLiteral("KEY VALUE                a command key of the driver, e.g. AirAC 1"));
    for (const Command& c : kCommands)
        m_out.info(QLatin1String(c.usage));
    return true;
}

bool Host::raw(const QStringList& args)
{
    QByteArray bytes;
    if (args.isEmpty() || !canbox::parseHexBytes(args.join(QLatin1Char(' ')), bytes) || bytes.isEmpty())
        return false;
    callFacade("sendCanbusData", Q_ARG(QByteArray, bytes));
    return true;
}

bool Host::reverse(const QStringList& args)
{
    bool on = false;
    if (!onOff(args, on))
        return false;
    callFacade("reverseChanged", Q_ARG(bool, on));
    return true;
}

bool Host::power(const QStringList& args)
{
    bool on = false;
    if (!onOff(args, on))
        return false;
    emit m_mcu.powerStateChanged(on);
    return true;
}

bool Host::call(const QStringList& args)
{
    bool on = false;
    if (!onOff(args, on))
        return false;
    emit m_phone.callStateChanged(on);
    return true;
}

bool Host::language(const QStringList& args)
{
    if (args.size() != 1)
        return false;
    LanguageManager::getInstance()->setLanguage(args.first());
    return true;
}

bool Host::source(const QStringList& args)
{
    bool ok = false;
    const int type = args.value(0).toInt(&ok);
    if (!ok)
        return false;
    // Numbers go as numbers, the rest as text: "source 1 2 9850", "source 13 1 10 ...".
    QVariantList items;
    for (int i = 1; i < args.size(); ++i) {
        bool number = false;
        const int value = args.at(i).toInt(&number);
        items.append(number ? QVariant(value) : QVariant(args.at(i)));
    }
    callFacade("sendSrcStateToCan", Q_ARG(int, type), Q_ARG(QVariantList, items));
    return true;
}

bool Host::quit(const QStringList& args)
{
    if (!args.isEmpty())
        return false;
    QCoreApplication::quit();
    return true;
}

} // namespace host
