/** A modem that may do to a command whatever modems were seen to do: answer at once, late, twice, never, in the middle of
 *  another reply, or pass it over. Who explores decides each time. */
#ifndef TESTS_HOST_AT_SERVER_EXPLORATION_MODEM_MODEL_H
#define TESTS_HOST_AT_SERVER_EXPLORATION_MODEM_MODEL_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace exploration {

/** What a command is answered by. */
struct Answer {
    std::string lines; ///< each closed by its line end
    std::string result;
};

class ModemModel {
  public:
    static constexpr size_t kMaxOwed = 2;
    /** In place of the number of a client's command. */
    static constexpr int kQuestion = -1; ///< of the server
    static constexpr int kDuplicate = -2;

    explicit ModemModel(bool canEcho) : canEcho_(canEcho) {}

    /** A command line has come. Each is heard once, in their order.
     *  @param number  of the client's command, or kQuestion */
    void hear(std::string_view line, int number, Answer answer);

    bool hasHeard() const { return !heard_.empty(); }
    size_t owed() const { return owed_.size(); }
    bool canOwe() const { return owed_.size() < kMaxOwed; }
    /** Of the server, that have no answer yet. */
    size_t questions() const;

    // What it does with the first that it has heard: the bytes that it sends
    std::string answer();
    std::string answerTwiceInTime(); ///< and once more later
    std::string answerLater();       ///< repeats it, and answers later
    std::string beginAnswer();       ///< has more to send later
    std::string passOver();          ///< repeats it, and never answers
    void miss();                     ///< has not heard it

    void loseEcho() { isEchoOn_ = false; }

    struct Owed {
        int number; ///< of the command that it belongs to, which has no answer without it, or kDuplicate
        std::string text;
        bool isBare; ///< a result alone
    };
    Owed takeOwed(size_t which);
    void forgetOwed() { owed_.clear(); }

    /** The command that it answers next, and whether by a result alone. */
    int next() const { return heard_.front().number; }
    bool isNextBare() const { return heard_.front().answer.lines.empty(); }
    /** Whether it has begun with a command. */
    bool hasTaken(int number) const;

    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(isEchoOn_, heard_.size());
        for (const Heard &one : heard_)
            visit(one.line, one.number);
        for (const Owed &one : owed_)
            visit(one.text, one.number);
    }

  private:
    struct Heard {
        std::string line;
        int number;
        Answer answer;
    };

    void owe(int number, const Answer &answer);
    std::string takeEcho();
    Heard takeFirst();

    const bool canEcho_;
    bool isEchoOn_ = false;
    std::vector<Heard> heard_;
    std::vector<Owed> owed_;
};

} // namespace exploration

#endif
