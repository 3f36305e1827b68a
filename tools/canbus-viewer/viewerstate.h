#pragma once
// What the viewer knows of the car, kept from the host's events, and what it draws
// made from that: the climate panel, the doors, the radar bars, the outdoor
// temperature, the last keys and prompts, and the state of the box's port. No widget
// here: everything a panel paints is decided in this class, so that it can be tried
// without a display.

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include "shownfields.h"

namespace viewer {

// A control of the climate panel: the vehicle may not have it at all.
enum class Mode { Absent, Off, On };

struct ModeView
{
    QString label;
    Mode mode = Mode::Absent;
};

struct ClimateView
{
    Mode power = Mode::Absent;
    QString tempLeft;    // "22.5°C", "LO", "HI", or empty when not shown
    QString tempRight;
    int fan = -1;        // the blower's step, -1 when the vehicle reports none
    QVector<ModeView> modes;
};

// Open is true; a door the vehicle doesn't report is closed.
struct DoorsView
{
    bool frontLeft = false;
    bool frontRight = false;
    bool rearLeft = false;
    bool rearRight = false;
    bool bonnet = false;
    bool tailgate = false;
};

// The parking sensors from left to right as seen from above with the front up, each
// the bars lit on a scale of 0 to `levels`: the fewer bars, the nearer the obstacle,
// and none is nothing there.
struct RadarView
{
    bool on = false;
    int levels = 0;
    QVector<int> front;   // four sensors
    QVector<int> rear;
    // The lit share of a bar, 0 to 1.
    static double share(int lit, int levels);
    // How near the obstacle is: 1 at one bar, 0 at the full scale or with nothing there.
    static double nearness(int lit, int levels);
};

enum class PortState { Waiting, Receiving, Lost, Back };

class ViewerState
{
public:
    static constexpr int kKeptLines = 8;

    ViewerState();

    // A record as it is now, all its shown fields.
    void applyRecord(const QString& name, const host::Fields& now);
    void applyKey(int key, bool pressed);
    void applyPrompt(const QString& text);
    void applyOutdoor(const QString& text, int unit);
    // A problem line of the host: the module's warnings about its port change the
    // port's state. True when the state changed.
    bool applyProblem(const QString& text);

    // A value of a record as last reported; invalid when never reported.
    QVariant field(const QString& record, const QString& name) const;

    ClimateView climate() const;
    DoorsView doors() const;
    RadarView radar() const;
    QString outdoor() const;
    // Newest first, at most kKeptLines each.
    QStringList keys() const { return m_keys; }
    QStringList prompts() const { return m_prompts; }
    PortState port() const { return m_port; }
    static QString portText(PortState state);

private:
    Mode mode(const QString& record, const QString& name) const;
    QString setPoint(const char* text, const char* low, const char* high, const char* visible) const;
    int number(const QString& record, const QString& name, int absent) const;
    static void keep(QStringList& lines, const QString& line);

    QHash<QString, QHash<QString, QVariant>> m_records;
    QStringList m_keys;
    QStringList m_prompts;
    QString m_outdoorSignal;
    enum class OutdoorSource { None, Signal, Air, Body };
    OutdoorSource m_outdoorSource = OutdoorSource::None;
    PortState m_port = PortState::Waiting;
};

} // namespace viewer
