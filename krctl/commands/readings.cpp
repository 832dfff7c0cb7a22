#include "krctl/commands/readings.h"

#include <array>
#include <cstring>
#include <utility>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/standard_tries.h"
#include "krctl/values/names.h"
#include "krctl/values/signal_values.h"

namespace krctl {
namespace {

/** A figure in the modem's own units, which is taken for dBm or dB only if it can be. */
template <typename Number>
void takeIfPossible(std::optional<Number> &target, Measure measure, int32_t value)
{
    const Range range = rangeOf(measure);
    if (target || value < range.lowest || value > range.highest) return;
    target = static_cast<Number>(value);
}

template <typename Number>
Field measured(const char *label, const char *key, const char *unit, Measure measure, std::optional<Number> value)
{
    const auto figure = value ? std::optional(static_cast<double>(*value)) : std::nullopt;
    Field field = realField(label, key, figure, unit);
    if (value) field.value = *value; // as a whole number where it is one
    field.quality = qualityOf(measure, figure);
    return field;
}

std::string withoutQuotes(std::string text)
{
    std::erase(text, '"');
    return text;
}

} // namespace

std::string writtenText(std::string buffer)
{
    buffer.resize(std::strlen(buffer.c_str()));
    return buffer;
}

std::optional<int32_t> told(int32_t value)
{
    return value == kUntold ? std::nullopt : std::optional(value);
}

std::string identity(Session &session, uint32_t (*getter)(int32_t, char *), const std::string &item)
{
    std::string text(kMostText + 1, '\0');
    if (!session.has(getter(kMostText, text.data()), item)) return {};
    return writtenText(std::move(text));
}

SimReading readSim(Session &session)
{
    (void)session.has(KR_setCmee(AT_CMEE_TEXTS),
                      "errors as texts"); // by which the library tells a wrong PIN from other failures
    int32_t state = 0;
    int32_t pinTries = 0;
    int32_t pukTries = 0;
    const uint32_t result = KR_getPINStatus(1, &state, &pinTries, &pukTries);
    SimReading sim;
    if (result != UNI_ERROR_SUCCESS) { // the modem may lack only the vendor's command for the tries left
        sim.state = session.simState();
        if (!session.has(sim.state ? static_cast<uint32_t>(UNI_ERROR_SUCCESS) : result, "SIM state")) return sim;
        const StandardTries tries = readStandardTries();
        sim.pinTries = tries.pin;
        sim.pukTries = tries.puk;
        return sim;
    }
    sim.state = state;
    const bool isAsked =
        state != KORA_MTS_SIM_NOT_INSERTED && state != KORA_MTS_SIM_FAILURE && state != KORA_MTS_SIM_ICERA_LOCKNET;
    if (isAsked && (pinTries != 0 || pukTries != 0)) { // both are 0 only where the modem did not tell
        sim.pinTries = pinTries;
        sim.pukTries = pukTries;
    }
    return sim;
}

bool isReady(int32_t simState)
{
    return simState == KORA_MTS_SIM_PIN_ENABLED || simState == KORA_MTS_SIM_PIN_DISABLED;
}

void addSimState(Section &section, const SimReading &sim)
{
    section.addCode("State", "state", sim.state, wordOf(kSimStates, sim.state));
    section.add(numberField("PIN tries left", "pin_tries_left", sim.pinTries));
    section.add(numberField("PUK tries left", "puk_tries_left", sim.pukTries));
}

SignalReading readSignal(Session &session)
{
    SignalReading signal;
    int32_t csq = kUntold;
    if (session.has(KR_getSignalStrength(&csq), "signal quality (AT+CSQ)")) signal.rssiDbm = rssiDbm(csq);

    std::array<int32_t, 6> codes{};
    codes.fill(kUntold);
    auto &[rxlev, ber, rscp, ecno, rsrq, rsrp] = codes;
    if (session.has(KR_get4GSignalStrength(&rxlev, &ber, &rscp, &ecno, &rsrq, &rsrp),
                    "extended signal quality (AT+CESQ)")) {
        signal.rsrpDbm = rsrpDbm(rsrp);
        signal.rsrqDb = rsrqDb(rsrq);
        signal.rscpDbm = rscpDbm(rscp);
        signal.ecnoDb = ecnoDb(ecno);
    }

    ZrssiPara own{kUntold, kUntold, kUntold, kUntold, kUntold, kUntold, kUntold};
    if (session.has(KR_getZRSSIInfo(&own), "signal in the modem's own figures (AT+ZRSSI)")) {
        takeIfPossible(signal.rssiDbm, Measure::Rssi, own.Rssi);
        takeIfPossible(signal.rsrpDbm, Measure::Rsrp, own.rsrp);
        takeIfPossible(signal.rsrqDb, Measure::Rsrq, own.rsrq);
        takeIfPossible(signal.sinrDb, Measure::Sinr, own.sinr);
        takeIfPossible(signal.rscpDbm, Measure::Rscp, own.Rscp);
        takeIfPossible(signal.ecnoDb, Measure::Ecno, own.ecValue);
    }
    return signal;
}

void addSignal(Section &section, const SignalReading &signal)
{
    section.add(measured("RSSI", "rssi_dbm", "dBm", Measure::Rssi, signal.rssiDbm));
    section.add(measured("RSRP", "rsrp_dbm", "dBm", Measure::Rsrp, signal.rsrpDbm));
    section.add(measured("RSRQ", "rsrq_db", "dB", Measure::Rsrq, signal.rsrqDb));
    section.add(measured("SINR", "sinr_db", "dB", Measure::Sinr, signal.sinrDb));
    Field rscp = measured("RSCP", "rscp_dbm", "dBm", Measure::Rscp, signal.rscpDbm);
    Field ecno = measured("Ec/No", "ecno_db", "dB", Measure::Ecno, signal.ecnoDb);
    rscp.onlyIfKnown = ecno.onlyIfKnown = true; // only UMTS has them
    section.add(rscp).add(ecno);
}

OperatorReading readOperator(Session &session)
{
    OperatorReading reading;
    int32_t mode = 0;
    int32_t format = 0;
    int32_t technology = kUntold;
    std::array<char, 64> name{};
    if (!session.has(KR_getCops(&mode, &format, name.data(), &technology), "operator (AT+COPS?)")) return reading;
    reading.name = name.data();
    if (!reading.name.empty()) reading.technology = told(technology);
    return reading;
}

RegistrationReading readEpsRegistration(Session &session)
{
    int32_t reports = 0;
    int32_t state = kUntold;
    int32_t technology = kUntold;
    std::string area(kMostText + 1, '\0');
    std::string cell(kMostText + 1, '\0');
    RegistrationReading reading;
    if (!session.has(KR_getEPSRegisterState(&reports, &state, area.data(), cell.data(), &technology),
                     "EPS registration (AT+CEREG?)"))
        return reading;
    return {told(state), withoutQuotes(writtenText(std::move(area))), withoutQuotes(writtenText(std::move(cell))),
            told(technology)};
}

RegistrationReading readPacketRegistration(Session &session)
{
    int32_t reports = 0;
    int32_t state = kUntold;
    RegistrationReading reading;
    if (session.has(KR_getGPRSRegisterState(&reports, &state), "packet registration (AT+CGREG?)"))
        reading.state = told(state);
    return reading;
}

RegistrationReading readCircuitRegistration(Session &session)
{
    CregPara place{};
    place.status = kUntold; // stays if the modem sends a form that the library does not read
    RegistrationReading reading;
    if (!session.has(KR_getCregMode(&place), "circuit-switched registration (AT+CREG?)")) return reading;
    return {told(place.status), place.lac, place.cellid, std::nullopt};
}

void addRegistration(Section &section, const std::string &label, const std::string &key,
                     const RegistrationReading &reading)
{
    section.addCode(label, key, reading.state, wordOf(kRegistrations, reading.state));
}

} // namespace krctl
