#ifndef TESTS_SUPPORT_PLAIN_PORT_PIN_API_H
#define TESTS_SUPPORT_PLAIN_PORT_PIN_API_H

#include "tests/support/plain_port/exchange.h"

namespace plain {

/** KR_setFacilityLock() and KR_getPINStatus() as another operation calls them: what they log of their arguments' addresses
 *  is known to nobody. */
uint32_t setFacilityLockInside(World &world, const char *strFac, int32_t iMode, const char *strPasswd, int32_t iClass,
                               int32_t *iStatus);
uint32_t getPinStatusInside(World &world, int32_t *pStatus, int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft);

} // namespace plain

#endif
