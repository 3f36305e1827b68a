#include "driverfactory.h"

#include <iterator>

#include "canbus27/canbus27.h"
#include "canbus28/canbus28.h"
#include "canbus29/canbus29.h"
#include "canbus30/canbus30.h"
#include "canbus31/canbus31.h"
#include "canbus32/canbus32.h"
#include "canbus33/canbus33.h"
#include "canbus34/canbus34.h"
#include "canbus35/canbus35.h"
#include "canbus36/canbus36.h"
#include "canbus37/canbus37.h"
#include "canbus38/canbus38.h"
#include "canbus39/canbus39.h"
#include "canbus40/canbus40.h"
#include "canbus41/canbus41.h"
#include "canbus42/canbus42.h"
#include "canbus43/canbus43.h"
#include "canbus44/canbus44.h"
#include "canbus45/canbus45.h"
#include "canbus46/canbus46.h"
#include "canbus47/canbus47.h"
#include "canbus48/canbus48.h"
#include "canbus49/canbus49.h"
#include "canbus50/canbus50.h"
#include "canbus51/canbus51.h"
#include "canbus53/canbus53.h"
#include "canbus54/canbus54.h"
#include "canbus55/canbus55.h"
#include "canbus56/canbus56.h"
#include "canbus57/canbus57.h"
#include "canbus58/canbus58.h"
#include "canbus59/canbus59.h"
#include "canbus60/canbus60.h"
#include "canbus61/canbus61.h"
#include "canbus62/canbus62.h"
#include "canbus63/canbus63.h"
#include "canbus64/canbus64.h"
#include "canbus65/canbus65.h"
#include "canbus66/canbus66.h"
#include "canbus67/canbus67.h"
#include "canbus68/canbus68.h"
#include "canbus69/canbus69.h"
#include "canbus70/canbus70.h"
#include "canbus71/canbus71.h"
#include "canbus72/canbus72.h"
#include "canbus73/canbus73.h"
#include "canbus74/canbus74.h"
#include "canbus75/canbus75.h"
#include "canbus76/canbus76.h"
#include "canbus77/canbus77.h"
#include "canbus78/canbus78.h"
#include "canbus79/canbus79.h"
#include "canbus80/canbus80.h"
#include "canbus81/canbus81.h"
#include "canbus82/canbus82.h"
#include "canbus83/canbus83.h"
#include "canbus84/canbus84.h"
#include "canbus85/canbus85.h"
#include "canbus86/canbus86.h"
#include "canbus87/canbus87.h"
#include "canbus88/canbus88.h"
#include "canbus89/canbus89.h"
#include "canbus90/canbus90.h"
#include "canbus91/canbus91.h"
#include "canbus92/canbus92.h"
#include "canbus93/canbus93.h"
#include "canbus94/canbus94.h"
#include "canbus95/canbus95.h"
#include "canbus96/canbus96.h"
#include "canbus97/canbus97.h"
#include "canbus98/canbus98.h"
#include "canbus110/canbus110.h"
#include "canbus120/canbus120.h"

