// The SIM's state and the attempts left: every answer of the SIM with every outcome of each question behind it.

#include <gtest/gtest.h>

#include "tests/mainControl/pin_dialogue.h"

namespace {

using namespace dialogue;

const Event kBegin = kSetWrapper("###T9LB LOG### CpinRead begin");
const Event kReadOk = kSetWrapper("###T9LB LOG### CpinRead tAtRes.Result == AT_RES_RESULT_OK");
const Event kReadDone = kSetWrapper("###T9LB LOG### CpinRead return UNI_ERROR_SUCCESS");

/** An answer of the SIM, and the state it leads to. */
struct Sim {
    std::string name;
    Events events;
    KoraMtsSimState state;
};

Sim answering(const std::string &paras, const char *traced, KoraMtsSimState state)
{
    return {paras,
            {kBegin, paras.empty() ? ok("AT+CPIN?", 5000) : ok("AT+CPIN?", 5000, "+CPIN: " + paras, paras), kReadOk,
             kSetWrapper(std::string("###T9LB LOG### CpinRead ") + traced), kReadDone},
            state};
}

Sim ready(const std::string &paras, const std::string &lockParas, KoraMtsSimState state)
{
    Sim sim = answering(paras, "SETTING_PIN_UNREQUIRED", state);
    sim.name += " " + lockParas;
    sim.events = sim.events + Events{kApiFile("KR_getPINStatus-before clck")} + lockQuery("SC", lockParas);
    return sim;
}

Sim refusing(const std::string &error, KoraMtsSimState state)
{
    return {error, {kBegin, cmeError("AT+CPIN?", 5000, error)}, state};
}

/** Every answer that leads to a state on a platform. */
std::vector<Sim> simsOn(int32_t platform)
{
    std::vector<Sim> sims = {
        ready("READY", "1", KORA_MTS_SIM_PIN_ENABLED),
        ready("READY", "0", KORA_MTS_SIM_PIN_DISABLED),
        ready("READY", "1, 7", KORA_MTS_SIM_PIN_ENABLED),
        ready("READY", "-1", KORA_MTS_SIM_PIN_ENABLED),
        ready("READY", "", KORA_MTS_SIM_PIN_DISABLED),
        ready("READY", "x", KORA_MTS_SIM_PIN_DISABLED),
        ready("", "1", KORA_MTS_SIM_PIN_ENABLED),
        ready("PH-SIM", "0", KORA_MTS_SIM_PIN_DISABLED),
        ready("sim pin", "0", KORA_MTS_SIM_PIN_DISABLED),
        ready("\"SIM PIN\"", "1", KORA_MTS_SIM_PIN_ENABLED),
        answering("SIM PIN", "SIM PIN", KORA_MTS_SIM_PIN_REQUIRED),
        answering("SIM PIN2", "SIM PIN", KORA_MTS_SIM_PIN_REQUIRED),
        answering("SIM PUK, SIM PIN", "SIM PIN", KORA_MTS_SIM_PIN_REQUIRED),
        answering("SIM PUK", "SIM PUK", KORA_MTS_SIM_PUK_REQUIRED),
        answering("SIM PUK2", "SIM PUK", KORA_MTS_SIM_PUK_REQUIRED),
        answering("PH-NET PIN, SIM PUK", "SIM PUK", KORA_MTS_SIM_PUK_REQUIRED),
        answering("PH-NET PIN", "PH-NET PIN", KORA_MTS_SIM_ICERA_LOCKNET),
    };
    const struct {
        const char *error;
        KoraMtsSimState state;
    } refusals[] = {
        {"SIM failure", KORA_MTS_SIM_FAILURE},
        {"sim failure", KORA_MTS_SIM_FAILURE},
        {"SIM busy, SIM not inserted, SIM failure", KORA_MTS_SIM_FAILURE},
        {"SIM not inserted", KORA_MTS_SIM_NOT_INSERTED},
        {"sim not inserted", KORA_MTS_SIM_NOT_INSERTED},
        {"sim busy, sim not inserted", KORA_MTS_SIM_NOT_INSERTED},
        {"SIM busy", KORA_MTS_SIM_BUSY},
        {"sim busy", KORA_MTS_SIM_BUSY},
        {"SIM Busy", KORA_MTS_SIM_UNKNOWN},
        {"\"SIM busy\"", KORA_MTS_SIM_UNKNOWN},
        {"SIM PIN required", KORA_MTS_SIM_UNKNOWN},
        {"10", KORA_MTS_SIM_UNKNOWN},
        {"", KORA_MTS_SIM_UNKNOWN},
    };
    // A TSP modem that answers with any error is taken to have no SIM.
    for (const auto &row : refusals)
        sims.push_back(refusing(row.error, platform == PF_TSP ? KORA_MTS_SIM_NOT_INSERTED : row.state));
    return sims;
}

bool isAskedForAttempts(KoraMtsSimState state)
{
    return state != KORA_MTS_SIM_ICERA_LOCKNET && state != KORA_MTS_SIM_FAILURE && state != KORA_MTS_SIM_NOT_INSERTED;
}

Events lineBeforeAttempts(int32_t platform)
{
    switch (platform) {
    case PF_SPEADTRUM:
        return {};
    case PF_MTK:
        return {kApiFile("KR_getPINStatus-g_currentPlatform == PF_MTK")};
    case PF_TSP:
        return {kApiFile("KR_getPINStatus-g_currentPlatform == PF_TSP")};
    default:
        return {kApiFile("KR_getPINStatus-zpinpukTest")};
    }
}

Event lineWithoutAttempts(KoraMtsSimState state)
{
    return kApiFile(state == KORA_MTS_SIM_ICERA_LOCKNET ? "KR_getPINStatus-KORA_MTS_SIM_ICERA_LOCKNET"
                                                        : "KR_getPINStatus-|| KORA_MTS_SIM_NOT_INSERTED");
}

/** One call, with new outputs that it may be denied. */
class StatusRun {
    PinMemory memory_;
    GuardedRecord<int32_t> outputs_[3] = {GuardedRecord<int32_t>(kFill), GuardedRecord<int32_t>(kFill),
                                          GuardedRecord<int32_t>(kFill)};

