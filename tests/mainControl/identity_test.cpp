// The getters that hand on what the modem says about itself, as it says it.

#include "tests/support/api_call.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailingReplies;
using scripted::kPlatforms;
using scripted::OnPlatform;

struct Getter {
    const char *function;
    uint32_t (*call)(int32_t, char *);
    const char *command;
    const char *commandOn4And5;
    const char *out;

    [[nodiscard]] const char *commandNow() const
    {
        return g_currentPlatform == 4 || g_currentPlatform == 5 ? commandOn4And5 : command;
    }
    [[nodiscard]] std::string line(const char *behindName) const { return std::string(function) + behindName; }
};

const Getter kGetters[] = {
    {"KR_getManufacturer", KR_getManufacturer, "AT+CGMI", "AT+CGMI", "KR_getManufacturer-out-pString:%s"},
    {"KR_getModelID", KR_getModelID, "AT+CGMM", "AT+CGMM", "KR_getModelID-out-pString:%s"},
    {"KR_getFirmwareRevision", KR_getFirmwareRevision, "AT+CGMR", "AT+CGMR", "KR_getFirmwareRevision-out-pString:%s"},
    {"KR_getHardwareRevision", KR_getHardwareRevision, "AT+ZPCB?", "AT+HVER", "KR_getHardwareRevision-out-pString:%s"},
    {"KR_getIMSI", KR_getIMSI, "AT+CIMI", "AT+CIMI", "KR_getIMSI-out-pString:%s"},
    {"KR_getIMEI", KR_getIMEI, "AT+CGSN", "AT+CGSN", "KR_getIMEI-out-pIMEIString:%s"},
};

class GetterTest : public testing::TestWithParam<Getter> {
  protected:
    /** Calls with a size and a buffer that may be smaller than that. */
    static void expectValue(const std::string &reply, const std::string &value, int32_t size, size_t room)
    {
        const Getter &getter = GetParam();
        Host host;
        host.expect(getter.commandNow(), 5000, reply);
        const CallerBuffer buffer(room);
        EXPECT_EQ(getter.call(size, buffer), UNI_ERROR_SUCCESS) << size;
        buffer.expect(value, getter.function);
        Log()
            .api(getter.line("-in"))
            .parsed(reply, value, 1)
            .api(getter.out, {value})
            .api(getter.line("-return UNI_ERROR_SUCCESS"))
            .expectFrom(host);
    }

    static void expectNoRoom(const std::string &reply, const std::string &value, int32_t size)
    {
        const Getter &getter = GetParam();
        Host host;
        host.expect(getter.commandNow(), 5000, reply);
        const CallerBuffer buffer(value.size() + 1);
        EXPECT_EQ(getter.call(size, buffer), UNI_ERROR_FALSE) << size;
        buffer.expect("", getter.function);
        Log()
            .api(getter.line("-in"))
            .parsed(reply, value, 1)
            .api(getter.line("-return UNI_ERROR_FALSE"))
            .expectFrom(host);
    }
};

struct ValueRow {
    std::string reply;
    std::string value;
};

const ValueRow kValues[] = {
    {framed({"861234567890123"}), "861234567890123"},
    {"AT+CGSN\r\r\n861234567890123\r\n\r\nOK\r\n", "861234567890123"},
    {framed({"+CGMR: V1.0 B05"}), "V1.0 B05"},
    {framed({"+CGMR: \"V1.0, B05\""}), "\"V1.0, B05\""},
    {framed({"+CGMR: V1", "+CGMR: V2"}), "V1;V2"},
    {framed({"+ZPCB: A", "made here"}), "A,\"made here\""},
    {framed({"MAKER ", "OF MODEMS"}), "MAKER OF MODEMS"},
    {framed({"0"}), "0"},
    {framed({filled(254).c_str()}), filled(254)},
    {framed({filled(255).c_str()}), filled(255)},
    {framed({filled(256).c_str()}), filled(256)},
    {framed({filled(512).c_str()}), filled(512)},
    {framed({filled(1024).c_str()}), filled(1024)},
    {framed({filled(1025).c_str()}), filled(1024)},
    {framed({filled(1000).c_str(), filled(1000).c_str()}), filled(1000) + filled(1000)},
    {"\r\n" + repeated(filled(1000) + "\r\n", 10) + filled(209) + "\r\n\r\nOK\r\n",
     repeated(filled(1000), 10) + filled(209)},
    {"\r\nN: \r\n" + repeated("7\r\n", 3408) + "\r\nOK\r\n", repeated(",\"7\"", 3408)},
    {"\r\nOK\r\n", ""},
    {"\r\n861234567890123\r\nOK\r\n", ""},
};

TEST_P(GetterTest, CopyTheValueWithoutATerminator)
{
    for (const ValueRow &row : kValues) {
        const auto length = static_cast<int32_t>(row.value.size());
        expectValue(row.reply, row.value, length, row.value.size());
        expectValue(row.reply, row.value, length + 1, row.value.size() + 1);
        expectValue(row.reply, row.value, length + 100, row.value.size() + 100);
        expectValue(row.reply, row.value, INT32_MAX, row.value.size());
    }
}

TEST_P(GetterTest, FailWhenTheValueDoesNotFit)
{
    for (const ValueRow &row : kValues) {
        const auto length = static_cast<int32_t>(row.value.size());
        for (const int32_t size : {length - 1, length / 2, 0, -1, INT32_MIN}) {
            if (size < length) expectNoRoom(row.reply, row.value, size);
        }
    }
}

TEST_P(GetterTest, ChooseTheCommandByThePlatform)
{
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        expectValue(framed({"B05"}), "B05", 3, 3);
        expectNoRoom(framed({"B05"}), "B05", 2);
    }
}

TEST_P(GetterTest, FailWhenTheCommandCannotBeSent)
{
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        for (const int result : {-1, 1, 19}) {
            Host host;
            host.expectFailing(GetParam().commandNow(), 5000, result);
            const CallerBuffer buffer(32);
            EXPECT_EQ(GetParam().call(32, buffer), UNI_ERROR_FALSE);
            buffer.expect("", "send");
            Log()
                .api(GetParam().line("-in"))
                .api(GetParam().line("-return UNI_ERROR_FALSE-send at failed"))
                .expectFrom(host);
        }
    }
}

TEST_P(GetterTest, FailOnAnyOtherReply)
{
    for (const Failure &failure : kFailingReplies) {
        Host host;
        host.expect(GetParam().commandNow(), 5000, *failure.reply);
        const CallerBuffer buffer(32);
        EXPECT_EQ(GetParam().call(32, buffer), UNI_ERROR_FALSE) << failure.name;
        buffer.expect("", failure.name);
        Log()
            .api(GetParam().line("-in"))
            .failed(failure)
            .api(GetParam().line(failure.identifier != 0 ? "-return UNI_ERROR_FALSE"
                                                         : "-return UNI_ERROR_FALSE-parse at failed"))
            .expectFrom(host);
    }
}

INSTANTIATE_TEST_SUITE_P(Identity, GetterTest, testing::ValuesIn(kGetters),
                         [](const auto &row) { return std::string(row.param.function); });

} // namespace
