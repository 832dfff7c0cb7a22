// Faults of the line, recorded dialogues, and the files in which both are told.
#include <algorithm>

#include <gtest/gtest.h>

#include "host/at_server/transcript.h"
#include "simulator/scenario_file.h"
#include "tests/processes/child_process.h"
#include "tests/simulator/bench.h"

namespace bench {
namespace {

Scenario scenarioOf(const std::string &json)
{
    Scenario scenario;
    EXPECT_EQ(readScenario(json, scenario), "");
    return scenario;
}

Scenario withFault(const std::string &fault)
{
    return scenarioOf("{\"faults\": [" + fault + "], \"signal\": {\"walk\": 0}}");
}

const std::string kSignal = framed({"+CSQ: 21,99"});
const std::string kContexts = framed({"+CGDCONT: 1,\"IP\",\"a\",\"\",0,0", "+CGDCONT: 2,\"IP\",\"b\",\"\",0,0"});

TEST(Faults, SpoilReplies)
{
    struct Row {
        const char *fault;
        const char *command;
        std::string said;
    };
    const std::string context1 = "+CGDCONT: 1,\"IP\",\"a\",\"\",0,0";
    const std::string context2 = "+CGDCONT: 2,\"IP\",\"b\",\"\",0,0";
    const Row rows[] = {
        {R"({"lose_final": true})", "AT+CSQ", "\r\n+CSQ: 21,99\r\n"},
        {R"({"lose_final": true})", "AT", ""},
        {R"({"echo": true})", "AT+CSQ", "AT+CSQ\r" + kSignal},
        {R"({"report": {"text": "+CREG: 1", "offset": 0}})", "AT+CSQ", "\r\n+CREG: 1\r\n" + kSignal},
        {R"({"report": {"text": "+CREG: 1", "offset": 5}})", "AT+CSQ", "\r\n+CS\r\n+CREG: 1\r\nQ: 21,99\r\n\r\nOK\r\n"},
        {R"({"report": {"text": "+CREG: 1", "offset": 9999}})", "AT+CSQ", kSignal + "\r\n+CREG: 1\r\n"},
        {R"({"overlong_line": 5})", "AT+CSQ", "\r\n+CSQ: 21,99\r\n\r\nxxxxx\r\n\r\nOK\r\n"},
        {R"({"framing": ["bare-lf"]})", "AT+CSQ", "\n+CSQ: 21,99\n\nOK\n"},
        {R"({"framing": ["cr-cr-lf"]})", "AT+CSQ", "\r\r\n+CSQ: 21,99\r\r\n\r\r\nOK\r\r\n"},
        {R"({"framing": ["no-blank-behind-colon"]})", "AT+CSQ", "\r\n+CSQ:21,99\r\n\r\nOK\r\n"},
        {R"({"framing": ["no-empty-line-before-final"]})", "AT+CSQ", "\r\n+CSQ: 21,99\r\nOK\r\n"},
        {R"({"framing": ["no-empty-line-before-final"]})", "AT", "\r\nOK\r\n"},
        {R"({"framing": ["text-behind-final"]})", "AT", "\r\nOK\r\n0000\r\n"},
        {R"({"framing": ["empty-lines-between"]})", "AT+CGDCONT?",
         "\r\n" + context1 + "\r\n\r\n" + context2 + "\r\n\r\nOK\r\n"},
        {R"({"framing": ["empty-lines-between", "no-empty-line-before-final", "bare-lf"]})", "AT+CGDCONT?",
         "\n" + context1 + "\n\n" + context2 + "\nOK\n"},
        {R"({"command": "at+csq", "lose_final": true})", "AT+CSQ", "\r\n+CSQ: 21,99\r\n"},
        {R"({"command": "AT+CESQ", "lose_final": true})", "AT+CSQ", kSignal},
        {R"({"unplug": {"offset": 7}})", "AT+CSQ", "\r\n+CSQ:<unplugged>"},
        {R"({"unplug": {"ms": 50, "offset": 7}})", "AT+CSQ", "\r\n+CSQ:<unplugged><plugged>"},
    };
    for (const Row &row : rows) {
        Scenario scenario = withFault(row.fault);
        scenario.contexts = {{1, {"IP", "a"}}, {2, {"IP", "b"}}};
        Bench bench(Family::Qualcomm, scenario);
        bench.settle();
        EXPECT_EQ(bench.send(row.command), row.said) << row.fault;
    }
}

TEST(Faults, StrikeTheTimeThatTheyAreToldTo)
{
    Bench bench(Family::Qualcomm, withFault(R"({"command": "AT+CSQ", "nth": 2, "lose_final": true})"));
    bench.settle();
    EXPECT_EQ(bench.send("AT+CSQ"), kSignal);
    EXPECT_EQ(bench.send("AT"), framed({}));
    EXPECT_EQ(bench.send("AT+CSQ"), "\r\n+CSQ: 21,99\r\n");
    EXPECT_EQ(bench.send("AT+CSQ"), kSignal);
}

TEST(Faults, CutRepliesUpInTime)
{
    Bench bench(Family::Qualcomm, withFault(R"({"delay_ms": 100, "split": [2, 15], "gap_ms": 20})"));
    bench.settle();
    bench.modem.receive("AT+CSQ\rAT\r");
    EXPECT_EQ(bench.wait(99), "");
    EXPECT_EQ(bench.wait(1), "\r\n");
    EXPECT_EQ(bench.wait(19), "");
    EXPECT_EQ(bench.wait(1), "+CSQ: 21,99\r\n");
    EXPECT_EQ(bench.wait(20), "\r\nOK\r\n");
    EXPECT_EQ(bench.wait(100), "\r\n"); // the next command has waited for the end of the first
    EXPECT_EQ(bench.settle(), "OK\r\n");
}

TEST(Faults, AreRandomByTheSeed)
{
    const auto talk = [](uint64_t seed) {
        Bench bench(Family::Mtk, withFault(R"({"garbage": {"bytes": 6, "offset": "random"},
                                  "report": {"text": "+CGREG: 1", "offset": "random"}})"),
                    seed);
        bench.settle();
        std::string all;
        for (int i = 0; i < 30; ++i)
            all += bench.send("AT+CSQ");
        return all;
    };
    EXPECT_EQ(talk(3), talk(3));
    EXPECT_NE(talk(3), talk(4));
    const std::string said = talk(3);
    EXPECT_EQ(std::count_if(said.begin(), said.end(), [](char c) { return static_cast<signed char>(c) < 0; }), 180);
}

TEST(Faults, OfTwoFaultsBothStrike)
{
    Scenario scenario = scenarioOf(R"({"signal": {"walk": 0}, "faults": [
        {"command": "AT+CSQ", "report": {"text": "+CREG: 5", "offset": 0}},
        {"framing": ["bare-lf"]}]})");
    Bench bench(Family::Qualcomm, scenario);
    bench.settle();
    EXPECT_EQ(bench.send("AT+CSQ"), "\n+CREG: 5\n\n+CSQ: 21,99\n\nOK\n");
}

