#include "simulator/scenario.h"

namespace simulator {

Scenario::Scenario()
{
    const auto make = [this](const char *name, const char *shortName, const char *plmn) -> Operator & {
        Operator made;
        made.name = name;
        made.shortName = shortName;
        made.plmn = plmn;
        return operators.emplace_back(made);
    };
    make("Kora Mobile", "Kora", "46000");
    make("Lumen Telecom", "Lumen", "46001");
    make("Old Towers", "Towers", "46003").technologies = {Technology::Gsm};
    make("Closed Circle", "Closed", "46011").isForbidden = true;

    PdpContext internet;
    internet.apn = "internet";
    contexts[1] = internet;

    facilities["PS"] = {false, "12345678", 5}; // phone to SIM
    facilities["FD"] = {false, "1234", 3};     // fixed dialling
    facilities["AO"] = {false, "0000", 3};     // barring of outgoing calls
    facilities["OI"] = {false, "0000", 3};     // of outgoing international calls
    facilities["AI"] = {false, "0000", 3};     // of incoming calls
}

} // namespace simulator
