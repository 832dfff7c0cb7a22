#include "host/at_server/reply_collector.h"

#include <utility>

#include "host/at/text.h"
#include "host/at_server/line_noise.h"

namespace host::at_server {
namespace {

/** Lines of one reply that are kept; what the library can take is far less. */
constexpr size_t kMaxReply = LineReader::kMaxLine;

bool isSameLine(std::string_view one, std::string_view other)
{
    return at::isSameWithoutCase(at::withoutBlanksBehind(one), at::withoutBlanksBehind(other));
}

} // namespace

ReplyCollector::ReplyCollector(Listener &listener)
    : listener_(listener), reader_([this](const Line &line) { take(line); })
{
}

void ReplyCollector::expectNothing()
{
    mode_ = Mode::Nothing;
    command_.clear();
    late_.clear();
    awaitsEcho_ = false;
    isInLateReply_ = false;
    forgetEarly();
    forgetReply();
    reader_.expectEcho({});
    reader_.honourQuotes(true);
}

void ReplyCollector::expectReply(std::string_view command, bool isEchoed)
{
    expectNothing();
    mode_ = Mode::Reply;
    command_ = command;
    awaitsEcho_ = isEchoed;
    lateLines_.sent(command);
    reader_.expectEcho(command);
}

void ReplyCollector::expectLateReplies(std::string_view command, std::string_view late)
{
    const std::string kept(late); // which may be our own text
    expectNothing();
    mode_ = Mode::LateReplies;
    command_ = command;
    late_ = kept;
    lateLines_.missed(kept);
    lateLines_.missed(command_); // its echo may be late
    reader_.expectEcho(command);
    reader_.honourQuotes(false);
}

void ReplyCollector::endMiddle()
{
    const std::string dropped = reader_.dropLine();
    if (!dropped.empty()) listener_.onLine(dropped, LineIs::Discarded);
    tellReport();
}

void ReplyCollector::take(const Line &line)
{
    if (takeReportText(line.text, line.raw) || line.text.empty()) return;
    if (isNoise(line.text)) {
        listener_.onLine(line.raw, LineIs::Discarded);
        return;
    }
    const std::string_view text = withoutNoise(line.text, asker());
    if (takeEcho(text, line.raw)) return;
    takeWords(
        {numericResults_.inWords(text, command_, mode_ == Mode::LateReplies), line.raw, line.isPrompt, line.isTooLong});
}

void ReplyCollector::takeWords(const Line &line)
{
    if (line.isPrompt || (!line.isTooLong && resultKind(line.text, asker()) != ResultKind::None)) {
        takeResult(line.isPrompt ? line.text : at::withoutBlanksBehind(line.text), line.raw);
        return;
    }
    switch (const LineUse use = useOf(line)) {
    case LineUse::Reply:
        takeBody(line);
        break;
    case LineUse::Foreign:
        takeForeign(line);
        break;
    default:
        takeReport(use, line.text, line.raw);
    }
}

LineUse ReplyCollector::useOf(const Line &line) const
{
    if (line.isTooLong) return LineUse::Reply;
    if (lateLines_.isLate(line.text, asker())) return LineUse::Foreign;
    const LineUse use = lineUse(line.text, asker());
    return use == LineUse::Foreign && lateLines_.isReport(line.text) ? LineUse::Report : use;
}

/** @return whether the line is the echo of the command, or of the one whose reply may still come */
bool ReplyCollector::takeEcho(std::string_view text, std::string_view raw)
{
    const bool isOwn = isSameLine(text, command_);
    const bool isFirst = reply_.lines.empty() || awaitsEcho_;
    const bool isEcho = !command_.empty() && isFirst && (isOwn || isSameLine(text, late_));
    if (!isEcho) return false;
    listener_.onLine(raw, LineIs::Echo);
    if (awaitsEcho_) {
        awaitsEcho_ = false;
        forgetEarly();
        forgetReply();
    }
    isInLateReply_ = false;
    reply_.isEchoed = isOwn;
    return true;
}

/** @return whether the line belongs to a report */
bool ReplyCollector::takeReportText(std::string_view text, std::string_view raw)
{
    if (report_.empty()) return false;
    const bool isText = !awaitsPdu_ || isPdu(text);
    if (awaitsPdu_ && text.empty()) return false;
    if (isText) {
        listener_.onLine(raw, LineIs::Report);
        report_.emplace_back(text);
    }
    tellReport();
    return isText;
}

void ReplyCollector::takeResult(std::string_view text, std::string_view raw)
{
    if (mode_ == Mode::Nothing) {
        listener_.onLine(raw, LineIs::Discarded);
        listener_.onStray(text);
        return;
    }
    const bool isLeft = isConnect(text) || text == kPrompt;
    const bool isOfLateReply = !isLeft && std::exchange(isInLateReply_, false);
    if (awaitsEcho_ || isOfLateReply) {
        listener_.onLine(raw, LineIs::Discarded);
        if (awaitsEcho_) takeEarlyResult(text);
        return;
    }
    const bool isLate = mode_ == Mode::LateReplies;
    listener_.onLine(raw, LineIs::Reply);
    settleDoubts(text == "OK");
    Reply reply = std::exchange(reply_, {});
    reply.result = text;
    if (isLate)
        forgetReply();
    else
        expectNothing();
    listener_.onReply(std::move(reply));
}

void ReplyCollector::takeEarlyResult(std::string_view text)
{
    constexpr size_t kEnoughToBeAmbiguous = 2;
    Reply early = std::exchange(reply_, {});
    early.result = text;
    replySize_ = 0;
    if (early_.size() < kEnoughToBeAmbiguous) early_.push_back(std::move(early));
    listener_.onEarly(text);
}

std::optional<Reply> ReplyCollector::takeEarly()
{
    const bool isClear = early_.size() == 1 && !isEarlyForeign_;
    return isClear ? std::optional(std::move(early_.front())) : std::nullopt;
}

void ReplyCollector::forgetEarly()
{
    early_.clear();
    isEarlyForeign_ = false;
}

void ReplyCollector::takeReport(LineUse use, std::string_view text, std::string_view raw)
{
    const bool isDoubtful =
        use == LineUse::DoubtfulReport && mode_ == Mode::Reply && doubtful_.size() < 16 && !awaitsEcho_;
    listener_.onLine(raw, LineIs::Report);
    if (mode_ == Mode::Nothing) lateLines_.heardAlone(text);
    if (isDoubtful) {
        doubtful_.emplace_back(text);
        return;
    }
    report_ = {withBlank(text)};
    awaitsPdu_ = use == LineUse::ReportWithPdu;
    if (use != LineUse::ReportWithText && use != LineUse::ReportWithPdu) tellReport();
}

void ReplyCollector::takeBody(const Line &line)
{
    if (mode_ != Mode::Reply) {
        takeNothing(line);
        return;
    }
    listener_.onLine(line.raw, awaitsEcho_ ? LineIs::Discarded : LineIs::Reply);
    replySize_ += line.text.size() + 2;
    if (line.isTooLong || replySize_ > kMaxReply) reply_.isTooLong = true;
    if (reply_.isTooLong)
        reply_.lines.clear();
    else
        reply_.lines.emplace_back(line.text);
}

void ReplyCollector::takeNothing(const Line &line)
{
    reply_.isEchoed = false; // what asks for agreement is not answered by lines
    listener_.onLine(line.raw, LineIs::Discarded);
}

/** What belongs to an earlier command takes the next final result along; anything else ends the command that runs. */
void ReplyCollector::takeForeign(const Line &line)
{
    if (mode_ != Mode::Reply || awaitsEcho_) {
        takeNothing(line);
        isEarlyForeign_ = true;
        return;
    }
    listener_.onLine(line.raw, LineIs::Discarded);
    if (lateLines_.isLate(line.text, command_))
        isInLateReply_ = true;
    else
        listener_.onForeign();
}

void ReplyCollector::tellReport()
{
    if (report_.empty()) return;
    const auto lines = std::exchange(report_, {});
    listener_.onReport(lines);
}

/** A read command without a line in its reply has been answered by the first line that looked like a report. */
void ReplyCollector::settleDoubts(bool isOk)
{
    const auto doubtful = std::exchange(doubtful_, {});
    size_t firstReport = 0;
    const bool lacksLine = isOk && reply_.lines.empty() && !reply_.isTooLong;
    if (lacksLine && !doubtful.empty()) reply_.lines.push_back(doubtful[firstReport++]);
    for (size_t i = firstReport; i < doubtful.size(); ++i)
        listener_.onReport({withBlank(doubtful[i])});
}

void ReplyCollector::forgetReply()
{
    for (const std::string &line : std::exchange(doubtful_, {}))
        listener_.onReport({withBlank(line)});
    reply_ = {};
    replySize_ = 0;
}

} // namespace host::at_server
