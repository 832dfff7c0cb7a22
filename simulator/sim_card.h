/** The SIM: its PIN, its PUK and their tries, which last as long as the card, and its files. */
#ifndef SIMULATOR_SIM_CARD_H
#define SIMULATOR_SIM_CARD_H

#include <map>
#include <string>
#include <string_view>

#include "simulator/reply.h"

namespace simulator {

struct SimSettings {
    bool isPresent = true;
    bool isUsim = true;
    bool isPinEnabled = false;
    std::string pin = "1234";
    std::string puk = "12345678";
    int pinTries = 3;
    int pukTries = 10;
    bool isBlocked = false; ///< for good: no try of the PUK is left
    std::string imsi = "460001234567890";
    std::string iccid = "89860012345678901234";
    std::string number = "13800138000";
    std::string provider = "Kora Mobile"; ///< service provider name
    std::string homeName = "Kora Mobile";
    int busyMs = 0; ///< how long it says that it is busy after power-up
};

enum class SimState { Absent, Busy, NeedsPin, NeedsPuk, Failed, Ready };

/** One exchange with a file of the card, by 3GPP TS 27.007 8.18. */
struct SimAccess {
    int command = 0; ///< an AtSimCommand
    int file = 0;
    int offset = 0;
    int length = 0;
    std::string_view data; ///< hexadecimal
};
struct SimAnswer {
    int sw1 = 0;
    int sw2 = 0;
    std::string data; ///< hexadecimal
};

class SimCard {
  public:
    static constexpr int kMaxPinTries = 3;
    static constexpr int kMaxPukTries = 10;

    explicit SimCard(SimSettings settings);

    SimState state() const;
    const SimSettings &settings() const { return now_; }
    bool isPinEnabled() const { return now_.isPinEnabled; }
    int pinTries() const { return now_.pinTries; }
    int pukTries() const { return now_.pukTries; }
    bool isHome(std::string_view plmn) const { return std::string_view(now_.imsi).substr(0, plmn.size()) == plmn; }

    /** A card that has just got power wants its PIN again. */
    void powerUp() { isVerified_ = false; }
    void setPresent(bool present);
    void setBusy(bool busy) { isBusy_ = busy; }

    Failure enterPin(std::string_view pin);
    Failure unblock(std::string_view puk, std::string_view newPin);
    Failure enablePin(bool enabled, std::string_view pin);
    Failure changePin(std::string_view pin, std::string_view newPin);

    SimAnswer access(const SimAccess &access);

  private:
    Failure checkPin(std::string_view pin);
    SimAnswer accessFile(const SimAccess &access, std::string &file);

    SimSettings now_;
    std::map<int, std::string> files_; ///< hexadecimal, by identifier
    bool isVerified_ = false;
    bool isBusy_ = false;
};

} // namespace simulator

#endif
