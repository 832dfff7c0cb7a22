/** The modem behind its command line: everything that commands read and change. */
#ifndef SIMULATOR_DEVICE_H
#define SIMULATOR_DEVICE_H

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "simulator/code_lock.h"
#include "simulator/family.h"
#include "simulator/network.h"
#include "simulator/pdp.h"
#include "simulator/scenario.h"
#include "simulator/scheduler.h"
#include "simulator/signal.h"
#include "simulator/sim_card.h"

namespace simulator {

/** What a command needs before it works; each includes those above it. */
enum class Needs {
    Nothing,
    Card,  ///< a SIM that is not busy
    Pin,   ///< its PIN, if it wants one
    Sim,   ///< no network lock in the way
    Radio, ///< the radio switched on
};

/** The three registration reports. */
enum class Domain : uint8_t { Circuit, Packet, Eps };
inline constexpr std::array kAllDomains = {Domain::Circuit, Domain::Packet, Domain::Eps};
std::string_view reportNameOf(Domain domain); ///< "+CREG", "+CGREG", "+CEREG"

enum class Function { Minimum = AT_CFUN_MINIMUM, Full = AT_CFUN_FULL, Flight = AT_CFUN_RADIO_OFF };

/** Settings that end with the power. */
struct VolatileSettings {
    bool echo = false;
    int cmee = AT_CMEE_OFF;
    std::array<int, kAllDomains.size()> registrationReports{};
    bool eventReports = false; ///< +CGEV
    int operatorFormat = AT_COPS_LONG_NAME;
};

/** Settings that stay. */
struct StoredSettings {
    std::array<int, 3> zsnt{0, 0, 0};
    std::array<int, 4> sysconfig{2, 0, 1, 3};
    std::array<int, 2> erat{2, 0};
    bool isAttached = true;
    bool usesCircuitDomain = true;
    bool usesPacketDomain = true;
    int operationMode = 0;
    int autoAttach = 1;
    int lteMode = 0;
    int band = 0;
    std::map<std::string, int, std::less<>> named;
    std::map<std::string, std::string, std::less<>> properties;
};

class Device {
  public:
    using Report = std::function<void(const std::string &line)>;

    Device(Family family, Scenario scenario, uint64_t seed, Scheduler &scheduler, Report report);

    const Family family;
    const Scenario scenario;
    SimCard sim;
    CodeLock networkLock;
    std::map<std::string, CodeLock, std::less<>> facilities;
    Network network;
    Signal signal;
    PdpContexts contexts;
    VolatileSettings settings;
    StoredSettings stored;
    NetworkWish wish; ///< what canTransmit says is kept by reconsider()
    Function function = Function::Full;
    bool resetsAfterReply = false;

    void powerUp();
    void powerDown();
    void resetSettings();

    /** Why a command cannot work now; nothing if it can. */
    Failure obstacle(Needs needs) const;

    /** To be called when something has changed that decides about the registration: the modem searches anew and
     *  reports what it finds in its time. */
    void reconsider();
    /** The same with the result at once, for commands whose time has passed. */
    void searchNow();

    /** To the packet domain, or from it; the end of the attachment ends all contexts. */
    void attach(bool attached);
    void useDomains(bool circuit, bool packet);

    const Registration &registration() const { return registration_; }
    Status status(Domain domain) const;
    /** Technology, area and cell where registered: ",\"1A2B\",\"01C2D3E4\",7". */
    std::string location(Domain domain) const;
    /** Whether there is a signal to measure. */
    bool hears() const { return function == Function::Full && network.hasCoverage(); }
    std::optional<Technology> technology() const;

    void reportEvent(const std::string &event);

  private:
    void enter(const Registration &next);
    template <typename Change>
    void reportingWhat(Change change);
    void endContexts();
    std::string reportOf(Domain domain) const;

    Scheduler &scheduler_;
    Report report_;
    Registration registration_;
    std::optional<Scheduler::Task> search_;
    std::optional<Scheduler::Task> busyEnd_;
};

} // namespace simulator

#endif