namespace canbus {

namespace {

template <typename Driver>
CanbusInterface* make(QObject* parent)
{
    return new Driver(parent);
}

const DriverEntry kDrivers[] = {
    // 0x2E frames
    {28, FrameFamily::Start2E, 0, &make<Canbus28Obj>},
    {29, FrameFamily::Start2E, 28, &make<Canbus29Obj>},   // extends 28: no frames of its own; walk C, simple link
    {30, FrameFamily::Start2E, 0, &make<Canbus30Obj>},
    {31, FrameFamily::Start2E, 0, &make<Canbus31Obj>},
    {32, FrameFamily::Start2E, 0, &make<Canbus32Obj>},
    {33, FrameFamily::Start2E, 0, &make<Canbus33Obj>},
    {34, FrameFamily::Start2E, 28, &make<Canbus34Obj>},   // extends 28: no frames of its own; walk C, simple link
    {35, FrameFamily::Start2E, 0, &make<Canbus35Obj>},    // walks as C: its own loop keeps a tail, where the family list says B
    {36, FrameFamily::Start2E, 31, &make<Canbus36Obj>},   // extends 31: no frames of its own; walk B, simple connect
    {37, FrameFamily::Start2E, 0, &make<Canbus37Obj>},
    {38, FrameFamily::Start2E, 37, &make<Canbus38Obj>},   // extends 37: no frames of its own; walk B, simple connect
    {39, FrameFamily::Start2E, 37, &make<Canbus39Obj>},   // extends 37: no frames of its own; walk B, simple connect
    {40, FrameFamily::Start2E, 41, &make<Canbus40Obj>},   // extends 41: no frames of its own
    {41, FrameFamily::Start2E, 0, &make<Canbus41Obj>},
    {42, FrameFamily::Start2E, 0, &make<Canbus42Obj>},
    {43, FrameFamily::Start2E, 0, &make<Canbus43Obj>},
    {44, FrameFamily::Start2E, 0, &make<Canbus44Obj>},
    {45, FrameFamily::Start2E, 0, &make<Canbus45Obj>},
    {46, FrameFamily::Start2E, 0, &make<Canbus46Obj>},
    {47, FrameFamily::Start2E, 0, &make<Canbus47Obj>},
    {48, FrameFamily::Start2E, 0, &make<Canbus48Obj>},
    {49, FrameFamily::Start2E, 0, &make<Canbus49Obj>},
    // 50 and 51 extend 30 but walk as B, not as 30's D: every frame no longer marks the
    // box as connected, only its version frame does.
    {50, FrameFamily::Start2E, 30, &make<Canbus50Obj>},   // extends 30: own commands; walk B
    {51, FrameFamily::Start2E, 30, &make<Canbus51Obj>},   // extends 30: own commands; walk B
    {53, FrameFamily::Start2E, 31, &make<Canbus53Obj>},   // extends 31: walk B, unlike 31's C
    {54, FrameFamily::Start2E, 32, &make<Canbus54Obj>},   // extends 32
    {55, FrameFamily::Start2E, 0, &make<Canbus55Obj>},
    {56, FrameFamily::Start2E, 0, &make<Canbus56Obj>},
    {57, FrameFamily::Start2E, 33, &make<Canbus57Obj>},   // extends 33: own camera buttons
    // 58 and 59 take 60's frames but keep their rows, walk A and the plain connect form.
    {58, FrameFamily::Start2E, 60, &make<Canbus58Obj>},   // extends 60: walk A, simple connect
    {59, FrameFamily::Start2E, 60, &make<Canbus59Obj>},   // extends 60: walk A, simple connect
    {60, FrameFamily::Start2E, 0, &make<Canbus60Obj>},
    {61, FrameFamily::Start2E, 60, &make<Canbus61Obj>},   // extends 60: own commands
    {62, FrameFamily::Start2E, 60, &make<Canbus62Obj>},   // extends 60: own panorama touches
    {63, FrameFamily::Start2E, 64, &make<Canbus63Obj>},   // extends 64 so the make's frames decode; own row, walk A, simple connect, common disconnect
    {64, FrameFamily::Start2E, 0, &make<Canbus64Obj>},
    {65, FrameFamily::Start2E, 0, &make<Canbus65Obj>},
    {68, FrameFamily::Start2E, 0, &make<Canbus68Obj>},
    {69, FrameFamily::Start2E, 0, &make<Canbus69Obj>},
    {70, FrameFamily::Start2E, 72, &make<Canbus70Obj>},   // extends 72: no frames of its own
    {71, FrameFamily::Start2E, 72, &make<Canbus71Obj>},   // extends 72: no frames of its own
    {72, FrameFamily::Start2E, 0, &make<Canbus72Obj>},
    {73, FrameFamily::Start2E, 0, &make<Canbus73Obj>},
    {74, FrameFamily::Start2E, 73, &make<Canbus74Obj>},   // extends 73: no frames of its own
    {75, FrameFamily::Start2E, 73, &make<Canbus75Obj>},   // extends 73: no frames of its own
    {76, FrameFamily::Start2E, 73, &make<Canbus76Obj>},   // extends 73: no frames of its own
    // 77, 78 and 80 extend 79, so that the make's frames decode; each keeps its own row and
    // connect/disconnect forms. 77 walks as 79 does: no other walk is known for it.
    {77, FrameFamily::Start2E, 79, &make<Canbus77Obj>},   // extends 79: no frames of its own
    {78, FrameFamily::Start2E, 79, &make<Canbus78Obj>},   // extends 79: request first, disconnect while connected
    {79, FrameFamily::Start2E, 0, &make<Canbus79Obj>},
    {80, FrameFamily::Start2E, 79, &make<Canbus80Obj>},   // extends 79: plain connect, disconnect while connected
    {81, FrameFamily::Start2E, 0, &make<Canbus81Obj>},
    {82, FrameFamily::Start2E, 81, &make<Canbus82Obj>},   // extends 81: no frames of its own
    {84, FrameFamily::Start2E, 0, &make<Canbus84Obj>},
    {85, FrameFamily::Start2E, 81, &make<Canbus85Obj>},   // extends 81: UTF-16 source texts
    {88, FrameFamily::Start2E, 0, &make<Canbus88Obj>},
    {89, FrameFamily::Start2E, 88, &make<Canbus89Obj>},   // extends 88: its own climate layout and scales
    {90, FrameFamily::Start2E, 88, &make<Canbus90Obj>},   // extends 88: its own climate layout and scales
    {91, FrameFamily::Start2E, 88, &make<Canbus91Obj>},   // extends 88 as 90 does, with its own outdoor frame
    {92, FrameFamily::Start2E, 88, &make<Canbus92Obj>},   // extends 88 as 91 does, with its own steering frame
    {93, FrameFamily::Start2E, 0, &make<Canbus93Obj>},
    {94, FrameFamily::Start2E, 0, &make<Canbus94Obj>},
    {95, FrameFamily::Start2E, 0, &make<Canbus95Obj>},
    {96, FrameFamily::Start2E, 0, &make<Canbus96Obj>},
    {97, FrameFamily::Start2E, 0, &make<Canbus97Obj>},
    {98, FrameFamily::Start2E, 0, &make<Canbus98Obj>},
    {110, FrameFamily::Start2E, 0, &make<Canbus110Obj>},
    // AA 55 frames
    {27, FrameFamily::StartAA55, 0, &make<Canbus27Obj>},
    // 5A A5 frames
    {120, FrameFamily::Start5AA5, 0, &make<Canbus120Obj>},
    // FD frames, 8-bit sum
    {83, FrameFamily::StartFD8, 0, &make<Canbus83Obj>},
    {86, FrameFamily::StartFD8, 0, &make<Canbus86Obj>},
    {87, FrameFamily::StartFD8, 0, &make<Canbus87Obj>},
    // FD frames, 16-bit sum
    {67, FrameFamily::StartFD16, 0, &make<Canbus67Obj>},
    // FC/FD frames
    {66, FrameFamily::StartFCFD, 0, &make<Canbus66Obj>},
};

} // namespace

const DriverEntry* driverEntries(int* count)
{
    if (count)
        *count = int(std::size(kDrivers));
    return kDrivers;
}

const DriverEntry* findDriver(int id)
{
    for (const DriverEntry& entry : kDrivers) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

namespace {
DriverOverride* overrides = nullptr;
} // namespace

DriverOverride::DriverOverride(int id, CanbusInterface* (*create)(QObject* parent))
    : m_id(id), m_create(create), m_previous(overrides)
{
    overrides = this;
}

DriverOverride::~DriverOverride()
{
    // Unlink wherever this one sits, so that out-of-order destruction stays sound.
    for (DriverOverride** link = &overrides; *link; link = &(*link)->m_previous) {
        if (*link == this) {
            *link = m_previous;
            break;
        }
    }
}

CanbusInterface* createDriver(int id, QObject* parent)
{
    for (const DriverOverride* o = overrides; o; o = o->m_previous) {
        if (o->m_id == id)
            return o->m_create(parent);
    }
    const DriverEntry* entry = findDriver(id);
    return entry ? entry->create(parent) : nullptr;
}

} // namespace canbus
