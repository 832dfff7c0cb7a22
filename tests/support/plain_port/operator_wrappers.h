#ifndef TESTS_SUPPORT_PLAIN_PORT_OPERATOR_WRAPPERS_H
#define TESTS_SUPPORT_PLAIN_PORT_OPERATOR_WRAPPERS_H

#include "tests/support/plain_port/exchange.h"

namespace plain {

/** What a +CRSM reply holds, its text as long as it came. */
struct CrsmReply {
    int count = 0; ///< values that were read
    int32_t sw1 = 0;
    int32_t sw2 = 0;
    std::string response; ///< markers and all
};

/** @return 0 or 1, as crsmSet() */
uint32_t crsmExchange(World &world, const CrsmCmd &command, CrsmReply &reply);

} // namespace plain

#endif
