#include <array>
#include <string>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "host/at/reports.h"
#include "host/at/text.h"
#include "host/at_client/at_client.h"
#include "krctl/commands/commands.h"
#include "krctl/commands/raw_command.h"
#include "krctl/commands/readings.h"
#include "krctl/output/output.h"
#include "krctl/output/time_text.h"
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

/** A text of the library's rewritten line: its markers are undone. */
std::string plain(const char *text)
{
    std::string plainText;
    for (; *text != '\0'; ++text) {
        const auto byte = static_cast<unsigned char>(*text);
        if (byte == 0xFE)
            plainText += ' ';
        else if (byte != 0xFD && byte != '"')
            plainText += *text;
    }
    return plainText;
}

void showRegistration(const char *label, const char *domain, int32_t state, const char *areaCode, const char *cellId)
{
    const std::string area = plain(areaCode);
    const std::string cell = plain(cellId);
    const std::string word = wordOf(kRegistrations, state);
    std::string text = word.empty() ? "code " + std::to_string(state) : word;
    if (!area.empty()) text += ", area " + area;
    if (!cell.empty()) text += ", cell " + cell;
    show(label, text,
         {textField("", "event", "registration"), textField("", "domain", domain), wordField("", "state", word),
          numberField("", "state_code", state), textField("", "area", area), textField("", "cell", cell)});
}

void heardCircuit(int32_t state, char *area, char *cell)
{
    showRegistration("Calls", "circuit", state, area, cell);
}

void heardPacket(int32_t state, char *area, char *cell)
{
    showRegistration("Packet data", "packet", state, area, cell);
}

void heardEps(int32_t state, char *area, char *cell)
{
    showRegistration("LTE", "eps", state, area, cell);
}

/** The reports that the callbacks get. The library leads no +CREG to its callback, so that one is shown as it is. */
bool isForCallbacks(std::string_view line)
{
    const auto named = host::at::namedLine(line);
    const host::at::Report *const report = named ? host::at::reportNamed(named->name) : nullptr;
    return report != nullptr && report->kind == host::at::ReportKind::Registration && report->isReadByLibrary;
}

void showReport(std::string_view text, bool all)
{
    for (const std::string &line : linesOf(text)) {
        if (isForCallbacks(line) || (!all && !line.starts_with("+CREG:"))) continue;
        show("Report", line, {textField("", "event", "report"), textField("", "text", line)});
    }
}

/** The registration reports with places are on as long as this lives; then they are as before. */
class ReportsOn {
  public:
    explicit ReportsOn(Session &session)
    {
        int32_t state = 0;
        int32_t technology = 0;
        std::string area(kMostText + 1, '\0');
        std::string cell(kMostText + 1, '\0');
        isEpsOn_ = session.has(KR_getEPSRegisterState(&epsBefore_, &state, area.data(), cell.data(), &technology),
                               "LTE reports") &&
                   session.has(KR_setEPSRegisterState(AT_REPORTS_LOCATION), "LTE reports");
        isPacketOn_ = session.has(KR_getGPRSRegisterState(&packetBefore_, &state), "packet reports") &&
                      session.has(KR_setGPRSRegisterState(AT_REPORTS_LOCATION), "packet reports");
    }
    ~ReportsOn()
    {
        if (isEpsOn_) (void)KR_setEPSRegisterState(epsBefore_);
        if (isPacketOn_) (void)KR_setGPRSRegisterState(packetBefore_);
    }
    ReportsOn(const ReportsOn &) = delete;
    ReportsOn &operator=(const ReportsOn &) = delete;

    bool isAnyOn() const { return isEpsOn_ || isPacketOn_; }

  private:
    int32_t epsBefore_ = 0;
    int32_t packetBefore_ = 0;
    bool isEpsOn_ = false;
    bool isPacketOn_ = false;
};

void showWhereItStands(Session &session)
{
    const RegistrationReading eps = readEpsRegistration(session);
    const RegistrationReading packet = readPacketRegistration(session);
    if (eps.state) showRegistration("LTE", "eps", *eps.state, eps.area.c_str(), eps.cell.c_str());
    if (packet.state) showRegistration("Packet data", "packet", *packet.state, "", "");
}

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
    session.require(KR_setCregNotifyCallback(heardCircuit), "KR_setCregNotifyCallback", purpose);
    session.require(KR_setCgregNotifyCallback(heardPacket), "KR_setCgregNotifyCallback", purpose);
    session.require(KR_setCeregNotifyCallback(heardEps), "KR_setCeregNotifyCallback", purpose);

    showWhereItStands(session);
    if (context.arguments.has(kAsIs.name)) listen();
    const ReportsOn reports(session);
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
