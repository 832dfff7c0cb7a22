// Where each report goes that the AT-client library hands over.

#include <cstring>

#include "tests/support/api_call.h"
#include "tests/support/heard.h"
#include "tests/support/sample_text.h"
#include "tests/support/saved_tables.h"

namespace {

using scripted::Host;
using scripted::kPlatforms;
using scripted::OnPlatform;

struct FlagRow {
    const char *flag;
    int32_t identifier;
    bool hasParas;
    uint32_t code;

    /** The rows of reports of several lines, whose parameters run to the end of the text. */
    [[nodiscard]] bool runsToTheEnd() const { return identifier == 27 || identifier == 29 || identifier == 4097; }
};

// Every text that the parser knows, in its order. Those of the last column that are 0 have a handler.
const FlagRow kFlags[] = {
    {"\r\nOK\r\n", 1, false, 1},
    {"\r\nERROR\r\n", 2, false, 1},
    {"\r\n+CMS ERROR: ", 3, true, 1},
    {"\r\n+CME ERROR: ", 4, true, 1},
    {"\r\n> ", 5, false, 1},
    {"\r\nnot support\r\n", 6, false, 1},
    {"\r\n+TSTUD: ", 4116, true, 1},
    {"\r\n+TSTC: ", 4115, true, 1},
    {"\r\n+Zunsupport: ", 4114, true, 1},
    {"\r\n+ZMTime: ", 4113, true, 1},
    {"\r\n+ZSMSR: ", 4112, true, 1},
    {"\r\n+ZDIST: ", 4107, true, 1},
    {"\r\n+ZSTI: ", 4105, true, 1},
    {"\r\n+ZEND\r\n", 4111, false, 1},
    {"\r\n+ZPSTM: ", 4110, true, 1},
    {"\r\n+STKPCI: ", 4110, true, 1},
    {"\r\n+ZGINP: ", 4109, true, 1},
    {"\r\n+ZGINK: ", 4108, true, 1},
    {"\r\n+ZCLAS: ", 4097, true, 1},
    {"\r\n+ZVMAIL: ", 24, true, 1},
    {"\r\n+CMTI: ", 25, true, 1},
    {"\r\n+CDSI: ", 26, true, 1},
    {"\r\n+CDS: ", 27, true, 1},
    {"\r\n+CBM: ", 29, true, 1},
    {"\r\n+CUSD: ", 105, true, 1},
    {"\r\n+CEREG: ", 12304, true, 0},
    {"\r\n+CGREG: ", 12305, true, 0},
    {"\r\n+ZDONR: ", 4158, true, 0},
    {"\r\n+ZPASR: ", 4157, true, 0},
    {"\r\n+ZOPERTER: ", 4169, true, 0},
    {"\r\n$ARME: ", 56, true, 1},
    {"\r\n+ZMCON:", 57, true, 1},
    {"\r\n+ZMCONV6:", 58, true, 1},
    {"\r\n+CON_STATUS:", 60, true, 1},
    {"\r\n+ZCONSTAT: ", 12298, true, 1},
    {"\r\n+ZGIPDNS: ", 12299, true, 1},
    {"\r\n+ZPBIC: ", 12307, true, 0},
    {"\r\n+PSBEARER: ", 4177, true, 0},
    {"\r\n+EUSIM: ", 4181, true, 0},
    {"\r\n+ECSQ: ", 4182, true, 0},
    {"\r\n+ESMLA: ", 4183, true, 0},
    {"\r\n+ECFU: ", 4184, true, 0},
    {"\r\n+ESPEECH: ", 4185, true, 0},
    {"\r\n+ESCRI: ", 4186, true, 0},
    {"\r\n+ESIMS: ", 4187, true, 0},
    {"\r\n+ETESTSIM: ", 4188, true, 0},
    {"\r\n+ECIPH: ", 4189, true, 0},
    {"\r\n+ECELLINFO: ", 4190, true, 0},
    {"\r\n+ENWINFO: ", 4191, true, 0},
    {"\r\n+CGEV: ", 4193, true, 0},
};

/** A raw report in guarded memory. Its header words are none of the library's business. */
class Report {
  public:
    explicit Report(std::string_view text)
    {
        record_->header[0] = 0xA5A5A5A5;
        record_->header[1] = 0x5A5A5A5A;
        std::memcpy(record_->aucDataBuf, text.data(), text.size());
    }

    uint32_t process() { return ProcessMainControlAtCallback(record_); }
    void expectLeft(const std::string &text) const
    {
        EXPECT_EQ(std::string(record_->aucDataBuf), text);
        EXPECT_EQ(record_->header[0], 0xA5A5A5A5U);
        EXPECT_EQ(record_->header[1], 0x5A5A5A5AU);
    }

