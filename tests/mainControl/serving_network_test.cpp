// Serving and home network by the vendor's reports.

#include <gtest/gtest.h>

#include "tests/mainControl/serving_outputs.h"
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
using namespace serving;

TEST(Domain, IsTwoBitsOfItsCode)
{
    struct Row {
        int32_t code, cs, ps;
    };
    for (const Row &row : {Row{0, 0, 0},
                           {1, 1, 2},
                           {2, 2, 1},
                           {3, 1, 1},
                           {4, 2, 2},
                           {5, 1, 2},
                           {6, 2, 1},
                           {7, 1, 1},
                           {-1, 1, 1},
                           {-2, 2, 1},
                           {-4, 2, 2},
                           {INT32_MAX, 1, 1},
                           {INT32_MIN, 2, 2}}) {
        Host host;
        GuardedRecord<int32_t> cs(0x5A);
        GuardedRecord<int32_t> ps(0x5A);
        EXPECT_EQ(translateDomain(row.code, cs, ps), UNI_ERROR_SUCCESS);
        EXPECT_EQ(*cs.get(), row.cs) << row.code;
        EXPECT_EQ(*ps.get(), row.ps) << row.code;
        EXPECT_EQ(Log::of(host), Log());
    }
}

struct ZpasReply {
    const char *name;
    std::string line; ///< empty for a bare OK
    int32_t nameLen;
    uint32_t code;
    int32_t cs, ps;
    std::optional<std::string> netType;
    std::string domain;
};

const ZpasReply kZpasReplies[] = {
    {"both", "\"LTE\",\"CS_PS\"", 20, 0, 1, 1, "LTE", "CS_PS"},
    {"circuit-switched", "\"GSM\",\"CS_ONLY\"", 20, 0, 1, 2, "GSM", "CS_ONLY"},
    {"packet", "\"UMTS\",\"PS_ONLY\"", 20, 0, 2, 1, "UMTS", "PS_ONLY"},
    {"none", "\"LTE\",\"NONE\"", 20, 0, 0, 0, "LTE", "NONE"},
    {"lower case", "\"LTE\",\"cs_ps\"", 20, 0, 0, 0, "LTE", "cs_ps"},
    {"begins alike", "\"LTE\",\"CS_PSX\"", 20, 0, 0, 0, "LTE", "CS_PSX"},
    {"part of it", "\"LTE\",\"CS_P\"", 20, 0, 0, 0, "LTE", "CS_P"},
    {"blank behind", "\"LTE\",\"PS_ONLY \"", 20, 0, 0, 0, "LTE", "PS_ONLY "},
    {"without quotes", "LTE,CS_ONLY", 20, 0, 1, 2, "LTE", "CS_ONLY"},
    {"blank and tab", "\"LTE A\",\"CS\tPS\"", 20, 0, 0, 0, "LTE A", "CS\tPS"},
    {"empty type", "\"\",\"CS_PS\"", 20, 0, 1, 1, "", "CS_PS"},
    {"empty domain", "\"LTE\",\"\"", 20, 0, 0, 0, "LTE", ""},
    {"no domain", "\"LTE\"", 20, 0, 0, 0, "LTE", ""},
    // A leading empty parameter is not marked: what follows is read in its place.
    {"no type", ",\"CS_PS\"", 20, 0, 0, 0, "CS_PS", ""},
    {"third parameter", "\"LTE\",\"CS_PS\",1", 20, 0, 1, 1, "LTE", "CS_PS"},
    {"bare OK", "", 20, 0, 0, 0, "", ""},
    {"fits exactly", "\"LTE\",\"CS_PS\"", 4, 0, 1, 1, "LTE", "CS_PS"},
    {"one too long", "\"LTE\",\"CS_PS\"", 3, 18, 1, 1, std::nullopt, "CS_PS"},
    {"far too long", "\"LTE\",\"PS_ONLY\"", 1, 18, 2, 1, std::nullopt, "PS_ONLY"},
    {"no room", "\"LTE\",\"CS_ONLY\"", 0, 18, 1, 2, std::nullopt, "CS_ONLY"},
    {"negative room", "\"LTE\",\"CS_ONLY\"", -1, 18, 1, 2, std::nullopt, "CS_ONLY"},
    {"least room", "\"LTE\",\"CS_ONLY\"", INT32_MIN, 18, 1, 2, std::nullopt, "CS_ONLY"},
    {"empty type, room for it", "\"\",\"CS_PS\"", 1, 0, 1, 1, "", "CS_PS"},
    {"empty type, no room", "\"\",\"CS_PS\"", 0, 18, 1, 1, std::nullopt, "CS_PS"},
    {"texts of 67", filled(67) + "," + filled(67), 68, 0, 0, 0, filled(67), filled(67)},
    {"texts of 68", filled(68) + "," + filled(68), 68, 0, 0, 0, filled(67), filled(67)},
    {"texts of 500", filled(500) + "," + filled(510), 100, 0, 0, 0, filled(67), filled(67)},
    {"long type, real domain", filled(90) + ",CS_PS", 67, 18, 1, 1, std::nullopt, "CS_PS"},
};

