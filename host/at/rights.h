/** What a command may do, in a few words that can be granted one by one. */
#ifndef HOST_AT_RIGHTS_H
#define HOST_AT_RIGHTS_H

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace host::at {

enum class Right : uint8_t {
    Read,     ///< identity, registration, signal: whatever only asks
    Network,  ///< radio, selection, attachment, profiles, calls that are held
    Settings, ///< reports, error modes and formats, which bother nobody else
    Sim,      ///< what takes a PIN, PUK, password or code, also a dialled one; messages and the phone book
    Device, ///< reset, power, factory settings, firmware, calibration, locks, and whatever garbles the line for others
    Raw,    ///< what nobody knows, and what takes the line away or asks for a text
    Trace,  ///< to hear what others send; no command takes it
};

inline constexpr std::array kEveryRight{Right::Read,   Right::Network, Right::Settings, Right::Sim,
                                        Right::Device, Right::Raw,     Right::Trace};

/** A set of rights. */
class Rights {
  public:
    constexpr Rights() = default;
    constexpr Rights(Right right) : bits_(bitOf(right)) {} // NOLINT(google-explicit-constructor): one right is a set

    static constexpr Rights all()
    {
        Rights rights;
        for (const Right right : kEveryRight)
            rights = rights | right;
        return rights;
    }

    constexpr bool isEmpty() const { return bits_ == 0; }
    /** Whether each of the others is among these. */
    constexpr bool has(Rights others) const { return others.without(*this).isEmpty(); }
    constexpr Rights operator|(Rights other) const { return Rights(static_cast<uint8_t>(bits_ | other.bits_)); }
    constexpr Rights without(Rights others) const { return Rights(static_cast<uint8_t>(bits_ & ~others.bits_)); }
    constexpr bool operator==(const Rights &) const = default;

  private:
    constexpr explicit Rights(uint8_t bits) : bits_(bits) {}
    static constexpr uint8_t bitOf(Right right) { return static_cast<uint8_t>(1U << static_cast<unsigned>(right)); }

    uint8_t bits_ = 0;
};

constexpr Rights operator|(Right one, Right other)
{
    return Rights(one) | other;
}

/** A word in small letters: "read". */
std::string_view nameOf(Right right);
std::optional<Right> rightNamed(std::string_view word);

/** What all commands of a line need together; a bare AT needs nothing. */
Rights rightsFor(std::string_view commandLine);

} // namespace host::at

#endif
