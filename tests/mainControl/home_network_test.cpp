// The home network.

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/log_lines.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::copiedOver;
using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;

constexpr int32_t kMccBefore = 64;
constexpr int32_t kMncBefore = 65;

struct ZdonReply {
    const char *name;
    std::string line;
    int32_t mcc, mnc;
    std::string home;
};

const ZdonReply kReplies[] = {
    {"registered", "\"Net\",\"310\",\"410\",\"Home\",\"460\",\"01\",\"ROAM_ON\"", 460, 1, "Home"},
    {"without quotes", "Net,310,410,Home,460,01,ROAM_ON", 460, 1, "Home"},
    {"not registered", ",,,\"Home\",\"460\",\"07\"", 460, 7, "Home"},
    {"not registered, roaming", ",,,\"My Home\",\"460\",\"07\",\"ROAM_NONE\"", 460, 7, "My Home"},
    {"not registered, nothing", ",,,", kMccBefore, kMncBefore, ""},
    {"not registered, name only", ",,,\"Home\"", kMccBefore, kMncBefore, "Home"},
    {"blanks", "\"Net\",\"310\",\"410\",\"My\town Home\",\"460\",\"01\",\"ROAM_ON\"", 460, 1, "My\town Home"},
    {"empty codes", "\"Net\",\"310\",\"410\",\"Home\",\"\",\"\",\"ROAM_ON\"", kMccBefore, kMncBefore, "Home"},
    {"empty name", "\"Net\",\"310\",\"410\",\"\",\"460\",\"01\",\"ROAM_ON\"", 460, 1, ""},
    {"no numbers", "\"Net\",\"310\",\"410\",\"Home\",\"x\",\"y\",\"ROAM_ON\"", kMccBefore, kMncBefore, "Home"},
    {"numbers begin", "\"Net\",\"310\",\"410\",\"Home\",\"46x\",\"-1y\",\"ROAM_ON\"", 46, -1, "Home"},
    {"without codes", "\"Net\",\"310\",\"410\",\"Home\"", kMccBefore, kMncBefore, "Home"},
    {"serving only", "\"Net\",\"310\",\"410\"", kMccBefore, kMncBefore, ""},
    {"bare OK", "", kMccBefore, kMncBefore, ""},
    {"name of 67", "Net,310,410," + filled(67) + ",460,01,ROAM_ON", 460, 1, filled(67)},
    {"name of 68", "Net,310,410," + filled(68) + ",460,01,ROAM_ON", 460, 1, filled(67)},
    {"not registered, name of 800", ",,," + filled(800) + ",460,01", 460, 1, filled(67)},
};

struct Outputs {
    explicit Outputs(int32_t size) : before(filled(size > 0 ? static_cast<size_t>(size) - 1 : 0)), name(before)
    {
        *mcc = kMccBefore;
        *mnc = kMncBefore;
    }

    std::string before;
    GuardedText name;
    GuardedRecord<int32_t> mcc, mnc;
};

TEST(HomeNetwork, TakesWhatFits)
{
    for (const ZdonReply &row : kReplies) {
        const auto length = static_cast<int32_t>(row.home.size());
        const std::string reply = row.line.empty() ? "\r\nOK\r\n" : framed({("+ZDON: " + row.line).c_str()});
        for (const int32_t size : {length + 1, length + 9, length, length - 1, 0, -1, INT32_MIN}) {
            SCOPED_TRACE(row.name + std::string(" in ") + std::to_string(size));
            const Outputs out(size);
            Host host;
            host.expect("AT+ZDON?", 5000, reply);
            EXPECT_EQ(KR_getHomeNetwork(out.mcc.get(), out.mnc.get(), size, out.name), UNI_ERROR_SUCCESS);
            EXPECT_EQ(*out.mcc.get(), row.mcc);
            EXPECT_EQ(*out.mnc.get(), row.mnc);
            const auto copied = length < size ? std::optional(row.home) : std::nullopt;
            EXPECT_EQ(out.name.bytes(), copiedOver(out.before, copied));
            EXPECT_EQ(Log::of(host), Log()
                                         .api("KR_getHomeNetwork-in")
                                         .parsed(reply, row.line)
                                         .api("KR_getHomeNetwork-out-*pMCC:%d", row.mcc)
                                         .api("KR_getHomeNetwork-out-*pMNC:%d", row.mnc)
                                         .api("KR_getHomeNetwork-out-pName:%s", copied.value_or(out.before).c_str())
                                         .api("KR_getHomeNetwork-return UNI_ERROR_SUCCESS"));
        }
    }
}

TEST(HomeNetwork, IsReadTheSameWayOnEveryPlatform)
{
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        const Outputs out(20);
        Host host;
        host.expect("AT+ZDON?", 5000, framed({"+ZDON: \"Net\",\"310\",\"410\",\"Home\",\"460\",\"01\",\"ROAM_ON\""}));
        EXPECT_EQ(KR_getHomeNetwork(out.mcc.get(), out.mnc.get(), 20, out.name), UNI_ERROR_SUCCESS);
        EXPECT_EQ(out.name.str(), "Home") << platform;
    }
}

TEST(HomeNetwork, FailureLeavesEveryOutput)
{
    for (const Failure &failure : kFailures) {
        SCOPED_TRACE(failure.name);
        const Outputs out(20);
        Host host;
        play(host, {{"AT+ZDON?", 5000, failure.reply}});
        EXPECT_EQ(KR_getHomeNetwork(out.mcc.get(), out.mnc.get(), 20, out.name), UNI_ERROR_FALSE);
        EXPECT_EQ(*out.mcc.get(), kMccBefore);
        EXPECT_EQ(*out.mnc.get(), kMncBefore);
        EXPECT_EQ(out.name.bytes(), copiedOver(out.before, std::nullopt));
        EXPECT_EQ(Log::of(host), Log()
                                     .api("KR_getHomeNetwork-in")
                                     .failed(failure)
                                     .api("KR_getHomeNetwork-return UNI_ERROR_FALSE-zdonRead failed"));
    }
}

} // namespace
