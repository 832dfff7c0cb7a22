#include "tests/host/at_server/exploration/world.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace std::chrono_literals;

namespace exploration {
namespace {

using host::at_server::Command;
using host::at_server::Dialogue;
using host::at_server::Outcome;
using host::protocol::Cause;

constexpr std::chrono::milliseconds kTimeout{5000};
constexpr std::chrono::milliseconds kLongest{60000}; ///< that any command may wait, be it with others before it
constexpr size_t kMaxReports = 1;

constexpr std::string_view kOk = "\r\nOK\r\n";
constexpr std::string_view kReport = "\r\n+CREG: 5\r\n";

const std::array kScripts{
    Script{"names", {"AT+AAA=0", "AT+BBB=1", "AT+CCC=2"}},
    Script{"results", {"AT+SET=0", "AT+AAA=1", "AT+SET=2"}},
    Script{"numbers", {"AT+CIMI", "AT+CCID", "AT+CSQ"}},
};

std::string padded(size_t number, size_t length)
{
    const std::string digits = std::to_string(number + 1);
    return "\r\n" + std::string(length - digits.size(), '0') + digits + "\r\n";
}

/** What a modem says to a command, which no other is answered by. */
Answer answerTo(std::string_view text, size_t number)
{
    const std::string digits = std::to_string(number);
    if (text.substr(0, 6) == "AT+SET") return {"", "\r\n+CME ERROR: 70" + digits + "\r\n"};
    if (text == "AT+CIMI") return {padded(number, 15), std::string(kOk)};
    if (text == "AT+CCID") return {padded(number, 20), std::string(kOk)};
    if (text == "AT+CGMI") return {"\r\nMaker\r\n", std::string(kOk)};
    const std::string name(text.substr(2, 4));
    if (name.size() == 4) return {"\r\n" + name + ": " + digits + "\r\n", std::string(kOk)};
    return {"", std::string(kOk)};
}

/** Whether all lines of a reply but its result are such as a command is answered by, whichever of its kind it was. */
bool isOfKind(const std::string &reply, const Answer &own)
{
    const auto withoutDigits = [](std::string text) {
        std::replace_if(
            text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }, '#');
        return text;
    };
    const std::string kind = withoutDigits(own.lines.substr(own.lines.empty() ? 0 : 2));
    std::string left = withoutDigits(reply.substr(0, reply.rfind("\r\n", reply.size() - 3)));
    if (left.empty()) return true;
    for (left.erase(0, 2); !left.empty() && !kind.empty() && left.compare(0, kind.size(), kind) == 0;)
        left.erase(0, kind.size());
    return left.empty();
}

} // namespace

std::span<const Script> allScripts()
{
    return kScripts;
}

std::string_view nameOf(Action action)
{
    constexpr std::array<std::string_view, kActions> kNames{"a client sends a command",
                                                            "a client withdraws a command",
                                                            "time goes on",
                                                            "the modem answers",
                                                            "the modem answers twice",
                                                            "the modem repeats the command and answers later",
                                                            "the modem begins to answer",
                                                            "the modem repeats the command and never answers",
                                                            "the modem misses the command",
                                                            "the modem echoes no more",
                                                            "the modem sends what it owes",
                                                            "the modem sends the other that it owes",
                                                            "the modem reports"};
    return kNames[static_cast<size_t>(action)];
}

World::World(const Script &script, bool canEcho)
    : script_(script), canEcho_(canEcho), modem_(canEcho), dialogue_(time_, {}, calls())
{
    dialogue_.portOpened();
    for (int i = 0; i < 20 && (time_.isAnythingSet() || modem_.hasHeard()); ++i)
        perform(modem_.hasHeard() ? Action::Answer : Action::MoveOn);
    if (canEcho_ && !dialogue_.isEchoEvidence()) violate("the echo is not known");
}

Dialogue::Calls World::calls()
{
    Dialogue::Calls calls;
    calls.send = [this](std::string_view bytes, uint32_t /*client*/) { sent(bytes); };
    calls.isSending = [] { return false; };
    calls.receive = [] {};
    calls.setTerminalReady = [](bool) {};
    calls.report = [this](const std::string &framed) {
        if (framed == kReport && reports_ > 0)
            --reports_;
        else if (!isDuplicate_) // which may look like the report of a name that no table has
            violate("heard as a report: " + framed);
    };
    calls.heard = [](std::string_view, host::at_server::LineIs, std::string_view) {};
    calls.failed = [](std::string_view, std::string_view) {};
    return calls;
}

