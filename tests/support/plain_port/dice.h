#ifndef TESTS_SUPPORT_PLAIN_PORT_DICE_H
#define TESTS_SUPPORT_PLAIN_PORT_DICE_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "tests/support/choices.h"

namespace plain {

/** Every choice of a round, from one seed or made elsewhere. */
class Dice {
  public:
    explicit Dice(uint32_t seed) : engine_(seed) {}
    explicit Dice(Choices &made) : made_(&made) {}

    size_t below(size_t limit) { return made_ != nullptr ? made_->below(limit) : engine_() % limit; }
    bool oneIn(size_t chances) { return below(chances) == 0; }

    template <typename Choices>
    auto pick(const Choices &choices)
    {
        return choices[below(std::size(choices))];
    }

    std::string of(std::string_view alphabet, size_t length);

    /** The length of a text: short for the most part, now and then at or around a limit. */
    size_t length();
    /** An integer that a host may hand over: small for the most part. */
    int32_t integer();

    /** Where choices are made elsewhere, whether a text is theirs too, and the text. */
    bool isWritten() { return made_ != nullptr && oneIn(2); }
    std::string written() { return made_->text(); }

  private:
    std::mt19937 engine_;
    Choices *made_ = nullptr;
};

} // namespace plain

#endif
