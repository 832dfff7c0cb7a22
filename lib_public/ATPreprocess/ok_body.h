#ifndef LIB_PUBLIC_ATPREPROCESS_OK_BODY_H
#define LIB_PUBLIC_ATPREPROCESS_OK_BODY_H

#include <cstddef>

#include "lib_public/support/fast_search.h"

namespace mainControl {

/** The parameter text that grows out of the lines of an OK body, in memory that somebody else owns. */
class AssembledLine {
  public:
    /** @param name    30 bytes for the name of the first named line; empty as long as there was none
     *  @param line    the text so far, terminated if it does not fill its room
     *  @param room    bytes at `line`; what does not fit with a terminator is left out
     *  @param length  characters at `line` */
    AssembledLine(char *name, char *line, size_t room, size_t length)
        : name_(name), line_(line), room_(room), length_(length)
    {
    }

    /** Adds the value of a named line; false, and nothing added, if a line of another name came before. */
    bool takeNamed(Span name, Span value);
    /** Adds a bare line, in quotes if a named one came before.
     *  @param namedLater  whether the rest of the body still holds a ": "; then a bare line in front is dropped */
    void takeBare(Span bare, bool namedLater);

    /** Adds the named lines that follow, as long as they begin with the name, and ": ", of the one that was added. */
    void takeAlike(LineReader &lines, Span head, Span &lastLine);
    /** Adds the lines that follow where all that do are bare. */
    void takeAllBare(LineReader &lines, Span &lastLine);

    [[nodiscard]] bool isNamed() const { return *name_ != '\0'; }
    [[nodiscard]] size_t length() const { return length_; }

  private:
    void put(char character);
    void append(Span text);
    void terminate();
    template <typename IsAlike, typename Copy>
    void takeRun(LineReader &lines, IsAlike isAlike, Copy copy, Span &lastLine);

    char *name_;
    char *line_;
    size_t room_;
    size_t length_;
};

/** How far a body was assembled. */
struct BodyEnd {
    Span lastLine;             ///< the last line that was looked at; empty if there was none
    bool hasOtherName = false; ///< it has another name than those in front of it, and was not taken
};

/** Takes the closed lines of a body one by one.
 *  @param known  the first lines of the body, or none */
BodyEnd assembleBody(Span body, NotedLines &known, AssembledLine &into);

} // namespace mainControl

#endif
