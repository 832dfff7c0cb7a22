#ifndef TESTS_SUPPORT_LIST_IMAGE_H
#define TESTS_SUPPORT_LIST_IMAGE_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include <mainControl/records.h>

/** Every byte that a parameter list is expected to hold, those that no split may touch included. */
struct ListImage {
    static constexpr size_t kEntries = 100;
    static constexpr size_t kEntrySize = 1024;
    static constexpr size_t kRoom = kEntries * kEntrySize;

    int32_t nCount = 0;
    std::string bytes = std::string(kRoom, '\0');
    /** Bytes from here up to openEnd may hold anything. */
    size_t openBegin = 0;
    size_t openEnd = 0;

    ListImage() = default;
    /** A list that was filled from its first entry on. */
    ListImage(std::initializer_list<std::string_view> entries);

    /** Puts a text at the beginning of an entry; it may run on into the entries behind. */
    ListImage &put(size_t entry, std::string_view text);
    /** Puts a text into the next entry and counts it. */
    ListImage &add(std::string_view text);
    ListImage &count(int32_t entries);

    /** An entry up to its terminator. */
    [[nodiscard]] std::string textOf(int32_t entry) const
    {
        return bytes.c_str() + static_cast<size_t>(entry) * kEntrySize;
    }
};

/** The first byte in which a list is not what it should be, in words; empty if there is none. */
std::string difference(const ListImage &expected, const AtParasList &got);

/** The same for two texts of any length, every byte of them. */
std::string difference(std::string_view expected, std::string_view got);

#endif
