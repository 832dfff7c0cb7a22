// SIM PIN, facility locks, and the attempts left.

#include <cstring>

#include "tests/lib_public/AtCodec/Set_AtWrapper/transcript.h"

namespace {

using namespace transcript;

PinCodePair pairOf(const std::string &code, const std::string &newCode = "")
{
    PinCodePair pair{};
    std::memcpy(&pair, code.data(), code.size()); // a long one runs on into newCode
    std::memcpy(pair.newCode, newCode.data(), newCode.size());
    return pair;
}

std::string cme(const std::string &text)
{
    return "\r\n+CME ERROR: " + text + "\r\n";
}

const std::string kTag = "###T9LB LOG### ";
const Texts kQueryFound = {kTag + "clckSet 2 == mode begin", kTag + "clckSet ClientSendCmd return UNI_ERROR_SUCCESS"};
const Texts kQueryUnsent = {kTag + "clckSet 2 == mode begin", kTag + "clckSet ClientSendCmd return UNI_ERROR_FALSE"};
const Texts kQueryUnparsed = {kTag + "clckSet 2 == mode begin",
                              kTag + "clckSet Bk_Parse_At_Res return UNI_ERROR_FALSE"};
const Texts kQueryRefused = {kTag + "clckSet 2 == mode begin", kTag + "clckSet last return UNI_ERROR_FALSE"};

TEST(ClckQuery, ReadsTheFirstNumber)
{
    // Nobody looks at the password: it lies where nothing is mapped.
    static const GuardedMemory nowhere(0);
    const Command kQuery = {[](int32_t *out) { return clckSet("SC", 2, nowhere.data(), 1, out); }, "AT+CLCK=\"SC\",2",
                            10000};
    const std::vector<Row> rows = {
        {"active", okReply("+CLCK: 1"), 0, {1}, kQueryFound},
        {"not active", okReply("+CLCK: 0"), 0, {0}, kQueryFound},
        {"with a class", okReply("+CLCK: 1,7"), 0, {1}, kQueryFound},
        {"a line for each class", framed({"+CLCK: 0,1", "+CLCK: 1,2"}), 0, {0}, kQueryFound},
        {"without its name", okReply("1"), 0, {1}, kQueryFound},
        {"blanks and a sign", okReply("+CLCK:   -3 , 7"), 0, {-3}, kQueryFound},
        {"a tail", okReply("+CLCK: 1x"), 0, {1}, kQueryFound},
        {"no number", okReply("+CLCK: on"), 0, {}, kQueryFound},
        {"quoted", okReply("+CLCK: \"1\""), 0, {}, kQueryFound},
        {"nothing", "\r\nOK\r\n", 0, {}, kQueryFound},
        {"33 bits", okReply("+CLCK: 4294967297,7"), 0, {1}, kQueryFound},
        {"the sign bit", okReply("+CLCK: 2147483648"), 0, {INT32_MIN}, kQueryFound},
        {"the longest", longestReply("\r\n+CLCK: 1,"), 0, {1}, kQueryFound},
    };
    play(kQuery, rows);
    playFailingSend(kQuery, kQueryUnsent);
    play(kQuery, unparsable(kQueryUnparsed));
    play(kQuery, neverInterpreted(kQueryRefused));
    play(kQuery, errors(UNI_ERROR_FALSE, kQueryRefused));
    play(kQuery, cmeErrors(UNI_ERROR_FALSE, kQueryRefused));
    play(kQuery, rowsOf({"\r\n+CME ERROR: incorrect password\r\n", "\r\n+CME ERROR: SIM PUK required\r\n"},
                        UNI_ERROR_FALSE, kQueryRefused));
}

TEST(ClckQuery, NeedsNoPassword)
{
    play({[](int32_t *out) { return clckSet("SC", 2, nullptr, 7, out); }, "AT+CLCK=\"SC\",2", 10000},
         {{"active", okReply("+CLCK: 1"), 0, {1}, kQueryFound}});
}

TEST(ClckQuery, LogsTheParseBetweenItsOwnLines)
{
    Host host;
    host.expect("AT+CLCK=\"PN\",2", 10000, okReply("+CLCK: 1"));
    int32_t status = kUntouched;
    clckSet("PN", 2, nullptr, 7, &status);
    EXPECT_EQ(host.texts(), (Texts{kQueryFound[0], "Bk_Parse_At_Res-in-" + okReply("+CLCK: 1"), "Bk_Parse_At_Res-out-1",
                                   "Bk_Parse_At_Res-out-1", kQueryFound[1]}));
}

const std::string kSet = kTag + "clckSet 2 != mode return ";
const Texts kSetDone = {kSet + "UNI_ERROR_SUCCESS"};
const Texts kSetUnsent = {kSet + "UNI_ERROR_FALSE"};
const Texts kSetWrong = {kSet + "UNI_ERROR_SETTING_CPIN_INCORRECT_PASS"};
const Texts kSetPuk = {kSet + "UNI_ERROR_SETTING_CPIN_PUKPASS_REQUIRED"};
const Texts kSetUnknown = {kSet + "UNI_ERROR_SETTING_UNKNOWN"};
const Texts kSetLast = {kTag + "clckSet last return UNI_ERROR_FALSE"};

TEST(ClckSet, SendsTheClassOnlyIfItIsOne)
{
    const struct {
        const char *facility;
        const char *password;
        int32_t mode;
        int32_t class_;
        const char *command;
    } rows[] = {
        {"SC", "1234", 1, 7, R"(AT+CLCK="SC",1,"1234")"},
        {"SC", "1234", 0, 1, R"(AT+CLCK="SC",0,"1234",1)"},
        {"SC", "1234", 1, 0, R"(AT+CLCK="SC",1,"1234")"},
        {"SC", "1234", 1, 2, R"(AT+CLCK="SC",1,"1234")"},
        {"SC", "1234", 1, -1, R"(AT+CLCK="SC",1,"1234")"},
        {"SC", "1234", 1, 257, R"(AT+CLCK="SC",1,"1234")"},
        {"SC", "1234", 1, 65537, R"(AT+CLCK="SC",1,"1234")"},
        {"PN", "", 3, 1, R"(AT+CLCK="PN",3,"",1)"},
        {"", "", -1, 7, R"(AT+CLCK="",-1,"")"},
        {"AO", "1\"2%s%n", INT32_MIN, 7, R"(AT+CLCK="AO",-2147483648,"1"2%s%n")"},
        {"%d", "%s", 258, 1, R"(AT+CLCK="%d",258,"%s",1)"},
    };
    for (const int32_t platform : kPlatforms) {
        for (const auto &row : rows) {
            const OnPlatform on(platform);
            Host host;
            host.expect(row.command, 5000, okReply("+CLCK: 1"));
            const GuardedRecord<int32_t> status(kUntouchedByte);
            EXPECT_EQ(clckSet(GuardedText(row.facility), row.mode, GuardedText(row.password), row.class_, status), 0U);
            EXPECT_EQ(*status.get(), kUntouched) << row.command;
            expectLines(host, kSetDone);
        }
    }
}

TEST(ClckSet, TellsWhyItWasRefused)
{
    const Command kLock = {[](int32_t *out) { return clckSet("SC", 1, "1234", 7, out); }, R"(AT+CLCK="SC",1,"1234")",
                           5000};
    play(kLock, {{"done", "\r\nOK\r\n", 0, {}, kSetDone},
                 {"lower case", cme("incorrect password"), 24, {}, kSetWrong},
                 {"upper case", cme("Incorrect password"), 24, {}, kSetWrong},
                 {"inside a text", cme("the incorrect password!"), 24, {}, kSetWrong},
                 {"other case", cme("INCORRECT PASSWORD"), 29, {}, kSetUnknown},
                 {"quoted", cme("\"incorrect password\""), 29, {}, kSetUnknown},
                 {"behind a quoted text", cme("\"code\" incorrect password"), 24, {}, kSetWrong},
                 {"PUK", cme("SIM PUK required"), 25, {}, kSetPuk},
                 {"PUK, lower case", cme("sim puk required"), 29, {}, kSetUnknown},
                 {"quoted PUK", cme("\"SIM PUK required\""), 29, {}, kSetUnknown},
                 {"PUK2", cme("SIM PUK2 required"), 29, {}, kSetUnknown},
                 {"both", cme("SIM PUK required, Incorrect password"), 24, {}, kSetWrong},
                 {"number", cme("12"), 29, {}, kSetUnknown},
                 {"behind the line", cme("3") + "incorrect password\r\n", 29, {}, kSetUnknown},
                 {"the longest", longestReply("\r\n+CME ERROR: ", "incorrect password\r\n"), 24, {}, kSetWrong}});
    play(kLock, cmeErrors(UNI_ERROR_SETTING_UNKNOWN, kSetUnknown));
    play(kLock, errors(UNI_ERROR_SETTING_CPIN_INCORRECT_PASS, kSetWrong));
    play(kLock, neverInterpreted(kSetLast));
    play(kLock, unparsable({}));
    playFailingSend(kLock, kSetUnsent);
}

TEST(ClckSet, LogsBehindItsParse)
{
    Host host;
    host.expect(R"(AT+CLCK="SC",1,"1234")", 5000, cme("SIM PUK required"));
    clckSet("SC", 1, "1234", 7, nullptr);
    EXPECT_EQ(host.texts(), (Texts{"Bk_Parse_At_Res-in-" + cme("SIM PUK required"),
                                   "Bk_Parse_At_Res-out-SIM PUK required", "Bk_Parse_At_Res-out-4", kSetPuk[0]}));
}

TEST(Clck, SendsACommandWholeOrNotAtAll)
{
    int32_t status = kUntouched;
    playLongest(
        "AT+CLCK=\"", "\",2", 10000, [&](char *facility) { return clckSet(facility, 2, nullptr, 7, &status); },
        kQueryFound, kQueryUnsent);
    playLongest(
        "AT+CLCK=\"", R"(",1,"1234")", 5000, [&](char *facility) { return clckSet(facility, 1, "1234", 7, &status); },
        kSetDone, kSetUnsent);
    playLongest(R"(AT+CLCK="SC",0,")", "\",1", 5000,
                [&](char *password) { return clckSet("SC", 0, password, 1, &status); }, kSetDone, kSetUnsent);
    EXPECT_EQ(status, kUntouched);
}

