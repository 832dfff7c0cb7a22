/** The unsolicited reports that are known by name: all that lib_mainControl reads, the further ones of 3GPP TS 27.007 and
 *  27.005, and those of common modems. */
#ifndef HOST_AT_REPORTS_H
#define HOST_AT_REPORTS_H

#include <cstdint>
#include <span>
#include <string_view>

namespace host::at {

enum class ReportKind : uint8_t {
    Values,       ///< one line of numbers and codes
    Text,         ///< one line with a quoted text, which may have line breaks
    TextLine,     ///< a second line has the text of a message
    Registration, ///< as a report "stat,...", as a reply "n,stat,..."
    Word,         ///< a line of its own, without a colon
};

struct Report {
    std::string_view name; ///< with its sign, if it has one
    ReportKind kind{};
    bool isReadByLibrary = false;
    bool hasBareColon = false; ///< whether readers expect the parameters right behind the colon
};

std::span<const Report> allReports();

/** @return nullptr if there is no such report, or only one that is a word */
const Report *reportNamed(std::string_view name);
/** Whether a line is a report that is a word. */
bool isReportWord(std::string_view line);

} // namespace host::at

#endif
