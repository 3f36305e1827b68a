#pragma once
// Ends the Qt event loop cleanly on SIGINT, SIGTERM and SIGHUP, so that a tool's
// destructors run (a symlink is removed, a temporary directory deleted) when the
// user presses Ctrl-C or a script stops it.

namespace canbox {

// Call once, after the QCoreApplication exists. Returns false if the handlers
// couldn't be installed; the signals then keep their default action.
bool quitOnTerminationSignals();

} // namespace canbox