const std::string kEntered = kTag + "cpinSet begin";
const Texts kEnteredOnly = {kEntered};
const Texts kEnteredParsed = {kEntered, kTag + "Bk_Parse_At_Res SUCCESS"};
const Texts kEnteredOk = {kEntered, kTag + "Bk_Parse_At_Res SUCCESS", kTag + "cpinSet result ok"};

const Platforms kQuoting = {PF_SPEADTRUM, PF_MTK, PF_TSP};
const Platforms kBare = {0, PF_QC_LTE, 2, 6, 7, -1};

void expectEntered(const Platforms &platforms, const PinCodePair &pair, const std::string &command)
{
    for (const int32_t platform : platforms) {
        SCOPED_TRACE(command + " on " + std::to_string(platform));
        const OnPlatform on(platform);
        Host host;
        host.expect(command, 10000, "\r\nOK\r\n");
        EXPECT_EQ(cpinSet(pair), UNI_ERROR_SUCCESS);
        expectLines(host, kEnteredOk);
    }
}

TEST(CpinSet, QuotesOnSomePlatforms)
{
    expectEntered(kQuoting, pairOf("1234"), R"(AT+CPIN="1234")");
    expectEntered(kBare, pairOf("1234"), "AT+CPIN=1234");
    expectEntered(kQuoting, pairOf("12345678", "4321"), R"(AT+CPIN="12345678","4321")");
    expectEntered(kBare, pairOf("12345678", "4321"), "AT+CPIN=12345678,4321");
    expectEntered(kQuoting, pairOf(""), R"(AT+CPIN="")");
    expectEntered(kBare, pairOf("", "1"), "AT+CPIN=,1");
    expectEntered(kQuoting, pairOf("1\"2%s%n", "%d"), R"(AT+CPIN="1"2%s%n","%d")");
    expectEntered(kBare, pairOf("1\"2%s%n", "%d"), "AT+CPIN=1\"2%s%n,%d");
}