  private:
    GuardedRecord<AtClientRes> record_;
};

Log entry(const std::string &text)
{
    return Log().api("ProcessMainControlAtCallback-pRes->aucDataBuf = %s", {text});
}

TEST(Reports, GoByTheirIdentifier)
{
    const Listeners listeners;
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        for (const FlagRow &row : kFlags) {
            const std::string line = row.hasParas ? "3,\"A\",\"B\"" : "";
            const std::string close = row.hasParas ? "\r\n" : "";
            const std::string text = row.flag + line + close;
            Host host;
            Report report(text);
            EXPECT_EQ(report.process(), row.code) << row.flag;
            report.expectLeft("");
            if (row.identifier == 12304)
                Listeners::expect({{"cereg", 3, "A", "B"}}, row.flag);
            else if (row.identifier == 12305)
                Listeners::expect({{"cgreg", 3, "A", "B"}}, row.flag);
            else
                Listeners::expect({}, row.flag);
            Log log = entry(text).parsed(text, row.runsToTheEnd() ? line + close : line, row.identifier);
            if (row.identifier == 4193) log.api("%s", {"CGEV_Notify"});
            log.expectFrom(host);
        }
    }
}

TEST(Reports, OfCircuitSwitchedRegistrationNeedARow)
{
    const SavedTables saved;
    const Listeners listeners;
    const std::string text = "\r\n+CREG: 5,\"00A1\",\"0001B2C3\"\r\n";
    {
        Host host;
        Report report(text);
        EXPECT_EQ(report.process(), 19U);
        Listeners::expect({}, "without a row");
        entry(text).unparsed(text).expectFrom(host);
    }
    for (const int32_t identifier : {71, 65536 + 71}) {
        KoraWcdma_AtEndFlgTable[6] = endFlag("\r\n+CREG: ", AT_RES_RESULT_REPORT, identifier, 1);
        Host host;
        Report report(text);
        EXPECT_EQ(report.process(), 0U);
        report.expectLeft("");
        Listeners::expect({{"creg", 5, "00A1", "0001B2C3"}}, "with a row");
        entry(text).parsed(text, "5,\"00A1\",\"0001B2C3\"", 71).expectFrom(host);
    }
}

// One identifier after the other under the same text, around all that have a name.
TEST(Reports, GoNowhereUnderAnyOtherIdentifier)
{
    const SavedTables saved;
    const Listeners listeners;
    Listeners::stopListening();
    std::vector<int32_t> handled;
    const std::pair<int32_t, int32_t> ranges[] = {{0, 4300}, {8190, 8230}, {12280, 12320}, {65520, 65535}};
    for (const auto &[first, last] : ranges) {
        for (int32_t identifier = first; identifier <= last; ++identifier) {
            KoraWcdma_AtEndFlgTable[0] = endFlag("\r\n+X: ", AT_RES_RESULT_REPORT, identifier, 1);
            Host host;
            Report report("\r\n+X: 1\r\n");
            const uint32_t code = report.process();
            if (code == 0)
                handled.push_back(identifier);
            else
                EXPECT_EQ(code, UNI_ERROR_FALSE) << identifier;
        }
    }
    EXPECT_EQ(handled, (std::vector<int32_t>{71,   4157, 4158, 4169, 4177, 4181, 4182, 4183,  4184,  4185,
                                             4186, 4187, 4188, 4189, 4190, 4191, 4193, 12304, 12305, 12307}));
}

TEST(Reports, ThatCannotBeParsedReturnTheParsersCode)
{
    const Listeners listeners;
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {"OK", "K"},
        {"+CEREG: 1", "1"},
        {"\"\r\n+CEREG: 1\r\n\"", "\""},
        {"\r\n", "\r\n"},
        {"x\r\n+CREG: 1\r\n", "\r\n+CREG: 1\r\n"},
        {"\r\n+CEREG:1\r\n", "\r\n+CEREG:1\r\n"},
        {"\r\n+cereg: 1\r\n", "\r\n+cereg: 1\r\n"},
    };
    for (const auto &[text, left] : rows) {
        Host host;
        Report report(text);
        EXPECT_EQ(report.process(), 19U) << text;
        report.expectLeft(left);
        Listeners::expect({}, text);
        entry(text).unparsed(text).expectFrom(host);
    }
}

TEST(Reports, ThatAreNoneReturnTheParsersCode)
{
    const Listeners listeners;
    Host host;
    EXPECT_EQ(ProcessMainControlAtCallback(nullptr), UNI_ERROR_BK_INVALID_ARG);
    Listeners::expect({}, "no report");
    EXPECT_EQ(host.texts(), (std::vector<std::string>{"ProcessMainControlAtCallback-pRes->aucDataBuf = (null)",
                                                      "Bk_Parse_At_Res-in-(null)", "UNI_ERROR_BK_INVALID_ARG"}));
}

