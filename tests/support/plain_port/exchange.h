#ifndef TESTS_SUPPORT_PLAIN_PORT_EXCHANGE_H
#define TESTS_SUPPORT_PLAIN_PORT_EXCHANGE_H

#include <cstring>
#include <string>
#include <vector>

#include "tests/support/plain_port/world.h"

namespace plain {

constexpr int32_t kDefault = 5000;
constexpr uint32_t kSuccess = 0;
constexpr uint32_t kFalse = 1;

/** One command and its reply, step by step. */
struct Exchange {
    explicit Exchange(World &its) : world(its) {}

    /** A command of more than 1023 characters is not sent, and counts as failed. */
    bool send(const std::string &command, int32_t timeoutMs = kDefault);
    bool parse();
    bool parseOperatorScan();
    [[nodiscard]] bool isOk() const { return record.Result == AT_RES_RESULT_OK; }
    /** All of it: sent, parsed, final result OK. */
    bool succeeds(const std::string &command, int32_t timeoutMs = kDefault);

    [[nodiscard]] std::string paras() const { return record.Paras; }
    [[nodiscard]] std::string rewritten() const;
    [[nodiscard]] bool mentions(const char *errorText) const;

    World &world;
    AtClientRes raw{};
    AtRes record{};
};

/** A text up to its terminator: what stands behind one is not read. */
std::string ended(const std::string &text);

/** A parameter line rewritten for sscanf(), up to its terminator. */
std::string rewritten(const std::string &line);

/** sscanf() of libc with up to seven targets. A number that does not fit keeps its low 32 bits, on every machine: "%d" of
 *  the C library does so only where a long has 64. */
int scan(const std::string &text, const char *pattern, ...) __attribute__((format(scanf, 2, 3)));

/** Room for any token of a text. */
class Token {
  public:
    explicit Token(const std::string &text) : room_(text.size() + 1) {}
    operator char *() { return room_.data(); } // NOLINT(google-explicit-constructor)

  private:
    std::vector<char> room_;
};

/** An array keeps what fits of a token that was read whole; what stands behind the terminator stays. */
template <size_t size>
void keep(char (&array)[size], const char *token)
{
    const size_t length = strnlen(token, size - 1);
    std::memcpy(array, token, length);
    array[length] = '\0';
}

/** Undoes the markers in place. */
void restoreIn(char *text);

/** A pointer as "%d" prints it. */
int32_t address(const void *pointer);

inline const char *orNull(const char *text)
{
    return text != nullptr ? text : "(null)";
}

} // namespace plain

#endif
