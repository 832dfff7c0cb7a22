#include "krctl/readings/profiles.h"

#include "krctl/readings/reply.h"

namespace krctl {

std::vector<Profile> profilesOf(std::string_view reply)
{
    std::vector<Profile> profiles;
    for (const std::string &line : valueLinesOf(reply)) {
        const Values values = valuesOf(line);
        const auto cid = numberIn(values.front());
        if (cid) profiles.push_back({*cid, valueAt(values, 1), valueAt(values, 2), valueAt(values, 3)});
    }
    return profiles;
}

} // namespace krctl