  public:
    int32_t id = 9;
    int32_t *status = outputs_[0];
    int32_t *verify = outputs_[1];
    int32_t *unblock = outputs_[2];

    [[nodiscard]] Events entry() const
    {
        return {kApiFile("KR_getPINStatus-in"), kApiFile("KR_getPINStatus-in-pStatus:%d", status),
                kApiFile("KR_getPINStatus-in-pVerifyRetriesLeft:%d", verify),
                kApiFile("KR_getPINStatus-in-pUnblockRetriesLeft:%d", unblock)};
    }

    void expectState(int32_t platform, const Events &questions, int32_t state, int32_t pin, int32_t puk)
    {
        const Events exit = {kApiFile("KR_getPINStatus-out-*pStatus:%d", state),
                             kApiFile("KR_getPINStatus-out-*pVerifyRetriesLeft:%d", pin),
                             kApiFile("KR_getPINStatus-out-*pUnblockRetriesLeft:%d", puk),
                             kApiFile("KR_getPINStatus-return UNI_ERROR_SUCCESS")};
        EXPECT_EQ(run(platform, begun() + questions + exit), UNI_ERROR_SUCCESS);
        expectOutputs(state, pin, puk);
    }

    void expectFailure(int32_t platform, const Events &questions, const char *line)
    {
        EXPECT_EQ(run(platform, begun() + questions + Events{kApiFile(line)}), UNI_ERROR_COMM_FAILURE);
        expectOutputs(kKept, kKept, kKept);
    }

    void expectRefusal(int32_t platform)
    {
        EXPECT_EQ(run(platform, entry() + Events{kApiFile("KR_getPINStatus-return UNI_ERROR_INVALID_PARAMETER")}),
                  UNI_ERROR_INVALID_PARAMETER);
        expectOutputs(kKept, kKept, kKept);
    }

  private:
    [[nodiscard]] Events begun() const { return entry() + Events{kApiFile("KR_getPINStatus-before cpinRead")}; }

    [[nodiscard]] uint32_t run(int32_t platform, const Events &events) const
    {
        return play(platform, events, [&] { return KR_getPINStatus(id, status, verify, unblock); });
    }

