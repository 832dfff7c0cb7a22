#include "krctl/commands/network_reading.h"

#include <array>
#include <utility>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/library_value.h"
#include "krctl/values/names.h"

namespace krctl {
namespace {

std::string commandOf(const Domain &domain, const char *end)
{
    return std::string("AT").append(domain.report).append(end);
}

std::string itemOf(const Domain &domain)
{
    return std::string(domain.label) + " registration (" + commandOf(domain, "?") + ')';
}

uint32_t readEps()
{
    int32_t reports = 0;
    int32_t state = 0;
    int32_t technology = 0;
    std::string area(kMostText + 1, '\0');
    std::string cell(kMostText + 1, '\0');
    return KR_getEPSRegisterState(&reports, &state, area.data(), cell.data(), &technology);
}

uint32_t readPacket()
{
    int32_t reports = 0;
    int32_t state = 0;
    return KR_getGPRSRegisterState(&reports, &state);
}

Answer ask(Session &session, const Domain &domain)
{
    return domain.read != nullptr ? session.ask(ItemKind::Network, domain.read)
                                  : session.send(ItemKind::Network, commandOf(domain, "?"));
}

Registration registrationIn(const Answer &answer, const Domain &domain)
{
    return registrationOfReply(answer.replies.to(commandOf(domain, "?")));
}

/** Puts back the reports that KR_getCregMode() switched on, and then off if it got so far. */
void putBack(Session &session, int32_t reports, const Answer &answer)
{
    const auto settings = answer.replies.allTo("AT+CREG=");
    const bool isSwitched = !settings.empty() && finalResultOf(settings.front()) == "OK";
    const bool isOff = answer.isDone();
    if (!isSwitched || (isOff && reports == AT_REPORTS_OFF)) return;
    if (setReports(session, kCircuit, reports) != UNI_ERROR_SUCCESS)
        session.note("switching reports of calls back (AT+CREG=" + std::to_string(reports) + ")", Ending::Refused);
}

} // namespace

const Domain kEps{"LTE", "eps", "+CEREG", readEps, KR_setEPSRegisterState};
const Domain kPacket{"Packet data", "packet", "+CGREG", readPacket, KR_setGPRSRegisterState};
const Domain kCircuit{"Calls", "circuit", "+CREG", nullptr, KR_setCregMode}; // its reading takes reports away
const Domain k5g{"5G", "fiveg", "+C5GREG", nullptr, nullptr};

SelectedOperator readOperator(Session &session)
{
    const Answer answer = session.ask(ItemKind::Network, [] {
        int32_t mode = 0;
        int32_t format = 0;
        int32_t technology = 0;
        std::array<char, 64> name{};
        return KR_getCops(&mode, &format, name.data(), &technology);
    });
    SelectedOperator selected = selectedOperatorOf(answer.replies.to("AT+COPS?"));
    session.note("operator (AT+COPS?)", answer.ending, !selected.name.empty() || !selected.code.empty());
    return selected;
}

Registration readRegistration(Session &session, const Domain &domain)
{
    const Answer answer = ask(session, domain);
    Registration registration = registrationIn(answer, domain);
    const bool isTold = registration.state.has_value();
    // A modem without 5G lacks nothing.
    if (isTold || &domain != &k5g) session.note(itemOf(domain), answer.ending, isTold);
    return registration;
}

Registration readCircuitWithPlace(Session &session)
{
    Registration before = readRegistration(session, kCircuit);
    const bool hasPlace = before.reports.value_or(AT_REPORTS_LOCATION) >= AT_REPORTS_LOCATION;
    if (hasPlace) return before;
    const Answer answer = session.ask(ItemKind::Network, [] {
        CregPara place{};
        return KR_getCregMode(&place);
    });
    Registration withPlace = registrationIn(answer, kCircuit);
    putBack(session, *before.reports, answer);
    return withPlace.state ? withPlace : before;
}

uint32_t setReports(Session &session, const Domain &domain, int32_t mode)
{
    if (domain.setLibraryReports != nullptr) return domain.setLibraryReports(mode);
    const bool isDone = session.send(ItemKind::Network, commandOf(domain, "=") + std::to_string(mode)).isDone();
    return isDone ? UNI_ERROR_SUCCESS : UNI_ERROR_FALSE;
}

void addRegistration(Section &section, const std::string &label, const std::string &key, std::optional<int32_t> state)
{
    section.addCode(label, key, state, wordOf(kRegistrations, state));
}

void addIfKnown(Section &section, Field field)
{
    field.onlyIfKnown = true;
    section.add(std::move(field));
}

} // namespace krctl
