// What every wrapper makes of an exchange that fails.

#include <gtest/gtest.h>

#include "every_wrapper.h"
#include "scripted_host.h"

namespace {

using scripted::Host;
using wrappers::Failure;
using Texts = std::vector<std::string>;

/// A reply, and what the parser logs of it.
struct Transcript {
    Failure failure;
    const char *reply;
    Texts out;
};

const Transcript kTranscripts[] = {
    {Failure::Unparsable, "\r\n12\r\n", {"UNI_ERROR_BK_FAIL1"}},
    {Failure::Unparsable, "OK", {"UNI_ERROR_BK_FAIL1"}},
    {Failure::Unparsable, "", {"UNI_ERROR_BK_FAIL1"}},
    {Failure::Unparsable, "\r\n\"1\r\n\r\nOK\r\n", {"UNI_ERROR_BK_FAIL1"}},
    {Failure::Error, "\r\nERROR\r\n", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-2"}},
    {Failure::Error, "\r\n12\r\n\r\nERROR\r\n", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-2"}},
    {Failure::CmeError, "\r\n+CME ERROR: 100\r\n", {"Bk_Parse_At_Res-out-100", "Bk_Parse_At_Res-out-4"}},
    {Failure::CmsError, "\r\n+CMS ERROR: 500\r\n", {"Bk_Parse_At_Res-out-500", "Bk_Parse_At_Res-out-3"}},
    {Failure::NotSupported, "\r\nnot support\r\n", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-6"}},
    {Failure::Prompt, "\r\n> ", {"Bk_Parse_At_Res-out-", "Bk_Parse_At_Res-out-5"}},
    {Failure::Report,
     "\r\n+CGEV: ME DETACH\r\n\r\n12\r\n\r\nOK\r\n",
     {"Bk_Parse_At_Res-out-ME DETACH", "Bk_Parse_At_Res-out-4193"}},
};

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
    for (const Transcript &transcript : kTranscripts) {
        const std::string name = nameOf(transcript.failure) + std::string(": ") + transcript.reply;
        Host host;
        host.expect(GetParam().command, GetParam().timeoutMs, transcript.reply);
        EXPECT_EQ(GetParam().call(), GetParam().codeOf(transcript.failure)) << name;
        Texts expected = {std::string("Bk_Parse_At_Res-in-") + transcript.reply};
        expected.insert(expected.end(), transcript.out.begin(), transcript.out.end());
        EXPECT_EQ(host.texts(scripted::kParserModule), expected) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Every, FailureTest, testing::ValuesIn(wrappers::all()),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
