#include "data56info.h"

void Data56Info::clear()
{
    body.clear();
    mileage.clear();
    functions.clear();
    voice.clear();
}
