// Each test is a process of its own, since the log reads its environment once: this program calls itself with the name
// of a writer below.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <sstream>
#include <thread>

#include <pthread.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <mainControl/host.h>

#include "tests/processes/child_process.h"

using processes::Child;
using processes::contents;
using processes::ScratchDirectory;

namespace fs = std::filesystem;

namespace {

constexpr const char *kFile = "kora_t9lb.log";

void writeLines(int count)
{
    for (int i = 0; i < count; ++i)
        kora_log_append("lib_mainControl", i, kFile, "line %d of %s", i, "many");
}

void *writeOnSmallStack(void *)
{
    const std::string longText(100000, 'x');
    kora_log_append("lib_mainControl", 1, kFile, "KR_verifyPIN-in-pValue:%s", longText.c_str());
    writeLines(10);
    return nullptr;
}

void smallStack()
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, size_t{88} * 1024); // what the library leaves of 128 KiB
    pthread_t thread{};
    if (pthread_create(&thread, &attributes, writeOnSmallStack, nullptr) != 0) std::abort();
    pthread_join(thread, nullptr);
}

const std::map<std::string, std::function<void()>> kWriters = {
    {"one", [] { kora_log_append("lib_mainControl", 42, kFile, "KR_getPower-out-*pPowerMode:%d", 1); }},
    {"many", [] { writeLines(1000); }},
    {"values",
     [] {
         kora_log_append("lib_mainControl.c", 1, kFile, "KR_verifyPIN-in-pValue:%s", "48151623");
         kora_log_append("lib_mainControl", 2, kFile, "KR_getIMSI-out-pString:%s", "460001234567890");
         kora_log_append("lib_mainControl", 3, kFile, "Bk_Parse_At_Res-in-%s",
                         "AT+CPIN=\"48151623\"\r\r\n+CIMI: 460001234567890\r\n\r\nOK\r\n");
     }},
    {"controls", [] { kora_log_append("a\nb", 1, kFile, "%s", "1\r\n2\t3\x01\x1B[4\\5\x7F\xC3\xA9"); }},
    {"long", [] { kora_log_append("m", 1, kFile, "%s", std::string(300000, 'y').c_str()); }},
    {"paths",
     [] {
         for (const char *name : {"../../outside.log", "/tmp/inside.log", "..", "", "dir/"})
             kora_log_append("m", 1, name, "here");
         kora_log_append(nullptr, 1, nullptr, "here");
         for (int i = 0; i < 20; ++i)
             kora_log_append("m", 1, ("file" + std::to_string(i)).c_str(), "here");
     }},
    {"errno",
     [] {
         errno = 123;
         kora_log_append("m", 1, kFile, "one");
         if (errno != 123) std::abort();
     }},
    {"threads",
     [] {
         std::array<std::thread, 8> threads;
         for (std::thread &thread : threads)
             thread = std::thread([] { writeLines(500); });
         for (std::thread &thread : threads)
             thread.join();
     }},
    {"vanishing",
     [] {
         writeLines(1);
         fs::remove_all(std::getenv("KR_LOG_DIR"));
         writeLines(1);
     }},
    {"descriptors",
     [] {
         writeLines(1);
         execlp("ls", "ls", "-l", "/proc/self/fd", nullptr);
     }},
    {"small stack", smallStack},
};

/** Runs a writer, which must end well.
 *  @return what it wrote to its standard output */
std::string run(const std::string &writer, const Child::Environment &environment)
{
    Child child({"/proc/self/exe", writer}, environment);
    EXPECT_EQ(child.wait(), 0) << child.output() << child.errors();
    EXPECT_EQ(child.errors(), "") << "nothing is said to the terminal";
    return child.output();
}

std::vector<std::string> linesOf(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> filesIn(const fs::path &directory)
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(directory))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(KoraLog, WritesTimeProcessModuleLineAndText)
{
    const ScratchDirectory directory;
    run("one", {{"KR_LOG_DIR", directory.path()}});
    const std::string text = contents(directory / kFile);
    EXPECT_TRUE(std::regex_match(text, std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} \[\d+\] lib_mainControl:42 )"
                                                  R"(KR_getPower-out-\*pPowerMode:1\n)")))
        << text;
    EXPECT_EQ(fs::status(directory / kFile).permissions(), fs::perms{0640});
}

TEST(KoraLog, WritesNothingWithoutADirectory)
{
    fs::remove(kFile);
    run("many", {{"KR_LOG_DIR", ""}});
    run("many", {});
    EXPECT_FALSE(fs::exists(kFile)) << "written to the current directory";
}

TEST(KoraLog, MakesItsDirectory)
{
    const ScratchDirectory directory;
    run("one", {{"KR_LOG_DIR", directory / "a/b"}});
    EXPECT_NE(contents(directory / "a/b/kora_t9lb.log"), "");
}

TEST(KoraLog, HidesSecretsAlwaysAndIdentitiesUnlessAsked)
{
    const ScratchDirectory directory;
    run("values", {{"KR_LOG_DIR", directory.path()}});
    std::string text = contents(directory / kFile);
    EXPECT_EQ(text.find("48151623"), std::string::npos) << text;
    EXPECT_EQ(text.find("460001234567890"), std::string::npos) << text;
    EXPECT_NE(text.find("+CIMI: ***************\\r\\n\\r\\nOK"), std::string::npos) << text;

    run("values", {{"KR_LOG_DIR", directory.path()}, {"KR_LOG_IDENTITIES", "1"}});
    text = contents(directory / kFile);
    EXPECT_EQ(text.find("48151623"), std::string::npos) << text;
    EXPECT_NE(text.find("+CIMI: 460001234567890"), std::string::npos) << text;
}

