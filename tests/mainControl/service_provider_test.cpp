// The service provider name: one access to the SIM, and two conversions by the host's codec.

#include <cstring>

#include "tests/support/api_call.h"
#include "tests/support/record_at.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailingReplies;
using scripted::kPlatforms;
using scripted::OnPlatform;

CrsmCmd commandOf(int32_t command, int32_t fileid, int32_t p1, int32_t p2, int32_t p3, const std::string &data)
{
    CrsmCmd record = {};
    record.command = command;
    record.fileid = fileid;
    record.p1 = p1;
    record.p2 = p2;
    record.p3 = p3;
    std::memcpy(record.data, data.data(), data.size());
    return record;
}

/** A response record whose text is the last thing before memory that nobody may touch. */
class Response {
  public:
    /** @param before  the response that it holds, terminator not counted; whole words with the terminator */
    explicit Response(const std::string &before = "old")
        : memory_(sizeof(CrsmRes) + before.size() + 1), record_(recordAt<CrsmRes>(memory_.data()))
    {
        record_->sw1 = -1;
        record_->sw2 = -2;
        std::memcpy(record_->response, before.c_str(), before.size() + 1);
    }

    operator CrsmRes *() const { return record_; } // NOLINT(google-explicit-constructor): it stands for a record

    void expect(int32_t sw1, int32_t sw2, const std::string &text, const std::string &of) const
    {
        EXPECT_EQ(record_->sw1, sw1) << of;
        EXPECT_EQ(record_->sw2, sw2) << of;
        EXPECT_EQ(std::string(record_->response), text) << of;
    }

  private:
    GuardedMemory memory_;
    CrsmRes *record_;
};

Log entry(const CrsmCmd &command, const std::string &data)
{
    return Log()
        .api("KR_getSPNInfo-in")
        .api("KR_getSPNInfo-in-tCrsmcmd.command:%d", {std::to_string(command.command)})
        .api("KR_getSPNInfo-in-tCrsmcmd.data:%s", {data})
        .api("KR_getSPNInfo-in-tCrsmcmd.fileid:%d", {std::to_string(command.fileid)})
        .api("KR_getSPNInfo-in-tCrsmcmd.p1:%d", {std::to_string(command.p1)})
        .api("KR_getSPNInfo-in-tCrsmcmd.p2:%d", {std::to_string(command.p2)})
        .api("KR_getSPNInfo-in-tCrsmcmd.p3:%d", {std::to_string(command.p3)})
        .network("###T9LB### crsmSet begin");
}

Log success(const std::string &sw1, const std::string &sw2, const std::string &text)
{
    return Log()
        .network("###T9LB### crsmSet return UNI_ERROR_SUCCESS")
        .api("KR_getSPNInfo-out-pCrsmres->response:%s", {text})
        .api("KR_getSPNInfo-out-pCrsmres->sw1:%d", {sw1})
        .api("KR_getSPNInfo-out-pCrsmres->sw2:%d", {sw2})
        .api("KR_getSPNInfo-return UNI_ERROR_SUCCESS");
}

const CrsmCmd kReadName = commandOf(176, 28486, 0, 0, 17, "");

struct CommandRow {
    CrsmCmd command;
    std::string data;
    const char *numbers; ///< as they are sent
};

const CommandRow kCommands[] = {
    {kReadName, "", "176,28486,0,0,17"},
    {commandOf(214, 28486, 1, 2, 3, "A0FF12"), "A0FF12", "214,28486,1,2,3"},
    {commandOf(0, 0, 0, 0, 0, "F"), "F", "0,0,0,0,0"},
    {commandOf(INT32_MIN, INT32_MAX, -1, INT32_MIN, INT32_MAX, ""), "",
     "-2147483648,2147483647,-1,-2147483648,2147483647"},
    {commandOf(214, 28486, 0, 4, 63, filled(80)), filled(80), "214,28486,0,4,63"},
    {commandOf(214, 28486, 0, 4, 63, filled(127)), filled(127), "214,28486,0,4,63"},
    {commandOf(214, 28486, 0, 4, 64, filled(128)), filled(128), "214,28486,0,4,64"},
};

