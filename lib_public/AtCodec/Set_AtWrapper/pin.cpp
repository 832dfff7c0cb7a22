#include <mainControl/at_values.h>
#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/wrapper_support.h"

using namespace mainControl;

namespace {

constexpr int32_t kSecretTimeoutMs = 10000;
constexpr int32_t kQueryLockTimeoutMs = 10000;
constexpr int32_t kAttemptsTimeoutMs = 10000;

constexpr ResultCode kWrong = UNI_ERROR_SETTING_CPIN_INCORRECT_PASS;
constexpr ResultCode kPuk = UNI_ERROR_SETTING_CPIN_PUKPASS_REQUIRED;

// What each command makes of +CME ERROR. They differ where the modems' texts and the callers do: a wrong PIN is only
// known by its lower-case text, and a PUK also by its number, which matches anywhere in the text.
constexpr ErrorText kLockErrors[] = {
    {"incorrect password", kWrong}, {"Incorrect password", kWrong}, {"SIM PUK required", kPuk}};
constexpr ErrorText kPinErrors[] = {{"incorrect password", kWrong}, {"SIM PUK required", kPuk}, {"12", kPuk}};
constexpr ErrorText kChangeErrors[] = {
    {"incorrect password", kWrong}, {"Incorrect password", kWrong}, {"SIM PUK required", kPuk}};
constexpr ErrorText kStateErrors[] = {{"sim failure", UNI_ERROR_SETTING_SIM_FAILURE},
                                      {"SIM failure", UNI_ERROR_SETTING_SIM_FAILURE},
                                      {"sim not inserted", UNI_ERROR_SETTING_SIM_NOT_INSERTED},
                                      {"SIM not inserted", UNI_ERROR_SETTING_SIM_NOT_INSERTED},
                                      {"sim busy", UNI_ERROR_SETTING_SIM_BUSY},
                                      {"SIM busy", UNI_ERROR_SETTING_SIM_BUSY}};

/** The first secret of a pair; one that fills its array runs on into the second. */
int codeLength(const PinCodePair &pair)
{
    return static_cast<int>(strnlen(reinterpret_cast<const char *>(&pair), sizeof pair));
}

uint32_t clckQuery(const char *facility, int32_t *status)
{
    SetLog::line("###T9LB LOG### clckSet 2 == mode begin");
    AtExchange at;
    if (!at.sendFormatted(kQueryLockTimeoutMs, "AT+CLCK=\"%s\",%d", facility, AT_CLCK_QUERY)) {
        SetLog::line("###T9LB LOG### clckSet ClientSendCmd return UNI_ERROR_FALSE");
        return UNI_ERROR_FALSE;
    }
    if (!at.parse()) {
        SetLog::line("###T9LB LOG### clckSet Bk_Parse_At_Res return UNI_ERROR_FALSE");
        return UNI_ERROR_FALSE;
    }
    if (!at.isOk()) {
        SetLog::line("###T9LB LOG### clckSet last return UNI_ERROR_FALSE");
        return UNI_ERROR_FALSE;
    }
    at.read("%d", status);
    SetLog::line("###T9LB LOG### clckSet ClientSendCmd return UNI_ERROR_SUCCESS");
    return UNI_ERROR_SUCCESS;
}

/** Logs and returns what a refused lock change comes to. A bare ERROR is taken for a wrong password. */
uint32_t clckRefused(AtExchange &at)
{
    ResultCode code = UNI_ERROR_FALSE;
    if (at.result() == AT_RES_RESULT_CME_ERROR) code = errorCode(at, kLockErrors, UNI_ERROR_SETTING_UNKNOWN);
    if (at.result() == AT_RES_RESULT_ERROR) code = kWrong;
    switch (code) {
    case kWrong:
        SetLog::line("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_CPIN_INCORRECT_PASS");
        break;
    case kPuk:
        SetLog::line("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_CPIN_PUKPASS_REQUIRED");
        break;
    case UNI_ERROR_SETTING_UNKNOWN:
        SetLog::line("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_UNKNOWN");
        break;
    default:
        SetLog::line("###T9LB LOG### clckSet last return UNI_ERROR_FALSE");
        break;
    }
    return code;
}

uint32_t clckChange(const char *facility, int32_t mode, const char *password, int32_t class_)
{
    AtExchange at;
    // Of all classes only 1 is sent; the modem's own choice stands for the others.
    const bool sent =
        class_ == AT_CLCK_CLASS_VOICE
            ? at.sendFormatted(kDefaultTimeoutMs, "AT+CLCK=\"%s\",%d,\"%s\",%d", facility, mode, password, class_)
            : at.sendFormatted(kDefaultTimeoutMs, "AT+CLCK=\"%s\",%d,\"%s\"", facility, mode, password);
    if (!sent) {
        SetLog::line("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_FALSE");
        return UNI_ERROR_FALSE;
    }
    if (!at.parse()) return UNI_ERROR_FALSE;
    if (!at.isOk()) return clckRefused(at);
    SetLog::line("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SUCCESS");
    return UNI_ERROR_SUCCESS;
}

bool sendPin(AtExchange &at, const PinCodePair &pair)
{
    const int length = codeLength(pair);
    const int newLength = lengthIn(pair.newCode);
    const bool isQuoted = traits().quotesSecrets;
    if (newLength == 0)
        return at.sendFormatted(kSecretTimeoutMs, isQuoted ? "AT+CPIN=\"%.*s\"" : "AT+CPIN=%.*s", length, pair.code);
    return at.sendFormatted(kSecretTimeoutMs, isQuoted ? "AT+CPIN=\"%.*s\",\"%.*s\"" : "AT+CPIN=%.*s,%.*s", length,
                            pair.code, newLength, pair.newCode);
}

/** The SIM state that an OK to AT+CPIN? names. "SIM PIN" comes first, so that PIN2 counts as PIN and PUK2 as PUK. */
int32_t simState(AtExchange &at)
{
    if (parasContain(at, "SIM PIN")) {
        SetLog::line("###T9LB LOG### CpinRead SIM PIN");
        return SETTING_PIN_REQUIRED;
    }
    if (parasContain(at, "SIM PUK")) {
        SetLog::line("###T9LB LOG### CpinRead SIM PUK");
        return SETTING_PUK_REQUIRED;
    }
    if (parasContain(at, "PH-NET PIN")) {
        SetLog::line("###T9LB LOG### CpinRead PH-NET PIN");
        return SETTING_PHNET_PIN_REQUIRED;
    }
    SetLog::line("###T9LB LOG### CpinRead SETTING_PIN_UNREQUIRED");
    return SETTING_PIN_UNREQUIRED;
}

} // namespace

