#include "airdata.h"

#include <cstring>

void AirData::clear()
{
    const quint8 valid = airValid;
    const quint8 showFlag = airShowFlag;
    TirePressureInformation keptTire = tire;
    *this = AirData();
    airValid = valid;
    airShowFlag = showFlag;
    tire = keptTire;
}

bool AirData::compare(const AirData& other) const
{
    const SeatHeatingData& a = seat;
    const SeatHeatingData& b = other.seat;
    const bool seatsEqual = a.seatHotVisible == b.seatHotVisible
        && a.seatHotLeft == b.seatHotLeft && a.seatHotRight == b.seatHotRight
        && a.seatCoolVisible == b.seatCoolVisible
        && a.seatCoolLeft == b.seatCoolLeft && a.seatCoolRight == b.seatCoolRight
        && a.seatGroup3Left == b.seatGroup3Left && a.seatGroup3Right == b.seatGroup3Right
        && a.seatGroup4Visible == b.seatGroup3Visible   // crosswise on purpose
        && a.seatGroup4Level == b.seatGroup4Level && a.seatGroup4Right == b.seatGroup4Right
        && std::memcmp(a.seatGroup4Extra, b.seatGroup4Extra, sizeof a.seatGroup4Extra) == 0;
    if (!seatsEqual)
        return false;

    const bool rawEqual = rawFrame.size() == other.rawFrame.size()
        && rawFrame.indexOf(other.rawFrame) != -1;

    return rawEqual && id == other.id && airPower == other.airPower
        && tempLeftVisible == other.tempLeftVisible && tempLeftLow == other.tempLeftLow
        && tempLeftHigh == other.tempLeftHigh && tempRightVisible == other.tempRightVisible
        && tempRightLow == other.tempRightLow && tempRightHigh == other.tempRightHigh
        && tempLeftFahrenheit == other.tempLeftFahrenheit
        && tempRightFahrenheit == other.tempRightFahrenheit
        && tempLeft == other.tempLeft && tempRight == other.tempRight
        && tempRear == other.tempRear && tempRear2 == other.tempRear2
        && tempRearVisible == other.tempRearVisible && tempRearLow == other.tempRearLow
        && tempRearHigh == other.tempRearHigh && tempRearFahrenheit == other.tempRearFahrenheit
        && tempRear2Low == other.tempRear2Low && tempRear2High == other.tempRear2High
        && tempRear2Fahrenheit == other.tempRear2Fahrenheit && tempUnit == other.tempUnit
        && airOnOff == other.airOnOff && airAC == other.airAC && airAcMax == other.airAcMax
        && airState1 == other.airState1 && airSync == other.airSync && airDual == other.airDual
        && airAuto == other.airAuto && airAutoSoft == other.airAutoSoft
        && airAutoStrong == other.airAutoStrong && airState2 == other.airState2
        && airInnerLoop == other.airInnerLoop && airAutoLoop == other.airAutoLoop
        && airOuterLoop == other.airOuterLoop && airRearLock == other.airRearLock
        && airEco == other.airEco && airState3 == other.airState3 && airState4 == other.airState4
        && airDefrostFront == other.airDefrostFront && airDefrostMax == other.airDefrostMax
        && airDefrostRear == other.airDefrostRear && airState5 == other.airState5
        && airWindUpLeft == other.airWindUpLeft && airWindFrontLeft == other.airWindFrontLeft
        && airWindDownLeft == other.airWindDownLeft && airState6 == other.airState6
        && airWindSpeedLeft == other.airWindSpeedLeft && airWindUpRight == other.airWindUpRight
        && airWindFrontRight == other.airWindFrontRight
        && airWindDownRight == other.airWindDownRight && airState7 == other.airState7
        && airWindSpeedRight == other.airWindSpeedRight
        && std::memcmp(airRearSpare, other.airRearSpare, sizeof airRearSpare) == 0;
}
