// The serving network by registration and operator selection.

#include <gtest/gtest.h>

#include "tests/mainControl/serving_outputs.h"
#include "tests/support/log_lines.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::copiedOver;
using scripted::failingAt;
using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;
using scripted::Script;
using namespace serving;

const std::string kZpas = framed({"+ZPAS: \"LTE\",\"PS_ONLY\""});
const std::string kCreg = framed({"+CREG: 2,5,\"1A2B\",\"01C2D3E4\",7"});
const std::string kNumeric = framed({"+COPS: 0,2,\"46001\",7"});
const std::string kLong = framed({"+COPS: 0,0,\"China Net\",7"});

/** The quoting platforms have a form of their own for the format alone. */
std::string formatCommand(int32_t platform, const char *format)
{
    const bool isShort = platform == PF_MTK || platform == PF_TSP || platform == PF_SPEADTRUM;
    return std::string("AT+COPS=3,") + format + (isShort ? "" : ",,0");
}

Script script(int32_t platform = 0)
{
    return {{"AT+ZPAS?", 5000, kZpas},
            {"AT+CREG?", 5000, kCreg},
            {formatCommand(platform, "2"), 180000, "\r\nOK\r\n"},
            {"AT+COPS?", 5000, kNumeric},
            {formatCommand(platform, "0"), 180000, "\r\nOK\r\n"},
            {"AT+COPS?", 5000, kLong}};
}

/** What the wrappers and the parser log in the first so many steps of the script. */
Log exchanges(size_t steps)
{
    Log log;
    if (steps > 0) log.parsed(kZpas, "\"LTE\",\"PS_ONLY\"");
    if (steps > 1) {
        log.parsed(kCreg, "2,5,\"1A2B\",\"01C2D3E4\",7")
            .network("cregRead-outtAtRes.Paras:%s", "2,5,\"1A2B\",\"01C2D3E4\",7")
            .network("cregRead-tParasList.strParasLine[i]:%s", "2,5,\"1A2B\",\"01C2D3E4\",7")
            .network("cregRead-out-num:%d", 4)
            .network("cregRead-out-pCregPara->cellid:%s", "01C2D3E4")
            .network("cregRead-out-pCregPara->lac:%s", "1A2B")
            .network("cregRead-out-pCregPara->mode:%d", 2)
            .network("cregRead-out-pCregPara->status:%d", 5);
    }
    if (steps > 2) log.ok();
    if (steps > 3) log.parsed(kNumeric, "0,2,\"46001\",7");
    if (steps > 4) log.ok();
    if (steps > 5) log.parsed(kLong, "0,0,\"China Net\",7");
    return log;
}

int32_t addressOf(const GuardedRecord<int32_t> &output)
{
    return static_cast<int32_t>(reinterpret_cast<uintptr_t>(output.get()));
}

/** The numbers are addresses: hosts read them as they come. */
Log success(const Outputs &out)
{
    return Log()
        .api("KR_getServingNetworkC-out-*pCSDomain:%d", addressOf(out.cs))
        .api("KR_getServingNetworkC-out-*pPSDomain:%d", addressOf(out.ps))
        .api("KR_getServingNetworkC-out-*pRoaming:%d", addressOf(out.roaming))
        .api("KR_getServingNetworkC-out-*pMCC:%d", addressOf(out.mcc))
        .api("KR_getServingNetworkC-out-*pMNC:%d", addressOf(out.mnc))
        .api("KR_getServingNetworkC-out-pName:%s", out.name.data())
        .api("KR_getServingNetworkC-out-pRplmnName:%s", out.rplmn.data())
        .api("KR_getServingNetworkC-out-pPCDomain:%s", out.domain.data())
        .api("KR_getServingNetworkC-return UNI_ERROR_SUCCESS");
}

TEST(ServingNetworkC, AsksFourReportsOnEveryPlatform)
{
    for (const int32_t platform : kPlatforms) {
        SCOPED_TRACE(platform);
        const OnPlatform on(platform);
        const Outputs out(10, 30);
        Host host;
        play(host, script(platform));
        EXPECT_EQ(out.readBy(KR_getServingNetworkC), UNI_ERROR_SUCCESS);
        EXPECT_EQ(*out.cs.get(), 2);
        EXPECT_EQ(*out.ps.get(), 1);
        EXPECT_EQ(*out.roaming.get(), 0);
        EXPECT_EQ(*out.mcc.get(), 460);
        EXPECT_EQ(*out.mnc.get(), 1);
        EXPECT_EQ(out.name.bytes(), copiedOver(before(10), "LTE"));
        EXPECT_EQ(out.rplmn.bytes(), copiedOver(before(30), "China Net"));
        EXPECT_EQ(out.domain.bytes(), copiedOver(filled(kDomainRoom - 1), "PS_ONLY"));
        EXPECT_EQ(Log::of(host), Log().api("KR_getServingNetworkC-in").then(exchanges(6)).then(success(out)));
    }
}

TEST(ServingNetworkC, DropsANameThatDoesNotFit)
{
    for (const int32_t size : {10, 11, 9, 8, 1, 0, -1, INT32_MIN}) {
        SCOPED_TRACE(size);
        const Outputs out(4, size);
        Host host;
        play(host, script());
        EXPECT_EQ(out.readBy(KR_getServingNetworkC), UNI_ERROR_SUCCESS);
        EXPECT_EQ(out.rplmn.bytes(), copiedOver(before(size), size > 9 ? std::optional("China Net") : std::nullopt));
        EXPECT_EQ(Log::of(host, scripted::kApiModule), Log().api("KR_getServingNetworkC-in").then(success(out)));
    }
}

