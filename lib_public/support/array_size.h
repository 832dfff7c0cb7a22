#ifndef LIB_PUBLIC_SUPPORT_ARRAY_SIZE_H
#define LIB_PUBLIC_SUPPORT_ARRAY_SIZE_H

#include <cstddef>
#include <cstdint>

namespace mainControl {

template <typename T, size_t Size>
constexpr int32_t arraySize(const T (&)[Size])
{
    return static_cast<int32_t>(Size);
}

/** A host's count of entries, held to what the array has room for. */
template <typename T, size_t Size>
int32_t inTable(int32_t count, const T (&table)[Size])
{
    if (count < 0) return 0;
    return count < arraySize(table) ? count : arraySize(table);
}

} // namespace mainControl

#endif
