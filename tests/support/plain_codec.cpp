#include "tests/support/plain_codec.h"

#include <algorithm>

namespace plain {
namespace {

constexpr size_t kEntry = ListImage::kEntrySize;
constexpr int32_t kEntries = 100;
constexpr size_t kScanLimit = 102400;

bool takesNothing(const ListImage &list)
{
    return list.nCount < 0 || list.nCount >= kEntries;
}

// What fits from the beginning of the next entry, one byte being left for the terminator behind the last entry.
std::string fitting(const ListImage &list, const std::string &text, size_t most)
{
    const size_t room = ListImage::kRoom - static_cast<size_t>(list.nCount) * kEntry - 1;
    return text.substr(0, std::min(most, room));
}

void splitFrom(ListImage &list, const std::string &text, size_t begin, const std::string &separator)
{
    if (takesNothing(list)) return;
    size_t end = find(text, separator, begin);
    while (end != kNone) {
        if (list.nCount >= kEntries || end - begin >= kEntry) return;
        list.add(text.substr(begin, end - begin));
        begin = end + separator.size();
        end = find(text, separator, begin);
    }
    if (begin == text.size() || list.nCount >= kEntries) return;
    list.add(fitting(list, text.substr(begin), kEntry));
}

} // namespace

size_t find(const std::string &text, const std::string &needle, size_t from)
{
    ptrdiff_t quotes = 0;
    for (;;) {
        const size_t hit = text.find(needle, from);
        if (hit == kNone) return kNone;
        const auto at = [&text](size_t position) { return text.begin() + static_cast<ptrdiff_t>(position); };
        quotes += std::count(at(from), at(hit), '"');
        if (quotes % 2 == 0) return hit;
        from = hit + 1;
    }
}

int32_t countFields(const std::string &text, const std::string &token)
{
    if (text.empty()) return 0;
    if (token.empty()) return 1;
    int32_t fields = 0;
    size_t from = 0;
    for (size_t hit = text.find(token); hit != kNone; hit = text.find(token, from)) {
        ++fields;
        from = hit + 1;
    }
    return from < text.size() ? fields + 1 : fields;
}

std::string field(const std::string &text, int32_t indexFromOne, const std::string &token)
{
    size_t begin = 0;
    int32_t number = 1;
    for (;;) {
        const size_t end = token.empty() ? kNone : find(text, token, begin);
        if (end == kNone) break;
        if (indexFromOne >= 100 || end - begin >= 1024) return "";
        if (number == indexFromOne) return text.substr(begin, end - begin);
        begin = end + token.size();
        ++number;
    }
    if (begin == text.size()) return "";
    return text.substr(begin) + '\0';
}

void splitAt(ListImage &list, const std::string &text, const std::string &separator)
{
    splitFrom(list, text, 0, separator);
}

void splitAtMarker(ListImage &list, const std::string &text)
{
    const std::string marker = "*STGC:";
    const size_t first = find(text, marker);
    splitFrom(list, text, first == kNone ? 0 : first + marker.size(), marker);
}

void splitScan(ListImage &list, const std::string &text)
{
    if (text.empty() || text.size() > kScanLimit) {
        list = ListImage();
        return;
    }
    if (takesNothing(list)) return;
    size_t begin = 0;
    for (size_t end = find(text, "\r\n"); end != kNone; end = find(text, "\r\n", begin)) {
        const std::string line = text.substr(begin, end - begin);
        begin = end + 2;
        if (line.empty()) continue;
        if (list.nCount >= kEntries || line.size() > 102399) return;
        list.add(fitting(list, line, kScanLimit) + '\0');
    }
    if (begin == text.size() || list.nCount >= kEntries) return;
    const std::string rest = fitting(list, text.substr(begin), kEntry);
    const size_t entry = static_cast<size_t>(list.nCount) * kEntry;
    list.add(rest.size() < kEntry ? rest + '\0' : rest);
    // Whether what a longer line left behind the text in this entry stays, or stays behind a full entry, is not told.
    list.openBegin = entry + rest.size() + (rest.size() < kEntry ? 1 : 0);
    list.openEnd = entry + kEntry + 1;
}

std::optional<int32_t> countCommas(const std::string &text)
{
    int32_t commas = 0;
    size_t begin = 0;
    for (size_t end = find(text, ","); end != kNone; end = find(text, ",", begin)) {
        if (end - begin >= 1024) return std::nullopt;
        ++commas;
        begin = end + 1;
    }
    const size_t rest = text.size() - begin;
    if (rest == 0 || rest >= 1024 || commas >= 100) return std::nullopt;
    return commas;
}

std::string rewriteLine(const std::string &text)
{
    if (text.empty() || text.size() >= 1024) return text;
    std::string output;
    bool inQuotes = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isLast = i + 1 == text.size();
        const char next = isLast ? '\0' : text[i + 1];
        if (text[i] == '"') {
            inQuotes = !inQuotes;
            if (next == '"') output += '\xFD';
        } else if (text[i] == ',' && !inQuotes) {
            output += ' ';
            if (next == ',' || isLast) output += '\xFD';
        } else if (text[i] == ' ' && inQuotes) {
            output += '\xFE';
        } else if (text[i] == '\t' && inQuotes) {
            output += '\xFC';
        } else {
            output += text[i];
        }
        if (output.size() >= 1024) return text;
    }
    output.resize(text.size());
    return output;
}

std::string rewriteGroups(const std::string &text)
{
    if (text.empty() || text.size() >= 1024) return text;
    std::string output;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '(') continue;
        if (text[i] != ')') {
            output += text[i];
        } else if (i + 1 < text.size() && text[i + 1] == ',') {
            output += ';';
            ++i;
        }
    }
    output.resize(text.size());
    return output;
}

std::string restore(const std::string &text)
{
    if (text == "\xFD") return "";
    std::string restored = text;
    std::replace(restored.begin(), restored.end(), '\xFE', ' ');
    std::replace(restored.begin(), restored.end(), '\xFC', '\t');
    return restored;
}

} // namespace plain
