#include "krctl/commands/standard_tries.h"

#include <charconv>

#include "host/at_client/at_client.h"

namespace krctl {
namespace {

constexpr int32_t kTimeoutMs = 5000;

/** The number behind "+CPINR: CODE,". */
std::optional<int64_t> triesOf(std::string_view reply, std::string_view start)
{
    const size_t found = reply.find(start);
    if (found == std::string_view::npos) return std::nullopt;
    const std::string_view rest = reply.substr(found + start.size());
    int64_t tries = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), tries);
    return error == std::errc() ? std::optional(tries) : std::nullopt;
}

} // namespace

StandardTries standardTriesOf(std::string_view reply)
{
    return {triesOf(reply, "+CPINR: SIM PIN,"), triesOf(reply, "+CPINR: SIM PUK,")};
}

StandardTries readStandardTries()
{
    AtClientRes reply{};
    if (ClientSendCmd("AT+CPINR", &reply, kTimeoutMs) != CLIENT_OK) return {};
    return standardTriesOf(reply.aucDataBuf);
}

} // namespace krctl
