// Settings of the device.

#include <algorithm>
#include <cstdlib>

#include "tests/lib_public/AtCodec/Set_AtWrapper/transcript.h"

namespace {

using namespace transcript;

TEST(ZoprtRead, ReadsTheFirstNumber)
{
    const Command kMode = {zoprtRead, "AT+ZOPRT?", 5000};
    play(kMode, {{"one", okReply("+ZOPRT: 5"), 0, {5}, {}},
                 {"two", okReply("+ZOPRT: 5,6"), 0, {5}, {}},
                 {"none", "\r\nOK\r\n", 0, {}, {}},
                 {"a word", okReply("+ZOPRT: off"), 0, {}, {}},
                 {"quoted", okReply("+ZOPRT: \"5\""), 0, {}, {}},
                 {"negative", okReply("+ZOPRT: -1"), 0, {-1}, {}},
                 {"beyond 32 bits", okReply("+ZOPRT: 4294967301"), 0, {5}, {}},
                 {"the longest", longestReply("\r\n+ZOPRT: 5,"), 0, {5}, {}}});
    playAllFailures(kMode);
}

TEST(ZoprtSet, PassesTheModeOn)
{
    const Command kOff = {[](int32_t *) { return zoprtSet(6); }, "AT+ZOPRT=6", 5000};
    const Command kOdd = {[](int32_t *) { return zoprtSet(INT32_MIN); }, "AT+ZOPRT=-2147483648", 5000};
    const std::vector<Row> rows = {{"done", "\r\nOK\r\n", 0, {}, {}},
                                   {"with a value", okReply("+ZOPRT: 6"), 0, {}, {}},
                                   {"the longest", longestReply("\r\n+ZOPRT: 5,"), 0, {}, {}}};
    play(kOff, rows);
    play(kOdd, rows);
    playAllFailures(kOff);
}

TEST(FotactrSet, ReadsTwoNumbers)
{
    const Command kStart = {[](int32_t *out) { return FOTACTRSet(1, out, out + 1); }, "AT+FOTACTR=1", 5000};
    const Command kOdd = {[](int32_t *out) { return FOTACTRSet(INT32_MIN, out, out + 1); }, "AT+FOTACTR=-2147483648",
                          5000};
    const std::vector<Row> rows = {
        {"two", okReply("+FOTACTR: 1,2"), 0, {1, 2}, {}},
        {"three", okReply("+FOTACTR: 1,2,3"), 0, {1, 2}, {}},
        {"one", okReply("+FOTACTR: 1"), 0, {1}, {}},
        {"one and a comma", okReply("+FOTACTR: 1,"), 0, {1}, {}},
        {"none", "\r\nOK\r\n", 0, {}, {}},
        {"empty first", okReply("+FOTACTR: \"\",2"), 0, {}, {}},
        {"quoted", okReply(R"(+FOTACTR: "1","2")"), 0, {1, 2}, {}},
        {"words", okReply("+FOTACTR: 1,done"), 0, {1}, {}},
        {"beyond 32 bits", okReply("+FOTACTR: 2147483648,-4294967298"), 0, {INT32_MIN, -2}, {}},
        {"1023 characters", okReply("+FOTACTR: " + padded("1,2,", 1023)), 0, {1, 2}, {}},
        {"1024 characters", okReply("+FOTACTR: " + padded("1,2,", 1024)), 0, {1}, {}},
        {"the longest", longestReply("\r\n+FOTACTR: 1,2,"), 0, {1}, {}}};
    play(kStart, rows);
    play(kOdd, rows);
    playAllFailures(kStart);
}

TEST(AddressProperties, SendTheAddressWithoutQuotes)
{
    const struct {
        uint32_t (*set)(const char *address);
        std::string head;
    } rows[] = {{AtNetstaticIp, "AT*prop=net.static_ip,1,"}, {AtRamdumpHostIp, "AT*prop=ramdump.host_ip,1,"}};
    for (const auto &row : rows) {
        for (const char *address : {"192.168.0.1", "", "\"10.0.0.1\"", "fe80::1", "%s%n, \\"}) {
            for (const int32_t platform : kPlatforms) {
                const OnPlatform on(platform);
                Host host;
                host.expect(row.head + address, 5000, okReply("*prop: 1"));
                EXPECT_EQ(row.set(GuardedText(address)), UNI_ERROR_SUCCESS);
                expectLines(host, {});
            }
        }
        playLongest(row.head, "", 5000, [&](char *address) { return row.set(address); });
    }
    playAllFailures({[](int32_t *) { return AtNetstaticIp("10.0.0.1"); }, "AT*prop=net.static_ip,1,10.0.0.1", 5000});
    playAllFailures(
        {[](int32_t *) { return AtRamdumpHostIp("10.0.0.1"); }, "AT*prop=ramdump.host_ip,1,10.0.0.1", 5000});
}

/** What a state text holds that nobody has written. */
const std::string kLeft = "left as it was";

struct StateRow {
    const char *name;
    std::string reply;
    std::string state;
    int32_t mode;
};

const std::string kReply = "+ZSET: ";

const StateRow kStates[] = {
    {"quoted", okReply(kReply + "\"SENSOR\",1"), "SENSOR", 1},
    {"bare", okReply(kReply + "SENSOR,1"), "SENSOR", 1},
    {"blanks", okReply(kReply + "\"a state of  blanks\",-2"), "a state of  blanks", -2},
    {"tabs", okReply(kReply + "\"\ta\tb \",3"), "\ta\tb ", 3},
    {"commas", okReply(kReply + "\"a,b\",3"), "a,b", 3},
    {"empty", okReply(kReply + "\"\",4"), "", 4},
    {"leading comma", okReply(kReply + ",4"), "4", kUntouched},
    {"an empty first loses the tail", okReply(kReply + ",,4"), "", kUntouched},
    {"a marker among others stays", okReply(kReply + "\"a\xFD b\",5"), "a\xFD b", 5},
    {"no number", okReply(kReply + "\"on\""), "on", kUntouched},
    {"empty number", okReply(kReply + "\"on\","), "on", kUntouched},
    {"a word for the number", okReply(kReply + "\"on\",off"), "on", kUntouched},
    {"an unquoted blank", okReply(kReply + "on off,5"), "on", kUntouched},
    {"three", okReply(kReply + "\"on\",5,6"), "on", 5},
    {"without its name", okReply("\"on\",5"), "on", 5},
    {"two lines", framed({"+ZSET: \"on\",5", "+ZSET: \"off\",6"}), "on", 5},
    {"beyond 32 bits", okReply(kReply + "\"on\",4294967303"), "on", 7},
    {"nothing", "\r\nOK\r\n", kLeft, kUntouched},
    {"blanks only", okReply(kReply + "  "), kLeft, kUntouched},
    {"1023 characters", okReply(kReply + padded("\"", 1020) + "\",8"), std::string(1019, 'x'), 8},
    {"1024 characters are not rewritten", okReply(kReply + padded("\"", 1021) + "\",8"), padded("\"", 1021) + "\",8",
     kUntouched},
    {"a longer line keeps 1024", longestReply("\r\n" + kReply + "\"on\",5,"), padded("\"on\",5,", 1024), kUntouched},
};

void expectState(const StateRow &row)
{
    Host host;
    host.expect("AT+ZSET=\"SENSOR\",1", 5000, row.reply);
    // As large as the text needs, or as its marker does if it is empty.
    const GuardedText state(row.state == kLeft ? kLeft : std::string(std::max<size_t>(row.state.size(), 1), 'Z'));
    const GuardedRecord<int32_t> mode(kUntouchedByte);
    EXPECT_EQ(zsetSet(GuardedText("SENSOR"), 1, state, mode), UNI_ERROR_SUCCESS);
    EXPECT_EQ(state.str(), row.state);
    EXPECT_EQ(*mode.get(), row.mode);
    expectLines(host, {});
}

TEST(ZsetSet, ReadsTheStateAndTheMode)
{
    for (const int32_t platform : kPlatforms) {
        for (const StateRow &row : kStates) {
            SCOPED_TRACE(row.name);
            const OnPlatform on(platform);
            expectState(row);
        }
    }
}

TEST(ZsetSet, HandsOverTheLongestState)
{
    // Lines of one name come as one text; its commas and quotes stay, since it is too long to be rewritten.
    std::string reply;
    std::string state;
    while (reply.size() + 1020 + 8 <= kLongestReply) {
        reply += "\r\n" + kReply + std::string(1000, 'a') + ",\"b\"\r\n";
        state += (state.empty() ? "" : ";") + std::string(1000, 'a') + ",\"b\"";
    }
    const std::string last = "\r\n" + kReply + "c,";
    reply = longestReply(reply + last);
    ASSERT_EQ(reply.size(), kLongestReply);
    const std::string rest(reply.size() - 8 - reply.find(last) - last.size(), 'x');
    expectState({"longest", reply, state + ";c," + rest, kUntouched});

    // Bare lines of one character grow most: they are quoted.
    reply = "\r\n" + kReply + "1\r\n";
    state = "1";
    while (reply.size() + 3 + 6 <= kLongestReply) {
        reply += "a\r\n";
        state += ",\"a\"";
    }
    expectState({"growing", reply + "\r\nOK\r\n", state, kUntouched});
}

TEST(ZsetSet, LeavesAStateThatTheReplyLacks)
{
    // A buffer need not hold a text when it is handed over.
    const auto call = [] {
        Host host;
        host.expect("AT+ZSET=\"SENSOR\",1", 5000, "\r\nOK\r\n");
        const GuardedMemory state(13653);
        const std::string before(state.size(), '\xA5');
        before.copy(state.data(), state.size());
        int32_t mode = kUntouched;
        const bool isLeft = zsetSet("SENSOR", 1, state.data(), &mode) == UNI_ERROR_SUCCESS && mode == kUntouched &&
                            before == std::string(state.data(), state.size());
        std::_Exit(isLeft ? 0 : 1);
    };
    EXPECT_EXIT(call(), testing::ExitedWithCode(0), "");
}

TEST(ZsetSet, SendsTheNameAsItIs)
{
    const struct {
        const char *name;
        int32_t value;
        const char *command;
    } rows[] = {{"SENSOR", 0, R"(AT+ZSET="SENSOR",0)"},
                {"", -1, R"(AT+ZSET="",-1)"},
                {"a name of more than twenty characters", INT32_MIN,
                 R"(AT+ZSET="a name of more than twenty characters",-2147483648)"},
                {"\"%s%n,", INT32_MAX, R"(AT+ZSET=""%s%n,",2147483647)"}};
    for (const auto &row : rows) {
        Host host;
        host.expect(row.command, 5000, okReply("+ZSET: \"on\",5"));
        const GuardedText state("12");
        int32_t mode = kUntouched;
        EXPECT_EQ(zsetSet(GuardedText(row.name), row.value, state, &mode), UNI_ERROR_SUCCESS);
        EXPECT_EQ(state.str(), "on");
        EXPECT_EQ(mode, 5);
    }
    GuardedText state(kLeft);
    int32_t mode = kUntouched;
    playLongest("AT+ZSET=\"", "\",-12", 5000, [&](char *name) { return zsetSet(name, -12, state, &mode); });
    EXPECT_EQ(state.str(), kLeft);
    EXPECT_EQ(mode, kUntouched);
}

TEST(ZsetSet, WritesNothingOnFailure)
{
    // The state would go where nothing is mapped.
    static const GuardedMemory nowhere(0);
    playAllFailures(
        {[](int32_t *out) { return zsetSet("SENSOR", 1, nowhere.data(), out); }, "AT+ZSET=\"SENSOR\",1", 5000});
}

} // namespace