TEST(ServiceProviderAccess, SendsTheRecordAsItIs)
{
    const std::string reply = framed({"+CRSM: 144,0,\"00436172726965\""});
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        for (const CommandRow &row : kCommands) {
            const bool endsInNumbers = platform == PF_MTK && row.data.empty();
            Host host;
            host.expect(std::string("AT+CRSM=") + row.numbers + (endsInNumbers ? "" : "," + row.data), 5000, reply);
            const Response response("fifteen letters");
            EXPECT_EQ(KR_getSPNInfo(row.command, response), UNI_ERROR_SUCCESS);
            response.expect(144, 0, "00436172726965", row.numbers);
            entry(row.command, row.data)
                .parsed(reply, "144,0,\"00436172726965\"", 1)
                .append(success("144", "0", "00436172726965"))
                .expectFrom(host);
        }
    }
}

struct ResponseRow {
    const char *paras;
    int32_t sw1;
    int32_t sw2;
    const char *text;
};

// What a reply lacks stays as it was.
const ResponseRow kResponses[] = {
    {"144,0,\"ABC\"", 144, 0, "ABC"},
    {"144,0,ABC", 144, 0, "ABC"},
    {"144,0,\"\"", 144, 0, ""},
    {"145,23,\"A\"", 145, 23, "A"},
    {"106,130,\"AB\"", 106, 130, "AB"},
    {"106,130,\"\"", 106, 130, ""},
    {"148,4", 148, 4, "old"},
    {"-1,-2147483648", -1, INT32_MIN, "old"},
    {"103", 103, -2, "old"},
    {"SIM", -1, -2, "old"},
};

TEST(ServiceProviderAccess, TakesTheAnswerWithoutJudgingIt)
{
    for (const ResponseRow &row : kResponses) {
        const std::string reply = framed({(std::string("+CRSM: ") + row.paras).c_str()});
        Host host;
        host.expect("AT+CRSM=176,28486,0,0,17,", 5000, reply);
        const Response response;
        EXPECT_EQ(KR_getSPNInfo(kReadName, response), UNI_ERROR_SUCCESS) << row.paras;
        response.expect(row.sw1, row.sw2, row.text, row.paras);
        entry(kReadName, "")
            .parsed(reply, row.paras, 1)
            .append(success(std::to_string(row.sw1), std::to_string(row.sw2), row.text))
            .expectFrom(host);
    }
}

TEST(ServiceProviderAccess, LeavesTheRecordAsItWasWithoutAnAnswer)
{
    Host host;
    host.expect("AT+CRSM=176,28486,0,0,17,", 5000, "\r\nOK\r\n");
    const Response response;
    EXPECT_EQ(KR_getSPNInfo(kReadName, response), UNI_ERROR_SUCCESS);
    response.expect(-1, -2, "old", "bare OK");
    entry(kReadName, "").parsed("\r\nOK\r\n", "", 1).append(success("-1", "-2", "old")).expectFrom(host);
}

// Two hexadecimal digits for each of 256 bytes: the most that one access gives.
TEST(ServiceProviderAccess, FillsTheCallersRecordWhole)
{
    for (const size_t length : {3U, 255U, 511U, 515U, 1011U}) {
        const std::string text = filled(length);
        const std::string paras = "144,0,\"" + text + '"';
        const std::string reply = framed({("+CRSM: " + paras).c_str()});
        Host host;
        host.expect("AT+CRSM=176,28486,0,0,17,", 5000, reply);
        const Response response(std::string(length, 'o'));
        EXPECT_EQ(KR_getSPNInfo(kReadName, response), UNI_ERROR_SUCCESS) << length;
        response.expect(144, 0, text, "whole");
        entry(kReadName, "").parsed(reply, paras, 1).append(success("144", "0", text)).expectFrom(host);
    }
}

