#include "krctl/commands/sim_reading.h"

#include <mainControl/api.h>

namespace krctl {
namespace {

bool hasTries(const SimReading &sim)
{
    return sim.state != SimState::NotInserted && sim.state != SimState::Failure && sim.state != SimState::Wrong &&
           sim.state != SimState::NetworkCodeRequired;
}

/** The tries by the vendor's command if the modem knows it, otherwise by the standard one. */
Tries readTries(Session &session, const Answer &status, int32_t pinTries, int32_t pukTries)
{
    const bool isVendorHeard = status.isDone() && numberAt(status.replies.last(), 0);
    if (isVendorHeard) {
        // Of the vendors' commands this one tells all four.
        const std::string_view counts = status.replies.to("AT+EPINC?");
        return {pinTries, pukTries, numberAt(counts, 1), numberAt(counts, 3)};
    }
    if (status.ending == Ending::Silent) return {};
    return triesOf(session.send(ItemKind::Sim, "AT+CPINR").replies.to("AT+CPINR"));
}

void addTries(Section &section, const char *label, const char *key, std::optional<int64_t> tries, bool isSecond)
{
    Field field = numberField(label, key, tries);
    field.onlyIfKnown = isSecond;
    section.add(field);
}

} // namespace

std::string SimReading::word() const
{
    if (state) return wordOf(*state, pinLock);
    return stateText.empty() ? "-" : stateText;
}

SimReading readSim(Session &session)
{
    constexpr int32_t kAnyId = 1;
    int32_t state = 0;
    int32_t pinTries = 0;
    int32_t pukTries = 0;
    const Answer answer =
        session.ask(ItemKind::Sim, [&] { return KR_getPINStatus(kAnyId, &state, &pinTries, &pukTries); });
    const SimStateReading told = simStateOf(answer.replies.to("AT+CPIN?"));
    SimReading sim{.state = told.state, .stateText = told.told};
    if (!session.note("SIM state", answer.ending, sim.isTold())) return sim;
    if (sim.state == SimState::Ready) {
        sim.pinLock = isLockOn(answer.replies.to("AT+CLCK="));
        session.note("PIN lock", answer.ending, sim.pinLock.has_value());
    }
    if (!hasTries(sim)) return sim;
    sim.tries = readTries(session, answer, pinTries, pukTries);
    session.note("tries left", answer.isDone() ? Ending::Refused : answer.ending, sim.tries.pin || sim.tries.puk);
    return sim;
}

void addSimState(Section &section, const SimReading &sim)
{
    Field state = wordField("State", "state", sim.state ? sim.word() : "");
    state.text = sim.word();
    section.add(state);
    section.add(numberField("", "state_code", sim.state ? codeOf(*sim.state, sim.pinLock) : std::nullopt));
    section.add(textField("", "state_text", sim.stateText));
    addTries(section, "PIN tries left", "pin_tries_left", sim.tries.pin, false);
    addTries(section, "PUK tries left", "puk_tries_left", sim.tries.puk, false);
    addTries(section, "PIN2 tries left", "pin2_tries_left", sim.tries.pin2, true);
    addTries(section, "PUK2 tries left", "puk2_tries_left", sim.tries.puk2, true);
}

void addNextStep(Report &report, const SimReading &sim)
{
    if (!sim.state) return;
    const std::string next = rowOf(*sim.state).next;
    if (!next.empty()) report.notes.push_back("SIM: " + wordOf(*sim.state, sim.pinLock) + ". " + next);
}

} // namespace krctl
