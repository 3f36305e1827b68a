// The vehicle's reminder and consumer messages (frames 0x60 and 0x62), by number.
#include "canbus28.h"

#include <cstddef>

namespace {

#define PROMPT(text) QT_TRANSLATE_NOOP("Canbus28Obj", text)

// Index = the number the vehicle sends. Several numbers share a text on purpose: the
// vehicle tells different causes that the driver sees as the same message.
constexpr const char* kVehicleReminders[] = {
    PROMPT("Trailer mode"),                                                    // 0
    PROMPT("Windscreen could become fogged"),
    PROMPT("Operating temperature not maintained"),
    PROMPT("No driver detected"),
    PROMPT("Gearbox requires engine to be running"),
    PROMPT("Power consumption is high"),                                       // 5
    PROMPT("Starting start-stop system"),
    PROMPT("Engine must be running"),
    PROMPT("Gradient too steep"),
    PROMPT("Start-stop system is currently not available"),
    PROMPT("Emergency brake function intervention"),                           // 10
    PROMPT("Brake requires engine to be running"),
    PROMPT("Power consumption is high"),
    PROMPT("Air conditioning requires engine to be running"),
    PROMPT("Steering angle too great"),
    PROMPT("Manoeuvering mode"),                                               // 15
    PROMPT("Defrost function is switched on"),
    PROMPT("Driver seatbelt not fastened"),
    PROMPT("Driver door open"),
    PROMPT("Accelerator is depressed"),
    PROMPT("Windscreen heating is switched on"),                               // 20
    PROMPT("Maximum air conditioning requires engine to be running"),
    PROMPT("Bonnet has been opened"),
    PROMPT("Engine stop currently not possible"),
    PROMPT("Off-road mode is activated"),
    PROMPT("System protection intervention Button/leveractivated too often"),  // 25
    PROMPT("Gear is engaged"),
    PROMPT("Start-stop button pressed"),
    PROMPT("Air conditioning requires engine to be running"),
    PROMPT("ACC intervention"),
    PROMPT("Park Assist is activated"),                                        // 30
    PROMPT("ESC is switched off"),
    PROMPT("Power consumption is high"),
    PROMPT("Start-stop system requires engine to be running"),
};

// Index = the number the vehicle sends; 0 names nothing. 7 and 9 share a text: the
// vehicle's own list has it twice.
constexpr const char* kConsumerPrompts[] = {
    nullptr,                                   // 0
    PROMPT("Air conditioning"),
    PROMPT("Auxiliary heater"),
    PROMPT("Rear window heating"),
    PROMPT("Left seat heating"),
    PROMPT("Right seat heating"),              // 5
    PROMPT("Left seat ventilation"),
    PROMPT("Right head area heating"),
    PROMPT("Left head area heating"),
    PROMPT("Right head area heating"),
    PROMPT("Front fog light"),                 // 10
    PROMPT("Rear fog light"),
    PROMPT("Windscreen heating"),
    PROMPT("Steering wheel heating"),
    PROMPT("Mirror heating"),
    PROMPT("Rear seat heating"),               // 15
    PROMPT("Rear seat ventilation"),
    PROMPT("Socket"),
    PROMPT("Drink holder"),
};

#undef PROMPT

template <std::size_t N>
const char* textAt(const char* const (&texts)[N], uchar value)
{
    return value < N ? texts[value] : nullptr;
}

} // namespace

QString Canbus28Obj::getVehicleReminder(uchar value) const
{
    const char* text = textAt(kVehicleReminders, value);
    return text ? tr(text) : QString();
}

QString Canbus28Obj::getConv_ConsumersPromptMessage(uchar value) const
{
    const char* text = textAt(kConsumerPrompts, value);
    return text ? tr(text) : QString();
}
