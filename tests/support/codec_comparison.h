#ifndef TESTS_SUPPORT_CODEC_COMPARISON_H
#define TESTS_SUPPORT_CODEC_COMPARISON_H

#include <cstdint>
#include <string>

/** The codec's functions and what they plainly are, over one text each. They fail the test where they differ. */

void compareSearch(const std::string &text, const std::string &needle);
void compareFieldCount(const std::string &text, const std::string &token);
/** @param token  not empty */
void compareField(const std::string &text, int32_t indexFromOne, const std::string &token);
void compareCommaCount(const std::string &text);

enum class Split { AtSemicolons, AtCommas, AtScanMarkers, AtLines };
/** @param presetCount  entries that the list has before */
void compareSplit(Split split, const std::string &text, int32_t presetCount);

enum class Rewrite { Line, Groups, Restore };
/** The whole room of the text is compared. */
void compareRewrite(Rewrite rewrite, const std::string &text);

#endif
