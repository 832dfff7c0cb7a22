#ifndef TESTS_SUPPORT_GUARDED_TEXT_H
#define TESTS_SUPPORT_GUARDED_TEXT_H

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "tests/support/record_at.h"

/** Memory that ends where a page ends, with nothing mapped behind it and before it: one byte read or written outside
 *  stops the test at once, with or without sanitizers. */
class GuardedMemory {
  public:
    explicit GuardedMemory(size_t size);
    ~GuardedMemory();
    GuardedMemory(const GuardedMemory &) = delete;
    GuardedMemory &operator=(const GuardedMemory &) = delete;

    [[nodiscard]] char *data() const { return data_; }
    [[nodiscard]] size_t size() const { return size_; }

  private:
    size_t size_;
    size_t mapped_;
    char *pages_;
    char *data_;
};

/** A text whose terminator is the last byte of a page. */
class GuardedText : public GuardedMemory {
  public:
    explicit GuardedText(std::string_view text);

    operator char *() const { return data(); } // NOLINT(google-explicit-constructor): it stands for a char array
    [[nodiscard]] std::string str() const { return data(); }
    /** Every byte, what is behind the terminator included. */
    [[nodiscard]] std::string bytes() const { return {data(), size()}; }
};

/** A record in guarded memory. Where its size is no multiple of its alignment the compiler has padded it, so it always
 *  fits the end of a page. */
template <typename Record>
class GuardedRecord : public GuardedMemory {
  public:
    /** @param pattern  what every byte is filled with */
    explicit GuardedRecord(unsigned char pattern = 0) : GuardedMemory(sizeof(Record))
    {
        std::memset(data(), pattern, sizeof(Record));
    }

    [[nodiscard]] Record *get() const { return recordAt<Record>(data()); }
    Record *operator->() const { return get(); }
    operator Record *() const { return get(); } // NOLINT(google-explicit-constructor)
};

#endif
