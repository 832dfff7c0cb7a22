#ifndef TESTS_SUPPORT_PARSER_COMPARISON_H
#define TESTS_SUPPORT_PARSER_COMPARISON_H

#include <cstdint>
#include <map>
#include <set>
#include <string>

/** What comparisons came across, so that a comparison of nothing but failures does not pass unseen. */
struct Reached {
    std::map<uint32_t, int> codes;
    std::set<int> identifiers;
    int bodies = 0;
    int callerLines = 0;
    int editedFurther = 0;
};

/** Parses one buffer to its end with the library and plainly, at most three times, and fails the test where they differ.
 *  @param pattern  what the record is filled with */
void compareParses(const std::string &reply, unsigned char pattern, Reached &reached);

/** The same for an operator scan, which is parsed once. */
void compareOperatorScan(const std::string &reply, Reached &reached);

#endif
