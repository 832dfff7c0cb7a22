#include "tests/host/at_client/client_fixture.h"

#include <cstdlib>
#include <utility>

using namespace host::protocol;
using scripted::Peer;
using scripted::Server;

AtClient::Lines AtClient::told;

namespace {

std::vector<std::string> *lines = nullptr;

void tell(std::string line)
{
    lines->push_back(std::move(line));
}

void onWaiting(void *, uint32_t atMostMs)
{
    tell("waiting " + std::to_string(atMostMs) + ClientLastError());
}

void onReport(void *, const char *text)
{
    tell(std::string("report ") + text);
}

void onPort(void *, int isOpen, const char *why)
{
    tell(std::string("port ") + (isOpen != 0 ? "open " : "down ") + why);
}

void onLost(void *, uint32_t messages)
{
    tell("lost " + std::to_string(messages));
}

void onTrace(void *, const char *event)
{
    tell(std::string("trace ") + event);
}

uint32_t onLibrary(AtClientRes *report)
{
    tell(std::string("library ") + report->aucDataBuf);
    return 0;
}

} // namespace

const ClientObserver AtClient::kTellAll{onWaiting, onReport, onPort, onLost, onTrace, nullptr, nullptr};

int sendCommand(const char *command, Response &response)
{
    return ClientSendCmd(command, response.record.get(), kTimeoutMs);
}

int sendCommand(const char *command)
{
    Response response;
    return sendCommand(command, response);
}

void dispatch(int count)
{
    while (count > 0) {
        const int more = ClientDispatch(kLongMs);
        ASSERT_GT(more, 0) << ClientLastError();
        count -= more;
    }
}

void AtClient::SetUpTestSuite()
{
    static bool isDone = false; // in an earlier round of the same process
    if (std::exchange(isDone, true)) return;
    const processes::ScratchDirectory directory;
    const std::string path = directory / "at.sock";
    setenv(kSocketVariable, path.c_str(), 1);
    const Server server(path, [](Server &at) {
        Peer peer = at.accept();
        peer.welcome();
        peer.reply(peer.expectCommand("AT"), "\r\nOK\r\n"); // with no subscription before it
        const Peer::Request request = peer.expect(Type::Subscribe);
        EXPECT_EQ(request.value, kHearReports);
        peer.send({.type = Type::Status, .id = request.id, .value = request.value, .text = "{}"});
        peer.reply(peer.expectCommand("AT+CSQ"), "\r\nOK\r\n"); // with no second one
    });
    EXPECT_EQ(sendCommand("AT"), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(ClientInit("queue"), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(ClientInit("queue"), CLIENT_OK) << ClientLastError();
    EXPECT_EQ(sendCommand("AT+CSQ"), CLIENT_OK) << ClientLastError();
}

void AtClient::SetUp()
{
    lines = &told;
    told.clear();
    setenv(kSocketVariable, path_.c_str(), 1);
    ClientSetObserver(&kTellAll);
    SetClientProcRecvCallback(onLibrary);
}

void AtClient::TearDown()
{
    unsetenv(CLIENT_PATIENCE_VARIABLE);
    ClientClose();
}
