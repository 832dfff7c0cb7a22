#include "tests/support/list_image.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace {

std::string shown(std::string_view bytes, size_t at)
{
    if (at >= bytes.size()) return "the end";
    const auto byte = static_cast<unsigned char>(bytes[at]);
    char text[16];
    std::snprintf(text, sizeof text, std::isprint(byte) != 0 ? "'%c'" : "0x%02X", byte);
    return text;
}

} // namespace

ListImage::ListImage(std::initializer_list<std::string_view> entries)
{
    for (const std::string_view entry : entries)
        add(entry);
}

ListImage &ListImage::put(size_t entry, std::string_view text)
{
    bytes.replace(entry * kEntrySize, text.size(), text);
    bytes.resize(kRoom);
    return *this;
}

ListImage &ListImage::add(std::string_view text)
{
    return put(static_cast<size_t>(nCount++), text);
}

ListImage &ListImage::count(int32_t entries)
{
    nCount = entries;
    return *this;
}

std::string difference(const ListImage &expected, const AtParasList &got)
{
    if (got.nCount != expected.nCount)
        return "nCount: expected " + std::to_string(expected.nCount) + ", got " + std::to_string(got.nCount);
    const std::string_view bytes(&got.strParasLine[0][0], sizeof got.strParasLine);
    if (bytes == expected.bytes) return "";
    for (size_t at = 0; at < bytes.size(); ++at) {
        if (bytes[at] == expected.bytes[at] || (at >= expected.openBegin && at < expected.openEnd)) continue;
        return "entry " + std::to_string(at / ListImage::kEntrySize) + ", byte " +
               std::to_string(at % ListImage::kEntrySize) + ": expected " + shown(expected.bytes, at) + ", got " +
               shown(bytes, at);
    }
    return "";
}

std::string difference(std::string_view expected, std::string_view got)
{
    if (expected == got) return "";
    size_t at = 0;
    while (at < std::min(expected.size(), got.size()) && expected[at] == got[at])
        ++at;
    return "byte " + std::to_string(at) + ": expected " + shown(expected, at) + ", got " + shown(got, at);
}
