#ifndef LIB_PUBLIC_SUPPORT_FAST_SEARCH_H
#define LIB_PUBLIC_SUPPORT_FAST_SEARCH_H

/** The door to everything that makes the library fast: what is behind it may be clever, so that nobody in front of it
 *  has to be. bench/README.md says what each of these buys. */
#include "lib_public/support/fast_search/copy_short.h" // copyShort(): a short text without a call
#include "lib_public/support/fast_search/end_flag_rows.h" // EndFlagRows: the row of the live table that stands at a line break
#include "lib_public/support/fast_search/in_stretches.h" // clear(), copy(): records and texts of ten thousand bytes
#include "lib_public/support/fast_search/noted_lines.h" // NotedLines, LineReader: the lines of a text, and runs of lines that are alike
#include "lib_public/support/fast_search/outside_quotes.h" // visitOutsideQuotes(), findOutsideQuotes(): characters and texts outside quotes

#endif
