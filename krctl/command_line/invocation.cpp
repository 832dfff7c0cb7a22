#include "krctl/command_line/invocation.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include <CLI/CLI.hpp>

#include "krctl/command_line/completion.h"
#include "krctl/command_line/global_options.h"
#include "krctl/command_line/help.h"
#include "krctl/command_line/mistakes.h"
#include "krctl/command_line/vocabulary.h"

namespace krctl {
namespace {

using Words = std::vector<std::string>;
using Kind = Parameter::Kind;

std::optional<int32_t> numberOf(const Parameter &parameter, const std::string &text)
{
    int32_t number = 0;
    const char *end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    const bool isNumber = error == std::errc() && stopped == end;
    const bool isWithin = number >= parameter.lowest && number <= parameter.highest;
    return isNumber && isWithin ? std::optional(number) : std::nullopt;
}

/** The number that a text stands for; 0 for a text that is nothing but a text. */
std::optional<int32_t> codeFor(const Parameter &parameter, const std::string &text)
{
    switch (parameter.kind) {
    case Kind::Number:
        return numberOf(parameter, text);
    case Kind::Choice:
        return codeOf(parameter.choices, text);
    case Kind::ChoiceOrNumber:
        if (const auto code = codeOf(parameter.choices, text)) return code;
        return numberOf(parameter, text);
    case Kind::Text:
    case Kind::Flag:
        break;
    }
    return 0;
}

/** As CLI11 wants an option's names. */
std::string namesOf(const Parameter &parameter)
{
    return parameter.shortName == nullptr ? parameter.name : std::string(parameter.shortName) + ',' + parameter.name;
}

void addTo(CLI::App &application, const Parameter &parameter)
{
    if (parameter.kind == Kind::Flag)
        application.add_flag(namesOf(parameter));
    else
        application.add_option(namesOf(parameter));
}

/** The values that an application has heard for its parameters. Throws a Failure if one is missing or not possible.
 *  @param path  of the command, for the failure */
Arguments valuesOf(const CLI::App &application, std::span<const Parameter> parameters, const std::string &path)
{
    Arguments values;
    for (const Parameter &parameter : parameters) {
        const CLI::Option &option = *application.get_option(parameter.name);
        if (option.count() > 0) {
            const std::string text = parameter.kind == Kind::Flag ? "" : option.results().back();
            const std::optional<int32_t> code = codeFor(parameter, text);
            if (!code) throw impossibleValue(path, parameter, text);
            values.set(parameter.name, text, *code);
        } else if (!parameter.isOption() && parameter.isRequired) {
            throw missingArgument(path, parameter);
        }
    }
    return values;
}

/** Whether a flag was given, and not as "--json=false". */
bool isOn(const CLI::Option &flag)
{
    return flag.count() > 0 && flag.results().back() == "true";
}

/** What stands behind "--", which is cut off. */
Words cutRest(Words &words)
{
    const auto separator = std::find(words.begin(), words.end(), "--");
    Words rest(separator == words.end() ? separator : separator + 1, words.end());
    words.erase(separator, words.end());
    return rest;
}

/** The commands as CLI11 sees them: one application a word, texts as they come. */
class Parser {
  public:
    Parser();

    Invocation parse(Words words);

  private:
    CLI::App &applicationOf(std::string_view path);
    bool hear(Words words);
    void readCommand(Words rest, Invocation &invocation) const;
    void readGlobalOptions(Invocation &invocation) const;
    const CLI::App &parsed() const;
    std::string parsedPath() const;

    CLI::App root_{"", "krctl"};
};

Parser::Parser()
{
    root_.fallthrough();
    root_.require_subcommand(0, 1); // so that an argument may be called like a command beside its own
    root_.set_help_flag(namesOf(kHelp));
    for (const Parameter &option : globalOptions())
        if (option.name != std::string_view(kHelp.name)) addTo(root_, option);
    for (const Command &command : commands()) {
        CLI::App &application = applicationOf(command.path);
        for (const Parameter &parameter : command.parameters)
            addTo(application, parameter);
    }
}

CLI::App &Parser::applicationOf(std::string_view path)
{
    CLI::App *application = &root_;
    while (!path.empty()) {
        const std::string word(path.substr(0, path.find(' ')));
        path.remove_prefix(std::min(word.size() + 1, path.size()));
        const auto below = application->get_subcommands([&](CLI::App *one) { return one->get_name() == word; });
        application = below.empty() ? application->add_subcommand(word) : below.front();
        application->require_subcommand(0, 1);
    }
    return *application;
}

/** The application of the last word. */
const CLI::App &Parser::parsed() const
{
    const CLI::App *application = &root_;
    while (!application->get_subcommands().empty())
        application = application->get_subcommands().front();
    return *application;
}

std::string Parser::parsedPath() const
{
    std::string path;
    for (const CLI::App *application = &parsed(); application != &root_; application = application->get_parent())
        path.insert(0, application->get_name() + (path.empty() ? "" : " "));
    return path;
}

/** Throws a Failure if the words make no sense; what could be understood of them is there all the same.
 *  @return whether help is asked for */
bool Parser::hear(Words words)
{
    std::reverse(words.begin(), words.end()); // as CLI11 takes them
    try {
        root_.parse(words);
    } catch (const CLI::CallForHelp &) {
        return true;
    } catch (const CLI::ExtrasError &) {
        const Words extras = root_.remaining(true);
        throw unexpectedWord(parsedPath(), extras.empty() ? "" : extras.front());
    } catch (const CLI::ParseError &error) {
        throw malformedLine(parsedPath(), error.what());
    }
    return false;
}

void Parser::readCommand(Words rest, Invocation &invocation) const
{
    const std::string path = parsedPath();
    const Command *command = commandAt(path);
    if (command == nullptr && !path.empty()) throw missingVerb(path);
    if (command == nullptr) {
        invocation.text = shortHelp();
        return;
    }
    if (!rest.empty() && !command->takesRest) throw unexpectedRest(path);
    invocation.arguments = valuesOf(parsed(), command->parameters, path);
    invocation.arguments.rest = std::move(rest);
    invocation.command = command;
}

void Parser::readGlobalOptions(Invocation &invocation) const
{
    const std::string path = parsedPath();
    if (commandAt(path) != nullptr) invocation.path = path;
    for (const CLI::Option *option : root_.parse_order()) { // the last form counts
        if (!isOn(*option)) continue;
        if (option->check_name(kJson.name)) invocation.form = Form::Json;
        if (option->check_name(kKeyValue.name)) invocation.form = Form::KeyValue;
        if (option->check_name(kNoColour.name)) invocation.wantsColour = false;
    }
    const Arguments values = valuesOf(root_, globalOptions(), path);
    invocation.session = {.socket = values.text(kSocket.name), .platform = values.text(kPlatform.name)};
}

Invocation Parser::parse(Words words)
{
    Invocation invocation;
    Words rest = cutRest(words);
    try {
        if (hear(std::move(words)))
            invocation.text = helpFor(parsedPath());
        else if (root_.count(kVersion.name) > 0)
            invocation.text = versionText();
        else
            readCommand(std::move(rest), invocation);
    } catch (const Failure &failure) {
        invocation.failure = failure;
    }
    readGlobalOptions(invocation);
    return invocation;
}

} // namespace

Invocation invocationOf(const std::vector<std::string> &words)
{
    if (words.empty() || words.front() != "--complete") return Parser().parse(words);
    Invocation invocation; // for the shell, which may ask about half an option
    for (const std::string &word : completionsOf({words.begin() + 1, words.end()}))
        invocation.text += word + '\n';
    return invocation;
}

} // namespace krctl
