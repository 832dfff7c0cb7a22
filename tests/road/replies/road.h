/** Scripted modem, server and krctl of one family. */
#ifndef TESTS_ROAD_REPLIES_ROAD_H
#define TESTS_ROAD_REPLIES_ROAD_H

#include <memory>
#include <string>

#include "tests/host/at_server/scripted_modem.h"
#include "tests/processes/child_process.h"
#include "tests/road/replies/expectation.h"

namespace replies {

class Road {
  public:
    Road(const std::string &family, const Row &first);

    /** What krctl says of the modem of a row. */
    Said travel(const Row &row);

  private:
    void takeModemOf(const Row &row);
    std::vector<std::string> heardOfRow() const;
    Said run(const Row &row, processes::Child &krctl);
    Said listen(const Row &row, processes::Child &krctl);

    processes::ScratchDirectory directory_;
    ScriptedModem modem_;
    size_t heardBefore_ = 0; ///< commands of earlier rows
    processes::Child server_;
};

} // namespace replies

#endif
