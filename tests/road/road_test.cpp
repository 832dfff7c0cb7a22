// The whole road on every family: the API, the AT client with log and text codec, the server, a pseudo-terminal and the
// simulated modem, each as it ships.

#include <array>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include <mainControl/mainControl.h>

#include "host/at_client/at_client.h"
#include "host/family/family.h"
#include "tests/processes/child_process.h"
#include "tests/processes/other_user.h"
#include "tests/support/every_function.h"
#include "tests/support/record_at.h"

namespace {

using Names = std::set<std::string>;

struct Family {
    host::family::Family which;
    /** Functions of the API that fail on a modem as it comes out of its box: it does not know their commands, has no lock
     *  to open and no PIN to ask for, or no LTE to register in after the technology that was preferred before. */
    Names failing;

    const char *name() const { return host::family::nameOf(which).data(); }
    int32_t platform() const { return static_cast<int32_t>(which); }
};

void PrintTo(const Family &family, std::ostream *out)
{
    *out << family.name();
}

class Road : public testing::TestWithParam<Family> {
  protected:
    Road()
    {
        const std::string modem = directory_ / "modem";
        const std::string socket = directory_ / "at.sock";
        modem_ = std::make_unique<processes::Child>(std::vector<std::string>{
            KR_MODEM_SIM, "--family", GetParam().name(), "--time-scale", "0", "--link", modem});
        EXPECT_TRUE(modem_->waitForOutput("\n"));
        std::vector<std::string> server{
            KR_AT_SERVER_PROGRAM, "--device", modem, "--socket", socket, "--quiet-ms", "20", "--record", record(),
            "--code-wait-ms",     "1"};
        if (isRoot()) server.insert(server.end(), {"--group", processes::kOneGroup});
        server_ = std::make_unique<processes::Child>(server);
        EXPECT_TRUE(server_->waitForErrors("ready"));
        setenv("KR_AT_SERVER", socket.c_str(), 1);
        setenv("KR_LOG_DIR", logs().path().c_str(), 1);
        KR_setCurrentPlatform(GetParam().platform());
        EXPECT_TRUE(processes::eventually([] { return KR_startAT() == UNI_ERROR_SUCCESS; }));
    }

    ~Road() override
    {
        ClientClose();
        server_->signal(SIGTERM);
        EXPECT_EQ(server_->wait(), 0) << server_->errors();
        modem_->signal(SIGTERM);
        EXPECT_EQ(modem_->wait(), 0) << modem_->errors();
    }

    static bool isRoot() { return geteuid() == 0; }
    void openToAll() const { processes::openToAll(directory_); }
    std::string record() const { return directory_ / "record"; }
    /** The log stays where the process has begun it. */
    static std::string log() { return processes::contents(logs() / "kora_t9lb.log"); }

  private:
    static const processes::ScratchDirectory &logs()
    {
        static const processes::ScratchDirectory directory;
        return directory;
    }

