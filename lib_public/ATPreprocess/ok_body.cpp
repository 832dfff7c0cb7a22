#include "ok_body.h"

#include <bit>
#include <string_view>

#include "../support/beginning.h"
#include "../support/byte_search.h"
#include "../support/copy_short.h"
#include "../support/quoted_search.h"
#include "closed_lines.h"

namespace mainControl {
namespace {

constexpr std::size_t kNameLength = 29;
constexpr std::size_t kLineLength = 1024;

/// Whether ": " still comes somewhere in a body, quoted or not. Remembers where it found the last one, so that asking
/// at every line costs one walk in all.
class NamedLater {
  public:
    explicit NamedLater(Span body) : body_(body) {}

    bool behind(const char *position)
    {
        if (found_ == nullptr || found_ < position) {
            const std::string_view rest(position, Span{position, body_.end}.size());
            const std::size_t at = rest.find(": ");
            found_ = at != std::string_view::npos ? position + at : body_.end;
        }
        return found_ != body_.end;
    }

  private:
    Span body_;
    const char *found_ = nullptr;
};

} // namespace

[[gnu::always_inline]] inline void AssembledLine::put(char character)
{
    if (length_ + 1 < room_) line_[length_++] = character;
}

[[gnu::always_inline]] inline void AssembledLine::append(Span text)
{
    if (length_ + 1 >= room_) return;
    const Span kept = text.atMost(room_ - 1 - length_);
    std::memcpy(line_ + length_, kept.begin, kept.size());
    length_ += kept.size();
}

[[gnu::always_inline]] inline void AssembledLine::terminate()
{
    if (length_ < room_) line_[length_] = '\0';
}

[[gnu::always_inline]] inline void AssembledLine::putFurther(Span value)
{
    char *const at = line_ + length_;
    at[0] = ';';
    copyShort(at + 1, value.begin, value.size());
    length_ += 1 + value.size();
}

[[gnu::always_inline]] inline void AssembledLine::putBare(Span bare, bool isQuoted)
{
    char *at = line_ + length_;
    if (isQuoted) {
        at[0] = ',';
        at[1] = '"';
        at[2 + bare.size()] = '"';
        at += 2;
    }
    copyShort(at, bare.begin, bare.size());
    length_ += bare.size() + (isQuoted ? 3 : 0);
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
    if (!isNamed() && namedLater) return;
    if (isNamed()) put(',');
    if (isNamed()) put('"');
    append(bare.atMost(kLineLength));
    if (isNamed()) put('"');
    terminate();
}

namespace {

/// The first ": " outside quotes in a line, or nullptr.
const char *separatorIn(Span line)
{
    // Most names are short and hold no quote.
    if (line.size() > Block::kSize) {
        const Block block = Block::load(line.begin);
        const std::uint64_t colons = block.equalTo(':');
        const std::uint64_t upToColon = colons ^ (colons - 1);
        const char *const colon = line.begin + std::countr_zero(colons);
        if (colons != 0 && (block.equalTo('"') & upToColon) == 0 && colon[1] == ' ') return colon;
    }
    return findOutsideQuotes(line, ": ");
}

/// Takes the lines of a body in order.
class LineTaker {
  public:
    LineTaker(Span body, AssembledLine &into) : end_(body.end), namedLater_(body), next_(body.begin), into_(into) {}

    /// Takes the line up to a line break; false if it has another name.
    [[gnu::noinline]] bool takeUpTo(const char *lineBreak)
    {
        const Span line{next_, lineBreak};
        next_ = lineBreak + 2;
        if (line.empty()) return true;
        const bool isFurther = into_.isNamed();
        const char *const separator = separatorIn(line);
        if (separator == nullptr) {
            into_.takeBare(line, !isFurther && namedLater_.behind(line.begin));
            return true;
        }
        if (!into_.takeNamed({line.begin, separator}, {separator + 2, line.end})) return false;
        if (isFurther && canBeCompared(line)) head_ = Beginning({line.begin, separator + 2});
        return true;
    }

