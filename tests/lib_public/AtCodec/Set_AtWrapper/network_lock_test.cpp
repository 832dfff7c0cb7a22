// The network (SIM) lock of the modem.

#include "tests/lib_public/AtCodec/Set_AtWrapper/transcript.h"

namespace {

using namespace transcript;

/** Replies to a wrapper that takes two numbers of the rewritten parameters. */
std::vector<Row> twoNumbers(const std::string &name)
{
    const std::string head = name + ": ";
    return {{"two", okReply(head + "1,2"), 0, {1, 2}, {}},
            {"three", okReply(head + "1,2,3"), 0, {1, 2}, {}},
            {"one", okReply(head + "1"), 0, {1}, {}},
            {"one and a comma", okReply(head + "1,"), 0, {1}, {}},
            {"none", "\r\nOK\r\n", 0, {}, {}},
            {"a word first", okReply(head + "on,2"), 0, {}, {}},
            {"a word second", okReply(head + "1,off"), 0, {1}, {}},
            {"leading comma", okReply(head + ",2"), 0, {2}, {}},
            {"empty first", okReply(head + "\"\",2"), 0, {}, {}},
            {"quoted", okReply(head + R"("1","2")"), 0, {1, 2}, {}},
            {"blanks", okReply(head + " 1 , -2 "), 0, {1, -2}, {}},
            {"without its name", okReply("1,2"), 0, {1, 2}, {}},
            {"two lines", framed({(head + "1").c_str(), (head + "2").c_str()}), 0, {1}, {}},
            {"beyond 32 bits", okReply(head + "4294967297,2147483648"), 0, {1, INT32_MIN}, {}},
            {"1023 characters", okReply(head + padded("1,2,", 1023)), 0, {1, 2}, {}},
            {"1024 characters", okReply(head + padded("1,2,", 1024)), 0, {1}, {}},
            {"the longest", longestReply("\r\n" + head + "1,2,"), 0, {1}, {}}};
}

TEST(ZsecRead, ReadsTwoNumbers)
{
    const Command kStatus = {[](int32_t *out) { return zsecRead(out, out + 1); }, "AT+ZSEC?", 5000};
    play(kStatus, twoNumbers("+ZSEC"));
    playAllFailures(kStatus);
}

TEST(ZlcokRead, ReadsTwoNumbers)
{
    const Command kAuth = {[](int32_t *out) { return zlcokRead(out, out + 1); }, "AT+ZLOCK?", 5000};
    play(kAuth, twoNumbers("+ZLOCK"));
    playAllFailures(kAuth);
}

TEST(ZnckRead, ReadsTheFirstNumber)
{
    const Command kLeft = {znckRead, "AT+ZNCK?", 5000};
    play(kLeft, {{"one", okReply("+ZNCK: 5"), 0, {5}, {}},
                 {"two", okReply("+ZNCK: 5,3"), 0, {5}, {}},
                 {"none", "\r\nOK\r\n", 0, {}, {}},
                 {"a word", okReply("+ZNCK: five"), 0, {}, {}},
                 {"quoted", okReply("+ZNCK: \"5\""), 0, {}, {}},
                 {"beyond 32 bits", okReply("+ZNCK: -4294967301"), 0, {-5}, {}},
                 {"the longest", longestReply("\r\n+ZNCK: 5,"), 0, {5}, {}}});
    playAllFailures(kLeft);
}

TEST(SpsimlockinfoExec, NeverWrites)
{
    const Command kInfo = {spsimlockinfoExec, "AT+SPSIMLOCKINFO", 5000};
    play(kInfo, {{"numbers", okReply("+SPSIMLOCKINFO: 1,2,3"), 0, {}, {}},
                 {"bare OK", "\r\nOK\r\n", 0, {}, {}},
                 {"the longest", longestReply("\r\n+SPSIMLOCKINFO: 5,"), 0, {}, {}}});
    playAllFailures(kInfo);
    play({[](int32_t *) { return spsimlockinfoExec(nullptr); }, "AT+SPSIMLOCKINFO", 5000},
         {{"no output", okReply("+SPSIMLOCKINFO: 1,2,3"), 0, {}, {}}});
}

TEST(ZnckSet, SendsTheCodeAsItIs)
{
    for (const auto &[code, command] : {std::pair{"12345678", R"(AT+ZNCK="12345678")"},
                                        {"", R"(AT+ZNCK="")"},
                                        {"12\"34", R"(AT+ZNCK="12"34")"},
                                        {"%s%n,\\", R"(AT+ZNCK="%s%n,\")"}}) {
        Host host;
        host.expect(command, 10000, okReply("+ZNCK: 5"));
        EXPECT_EQ(znckSet(GuardedText(code)), UNI_ERROR_SUCCESS);
        expectLines(host, {});
    }
    const Command kUnlock = {[](int32_t *) { return znckSet("12345678"); }, R"(AT+ZNCK="12345678")", 10000};
    play(kUnlock, {{"done", "\r\nOK\r\n", 0, {}, {}}});
    playAllFailures(kUnlock);
}

TEST(EsmlckSet, SendsTheCodeAsItIs)
{
    const struct {
        int32_t category;
        int32_t operation;
        const char *code;
        const char *command;
    } rows[] = {{0, 1, "12345678", R"(AT+ESMLCK=0,1,"12345678")"},
                {4, 0, "", R"(AT+ESMLCK=4,0,"")"},
                {INT32_MIN, INT32_MAX, "1\"2", R"(AT+ESMLCK=-2147483648,2147483647,"1"2")"},
                {-1, 99, "%s%n", R"(AT+ESMLCK=-1,99,"%s%n")"}};
    for (const auto &row : rows) {
        Host host;
        host.expect(row.command, 10000, "\r\nOK\r\n");
        EXPECT_EQ(esmlckSet(row.category, row.operation, GuardedText(row.code)), UNI_ERROR_SUCCESS);
        expectLines(host, {});
    }
    const Command kLock = {[](int32_t *) { return esmlckSet(0, 1, "1234"); }, R"(AT+ESMLCK=0,1,"1234")", 10000};
    play(kLock, {{"done", "\r\nOK\r\n", 0, {}, {}}});
    playAllFailures(kLock);
}

TEST(NetworkLock, SendsACodeWholeOrNotAtAll)
{
    playLongest("AT+ZNCK=\"", "\"", 10000, [](char *code) { return znckSet(code); });
    playLongest("AT+ESMLCK=3,-12,\"", "\"", 10000, [](char *code) { return esmlckSet(3, -12, code); });
}

/** The outputs in the order third, fourth, second. */
template <int32_t Index>
uint32_t readGroup(int32_t *out)
{
    return esmlckRead(Index, out, out + 1, out + 2);
}
template <int32_t Index>
constexpr Command kGroup = {readGroup<Index>, "AT+ESMLCK?", 5000};

TEST(EsmlckRead, SelectsAGroup)
{
    const std::string reply = okReply("+ESMLCK: (0,2,5,6),(1,3,7,8),(2,4,9,10)");
    play(kGroup<0>, {{"first", reply, 0, {5, 6, 2}, {}}});
    play(kGroup<1>, {{"second", reply, 0, {7, 8, 3}, {}}});
    play(kGroup<2>, {{"third", reply, 0, {9, 10, 4}, {}}});
    play(kGroup<-1>, {{"first", reply, 0, {5, 6, 2}, {}}});
    play(kGroup<INT32_MIN>, {{"first", reply, 0, {5, 6, 2}, {}}});
    play(kGroup<3>, {{"beyond", reply, 1, {}, {}}});
    play(kGroup<INT32_MAX>, {{"far beyond", reply, 1, {}, {}}});

    const std::string oneSeparator = okReply("+ESMLCK: (0,2,5,6),(1,3,7,8)");
    play(kGroup<1>, {{"last", oneSeparator, 0, {7, 8, 3}, {}}});
    play(kGroup<2>, {{"beyond", oneSeparator, 1, {}, {}}});
    play(kGroup<1>, {{"bare OK", "\r\nOK\r\n", 1, {}, {}}, {"one group", okReply("+ESMLCK: 0,2,5,6"), 1, {}, {}}});
}

TEST(EsmlckRead, ReadsGroupsOfSeveralLines)
{
    const std::string lines = framed({"+ESMLCK: 0,2,5,6", "+ESMLCK: 1,3,7,8", "+ESMLCK: (2,4,9,10)"});
    play(kGroup<0>, {{"lines", lines, 0, {5, 6, 2}, {}}});
    play(kGroup<2>, {{"lines", lines, 0, {9, 10, 4}, {}}});
    play(kGroup<3>, {{"lines", lines, 1, {}, {}}});
    // The longest reply: lines enough for 1,024 parameter characters and more stay as they came, commas included.
    std::string many;
    while (many.size() < 10000)
        many += "\r\n+ESMLCK: 1,2,3,4\r\n";
    play(kGroup<300>, {{"longest",
                        padded(many + "\r\n+ESMLCK: 5", kLongestReply - 8) + "\r\n\r\nOK\r\n",
                        0,
                        {kUntouched, 0, 0},
                        {}}});
}

TEST(EsmlckRead, ReadsWhatAGroupHolds)
{
    play(kGroup<0>, {{"five", okReply("+ESMLCK: 0,2,5,6,7"), 0, {5, 6, 2}, {}},
                     {"three", okReply("+ESMLCK: 0,2,5"), 0, {5, 0, 2}, {}},
                     {"two", okReply("+ESMLCK: 0,2"), 0, {kUntouched, 0, 2}, {}},
                     {"two, then a group", okReply("+ESMLCK: (0,2),(1,3,7,8)"), 0, {kUntouched, 0, 2}, {}},
                     {"one", okReply("+ESMLCK: 0"), 0, {kUntouched, 0, 0}, {}},
                     {"none", "\r\nOK\r\n", 0, {kUntouched, 0, 0}, {}},
                     {"a word first", okReply("+ESMLCK: x,2,5,6"), 0, {kUntouched, 0, 0}, {}},
                     {"an empty second", okReply("+ESMLCK: 0,,5,6"), 0, {kUntouched, 0, 0}, {}},
                     {"quoted", okReply(R"(+ESMLCK: "0","2","5","6")"), 0, {5, 6, 2}, {}},
                     {"without its name", okReply("(0,2,5,6)"), 0, {5, 6, 2}, {}},
                     {"nested", okReply("+ESMLCK: ((0,2,5,6))"), 0, {5, 6, 2}, {}},
                     {"beyond 32 bits",
                      okReply("+ESMLCK: 99999999999,4294967298,-4294967301,2147483648"),
                      0,
                      {-5, INT32_MIN, 2},
                      {}}});
    play(kGroup<1>, {{"two", okReply("+ESMLCK: (0,2,5,6),(1,3)"), 0, {kUntouched, 0, 3}, {}},
                     {"words", okReply("+ESMLCK: (0,2,5,6),(a,b,c,d)"), 0, {kUntouched, 0, 0}, {}}});
}

TEST(EsmlckRead, RewritesLessThan1024Characters)
{
    const std::string head = "+ESMLCK: (0,2,5,6),(1,3,7,8),";
    const size_t name = 9;
    play(kGroup<1>, {{"1023", okReply(padded(head, name + 1023)), 0, {7, 8, 3}, {}},
                     {"1024", okReply(padded(head, name + 1024)), 1, {}, {}},
                     {"longest", longestReply("\r\n" + head), 1, {}, {}}});
    // What is not rewritten keeps its quotes, and a separator in quotes does not count.
    play(kGroup<1>,
         {{"quoted separators", okReply(padded("+ESMLCK: \"0;1;\";5 6 7 8 ", name + 1024)), 0, {7, 8, 6}, {}},
          {"only quoted ones", okReply(padded("+ESMLCK: \"0;1;\"5 6 7 8 ", name + 1024)), 1, {}, {}}});
}

TEST(EsmlckRead, NeedsNeitherSecondNorFourth)
{
    const std::vector<Row> rows = {{"four", okReply("+ESMLCK: (0,2,5,6)"), 0, {5}, {}},
                                   {"two", okReply("+ESMLCK: (0,2)"), 0, {}, {}}};
    play({[](int32_t *out) { return esmlckRead(0, out, nullptr, nullptr); }, "AT+ESMLCK?", 5000}, rows);
    play({[](int32_t *out) { return esmlckRead(0, out, out + 1, nullptr); }, "AT+ESMLCK?", 5000},
         {{"four", okReply("+ESMLCK: (0,2,5,6)"), 0, {5, 6}, {}}});
    play({[](int32_t *out) { return esmlckRead(0, out, nullptr, out + 1); }, "AT+ESMLCK?", 5000},
         {{"four", okReply("+ESMLCK: (0,2,5,6)"), 0, {5, 2}, {}}});
}

TEST(EsmlckRead, FailsLikeTheOthers)
{
    playAllFailures(kGroup<0>);
    playAllFailures({[](int32_t *out) { return esmlckRead(0, out, nullptr, nullptr); }, "AT+ESMLCK?", 5000});
}

} // namespace
