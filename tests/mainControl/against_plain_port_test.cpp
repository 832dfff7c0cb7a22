// The whole API against a plain port of it, over generated replies and reports: the same commands, lines, codes, globals
// and bytes.

#include <gtest/gtest.h>

#include "tests/support/plain_port/play_rounds.h"
#include "tests/support/plain_port/rows.h"

namespace {

constexpr int kRounds = 10000;

TEST(AgainstPlainPort, FrameIdentityAndProfile)
{
    plain::playRounds(plain::identityCalls(), kRounds);
}

TEST(AgainstPlainPort, Notifications)
{
    plain::playRounds(plain::notificationCalls(), kRounds / 2); // each looks through a whole record
}

TEST(AgainstPlainPort, Network)
{
    plain::playRounds(plain::networkCalls(), kRounds);
}

TEST(AgainstPlainPort, RadioAndSignal)
{
    plain::playRounds(plain::radioCalls(), kRounds);
}

TEST(AgainstPlainPort, PinsLocksAndSettings)
{
    plain::playRounds(plain::pinAndLockCalls(), kRounds);
}

} // namespace