TEST(CpinSet, TakesACodeThatRunsOnIntoTheNewOne)
{
    const std::string digits = "0123456789abcdefghijABCDEFGHIJKLMNOPQRST";
    for (size_t length = 19; length <= 39; ++length) {
        const std::string code = digits.substr(0, length);
        const std::string over = length > 20 ? code.substr(20) : "";
        expectEntered(kQuoting, pairOf(code), "AT+CPIN=\"" + code + (over.empty() ? "" : "\",\"" + over) + '"');
        expectEntered(kBare, pairOf(code), "AT+CPIN=" + code + (over.empty() ? "" : "," + over));
    }
    // Arrays that are full: the record ends them.
    expectEntered(kBare, pairOf("1234", digits.substr(0, 20)), "AT+CPIN=1234," + digits.substr(0, 20));
    expectEntered(kQuoting, pairOf(digits), "AT+CPIN=\"" + digits + "\",\"" + digits.substr(20) + '"');
}

TEST(CpinSet, TellsWhyItWasRefused)
{
    const Call enter = [](int32_t *) { return cpinSet(pairOf("1234")); };
    const std::vector<Row> rows = {
        {"lower case", cme("incorrect password"), 24, {}, kEnteredParsed},
        {"upper case", cme("Incorrect password"), 1, {}, kEnteredParsed},
        {"upper case with the digits", cme("Incorrect password 12"), 25, {}, kEnteredParsed},
        {"quoted", cme("\"incorrect password\""), 1, {}, kEnteredParsed},
        {"PUK", cme("SIM PUK required"), 25, {}, kEnteredParsed},
        {"PUK, lower case", cme("sim puk required"), 1, {}, kEnteredParsed},
        {"number of PUK", cme("12"), 25, {}, kEnteredParsed},
        {"the digits inside", cme("operation 3127 failed"), 25, {}, kEnteredParsed},
        {"quoted digits", cme("\"12\""), 1, {}, kEnteredParsed},
        {"digits apart", cme("1 2"), 1, {}, kEnteredParsed},
        {"wrong comes first", cme("12 SIM PUK required incorrect password"), 24, {}, kEnteredParsed},
        {"digits behind the line", cme("3") + "12\r\n", 1, {}, kEnteredParsed},
        {"the longest", longestReply("\r\n+CME ERROR: ", "12\r\n"), 25, {}, kEnteredParsed},
    };
    for (const bool isQuoting : {false, true}) {
        const Platforms &platforms = isQuoting ? kQuoting : kBare;
        const Command command = {enter, isQuoting ? R"(AT+CPIN="1234")" : "AT+CPIN=1234", 10000};
        play(command, rows, platforms);
        play(command, cmeErrors(UNI_ERROR_FALSE, kEnteredParsed), platforms);
        play(command, errors(UNI_ERROR_FALSE, kEnteredParsed), platforms);
        play(command, neverInterpreted(kEnteredParsed), platforms);
        play(command, unparsable(kEnteredOnly), platforms);
        playFailingSend(command, kEnteredOnly, platforms);
    }
}

