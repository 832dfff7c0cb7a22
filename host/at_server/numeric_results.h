/** Final results as numbers (V.250 5.7, ATV0). A line of one digit may also be what a command is answered by, so numbers are
 *  taken for results only where the modem was found to speak so: a bare "AT" is answered by nothing but a result. */
#ifndef HOST_AT_SERVER_NUMERIC_RESULTS_H
#define HOST_AT_SERVER_NUMERIC_RESULTS_H

#include <string_view>

namespace host::at_server {

class NumericResults {
  public:
    /** A line, or the words of the result that its number stands for.
     *  @param command  that runs
     *  @param isAgreement  it is the bare "AT" of the agreement */
    std::string_view inWords(std::string_view line, std::string_view command, bool isAgreement);

    /** Hands on all that its future depends on, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(isSpoken_);
    }

  private:
    bool isSpoken_ = false;
};

} // namespace host::at_server

#endif
