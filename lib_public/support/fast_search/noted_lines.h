#ifndef LIB_PUBLIC_SUPPORT_FAST_SEARCH_NOTED_LINES_H
#define LIB_PUBLIC_SUPPORT_FAST_SEARCH_NOTED_LINES_H

#include <cstddef>
#include <cstdint>

#include "lib_public/support/fast_search/beginning.h"
#include "lib_public/support/span.h"

namespace mainControl {

/** Where the first lines of a text end, noted by a search that comes by them anyway, so that reading them needs no second
 *  walk. */
class NotedLines {
  public:
    /** Notes nothing so far, and then lines of this text. */
    void beginIn(Span text)
    {
        start_ = text.begin;
        count_ = 0;
        room_ = text.size() <= UINT16_MAX ? kRoom : 0;
    }

    /** Notes a line, if there is room for it and for those in front of it.
     *  @param end  where the line break behind it stands */
    bool add(const char *end)
    {
        if (count_ == room_) return false;
        ends_[count_++] = static_cast<uint16_t>(end - start_);
        return true;
    }

    /** Notes as many lines of a text as there is room for. */
    void addAll(Span text);

    /** Lines whose line breaks stand in front of an end. */
    [[nodiscard]] size_t countWithin(const char *end) const
    {
        size_t count = count_;
        while (count != 0 && end - endOf(count - 1) < 2)
            --count;
        return count;
    }
    [[nodiscard]] const char *endOf(size_t line) const { return start_ + ends_[line]; }

  private:
    static constexpr size_t kRoom = 768;

    const char *start_ = nullptr;
    size_t count_ = 0;
    size_t room_ = 0;      // none in a text of which an offset might be too large to be kept
    uint16_t ends_[kRoom]; // from the start; of which the first are written
};

/** What each of the lines of a run begins with. */
class LineHead {
  public:
    /** @param textEnd  to which characters may be looked at */
    LineHead(Span head, const char *textEnd)
        : head_(head), length_(head.size()), textEnd_(textEnd), mask_(beginningMask(head))
    {
        if (canBeCompared(head)) characters_ = beginningOf(head.begin) & mask_;
    }

    [[nodiscard]] size_t size() const { return length_; }

    /** Whether a line begins with it; false where too few characters follow to compare them at once. */
    [[nodiscard]] bool begins(Span line) const
    {
        if (!canBeCompared(line) || (beginningOf(line.begin) & mask_) != characters_) return false;
        return length_ <= kBeginning || line.startsWith(head_);
    }

  private:
    [[nodiscard]] bool canBeCompared(Span text) const { return Span{text.begin, textEnd_}.size() >= kBeginning; }

    Span head_;
    size_t length_;
    const char *textEnd_;
    uint64_t mask_;
    uint64_t characters_ = 0; // which no text of a line has
};

/** The closed lines of a text, in order. A line ends at a line break outside quotes. */
class LineReader {
  public:
    /** @param lines  the first lines of the text, or none; notes the further ones */
    LineReader(Span text, NotedLines &lines)
        : next_(text.begin), end_(text.end), lines_(lines), count_(lines.countWithin(text.end))
    {
    }

    /** @param line  out: the next line that is not empty; untouched if there is none */
    bool next(Span &line)
    {
        while (const char *const end = nextEnd()) {
            const Span found{next_, end};
            next_ = end + 2;
            if (found.empty()) continue;
            line = found;
            return true;
        }
        return false;
    }

    /** Takes the lines that follow, the empty ones as nothing, as long as they are taken and their ends are known.
     *  @param take  returns whether it has taken a line, which is not empty */
    template <typename Take>
    [[gnu::always_inline]] void takeRun(Take take, Span &lastLine)
    {
        const NotedLines &lines = lines_;
        const char *begin = next_;
        size_t line = line_;
        for (const size_t count = count_; line != count; ++line) {
            const Span whole{begin, lines.endOf(line)};
            if (!whole.empty()) {
                if (!take(whole)) break;
                lastLine = whole;
            }
            begin = whole.end + 2;
        }
        next_ = begin;
        line_ = line;
    }

    /** Lines whose ends are known, and characters up to the end of the last one, with its line break. */
    [[nodiscard]] size_t knownLines() const { return count_ - line_; }
    [[nodiscard]] size_t knownCharacters() const { return Span{next_, lines_.endOf(count_ - 1)}.size() + 2; }

    [[nodiscard]] const char *end() const { return end_; }

  private:
    const char *nextEnd() { return line_ != count_ ? lines_.endOf(line_++) : findNextEnd(); }
    const char *findNextEnd();

    const char *next_;
    const char *end_;
    NotedLines &lines_;
    size_t line_ = 0; // the first noted line that is not read
    size_t count_;    // noted lines
};

} // namespace mainControl

#endif
