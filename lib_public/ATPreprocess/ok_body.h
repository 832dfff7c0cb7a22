#pragma once

#include <cstddef>

#include "../support/span.h"

namespace mainControl {

class ClosedLines;

/// The parameter text that grows out of the lines of an OK body, in memory that somebody else owns.
class AssembledLine {
  public:
    /// @param name    30 bytes for the name of the first named line; empty as long as there was none
    /// @param line    the text so far, terminated if it does not fill its room
    /// @param room    bytes at `line`; what does not fit with a terminator is left out
    /// @param length  characters at `line`
    AssembledLine(char *name, char *line, std::size_t room, std::size_t length)
        : name_(name), line_(line), room_(room), length_(length)
    {
    }

    /// Adds the value of a named line; false, and nothing added, if a line of another name came before.
    bool takeNamed(Span name, Span value);
    /// Adds a bare line, in quotes if a named one came before.
    /// @param namedLater  whether the rest of the body still holds a ": "; then a bare line in front is dropped
    void takeBare(Span bare, bool namedLater);

    /// Characters that there is room for, with their terminator.
    [[nodiscard]] std::size_t spare() const { return length_ < room_ ? room_ - length_ - 1 : 0; }
    // What there is room for may be added in fewer steps, and terminated when all is.
    /// Adds a value behind that of another line with the same name.
    void putFurther(Span value);
    /// Adds a bare line.
    void putBare(Span bare, bool isQuoted);
    void terminate();

    [[nodiscard]] bool isNamed() const { return *name_ != '\0'; }
    [[nodiscard]] std::size_t length() const { return length_; }

  private:
    void put(char character);
    void append(Span text);

    char *name_;
    char *line_;
    std::size_t room_;
    std::size_t length_;
};

/// Takes the closed lines of a body one by one.
/// @param lastLine  out: the last line that was looked at; unchanged if there was none
/// @return false if it stopped at a line of another name
bool assembleBody(Span body, AssembledLine &into, Span &lastLine);
/// The same for a body whose first lines are known.
/// @param lines  the first ones; notes the others, too, where there is no room for all
void assembleBody(Span body, ClosedLines &lines, AssembledLine &into);

} // namespace mainControl
