/** The service provider as the SIM names it: its files EF SPN and EF SPDI, 3GPP TS 31.102 4.2.12 and 4.2.66. */
#ifndef KRCTL_COMMANDS_SERVICE_PROVIDER_H
#define KRCTL_COMMANDS_SERVICE_PROVIDER_H

#include <string>
#include <string_view>
#include <vector>

#include "krctl/session/session.h"

namespace krctl {

struct ServiceProvider {
    std::string name;
    std::vector<std::string> friendlyOperators; ///< codes of operators under which the name is shown
    bool isSimRead = false;                     ///< whether the SIM answered at all
};

ServiceProvider readServiceProvider(Session &session);

/** The list of operators within EF SPDI, in the SIM's digit order: the value of tag 80 within tag A3.
 *  @param file  hexadecimal
 *  @return hexadecimal, six digits an operator; empty if there is none */
std::string operatorListOf(std::string_view file);

/** Codes of operators out of a list whose digits have been put in order.
 *  @param digits  six an operator: MCC, the third digit of the MNC or F, the first two of the MNC */
std::vector<std::string> operatorCodes(std::string_view digits);

} // namespace krctl

#endif
