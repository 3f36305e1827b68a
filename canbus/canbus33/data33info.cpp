#include "data33info.h"

void Data33Info::clear()
{
    newEnergy.clear();
    newEnergyDisplay.clear();
    settings.clear();
    body.clear();
    mileage.clear();
    functions.clear();
    voice.clear();
    perception.clear();
    vehicleControl.clear();
}
