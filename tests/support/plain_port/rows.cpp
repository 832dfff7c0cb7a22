#include "tests/support/plain_port/rows.h"

#include <algorithm>
#include <cstring>

#include "tests/support/record_at.h"

namespace plain {
namespace {

constexpr size_t kLongestToken = 10240;

template <size_t size>
void fillText(Dice &dice, char (&field)[size], std::string_view alphabet)
{
    const size_t length = dice.oneIn(6) ? size - 1 - dice.below(2) : dice.below(std::min<size_t>(size, 12));
    const std::string text = dice.of(alphabet, length);
    std::memcpy(field, text.c_str(), text.size() + 1);
}

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kMixed = "abcXYZ019 .,\"%";

} // namespace

int32_t anyInteger(Round &round)
{
    return round.dice.integer();
}

int32_t *outInteger(Round &round)
{
    return outRecord<int32_t>(round);
}

const char *hostText(Round &round)
{
    if (round.dice.isWritten()) return round.text(round.dice.written());
    return round.text(round.dice.of(round.dice.oneIn(3) ? kMixed : kDigits, round.dice.length()));
}

char *outText(Round &round)
{
    return round.memory(kLongestToken);
}

int32_t statedSize(Round &round)
{
    static constexpr int32_t kLimits[] = {251, 509};
    auto size = static_cast<int32_t>(round.dice.oneIn(2) ? round.dice.below(24) : round.dice.length());
    if (round.dice.oneIn(5)) size = round.dice.pick(kLimits) + static_cast<int32_t>(round.dice.below(8));
    if (round.dice.oneIn(12)) size = -static_cast<int32_t>(round.dice.below(3));
    round.statedSize = size < 0 ? 0 : static_cast<size_t>(size);
    return size;
}

char *sizedText(Round &round)
{
    return round.memory(std::max<size_t>(round.statedSize, 1));
}

char *sizedBytes(Round &round)
{
    return round.memory(round.statedSize);
}

PinCodePair anyPins(Round &round)
{
    PinCodePair pair{};
    fillText(round.dice, pair.code, kDigits);
    if (round.dice.oneIn(2)) fillText(round.dice, pair.newCode, kDigits);
    if (round.dice.oneIn(8)) std::memset(pair.code, '7', sizeof pair.code);
    return pair;
}

PdpContext anyContext(Round &round)
{
    PdpContext context{};
    context.cid = round.dice.integer();
    fillText(round.dice, context.pdpType, "IPV46");
    fillText(round.dice, context.apn, kMixed);
    fillText(round.dice, context.pdpAddress, kMixed);
    context.dComp = round.dice.integer();
    context.hComp = round.dice.integer();
    return context;
}

CrsmCmd anySimCommand(Round &round)
{
    CrsmCmd command{};
    command.command = round.dice.integer();
    command.fileid = round.dice.integer();
    command.p1 = round.dice.integer();
    command.p2 = round.dice.integer();
    command.p3 = round.dice.integer();
    if (round.dice.oneIn(2)) fillText(round.dice, command.data, kDigits);
    return command;
}

CrsmRes *outSimResponse(Round &round)
{
    return recordAt<CrsmRes>(round.memory(sizeof(CrsmRes) + kLongestToken));
}

CopsPara anyOperator(Round &round)
{
    CopsPara selected{};
    selected.nMode = round.dice.integer();
    selected.nformat = round.dice.integer();
    if (!round.dice.oneIn(3)) fillText(round.dice, selected.cOper, kMixed);
    selected.nAct = round.dice.integer();
    return selected;
}

AtRes *parsedReply(Round &round, const std::string &command)
{
    static constexpr uint8_t kResults[] = {1, 1, 1, 1, 2, 3, 4, 12};
    AtRes parsed{};
    parsed.CmdId = 1;
    parsed.Result = round.dice.pick(kResults);
    const std::string parameters = round.replies.parameters(command);
    std::memcpy(parsed.Paras, parameters.data(), std::min(parameters.size(), sizeof parsed.Paras - 1));
    return recordAt<AtRes>(round.memory(std::string(reinterpret_cast<const char *>(&parsed), sizeof parsed)));
}

} // namespace plain
