// Rewriting one parameter line for reading, undoing that in what was read, and formatting a command.

#include <mainControl/codec.h>

#include <cstdarg>
#include <cstdio>

#include "../support/span.h"
#include "restore.h"

namespace {

using mainControl::Span;

constexpr char kEmptyParameter = '\xFD';
constexpr char kQuotedBlank = '\xFE';
constexpr char kQuotedTab = '\xFC';
constexpr std::size_t kLineLimit = 1024;

/// The rewritten form of one line, as long as it stays below the limit.
class RewrittenLine {
  public:
    /// @return false if the form would reach the limit
    bool rewrite(Span line)
    {
        bool quoted = false;
        for (const char *at = line.begin; at != line.end; ++at) {
            const char next = at[1];
            if (*at == '"') {
                quoted = !quoted;
                if (next == '"') put(kEmptyParameter);
            } else if (*at == ',' && !quoted) {
                put(' ');
                if (next == ',' || next == '\0') put(kEmptyParameter);
            } else if (quoted && *at == ' ') {
                put(kQuotedBlank);
            } else if (quoted && *at == '\t') {
                put(kQuotedTab);
            } else {
                put(*at);
            }
            if (length_ >= kLineLimit) return false;
        }
        return true;
    }

    /// Writes the form over a text of a length: without its tail if it is longer, filled up with zeros if shorter.
    void copyOver(char *text, std::size_t length) const
    {
        const std::size_t copied = length_ < length ? length_ : length;
        std::memcpy(text, characters_, copied);
        std::memset(text + copied, 0, length - copied);
    }

  private:
    void put(char character) { characters_[length_++] = character; }

    char characters_[kLineLimit + 1]; // one step may write two
    std::size_t length_ = 0;
};

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
    RewrittenLine rewritten;
    if (rewritten.rewrite(line)) rewritten.copyOver(text, line.size());
}

void ATCodec_ProcRes_ParaLineEx(char *text)
{
    if (text == nullptr) return;
    const Span line = mainControl::spanOf(text);
    if (!canRewrite(line)) return;
    char *out = text; // never ahead of what is read
    for (const char *at = line.begin; at != line.end; ++at) {
        if (*at == ')' && at[1] == ',') {
            *out++ = ';';
            ++at;
        } else if (*at != '(' && *at != ')') {
            *out++ = *at;
        }
    }
    std::memset(out, 0, Span{out, line.end}.size());
}

void mainControl::restoreText(TextTarget target)
{
    const Span text = spanOf(target.text, target.room);
    if (text.size() == 1 && *text.begin == kEmptyParameter) {
        *target.text = '\0';
        return;
    }
    for (char *at = target.text; at != text.end; ++at) {
        if (*at == kQuotedBlank) *at = ' ';
        if (*at == kQuotedTab) *at = '\t';
    }
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
