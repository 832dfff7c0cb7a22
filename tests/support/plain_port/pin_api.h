#pragma once

#include "exchange.h"

namespace plain {

/// KR_setFacilityLock() and KR_getPINStatus() as another operation calls them: what they log of their arguments' addresses
/// is known to nobody.
std::uint32_t setFacilityLockInside(World &world, const char *strFac, std::int32_t iMode, const char *strPasswd,
                                    std::int32_t iClass, std::int32_t *iStatus);
std::uint32_t getPinStatusInside(World &world, std::int32_t *pStatus, std::int32_t *pVerifyRetriesLeft,
                                 std::int32_t *pUnblockRetriesLeft);

} // namespace plain
