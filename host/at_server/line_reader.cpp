#include "host/at_server/line_reader.h"

#include <utility>

#include "host/at_server/line_noise.h"
#include "host/at_server/reply.h"
#include "host/at_server/reports.h"

namespace host::at_server {
namespace {

bool isBreak(char byte)
{
    return byte == '\r' || byte == '\n';
}

/** With or without its blank, which may come later, and with a line end or none. */
bool isPrompt(std::string_view line)
{
    return line == kPrompt || line == kPrompt.substr(0, 1);
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
    if (isPrompt(line_)) emit();
}

void LineReader::takeCharacter(char byte)
{
    if (isNoText(byte) && byte != '\r' && byte != '\n') return; // a zero ends a text for those who read it
    if (std::exchange(isBehindPrompt_, false) && byte == ' ') return;
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
    isBehindPrompt_ = isPrompt(line);
    take_({isBehindPrompt_ ? kPrompt : line, raw, isBehindPrompt_, isTooLong});
}

} // namespace host::at_server
