// The named setting, which answers with a text of any length and a number.

#include <cstring>

#include <gtest/gtest.h>

#include "tests/mainControl/api_dialogue.h"

namespace {

using namespace dialogue;

constexpr Module api{scripted::kApiFileModule};
const std::string kEarlier = "an earlier state"; // what a caller may have left in its buffer

std::string commandOf(const std::string &name, int32_t value)
{
    return "AT+ZSET=\"" + name + "\"," + std::to_string(value);
}
Events entry(const std::string &name, int32_t value)
{
    return {api("KR_setZSET-in"), api("KR_setZSET-in-iState:%s", name), api("KR_setZSET-in-iMode:%d", value)};
}
Events exit(const std::string &state, int32_t mode)
{
    return {api("KR_setZSET-out-oState:%s", state), api("KR_setZSET-out-oMode:%d", mode),
            api("KR_setZSET-return UNI_ERROR_SUCCESS")};
}
const Event kFailed = api("KR_setZSET-return UNI_ERROR_FALSE");

/** A call whose text output ends where its memory ends. */
class ZsetRun {
  public:
    /** @param room  how much of a text, without its terminator, the output can take */
    explicit ZsetRun(size_t room = kEarlier.size()) : state_(room + 1)
    {
        std::memset(state_.data(), kFill, state_.size());
        std::memcpy(state_.data(), kEarlier.c_str(), std::min(kEarlier.size() + 1, state_.size()));
        state_.data()[room] = '\0';
    }

    void expect(int32_t platform, const char *name, int32_t value, const Events &events, uint32_t code,
                const std::string &state, int32_t mode)
    {
        EXPECT_EQ(play(platform, events, [&] { return KR_setZSET(name, value, state_.data(), mode_); }), code);
        EXPECT_EQ(std::string(state_.data()), state);
        EXPECT_EQ(*mode_.get(), mode);
    }

  private:
    GuardedMemory state_;
    GuardedRecord<int32_t> mode_{kFill};
};

struct AnswerRow {
    std::string paras;
    std::string state;
    int32_t mode;
};

const AnswerRow kAnswers[] = {
    {"on,1", "on", 1},
    {"\"on\",1", "on", 1},
    {"\"a state b\",-7", "a state b", -7},
    {"\"a\tb\",2147483647", "a\tb", 2147483647},
    {"\"a,b\",1", "a,b", 1},
    {"\"\",1", "", 1},
    {"12,1", "12", 1},
    {"on,1,2", "on", 1},
    {"on", "on", kKept},
    {"on,", "on", kKept},
    {"on,x", "on", kKept},
    {"on 1", "on", 1},
    {"", kEarlier, kKept},
};

TEST(NamedSetting, AnswersWithTextAndNumber)
{
    for (const int32_t platform : kPlatforms) {
        for (const AnswerRow &row : kAnswers) {
            SCOPED_TRACE(row.paras);
            const std::string command = commandOf("fplmn", 1);
            const Event exchange =
                row.paras.empty() ? ok(command, 5000) : ok(command, 5000, "+ZSET: " + row.paras, row.paras);
            ZsetRun().expect(platform, "fplmn", 1, entry("fplmn", 1) + Events{exchange} + exit(row.state, row.mode),
                             UNI_ERROR_SUCCESS, row.state, row.mode);
        }
    }
}

TEST(NamedSetting, IsUntouchedByAFailure)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(nameOf(failure));
            ZsetRun().expect(platform, "fplmn", 0,
                             entry("fplmn", 0) + Events{failing(failure, commandOf("fplmn", 0), 5000), kFailed},
                             UNI_ERROR_FALSE, kEarlier, kKept);
        }
    }
}

TEST(NamedSetting, IsSentAsItIs)
{
    for (const char *name : {"fplmn", "", "a b", "a\"b", "a,b", "%s%d", "a name of more than twenty characters"}) {
        for (const int32_t value : {0, 1, -1, 2147483647, -2147483647 - 1}) {
            SCOPED_TRACE(name);
            const Event exchange = ok(commandOf(name, value), 5000, "+ZSET: on,5", "on,5");
            ZsetRun().expect(PF_QC_LTE, name, value, entry(name, value) + Events{exchange} + exit("on", 5),
                             UNI_ERROR_SUCCESS, "on", 5);
        }
    }
}

TEST(NamedSetting, HasANameOfAnyLengthThatACommandHolds)
{
    for (const size_t length : {20U, 21U, 254U, 255U, 512U, 1023U}) {
        SCOPED_TRACE(length);
        const GuardedText name(argumentFor("AT+ZSET=\"\",1", length));
        const Event exchange = ok(commandOf(name.str(), 1), 5000, "+ZSET: on,5", "on,5");
        ZsetRun().expect(PF_MTK, name, 1, entry(name.str(), 1) + Events{exchange} + exit("on", 5), UNI_ERROR_SUCCESS,
                         "on", 5);
    }
    for (const size_t length : {1024U, 4000U}) {
        SCOPED_TRACE(length);
        const GuardedText name(argumentFor("AT+ZSET=\"\",1", length));
        ZsetRun().expect(PF_MTK, name, 1, entry(name.str(), 1) + Events{kFailed}, UNI_ERROR_FALSE, kEarlier, kKept);
    }
}

/** The whole text arrives, and not a byte behind it. */
TEST(NamedSetting, AnswersWithATextOfAnyLength)
{
    for (const size_t length : {17U, 63U, 64U, 127U, 128U, 254U, 255U, 256U, 512U, 1021U}) {
        SCOPED_TRACE(length);
        const std::string state = filled(length);
        const Event exchange = ok(commandOf("x", 1), 5000, "+ZSET: " + state + ",5", state + ",5");
        ZsetRun(length).expect(0, "x", 1, entry("x", 1) + Events{exchange} + exit(state, 5), UNI_ERROR_SUCCESS, state,
                               5);
    }
}

/** Parameters of 1024 characters cannot be rewritten: the text runs up to the first blank, commas and quotes
 *  included. */
TEST(NamedSetting, AnswersWithTheParametersAsTheyStandWhereTheyAreTooLong)
{
    const std::string single = filled(1022) + ",5";
    const Event one = ok(commandOf("x", 1), 5000, "+ZSET: " + single, single);
    ZsetRun(single.size())
        .expect(0, "x", 1, entry("x", 1) + Events{one} + exit(single, kKept), UNI_ERROR_SUCCESS, single, kKept);

    const std::string line = "\"" + filled(700) + "\"";
    const std::string joined = line + ";" + line + ";" + line;
    const std::string reply =
        scripted::framed({("+ZSET: " + line).c_str(), ("+ZSET: " + line).c_str(), ("+ZSET: " + line + " 5").c_str()});
    const Event several = answered(commandOf("x", 1), 5000, reply, joined + " 5", 1);
    ZsetRun(joined.size())
        .expect(0, "x", 1, entry("x", 1) + Events{several} + exit(joined, 5), UNI_ERROR_SUCCESS, joined, 5);
}

} // namespace
