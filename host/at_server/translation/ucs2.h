/** Hexadecimal UCS-2, as modems write texts in that alphabet (3GPP TS 27.007 5.5). */
#ifndef HOST_AT_SERVER_TRANSLATION_UCS2_H
#define HOST_AT_SERVER_TRANSLATION_UCS2_H

#include <optional>
#include <string>
#include <string_view>

namespace host::at_server {

/** The text in UTF-8 whose characters have these digits, four each.
 *  @return nothing for what can be no such text: other characters, half of one, controls, quotes */
std::optional<std::string> textOfUcs2(std::string_view digits);

} // namespace host::at_server

#endif
