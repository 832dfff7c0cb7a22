/** Which lines of a modem are unsolicited reports, and which belong to the reply of the command that runs. */
#ifndef HOST_AT_SERVER_REPORTS_H
#define HOST_AT_SERVER_REPORTS_H

#include <string_view>

namespace host::at_server {

enum class LineUse {
    Reply, ///< not a report
    Report,
    ReportWithText, ///< the next line, whatever it says, is its text
    ReportWithPdu,  ///< the next line is its PDU, if it is hexadecimal
    /** A report by its look, under the name of the command that runs. It belongs to the reply if that has no better
     *  line in the end. */
    DoubtfulReport,
    Foreign, ///< nothing that this command is answered by, and no report that is known
};

/** @param command  that runs; empty if none does, and then every named line is a report */
LineUse lineUse(std::string_view line, std::string_view command);

/** Whether a text of several lines can stand in the quotes of a line: not in those of reports and replies that carry names,
 *  codes and numbers, which end with their line even if a quote is open. */
bool mayBreakInQuotes(std::string_view line);

bool isPdu(std::string_view line);

} // namespace host::at_server

#endif
