/** A lock that opens with a code and counts the tries: the network lock and the facilities other than the SIM's. */
#ifndef SIMULATOR_CODE_LOCK_H
#define SIMULATOR_CODE_LOCK_H

#include <string>
#include <string_view>

#include "simulator/reply.h"

namespace simulator {

struct LockSettings {
    bool isActive = false;
    std::string code = "12345678";
    int tries = 5;
};

class CodeLock {
  public:
    explicit CodeLock(const LockSettings &settings = {}) : settings_(settings), triesLeft_(settings.tries) {}

    bool isActive() const { return settings_.isActive; }
    int triesLeft() const { return triesLeft_; }
    /** A lock without a try left stays as it is. */
    bool isStuck() const { return triesLeft_ == 0; }

    Failure set(bool active, std::string_view code);
    Failure changeCode(std::string_view code, std::string_view newCode);

  private:
    Failure check(std::string_view code);

    LockSettings settings_;
    int triesLeft_;
};

} // namespace simulator

#endif