TEST(Reports, AreNotTheRepliesOfCommands)
{
    const Listeners listeners;
    const std::string text = "\r\n+CREG: 1,\"A\",\"B\"\r\n\r\nOK\r\n\r\n+CEREG: 3\r\n";
    Report report(text);
    {
        Host host;
        EXPECT_EQ(report.process(), UNI_ERROR_FALSE);
        report.expectLeft("\r\n+CEREG: 3\r\n");
        Listeners::expect({}, text);
        entry(text).parsed(text, "1,\"A\",\"B\"", 1).expectFrom(host);
    }
    Host host;
    EXPECT_EQ(report.process(), UNI_ERROR_SUCCESS);
    Listeners::expect({{"cereg", 3, "", ""}}, "behind a reply");
}

TEST(Reports, AreTakenOneByOne)
{
    const Listeners listeners;
    const std::string first = "junk\r\n+CGREG: 1,\"00A1\",\"0001B2C3\",7,\"01\"\r\n";
    const std::string second = "\r\n+CGEV: ME DETACH\r\n";
    const std::string third = "\r\n+CEREG: 2\r\n";
    Report report(first + second + third);

    const std::pair<std::string, std::vector<Heard>> rows[] = {
        {second + third, {{"cgreg", 1, "00A1", "0001B2C3"}}}, {third, {}}, {"", {{"cereg", 2, "", ""}}}};
    for (const auto &[left, heard] : rows) {
        Host host;
        EXPECT_EQ(report.process(), 0U);
        report.expectLeft(left);
        Listeners::expect(heard, left);
    }
    Host host;
    EXPECT_EQ(report.process(), 19U);
    report.expectLeft("");
    Listeners::expect({}, "nothing left");
}

TEST(Reports, WithoutTheirLineBreakAreEmpty)
{
    const Listeners listeners;
    const std::string text = "\r\n+CEREG: 1,\"A\"";
    {
        Host host;
        EXPECT_EQ(Report("\r\n+CEREG: 5,\"long area\",\"long cell\"\r\n").process(), 0U);
        Listeners::expect({{"cereg", 5, "long area", "long cell"}}, "the one before");
    }
    Host host;
    Report report(text);
    EXPECT_EQ(report.process(), 0U);
    report.expectLeft("1,\"A\"");
    Listeners::expect({{"cereg", 0, "", ""}}, text);
    entry(text).parsed(text, "", 12304).expectFrom(host);
}

TEST(Reports, MayFillTheWholeBuffer)
{
    const Listeners listeners;
    const std::string text = "\r\n+CEREG: 1,\"A\",\"B\"\r\n";
    const std::string whole = text + filled(10239 - text.size());
    Host host;
    Report report(whole);
    EXPECT_EQ(report.process(), 0U);
    report.expectLeft(filled(10239 - text.size()));
    Listeners::expect({{"cereg", 1, "A", "B"}}, "10239 characters");
    entry(whole).parsed(whole, "1,\"A\",\"B\"", 12304).expectFrom(host);
}

struct UnterminatedRow {
    std::string text;
    char filler;
    uint32_t code;
    std::vector<Heard> heard;
};

TEST(Reports, EndWithTheBufferAtTheLatest)
{
    const UnterminatedRow rows[] = {
        {"\r\n+CEREG: 1,\"A\",\"B\"\r\n", 'x', 0, {{"cereg", 1, "A", "B"}}},
        {"\r\n+CGREG: 4\r\n", '\n', 0, {{"cgreg", 4, "", ""}}},
        {"\r\n+CEREG: ", '1', 0, {{"cereg", 0, "", ""}}},
        {"\r\n+CEREG: 1,\"", '"', 0, {{"cereg", 0, "", ""}}},
        {"\r\n+ZDONR: 1\r\n", '"', 0, {}},
        {"\r\n+ZMCON:1\r\n", 'x', 1, {}},
        {"", 'x', 19, {}},
        {"\r\n", '"', 19, {}},
    };
    const Listeners listeners;
    for (const UnterminatedRow &row : rows) {
        const std::string whole = row.text + std::string(10240 - row.text.size(), row.filler);
        Host host;
        Report report(whole);
        EXPECT_EQ(report.process(), row.code) << row.text << row.filler;
        Listeners::expect(row.heard, row.text);
        ASSERT_FALSE(host.log().empty());
        const std::string begin = "ProcessMainControlAtCallback-pRes->aucDataBuf = " + whole.substr(0, 10239);
        EXPECT_EQ(host.texts().front().substr(0, begin.size()), begin) << row.text;
        EXPECT_LE(host.texts().front().size(), begin.size() + 1) << row.text;
    }
}

} // namespace
