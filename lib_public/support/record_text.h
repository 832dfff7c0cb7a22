#ifndef LIB_PUBLIC_SUPPORT_RECORD_TEXT_H
#define LIB_PUBLIC_SUPPORT_RECORD_TEXT_H

#include <cstddef>
#include <cstring>

/** Texts in the arrays of records. */
namespace mainControl {

/** The precision of a "%.*s" for a text in a host's record, which may fill its array without a terminator. */
template <size_t Size>
int lengthIn(const char (&field)[Size])
{
    return static_cast<int>(strnlen(field, Size));
}

/** Copies a host's text, with nullptr for the empty one, into a field; false, and nothing copied, if it does not fit with
 *  its terminator. */
template <size_t Size>
[[nodiscard]] bool copyWhole(char (&field)[Size], const char *text)
{
    if (text == nullptr) text = "";
    const size_t length = std::strlen(text);
    if (length >= Size) return false;
    std::memcpy(field, text, length + 1);
    return true;
}

/** Copies as much of a text as fits with a terminator. What stands behind that stays. */
template <size_t Size>
void copyFitting(char (&field)[Size], const char *text, size_t length)
{
    if (length >= Size) length = Size - 1;
    std::memcpy(field, text, length);
    field[length] = '\0';
}

/** Whether a text is missing or empty. */
inline bool isEmpty(const char *text)
{
    return text == nullptr || *text == '\0';
}

} // namespace mainControl

#endif
