#pragma once

#include <cstddef>
#include <span>
#include <string>

/// Choices that somebody else makes, such as a fuzzer: the fewest bytes for each. Behind the last byte every choice is the
/// last one.
class Choices {
  public:
    explicit Choices(std::span<const unsigned char> bytes) : bytes_(bytes) {}

    std::size_t below(std::size_t limit);
    bool oneIn(std::size_t chances) { return below(chances) == 0; }
    /// The bytes up to a zero, as they are.
    std::string text();
    /// All bytes that are left.
    std::string rest();

  private:
    std::span<const unsigned char> bytes_;
};
