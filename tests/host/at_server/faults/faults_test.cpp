// The server with each of its system calls failing once, in turn: it ends at its start with a word, or goes on, gives
// nobody another one's reply, answers or ends each connection, serves the next command, and leaves no file open.
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/host/at_server/scripted_modem.h"
#include "tests/processes/at_socket.h"
#include "tests/processes/child_process.h"

using host::protocol::Cause;
using host::protocol::Type;
using processes::AtSocket;
using processes::Child;
using processes::eventually;

namespace {

constexpr unsigned kThreads = 16;    // that mostly wait
constexpr uint32_t kTimeoutMs = 500; // of commands that a fault may lose
constexpr int kOk = 0;

/** How a system call fails: with a number of errno, "short" or "end". */
struct Fault {
    std::string call;
    std::string how;
};

std::vector<Fault> allFaults()
{
    const std::vector<std::pair<std::string, std::vector<int>>> rows{
        {"accept4", {EMFILE, ENOMEM, ECONNABORTED, EINTR}},
        {"bind", {EADDRINUSE}},
        {"close", {EIO, EINTR}},
        {"epoll_create1", {EMFILE}},
        {"epoll_ctl", {ENOMEM, ENOSPC}},
        {"epoll_wait", {EINTR}},
        {"fchmod", {EPERM}},
        {"flock", {EWOULDBLOCK, ENOLCK}},
        {"fstat", {EIO}},
        {"ftruncate", {EIO}},
        {"getsockopt", {ENOMEM}},
        {"listen", {EADDRINUSE}},
        {"lstat", {EACCES}},
        {"open", {EMFILE, EINTR, EIO}},
        {"pipe2", {EMFILE}},
        {"poll", {EINTR, ENOMEM}},
        {"pread", {EIO}},
        {"read", {EIO, EAGAIN, EINTR}},
        {"recv", {ECONNRESET, EAGAIN, EINTR, ENOMEM}},
        {"rename", {EACCES}},
        {"send", {EPIPE, EAGAIN, EINTR, ENOBUFS, ENOMEM}},
        {"socket", {EMFILE}},
        {"tcgetattr", {EIO}},
        {"tcsetattr", {EIO}},
        {"unlink", {EACCES}},
        {"write", {EIO, EAGAIN, EINTR, ENOSPC}},
    };
    std::vector<Fault> faults{{"read", "short"}, {"read", "end"}, {"write", "short"}, {"recv", "end"}};
    for (const auto &[call, errors] : rows)
        for (const int error : errors)
            faults.push_back({call, std::to_string(error)});
    return faults;
}

/** "AT+N=17" is answered by "+N: 17". */
std::string counting(const std::string &command)
{
    const bool isCounted = command.compare(0, 5, "AT+N=") == 0;
    return isCounted ? "\r\n+N: " + command.substr(5) + "\r\n\r\nOK\r\n" : "\r\nOK\r\n";
}

/** Whether somebody listens there who says something, as a server does that has started whole. */
bool isServed(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int fd = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    char first = 0;
    pollfd answer{fd, POLLIN, 0};
    const bool isIt = connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
                      poll(&answer, 1, std::chrono::milliseconds(processes::kPatience).count()) == 1 &&
                      recv(fd, &first, 1, 0) == 1;
    close(fd);
    return isIt;
}

bool hasEnded(pid_t process)
{
    siginfo_t information{};
    return waitid(P_PID, static_cast<id_t>(process), &information, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           information.si_pid == process;
}

enum class Answer { Right, Failure, End };

/** What a client gets for a command, if it is its own. */
Answer ask(AtSocket &client, int number)
{
    const std::string text = std::to_string(number);
    const uint32_t id = client.start("AT+N=" + text, kTimeoutMs);
    while (const auto message = client.receive()) {
        if (message->id != id || message->type == Type::Waiting) continue;
        if (message->type == Type::Failure) return Answer::Failure;
        EXPECT_EQ(message->text, "\r\n+N: " + text + "\r\n\r\nOK\r\n");
        return Answer::Right;
    }
    return Answer::End;
}

/** Whether each line is one object of a record. */
bool hasWholeLines(const std::string &record)
{
    constexpr std::string_view kStart = "{\"time\":\"";
    std::istringstream lines(record);
    bool areWhole = record.empty() || record.back() == '\n';
    for (std::string line; std::getline(lines, line);)
        areWhole = areWhole && line.back() == '}' && line.rfind(kStart) == 0;
    return areWhole;
}

class Session {
  public:
    /** @param faults  as the preloaded library reads them */
    explicit Session(const std::string &faults)
        : record_(almostFull(directory_ / "record")), modem_(directory_ / "modem", counting),
          server_({KR_AT_SERVER_PROGRAM, "--device", directory_ / "modem", "--socket", directory_ / "at.sock",
                   "--record", record_, "--record-size", "4096", "--quiet-ms", "10", "--answer-ms", "250",
                   "--linger-ms", "100"},
                  {{"LD_PRELOAD", SYSTEM_FAULTS}, {"FAULT", faults}})
    {
    }

    /** @return whether the fault has come */
    bool run()
    {
        EXPECT_TRUE(eventually([&] { return hasEnded(server_.pid()) || isServed(directory_ / "at.sock"); }));
        if (!hasEnded(server_.pid())) {
            converse();
            server_.signal(SIGTERM);
            EXPECT_EQ(server_.wait(), kOk) << server_.errors();
            EXPECT_TRUE(hasWholeLines(processes::contents(record_))) << processes::contents(record_);
        } else {
            EXPECT_EQ(server_.wait(), 1) << server_.errors();
            const bool hasSaidWhy = contains("kr-at-server: ") || contains("event loop: ") || contains("[err] ");
            EXPECT_TRUE(hasSaidWhy) << server_.errors();
        }
        EXPECT_TRUE(contains("fault: 0 files left open")) << server_.errors();
        return contains("fault: here it is");
    }

  private:
    /** A record that the session makes full, and whose last line is torn. */
    static std::string almostFull(std::string path)
    {
        std::ofstream file(path);
        for (int i = 0; i < 200; ++i)
            file << "{\"time\":\"\"}\n";
        file << "{\"ti";
        return path;
    }
    bool contains(std::string_view text) const { return server_.errors().find(text) != std::string::npos; }

    void converse()
    {
        AtSocket client(directory_ / "at.sock");
        ask(client, 1);
        AtSocket(directory_ / "at.sock").start("AT+N=2"); // and is gone
        client.send({Type::Subscribe, Cause::None, 1000, host::protocol::kHearReports, {}});
        modem_.write("\r\n+CEREG: 1\r\n");
        ask(client, 3);
        server_.signal(SIGHUP);
        EXPECT_TRUE(eventually([&] {
            AtSocket other(directory_ / "at.sock");
            return ask(other, 4) == Answer::Right;
        }));
    }

    const processes::ScratchDirectory directory_;
    const std::string record_;
    ScriptedModem modem_;
    Child server_;
};

/** A line that is torn, since the disk is full behind its first byte, and cannot be cut off then. */
TEST(Record, IsCutOffLaterWhereItCannotBeAtOnce)
{
    bool hasCome = false;
    for (int number = 1; number < 20 && !HasFailure(); ++number) {
        const std::string torn = "write " + std::to_string(number) + " short;write " + std::to_string(number + 1);
        hasCome = Session(torn + " 28;ftruncate 2 5").run() || hasCome;
    }
    EXPECT_TRUE(hasCome);
}

/** The calls of one kind of fault that one thread makes fail: each so-many-th from one on. */
struct Work {
    Fault fault;
    unsigned first;
};
constexpr unsigned kStride = 4;

/** @return how many calls have failed, which is all that there are */
unsigned failEach(const Work &work)
{
    unsigned failed = 0;
    for (unsigned number = work.first; !testing::Test::HasFailure(); number += kStride, ++failed) {
        const std::string fault = work.fault.call + " " + std::to_string(number) + " " + work.fault.how;
        SCOPED_TRACE(fault);
        if (!Session(fault).run()) break;
    }
    return failed;
}

TEST(SystemCalls, MayFailOnceEach)
{
    std::vector<Work> works;
    for (unsigned first = 1; first <= kStride; ++first)
        for (const Fault &fault : allFaults())
            works.push_back({fault, first});
    std::atomic<size_t> next = 0;
    std::atomic<unsigned> failed = 0;
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (unsigned i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (size_t own = next++; own < works.size(); own = next++)
                failed += failEach(works[own]);
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_GT(failed, 300U);
    RecordProperty("failed", static_cast<int>(failed));
}

} // namespace
