#include "host/at_server/resync.h"

namespace host::at_server {
namespace {

/** Questions without an answer, after which the line may be one of data. */
constexpr unsigned kTriesBeforeEscape = 3;

} // namespace

Resync::Next Resync::begin()
{
    *this = Resync();
    return settle();
}

Resync::Next Resync::leaveData()
{
    stage_ = Stage::HangingUp;
    return Next::HangUp;
}

Resync::Next Resync::settle()
{
    stage_ = Stage::Settling;
    goodRounds_ = 0;
    return Next::AwaitQuiet;
}

Resync::Next Resync::ask()
{
    stage_ = Stage::Asked;
    ++unanswered_;
    return Next::Ask;
}

Resync::Next Resync::unanswered()
{
    if (++failedTries_ % kTriesBeforeEscape != 0) return settle();
    stage_ = Stage::Escaping; // nothing was sent meanwhile, which is guard enough
    return Next::Escape;
}

Resync::Next Resync::heardBytes()
{
    const bool isDelayed = !insists_ && (stage_ == Stage::Settling || stage_ == Stage::Proving);
    return isDelayed ? Next::AwaitQuiet : Next::Stay;
}

Resync::Next Resync::heardLine()
{
    return stage_ == Stage::Proving && !insists_ ? settle() : Next::Stay;
}

Resync::Next Resync::heardResult(Echoed echoed)
{
    if (stage_ == Stage::HangingUp || stage_ == Stage::Escaping) return Next::Stay;
    if (unanswered_ > 0) --unanswered_;
    if (stage_ == Stage::Settling) return Next::Stay;
    if (stage_ == Stage::Proving) return settle();
    stage_ = Stage::Proving;
    echoed_ = echoed;
    failedTries_ = 0;
    return Next::AwaitQuiet;
}

Resync::Next Resync::timeIsUp()
{
    switch (stage_) {
    case Stage::Settling:
        return ask();
    case Stage::Asked:
        return unanswered();
    case Stage::HangingUp:
        stage_ = Stage::Escaping;
        return Next::Escape;
    case Stage::Escaping:
        return settle();
    case Stage::Proving:
        break;
    }
    ++goodRounds_;
    return goodRounds_ >= neededRounds() ? Next::Done : ask();
}

unsigned Resync::neededRounds() const
{
    if (echoed_ == Echoed::Yes) return 1;
    return echoed_ == Echoed::No || unanswered_ > 0 ? 3 : 2;
}

} // namespace host::at_server