uint32_t clckSet(const char *facility, int32_t mode, const char *password, int32_t class_, int32_t *status)
{
    return mode == AT_CLCK_QUERY ? clckQuery(facility, status) : clckChange(facility, mode, password, class_);
}

uint32_t xxSet(int32_t selector, int32_t *count)
{
    AtExchange at;
    if (!at.okFormatted("AT+XX=%d", selector)) return UNI_ERROR_FALSE;
    at.read("%d", count);
    return UNI_ERROR_SUCCESS;
}

uint32_t epincRead(int32_t counts[4])
{
    AtExchange at;
    if (!at.ok("AT+EPINC?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d %d %d", &counts[0], &counts[1], &counts[2], &counts[3]);
    return UNI_ERROR_SUCCESS;
}

uint32_t cardmodeExec(int32_t *mode)
{
    AtExchange at;
    if (!at.ok("AT+CARDMODE")) return UNI_ERROR_FALSE;
    at.read("%d", mode);
    return UNI_ERROR_SUCCESS;
}

uint32_t zrapRead(int32_t /*cardType*/, int32_t *pinLeft, int32_t *pukLeft)
{
    AtExchange at;
    if (!at.ok("AT+ZRAP?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d %d", pinLeft, kDropped, pukLeft);
    return UNI_ERROR_SUCCESS;
}

uint32_t zpinpukTest(int32_t *pinLeft, int32_t *pukLeft)
{
    SetLog::line("###T9LB LOG### zpinpukTest begin");
    AtExchange at;
    if (!at.okWithin(kAttemptsTimeoutMs, "AT+ZPINPUK=?")) return UNI_ERROR_FALSE;
    at.readLine("%d %d", pinLeft, pukLeft);
    return UNI_ERROR_SUCCESS;
}

uint32_t cpinRead(int32_t *state)
{
    SetLog::line("###T9LB LOG### CpinRead begin");
    AtExchange at;
    if (!at.send(kDefaultTimeoutMs, "AT+CPIN?")) {
        SetLog::line("###T9LB LOG### CpinRead ClientSendCmd return UNI_ERROR_FALSE");
        return UNI_ERROR_FALSE;
    }
    if (at.parseOk()) {
        SetLog::line("###T9LB LOG### CpinRead tAtRes.Result == AT_RES_RESULT_OK");
        *state = simState(at);
        SetLog::line("###T9LB LOG### CpinRead return UNI_ERROR_SUCCESS");
        return UNI_ERROR_SUCCESS;
    }
    if (at.result() == AT_RES_RESULT_CME_ERROR) {
        if (traits().refusesOnlyWithoutSim) return UNI_ERROR_SETTING_SIM_NOT_INSERTED;
        return errorCode(at, kStateErrors, UNI_ERROR_SETTING_UNKNOWN);
    }
    SetLog::line("###T9LB LOG### CpinRead return last UNI_ERROR_FALSE");
    return UNI_ERROR_FALSE;
}

uint32_t cpinSet(PinCodePair pair)
{
    SetLog::line("###T9LB LOG### cpinSet begin");
    AtExchange at;
    if (!sendPin(at, pair) || !at.parse()) return UNI_ERROR_FALSE;
    SetLog::line("###T9LB LOG### Bk_Parse_At_Res SUCCESS");
    if (at.isOk()) {
        SetLog::line("###T9LB LOG### cpinSet result ok");
        return UNI_ERROR_SUCCESS;
    }
    if (at.result() == AT_RES_RESULT_CME_ERROR) return errorCode(at, kPinErrors, UNI_ERROR_FALSE);
    return UNI_ERROR_FALSE;
}

uint32_t cpwdSet(PinCodePair pair)
{
    AtExchange at;
    if (!at.sendFormatted(kSecretTimeoutMs, "AT+CPWD=\"%s\",\"%.*s\",\"%.*s\"", AT_FACILITY_SIM, codeLength(pair),
                          pair.code, lengthIn(pair.newCode), pair.newCode))
        return UNI_ERROR_FALSE;
    if (!at.parse()) return UNI_ERROR_FALSE;
    if (at.result() == AT_RES_RESULT_CME_ERROR) return errorCode(at, kChangeErrors, UNI_ERROR_FALSE);
    return toCode(at.isOk());
}
