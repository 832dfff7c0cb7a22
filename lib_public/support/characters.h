#ifndef LIB_PUBLIC_SUPPORT_CHARACTERS_H
#define LIB_PUBLIC_SUPPORT_CHARACTERS_H

#include <cstdint>
#include <initializer_list>

/** What a character is to those who walk a text character by character, in one look-up. */
namespace mainControl {

/** Markers of a rewritten parameter line. */
constexpr char kEmptyParameter = '\xFD';
constexpr char kQuotedBlank = '\xFE';
constexpr char kQuotedTab = '\xFC';

/** The terminator is of each kind but the first, so that a walk looks for its end with the same look-up. */
enum CharacterKind : uint8_t {
    kBlank = 1,             ///< what sscanf() takes for a blank
    kEndsToken = 2,         ///< a blank
    kRewrittenInLine = 4,   ///< ends a parameter line, or does not always stay as it is where one is rewritten
    kRewrittenInGroups = 8, ///< the same where a list of groups is
    kRestored = 16,         ///< the marker of a character in quotes
    kEndsPlainText = 32     ///< a blank, a marker, or what separates and encloses values
};

struct CharacterKinds {
    uint8_t of[256]{};

    consteval CharacterKinds()
    {
        add(kBlank, {' ', '\t', '\n', '\v', '\f', '\r'});
        add(kEndsToken, {'\0', ' ', '\t', '\n', '\v', '\f', '\r'});
        add(kRewrittenInLine, {'\0', ';', '"', ',', ' ', '\t'});
        add(kRewrittenInGroups, {'\0', '(', ')'});
        add(kRestored, {'\0', kQuotedBlank, kQuotedTab});
        add(kEndsPlainText,
            {'\0', ' ', '\t', '\n', '\v', '\f', '\r', '"', ',', kEmptyParameter, kQuotedBlank, kQuotedTab});
    }

  private:
    consteval void add(CharacterKind kind, std::initializer_list<char> characters)
    {
        for (const char character : characters)
            of[static_cast<unsigned char>(character)] |= kind;
    }
};
inline constexpr CharacterKinds kCharacterKinds;

inline bool isOfKind(char character, CharacterKind kind)
{
    return (kCharacterKinds.of[static_cast<unsigned char>(character)] & kind) != 0;
}

} // namespace mainControl

#endif
