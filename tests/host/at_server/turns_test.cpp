// Whose turn it is among users who have had unequal time of the wire.
#include <cctype>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/at_server/turns.h"

using host::at_server::Turns;

namespace {

/** Letters are sessions, and both cases of a letter are sessions of one user. */
uid_t userOf(char session)
{
    return static_cast<uid_t>(std::tolower(session));
}

/** Plays happenings: a letter is one more turn of that session, '.' a turn taken, a digit the seconds that it lasts, '-' and
 *  a letter a turn less, '!' and a letter a charge.
 *  @return whose turns there were */
std::string turns(std::string_view happenings)
{
    Turns turns;
    std::string order;
    for (size_t i = 0; i < happenings.size(); ++i) {
        const char what = happenings[i];
        if (what == '.')
            order += static_cast<char>(turns.take());
        else if (std::isdigit(what) != 0)
            turns.hasUsed(userOf(order.back()), std::chrono::seconds(what - '0'));
        else if (what == '-')
            turns.remove(static_cast<uint64_t>(happenings[++i]));
        else if (what == '!')
            turns.charge(static_cast<uint64_t>(happenings[++i]));
        else
            turns.add(static_cast<uint64_t>(what), userOf(what));
    }
    EXPECT_TRUE(turns.isEmpty()) << happenings;
    return order;
}

struct Row {
    const char *name;
    std::string_view happenings;
    std::string_view order;
};

TEST(Turns, GoByUserAndThenBySession)
{
    const Row rows[] = {
        {"sessions of one user go round", "aaAA....", "aAaA"},
        {"many sessions of one user count as one user", "aAaAbb......", "abAbaA"},
        {"a turn less is one less", "aab-a..", "ab"},
        {"a session without turns is gone", "ab-a.", "b"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(turns(row.happenings), row.order) << row.name;
}

TEST(Turns, GoToTheUserWhoHasHadLeast)
{
    const Row rows[] = {
        {"who has had more comes when the others have had as much", "aaabbbb.3.1.1.1...", "abbbaab"},
        {"which holds for all its sessions", "aAbbb.3.1.1.1.", "abbbA"},
        {"what nobody else wanted costs nothing", "a.9aabb....", "aabab"},
        {"who comes later has nothing saved up", "aaa.5.5b..", "aaba"},
        {"who has had most waits in the end", "aab.9.1.", "aba"},
        {"a session that was charged comes behind all who wait", "abbb!a....", "babb"},
        {"and its user has by then had as much as they", "aaabB.3!b....", "aBaba"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(turns(row.happenings), row.order) << row.name;
}

TEST(Turns, AreWithheldForABoundedTime)
{
    Turns turns;
    turns.add('a', 'a');
    turns.add('b', 'b');
    EXPECT_EQ(turns.take(), uint64_t{'a'});
    turns.hasUsed('a', std::chrono::hours(1));
    turns.add('a', 'a');
    std::chrono::seconds ofOther(0);
    for (uint64_t next = turns.take(); next == 'b'; next = turns.take()) {
        turns.hasUsed('b', std::chrono::seconds(1));
        ofOther += std::chrono::seconds(1);
        turns.add('b', 'b');
        ASSERT_LE(ofOther, Turns::kMostAhead);
    }
    EXPECT_EQ(ofOther, Turns::kMostAhead);
}

} // namespace
