#include "krctl/commands/signal_reading.h"

#include <array>

#include <mainControl/api.h>

#include "krctl/commands/library_value.h"
#include "krctl/readings/signal.h"
#include "krctl/values/signal_values.h"

namespace krctl {
namespace {

/** The decibels of a code that was told. */
template <typename Number>
std::optional<Number> decibels(std::optional<int32_t> code, std::optional<Number> (*decoded)(int32_t))
{
    return code ? decoded(*code) : std::nullopt;
}

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

void readStandard(Session &session, SignalReading &signal)
{
    int32_t csq = kUntold;
    const Answer quality = session.ask(ItemKind::Signal, [&] { return KR_getSignalStrength(&csq); });
    const auto code = csqOf(quality.replies.to("AT+CSQ"));
    session.note("signal quality (AT+CSQ)", quality.ending, code.has_value());
    signal.rssiDbm = decibels(code, rssiDbm);
}

void readExtended(Session &session, SignalReading &signal)
{
    std::array<int32_t, 6> codes{};
    const Answer answer = session.ask(ItemKind::Signal, [&] {
        return KR_get4GSignalStrength(codes.data(), &codes[1], &codes[2], &codes[3], &codes[4], &codes[5]);
    });
    const ExtendedSignal told = extendedSignalOf(answer.replies.to("AT+CESQ"));
    session.note("extended signal quality (AT+CESQ)", answer.ending, told.rxlev || told.rsrp);
    if (!signal.rssiDbm) signal.rssiDbm = decibels(told.rxlev, rxlevDbm);
    signal.rsrpDbm = decibels(told.rsrp, rsrpDbm);
    signal.rsrqDb = decibels(told.rsrq, rsrqDb);
    signal.rscpDbm = decibels(told.rscp, rscpDbm);
    signal.ecnoDb = decibels(told.ecno, ecnoDb);
}

void readOwnFigures(Session &session, SignalReading &signal)
{
    ZrssiPara own{kUntold, kUntold, kUntold, kUntold, kUntold, kUntold, kUntold};
    if (!session.has(ItemKind::Signal, "signal in the modem's own figures (AT+ZRSSI)",
                     [&] { return KR_getZRSSIInfo(&own); }))
        return;
    takeIfPossible(signal.rssiDbm, Measure::Rssi, own.Rssi);
    takeIfPossible(signal.rsrpDbm, Measure::Rsrp, own.rsrp);
    takeIfPossible(signal.rsrqDb, Measure::Rsrq, own.rsrq);
    takeIfPossible(signal.sinrDb, Measure::Sinr, own.sinr);
    takeIfPossible(signal.rscpDbm, Measure::Rscp, own.Rscp);
    takeIfPossible(signal.ecnoDb, Measure::Ecno, own.ecValue);
}

} // namespace

SignalReading readSignal(Session &session)
{
    SignalReading signal;
    readStandard(session, signal);
    readExtended(session, signal);
    readOwnFigures(session, signal);
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

} // namespace krctl
