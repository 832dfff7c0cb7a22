/** The three forms of a report, each as a whole text. */
#ifndef KRCTL_OUTPUT_RENDER_H
#define KRCTL_OUTPUT_RENDER_H

#include <optional>
#include <string>
#include <string_view>

#include "krctl/output/report.h"
#include "krctl/output/terminal.h"

namespace krctl {

struct Failure;

/** For people: groups of aligned fields, tables, bars. */
std::string asTable(const Report &report, const Terminal &terminal);

/** "key=value" lines; the keys of sections and the places of rows stand before a field's own, with dots. Unknown values
 *  are empty; a line break in a value is written "\n", a backslash "\\". */
std::string asKeyValue(const Report &report);
std::string asKeyValue(const Failure &failure);

/** One object of krctl.schema.json.
 *  @param onOneLine  for streams, which hold one object a line */
std::string asJson(const Report &report, std::string_view command, bool onOneLine);
std::string asJson(const Failure &failure, std::string_view command, bool onOneLine);

/** A text member of a JSON object.
 *  @return nothing if it is no object, or has no such text */
std::optional<std::string> jsonText(std::string_view object, const char *member);

/** A bar such as "######----", or of blocks where the terminal has them. */
std::string bar(double fraction, int width, const Terminal &terminal);

} // namespace krctl

#endif
