#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace plain {

/// Every choice of a round, from one seed.
class Dice {
  public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}

    std::size_t below(std::size_t limit) { return engine_() % limit; }
    bool oneIn(std::size_t chances) { return below(chances) == 0; }

    template <typename Choices>
    auto pick(const Choices &choices)
    {
        return choices[below(std::size(choices))];
    }

    std::string of(std::string_view alphabet, std::size_t length)
    {
        std::string text(length, ' ');
        for (char &letter : text)
            letter = alphabet[below(alphabet.size())];
        return text;
    }

    /// The length of a text: short for the most part, now and then at or around a limit.
    std::size_t length();
    /// An integer that a host may hand over: small for the most part.
    std::int32_t integer();

  private:
    std::mt19937 engine_;
};

} // namespace plain
