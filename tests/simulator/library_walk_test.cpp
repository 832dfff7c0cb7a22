// Every wrapper and every API function of the library, with a modem of each family at the other end: each command gets
// its answer, and what a family refuses is written down here.
#include <cstring>
#include <map>
#include <memory>
#include <set>

#include <gtest/gtest.h>

#include <mainControl/mainControl.h>

#include "host/at/rights.h"
#include "simulator/text.h"
#include "tests/simulator/bench.h"
#include "tests/support/every_function.h"
#include "tests/support/every_wrapper.h"

namespace bench {
namespace {

using Names = std::set<std::string>;

/** The modem of the call that runs, and what it has been asked. */
struct Call {
    explicit Call(Family family, const Scenario &scenario) : bench(family, scenario) { bench.settle(); }

    Bench bench;
    Names unknown; ///< commands that are in no family's table
    Names refused; ///< commands that other families know
    Names unanswered;
    Names raw; ///< commands that only those may send who may send anything
    bool hasSent = false;
};
Call *running = nullptr;

/** A name in front of these replies makes them look like reports to the library. */
std::string withoutReportName(std::string reply)
{
    for (const std::string name : {"+CEREG: ", "+CGREG: "}) {
        const size_t at = reply.find(name);
        if (at != std::string::npos) reply.erase(at, name.size());
    }
    return reply;
}

void note(const std::string &line)
{
    if (host::at::rightsFor(line).has(host::at::Right::Raw)) running->raw.insert(line);
    const auto commands = simulator::parseCommandLine(line);
    for (const simulator::Command &command : commands.value()) {
        const simulator::CommandRow *const row = simulator::findCommand(command);
        if (row == nullptr)
            running->unknown.insert(line);
        else if (!simulator::contains(row->families, running->bench.modem.device().family))
            running->refused.insert(textOf(*row));
    }
}

} // namespace
} // namespace bench

extern "C" {

int ClientSendCmd(const char *command, AtClientRes *response, int32_t /*timeoutMs*/)
{
    using namespace bench; // NOLINT(google-build-using-namespace): the host of these tests
    note(command);
    running->hasSent = true;
    running->bench.said();
    const std::string reply = withoutReportName(running->bench.send(command));
    if (reply.size() < 4 || reply.compare(reply.size() - 2, 2, "\r\n") != 0) running->unanswered.insert(command);
    std::strncpy(response->aucDataBuf, reply.c_str(), sizeof response->aucDataBuf - 1);
    return 0;
}

int ClientInit(const char * /*queueName*/)
{
    return 0;
}

int SetClientProcRecvCallback(uint32_t (* /*callback*/)(AtClientRes *report))
{
    return 0;
}

int CODE_Usc2orGsm7ToAscDecode(const char * /*sourceHex*/, char *destination, int32_t /*zero*/)
{
    destination[0] = '\0';
    return 1;
}

int CODE_InvertNumbers(const char * /*source*/, char *destination, int32_t /*sourceLength*/)
{
    destination[0] = '\0';
    return 0;
}

void kora_log_append(const char * /*sourceModule*/, int32_t /*line*/, const char * /*logFile*/, const char * /*format*/,
                     ...)
{
}
}

