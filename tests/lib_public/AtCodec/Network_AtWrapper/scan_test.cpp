// The operator scan, entry by entry and byte by byte.

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/network_exchange.h"

namespace {

using network::Call;
using network::listed;
using network::named;
using network::quoted;
using network::Stage;
using network::stretched;
using network::Texts;

constexpr const char *kCommand = "AT+COPS=?";
constexpr int32_t kTimeoutMs = 180000;

/** Calls copsTest() and gives the list as one field of bytes. */
Call scan(const GuardedRecord<ScanNetworkList> &list)
{
    const auto bytes = [&] { return Texts{std::string(list.data(), list.size())}; };
    const Texts before = bytes();
    const uint32_t code = copsTest(list);
    return {code, before, bytes()};
}

Texts failureLog(const network::Ending &ending)
{
    switch (ending.stage) {
    case Stage::Send:
        return {"copsTest in", "copsTest in-sendcmd failed"};
    case Stage::Parse:
        return {"copsTest in", "copsTest in-parse atres failed"};
    default:
        return {"copsTest in", "copsTest in-after parse tAtRes.Paras:" + ending.paras, "copsTest return false"};
    }
}

TEST(CopsTest, FailsWithAnUntouchedList)
{
    network::expectFailures({"copsTest", kCommand, kTimeoutMs,
                             [] { return scan(GuardedRecord<ScanNetworkList>(network::kPattern)); },
                             R"(+COPS: 2,"Long","Short","46001",7)", failureLog});
}

/** What an entry holds, all of whose other bytes are zero. */
class Entry {
  public:
    Entry() : entry_() {}
    Entry(int32_t status, const std::string &longName, const std::string &name, const std::string &code, int32_t act)
        : Entry()
    {
        entry_.nStatus = status;
        put(offsetof(ScanNetworkInfo, strLongName), longName);
        put(offsetof(ScanNetworkInfo, strName), name);
        put(offsetof(ScanNetworkInfo, strCode), code);
        entry_.nAcT = act;
    }
    /** Without a code and what follows: the short name may run on into their places. */
    Entry(int32_t status, const std::string &longName, const std::string &name) : Entry()
    {
        entry_.nStatus = status;
        put(offsetof(ScanNetworkInfo, strLongName), longName);
        put(offsetof(ScanNetworkInfo, strName), name);
    }
    /** A code and a technology that were read over a short name that ran on. */
    Entry &code(const std::string &code, int32_t act = 0)
    {
        put(offsetof(ScanNetworkInfo, strCode), code);
        entry_.nAcT = act;
        return *this;
    }

    [[nodiscard]] const ScanNetworkInfo &get() const { return entry_; }

