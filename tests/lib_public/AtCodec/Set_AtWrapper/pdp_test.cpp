// PDP contexts.

#include <algorithm>
#include <cstring>
#include <initializer_list>

#include "tests/lib_public/AtCodec/Set_AtWrapper/transcript.h"
#include "tests/support/record_at.h"

namespace {

using namespace transcript;

struct Context {
    int32_t cid;
    std::string type;
    std::string apn;
    std::string address;
    int32_t dComp;
    int32_t hComp;
};
using Contexts = std::vector<Context>;
using Sizes = std::initializer_list<size_t>;

const Context kCleared = {0, "", "", "", 0, 0};
const std::string kTag = "CGDCONT_ReadATResProcess:";

bool isUntouched(const PdpContext &context)
{
    const auto *const bytes = reinterpret_cast<const unsigned char *>(&context);
    return std::all_of(bytes, bytes + sizeof context, [](unsigned char byte) { return byte == kUntouchedByte; });
}

void expectContext(const PdpContext &context, const Context &expected)
{
    EXPECT_EQ(context.cid, expected.cid);
    EXPECT_EQ(std::string(context.pdpType), expected.type);
    EXPECT_EQ(std::string(context.apn), expected.apn);
    EXPECT_EQ(std::string(context.pdpAddress), expected.address);
    EXPECT_EQ(context.dComp, expected.dComp);
    EXPECT_EQ(context.hComp, expected.hComp);
}

/** A list without contexts has a cleared first entry; what is behind the contexts stays untouched. */
void expectContexts(const PdpContextList &list, const Contexts &expected)
{
    EXPECT_EQ(list.count, static_cast<int32_t>(expected.size()));
    for (size_t i = 0; i < 16; ++i) {
        SCOPED_TRACE("entry " + std::to_string(i));
        if (i < expected.size())
            expectContext(list.context[i], expected[i]);
        else if (i == 0)
            expectContext(list.context[i], kCleared);
        else
            EXPECT_TRUE(isUntouched(list.context[i]));
    }
}

void expectContextLines(const Host &host, const Texts &lines)
{
    Texts expected;
    for (const std::string &line : lines)
        expected.push_back(kTag + line);
    EXPECT_EQ(host.texts(scripted::kSetModule), expected);
    EXPECT_EQ(host.formats(scripted::kSetModule), Texts(lines.size(), "%s:%s"));
    expectWhereabouts(host);
}

/** Takes contexts out of a record that ends with its text, if that fills it, and must come out as it went in. */
void process(const std::string &paras, const Contexts &contexts, const Texts &lines)
{
    const GuardedRecord<AtRes> parsed(kUntouchedByte);
    ASSERT_LE(paras.size(), sizeof parsed->Paras);
    std::memcpy(parsed->Paras, paras.data(), paras.size());
    if (paras.size() < sizeof parsed->Paras) parsed->Paras[paras.size()] = '\0';
    const std::string before(parsed.data(), parsed.size());
    const GuardedRecord<PdpContextList> list(kUntouchedByte);
    Host host;
    EXPECT_EQ(CGDCONT_ReadATResProcess(parsed, list), UNI_ERROR_SUCCESS);
    expectContexts(*list.get(), contexts);
    expectContextLines(host, lines);
    EXPECT_EQ(host.log().size(), lines.size());
    EXPECT_TRUE(before == std::string(parsed.data(), parsed.size()));
}

TEST(ContextLines, AreReadOneByOne)
{
    const struct {
        const char *name;
        std::string paras;
        Contexts contexts;
        Texts lines;
    } rows[] = {
        {"none", "", {}, {}},
        {"whole", R"(1,"IP","internet","::1",2,3)", {{1, "IP", "internet", "::1", 2, 3}}, {"1 IP internet ::1 2 3"}},
        {"bare texts", "1,IP,net,::1,2,3", {{1, "IP", "net", "::1", 2, 3}}, {"1 IP net ::1 2 3"}},
        {"seven", R"(1,"IP","net","::1",2,3,4)", {{1, "IP", "net", "::1", 2, 3}}, {"1 IP net ::1 2 3 4"}},
        {"markers",
         "1,\"I P\",\"my \tnet\",\"\",0,0",
         {{1, "I P", "my \tnet", "", 0, 0}},
         {"1 I\xFEP my\xFE\xFCnet \xFD 0 0"}},
        {"empty parameters", R"(1,,,"",0,0)", {{1, "", "", "", 0, 0}}, {"1 \xFD \xFD \xFD 0 "}},
        {"a tail lost", "1,,,,,", {{1, "", "", "", 0, 0}}, {"1 \xFD \xFD "}},
        {"quoted separators", R"(1,"IP","a;b,c","",0,0)", {{1, "IP", "a;b,c", "", 0, 0}}, {"1 IP a;b,c \xFD 0 0"}},
        {"a marker among others stays",
         "1,\"IP\",\"a\xFD b\",\"\",0,0",
         {{1, "IP", "a\xFD b", "", 0, 0}},
         {"1 IP a\xFD\xFE"
          "b \xFD 0 0"}},
        {"missing values are the first ones", "7", {{7, "", "", "", 0, 0}}, {"7"}},
        {"nothing readable", "x,\"IP\"", {{1, "", "", "", 0, 0}}, {"x IP"}},
        {"only separators", ";;", {{1, "", "", "", 0, 0}, {1, "", "", "", 0, 0}}, {"", ""}},
        {"a separator at the end", "4;", {{4, "", "", "", 0, 0}}, {"4"}},
        {"values of the line before",
         R"(1,"IP","my net","10.0.0.1",2,3;2,"IPV6";x;3,"","other";;4)",
         {{1, "IP", "my net", "10.0.0.1", 2, 3},
          {2, "IPV6", "my net", "10.0.0.1", 2, 3},
          {2, "IPV6", "my net", "10.0.0.1", 2, 3},
          {3, "", "other", "10.0.0.1", 2, 3},
          {3, "", "other", "10.0.0.1", 2, 3},
          {4, "", "other", "10.0.0.1", 2, 3}},
         {"1 IP my\xFEnet 10.0.0.1 2 3", "2 IPV6", "x", "3 \xFD other", "", "4"}},
        {"a value that cannot be read ends its line",
         R"(1,"IP","a","b",2,3;2,"IPV6","c","d",x,9)",
         {{1, "IP", "a", "b", 2, 3}, {2, "IPV6", "c", "d", 2, 3}},
         {"1 IP a b 2 3", "2 IPV6 c d x 9"}},
        {"beyond 32 bits",
         "4294967298,IP,a,b,-4294967299,2147483648",
         {{2, "IP", "a", "b", -3, INT32_MIN}},
         {"4294967298 IP a b -4294967299 2147483648"}},
        {"conversions in the text", "1,%s,%n,%d,2,3", {{1, "%s", "%n", "%d", 2, 3}}, {"1 %s %n %d 2 3"}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        process(row.paras, row.contexts, row.lines);
    }
}

TEST(ContextLines, KeepWhatFitsAnArray)
{
    for (const size_t type : Sizes{9, 10, 11, 200}) {
        for (const size_t apn : Sizes{100, 101, 500}) {
            for (const size_t address : Sizes{29, 30, 300}) {
                SCOPED_TRACE(std::to_string(type) + ", " + std::to_string(apn) + ", " + std::to_string(address));
                const std::string t = padded("T", type, 't');
                const std::string a = padded("A", apn, 'a');
                const std::string d = padded("D", address, 'd');
                // The next conversion takes the next token, and a line without texts takes over what was kept.
                process(joined({"-1,\"", t, "\",\"", a, "\",\"", d, "\",-1,-2;5"}),
                        {{-1, t.substr(0, 9), a.substr(0, 100), d.substr(0, 29), -1, -2},
                         {5, t.substr(0, 9), a.substr(0, 100), d.substr(0, 29), -1, -2}},
                        {joined({"-1 ", t, " ", a, " ", d, " -1 -2"}), "5"});
            }
        }
    }
}

TEST(ContextLines, AreAtMostSixteen)
{
    for (const int32_t lines : {15, 16, 17, 20, 100, 101, 150}) {
        std::string paras;
        Contexts contexts;
        Texts logged;
        for (int32_t i = 0; i < lines; ++i) {
            const std::string number = std::to_string(i);
            paras += joined({i > 0 ? ";" : "", number, R"(,"IP","apn)", number, "\""});
            if (i >= 16) continue;
            contexts.push_back({i, "IP", "apn" + number, "", 0, 0});
            logged.push_back(joined({number, " IP apn", number}));
        }
        SCOPED_TRACE(lines);
        process(paras, contexts, logged);
    }
    // Not even one that would end the list of lines is looked at.
    std::string sixteen = "1";
    for (int i = 1; i < 16; ++i)
        sixteen += ";1";
    process(sixteen + ";" + std::string(5000, '2') + ";3", Contexts(16, {1, "", "", "", 0, 0}), Texts(16, "1"));
}

TEST(ContextLines, AreBelow1024Characters)
{
    const Context first = {1, "IP", "a", "b", 2, 3};
    const std::string head = "1,IP,a,b,2,3;";
    const Texts headLine = {"1 IP a b 2 3"};
    const auto line = [](size_t length) { return padded("9,IPV6,c,d,4,5 ", length); };

    const std::string rewritten = padded("9 IPV6 c d 4 5 ", 1023);
    process(head + line(1023), {first, {9, "IPV6", "c", "d", 4, 5}}, {headLine[0], rewritten});
    process(head + line(1023) + ";7", {first, {9, "IPV6", "c", "d", 4, 5}, {7, "IPV6", "c", "d", 4, 5}},
            {headLine[0], rewritten, "7"});

    // A longer line ends the list where another one follows; the last one keeps 1024 characters, and is not rewritten.
    for (const size_t length : Sizes{1024, 1025, 5000}) {
        SCOPED_TRACE(length);
        process(head + line(length) + ";7", {first}, headLine);
        process(line(length) + ";7", {}, {});
        process(head + line(length), {first, {9, ",IPV6,c,d", std::string(100, 'x'), "b", 2, 3}},
                {headLine[0], line(1024)});
    }
    // So is one that would grow to that length.
    const std::string growing = padded("9,IPV6,,", 1023);
    process(head + growing, {first, {9, ",IPV6,,xx", "a", "b", 2, 3}}, {headLine[0], growing});
}

TEST(ContextLines, MayFillTheRecord)
{
    const std::string tabs(sizeof(AtRes::Paras), '\t');
    process(tabs, {{1, "", "", "", 0, 0}}, {std::string(1024, '\t')});
    std::string paras;
    while (paras.size() < sizeof(AtRes::Paras))
        paras += ";";
    process(paras, Contexts(16, {1, "", "", "", 0, 0}), Texts(16, ""));
}

TEST(CgdcontRead, FillsTheListBehindTheParse)
{
    const std::string reply = framed({R"(+CGDCONT: 1,"IP","my net","0.0.0.0",0,0)", R"(+CGDCONT: 2,"IPV4V6","ims")"});
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        Host host;
        host.expect("AT+CGDCONT?", 5000, reply);
        const GuardedRecord<PdpContextList> list(kUntouchedByte);
        EXPECT_EQ(cgdcontRead(list), UNI_ERROR_SUCCESS);
        expectContexts(*list.get(), {{1, "IP", "my net", "0.0.0.0", 0, 0}, {2, "IPV4V6", "ims", "0.0.0.0", 0, 0}});
        expectContextLines(host, {"1 IP my\xFEnet 0.0.0.0 0 0", "2 IPV4V6 ims"});
        EXPECT_EQ(host.texts(),
                  (Texts{"Bk_Parse_At_Res-in-" + reply,
                         R"(Bk_Parse_At_Res-out-1,"IP","my net","0.0.0.0",0,0;2,"IPV4V6","ims")",
                         "Bk_Parse_At_Res-out-1", kTag + "1 IP my\xFEnet 0.0.0.0 0 0", kTag + "2 IPV4V6 ims"}));
    }
}

