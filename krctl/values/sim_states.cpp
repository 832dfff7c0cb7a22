#include "krctl/values/sim_states.h"

#include <algorithm>
#include <array>

#include <mainControl/api/pin.h>

namespace krctl {
namespace {

constexpr int32_t kNoCode = KORA_MTS_SIM_UNKNOWN;
constexpr const char *kAskSeller = "Its code comes from whoever sold the modem: krctl at --force 'AT+CPIN=\"CODE\"'.";
constexpr const char *kAskOwner = "Put in the SIM that the modem knows, or enter the modem's own code: "
                                  "krctl at --force 'AT+CPIN=\"CODE\"'.";
constexpr const char *kPin2 =
    "Only some services need it, such as fixed dialling; the PIN is not asked for. To enter it: "
    "krctl at --force 'AT+CPIN=\"PIN2\"'.";
constexpr const char *kPuk2 =
    "Only some services need it, such as fixed dialling; the PUK is not asked for. To enter it: "
    "krctl at --force 'AT+CPIN=\"PUK2\",\"NEW PIN2\"'.";

constexpr std::array kRows{
    SimStateRow{SimState::Ready, "READY", 0, nullptr, "ready", kNoCode, SimDemand::Nothing, "", ""},
    SimStateRow{SimState::NotInserted, "NOT INSERTED", 10, "SIM NOT INSERTED", "no SIM", KORA_MTS_SIM_NOT_INSERTED,
                SimDemand::Nothing, "no_sim", "Insert a SIM, then switch the radio off and on."},
    SimStateRow{SimState::PinRequired, "SIM PIN", 11, "SIM PIN", "PIN required", KORA_MTS_SIM_PIN_REQUIRED,
                SimDemand::Unlock, "pin_required", "Enter the PIN with \"krctl sim unlock\"."},
    SimStateRow{SimState::PukRequired, "SIM PUK", 12, "SIM PUK", "PUK required", KORA_MTS_SIM_PUK_REQUIRED,
                SimDemand::Unlock, "puk_required", "Enter the PUK and a new PIN with \"krctl sim unblock\"."},
    SimStateRow{SimState::Pin2Required, "SIM PIN2", 17, "SIM PIN2", "PIN2 required", kNoCode, SimDemand::Second,
                "pin2_required", kPin2},
    SimStateRow{SimState::Puk2Required, "SIM PUK2", 18, "SIM PUK2", "PUK2 required", kNoCode, SimDemand::Second,
                "puk2_required", kPuk2},
    SimStateRow{SimState::DevicePinRequired, "PH-SIM PIN", 5, "PH-SIM PIN", "device PIN required", kNoCode,
                SimDemand::Unlock, "device_lock", kAskOwner},
    SimStateRow{SimState::FirstSimPinRequired, "PH-FSIM PIN", 6, "PH-FSIM PIN", "first SIM PIN required", kNoCode,
                SimDemand::Unlock, "device_lock", kAskOwner},
    SimStateRow{SimState::FirstSimPukRequired, "PH-FSIM PUK", 7, "PH-FSIM PUK", "first SIM PUK required", kNoCode,
                SimDemand::Unlock, "device_lock", kAskOwner},
    SimStateRow{SimState::NetworkCodeRequired, "PH-NET PIN", 40, "NETWORK PERSONALIZATION PIN",
                "network lock code required", KORA_MTS_SIM_ICERA_LOCKNET, SimDemand::Unlock, "network_lock",
                "Enter the network's unlock code with \"krctl lock unlock\"."},
    SimStateRow{SimState::NetworkPukRequired, "PH-NET PUK", 41, "NETWORK PERSONALIZATION PUK",
                "network lock PUK required", kNoCode, SimDemand::Unlock, "network_lock", kAskSeller},
    SimStateRow{SimState::NetworkSubsetCodeRequired, "PH-NETSUB PIN", 42, "NETWORK SUBSET PERSONALIZATION PIN",
                "network subset lock code required", kNoCode, SimDemand::Unlock, "network_lock", kAskSeller},
    SimStateRow{SimState::NetworkSubsetPukRequired, "PH-NETSUB PUK", 43, "NETWORK SUBSET PERSONALIZATION PUK",
                "network subset lock PUK required", kNoCode, SimDemand::Unlock, "network_lock", kAskSeller},
    SimStateRow{SimState::ServiceProviderCodeRequired, "PH-SP PIN", 44, "SERVICE PROVIDER PERSONALIZATION PIN",
                "service provider lock code required", kNoCode, SimDemand::Unlock, "network_lock", kAskSeller},
    SimStateRow{SimState::ServiceProviderPukRequired, "PH-SP PUK", 45, "SERVICE PROVIDER PERSONALIZATION PUK",
                "service provider lock PUK required", kNoCode, SimDemand::Unlock, "network_lock", kAskSeller},
    SimStateRow{SimState::CorporateCodeRequired, "PH-CORP PIN", 46, "CORPORATE PERSONALIZATION PIN",
                "corporate lock code required", kNoCode, SimDemand::Unlock, "network_lock", kAskSeller},
    SimStateRow{SimState::CorporatePukRequired, "PH-CORP PUK", 47, "CORPORATE PERSONALIZATION PUK",
                "corporate lock PUK required", kNoCode, SimDemand::Unlock, "network_lock", kAskSeller},
    SimStateRow{SimState::Failure, nullptr, 13, "SIM FAILURE", "SIM failure", KORA_MTS_SIM_FAILURE, SimDemand::Nothing,
                "sim_failure", "Take the SIM out, put it back, and try again."},
    SimStateRow{SimState::Busy, "NOT READY", 14, "SIM BUSY", "SIM busy", KORA_MTS_SIM_BUSY, SimDemand::Nothing,
                "sim_busy", "Try again in a few seconds."},
    SimStateRow{SimState::Wrong, nullptr, 15, "SIM WRONG", "SIM wrong", kNoCode, SimDemand::Nothing, "sim_wrong",
                "The modem does not work with this SIM; try another one."},
};

} // namespace

std::span<const SimStateRow> simStateRows()
{
    return kRows;
}

const SimStateRow &rowOf(SimState state)
{
    return *std::find_if(kRows.begin(), kRows.end(), [state](const SimStateRow &row) { return row.state == state; });
}

std::string wordOf(SimState state, std::optional<bool> pinLock)
{
    std::string word = rowOf(state).word;
    if (state != SimState::Ready || !pinLock) return word;
    return word + (*pinLock ? ", PIN lock on" : ", PIN lock off");
}

std::optional<int32_t> codeOf(SimState state, std::optional<bool> pinLock)
{
    const int32_t code = rowOf(state).code;
    if (state == SimState::Ready && pinLock) return *pinLock ? KORA_MTS_SIM_PIN_ENABLED : KORA_MTS_SIM_PIN_DISABLED;
    return code == kNoCode ? std::nullopt : std::optional(code);
}

} // namespace krctl
