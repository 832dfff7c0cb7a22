/** From bytes to lines, whatever a modem ends its lines with: CR LF, CR CR LF, LF alone or CR alone. */
#ifndef HOST_AT_SERVER_LINE_READER_H
#define HOST_AT_SERVER_LINE_READER_H

#include <functional>
#include <string>
#include <string_view>

namespace host::at_server {

struct Line {
    std::string_view text;  ///< without its end
    std::string_view raw;   ///< all bytes since the line before, its end and empty lines included
    bool isPrompt = false;  ///< its text is kPrompt, whatever the modem makes of it: no line end has to follow
    bool isTooLong = false; ///< more than LineReader::kMaxLine; its text is what fitted
};

class LineReader {
  public:
    static constexpr size_t kMaxLine = 40960; ///< room for a long operator scan on one line

    using Take = std::function<void(const Line &)>;

    /** @param take  called with each line, empty ones too; its views hold during the call */
    explicit LineReader(Take take) : take_(std::move(take)) {}

    void feed(std::string_view bytes);

    /** From now on a line break within quotes belongs to its line, or ends it all the same. */
    void honourQuotes(bool whether) { honoursQuotes_ = whether; }

    /** The echo to be expected, which ends at its line break however many quotes it has. */
    void expectEcho(std::string_view command) { echo_ = command; }

    /** Whether the end of a line is still to come. */
    bool isInLine() const { return !line_.empty(); }

    /** Forgets what there is of a line.
     *  @return its bytes */
    std::string dropLine();

    /** Hands on all that its future depends on, for those who compare states. */
    template <typename Visit>
    void state(Visit &&visit) const
    {
        visit(line_, echo_, honoursQuotes_, isQuoted_, isTooLong_, isEndComplete_, isBehindPrompt_);
    }

  private:
    void takeBreak(char byte);
    void takeCharacter(char byte);
    bool breakBelongsToLine() const;
    void emit();

    Take take_;
    std::string line_;
    std::string raw_;
    std::string echo_;
    bool honoursQuotes_ = true;
    bool isQuoted_ = false;
    bool isTooLong_ = false;
    bool isEndComplete_ = true; ///< the line feed of the last line's end has come
    bool isBehindPrompt_ = false;
};

} // namespace host::at_server

#endif
