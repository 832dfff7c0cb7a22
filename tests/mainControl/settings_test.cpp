// Settings of the device that go through as they are: radio power, operation mode, firmware control, addresses.

#include <gtest/gtest.h>

#include "tests/mainControl/api_dialogue.h"

namespace {

using namespace dialogue;
using scripted::framed;
using Values = std::vector<int32_t>;

constexpr Module api{scripted::kApiFileModule};
constexpr int32_t kMost = 2147483647;
constexpr int32_t kLeast = -2147483647 - 1;
const Values kAllButTsp = {0, PF_QC_LTE, 2, PF_MTK, PF_SPEADTRUM, 7};

Reading reading(const std::string &name, const std::string &paras, Values values)
{
    return {framed({(name + paras).c_str()}), paras, std::move(values)};
}

Setter power(uint32_t (*call)(), int32_t powerMode, const char *command, int32_t timeoutMs, Values platforms)
{
    return {"KR_setPower",
            call,
            {api("KR_setPower-in"), api("KR_setPower-in-powerMode:%d", powerMode)},
            command,
            timeoutMs,
            {api("KR_setPower-return UNI_ERROR_SUCCESS")},
            {api("KR_setPower-return UNI_ERROR_FALSE")},
            std::move(platforms)};
}

Setter operationMode(uint32_t (*call)(), int32_t operMode, const char *command)
{
    return {"KR_setOperationMode",
            call,
            {api("KR_setOperationMode-in"), api("KR_setOperationMode-in-operMode:%d", operMode)},
            command,
            5000,
            {api("KR_setOperationMode-return UNI_ERROR_SUCCESS")},
            {api("KR_setOperationMode-return UNI_ERROR_FALSE-zoprtSet failed")}};
}

const std::string kUsb = "KR_Sendusb0IPtoMarvell";
const std::string kNetgate = "KR_SendNetgateIPtoMarvell";

Setter address(const std::string &name, uint32_t (*call)(), const char *command)
{
    return {name.data(), call, {}, command, 5000, {api("%s OK !", name)}, {api("%s failed !", name)}};
}

const Setter kSetters[] = {
    power([] { return KR_setPower(1); }, 1, "at+cfun=1", 5000, kAllButTsp),
    power([] { return KR_setPower(1); }, 1, "at+cfun=1", 20000, {PF_TSP}),
    power([] { return KR_setPower(0); }, 0, "at+cfun=0", 5000, kAllButTsp),
    power([] { return KR_setPower(0); }, 0, "at+cfun=0", 20000, {PF_TSP}),
    power([] { return KR_setPower(kLeast); }, kLeast, "at+cfun=-2147483648", 5000, kAllButTsp),
    power([] { return KR_setPower(kMost); }, kMost, "at+cfun=2147483647", 20000, {PF_TSP}),
    operationMode([] { return KR_setOperationMode(0); }, 0, "AT+ZOPRT=0"),
    operationMode([] { return KR_setOperationMode(5); }, 5, "AT+ZOPRT=5"),
    operationMode([] { return KR_setOperationMode(kMost); }, kMost, "AT+ZOPRT=2147483647"),
    operationMode([] { return KR_setOperationMode(kLeast); }, kLeast, "AT+ZOPRT=-2147483648"),
    address(
        kUsb, [] { return KR_Sendusb0IPtoMarvell("192.168.0.1"); }, "AT*prop=ramdump.host_ip,1,192.168.0.1"),
    address(
        kUsb, [] { return KR_Sendusb0IPtoMarvell(""); }, "AT*prop=ramdump.host_ip,1,"),
    address(
        kUsb, [] { return KR_Sendusb0IPtoMarvell("\"a, b\"%s"); }, "AT*prop=ramdump.host_ip,1,\"a, b\"%s"),
    address(
        kNetgate, [] { return KR_SendNetgateIPtoMarvell("192.168.0.1"); }, "AT*prop=net.static_ip,1,192.168.0.1"),
    address(
        kNetgate, [] { return KR_SendNetgateIPtoMarvell(""); }, "AT*prop=net.static_ip,1,"),
    address(
        kNetgate, [] { return KR_SendNetgateIPtoMarvell("\"a, b\"%s"); }, "AT*prop=net.static_ip,1,\"a, b\"%s"),
};

TEST(Setting, IsPassedOnAsItIs)
{
    for (const Setter &setter : kSetters)
        expectSetter(setter);
}

const struct {
    std::string name;
    uint32_t (*call)(const char *);
    std::string prefix;
} kAddresses[] = {
    {kUsb, KR_Sendusb0IPtoMarvell, "AT*prop=ramdump.host_ip,1,"},
    {kNetgate, KR_SendNetgateIPtoMarvell, "AT*prop=net.static_ip,1,"},
};

TEST(Address, OfAnyLengthIsSentThatACommandHolds)
{
    for (const auto &row : kAddresses) {
        for (const size_t length : {49U, 50U, 51U, 254U, 255U, 512U, 1023U}) {
            SCOPED_TRACE(row.name + std::to_string(length));
            const GuardedText text(argumentFor(row.prefix, length));
            EXPECT_EQ(
                play(0, {ok(row.prefix + text.str(), 5000), api("%s OK !", row.name)}, [&] { return row.call(text); }),
                UNI_ERROR_SUCCESS);
        }
        for (const size_t length : {1024U, 5000U}) {
            SCOPED_TRACE(row.name + std::to_string(length));
            const GuardedText text(argumentFor(row.prefix, length));
            EXPECT_EQ(play(0, {api("%s failed !", row.name)}, [&] { return row.call(text); }), UNI_ERROR_FALSE);
        }
    }
}

Reader powerReader(Values platforms)
{
    return {
        "KR_getPower",
        [](int32_t *const *out) { return KR_getPower(out[0]); },
        1,
        {api("KR_getPower-in")},
        "at+cfun?",
        5000,
        [](const std::string &, const Values &values) -> Events {
            return {api("KR_getPower-out-*pPowerMode:%d", values[0]), api("KR_getPower-return UNI_ERROR_SUCCESS")};
        },
        [](Failure) -> Events { return {api("KR_getPower-return UNI_ERROR_FALSE-cfunRead failed")}; },
        std::move(platforms),
    };
}

TEST(Power, IsTheFirstNumber)
{
    expectReadings(powerReader(kPlatforms), {
                                                reading("+CFUN: ", "0", {0}),
                                                reading("", "0", {0}),
                                                reading("+CFUN: ", "4,1", {4}),
                                                reading("+CFUN: ", "9x", {9}),
                                                reading("+CFUN: ", "007", {7}),
                                                reading("+CFUN: ", "10", {10}),
                                                reading("+CFUN: ", "2147483647", {kMost}),
                                            });
    expectReadings(powerReader(kAllButTsp), {reading("+CFUN: ", "1", {1}), reading("+CFUN: ", "01,0", {1})});
}

TEST(Power, FailsWithoutADigitInFront)
{
    const Reader reader = powerReader(kPlatforms);
    for (const int32_t platform : kPlatforms) {
        for (const std::string paras : {"", " 1", "-1", "+1", "\"1\"", ",1", "x1", ":1", "/1"}) {
            SCOPED_TRACE(paras);
            const Outputs outputs(1);
            const Event exchange =
                paras.empty() ? ok("at+cfun?", 5000) : ok("at+cfun?", 5000, "+CFUN: " + paras, paras);
            EXPECT_EQ(play(platform, reader.entry + Events{exchange} + reader.failure(Failure::Send),
                           [&] { return KR_getPower(outputs.pointers()[0]); }),
                      UNI_ERROR_FALSE);
            EXPECT_EQ(outputs.values(), Values{kKept});
        }
    }
    expectFailures(reader);
}

/** What a report's command comes to does not matter, and the next one is sent all the same. */
TEST(Power, SwitchesTheReportsOnAgainOnTspAtFullFunction)
{
    const Reader reader = powerReader({PF_TSP});
    const char *const commands[] = {"AT+CREG=2", "AT+CGREG=2", "AT+CEREG=2"};
    std::vector<Events> ways = {{ok(commands[0], 5000), ok(commands[1], 5000), ok(commands[2], 5000)}};
    for (const Failure failure : kFailures) {
        ways.push_back({failing(failure, commands[0], 5000), ok(commands[1], 5000), ok(commands[2], 5000)});
        ways.push_back({ok(commands[0], 5000), failing(failure, commands[1], 5000), ok(commands[2], 5000)});
        ways.push_back({ok(commands[0], 5000), ok(commands[1], 5000), failing(failure, commands[2], 5000)});
        ways.push_back({failing(failure, commands[0], 5000), failing(failure, commands[1], 5000),
                        failing(failure, commands[2], 5000)});
    }
    for (const Events &way : ways) {
        for (const std::string paras : {"1", "1,0", "01"}) {
            const Outputs outputs(1);
            EXPECT_EQ(play(PF_TSP,
                           reader.entry + Events{ok("at+cfun?", 5000, "+CFUN: " + paras, paras)} + way +
                               reader.success(paras, {1}),
                           [&] { return KR_getPower(outputs.pointers()[0]); }),
                      UNI_ERROR_SUCCESS);
            EXPECT_EQ(outputs.values(), Values{1});
        }
    }
}

const Reader kOperationMode = {
    "KR_getOperationMode",
    [](int32_t *const *out) { return KR_getOperationMode(out[0]); },
    1,
    {api("KR_getOperationMode-in")},
    "AT+ZOPRT?",
    5000,
    [](const std::string &, const Values &values) -> Events {
        return {api("KR_getOperationMode-out-pOperMode:%d", values[0]),
                api("KR_getOperationMode-return UNI_ERROR_SUCCESS")};
    },
    [](Failure) -> Events { return {api("KR_getOperationMode-return UNI_ERROR_FALSE")}; },
};

TEST(OperationMode, IsTheFirstNumber)
{
    expectReadings(kOperationMode, {
                                       reading("+ZOPRT: ", "5", {5}),
                                       reading("", "5", {5}),
                                       reading("+ZOPRT: ", "5,6", {5}),
                                       reading("+ZOPRT: ", "-2147483648, 1", {kLeast}),
                                       reading("+ZOPRT: ", "\"5\"", {kKept}),
                                       reading("+ZOPRT: ", ",5", {kKept}),
                                       {"\r\nOK\r\n", "", {kKept}},
                                   });
    expectFailures(kOperationMode);
}

const struct {
    int32_t iType;
    const char *command;
} kFotaTypes[] = {
    {0, "AT+FOTACTR=0"}, {3, "AT+FOTACTR=3"}, {kMost, "AT+FOTACTR=2147483647"}, {kLeast, "AT+FOTACTR=-2147483648"}};

Events fotaEntry(int32_t iType)
{
    return {api("KR_setFOTACTR-in"), api("KR_setFOTACTR-in-iType:%d", iType)};
}

const Reading kFotaReplies[] = {
    reading("+FOTACTR: ", "3,1", {3, 1}),
    reading("", "3,1", {3, 1}),
    reading("+FOTACTR: ", "-3, \"7\",9", {-3, 7}),
    reading("+FOTACTR: ", "3", {3, kKept}),
    reading("+FOTACTR: ", "3,", {3, kKept}),
    reading("+FOTACTR: ", "none", {kKept, kKept}),
    {"\r\nOK\r\n", "", {kKept, kKept}},
};

TEST(FirmwareControl, AnswersWithTypeAndResult)
{
    for (const int32_t platform : kPlatforms) {
        for (const auto &[iType, command] : kFotaTypes) {
            const auto type = iType;
            for (const Reading &row : kFotaReplies) {
                SCOPED_TRACE(row.paras);
                const Outputs outputs(2);
                const Events events = fotaEntry(type) + Events{answered(command, 5000, row.reply, row.paras, 1),
                                                               api("KR_setFOTACTR-out-oType:%d", row.values[0]),
                                                               api("KR_setFOTACTR-out-oResult:%d", row.values[1]),
                                                               api("KR_setFOTACTR-return UNI_ERROR_SUCCESS")};
                EXPECT_EQ(play(platform, events,
                               [&] { return KR_setFOTACTR(type, outputs.pointers()[0], outputs.pointers()[1]); }),
                          UNI_ERROR_SUCCESS);
                EXPECT_EQ(outputs.values(), row.values);
            }
            for (const Failure failure : kFailures) {
                SCOPED_TRACE(nameOf(failure));
                const Outputs outputs(2);
                const Events events = fotaEntry(type) + Events{failing(failure, command, 5000),
                                                               api("KR_setFOTACTR-return UNI_ERROR_FALSE")};
                EXPECT_EQ(play(platform, events,
                               [&] { return KR_setFOTACTR(type, outputs.pointers()[0], outputs.pointers()[1]); }),
                          UNI_ERROR_FALSE);
                EXPECT_EQ(outputs.values(), Values({kKept, kKept}));
            }
        }
    }
}

} // namespace
