#include "ok_body.h"

#include "../support/quoted_search.h"

namespace mainControl {
namespace {

constexpr std::size_t kNameLength = 29;
constexpr std::size_t kLineLength = 1024;

/// Whether ": " still comes somewhere in a body, quoted or not. Remembers where it found the last one, so that asking
/// at every line costs one walk in all.
class NamedLater {
  public:
    explicit NamedLater(const char *end) : end_(end) {}

    bool behind(const char *position)
    {
        if (found_ == nullptr || found_ < position) found_ = search(position);
        return found_ != end_;
    }

  private:
    [[nodiscard]] const char *search(const char *position) const
    {
        const auto *const found =
            static_cast<const char *>(memmem(position, static_cast<std::size_t>(end_ - position), ": ", 2));
        return found != nullptr ? found : end_;
    }

    const char *end_;
    const char *found_ = nullptr;
};

} // namespace

void AssembledLine::append(Span text)
{
    if (length_ + 1 >= room_) return;
    const Span kept = text.atMost(room_ - 1 - length_);
    std::memcpy(line_ + length_, kept.begin, kept.size());
    length_ += kept.size();
    line_[length_] = '\0';
}

bool AssembledLine::takeNamed(Span name, Span value)
{
    const Span kept = name.atMost(kNameLength);
    if (isNamed()) {
        if (std::strncmp(name_, kept.begin, kept.size()) != 0) return false;
        append(spanOfLiteral(";"));
    } else {
        std::memcpy(name_, kept.begin, kept.size());
        name_[kept.size()] = '\0';
    }
    append(value.atMost(kLineLength));
    return true;
}

void AssembledLine::takeBare(Span bare, bool namedLater)
{
    if (isNamed()) {
        append(spanOfLiteral(",\""));
        append(bare.atMost(kLineLength));
        append(spanOfLiteral("\""));
    } else if (!namedLater) {
        append(bare.atMost(kLineLength));
    }
}

bool assembleBody(Span body, AssembledLine &into, Span &lastLine)
{
    NamedLater namedLater(body.end);
    const char *next = body.begin;
    while (const char *const lineBreak = findOutsideQuotes({next, body.end}, "\r\n")) {
        const Span line{next, lineBreak};
        next = lineBreak + 2;
        if (line.empty()) continue;
        lastLine = line;
        if (const char *const colon = findOutsideQuotes(line, ": ")) {
            if (!into.takeNamed({line.begin, colon}, {colon + 2, line.end})) return false;
        } else {
            into.takeBare(line, !into.isNamed() && namedLater.behind(line.begin));
        }
    }
    return true;
}

} // namespace mainControl
