#include "simulator/code_lock.h"

namespace simulator {

Failure CodeLock::check(std::string_view code)
{
    if (isStuck()) return Cme::OperationNotAllowed;
    if (code != settings_.code) {
        --triesLeft_;
        return Cme::IncorrectPassword;
    }
    triesLeft_ = settings_.tries;
    return {};
}

Failure CodeLock::set(bool active, std::string_view code)
{
    if (const Failure failure = check(code)) return failure;
    settings_.isActive = active;
    return {};
}

Failure CodeLock::changeCode(std::string_view code, std::string_view newCode)
{
    if (const Failure failure = check(code)) return failure;
    settings_.code = newCode;
    return {};
}

} // namespace simulator