    void expectOutputs(int32_t state, int32_t pin, int32_t puk) const
    {
        EXPECT_EQ(*outputs_[0].get(), state);
        EXPECT_EQ(*outputs_[1].get(), pin);
        EXPECT_EQ(*outputs_[2].get(), puk);
        EXPECT_EQ(PinMemory::lastPin(), PinMemory::untouched());
    }
};

TEST(PinStatus, IsTheStateWithTheAttemptsLeft)
{
    for (const int32_t platform : kPlatforms) {
        for (const Sim &sim : simsOn(platform)) {
            if (!isAskedForAttempts(sim.state)) continue;
            for (const Attempts &attempts : attemptsOn(platform)) {
                SCOPED_TRACE(std::to_string(platform) + ": " + sim.name + ", " + attempts.name);
                StatusRun status;
                g_cardTypeKnown = attempts.cardTypeKnown;
                const Events questions = sim.events + lineBeforeAttempts(platform) + attempts.events;
                if (attempts.areRead)
                    status.expectState(platform, questions, sim.state, attempts.pin, attempts.puk);
                else
                    status.expectFailure(platform, questions, "KR_getPINStatus-return UNI_ERROR_COMM_FAILURE 33333");
            }
        }
    }
}

TEST(PinStatus, HasNoAttemptsWithoutASimThatCouldBeAsked)
{
    for (const int32_t platform : kPlatforms) {
        for (const Sim &sim : simsOn(platform)) {
            if (isAskedForAttempts(sim.state)) continue;
            SCOPED_TRACE(std::to_string(platform) + ": " + sim.name);
            StatusRun().expectState(platform, sim.events + Events{lineWithoutAttempts(sim.state)}, sim.state, 0, 0);
        }
    }
}

TEST(PinStatus, IsUnknownToAHostWhoseModemDoesNotTell)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure failure : kFailures) {
            if (failure == Failure::CmeError) continue; // an answer
            SCOPED_TRACE(std::to_string(platform) + nameOf(failure));
            const char *const traced = failure == Failure::Send
                                           ? "###T9LB LOG### CpinRead ClientSendCmd return UNI_ERROR_FALSE"
                                           : "###T9LB LOG### CpinRead return last UNI_ERROR_FALSE";
            StatusRun().expectFailure(platform, {kBegin, failing(failure, "AT+CPIN?", 5000), kSetWrapper(traced)},
                                      "KR_getPINStatus-return UNI_ERROR_COMM_FAILURE-UNI_ERROR_COMM_FAILURE 11111");
        }
    }
}

TEST(PinStatus, FailsWithTheQueryOfTheLock)
{
    const Events readyFirst = answering("READY", "SETTING_PIN_UNREQUIRED", KORA_MTS_SIM_UNKNOWN).events +
                              Events{kApiFile("KR_getPINStatus-before clck")};
    for (const int32_t platform : kPlatforms) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(std::to_string(platform) + nameOf(failure));
            StatusRun().expectFailure(platform, readyFirst + failingLockQuery("SC", failure),
                                      "KR_getPINStatus-return UNI_ERROR_COMM_FAILURE-UNI_ERROR_COMM_FAILURE 22222");
        }
    }
}

TEST(PinStatus, NeedsAllOutputs)
{
    for (const int32_t platform : kPlatforms) {
        for (int missing = 1; missing < 8; ++missing) {
            SCOPED_TRACE(missing);
            StatusRun status;
            if ((missing & 1) != 0) status.status = nullptr;
            if ((missing & 2) != 0) status.verify = nullptr;
            if ((missing & 4) != 0) status.unblock = nullptr;
            status.expectRefusal(platform);
        }
    }
}

TEST(PinStatus, DoesNotLogItsId)
{
    for (const int32_t id : {0, 1, -1, 2147483647}) {
        StatusRun status;
        status.id = id;
        status.expectState(PF_QC_LTE,
                           simsOn(PF_QC_LTE).back().events + lineBeforeAttempts(PF_QC_LTE) +
                               attemptsOn(PF_QC_LTE).front().events,
                           KORA_MTS_SIM_UNKNOWN, 3, 10);
    }
}

} // namespace
