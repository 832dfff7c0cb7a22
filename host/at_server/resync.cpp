#include "resync.h"

namespace host::at_server {
namespace {

/** A line that is never quiet must not keep everybody waiting. */
constexpr unsigned kMaxDisturbances = 50;

} // namespace

Resync::Next Resync::begin()
{
    *this = Resync();
    return settle();
}

Resync::Next Resync::settle()
{
    stage_ = Stage::Settling;
    goodRounds_ = 0;
    disturbances_ = 0;
    return Next::AwaitQuiet;
}

Resync::Next Resync::ask()
{
    stage_ = Stage::Asked;
    ++unanswered_;
    return Next::Ask;
}

Resync::Next Resync::heardBytes()
{
    if (stage_ == Stage::Asked || ++disturbances_ > kMaxDisturbances) return Next::Stay;
    return Next::AwaitQuiet;
}

Resync::Next Resync::heardLine()
{
    return stage_ == Stage::Proving ? settle() : Next::Stay;
}

Resync::Next Resync::heardResult(bool isOk)
{
    if (unanswered_ > 0) --unanswered_;
    if (stage_ == Stage::Settling) return Next::Stay;
    if (stage_ == Stage::Proving || !isOk) return settle();
    stage_ = Stage::Proving;
    failedTries_ = 0;
    disturbances_ = 0;
    return Next::AwaitQuiet;
}

Resync::Next Resync::timeIsUp()
{
    switch (stage_) {
    case Stage::Settling:
        return ask();
    case Stage::Asked:
        ++failedTries_;
        return settle();
    case Stage::Proving:
        break;
    }
    ++goodRounds_;
    return goodRounds_ >= (unanswered_ > 0 ? 3U : 2U) ? Next::Done : ask();
}

} // namespace host::at_server
