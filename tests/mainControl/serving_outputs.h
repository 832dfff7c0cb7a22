#ifndef TESTS_MAINCONTROL_SERVING_OUTPUTS_H
#define TESTS_MAINCONTROL_SERVING_OUTPUTS_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/support/guarded_text.h"
#include "tests/support/sample_text.h"

/** The outputs of both functions that tell the serving network. */
namespace serving {

inline constexpr int32_t kCsBefore = 61;
inline constexpr int32_t kPsBefore = 62;
inline constexpr int32_t kRoamingBefore = 63;
inline constexpr int32_t kMccBefore = 64;
inline constexpr int32_t kMncBefore = 65;
inline constexpr size_t kDomainRoom = 68;

/** A text that fills a room of a size that a caller states, which may be none. */
inline std::string before(int32_t size)
{
    return filled(size > 0 ? static_cast<size_t>(size) - 1 : 0);
}

/** In guarded memory, the texts with exactly the room that is stated. */
struct Outputs {
    Outputs(int32_t nameSize, int32_t rplmnSize)
        : nameLen(nameSize), rplmnLen(rplmnSize), name(before(nameSize)), rplmn(before(rplmnSize)),
          domain(filled(kDomainRoom - 1))
    {
        *cs = kCsBefore;
        *ps = kPsBefore;
        *roaming = kRoamingBefore;
        *mcc = kMccBefore;
        *mnc = kMncBefore;
    }

    template <typename Function>
    uint32_t readBy(Function function) const
    {
        return function(cs.get(), ps.get(), roaming.get(), mcc.get(), mnc.get(), nameLen, name, rplmnLen, rplmn,
                        domain);
    }

    int32_t nameLen;
    int32_t rplmnLen;
    GuardedRecord<int32_t> cs, ps, roaming, mcc, mnc;
    GuardedText name, rplmn, domain;
};

} // namespace serving

#endif
