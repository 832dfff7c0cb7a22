/** Tests as root that do something as somebody else. */
#ifndef TESTS_PROCESSES_OTHER_USER_H
#define TESTS_PROCESSES_OTHER_USER_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "tests/processes/child_process.h"

namespace processes {

constexpr uid_t kNobody = 65534; ///< a user who is in no group but those that a test says

/** Groups of every Debian system. */
constexpr const char *kOneGroup = "tape";
constexpr const char *kOtherGroup = "daemon";
gid_t idOf(const char *group);

/** Lets everybody through a directory, as far as the files in it do. */
void openToAll(const ScratchDirectory &directory);

/** Runs something in a process of another user, who is in these groups and no others.
 *  @return the text that it returns */
std::string heardAs(uid_t user, const std::vector<gid_t> &groups, const std::function<std::string()> &talk);

/** The same, for a number. */
template <typename Call>
int asUser(uid_t user, gid_t group, Call call)
{
    return std::stoi(heardAs(user, {group}, [&] { return std::to_string(call()); }));
}

/** The start of a command line that runs a program so. Where the program stands is of no matter. */
std::vector<std::string> commandAs(uid_t user, const char *group);

} // namespace processes

#endif
