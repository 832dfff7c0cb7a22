#include "host/at_server/options.h"

#include <map>
#include <memory>

#include <CLI/CLI.hpp>

#include "host/at_server/settings_file.h"
#include "host/at_server/tty_port.h"
#include "host/protocol/at_protocol.h"

namespace host::at_server {
namespace {

constexpr int kUsageError = 2;
constexpr const char *kAskModem = "auto";

std::string checkedBaud(const std::string &text)
{
    unsigned baud = 0;
    const bool isNumber = CLI::detail::lexical_cast(text, baud);
    return isNumber && isBaudRate(baud) ? std::string() : text + " is not a speed of serial ports";
}

std::string checkedFamily(const std::string &text)
{
    const bool isKnown = text == kAskModem || family::familyNamed(text).has_value();
    constexpr auto kNoneOf = family::choicesText(" is none of auto, ", ", ", "");
    return isKnown ? std::string() : text + kNoneOf.data();
}

std::string checkedAllowance(const std::string &text)
{
    std::string fault;
    (void)allowanceIn(text, fault);
    return fault;
}

} // namespace

std::optional<Options> readOptions(int argc, char **argv, int &exitStatus)
{
    Options options;
    options.socket = protocol::kDefaultSocket;
    std::string family = kAskModem;
    unsigned quietMs = 200;
    unsigned answerMs = 1000;
    unsigned lingerMs = 2000;
    unsigned longestMs = 3600000;
    unsigned codeWaitMs = 1000;
    std::vector<std::string> allowances;
    unsigned idleMs = 10000;
    const std::map<std::string, LogLevel> levels{{"error", LogLevel::Error},
                                                 {"warning", LogLevel::Warning},
                                                 {"notice", LogLevel::Notice},
                                                 {"info", LogLevel::Info},
                                                 {"debug", LogLevel::Debug}};
    const std::map<std::string, Capitals> capitals{
        {"auto", Capitals::AsNeeded}, {"always", Capitals::Always}, {"never", Capitals::Never}};
    constexpr auto kFamilyHelp = family::choicesText("auto, ", " or ", " [auto]");

    CLI::App app("Owns the port of a modem and runs the AT commands of its clients, one at a time.", "kr-at-server");
    app.set_version_flag("--version", "kr-at-server " MAINCONTROL_VERSION);
    app.add_option("--device", options.device, "port of the modem, such as /dev/ttyUSB2")->required();
    app.add_option("--baud", options.baud, "speed of the port [115200]")->check(checkedBaud);
    app.add_option("--socket", options.socket, "where clients connect [/run/kr-at-server/at.sock]")
        ->envname(protocol::kSocketVariable);
    app.add_option("--group", options.group, "group whose members may connect, besides root and the server's own user");
    app.add_option("--allow", allowances, "GROUP=RIGHT,RIGHT...: what members of a group may do; may be repeated")
        ->check(checkedAllowance)
        ->allow_extra_args(false);
    app.add_option("--family", family, kFamilyHelp.data())->check(checkedFamily);
    app.add_option("--record", options.record.file, "file for a transcript, one JSON object a line");
    app.add_option("--record-size", options.record.mostBytes, "bytes at which FILE becomes FILE.1 [16777216]")
        ->check(CLI::Range(4096, 1073741824));
    app.add_flag("--record-secrets", options.record.withSecrets, "leave PINs, passwords and identities in the record");
    app.add_option("--log-level", options.logLevel, "error, warning, notice, info or debug [info]")
        ->transform(CLI::CheckedTransformer(levels));
    app.add_flag("--echo,!--no-echo", options.echo, "switch the modem's echo on, to tell replies apart by it [on]");
    app.add_option("--quiet-ms", quietMs, "how long the line has to be quiet around an answer that counts [200]")
        ->check(CLI::Range(5, 10000));
    app.add_option("--answer-ms", answerMs, "how long the modem may take for a bare AT [1000]")
        ->check(CLI::Range(50, 60000));
    app.add_option("--linger-ms", lingerMs, "how long a command that nobody waits for may keep the modem [2000]")
        ->check(CLI::Range(100, 600000));
    app.add_option("--longest-ms", longestMs, "the longest time-out that clients may ask for [3600000]")
        ->check(CLI::Range(100, 3600000));
    app.add_option("--code-wait-ms", codeWaitMs,
                   "how long a user waits behind a code that was refused, at first [1000]")
        ->check(CLI::Range(1, 60000));
    app.add_option("--idle-ms", idleMs, "how long a client that asks for nothing keeps a place that is wanted [10000]")
        ->check(CLI::Range(100, 3600000));
    app.add_option("--upper-case", options.capitals, "auto, always or never: send commands in capitals [auto]")
        ->transform(CLI::CheckedTransformer(capitals));
    app.set_config("--config", "", "file of settings: one of these options a line, without its dashes");
    app.config_formatter(std::make_shared<SettingsFile>(app));
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        exitStatus = app.exit(error) == 0 ? 0 : kUsageError;
        return std::nullopt;
    }
    if (family != kAskModem) options.family = family::familyNamed(family);
    options.quiet = std::chrono::milliseconds(quietMs);
    options.answer = std::chrono::milliseconds(answerMs);
    options.linger = std::chrono::milliseconds(lingerMs);
    options.longestTimeout = std::chrono::milliseconds(longestMs);
    options.idle = std::chrono::milliseconds(idleMs);
    options.codeWait = std::chrono::milliseconds(codeWaitMs);
    for (std::string fault; const std::string &text : allowances)
        options.allowances.push_back(allowanceIn(text, fault).value_or(Allowance{}));
    return options;
}

} // namespace host::at_server
