// The bytes of a modem on their way through the AT server: replies and reports are the same however the port cuts them.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz.h"
#include "host/at_server/reply_collector.h"
#include "host/at_server/translation/translation.h"
#include "tests/support/choices.h"

using namespace host::at_server;

namespace {

/** Line ends go into the transcript with the line before them or behind them, as they come. */
std::string withoutEnds(std::string_view raw)
{
    const size_t begin = raw.find_first_not_of("\r\n");
    return begin == std::string_view::npos ? ""
                                           : std::string(raw.substr(begin, raw.find_last_not_of("\r\n") + 1 - begin));
}

class Client : private ReplyCollector::Listener {
  public:
    Client(std::string command, std::string late, Family family, bool isEchoed)
        : command_(std::move(command)), late_(std::move(late)), family_(family), isEchoed_(isEchoed)
    {
    }

    void feed(std::string_view bytes, size_t piece)
    {
        expect();
        for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size())))
            collector_.feed(bytes.substr(0, piece));
        collector_.endMiddle();
    }

    std::vector<std::string> heard;

  private:
    void expect()
    {
        if (!late_.empty())
            collector_.expectLateReplies(command_, late_);
        else if (!command_.empty())
            collector_.expectReply(command_, isEchoed_);
        else
            collector_.expectNothing();
    }

    void onReply(Reply &&reply) override
    {
        require(!reply.isTooLong || reply.lines.empty(), "nothing is kept of what is too long");
        require(reply.result == "> " || resultKind(reply.result, late_.empty() ? command_ : late_) != ResultKind::None,
                "a reply ends with a final result, or a prompt");
        std::string text = asLibraryReads(std::move(reply), command_, family_);
        require(text.compare(0, 2, "\r\n") == 0, "a reply begins with a line end");
        heard.push_back("reply " + std::move(text));
    }
    void onStray(std::string_view result) override
    {
        require(!result.empty(), "a stray result says something");
        heard.push_back("stray " + std::string(result));
    }
    void onEarly(std::string_view result) override
    {
        require(!result.empty(), "a result before the echo says something");
        heard.push_back("early " + std::string(result));
    }
    void onForeign() override { heard.emplace_back("foreign"); }
    void onReport(const std::vector<std::string> &lines) override
    {
        require(lines.size() == 1 || lines.size() == 2, "a report has a line, or two");
        heard.push_back("report " + reportAsLibraryReads(lines));
    }
    void onLine(std::string_view raw, LineIs what) override
    {
        const std::string line = withoutEnds(raw);
        if (!line.empty()) heard.push_back("line " + std::to_string(static_cast<int>(what)) + ' ' + line);
    }

    std::string command_;
    std::string late_;
    Family family_;
    bool isEchoed_;
    ReplyCollector collector_{*this};
};

void requireTheSame(Client &whole, Client &cut, const std::string &bytes, size_t piece)
{
    whole.feed(bytes, std::string::npos);
    cut.feed(bytes, piece);
    // A prompt is one if nothing follows it for the time being.
    if (bytes.find('>') != std::string::npos || whole.heard == cut.heard) return;
    for (const Client *client : {&whole, &cut}) {
        std::fputs("heard:\n", stderr);
        for (const std::string &one : client->heard)
            std::fprintf(stderr, "  %s\n", one.c_str());
    }
    require(false, "the same however it is cut");
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static constexpr const char *kCommands[] = {"",          "AT",          "AT+CIMI",  "AT+CREG?",    "at+CEREG?",
                                                "AT+COPS=?", "AT+COPS?",    "AT+CPIN?", "AT^SYSINFO",  "ATD123;",
                                                "AT+CMGL=4", "AT+CGDCONT?", "ATE0",     "AT+CNUM;+CSQ"};
    Choices choices({data, size});
    const auto &families = host::family::kRows;
    const Family family = families[choices.below(families.size())].family;
    const char *const known = kCommands[choices.below(std::size(kCommands))];
    const std::string command = choices.oneIn(4) ? choices.text() : known;
    const std::string late = choices.oneIn(8) ? kCommands[choices.below(std::size(kCommands))] : "";
    const size_t piece = 1 + choices.below(16);
    const std::string bytes = choices.rest();

    for (const bool isEchoed : {false, true}) {
        Client whole(command, late, family, isEchoed);
        Client cut(command, late, family, isEchoed);
        requireTheSame(whole, cut, bytes, piece);
    }
    return 0;
}
