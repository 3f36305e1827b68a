#pragma once
// What a host does before the module starts: choose the protocol, check the plug-in and
// the ports it is given, and point the desktop platform at its data folder and ports. The
// platform reads these on first use, so they are set before anything of the module runs.

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace host {

constexpr int kDefaultProtocol = 27;

// The protocol asked for, else the one stored in the data folder, else the default.
int chooseProtocol(int asked);

// What a host checks and sets before the module loads: the plug-in is there, this user
// can open the ports given (an empty one isn't used: the module itself would only log
// the failure), and the platform has its data folder and the ports in its environment.
// Without a folder asked for, a temporary one named after the tool is made and kept by
// `scratch`. Then a termination signal ends the event loop. Unless all went, `error` says why.
bool setUpHost(const QString& plugin, const QString& boxPort, const QString& mcuPort,
               const QString& dataDirAsked, std::unique_ptr<QTemporaryDir>& scratch, QString* dataDir,
               QString* error);

} // namespace host
