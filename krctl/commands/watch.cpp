#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "host/at/text.h"
#include "host/at_client/at_client.h"
#include "krctl/commands/commands.h"
#include "krctl/commands/network_reading.h"
#include "krctl/output/output.h"
#include "krctl/output/time_text.h"
#include "krctl/readings/reply.h"
#include "krctl/session/interruption.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

constexpr Parameter kAll{.name = "--all",
                         .help = "every report of the modem, not only those of registration",
                         .kind = Parameter::Kind::Flag};
constexpr Parameter kAsIs{.name = "--as-is",
                          .help = "leave the modem's registration reports as they are switched",
                          .kind = Parameter::Kind::Flag};

/** The callbacks of the library have no room for a context. */
const Output *g_output = nullptr;

/** One event: a line for people, an object for programs. */
void show(const char *label, const std::string &text, Fields fields)
{
    constexpr int kLabelWidth = 12;
    fields.insert(fields.begin(), textField("", "time", timeText()));
    g_output->showEvent(Report::done(clockText() + "  " + padded(label, kLabelWidth) + text, std::move(fields)));
}

/** All of them have reports. */
const std::array kDomains{&kEps, &kPacket, &kCircuit, &k5g};

void showRegistration(const Domain &domain, const Registration &registration)
{
    const std::string word = wordOf(kRegistrations, registration.state);
    const std::string technology = wordOf(kTechnologies, registration.technology);
    std::string text = word.empty() ? "code " + std::to_string(*registration.state) : word;
    if (!technology.empty()) text += ", " + technology;
    if (!registration.area.empty()) text += ", area " + registration.area;
    if (!registration.cell.empty()) text += ", cell " + registration.cell;
    show(domain.label, text,
         {textField("", "event", "registration"), textField("", "domain", domain.key), wordField("", "state", word),
          numberField("", "state_code", registration.state), textField("", "area", registration.area),
          textField("", "cell", registration.cell), wordField("", "technology", technology),
          numberField("", "technology_code", registration.technology)});
}

/** The library reads reports for its callbacks; krctl reads each as it came, also those that lead to none. */
void heard(int32_t /*state*/, char * /*area*/, char * /*cell*/) {}

const Domain *domainOf(std::string_view line)
{
    const auto named = host::at::namedLine(line);
    const auto *const found = std::find_if(kDomains.begin(), kDomains.end(), [&](const Domain *domain) {
        return named && host::at::isSameName(named->name, domain->report);
    });
    return found == kDomains.end() ? nullptr : *found;
}

void showReport(std::string_view text, bool all)
{
    for (const std::string &line : linesOf(text)) {
        const Domain *const domain = domainOf(line);
        const Registration registration = domain == nullptr ? Registration{} : registrationOfReport(line);
        if (registration.state)
            showRegistration(*domain, registration);
        else if (domain != nullptr || all)
            show("Report", line, {textField("", "event", "report"), textField("", "text", line)});
    }
}

/** The registration reports with places are on as long as this lives; then they are as before. */
class ReportsOn {
  public:
    explicit ReportsOn(Session &session) : session_(session) {}
    ~ReportsOn()
    {
        for (const auto &[domain, before] : raised_)
            (void)setReports(session_, *domain, before);
    }
    ReportsOn(const ReportsOn &) = delete;
    ReportsOn &operator=(const ReportsOn &) = delete;

    /** @param before  which reports are on; those of a modem that does not tell it stay as they are */
    void raise(const Domain &domain, std::optional<int32_t> before)
    {
        if (!before) return;
        const bool isOn = *before >= AT_REPORTS_LOCATION;
        const bool isRaised = !isOn && setReports(session_, domain, AT_REPORTS_LOCATION) == UNI_ERROR_SUCCESS;
        if (isRaised) raised_.emplace_back(&domain, *before);
        isAnyOn_ = isAnyOn_ || isOn || isRaised;
    }
    bool isAnyOn() const { return isAnyOn_; }

  private:
    Session &session_;
    std::vector<std::pair<const Domain *, int32_t>> raised_;
    bool isAnyOn_ = false;
};

[[noreturn]] void listen()
{
    constexpr int32_t kPauseMs = 1000; // before a server that is gone is looked for again
    bool wasThere = true;
    while (true) {
        const bool isThere = ClientDispatch(-1) >= 0;
        Session::throwIfInterrupted();
        if (isThere != wasThere)
            show("Server", isThere ? "there again" : std::string("lost: ") + ClientLastError(),
                 {textField("", "event", "server"), flagField("", "is_there", isThere)});
        wasThere = isThere;
        if (!isThere) pauseFor(std::chrono::milliseconds(kPauseMs));
        Session::throwIfInterrupted();
    }
}

Report watch(Context &context)
{
    Session &session = context.session;
    g_output = &context.output;
    const bool all = context.arguments.has(kAll.name);
    session.happenings.report = [all](std::string_view text) { showReport(text, all); };
    session.happenings.port = [](bool isOpen, std::string_view why) {
        show(
            "Port", isOpen ? "open" : "closed: " + std::string(why),
            {textField("", "event", "port"), flagField("", "is_open", isOpen), textField("", "why", std::string(why))});
    };
    session.happenings.lost = [](uint32_t count) {
        show("Lost", std::to_string(count) + " reports",
             {textField("", "event", "lost"), numberField("", "count", count)});
    };
    const char *purpose = "hear reports";
    session.require(KR_setCregNotifyCallback(heard), "KR_setCregNotifyCallback", purpose);
    session.require(KR_setCgregNotifyCallback(heard), "KR_setCgregNotifyCallback", purpose);
    session.require(KR_setCeregNotifyCallback(heard), "KR_setCeregNotifyCallback", purpose);

    const bool isAsIs = context.arguments.has(kAsIs.name);
    ReportsOn reports(session);
    for (const Domain *domain : kDomains) {
        const Registration registration = readRegistration(session, *domain);
        if (registration.state) showRegistration(*domain, registration);
        if (!isAsIs) reports.raise(*domain, registration.reports);
    }
    session.throwIfGone();
    if (isAsIs) listen();
    if (!reports.isAnyOn()) throw session.failureFor("KR_setEPSRegisterState", "report its registration");
    context.output.remark("Waiting for reports; Ctrl-C ends.");
    listen();
}

constexpr std::array kParameters{kAll, kAsIs};

constexpr std::array kCommands{
    Command{.path = "watch",
            .help = "registration and port changes as they come, until Ctrl-C",
            .examples = "krctl watch\nkrctl -J watch | jq -c .data",
            .parameters = kParameters,
            .run = watch},
};

} // namespace

std::span<const Command> watchCommands()
{
    return kCommands;
}

} // namespace krctl
