// Radio power, the three registrations, and attach.

#include <gtest/gtest.h>

#include "tests/support/network_exchange.h"

namespace {

using network::bareLines;
using network::Call;
using network::kAny;
using network::kKept;
using network::Row;
using network::stretched;
using network::Subject;
using network::Texts;

struct Setter {
    const char *name;
    uint32_t (*set)(int32_t);
    const char *command;
    int32_t timeoutMs;
};

constexpr Setter kSetters[] = {
    {"cfunSet", cfunSet, "at+cfun=", 5000},    {"cregSet", cregSet, "AT+CREG=", 5000},
    {"cgregSet", cgregSet, "AT+CGREG=", 5000}, {"ceregSet", ceregSet, "AT+CEREG=", 5000},
    {"zgaatSet", zgaatSet, "AT+ZGAAT=", 5000}, {"cgattSet", cgattSet, "AT+CGATT=", 10000},
};

/** What a setter does with a number, on platforms that agree on the time-out. */
std::vector<Subject> subjects(const Setter &setter, int32_t value)
{
    Subject subject = {setter.name, setter.command + std::to_string(value), setter.timeoutMs,
                       network::setting([=] { return setter.set(value); })};
    if (setter.set != cfunSet) return {subject};
    Subject slow = subject;
    slow.timeoutMs = 20000;
    slow.platforms = {PF_TSP};
    subject.platforms = {0, 1, 2, 3, 5, 7};
    return {subject, slow};
}

TEST(RegistrationSettings, SendTheirNumberAndWantAnOk)
{
    for (const Setter &setter : kSetters) {
        // The longest command has 21 characters.
        for (const int32_t value : {0, 1, 2, 3, -1, 2147483647, -2147483647 - 1}) {
            for (const Subject &subject : subjects(setter, value))
                network::expectSuccess(subject);
        }
    }
}

TEST(RegistrationSettings, FailOnEverythingElse)
{
    for (const Setter &setter : kSetters) {
        for (const Subject &subject : subjects(setter, 1))
            network::expectFailures(subject);
    }
}

const Subject kCfun = {"cfunRead", "at+cfun?", 5000, network::numbers<1>(cfunRead), "+CFUN: 1"};
const Subject kCgreg = {"cgregRead", "at+CGREG?", 5000,
                        network::numbers<2>([](int32_t *out) { return cgregRead(out, out + 1); }), "2,1"};

/** Calls ceregRead() with texts that have room for what is expected, and no more. */
Call cereg(size_t tacRoom, size_t cellRoom)
{
    struct Numbers {
        int32_t mode, status, act;
    };
    const GuardedRecord<Numbers> out(network::kPattern);
    const GuardedText tac(std::string(tacRoom, network::kPattern));
    const GuardedText cellId(std::string(cellRoom, network::kPattern));
    const auto fields = [&] {
        return Texts{std::to_string(out->mode), std::to_string(out->status), tac.str(), cellId.str(),
                     std::to_string(out->act)};
    };
    const Texts before = fields();
    const uint32_t code = ceregRead(&out->mode, &out->status, tac, cellId, &out->act);
    return {code, before, fields()};
}

Subject ceregWithRoom(size_t tacRoom, size_t cellRoom)
{
    return {"ceregRead", "at+CEREG?", 5000, [=] { return cereg(tacRoom, cellRoom); }, R"(2,1,"00A1","0001B2C3",7)"};
}

TEST(RegistrationReads, FailWithUntouchedOutputs)
{
    for (const Subject &subject : {kCfun, kCgreg, ceregWithRoom(8, 8)})
        network::expectFailures(subject);
}

TEST(CfunRead, WantsADigitFirst)
{
    std::vector<Row> rows = {{"no parameters", {"+CFUN: "}, {kKept}, UNI_ERROR_FALSE},
                             {"no line", {}, {kKept}, UNI_ERROR_FALSE},
                             {"a sign", {"+CFUN: -1"}, {kKept}, UNI_ERROR_FALSE},
                             {"a plus", {"+CFUN: +1"}, {kKept}, UNI_ERROR_FALSE},
                             {"a blank", {"+CFUN:  1"}, {kKept}, UNI_ERROR_FALSE},
                             {"a quote", {R"(+CFUN: "1")"}, {kKept}, UNI_ERROR_FALSE},
                             {"a bracket", {"+CFUN: (0,1)"}, {kKept}, UNI_ERROR_FALSE},
                             {"a comma", {"+CFUN: ,1"}, {kKept}, UNI_ERROR_FALSE},
                             {"a letter", {"+CFUN: on"}, {kKept}, UNI_ERROR_FALSE},
                             {"next to the digits", {"+CFUN: /1"}, {kKept}, UNI_ERROR_FALSE},
                             {"behind the digits", {"+CFUN: :1"}, {kKept}, UNI_ERROR_FALSE},
                             {"no blank behind the name", {"+CFUN:1"}, {kKept}, UNI_ERROR_FALSE},
                             {"a bare line", {"4"}, {"4"}},
                             {"two values", {"+CFUN: 1,0"}, {"1"}},
                             {"two lines", {"+CFUN: 1", "+CFUN: 4"}, {"1"}},
                             {"letters behind", {"+CFUN: 12x"}, {"12"}},
                             {"leading zeros", {"+CFUN: 0004"}, {"4"}},
                             {"beyond 32 bits", {"+CFUN: 99999999999"}, {kAny}},
                             {"1024 digits", {stretched("+CFUN: ", '0', "6", 1031)}, {"6"}}};
    for (const char *digit : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"})
        rows.push_back({digit, {std::string("+CFUN: ") + digit}, {digit}});
    network::expectRows(kCfun, rows);
}

TEST(CgregRead, TakesTwoNumbers)
{
    network::expectRows(kCgreg, {{"two values", {"2,1"}, {"2", "1"}},
                                 {"five values", {R"(2,5,"00A1","0001B2C3",7)"}, {"2", "5"}},
                                 {"one value", {"2"}, {"2", kKept}},
                                 {"an open end", {"2,"}, {"2", kKept}},
                                 {"no line", {}, {kKept, kKept}},
                                 {"an empty value", {"2,,1"}, {"2", kKept}},
                                 {"quotes and blanks", {R"("2", 1)"}, {"2", "1"}},
                                 {"a text in front", {"on,1"}, {kKept, kKept}},
                                 {"a text behind", {"2,on"}, {"2", kKept}},
                                 {"negative", {"-1,-2"}, {"-1", "-2"}},
                                 {"beyond 32 bits", {"4294967298,1"}, {kAny, "1"}},
                                 {"1023 characters", {stretched("2,1,", '0', "", 1023)}, {"2", "1"}},
                                 {"1024 are not rewritten", {stretched("2,1,", '0', "", 1024)}, {"2", kKept}},
                                 {"another name", {"+CREG: 0,1"}, {"0", "1"}},
                                 {"its own name is a report", {"+CGREG: 2,1"}, {kKept, kKept}, UNI_ERROR_FALSE}});
}

TEST(CeregRead, TakesFiveValues)
{
    network::expectRows(
        ceregWithRoom(11, 11),
        {{"five values", {R"(2,1,"00A1","0001B2C3",7)"}, {"2", "1", "00A1", "0001B2C3", "7"}},
         {"seven values", {R"(2,5,"00A1","0001B2C3",7,0,"x")"}, {"2", "5", "00A1", "0001B2C3", "7"}},
         {"no quotes", {"2,1,00A1,0001B2C3,7"}, {"2", "1", "00A1", "0001B2C3", "7"}},
         {"four values", {R"(2,1,"00A1","0001B2C3")"}, {"2", "1", "00A1", "0001B2C3", kKept}},
         {"three values", {R"(2,1,"00A1")"}, {"2", "1", "00A1", kKept, kKept}},
         {"two values", {"0,1"}, {"0", "1", kKept, kKept, kKept}},
         {"one value", {"0"}, {"0", kKept, kKept, kKept, kKept}},
         {"no line", {}, {kKept, kKept, kKept, kKept, kKept}},
         {"a text for a number", {R"(2,on,"00A1","0001B2C3",7)"}, {"2", kKept, kKept, kKept, kKept}},
         {"a text for the last", {R"(2,1,"00A1","0001B2C3","LTE")"}, {"2", "1", "00A1", "0001B2C3", kKept}},
         {"empty texts", {R"(2,1,"","",7)"}, {"2", "1", "", "", "7"}},
         {"empty values push out the last", {"2,1,,,7"}, {"2", "1", "", "", kKept}},
         {"blanks and tabs", {"2,1,\"00 A1\",\"B\t C\",7"}, {"2", "1", "00 A1", "B\t C", "7"}},
         {"commas", {R"(2,1,"00,A1",",",7)"}, {"2", "1", "00,A1", ",", "7"}},
         {"beyond 32 bits", {R"(2,4294967297,"00A1","0001B2C3",7)"}, {"2", kAny, "00A1", "0001B2C3", "7"}},
         {"its own name is a report",
          {R"(+CEREG: 2,1,"00A1","0001B2C3",7)"},
          {kKept, kKept, kKept, kKept, kKept},
          UNI_ERROR_FALSE}});
}

TEST(CeregRead, GivesTheWholeTexts)
{
    for (const size_t length : {35U, 36U, 37U, 100U, 500U}) {
        const std::string tac(length, 'A');
        const std::string cellId(length - 10, 'B');
        const std::string reply = network::listed({"2", "1", network::quoted(tac), network::quoted(cellId), "7"});
        network::expectRows(ceregWithRoom(tac.size(), cellId.size()),
                            {{"long", {reply}, {"2", "1", tac, cellId, "7"}}});
    }
    // Lines of 1023 and of 1024 characters.
    const std::string longest(1023 - 8, 'C');
    network::expectRows(ceregWithRoom(4, longest.size()),
                        {{"1023", {"2,1,0," + longest + ",7"}, {"2", "1", "0", longest, "7"}},
                         {"1024", {"2,1,0," + longest + "C,7"}, {"2", kKept, kKept, kKept, kKept}}});
}

TEST(CeregRead, GivesTextsOfAWholeReply)
{
    const std::string tac(4000, 'A');
    const std::string cellId(network::kLongestBareValue - tac.size() - 7, 'B');
    const Texts lines = bareLines("2 1 " + tac + " " + cellId + " 7");
    ASSERT_EQ(network::reply(lines).size(), network::kLongestReply);
    network::expectRows(ceregWithRoom(tac.size(), cellId.size()), {{"long", lines, {"2", "1", tac, cellId, "7"}}});
}

} // namespace
