/** Which network serves, and how the modem is registered in it. Reading leaves the modem as it was. */
#ifndef KRCTL_COMMANDS_NETWORK_READING_H
#define KRCTL_COMMANDS_NETWORK_READING_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krctl/output/report.h"
#include "krctl/readings/operators.h"
#include "krctl/readings/registration.h"
#include "krctl/session/session.h"

namespace krctl {

SelectedOperator readOperator(Session &session);

/** What a modem registers in, each with a report and a command of its own. */
struct Domain {
    const char *label;                      ///< for people
    const char *key;                        ///< for programs, in fields and events
    std::string_view report;                ///< "+CEREG"
    uint32_t (*read)();                     ///< by the library; NULL if it has no such function
    uint32_t (*setLibraryReports)(int32_t); ///< likewise
};
extern const Domain kEps;
extern const Domain kPacket;
extern const Domain kCircuit;
extern const Domain k5g;

/** Raises no reports, so that a modem tells no place unless they are on. */
Registration readRegistration(Session &session, const Domain &domain);
/** For calls, with the place: the reports that it takes are put back to what they were. */
Registration readCircuitWithPlace(Session &session);

/** Switches a domain's reports.
 *  @return the library's result */
uint32_t setReports(Session &session, const Domain &domain, int32_t mode);

/** The state as a field, with its code. */
void addRegistration(Section &section, const std::string &label, const std::string &key, std::optional<int32_t> state);
/** A text that people see only if it is known. */
void addIfKnown(Section &section, Field field);

} // namespace krctl

#endif
