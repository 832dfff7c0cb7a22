/** The two JSON texts that the server writes: its status, and the events of the transcript. */
#ifndef HOST_AT_SERVER_JSON_TEXTS_H
#define HOST_AT_SERVER_JSON_TEXTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/at/rights.h"

namespace host::at_server {

struct Status {
    struct Running {
        std::string command; ///< masked; empty: not for this client
        uint32_t remainingMs{};
    };
    std::string device;
    unsigned baud{};
    bool isPortOpen = false;
    std::string why;
    std::string_view family; ///< empty: not known yet
    std::optional<Running> running;
    bool isEchoed = false; ///< the modem's echo shows where replies begin
    size_t waiting{};
    size_t clients{};
    uint64_t commands{};
    uint64_t reports{};
    uint64_t uptimeS{};
    std::string record; ///< empty: none
    at::Rights rights;  ///< of the client that asks
};

std::string jsonOf(const Status &status);

/** What happened on the port: bytes that went over it, or something else. */
struct Event {
    std::string_view time;      ///< ISO 8601, UTC
    std::string_view direction; ///< "tx" to the modem, "rx" from it; empty for other events
    std::string_view text;      ///< bytes, each of which becomes the character of that number
    std::string_view as;        ///< of bytes from the modem: "reply", "report", "echo" or "discarded"; otherwise empty
    uint32_t client{};          ///< process whose command it is; 0: the server's own, or nobody's
    std::string_view event;     ///< "opened", "closed" or "failed"; empty for bytes
    std::string_view why;       ///< of such an event
};

std::string jsonOf(const Event &event);

} // namespace host::at_server

#endif