namespace bench {
namespace {

/** What each family is asked by some call of the library and does not know. */
const std::map<Family, Names> kRefused = {
    {Family::Default,
     {"AT+CARDMODE", "AT+EPINC?", "AT+ERAT=", "AT+ERAT?", "AT+ESMLCK=", "AT+ESMLCK?", "AT+SPSIMLOCKINFO",
      "AT+XX=", "AT+ZPREFBAND=", "AT+ZRAP?", "AT+ZRSSI?", "AT^SYSCONFIG=", "AT^SYSCONFIG?"}},
    {Family::Qualcomm,
     {"AT*PROP=", "AT+CARDMODE", "AT+EPINC?", "AT+ERAT=", "AT+ERAT?", "AT+ESMLCK=", "AT+ESMLCK?", "AT+SPSIMLOCKINFO",
      "AT+XX=", "AT+ZMSN?", "AT+ZRAP?", "AT+ZRSSI", "AT^SYSCONFIG=", "AT^SYSCONFIG?"}},
    {Family::Mtk,
     {"AT*PROP=", "AT+CARDMODE", "AT+SPSIMLOCKINFO", "AT+XX=", "AT+ZLOCK?", "AT+ZNCK=", "AT+ZNCK?", "AT+ZPINPUK=?",
      "AT+ZPREFBAND=", "AT+ZRAP?", "AT+ZRSSI?", "AT+ZSEC?", "AT+ZSNT=", "AT+ZSNT?", "AT^SYSCONFIG=", "AT^SYSCONFIG?"}},
    {Family::Tsp,
     {"AT*PROP=", "AT+EPINC?", "AT+ERAT=", "AT+ERAT?", "AT+ESMLCK=", "AT+ESMLCK?", "AT+SPSIMLOCKINFO",
      "AT+XX=", "AT+ZMSN?", "AT+ZPINPUK=?", "AT+ZPREFBAND=", "AT+ZRSSI?"}},
    {Family::Spreadtrum,
     {"AT*PROP=", "AT+CARDMODE", "AT+EPINC?", "AT+ERAT=", "AT+ERAT?", "AT+ESMLCK=", "AT+ESMLCK?", "AT+ZLOCK?",
      "AT+ZNCK=", "AT+ZNCK?", "AT+ZPINPUK=?", "AT+ZPREFBAND=", "AT+ZRAP?", "AT+ZRSSI?", "AT+ZSEC?",
      "AT+ZSNT=", "AT+ZSNT?"}},
};

/** Calls that fail on a modem that knows their commands: their codes are none of the SIM's or of the lock's. */
const Names kFailing = {"cpinSet of functions", "cpinSetQuoted of wrappers", "esmlckSet of wrappers"};

/** Calls whose result is no code. */
const Names kWithoutCode = {"isUSimTsp of functions"};

/** A SIM and locks in the state in which a call can succeed. */
Scenario scenarioFor(const std::string &name)
{
    Scenario scenario;
    scenario.networkLock.isActive = name == "znckSet" || name == "KR_setLockCode" || name == "KR_setControlKeyLock";
    scenario.sim.isPinEnabled = name.rfind("cpinSet", 0) == 0 || name == "KR_verifyPIN";
    if (name == "KR_unblockPIN") scenario.sim.pinTries = 0;
    return scenario;
}

/** Runs one call, and gives what the modem has refused in it. */
template <typename Row>
Names refusedIn(Family family, const Row &row, const std::string &list)
{
    const std::string name = simulator::concat(row.name, " of ", list);
    SCOPED_TRACE(simulator::concat(name, " on ", nameOf(family)));
    g_currentPlatform = static_cast<int32_t>(family);
    Call call(family, scenarioFor(row.name));
    const Names needingPin = {"KR_changePIN", "cpwdSet"};
    if (needingPin.contains(row.name)) call.bench.send("AT+CLCK=\"SC\",1,\"1234\"");

    running = &call;
    const uint32_t code = row.call();
    running = nullptr;

    EXPECT_EQ(call.unanswered, Names{});
    EXPECT_EQ(call.raw, Names{});
    const bool isHostsOwn = row.name == std::string("SetbandByBand"); // whose command is whatever the host likes
    EXPECT_EQ(call.unknown, isHostsOwn ? Names{"AT+BAND=7"} : Names{});
    const bool mayFail = isHostsOwn || !call.refused.empty() || kFailing.contains(name);
    const bool isJudged = call.hasSent && !mayFail && !kWithoutCode.contains(name);
    EXPECT_EQ(isJudged ? code : 0, 0U);
    return call.refused;
}

TEST(LibraryWalk, EveryWrapperAndEveryFunctionIsAnsweredOnEveryFamily)
{
    setEveryText("\r\nOK\r\n");
    EXPECT_EQ(kRefused.size(), host::family::kRows.size());
    for (const auto &[family, expected] : kRefused) {
        Names refused;
        for (const wrappers::Wrapper &row : wrappers::all())
            refused.merge(refusedIn(family, row, "wrappers"));
        for (const EveryFunction &row : everyFunction())
            refused.merge(refusedIn(family, row, "functions"));
        EXPECT_EQ(refused, expected) << nameOf(family);
    }
}

/** A host that calls, with a modem that stays. */
class LibraryCall : public testing::TestWithParam<Family> {
  protected:
    LibraryCall() { g_currentPlatform = static_cast<int32_t>(GetParam()); }
    ~LibraryCall() override { running = nullptr; }

    void start(const Scenario &scenario)
    {
        call_ = std::make_unique<Call>(GetParam(), scenario);
        running = call_.get();
    }
    Bench &bench() { return call_->bench; }

