#pragma once
// The record of the Peugeot Citroen box: trip computer texts, body and climate extras,
// the car's state page, speed memories, hybrid pages and the charging timer.

#include <QMetaType>
#include <QString>
#include <array>

#include "dataidinfo.h"
#include "tripcomputer87.h"

// Amplifier settings: no frame of this box fills them yet; kept so that the record's
// shape stays what the amplifier page reads.
struct AmplifierInformation87
{
    AmplifierInformation87() { clear(); }
    void clear() { bytes.fill(0); }

    std::array<quint8, 11> bytes;
};

// Frames 0x33 to 0x36: the shared trip texts, and what only this box adds to them.
struct TripComputerInformation87 : TripTexts87
{
    TripComputerInformation87() { clear(); }
    void clear()
    {
        TripTexts87::clear();
        tripTime = QStringLiteral("--:--:--");
        tripSpeed = QStringLiteral("--");
        spare.fill(0);
        spareValue = 0;
    }

    QString tripTime;
    QString tripSpeed;
    std::array<quint8, 4> spare;
    int spareValue;
};

struct bodyInformation87
{
    void clear() { *this = bodyInformation87(); }

    quint8 bodyByte0 = 0;         // 0x01
    quint8 exitSelectMode = 0;    // the page exitSelectSlot leaves, counted from 1
    quint8 exitSelectValue = 0;
    quint8 airModeByte = 0;       // 0x21 byte 9, 0..2
    quint8 bodyLevel = 0;         // 0x27, 0..31
    quint8 bodyFlag7 = 0;         // 0x40
    quint8 bodyLevel7 = 0;        // 0x40, 0..7
    std::array<quint8, 5> spare{};
};

// Frame 0x22: the climate's start timer.
struct AirConditionerPresetState87
{
    AirConditionerPresetState87() { clear(); }
    void clear() { flags.fill(0); presetHour = 0; presetMinute = 0; }

    std::array<quint8, 8> flags;   // byte 3, bit 7 first
    quint8 presetHour;
    quint8 presetMinute;
};

// Frame 0x38 behind the doors: flags and small levels, in the frame's order.
struct carStatus87
{
    carStatus87() { clear(); }
    void clear() { values.fill(0); }

    std::array<quint8, 34> values;
};

// Frame 0x3B: six flags, then five speeds.
struct MemorySpeedValue87
{
    MemorySpeedValue87() { clear(); }
    void clear() { values.fill(0); }

    std::array<quint8, 11> values;
};

// Frame 0x3D fills the first twelve bytes, 0x3F the last two flags.
struct CruisingSpeedandSpeedLimit87
{
    CruisingSpeedandSpeedLimit87() { clear(); }
    void clear() { values.fill(0); }

    std::array<quint8, 14> values;
};

// Frame 0x41.
struct setItemStatus_2_87
{
    setItemStatus_2_87() { clear(); }
    void clear() { flags.fill(0); }

    std::array<quint8, 8> flags;
};

// Frame 0x50.
struct HybridInformation_EnergyFlow87
{
    HybridInformation_EnergyFlow87() { clear(); }
    void clear() { energyFlowMode = 0; flags.fill(0); }

    quint8 energyFlowMode;         // 0..9
    std::array<quint8, 8> flags;   // byte 4, bit 7 first
};

// Frame 0x51: the electric and the fuel statistics page.
struct HybridInformation_Statistics87
{
    HybridInformation_Statistics87() { clear(); }
    void clear()
    {
        statKwhMode = 0;
        statFuelMode = 0;
        statKwh = QStringLiteral("--");
        statFuel = QStringLiteral("--");
        kwhBars.fill(0);
        fuelBars.fill(0);
    }

    quint8 statKwhMode;                // 0..2
    quint8 statFuelMode;               // 0..2
    QString statKwh;
    QString statFuel;
    std::array<quint8, 12> kwhBars;    // 0..30
    std::array<quint8, 6> fuelBars;    // 0..10
};

// Frames 0x52 and 0x53.
struct HybridInformation_ChargingAndBatteryStorage87
{
    HybridInformation_ChargingAndBatteryStorage87() { clear(); }
    void clear() { chargeHour = 0; chargeMinute = 0; chargeFlag = 0; chargeLevel = 0; }

    quint8 chargeHour;
    quint8 chargeMinute;
    quint8 chargeFlag;
    quint8 chargeLevel;   // 0..2
};

class Data87Info : public DataIdInfo
{
public:
    void clear() { *this = Data87Info(); }

    AmplifierInformation87 amplifier;
    TripComputerInformation87 trip;
    bodyInformation87 body;
    AirConditionerPresetState87 preset;
    carStatus87 status;
    MemorySpeedValue87 memorySpeed;
    CruisingSpeedandSpeedLimit87 cruising;
    setItemStatus_2_87 items;
    HybridInformation_EnergyFlow87 energyFlow;
    HybridInformation_Statistics87 statistics;
    HybridInformation_ChargingAndBatteryStorage87 charging;
};
Q_DECLARE_METATYPE(Data87Info)
