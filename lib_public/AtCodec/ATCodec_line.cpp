// Rewriting one parameter line for reading, undoing that in what was read, and formatting a command.

#include <cstdarg>
#include <cstdio>

#include <mainControl/codec.h>

#include "lib_public/AtCodec/line_values.h"
#include "lib_public/AtCodec/pieces.h"
#include "lib_public/AtCodec/restore.h"
#include "lib_public/support/characters.h"
#include "lib_public/support/span.h"

using namespace mainControl;

namespace {

constexpr size_t kLineLimit = 1024;

/** Copies characters of a text up to the next one of a kind. */
inline void copyUpTo(CharacterKind kind, const char *&at, char *&out)
{
    size_t length = 0;
    for (; !isOfKind(at[length], kind); ++length)
        out[length] = at[length];
    at += length;
    out += length;
}

/** What a character in quotes becomes, so that it does not end a value. */
char inQuotes(char character)
{
    switch (character) {
    case ' ':
        return kQuotedBlank;
    case '\t':
        return kQuotedTab;
    default:
        return character;
    }
}

/** Writes the rewritten form of a line, which is no more than twice as long.
 *  @param line  a terminator or ";" stands behind it
 *  @return the length of what was written */
size_t rewrite(Span line, char *text)
{
    bool quoted = false;
    char *out = text;
    for (const char *at = line.begin;; ++at) {
        copyUpTo(kRewrittenInLine, at, out);
        if (*at == '"') {
            quoted = !quoted;
            if (at[1] == '"') *out++ = kEmptyParameter;
        } else if (*at == ',' && !quoted) {
            *out++ = ' ';
            if (at[1] == ',' || at + 1 == line.end) *out++ = kEmptyParameter;
        } else if (at == line.end) {
            return Span{text, out}.size();
        } else {
            *out++ = quoted ? inQuotes(*at) : *at;
        }
    }
}

char restored(char marker)
{
    return marker == kQuotedBlank ? ' ' : '\t';
}

bool canRewrite(Span line)
{
    return !line.empty() && line.size() < kLineLimit;
}

} // namespace

void ATCodec_PreProc_Res_ParaLine(char *text)
{
    if (text == nullptr) return;
    const Span line = mainControl::spanOf(text);
    if (!canRewrite(line)) return;
    char rewritten[2 * kLineLimit]; // of a line that is shorter
    const size_t length = rewrite(line, rewritten);
    if (length >= kLineLimit) return;
    const size_t kept = length < line.size() ? length : line.size();
    std::memcpy(text, rewritten, kept);
    std::memset(text + kept, 0, line.size() - kept);
}

void mainControl::readLineValues(char *line, const ScanTarget *targets, size_t count)
{
    constexpr size_t kAlwaysRewritten = kLineLimit / 2; // characters: of more there may be too many to be rewritten
    if (strnlen(line, kAlwaysRewritten + 1) <= kAlwaysRewritten && readPlainValues(line, targets, count)) return;
    ATCodec_PreProc_Res_ParaLine(line);
    readValues(line, targets, count);
    for (; count != 0; --count, ++targets) {
        if (targets->conversion == 's') restoreText({static_cast<char *>(targets->address), targets->room});
    }
}

char *Lines::next()
{
    Span piece{};
    if (!pieces_.next(piece)) return nullptr;
    if (piece.size() > kFieldLimit / 2) {
        std::memcpy(line_, piece.begin, piece.size());
        line_[piece.size()] = '\0';
        ATCodec_PreProc_Res_ParaLine(line_);
        return line_;
    }
    const size_t length = rewrite(piece, line_);
    line_[length < piece.size() ? length : piece.size()] = '\0';
    return line_;
}

void ATCodec_ProcRes_ParaLineEx(char *text)
{
    if (text == nullptr) return;
    const Span line = mainControl::spanOf(text);
    if (!canRewrite(line)) return;
    char *out = text; // never ahead of what is read
    for (const char *at = text;; ++at) {
        copyUpTo(kRewrittenInGroups, at, out);
        if (*at == '\0') break;
        if (*at == ')' && at[1] == ',') {
            *out++ = ';';
            ++at;
        }
    }
    std::memset(out, 0, Span{out, line.end}.size());
}

void mainControl::restoreText(TextTarget target)
{
    char *at = target.text;
    if (*at == kEmptyParameter && (target.room == 1 || at[1] == '\0')) {
        *at = '\0';
        return;
    }
    const char *const end = at + target.room;
    do {
        if (!isOfKind(*at, kRestored)) continue;
        if (*at == '\0') return;
        *at = restored(*at);
    } while (++at != end);
}

void ATCodec_Restore_String_Para(char *text)
{
    if (text != nullptr) mainControl::restoreText({text, std::strlen(text) + 1});
}

int32_t ATCodec_TranslateToCmdPara(char *output, const char *format, ...)
{
    if (output == nullptr || format == nullptr) return 0;
    va_list arguments;
    va_start(arguments, format);
    std::vsprintf(output, format, arguments); // the buffer is the caller's, and so is the knowledge of its size
    va_end(arguments);
    return 0;
}
