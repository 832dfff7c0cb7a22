// What the SIM knows of itself: its ICCID and the subscriber's own number.

#include <cstring>

#include "tests/support/api_call.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailingReplies;
using scripted::kPlatforms;
using scripted::OnPlatform;

const char *iccidCommand()
{
    return g_currentPlatform == PF_MTK ? "AT+CRSM=176,12258,0,0,10" : "AT+CRSM=176,12258,0,0,10,";
}

Log iccidEntry()
{
    return Log().api("KR_getICCID-in").network("###T9LB### crsmSet begin");
}

Log iccidRead(const std::string &reply, const std::string &paras)
{
    return iccidEntry().parsed(reply, paras, 1).network("###T9LB### crsmSet return UNI_ERROR_SUCCESS");
}

/** Expects the value at every size that it fits, and 18 at the sizes below. */
void expectIccid(const std::string &paras, const std::string &value)
{
    const std::string reply = framed({("+CRSM: " + paras).c_str()});
    const auto length = static_cast<int32_t>(value.size());
    for (const int32_t size : {length, length + 1, length + 2, length + 40}) {
        Host host;
        host.expect(iccidCommand(), 5000, reply);
        const auto room = static_cast<size_t>(size);
        const CallerBuffer buffer(room);
        EXPECT_EQ(KR_getICCID(size, buffer), UNI_ERROR_SUCCESS) << paras << size;
        buffer.expect((value + '\0').substr(0, room), paras);
        iccidRead(reply, paras)
            .api("KR_getICCID-out-pString:%s", {value})
            .api("KR_getICCID-return UNI_ERROR_SUCCESS")
            .expectFrom(host);
    }
    for (const int32_t size : {length - 1, length / 2, 0, -1, INT32_MIN}) {
        if (size >= length) continue;
        Host host;
        host.expect(iccidCommand(), 5000, reply);
        const CallerBuffer buffer(value.size() + 1);
        EXPECT_EQ(KR_getICCID(size, buffer), UNI_ERROR_STRING_SIZE_TOO_SMALL) << paras << size;
        buffer.expect("", paras);
        iccidRead(reply, paras).api("KR_getICCID-return UNI_ERROR_STRING_SIZE_TOO_SMALL").expectFrom(host);
    }
}

std::string quoted(const std::string &text)
{
    return '"' + text + '"';
}

TEST(Iccid, IsTheResponseOfTheSimAsItStands)
{
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        expectIccid("144,0,\"98680010325476981032\"", "98680010325476981032");
    }
    expectIccid("144,0,98680010325476981032", "98680010325476981032");
    expectIccid("144,0,\"9868001032547698103F\"", "9868001032547698103F");
    expectIccid("106,130,\"9868\"", "9868");
    expectIccid("106,130,\"\"", "");
    expectIccid("106,130", "");
    expectIccid("144,0,\"" + filled(254) + '"', filled(254));
    expectIccid("144,0,\"" + filled(255) + '"', filled(255));
    expectIccid("144,0,\"" + filled(511) + '"', filled(511));
    expectIccid("144,0,\"" + filled(512) + '"', filled(512));
    expectIccid("144,0,\"" + filled(513) + '"', filled(512));
    expectIccid("144,0,\"" + filled(1014) + '"', filled(512));
}

// A line of 1024 characters is not rewritten, so its second number cannot be read.
TEST(Iccid, IsEmptyInALineThatIsTooLong)
{
    expectIccid("144,0,\"" + filled(1016) + '"', "");
}

TEST(Iccid, FailsWhenTheCommandCannotBeSent)
{
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        Host host;
        host.expectFailing(iccidCommand(), 5000);
        const CallerBuffer buffer(32);
        EXPECT_EQ(KR_getICCID(32, buffer), UNI_ERROR_FALSE) << platform;
        buffer.expect("", "send");
        iccidEntry()
            .network("###T9LB### ClientSendCmd != UNI_ERROR_SUCCESS")
            .api("KR_getICCID-return UNI_ERROR_FALSE")
            .expectFrom(host);
    }
}

TEST(Iccid, FailsOnAnyOtherReply)
{
    for (const Failure &failure : kFailingReplies) {
        Host host;
        host.expect(iccidCommand(), 5000, *failure.reply);
        const CallerBuffer buffer(32);
        EXPECT_EQ(KR_getICCID(32, buffer), UNI_ERROR_FALSE) << failure.name;
        buffer.expect("", failure.name);
        iccidEntry()
            .failed(failure)
            .network("###T9LB### crsmSet return UNI_ERROR_FALSE")
            .api("KR_getICCID-return UNI_ERROR_FALSE")
            .expectFrom(host);
    }
}

