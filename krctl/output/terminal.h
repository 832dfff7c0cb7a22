/** Where output goes to: how wide it is, and whether it shows colours and block characters. */
#ifndef KRCTL_OUTPUT_TERMINAL_H
#define KRCTL_OUTPUT_TERMINAL_H

#include <string>
#include <string_view>
#include <vector>

#include "krctl/output/report.h"

namespace krctl {

struct Terminal {
    static constexpr int kUsualColumns = 80;

    bool isTerminal = false;
    bool hasColour = false;
    bool hasBlocks = false; ///< UTF-8, so that bars are blocks and not "#"
    int columns = kUsualColumns;

    /** What a file of this process is.
     *  @param wantsColour  false for none, whatever the terminal can do
     *  @param hasBlocks    what takeLocale() returned */
    static Terminal of(int fd, bool wantsColour, bool hasBlocks);

    std::string paint(Tone tone, const std::string &text) const;
};

/** Makes the functions below count in UTF-8, which is what operators' names come in, whatever the user's locale is.
 *  @return whether the user's locale shows UTF-8 */
bool takeLocale();

/** Columns that a UTF-8 text takes; what is not printable takes none. */
int displayWidth(std::string_view text);

/** A text of the modem as it may be shown: control characters, which could steer a terminal, become '?', and so do bytes
 *  that are not UTF-8. */
std::string printable(std::string_view text);

/** A text filled with blanks up to a width. */
std::string padded(const std::string &text, int width);
std::string paddedLeft(const std::string &text, int width);

/** A text cut to a width, its end replaced by "...". */
std::string shortened(const std::string &text, int width);

/** The lines of a text, broken between words. A word longer than a line is not broken. */
std::vector<std::string> wrapped(std::string_view text, int width);

} // namespace krctl

#endif
