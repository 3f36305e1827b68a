#pragma once
// Scenarios of a simulated MCU: what it sends and when, read from a JSON file.
//
//   {
//     "description": "steering-wheel volume up, tapped",
//     "loop": false,
//     "steps": [
//       {"ignition": true},
//       {"wait": 500, "key": 14, "action": "tap", "hold": 120},
//       {"wait": 200, "touch": "down", "x": 400, "y": 240},
//       {"request": "ask-source"},
//       {"raw": "2e 09 00 00 00"}
//     ]
//   }
//
// Each step names one thing to send ("key", "touch", "ignition", "night", "request",
// "select", "reverse", "version" or "raw") and may wait some milliseconds before it.

#include <QByteArray>
#include <QList>
#include <QString>

struct McuScenarioFrame
{
    int delayMs = 0;      // after the frame before it
    QByteArray bytes;
    QString label;        // what the frame is, in words
};

struct McuScenario
{
    QString description;
    bool loop = false;
    QList<McuScenarioFrame> frames;
};

// On failure `error` says what is wrong and where (the step's number counts from 1);
// `scenario` is then left as it was.
bool parseMcuScenario(const QByteArray& json, McuScenario& scenario, QString& error);
// As above, with the file's name in front of the error.
bool loadMcuScenario(const QString& path, McuScenario& scenario, QString& error);
