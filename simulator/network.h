/** The networks around the modem, and which of them it is registered with. */
#ifndef SIMULATOR_NETWORK_H
#define SIMULATOR_NETWORK_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <mainControl/at_values.h>

#include "simulator/reply.h"

namespace simulator {

enum class Technology { Gsm = AT_ACT_GSM, Umts = AT_ACT_UTRAN, Lte = AT_ACT_E_UTRAN };

constexpr Technology kNewestFirst[] = {Technology::Lte, Technology::Umts, Technology::Gsm};

struct Operator {
    std::string name;
    std::string shortName;
    std::string plmn; ///< five or six digits
    std::vector<Technology> technologies = {Technology::Lte, Technology::Umts, Technology::Gsm};
    bool isForbidden = false;
    int area = 0;  ///< location or tracking area; 0: made from the PLMN
    long cell = 0; ///< cell identity; 0: made from the PLMN and the technology

    bool offers(Technology technology) const;
};

/** Which technologies may be used, and which of them comes first. */
struct RadioPreference {
    std::vector<Technology> allowed = {Technology::Lte, Technology::Umts, Technology::Gsm};
    std::optional<Technology> first;

    bool allows(Technology technology) const;
};

/** By the mode of AT+COPS. */
enum class Selection {
    Automatic = AT_COPS_AUTOMATIC,
    Manual = AT_COPS_MANUAL,
    Deregistered = AT_COPS_DEREGISTER,
    ManualThenAutomatic = AT_COPS_MANUAL_THEN_AUTOMATIC,
};

enum class Status {
    NotRegistered = AT_REGISTRATION_NONE,
    Home = AT_REGISTRATION_HOME,
    Searching = AT_REGISTRATION_SEARCHING,
    Denied = AT_REGISTRATION_DENIED,
    Roaming = AT_REGISTRATION_ROAMING,
};

constexpr bool isRegistered(Status status)
{
    return status == Status::Home || status == Status::Roaming;
}

struct Cell {
    const Operator *owner = nullptr;
    Technology technology{};

    friend bool operator==(const Cell &, const Cell &) = default;

    int area() const;
    long identity() const;
};

struct Registration {
    Status status = Status::NotRegistered;
    std::optional<Cell> cell; ///< where the modem is registered

    friend bool operator==(const Registration &, const Registration &) = default;
};

/** What the rest of the modem and its user want of the network. */
struct NetworkWish {
    bool canTransmit = false; ///< the radio is on and the SIM ready
    Selection selection = Selection::Automatic;
    std::string plmn;                     ///< for a manual selection
    std::optional<Technology> technology; ///< for a manual selection: only this one
    RadioPreference preference;
};

class Network {
  public:
    using IsHome = std::function<bool(std::string_view plmn)>;

    Network(std::vector<Operator> operators, IsHome isHome);

    const std::vector<Operator> &operators() const { return operators_; }
    /** By PLMN, long or short name; none outside of coverage. */
    const Operator *find(std::string_view name) const;
    bool isHome(const Operator &candidate) const { return isHome_(candidate.plmn); }

    bool hasCoverage() const { return hasCoverage_; }
    void setCoverage(bool hasCoverage) { hasCoverage_ = hasCoverage; }

    /** Where a search ends that is made by a wish. */
    Registration search(const NetworkWish &wish) const;

  private:
    std::optional<Cell> cellOf(const Operator &owner, const NetworkWish &wish) const;
    Registration searchManually(const NetworkWish &wish) const;
    Registration searchAutomatically(const NetworkWish &wish) const;
    Registration registered(const Cell &cell) const;

    std::vector<Operator> operators_;
    IsHome isHome_;
    bool hasCoverage_ = true;
};

} // namespace simulator

#endif
