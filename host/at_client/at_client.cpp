#include "at_client.h"

#include <unistd.h>

#include "client.h"
#include "interruption.h"

using namespace host;
using at_client::Client;
using at_client::Interruptible;
using at_client::Outcome;

namespace {

/** Lives as long as the process, since a thread may still be in a call while it ends. */
Client &client()
{
    static auto *const only = new Client;
    static pid_t owner = getpid();
    if (owner != getpid()) {
        owner = getpid();
        only->leaveToParent();
    }
    return *only;
}

/** One call: not from within another one, and interruptible from its start. */
template <typename Work>
int call(Work work)
{
    Client &self = client();
    const Interruptible whole;
    self.last = self.isTelling() ? Outcome{CLIENT_NESTED, "called from within waiting() or reply()"} : work(self);
    return self.last.result;
}

} // namespace

int ClientSendCmd(const char *command, AtClientRes *response, int32_t timeoutMs)
{
    return call([=](Client &self) { return self.send(command, timeoutMs, response->aucDataBuf); });
}

int ClientInit(const char *)
{
    return call([](Client &self) { return self.hear(protocol::kHearReports, true); });
}

int SetClientProcRecvCallback(uint32_t (*callback)(AtClientRes *report))
{
    client().setReport(callback);
    return CLIENT_OK;
}

int ClientLastResult(void)
{
    return client().last.result;
}

const char *ClientLastError(void)
{
    return client().last.text.c_str();
}

int ClientDispatch(int32_t timeoutMs)
{
    int delivered = -1;
    call([&](Client &self) {
        if (self.isDispatching()) return Outcome{CLIENT_NESTED, "called from within ClientDispatch()"};
        Outcome outcome;
        delivered = self.dispatch(timeoutMs, outcome);
        if (outcome.result == CLIENT_INTERRUPTED) outcome = {};
        if (delivered == 0 && outcome.isFailure()) delivered = -1;
        return outcome;
    });
    return delivered;
}

int ClientFd(void)
{
    return client().fd();
}

int ClientStatus(char *json, size_t size)
{
    return call([=](Client &self) { return self.status(json, size); });
}

void ClientInterrupt(void)
{
    at_client::interrupt();
}

void ClientClose(void)
{
    if (!client().isTelling()) client().close();
}

void ClientSetObserver(const ClientObserver *observer)
{
    client().setObserver(observer != nullptr ? *observer : ClientObserver{});
}

int ClientTrace(int on)
{
    return call([=](Client &self) { return self.hear(protocol::kHearTrace, on != 0); });
}
