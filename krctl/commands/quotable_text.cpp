#include "krctl/commands/quotable_text.h"

#include "host/at_client/at_client.h"

namespace krctl {

bool isQuotable(const std::string &text)
{
    return ClientIsSafeInQuotes(text.c_str()) == 1 && text.find(' ') == std::string::npos;
}

} // namespace krctl