std::string zpasReply(const std::string &line)
{
    return line.empty() ? "\r\nOK\r\n" : framed({("+ZPAS: " + line).c_str()});
}

TEST(Zpas, FillsDomainsAndTexts)
{
    for (const ZpasReply &row : kZpasReplies) {
        for (const int32_t platform : kPlatforms) {
            SCOPED_TRACE(row.name);
            const OnPlatform on(platform);
            const Outputs out(row.nameLen, 1);
            Host host;
            host.expect("AT+ZPAS?", 5000, zpasReply(row.line));
            EXPECT_EQ(getZpasInfo(out.cs.get(), out.ps.get(), row.nameLen, out.name, out.domain), row.code);
            EXPECT_EQ(*out.cs.get(), row.cs);
            EXPECT_EQ(*out.ps.get(), row.ps);
            EXPECT_EQ(out.name.bytes(), copiedOver(before(row.nameLen), row.netType));
            EXPECT_EQ(out.domain.bytes(), copiedOver(filled(kDomainRoom - 1), row.domain));
            EXPECT_EQ(Log::of(host), Log().parsed(zpasReply(row.line), row.line));
        }
    }
}

const char *const kZpas = "+ZPAS: \"LTE\",\"CS_PS\"";
const char *const kZdonParas = "\"Net\",\"460\",\"01\",\"Home\",\"461\",\"07\",\"ROAM_OFF\"";
const std::string kZdon = framed({"+ZDON: \"Net\",\"460\",\"01\",\"Home\",\"461\",\"07\",\"ROAM_OFF\""});

Log servingSuccess(const Outputs &out)
{
    return Log().api("%s OK:pCSDomain:%d,pPSDomain%d,pRoaming%d,pMCC:%d,pMNC:%d,pName:%s,pRplmnName:%s,pPCDomain:%s",
                     "KR_getServingNetwork", *out.cs.get(), *out.ps.get(), *out.roaming.get(), *out.mcc.get(),
                     *out.mnc.get(), out.name.data(), out.rplmn.data(), out.domain.data());
}

TEST(ServingNetwork, TakesTypeAndDomainsFromTheFirstReport)
{
    for (const ZpasReply &row : kZpasReplies) {
        SCOPED_TRACE(row.name);
        const Outputs out(row.nameLen, 20);
        Host host;
        host.expect("AT+ZPAS?", 5000, zpasReply(row.line));
        if (row.code == 0) host.expect("AT+ZDON?", 5000, kZdon);
        EXPECT_EQ(out.readBy(KR_getServingNetwork), row.code);
        EXPECT_EQ(*out.cs.get(), row.cs);
        EXPECT_EQ(*out.ps.get(), row.ps);
        EXPECT_EQ(*out.roaming.get(), row.code == 0 ? 1 : kRoamingBefore);
        EXPECT_EQ(*out.mcc.get(), row.code == 0 ? 460 : kMccBefore);
        EXPECT_EQ(*out.mnc.get(), row.code == 0 ? 1 : kMncBefore);
        EXPECT_EQ(out.name.bytes(), copiedOver(before(row.nameLen), row.netType));
        EXPECT_EQ(out.domain.bytes(), copiedOver(filled(kDomainRoom - 1), row.domain));
        Log log = Log().api("KR_getServingNetwork-in").parsed(zpasReply(row.line), row.line);
        if (row.code == 0) {
            log.parsed(kZdon, kZdonParas).then(servingSuccess(out));
        } else {
            // The text says FALSE whatever the code is.
            log.api("KR_getServingNetwork-return UNI_ERROR_FALSE-getZpasInfo failed");
        }
        EXPECT_EQ(Log::of(host), log);
    }
}

