#include "krctl/commands/raw_command.h"

#include <algorithm>

namespace krctl {
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
