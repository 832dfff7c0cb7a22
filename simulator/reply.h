/** What a command is answered with, before it becomes bytes. */
#ifndef SIMULATOR_REPLY_H
#define SIMULATOR_REPLY_H

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simulator {

/** Errors of 3GPP TS 27.007 9.2 that the modem gives. */
enum class Cme {
    OperationNotAllowed = 3,
    OperationNotSupported = 4,
    SimNotInserted = 10,
    SimPinRequired = 11,
    SimPukRequired = 12,
    SimFailure = 13,
    SimBusy = 14,
    IncorrectPassword = 16,
    InvalidIndex = 21,
    NoNetworkService = 30,
    NetworkNotAllowed = 32,
    NetworkPinRequired = 40,
    IncorrectParameters = 50,
};

std::string_view textOf(Cme error);

/** Nothing where all went well. */
using Failure = std::optional<Cme>;

struct Reply {
    enum class End { Ok, Error, Cme, NotSupport };

    std::vector<std::string> lines;
    End end = End::Ok;
    Cme error{}; ///< of End::Cme

    // A handler returns what it has: its lines, or why it cannot.
    // NOLINTBEGIN(google-explicit-constructor)
    Reply() = default;
    Reply(std::string line) : lines{std::move(line)} {}
    Reply(std::vector<std::string> allLines) : lines(std::move(allLines)) {}
    Reply(Cme cause) : end(End::Cme), error(cause) {}
    Reply(Failure cause) : end(cause ? End::Cme : End::Ok), error(cause.value_or(Cme{})) {}
    // NOLINTEND(google-explicit-constructor)
};

/** @param cmeeMode  an AtErrorForm */
std::string finalResult(const Reply &reply, int cmeeMode);

} // namespace simulator

#endif
