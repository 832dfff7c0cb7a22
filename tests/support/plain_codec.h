#ifndef TESTS_SUPPORT_PLAIN_CODEC_H
#define TESTS_SUPPORT_PLAIN_CODEC_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "tests/support/list_image.h"

/** The parameter codec once more, plain and slow: one step after the other, over copies. The library is held against
 *  it. */
namespace plain {

constexpr size_t kNone = std::string::npos;

/** Where a needle first stands outside quotes, looked for from a position on. */
size_t find(const std::string &text, const std::string &needle, size_t from = 0);

/** Fields by plain occurrences of the token. */
int32_t countFields(const std::string &text, const std::string &token);

/** What is written to the output for one field: its terminator only if it is the last field. */
std::string field(const std::string &text, int32_t indexFromOne, const std::string &token);

void splitAt(ListImage &list, const std::string &text, const std::string &separator);
void splitAtMarker(ListImage &list, const std::string &text);
void splitScan(ListImage &list, const std::string &text);

/** The number of commas, where it is told. */
std::optional<int32_t> countCommas(const std::string &text);

/** The whole room that a text has, after each rewrite. */
std::string rewriteLine(const std::string &text);
std::string rewriteGroups(const std::string &text);

/** A text after its markers are undone, without what may stand behind its terminator. */
std::string restore(const std::string &text);

} // namespace plain

#endif
