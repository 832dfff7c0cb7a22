// The library with secrets and identities made up by chance, and a log in which none of them may be read.

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <mainControl/mainControl.h>

#include "host/masking/masking.h"

namespace {

std::map<std::string, std::string> replies; ///< of the modem, by the beginning of the command
struct Round {
    std::string command;
    std::string reply;
};
std::vector<Round> rounds;
std::vector<std::string> logged;

std::string replyTo(const std::string &command)
{
    for (const auto &[beginning, reply] : replies)
        if (command.compare(0, beginning.size(), beginning) == 0) return "\r\n" + reply + "\r\n\r\nOK\r\n";
    return "\r\nOK\r\n";
}

} // namespace

int ClientSendCmd(const char *command, AtClientRes *response, int32_t)
{
    const std::string echo = std::string(command) + "\r\r\n";
    const std::string reply = replyTo(command);
    rounds.push_back({command, echo + reply});
    std::strcpy(response->aucDataBuf, (rounds.size() % 2 == 0 ? reply : echo + reply).c_str());
    return 0;
}

int ClientInit(const char *)
{
    return 0;
}

int SetClientProcRecvCallback(uint32_t (*)(AtClientRes *))
{
    return 0;
}

int CODE_Usc2orGsm7ToAscDecode(const char *, char *, int32_t)
{
    return 0;
}

int CODE_InvertNumbers(const char *, char *, int32_t)
{
    return -1;
}

void kora_log_append(const char *, int32_t, const char *, const char *format, ...)
{
    char text[12000];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    // An address may hold any digits.
    for (const char *name : {"-in-pVerifyRetriesLeft", "-in-pUnblockRetriesLeft", "-in-iStatus", "-in-pStatus"})
        if (std::strstr(text, name) != nullptr) return;
    logged.emplace_back(text);
}

namespace {

using host::Hide;

class Values {
  public:
    explicit Values(unsigned seed) : random_(seed) {}

    std::string digits(size_t count)
    {
        std::string text;
        while (text.size() < count)
            text += static_cast<char>('0' + random_() % 10);
        return text;
    }
    std::string digits(size_t least, size_t most) { return digits(least + random_() % (most - least + 1)); }

  private:
    std::mt19937 random_;
};

std::string swapped(std::string text)
{
    if (text.size() % 2 != 0) text += 'F';
    for (size_t i = 0; i + 1 < text.size(); i += 2)
        std::swap(text[i], text[i + 1]);
    return text;
}

struct Subscriber {
    explicit Subscriber(unsigned seed)
    {
        Values values(seed);
        pin = values.digits(4, 8);
        newPin = values.digits(4, 8);
        puk = values.digits(8);
        lockCode = values.digits(8, 16);
        password = "word" + values.digits(4, 8);
        imsi = "460" + values.digits(12);
        imei = "86" + values.digits(13);
        iccid = "8986" + values.digits(14, 16);
        number = "+861" + values.digits(7, 10);
    }
    std::string pin, newPin, puk, lockCode, password, imsi, imei, iccid, number;

