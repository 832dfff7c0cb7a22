#ifndef TESTS_SUPPORT_PLAIN_PARSER_H
#define TESTS_SUPPORT_PLAIN_PARSER_H

#include <string>
#include <vector>

#include <mainControl/records.h>

/** The parser once more, written for being read instead of for speed: every row is searched for in the whole text, and
 *  every step stands alone. Tests hold the library against it. */
namespace plain {

struct Parser {
    /** @param into  the record as it is before the parse */
    Parser(const std::string &reply, const AtRes &into) : text(reply), buffer(reply + '\0'), record(into) {}

    /** Obeys the end-flag table as it stands. */
    uint32_t parse();
    uint32_t parseOperatorScan();

    std::string text;   ///< edited by each parse
    std::string buffer; ///< what the text stands in, with what its editing leaves behind the end
    AtRes record;
    int32_t procDataLen = 0;
    std::vector<std::string> log; ///< rendered

  private:
    enum class Step { Done, Failed };

    /** Moves what stands behind a stretch over it. */
    void cutOut(size_t at, size_t length);
    Step preProcess();
    Step takeBody();
    Step takeParameters();
    bool takeCallerLine(const std::string &parameters, size_t end);
    void assembleBody(const std::string &whole);
    bool assembleNamed(const std::string &line, size_t colon);
    void assembleBare(const std::string &line, const std::string &restOfBody);
    void append(const std::string &piece);

    size_t end_ = 0; ///< where the flag stands
    int row_ = -1;
    std::string name_; ///< of the first named line
    std::string line_; ///< assembled so far
};

} // namespace plain

#endif
