#include "hostsetup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <tuple>
#include <fcntl.h>
#include <unistd.h>

#include "datasavecontrol.h"
#include "quitonsignal.h"

namespace host {

namespace {

QString portProblem(const QString& port, const char* option, const char* simulator)
{
    if (port.isEmpty())
        return QString();
    if (!QFileInfo::exists(port))
        return QStringLiteral("no serial port at %1 (start %2 and give %3 the path it prints)")
            .arg(port, QLatin1String(simulator), QLatin1String(option));
    const int fd = ::open(QFile::encodeName(port).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return QStringLiteral("cannot open %1: %2").arg(port, QString::fromLocal8Bit(std::strerror(errno)));
    ::close(fd);
    return QString();
}

} // namespace

int chooseProtocol(int asked)
{
    if (asked > 0)
        return asked;
    const int stored = DataSaveControl::readUserData(QStringLiteral("CanIndex"), 0).toInt();
    return stored > 0 ? stored : kDefaultProtocol;
}

bool setUpHost(const QString& plugin, const QString& boxPort, const QString& mcuPort,
               const QString& dataDirAsked, std::unique_ptr<QTemporaryDir>& scratch, QString* dataDir,
               QString* error)
{
    if (!QFileInfo::exists(plugin)) {
        *error = QStringLiteral("no plug-in at %1 (build the target canbusmodule, or give --plugin)").arg(plugin);
        return false;
    }
    for (const auto& [port, option, simulator] : {std::make_tuple(boxPort, "--port", "canbox-sim"),
                                                  std::make_tuple(mcuPort, "--mcu-port", "mcu-sim")}) {
        *error = portProblem(port, option, simulator);
        if (!error->isEmpty())
            return false;
    }
    *dataDir = dataDirAsked;
    if (dataDir->isEmpty()) {
        scratch.reset(new QTemporaryDir(QDir::temp().filePath(QCoreApplication::applicationName() + QStringLiteral("-XXXXXX"))));
        if (!scratch->isValid()) {
            *error = QStringLiteral("cannot make a temporary data folder: %1").arg(scratch->errorString());
            return false;
        }
        *dataDir = scratch->path();
    } else if (!QDir().mkpath(*dataDir)) {
        *error = QStringLiteral("cannot make the data folder %1").arg(*dataDir);
        return false;
    }
    qputenv("CANBUS_DATA_DIR", QFile::encodeName(*dataDir));
    if (!boxPort.isEmpty())
        qputenv("CANBUS_BOX_PORT", QFile::encodeName(boxPort));
    if (!mcuPort.isEmpty())
        qputenv("CANBUS_MCU_PORT", QFile::encodeName(mcuPort));
    DataSaveControl::reload();
    canbox::quitOnTerminationSignals();
    return true;
}

} // namespace host
