#include "ok_body.h"

#include <string_view>

#include "../support/quoted_search.h"

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
    NamedLater namedLater(body);
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