TEST(ScenarioFile, SetsWhatItNames)
{
    const Scenario scenario = scenarioOf(R"({
        "description": "everything once",
        "family": "tsp", "echo": true, "cmee": 1,
        "identity": {"manufacturer": "M", "model": "N", "firmware": "F", "hardware": "H",
                     "imei": "350000000000006", "serial": "S"},
        "sim": {"present": true, "usim": false, "pin_enabled": true, "pin": "0000", "puk": "99999999", "pin_tries": 2,
                "puk_tries": 8, "blocked": false, "imsi": "262011234567890", "iccid": "894901234567890123",
                "number": "", "provider": "P", "home_name": "Home", "busy_ms": 10},
        "network_lock": {"active": false, "code": "1111", "tries": 7},
        "facilities": {"PS": {"active": true, "code": "2222", "tries": 1}, "AG": {}},
        "operators": [{"name": "O", "short": "o", "plmn": "262001", "technologies": ["umts"], "forbidden": false,
                       "area": 258, "cell": 66051}, {"plmn": "26201"}],
        "signal": {"rssi": -80, "walk": 0, "weakest": -100, "strongest": -60},
        "contexts": [{"cid": 3, "type": "IPV6", "apn": "x", "address": "::1"}],
        "timing": {"command_ms": 1, "scan_ms": 2, "select_ms": 3, "sim_ms": 4, "power_ms": 5, "registration_ms": 6,
                   "commands": {"at+csq": 70}},
        "faults": []})");
    EXPECT_EQ(scenario.family, "tsp");
    EXPECT_EQ(scenario.timing.commands.at("AT+CSQ"), 70);
    Bench bench(Family::Tsp, scenario);
    bench.settle();
    const auto said = [&](const std::string &command) { return bench.send(command); };
    const auto echoed = [](const std::string &line, const std::string &reply) { return line + "\r" + reply; };
    EXPECT_EQ(said("ATE0"), echoed("ATE0", framed({})));
    EXPECT_EQ(said("ATI"), framed({"M", "N", "Revision: F"}));
    EXPECT_EQ(said("AT+HVER"), framed({"+HVER: H"}));
    EXPECT_EQ(said("AT+CGSN"), framed({"350000000000006"}));
    EXPECT_EQ(said("AT+CIMI"), framed({}, "+CME ERROR: 11"));
    EXPECT_EQ(said("AT+ZRAP?"), framed({"+ZRAP: 2,3,8,10"}));
    EXPECT_EQ(said("AT+CARDMODE"), framed({"+CARDMODE: 0"}));
    EXPECT_EQ(said("AT+CPIN=\"0000\""), framed({}));
    bench.settle();
    EXPECT_EQ(said("AT+CNUM"), framed({}));
    EXPECT_EQ(said("AT+COPS?"), framed({"+COPS: 0,0,\"26201\",7"}));
    EXPECT_EQ(said("AT+ZDON?"), framed({"+ZDON: \"26201\",\"262\",\"01\",\"Home\",\"262\",\"01\",\"ROAM_OFF\""}));
    EXPECT_EQ(said("AT+COPS=1,2,\"262001\",2"), framed({}));
    EXPECT_EQ(said("AT+CREG=2"), framed({}));
    EXPECT_EQ(said("AT+CREG?"), framed({"+CREG: 2,5,\"0102\",\"00010203\",2"}));
    EXPECT_EQ(said("AT+CSQ"), framed({"+CSQ: 16,99"}));
    EXPECT_EQ(said("AT+CGDCONT?"), framed({"+CGDCONT: 3,\"IPV6\",\"x\",\"::1\",0,0"}));
    EXPECT_EQ(said("AT+CLCK=\"PS\",2;+CLCK=\"AG\",2"), framed({"+CLCK: 1", "+CLCK: 0"}));
    EXPECT_EQ(said("AT+ZNCK?"), framed({"+ZNCK: 7"}));
}