TEST(KoraLog, KeepsACallOneLine)
{
    const ScratchDirectory directory;
    run("controls", {{"KR_LOG_DIR", directory.path()}});
    const auto lines = linesOf(contents(directory / kFile));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("] a\\nb:1 1\\r\\n2\\t3\\x01\\x1B[4\\\\5\\x7F\xC3\xA9"), std::string::npos) << lines[0];
}

TEST(KoraLog, BoundsALine)
{
    const ScratchDirectory directory;
    run("long", {{"KR_LOG_DIR", directory.path()}});
    const std::string text = contents(directory / kFile);
    EXPECT_LT(text.size(), 17000U);
    EXPECT_EQ(text.substr(text.size() - 5), "y...\n");
}

TEST(KoraLog, Rotates)
{
    const ScratchDirectory directory;
    run("many", {{"KR_LOG_DIR", directory.path()}, {"KR_LOG_SIZE", "8192"}, {"KR_LOG_FILES", "2"}});
    EXPECT_EQ(filesIn(directory.path()), (std::vector<std::string>{"kora_t9lb.1.log", "kora_t9lb.log"}));
    for (const std::string &name : filesIn(directory.path()))
        EXPECT_LE(fs::file_size(directory / name), 8192U);
    EXPECT_NE(contents(directory / kFile).find("line 999 of many\n"), std::string::npos);

    const ScratchDirectory single;
    run("many", {{"KR_LOG_DIR", single.path()}, {"KR_LOG_SIZE", "8192"}, {"KR_LOG_FILES", "1"}});
    EXPECT_EQ(filesIn(single.path()), (std::vector<std::string>{kFile}));
    EXPECT_LE(fs::file_size(single / kFile), 8192U);
}

TEST(KoraLog, TakesItsDefaultsForWhatIsNoNumber)
{
    for (const char *size : {"", "none", "-1", "12", "99999999999999999999"}) {
        const ScratchDirectory directory;
        run("many", {{"KR_LOG_DIR", directory.path()}, {"KR_LOG_SIZE", size}, {"KR_LOG_FILES", size}});
        EXPECT_EQ(linesOf(contents(directory / kFile)).size(), 1000U);
    }
}

TEST(KoraLog, StaysInItsDirectory)
{
    const ScratchDirectory directory;
    run("paths", {{"KR_LOG_DIR", directory / "in/side"}});
    EXPECT_EQ(filesIn(directory.path()), (std::vector<std::string>{"in"}));
    EXPECT_EQ(filesIn(directory / "in"), (std::vector<std::string>{"side"}));
    const auto files = filesIn(directory / "in/side");
    EXPECT_LE(files.size(), 9U) << "names without end";
    for (const char *name : {"inside.log", "outside.log", "kora.log"})
        EXPECT_EQ(std::count(files.begin(), files.end(), name), 1) << name;
}

TEST(KoraLog, LosesNoLineOfAnyThread)
{
    const ScratchDirectory directory;
    run("threads", {{"KR_LOG_DIR", directory.path()}});
    const auto lines = linesOf(contents(directory / kFile));
    EXPECT_EQ(lines.size(), 4000U);
    for (const std::string &line : lines)
        EXPECT_EQ(line.substr(line.size() - 7), "of many");
}

TEST(KoraLog, OutlivesADirectoryThatVanishes)
{
    const ScratchDirectory directory;
    run("vanishing", {{"KR_LOG_DIR", directory / "log"}});
    EXPECT_EQ(linesOf(contents(directory / "log/kora_t9lb.log")).size(), 1U) << "made anew";
}

TEST(KoraLog, OutlivesWhatCannotBeWritten)
{
    const ScratchDirectory directory;
    fs::create_directory(directory / "full");
    fs::create_symlink("/dev/full", fs::path(directory / "full") / kFile);
    fs::create_directories(fs::path(directory / "taken") / kFile); // a directory where the file is to be
    const std::string file = directory / "full/file";
    std::ofstream(file) << "no directory";
    for (const std::string &where : {directory / "full", directory / "taken", file, std::string("/proc/none"),
                                     std::string("/dev/null/log"), std::string(5000, 'd')})
        run("many", {{"KR_LOG_DIR", where}});
}

TEST(KoraLog, OutlivesADirectoryWithoutRights)
{
    if (geteuid() == 0) GTEST_SKIP() << "nothing is forbidden to root";
    const ScratchDirectory directory;
    fs::permissions(directory.path(), fs::perms::none);
    run("many", {{"KR_LOG_DIR", directory.path()}});
    fs::permissions(directory.path(), fs::perms::owner_all);
}

TEST(KoraLog, LeavesErrnoAlone)
{
    const ScratchDirectory directory;
    run("errno", {{"KR_LOG_DIR", directory.path()}});
    run("errno", {{"KR_LOG_DIR", "/proc/none"}});
}

TEST(KoraLog, HandsNoDescriptorToOtherPrograms)
{
    const ScratchDirectory directory;
    const std::string open = run("descriptors", {{"KR_LOG_DIR", directory.path()}});
    EXPECT_NE(open, "");
    EXPECT_EQ(open.find(kFile), std::string::npos) << open;
}

TEST(KoraLog, NeedsLittleStack)
{
    const ScratchDirectory directory;
    run("small stack", {{"KR_LOG_DIR", directory.path()}});
    EXPECT_EQ(linesOf(contents(directory / kFile)).size(), 11U);
}

} // namespace

int main(int count, char **arguments)
{
    testing::InitGoogleTest(&count, arguments);
    if (count < 2) return RUN_ALL_TESTS();
    kWriters.at(arguments[1])();
    return 0;
}
