/** What several commands read of the modem, each reading with the KR_ functions behind it. */
#ifndef KRCTL_COMMANDS_READINGS_H
#define KRCTL_COMMANDS_READINGS_H

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "krctl/output/report.h"
#include "krctl/session/session.h"

namespace krctl {

/** The most that a text of a reply can hold, and its terminator. */
constexpr int32_t kMostText = 13653;

/** A text that the library has written into a buffer: what stands in front of its terminator. */
std::string writtenText(std::string buffer);

/** Stands in an output that the library leaves alone when the modem does not tell it. */
constexpr int32_t kUntold = std::numeric_limits<int32_t>::min();

/** The value of such an output. */
std::optional<int32_t> told(int32_t value);

/** One of the identity functions.
 *  @return empty, and remembered as missing, if the modem does not tell */
std::string identity(Session &session, uint32_t (*getter)(int32_t, char *), const std::string &item);

struct SimReading {
    std::optional<int32_t> state; ///< KoraMtsSimState
    std::optional<int64_t> pinTries;
    std::optional<int64_t> pukTries;
};
SimReading readSim(Session &session);
/** Whether a KoraMtsSimState is that of a SIM that asks for nothing. */
bool isReady(int32_t simState);
/** State and tries left as fields. */
void addSimState(Section &section, const SimReading &sim);

struct SignalReading {
    std::optional<int64_t> rssiDbm;
    std::optional<int64_t> rsrpDbm;
    std::optional<double> rsrqDb;
    std::optional<double> sinrDb;
    std::optional<int64_t> rscpDbm;
    std::optional<double> ecnoDb;

    bool isKnown() const { return rssiDbm || rsrpDbm || rscpDbm; }
};
SignalReading readSignal(Session &session);
/** One field a measure, each with its bar. */
void addSignal(Section &section, const SignalReading &signal);

/** Which network serves, as far as every modem tells. */
struct OperatorReading {
    std::string name; ///< or code, as the modem names operators at present
    std::optional<int32_t> technology;
};
OperatorReading readOperator(Session &session);

struct RegistrationReading {
    std::optional<int32_t> state;
    std::string area;
    std::string cell;
    std::optional<int32_t> technology;
};
RegistrationReading readEpsRegistration(Session &session);
RegistrationReading readPacketRegistration(Session &session);
/** This one switches the reports of circuit-switched registration off. */
RegistrationReading readCircuitRegistration(Session &session);
void addRegistration(Section &section, const std::string &label, const std::string &key,
                     const RegistrationReading &reading);

} // namespace krctl

#endif
