/** Lines that come too late or twice: what commands may still be answered with that nobody waits for any more. And names
 *  that a modem reports by itself, though no table has them. */
#ifndef HOST_AT_SERVER_LATE_LINES_H
#define HOST_AT_SERVER_LATE_LINES_H

#include <deque>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace host::at_server {

class LateLines {
  public:
    /** For a modem of which nothing is to come, as when its port has been opened. */
    void forget() { *this = LateLines(); }

    /** A command goes out; the one before it may have been answered twice. */
    void sent(std::string_view command);
    /** A command has ended without its reply, which may come at any time from now on. */
    void missed(std::string_view command);
    /** Nothing runs, and a line has come that no table knows. */
    void heardAlone(std::string_view line);

    /** Whether a line belongs to the reply of a command that has ended, or is its echo.
     *  @param command  that runs, whose lines are not late; empty if none does */
    bool isLate(std::string_view line, std::string_view command) const;
    /** Whether a modem has told the name of a line by itself, and nobody has asked for it. */
    bool isReport(std::string_view line) const;

    /** Hands on all that its future depends on, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(last_.echo, previous_.echo, asked_, reported_);
        for (const Ended &command : missed_)
            visit(command.echo);
    }

  private:
    /** A command of which something may still come; its parameters, which may be secret, are not kept. */
    struct Ended {
        std::string names; ///< a command line with the same names and forms
        size_t echo = 0;   ///< a hash of what its echo says

        bool mayHaveSent(std::string_view line) const;
    };

    static Ended ended(std::string_view command);
    bool wasAsked(std::string_view name) const;

    Ended last_;
    Ended previous_;
    std::deque<Ended> missed_;
    std::vector<std::string> asked_; ///< names, each once
    std::set<std::string, std::less<>> reported_;
};

} // namespace host::at_server

#endif
