#pragma once
// The trip computer items of frame 0x50: D0 names the item, D1 selects its unit and
// the value follows.
#include "carbodydata.h"
#include "data28info.h"

class FrameReader;

// Stores the item's text (and the odometer in `body` for the total distance). An item
// this vehicle doesn't have changes nothing.
void decodeDrivingItem28(const FrameReader& f, DrivingData& driving, CarbodyData& body);
