#include "krctl/commands/quotable_text.h"

#include <algorithm>

namespace krctl {

bool isQuotable(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](unsigned char character) { return character > ' ' && character < 0x7F && character != '"'; });
}

} // namespace krctl
