#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "list_image.h"

/// The parameter codec once more, plain and slow: one step after the other, over copies. The library is held against
/// it.
namespace plain {

constexpr std::size_t kNone = std::string::npos;

/// Where a needle first stands outside quotes, looked for from a position on.
std::size_t find(const std::string &text, const std::string &needle, std::size_t from = 0);

/// Fields by plain occurrences of the token.
std::int32_t countFields(const std::string &text, const std::string &token);

/// What is written to the output for one field: its terminator only if it is the last field.
std::string field(const std::string &text, std::int32_t indexFromOne, const std::string &token);

void splitAt(ListImage &list, const std::string &text, const std::string &separator);
void splitAtMarker(ListImage &list, const std::string &text);
void splitScan(ListImage &list, const std::string &text);

/// The number of commas, where it is told.
std::optional<std::int32_t> countCommas(const std::string &text);

/// The whole room that a text has, after each rewrite.
std::string rewriteLine(const std::string &text);
std::string rewriteGroups(const std::string &text);

/// A text after its markers are undone, without what may stand behind its terminator.
std::string restore(const std::string &text);

} // namespace plain