    std::vector<std::string> secrets() const { return {pin, newPin, puk, lockCode, password}; }
    std::vector<std::string> identities() const
    {
        return {imsi, imei, iccid, swapped(iccid), number.substr(1), swapped(number.substr(1)), swapped("9" + imsi)};
    }
};

void fillModem(const Subscriber &who, bool withNames)
{
    replies = {
        {"AT+CIMI", (withNames ? "+CIMI: " : "") + who.imsi},
        {"AT+CGSN", (withNames ? "+CGSN: \"" + who.imei + '"' : who.imei)},
        {"AT+CNUM", "+CNUM: \"\",\"" + who.number + "\",145"},
        {"AT+ZMSN?", "+ZMSN: " + who.imei},
        {"AT+CRSM=176,12258", "+CRSM: 144,0,\"" + swapped(who.iccid) + '"'},
        {"AT+CRSM=176,28423", "+CRSM: 144,0,\"0"
                              "8" +
                                  swapped("9" + who.imsi) + '"'},
        {"AT+CRSM=178", "+CRSM: 144,0,\"FFFFFFFF0891" + swapped(who.number.substr(1)) + "FFFFFFFF\""},
        {"AT+CPIN?", "+CPIN: SIM PIN"},
        {"AT+CLCK=\"SC\",2", "+CLCK: 1"},
        {"AT+ZPINPUK=?", "+ZPINPUK: 3,10"},
        {"AT+EPINC?", "+EPINC: 3,3,10,10"},
        {"AT+XX=", "+XX: 3"},
        {"AT+ZRAP?", "+ZRAP: 3,3,10"},
    };
}

void callEverythingThatTells(const Subscriber &who)
{
    int32_t status = 0;
    int32_t pinLeft = 0;
    int32_t pukLeft = 0;
    char text[600] = "";
    alignas(CrsmRes) static char room[sizeof(CrsmRes) + 600]; // the record's text is as long as its owner makes it
    auto *const response = reinterpret_cast<CrsmRes *>(room);
    KR_verifyPIN(1, who.pin.c_str(), &pinLeft, &pukLeft);
    KR_unblockPIN(1, who.puk.c_str(), who.newPin.c_str(), &pinLeft, &pukLeft);
    KR_changePIN(1, who.pin.c_str(), who.newPin.c_str(), &pinLeft, &pukLeft);
    KR_setPINProtection(1, 1, who.pin.c_str(), 1, &status, &pinLeft, &pukLeft);
    KR_getPINStatus(1, &status, &pinLeft, &pukLeft);
    KR_setFacilityLock("PN", 0, who.lockCode.c_str(), 7, &status);
    KR_setLockCode(who.lockCode.c_str());
    KR_setControlKeyLock(0, 0, who.lockCode.c_str());
    KR_setDefaultProfile(1, 0, "10.0.0.1", "", "", 1, "name", "internet", "*99#", "me", who.password.c_str());
    KR_getIMSI(sizeof text - 1, text);
    KR_getIMEI(sizeof text - 1, text);
    KR_getSerialNumber(sizeof text - 1, text);
    KR_getICCID(sizeof text - 1, text);
    std::memset(text, 0, sizeof text);
    KR_getVoiceNumber(255, text);
    KR_getSPNInfo({.command = 176, .fileid = 28423, .p1 = 0, .p2 = 0, .p3 = 9, .data = ""}, response);
    KR_getSPNInfo({.command = 178, .fileid = 28480, .p1 = 1, .p2 = 4, .p3 = 28, .data = ""}, response);
    static AtClientRes report;
    std::snprintf(report.aucDataBuf, sizeof report.aucDataBuf, "\r\n+ZICCID: %s\r\n", who.iccid.c_str());
    ProcessMainControlAtCallback(&report);
}

void expectNone(const std::vector<std::string> &values, const std::string &masked, const std::string &was)
{
    for (const std::string &value : values)
        if (masked.find(value) != std::string::npos)
            ADD_FAILURE() << value << " can be read: " << masked << "\nwas: " << was;
}

void expectHidden(const Subscriber &who, const std::string &was, std::string (*mask)(const std::string &, Hide))
{
    expectNone(who.secrets(), mask(was, Hide::Secrets), was);
    expectNone(who.secrets(), mask(was, Hide::SecretsAndIdentities), was);
    expectNone(who.identities(), mask(was, Hide::SecretsAndIdentities), was);
}

TEST(MaskedLibrary, LogsNeitherSecretsNorIdentities)
{
    std::map<std::string, int> seen; // that the library really says them
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        const Subscriber who(seed);
        logged.clear();
        rounds.clear();
        fillModem(who, seed % 2 == 0);
        for (const int platform : {0, +PF_QC_LTE, +PF_MTK, +PF_TSP, +PF_SPEADTRUM}) {
            KR_setCurrentPlatform(platform);
            callEverythingThatTells(who);
        }
        for (const std::string &line : logged) {
            expectHidden(who, line, [](const std::string &was, Hide hide) { return host::maskedLogLine(was, hide); });
            for (const std::string &value : who.secrets())
                seen[value] += line.find(value) != std::string::npos ? 1 : 0;
            for (const std::string &value : who.identities())
                seen[value] += line.find(value) != std::string::npos ? 1 : 0;
        }
        for (const Round &round : rounds) {
            expectHidden(who, round.command,
                         [](const std::string &was, Hide hide) { return host::maskedCommand(was, hide); });
            for (const Hide hide : {Hide::Secrets, Hide::SecretsAndIdentities})
                expectNone(who.secrets(), host::maskedReply(round.command, round.reply, hide), round.reply);
            expectNone(who.identities(), host::maskedReply(round.command, round.reply, Hide::SecretsAndIdentities),
                       round.reply);
        }
    }
    for (const auto &[value, count] : seen)
        EXPECT_GT(count, 0) << value << " was never said";
}

} // namespace
