#include "krctl/commands/raw_command.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace krctl {
namespace {

/** Commands whose set form takes a secret, or reaches into the SIM. */
constexpr std::array<std::string_view, 7> kSecretCommands{
    "+CPIN=", "+CPIN2=", "+CPWD=", "+CLCK=", "+ZNCK=", "+ESMLCK=", "+CSIM="};

std::string normalised(std::string_view command)
{
    std::string text;
    for (const char character : command)
        if (character != ' ') text += static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return text;
}

/** "+CLCK=\"SC\",2" asks, and nothing follows but a class or another command. */
bool isLockQuery(std::string_view text)
{
    const std::string_view facility = text.substr(0, text.find(','));
    const std::string_view mode = text.substr(std::min(facility.size(), text.size()));
    return mode.starts_with(",2") && (mode.size() == 2 || mode[2] == ';');
}

} // namespace

bool changesSecrets(std::string_view command)
{
    const std::string text = normalised(command);
    for (const std::string_view secret : kSecretCommands) {
        for (size_t at = text.find(secret); at != std::string::npos; at = text.find(secret, at + 1)) {
            const std::string_view rest = std::string_view(text).substr(at + secret.size());
            if (rest.starts_with('?')) continue; // the test form, "=?"
            if (secret == "+CLCK=" && isLockQuery(rest)) continue;
            return true;
        }
    }
    return false;
}

std::vector<std::string> linesOf(std::string_view reply)
{
    std::vector<std::string> lines;
    while (!reply.empty()) {
        const std::string_view line = reply.substr(0, reply.find_first_of("\r\n"));
        if (!line.empty()) lines.emplace_back(line);
        reply.remove_prefix(std::min(line.size() + 1, reply.size()));
    }
    return lines;
}

} // namespace krctl
