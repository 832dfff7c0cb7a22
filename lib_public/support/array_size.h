#pragma once

#include <cstddef>
#include <cstdint>

namespace mainControl {

template <typename T, std::size_t Size>
constexpr std::int32_t arraySize(const T (&)[Size])
{
    return static_cast<std::int32_t>(Size);
}

/// A host's count of entries, held to what the array has room for.
template <typename T, std::size_t Size>
std::int32_t inTable(std::int32_t count, const T (&table)[Size])
{
    if (count < 0) return 0;
    return count < arraySize(table) ? count : arraySize(table);
}

} // namespace mainControl
