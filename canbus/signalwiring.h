#pragma once
#include <QObject>

namespace canbus {

// Connects a signal to a slot, or to a signal when `toSignal` is set, by their
// signatures, and only where both exist. Peers and drivers declare different subsets
// of the optional signals and slots; a missing one is skipped without a warning.
bool connectIfPresent(QObject* sender, const char* signal, QObject* receiver, const char* method,
                      bool toSignal = false);

} // namespace canbus
