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

} // namespace canbus