void World::violate(const std::string &what)
{
    if (violation_.empty()) violation_ = what;
}

// What can happen

size_t World::oldestWaiting() const
{
    const auto found =
        std::find_if(submitted_.begin(), submitted_.end(), [](const Submitted &command) { return !command.isEnded; });
    return static_cast<size_t>(found - submitted_.begin());
}

bool World::isDeviation(Action action)
{
    switch (action) {
    case Action::Submit:
    case Action::MoveOn:
    case Action::Answer:
    case Action::SendOwed:
    case Action::SendOtherOwed:
        return false;
    default:
        return true;
    }
}

bool World::isPossible(Action action, bool freely) const
{
    if (isDeviation(action) && !freely) return false;
    switch (action) {
    case Action::Submit:
        return begun_ < script_.commands.size();
    case Action::Withdraw:
        return oldestWaiting() < submitted_.size();
    case Action::MoveOn:
        return time_.isAnythingSet();
    case Action::Answer:
    case Action::PassOver:
    case Action::Miss:
        return modem_.hasHeard();
    case Action::AnswerTwice:
    case Action::AnswerLater:
    case Action::BeginAnswer:
        return modem_.hasHeard() && modem_.canOwe();
    case Action::LoseEcho:
        return canEcho_ && !isEchoLost_;
    case Action::SendOwed:
        return modem_.owed() > 0;
    case Action::SendOtherOwed:
        return modem_.owed() > 1;
    case Action::Report:
        return reportsSent_ < kMaxReports;
    }
    return false;
}

void World::perform(Action action)
{
    const bool isOvertaken = modem_.owed() > 0 && action == Action::Answer;
    if (isOvertaken || action == Action::AnswerTwice || action == Action::SendOtherOwed) isInOrder_ = false;
    switch (action) {
    case Action::Submit:
        submit(script_.commands[begun_], 1 + begun_ % 2);
        ++begun_;
        break;
    case Action::Withdraw: {
        Submitted &command = submitted_[oldestWaiting()];
        command.isEnded = true;
        dialogue_.withdraw(command.ticket);
        break;
    }
    case Action::MoveOn:
        moveOn();
        break;
    case Action::Answer:
    case Action::AnswerTwice: {
        const int number = modem_.next();
        const bool isBare = modem_.isNextBare();
        sayAnswer(action == Action::Answer ? modem_.answer() : modem_.answerTwiceInTime(), number, isBare);
        break;
    }
    case Action::AnswerLater:
        say(modem_.answerLater(), false);
        break;
    case Action::BeginAnswer:
        say(modem_.beginAnswer(), false);
        break;
    case Action::PassOver:
        say(modem_.passOver(), false);
        break;
    case Action::Miss:
        modem_.miss();
        break;
    case Action::LoseEcho:
        isEchoLost_ = true;
        modem_.loseEcho();
        for (Submitted &command : submitted_)
            command.isClean = command.isClean && command.wasAlone;
        break;
    case Action::SendOwed:
        sayOwed(0);
        break;
    case Action::SendOtherOwed:
        sayOwed(1);
        break;
    case Action::Report:
        ++reports_;
        ++reportsSent_;
        say(std::string(kReport), false);
        break;
    }
}

void World::moveOn()
{
    if (modem_.questions() > 0) ++slowAnswers_;
    StateWriter before;
    dialogue_.state(before);
    for (int i = 0; i < 64 && time_.isAnythingSet(); ++i) {
        time_.moveOn();
        StateWriter after;
        dialogue_.state(after);
        if (after.bytes() != before.bytes()) return;
    }
}

// Clients

void World::submit(std::string_view text, uint64_t session)
{
    const size_t number = submitted_.size();
    submitted_.emplace_back();
    submitted_.back().text = text;
    submitted_.back().submittedAt = time_.now();
    Command command;
    command.text = text;
    command.timeoutMs = static_cast<uint32_t>(kTimeout.count());
    command.session = session;
    command.done = [this, number](const Outcome &outcome) { ended(number, outcome); };
    const auto ticket = dialogue_.submit(std::move(command));
    submitted_[number].ticket = ticket;
}

void World::ended(size_t number, const Outcome &outcome)
{
    Submitted &command = submitted_[number];
    if (command.isEnded) violate("ended twice, or after it was withdrawn: " + command.text);
    command.isEnded = true;
    if (time_.now() - command.submittedAt > kLongest) violate("took too long: " + command.text);
    if (outcome.cause == Cause::None) checkReply(command, number, outcome.text);
}

