#ifndef TESTS_MAINCONTROL_PIN_DIALOGUE_H
#define TESTS_MAINCONTROL_PIN_DIALOGUE_H

#include <cstring>
#include <string>
#include <vector>

#include "tests/mainControl/api_dialogue.h"

/** What the wrappers under the PIN operations send and log. */
namespace dialogue {

inline constexpr Module kApiFile{scripted::kApiFileModule};

inline bool quotesSecrets(int32_t platform)
{
    return platform == PF_MTK || platform == PF_TSP || platform == PF_SPEADTRUM;
}

inline std::string cpinCommand(int32_t platform, const std::string &code, const std::string &newCode = "")
{
    const std::string quote = quotesSecrets(platform) ? "\"" : "";
    const std::string command = "AT+CPIN=" + quote + code + quote;
    return newCode.empty() ? command : command + "," + quote + newCode + quote;
}

/** How one step of an operation comes out: what happens in it, and its code. */
struct Step {
    std::string name;
    Events events;
    uint32_t code;
};

inline Events lockQuery(const std::string &facility, const std::string &paras)
{
    const std::string command = "AT+CLCK=\"" + facility + "\",2";
    return {kSetWrapper("###T9LB LOG### clckSet 2 == mode begin"),
            paras.empty() ? ok(command, 10000) : ok(command, 10000, "+CLCK: " + paras, paras),
            kSetWrapper("###T9LB LOG### clckSet ClientSendCmd return UNI_ERROR_SUCCESS")};
}

inline Events failingLockQuery(const std::string &facility, Failure failure)
{
    const char *const line = failure == Failure::Send ? "###T9LB LOG### clckSet ClientSendCmd return UNI_ERROR_FALSE"
                             : failure == Failure::Unparsable
                                 ? "###T9LB LOG### clckSet Bk_Parse_At_Res return UNI_ERROR_FALSE"
                                 : "###T9LB LOG### clckSet last return UNI_ERROR_FALSE";
    return {kSetWrapper("###T9LB LOG### clckSet 2 == mode begin"),
            failing(failure, "AT+CLCK=\"" + facility + "\",2", 10000), kSetWrapper(line)};
}

inline Events lockChange(const std::string &command)
{
    return {ok(command, 5000), kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SUCCESS")};
}

/** A change of a lock that fails, in all ways. */
inline std::vector<Step> failingLockChanges(const std::string &command)
{
    const Event wrong = kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_CPIN_INCORRECT_PASS");
    const Event puk = kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_CPIN_PUKPASS_REQUIRED");
    const Event unknown = kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_UNKNOWN");
    const Event last = kSetWrapper("###T9LB LOG### clckSet last return UNI_ERROR_FALSE");
    std::vector<Step> steps = {
        {"not sent",
         {failing(Failure::Send, command, 5000),
          kSetWrapper("###T9LB LOG### clckSet 2 != mode return UNI_ERROR_FALSE")},
         1},
        {"unparsable", {failing(Failure::Unparsable, command, 5000)}, 1},
        {"ERROR", {failing(Failure::Error, command, 5000), wrong}, 24},
        {"CMS", {answered(command, 5000, "\r\n+CMS ERROR: incorrect password\r\n", "incorrect password", 3), last}, 1},
        {"not support", {failing(Failure::NotSupported, command, 5000), last}, 1},
        {"prompt", {failing(Failure::Prompt, command, 5000), last}, 1},
        {"report", {failing(Failure::Report, command, 5000), last}, 1},
    };
    for (const char *text : {"incorrect password", "Incorrect password", "16, incorrect password, SIM PUK required"})
        steps.push_back({text, {cmeError(command, 5000, text), wrong}, 24});
    for (const char *text : {"SIM PUK required", "the SIM PUK required now"})
        steps.push_back({text, {cmeError(command, 5000, text), puk}, 25});
    for (const char *text : {"INCORRECT PASSWORD", "\"incorrect password\"", "SIM PUK", "12", "operation not allowed"})
        steps.push_back({text, {cmeError(command, 5000, text), unknown}, 29});
    return steps;
}

inline const Event kCpinBegin = kSetWrapper("###T9LB LOG### cpinSet begin");
inline const Event kCpinParsed = kSetWrapper("###T9LB LOG### Bk_Parse_At_Res SUCCESS");

inline Events cpinEntry(const std::string &command)
{
    return {kCpinBegin, ok(command, 10000), kCpinParsed, kSetWrapper("###T9LB LOG### cpinSet result ok")};
}

inline std::vector<Step> failingCpinEntries(const std::string &command)
{
    std::vector<Step> steps = {
        {"not sent", {kCpinBegin, failing(Failure::Send, command, 10000)}, 1},
        {"unparsable", {kCpinBegin, failing(Failure::Unparsable, command, 10000)}, 1},
        {"CMS 12", {kCpinBegin, answered(command, 10000, "\r\n+CMS ERROR: 12\r\n", "12", 3), kCpinParsed}, 1},
    };
    for (const Failure failure :
         {Failure::Error, Failure::CmeError, Failure::NotSupported, Failure::Prompt, Failure::Report})
        steps.push_back({nameOf(failure), {kCpinBegin, failing(failure, command, 10000), kCpinParsed}, 1});
    const struct {
        const char *text;
        uint32_t code;
    } errors[] = {
        {"incorrect password", 24},
        {"incorrect password 12", 24},
        {"SIM PUK required", 25},
        {"12", 25},
        {"3129", 25},
        {"Incorrect password", 1},
        {"16", 1},
        {"SIM PUK", 1},
        {"1, 2", 1},
        {"\"12\"", 1},
    };
    for (const auto &error : errors)
        steps.push_back({error.text, {kCpinBegin, cmeError(command, 10000, error.text), kCpinParsed}, error.code});
    return steps;
}

inline std::vector<Step> failingPasswordChanges(const std::string &command)
{
    std::vector<Step> steps = {
        {"CMS", {answered(command, 10000, "\r\n+CMS ERROR: incorrect password\r\n", "incorrect password", 3)}, 1},
    };
    for (const Failure failure : kFailures)
        steps.push_back({nameOf(failure), {failing(failure, command, 10000)}, 1});
    const struct {
        const char *text;
        uint32_t code;
    } errors[] = {
        {"incorrect password", 24},
        {"Incorrect password", 24},
        {"SIM PUK required, incorrect password", 24},
        {"SIM PUK required", 25},
        {"12", 1},
        {"INCORRECT PASSWORD", 1},
    };
    for (const auto &error : errors)
        steps.push_back({error.text, {cmeError(command, 10000, error.text)}, error.code});
    return steps;
}

/** How the attempts left are asked for on a platform, and what comes of it. */
struct Attempts {
    std::string name;
    Events events;
    bool areRead;
    int32_t pin, puk;
    int32_t cardTypeKnown = 0;
};

inline std::vector<Attempts> attemptsOnTsp()
{
    const Event usim = ok("AT+CARDMODE", 5000, "+CARDMODE: 1", "1");
    const Event both = ok("AT+ZRAP?", 5000, "+ZRAP: 3,4,10,11", "3,4,10,11");
    std::vector<Attempts> rows = {
        {"both", {usim, both}, true, 3, 10},
        {"SIM", {ok("AT+CARDMODE", 5000, "+CARDMODE: 0", "0"), both}, true, 3, 10},
        {"PIN only", {usim, ok("AT+ZRAP?", 5000, "+ZRAP: 3", "3")}, true, 3, 0},
        {"no third", {usim, ok("AT+ZRAP?", 5000, "+ZRAP: 3,4", "3,4")}, true, 3, 0},
        {"none", {usim, ok("AT+ZRAP?", 5000)}, true, 0, 0},
        {"card known", {both}, true, 3, 10, 1},
    };
    for (const Failure failure : kFailures) {
        rows.push_back({"no card mode", {failing(failure, "AT+CARDMODE", 5000), both}, true, 3, 10});
        rows.push_back({"no counts", {usim, failing(failure, "AT+ZRAP?", 5000)}, true, 0, 0});
        rows.push_back(
            {"nothing", {failing(failure, "AT+CARDMODE", 5000), failing(failure, "AT+ZRAP?", 5000)}, true, 0, 0});
    }
    return rows;
}

inline std::vector<Attempts> attemptsOnSpreadtrum()
{
    const Event pin = ok("AT+XX=0", 5000, "+XX: 3", "3");
    std::vector<Attempts> rows = {
        {"both", {pin, ok("AT+XX=2", 5000, "+XX: 10", "10")}, true, 3, 10},
        {"more numbers", {ok("AT+XX=0", 5000, "+XX: 2, 7", "2, 7"), ok("AT+XX=2", 5000, "9,8", "9,8")}, true, 2, 9},
        {"PIN only", {pin, ok("AT+XX=2", 5000)}, true, 3, 0},
        {"PUK only", {ok("AT+XX=0", 5000), ok("AT+XX=2", 5000, "+XX: 10", "10")}, true, 0, 10},
    };
    for (const Failure failure : kFailures) {
        rows.push_back({"no PIN count", {failing(failure, "AT+XX=0", 5000)}, false, kKept, kKept});
        rows.push_back({"no PUK count", {pin, failing(failure, "AT+XX=2", 5000)}, false, kKept, kKept});
    }
    return rows;
}

/** Every way in which the attempts left can come out on a platform. */
inline std::vector<Attempts> attemptsOn(int32_t platform)
{
    if (platform == PF_TSP) return attemptsOnTsp();
    if (platform == PF_SPEADTRUM) return attemptsOnSpreadtrum();
    std::vector<Attempts> rows;
    if (platform == PF_MTK) {
        rows = {
            {"both", {ok("AT+EPINC?", 5000, "+EPINC: 3,4,10,11", "3,4,10,11")}, true, 3, 10},
            {"quoted", {ok("AT+EPINC?", 5000, R"(+EPINC: "3", 4,"10")", R"("3", 4,"10")")}, true, 3, 10},
            {"PIN only", {ok("AT+EPINC?", 5000, "+EPINC: 3", "3")}, true, 3, 0},
            {"no third", {ok("AT+EPINC?", 5000, "+EPINC: 3,4", "3,4")}, true, 3, 0},
            {"none", {ok("AT+EPINC?", 5000)}, true, 0, 0},
        };
        for (const Failure failure : kFailures)
            rows.push_back({"no counts", {failing(failure, "AT+EPINC?", 5000)}, false, kKept, kKept});
        return rows;
    }
    const Event begin = kSetWrapper("###T9LB LOG### zpinpukTest begin");
    const char *const command = "AT+ZPINPUK=?";
    rows = {
        {"both", {begin, ok(command, 10000, "+ZPINPUK: 3,10", "3,10")}, true, 3, 10},
        {"quoted", {begin, ok(command, 10000, "+ZPINPUK: \"3\", 10,5", "\"3\", 10,5")}, true, 3, 10},
        {"PIN only", {begin, ok(command, 10000, "+ZPINPUK: 3", "3")}, true, 3, 0},
        {"none", {begin, ok(command, 10000)}, true, 0, 0},
    };
    for (const Failure failure : kFailures)
        rows.push_back({"no counts", {begin, failing(failure, command, 10000)}, false, kKept, kKept});
    return rows;
}

/** What the PIN functions remember, put back as it was at load. */
class PinMemory {
  public:
    static constexpr char kFiller = '#';

    PinMemory() { std::memset(g_lastPin, kFiller, sizeof g_lastPin); }
    ~PinMemory()
    {
        std::memset(g_lastPin, 0, sizeof g_lastPin);
        g_cardType = 1;
        g_cardTypeKnown = 0;
    }
    PinMemory(const PinMemory &) = delete;
    PinMemory &operator=(const PinMemory &) = delete;

    /** Every byte of the remembered PIN. */
    static std::string lastPin() { return {g_lastPin, sizeof g_lastPin}; }
    static std::string untouched() { return filledWith(kFiller); }
    static std::string cleared() { return filledWith('\0'); }
    /** A PIN over what stood there: 19 bytes, with zeros behind a shorter one. */
    static std::string with(std::string pin, const std::string &before)
    {
        pin.resize(19, '\0');
        return pin + before.substr(19);
    }

  private:
    static std::string filledWith(char filler)
    {
        std::string text;
        text.resize(sizeof g_lastPin, filler);
        return text;
    }
};

} // namespace dialogue

#endif
