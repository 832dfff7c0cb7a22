#ifndef TESTS_SUPPORT_PARSE_RUN_H
#define TESTS_SUPPORT_PARSE_RUN_H

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>

#include "tests/support/guarded_text.h"
#include "tests/support/saved_tables.h"
#include "tests/support/scripted_host.h"

/** A text with its line breaks, quotes and control characters made visible. */
std::string shown(std::string_view text);

/** What one call of the parser left behind. */
struct ParseState {
    uint32_t code = 0;
    int32_t cmdId = 0;
    int32_t result = 0;
    int32_t parasLen = 0;
    std::string paras; ///< up to the first zero, or whole if there is none
    std::string left;  ///< the text that is still in the buffer
    int32_t procDataLen = 0;

    bool operator==(const ParseState &) const = default;
};

std::ostream &operator<<(std::ostream &out, const ParseState &state);

/** A host, a reply in guarded memory and a record in guarded memory to parse it into. */
struct ParseRun {
    /** g_iProcDataLen and the fields of a record that were not written. */
    static constexpr int32_t kUntouched = -77;

    /** @param pattern  what the record is filled with; its last byte is 0 all the same, as its text is logged */
    explicit ParseRun(std::string_view reply, unsigned char pattern = 0);

    /** Makes the record new for a further call. */
    void fillRecord();

    ParseState parse();
    ParseState parseOperatorScan();

    /** Whether everything in Paras from a position on, its last byte apart, still is the pattern. */
    [[nodiscard]] bool isUntouchedFrom(size_t position) const;
    /** Whether no byte of the record has changed. */
    [[nodiscard]] bool isUntouched() const;

    scripted::Host host;
    GuardedText text;
    GuardedRecord<AtRes> record;

  private:
    [[nodiscard]] ParseState state(uint32_t code) const;

    unsigned char pattern_;
};

/** A row of the parser's tests: a reply and everything that one parse makes of it. */
struct ReplyCase {
    const char *name;
    std::string reply;
    int32_t cmdId;
    int32_t result;
    std::string paras;
    int32_t parasLen;
    std::string consumed; ///< its length is what g_iProcDataLen counts
    std::string left;
};

/** Parses into a zeroed record and compares everything, the rest of Paras included. */
void expectReply(const ReplyCase &row);

#endif
