#ifndef TESTS_SUPPORT_PLAIN_PORT_ROWS_H
#define TESTS_SUPPORT_PLAIN_PORT_ROWS_H

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <mainControl/records.h>

#include "tests/support/plain_port/round.h"
#include "tests/support/record_at.h"

namespace plain {

/** One function with its arguments, each made anew in each round. */
struct Row {
    const char *name;
    std::function<void(Round &)> run;
};

/** @param makers  one for each argument, called in their order */
template <typename Result, typename... Parameters, typename... Makers>
Row row(const char *name, Result (*library)(Parameters...), Result (*port)(World &, Parameters...), Makers... makers)
{
    return {name, [=](Round &round) {
                const std::tuple<Parameters...> arguments{makers(round)...};
                std::apply([&](const Parameters &...each) { round.run(library, port, each...); }, arguments);
            }};
}

/** The wrappers, and the API with every operation inside it that is exported. */
std::vector<Row> setWrappers();
std::vector<Row> networkWrappers();
std::vector<Row> identityCalls();
std::vector<Row> notificationCalls();
std::vector<Row> networkCalls();
std::vector<Row> radioCalls();
std::vector<Row> pinAndLockCalls();

int32_t anyInteger(Round &round);
int32_t *outInteger(Round &round);
/** A text of the host, never NULL. */
const char *hostText(Round &round);
/** As large as the longest token. */
char *outText(Round &round);

/** A record in memory that holds anything, its texts terminated. */
template <typename Record>
Record *outRecord(Round &round)
{
    return recordAt<Record>(round.memory(sizeof(Record)));
}

template <size_t size>
char *outTextOf(Round &round)
{
    return round.memory(size);
}

/** A number of bytes, which sizedText() and sizedBytes() then have. */
int32_t statedSize(Round &round);
/** A buffer of the stated size that holds a text. */
char *sizedText(Round &round);
/** A buffer of the stated size, down to none at all. */
char *sizedBytes(Round &round);

PinCodePair anyPins(Round &round);
PdpContext anyContext(Round &round);
CrsmCmd anySimCommand(Round &round);
CrsmRes *outSimResponse(Round &round);
CopsPara anyOperator(Round &round);
/** A parsed reply to a command. */
AtRes *parsedReply(Round &round, const std::string &command);

} // namespace plain

#endif