TEST(CgdcontRead, TakesWhatTheReplyHolds)
{
    std::string twenty;
    std::string longest;
    Contexts sixteen;
    for (int32_t i = 1; i <= 20; ++i) {
        const std::string line = "+CGDCONT: " + std::to_string(i) + R"(,"IP","n","",0,)" + std::to_string(-i);
        twenty += "\r\n" + line + "\r\n";
        longest += "\r\n" + padded(line + ",", 505) + "\r\n";
        if (i <= 16) sixteen.push_back({i, "IP", "n", "", 0, -i});
    }
    longest = longestReply(longest);
    const std::string wide = R"(1,"IP","n","",0,0,)";
    const struct {
        const char *name;
        std::string reply;
        Contexts contexts;
    } rows[] = {
        {"bare OK", "\r\nOK\r\n", {}},
        {"twenty", twenty + "\r\nOK\r\n", sixteen},
        {"the longest", longest, sixteen},
        {"another command stops it",
         framed({"+CGDCONT: 1,\"IP\"", "+CGACT: 1,1", "+CGDCONT: 2,\"IP\""}),
         {{1, "IP", "", "", 0, 0}}},
        {"a line of 1023", okReply("+CGDCONT: " + padded(wide, 1023)), {{1, "IP", "n", "", 0, 0}}},
        {"a line beyond the last that fits",
         longestReply("\r\n+CGDCONT: " + wide),
         {{1, R"(,"IP","n")", "", "", 0, 0}}},
        {"such a line in front", "\r\n+CGDCONT: " + padded(wide, 1030) + "\r\n" + okReply("+CGDCONT: 2,\"IP\""), {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        Host host;
        host.expect("AT+CGDCONT?", 5000, row.reply);
        const GuardedRecord<PdpContextList> list(kUntouchedByte);
        EXPECT_EQ(cgdcontRead(list), UNI_ERROR_SUCCESS);
        expectContexts(*list.get(), row.contexts);
    }
}

TEST(CgdcontRead, LeavesTheListOnFailure)
{
    // The list lies where nothing is mapped.
    static const GuardedMemory nowhere(0);
    playAllFailures(
        {[](int32_t *) { return cgdcontRead(recordAt<PdpContextList>(nowhere.data())); }, "AT+CGDCONT?", 5000});
}

PdpContext contextOf(const Context &values)
{
    PdpContext context{};
    context.cid = values.cid;
    std::memcpy(context.pdpType, values.type.data(), values.type.size());
    std::memcpy(context.apn, values.apn.data(), values.apn.size());
    std::memcpy(context.pdpAddress, values.address.data(), values.address.size());
    context.dComp = values.dComp;
    context.hComp = values.hComp;
    return context;
}

TEST(ContextSets, SendTheRecordAsItIs)
{
    const std::string t(10, 'T');
    const std::string a(101, 'A');
    const std::string d(30, 'D');
    const struct {
        Context context;
        std::string define;
        std::string bearer;
    } rows[] = {
        {{1, "IP", "internet", "", 0, 0},
         R"(AT+CGDCONT=1,"IP","internet","",0,0)",
         R"(AT*CGDFLT=1,"IP","internet",,1)"},
        {{16, "IPV4V6", "my net", "10.0.0.1", 2, 3},
         R"(AT+CGDCONT=16,"IPV4V6","my net","10.0.0.1",2,3)",
         R"(AT*CGDFLT=16,"IPV4V6","my net",,1)"},
        {{INT32_MIN, "", "", "", -1, INT32_MAX},
         R"(AT+CGDCONT=-2147483648,"","","",-1,2147483647)",
         R"(AT*CGDFLT=-2147483648,"","",,1)"},
        {{0, "\"%s", "%n,\\", "%d", 0, 0}, R"(AT+CGDCONT=0,""%s","%n,\","%d",0,0)", R"(AT*CGDFLT=0,""%s","%n,\",,1)"},
        // Arrays that are full end where they end.
        {{1, t, a, d, 0x41414141, 0x42424242},
         "AT+CGDCONT=1,\"" + t + "\",\"" + a + "\",\"" + d + "\",1094795585,1111638594",
         "AT*CGDFLT=1,\"" + t + "\",\"" + a + "\",,1"},
    };
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        for (const auto &row : rows) {
            Host host;
            host.expect(row.define, 5000, "\r\nOK\r\n").expect(row.bearer, 5000, "\r\nOK\r\n");
            EXPECT_EQ(cgdcontSet(contextOf(row.context)), UNI_ERROR_SUCCESS);
            EXPECT_EQ(cgdfltSet(contextOf(row.context)), UNI_ERROR_SUCCESS);
            expectLines(host, {});
        }
    }
}

TEST(ContextSets, Fail)
{
    playAllFailures({[](int32_t *) {
                         return cgdcontSet(contextOf({1, "IP", "a", "b", 2, 3}));
                     },
                     R"(AT+CGDCONT=1,"IP","a","b",2,3)", 5000});
    playAllFailures({[](int32_t *) {
                         return cgdfltSet(contextOf({1, "IP", "a", "b", 2, 3}));
                     },
                     R"(AT*CGDFLT=1,"IP","a",,1)", 5000});
}

} // namespace
