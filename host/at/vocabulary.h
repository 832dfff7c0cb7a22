/** The commands that are known, a row each: what rights they take, and which of their arguments anybody may read. What is
 *  not in here takes the right to send anything, and all of its arguments are hidden. */
#ifndef HOST_AT_VOCABULARY_H
#define HOST_AT_VOCABULARY_H

#include <cstdint>
#include <span>
#include <string_view>

#include "host/at/command_line.h"
#include "host/at/rights.h"

namespace host::at {

/** Numbers of arguments, counted from 1. */
class Arguments {
  public:
    constexpr Arguments() = default;
    template <typename... Numbers>
    static constexpr Arguments of(Numbers... numbers)
    {
        Arguments arguments;
        ((arguments.bits_ |= 1U << static_cast<unsigned>(numbers)), ...);
        return arguments;
    }
    static constexpr Arguments every()
    {
        Arguments arguments;
        arguments.bits_ = ~0U;
        return arguments;
    }
    constexpr bool has(int number) const
    {
        constexpr int kBits = 32;
        return ((bits_ >> static_cast<unsigned>(number < kBits ? number : kBits - 1)) & 1U) != 0;
    }

  private:
    uint32_t bits_ = 0;
};

/** A command that is known. */
struct Word {
    std::string_view name; ///< as in Command
    Arguments harmless;    ///< those that may be read even if they look like a text or a code
    Rights whenAsked;      ///< for its value or its range
    Rights whenRun;        ///< without arguments
    Rights whenSet;        ///< unless a variant says otherwise
    bool tellsText;        ///< its reply has lines of any text, and no name
};

std::span<const Word> allWords();

/** @return nullptr for a command that nobody knows */
const Word *wordNamed(std::string_view name);

/** What a command takes. */
Rights rightsFor(const Command &command);

} // namespace host::at

#endif
