#pragma once
// One line format for the whole module, routed through QLoggingCategory so that
// QT_LOGGING_RULES can silence any part of it ("canbus.*.debug=false").
//
//   debug: [QT] [Tag] func: name line: n message...
//   error: [QT] [Error] [Tag] line: n message...
//
// qCDebug evaluates its stream arguments only when the category is enabled, so a
// hex dump written into CB_DEBUG costs nothing while debugging output is off.

#include <QByteArray>
#include <QDebug>
#include <QLoggingCategory>
#include <QString>

Q_DECLARE_LOGGING_CATEGORY(lcCanbusLink)     // CAN box serial link
Q_DECLARE_LOGGING_CATEGORY(lcCanbusManager)  // protocol manager
Q_DECLARE_LOGGING_CATEGORY(lcCanbusDriver)   // vehicle drivers
Q_DECLARE_LOGGING_CATEGORY(lcCanbusModule)   // facade and plug-in
Q_DECLARE_LOGGING_CATEGORY(lcCanbusMcu)      // microcontroller link

namespace canbus {
// "0x%x " for every byte: lower-case, unpadded, one blank behind each.
QString hexDump(const QByteArray& bytes);
}

#define CB_DEBUG(category, tag) \
    qCDebug(category).noquote() << "[QT]" << tag << "func:" << __func__ << "line:" << __LINE__
#define CB_ERROR(category, tag) \
    qCWarning(category).noquote() << "[QT]" << "[Error]" << tag << "line:" << __LINE__