TEST(ServiceProviderAccess, FailsWhenTheCommandCannotBeSent)
{
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        Host host;
        host.expectFailing(platform == PF_MTK ? "AT+CRSM=176,28486,0,0,17" : "AT+CRSM=176,28486,0,0,17,", 5000);
        const Response response;
        EXPECT_EQ(KR_getSPNInfo(kReadName, response), UNI_ERROR_FALSE);
        response.expect(-1, -2, "old", "send");
        entry(kReadName, "")
            .network("###T9LB### ClientSendCmd != UNI_ERROR_SUCCESS")
            .api("KR_getSPNInfo-return UNI_ERROR_FALSE")
            .expectFrom(host);
    }
}

TEST(ServiceProviderAccess, FailsOnAnyOtherReply)
{
    for (const Failure &failure : kFailingReplies) {
        Host host;
        host.expect("AT+CRSM=176,28486,0,0,17,", 5000, *failure.reply);
        const Response response;
        EXPECT_EQ(KR_getSPNInfo(kReadName, response), UNI_ERROR_FALSE) << failure.name;
        response.expect(-1, -2, "old", failure.name);
        entry(kReadName, "")
            .failed(failure)
            .network("###T9LB### crsmSet return UNI_ERROR_FALSE")
            .api("KR_getSPNInfo-return UNI_ERROR_FALSE")
            .expectFrom(host);
    }
}

struct CodecRow {
    std::string source;
    std::string destination; ///< what the codec writes, whatever it returns
    int result;
};

// Only 1 is a success here.
TEST(ServiceProviderName, SucceedsWhereTheDecoderReturnsOne)
{
    const CodecRow rows[] = {
        {"00430061", "Ca", 1},   {"", "", 1},      {filled(5000), filled(2500), 1},
        {"0043", "C", 0},        {"0043", "C", 2}, {"0043", "C", -1},
        {"0043", "", INT32_MAX}, {"", "", 0},      {"100% %s %d", "100% %n%s", 1},
        {"4", "half", 257},
    };
    for (const CodecRow &row : rows) {
        Host host;
        host.expectDecode(row.source, row.destination, row.result);
        const CallerBuffer destination(row.destination.size() + 1);
        EXPECT_EQ(KR_parseSPNName(row.source.c_str(), destination), row.result == 1 ? 0U : 1U) << row.result;
        destination.expect(row.destination + '\0', row.source);
        Log()
            .api("KR_parseSPNName-in")
            .api("KR_parseSPNName-in-pSrcSpnInfo:%s", {row.source})
            .api(row.result == 1 ? "KR_parseSPNName-return UNI_ERROR_SUCCESS"
                                 : "KR_parseSPNName-return UNI_ERROR_FALSE")
            .expectFrom(host);
    }
}

// Only -1 is a failure here. The result is logged as if it came in.
TEST(ServiceProviderFriends, FailWhereTheInverterReturnsMinusOne)
{
    const CodecRow rows[] = {
        {"64F000", "460F00", 0},
        {"64F000", "460F00", 1},
        {"64F000", "460F00", 2},
        {"64F000", "460F00", -2},
        {"64F000", "460F00", INT32_MIN},
        {"64F000", "460", -1},
        {"", "", 0},
        {"", "", -1},
        {"6", "6", 1},
        {filled(5001), filled(5001), 0},
        {"%s%n", "%n%s", 0},
    };
    for (const CodecRow &row : rows) {
        Host host;
        host.expectInvert(row.source, row.destination, row.result);
        const CallerBuffer destination(row.destination.size() + 1);
        EXPECT_EQ(KR_spnFriendOperlistInvert(row.source.c_str(), destination), row.result == -1 ? 1U : 0U)
            << row.result;
        destination.expect(row.destination + '\0', row.source);
        Log log = Log()
                      .api("KR_spnFriendOperlistInvert-in")
                      .api("KR_spnFriendOperlistInvert-in-pSrcSpnFriendOperlist:%s", {row.source});
        if (row.result == -1)
            log.api("KR_spnFriendOperlistInvert-return UNI_ERROR_FALSE");
        else
            log.api("KR_spnFriendOperlistInvert-in-pDestFriendOperlist:%s", {row.destination})
                .api("KR_spnFriendOperlistInvert-return UNI_ERROR_SUCCESS");
        log.expectFrom(host);
    }
}

} // namespace
