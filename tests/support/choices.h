#ifndef TESTS_SUPPORT_CHOICES_H
#define TESTS_SUPPORT_CHOICES_H

#include <cstddef>
#include <span>
#include <string>

/** Choices that somebody else makes, such as a fuzzer: the fewest bytes for each. Behind the last byte every choice is the
 *  last one. */
class Choices {
  public:
    explicit Choices(std::span<const unsigned char> bytes) : bytes_(bytes) {}

    size_t below(size_t limit);
    bool oneIn(size_t chances) { return below(chances) == 0; }
    /** The bytes up to a zero, as they are. */
    std::string text();
    /** All bytes that are left. */
    std::string rest();

  private:
    std::span<const unsigned char> bytes_;
};

#endif
