/** What the SIM tells: its state, its PIN lock, the tries left, its files and numbers. */
#ifndef KRCTL_READINGS_SIM_H
#define KRCTL_READINGS_SIM_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "krctl/values/sim_states.h"

namespace krctl {

/** The state that an error stands for.
 *  @param finalResult  "+CME ERROR: 11", "+CME ERROR: SIM PIN required" */
std::optional<SimState> simStateOfError(std::string_view finalResult);
/** Whether a final result says that a PIN, PUK or password is wrong. */
bool isWrongCode(std::string_view finalResult);

struct SimStateReading {
    std::optional<SimState> state;
    std::string told; ///< the modem's own words; empty if it told no state
};
/** @param reply  to AT+CPIN?, an error among them */
SimStateReading simStateOf(std::string_view reply);

/** Whether a lock is on for any class of information, 3GPP TS 27.007 7.4.
 *  @param reply  to a query with AT+CLCK= */
std::optional<bool> isLockOn(std::string_view reply);

struct Tries {
    std::optional<int64_t> pin;
    std::optional<int64_t> puk;
    std::optional<int64_t> pin2;
    std::optional<int64_t> puk2;
};
/** @param reply  to AT+CPINR, 3GPP TS 27.007 8.65: codes with the tries left behind each, or the tries of all four alone */
Tries triesOf(std::string_view reply);

/** Whether a status word says that the SIM has done what it was told, 3GPP TS 102 221 10.2.1. */
bool isSimDone(int32_t sw1, int32_t sw2);
/** A file's content in hexadecimal.
 *  @param reply  to AT+CRSM=
 *  @return empty if the SIM has no such file, or the reply none */
std::string simFileOf(std::string_view reply);

/** The number of the card, out of its file or in the order of the card already.
 *  @return empty for what begins with 89 in neither order, or has not 18 to 20 digits */
std::string iccidOf(std::string_view digits);

/** @param reply  to AT+CNUM */
std::vector<std::string> ownNumbersOf(std::string_view reply);

} // namespace krctl

#endif
