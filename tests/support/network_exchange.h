#ifndef TESTS_SUPPORT_NETWORK_EXCHANGE_H
#define TESTS_SUPPORT_NETWORK_EXCHANGE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/guarded_text.h"
#include "tests/support/platforms.h"
#include "tests/support/scripted_host.h"

/** What the tests of the network wrappers share: a wrapper in a form in which tables can drive it. */
namespace network {

using Texts = std::vector<std::string>;

using scripted::kPlatforms;
using scripted::OnPlatform;

/** The longest reply that an AT server hands over. */
constexpr size_t kLongestReply = 10239;

/** A reply in standard framing. */
std::string reply(const Texts &lines, const std::string &finalResult = "OK");
/** A value in quotes, and values with commas between them. */
std::string quoted(const std::string &value);
std::string listed(const Texts &values);
/** What the parser makes of lines that bear one name. */
std::string joined(const Texts &values);
/** Lines that bear a name, from their values. */
Texts named(const std::string &name, const Texts &values);
/** A text between two others that brings all of it to a length. */
std::string stretched(const std::string &front, char filling, const std::string &back, size_t length);
/** A value cut into bare lines, which the parser puts together again: the way to one of more than 1024 characters. */
Texts bareLines(const std::string &value);
/** The length of a value whose bare lines make the longest reply. */
constexpr size_t kLongestBareValue = 10189;

/** What every byte of an output holds before a call. */
constexpr unsigned char kPattern = 'Z';
/** In a row's expected fields: one that the call leaves alone, and one of which nothing is promised. */
constexpr const char *kKept = "(kept)";
constexpr const char *kAny = "(any)";

/** The text in an array of a record, or all of the array with a remark if it has lost its terminator. */
template <size_t N>
std::string textIn(const char (&array)[N])
{
    const size_t length = strnlen(array, N);
    return length < N ? std::string(array) : std::string(array, N) + "(unterminated)";
}

/** Puts a text into a zeroed array of a record. One that fills it has no terminator. */
template <size_t N>
void put(char (&array)[N], const std::string &text)
{
    std::memcpy(array, text.data(), std::min(N, text.size()));
}

/** A pattern that is a text as long as the array allows. */
template <size_t N>
void fillText(char (&array)[N])
{
    std::memset(array, kPattern, N - 1);
    array[N - 1] = '\0';
}

/** One call, with the fields of its outputs in order. */
struct Call {
    uint32_t code;
    Texts before;
    Texts after;
};

/** Calls a wrapper whose outputs are numbers, in order. */
template <size_t N>
std::function<Call()> numbers(uint32_t (*read)(int32_t *))
{
    return [read] {
        using Numbers = std::array<int32_t, N>;
        const auto fields = [](const Numbers &values) {
            Texts texts;
            for (const int32_t value : values)
                texts.push_back(std::to_string(value));
            return texts;
        };
        const GuardedRecord<Numbers> outputs(kPattern);
        const Texts before = fields(*outputs.get());
        const uint32_t code = read(outputs->data());
        return Call{code, before, fields(*outputs.get())};
    };
}

/** Calls a wrapper that has no outputs. */
std::function<Call()> setting(std::function<uint32_t()> set);

/** How far an exchange comes. */
enum class Stage { Send, Parse, Result, Success };

/** An exchange that ends there. */
struct Ending {
    Stage stage;
    std::string reply;
    std::string paras = {}; ///< what the parser takes from the reply
    int sendResult = 0;
};

/** One wrapper, on each platform on which it does the same. */
struct Subject {
    const char *name;
    std::string command;
    int32_t timeoutMs;
    std::function<Call()> run;
    std::string line = {}; ///< one that the modem answers with
    std::function<Texts(const Ending &)> log = [](const Ending &) { return Texts{}; };
    std::vector<int32_t> platforms = kPlatforms;
    bool takesAnyOk = false; ///< whatever stands in front of the OK
};

/** What the modem answers, and what the outputs then hold. */
struct Row {
    const char *name;
    Texts lines;
    Texts expected = {};
    uint32_t code = UNI_ERROR_SUCCESS;
};

/** Every failure gives 1, its own log lines, and untouched outputs. */
void expectFailures(const Subject &subject);
/** An OK gives 0, with and without lines in front of it. */
void expectSuccess(const Subject &subject);
/** Each row gives its code and fields. */
void expectRows(const Subject &subject, const std::vector<Row> &rows);
/** One call on the platform in force, held against a row's fields. */
void expectFields(const Call &call, const Texts &expected);
/** The lines that the network wrappers logged, each of them in the right place. */
Texts ownLog(const scripted::Host &host);

} // namespace network

#endif
