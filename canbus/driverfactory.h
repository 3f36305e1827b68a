#pragma once
// The one registry of vehicle drivers: id -> constructor, grouped by frame family.

#include <QObject>

#include "framefamily.h"

class CanbusInterface;

namespace canbus {

struct DriverEntry
{
    int id;
    FrameFamily family;
    int parentId;   // the driver this one extends, 0 for none
    CanbusInterface* (*create)(QObject* parent);
};

// All registered drivers, in the order of the table.
const DriverEntry* driverEntries(int* count);
const DriverEntry* findDriver(int id);
// A new driver for `id`, or null when no driver has that id.
CanbusInterface* createDriver(int id, QObject* parent);

// Puts another constructor behind one id while the object lives, so that a test or a
// fuzzer can watch the whole receive path with an instrumented driver on a real
// catalogue row. Overrides nest; the newest wins.
class DriverOverride
{
public:
    DriverOverride(int id, CanbusInterface* (*create)(QObject* parent));
    ~DriverOverride();
    DriverOverride(const DriverOverride&) = delete;
    DriverOverride& operator=(const DriverOverride&) = delete;

private:
    friend CanbusInterface* createDriver(int id, QObject* parent);
    int m_id;
    CanbusInterface* (*m_create)(QObject*);
    DriverOverride* m_previous;
};

} // namespace canbus
