#include "tests/support/network_exchange.h"

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace network {
namespace {

std::string separated(const Texts &values, char separator)
{
    std::string text;
    for (size_t i = 0; i < values.size(); ++i) {
        if (i > 0) text += separator;
        text += values[i];
    }
    return text;
}

/** The failures of an exchange. A result other than OK stands for itself, behind lines that would give values, and as a
 *  report in front of a good reply. */
std::vector<Ending> failures(const Subject &subject)
{
    const std::string &line = subject.line;
    std::vector<Ending> found;
    for (const int sendResult : {-1, 1, 19})
        found.push_back({Stage::Send, "", "", sendResult});
    for (const scripted::Failure &failure : scripted::kFailingReplies) {
        const bool isParsed = failure.identifier != 0;
        if (subject.takesAnyOk && isParsed && failure.reply->find("\r\nOK\r\n") != std::string::npos) continue;
        found.push_back({isParsed ? Stage::Result : Stage::Parse, *failure.reply, failure.paras});
    }
    if (!line.empty()) {
        found.push_back({Stage::Result, reply({line}, "ERROR")});
        found.push_back({Stage::Result, reply({line}, "+CME ERROR: 4"), "4"});
        found.push_back({Stage::Result, "\r\n+CGEV: NW DETACH\r\n" + reply({line}), "NW DETACH"});
    }
    return found;
}

} // namespace

std::string reply(const Texts &lines, const std::string &finalResult)
{
    std::string text;
    for (const std::string &line : lines)
        text.append("\r\n").append(line).append("\r\n");
    return text.append("\r\n").append(finalResult).append("\r\n");
}

std::string quoted(const std::string &value)
{
    return '"' + value + '"';
}

std::string listed(const Texts &values)
{
    return separated(values, ',');
}

std::string joined(const Texts &values)
{
    return separated(values, ';');
}

Texts named(const std::string &name, const Texts &values)
{
    Texts lines;
    for (const std::string &value : values)
        lines.push_back(std::string(name).append(": ").append(value));
    return lines;
}

std::string stretched(const std::string &front, char filling, const std::string &back, size_t length)
{
    return front + std::string(length - front.size() - back.size(), filling) + back;
}

Texts bareLines(const std::string &value)
{
    constexpr size_t kLine = 1000;
    Texts lines;
    for (size_t i = 0; i < value.size(); i += kLine)
        lines.push_back(value.substr(i, kLine));
    return lines;
}

std::function<Call()> setting(std::function<uint32_t()> set)
{
    return [set = std::move(set)] { return Call{set(), {}, {}}; };
}

Texts ownLog(const scripted::Host &host)
{
    for (const scripted::LogLine &line : host.log()) {
        EXPECT_TRUE(line.module == scripted::kNetworkModule || line.module == scripted::kParserModule) << line.module;
        EXPECT_EQ(line.file, "kora_t9lb.log");
        EXPECT_GT(line.line, 0);
    }
    return host.texts(scripted::kNetworkModule);
}

void expectFailures(const Subject &subject)
{
    for (const int32_t platform : subject.platforms) {
        for (const Ending &ending : failures(subject)) {
            SCOPED_TRACE(std::string(subject.name) + " on platform " + std::to_string(platform) + ": " + ending.reply);
            const OnPlatform on(platform);
            scripted::Host host;
            if (ending.stage == Stage::Send)
                host.expectFailing(subject.command, subject.timeoutMs, ending.sendResult);
            else
                host.expect(subject.command, subject.timeoutMs, ending.reply);
            const Call call = subject.run();
            EXPECT_EQ(call.code, UNI_ERROR_FALSE);
            EXPECT_EQ(call.before, call.after);
            EXPECT_EQ(ownLog(host), subject.log(ending));
            if (ending.stage == Stage::Send) {
                EXPECT_EQ(host.texts(scripted::kParserModule), Texts{}) << "parsed without a reply";
            }
        }
    }
}

void expectSuccess(const Subject &subject)
{
    for (const int32_t platform : subject.platforms) {
        for (const Texts &lines : {Texts{}, Texts{"12"}, Texts{"+X: 1", "+X: 2"}}) {
            SCOPED_TRACE(subject.command + " on platform " + std::to_string(platform));
            const OnPlatform on(platform);
            scripted::Host host;
            host.expect(subject.command, subject.timeoutMs, reply(lines));
            EXPECT_EQ(subject.run().code, UNI_ERROR_SUCCESS);
            EXPECT_EQ(ownLog(host), subject.log({Stage::Success, reply(lines)}));
        }
    }
}

void expectFields(const Call &call, const Texts &expected)
{
    ASSERT_EQ(call.after.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        if (expected[i] == kAny) continue;
        EXPECT_EQ(call.after[i], expected[i] == kKept ? call.before[i] : expected[i]) << "field " << i;
    }
}

void expectRows(const Subject &subject, const std::vector<Row> &rows)
{
    for (const int32_t platform : subject.platforms) {
        for (const Row &row : rows) {
            SCOPED_TRACE(std::string(subject.name) + " on platform " + std::to_string(platform) + ": " + row.name);
            ASSERT_LE(reply(row.lines).size(), kLongestReply);
            const OnPlatform on(platform);
            scripted::Host host;
            host.expect(subject.command, subject.timeoutMs, reply(row.lines));
            const Call call = subject.run();
            EXPECT_EQ(call.code, row.code);
            expectFields(call, row.expected);
            EXPECT_EQ(ownLog(host), subject.log({Stage::Success, reply(row.lines)}));
        }
    }
}

} // namespace network
