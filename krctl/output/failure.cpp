#include "krctl/output/failure.h"

#include <utility>

namespace krctl {

Failure usageFailure(std::string what, std::string where, std::string next)
{
    return {kUsage, "usage", std::move(what), std::move(where), std::move(next)};
}

Failure interruptedFailure()
{
    return {kInterrupted, "interrupted", "Interrupted.", "krctl",
            "Repeat the command; the server has dropped what was running."};
}

Failure notOnPlatform(std::string what, std::string where, std::string next)
{
    return {kNotOnPlatform, "not_on_platform", std::move(what), std::move(where), std::move(next)};
}

} // namespace krctl
