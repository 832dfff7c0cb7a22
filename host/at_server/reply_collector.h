/** From the bytes of a modem to replies and reports: lines are told apart by the command that runs. No I/O. */
#ifndef HOST_AT_SERVER_REPLY_COLLECTOR_H
#define HOST_AT_SERVER_REPLY_COLLECTOR_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/at_server/late_lines.h"
#include "host/at_server/line_reader.h"
#include "host/at_server/numeric_results.h"
#include "host/at_server/reply.h"
#include "host/at_server/reports.h"

namespace host::at_server {

/** What a line turned out to be. */
enum class LineIs { Echo, Reply, Report, Discarded };

class ReplyCollector {
  public:
    class Listener {
      public:
        Listener() = default;
        Listener(const Listener &) = delete;
        Listener &operator=(const Listener &) = delete;
        virtual ~Listener() = default;
        /** A final result has come, with the lines before it. */
        virtual void onReply(Reply &&reply) = 0;
        /** A final result that nobody waits for. */
        virtual void onStray(std::string_view result) = 0;
        /** A final result before the echo behind which the reply comes. */
        virtual void onEarly(std::string_view result) = 0;
        /** A line that the command which runs is not answered by, and nothing else either. */
        virtual void onForeign() = 0;
        /** @param lines  one, or two if a text belongs to it; with a blank behind the name's colon */
        virtual void onReport(const std::vector<std::string> &lines) = 0;
        /** Each line but empty ones, before what follows from it. */
        virtual void onLine(std::string_view raw, LineIs what) = 0;
    };

    explicit ReplyCollector(Listener &listener);

    /** Nothing runs: named lines are reports, others are discarded. */
    void expectNothing();
    /** A command is about to be sent. After its final result nothing is expected any more.
     *  @param isEchoed  its reply begins behind its echo, and what comes before that is none of it */
    void expectReply(std::string_view command, bool isEchoed = false);
    /** Final results of commands that nobody waits for: their lines are discarded, and each is told.
     *  @param command  whose echo may come
     *  @param late  another one whose reply may still come, at any time; it tells its lines from reports */
    void expectLateReplies(std::string_view command, std::string_view late);
    /** No replies of earlier commands can come any more. */
    void forgetLateReplies() { lateLines_.forget(); }
    /** Whether the echo is still to come behind which the reply begins. */
    bool awaitsEcho() const { return awaitsEcho_; }
    bool hasEarly() const { return !early_.empty(); }
    /** What would be the reply if there were no echo: the one that has come before it. */
    std::optional<Reply> takeEarly();

    void feed(std::string_view bytes) { reader_.feed(bytes); }

    /** Whether a line has begun and not ended, or a report's text is awaited. */
    bool isInMiddle() const { return reader_.isInLine() || !report_.empty(); }
    /** Discards a line that has not ended, and takes a report whose text has not come without it. */
    void endMiddle();

    /** Hands on all that its future depends on, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(mode_, command_, late_, awaitsEcho_, isInLateReply_, reply_.lines, reply_.isEchoed, reply_.isTooLong,
              doubtful_, report_, awaitsPdu_, early_.size(), isEarlyForeign_);
        reader_.state(visit);
        lateLines_.state(visit);
        numericResults_.state(visit);
    }

  private:
    enum class Mode { Nothing, Reply, LateReplies };

    void take(const Line &line);
    /** The command that tells what a line is: the one whose reply may still come, otherwise the one that runs. */
    std::string_view asker() const { return late_.empty() ? command_ : late_; }
    LineUse useOf(const Line &line) const;
    bool takeEcho(std::string_view text, std::string_view raw);
    void takeWords(const Line &line);
    bool takeReportText(std::string_view text, std::string_view raw);
    void takeResult(std::string_view text, std::string_view raw);
    void takeEarlyResult(std::string_view text);
    void forgetEarly();
    void takeReport(LineUse use, std::string_view text, std::string_view raw);
    void takeBody(const Line &line);
    void takeNothing(const Line &line);
    void takeForeign(const Line &line);
    void tellReport();
    void settleDoubts(bool isOk);
    void forgetReply();

    Listener &listener_;
    LineReader reader_;
    NumericResults numericResults_;
    Mode mode_ = Mode::Nothing;
    std::string command_; ///< whose echo and reply come
    std::string late_;    ///< whose reply may come too
    LateLines lateLines_;
    bool awaitsEcho_ = false;
    bool isInLateReply_ = false; ///< a line of one has come, and its final result is the next
    Reply reply_;
    std::vector<Reply> early_; ///< that have come before the echo
    bool isEarlyForeign_ = false;
    size_t replySize_ = 0;
    std::vector<std::string> doubtful_; ///< reports that the reply takes if it has nothing better
    std::vector<std::string> report_;   ///< the first line of a report whose text is awaited
    bool awaitsPdu_ = false;
};

} // namespace host::at_server

#endif
