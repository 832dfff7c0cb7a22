#ifndef TESTS_SUPPORT_PLAIN_PORT_ROUND_H
#define TESTS_SUPPORT_PLAIN_PORT_ROUND_H

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/plain_port/dice.h"
#include "tests/support/plain_port/replies.h"
#include "tests/support/plain_port/world.h"

namespace plain {

/** One call of the library and the same one of the port: the same arguments at the same addresses, the same globals, the
 *  same answers of the host. */
class Round {
  public:
    explicit Round(uint32_t seed);
    explicit Round(Choices &made);

    Dice dice;
    Replies replies;
    Globals start; ///< what both find

    /** Memory that both find filled alike, which ends where nothing is mapped. It is compared after the call. */
    char *memory(size_t size);
    /** The same with a content of its own. */
    char *memory(const std::string &content);
    /** The same with a text and its terminator. */
    char *text(const std::string &content) { return memory(content + '\0'); }

    template <typename Result, typename... Parameters, typename... Arguments>
    void run(Result (*library)(Parameters...), Result (*port)(World &, Parameters...), const Arguments &...arguments)
    {
        const auto libraryCall = [&] { return static_cast<int64_t>(library(arguments...)); };
        const auto portCall = [&](World &world) { return static_cast<int64_t>(port(world, arguments...)); };
        compare(libraryCall, portCall);
    }

    /** What differed, in words; empty if nothing did. */
    std::string difference;
    [[nodiscard]] std::string script() const;

    size_t statedSize = 0; ///< of the next buffer

  private:
    struct Area {
        char *data;
        size_t size;
        std::string before;
        std::string afterLibrary;
    };

    void compare(const std::function<int64_t()> &library, const std::function<int64_t(World &)> &port);
    void compareAreas(const World &world);
    Answer answer(size_t number, const std::string &call);

    std::vector<Area> areas_;
    std::vector<std::pair<std::string, Answer>> script_;
    Replies answers_;
};

/** Readable, control characters and markers escaped. */
std::string escaped(const std::string &text);

} // namespace plain

#endif
