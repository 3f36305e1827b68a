#include "canbus89.h"

#include "../canbus88/jeepsetpoints.h"

Canbus89Obj::Canbus89Obj(QObject* parent)
    : Canbus88Obj(89, ClimateForm{VentLayout::SplitRight, &jeep::halfDegreesLeft, &jeep::halfDegreesRight}, parent)
{
}