struct ZdonReply {
    const char *name;
    std::string line;
    int32_t roaming;
    int32_t mcc, mnc;
    std::string serving;
};

const ZdonReply kZdonReplies[] = {
    {"at home", kZdonParas, 1, 460, 1, "Net"},
    {"roaming", "\"Net\",\"310\",\"410\",\"Home\",\"460\",\"00\",\"ROAM_ON\"", 0, 310, 410, "Net"},
    {"no roaming", "\"Net\",\"001\",\"001\",\"Home\",\"460\",\"00\",\"ROAM_NONE\"", 1, 1, 1, "Net"},
    {"lower case", "\"Net\",\"460\",\"01\",\"Home\",\"460\",\"00\",\"roam_on\"", 2, 460, 1, "Net"},
    {"begins alike", "\"Net\",\"460\",\"01\",\"Home\",\"460\",\"00\",\"ROAM_ONE\"", 2, 460, 1, "Net"},
    {"part of it", "\"Net\",\"460\",\"01\",\"Home\",\"460\",\"00\",\"ROAM_O\"", 2, 460, 1, "Net"},
    {"empty roaming", "\"Net\",\"460\",\"01\",\"Home\",\"460\",\"00\",\"\"", 2, 460, 1, "Net"},
    {"without roaming", "\"Net\",\"460\",\"01\",\"Home\",\"460\",\"00\"", 2, 460, 1, "Net"},
    {"without quotes", "Net,460,01,Home,460,00,ROAM_ON", 0, 460, 1, "Net"},
    {"blank in the name", "\"My Net\",\"460\",\"01\",\"Home\",\"460\",\"00\",\"ROAM_ON\"", 0, 460, 1, "My Net"},
    {"empty codes", "\"Net\",\"\",\"\",\"Home\",\"460\",\"00\",\"ROAM_ON\"", 0, kMccBefore, kMncBefore, "Net"},
    {"empty name", "\"\",\"460\",\"01\",\"Home\",\"460\",\"00\",\"ROAM_ON\"", 0, 460, 1, ""},
    {"codes are no numbers", "\"Net\",\"x\",\"y1\",\"H\",\"1\",\"2\",\"ROAM_ON\"", 0, kMccBefore, kMncBefore, "Net"},
    {"codes begin as numbers", "\"Net\",\"46x\",\"-7,1\",\"H\",\"1\",\"2\",\"ROAM_ON\"", 0, 46, -7, "Net"},
    {"name only", "\"Net\"", 2, kMccBefore, kMncBefore, "Net"},
    // Not registered: what is sent begins with the home network.
    {"not registered", ",,,\"Home\",\"460\",\"00\",\"ROAM_ON\"", 2, kMccBefore, kMncBefore, ""},
    {"one empty parameter", ",\"460\",\"01\",\"Home\",\"460\",\"00\",\"ROAM_ON\"", 2, 1, kMncBefore, "460"},
    {"bare OK", "", 2, kMccBefore, kMncBefore, ""},
    {"name of 67", filled(67) + ",460,01,Home,460,00,ROAM_ON", 0, 460, 1, filled(67)},
    {"name of 68", filled(68) + ",460,01,Home,460,00,ROAM_ON", 0, 460, 1, filled(67)},
    {"name of 700", filled(700) + ",460,01,Home,460,00,ROAM_ON", 0, 460, 1, filled(67)},
    {"roaming of 300", "Net,460,01,Home,460,00,ROAM_ON" + filled(300), 2, 460, 1, "Net"},
};

std::string zdonReply(const std::string &line)
{
    return line.empty() ? "\r\nOK\r\n" : framed({("+ZDON: " + line).c_str()});
}

