#include "lib_public/ATPreprocess/ok_body.h"

#include <string_view>

namespace mainControl {
namespace {

constexpr size_t kNameLength = 29;
constexpr size_t kLineLength = 1024;

/** Where a ": " comes next in a body, quoted or not. Remembers the last one, so that asking at every line costs one walk
 *  in all. */
class Separators {
  public:
    explicit Separators(Span body) : end_(body.end), next_(body.begin) {}

    /** The first one from a position on, or the end of the body. */
    const char *from(const char *position)
    {
        if (!isFound_ || next_ < position) {
            const std::string_view rest(position, Span{position, end_}.size());
            const size_t at = rest.find(": ");
            next_ = at != std::string_view::npos ? position + at : end_;
            isFound_ = true;
        }
        return next_;
    }

  private:
    const char *end_;
    const char *next_;
    bool isFound_ = false;
};

/** The first ": " outside quotes in a line, or nullptr.
 *  @param first  the first one from the line's start on */
const char *separatorIn(Span line, const char *first)
{
    if (first >= line.end) return nullptr;
    const bool isPlain = std::memchr(line.begin, '"', Span{line.begin, first}.size()) == nullptr;
    return isPlain ? first : findOutsideQuotes(line, ": ");
}

} // namespace

void AssembledLine::put(char character)
{
    if (length_ + 1 < room_) line_[length_++] = character;
}

void AssembledLine::append(Span text)
{
    if (length_ + 1 >= room_) return;
    const Span kept = text.atMost(room_ - 1 - length_);
    std::memcpy(line_ + length_, kept.begin, kept.size());
    length_ += kept.size();
}

void AssembledLine::terminate()
{
    if (length_ < room_) line_[length_] = '\0';
}

bool AssembledLine::takeNamed(Span name, Span value)
{
    const Span kept = name.atMost(kNameLength);
    if (isNamed()) {
        if (std::strncmp(name_, kept.begin, kept.size()) != 0) return false;
        put(';');
    } else {
        std::memcpy(name_, kept.begin, kept.size());
        name_[kept.size()] = '\0';
    }
    append(value.atMost(kLineLength));
    terminate();
    return true;
}

void AssembledLine::takeBare(Span bare, bool namedLater)
{
    const bool isQuoted = isNamed();
    if (!isQuoted && namedLater) return;
    if (isQuoted) {
        put(',');
        put('"');
    }
    append(bare.atMost(kLineLength));
    if (isQuoted) put('"');
    terminate();
}

template <typename IsAlike, typename Copy>
void AssembledLine::takeRun(LineReader &lines, IsAlike isAlike, Copy copy, Span &lastLine)
{
    // Each adds at most one character more than it is long with its line break.
    if (length_ + lines.knownCharacters() + lines.knownLines() >= room_) return;
    char *to = line_ + length_;
    lines.takeRun(
        [&](Span line) {
            if (!isAlike(line)) return false;
            to = copy(to, line);
            return true;
        },
        lastLine);
    length_ = Span{line_, to}.size();
    terminate();
}

void AssembledLine::takeAlike(LineReader &lines, Span head, Span &lastLine)
{
    const LineHead same(head, lines.end());
    takeRun(
        lines, [same](Span line) { return line.size() - same.size() <= kLineLength && same.begins(line); },
        [length = same.size()](char *to, Span line) {
            *to = ';';
            return copyShort(to + 1, {line.begin + length, line.end});
        },
        lastLine);
}

void AssembledLine::takeAllBare(LineReader &lines, Span &lastLine)
{
    const bool isQuoted = isNamed();
    takeRun(
        lines, [](Span line) { return line.size() <= kLineLength; },
        [isQuoted](char *to, Span line) {
            if (isQuoted) {
                *to++ = ',';
                *to++ = '"';
            }
            to = copyShort(to, line);
            if (isQuoted) *to++ = '"';
            return to;
        },
        lastLine);
}

BodyEnd assembleBody(Span body, NotedLines &known, AssembledLine &into)
{
    BodyEnd end{body.atMost(0)};
    Separators separators(body);
    LineReader lines(body, known);
    while (lines.next(end.lastLine)) {
        const Span line = end.lastLine;
        const char *const nextSeparator = separators.from(line.begin);
        const bool isNamedLater = nextSeparator != body.end;
        const char *const separator = separatorIn(line, nextSeparator);
        if (separator == nullptr) {
            into.takeBare(line, isNamedLater);
        } else if (!into.takeNamed({line.begin, separator}, {separator + 2, line.end})) {
            end.hasOtherName = true;
            return end;
        }
        // What follows is mostly more of the same.
        if (lines.knownLines() == 0) continue;
        if (separator != nullptr && into.isNamed())
            into.takeAlike(lines, {line.begin, separator + 2}, end.lastLine);
        else if (!isNamedLater)
            into.takeAllBare(lines, end.lastLine);
    }
    return end;
}

} // namespace mainControl
