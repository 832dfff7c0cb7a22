// Who may do what: the settings, the groups of the system, and what somebody is told who may not.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_server/access.h"
#include "tests/processes/child_process.h"

using host::at::Right;
using host::at::Rights;
using host::at_server::Access;
using host::at_server::Allowance;
using host::at_server::allowanceIn;
using host::at_server::groupsOf;
using host::at_server::kRightsOfGroup;

namespace {

TEST(Allowances, AreReadFromOneText)
{
    const struct {
        const char *text;
        const char *group;
        Rights rights;
    } rows[] = {
        {"modem=read", "modem", Right::Read},
        {"modem=read,network,settings,sim", "modem", kRightsOfGroup},
        {"modem=sim,read,sim", "modem", Right::Read | Right::Sim},
        {" modem = read , raw ", "modem", Right::Read | Right::Raw},
        {"ops=all", "ops", Rights::all()},
        {"ops=trace,all", "ops", Rights::all()},
    };
    for (const auto &row : rows) {
        std::string fault;
        const auto allowance = allowanceIn(row.text, fault);
        ASSERT_TRUE(allowance) << row.text << ": " << fault;
        EXPECT_EQ(allowance->group, row.group) << row.text;
        EXPECT_EQ(allowance->rights, row.rights) << row.text;
    }
}

TEST(Allowances, ThatCannotBeReadSayWhy)
{
    const struct {
        const char *text;
        const char *fault;
    } rows[] = {
        {"modem", "modem is not a group, =, and its rights"},
        {"", " is not a group, =, and its rights"},
        {"=read", "=read is not a group, =, and its rights"},
        {"modem=", "\"\" is not among the rights read, network, settings, sim, device, raw and trace, nor all"},
        {"modem=read,", "\"\" is not among the rights read, network, settings, sim, device, raw and trace, nor all"},
        {"modem=Read", "\"Read\" is not among the rights read, network, settings, sim, device, raw and trace, nor all"},
        {"modem=pin", "\"pin\" is not among the rights read, network, settings, sim, device, raw and trace, nor all"},
    };
    for (const auto &row : rows) {
        std::string fault;
        EXPECT_FALSE(allowanceIn(row.text, fault)) << row.text;
        EXPECT_EQ(fault, row.fault) << row.text;
    }
}

constexpr uid_t kOwner = 900;
constexpr uid_t kOther = 1000;

const Access kAccess(kOwner, {{"modem", 10, kRightsOfGroup},
                              {"view", 20, Right::Read},
                              {"ops", 30, Right::Device | Right::Trace}});

TEST(Access, IsTheSumOfWhatTheGroupsHave)
{
    const struct {
        uid_t user;
        std::vector<gid_t> groups;
        Rights rights;
    } rows[] = {
        {0, {}, Rights::all()},
        {kOwner, {}, Rights::all()},
        {kOwner, {20}, Rights::all()},
        {kOther, {}, {}},
        {kOther, {0, 1000}, {}},
        {kOther, {1000, 20}, Right::Read},
        {kOther, {10, 20}, kRightsOfGroup},
        {kOther, {20, 30}, Right::Read | Right::Device | Right::Trace},
        {static_cast<uid_t>(-1), {}, {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(kAccess.rightsOf(row.user, row.groups), row.rights) << row.user << ' ' << row.groups.size();
    EXPECT_TRUE(Access(kOwner).rightsOf(kOther, std::array<gid_t, 1>{0}).isEmpty());
}

TEST(Access, SaysWhichRightIsMissingAndWhoHasIt)
{
    const struct {
        Rights held;
        Rights needed;
        const char *refusal;
    } rows[] = {
        {{}, {}, ""},
        {Right::Read, Right::Read, ""},
        {Rights::all(), Rights::all(), ""},
        {{},
         Right::Read,
         "this user lacks the right read, which root, the server's own user, members of the group modem and members of "
         "the group view have"},
        {Right::Read, Right::Read | Right::Device,
         "this user lacks the right device, which root, the server's own user and members of the group ops have"},
        {Right::Read, Right::Raw, "this user lacks the right raw, which root and the server's own user have"},
        {Right::Read, Right::Network | Right::Sim,
         "this user lacks the rights network and sim, which root, the server's own user and members of the group modem "
         "have"},
        {{},
         Right::Read | Right::Device | Right::Raw,
         "this user lacks the rights read, device and raw, which root and the server's own user have"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(kAccess.refusal(row.held, row.needed), row.refusal);
}

/** "root=read sim, daemon=": what each group may do. */
std::string told(const std::vector<Access::Group> &groups)
{
    std::string text;
    for (const Access::Group &group : groups) {
        text.append(text.empty() ? "" : ", ").append(group.name).append("=");
        for (const Right right : host::at::kEveryRight)
            if (group.rights.has(right)) text.append(nameOf(right)).append(" ");
    }
    return text;
}

TEST(Documents, HaveEveryRightAndWhetherTheGroupHasIt)
{
    const std::string guide = processes::contents(SOURCE_DIR "/docs/host.md");
    const std::string page = processes::contents(SOURCE_DIR "/host/at_server/kr-at-server.8");
    for (const Right right : host::at::kEveryRight) {
        const std::string name(nameOf(right));
        const size_t row = guide.find("\n| `" + name + "` | ");
        ASSERT_NE(row, std::string::npos) << name;
        const std::string line = guide.substr(row + 1, guide.find('\n', row + 1) - row - 1);
        EXPECT_TRUE(line.ends_with(kRightsOfGroup.has(right) ? " | yes |" : " | no |")) << line;
        EXPECT_NE(page.find("\n.TP\n.B " + name + "\n"), std::string::npos) << name;
    }
}

TEST(Groups, AreThoseOfTheSettings)
{
    const struct {
        const char *own;
        std::vector<Allowance> allowances;
        const char *groups;
    } rows[] = {
        {"", {}, ""},
        {"daemon", {}, "daemon=read network settings sim "},
        {"", {{"daemon", Right::Raw}}, "daemon=raw "},
        {"daemon", {{"daemon", Right::Raw}}, "daemon=raw "},
        {"daemon", {{"root", Right::Raw}}, "root=raw , daemon=read network settings sim "},
        {"", {{"daemon", Right::Raw}, {"root", Right::Sim}, {"daemon", Right::Read}}, "daemon=read raw , root=sim "},
    };
    for (const auto &row : rows) {
        std::string fault;
        EXPECT_EQ(told(groupsOf(row.own, row.allowances, fault)), row.groups);
        EXPECT_EQ(fault, "");
    }
}

TEST(Groups, HaveToBeKnownToTheSystem)
{
    std::string fault;
    (void)groupsOf("no-such-group", {}, fault);
    EXPECT_EQ(fault, "there is no group no-such-group");
    fault.clear();
    const Allowance unknown{"nor-this", Right::Read};
    (void)groupsOf("no-such-group", {{unknown}}, fault);
    EXPECT_EQ(fault, "there is no group nor-this");
}

} // namespace
