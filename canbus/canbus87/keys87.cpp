#include "keys87.h"

namespace keys87 {

namespace {

struct Key
{
    int value;
    int code;
    int inCall;   // the code while a call is active; 0 for the same as `code`
};

constexpr int kHighest = 128;

constexpr Key kKeys[] = {
    {2, 0x1100029, 0},
    {3, 0x110003F, 0},   {56, 0x110003F, 0},
    {4, 0x1100040, 0},   {57, 0x1100040, 0},
    {7, 0x1100041, 0},
    {8, 0x110002A, 0},
    {16, 0x1200027, 0},  {44, 0x1200027, 0},  {74, 0x1200027, 0},  {97, 0x1200027, 0},
    {17, 0x1200027, 0x120002B},   // hang up during a call
    {18, 0x110002E, 0},  {24, 0x110002E, 0},  {86, 0x110002E, 0},
    {19, 0x110002F, 0},  {23, 0x110002F, 0},  {87, 0x110002F, 0},
    {20, 0x1100025, 0},  {53, 0x1100025, 0},  {66, 0x1100025, 0},  {88, 0x1100025, 0},
    {21, 0x1100024, 0},  {55, 0x1100024, 0},  {67, 0x1100024, 0},  {89, 0x1100024, 0},
    {22, 0x1100023, 0},
    {25, 0x130000C, 0},  {32, 0x130000C, 0},  {33, 0x130000C, 0},
    {42, 0x130000C, 0},  {46, 0x130000C, 0},  {52, 0x130000C, 0},
    {35, 0x1300055, 0x120002B},   // hang up during a call
    {41, 0x1300055, 0},
    {43, 0x1200061, 0},  {50, 0x1200061, 0},
    {45, 0x120002B, 0},  {98, 0x120002B, 0},
    {48, 0x1300058, 0},
    {49, 0x1300059, 0},
    {51, 0x1200029, 0},  {80, 0x1200029, 0},
    {54, 0x1300060, 0},
    {64, 0x110003D, 0},
    {65, 0x110003E, 0},
    {68, 0x1100031, 0},  {69, 0x1100032, 0},  {70, 0x1100033, 0},
    {71, 0x1100034, 0},  {72, 0x1100035, 0},  {73, 0x1100036, 0},
    {81, 0x1200061, 0x120002B},   // hang up during a call
    {82, 0x120002F, 0},
    {83, 0x1200067, 0},
    {85, 0x1100028, 0},
    {128, 0x1200030, 0},
};

} // namespace

int keyCode(int value, bool inCall, int lowest)
{
    if (value < lowest || value > kHighest)
        return 0;
    for (const Key& key : kKeys) {
        if (key.value == value)
            return inCall && key.inCall != 0 ? key.inCall : key.code;
    }
    return 0;
}

} // namespace keys87
