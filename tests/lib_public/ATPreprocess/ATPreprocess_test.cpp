// One reply, one parse: what is found, what is taken, what stays in the text.

#include <string>

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"

namespace {

constexpr int kCereg = 12304;
constexpr int kCgreg = 12305;
constexpr int kCgev = 4193;
constexpr int kCusd = 105;

// {name, reply, CmdId, Result, Paras, ParasLen, consumed, left}
const ReplyCase kBodies[] = {
    {"bare OK", "\r\nOK\r\n", 1, 1, "", 0, "\r\nOK\r\n", ""},
    {"echo", "AT+CGSN\r\r\n123456789012345\r\n\r\nOK\r\n", 1, 1, "123456789012345", 0,
     "\r\n123456789012345\r\n\r\nOK\r\n", ""},
    {"junk before a bare OK", "+CSQ: 1\nOK\r\r\nOK\r\n", 1, 1, "", 0, "\r\nOK\r\n", ""},
    {"bare line", "\r\n861234567\r\n\r\nOK\r\n", 1, 1, "861234567", 0, "\r\n861234567\r\n\r\nOK\r\n", ""},
    {"named line", "\r\n+CPIN: READY\r\n\r\nOK\r\n", 1, 1, "READY", 0, "\r\n+CPIN: READY\r\n\r\nOK\r\n", ""},
    {"lines of one name", "\r\n+CGDCONT: 1,\"IP\"\r\n+CGDCONT: 2,\"IP\"\r\n\r\nOK\r\n", 1, 1, "1,\"IP\";2,\"IP\"", 0,
     "\r\n+CGDCONT: 1,\"IP\"\r\n+CGDCONT: 2,\"IP\"\r\n\r\nOK\r\n", ""},
    {"bare line behind a named one", "\r\n+CGMM: X1\r\nabc\r\n\r\nOK\r\n", 1, 1, "X1,\"abc\"", 0,
     "\r\n+CGMM: X1\r\nabc\r\n\r\nOK\r\n", ""},
    {"named, bare, named", "\r\n+A: 1\r\nb\r\n+A: 2\r\nc\r\n\r\nOK\r\n", 1, 1, "1,\"b\";2,\"c\"", 0,
     "\r\n+A: 1\r\nb\r\n+A: 2\r\nc\r\n\r\nOK\r\n", ""},
    {"two bare lines", "\r\nab\r\n\r\ncd\r\n\r\nOK\r\n", 1, 1, "abcd", 0, "\r\nab\r\n\r\ncd\r\n\r\nOK\r\n", ""},
    {"bare line before a named one", "\r\nab\r\n+A: 1\r\n\r\nOK\r\n", 1, 1, "1", 0, "\r\nab\r\n+A: 1\r\n\r\nOK\r\n",
     ""},
    {"bare line before a quoted colon", "\r\nab\r\n\"c: d\"\r\nef\r\n\r\nOK\r\n", 1, 1, "ef", 0,
     "\r\nab\r\n\"c: d\"\r\nef\r\n\r\nOK\r\n", ""},
    {"bare line before an unclosed named one", "\r\nab\r\n+A: 1\r\nOK\r\n", 1, 1, "", 0, "\r\nab\r\n+A: 1\r\nOK\r\n",
     ""},
    {"quoted colon behind a named line", "\r\n+A: 1\r\n\"c: d\"\r\n\r\nOK\r\n", 1, 1, "1,\"\"c: d\"\"", 0,
     "\r\n+A: 1\r\n\"c: d\"\r\n\r\nOK\r\n", ""},
    {"name with quotes before its colon", "\r\n\"a: \"b: 2\r\n\r\nOK\r\n", 1, 1, "2", 0,
     "\r\n\"a: \"b: 2\r\n\r\nOK\r\n", ""},
    {"another name", "\r\n+A: 1\r\n+B: 2\r\n+A: 3\r\n\r\nOK\r\n", 1, 1, "1", 0,
     "\r\n+A: 1\r\n+B: 2\r\n+A: 3\r\n\r\nOK\r\n", ""},
    {"another case", "\r\n+A: 1\r\n+a: 2\r\n\r\nOK\r\n", 1, 1, "1", 0, "\r\n+A: 1\r\n+a: 2\r\n\r\nOK\r\n", ""},
    {"shorter name that begins alike", "\r\n+COPS: 1\r\n+CO: 2\r\n\r\nOK\r\n", 1, 1, "1;2", 0,
     "\r\n+COPS: 1\r\n+CO: 2\r\n\r\nOK\r\n", ""},
    {"longer name that begins alike", "\r\n+CO: 1\r\n+COPS: 2\r\n\r\nOK\r\n", 1, 1, "1", 0,
     "\r\n+CO: 1\r\n+COPS: 2\r\n\r\nOK\r\n", ""},
    {"empty name", "\r\n: 1\r\n\r\nOK\r\n", 1, 1, "1", 0, "\r\n: 1\r\n\r\nOK\r\n", ""},
    {"empty name behind a named line", "\r\n+A: 1\r\n: 2\r\n\r\nOK\r\n", 1, 1, "1;2", 0,
     "\r\n+A: 1\r\n: 2\r\n\r\nOK\r\n", ""},
    {"empty name is not stored", "\r\n: 1\r\n+A: 2\r\n+A: 3\r\n\r\nOK\r\n", 1, 1, "12;3", 0,
     "\r\n: 1\r\n+A: 2\r\n+A: 3\r\n\r\nOK\r\n", ""},
    {"second colon", "\r\n+A: b: c\r\n\r\nOK\r\n", 1, 1, "b: c", 0, "\r\n+A: b: c\r\n\r\nOK\r\n", ""},
    {"colon without a blank", "\r\n^SYSINFO:2,3,0,5,1\r\n\r\nOK\r\n", 1, 1, "^SYSINFO:2,3,0,5,1", 0,
     "\r\n^SYSINFO:2,3,0,5,1\r\n\r\nOK\r\n", ""},
    {"empty values", "\r\n+A: \r\n+A: \r\n\r\nOK\r\n", 1, 1, ";", 0, "\r\n+A: \r\n+A: \r\n\r\nOK\r\n", ""},
    {"quoted line break", "\r\n+A: \"x\r\ny\",1\r\n+A: 2\r\n\r\nOK\r\n", 1, 1, "\"x\r\ny\",1;2", 0,
     "\r\n+A: \"x\r\ny\",1\r\n+A: 2\r\n\r\nOK\r\n", ""},
    {"empty lines", "\r\n\r\n\r\n+A: 1\r\n\r\n\r\n+A: 2\r\n\r\n\r\nOK\r\n", 1, 1, "1;2", 0,
     "\r\n\r\n\r\n+A: 1\r\n\r\n\r\n+A: 2\r\n\r\n\r\nOK\r\n", ""},
    {"single CR and LF are text", "\r\na\rb\nc\r\n\r\nOK\r\n", 1, 1, "a\rb\nc", 0, "\r\na\rb\nc\r\n\r\nOK\r\n", ""},
    {"unclosed last line", "\r\n12345\r\nOK\r\n", 1, 1, "", 0, "\r\n12345\r\nOK\r\n", ""},
    {"unclosed second line", "\r\n+A: 1\r\n+A: 2\r\nOK\r\n", 1, 1, "1", 0, "\r\n+A: 1\r\n+A: 2\r\nOK\r\n", ""},
    {"quoted OK", "\r\n+A: \"\r\nOK\r\n\"\r\n\r\nOK\r\n", 1, 1, "\"\r\nOK\r\n\"", 0,
     "\r\n+A: \"\r\nOK\r\n\"\r\n\r\nOK\r\n", ""},
    {"registration is no report", "\r\n+CREG: 1,1\r\n\r\nOK\r\n", 1, 1, "1,1", 0, "\r\n+CREG: 1,1\r\n\r\nOK\r\n", ""},
    {"short message is no report", "\r\n+CMT: 5\r\n\r\nOK\r\n", 1, 1, "5", 0, "\r\n+CMT: 5\r\n\r\nOK\r\n", ""},
    {"call is no report", "\r\n+CLIP: \"1\",129\r\n\r\nOK\r\n", 1, 1, "\"1\",129", 0,
     "\r\n+CLIP: \"1\",129\r\n\r\nOK\r\n", ""},
    {"two bare OKs", "\r\nOK\r\n\r\nOK\r\n", 1, 1, "", 0, "\r\nOK\r\n", "\r\nOK\r\n"},
    {"OK that shares its line break", "\r\nOK\r\nERROR\r\n", 1, 1, "", 0, "\r\nOK\r\n", "ERROR\r\n"},
    {"OK before ERROR", "\r\n12\r\n\r\nOK\r\n\r\nERROR\r\n", 1, 1, "12", 0, "\r\n12\r\n\r\nOK\r\n", "\r\nERROR\r\n"},
};

const ReplyCase kOthers[] = {
    {"ERROR", "\r\nERROR\r\n", 2, 2, "", 0, "\r\nERROR\r\n", ""},
    {"ERROR behind a body", "AT\r\r\nab\r\n\r\nERROR\r\n", 2, 2, "", 0, "\r\nERROR\r\n", "\r\nab\r\n"},
    {"ERROR before OK", "\r\nab\r\n\r\nERROR\r\n\r\nOK\r\n", 2, 2, "", 0, "\r\nERROR\r\n", "\r\nab\r\n\r\nOK\r\n"},
    {"CMS error", "\r\n+CMS ERROR: 500\r\n", 3, 3, "500", 3, "\r\n+CMS ERROR: 500\r\n", ""},
    {"CME error", "\r\n+CME ERROR: 10\r\n", 4, 4, "10", 2, "\r\n+CME ERROR: 10\r\n", ""},
    {"CME error text", "\r\n+CME ERROR: SIM busy\r\n", 4, 4, "SIM busy", 8, "\r\n+CME ERROR: SIM busy\r\n", ""},
    {"CME error behind a body", "\r\n+A: 1\r\n\r\n+CME ERROR: 10\r\n", 4, 4, "10", 2, "\r\n+CME ERROR: 10\r\n",
     "\r\n+A: 1\r\n"},
    {"prompt", "AT+CMGS=1\r\r\n> ", 5, 11, "", 0, "\r\n> ", ""},
    {"prompt and more", "\r\n> \r\nOK\r\n", 5, 11, "", 0, "\r\n> ", "\r\nOK\r\n"},
    {"not support", "\r\nab\r\n\r\nnot support\r\n", 6, 13, "", 0, "\r\nnot support\r\n", "\r\nab\r\n"},
    {"report without parameters", "\r\n+ZEND\r\n\r\nOK\r\n", 4111, 12, "", 0, "\r\n+ZEND\r\n", "\r\nOK\r\n"},
    {"report", "\r\n+CEREG: 1,\"00A1\"\r\n", kCereg, 12, "1,\"00A1\"", 8, "\r\n+CEREG: 1,\"00A1\"\r\n", ""},
    {"report without parameters behind its blank", "\r\n+CEREG: \r\n", kCereg, 12, "", 0, "\r\n+CEREG: \r\n", ""},
    {"report before OK", "\r\n+CEREG: 1\r\n\r\nOK\r\n", kCereg, 12, "1", 1, "\r\n+CEREG: 1\r\n", "\r\nOK\r\n"},
    {"report behind OK", "\r\nOK\r\n\r\n+CEREG: 1\r\n", 1, 1, "", 0, "\r\nOK\r\n", "\r\n+CEREG: 1\r\n"},
    {"report between body and OK", "\r\n12\r\n\r\n+CGEV: X\r\n\r\nOK\r\n", kCgev, 12, "X", 1, "\r\n+CGEV: X\r\n",
     "\r\n12\r\n\r\nOK\r\n"},
    {"later row of the table, earlier in the text", "\r\n+CGREG: 1\r\n\r\n+CEREG: 2\r\n", kCgreg, 12, "1", 1,
     "\r\n+CGREG: 1\r\n", "\r\n+CEREG: 2\r\n"},
    {"report behind an echo", "x\r\n+CGREG: 5\r\n", kCgreg, 12, "5", 1, "\r\n+CGREG: 5\r\n", ""},
    {"unclosed report", "\r\n+CEREG: 1", kCereg, 12, "", 0, "\r\n+CEREG: ", "1"},
    {"report closed inside quotes only", "\r\n+CUSD: 0,\"a\r\nb", kCusd, 12, "", 0, "\r\n+CUSD: ", "0,\"a\r\nb"},
    {"quoted line break in a report", "\r\n+CUSD: 0,\"a\r\nb\",15\r\n\r\nOK\r\n", kCusd, 12, "0,\"a\r\nb\",15", 11,
     "\r\n+CUSD: 0,\"a\r\nb\",15\r\n", "\r\nOK\r\n"},
    {"quoted report", "\r\n+A: \"\r\n+CEREG: 1\r\n\"\r\n\r\nOK\r\n", 1, 1, "\"\r\n+CEREG: 1\r\n\"", 0,
     "\r\n+A: \"\r\n+CEREG: 1\r\n\"\r\n\r\nOK\r\n", ""},
    {"no blank behind the colon", "\r\n+ZMCON:1\r\n", 57, 12, "1", 1, "\r\n+ZMCON:1\r\n", ""},
    {"a blank behind that colon is a parameter", "\r\n+ZMCON: 1\r\n", 57, 12, " 1", 2, "\r\n+ZMCON: 1\r\n", ""},
    {"longer name of that kind", "\r\n+ZMCONV6:1\r\n", 58, 12, "1", 1, "\r\n+ZMCONV6:1\r\n", ""},
    {"status report runs to the end", "\r\n+CDS: 5\r\n0791\r\n\r\nOK\r\n", 27, 12, "5\r\n0791\r\n\r\nOK\r\n", 15,
     "\r\n+CDS: 5\r\n0791\r\n\r\nOK\r\n", ""},
    {"broadcast runs to the end, unclosed", "\r\n+CBM: 5\r\n0791", 29, 12, "5\r\n0791", 7, "\r\n+CBM: 5\r\n0791", ""},
    {"cell list runs to the end", "\r\nab\r\n\r\n+ZCLAS: 1\r\n2\r\n", 4097, 12, "1\r\n2\r\n", 6,
     "\r\n+ZCLAS: 1\r\n2\r\n", "\r\nab\r\n"},
    {"empty, to the end", "\r\n+CDS: ", 27, 12, "", 0, "\r\n+CDS: ", ""},
    {"message name behind a report", "\r\n+CEREG: 1\r\n\r\n+CMT: 2\r\n3\r\n", kCereg, 12, "1\r\n\r\n+CMT: 2\r\n3\r\n",
     17, "\r\n+CEREG: 1\r\n\r\n+CMT: 2\r\n3\r\n", ""},
    {"message name before a report", "\r\n+CMT: 2\r\n\r\n+CEREG: 1\r\n", kCereg, 12, "1\r\n", 3, "\r\n+CEREG: 1\r\n",
     "\r\n+CMT: 2\r\n"},
    {"quoted message name", "\r\n+CEREG: \"CMT:\"\r\n\r\nOK\r\n", kCereg, 12, "\"CMT:\"\r\n\r\nOK\r\n", 14,
     "\r\n+CEREG: \"CMT:\"\r\n\r\nOK\r\n", ""},
    {"message name in dropped junk", "CMT: CBM: CDS: ZCLAS:\r\n+CEREG: 1\r\n\r\nOK\r\n", kCereg, 12, "1", 1,
     "\r\n+CEREG: 1\r\n", "\r\nOK\r\n"},
    {"message indication ends with its line", "\r\n+CMTI: \"SM\",1\r\n\r\nOK\r\n", 25, 12, "\"SM\",1", 6,
     "\r\n+CMTI: \"SM\",1\r\n", "\r\nOK\r\n"},
    {"status indication ends with its line", "\r\n+CDSI: \"SM\",1\r\n\r\nOK\r\n", 26, 12, "\"SM\",1", 6,
     "\r\n+CDSI: \"SM\",1\r\n", "\r\nOK\r\n"},
    {"message name does not touch an OK body", "\r\n+A: CMT:\r\n\r\nOK\r\n\r\nab\r\n", 1, 1, "CMT:", 0,
     "\r\n+A: CMT:\r\n\r\nOK\r\n", "\r\nab\r\n"},
};

TEST(ParseReply, TakesTheBodyOfAnOk)
{
    for (const ReplyCase &row : kBodies)
        expectReply(row);
}

TEST(ParseReply, TakesOtherResultsAndReports)
{
    for (const ReplyCase &row : kOthers)
        expectReply(row);
}

TEST(ParseReply, KnowsEveryRow)
{
    const std::string parameters = "7,\"x\"";
    const std::string behind = "\r\nOK\r\n";
    for (const AtEndFlagRow &row : KoraWcdma_AtEndFlgTable) {
        const std::string flag = row.flag;
        ReplyCase expected = {row.flag, "", row.identifier, row.result, "", 0, flag, behind};
        if (row.hasParas != 0) {
            const bool toTheEnd = flag == "\r\n+CDS: " || flag == "\r\n+CBM: " || flag == "\r\n+ZCLAS: ";
            expected.paras = toTheEnd ? parameters + "\r\n" + behind : parameters;
            expected.parasLen = static_cast<int32_t>(expected.paras.size());
            expected.consumed = flag + parameters + "\r\n" + (toTheEnd ? behind : "");
            expected.left = toTheEnd ? "" : behind;
        }
        expected.reply = flag + (row.hasParas != 0 ? parameters + "\r\n" : "") + behind;
        expectReply(expected);
    }
}

struct FailingCase {
    const char *reply;
    const char *left;
};

TEST(ParseReply, FailsWithoutAnEndFlag)
{
    const FailingCase cases[] = {
        // without a line break only the last character stays
        {"", ""},
        {"K", "K"},
        {"OK", "K"},
        {"\r", "\r"},
        {"ab\n\r", "\r"},
        {"AT+X=\"\r\nOK\r\n", "\n"},
        {"\"\r\nOK\r\n\"", "\""},
        // with one, what stands before it goes
        {"\r\n", "\r\n"},
        {"ab\r\n", "\r\n"},
        {"\nOK\r\n", "\r\n"},
        {"AT\r\r\n12\r\n", "\r\n12\r\n"},
        {"\r\nOK", "\r\nOK"},
        {"\r\nOK\r", "\r\nOK\r"},
        {"\r\nok\r\n", "\r\nok\r\n"},
        {"\r\nOK \r\n", "\r\nOK \r\n"},
        {"\r\n OK\r\n", "\r\n OK\r\n"},
        {"\r\nERROR", "\r\nERROR"},
        {"\r\n>", "\r\n>"},
        {"\r\n+ZEND: \r\n", "\r\n+ZEND: \r\n"},
        {"\r\nNOT SUPPORT\r\n", "\r\nNOT SUPPORT\r\n"},
        {"\r\n+CME ERROR:10\r\n", "\r\n+CME ERROR:10\r\n"},
        {"\r\n+CEREG:1\r\n", "\r\n+CEREG:1\r\n"},
        {"\r\n+cereg: 1\r\n", "\r\n+cereg: 1\r\n"},
        {"\r\n+CREG: 1\r\n", "\r\n+CREG: 1\r\n"},
        {"\n+CEREG: 1\r\n", "\r\n"},
        {"\r\n+A: \"1\r\n\r\nOK\r\n", "\r\n+A: \"1\r\n\r\nOK\r\n"},
        {"\r\n\"\r\nOK\r\n\"\r\n", "\r\n\"\r\nOK\r\n\"\r\n"},
    };
    for (const FailingCase &row : cases) {
        SCOPED_TRACE(shown(row.reply));
        ParseRun run(row.reply);
        EXPECT_EQ(run.parse(), (ParseState{19, 0, 0, 0, "", row.left, ParseRun::kUntouched}));
        EXPECT_TRUE(run.isUntouched());
    }
}

} // namespace
