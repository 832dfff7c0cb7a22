/** Reading command lines (V.250 5.2 and 5.4), such as "AT+CMEE=2;+CREG?". Case does not count, nor do blanks outside
 *  quotes, in names and around them. */
#ifndef HOST_AT_COMMAND_LINE_H
#define HOST_AT_COMMAND_LINE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host::at {

inline constexpr std::string_view kBlanks = " \t";

enum class Form : uint8_t {
    Execute,
    Read,
    Test,
    Set,
    Malformed, ///< something stands behind the name that is none of these
};

struct Command {
    std::string name; ///< in capitals, with its sign: "+CREG"; of a basic command its letter: "E", "&F"; empty if none
    Form form = Form::Execute;
    std::string_view parameters{}; ///< of a set command, without the blanks around: "1,\"IP\""; of a basic one "0"
    std::string_view text{};       ///< all of it, to the next command
    size_t nameEnd = 0;            ///< in its text: behind the name and the blanks that follow
};

/** Whether a line begins with AT, without which a modem does not answer it. */
bool isCommandLine(std::string_view line);

/** The commands of a line, in their order, whether AT stands before them or not.
 *  @param line  without its carriage return; outlives what is returned */
std::vector<Command> commandsOf(std::string_view line);

/** Whether a command searches for operators: AT+COPS=?, or AT+COPS=5, which common modems answer with an operator a line. */
bool isOperatorScan(const Command &command);

/** A name behind a sign, wherever it stands in a text: in quotes, too, and in text that is no command line. */
struct Mention {
    std::string name; ///< as in Command
    std::string word; ///< the name up to its first blank: what a modem may know that does not pass over blanks
    size_t begin;     ///< where its sign stands, or any other mark that some vendor may take for one
    size_t end;       ///< behind it and the blanks that follow: a '=', a ':', or anything else
};

std::optional<Mention> findMention(std::string_view text, size_t from);

/** Whether what stands behind the '=' of a command makes it a test: a question mark, and nothing else of this command. */
bool isTest(std::string_view behindEqualsSign);

} // namespace host::at

#endif
