#pragma once
// The climate panel's buttons, which the facade signals to every driver that has the
// matching slot (setAuto(), SetleftPlus() ...). Each driver's slots are one line that
// names its button; a table of the driver turns the button into its box's command
// code, with the code a right-hand-drive vehicle uses, where the two zones trade
// places.
//
//   constexpr canbus::ClimateButtonRow kButtons[] = {
//       {canbus::ClimateButton::LeftPlus, 13, 15},
//   };
//   void CanbusNNObj::SetleftPlus() { press(canbus::ClimateButton::LeftPlus); }

#include <cstddef>
#include <optional>

#include <QtGlobal>

namespace canbus {

enum class ClimateButton : quint8 {
    Switch,         // SetSwitch
    Ac,             // SetAc
    Auto,           // setAuto
    Dual,           // SetDUAL
    FrontDefrost,   // SetfrontDefrostLeftL
    RearDefrost,    // SetrearDefrostLeftL
    FanUp,          // SetGale
    FanDown,        // Setsmall
    LeftPlus,       // SetleftPlus
    LeftLess,       // SetleftLess
    RightPlus,      // SetrightPlus
    RightLess,      // SetrightLess
    InnerLoop,      // setinnerLoop
    BlowOn,         // BlowOn(bool)
    MediumBlow,     // MediumBlow(bool)
    BlowDown,       // BlowDown(bool)
    LeftHeating,    // LeftHeatingButton(int)
    RightHeating,   // RightHeatingButton(int)
};

struct ClimateButtonRow
{
    ClimateButton button;
    int code;
    int rightHandCode;
};

// The code of `button`, none when the driver's box has no such command.
template <std::size_t N>
std::optional<int> climateButtonCode(const ClimateButtonRow (&rows)[N], ClimateButton button,
                                     bool rightDriver)
{
    for (const ClimateButtonRow& row : rows) {
        if (row.button == button)
            return rightDriver ? row.rightHandCode : row.code;
    }
    return std::nullopt;
}

} // namespace canbus
