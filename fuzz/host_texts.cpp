// What the reference host makes of texts: masked ones keep their length and hide what they hide, decoded ones keep to their
// room, and packets are read back as they were.

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include <mainControl/host.h>

#include "fuzz/fuzz.h"
#include "host/masking/masking.h"
#include "host/protocol/at_protocol.h"
#include "tests/support/choices.h"

namespace {

size_t longestNumber(const std::string &text)
{
    size_t longest = 0;
    size_t digits = 0;
    for (const char c : text) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        longest = std::max(longest, digits);
    }
    return longest;
}

void mask(Choices &choices)
{
    const std::string text = choices.text();
    const host::Hide hide = choices.oneIn(2) ? host::Hide::Secrets : host::Hide::SecretsAndIdentities;
    const std::string other = choices.text();
    const std::string masked[] = {host::maskedCommand(text, hide), host::maskedReply(other, text, hide),
                                  host::maskedReport(other, text, hide), host::maskedLogLine(text, hide)};
    for (const std::string &one : masked) {
        require(one.size() == text.size(), "a masked text keeps its length");
        for (size_t i = 0; i < one.size(); ++i)
            require(one[i] == text[i] || one[i] == '*', "each character is as it was, or hidden");
    }
    if (hide == host::Hide::SecretsAndIdentities)
        for (const std::string &one : masked)
            require(longestNumber(one) < 14, "no number as long as an IMEI is left");
}

void decodeText(Choices &choices)
{
    const std::string text = choices.text();
    const OwnText room(std::string(text.size() / 2 * 3, '?'));
    const int result = CODE_Usc2orGsm7ToAscDecode(OwnText(text), room, 0);
    require(result == 0 || result == 1, "a text is decoded or is not");
    require(std::strlen(room) <= text.size() / 2 * 3, "a decoded text ends in its room");
}

void invertNumbers(Choices &choices)
{
    const std::string text = choices.text();
    const OwnText room(text + std::string(2, '?'));
    const auto length = static_cast<int32_t>(choices.below(text.size() + 1));
    CODE_InvertNumbers(OwnText(text), room, length);
}

void readPacket(Choices &choices)
{
    const std::string bytes = choices.rest();
    const OwnText packet(bytes);
    const auto message = host::protocol::decode({packet, bytes.size()});
    if (!message) return;
    const host::protocol::Packet again(*message);
    require(std::string(again.data(), again.size()) == bytes, "a packet is written as it was read");
}

using Call = void (*)(Choices &);
constexpr Call kCalls[] = {mask, mask, decodeText, invertNumbers, readPacket};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Choices choices({data, size});
    kCalls[choices.below(std::size(kCalls))](choices);
    return 0;
}
