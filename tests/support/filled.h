#ifndef TESTS_SUPPORT_FILLED_H
#define TESTS_SUPPORT_FILLED_H

#include <cstddef>
#include <cstring>

/** Whether every byte of an area has one value. The records are large and looked at after every call, so the C library
 *  does it: an area that equals itself one byte further on is of one kind. */
inline bool isFilledWith(unsigned char value, const void *area, size_t size)
{
    const auto *const bytes = static_cast<const unsigned char *>(area);
    return size == 0 || (bytes[0] == value && std::memcmp(bytes, bytes + 1, size - 1) == 0);
}

#endif
