/** The commands of krctl as data: what the parser, the help, the completion and the tests read. */
#ifndef KRCTL_COMMANDS_COMMAND_H
#define KRCTL_COMMANDS_COMMAND_H

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "krctl/output/report.h"
#include "krctl/values/names.h"

namespace krctl {

class Output;
class Session;

struct Parameter {
    enum class Kind {
        Text,
        Number,         ///< within lowest and highest
        Choice,         ///< one of the words
        ChoiceOrNumber, ///< one of the words, or a number within lowest and highest
        Flag,           ///< an option without a value
    };

    const char *name; ///< "CODE" for a positional one, "--act" for an option
    const char *help;
    Kind kind = Kind::Text;
    bool isRequired = true;          ///< of a positional one
    std::span<const Name> choices{}; ///< of a text only what is usual
    int32_t lowest = 0;
    int32_t highest = 0;
    const char *shortName = nullptr; ///< "-J"
    const char *valueName = nullptr; ///< "PATH"; an option's own name in capitals unless given
    const char *variable = nullptr;  ///< of the environment, for when the option is not given

    bool isOption() const { return name[0] == '-'; }
    bool takesValue() const { return isOption() && kind != Kind::Flag; }
};

/** The values that parameters were given. */
class Arguments {
  public:
    void set(const std::string &name, std::string text, int32_t number);

    bool has(const char *name) const { return values_.contains(name); }
    /** The value as it was typed. */
    std::string text(const char *name, const std::string &fallback = {}) const;
    /** The number, or the code of the word. */
    int32_t number(const char *name, int32_t fallback = 0) const;

    std::vector<std::string> rest; ///< what stood behind "--"

  private:
    struct Given {
        std::string text;
        int32_t number = 0;
    };
    std::map<std::string, Given, std::less<>> values_;
};

/** What a command works with. */
struct Context {
    Session &session;
    const Arguments &arguments;
    Output &output;
};

struct Command {
    const char *path; ///< its words: "sim change-pin"
    const char *help; ///< one line
    const char *examples;
    std::span<const Parameter> parameters{};
    Report (*run)(Context &context) = nullptr;
    bool takesRest = false;  ///< arguments behind "--"
    bool needsServer = true; ///< a session with the server is opened first
};

/** A first word with commands below it. */
struct Noun {
    const char *name;
    const char *help;
};

std::span<const Noun> nouns();

/** All commands, in the order of the help. */
const std::vector<Command> &commands();

} // namespace krctl

#endif
