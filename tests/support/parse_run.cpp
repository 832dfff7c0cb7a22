#include "tests/support/parse_run.h"

#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/filled.h"

std::string shown(std::string_view text)
{
    constexpr size_t kMost = 400;
    std::string out = "\"";
    for (const char c : text.substr(0, kMost)) {
        if (c == '\r') {
            out += "\\r";
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\0') {
            out += "\\0";
        } else {
            out += c;
        }
    }
    return out + "\" (" + std::to_string(text.size()) + " characters)";
}

std::ostream &operator<<(std::ostream &out, const ParseState &state)
{
    return out << "code " << state.code << ", CmdId " << state.cmdId << ", Result " << state.result << ", ParasLen "
               << state.parasLen << ", Paras " << shown(state.paras) << ", left " << shown(state.left)
               << ", g_iProcDataLen " << state.procDataLen;
}

ParseRun::ParseRun(std::string_view reply, unsigned char pattern) : text(reply), pattern_(pattern)
{
    fillRecord();
    g_iProcDataLen = kUntouched;
}

void ParseRun::fillRecord()
{
    std::memset(record.data(), pattern_, record.size() - 1);
    record.data()[record.size() - 1] = '\0';
}

ParseState ParseRun::parse()
{
    return state(Bk_Parse_At_Res(text, record));
}

ParseState ParseRun::parseOperatorScan()
{
    return state(Bk_Parse_At_COPS5_Res(text, record));
}

ParseState ParseRun::state(uint32_t code) const
{
    return {code,
            record->CmdId,
            record->Result,
            record->ParasLen,
            std::string(record->Paras, strnlen(record->Paras, sizeof record->Paras)),
            text.str(),
            g_iProcDataLen};
}

bool ParseRun::isUntouchedFrom(size_t position) const
{
    return isFilledWith(pattern_, record->Paras + position, sizeof record->Paras - 1 - position);
}

bool ParseRun::isUntouched() const
{
    const size_t last = record.size() - 1;
    return isFilledWith(pattern_, record.data(), last) && record.data()[last] == '\0';
}

void expectReply(const ReplyCase &row)
{
    SCOPED_TRACE(std::string(row.name) + ": " + shown(row.reply));
    ParseRun run(row.reply);
    const ParseState expected = {
        0, row.cmdId, row.result, row.parasLen, row.paras, row.left, static_cast<int32_t>(row.consumed.size())};
    EXPECT_EQ(run.parse(), expected);
    EXPECT_TRUE(run.isUntouchedFrom(row.paras.size()));
    EXPECT_EQ(g_bWaitingRes, 1);
}
