/** The families of modems that lib_mainControl tells apart. */
#ifndef HOST_AT_SERVER_FAMILY_H
#define HOST_AT_SERVER_FAMILY_H

#include <optional>
#include <string_view>

namespace host::at_server {

enum class Family { Default = 0, Qualcomm = 1, Mtk = 3, Tsp = 4, Spreadtrum = 5 };

/** "qualcomm", "mtk", "tsp", "spreadtrum" or "default". */
std::string_view nameOf(Family family);
std::optional<Family> familyNamed(std::string_view text);

/** @param reply  to AT+CGMI, or any text with the name of a manufacturer in it */
Family familyOfManufacturer(std::string_view reply);

} // namespace host::at_server

#endif