  private:
    std::unique_ptr<Call> call_;
};

TEST_P(LibraryCall, SeesTheSimThroughItsLife)
{
    Scenario scenario;
    scenario.sim.isPinEnabled = true;
    start(scenario);
    int32_t state = -1;
    int32_t pinTries = -1;
    int32_t pukTries = -1;
    const auto expectStatus = [&](int32_t expected, int32_t pin, int32_t puk) {
        EXPECT_EQ(KR_getPINStatus(1, &state, &pinTries, &pukTries), 0U);
        EXPECT_EQ(state, expected);
        EXPECT_EQ(pinTries, pin);
        EXPECT_EQ(pukTries, puk);
    };
    expectStatus(KORA_MTS_SIM_PIN_REQUIRED, 3, 10);
    EXPECT_EQ(KR_verifyPIN(1, "9999", &pinTries, &pukTries), 24U);
    expectStatus(KORA_MTS_SIM_PIN_REQUIRED, 2, 10);
    EXPECT_EQ(KR_verifyPIN(1, "9999", &pinTries, &pukTries), 24U);
    EXPECT_EQ(KR_verifyPIN(1, "9999", &pinTries, &pukTries), 25U);
    expectStatus(KORA_MTS_SIM_PUK_REQUIRED, 0, 10);
    EXPECT_EQ(KR_unblockPIN(1, "00000000", "4321", &pinTries, &pukTries), 24U);
    expectStatus(KORA_MTS_SIM_PUK_REQUIRED, 0, 9);
    EXPECT_EQ(KR_unblockPIN(1, "12345678", "4321", &pinTries, &pukTries), 0U);
    expectStatus(KORA_MTS_SIM_PIN_ENABLED, 3, 10);
    EXPECT_EQ(KR_changePIN(1, "4321", "8765", &pinTries, &pukTries), 0U);
    int32_t status = -1;
    EXPECT_EQ(KR_setPINProtection(1, 0, "8765", 7, &status, &pinTries, &pukTries), 0U);
    expectStatus(KORA_MTS_SIM_PIN_DISABLED, 3, 10);

    bench().modem.device().sim.setPresent(false);
    EXPECT_EQ(KR_getPINStatus(1, &state, &pinTries, &pukTries), 0U);
    EXPECT_EQ(state, KORA_MTS_SIM_NOT_INSERTED);
}

TEST_P(LibraryCall, OpensTheNetworkLock)
{
    Scenario scenario;
    scenario.networkLock.isActive = true;
    start(scenario);
    constexpr int32_t kLocked = 1;
    constexpr int32_t kNotLocked = 2;
    constexpr int32_t kUnlock = 0;
    int32_t state = -1;
    int32_t left = -1;
    int32_t unlocksLeft = -1;
    EXPECT_EQ(KR_getControlKeyStatus(0, &state, &left, &unlocksLeft), 0U);
    EXPECT_EQ(state, kLocked);
    EXPECT_NE(KR_setControlKeyLock(0, kUnlock, "87654321"), 0U);
    EXPECT_EQ(KR_getControlKeyStatus(0, &state, &left, &unlocksLeft), 0U);
    EXPECT_EQ(left, GetParam() == Family::Spreadtrum ? -1 : 4); // where the library does not read it
    EXPECT_EQ(KR_setControlKeyLock(0, kUnlock, "12345678"), 0U);
    EXPECT_EQ(KR_getControlKeyStatus(0, &state, &left, &unlocksLeft), 0U);
    EXPECT_EQ(state, kNotLocked);
}

TEST_P(LibraryCall, SelectsAnOperatorAndATechnology)
{
    start({});
    constexpr int32_t kManual = 5;
    EXPECT_EQ(KR_setNetworkRegistrationMode(1, "46001", 0, 7, 0), 0U);
    int32_t mode = -1;
    EXPECT_EQ(KR_getNetworkSelectionMode(&mode), 0U);
    EXPECT_EQ(mode, kManual);
    CregPara registration{};
    EXPECT_EQ(KR_getCregMode(&registration), 0U);
    EXPECT_EQ(registration.status, 5);
    EXPECT_STREQ(registration.lac, "43B1");

    constexpr int32_t kGsmOnly = 3;
    EXPECT_EQ(KR_setNetworkPreferMode(kGsmOnly, 0), 0U);
    bench().settle();
    EXPECT_EQ(KR_getNetworkPreferMode(&mode), 0U);
    EXPECT_EQ(mode, kGsmOnly);
    EXPECT_EQ(bench().modem.device().technology(), simulator::Technology::Gsm);
}

TEST_P(LibraryCall, ReadsWhereItIs)
{
    start({});
    int32_t cs = -1;
    int32_t ps = -1;
    int32_t roaming = -1;
    int32_t mcc = -1;
    int32_t mnc = -1;
    char technology[68] = "";
    char operatorName[68] = "";
    char domain[68] = "";
    EXPECT_EQ(KR_getServingNetwork(&cs, &ps, &roaming, &mcc, &mnc, 68, technology, 68, operatorName, domain), 0U);
    EXPECT_EQ((std::vector<int32_t>{cs, ps, roaming, mcc, mnc}), (std::vector<int32_t>{1, 1, 1, 460, 0}));
    EXPECT_STREQ(technology, "LTE");
    EXPECT_STREQ(operatorName, "Kora Mobile");
    EXPECT_STREQ(domain, "CS_PS");

    NetworkInfo networks[20] = {};
    int32_t count = 20;
    EXPECT_EQ(KR_scanNetwork(networks, &count), 0U);
    EXPECT_GE(count, 10);
    EXPECT_STREQ(networks[3].strCode, "46001");

    CellInfo cell{};
    EXPECT_EQ(KR_getCellInfo(&cell), 0U);
    EXPECT_STREQ(cell.band, "B3");
    ZrssiPara strength{};
    EXPECT_EQ(KR_getZRSSIInfo(&strength), 0U);
    EXPECT_LT(strength.Rssi, -50);
    int32_t info[5] = {};
    EXPECT_EQ(KR_getSysinfo(&info[0], &info[1], &info[2], &info[3], &info[4], 0, 0), 0U);
    EXPECT_EQ(info[0], 2);
}

INSTANTIATE_TEST_SUITE_P(Families, LibraryCall, testing::ValuesIn(everyFamily()),
                         [](const auto &row) { return std::string(nameOf(row.param)); });

} // namespace
} // namespace bench
