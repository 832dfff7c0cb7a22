/** Texts of the user's that go to the modem between quotes. */
#ifndef KRCTL_COMMANDS_QUOTABLE_TEXT_H
#define KRCTL_COMMANDS_QUOTABLE_TEXT_H

#include <string_view>

namespace krctl {

/** Whether a text has letters, digits and marks only: quotes and control characters would end it within the command. */
bool isQuotable(std::string_view text);

} // namespace krctl

#endif
