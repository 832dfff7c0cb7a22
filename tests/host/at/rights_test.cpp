#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/at/rights.h"
#include "host/at/vocabulary.h"

using namespace host::at;

namespace {

/** "read sim": one text for a set, so that rows stay rows. */
std::string told(Rights rights)
{
    std::string text;
    for (const Right right : kEveryRight)
        if (rights.has(right)) text.append(text.empty() ? "" : " ").append(nameOf(right));
    return text;
}

TEST(Rights, AreASet)
{
    constexpr Rights kBoth = Right::Read | Right::Sim;
    static_assert(Rights().isEmpty() && !kBoth.isEmpty() && !Rights::all().isEmpty());
    static_assert(kBoth.has(Right::Sim) && !kBoth.has(Right::Raw) && !kBoth.has(Right::Sim | Right::Raw));
    static_assert(kBoth.has({}) && kBoth.has(kBoth) && Rights::all().has(kBoth));
    static_assert(kBoth.without(Right::Sim) == Rights(Right::Read) && kBoth.without(Right::Raw) == kBoth);
    EXPECT_EQ(told(Rights::all()), "read network settings sim device raw trace");
}

TEST(Rights, HaveNames)
{
    for (const Right right : kEveryRight)
        EXPECT_EQ(rightNamed(nameOf(right)), right);
    for (const char *none : {"", "Read", "reads", "all"})
        EXPECT_EQ(rightNamed(none), std::nullopt) << none;
}

TEST(Rights, AreWhatAllCommandsOfALineNeed)
{
    const struct {
        const char *line;
        const char *rights;
    } rows[] = {
        // what asks
        {"AT", ""},
        {"at", ""},
        {"AT+CSQ", "read"},
        {"at+creg?", "read"},
        {"AT+COPS=?", "read"},
        {"AT+COPS=5", "read"},
        {"AT+CPIN?", "read"},
        {"AT+CFUN=?", "read"},
        {"AT+CLCK=\"SC\",2", "read"},
        {"AT+CLCK=\"PN\",2", "read"},
        {"AT+CCFC=0,2", "read"},
        {"AT+CRSM=176,12258,0,0,10", "read"},
        {"AT+CRSM = 178,28480,1,4,28", "read"},
        {"ATI", "read"},
        {"ATI3", "read"},
        {"ATS0?", "read"},
        {"AT&V", "read"},
        // radio and profiles
        {"AT+COPS=0", "network"},
        {"AT+COPS=1,2,\"46001\",7", "network"},
        {"AT+COPS=5,0", "network"},
        {"AT+CFUN=1", "network"},
        {"AT+CFUN=0", "network"},
        {"AT+CFUN=4,0", "network"},
        {"AT+CGDCONT=1,\"IP\",\"internet\"", "network"},
        {"AT+CGAUTH=1,2,\"me\",\"word\"", "network"},
        {"AT+CGAUTH?", "network"},
        {"ATH", "network"},
        // settings
        {"ATE0", "settings"},
        {"ATE", "settings"},
        {"ATE0V1Q0", "settings"},
        {"AT+CMEE=2;+CREG?", "read settings"},
        {"AT+COPS=3,2", "settings"},
        {"AT*prop=net.static_ip,1,192.168.1.2", "settings"},
        {"AT+CUSD=1", "settings"},
        {"AT+CNMA=0", "settings"},
        // secrets and what the card keeps
        {"AT+CPIN=1234", "sim"},
        {"AT+CPIN=", "sim"},
        {"AT +C PIN\t= 1234", "sim"},
        {"AT+CPWD=\"SC\",\"1234\",\"4321\"", "sim"},
        {"AT+CLCK=\"SC\",1,\"1234\"", "sim"},
        {"AT+CLCK=\"SC\",2,\"1234\"", "sim"},
        {"AT+CLCK=sc,1", "sim"},
        {"AT+CRSM=214,28480,1,4,4,\"0A1B2C3D\"", "sim"},
        {"AT+CRSM=\"176;\"", "sim"},
        {"AT+CRSM", "sim"},
        {"AT+CSIM=10,\"0020000100\"", "sim"},
        {"AT+CGLA=1,10,\"0020000100\"", "sim"},
        {"AT+CUSD=1,\"*100#\",15", "sim"},
        {"ATD*#06#", "sim"},
        {"ATDT**04*1234*4321*4321#;", "sim"},
        {"AT+CMGR=1", "sim"},
        {"AT+CPBR=1,10", "sim"},
        // the device, and the line for everybody
        {"AT+CFUN=1,1", "device"},
        {"AT+CFUN=0,1", "device"},
        {"AT+CFUN=6", "device"},
        {"AT+CFUN=\"1\",1", "device"},
        {"AT+CFUN=", "device"},
        {"AT+CLCK=\"PN\",0,\"12345678\"", "sim device"},
        {"AT+CLCK=", "sim device"},
        {"AT+CLCK=\"PN\",2,\"1\"", "sim device"},
        {"AT+CPWD=\"PN\",\"1\",\"2\"", "sim device"},
        {"AT+ZNCK=\"12345678\"", "sim device"},
        {"AT+EGMR=1,7,\"861234567890123\"", "device"},
        {"AT*prop=ramdump.host_ip,1,192.168.1.1", "device"},
        {"AT*prop=net.static_ip,1,1.1.1.1,2", "device"},
        {"AT&F", "device"},
        {"ATZ", "device"},
        {"ATZ0", "device"},
        {"ATV0", "device"},
        {"ATV", "device"},
        {"ATQ1", "device"},
        {"ATS3=59", "device"},
        {"ATS0=0?", "device"},
        {"AT+IPR=9600", "device"},
        {"AT+CSCS=\"UCS2\"", "device"},
        // what takes the line, and what nobody knows
        {"ATD123;", "raw"},
        {"ATD", "raw"},
        {"ATA", "raw"},
        {"ATO", "raw"},
        {"ATD*99#", "sim raw"},
        {"ATD*99***1#", "sim raw"},
        {"ATD**04*1*2*2", "sim raw"},
        {"AT+CGDATA=\"PPP\",1", "raw"},
        {"AT+CGDATA", "raw"},
        {"AT+CMGS=\"123\"", "raw"},
        {"AT+CNMA=1,20", "raw"},
        {"AT+FOO?", "raw"},
        {"AT+FOO=?", "raw"},
        {"AT^CREG?", "raw"},
        {"AT+CREG?1", "raw"},
        {"AT+", "raw"},
        {"AT\\Q3", "raw"},
        {"AT!RESET", "raw"},
        {"AT+CSQ +CFUN=0", "raw"},
        {"A/", "raw"},
        {"+CSQ", "read raw"},
        {"", "raw"},
        // several, and what only looks like one
        {"AT+CSQ;+CFUN=1,1", "read device"},
        {"ATE0+CPIN=1234;&F", "settings sim device"},
        {"AT+CGDCONT=1,\"IP\",\"1\";+CFUN=1", "network"},
        {"AT+CGDCONT=1,\"IP\",\"1\";+CFUN=0\"", "network device raw"},
        {"AT+CGDCONT=1,\"IP\",\"a;+CFUN=0\"", "network"},
        {"AT+CSQ=\"open;+CFUN=0", "read raw"},
        {"AT+CGDCONT=1,\"IP\",\"a\\\"b\";+CFUN=1,1;+FOO=\"c\\\"d\"", "network raw"},
        {"AT+CSQ\r+CFUN=0", "raw"},
        {"AT+CSQ;\x08\x08+CREG?", "read raw"},
        {"AT+CSQ\xBB", "raw"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(told(rightsFor(row.line)), row.rights) << row.line;
}

TEST(Vocabulary, HasEachCommandOnce)
{
    std::set<std::string_view> names;
    for (const Word &word : allWords()) {
        EXPECT_TRUE(names.insert(word.name).second) << word.name;
        const auto commands = commandsOf(word.name);
        ASSERT_EQ(commands.size(), 1U) << word.name;
        EXPECT_EQ(commands[0].name, word.name);
        EXPECT_EQ(wordNamed(word.name), &word);
        EXPECT_FALSE(word.whenAsked.isEmpty() || word.whenRun.isEmpty() || word.whenSet.isEmpty()) << word.name;
    }
}

} // namespace
