#include "krctl/output/terminal.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace krctl {
namespace {

constexpr int kFewestColumns = 20;

const char *colourOf(Tone tone)
{
    switch (tone) {
    case Tone::Title:
        return "\033[1m";
    case Tone::Good:
        return "\033[32m";
    case Tone::Fair:
        return "\033[33m";
    case Tone::Bad:
        return "\033[31m";
    case Tone::Dim:
        return "\033[2m";
    case Tone::Plain:
        break;
    }
    return "";
}

bool isSet(const char *variable)
{
    const char *value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

int columnsOf(int fd)
{
    winsize size{};
    if (ioctl(fd, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return std::max<int>(size.ws_col, kFewestColumns);
    return Terminal::kUsualColumns;
}

/** One character of a text, as far as it goes. */
struct Character {
    size_t bytes = 1;
    int width = 1;
    bool isPrintable = false;
};

Character firstCharacter(std::string_view text)
{
    std::mbstate_t state{};
    wchar_t wide = 0;
    const size_t bytes = std::mbrtowc(&wide, text.data(), text.size(), &state);
    if (bytes == 0 || bytes > text.size()) return {};
    const int width = wcwidth(wide);
    return {.bytes = bytes, .width = std::max(width, 0), .isPrintable = width >= 0};
}

} // namespace

Terminal Terminal::of(int fd, bool wantsColour, bool hasBlocks)
{
    Terminal terminal;
    terminal.isTerminal = isatty(fd) == 1;
    const char *type = std::getenv("TERM");
    const bool isDumb = type == nullptr || std::strcmp(type, "dumb") == 0;
    terminal.hasColour = wantsColour && terminal.isTerminal && !isDumb && !isSet("NO_COLOR");
    terminal.hasBlocks = hasBlocks;
    if (terminal.isTerminal) terminal.columns = columnsOf(fd);
    return terminal;
}

std::string Terminal::paint(Tone tone, const std::string &text) const
{
    const char *colour = colourOf(tone);
    if (!hasColour || *colour == '\0' || text.empty()) return text;
    return colour + text + "\033[0m";
}

bool takeLocale()
{
    (void)std::setlocale(LC_CTYPE, "");
    const bool showsUtf8 = std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
    if (!showsUtf8) (void)std::setlocale(LC_CTYPE, "C.UTF-8");
    return showsUtf8;
}

int displayWidth(std::string_view text)
{
    int width = 0;
    while (!text.empty()) {
        const Character first = firstCharacter(text);
        width += first.width;
        text.remove_prefix(first.bytes);
    }
    return width;
}

std::string printable(std::string_view text)
{
    std::string shown;
    while (!text.empty()) {
        const Character first = firstCharacter(text);
        if (first.isPrintable)
            shown += text.substr(0, first.bytes);
        else
            shown += '?';
        text.remove_prefix(first.bytes);
    }
    return shown;
}

std::string padded(const std::string &text, int width)
{
    return text + std::string(static_cast<size_t>(std::max(width - displayWidth(text), 0)), ' ');
}

std::string paddedLeft(const std::string &text, int width)
{
    return std::string(static_cast<size_t>(std::max(width - displayWidth(text), 0)), ' ') + text;
}

std::string shortened(const std::string &text, int width)
{
    if (displayWidth(text) <= width) return text;
    const int room = std::max(width - 3, 0);
    std::string_view rest = text;
    int taken = 0;
    size_t bytes = 0;
    while (!rest.empty()) {
        const Character first = firstCharacter(rest);
        if (taken + first.width > room) break;
        taken += first.width;
        bytes += first.bytes;
        rest.remove_prefix(first.bytes);
    }
    return text.substr(0, bytes) + std::string(static_cast<size_t>(std::min(width, 3)), '.');
}

std::vector<std::string> wrapped(std::string_view text, int width)
{
    std::vector<std::string> lines(1);
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        std::string &line = lines.back();
        if (line.empty()) {
            line = word;
        } else if (displayWidth(line) + 1 + displayWidth(word) <= width) {
            line.append(" ").append(word);
        } else {
            lines.emplace_back(word);
        }
    }
    return lines;
}

} // namespace krctl
