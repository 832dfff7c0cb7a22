#include "tests/support/plain_parser.h"

#include <algorithm>
#include <cstring>

#include <mainControl/parser.h>

namespace plain {
namespace {

constexpr size_t kNone = std::string::npos;
constexpr size_t kNameKept = 29;
constexpr size_t kPieceKept = 1024;
constexpr size_t kTextKept = sizeof(AtRes::Paras) - 1;

/** The quotes of each stretch that was passed over are added up; the first character of a hit that lies inside quotes
 *  belongs to no stretch. */
size_t findOutsideQuotes(const std::string &text, const std::string &needle, size_t from)
{
    ptrdiff_t quotes = 0;
    size_t current = from;
    for (;;) {
        const size_t hit = text.find(needle, current);
        if (hit == kNone) return kNone;
        quotes += std::count(text.data() + current, text.data() + hit, '"');
        if (quotes % 2 == 0) return hit;
        current = hit + 1;
    }
}

bool contains(const std::string &text, const char *needle)
{
    return text.find(needle) != kNone;
}

bool runsToTheEnd(const std::string &text)
{
    return contains(text, "CBM:") || contains(text, "CMT:") || contains(text, "CDS:") || contains(text, "ZCLAS:");
}

std::string flagOf(const AtEndFlagRow &row)
{
    return {row.flag, strnlen(row.flag, sizeof row.flag)};
}

int commasOutsideQuotes(const std::string &text)
{
    int commas = 0;
    bool quoted = false;
    for (const char c : text) {
        if (c == '"') quoted = !quoted;
        if (c == ',' && !quoted) ++commas;
    }
    return commas;
}

/** Copies without a terminator. */
void copyInto(char (&field)[sizeof(AtRes::Paras)], const std::string &text)
{
    std::memcpy(field, text.data(), std::min(text.size(), kTextKept));
}

} // namespace

uint32_t Parser::parse()
{
    log.push_back("Bk_Parse_At_Res-in-" + text);
    if (preProcess() == Step::Failed) {
        log.emplace_back("UNI_ERROR_BK_FAIL1");
        return 19;
    }
    const AtEndFlagRow &row = KoraWcdma_AtEndFlgTable[row_];
    record.CmdId = static_cast<uint16_t>(row.identifier);
    record.Result = static_cast<uint8_t>(row.result);
    procDataLen = static_cast<int32_t>(flagOf(row).size());
    name_.clear();
    line_.clear();
    if (row.hasParas == 0) takeBody();
    if (row.hasParas == 1) takeParameters();
    cutOut(end_, static_cast<size_t>(procDataLen));
    log.push_back("Bk_Parse_At_Res-out-" + std::string(record.Paras));
    log.push_back("Bk_Parse_At_Res-out-" + std::to_string(record.CmdId));
    return 0;
}

uint32_t Parser::parseOperatorScan()
{
    if (findOutsideQuotes(text, "\r\nOK\r\n", 0) == kNone) return 19;
    record.Result = AT_RES_RESULT_OK;
    record.CmdId = 1;
    copyInto(record.Paras, text);
    return 0;
}

void Parser::cutOut(size_t at, size_t length)
{
    const size_t moved = text.size() - at - length + 1; // with the terminator
    std::memmove(buffer.data() + at, buffer.data() + at + length, moved);
    text.erase(at, length);
}

Parser::Step Parser::preProcess()
{
    const size_t lineBreak = findOutsideQuotes(text, "\r\n", 0);
    if (lineBreak == kNone) {
        if (!text.empty()) cutOut(0, text.size() - 1);
        return Step::Failed;
    }
    cutOut(0, lineBreak);
    end_ = text.size();
    row_ = -1;
    const int rows = std::clamp(KoraWcdma_AtEndFlgTableSize, 0, 50);
    for (int i = 0; i < rows; ++i) {
        const size_t hit = findOutsideQuotes(text, flagOf(KoraWcdma_AtEndFlgTable[i]), 0);
        if (hit == kNone || hit >= end_) continue;
        end_ = hit;
        row_ = i;
        if (hit == 0) break;
    }
    return row_ == -1 ? Step::Failed : Step::Done;
}

Parser::Step Parser::takeBody()
{
    if (record.Result != AT_RES_RESULT_OK) return Step::Failed;
    if (end_ == 0) return Step::Failed;
    const std::string body = text.substr(0, end_);
    procDataLen += static_cast<int32_t>(body.size());
    copyInto(record.Paras, body);
    assembleBody(std::string(record.Paras));
    std::memset(record.Paras, 0, sizeof record.Paras);
    copyInto(record.Paras, line_);
    end_ = 0;
    return Step::Done;
}

void Parser::assembleBody(const std::string &whole)
{
    const std::string body = whole.size() < 2 ? "" : whole.substr(2);
    size_t current = 0;
    for (;;) {
        const size_t lineBreak = findOutsideQuotes(body, "\r\n", current);
        if (lineBreak == kNone) return;
        const std::string line = body.substr(current, lineBreak - current);
        if (!line.empty()) {
            const size_t colon = findOutsideQuotes(line, ": ", 0);
            if (colon == kNone) {
                assembleBare(line, body.substr(current));
            } else if (!assembleNamed(line, colon)) {
                return;
            }
        }
        current = lineBreak + 2;
    }
}

bool Parser::assembleNamed(const std::string &line, size_t colon)
{
    const std::string name = line.substr(0, std::min(colon, kNameKept));
    if (name_.empty()) {
        name_ = name;
    } else {
        if (name_.substr(0, name.size()) != name) return false;
        append(";");
    }
    append(line.substr(colon + 2, kPieceKept));
    return true;
}

void Parser::assembleBare(const std::string &line, const std::string &restOfBody)
{
    if (!name_.empty()) {
        append(",\"");
        append(line.substr(0, kPieceKept));
        append("\"");
    } else if (!contains(restOfBody, ": ")) {
        append(line.substr(0, kPieceKept));
    }
}

void Parser::append(const std::string &piece)
{
    line_ += piece.substr(0, kTextKept - line_.size());
}

Parser::Step Parser::takeParameters()
{
    const size_t start = end_ + static_cast<size_t>(procDataLen);
    const bool toTheEnd = runsToTheEnd(text);
    const size_t end = toTheEnd ? text.size() : findOutsideQuotes(text, "\r\n", start);
    if (end == kNone) return Step::Failed;
    const std::string parameters = text.substr(start, end - start);
    if (record.CmdId == 89 && takeCallerLine(parameters, end)) return Step::Done;
    procDataLen += static_cast<int32_t>(parameters.size()) + (toTheEnd ? 0 : 2);
    copyInto(record.Paras, parameters);
    record.ParasLen = static_cast<uint16_t>(parameters.size());
    return Step::Done;
}

bool Parser::takeCallerLine(const std::string &parameters, size_t end)
{
    const std::string behind = "\r\n\r\nOK\r\n";
    if (text.substr(end) != behind || commasOutsideQuotes(parameters) != 1) return false;
    record.Result = AT_RES_RESULT_OK;
    line_ = parameters;
    procDataLen += static_cast<int32_t>(parameters.size() + behind.size());
    return true;
}

} // namespace plain
