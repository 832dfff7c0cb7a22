#pragma once

#include <string>
#include <vector>

#include <mainControl/records.h>

/// The parser once more, written for being read instead of for speed: every row is searched for in the whole text, and
/// every step stands alone. Tests hold the library against it.
namespace plain {

struct Parser {
    /// @param into  the record as it is before the parse
    Parser(std::string reply, const AtRes &into) : text(std::move(reply)), record(into) {}

    /// Obeys the end-flag table as it stands.
    uint32_t parse();
    uint32_t parseOperatorScan();

    std::string text; ///< edited by each parse
    AtRes record;
    std::int32_t procDataLen = 0;
    std::vector<std::string> log; ///< rendered

  private:
    enum class Step { kDone, kFailed };

    Step preProcess();
    Step takeBody();
    Step takeParameters();
    bool takeCallerLine(const std::string &parameters, std::size_t end);
    void assembleBody(const std::string &body);
    bool assembleNamed(const std::string &line, std::size_t colon);
    void assembleBare(const std::string &line, const std::string &restOfBody);
    void append(const std::string &piece);

    std::size_t end_ = 0; ///< where the flag stands
    int row_ = -1;
    std::string name_; ///< of the first named line
    std::string line_; ///< assembled so far
};

} // namespace plain
