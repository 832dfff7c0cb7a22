/** What a reply is made of: lines, of which the last is the final result, and the values in them. Quotes may stand around a
 *  value or not, and an empty value is one that was not told. */
#ifndef KRCTL_READINGS_REPLY_H
#define KRCTL_READINGS_REPLY_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace krctl {

/** The lines of a text in standard framing, without the empty ones. */
std::vector<std::string> linesOf(std::string_view text);

/** The last line; empty if there is none. */
std::string finalResultOf(std::string_view reply);

/** The lines in front of an OK; none behind any other final result. */
std::vector<std::string> bodyOf(std::string_view reply);

/** What a final result such as "+CME ERROR: 11" says behind its name, a number or a text; empty for other results. */
std::string_view errorIn(std::string_view finalResult);

/** What stands behind the name of a line; the whole line if it has none. */
std::string_view parametersOf(std::string_view line);

/** The lines of a body that carry values: those with a name, if any has one. */
std::vector<std::string> valueLinesOf(std::string_view reply);

bool isQuoted(std::string_view field);
std::string unquoted(std::string_view field);

/** The values of a line, without quotes. */
using Values = std::vector<std::string>;
Values valuesOf(std::string_view line);
/** The value at a place; empty if there is none. */
std::string valueAt(const Values &values, size_t place);

/** A whole decimal number, with leading zeros or not. */
std::optional<int32_t> numberIn(std::string_view value);
/** The number at a place of the first line of values in a reply. */
std::optional<int32_t> numberAt(std::string_view reply, size_t place);

bool isAll(std::string_view text, std::string_view characters);
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";

std::string inCapitals(std::string_view text);

/** What a modem answers while a call of the library runs, by command. */
class Replies {
  public:
    /** @param command  in any case; kept up to its "=" or "?", so that no secret is */
    void add(std::string_view command, std::string_view reply);

    /** The last reply to commands that begin so, in capitals: "AT+CPIN?", "AT+CLCK=".
     *  @return empty if there was none */
    std::string_view to(std::string_view commandStart) const;
    std::vector<std::string_view> allTo(std::string_view commandStart) const;
    /** The last reply of all. */
    std::string_view last() const { return all_.empty() ? std::string_view() : all_.back().second; }

  private:
    std::vector<std::pair<std::string, std::string>> all_;
};

} // namespace krctl

#endif
