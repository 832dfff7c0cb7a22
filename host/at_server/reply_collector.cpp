#include "host/at_server/reply_collector.h"

#include <utility>

#include "host/at/text.h"

namespace host::at_server {
namespace {

/** Lines of one reply that are kept; what the library can take is far less. */
constexpr size_t kMaxReply = LineReader::kMaxLine;

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
    forgetReply();
    reader_.expectEcho({});
    reader_.honourQuotes(true);
}

void ReplyCollector::expectReply(std::string_view command)
{
    expectNothing();
    mode_ = Mode::Reply;
    command_ = command;
    reader_.expectEcho(command);
}

void ReplyCollector::expectLateReplies(std::string_view command, std::string_view late)
{
    const std::string kept(late); // which may be our own text
    expectReply(command);
    mode_ = Mode::LateReplies;
    late_ = kept;
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
    const std::string_view asker = late_.empty() ? std::string_view(command_) : late_;
    const bool isEcho = !command_.empty() && reply_.lines.empty() && (line.text == command_ || line.text == late_);
    if (isEcho) {
        listener_.onLine(line.raw, LineIs::Echo);
    } else if (line.isPrompt || (!line.isTooLong && resultKind(line.text, asker) != ResultKind::None)) {
        takeResult(line.isPrompt ? line.text : at::withoutBlanksBehind(line.text), line.raw);
    } else if (const LineUse use = lineUse(line.text, asker); use != LineUse::Reply && !line.isTooLong) {
        takeReport(use, line.text, line.raw);
    } else {
        takeBody(line);
    }
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

void ReplyCollector::takeReport(LineUse use, std::string_view text, std::string_view raw)
{
    const bool isDoubtful = use == LineUse::DoubtfulReport && mode_ == Mode::Reply && doubtful_.size() < 16;
    listener_.onLine(raw, LineIs::Report);
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
        listener_.onLine(line.raw, LineIs::Discarded);
        return;
    }
    listener_.onLine(line.raw, LineIs::Reply);
    replySize_ += line.text.size() + 2;
    if (line.isTooLong || replySize_ > kMaxReply) reply_.isTooLong = true;
    if (reply_.isTooLong)
        reply_.lines.clear();
    else
        reply_.lines.emplace_back(line.text);
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