TEST(CpinSet, LogsAroundItsParse)
{
    Host host;
    host.expect("AT+CPIN=1234", 10000, "\r\nOK\r\n");
    cpinSet(pairOf("1234"));
    EXPECT_EQ(host.texts(), (Texts{kEnteredOk[0], "Bk_Parse_At_Res-in-\r\nOK\r\n", "Bk_Parse_At_Res-out-",
                                   "Bk_Parse_At_Res-out-1", kEnteredOk[1], kEnteredOk[2]}));
}

TEST(CpwdSet, ChangesThePin)
{
    const Command kChange = {[](int32_t *) { return cpwdSet(pairOf("1234", "5678")); }, R"(AT+CPWD="SC","1234","5678")",
                             10000};
    play(kChange, {{"done", "\r\nOK\r\n", 0, {}, {}},
                   {"lower case", cme("incorrect password"), 24, {}, {}},
                   {"upper case", cme("Incorrect password"), 24, {}, {}},
                   {"other case", cme("INCORRECT PASSWORD"), 1, {}, {}},
                   {"quoted", cme("\"Incorrect password\""), 1, {}, {}},
                   {"PUK", cme("SIM PUK required"), 25, {}, {}},
                   {"PUK, lower case", cme("sim puk required"), 1, {}, {}},
                   {"both", cme("SIM PUK required, incorrect password"), 24, {}, {}},
                   {"number", cme("12"), 1, {}, {}}});
    play(kChange, cmeErrors(UNI_ERROR_FALSE, {}));
    play(kChange, errors(UNI_ERROR_FALSE, {}));
    play(kChange, neverInterpreted({}));
    play(kChange, unparsable({}));
    playFailingSend(kChange, {});

    const std::string full(20, '9');
    for (const auto &[pair, command] : std::initializer_list<std::pair<PinCodePair, std::string>>{
             {pairOf("", ""), R"(AT+CPWD="SC","","")"},
             {pairOf("1\"%s", "%n"), R"(AT+CPWD="SC","1"%s","%n")"},
             {pairOf("1", full), R"(AT+CPWD="SC","1",")" + full + '"'},
             {pairOf(full), R"(AT+CPWD="SC",")" + full + R"(","")"}}) {
        Host host;
        host.expect(command, 10000, "\r\nOK\r\n");
        EXPECT_EQ(cpwdSet(pair), UNI_ERROR_SUCCESS);
        expectLines(host, {});
    }
}

} // namespace
