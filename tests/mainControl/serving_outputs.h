#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "guarded_text.h"
#include "sample_text.h"

/// The outputs of both functions that tell the serving network.
namespace serving {

inline constexpr std::int32_t kCsBefore = 61;
inline constexpr std::int32_t kPsBefore = 62;
inline constexpr std::int32_t kRoamingBefore = 63;
inline constexpr std::int32_t kMccBefore = 64;
inline constexpr std::int32_t kMncBefore = 65;
inline constexpr std::size_t kDomainRoom = 68;

/// A text that fills a room of a size that a caller states, which may be none.
inline std::string before(std::int32_t size)
{
    return filled(size > 0 ? static_cast<std::size_t>(size) - 1 : 0);
}

/// In guarded memory, the texts with exactly the room that is stated.
struct Outputs {
    Outputs(std::int32_t nameSize, std::int32_t rplmnSize)
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
    std::uint32_t readBy(Function function) const
    {
        return function(cs.get(), ps.get(), roaming.get(), mcc.get(), mnc.get(), nameLen, name, rplmnLen, rplmn,
                        domain);
    }

    std::int32_t nameLen;
    std::int32_t rplmnLen;
    GuardedRecord<std::int32_t> cs, ps, roaming, mcc, mnc;
    GuardedText name, rplmn, domain;
};

} // namespace serving
