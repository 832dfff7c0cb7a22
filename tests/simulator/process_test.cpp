// kr-modem-sim as a process, on a real pseudo-terminal.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/processes/child_process.h"

namespace {

using processes::Child;
using processes::eventually;
using processes::ScratchDirectory;

/** A program that has the port open. */
class Client {
  public:
    explicit Client(const std::string &path) : fd_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        EXPECT_GE(fd_, 0) << path;
    }
    ~Client() { ::close(fd_); }
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    int fd() const { return fd_; }

    void write(const std::string &text) const
    {
        EXPECT_EQ(::write(fd_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    /** Reads until it has heard this at the end of all that is said, and forgets it. */
    bool hears(const std::string &text)
    {
        const bool heard = eventually([&] {
            readMore();
            return heard_.size() >= text.size() && heard_.substr(heard_.size() - text.size()) == text;
        });
        EXPECT_TRUE(heard) << "heard: " << heard_;
        heard_.clear();
        return heard;
    }

    bool isHungUp()
    {
        pollfd poll{fd_, POLLIN, 0};
        return ::poll(&poll, 1, 0) > 0 && (poll.revents & POLLHUP) != 0;
    }

  private:
    void readMore()
    {
        char bytes[4096];
        const ssize_t length = ::read(fd_, bytes, sizeof bytes);
        if (length > 0) heard_.append(bytes, static_cast<size_t>(length));
    }

    int fd_;
    std::string heard_;
};

class Process : public testing::Test {
  protected:
    std::vector<std::string> command(std::vector<std::string> more = {}) const
    {
        std::vector<std::string> all = {KR_MODEM_SIM, "--link", link, "--control", fifo};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }

    std::unique_ptr<Child> start(const std::vector<std::string> &more = {}) const
    {
        auto child = std::make_unique<Child>(command(more));
        EXPECT_TRUE(child->waitForOutput("\n")) << child->errors();
        return child;
    }

    void tell(const std::string &line) const { std::ofstream(fifo) << line << std::endl; }

    std::string write(const std::string &name, const std::string &text) const
    {
        std::ofstream(directory / name) << text;
        return directory / name;
    }

    ScratchDirectory directory;
    const std::string link = directory / "modem";
    const std::string fifo = directory / "control";
};

TEST_F(Process, AnswersOnThePathThatItPrints)
{
    const auto modem = start({"--family", "mtk"});
    const std::string path = modem->output().substr(0, modem->output().find('\n'));
    EXPECT_EQ(path, std::filesystem::read_symlink(link).string());
    Client client(path);
    client.write("AT+CGMI\r");
    EXPECT_TRUE(client.hears("\r\nMediaTek\r\n\r\nOK\r\n"));
    modem->signal(SIGTERM);
    EXPECT_EQ(modem->wait(), 0);
    EXPECT_FALSE(std::filesystem::is_symlink(link));
    EXPECT_FALSE(std::filesystem::exists(fifo));
    EXPECT_EQ(modem->errors(), "");
}

TEST_F(Process, EndsAtAnInterrupt)
{
    const auto modem = start();
    modem->signal(SIGINT);
    EXPECT_EQ(modem->wait(), 0);
}

TEST_F(Process, TakesItsTimeByTheScale)
{
    const auto modem = start({"--time-scale", "0.001"});
    Client client(link);
    client.write("AT+COPS=?\r");
    EXPECT_TRUE(client.hears("(0-4),(0-2)\r\n\r\nOK\r\n"));
    const auto timeless = Child(command({"--time-scale", "-1"})).wait();
    EXPECT_EQ(timeless, 2);
}

TEST_F(Process, IsUnpluggedAndPluggedInAgain)
{
    const auto modem = start({"--time-scale", "0"});
    auto client = std::make_unique<Client>(link);
    client->write("AT+CREG=1\r");
    EXPECT_TRUE(client->hears("\r\nOK\r\n"));
    tell("report +CREG: 5");
    EXPECT_TRUE(client->hears("\r\n+CREG: 5\r\n"));
    tell("unplug");
    EXPECT_TRUE(eventually([&] { return client->isHungUp(); }));
    EXPECT_TRUE(eventually([&] { return !std::filesystem::is_symlink(link); }));
    tell("plug");
    EXPECT_TRUE(eventually([&] { return std::filesystem::is_symlink(link); }));
    client = std::make_unique<Client>(link);
    client->write("AT+CREG?\r");
    EXPECT_TRUE(client->hears("\r\n+CREG: 0,1\r\n\r\nOK\r\n"));
    tell("jump");
    EXPECT_TRUE(modem->waitForErrors("unknown command: jump"));
}

TEST_F(Process, GoesAwayInTheMiddleOfAReply)
{
    const std::string scenario =
        write("s.json", R"({"faults": [{"command": "AT+CGMI", "unplug": {"offset": 5, "ms": 1}}]})");
    const auto modem = start({"--scenario", scenario});
    {
        Client client(link);
        client.write("AT+CGMI\r");
        EXPECT_TRUE(eventually([&] { return client.isHungUp(); }));
    }
    EXPECT_TRUE(eventually([&] { return std::filesystem::is_symlink(link); }));
    Client client(link);
    client.write("AT\r");
    EXPECT_TRUE(client.hears("\r\nOK\r\n"));
}

TEST_F(Process, IsFreeForTheNextWhenItIsClosed)
{
    const auto modem = start({"--time-scale", "0"});
    {
        Client client(link);
        EXPECT_EQ(ioctl(client.fd(), TIOCEXCL), 0);
        termios cooked{};
        tcgetattr(client.fd(), &cooked);
        cooked.c_lflag |= ECHO | ICANON;
        tcsetattr(client.fd(), TCSANOW, &cooked);
        client.write("AT+CGM"); // and no end
    }
    tell("report +LOST: 1"); // to nobody
    tell("dance");           // the FIFO is read in order
    EXPECT_TRUE(modem->waitForErrors("unknown command: dance"));
    Client client(link);
    client.write("AT\r");
    EXPECT_TRUE(client.hears("\r\nOK\r\n"));
    int isExclusive = 1;
    EXPECT_EQ(ioctl(client.fd(), TIOCGEXCL, &isExclusive), 0);
    EXPECT_EQ(isExclusive, 0);
    termios settings{};
    tcgetattr(client.fd(), &settings);
    EXPECT_EQ(settings.c_lflag & static_cast<tcflag_t>(ECHO | ICANON), 0U);
}

TEST_F(Process, StartsAgainAfterItWasKilled)
{
    auto modem = start();
    modem->signal(SIGKILL);
    EXPECT_EQ(modem->wait(), 128 + SIGKILL);
    EXPECT_TRUE(std::filesystem::is_symlink(link)); // which leads nowhere
    modem = start();
    Client client(link);
    client.write("AT\r");
    EXPECT_TRUE(client.hears("\r\nOK\r\n"));
}

TEST_F(Process, SurvivesAClientThatNeverReads)
{
    const auto modem = start();
    {
        Client client(link);
        for (int i = 0; i < 200; ++i) {
            const std::string lines(2000, 'x');
            (void)!::write(client.fd(), ("AT+CLAC\r" + lines + "\r").data(), lines.size() + 9);
        }
    }
    Client client(link);
    EXPECT_TRUE(eventually([&] {
        (void)!::write(client.fd(), "AT\r", 3);
        char byte = 0;
        return ::read(client.fd(), &byte, 1) == 1;
    }));
}

TEST_F(Process, ReplaysARecord)
{
    const std::string record = write("r.json", R"({"time":"2024-05-01T10:00:00.000Z","dir":"tx","text":"AT+CSQ\r"}
{"time":"2024-05-01T10:00:00.010Z","dir":"rx","text":"\r\n+CSQ: 7,99\r\n\r\nOK\r\n","as":"reply"}
)");
    const auto modem = start({"--replay", record});
    Client client(link);
    client.write("AT+CSQ\r");
    EXPECT_TRUE(client.hears("\r\n+CSQ: 7,99\r\n\r\nOK\r\n"));
}

TEST_F(Process, ReplaysARecordWithATornLine)
{
    const std::string record = write("r.json", R"({"time":"2024-05-01T10:00:00.000Z","dir":"tx","text":"AT+CSQ\r"}
{"time":"2024-05-01T10:00:00.010Z","dir":"rx","text":"\r\n+CSQ: 7,99\r\n\r\nOK\r\n","as":"reply"}
{"time":"2024-05-01T10:0)");
    const auto modem = start({"--replay", record});
    EXPECT_TRUE(modem->waitForErrors("kr-modem-sim: " + record + ": line 3: passed over, since its end is missing\n"));
    Client client(link);
    client.write("AT+CSQ\r");
    EXPECT_TRUE(client.hears("\r\n+CSQ: 7,99\r\n\r\nOK\r\n"));
}

TEST_F(Process, SaysWhatItCannotRead)
{
    const std::string scenario = write("s.json", R"({"sim": {"pinn": "1"}})");
    Child wrong(command({"--scenario", scenario}));
    EXPECT_EQ(wrong.wait(), 1);
    EXPECT_EQ(wrong.errors(), "kr-modem-sim: " + scenario + ": sim.pinn: unknown key\n");

    Child noTranscript(command({"--replay", scenario + "x"}));
    EXPECT_EQ(noTranscript.wait(), 2);

    Child nowhere({KR_MODEM_SIM, "--link", directory / "no/such/link"});
    EXPECT_EQ(nowhere.wait(), 1);

    Child list({KR_MODEM_SIM, "--list-commands"});
    EXPECT_EQ(list.wait(), 0);
    EXPECT_NE(list.output().find("AT+EPINC?          -       -        mtk -   -"), std::string::npos) << list.output();
}

TEST_F(Process, TellsItsNameAndVersion)
{
    Child child({KR_MODEM_SIM, "--version"});
    EXPECT_EQ(child.wait(), 0);
    EXPECT_TRUE(child.output().starts_with("kr-modem-sim ")) << child.output();
}

TEST_F(Process, ReadsTheScenariosThatComeWithIt)
{
    size_t count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(KR_SCENARIOS)) {
        const auto modem = start({"--time-scale", "0", "--scenario", entry.path().string()});
        Client client(link);
        client.write("AT\r");
        EXPECT_TRUE(client.hears("OK\r\n")) << entry.path();
        modem->signal(SIGTERM);
        EXPECT_EQ(modem->wait(), 0);
        ++count;
    }
    EXPECT_GE(count, 7U);
}

} // namespace