    processes::ScratchDirectory directory_;
    std::unique_ptr<processes::Child> modem_;
    std::unique_ptr<processes::Child> server_;
};

bool isOfApi(const EveryFunction &function)
{
    return std::string_view(function.name).substr(0, 3) == "KR_";
}

TEST_P(Road, EveryFunctionOfTheApiHasItsAnswers)
{
    Names failing;
    for (const EveryFunction &function : everyFunction()) {
        if (!isOfApi(function)) continue;
        const uint32_t code = function.call();
        EXPECT_EQ(ClientLastResult(), CLIENT_OK) << function.name << ": " << ClientLastError();
        if (code != UNI_ERROR_SUCCESS) failing.insert(function.name);
    }
    EXPECT_EQ(failing, GetParam().failing);
}

std::string listOf(const Names &names)
{
    std::string list;
    for (const std::string &name : names)
        list += name + '\n';
    return list;
}

/** Functions of the API that fail, and those whose last command was not allowed. */
std::string failingAndNotAllowed()
{
    Names failing;
    Names notAllowed;
    for (const EveryFunction &function : everyFunction()) {
        if (!isOfApi(function)) continue;
        if (function.call() != UNI_ERROR_SUCCESS) failing.insert(function.name);
        if (ClientLastResult() == CLIENT_NOT_ALLOWED) notAllowed.insert(function.name);
    }
    return listOf(failing) + "not allowed:\n" + listOf(notAllowed);
}

TEST_P(Road, MembersOfTheGroupReachAllFunctionsButThese)
{
    if (!isRoot()) GTEST_SKIP() << "only root can become others";
    openToAll();
    const Names notAllowed{"KR_Sendusb0IPtoMarvell", "KR_setControlKeyLock", "KR_setFOTACTR", "KR_setLockCode"};
    Names failing = GetParam().failing;
    failing.insert(notAllowed.begin(), notAllowed.end());
    EXPECT_EQ(processes::heardAs(processes::kNobody, {processes::idOf(processes::kOneGroup)}, failingAndNotAllowed),
              listOf(failing) + "not allowed:\n" + listOf(notAllowed));
}

TEST_P(Road, ValuesArriveAndIdentitiesStayOutOfTheLog)
{
    char imsi[16] = "";
    char imei[16] = "";
    char iccid[32] = "";
    EXPECT_EQ(KR_getIMSI(sizeof imsi - 1, imsi), 0U);
    EXPECT_EQ(KR_getIMEI(sizeof imei - 1, imei), 0U);
    EXPECT_EQ(KR_getICCID(sizeof iccid - 1, iccid), 0U);
    EXPECT_STREQ(imsi, "460001234567890");
    EXPECT_STREQ(imei, "861234567890123");
    EXPECT_STREQ(iccid, "98680021436587092143") << "as it stands on the card, each two digits swapped";
    int32_t tries = 0;
    int32_t pukTries = 0;
    EXPECT_NE(KR_verifyPIN(1, "7391", &tries, &pukTries), 0U) << "no PIN is asked for";

    const std::string written = log() + processes::contents(record());
    EXPECT_NE(written.find("KR_getIMSI-out-pString:"), std::string::npos);
    for (const std::string &hidden : std::vector<std::string>{imsi, imei, iccid, "7391"})
        EXPECT_EQ(written.find(hidden), std::string::npos) << hidden;
}

std::vector<int32_t> reported;

void hear(int32_t status, char * /*areaCode*/, char * /*cellId*/)
{
    reported.push_back(status);
}

TEST_P(Road, RegistrationReportsReachTheCallback)
{
    reported.clear();
    ASSERT_EQ(KR_setCeregNotifyCallback(hear), 0U);
    ASSERT_EQ(ClientDispatch(0) >= 0, true) << ClientLastError();
    ASSERT_EQ(KR_setEPSRegisterState(2), 0U);
    ASSERT_EQ(KR_setPower(0), 0U);
    ASSERT_EQ(KR_setPower(1), 0U);
    EXPECT_TRUE(processes::eventually([] {
        EXPECT_GE(ClientDispatch(10), 0) << ClientLastError();
        return !reported.empty() && reported.back() == 1;
    }));
    // TSP has no callback for a report without area and cell, which is what being gone looks like.
    EXPECT_GE(reported.size(), GetParam().which == host::family::Family::Tsp ? 1U : 2U);
}

TEST_P(Road, TheNameOfTheProviderIsDecoded)
{
    const CrsmCmd readName = {176, 28486, 0, 0, 17, ""};
    alignas(CrsmRes) std::array<char, 1024> room = {};
    auto *const answer = recordAt<CrsmRes>(room.data());
    ASSERT_EQ(KR_getSPNInfo(readName, answer), 0U);
    char name[256] = "";
    constexpr size_t kDisplayCondition = 2; // digits in front of the name
    EXPECT_EQ(KR_parseSPNName(answer->response + kDisplayCondition, name), 0U);
    EXPECT_STREQ(name, "Kora Mobile");
}

const Family kFamilies[] = {
    {host::family::Family::Qualcomm,
     {"KR_SendNetgateIPtoMarvell", "KR_Sendusb0IPtoMarvell", "KR_getSysconfig", "KR_setControlKeyLock",
      "KR_setLockCode", "KR_setSysconfig", "KR_unblockPIN", "KR_verifyPIN"}},
    {host::family::Family::Mtk,
     {"KR_SendNetgateIPtoMarvell", "KR_Sendusb0IPtoMarvell", "KR_getHardLockStatus", "KR_getLockStatus",
      "KR_getSysconfig", "KR_setLockCode", "KR_setSysconfig", "KR_unblockPIN", "KR_verifyPIN"}},
    {host::family::Family::Tsp,
     {"KR_SendNetgateIPtoMarvell", "KR_Sendusb0IPtoMarvell", "KR_getSerialNumber", "KR_setControlKeyLock",
      "KR_setLockCode", "KR_setNetworkRegistrationMode", "KR_unblockPIN", "KR_verifyPIN"}},
    {host::family::Family::Spreadtrum,
     {"KR_SendNetgateIPtoMarvell", "KR_Sendusb0IPtoMarvell", "KR_getHardLockStatus", "KR_getLockStatus",
      "KR_setLockCode", "KR_setNetworkRegistrationMode", "KR_unblockPIN", "KR_verifyPIN"}},
    {host::family::Family::Default,
     {"KR_getSysconfig", "KR_setControlKeyLock", "KR_setLockCode", "KR_setSysconfig", "KR_unblockPIN", "KR_verifyPIN"}},
};
static_assert(std::size(kFamilies) == host::family::kRows.size());

INSTANTIATE_TEST_SUITE_P(Families, Road, testing::ValuesIn(kFamilies),
                         [](const auto &row) { return std::string(row.param.name()); });

} // namespace
