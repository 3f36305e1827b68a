#pragma once
// Routes the module's log to the host's output: with tracing on, the links' and the
// manager's debug lines (every frame read and written, in hex) become trace lines;
// warnings of the module always show. Other debug output of the module stays off,
// whatever QT_LOGGING_RULES says, and the rest of Qt's messages go to stderr.
// With a log file every line of the module, debug lines included, is also written
// there as the head unit's logger keeps it: the file that comes back from the field.

class QFile;

namespace host {

class HostEvents;

void routeModuleLog(HostEvents* output, bool trace, QFile* logFile = nullptr);

} // namespace host
