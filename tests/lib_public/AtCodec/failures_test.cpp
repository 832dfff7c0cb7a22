// What every wrapper makes of an exchange that fails.

#include <gtest/gtest.h>

#include "tests/support/every_wrapper.h"
#include "tests/support/failures.h"
#include "tests/support/scripted_host.h"

namespace {

using scripted::Host;
using wrappers::Failure;
using Texts = std::vector<std::string>;

class FailureTest : public testing::TestWithParam<wrappers::Wrapper> {
  protected:
    void SetUp() override { g_currentPlatform = GetParam().platform; }
    void TearDown() override { g_currentPlatform = 0; }
};

TEST_P(FailureTest, IsToldWithoutAParseWhenTheSendFails)
{
    for (const int result : {-1, 1, 19}) {
        Host host;
        host.expectFailing(GetParam().command, GetParam().timeoutMs, result);
        EXPECT_EQ(GetParam().call(), GetParam().codeOf(Failure::Send)) << result;
        EXPECT_EQ(host.texts(scripted::kParserModule), Texts{}) << result;
    }
}

TEST_P(FailureTest, IsToldAfterOneParseOfTheReply)
{
    for (const scripted::Failure &failure : scripted::kFailingReplies) {
        Host host;
        host.expect(GetParam().command, GetParam().timeoutMs, *failure.reply);
        EXPECT_EQ(GetParam().call(), GetParam().codeOf(failure.kind)) << failure.name;
        Texts expected = {"Bk_Parse_At_Res-in-" + *failure.reply};
        if (failure.identifier == 0) {
            expected.emplace_back("UNI_ERROR_BK_FAIL1");
        } else {
            expected.push_back("Bk_Parse_At_Res-out-" + failure.paras);
            expected.push_back("Bk_Parse_At_Res-out-" + std::to_string(failure.identifier));
        }
        EXPECT_EQ(host.texts(scripted::kParserModule), expected) << failure.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Every, FailureTest, testing::ValuesIn(wrappers::all()),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
