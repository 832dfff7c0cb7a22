#include "tests/processes/other_user.h"

#include <array>
#include <filesystem>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace processes {

gid_t idOf(const char *group)
{
    const ::group *const entry = getgrnam(group);
    EXPECT_NE(entry, nullptr) << group;
    return entry == nullptr ? static_cast<gid_t>(-1) : entry->gr_gid;
}

void openToAll(const ScratchDirectory &directory)
{
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0711));
}

std::string heardAs(uid_t user, const std::vector<gid_t> &groups, const std::function<std::string()> &talk)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        const gid_t own = groups.empty() ? static_cast<gid_t>(user) : groups.front();
        if (setgroups(groups.size(), groups.data()) != 0 || setgid(own) != 0 || setuid(user) != 0) _exit(1);
        const std::string heard = talk();
        _exit(write(ends[1], heard.data(), heard.size()) < 0 ? 1 : 0);
    }
    close(ends[1]);
    std::string heard;
    std::array<char, 512> bytes{};
    for (ssize_t size = 0; (size = read(ends[0], bytes.data(), bytes.size())) > 0;)
        heard.append(bytes.data(), static_cast<size_t>(size));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "cannot become user " << user;
    return heard;
}

std::vector<std::string> commandAs(uid_t user, const char *group)
{
    return {"setpriv", "--reuid", std::to_string(user), "--regid", std::to_string(idOf(group)), "--clear-groups",
            // to read programs in the home of whoever builds them
            "--inh-caps=-all,+dac_read_search", "--ambient-caps=-all,+dac_read_search"};
}

} // namespace processes
