// What the SIM asks for, and the attempts left: the readers of the PIN wrappers.

#include "tests/lib_public/AtCodec/Set_AtWrapper/transcript.h"

namespace {

using namespace transcript;

const std::string kRead = "###T9LB LOG### CpinRead ";
const Texts kReadUnsent = {kRead + "begin", kRead + "ClientSendCmd return UNI_ERROR_FALSE"};
const Texts kReadLast = {kRead + "begin", kRead + "return last UNI_ERROR_FALSE"};
const Texts kReadSilent = {kRead + "begin"};

Texts readLines(const std::string &state)
{
    return {kRead + "begin", kRead + "tAtRes.Result == AT_RES_RESULT_OK", kRead + state,
            kRead + "return UNI_ERROR_SUCCESS"};
}

const Command kCpin = {cpinRead, "AT+CPIN?", 5000};

TEST(CpinRead, TellsTheState)
{
    const Texts pin = readLines("SIM PIN");
    const Texts puk = readLines("SIM PUK");
    const Texts net = readLines("PH-NET PIN");
    const Texts none = readLines("SETTING_PIN_UNREQUIRED");
    play(kCpin, {{"ready", okReply("+CPIN: READY"), 0, {SETTING_PIN_UNREQUIRED}, none},
                 {"ready, without its name", okReply("READY"), 0, {0}, none},
                 {"bare OK", "\r\nOK\r\n", 0, {0}, none},
                 {"echo", "AT+CPIN?\r" + okReply("+CPIN: SIM PIN"), 0, {1}, pin},
                 {"PIN", okReply("+CPIN: SIM PIN"), 0, {SETTING_PIN_REQUIRED}, pin},
                 {"PIN2", okReply("+CPIN: SIM PIN2"), 0, {1}, pin},
                 {"PUK", okReply("+CPIN: SIM PUK"), 0, {SETTING_PUK_REQUIRED}, puk},
                 {"PUK2", okReply("+CPIN: SIM PUK2"), 0, {2}, puk},
                 {"network", okReply("+CPIN: PH-NET PIN"), 0, {SETTING_PHNET_PIN_REQUIRED}, net},
                 {"network PUK", okReply("+CPIN: PH-NET PUK"), 0, {0}, none},
                 {"device", okReply("+CPIN: PH-SIM PIN"), 0, {1}, pin},
                 {"PIN before PUK", okReply("+CPIN: PH-NET PIN, SIM PUK, SIM PIN"), 0, {1}, pin},
                 {"PUK before network", okReply("+CPIN: PH-NET PIN, SIM PUK"), 0, {2}, puk},
                 {"other case", okReply("+CPIN: sim pin"), 0, {0}, none},
                 {"quoted", okReply("+CPIN: \"SIM PIN\""), 0, {0}, none},
                 {"quoted, then not", okReply("+CPIN: \"SIM PIN\",SIM PUK"), 0, {2}, puk},
                 {"not closed", "\r\n+CPIN: SIM PIN\r\nOK\r\n", 0, {0}, none},
                 {"the longest", longestReply("\r\n+CPIN: SIM PUK"), 0, {2}, puk}});
}

TEST(CpinRead, TellsWhyItIsRefused)
{
    const auto cme = [](const std::string &text) { return "\r\n+CME ERROR: " + text + "\r\n"; };
    std::vector<Row> rows = {{"failure, lower case", cme("sim failure"), 26, {}, kReadSilent},
                             {"failure", cme("SIM failure"), 26, {}, kReadSilent},
                             {"no SIM, lower case", cme("sim not inserted"), 28, {}, kReadSilent},
                             {"no SIM", cme("SIM not inserted"), 28, {}, kReadSilent},
                             {"busy, lower case", cme("sim busy"), 27, {}, kReadSilent},
                             {"busy", cme("SIM busy"), 27, {}, kReadSilent},
                             {"inside a text", cme("the SIM busy now"), 27, {}, kReadSilent},
                             {"failure before no SIM", cme("SIM not inserted SIM failure"), 26, {}, kReadSilent},
                             {"no SIM before busy", cme("sim busy SIM not inserted"), 28, {}, kReadSilent},
                             {"failure before busy", cme("SIM busy sim failure"), 26, {}, kReadSilent},
                             {"other case", cme("Sim busy"), 29, {}, kReadSilent},
                             {"quoted", cme("\"SIM busy\""), 29, {}, kReadSilent},
                             {"PIN", cme("SIM PIN required"), 29, {}, kReadSilent},
                             {"number of no SIM", cme("10"), 29, {}, kReadSilent},
                             {"the longest", longestReply("\r\n+CME ERROR: ", "SIM busy\r\n"), 27, {}, kReadSilent}};
    play(kCpin, rows, {0, PF_QC_LTE, 2, PF_MTK, PF_SPEADTRUM, 7, -1});
    play(kCpin, cmeErrors(UNI_ERROR_SETTING_UNKNOWN, kReadSilent), {0, PF_QC_LTE, 2, PF_MTK, PF_SPEADTRUM, 7, -1});

    // A TSP modem that refuses the question has no SIM, whatever it says.
    for (Row &row : rows)
        row.code = UNI_ERROR_SETTING_SIM_NOT_INSERTED;
    play(kCpin, rows, {PF_TSP});
    play(kCpin, cmeErrors(UNI_ERROR_SETTING_SIM_NOT_INSERTED, kReadSilent), {PF_TSP});
}

TEST(CpinRead, FailsOnAnythingElse)
{
    play(kCpin, errors(UNI_ERROR_FALSE, kReadLast));
    play(kCpin, neverInterpreted(kReadLast));
    play(kCpin, unparsable(kReadLast)); // there is no line for a failed parse
    playFailingSend(kCpin, kReadUnsent);
}

TEST(CpinRead, LogsTheParseBetweenItsOwnLines)
{
    Host host;
    host.expect("AT+CPIN?", 5000, "\r\n+CME ERROR: SIM busy\r\n").expect("AT+CPIN?", 5000, "");
    int32_t state = kUntouched;
    cpinRead(&state);
    cpinRead(&state);
    EXPECT_EQ(host.texts(),
              (Texts{kRead + "begin", "Bk_Parse_At_Res-in-\r\n+CME ERROR: SIM busy\r\n", "Bk_Parse_At_Res-out-SIM busy",
                     "Bk_Parse_At_Res-out-4", kRead + "begin", "Bk_Parse_At_Res-in-", "UNI_ERROR_BK_FAIL1",
                     kRead + "return last UNI_ERROR_FALSE"}));
}

/** Replies to a wrapper that takes the first number of the parameters as they stand. */
std::vector<Row> firstNumber(const std::string &name)
{
    const std::string head = name + ": ";
    return {{"one", okReply(head + "3"), 0, {3}, {}},
            {"several", okReply(head + "2,10"), 0, {2}, {}},
            {"far too many", okReply(head + "0, 1,2,3,4,5,6,7,8,9"), 0, {0}, {}},
            {"two lines", framed({(head + "1").c_str(), (head + "2").c_str()}), 0, {1}, {}},
            {"without its name", okReply("5"), 0, {5}, {}},
            {"sign", okReply(head + " -7"), 0, {-7}, {}},
            {"plus", okReply(head + "+7"), 0, {7}, {}},
            {"tail", okReply(head + "3a"), 0, {3}, {}},
            {"no number", okReply(head + "a3"), 0, {}, {}},
            {"empty first", okReply(head + ",3"), 0, {}, {}},
            {"quoted", okReply(head + "\"3\""), 0, {}, {}},
            {"none", "\r\nOK\r\n", 0, {}, {}},
            {"31 bits", okReply(head + "2147483647"), 0, {INT32_MAX}, {}},
            {"32 bits", okReply(head + "2147483648"), 0, {INT32_MIN}, {}},
            {"33 bits", okReply(head + "4294967299"), 0, {3}, {}},
            {"below 32 bits", okReply(head + "-4294967299"), 0, {-3}, {}},
            {"the longest", longestReply("\r\n" + head + "3,"), 0, {3}, {}}};
}

TEST(XxSet, ReadsTheFirstNumber)
{
    const Command kPin = {[](int32_t *out) { return xxSet(0, out); }, "AT+XX=0", 5000};
    const Command kPuk = {[](int32_t *out) { return xxSet(2, out); }, "AT+XX=2", 5000};
    const Command kOdd = {[](int32_t *out) { return xxSet(INT32_MIN, out); }, "AT+XX=-2147483648", 5000};
    play(kPin, firstNumber("+XX"));
    play(kPuk, firstNumber("+XX"));
    play(kOdd, firstNumber("+XX"));
    playAllFailures(kPin);
}

TEST(CardmodeExec, ReadsTheFirstNumber)
{
    const Command kMode = {cardmodeExec, "AT+CARDMODE", 5000};
    play(kMode, firstNumber("+CARDMODE"));
    play(kMode, firstNumber("^CARDMODE"));
    playAllFailures(kMode);
}

TEST(EpincRead, ReadsFourNumbers)
{
    const Command kCounts = {epincRead, "AT+EPINC?", 5000};
    play(kCounts,
         {{"four", okReply("+EPINC: 3,2,10,9"), 0, {3, 2, 10, 9}, {}},
          {"five", okReply("+EPINC: 3,2,10,9,8"), 0, {3, 2, 10, 9}, {}},
          {"three", okReply("+EPINC: 3,2,10"), 0, {3, 2, 10}, {}},
          {"one", okReply("+EPINC: 3"), 0, {3}, {}},
          {"one and a comma", okReply("+EPINC: 3,"), 0, {3}, {}},
          {"none", "\r\nOK\r\n", 0, {}, {}},
          {"blanks", okReply("+EPINC:  3 , 2 ,10, 9"), 0, {3, 2, 10, 9}, {}},
          {"quoted", okReply(R"(+EPINC: "3","2","10","9")"), 0, {3, 2, 10, 9}, {}},
          {"an empty one", okReply("+EPINC: 3,,10,9"), 0, {3}, {}},
          {"a word", okReply("+EPINC: 3,2,many,9"), 0, {3, 2}, {}},
          {"two lines", framed({"+EPINC: 3,2", "+EPINC: 10,9"}), 0, {3, 2}, {}},
          {"a bare line behind", framed({"+EPINC: 3,2", "10", "9"}), 0, {3, 2, 10, 9}, {}},
          {"beyond 32 bits", okReply("+EPINC: 4294967297,-4294967297,2147483648,7"), 0, {1, -1, INT32_MIN, 7}, {}},
          {"the longest", longestReply("\r\n+EPINC: 3,2,10,9,"), 0, {3}, {}}});
    playAllFailures(kCounts);
}

TEST(ZrapRead, ReadsTheFirstAndTheThirdNumber)
{
    const Command kSim = {[](int32_t *out) { return zrapRead(1, out, out + 1); }, "AT+ZRAP?", 5000};
    const Command kUsim = {[](int32_t *out) { return zrapRead(INT32_MIN, out, out + 1); }, "AT+ZRAP?", 5000};
    const std::vector<Row> rows = {
        {"four", okReply("+ZRAP: 3,2,10,9"), 0, {3, 10}, {}},
        {"five", okReply("+ZRAP: 3,2,10,9,8"), 0, {3, 10}, {}},
        {"three", okReply("+ZRAP: 3,2,10"), 0, {3, 10}, {}},
        {"two", okReply("+ZRAP: 3,2"), 0, {3}, {}},
        {"none", "\r\nOK\r\n", 0, {}, {}},
        {"an empty one", okReply("+ZRAP: 3,,10,9"), 0, {3}, {}},
        {"a word", okReply("+ZRAP: 3,x,10,9"), 0, {3}, {}},
        {"beyond 32 bits", okReply("+ZRAP: 4294967299,99999999999,4294967306,9"), 0, {3, 10}, {}},
        {"dropped beyond 64 bits", okReply("+ZRAP: 3,123456789012345678901234567890,10"), 0, {3, 10}, {}},
        {"quoted", okReply(R"(+ZRAP: "3","2","10","9")"), 0, {3, 10}, {}}};
    play(kSim, rows);
    play(kUsim, rows);
    playAllFailures(kSim);
}

TEST(ZpinpukTest, ReadsTwoNumbers)
{
    const Texts begin = {"###T9LB LOG### zpinpukTest begin"};
    const Command kLeft = {[](int32_t *out) { return zpinpukTest(out, out + 1); }, "AT+ZPINPUK=?", 10000};
    const std::string head = "+ZPINPUK: ";
    play(kLeft, {{"two", okReply(head + "3,10"), 0, {3, 10}, begin},
                 {"three", okReply(head + "3,10,2"), 0, {3, 10}, begin},
                 {"one", okReply(head + "3"), 0, {3}, begin},
                 {"none", "\r\nOK\r\n", 0, {}, begin},
                 {"in brackets", okReply(head + "(3,10)"), 0, {}, begin},
                 {"1023 characters", okReply(head + padded("3,10,", 1023)), 0, {3, 10}, begin},
                 {"1024 are not rewritten", okReply(head + padded("3,10,", 1024)), 0, {3}, begin},
                 {"1025 lose one, and are not rewritten", okReply(head + padded("3,10,", 1025)), 0, {3}, begin},
                 {"1023 that grow are not rewritten", okReply(head + padded("3,10,,", 1023)), 0, {3}, begin},
                 {"1022 that grow", okReply(head + padded("3,10,,", 1022)), 0, {3, 10}, begin},
                 {"the longest", longestReply("\r\n" + head + "3,10,"), 0, {3}, begin}});
    playAllFailures(kLeft, begin);
}

TEST(ZpinpukTest, OpensBeforeItsParse)
{
    Host host;
    host.expect("AT+ZPINPUK=?", 10000, okReply("+ZPINPUK: 3,10"));
    int32_t left[2];
    zpinpukTest(&left[0], &left[1]);
    EXPECT_EQ(host.texts(),
              (Texts{"###T9LB LOG### zpinpukTest begin", "Bk_Parse_At_Res-in-" + okReply("+ZPINPUK: 3,10"),
                     "Bk_Parse_At_Res-out-3,10", "Bk_Parse_At_Res-out-1"}));
}

} // namespace
