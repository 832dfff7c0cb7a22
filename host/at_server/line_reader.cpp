#include "line_reader.h"

#include "reports.h"

#include <utility>

namespace host::at_server {
namespace {

constexpr std::string_view kPrompt = "> ";

bool isBreak(char byte)
{
    return byte == '\r' || byte == '\n';
}

} // namespace

void LineReader::feed(std::string_view bytes)
{
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (raw_.size() < kMaxLine) raw_ += bytes[i];
        if (!isBreak(bytes[i])) {
            takeCharacter(bytes[i]);
            continue;
        }
        // The rest of a line's end goes into the transcript with its line, if it has come by now.
        const std::string_view rest = bytes.substr(i + 1);
        const size_t more = bytes[i] == '\n' ? 0 : rest.substr(0, 1) == "\n" ? 1 : rest.substr(0, 2) == "\r\n" ? 2 : 0;
        if (more > 0 && isInLine() && !breakBelongsToLine()) {
            raw_ += rest.substr(0, more);
            i += more;
            takeBreak('\n');
        } else {
            takeBreak(bytes[i]);
        }
    }
    if (line_ == kPrompt) emit();
}

void LineReader::takeCharacter(char byte)
{
    if (byte == '"') isQuoted_ = !isQuoted_;
    if (line_.size() < kMaxLine)
        line_ += byte;
    else
        isTooLong_ = true;
}

bool LineReader::breakBelongsToLine() const
{
    return isQuoted_ && honoursQuotes_ && line_ != echo_ && mayBreakInQuotes(line_);
}

void LineReader::takeBreak(char byte)
{
    const bool isFeed = byte == '\n';
    if (isInLine()) {
        if (breakBelongsToLine()) {
            takeCharacter(byte);
            return;
        }
        isEndComplete_ = isFeed;
        emit();
    } else if (isFeed) {
        if (isEndComplete_) take_({}); // its bytes go with the next line
        isEndComplete_ = true;
    }
}

std::string LineReader::dropLine()
{
    line_.clear();
    isQuoted_ = false;
    isTooLong_ = false;
    return std::exchange(raw_, {});
}

void LineReader::emit()
{
    const std::string line = line_;
    const bool isTooLong = isTooLong_;
    const std::string raw = dropLine();
    take_({line, raw, line == kPrompt, isTooLong});
}

} // namespace host::at_server
