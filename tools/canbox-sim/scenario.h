#pragma once
// What a simulated CAN box says, read from a JSON file of scenarios/<id>/.
//
//   {
//     "description": "what the file shows",
//     "protocol": 27,                       optional: the file fits this protocol only
//     "waitForConnect": true,               optional: play only once the head unit connects
//     "handshake": [ {"type": "30", "data": "..."} ],   optional: answers to its connect frame
//     "steps": [
//       {"delay": 300, "type": "0x73", "data": "40 40 16 16 63 63 78 00", "note": "air on"},
//       {"delay": 200, "raw": "aa 55 02 73 00 00 00", "note": "a frame with a bad checksum"},
//       {"delay": 200, "raw": "fd 14 00 03 05", "sum": true, "note": "an untyped frame"}
//     ]
//   }
//
// A bare array is taken as the steps. "delay" is in milliseconds before the step.
// A typed step gets start, length and checksum from the protocol's frame family; a
// raw step goes out exactly as written, or with the family's checksum behind it when
// "sum" is true (frames the family's builder cannot shape: untyped ones, another start
// byte). Strings are hex ("73" is 0x73), JSON numbers are decimal: "data" may be
// "40 40 16" or [64, 64, "16"].

#include <QByteArray>
#include <QList>
#include <QString>

#include "framefamily.h"

namespace canbox {

struct ScenarioStep
{
    int delayMs = 0;
    bool raw = false;
    bool sum = false;  // a raw step with the family's checksum appended
    quint8 type = 0;
    QByteArray data;   // the data bytes of a typed step, or all bytes of a raw one
    QString note;

    QByteArray wireBytes(canbus::FrameFamily family) const;
};

struct Scenario
{
    QString name;   // the file's base name, or empty
    QString description;
    int protocol = 0;        // 0: any protocol
    int waitForConnect = -1; // -1: as the frame family does, 0 no, 1 yes
    QList<ScenarioStep> handshake;
    QList<ScenarioStep> steps;
};

constexpr int kMaxDelayMs = 600000;
constexpr int kMaxDataBytes = 250;
constexpr int kMaxRawBytes = 1024;

// On failure `error` tells where, e.g. "step 3: \"data\": 'zz' is not hex bytes".
bool parseScenario(const QByteArray& json, Scenario& out, QString* error);
// As parseScenario, with the file's name in front of the error.
bool loadScenario(const QString& path, Scenario& out, QString* error);

} // namespace canbox
