#include "canbus90.h"

#include "../canbus88/jeepsetpoints.h"

Canbus90Obj::Canbus90Obj(QObject* parent)
    : Canbus90Obj(90, parent)
{
}

Canbus90Obj::Canbus90Obj(int driverId, QObject* parent)
    : Canbus88Obj(driverId, ClimateForm{VentLayout::SplitRight, &jeep::halfDegreesFromOne, &jeep::halfDegreesFromOne},
                  parent)
{
}
