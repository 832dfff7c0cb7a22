// The file of a record, as the disk, its size and its owner let it be.
#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "host/at_server/record_file.h"
#include "tests/processes/child_process.h"

using host::at_server::RecordFile;
using processes::contents;

namespace {

constexpr size_t kLarge = 1000000;
constexpr std::string_view kLine = "{\"time\":1}\n";

std::string lines(int number)
{
    std::string text;
    for (int i = 0; i < number; ++i)
        text += kLine;
    return text;
}

class Record : public testing::Test {
  protected:
    void put(std::string_view text) const { std::ofstream(path, std::ios::binary) << text; }
    mode_t mode() const
    {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    const processes::ScratchDirectory directory;
    const std::string path = directory / "record";
    RecordFile file;
};

TEST_F(Record, IsMadeForItsOwnerAlone)
{
    const mode_t mask = umask(0);
    EXPECT_EQ(file.open(path, kLarge), "");
    umask(mask);
    EXPECT_EQ(mode(), 0600U);
    EXPECT_EQ(file.append(kLine), "");
    std::filesystem::permissions(path, std::filesystem::perms(0644));
    EXPECT_EQ(file.reopen(), "");
    EXPECT_EQ(mode(), 0600U);
    EXPECT_EQ(file.append(kLine), "");
    EXPECT_EQ(contents(path), lines(2));
}

TEST_F(Record, IsARegularFile)
{
    const std::string link = directory / "link";
    const std::string fifo = directory / "fifo";
    put(kLine);
    std::filesystem::create_symlink(path, link);
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string &other : {link, fifo, directory.path().string(), std::string("/dev/full")}) {
        EXPECT_EQ(file.open(other, kLarge), "cannot write the record " + other + ": it is not a regular file");
        EXPECT_FALSE(file.isOpen());
    }
    EXPECT_EQ(file.open(directory / "none/record", kLarge),
              "cannot write the record " + (directory / "none/record") + ": No such file or directory");
}

struct TornRow {
    const char *name;
    std::string before;
    std::string after;
};

TEST_F(Record, LosesATornLastLine)
{
    const std::string longLine = "{\"time\":\"" + std::string(10000, 'x') + "\"}\n";
    const TornRow rows[] = {
        {"nothing", "", ""},
        {"whole lines", lines(3), lines(3)},
        {"a torn line behind whole ones", lines(3) + "{\"time\":\"2026", lines(3)},
        {"its first character", lines(3) + "{", lines(3)},
        {"a line without its end", lines(1) + std::string(kLine.substr(0, kLine.size() - 1)), lines(1)},
        {"no whole line", "{\"time\":\"2026", ""},
        {"a long line", longLine + longLine.substr(0, 9000), longLine},
    };
    for (const TornRow &row : rows) {
        put(row.before);
        EXPECT_EQ(file.open(path, kLarge), "") << row.name;
        EXPECT_EQ(contents(path), row.after) << row.name;
        EXPECT_EQ(file.append(kLine), "") << row.name;
        EXPECT_EQ(contents(path), row.after + std::string(kLine)) << row.name;
    }
}

TEST_F(Record, LeavesOtherFilesAsTheyAre)
{
    const std::string letter = "Dear Anna,\nsee you soon. Bert";
    put(letter);
    EXPECT_EQ(file.open(path, kLarge), "cannot write the record " + path + ": it does not end as a record does");
    EXPECT_EQ(contents(path), letter);
}

TEST_F(Record, IsOfBoundedSize)
{
    EXPECT_EQ(file.open(path, 3 * kLine.size()), "");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(file.append(kLine), "");
    EXPECT_FALSE(std::filesystem::exists(path + ".1"));
    EXPECT_EQ(file.append(kLine), "");
    EXPECT_EQ(contents(path + ".1"), lines(3));
    EXPECT_EQ(contents(path), lines(1));
    EXPECT_EQ(mode(), 0600U);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(file.append(kLine), "");
    EXPECT_EQ(contents(path + ".1"), lines(3));
    EXPECT_EQ(contents(path), lines(2));
    const std::string large = "{\"time\":\"" + std::string(100, 'x') + "\"}\n";
    EXPECT_EQ(file.append(large), "");
    EXPECT_EQ(contents(path), large) << "has a file of its own";
}

TEST_F(Record, LosesLinesWhereTheNextFileCannotBeBegun)
{
    EXPECT_EQ(file.open(path, kLine.size()), "");
    EXPECT_EQ(file.append(kLine), "");
    std::filesystem::create_directory(path + ".1");
    EXPECT_EQ(file.append(kLine), "the record cannot be written: Is a directory");
    EXPECT_TRUE(file.isFailing());
    EXPECT_EQ(file.append(kLine), "");
    EXPECT_EQ(contents(path), lines(1));
    std::filesystem::remove(path + ".1");
    EXPECT_EQ(file.append(kLine), "the record is written again; 2 lines were lost");
    EXPECT_FALSE(file.isFailing());
    EXPECT_EQ(contents(path), lines(1));
    EXPECT_EQ(contents(path + ".1"), lines(1));
}

/** No file grows beyond a size while this lives. */
class FullDisk {
  public:
    explicit FullDisk(rlim_t size)
    {
        getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit lower{size, limit_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &lower), 0);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, before_);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

  private:
    rlimit limit_{};
    void (*before_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(Record, HasWholeLinesOrNoneOnAFullDisk)
{
    EXPECT_EQ(file.open(path, kLarge), "");
    EXPECT_EQ(file.append(kLine), "");
    {
        const FullDisk full(2 * kLine.size() - 1);
        EXPECT_EQ(file.append(kLine), "the record cannot be written: File too large");
        EXPECT_EQ(contents(path), lines(1));
        EXPECT_EQ(file.append(kLine), "") << "which has been told";
        EXPECT_EQ(contents(path), lines(1));
    }
    EXPECT_EQ(file.append(kLine), "the record is written again; 2 lines were lost");
    EXPECT_EQ(contents(path), lines(2));
    {
        const FullDisk full(kLine.size());
        EXPECT_EQ(file.append(kLine), "the record cannot be written: File too large") << "anew";
    }
    EXPECT_EQ(file.append(kLine), "the record is written again; 1 line was lost");
    EXPECT_EQ(contents(path), lines(3));
}

TEST_F(Record, GoesOnInAFileThatOthersHaveCut)
{
    EXPECT_EQ(file.open(path, kLarge), "");
    EXPECT_EQ(file.append(kLine), "");
    EXPECT_EQ(truncate(path.c_str(), 0), 0);
    EXPECT_EQ(file.append(kLine), "");
    EXPECT_EQ(contents(path), lines(1));
}

} // namespace
