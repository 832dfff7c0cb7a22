/** A recorded dialogue that answers in the place of the modem. */
#ifndef SIMULATOR_REPLAY_H
#define SIMULATOR_REPLAY_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

class Replay {
  public:
    struct Piece {
        int64_t atMs = 0; ///< after the command, or after the beginning
        std::string bytes;
    };
    /** What followed a command: up to its final result, and behind it. */
    struct Answer {
        std::vector<Piece> reply;
        std::vector<Piece> later;
    };
    struct Exchange {
        std::string command; ///< asterisks stand for one character each
        Answer answer;
    };

    /** What the modem said before the first command. */
    const std::vector<Piece> &opening() const { return opening_; }
    /** Of the next exchange with this command, from the last one on and round; ERROR if there is none. */
    Answer answer(std::string_view line);

    bool hasCommands() const { return !exchanges_.empty(); }

    void addCommand(std::string command);
    void addOutput(int64_t atMs, std::string bytes); ///< after the last command

  private:
    std::vector<Piece> opening_;
    std::vector<Exchange> exchanges_;
    bool hasFinal_ = false; ///< the last exchange has had its final result
    size_t next_ = 0;
};

} // namespace simulator

#endif
