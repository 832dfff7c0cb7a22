// Names of the networks, and the selected operator.

#include <gtest/gtest.h>

#include "tests/support/network_exchange.h"

namespace {

using network::bareLines;
using network::Call;
using network::kAny;
using network::kKept;
using network::listed;
using network::quoted;
using network::Row;
using network::stretched;
using network::Subject;
using network::Texts;

/** Calls a wrapper with a record whose texts are filled, and gives its fields. */
template <typename Record>
std::function<Call()> reading(uint32_t (*read)(Record *), void (*fill)(Record &), Texts (*fields)(const Record &))
{
    return [=] {
        const GuardedRecord<Record> record(network::kPattern);
        fill(*record.get());
        const Texts before = fields(*record.get());
        const uint32_t code = read(record);
        return Call{code, before, fields(*record.get())};
    };
}

void fillZdon(ZdonInfo &info)
{
    network::fillText(info.servName);
    network::fillText(info.servMcc);
    network::fillText(info.servMnc);
    network::fillText(info.homeName);
    network::fillText(info.homeMcc);
    network::fillText(info.homeMnc);
    network::fillText(info.roamStatus);
}

Texts zdonFields(const ZdonInfo &info)
{
    using network::textIn;
    return {textIn(info.servName), textIn(info.servMcc), textIn(info.servMnc),   textIn(info.homeName),
            textIn(info.homeMcc),  textIn(info.homeMnc), textIn(info.roamStatus)};
}

constexpr size_t kZdonSizes[] = {68, 36, 36, 68, 68, 68, 36};

const Subject kZdon = {"zdonRead", "AT+ZDON?", 5000, reading<ZdonInfo>(zdonRead, fillZdon, zdonFields),
                       R"(+ZDON: "S","460","01","H","460","02","ROAM_OFF")"};

void fillZpas(ZpasInfo &info)
{
    network::fillText(info.netType);
    network::fillText(info.srvDomain);
}

Texts zpasFields(const ZpasInfo &info)
{
    return {network::textIn(info.netType), network::textIn(info.srvDomain)};
}

const Subject kZpas = {"zpasRead", "AT+ZPAS?", 5000, reading<ZpasInfo>(zpasRead, fillZpas, zpasFields),
                       R"(+ZPAS: "LTE","CS_PS")"};

void fillCops(CopsPara &info)
{
    network::fillText(info.cOper);
}

Texts copsFields(const CopsPara &info)
{
    return {std::to_string(info.nMode), std::to_string(info.nformat), network::textIn(info.cOper),
            std::to_string(info.nAct)};
}

const Subject kCops = {"copsRead", "AT+COPS?", 5000, reading<CopsPara>(copsRead, fillCops, copsFields),
                       R"(+COPS: 0,0,"my net",7)"};

TEST(NetworkNames, FailWithUntouchedOutputs)
{
    for (const Subject &subject : {kZdon, kZpas, kCops})
        network::expectFailures(subject);
}

TEST(ZdonRead, TakesSevenTexts)
{
    const Texts all = {"Serving net", "460", "01", "Home, net", "460", "02", "ROAM_ON"};
    network::expectRows(kZdon,
                        {{"seven", {R"(+ZDON: "Serving net","460","01","Home, net","460","02","ROAM_ON")"}, all},
                         {"a bare line", {R"("Serving net","460","01","Home, net","460","02","ROAM_ON")"}, all},
                         {"eight", {R"(+ZDON: "Serving net",460,01,"Home, net",460,02,ROAM_ON,x)"}, all},
                         {"six", {R"(+ZDON: S,460,01,H,460,"0 2")"}, {"S", "460", "01", "H", "460", "0 2", kKept}},
                         {"one", {"+ZDON: \"S\tT\""}, {"S\tT", kKept, kKept, kKept, kKept, kKept, kKept}},
                         {"none", {}, {kKept, kKept, kKept, kKept, kKept, kKept, kKept}},
                         {"empty texts", {R"(+ZDON: "","","","H","1","2","")"}, {"", "", "", "H", "1", "2", ""}},
                         {"all empty", {R"(+ZDON: "","","","","","","")"}, {"", "", "", "", "", "", ""}},
                         {"one comma in front", {"+ZDON: ,S,460,01,H,1,2"}, {"S", "460", "01", "H", "1", "2", kKept}},
                         {"two commas", {"+ZDON: ,,"}, {"", kKept, kKept, kKept, kKept, kKept, kKept}},
                         {"1024 are not rewritten",
                          {stretched("+ZDON: S T ", 'a', " d e f", 1031)},
                          {"S", "T", std::string(35, 'a'), "d", "e", "f", kKept}}});
}

TEST(ZdonRead, WithoutAServingNetworkHasItsFieldsEmpty)
{
    network::expectRows(
        kZdon, {{"home only", {R"(+ZDON: ,,,"Home, net","460","02",)"}, {"", "", "", "Home, net", "460", "02", ""}},
                {"with a roaming status", {"+ZDON: ,,,H,460,02,ROAM_NONE"}, {"", "", "", "H", "460", "02", ""}},
                {"two home fields", {R"(+ZDON: ,,,"H","460")"}, {"", "", "", "H", "460", kKept, ""}},
                {"no home field", {"+ZDON: ,,,"}, {"", "", "", kKept, kKept, kKept, ""}},
                {"empty home fields", {R"(+ZDON: ,,,"","","")"}, {"", "", "", "", "", "", ""}},
                {"a comma more", {"+ZDON: ,,,,460,02"}, {"", "", "", "460", "02", kKept, ""}}});
    // Bare lines, since a named one gives 1024 characters at most.
    const auto home = [](size_t length) { return bareLines(stretched(",,,", 'H', " 460,02", length)); };
    const std::string name(67, 'H');
    network::expectRows(kZdon,
                        {{"1023 behind the commas", home(1026), {"", "", "", name, "460", "02", ""}},
                         {"1024 behind the commas", home(1027), {"", "", "", name, "460,02", kKept, ""}},
                         {"a whole reply", home(network::kLongestBareValue), {"", "", "", name, "460,02", kKept, ""}}});
}

TEST(ZdonRead, CutsTextsInTheirArrays)
{
    constexpr size_t kFields = 7;
    for (size_t field = 0; field < kFields; ++field) {
        for (const size_t length : {kZdonSizes[field] - 1, kZdonSizes[field], kZdonSizes[field] + 1, size_t{500}}) {
            Texts expected = {"S", "460", "01", "H", "461", "02", "ROAM_ON"};
            expected[field] = std::string(length, 'x');
            Texts values;
            for (const std::string &text : expected)
                values.push_back(quoted(text));
            const std::string reply = "+ZDON: " + listed(values);
            expected[field].resize(kZdonSizes[field] - 1, 'x');
            network::expectRows(kZdon, {{"long", {reply}, expected}});
        }
    }
}

TEST(ZpasRead, TakesTwoTexts)
{
    std::vector<Row> rows = {
        {"two", {R"(+ZPAS: "LTE","CS_PS")"}, {"LTE", "CS_PS"}},
        {"no quotes", {"+ZPAS: LTE,CS_PS"}, {"LTE", "CS_PS"}},
        {"a bare line", {R"("LTE","CS_PS")"}, {"LTE", "CS_PS"}},
        {"blanks", {"+ZPAS: \"No Service\",\"CS\tONLY\""}, {"No Service", "CS\tONLY"}},
        {"three", {R"(+ZPAS: "LTE","CS_PS","x")"}, {"LTE", "CS_PS"}},
        {"one", {R"(+ZPAS: "LTE")"}, {"LTE", kKept}},
        {"an open end", {R"(+ZPAS: "LTE",)"}, {"LTE", ""}},
        {"none", {}, {kKept, kKept}},
        {"empty", {R"(+ZPAS: "","")"}, {"", ""}},
        {"1024 are not rewritten", {stretched("+ZPAS: LTE,", 'x', " y", 1031)}, {"LTE," + std::string(63, 'x'), "y"}}};
    for (const size_t length : {67U, 68U, 69U, 500U}) {
        const std::string text(length, 'x');
        rows.push_back({"long first", {"+ZPAS: " + listed({quoted(text), "PS"})}, {text.substr(0, 67), "PS"}});
        rows.push_back({"long second", {"+ZPAS: " + listed({"LTE", quoted(text)})}, {"LTE", text.substr(0, 67)}});
        rows.push_back({"both", {"+ZPAS: " + listed({text, text})}, {text.substr(0, 67), text.substr(0, 67)}});
    }
    network::expectRows(kZpas, rows);
}

TEST(CopsRead, TakesFourValues)
{
    std::vector<Row> rows = {{"four", {R"(+COPS: 1,0,"my net",7)"}, {"1", "0", "my net", "7"}},
                             {"no quotes", {"+COPS: 1,2,46001,7"}, {"1", "2", "46001", "7"}},
                             {"five", {R"(+COPS: 1,2,"46001",7,9)"}, {"1", "2", "46001", "7"}},
                             {"three", {R"(+COPS: 1,2,"46001")"}, {"1", "2", "46001", kKept}},
                             {"one", {"+COPS: 0"}, {"0", kKept, kKept, kKept}},
                             {"none", {}, {kKept, kKept, kKept, kKept}},
                             {"an empty operator", {R"(+COPS: 1,2,"",7)"}, {"1", "2", "", "7"}},
                             {"no operator", {"+COPS: 1,2,,7"}, {"1", "2", "", kKept}},
                             {"a text for a number", {R"(+COPS: 1,x,"46001",7)"}, {"1", kKept, kKept, kKept}},
                             {"commas", {R"(+COPS: 1,0,"a,b;c",7)"}, {"1", "0", "a,b;c", "7"}},
                             {"beyond 32 bits", {R"(+COPS: 4294967297,0,"a",7)"}, {kAny, "0", "a", "7"}},
                             {"two lines", {"+COPS: 1,0,a,7", "+COPS: 2,2,b,3"}, {"1", "0", "a", "7"}}};
    for (const size_t length : {62U, 63U, 64U, 65U, 500U}) {
        const std::string text(length, 'x');
        rows.push_back({"long", {"+COPS: 1,0," + listed({quoted(text), "7"})}, {"1", "0", text.substr(0, 63), "7"}});
    }
    rows.push_back({"1023", {stretched("+COPS: 1,0,", 'x', ",7", 1030)}, {"1", "0", std::string(63, 'x'), "7"}});
    rows.push_back({"1024", {stretched("+COPS: 1,0,", 'x', ",7", 1031)}, {"1", kKept, kKept, kKept}});
    network::expectRows(kCops, rows);
}

Subject copsSubject(int32_t mode, int32_t format, const std::string &oper, int32_t act, const std::string &command,
                    std::vector<int32_t> platforms)
{
    CopsPara whole = {mode, format, {}, act};
    network::put(whole.cOper, oper);
    return {"copsSet",
            command,
            180000,
            network::setting([=] { return copsSet(whole); }),
            "",
            [](const network::Ending &) { return Texts{}; },
            std::move(platforms)};
}

TEST(CopsSet, QuotesByPlatform)
{
    const std::vector<int32_t> quoting = {PF_MTK, PF_TSP, PF_SPEADTRUM};
    const std::vector<int32_t> plain = {0, 1, 2, 7};
    std::vector<Subject> subjects = {copsSubject(3, 2, "46001", 7, "AT+COPS=3,2", quoting),
                                     copsSubject(3, 2, "46001", 7, "AT+COPS=3,2,46001,7", plain),
                                     copsSubject(3, 0, "", 0, "AT+COPS=3,0", quoting),
                                     copsSubject(3, 0, "", 0, "AT+COPS=3,0,,0", plain),
                                     copsSubject(0, 0, "", 0, R"(AT+COPS=0,0,"",0)", quoting),
                                     copsSubject(0, 0, "", 0, "AT+COPS=0,0,,0", plain),
                                     copsSubject(-1, -2, "a b", -3, R"(AT+COPS=-1,-2,"a b",-3)", quoting),
                                     copsSubject(-1, -2, "a b", -3, "AT+COPS=-1,-2,a b,-3", plain)};
    for (const int32_t mode : {1, 2, 4, 5}) {
        const std::string start = "AT+COPS=" + std::to_string(mode) + ",2,";
        subjects.push_back(copsSubject(mode, 2, "46001", 7, start + "\"46001\",7", quoting));
        subjects.push_back(copsSubject(mode, 2, "46001", 7, start + "46001,7", plain));
    }
    // A full array has no terminator.
    for (const size_t length : {63U, 64U}) {
        const std::string oper(length, 'x');
        subjects.push_back(copsSubject(1, 0, oper, 2147483647, "AT+COPS=1,0,\"" + oper + "\",2147483647", quoting));
        subjects.push_back(copsSubject(1, 0, oper, 2147483647, "AT+COPS=1,0," + oper + ",2147483647", plain));
    }
    for (const Subject &subject : subjects) {
        network::expectSuccess(subject);
        network::expectFailures(subject);
    }
}

} // namespace
