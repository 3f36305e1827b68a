#include "seatheatingdata.h"

SeatHeatingData::SeatHeatingData(const SeatHeatingData& other)
    : seatHotVisible(other.seatHotVisible),
      seatHotLeft(other.seatHotLeft),
      seatHotRight(other.seatHotRight),
      seatCoolVisible(other.seatCoolVisible),
      seatCoolLeft(other.seatCoolLeft),
      seatCoolRight(other.seatCoolRight),
      seatGroup3Visible(0),
      seatGroup3Left(other.seatGroup3Left),
      seatGroup3Right(other.seatGroup3Right),
      seatGroup4Visible(0),
      seatGroup4Level(other.seatGroup4Level),
      seatGroup4Right(other.seatGroup4Right),
      seatGroup4Extra{other.seatGroup4Extra[0], other.seatGroup4Extra[1]}
{
}