  private:
    /** A text with its terminator. */
    void put(size_t offset, const std::string &text)
    {
        std::memcpy(reinterpret_cast<char *>(&entry_) + offset, text.c_str(), text.size() + 1);
    }
    ScanNetworkInfo entry_;
};

std::string imageOf(const std::vector<Entry> &entries)
{
    ScanNetworkList list = {};
    list.nCount = static_cast<int32_t>(entries.size());
    for (size_t i = 0; i < entries.size(); ++i)
        list.entry[i] = entries[i].get();
    return {reinterpret_cast<const char *>(&list), sizeof list};
}

/** @param paras      what the parser takes from the lines
 *  @param rewritten  and what is left without brackets */
void expectScan(const Texts &lines, const std::string &paras, const std::string &rewritten,
                const std::vector<Entry> &entries)
{
    Texts log = {"copsTest in", "copsTest in-after parse tAtRes.Paras:" + paras,
                 "copsTest in-afterATCodec_ProcRes_ParaLineEx:" + rewritten};
    log.insert(log.end(), entries.size(), "copsTest in-tParasList.nCount copy");
    log.push_back("copsTest return success");
    SCOPED_TRACE(paras);
    ASSERT_LE(network::reply(lines).size(), network::kLongestReply);
    for (const int32_t platform : network::kPlatforms) {
        const network::OnPlatform on(platform);
        scripted::Host host;
        host.expect(kCommand, kTimeoutMs, network::reply(lines));
        const Call call = scan(GuardedRecord<ScanNetworkList>(network::kPattern));
        EXPECT_EQ(call.code, UNI_ERROR_SUCCESS);
        const std::string expected = imageOf(entries);
        const auto [got, wanted] = std::mismatch(call.after[0].begin(), call.after[0].end(), expected.begin());
        EXPECT_TRUE(got == call.after[0].end()) << "byte " << got - call.after[0].begin();
        EXPECT_EQ(network::ownLog(host), log);
    }
}

/** One line for each operator. */
void expectLines(const Texts &values, const std::vector<Entry> &entries)
{
    expectScan(named("+COPS", values), network::joined(values), network::joined(values), entries);
}

/** All operators in one line. */
void expectBrackets(const std::string &groups, const std::string &rewritten, const std::vector<Entry> &entries)
{
    expectScan({"+COPS: " + groups}, groups, rewritten, entries);
}

TEST(CopsTest, TakesALineForEachOperator)
{
    expectLines({R"(2,"Long name","Short","46001",7)", R"(3,"Other","O","310260",2)"},
                {Entry(2, "Long name", "Short", "46001", 7), Entry(3, "Other", "O", "310260", 2)});
    expectLines({R"(1,"","","46001",7)"}, {Entry(1, "", "", "46001", 7)});
    expectLines({R"(1,,,"46001",7)"}, {Entry(1, "", "", "46001", 7)});
    expectLines({R"(1,Long,Short,46001,7,9)"}, {Entry(1, "Long", "Short", "46001", 7)});
    expectLines({R"(1,"A;B","C,D","46001",7)"}, {Entry(1, "A;B", "C,D", "46001", 7)});
    expectLines({"1,\"A B\tC\",\" D\",\"46 001\",7"}, {Entry(1, "A B\tC", " D", "46 001", 7)});
    expectLines({R"(-1,"L","S","46001",-7)"}, {Entry(-1, "L", "S", "46001", -7)});
}

TEST(CopsTest, LeavesWhatALineLacksZero)
{
    expectLines({R"(1,"L","S","46001")", R"(1,"L","S")", R"(1,"L")", "1", "", "x", R"(2,"L","S","46001","x")"},
                {Entry(1, "L", "S", "46001", 0), Entry(1, "L", "S"), Entry(1, "L", ""), Entry(1, "", ""), Entry(),
                 Entry(), Entry(2, "L", "S", "46001", 0)});
}

TEST(CopsTest, FindsNoOperator)
{
    expectScan({}, "", "", {});
    expectScan({"+COPS: "}, "", "", {});
    expectBrackets("()", "", {});
}

TEST(CopsTest, TakesOperatorsInBrackets)
{
    const Entry first(2, "Long name", "Short", "46001", 7);
    const Entry second(1, "Other", "O", "46002", 2);
    expectBrackets(R"((2,"Long name","Short","46001",7))", R"(2,"Long name","Short","46001",7)", {first});
    expectBrackets(R"((2,"Long name","Short","46001",7),(1,"Other","O","46002",2))",
                   R"(2,"Long name","Short","46001",7;1,"Other","O","46002",2)", {first, second});
    // The lists of modes and formats come out as entries of their own.
    expectBrackets(R"((2,"Long name","Short","46001",7),,(0,1,2,3,4),(0,1,2))",
                   R"(2,"Long name","Short","46001",7;,0,1,2,3,4;0,1,2)",
                   {first, Entry(0, "1", "2", "3", 4), Entry(0, "1", "2")});
}

/** A name whose characters all differ from their neighbours. */
std::string nameOf(size_t length)
{
    std::string name;
    while (name.size() < length)
        name += static_cast<char>('a' + name.size() % 26);
    return name;
}

TEST(CopsTest, LetsTheShortNameRunOnInItsEntry)
{
    const Entry neighbour(3, "N", "n", "1", 1);
    const std::string full = R"(3,"N","n","1",1)";
    for (const size_t length : {19U, 20U, 31U, 32U, 33U, 40U}) {
        const std::string name = nameOf(length);
        const std::string read = name.substr(0, 32);
        const std::string rest = name.substr(read.size());
        const std::string start = listed({"1", "L", quoted(name)});
        if (rest.empty()) {
            expectLines({full, start + ",46001,7", full}, {neighbour, Entry(1, "L", read).code("46001", 7), neighbour});
            expectLines({full, start + ",46001"}, {neighbour, Entry(1, "L", read).code("46001")});
            expectLines({full, start, full}, {neighbour, Entry(1, "L", read), neighbour});
        } else { // taken for the code, and the code for the technology
            expectLines({full, start + ",46001,7", full},
                        {neighbour, Entry(1, "L", read).code(rest, 46001), neighbour});
            expectLines({full, start, full}, {neighbour, Entry(1, "L", read).code(rest), neighbour});
        }
    }
}

TEST(CopsTest, RestoresBlanksOfANameThatRanOn)
{
    const std::string name = "a b c d e f g h i j k l m n o p";
    expectLines({listed({"1", "L", quoted(name)})}, {Entry(1, "L", name)});
    // Behind the terminator of a code that was read over it nothing is restored.
    const Entry coded = Entry(1, "L", "a b c d e f g h i j k l\xFEm\xFEn\xFEo\xFEp").code("1", 7);
    expectLines({listed({"1", "L", quoted(name), quoted("1"), "7"})}, {coded});
}

TEST(CopsTest, GivesTheRestOfALongNameToTheShortOne)
{
    const std::string name = nameOf(64);
    expectLines({listed({"1", quoted(name), "S", "46001", "7"})}, {Entry(1, name, "S", "46001", 7)});
    expectLines({listed({"1", quoted(name + "X"), "S", "46001", "7"})}, {Entry(1, name, "X", "S", 46001)});
    expectLines({listed({"1", quoted(name + nameOf(32) + "YZ"), "S", "46001", "7"})},
                {Entry(1, name, nameOf(32)).code("YZ")});
}

TEST(CopsTest, GivesTheRestOfALongCodeToTheTechnology)
{
    expectLines({R"(1,"L","S","1234567890",7)"}, {Entry(1, "L", "S", "1234567890", 7)});
    expectLines({R"(1,"L","S","12345678905",7)"}, {Entry(1, "L", "S", "1234567890", 5)});
    expectLines({R"(1,"L","S","1234567890x",7)"}, {Entry(1, "L", "S", "1234567890", 0)});
}

TEST(CopsTest, TakesUpTo100Lines)
{
    for (const int32_t count : {1, 99, 100, 101}) {
        Texts values;
        std::vector<Entry> entries;
        for (int32_t i = 0; i < count; ++i) {
            const std::string code = std::to_string(46000 + i);
            values.push_back(
                listed({"1", quoted("Long " + code), quoted("S" + code), quoted(code), std::to_string(i)}));
            if (i < 100) entries.emplace_back(1, "Long " + code, "S" + code, code, i);
        }
        expectLines(values, entries);
    }
}

TEST(CopsTest, TakesUpTo100Groups)
{
    for (const int32_t count : {85, 100, 101}) {
        std::string groups;
        std::string rewritten;
        for (int32_t i = 0; i < count; ++i) {
            const std::string value = std::to_string(i % 10) + ",a,b";
            groups += (i > 0 ? ",(" : "(") + value + ")";
            rewritten += (i > 0 ? ";" : "") + value;
        }
        std::vector<Entry> entries;
        for (int32_t i = 0; i < std::min(count, 100); ++i)
            entries.emplace_back(i % 10, "a", "b");
        expectBrackets(groups, rewritten, entries);
    }
}

TEST(CopsTest, TakesBracketsApartUpTo1023Characters)
{
    const std::string name = nameOf(40);
    const std::string front = listed({"2", quoted(name), "S", "46001", "7"});
    const auto rest = [](size_t length) { return stretched(R"(1,"L","S","46002",)", '0', "2", length); };
    const size_t between = 5; // "(" and "),(" and ")"
    const std::string longest = rest(1023 - front.size() - between);
    expectBrackets("(" + front + "),(" + longest + ")", front + ";" + longest,
                   {Entry(2, name, "S", "46001", 7), Entry(1, "L", "S", "46002", 2)});
    const std::string tooLong = "(" + front + "),(0" + longest + ")";
    ASSERT_EQ(tooLong.size(), 1024U);
    expectBrackets(tooLong, tooLong, {Entry()});
    // Of a longer line 1024 characters are taken.
    const std::string cut = stretched("(2,\"", 'L', "\")", 5000).substr(0, 1024);
    expectScan({"+COPS: " + stretched("(2,\"", 'L', "\")", 5000)}, cut, cut, {Entry()});
}

TEST(CopsTest, StopsAtALineTooLongForTheList)
{
    const std::string usual = R"(2,"Long","Short","46001",7)";
    const Entry entry(2, "Long", "Short", "46001", 7);
    const std::string longest = stretched(R"(1,"L","S","46002",)", '0', "2", 1023);
    expectLines({usual, longest, usual}, {entry, Entry(1, "L", "S", "46002", 2), entry});
    expectLines({usual, "0" + longest, usual}, {entry});
    // In the last place it goes in, but is not rewritten: the commas are taken for parts of the names.
    const std::string open = stretched("1,L,S,46002,", '0', "2", 1024);
    expectLines({usual, open}, {entry, Entry(1, open.substr(1, 64), open.substr(65, 32)).code(open.substr(97, 10), 2)});
}

TEST(CopsTest, TakesTheLongestReply)
{
    const auto value = [](size_t length) { return stretched(R"(2,"Long","Short","46001",)", '0', "7", length); };
    Texts values(100, value(91));
    values.back() = value(91 + network::kLongestReply - network::reply(named("+COPS", values)).size());
    ASSERT_EQ(network::reply(named("+COPS", values)).size(), network::kLongestReply);
    expectLines(values, std::vector<Entry>(100, Entry(2, "Long", "Short", "46001", 7)));
}

TEST(CopsTest, ReadsOnBehindANumberBeyond32Bits)
{
    scripted::Host host;
    host.expect(kCommand, kTimeoutMs, network::reply({R"(+COPS: 4294967298,"L","S","46001",7)"}));
    const GuardedRecord<ScanNetworkList> list(network::kPattern);
    EXPECT_EQ(scan(list).code, UNI_ERROR_SUCCESS);
    list->entry[0].nStatus = 0;
    EXPECT_EQ(std::string(list.data(), list.size()), imageOf({Entry(0, "L", "S", "46001", 7)}));
}

TEST(CopsTest, LogsRoundTheParse)
{
    scripted::Host host;
    host.expect(kCommand, kTimeoutMs, "\r\n+COPS: (2,\"L\",\"S\",\"46001\",7)\r\n\r\nOK\r\n");
    EXPECT_EQ(scan(GuardedRecord<ScanNetworkList>(network::kPattern)).code, UNI_ERROR_SUCCESS);
    EXPECT_EQ(host.formats(),
              (Texts{"copsTest in", "Bk_Parse_At_Res-in-%s", "Bk_Parse_At_Res-out-%s", "Bk_Parse_At_Res-out-%d",
                     "copsTest in-after parse tAtRes.Paras:%s", "copsTest in-afterATCodec_ProcRes_ParaLineEx:%s",
                     "copsTest in-tParasList.nCount copy", "copsTest return success"}));
}

} // namespace
