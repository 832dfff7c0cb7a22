#include "dice.h"

namespace plain {

std::size_t Dice::length()
{
    static constexpr std::size_t kLimits[] = {0,  9,  10, 11,  12,  18,  19,  20,  21,  29,  30,  32,   36,   38,  39,
                                              40, 64, 68, 101, 102, 128, 255, 256, 512, 513, 990, 1010, 1023, 1024};
    if (!oneIn(4)) return below(12);
    if (oneIn(12)) return below(3000);
    return pick(kLimits) + below(3);
}

std::int32_t Dice::integer()
{
    static constexpr std::int32_t kOdd[] = {-1, INT32_MIN, INT32_MAX, 100, 255, 10000, -12345, 23, 99};
    if (oneIn(5)) return pick(kOdd);
    return static_cast<std::int32_t>(below(oneIn(2) ? 8 : 24));
}

} // namespace plain
