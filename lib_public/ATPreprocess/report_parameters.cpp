#include "lib_public/ATPreprocess/report_parameters.h"

#include "lib_public/support/fast_search.h"

namespace mainControl {
namespace {

/** Whether the parameters of a reply run on to its end, over line breaks: texts and calls from the SIM do. */
bool isMultiLine(Span reply)
{
    // All four names end in a colon, so one walk over the colons finds any of them.
    const char *at = reply.begin;
    while ((at = static_cast<const char *>(std::memchr(at, ':', Span{at, reply.end}.size()))) != nullptr) {
        const Span before{reply.begin, at};
        if (before.endsWith("CBM") || before.endsWith("CMT") || before.endsWith("CDS") || before.endsWith("ZCLAS"))
            return true;
        ++at;
    }
    return false;
}

constexpr size_t kLineBreakLength = 2;

} // namespace

ReportParameters parametersAt(Span reply, const char *start)
{
    const Span rest{start, reply.end};
    if (isMultiLine(reply)) return {rest, rest.size(), true};
    const char *const lineBreak = findLineBreak(rest);
    if (lineBreak == nullptr) return {rest, 0, false};
    const Span parameters{start, lineBreak};
    return {parameters, parameters.size() + kLineBreakLength, true};
}

size_t consumedBy(Span parameters, Span reply)
{
    return parameters.size() + (isMultiLine(reply) ? 0 : kLineBreakLength);
}

bool isClipReply(Span parameters, const char *end)
{
    const Span rest{parameters.end, end};
    if (rest.size() != kClipEnd.size() || !rest.startsWith(kClipEnd)) return false;
    const char *const comma = findOutsideQuotes(parameters, ",");
    return comma != nullptr && findOutsideQuotes({comma + 1, parameters.end}, ",") == nullptr;
}

} // namespace mainControl
