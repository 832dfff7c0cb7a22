#ifndef FUZZ_FUZZ_H
#define FUZZ_FUZZ_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

/** What a fuzzer, or a program that replays what fuzzers found, calls for each input. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

inline void require(bool holds, const char *what)
{
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/** A text in memory of its own that ends with its terminator, where the sanitizer sees what is read or written
 *  behind. */
class OwnText {
  public:
    explicit OwnText(const std::string &text) : room_(new char[text.size() + 1])
    {
        text.copy(room_.get(), text.size());
        room_[text.size()] = '\0';
    }

    operator char *() const { return room_.get(); } // NOLINT(google-explicit-constructor): it stands for a char array

  private:
    std::unique_ptr<char[]> room_;
};

#endif
