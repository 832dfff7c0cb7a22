#ifndef LIB_PUBLIC_ATCODEC_LINE_VALUES_H
#define LIB_PUBLIC_ATCODEC_LINE_VALUES_H

#include <cstddef>
#include <type_traits>
#include <utility>

#include "lib_public/support/scan.h"

namespace mainControl {

/** A format without literals. */
template <typename... Targets>
struct LineFormat {
    ScanFormat<Targets...> values;

    // NOLINTNEXTLINE(google-explicit-constructor): a literal is what it is made from
    consteval LineFormat(const char *format) : values(format)
    {
        if (values.hasLiterals) formatDoesNotFitItsTargets();
    }
};

/** Reads values out of a parameter line as ATCodec_PreProc_Res_ParaLine() rewrites it, and restores the texts among them,
 *  those that are missing included. Afterwards the line is either what it was or rewritten. */
void readLineValues(char *line, const ScanTarget *targets, size_t count);

template <typename... Targets, size_t... Index>
[[gnu::always_inline]] inline void scanLineBy(char *line, LineFormat<Targets...> format,
                                              std::index_sequence<Index...> /*all*/, Targets... targets)
{
    const ScanTarget all[] = {scanTarget(targets, format.values.widths[Index])...};
    readLineValues(line, all, sizeof...(Targets));
}

/** Does that by a format of values and blanks. */
template <typename... Targets>
[[gnu::always_inline]] inline void scanLine(char *line, std::type_identity_t<LineFormat<Targets...>> format,
                                            Targets... targets)
{
    scanLineBy<Targets...>(line, format, std::index_sequence_for<Targets...>{}, targets...);
}

} // namespace mainControl

#endif