struct NumberRow {
    const char *name;
    std::string paras;
    size_t needed; ///< room for the field, its quotes included
    std::string number;
};

// Behind the name "+CNUM: " the parameters reach the getter as they stand.
const NumberRow kNumbers[] = {
    {"without a name", ",\"13800138000\",129", 13, "13800138000"},
    {"with a name", "\"Line 1\",\"+8613800138000\",145", 16, "+8613800138000"},
    {"comma in the name", "\"a,b\",\"123\",129", 5, "123"},
    {"no type", "\"me\",\"123\"", 5, "123"},
    {"blank in front", ",  \"123\",129", 7, "123"},
    {"blank inside", ",\"1 23\",129", 6, "1 23"},
    {"no quotes", ",123,129", 3, "123"},
    {"no quotes, last field", "me,123", 3, "123"},
    {"quotes around nothing", ",\"\",129", 2, ""},
    {"nothing", ",,129", 0, ""},
    {"one comma", ",", 0, ""},
    {"only a name, quoted", "\"123\"", 5, "123"},
    {"only a name", "123", 3, "123"},
    {"253 characters with quotes", ',' + quoted(filled(251)) + ",129", 253, filled(251)},
    {"254 characters with quotes", ',' + quoted(filled(252)) + ",129", 254, filled(252)},
    {"255 characters with quotes", ',' + quoted(filled(253)) + ",129", 254, filled(253)},
    {"256 characters with quotes", ',' + quoted(filled(254)) + ",129", 254, filled(253)},
    {"512 characters with quotes", ',' + quoted(filled(510)) + ",129", 254, filled(253)},
    {"254 characters, last field", ',' + filled(254), 254, filled(254)},
    {"255 characters, last field", ',' + filled(255), 254, filled(254)},
    {"512 characters, last field", ',' + filled(512), 254, filled(254)},
};

/** Expects the number without a terminator, at every size from the one that is needed. */
template <typename Call>
void expectNumber(const NumberRow &row, const Call &call)
{
    const auto needed = static_cast<int32_t>(row.needed);
    for (const int32_t size : {needed, needed + 1, needed + 40}) {
        const CallerBuffer buffer(static_cast<size_t>(size));
        call(size, buffer, UNI_ERROR_SUCCESS);
        buffer.expect(row.number, row.name);
    }
    for (const int32_t size : {needed - 1, needed - 2, 0, -1, INT32_MIN}) {
        if (size >= needed) continue;
        const CallerBuffer buffer(row.needed + 1);
        call(size, buffer, UNI_ERROR_FALSE);
        buffer.expect("", row.name);
    }
}

void expectVoiceNumber(const NumberRow &row, const std::string &reply)
{
    expectNumber(row, [&](int32_t size, char *buffer, uint32_t code) {
        Host host;
        host.expect("AT+CNUM", 5000, reply);
        EXPECT_EQ(KR_getVoiceNumber(size, buffer), code) << row.name << size;
        Log log = Log().api("KR_getVoiceNumber-in").parsed(reply, row.paras, 1);
        if (code == UNI_ERROR_SUCCESS)
            log.api("KR_getVoiceNumber return OK:%s", {row.number}).expectFrom(host);
        else
            log.api("KR_getVoiceNumber-return UNI_ERROR_FALSE").expectFrom(host);
    });
}

TEST(VoiceNumber, IsTheSecondFieldWithoutItsQuotes)
{
    for (const NumberRow &row : kNumbers)
        expectVoiceNumber(row, framed({("+CNUM: " + row.paras).c_str()}));
}

TEST(VoiceNumber, IsThatOfTheFirstEntry)
{
    expectVoiceNumber({"entries", ",\"111\",129;,\"22222\",145;\"x\",\"3\",129", 5, "111"},
                      framed({"+CNUM: ,\"111\",129", "+CNUM: ,\"22222\",145", "+CNUM: \"x\",\"3\",129"}));
    expectVoiceNumber({"without types", "\"x\",\"111\";\"y\",\"2\"", 9, "111"},
                      framed({"+CNUM: \"x\",\"111\"", "+CNUM: \"y\",\"2\""}));
    expectVoiceNumber({"bare lines", "+1,\"111\",129", 5, "111"}, framed({"+1,\"111\",129"}));
    expectVoiceNumber({"a bare line behind", "1,\"22\"", 4, "22"}, framed({"+CNUM: 1", "22"}));
}

