#include "tests/support/plain_port/dice.h"

namespace plain {

std::string Dice::of(std::string_view alphabet, size_t length)
{
    std::string text(length, ' ');
    if (made_ != nullptr) { // one choice for all letters
        uint64_t state = below(256);
        for (char &letter : text) {
            state = state * 6364136223846793005U + 1442695040888963407U;
            letter = alphabet[static_cast<size_t>(state >> 33) % alphabet.size()];
        }
        return text;
    }
    for (char &letter : text)
        letter = alphabet[below(alphabet.size())];
    return text;
}

size_t Dice::length()
{
    static constexpr size_t kLimits[] = {2,  10, 12, 19, 20, 28, 30,  32,  34,  36, 39,
                                         40, 63, 67, 68, 74, 99, 101, 127, 254, 512};
    if (!oneIn(4)) return below(12);
    if (oneIn(4)) return 970 + below(60);
    if (oneIn(12)) return below(3000);
    return pick(kLimits) + below(5) - 2;
}

int32_t Dice::integer()
{
    static constexpr int32_t kOdd[] = {-1, INT32_MIN, INT32_MAX, 100, 255, 10000, -12345, 23, 99};
    if (oneIn(5)) return pick(kOdd);
    return static_cast<int32_t>(below(oneIn(2) ? 8 : 24));
}

} // namespace plain
