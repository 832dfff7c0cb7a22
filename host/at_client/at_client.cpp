#include "host/at_client/at_client.h"

#include <algorithm>
#include <atomic>
#include <string_view>

#include <pthread.h>
#include <unistd.h>

#include "host/at_client/client.h"
#include "host/at_client/interruption.h"

using namespace host;
using at_client::Client;
using at_client::Interruptible;
using at_client::Outcome;

namespace {

/** The thread that is in a call; none if 0. */
std::atomic<pthread_t> g_caller{};

/** Lives as long as the process, since a thread may still be in a call while it ends. */
Client &client()
{
    static auto *const only = new Client;
    static pid_t owner = getpid();
    if (owner != getpid()) {
        owner = getpid();
        g_caller = pthread_t{}; // whoever that was, it is not here
        only->leaveToParent();
    }
    return *only;
}

/** The way into a call for one thread at a time, also again from the callbacks of its call. */
class Calling {
  public:
    explicit Calling(const Client & /*makes sure that it is ours*/)
    {
        pthread_t caller{};
        isOutermost_ = g_caller.compare_exchange_strong(caller, pthread_self());
        isAlone_ = isOutermost_ || pthread_equal(caller, pthread_self()) != 0;
    }
    ~Calling()
    {
        if (isOutermost_) g_caller = pthread_t{};
    }
    Calling(const Calling &) = delete;
    Calling &operator=(const Calling &) = delete;

    /** Whether no other thread is in a call. */
    [[nodiscard]] bool isAlone() const { return isAlone_; }

  private:
    bool isOutermost_ = false;
    bool isAlone_ = false;
};

/** One call: not from within another one, and interruptible from its start. */
template <typename Work>
int call(Work work)
{
    Client &self = client();
    const Calling calling(self);
    if (!calling.isAlone()) return CLIENT_OTHER_THREAD;
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
    const Calling calling(client());
    if (!calling.isAlone()) return CLIENT_OTHER_THREAD;
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
    const Calling calling(client());
    return calling.isAlone() ? client().fd() : -1;
}

int ClientStatus(char *json, size_t size)
{
    return call([=](Client &self) { return self.status(json, size); });
}

int ClientIsSafeInQuotes(const char *text)
{
    if (text == nullptr) return 0;
    const std::string_view all = text;
    // A backslash begins an escape for some modems, and others drop the highest bit.
    const auto isSafe = [](char character) {
        return character >= ' ' && character <= '~' && character != '"' && character != '\\';
    };
    return all.size() <= protocol::kMaxCommand && std::all_of(all.begin(), all.end(), isSafe) ? 1 : 0;
}

void ClientInterrupt(void)
{
    at_client::interrupt();
}

void ClientClose(void)
{
    const Calling calling(client());
    if (calling.isAlone() && !client().isTelling()) client().close();
}

void ClientSetObserver(const ClientObserver *observer)
{
    const Calling calling(client());
    if (calling.isAlone()) client().setObserver(observer != nullptr ? *observer : ClientObserver{});
}

int ClientTrace(int on)
{
    return call([=](Client &self) { return self.hear(protocol::kHearTrace, on != 0); });
}
