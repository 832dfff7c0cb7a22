#include "krctl/commands/service_provider.h"

#include <array>
#include <charconv>
#include <cstring>
#include <memory>
#include <optional>
#include <utility>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/library_value.h"
#include "krctl/readings/sim.h"

namespace krctl {
namespace {

constexpr int32_t kSpnLength = 17;
constexpr int32_t kTagAndLength = 2; // bytes in front of a value
constexpr size_t kLengthDigits = 2;  // where the digits of a length stand, behind those of the tag
constexpr size_t kOperatorDigits = 6;

/** A whole file of the SIM.
 *  @return nothing if the modem refused; empty if the SIM has no such file */
std::optional<std::string> simFile(Session &session, int32_t file, int32_t length, const char *item)
{
    CrsmCmd command{};
    command.command = AT_CRSM_READ_BINARY;
    command.fileid = file;
    command.p3 = length;
    // The response stands behind the two status words, as much of it as a reply can hold.
    std::vector<int32_t> room((sizeof(CrsmRes) + kMostText) / sizeof(int32_t) + 1);
    auto *result = reinterpret_cast<CrsmRes *>(room.data());
    const Answer answer = session.ask(ItemKind::Sim, [&] { return KR_getSPNInfo(command, result); });
    if (!session.note(item, answer.ending, answer.isDone())) return std::nullopt;
    return simFileOf(answer.replies.to("AT+CRSM="));
}

std::optional<size_t> byteAt(std::string_view hex, size_t position)
{
    if (position + 2 > hex.size()) return std::nullopt;
    size_t value = 0;
    const char *end = hex.data() + position + 2;
    const auto [stopped, error] = std::from_chars(hex.data() + position, end, value, 16);
    return error == std::errc() && stopped == end ? std::optional(value) : std::nullopt;
}

/** The value behind a tag, if the text begins with it. */
std::string_view valueOf(std::string_view hex, size_t tag)
{
    const std::optional<size_t> length = byteAt(hex, kLengthDigits);
    if (byteAt(hex, 0) != tag || !length) return {};
    return hex.substr(4, 2 * *length);
}

/** The file says itself, behind its tag, how long what counts in it is. */
std::string displayInformation(Session &session)
{
    const char *item = "friendly operators (AT+CRSM)";
    const std::optional<std::string> start = simFile(session, AT_SIM_FILE_PROVIDER_DISPLAY, kTagAndLength, item);
    const std::optional<size_t> length = start ? byteAt(*start, kLengthDigits) : std::nullopt;
    if (!length) return {};
    return simFile(session, AT_SIM_FILE_PROVIDER_DISPLAY, kTagAndLength + static_cast<int32_t>(*length), item)
        .value_or("");
}

std::string providerName(std::string file)
{
    constexpr size_t kDisplayCondition = 2; // digits of the first byte
    if (file.size() <= kDisplayCondition) return {};
    file.erase(0, kDisplayCondition);
    while (file.ends_with("FF") || file.ends_with("ff")) // filler
        file.resize(file.size() - 2);
    std::string name(kMostText + 1, '\0');
    if (file.empty() || KR_parseSPNName(file.c_str(), name.data()) != UNI_ERROR_SUCCESS) return {};
    return writtenText(std::move(name));
}

} // namespace

std::string operatorListOf(std::string_view file)
{
    return std::string(valueOf(valueOf(file, 0xA3), 0x80));
}

std::vector<std::string> operatorCodes(std::string_view digits)
{
    std::vector<std::string> codes;
    for (; digits.size() >= kOperatorDigits; digits.remove_prefix(kOperatorDigits)) {
        const std::string country(digits.substr(0, 3));
        const char third = digits[3];
        if (country.find_first_not_of("0123456789") != std::string::npos) continue; // filler
        const std::string network(digits.substr(4, 2));
        codes.push_back(country + network + (third == 'F' || third == 'f' ? "" : std::string(1, third)));
    }
    return codes;
}

ServiceProvider readServiceProvider(Session &session)
{
    ServiceProvider provider;
    const std::optional<std::string> spn =
        simFile(session, AT_SIM_FILE_PROVIDER_NAME, kSpnLength, "service provider (AT+CRSM)");
    if (!spn) return provider;
    provider.isSimRead = true;
    provider.name = providerName(*spn);

    const std::string swapped = operatorListOf(displayInformation(session));
    std::string inOrder(swapped.size() + 1, '\0');
    if (!swapped.empty() && KR_spnFriendOperlistInvert(swapped.c_str(), inOrder.data()) == UNI_ERROR_SUCCESS)
        provider.friendlyOperators = operatorCodes(writtenText(std::move(inOrder)));
    return provider;
}

} // namespace krctl
