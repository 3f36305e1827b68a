#pragma once
// Set-point scales of the later Jeep boxes, in the form Canbus88Obj::SetPointText takes:
// whether the byte names a temperature, its text, and whether that is in Fahrenheit.
#include <QString>

namespace jeep {

// Half degrees Celsius from 16 at byte 16 (the left side reaches down to 14, that is
// 15 degrees), or whole degrees Fahrenheit at 60..84.
bool halfDegreesLeft(int value, QString& text, bool& fahrenheit);
bool halfDegreesRight(int value, QString& text, bool& fahrenheit);
// Half degrees Celsius from 16 at byte 1 up to byte 31; no Fahrenheit.
bool halfDegreesFromOne(int value, QString& text, bool& fahrenheit);

} // namespace jeep
