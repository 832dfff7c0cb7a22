// Every wrapper against a plain port of it, over generated replies: the same commands, lines, codes and bytes.

#include <gtest/gtest.h>

#include "tests/support/plain_port/play_rounds.h"
#include "tests/support/plain_port/rows.h"

namespace {

TEST(AgainstPlainPort, SetWrappers)
{
    plain::playRounds(plain::setWrappers(), 12000);
}

TEST(AgainstPlainPort, NetworkWrappers)
{
    plain::playRounds(plain::networkWrappers(), 12000);
}

} // namespace
