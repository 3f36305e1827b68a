#pragma once
// The settings pages of frame 0x40: D0 names the page, D1.. hold its items.
#include "data28info.h"

class FrameReader;

// Stores the items of the page the frame names; false for a page this vehicle
// doesn't have, which changes nothing.
bool decodeSettingsPage28(const FrameReader& f, BodyStatusInformation& settings);
