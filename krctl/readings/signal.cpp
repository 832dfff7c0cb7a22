#include "krctl/readings/signal.h"

#include "krctl/readings/reply.h"

namespace krctl {

std::optional<int32_t> csqOf(std::string_view reply)
{
    return numberAt(reply, 0);
}

ExtendedSignal extendedSignalOf(std::string_view reply)
{
    // The second is the error rate of the channel, which nobody asks for here.
    return {numberAt(reply, 0), numberAt(reply, 2), numberAt(reply, 3), numberAt(reply, 4), numberAt(reply, 5)};
}

} // namespace krctl
