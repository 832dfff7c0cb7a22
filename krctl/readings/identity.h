/** Who made the modem, what it is and whose SIM is in it, 3GPP TS 27.007 5.1 to 5.6: texts without names and quotes. */
#ifndef KRCTL_READINGS_IDENTITY_H
#define KRCTL_READINGS_IDENTITY_H

#include <string>
#include <string_view>

namespace krctl {

/** The lines of a reply as one text, kept apart by a blank. A name in front of a line and a label such as "Revision:" are
 *  left out.
 *  @return empty if the reply tells nothing, or only that the modem has no answer */
std::string identityOf(std::string_view reply);

/** The first line that is a number of so many digits, or begins with one; empty if none is. */
std::string digitsOf(std::string_view reply, size_t fewest, size_t most);

} // namespace krctl

#endif
