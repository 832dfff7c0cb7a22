#include "tests/road/replies/road.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <utility>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace replies {
namespace {

/** Answers as a row says, on the modem's thread. */
class RowModem {
  public:
    explicit RowModem(Row row) : row_(std::move(row)) {}

    std::string answer(const std::string &command)
    {
        const std::string folded = row_.foldedCommand(command);
        const auto said = row_.say.find(folded);
        std::string reply = row_.otherwise;
        if (said != row_.say.end())
            reply = chosen(folded, said->second);
        else if (folded == "AT" || folded == "ATE0" || folded == "AT+CMEE=2")
            reply = "\r\nOK\r\n";
        past_.push_back(folded);
        return octets(row_.echoes ? command + '\r' + reply : reply);
    }

  private:
    std::string chosen(const std::string &command, const Json &reply)
    {
        if (reply.is_string()) return reply.get<std::string>();
        if (reply.is_array()) {
            const auto turn = static_cast<size_t>(std::count(past_.begin(), past_.end(), command));
            return reply.at(std::min(turn, reply.size() - 1)).get<std::string>();
        }
        constexpr std::string_view kAfter = "after ";
        std::string text = reply.at("first").get<std::string>();
        size_t lastAt = 0;
        for (const auto &[key, behind] : reply.items()) {
            if (key.rfind(kAfter, 0) != 0) continue;
            const auto found = std::find(past_.rbegin(), past_.rend(), row_.foldedCommand(key.substr(kAfter.size())));
            const auto at = static_cast<size_t>(past_.rend() - found);
            if (at <= lastAt) continue;
            lastAt = at;
            text = behind.get<std::string>();
        }
        return text;
    }

    Row row_;
    std::vector<std::string> past_;
};

/** The JSON objects of a text, in their order; what stands between them is passed over. */
std::vector<Json> objectsIn(const std::string &text)
{
    std::vector<Json> objects;
    size_t at = text.find('{');
    while (at != std::string::npos) {
        int depth = 0;
        bool isQuoted = false;
        size_t end = at;
        for (; end < text.size(); ++end) {
            if (text[end] == '\\' && isQuoted) {
                ++end;
                continue;
            }
            if (text[end] == '"') isQuoted = !isQuoted;
            if (!isQuoted && text[end] == '{') ++depth;
            if (!isQuoted && text[end] == '}' && --depth == 0) break;
        }
        if (end >= text.size()) break;
        const Json object = Json::parse(text.substr(at, end + 1 - at), nullptr, false);
        if (object.is_object()) objects.push_back(object);
        at = text.find('{', end + 1);
    }
    return objects;
}

std::vector<Json> eventsIn(const std::string &output)
{
    std::vector<Json> events;
    for (const Json &object : objectsIn(output))
        if (object.contains("data") && object["data"].value("event", "") != "port") events.push_back(object["data"]);
    return events;
}

/** One modem whatever is copied, since it remembers what it was asked. */
ScriptedModem::Answer answersOf(const Row &row)
{
    return [modem = std::make_shared<RowModem>(row)](const std::string &command) { return modem->answer(command); };
}

std::vector<std::string> commandOf(const Row &row)
{
    std::vector<std::string> command{KRCTL, "-J"};
    command.insert(command.end(), row.run.begin(), row.run.end());
    return command;
}

} // namespace

Road::Road(const std::string &family, const Row &first)
    : modem_(directory_ / "modem", answersOf(first)),
      server_({KR_AT_SERVER_PROGRAM, "--device", directory_ / "modem", "--socket", directory_ / "at.sock", "--family",
               family, "--quiet-ms", "20", "--answer-ms", "300", "--code-wait-ms", "1"})
{
    EXPECT_TRUE(server_.waitForErrors("ready on ")) << server_.errors();
}

void Road::takeModemOf(const Row &row)
{
    modem_.answerWith(answersOf(row));
    heardBefore_ = modem_.heard().size();
}

std::vector<std::string> Road::heardOfRow() const
{
    const auto all = modem_.heard();
    return {all.begin() + static_cast<ptrdiff_t>(heardBefore_), all.end()};
}

Said Road::travel(const Row &row)
{
    takeModemOf(row);
    processes::Child krctl(commandOf(row), {{"KR_AT_SERVER", directory_ / "at.sock"}, {"KR_PLATFORM", ""}});
    return row.reports.empty() ? run(row, krctl) : listen(row, krctl);
}

Said Road::run(const Row &row, processes::Child &krctl)
{
    if (row.input) krctl.write(*row.input);
    Said said;
    const int status = krctl.wait();
    for (const Json &object : objectsIn(krctl.output())) {
        if (!object.contains("data")) continue;
        said.data = object["data"];
        break;
    }
    for (const Json &object : objectsIn(krctl.errors()))
        if (object.contains("error") && !said.data.contains("error")) said.data["error"] = object["error"];
    said.data["exit"] = status;
    said.sent = heardOfRow();
    return said;
}

/** Sends the reports once krctl waits for some. Should it not have done so yet, they are sent again: time alone decides
 *  nothing but how long a row that is wrong takes. */
Said Road::listen(const Row &row, processes::Child &krctl)
{
    constexpr int kTimes = 2;
    constexpr auto kPatience = 1s;
    constexpr auto kQuiet = 100ms;
    const auto isSwitchedOn = [this] {
        const auto heard = heardOfRow();
        return std::any_of(heard.begin(), heard.end(),
                           [](const std::string &command) { return command.find("=2") != std::string::npos; });
    };
    const auto until = std::chrono::steady_clock::now() + kPatience;
    while (!isSwitchedOn() && std::chrono::steady_clock::now() < until)
        krctl.readFor(10ms);
    for (size_t heard = 0; heard != modem_.heard().size();) {
        heard = modem_.heard().size();
        krctl.readFor(kQuiet);
    }

    Said said;
    for (int i = 0; i < kTimes && (i == 0 || !differences(row, said).empty()); ++i) {
        const size_t before = eventsIn(krctl.output()).size();
        for (const std::string &report : row.reports)
            modem_.write(octets(report));
        const auto end = std::chrono::steady_clock::now() + kPatience;
        do {
            krctl.readFor(10ms);
            const auto events = eventsIn(krctl.output());
            said.data["events"] = std::vector<Json>(events.begin() + static_cast<ptrdiff_t>(before), events.end());
            said.sent = heardOfRow();
        } while (!differences(row, said).empty() && std::chrono::steady_clock::now() < end);
    }
    krctl.signal(SIGINT);
    krctl.wait();
    return said;
}

} // namespace replies