TEST(ScenarioFile, SaysWhatIsWrongAndWhere)
{
    struct Row {
        const char *json;
        const char *wrong;
    };
    const Row rows[] = {
        {"[]", "scenario: must be an object"},
        {R"({"simm": {}})", "simm: unknown key"},
        {R"({"sim": {"pinn": "1"}})", "sim.pinn: unknown key"},
        {R"({"sim": {"pin": 1234}})", "sim.pin: must be a text"},
        {R"({"sim": {"pin": "12"}})", "sim.pin: must be 4 to 8 digits"},
        {R"({"sim": {"present": 1}})", "sim.present: must be true or false"},
        {R"({"sim": {"pin_tries": 4}})", "sim.pin_tries: must be a whole number from 0 to 3"},
        {R"({"sim": {"pin_tries": 1.5}})", "sim.pin_tries: must be a whole number from 0 to 3"},
        {R"({"sim": {"pin_tries": 18446744073709551615}})", "sim.pin_tries: must be a whole number from 0 to 3"},
        {R"({"family": "acme"})", "family: must be one of default, qualcomm, mtk, tsp, spreadtrum"},
        {R"({"operators": {}})", "operators: must be an array"},
        {R"({"operators": [{"plmn": "26201"}, {"name": "x"}]})", "operators[1]: has no plmn"},
        {R"({"operators": [{"plmn": "26201", "technologies": ["5g"]}]})",
         "operators[0].technologies[0]: must be one of gsm, umts, lte"},
        {R"({"faults": [{"split": [-1]}]})", "faults[0].split[0]: must be a whole number from 0 to 1048576"},
        {R"({"faults": [{"report": {"offset": "later"}}]})",
         "faults[0].report.offset: must be a whole number from 0 to 1048576"},
        {R"({"faults": [{"framing": ["odd"]}]})",
         "faults[0].framing[0]: must be one of bare-lf, cr-cr-lf, no-empty-line-before-final, empty-lines-between, "
         "no-blank-behind-colon, text-behind-final"},
        {R"({"facilities": {"SC": {}}})", "facilities.SC: must be two capital letters other than SC and PN"},
        {R"({"contexts": [{"apn": "x"}]})", "contexts[0]: has no cid"},
        {R"({"signal": {"weakest": -60, "strongest": -70}})", "signal: weakest is stronger than strongest"},
        {R"({"timing": {"commands": {"AT": "1"}}})", "timing.commands.AT: must be a whole number from 0 to 86400000"},
    };
    for (const Row &row : rows) {
        Scenario scenario;
        EXPECT_EQ(readScenario(row.json, scenario), row.wrong) << row.json;
    }
    for (const char *text : {"", "{", "{\"sim\": }", "\xFF"}) {
        Scenario scenario;
        EXPECT_EQ(readScenario(text, scenario).rfind("not JSON: ", 0), 0U) << text;
    }
}

