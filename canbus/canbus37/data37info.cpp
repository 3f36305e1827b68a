#include "data37info.h"

void Data37Info::clear()
{
    airControl.clear();
    bodyControl.clear();
    bodySetting.clear();
    body.clear();
    airSetting.clear();
    hybrid.clear();
    parking.clear();
    onStar.clear();
}
