/** Texts of the user's that go to the modem between quotes. */
#ifndef KRCTL_COMMANDS_QUOTABLE_TEXT_H
#define KRCTL_COMMANDS_QUOTABLE_TEXT_H

#include <string>

namespace krctl {

/** Whether a text has letters, digits and marks only, none of which ends it within the command. */
bool isQuotable(const std::string &text);

} // namespace krctl

#endif
