// AT+CREG?, whose reply can hold several lines.

#include <gtest/gtest.h>

#include "tests/support/network_exchange.h"

namespace {

using network::Call;
using network::kAny;
using network::listed;
using network::named;
using network::quoted;
using network::stretched;
using network::Subject;
using network::Texts;

/** One line of a reply to AT+CREG?: its number of commas, and what the record holds behind it. */
struct CregLine {
    std::string text;
    int32_t commas;
    Texts record; // mode, status, lac, cellid
};

const Texts kUntouched = {"1515870810", "1515870810", std::string(35, 'Z'), std::string(35, 'Z')};
const Texts kUsual = {"2", "1", "1A2B", "01C2D3E4"};

Call creg()
{
    const GuardedRecord<CregPara> record(network::kPattern);
    network::fillText(record->lac);
    network::fillText(record->cellid);
    const auto fields = [&] {
        return Texts{std::to_string(record->mode), std::to_string(record->status), network::textIn(record->lac),
                     network::textIn(record->cellid)};
    };
    const Texts before = fields();
    const uint32_t code = cregRead(record);
    return {code, before, fields()};
}

const Subject kCreg = {"cregRead", "AT+CREG?", 5000, creg, R"(+CREG: 2,1,"1A2B","01C2D3E4",7)"};

void expectCreg(const std::string &reply, const std::string &paras, const std::vector<CregLine> &taken)
{
    Texts log = {"cregRead-outtAtRes.Paras:" + paras};
    for (const CregLine &line : taken) {
        log.insert(
            log.end(),
            {"cregRead-tParasList.strParasLine[i]:" + line.text, "cregRead-out-num:" + std::to_string(line.commas),
             "cregRead-out-pCregPara->cellid:" + line.record[3], "cregRead-out-pCregPara->lac:" + line.record[2],
             "cregRead-out-pCregPara->mode:" + line.record[0], "cregRead-out-pCregPara->status:" + line.record[1]});
    }
    for (const int32_t platform : network::kPlatforms) {
        SCOPED_TRACE(paras);
        ASSERT_LE(reply.size(), network::kLongestReply);
        const network::OnPlatform on(platform);
        scripted::Host host;
        host.expect("AT+CREG?", 5000, reply);
        const Call call = creg();
        EXPECT_EQ(call.code, UNI_ERROR_SUCCESS);
        EXPECT_EQ(call.before, kUntouched);
        EXPECT_EQ(call.after, taken.empty() ? kUntouched : taken.back().record);
        EXPECT_EQ(network::ownLog(host), log);
    }
}

/** A reply all of whose lines are taken. */
void expectCreg(const std::vector<CregLine> &lines)
{
    Texts values;
    for (const CregLine &line : lines)
        values.push_back(line.text);
    expectCreg(network::reply(named("+CREG", values)), network::joined(values), lines);
}

TEST(CregRead, FailsWithoutALogLine)
{
    network::expectFailures(kCreg);
}

TEST(CregRead, TakesLinesOfFiveValues)
{
    const CregLine usual = {R"(2,1,"1A2B","01C2D3E4",7)", 4, kUsual};
    expectCreg({usual});
    expectCreg({{"2,1,1A2B,01C2D3E4,7", 4, kUsual}});
    expectCreg({{R"(2,1,"1A2B","01C2D3E4",7,0,"x")", 6, kUsual}});
    expectCreg({{"0,1", 1, kUntouched}});
    expectCreg({{"0", 0, kUntouched}});
    expectCreg({{R"(2,1,"1A2B","01C2D3E4")", 3, kUntouched}});
    expectCreg({{R"(2,1,"1A2B","01C2D3E4",7,)", 0, kUntouched}});
    expectCreg({usual, {R"(1,5,"FFFF","00000001",2)", 4, {"1", "5", "FFFF", "00000001"}}});
    expectCreg({usual, {"0,1", 1, kUsual}});
    expectCreg({{"0,1", 1, kUntouched}, usual, {"0,0", 1, kUsual}});
    expectCreg({usual, {"", 0, kUsual}, {"0,0", 1, kUsual}});
    expectCreg({{R"(2,1,"","",7)", 4, {"2", "1", "", ""}}});
    expectCreg({{"2,1,,,7", 4, {"2", "1", "", ""}}});
    expectCreg({{"2,1,\"1A 2B\",\"\t01 C2\",7", 4, {"2", "1", "1A 2B", "\t01 C2"}}});
    expectCreg({{R"(2,1,"1A;2B","01,C2;",7)", 4, {"2", "1", "1A;2B", "01,C2;"}}});
    expectCreg({{R"(on,1,"1A2B","01C2D3E4",7)", 4, kUntouched}});
    expectCreg({{R"(2,on,"1A2B","01C2D3E4",7)", 4, {"2", kUntouched[1], kUntouched[2], kUntouched[3]}}});
    expectCreg({{R"(-1,-2,"1A2B","01C2D3E4",7)", 4, {"-1", "-2", "1A2B", "01C2D3E4"}}});
    expectCreg("\r\nOK\r\n", "", {});
    expectCreg(network::reply({"+CREG: "}), "", {});
    expectCreg(network::reply({R"(2,1,"1A2B","01C2D3E4",7)"}), usual.text, {usual});
    expectCreg(network::reply({R"(+CREG: 2,1,"1A2B","01C2D3E4",7)", "+CGATT: 1"}), usual.text, {usual});
    expectCreg(network::reply({"+CREG: 2,1,AA,BB", "7"}), R"(2,1,AA,BB,"7")",
               {{R"(2,1,AA,BB,"7")", 4, {"2", "1", "AA", "BB"}}});
}

TEST(CregRead, CutsCodesInTheirArrays)
{
    for (const size_t length : {34U, 35U, 36U, 37U, 500U}) {
        const std::string code(length, 'A');
        const std::string kept = code.substr(0, 35);
        expectCreg({{listed({"2", "1", quoted(code), "01C2", "7"}), 4, {"2", "1", kept, "01C2"}}});
        expectCreg({{listed({"2", "1", "1A2B", quoted(code), "7"}), 4, {"2", "1", "1A2B", kept}}});
        expectCreg({{listed({"2", "1", code, code + "B", "7"}), 4, {"2", "1", kept, (code + "B").substr(0, 35)}}});
    }
}

TEST(CregRead, TakesUpTo99Commas)
{
    std::string line = "2,1,1A2B,01C2D3E4";
    for (int32_t commas = 3; commas < 99; ++commas)
        line += ",0";
    expectCreg({{line, 99, kUsual}});
    expectCreg({{line + ",0", 0, kUntouched}});
}

TEST(CregRead, TakesUpTo100Lines)
{
    for (const int32_t count : {99, 100, 101}) {
        Texts values;
        std::vector<CregLine> taken;
        for (int32_t i = 0; i < count; ++i) {
            values.push_back("2," + std::to_string(i) + ",1A2B,01C2D3E4,7");
            if (i < 100) taken.push_back({values.back(), 4, {"2", std::to_string(i), "1A2B", "01C2D3E4"}});
        }
        expectCreg(network::reply(named("+CREG", values)), network::joined(values), taken);
    }
}

TEST(CregRead, TakesLinesOf1023Characters)
{
    const std::string kept(35, 'A');
    const auto ofLength = [](size_t length) { return stretched("2,1,\"", 'A', R"(","01C2",7)", length); };
    const CregLine longest = {ofLength(1023), 4, {"2", "1", kept, "01C2"}};
    const CregLine tooLong = {ofLength(1024), 4, {"2", kUntouched[1], kUntouched[2], kUntouched[3]}};
    const CregLine usual = {"2,5,1A2B,01C2D3E4,7", 4, {"2", "5", "1A2B", "01C2D3E4"}};
    expectCreg({longest});
    expectCreg({longest, usual});
    expectCreg({usual, longest});
    // The last line goes in, but is not rewritten; a line that others follow ends the split.
    expectCreg({tooLong});
    expectCreg({usual, {tooLong.text, 4, usual.record}});
    expectCreg(network::reply(named("+CREG", {tooLong.text, usual.text})), tooLong.text + ";" + usual.text, {});
    expectCreg(network::reply(named("+CREG", {usual.text, tooLong.text, longest.text})),
               network::joined({usual.text, tooLong.text, longest.text}), {usual});
    // Of 1025 characters 1024 are taken, and the line ends in its fourth comma.
    const std::string cut = ofLength(1025).substr(0, 1024);
    expectCreg(network::reply({"+CREG: " + ofLength(1025)}), cut, {{cut, 0, kUntouched}});
}

TEST(CregRead, TakesTheLongestReply)
{
    const auto value = [](size_t length) { return stretched("2,1,\"", 'A', R"(","01C2D3E4",7)", length); };
    Texts values(100, value(91));
    values.back() = value(91 + network::kLongestReply - network::reply(named("+CREG", values)).size());
    ASSERT_EQ(network::reply(named("+CREG", values)).size(), network::kLongestReply);
    std::vector<CregLine> taken;
    for (const std::string &text : values)
        taken.push_back({text, 4, {"2", "1", std::string(35, 'A'), "01C2D3E4"}});
    expectCreg(taken);
}

TEST(CregRead, TakesParametersThatOutgrowTheReply)
{
    std::string reply = "\r\n+CREG: 2,1,AA,BB\r\n";
    std::string paras = "2,1,AA,BB";
    const std::string end = "\r\nOK\r\n";
    while (reply.size() + 3 + end.size() <= network::kLongestReply) {
        reply += "7\r\n"; // three characters become four
        paras += R"(,"7")";
    }
    ASSERT_GT(paras.size(), network::kLongestReply);
    expectCreg(reply + end, paras, {{paras.substr(0, 1024), 0, kUntouched}});
}

TEST(CregRead, ReadsOnBehindANumberBeyond32Bits)
{
    scripted::Host host;
    host.expect("AT+CREG?", 5000, network::reply({"+CREG: 4294967298,99999999999999999999,1A2B,01C2D3E4,7"}));
    const Call call = creg();
    EXPECT_EQ(call.code, UNI_ERROR_SUCCESS);
    network::expectFields(call, {kAny, kAny, "1A2B", "01C2D3E4"});
}

TEST(CregRead, LogsBehindTheParse)
{
    scripted::Host host;
    host.expect("AT+CREG?", 5000, "\r\n+CREG: 0,1\r\n\r\nOK\r\n");
    creg();
    EXPECT_EQ(host.formats(),
              (Texts{"Bk_Parse_At_Res-in-%s", "Bk_Parse_At_Res-out-%s", "Bk_Parse_At_Res-out-%d",
                     "cregRead-outtAtRes.Paras:%s", "cregRead-tParasList.strParasLine[i]:%s", "cregRead-out-num:%d",
                     "cregRead-out-pCregPara->cellid:%s", "cregRead-out-pCregPara->lac:%s",
                     "cregRead-out-pCregPara->mode:%d", "cregRead-out-pCregPara->status:%d"}));
}

} // namespace
