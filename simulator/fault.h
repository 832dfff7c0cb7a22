/** What goes wrong on the line: replies that are cut up, late, sloppy, spoilt or incomplete, and ports that vanish. */
#ifndef SIMULATOR_FAULT_H
#define SIMULATOR_FAULT_H

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/** Ways in which modems frame their replies otherwise than they should. */
enum class Sloppiness : uint8_t {
    BareLineFeeds,         ///< LF in the place of CR LF
    DoubledReturns,        ///< CR CR LF
    NoEmptyLineBeforeEnd,  ///< one line break between the last line and the final result
    EmptyLinesBetween,     ///< an empty line between entries
    NoBlankBehindColon,    ///< "+CSQ:20,99"
    TextBehindFinalResult, ///< a line of digits that nobody has asked for
};

/** An offset in a reply; nothing: one that the seed decides. One beyond the reply is its end. */
using Offset = std::optional<size_t>;

struct Insertion {
    Offset offset = 0;
    std::string text;
};

struct Fault {
    std::string command; ///< beginning of the line that it befalls, in any case; empty: every line
    int nth = 0;         ///< only that time, counted from 1; 0: each time
    std::vector<Sloppiness> framing;
    std::vector<size_t> split; ///< offsets at which a new write begins
    int gapMs = 10;            ///< between the writes
    int delayMs = 0;           ///< before the first of them
    bool losesFinal = false;   ///< the final result never comes
    bool echoes = false;       ///< the line stands in front of its reply
    size_t overlongLine = 0;   ///< characters of a line in front of the final result
    size_t garbageBytes = 0;   ///< random bytes above 0x7F
    Offset garbageOffset = 0;
    std::optional<Insertion> report; ///< its text gets its line breaks
    bool unplugs = false;
    Offset unplugOffset = 0;
    int unplugMs = -1; ///< until it is plugged in again; below 0: for good
};

/** A piece of output, and what comes before and after it. */
struct Piece {
    int delayMs = 0; ///< after the piece before it
    std::string bytes;
    bool unplugs = false; ///< behind the bytes
    int unplugMs = -1;
};

class FaultPlan {
  public:
    FaultPlan(std::vector<Fault> faults, uint64_t seed);

    /** Lets the faults of a line befall its reply.
     *  @param reply  in standard framing */
    std::vector<Piece> apply(std::string_view line, std::string reply);

  private:
    struct Counted {
        Fault fault;
        int times = 0;
    };
    bool strikes(Counted &counted, std::string_view line) const;
    void insert(std::string &reply, const Offset &offset, const std::string &text);
    std::string spoil(const Fault &fault, std::string_view line, std::string reply);
    size_t resolve(const Offset &offset, size_t size);

    std::vector<Counted> faults_;
    std::mt19937_64 random_;
};

} // namespace simulator

#endif