constexpr const char *kTranscript =
    R"({"time":"2024-05-01T10:00:00.000Z","event":"opened","text":"/dev/ttyUSB2"}
{"time":"2024-05-01T10:00:00.500Z","dir":"rx","text":"\r\n","as":"discarded"}
{"time":"2024-05-01T10:00:00.500Z","dir":"rx","text":"+CREG: 1\r\n","as":"report"}
{"time":"2024-05-01T10:00:01.000Z","dir":"tx","text":"AT+CPIN=\"****\"\r","client":7}
{"time":"2024-05-01T10:00:01.020Z","dir":"rx","text":"\r\n","as":"discarded"}
{"time":"2024-05-01T10:00:01.020Z","dir":"rx","text":"OK\r\n","as":"reply"}
{"time":"2024-05-01T10:00:03.000Z","dir":"rx","text":"\r\n+CREG: 5\r\n","as":"report"}

{"time":"2024-05-01T10:00:04.000Z","dir":"tx","text":"AT+CSQ\r"}
{"time":"2024-05-01T10:00:04.000Z","dir":"rx","text":"\r\n+CSQ: 1,99\r\n\r\nOK\r\n"}
{"time":"2024-05-01T10:00:05.000Z","dir":"tx","text":"AT+CSQ\r"}
{"time":"2024-05-01T10:00:05.000Z","dir":"rx","text":"\r\n+CSQ: \u00ff,99\r\n\r\nERROR\r\n"}
{"time":"2024-05-01T10:00:06.000Z","event":"closed","text":""}
)";

