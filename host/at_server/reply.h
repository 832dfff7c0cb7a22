/** A reply as lines, and its text as lib_mainControl reads it. */
#ifndef HOST_AT_SERVER_REPLY_H
#define HOST_AT_SERVER_REPLY_H

#include <string>
#include <string_view>
#include <vector>

namespace host::at_server {

inline constexpr std::string_view kPrompt = "> ";

struct Reply {
    std::vector<std::string> lines; ///< of its body, without line ends
    std::string result;             ///< the final result: "OK", "+CME ERROR: 10", kPrompt ...
    bool isTooLong = false;         ///< more than can be kept; the lines are then missing
    bool isEchoed = false;          ///< the echo of its command came before it

    friend bool operator==(const Reply &, const Reply &) = default;
};

enum class ResultKind {
    None, ///< not a final result
    Ok,
    Error,        ///< of any kind that the library knows
    NotSupported, ///< as "COMMAND NOT SUPPORT", which the library knows in other words
    Refusal,      ///< in the modem's own words, such as "MODEM ERROR: 5"
    Call,         ///< of a call: "NO CARRIER", "CONNECT 9600" ...
};

/** Whether a line is the final result of a command.
 *  @param command  that runs: "NO CARRIER" ends only those that make or answer calls, others hear it as a report */
ResultKind resultKind(std::string_view line, std::string_view command);

/** Whether a command makes or takes calls. */
bool makesCalls(std::string_view command);

/** Whether a final result says that the line carries data from now on. */
bool isConnect(std::string_view result);

/** A line with a blank behind the colon of its name, which modems leave out and the library asks for. */
std::string withBlank(std::string_view line);

/** Standard framing: each line closed by CR LF, an empty line before the final result. */
std::string framed(const Reply &reply);

/** Standard framing of a report and the lines that belong to it. */
std::string framedReport(const std::vector<std::string> &lines);

} // namespace host::at_server

#endif
