#include "tests/support/plain_port/replies.h"

#include <algorithm>
#include <vector>

#include "tests/support/plain_port/reply_forms.h"

namespace plain {
namespace {

constexpr size_t kMostCharacters = 10239;
constexpr size_t kTroubles[] = {2, 2, 8, 60};

const char *const kErrorTexts[] = {"incorrect password",
                                   "Incorrect password",
                                   "SIM PUK required",
                                   "SIM PIN required",
                                   "sim failure",
                                   "SIM failure",
                                   "sim not inserted",
                                   "SIM not inserted",
                                   "sim busy",
                                   "SIM busy",
                                   "Sim busy",
                                   "10",
                                   "12",
                                   "16",
                                   "3112",
                                   "\"SIM busy\"",
                                   "SIM failure, SIM busy",
                                   "incorrect password 12",
                                   "1\"2\"",
                                   ""};

const char *const kReports[] = {R"(+CREG: 1,"00A1","0001B2C3")",
                                R"(+CEREG: 1,"00A1","0001B2C3",7)",
                                R"(+CGREG: 1,"00A1","0001B2C3",7,"01")",
                                "+CGREG: 2",
                                R"(+CEREG: 5,"","")",
                                "+CGEV: ME DETACH",
                                R"(+ZPASR: "LTE","CS_PS")",
                                "+ZDONR: \"x\",460,0",
                                "+ZMCON:1",
                                "+ZEND",
                                "+ECSQ: 20,99",
                                "+CMTI: \"SM\",3",
                                "CBM: 1",
                                "ZCLAS: 1"};

const char *const kOddValues[] = {"",
                                  "\"\"",
                                  "\"",
                                  "-",
                                  "+",
                                  "-0",
                                  "007",
                                  "+5",
                                  " 3",
                                  "3 ",
                                  "  \t4",
                                  "x",
                                  "5x",
                                  "- 5",
                                  "--5",
                                  "2147483647",
                                  "2147483648",
                                  "-2147483648",
                                  "-2147483649",
                                  "4294967295",
                                  "4294967296",
                                  "4294967297",
                                  "9223372036854775807",
                                  "9223372036854775808",
                                  "-9223372036854775808",
                                  "-9223372036854775809",
                                  "18446744073709551615",
                                  "18446744073709551617",
                                  "99999999999999999999999",
                                  "-99999999999999999999999",
                                  "0x10",
                                  "1e3",
                                  "1.5",
                                  "\xFD",
                                  "\xFE",
                                  "\xFC",
                                  "\"\xFD\"",
                                  "\"x\xFDy\"",
                                  "\"a,b\"",
                                  "\"a;b\"",
                                  "\"a b\tc\"",
                                  "\" \"",
                                  "\",\"",
                                  "(1",
                                  "2)",
                                  ";",
                                  "1;2",
                                  ": ",
                                  "a: b",
                                  "\v7",
                                  "\f8",
                                  "\n9",
                                  "\r6"};

std::string framed(const std::vector<std::string> &lines, const std::string &finalResult)
{
    std::string reply;
    for (const std::string &line : lines)
        reply += "\r\n" + line + "\r\n";
    return reply + finalResult;
}

} // namespace

Replies::Replies(Dice dice) : dice_(dice), trouble_(dice_.pick(kTroubles)) {}

std::string Replies::quoted(const std::string &text)
{
    return '"' + text + '"';
}

std::string Replies::oddValue()
{
    if (dice_.oneIn(10)) return dice_.of("0123456789", dice_.length());
    if (dice_.oneIn(10)) return quoted(dice_.of("abc ,;\t\xFC\xFD\xFE()", dice_.length()));
    if (dice_.oneIn(20)) {
        std::string commas;
        commas.resize(dice_.oneIn(2) ? 94 + dice_.below(12) : 900 + dice_.below(130), ',');
        return commas;
    }
    return dice_.pick(kOddValues);
}

std::string Replies::value(const std::string &kind)
{
    static constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    if (kind.size() != 1) return kind;
    switch (kind[0]) {
    case 'd':
        return std::to_string(dice_.below(8));
    case 'D':
        return std::to_string(dice_.below(dice_.oneIn(2) ? 24 : 100000));
    case 's':
        return std::to_string(static_cast<int>(dice_.below(200)) - 140);
    case 'f':
        return std::to_string(dice_.below(60)) + "." + std::to_string(dice_.below(1000));
    case 'q':
        return quoted(dice_.of(dice_.oneIn(3) ? "Network 1,\t" : kLetters, dice_.length()));
    case 'h':
        return quoted(dice_.of("0123456789ABCDEF", dice_.oneIn(4) ? dice_.length() : 4 + 4 * dice_.below(2)));
    case 'b':
        return dice_.of(kLetters, dice_.length());
    case 'm':
        return dice_.of(kLetters, 251 + dice_.below(8));
    case 'l':
        return dice_.of(kLetters, 509 + dice_.below(8));
    default:
        return kind;
    }
}

std::string Replies::values(std::string kinds)
{
    std::string line;
    std::string kind;
    const size_t oddOnes = dice_.oneIn(3) ? 5 : 100000;
    const size_t end = dice_.oneIn(8) ? dice_.below(kinds.size() + 1) : kinds.size();
    kinds = kinds.substr(0, end) + ',';
    for (const char c : kinds) {
        if (c != ',' && c != ' ' && c != '(' && c != ')' && c != ';') {
            kind += c;
            continue;
        }
        line += dice_.oneIn(oddOnes) ? oddValue() : value(kind);
        line += c;
        kind.clear();
    }
    line.pop_back();
    if (dice_.oneIn(12)) line += "," + oddValue();
    return line;
}

std::string Replies::line(const char *name, const char *kinds)
{
    if (dice_.oneIn(40)) return values(kinds);
    if (dice_.oneIn(60)) return "+OTHER: " + values(kinds);
    return name + values(kinds);
}

std::string Replies::body(const std::string &command)
{
    std::vector<const ReplyForm *> fitting;
    for (const ReplyForm &form : kReplyForms) {
        if (command.compare(0, std::string(form.command).size(), form.command) == 0) fitting.push_back(&form);
    }
    static constexpr ReplyForm kAny = {"", "+ANY: ", "d,q,D", 2};
    if (fitting.empty() && !dice_.oneIn(4)) return "";
    const ReplyForm &form = fitting.empty() || dice_.oneIn(40) ? kAny : *dice_.pick(fitting);
    const bool isFull = form.mostLines > 1 && dice_.oneIn(30);
    std::vector<std::string> lines;
    for (size_t left = isFull ? 96 + dice_.below(8) : 1 + dice_.below(form.mostLines); left > 0; --left)
        lines.push_back(isFull ? form.name + std::to_string(left) : line(form.name, form.values));
    if (dice_.oneIn(40)) lines.back() += "," + dice_.of("abc\",", 1010 + dice_.below(20));
    return framed(lines, "");
}

std::string Replies::finalResult()
{
    switch (dice_.below(8)) {
    case 0:
        return "\r\nERROR\r\n";
    case 1:
        return "\r\n+CMS ERROR: " + std::string(dice_.pick(kErrorTexts)) + "\r\n";
    case 2:
        return "\r\nnot support\r\n";
    case 3:
        return "\r\n> ";
    default:
        return "\r\n+CME ERROR: " + std::string(dice_.pick(kErrorTexts)) + "\r\n";
    }
}

std::string Replies::report()
{
    if (dice_.isWritten()) return dice_.written();
    static constexpr const char *kNames[] = {"+CEREG: ", "+CGREG: ", "+CREG: "};
    static constexpr const char *kKinds[] = {"d,h,h,d,h", "d,h,h,d,h", "d,q,q,D,q", "D"};
    std::string line = dice_.pick(kReports);
    if (!dice_.oneIn(3)) line = dice_.pick(kNames) + values(dice_.pick(kKinds));
    const std::string report = "\r\n" + line + "\r\n";
    return dice_.oneIn(30) ? disturbed("AT+COPS?", report) : report;
}

std::string Replies::disturbed(const std::string &command, std::string reply)
{
    const auto anywhere = [&](const std::string &text) { return text.empty() ? 0 : dice_.below(text.size()); };
    switch (dice_.below(12)) {
    case 0: // a body whose last line is not closed
        if (reply.size() > 8 && reply.compare(reply.size() - 8, 8, "\r\n\r\nOK\r\n") == 0)
            reply.erase(reply.size() - 8, 2);
        return reply;
    case 1:
        return command + "\r" + reply;
    case 2:
        return "\r\n" + std::string(dice_.pick(kReports)) + "\r\n" + reply;
    case 3:
        return dice_.of("ab\"\r\n: ,+OK", dice_.below(20)) + reply;
    case 4:
        return reply.substr(0, anywhere(reply));
    case 5:
        return dice_.of("abcOK\r\n\r\n\", :;+CREG", dice_.below(200));
    case 6:
        return reply + finalResult();
    case 7: { // as long as a reply can be
        const size_t at = anywhere(reply);
        const size_t missing = kMostCharacters - std::min(kMostCharacters, reply.size());
        return reply.substr(0, at) + std::string(missing, dice_.pick("7a ,;\xFE")) + reply.substr(at);
    }
    case 8:
        return reply.insert(anywhere(reply), dice_.of("\",;:() \r\n\xFC\xFD\xFE", 1 + dice_.below(3)));
    case 9:
        if (!reply.empty()) reply.erase(anywhere(reply), 1 + dice_.below(3));
        return reply;
    case 10:
        return body(command) + reply;
    default:
        return "";
    }
}

std::string Replies::parameters(const std::string &command)
{
    if (dice_.isWritten()) return dice_.written();
    const std::string whole = body(command);
    std::string parameters;
    for (size_t at = 0; at < whole.size();) {
        const size_t end = std::min(whole.find("\r\n", at), whole.size());
        const size_t colon = whole.find(": ", at);
        if (!parameters.empty() && end > at) parameters += ';';
        parameters += colon < end ? whole.substr(colon + 2, end - colon - 2) : whole.substr(at, end - at);
        at = end + 2;
    }
    return parameters;
}

Answer Replies::answer(const std::string &call)
{
    static constexpr int kFailures[] = {-1, 1, 2, 1000};
    if (call.compare(0, 10, "ClientInit") == 0 || call.compare(0, 13, "SetClientProc") == 0)
        return {dice_.oneIn(2) ? 0 : dice_.pick(kFailures), ""};
    if (call.compare(0, 7, "decode ") == 0 || call.compare(0, 7, "invert ") == 0)
        return {static_cast<int>(dice_.below(4)) - 1, dice_.of("0123456789abc", dice_.below(30))};
    const bool isWritten = dice_.isWritten();
    std::string reply = isWritten ? dice_.written() : body(call);
    if (!isWritten || dice_.oneIn(2)) reply += "\r\nOK\r\n";
    int result = 0;
    if (!isWritten && dice_.oneIn(trouble_)) {
        if (dice_.oneIn(4)) result = dice_.pick(kFailures);
        if (dice_.oneIn(2)) reply = dice_.oneIn(8) ? body(call) + finalResult() : finalResult();
        if (dice_.oneIn(3)) reply = disturbed(call, reply);
    }
    if (reply.size() > kMostCharacters) reply.resize(kMostCharacters);
    reply.erase(std::remove(reply.begin(), reply.end(), '\0'), reply.end());
    return {result, reply};
}

} // namespace plain