TEST(Replay, AnswersAsRecorded)
{
    simulator::Replay replay;
    std::string remark;
    ASSERT_EQ(readTranscript(kTranscript, replay, remark), "");
    EXPECT_EQ(remark, "");
    Bench bench(Family::Qualcomm, {}, 1, &replay);
    EXPECT_EQ(bench.wait(499), "");
    EXPECT_EQ(bench.wait(1), "\r\n+CREG: 1\r\n");

    bench.modem.receive("AT+CPIN=\"1234\"\r");
    EXPECT_EQ(bench.wait(19), "");
    EXPECT_EQ(bench.wait(1), "\r\nOK\r\n");
    bench.modem.receive("AT+CSQ\r"); // is not kept waiting by a report that comes later
    EXPECT_EQ(bench.said(), "\r\n+CSQ: 1,99\r\n\r\nOK\r\n");
    EXPECT_EQ(bench.settle(), "\r\n+CREG: 5\r\n");

    EXPECT_EQ(bench.send("AT+CSQ"), "\r\n+CSQ: \xFF,99\r\n\r\nERROR\r\n");
    EXPECT_EQ(bench.send("AT+CSQ"), "\r\n+CSQ: 1,99\r\n\r\nOK\r\n");
    EXPECT_EQ(bench.send("AT+CPIN=\"12345\""), "\r\nERROR\r\n"); // of another length
    EXPECT_EQ(bench.send("AT+NEVER"), "\r\nERROR\r\n");
}

TEST(Replay, ReadsWhatTheServerRecords)
{
    using host::at_server::LineIs;
    const processes::ScratchDirectory directory;
    const std::string file = directory / "record";
    host::at_server::Transcript transcript([](std::string_view /*json*/) {});
    ASSERT_EQ(transcript.open({file}), "");
    transcript.opened("it is there");
    transcript.sent("AT+CPIN=\"1234\"\r", 1);
    transcript.received("\r\nOK\r\n", LineIs::Reply, "AT+CPIN=\"1234\"");
    transcript.sent("AT+CGMI\r", 1);
    transcript.received("\r\n\xE9\r\n", LineIs::Reply, "AT+CGMI");
    transcript.received("\r\nOK\r\n", LineIs::Reply, "AT+CGMI");
    transcript.closed("it is gone");

    simulator::Replay replay;
    std::string remark;
    ASSERT_EQ(readTranscript(processes::contents(file), replay, remark), "");
    EXPECT_EQ(remark, "");
    Bench bench(Family::Qualcomm, {}, 1, &replay);
    EXPECT_EQ(bench.send("AT+CPIN=\"1234\""), framed({}));
    EXPECT_EQ(bench.send("AT+CGMI"), "\r\n\xE9\r\n\r\nOK\r\n");
}

TEST(Replay, PassesOverALineWhoseEndIsMissing)
{
    const std::string_view whole = kTranscript;
    const size_t last = whole.rfind('{');
    for (size_t length = last + 1; length < whole.size(); ++length) {
        simulator::Replay replay;
        std::string remark;
        ASSERT_EQ(readTranscript(whole.substr(0, length), replay, remark), "") << length;
        const bool isBroken = length < whole.size() - 1;
        EXPECT_EQ(remark, isBroken ? "line 13: passed over, since its end is missing" : "") << length;
        Bench bench(Family::Qualcomm, {}, 1, &replay);
        EXPECT_EQ(bench.send("AT+CSQ").find("\r\n+CSQ: 1,99\r\n\r\nOK\r\n"), 0U) << length;
    }
}

TEST(Replay, RefusesWhatIsNoTranscript)
{
    simulator::Replay replay;
    std::string remark;
    EXPECT_EQ(readTranscript("{}\nnot json\n", replay, remark), "line 2: not a JSON object");
    EXPECT_EQ(readTranscript("{\"time\n{}\n", replay, remark), "line 1: not a JSON object");
    EXPECT_EQ(readTranscript("[1]", replay, remark), "line 1: not a JSON object");
    EXPECT_EQ(readTranscript("", replay, remark), "there is no command in it");
    EXPECT_EQ(remark, "");
}

} // namespace
} // namespace bench
