// Restricted access to the SIM.

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/network_exchange.h"
#include "tests/support/record_at.h"

namespace {

using network::bareLines;
using network::Call;
using network::kAny;
using network::kKept;
using network::Stage;
using network::stretched;
using network::Subject;
using network::Texts;

CrsmCmd crsmCommand(int32_t command, int32_t fileid, int32_t p1, int32_t p2, int32_t p3, const std::string &data)
{
    CrsmCmd whole = {command, fileid, p1, p2, p3, {}};
    network::put(whole.data, data);
    return whole;
}

const CrsmCmd kReadSpn = crsmCommand(176, 28486, 0, 0, 17, "");
constexpr const char *kReadSpnText = "AT+CRSM=176,28486,0,0,17,";

/** Calls crsmSet() with room for a response of some length, and at most three characters more. */
Call crsm(CrsmCmd command, size_t room)
{
    const GuardedMemory memory((sizeof(CrsmRes) + room + 1 + 3) / 4 * 4);
    std::fill_n(memory.data(), memory.size() - 1, static_cast<char>(network::kPattern));
    memory.data()[memory.size() - 1] = '\0';
    auto *const response = recordAt<CrsmRes>(memory.data());
    const auto fields = [response] {
        return Texts{std::to_string(response->sw1), std::to_string(response->sw2), response->response};
    };
    const Texts before = fields();
    const uint32_t code = crsmSet(command, response);
    return {code, before, fields()};
}

Texts crsmLog(const network::Ending &ending)
{
    switch (ending.stage) {
    case Stage::Send:
        return {"###T9LB### crsmSet begin", "###T9LB### ClientSendCmd != UNI_ERROR_SUCCESS"};
    case Stage::Success:
        return {"###T9LB### crsmSet begin", "###T9LB### crsmSet return UNI_ERROR_SUCCESS"};
    default:
        return {"###T9LB### crsmSet begin", "###T9LB### crsmSet return UNI_ERROR_FALSE"};
    }
}

Subject crsmSubject(const CrsmCmd &command, const std::string &text, std::vector<int32_t> platforms, size_t room = 40)
{
    return {"crsmSet",           text, 5000, [=] { return crsm(command, room); }, R"(+CRSM: 144,0,"62178202")", crsmLog,
            std::move(platforms)};
}

const std::vector<int32_t> kAllButMtk = {0, 1, 2, 4, 5, 7};

TEST(CrsmSet, EndsInACommaWithoutDataExceptOnMtk)
{
    constexpr int32_t kLeast = -2147483647 - 1;
    const CrsmCmd extremes = crsmCommand(kLeast, kLeast, kLeast, kLeast, kLeast, "");
    const std::string extremesText = "AT+CRSM=-2147483648,-2147483648,-2147483648,-2147483648,-2147483648";
    network::expectSuccess(crsmSubject(kReadSpn, kReadSpnText, kAllButMtk));
    network::expectSuccess(crsmSubject(kReadSpn, "AT+CRSM=176,28486,0,0,17", {PF_MTK}));
    network::expectSuccess(crsmSubject(extremes, extremesText + ",", kAllButMtk));
    network::expectSuccess(crsmSubject(extremes, extremesText, {PF_MTK}));
}

TEST(CrsmSet, SendsAllOfTheData)
{
    // A full array has no terminator.
    for (const size_t length : {1U, 2U, 90U, 127U, 128U}) {
        const std::string data(length, 'F');
        network::expectSuccess(crsmSubject(crsmCommand(214, 28486, 1, 2, -3, data), "AT+CRSM=214,28486,1,2,-3," + data,
                                           network::kPlatforms));
    }
}

TEST(CrsmSet, FailsWithUntouchedOutputs)
{
    network::expectFailures(crsmSubject(kReadSpn, kReadSpnText, kAllButMtk));
    network::expectFailures(crsmSubject(kReadSpn, "AT+CRSM=176,28486,0,0,17", {PF_MTK}));
    network::expectFailures(crsmSubject(crsmCommand(1, 2, 3, 4, 5, "6"), "AT+CRSM=1,2,3,4,5,6", network::kPlatforms));
}

TEST(CrsmSet, TakesThreeValues)
{
    network::expectRows(
        crsmSubject(kReadSpn, kReadSpnText, kAllButMtk),
        {{"a response", {R"(+CRSM: 144,0,"62178202412183026F07")"}, {"144", "0", "62178202412183026F07"}},
         {"no quotes", {"+CRSM: 144,0,6217"}, {"144", "0", "6217"}},
         {"a bare line", {R"(144,0,"6217")"}, {"144", "0", "6217"}},
         {"status words are not judged", {"+CRSM: 106,130"}, {"106", "130", kKept}},
         {"one status word", {"+CRSM: 148"}, {"148", kKept, kKept}},
         {"no line", {}, {kKept, kKept, kKept}},
         {"an empty response", {R"(+CRSM: 144,0,"")"}, {"144", "0", ""}},
         {"an open end", {"+CRSM: 144,0,"}, {"144", "0", kKept}},
         {"an empty value", {R"(+CRSM: 144,,"62")"}, {"144", kKept, kKept}},
         {"four values", {R"(+CRSM: 144,0,"62","63")"}, {"144", "0", "62"}},
         {"blanks, tabs and commas", {"+CRSM: 144,0,\" 6,2\t1 7\""}, {"144", "0", " 6,2\t1 7"}},
         {"beyond 32 bits", {R"(+CRSM: 144,4294967296,"62")"}, {"144", kAny, "62"}},
         {"1024 are not rewritten", {stretched("+CRSM: 144,0,", '6', "", 1031)}, {"144", kKept, kKept}}});
}

TEST(CrsmSet, GivesTheWholeResponse)
{
    for (const size_t length : {127U, 128U, 511U, 512U, 1015U}) { // at most 1023 characters in all
        const std::string text(length, '6');
        network::expectRows(crsmSubject(kReadSpn, kReadSpnText, kAllButMtk, length),
                            {{"a line", {"+CRSM: 1,0,\"" + text.substr(2) + "\""}, {"1", "0", text.substr(2)}},
                             {"no quotes", {"+CRSM: 1,0," + text}, {"1", "0", text}}});
    }
    const std::string text(network::kLongestBareValue - 6, '6');
    const Texts lines = bareLines("144 0 " + text);
    ASSERT_EQ(network::reply(lines).size(), network::kLongestReply);
    network::expectRows(crsmSubject(kReadSpn, kReadSpnText, kAllButMtk, text.size()),
                        {{"a whole reply", lines, {"144", "0", text}}});
}

TEST(CrsmSet, LogsRoundTheParse)
{
    scripted::Host host;
    host.expect(kReadSpnText, 5000, "\r\n+CRSM: 148,4\r\n\r\nOK\r\n");
    crsm(kReadSpn, 8);
    EXPECT_EQ(host.formats(), (Texts{"###T9LB### crsmSet begin", "Bk_Parse_At_Res-in-%s", "Bk_Parse_At_Res-out-%s",
                                     "Bk_Parse_At_Res-out-%d", "###T9LB### crsmSet return UNI_ERROR_SUCCESS"}));
}

} // namespace
