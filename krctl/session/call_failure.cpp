#include "krctl/session/call_failure.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>

#include <mainControl/api/pin.h>

#include "host/at_client/at_client.h"

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

/** Errors of 3GPP TS 27.007 9.2 whose next step is known. */
struct ErrorRow {
    int number;
    const char *text; ///< in lower case
    int exitStatus;
    const char *code;
    const char *next;
};

constexpr const char *kEnterPin = "Enter the PIN with \"krctl sim unlock\".";
constexpr const char *kEnterPuk = "Enter the PUK and a new PIN with \"krctl sim unblock\".";
constexpr const char *kEnterLock = "Enter the network's unlock code with \"krctl lock unlock\".";

constexpr std::array kErrorRows{
    ErrorRow{3, "operation not allowed", kRefused, "refused",
             "See \"krctl status\": the radio may be off, or the SIM not ready."},
    ErrorRow{4, "operation not supported", kRefused, "not_supported", "This modem does not do that."},
    ErrorRow{10, "sim not inserted", kRefused, "no_sim", "Insert a SIM, then switch the radio off and on."},
    ErrorRow{11, "sim pin required", kLocked, "pin_required", kEnterPin},
    ErrorRow{12, "sim puk required", kLocked, "puk_required", kEnterPuk},
    ErrorRow{13, "sim failure", kRefused, "sim_failure", "Take the SIM out, put it back, and try again."},
    ErrorRow{14, "sim busy", kRefused, "sim_busy", "Try again in a few seconds."},
    ErrorRow{16, "incorrect password", kLocked, "wrong_code", "See how many tries are left with \"krctl sim status\"."},
    ErrorRow{17, "sim pin2 required", kLocked, "pin2_required", "The modem wants the PIN2 for this."},
    ErrorRow{30, "no network service", kRefused, "no_service", "See \"krctl net status\" and \"krctl signal\"."},
    ErrorRow{40, "network personalization pin required", kLocked, "network_lock", kEnterLock},
};

std::string lowered(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return lower;
}

const ErrorRow *rowOf(std::string_view finalResult)
{
    constexpr std::string_view kPrefix = "+cme error:";
    const std::string line = lowered(finalResult);
    if (!line.starts_with(kPrefix)) return nullptr;
    const std::string_view error =
        std::string_view(line).substr(std::min(line.find_first_not_of(' ', kPrefix.size()), line.size()));
    int number = -1;
    std::from_chars(error.data(), error.data() + error.size(), number);
    const auto *const found = std::find_if(kErrorRows.begin(), kErrorRows.end(), [&](const ErrorRow &row) {
        return row.number == number || error.starts_with(row.text);
    });
    return found == kErrorRows.end() ? nullptr : &*found;
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
    if (const ErrorRow *row = rowOf(finalResult)) {
        failure.exitStatus = row->exitStatus;
        failure.code = row->code;
        failure.next = row->next;
    }
    return failure;
}

bool isInTheWay(int32_t simState, Failure &failure)
{
    const char *code = nullptr;
    if (simState == KORA_MTS_SIM_PIN_REQUIRED)
        code = "pin_required", failure.next = kEnterPin;
    else if (simState == KORA_MTS_SIM_PUK_REQUIRED)
        code = "puk_required", failure.next = kEnterPuk;
    else if (simState == KORA_MTS_SIM_ICERA_LOCKNET)
        code = "network_lock", failure.next = kEnterLock;
    if (code == nullptr) return false;
    failure.code = code;
    failure.exitStatus = kLocked;
    return true;
}

} // namespace krctl
