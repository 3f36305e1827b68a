#include "data72info.h"

namespace {
const QString kNoValue = QStringLiteral("--");
constexpr int kTrendPoints = 51;
} // namespace

void bodyInformation72::clear()
{
    rearDistanceText = kNoValue;
    frontDistanceText = kNoValue;
    outdoorTempText = kNoValue;
    oilColourText = kNoValue;
    rangeText = kNoValue;
}

void drivingMode72::clear()
{
    driveMode = driveHigh2 = driveMid2 = driveBit3 = 0;
    driveTempText1 = drivePressureText = driveKpaText = driveTempText2 = kNoValue;
}

void energyManagement72::clear()
{
    energyMode = energyFlow = 0;
    energyText1 = energyText2 = energyText3 = kNoValue;
    energyUseText1 = energyUseText2 = kNoValue;
}

void OilPotentialTrendInformation72::clear()
{
    trendCurve1 = QByteArray(kTrendPoints, '\0');
    trendCurve2 = QByteArray(kTrendPoints, '\0');
}

void Data72Info::clear()
{
    mileage.clear();
    functions.clear();
    voice.clear();
    body.clear();
    setup4.clear();
    setup.clear();
    setup2.clear();
    setup3.clear();
    warnings.clear();
    panoramic.clear();
    drivingMode.clear();
    energy.clear();
    trend.clear();
}
