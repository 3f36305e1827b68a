#include "data64info.h"

void Data64Info::clear()
{
    mileage.clear();
    functions.clear();
    voice.clear();
    panoramic.clear();
    parking.clear();
    tireWarnings.clear();
    setup.clear();
    energy.clear();
}
