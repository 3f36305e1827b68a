#include "jeepsetpoints.h"

namespace jeep {

namespace {

QString halfDegrees(double degrees) { return QString::number(degrees, 'g', 6); }

bool celsiusFrom(int lowest, int value, QString& text, bool& fahrenheit)
{
    if (value >= lowest && value <= 40) {
        text = halfDegrees((value - 16) * 0.5 + 16);
        return true;
    }
    if (value >= 60 && value <= 84) {
        fahrenheit = true;
        text = QString::number(value);
        return true;
    }
    return false;
}

} // namespace

bool halfDegreesLeft(int value, QString& text, bool& fahrenheit)
{
    return celsiusFrom(14, value, text, fahrenheit);
}

bool halfDegreesRight(int value, QString& text, bool& fahrenheit)
{
    return celsiusFrom(16, value, text, fahrenheit);
}

bool halfDegreesFromOne(int value, QString& text, bool&)
{
    if (value < 1 || value > 31)
        return false;
    text = halfDegrees((value - 1) * 0.5 + 16);
    return true;
}

} // namespace jeep
