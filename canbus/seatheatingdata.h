#pragma once
#include <QtGlobal>

// Seat heating and cooling levels, embedded in AirData.
//
// The copy constructor leaves the two "group visible" flags of the third and fourth
// seat groups at 0: a copied record never shows those groups until the driver that
// owns the record turns them on again. Assignment copies everything.
class SeatHeatingData
{
public:
    SeatHeatingData() = default;
    SeatHeatingData(const SeatHeatingData& other);
    SeatHeatingData& operator=(const SeatHeatingData& other) = default;
    ~SeatHeatingData() = default;

    quint8 seatHotVisible = 0;
    quint8 seatHotLeft = 0;
    quint8 seatHotRight = 0;
    quint8 seatCoolVisible = 0;
    quint8 seatCoolLeft = 0;
    quint8 seatCoolRight = 0;
    quint8 seatGroup3Visible = 0;
    quint8 seatGroup3Left = 0;
    quint8 seatGroup3Right = 0;
    quint8 seatGroup4Visible = 0;
    quint8 seatGroup4Level = 0;
    quint8 seatGroup4Right = 0;
    quint8 seatGroup4Extra[2] = {0, 0};
};