TEST(ServingNetwork, TakesTheRestFromTheSecond)
{
    for (const ZdonReply &row : kZdonReplies) {
        const auto length = static_cast<int32_t>(row.serving.size());
        for (const int32_t size : {length + 1, length + 9, length, length - 1, 0, -1, INT32_MIN}) {
            SCOPED_TRACE(row.name + std::string(" in ") + std::to_string(size));
            const bool fits = length < size;
            const Outputs out(20, size);
            Host host;
            host.expect("AT+ZPAS?", 5000, framed({kZpas})).expect("AT+ZDON?", 5000, zdonReply(row.line));
            EXPECT_EQ(out.readBy(KR_getServingNetwork), fits ? UNI_ERROR_SUCCESS : UNI_ERROR_STRING_SIZE_TOO_SMALL);
            EXPECT_EQ(*out.cs.get(), 1);
            EXPECT_EQ(*out.ps.get(), 1);
            EXPECT_EQ(*out.roaming.get(), row.roaming);
            EXPECT_EQ(*out.mcc.get(), row.mcc);
            EXPECT_EQ(*out.mnc.get(), row.mnc);
            EXPECT_EQ(out.name.bytes(), copiedOver(before(20), "LTE"));
            EXPECT_EQ(out.rplmn.bytes(), copiedOver(before(size), fits ? std::optional(row.serving) : std::nullopt));
            EXPECT_EQ(out.domain.bytes(), copiedOver(filled(kDomainRoom - 1), "CS_PS"));
            Log log = Log().api("KR_getServingNetwork-in");
            log.parsed(framed({kZpas}), "\"LTE\",\"CS_PS\"").parsed(zdonReply(row.line), row.line);
            if (fits) log.then(servingSuccess(out));
            EXPECT_EQ(Log::of(host), log);
        }
    }
}

TEST(ServingNetwork, FailsAtEitherReport)
{
    for (const Failure &failure : kFailures) {
        SCOPED_TRACE(failure.name);
        for (const bool isFirst : {true, false}) {
            const Outputs out(20, 20);
            Host host;
            if (!isFirst) host.expect("AT+ZPAS?", 5000, framed({kZpas}));
            play(host, {{isFirst ? "AT+ZPAS?" : "AT+ZDON?", 5000, failure.reply}});
            EXPECT_EQ(out.readBy(KR_getServingNetwork), UNI_ERROR_FALSE);
            EXPECT_EQ(*out.cs.get(), isFirst ? kCsBefore : 1);
            EXPECT_EQ(*out.ps.get(), isFirst ? kPsBefore : 1);
            EXPECT_EQ(*out.roaming.get(), kRoamingBefore);
            EXPECT_EQ(*out.mcc.get(), kMccBefore);
            EXPECT_EQ(*out.mnc.get(), kMncBefore);
            EXPECT_EQ(out.name.str(), isFirst ? before(20) : "LTE");
            EXPECT_EQ(out.rplmn.bytes(), copiedOver(before(20), std::nullopt));
            EXPECT_EQ(out.domain.str(), isFirst ? filled(kDomainRoom - 1) : "CS_PS");
            Log log = Log().api("KR_getServingNetwork-in");
            if (!isFirst) log.parsed(framed({kZpas}), "\"LTE\",\"CS_PS\"");
            EXPECT_EQ(Log::of(host), log.failed(failure).text(
                                         isFirst ? "KR_getServingNetwork-return UNI_ERROR_FALSE-getZpasInfo failed"
                                                 : "KR_getServingNetwork-return UNI_ERROR_FALSE-zdonRead failed"));
        }
        const Outputs out(20, 20);
        Host host;
        play(host, {{"AT+ZPAS?", 5000, failure.reply}});
        EXPECT_EQ(getZpasInfo(out.cs.get(), out.ps.get(), 20, out.name, out.domain), UNI_ERROR_FALSE);
        EXPECT_EQ(*out.cs.get(), kCsBefore);
        EXPECT_EQ(*out.ps.get(), kPsBefore);
        EXPECT_EQ(out.name.str(), before(20));
        EXPECT_EQ(out.domain.str(), filled(kDomainRoom - 1));
        EXPECT_EQ(Log::of(host), Log().failed(failure));
    }
}

} // namespace
