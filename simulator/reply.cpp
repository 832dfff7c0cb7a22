#include "simulator/reply.h"

#include <mainControl/at_values.h>

#include "simulator/text.h"

namespace simulator {

std::string_view textOf(Cme error)
{
    switch (error) {
    case Cme::OperationNotAllowed:
        return "operation not allowed";
    case Cme::OperationNotSupported:
        return "operation not supported";
    case Cme::SimNotInserted:
        return "SIM not inserted";
    case Cme::SimPinRequired:
        return "SIM PIN required";
    case Cme::SimPukRequired:
        return "SIM PUK required";
    case Cme::SimFailure:
        return "SIM failure";
    case Cme::SimBusy:
        return "SIM busy";
    case Cme::IncorrectPassword:
        return "incorrect password";
    case Cme::InvalidIndex:
        return "invalid index";
    case Cme::NoNetworkService:
        return "no network service";
    case Cme::NetworkNotAllowed:
        return "network not allowed - emergency calls only";
    case Cme::NetworkPinRequired:
        return "network personalization PIN required";
    case Cme::IncorrectParameters:
        return "incorrect parameters";
    }
    return "unknown";
}

std::string finalResult(const Reply &reply, int cmeeMode)
{
    switch (reply.end) {
    case Reply::End::Ok:
        return "OK";
    case Reply::End::Error:
        return "ERROR";
    case Reply::End::NotSupport:
        return "not support";
    case Reply::End::Cme:
        break;
    }
    if (cmeeMode == AT_CMEE_NUMBERS) return concat("+CME ERROR: ", static_cast<int>(reply.error));
    if (cmeeMode == AT_CMEE_TEXTS) return concat("+CME ERROR: ", textOf(reply.error));
    return "ERROR";
}

} // namespace simulator
