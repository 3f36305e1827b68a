#include "common/kkmapkeys.h"

#include <algorithm>
#include <iterator>

namespace canbus {

namespace {

// Head-unit key code -> number of the kernel's virtual keyboard. Sorted by code.
struct KkmapKey { int code; int number; };
constexpr KkmapKey kKkmapKeys[] = {
    {0x1100023, 149}, {0x1100024, 167}, {0x1100025, 166}, {0x1100026, 246},
    {0x1100027, 248}, {0x1100028, 150}, {0x1100029, 305}, {0x110002A, 250},
    {0x110002B, 247}, {0x110002C, 314}, {0x110002D, 245}, {0x110002E, 233},
    {0x110002F, 232}, {0x1100030, 187}, {0x1100031, 188}, {0x1100032, 189},
    {0x1100033, 190}, {0x1100034, 191}, {0x1100035, 192}, {0x1100036, 193},
    {0x1100037, 194}, {0x1100038, 195}, {0x1100039, 196}, {0x110003C, 359},
    {0x110003D, 155}, {0x110003E, 156}, {0x110003F, 153}, {0x1100040, 154},
    {0x1100041, 157}, {0x1100045, 339}, {0x1100048, 352}, {0x110004D, 348},
    {0x110004E, 349},
    {0x120000B, 277}, {0x1200026, 314}, {0x1200027, 172}, {0x1200028, 316},
    {0x1200029, 226}, {0x120002B, 179}, {0x120002E, 324}, {0x120002F, 294},
    {0x1200030, 148}, {0x1200061, 325}, {0x1200062, 326}, {0x1200063, 311},
    {0x1200064, 327}, {0x1200065, 241}, {0x1200066, 240}, {0x1200067, 242},
    {0x1200080, 198}, {0x1200081, 199},
    {0x130000C, 272}, {0x130000E, 178}, {0x130000F, 356}, {0x1300010, 357},
    {0x1300011, 358}, {0x1300055, 344}, {0x1300058, 347}, {0x1300059, 351},
    {0x1300060, 360},
};

constexpr bool sortedByCode()
{
    for (std::size_t i = 1; i < std::size(kKkmapKeys); ++i) {
        if (kKkmapKeys[i - 1].code >= kKkmapKeys[i].code)
            return false;
    }
    return true;
}
static_assert(sortedByCode(), "the key table is searched by bisection");

} // namespace

int kkmapKey(int code)
{
    const auto it = std::lower_bound(std::begin(kKkmapKeys), std::end(kKkmapKeys), code,
                                     [](const KkmapKey& k, int c) { return k.code < c; });
    return (it != std::end(kKkmapKeys) && it->code == code) ? it->number : 0;
}

} // namespace canbus
