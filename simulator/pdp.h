/** Packet data contexts: what AT+CGDCONT defines and AT+CGACT switches on. */
#ifndef SIMULATOR_PDP_H
#define SIMULATOR_PDP_H

#include <map>
#include <string>

namespace simulator {

struct PdpContext {
    std::string type = "IP";
    std::string apn = {};
    std::string address = {};
    int dataCompression = 0;
    int headerCompression = 0;
    bool isActive = false;
};

constexpr int kMaxContexts = 16;

/** By identifier, 1 to kMaxContexts. */
using PdpContexts = std::map<int, PdpContext>;

} // namespace simulator

#endif
