#ifndef LIB_PUBLIC_SUPPORT_FAST_SEARCH_IN_STRETCHES_H
#define LIB_PUBLIC_SUPPORT_FAST_SEARCH_IN_STRETCHES_H

#include <cstddef>

namespace mainControl {

// For records and texts of about ten thousand bytes, in stretches that libc handles with vector instructions. For longer
// ones it takes string instructions, which start slowly.

void clear(void *record, size_t size);
void copy(char *to, const char *from, size_t size);

template <typename Record>
void clear(Record &record)
{
    clear(&record, sizeof record);
}

} // namespace mainControl

#endif
