#include "krctl/session/call_failure.h"

#include <algorithm>
#include <array>

#include "host/at_client/at_client.h"
#include "krctl/readings/reply.h"
#include "krctl/readings/sim.h"

namespace krctl {
namespace {

/** What the client's results mean here. */
struct ConnectionRow {
    int result;
    int exitStatus;
    const char *code;
    const char *next;
};

constexpr std::array kConnectionRows{
    ConnectionRow{CLIENT_NO_SERVER, kNoServer, "no_server",
                  "Start kr-at-server for the modem's port, or name its socket with --socket or KR_AT_SERVER."},
    ConnectionRow{CLIENT_REFUSED, kNoServer, "no_access",
                  "Run krctl as the server's user, as root, or as a member of the group that the server allows."},
    ConnectionRow{CLIENT_PORT_DOWN, kNoServer, "no_port",
                  "Check that the modem is plugged in and powered; the server opens its port again by itself."},
    ConnectionRow{CLIENT_TIMED_OUT, kTimedOut, "timed_out",
                  "Repeat the command; if the modem stays silent, check its port with \"krctl status\"."},
    ConnectionRow{CLIENT_REPLY_TOO_LONG, kRefused, "reply_too_long", "The answer is beyond what the library can read."},
    ConnectionRow{CLIENT_BAD_COMMAND, kUsage, "bad_command",
                  "Commands are at most 1023 characters, without control characters."},
    ConnectionRow{CLIENT_INTERRUPTED, kInterrupted, "interrupted", "Nothing more is sent."},
    ConnectionRow{CLIENT_SERVER_BUSY, kTimedOut, "server_busy", "Repeat the command when other clients have finished."},
    ConnectionRow{CLIENT_NOT_ALLOWED, kRefused, "not_allowed",
                  "Run krctl as one of these, or have the right given to a group of yours (--allow of kr-at-server)."},
    ConnectionRow{CLIENT_MISMATCHED, kTimedOut, "mismatched", "Repeat the command; the server has cleared the line."},
    ConnectionRow{CLIENT_PROTOCOL, kNoServer, "protocol", "Install krctl and kr-at-server of the same version."},
};

/** Errors of 3GPP TS 27.007 9.2 whose next step is known, besides those that a SIM stands behind. */
struct ErrorRow {
    int number;
    const char *text; ///< in capitals
    const char *code;
    const char *next;
};

constexpr std::array kErrorRows{
    ErrorRow{3, "OPERATION NOT ALLOWED", "refused",
             "See \"krctl status\": the radio may be off, or the SIM not ready."},
    ErrorRow{4, "OPERATION NOT SUPPORTED", "not_supported", "This modem does not do that."},
    ErrorRow{30, "NO NETWORK SERVICE", "no_service", "See \"krctl net status\" and \"krctl signal\"."},
};

const ErrorRow *errorRow(std::string_view finalResult)
{
    const std::string_view error = errorIn(finalResult);
    const auto number = numberIn(error);
    const auto *const found = std::find_if(kErrorRows.begin(), kErrorRows.end(), [&](const ErrorRow &row) {
        return row.number == number || inCapitals(error).starts_with(row.text);
    });
    return found == kErrorRows.end() ? nullptr : &*found;
}

void takeState(const SimStateRow &row, Failure &failure)
{
    failure.exitStatus = row.demand == SimDemand::Nothing ? kRefused : kLocked;
    failure.code = row.failure;
    failure.next = row.next;
}

const ConnectionRow &connectionRow(int result)
{
    const auto *const found = std::find_if(kConnectionRows.begin(), kConnectionRows.end(),
                                           [&](const ConnectionRow &row) { return row.result == result; });
    return found == kConnectionRows.end() ? kConnectionRows.front() : *found;
}

} // namespace

Failure connectionFailure(int result, const std::string &purpose, const std::string &where)
{
    const ConnectionRow &row = connectionRow(result);
    const char *error = ClientLastError();
    const std::string reason = *error == '\0' ? row.code : error;
    return {row.exitStatus, row.code, "Could not " + purpose + ": " + reason + ".", where, row.next};
}

Failure failureOf(const std::string &purpose, const std::string &where, std::string_view finalResult)
{
    if (const int result = ClientLastResult(); result != CLIENT_OK) return connectionFailure(result, purpose, where);
    Failure failure{kRefused, "refused", "The modem refused to " + purpose, where,
                    "The modem may not know this command, or not allow it now; \"krctl status\" shows its state."};
    if (!finalResult.empty()) failure.what += " (" + std::string(finalResult) + ')';
    failure.what += '.';
    if (finalResult == "OK") {
        failure.code = "unreadable";
        failure.what = "The modem's answer could not be read: could not " + purpose + '.';
        failure.next = "Check that --platform names the family of this modem.";
    }
    if (const ErrorRow *row = errorRow(finalResult)) {
        failure.code = row->code;
        failure.next = row->next;
    }
    if (const auto state = simStateOfError(finalResult)) takeState(rowOf(*state), failure);
    if (isWrongCode(finalResult)) {
        failure.exitStatus = kLocked;
        failure.code = "wrong_code";
        failure.next = "See how many tries are left with \"krctl sim status\".";
    }
    return failure;
}

bool isInTheWay(SimState state, Failure &failure)
{
    const SimStateRow &row = rowOf(state);
    if (row.demand != SimDemand::Unlock) return false;
    takeState(row, failure);
    return true;
}

} // namespace krctl
