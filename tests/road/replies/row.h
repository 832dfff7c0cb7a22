/** A modem's replies and what krctl makes of them, as the rows of a JSON file tell it. README.md has the form. */
#ifndef TESTS_ROAD_REPLIES_ROW_H
#define TESTS_ROAD_REPLIES_ROW_H

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace replies {

using Json = nlohmann::json;

// NOLINTNEXTLINE(bugprone-exception-escape): moving a JSON value never throws, though it is not declared so
struct Row {
    std::string id; ///< "class/name"
    std::vector<std::string> families;
    std::map<std::string, Json> say; ///< by command, as foldedCommand() gives it
    std::string otherwise;
    bool echoes = false;
    bool isExactCase = false;
    bool isPluggedIn = false;
    bool isDebatable = false;
    std::vector<std::string> reports;
    std::vector<std::string> run;
    std::optional<std::string> input;
    Json expect;
    std::vector<std::string> sends; ///< regular expressions
    std::vector<std::string> never;

    std::string foldedCommand(std::string_view command) const;
    /** With underscores, since a hyphen has a meaning in filters of tests. */
    std::string className() const;
    std::string name() const { return id.substr(id.find('/') + 1); }
};

/** Objects without an id are remarks and passed over.
 *  @throws std::exception for a file that is not of the form */
std::vector<Row> readRows(const std::string &file);

/** The octets of a text of the file, where a lone low surrogate stands for one octet. */
std::string octets(std::string_view text);

} // namespace replies

#endif
