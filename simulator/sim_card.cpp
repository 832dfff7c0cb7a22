#include "simulator/sim_card.h"

#include <utility>

#include <mainControl/at_values.h>

#include "simulator/text.h"

namespace simulator {
namespace {

constexpr SimAnswer normalEnd(std::string data = {})
{
    return {AT_CRSM_SW1_DONE, 0x00, std::move(data)};
}

/** Digits in the order in which a card keeps them, odd lengths filled up with F. */
std::string swappedDigits(std::string digits)
{
    if (digits.size() % 2 != 0) digits += 'F';
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        std::swap(digits[i], digits[i + 1]);
    return digits;
}

/** Length, and the parity digit in front of the number (3GPP TS 31.102 4.2.2). */
std::string imsiContents(const std::string &imsi)
{
    return hex(static_cast<unsigned>(imsi.size() / 2 + 1), 2) + swappedDigits('9' + imsi);
}

/** Display condition, then the name in 8-bit characters, filled up with FF (4.2.12). */
std::string providerContents(const std::string &name)
{
    constexpr size_t kNameBytes = 16;
    std::string contents = "01";
    for (size_t i = 0; i < kNameBytes; ++i)
        contents += i < name.size() ? hex(static_cast<unsigned char>(name[i]), 2) : "FF";
    return contents;
}

/** The operators under which the provider's name is shown, here the home network alone (4.2.66). */
std::string displayContents(const std::string &imsi)
{
    constexpr size_t kCountryDigits = 3;
    constexpr size_t kNetworkDigits = 2;
    return "A3058003" +
           swappedDigits(imsi.substr(0, kCountryDigits) + 'F' + imsi.substr(kCountryDigits, kNetworkDigits));
}

bool isPin(std::string_view text)
{
    return isDigits(text, 4, 8);
}

} // namespace

SimCard::SimCard(SimSettings settings) : now_(std::move(settings))
{
    if (now_.isBlocked) now_.pinTries = now_.pukTries = 0;
    files_ = {{AT_SIM_FILE_ICCID, swappedDigits(now_.iccid)},
              {AT_SIM_FILE_IMSI, imsiContents(now_.imsi)},
              {AT_SIM_FILE_PROVIDER_NAME, providerContents(now_.provider)},
              {AT_SIM_FILE_ADMINISTRATIVE, "00000002"},
              {AT_SIM_FILE_PROVIDER_DISPLAY, displayContents(now_.imsi)}};
}

SimState SimCard::state() const
{
    if (!now_.isPresent) return SimState::Absent;
    if (isBusy_) return SimState::Busy;
    if (now_.pukTries == 0) return SimState::Failed;
    if (now_.pinTries == 0) return SimState::NeedsPuk;
    return now_.isPinEnabled && !isVerified_ ? SimState::NeedsPin : SimState::Ready;
}

void SimCard::setPresent(bool present)
{
    now_.isPresent = present;
    isVerified_ = false;
}

Failure SimCard::checkPin(std::string_view pin)
{
    if (now_.pukTries == 0) return Cme::SimFailure;
    if (now_.pinTries == 0) return Cme::SimPukRequired;
    if (!isPin(pin)) return Cme::IncorrectParameters;
    if (pin != now_.pin) return --now_.pinTries == 0 ? Cme::SimPukRequired : Cme::IncorrectPassword;
    now_.pinTries = kMaxPinTries;
    return {};
}

Failure SimCard::enterPin(std::string_view pin)
{
    if (const Failure failure = checkPin(pin)) return failure;
    isVerified_ = true;
    return {};
}

Failure SimCard::unblock(std::string_view puk, std::string_view newPin)
{
    if (now_.pukTries == 0) return Cme::SimFailure;
    if (!isDigits(puk, 8, 8) || !isPin(newPin)) return Cme::IncorrectParameters;
    if (puk != now_.puk) return --now_.pukTries == 0 ? Cme::SimFailure : Cme::IncorrectPassword;
    now_.pin = newPin;
    now_.pinTries = kMaxPinTries;
    now_.pukTries = kMaxPukTries;
    now_.isPinEnabled = isVerified_ = true;
    return {};
}

Failure SimCard::enablePin(bool enabled, std::string_view pin)
{
    if (const Failure failure = checkPin(pin)) return failure;
    now_.isPinEnabled = enabled;
    isVerified_ = true;
    return {};
}

Failure SimCard::changePin(std::string_view pin, std::string_view newPin)
{
    if (!now_.isPinEnabled) return Cme::OperationNotAllowed;
    if (!isPin(newPin)) return Cme::IncorrectParameters;
    if (const Failure failure = checkPin(pin)) return failure;
    now_.pin = newPin;
    return {};
}

SimAnswer SimCard::access(const SimAccess &access)
{
    if (access.command == AT_CRSM_STATUS) return normalEnd();
    const auto file = files_.find(access.file);
    if (file == files_.end()) return {0x6A, 0x82, {}};
    const bool isOpen = access.file == AT_SIM_FILE_ICCID || access.file == AT_SIM_FILE_ADMINISTRATIVE;
    if (!isOpen && state() != SimState::Ready) return {0x69, 0x82, {}};
    return accessFile(access, file->second);
}

SimAnswer SimCard::accessFile(const SimAccess &access, std::string &file)
{

    if (access.offset < 0 || access.length < 0) return {0x6B, 0x00, {}};
    const auto first = 2 * static_cast<size_t>(access.offset);
    const auto size = 2 * static_cast<size_t>(access.length);
    const bool fits = first <= file.size() && size <= file.size() - first;
    switch (access.command) {
    case AT_CRSM_READ_BINARY:
        return fits ? normalEnd(file.substr(first, size)) : SimAnswer{0x67, 0x00, {}};
    case AT_CRSM_UPDATE_BINARY:
        if (!fits || access.data.size() != size) return {0x67, 0x00, {}};
        file.replace(first, size, upperCase(access.data));
        return normalEnd();
    case AT_CRSM_GET_RESPONSE: // 3GPP TS 51.011 9.2.1: an elementary, transparent file
        return normalEnd(concat("0000", hex(static_cast<unsigned>(file.size() / 2), 4),
                                hex(static_cast<unsigned>(access.file), 4), "0400F0440102", "0000"));
    default:
        return {0x6D, 0x00, {}};
    }
}

} // namespace simulator
