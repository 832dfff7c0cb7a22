/** What a SIM can be waiting for, 3GPP TS 27.007 8.3 and 9.2: a row a state, with all that is known of it. */
#ifndef KRCTL_VALUES_SIM_STATES_H
#define KRCTL_VALUES_SIM_STATES_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace krctl {

enum class SimState : uint8_t {
    Ready,
    NotInserted,
    PinRequired,
    PukRequired,
    Pin2Required,
    Puk2Required,
    DevicePinRequired,
    FirstSimPinRequired,
    FirstSimPukRequired,
    NetworkCodeRequired,
    NetworkPukRequired,
    NetworkSubsetCodeRequired,
    NetworkSubsetPukRequired,
    ServiceProviderCodeRequired,
    ServiceProviderPukRequired,
    CorporateCodeRequired,
    CorporatePukRequired,
    Failure,
    Busy,
    Wrong,
};

/** What a SIM asks for. */
enum class SimDemand : uint8_t {
    Nothing,
    Unlock, ///< a code, before it or the modem works
    Second, ///< the PIN2 or the PUK2, without which all works but some services
};

struct SimStateRow {
    SimState state;
    const char *told;      ///< by +CPIN, in capitals; NULL if only an error tells it
    int32_t error;         ///< the number that stands for it in +CME ERROR; 0 if none does
    const char *errorText; ///< the text of that error; NULL if none does
    const char *word;      ///< for people
    int32_t code;          ///< KoraMtsSimState; KORA_MTS_SIM_UNKNOWN if the library has none
    SimDemand demand;
    const char *failure; ///< for programs, when a command fails for it
    const char *next;    ///< what to do about it: a sentence; empty for a SIM that asks for nothing
};

std::span<const SimStateRow> simStateRows();
const SimStateRow &rowOf(SimState state);

/** @param pinLock  whether a SIM that is ready asks for its PIN after a start; nothing if it is not known */
std::string wordOf(SimState state, std::optional<bool> pinLock);
/** The KoraMtsSimState; nothing if the library has none. */
std::optional<int32_t> codeOf(SimState state, std::optional<bool> pinLock);

} // namespace krctl

#endif
