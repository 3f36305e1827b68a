#pragma once
// Routes the module's log to the host's output: with tracing on, the links' and the
// manager's debug lines (every frame read and written, in hex) become trace lines;
// warnings of the module always show. Other debug output of the module stays off,
// whatever QT_LOGGING_RULES says, and the rest of Qt's messages go to stderr.

namespace host {

class HostEvents;

void routeModuleLog(HostEvents* output, bool trace);

} // namespace host