TEST(VoiceNumber, DoesNotDependOnThePlatform)
{
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        expectVoiceNumber({"number", ",\"111\",129", 5, "111"}, framed({"+CNUM: ,\"111\",129"}));
    }
}

TEST(VoiceNumber, FailsWithoutAnEntry)
{
    for (const char *reply : {"\r\nOK\r\n", "\r\n+CNUM: \r\n\r\nOK\r\n", "\r\n+CNUM: ,\"111\",129\r\nOK\r\n"}) {
        Host host;
        host.expect("AT+CNUM", 5000, reply);
        const CallerBuffer buffer(32);
        EXPECT_EQ(KR_getVoiceNumber(32, buffer), UNI_ERROR_FALSE) << reply;
        buffer.expect("", reply);
        Log()
            .api("KR_getVoiceNumber-in")
            .parsed(reply, "", 1)
            .api("KR_getVoiceNumber-return UNI_ERROR_FALSE")
            .expectFrom(host);
    }
}

TEST(VoiceNumber, FailsWhenTheCommandCannotBeSent)
{
    Host host;
    host.expectFailing("AT+CNUM", 5000);
    const CallerBuffer buffer(32);
    EXPECT_EQ(KR_getVoiceNumber(32, buffer), UNI_ERROR_FALSE);
    buffer.expect("", "send");
    Log().api("KR_getVoiceNumber-in").api("KR_getVoiceNumber-return UNI_ERROR_FALSE-send at failed").expectFrom(host);
}

TEST(VoiceNumber, FailsOnAnyOtherReply)
{
    for (const Failure &failure : kFailingReplies) {
        Host host;
        host.expect("AT+CNUM", 5000, *failure.reply);
        const CallerBuffer buffer(32);
        EXPECT_EQ(KR_getVoiceNumber(32, buffer), UNI_ERROR_FALSE) << failure.name;
        buffer.expect("", failure.name);
        Log log = Log().api("KR_getVoiceNumber-in").failed(failure);
        if (failure.identifier != 0) log.api("KR_getVoiceNumber-return UNI_ERROR_FALSE");
        log.expectFrom(host);
    }
}

/** A parsed reply whose parameters are a text. */
void fill(AtRes *record, int32_t result, const std::string &paras)
{
    record->CmdId = 1;
    record->Result = static_cast<uint8_t>(result);
    std::memcpy(record->Paras, paras.c_str(), paras.size() + 1);
}

void expectTaken(const NumberRow &row)
{
    expectNumber(row, [&](int32_t size, char *buffer, uint32_t code) {
        Host host;
        const GuardedRecord<AtRes> record;
        fill(record, AT_RES_RESULT_OK, row.paras);
        EXPECT_EQ(disposeVoiceNumber_1(record, size, buffer), code) << row.name << size;
    });
}

TEST(VoiceNumber, IsTakenOutOfAParsedReply)
{
    for (const NumberRow &row : kNumbers)
        expectTaken(row);
    // No parsed reply ends inside quotes, but a record of the host may.
    expectTaken({"one quote", ",\"", 1, ""});
    expectTaken({"quote never closed", ",\"123", 4, "123"});
}

// A field of 1024 characters is not taken, and none behind it.
TEST(VoiceNumber, IsEmptyInOrBehindAFieldThatIsTooLong)
{
    expectTaken({"the number", ',' + filled(1024) + ",129", 0, ""});
    expectTaken({"the name", filled(1024) + ",\"111\",129", 0, ""});
    expectTaken({"just short enough", filled(1023) + ",\"111\",129", 5, "111"});
}

TEST(VoiceNumber, IsTakenOutOfNoOtherResult)
{
    for (const int32_t result : {0, 2, 3, 4, 5, 11, 12, 13, 255}) {
        Host host;
        const GuardedRecord<AtRes> record;
        fill(record, result, ",\"111\",129");
        const CallerBuffer buffer(32);
        EXPECT_EQ(disposeVoiceNumber_1(record, 32, buffer), UNI_ERROR_FALSE) << result;
        buffer.expect("", "result");
    }
}

TEST(VoiceNumber, IsNotTakenOutOfAnEmptyReply)
{
    Host host;
    const GuardedRecord<AtRes> record;
    fill(record, AT_RES_RESULT_OK, "");
    const CallerBuffer buffer(32);
    EXPECT_EQ(disposeVoiceNumber_1(record, 32, buffer), UNI_ERROR_FALSE);
    buffer.expect("", "no field");
}

} // namespace
