// AT+COPS=5, whose whole reply comes back in lines.

#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

#include "tests/support/network_exchange.h"

namespace {

using network::Call;
using network::Stage;
using network::Texts;

constexpr const char *kCommand = "AT+COPS=5";
constexpr int32_t kTimeoutMs = 360000;

/** Calls copsSet5() and gives the list as one field of bytes. */
Call scan(const GuardedRecord<AtParasList> &list)
{
    struct Destination {
        AtParasList *list;
    };
    const GuardedRecord<Destination> destination;
    destination->list = list;
    const auto bytes = [&] { return Texts{std::string(list.data(), list.size())}; };
    const Texts before = bytes();
    const uint32_t code = copsSet5(&destination->list);
    EXPECT_EQ(destination->list, list.get());
    return {code, before, bytes()};
}

Texts failureLog(const network::Ending &ending)
{
    // A reply without an OK is one that cannot be parsed.
    return {"at+cops=5 in",
            ending.stage == Stage::Send ? "at+cops=5 in-sendcmd failed" : "at+cops=5 in-parse atres failed"};
}

TEST(CopsSet5, FailsWithAnUntouchedList)
{
    network::expectFailures({"copsSet5", kCommand, kTimeoutMs,
                             [] { return scan(GuardedRecord<AtParasList>(network::kPattern)); }, "", failureLog,
                             network::kPlatforms, true});
    for (const char *text : {"+COPS: 2,\"L\"\r\n\r\nERROR\r\n", "\r\n+COPS: 2,\"L\r\n\r\nOK\r\n", "\r\nOK", "OK\r\n"}) {
        scripted::Host host;
        host.expect(kCommand, kTimeoutMs, text);
        const Call call = scan(GuardedRecord<AtParasList>(network::kPattern));
        EXPECT_EQ(call.code, UNI_ERROR_FALSE) << text;
        EXPECT_TRUE(call.before == call.after) << text;
        EXPECT_EQ(host.texts(), (Texts{"at+cops=5 in", "at+cops=5 in-parse atres failed"}));
    }
}

/** Splits a whole reply, and wants what the codec makes of the same text. */
std::unique_ptr<GuardedRecord<AtParasList>> split(const std::string &reply)
{
    const GuardedRecord<AtParasList> expected;
    const GuardedText text(reply);
    ATCodec_PreProc_Res_COPS5_ParaList(expected, text);
    std::unique_ptr<GuardedRecord<AtParasList>> list;
    for (const int32_t platform : network::kPlatforms) {
        const network::OnPlatform on(platform);
        list = std::make_unique<GuardedRecord<AtParasList>>(network::kPattern);
        scripted::Host host;
        host.expect(kCommand, kTimeoutMs, reply);
        EXPECT_EQ(scan(*list).code, UNI_ERROR_SUCCESS);
        EXPECT_EQ(host.texts(), (Texts{"at+cops=5 in", "at+cops=5 return success"}));
        network::ownLog(host);
        char *const end = list->data() + list->size();
        const char *const place = std::mismatch(list->data(), end, expected.data()).first;
        EXPECT_TRUE(place == end) << "byte " << place - list->data();
    }
    return list;
}

Texts entriesOf(const AtParasList &list)
{
    Texts entries;
    for (int32_t i = 0; i < list.nCount; ++i)
        entries.emplace_back(list.strParasLine[i]);
    return entries;
}

TEST(CopsSet5, GivesEveryLine)
{
    const Texts lines = {R"(+COPS: 2,"Long","Short","46001",7)", "a bare line", "+X: 1"};
    Texts expected = lines;
    expected.emplace_back("OK");
    EXPECT_EQ(entriesOf(**split(network::reply(lines))), expected);
    EXPECT_EQ(entriesOf(**split("\r\nOK\r\n")), Texts{"OK"});
    EXPECT_EQ(entriesOf(**split("echo\r\r\n" + network::reply({"x"}))), (Texts{"echo\r", "x", "OK"}));
    EXPECT_EQ(entriesOf(**split(network::reply({"x"}) + "behind")), (Texts{"x", "OK", "behind"}));
    EXPECT_EQ(entriesOf(**split("\r\nERROR\r\n\r\nOK\r\n")), (Texts{"ERROR", "OK"}));
    EXPECT_EQ(entriesOf(**split("\r\n+CEREG: 1\r\n\r\nOK\r\n")), (Texts{"+CEREG: 1", "OK"}));
    EXPECT_EQ(entriesOf(**split("\r\n\"a\r\nb\"\r\n\r\n\r\n\r\nOK\r\n")), (Texts{"\"a\r\nb\"", "OK"}));
}

TEST(CopsSet5, GivesUpTo100Lines)
{
    for (const size_t count : {98U, 99U, 100U, 101U, 250U}) {
        Texts lines;
        for (size_t i = 0; i < count; ++i)
            lines.push_back("+COPS: " + std::to_string(i));
        Texts expected = lines;
        expected.emplace_back("OK");
        expected.resize(std::min<size_t>(expected.size(), 100));
        EXPECT_EQ(entriesOf(**split(network::reply(lines))), expected);
    }
}

TEST(CopsSet5, LetsLongLinesRunOn)
{
    for (const size_t length : {1022U, 1023U, 1024U, 1025U, 2047U, 2048U, 2049U, 5000U, 10000U}) {
        const std::string line(length, 'x');
        const auto list = split(network::reply({line, "y"}));
        EXPECT_EQ((*list)->nCount, 3);
        // The next line begins in the next entry, over what ran on.
        EXPECT_EQ(std::string((*list)->strParasLine[0], 1024),
                  (line + std::string(1024, '\0')).substr(0, 1023) + (length < 1024 ? '\0' : 'x'));
        EXPECT_STREQ((*list)->strParasLine[1], "y");
        EXPECT_STREQ((*list)->strParasLine[2], "OK");
        if (length >= 5000) {
            EXPECT_EQ(std::string((*list)->strParasLine[3], 1024), std::string(1024, 'x'));
        }
    }
}

TEST(CopsSet5, LetsNoLineRunPastTheList)
{
    Texts lines(99, "x");
    lines.push_back(std::string(5000, 'y'));
    const auto list = split(network::reply(lines));
    EXPECT_EQ((*list)->nCount, 100);
    EXPECT_STREQ((*list)->strParasLine[98], "x");
    EXPECT_EQ(std::string((*list)->strParasLine[99], 1023), std::string(1023, 'y'));
}

TEST(CopsSet5, GivesAtMost1024CharactersOfAnOpenEnd)
{
    for (const size_t length : {1023U, 1024U, 1025U, 5000U}) {
        const auto list = split("\r\nOK\r\n" + std::string(length, 'x'));
        EXPECT_EQ((*list)->nCount, 2);
        EXPECT_EQ(std::string((*list)->strParasLine[1]), std::string(std::min<size_t>(length, 1024), 'x'));
    }
}

TEST(CopsSet5, TakesTheLongestReply)
{
    const std::string end = "\r\nOK\r\n";
    const std::string line(network::kLongestReply - end.size() - 4, 'x');
    EXPECT_EQ((*split("\r\n" + line + "\r\n" + end))->nCount, 2);
    std::string many;
    while (many.size() + 103 + end.size() <= network::kLongestReply)
        many += "\r\n" + std::string(99, 'x') + "\r\n";
    const std::string filled = many + end + std::string(network::kLongestReply - many.size() - end.size(), 'z');
    ASSERT_EQ(filled.size(), network::kLongestReply);
    EXPECT_EQ((*split(filled))->nCount, 100);
}

TEST(CopsSet5, LogsItsFormats)
{
    scripted::Host host;
    host.expect(kCommand, kTimeoutMs, "\r\nOK\r\n");
    scan(GuardedRecord<AtParasList>(network::kPattern));
    EXPECT_EQ(host.formats(), (Texts{"at+cops=5 in", "at+cops=5 return success"}));
}

} // namespace
