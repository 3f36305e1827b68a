#include "canbuslog.h"

Q_LOGGING_CATEGORY(lcCanbusLink, "canbus.link")
Q_LOGGING_CATEGORY(lcCanbusManager, "canbus.manager")
Q_LOGGING_CATEGORY(lcCanbusDriver, "canbus.driver")
Q_LOGGING_CATEGORY(lcCanbusModule, "canbus.module")
Q_LOGGING_CATEGORY(lcCanbusMcu, "canbus.mcu")

namespace canbus {

QString hexDump(const QByteArray& bytes)
{
    static const char digits[] = "0123456789abcdef";
    QString text;
    text.reserve(bytes.size() * 5);
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        text += QLatin1String("0x");
        if (b >= 0x10)
            text += QLatin1Char(digits[b >> 4]);
        text += QLatin1Char(digits[b & 0x0F]);
        text += QLatin1Char(' ');
    }
    return text;
}

} // namespace canbus
