#include "krctl/command_line/invocation.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include <CLI/CLI.hpp>

#include "krctl/command_line/completion.h"
#include "krctl/command_line/help.h"

namespace krctl {
namespace {

using Words = std::vector<std::string>;

/** Numbers that are out of range, or no numbers, are told in the user's words. */
int32_t numberOf(const Parameter &parameter, const std::string &text, const std::string &where)
{
    int32_t number = 0;
    const char *end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc() && stopped == end && number >= parameter.lowest && number <= parameter.highest)
        return number;
    throw usageFailure('"' + text + "\" is not possible for " + parameter.name + '.', where,
                       "Use " + possibleValues(parameter) + '.');
}

int32_t codeFor(const Parameter &parameter, const std::string &text, const std::string &where)
{
    using Kind = Parameter::Kind;
    if (parameter.kind == Kind::Number) return numberOf(parameter, text, where);
    if (parameter.kind == Kind::Choice || parameter.kind == Kind::ChoiceOrNumber) {
        if (const auto code = codeOf(parameter.choices, text)) return *code;
        if (parameter.kind == Kind::ChoiceOrNumber) return numberOf(parameter, text, where);
        throw usageFailure('"' + text + "\" is not possible for " + parameter.name + '.', where,
                           "Use " + possibleValues(parameter) + '.');
    }
    return 0;
}

/** The commands as CLI11 sees them: one application a word, texts as they come. */
class Parser {
  public:
    Parser();

    Invocation parse(Words words);

  private:
    CLI::App &applicationOf(std::string_view path);
    void addParameters(const Command &command);
    const CLI::App &parsed() const;
    std::string parsedPath() const;
    Invocation read(const std::string &path, Words rest) const;
    [[noreturn]] void throwForExtra(const std::string &path) const;

    CLI::App root_{"", "krctl"};
    CLI::Option *socket_ = nullptr;
    CLI::Option *platform_ = nullptr;
    CLI::Option *version_ = nullptr;
};

Parser::Parser()
{
    root_.fallthrough();
    root_.require_subcommand(0, 1); // so that an argument may be called like a command beside its own
    root_.set_help_flag("-h,--help");
    root_.add_flag("-J,--json");
    root_.add_flag("-K,--key-value");
    root_.add_flag("--no-color");
    socket_ = root_.add_option("--socket");
    platform_ = root_.add_option("--platform");
    version_ = root_.add_flag("--version");
    for (const Command &command : commands())
        addParameters(command);
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

void Parser::addParameters(const Command &command)
{
    CLI::App &application = applicationOf(command.path);
    for (const Parameter &parameter : command.parameters) {
        if (parameter.kind == Parameter::Kind::Flag)
            application.add_flag(parameter.name);
        else
            application.add_option(parameter.name);
    }
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

void Parser::throwForExtra(const std::string &path) const
{
    const Words extras = root_.remaining(true);
    const std::string word = extras.empty() ? "" : extras.front();
    throw unexpectedWord(path, word);
}

Invocation Parser::read(const std::string &path, Words rest) const
{
    Invocation invocation;
    const Command *command = commandAt(path);
    if (version_->count() > 0) {
        invocation.text = versionText();
        return invocation;
    }
    if (command == nullptr) {
        if (!path.empty()) throw missingVerb(path);
        invocation.text = shortHelp();
        return invocation;
    }
    const std::string where = "krctl " + path;
    if (!rest.empty() && !command->takesRest)
        throw usageFailure('"' + where + "\" takes nothing behind \"--\".", where, "See \"" + where + " --help\".");

    for (const Parameter &parameter : command->parameters) {
        const CLI::Option &option = *parsed().get_option(parameter.name);
        if (option.count() > 0) {
            const std::string text = parameter.kind == Parameter::Kind::Flag ? "" : option.results().back();
            invocation.arguments.set(parameter.name, text, codeFor(parameter, text, where));
        } else if (!parameter.isOption() && parameter.isRequired) {
            throw usageFailure(std::string(parameter.name) + " is missing: " + helpOf(parameter) + '.', where,
                               "See \"" + where + " --help\".");
        }
    }
    invocation.command = command;
    invocation.arguments.rest = std::move(rest);
    if (socket_->count() > 0) invocation.session.socket = socket_->results().back();
    if (platform_->count() > 0) invocation.session.platform = platform_->results().back();
    return invocation;
}

Invocation Parser::parse(Words words)
{
    const auto separator = std::find(words.begin(), words.end(), "--");
    Words rest(separator == words.end() ? separator : separator + 1, words.end());
    words.erase(separator, words.end());
    std::reverse(words.begin(), words.end()); // as CLI11 takes them
    try {
        root_.parse(words);
    } catch (const CLI::CallForHelp &) {
        Invocation invocation;
        invocation.text = helpFor(parsedPath());
        return invocation;
    } catch (const CLI::ExtrasError &) {
        throwForExtra(parsedPath());
    } catch (const CLI::ParseError &error) {
        const std::string where = parsedPath().empty() ? "krctl" : "krctl " + parsedPath();
        throw usageFailure(std::string(error.what()) + '.', where, "See \"" + where + " --help\".");
    }
    return read(parsedPath(), std::move(rest));
}

} // namespace

Appearance appearanceOf(const std::vector<std::string> &words)
{
    Appearance appearance;
    for (const std::string &word : words) {
        if (word == "--") break;
        if (word == "-J" || word == "--json") appearance.form = Form::Json;
        if (word == "-K" || word == "--key-value") appearance.form = Form::KeyValue;
        if (word == "--no-color") appearance.wantsColour = false;
    }
    return appearance;
}

Invocation invocationOf(const std::vector<std::string> &words)
{
    if (!words.empty() && words.front() == "--complete") { // for the shell, which may ask about half an option
        Invocation invocation;
        for (const std::string &word : completionsOf({words.begin() + 1, words.end()}))
            invocation.text += word + '\n';
        return invocation;
    }
    return Parser().parse(words);
}

} // namespace krctl
