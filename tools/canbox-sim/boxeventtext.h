#pragma once
// One readable line for each thing the box does or hears, e.g.
//   send  AA55 73: 40 40 16 16 63 63 78 00  (aa 55 09 73 .. 2b)  air on
//   recv  ack of 73  (aa 55 01 ff 73 72)
//   recv  2E 81: 01  (2e 81 01 01 7c)  connect

#include <QString>

#include "boxsimulator.h"

namespace canbox {

QString eventText(const BoxEvent& event, canbus::FrameFamily family);

} // namespace canbox
