/** Operators as +COPS tells them, 3GPP TS 27.007 7.3, and as +ZDON does. A text of five or six digits is a code, MCC and
 *  MNC with all their digits; any other is a name. */
#ifndef KRCTL_READINGS_OPERATORS_H
#define KRCTL_READINGS_OPERATORS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krctl {

/** Whether a text is that of an operator's code. */
bool isOperatorCode(std::string_view text);

struct SelectedOperator {
    std::optional<int32_t> mode;   ///< how it was selected
    std::optional<int32_t> format; ///< in which the modem names operators at present
    std::string name;
    std::string code;
    std::optional<int32_t> technology;
};
/** @param reply  to AT+COPS? */
SelectedOperator selectedOperatorOf(std::string_view reply);

struct FoundOperator {
    std::optional<int32_t> state;
    std::string name;
    std::string shortName;
    std::string code;
    int32_t technology = 0; ///< GSM if none is told
};
/** @param reply  to AT+COPS=?, an operator a line */
std::vector<FoundOperator> foundOperatorsOf(std::string_view reply);

/** Which networks serve and are home, by code. */
struct NetworkCodes {
    std::string serving;
    std::string home;
};
/** @param reply  to AT+ZDON? */
NetworkCodes networkCodesOf(std::string_view reply);

} // namespace krctl

#endif