TEST(ServingNetworkC, GoesNoFurtherWithATypeThatDoesNotFit)
{
    for (const int32_t size : {3, 2, 1, 0, -1, INT32_MIN}) {
        SCOPED_TRACE(size);
        const Outputs out(size, 30);
        Host host;
        host.expect("AT+ZPAS?", 5000, kZpas);
        EXPECT_EQ(out.readBy(KR_getServingNetworkC), UNI_ERROR_STRING_SIZE_TOO_SMALL);
        EXPECT_EQ(*out.cs.get(), 2);
        EXPECT_EQ(*out.ps.get(), 1);
        EXPECT_EQ(*out.roaming.get(), kRoamingBefore);
        EXPECT_EQ(*out.mcc.get(), kMccBefore);
        EXPECT_EQ(*out.mnc.get(), kMncBefore);
        EXPECT_EQ(out.name.bytes(), copiedOver(before(size), std::nullopt));
        EXPECT_EQ(out.rplmn.bytes(), copiedOver(before(30), std::nullopt));
        EXPECT_EQ(out.domain.bytes(), copiedOver(filled(kDomainRoom - 1), "PS_ONLY"));
        EXPECT_EQ(Log::of(host), Log()
                                     .api("KR_getServingNetworkC-in")
                                     .then(exchanges(1))
                                     .api("KR_getServingNetworkC-return UNI_ERROR_FALSE-getZpasInfo failed"));
    }
}

TEST(ServingNetworkC, RoamingIsTheStatusOfAWholeLine)
{
    struct Row {
        std::initializer_list<const char *> lines;
        int32_t roaming;
    };
    const Row rows[] = {
        {{"+CREG: 2,5,\"1A2B\",\"01C2D3E4\",7"}, 0},
        {{"+CREG: 2,1,\"1A2B\",\"01C2D3E4\",7"}, 1},
        {{"+CREG: 2,0,\"1A2B\",\"01C2D3E4\",7"}, 2},
        {{"+CREG: 2,2,\"1A2B\",\"01C2D3E4\",7"}, 2},
        {{"+CREG: 2,3,\"1A2B\",\"01C2D3E4\",7"}, 2},
        {{"+CREG: 2,4,\"1A2B\",\"01C2D3E4\",7"}, 2},
        {{"+CREG: 2,6,\"1A2B\",\"01C2D3E4\",7"}, 2},
        {{"+CREG: 2,-1,\"1A2B\",\"01C2D3E4\",7"}, 2},
        // Lines of other report modes are too short.
        {{"+CREG: 0,1"}, 2},
        {{"+CREG: 1,5"}, 2},
        {{"+CREG: 2,5,\"1A2B\",\"01C2D3E4\""}, 2},
        {{"+CREG: 2,1,\"1A2B\",\"01C2D3E4\",7", "+CREG: 2,5,\"1A2B\",\"01C2D3E4\",7"}, 0},
        {{}, 2},
    };
    for (const Row &row : rows) {
        const Outputs out(10, 30);
        Script steps = script();
        steps[1].reply = framed(row.lines);
        Host host;
        play(host, steps);
        EXPECT_EQ(out.readBy(KR_getServingNetworkC), UNI_ERROR_SUCCESS);
        EXPECT_EQ(*out.roaming.get(), row.roaming) << framed(row.lines);
    }
}

TEST(ServingNetworkC, KeepsWhatWasWrittenBeforeTheStepThatFails)
{
    const char *const reasons[] = {
        "KR_getServingNetworkC-return UNI_ERROR_FALSE-getZpasInfo failed",
        "KR_getServingNetworkC-return UNI_ERROR_FALSE-cregRead failed",
        "KR_getServingNetworkC-return UNI_ERROR_FALSE-getNetworkInfoByCops failed",
        "KR_getServingNetworkC-return UNI_ERROR_FALSE-getNetworkInfoByCops failed",
        "KR_getServingNetworkC-return UNI_ERROR_FALSE-getNetworkInfoByCops failed",
        "KR_getServingNetworkC-return UNI_ERROR_FALSE-getNetworkInfoByCops failed",
    };
    for (size_t step = 0; step < std::size(reasons); ++step) {
        for (const Failure &failure : kFailures) {
            SCOPED_TRACE(std::to_string(step) + ": " + failure.name);
            const Outputs out(10, 30);
            Host host;
            play(host, failingAt(script(), step, failure));
            EXPECT_EQ(out.readBy(KR_getServingNetworkC), UNI_ERROR_FALSE);
            EXPECT_EQ(*out.cs.get(), step > 0 ? 2 : kCsBefore);
            EXPECT_EQ(*out.ps.get(), step > 0 ? 1 : kPsBefore);
            EXPECT_EQ(out.name.str(), step > 0 ? "LTE" : before(10));
            EXPECT_EQ(out.domain.str(), step > 0 ? "PS_ONLY" : filled(kDomainRoom - 1));
            EXPECT_EQ(*out.roaming.get(), step > 1 ? 0 : kRoamingBefore);
            EXPECT_EQ(*out.mcc.get(), step > 3 ? 460 : kMccBefore);
            EXPECT_EQ(*out.mnc.get(), step > 3 ? 1 : kMncBefore);
            EXPECT_EQ(out.rplmn.bytes(), copiedOver(before(30), std::nullopt));
            EXPECT_EQ(Log::of(host),
                      Log().api("KR_getServingNetworkC-in").then(exchanges(step)).failed(failure).text(reasons[step]));
        }
    }
}

} // namespace
