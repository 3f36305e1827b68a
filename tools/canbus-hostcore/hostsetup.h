#pragma once
// What a host does before the module starts: choose the protocol, check the ports it
// is given, and point the desktop platform at its data folder and ports. The platform
// reads these on first use, so they are set before anything of the module runs.

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace host {

constexpr int kDefaultProtocol = 27;

// The protocol asked for, else the one stored in the data folder, else the default.
int chooseProtocol(int asked);

// Why this user can't open a port the host is to use, or nothing; the module itself
// would only log a failure. No path: that port isn't used. `option` and `simulator`
// name what gives the path, for the message.
QString portProblem(const QString& port, const char* option, const char* simulator);

// The platform's data folder and the ports, in its environment. Without a folder
// asked for, a temporary one named after `tool` is made and kept by `scratch`.
// Unless it could, `error` says why.
bool setUpPlatform(const QString& dataDirAsked, const QString& tool, const QString& boxPort,
                   const QString& mcuPort, std::unique_ptr<QTemporaryDir>& scratch, QString* dataDir,
                   QString* error);

} // namespace host
