// What each user may have of the server.
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_server/shares.h"

using host::at_server::Shares;
using namespace std::chrono_literals;

namespace {

constexpr uid_t kRoot = 0;
constexpr uid_t kServer = 100;
constexpr uid_t kAnna = 1000;
constexpr uid_t kBert = 1001;
constexpr auto kPatience = 10s;

const Shares kShares(kServer, kPatience);
const Shares::Clock::time_point kNow = Shares::Clock::now();

constexpr std::string_view kAllTaken = "there are too many clients";
constexpr std::string_view kOwnTaken = "this user has too many clients";

/** So many clients of a user who wait for something. */
struct Some {
    uid_t user;
    size_t number;
    size_t unanswered = 0; ///< of each
};

Shares::Clients clientsOf(const std::vector<Some> &all)
{
    Shares::Clients clients;
    for (const Some &some : all)
        for (size_t i = 0; i < some.number; ++i)
            clients.push_back({clients.size() + 1, some.user, some.unanswered, {}});
    return clients;
}

struct PlaceRow {
    const char *name;
    std::vector<Some> connected;
    uid_t user;
    std::string_view refusal;
};

TEST(Places, AreLimitedByUserAndSomeAreKept)
{
    const PlaceRow rows[] = {
        {"nobody is there", {}, kAnna, ""},
        {"one less than a user may have", {{kAnna, 7}}, kAnna, ""},
        {"all that a user may have", {{kAnna, 8}}, kAnna, kOwnTaken},
        {"which leaves others theirs", {{kAnna, 8}}, kBert, ""},
        {"root may have more", {{kRoot, 31}}, kRoot, ""},
        {"but not more than there are", {{kRoot, 32}}, kRoot, kAllTaken},
        {"and so may the server's user", {{kServer, 31}}, kServer, ""},
        {"some places are kept", {{1002, 8}, {1003, 8}, {1004, 8}, {kBert, 4}}, kAnna, kAllTaken},
        {"up to there they can be had", {{1002, 8}, {1003, 8}, {1004, 8}, {kBert, 3}}, kAnna, ""},
        {"for root", {{1002, 8}, {1003, 8}, {1004, 8}, {kBert, 4}}, kRoot, ""},
        {"also the last", {{1002, 8}, {1003, 8}, {1004, 8}, {kBert, 4}, {kRoot, 3}}, kServer, ""},
    };
    for (const PlaceRow &row : rows) {
        const Shares::Place place = kShares.placeFor(row.user, clientsOf(row.connected), kNow);
        EXPECT_EQ(place.refusal, row.refusal) << row.name;
        EXPECT_FALSE(place.letGo) << row.name;
    }
}

struct IdleRow {
    const char *name;
    std::vector<Some> connected;
    std::vector<std::pair<uint64_t, std::chrono::seconds>> idle; ///< sessions, and for how long
    uid_t user;
    uint64_t letGo; ///< 0: none
};

TEST(Places, OfIdleClientsGoToOthersAfterAWhile)
{
    const IdleRow rows[] = {
        {"for long enough", {{kRoot, 32}}, {{7, 10s}}, kRoot, 7},
        {"not yet for long enough", {{kRoot, 32}}, {{7, 9s}}, kRoot, 0},
        {"for longest", {{kRoot, 32}}, {{3, 11s}, {7, 20s}, {8, 12s}}, kRoot, 7},
        {"nobody while there is room", {{kRoot, 31}}, {{7, 20s}}, kRoot, 0},
        {"for a user among the others", {{kRoot, 20}, {kBert, 8}}, {{25, 20s}}, kAnna, 25},
        {"of the user who has all of its own", {{kRoot, 1}, {kAnna, 8}}, {{1, 30s}, {5, 20s}}, kAnna, 5},
        {"of nobody else then", {{kRoot, 1}, {kAnna, 8}}, {{1, 30s}}, kAnna, 0},
        {"not where one less is still too many", {{kRoot, 30}}, {{5, 20s}}, kAnna, 0},
    };
    for (const IdleRow &row : rows) {
        Shares::Clients clients = clientsOf(row.connected);
        for (const auto &[session, time] : row.idle)
            clients.at(session - 1).idleSince = kNow - time;
        const Shares::Place place = kShares.placeFor(row.user, clients, kNow);
        EXPECT_EQ(place.letGo.value_or(0), row.letGo) << row.name;
        const bool isFull = clients.size() >= 28 || row.user == kAnna;
        EXPECT_EQ(place.refusal.empty(), row.letGo != 0 || !isFull || clients.size() == 31) << row.name;
    }
}

struct CommandRow {
    const char *name;
    std::vector<Some> connected;
    uid_t user;
    std::string_view refusal;
};

TEST(Commands, AreLimitedByUserAndSomeAreKept)
{
    const CommandRow rows[] = {
        {"the last that a user may have", {{kAnna, 4, 16}}, kAnna, ""},
        {"one more", {{kAnna, 4, 16}, {kAnna, 1, 1}}, kAnna, "this user waits for too many"},
        {"of another user", {{kAnna, 4, 16}, {kBert, 1, 1}}, kBert, ""},
        {"of root", {{kRoot, 16, 16}}, kRoot, ""},
        {"of the server's user", {{kServer, 16, 16}}, kServer, ""},
        {"the last of all users", {{1002, 4, 16}, {1003, 4, 16}, {kBert, 4, 16}, {kAnna, 2, 16}}, kAnna, ""},
        {"one more of them",
         {{1002, 4, 16}, {1003, 4, 16}, {kBert, 4, 16}, {kAnna, 3, 11}},
         kAnna,
         "too many commands wait"},
        {"which the trusted do not count for", {{kRoot, 16, 16}, {kAnna, 1, 1}}, kAnna, ""},
    };
    for (const CommandRow &row : rows)
        EXPECT_EQ(kShares.refusalOfCommand(row.user, clientsOf(row.connected)), row.refusal) << row.name;
}

} // namespace