void World::checkReply(const Submitted &command, size_t number, const std::string &text)
{
    const Answer own = answerTo(command.text, number);
    if (command.isClean && text != own.lines + own.result) {
        violate(command.text + " has a reply that is not its own: " + text);
        return;
    }
    if (!isOfKind(text, own)) violate(command.text + " has lines of another: " + text);
    const bool isEmpty = !own.lines.empty() && text == kOk;
    if (isEmpty && !command.isDoubtful) violate(command.text + " has the result of another");
}

// The modem

void World::sent(std::string_view bytes)
{
    if (bytes.empty() || bytes.back() != '\r' || bytes.size() == 1) return;
    const std::string_view line = bytes.substr(0, bytes.size() - 1);
    const bool isOfServer = line == "AT" || line == "ATE1" || line == "AT+CGMI";
    if (line == "AT") isAgreementDue_ = false;
    if (isOfServer)
        modem_.hear(line, ModemModel::kQuestion, answerTo(line, 0));
    else
        sentCommand(line);
}

void World::sentCommand(std::string_view line)
{
    const auto command = std::find_if(submitted_.begin(), submitted_.end(), [&](const Submitted &one) {
        return one.text == line && !one.isSent && !one.isEnded;
    });
    const size_t number = static_cast<size_t>(command - submitted_.begin());
    const bool owesNothing = modem_.owed() == 0 && !modem_.hasHeard();
    if (isAgreementDue_) violate("sent, although a result had come that nobody waited for: " + command->text);
    if (!dialogue_.isEchoEvidence() && modem_.questions() > 0 && isInOrder_ && slowAnswers_ < 2)
        violate("sent before the modem has answered what it was asked: " + command->text);
    command->isSent = true;
    command->wasAlone = owesNothing;
    command->isClean = owesNothing || (dialogue_.isEchoEvidence() && !isEchoLost_);
    modem_.hear(line, static_cast<int>(number), answerTo(line, number));
}

void World::say(const std::string &bytes, bool hasResult)
{
    if (hasResult && dialogue_.isAgreed() && !dialogue_.running()) isAgreementDue_ = true;
    dialogue_.received(bytes);
    dialogue_.allReceived();
}

void World::sayAnswer(const std::string &bytes, int number, bool isBare)
{
    for (size_t i = 0; i < submitted_.size(); ++i)
        if (isBare && static_cast<int>(i) != number && submitted_[i].isSent) submitted_[i].isDoubtful = true;
    say(bytes, true);
}

/** Once a command is repeated, nothing shows any more that what follows is not its reply. */
void World::sayOwed(size_t which)
{
    const ModemModel::Owed owed = modem_.takeOwed(which);
    for (size_t i = 0; i < submitted_.size(); ++i) {
        const int number = static_cast<int>(i);
        if (submitted_[i].isSent && owed.number != number && modem_.hasTaken(number)) submitted_[i].isClean = false;
    }
    isDuplicate_ = owed.number == ModemModel::kDuplicate;
    sayAnswer(owed.text, owed.number, owed.isBare);
    isDuplicate_ = false;
}

void World::behave()
{
    modem_.forgetOwed();
    const auto settle = [this] {
        for (int i = 0; i < 200 && violation_.empty(); ++i) {
            if (modem_.hasHeard())
                perform(Action::Answer);
            else if (time_.isAnythingSet())
                perform(Action::MoveOn);
            else
                return;
        }
        violate("does not come to rest");
    };
    settle();
    if (oldestWaiting() < submitted_.size()) violate("never ends: " + submitted_[oldestWaiting()].text);
    if (reports_ > 0) violate("a report was not heard");
    for (int i = 0; i < 2; ++i) {
        const size_t number = submitted_.size();
        submit("AT+PRB=" + std::to_string(number), 1);
        if (modem_.questions() == 0 && !submitted_[number].isSent) violate("a command is not sent at rest");
        settle();
        if (!submitted_[number].isClean) violate("a command has no reply, although the modem behaves");
    }
}

void World::writeState(StateWriter &writer) const
{
    dialogue_.state(writer);
    time_.state(writer);
    modem_.state(writer);
    writer(begun_, reports_, reportsSent_, std::min<size_t>(slowAnswers_, 2), isInOrder_, isEchoLost_, isAgreementDue_);
    for (const Submitted &command : submitted_)
        writer(command.isSent, command.isEnded, command.isClean, command.wasAlone, command.isDoubtful);
}

} // namespace exploration
