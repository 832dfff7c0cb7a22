/** A text, and what is left of it once values are hidden. Places are looked for in the text as it came, so that what has
 *  been hidden already does not stand in the way. */
#ifndef HOST_MASKING_MASKED_TEXT_H
#define HOST_MASKING_MASKED_TEXT_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "host/at/secrets.h"
#include "host/masking/masking.h"

namespace host::masking {

using at::Kind;

inline constexpr std::string_view kLineEnds("\r\n\0", 3);
inline constexpr std::string_view kEverySeparator = ",;";
inline constexpr std::string_view kDigits = "0123456789";

constexpr bool isOneOf(char character, std::string_view set)
{
    return set.find(character) != std::string_view::npos;
}

constexpr bool isDigit(char character)
{
    return isOneOf(character, kDigits);
}

/** Where something stands in the text. */
struct Stretch {
    size_t begin;
    size_t end;
};

class MaskedText {
  public:
    MaskedText(std::string_view text, Hide hide) : text_(text), result_(text), hide_(hide) {}

    std::string take() { return std::move(result_); }

    std::string_view text() const { return text_; }
    std::string_view at(Stretch stretch) const { return text_.substr(stretch.begin, stretch.end - stretch.begin); }
    /** Where a part of the text stands in it. */
    Stretch placeOf(std::string_view part) const;
    /** Where the line ends that a place is in. */
    size_t lineEnd(size_t place) const { return std::min(text_.find_first_of(kLineEnds, place), text_.size()); }

    bool hides(Kind kind) const
    {
        return kind == Kind::Secret || (kind == Kind::Identity && hide_ == Hide::SecretsAndIdentities);
    }
    /** Hides a stretch but for what separates values. */
    void hide(Kind kind, Stretch stretch);
    void hideDigits(Kind kind, Stretch stretch);
    /** Hides arguments by their numbers. */
    void hideArguments(const at::Range &range, Stretch arguments, std::string_view separators = kEverySeparator);

    /** Of a line whose end is hidden already, what stands there need not be looked at again.
     *  @return where to go on; the place itself if it is not hidden */
    size_t behindHiddenEnd(size_t place) const { return isInHiddenEnd(place) ? hiddenEnd_.end : place; }

  private:
    bool isInHiddenEnd(size_t place) const { return place >= hiddenEnd_.begin && place < hiddenEnd_.end; }

    std::string_view text_;
    std::string result_;
    Hide hide_;
    Stretch hiddenEnd_{0, 0};
};

/** The argument that begins at a place. One in quotes ends with them, if a separator follows; any other one ends at a
 *  comma. What is not well-formed goes on to the end. */
Stretch argumentAt(std::string_view text, Stretch rest);

/** Whether it has as many digits as a code, or is a text in quotes. */
bool looksPrivate(std::string_view argument);

} // namespace host::masking

#endif