    /// Takes noted lines, of which a body may have hundreds, for as long as they begin as the last named one did.
    /// @return the first that is left
    std::size_t takeAlike(const ClosedLines &lines, std::size_t line, std::size_t count)
    {
        const Beginning head = head_;
        return takeRun(lines, line, count, [&](Span whole, AssembledLine &into) {
            if (whole.size() - head.size() > kLineLength) return false; // shorter than the head, too
            if (!canBeCompared(whole) || !head.begins(whole)) return false;
            into.putFurther({whole.begin + head.size(), whole.end});
            return true;
        });
    }

    /// Takes noted lines that are all bare since no ": " comes any more.
    /// @return the first that is left
    std::size_t takeAllBare(const ClosedLines &lines, std::size_t line, std::size_t count)
    {
        if (namedLater_.behind(next_)) return line;
        const bool isNamed = into_.isNamed();
        return takeRun(lines, line, count, [isNamed](Span whole, AssembledLine &into) {
            if (whole.empty() || whole.size() > kLineLength) return false;
            into.putBare(whole, isNamed);
            return true;
        });
    }

    /// Where the next line begins.
    [[nodiscard]] const char *next() const { return next_; }

  private:
    /// Whether there are as many characters from a line on as are compared at once.
    [[nodiscard]] bool canBeCompared(Span line) const { return Span{line.begin, end_}.size() >= kBeginning; }

    /// Takes noted lines, the empty ones as nothing, up to one that is not put.
    template <typename Put>
    [[gnu::always_inline]] std::size_t takeRun(const ClosedLines &lines, std::size_t line, std::size_t count, Put put)
    {
        // Each adds at most one character more than it is long with its line break.
        const std::size_t most = Span{next_, lines.endOf(count - 1)}.size() + 2 + (count - line);
        if (into_.spare() < most) return line;
        AssembledLine into = into_; // which nobody else can see meanwhile
        const char *begin = next_;
        for (; line != count; ++line) {
            const Span whole{begin, lines.endOf(line)};
            if (!put(whole, into) && !whole.empty()) break;
            begin = whole.end + 2;
        }
        next_ = begin;
        into_ = into;
        into_.terminate();
        return line;
    }

    const char *end_;
    NamedLater namedLater_;
    const char *next_;
    Beginning head_; // the name and ": " of the last named line, the first one excepted
    AssembledLine &into_;
};

bool takeLines(Span rest, LineTaker &taker, Span &lastLine)
{
    return visitOutsideQuotes(rest, '\r', [&](const char *at) {
        if (!isLineBreak(at, rest.end)) return true;
        if (at != taker.next()) lastLine = {taker.next(), at};
        return taker.takeUpTo(at);
    });
}

/// Notes as many lines of a text as there is room for.
void noteLines(Span text, ClosedLines &lines)
{
    lines.beginIn(text);
    visitOutsideQuotes(text, '\r', [&](const char *at) { return !isLineBreak(at, text.end) || lines.add(at); });
}

} // namespace

bool assembleBody(Span body, AssembledLine &into, Span &lastLine)
{
    LineTaker taker(body, into);
    return takeLines(body, taker, lastLine);
}

void assembleBody(Span body, ClosedLines &lines, AssembledLine &into)
{
    LineTaker taker(body, into);
    while (const std::size_t count = lines.countWithin(body.end)) {
        for (std::size_t line = 0; line != count;) {
            if (!taker.takeUpTo(lines.endOf(line++))) return;
            if (line != count) line = taker.takeAlike(lines, line, count);
            if (line != count) line = taker.takeAllBare(lines, line, count);
        }
        noteLines({taker.next(), body.end}, lines);
    }
    Span lastLine{};
    takeLines({taker.next(), body.end}, taker, lastLine);
}

} // namespace mainControl
