#ifndef LIB_PUBLIC_ATPREPROCESS_REPORT_PARAMETERS_H
#define LIB_PUBLIC_ATPREPROCESS_REPORT_PARAMETERS_H

#include <cstddef>

#include "lib_public/support/span.h"

namespace mainControl {

/** The parameters behind the prefix of a report or error. */
struct ReportParameters {
    Span text;
    size_t consumed; ///< their length, with the line break that closes them
    bool isClosed;   ///< they end at a line break, or run to the end of the text by right
};
ReportParameters parametersAt(Span reply, const char *start);

/** What parameters of a reply count as consumed. */
size_t consumedBy(Span parameters, Span reply);

/** What follows the parameters of a +CLIP report that is an OK reply in truth. */
constexpr Span kClipEnd = spanOfLiteral("\r\n\r\nOK\r\n");
/** Whether the parameters of a +CLIP report are those of an OK reply.
 *  @param end  of the text that they stand in */
bool isClipReply(Span parameters, const char *end);

} // namespace mainControl

#endif
