#pragma once
// Button commands to the box: the press frame goes out at once and the release frame
// a moment later, as a finger on the vehicle's own button would do.

#include <QByteArray>
#include <initializer_list>

class CommonDriver;

namespace canbus {

constexpr int kReleaseDelayMs = 150;

// Sends `type` with `press` now and with `release` after `delayMs`, each in the
// driver's frame family with its checksum.
void sendPressRelease(CommonDriver& driver, quint8 type, const QByteArray& press,
                      const QByteArray& release, int delayMs = kReleaseDelayMs);

void sendPressRelease(CommonDriver& driver, quint8 type, std::initializer_list<quint8> press,
                      std::initializer_list<quint8> release, int delayMs = kReleaseDelayMs);

// The usual release: the press with the data bytes at `indexes` (counted from the
// first data byte) set to 0.
QByteArray releaseOf(QByteArray press, std::initializer_list<int> indexes);

} // namespace canbus
