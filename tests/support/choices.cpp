#include "tests/support/choices.h"

#include <algorithm>

size_t Choices::below(size_t limit)
{
    size_t choice = 0;
    for (size_t reach = 1; reach < limit; reach *= 256) {
        if (bytes_.empty()) return limit - 1;
        choice = choice * 256 + bytes_.front();
        bytes_ = bytes_.subspan(1);
    }
    return choice % limit;
}

std::string Choices::rest()
{
    std::string all(bytes_.begin(), bytes_.end());
    bytes_ = {};
    return all;
}

std::string Choices::text()
{
    const auto end = std::find(bytes_.begin(), bytes_.end(), 0);
    std::string text(bytes_.begin(), end);
    bytes_ = bytes_.subspan(text.size() + (end == bytes_.end() ? 0 : 1));
    return text;
}
