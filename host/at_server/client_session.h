/** One client's connection: its requests, and the messages for it, which wait in bounded number while it does not
 *  read. */
#ifndef HOST_AT_SERVER_CLIENT_SESSION_H
#define HOST_AT_SERVER_CLIENT_SESSION_H

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include <sys/types.h>

#include "host/at/rights.h"
#include "host/at_server/code_gate.h"
#include "host/at_server/command_queue.h"
#include "host/at_server/shares.h"
#include "host/event_loop/event_loop.h"
#include "host/protocol/at_protocol.h"

namespace host::at_server {

class ClientSession {
  public:
    static constexpr size_t kMaxUnanswered = 16; ///< commands

    /** What it asks of the server. */
    struct Calls {
        std::function<Ticket(Command, CodeGate::TellHeld)> submit;
        std::function<void(Ticket)> withdraw;
        std::function<std::string()> status;
        /** @param what  the command that needs these rights; empty for something else
         *  @return why not; empty if the client may do it */
        std::function<std::string(at::Rights needed, std::string_view what)> refusal;
        std::function<protocol::Message()> port;   ///< the present state of the port
        std::function<void(ClientSession &)> gone; ///< ends the session's life
    };

    struct Client {
        uint64_t session; ///< never 0
        pid_t pid;
        uid_t user;
        std::chrono::milliseconds longestTimeout; ///< that it may ask for
    };

    /** @param fd  taken over */
    ClientSession(EventLoop &loop, int fd, const Client &client, Calls calls);
    /** Withdraws what it has asked for. */
    ~ClientSession();
    ClientSession(const ClientSession &) = delete;
    ClientSession &operator=(const ClientSession &) = delete;

    /** Says no to a client that never becomes a session, and closes its socket. */
    static void refuse(int fd, std::string_view why);

    void welcome();

    const Client &client() const { return client_; }

    bool hears(protocol::Hear what) const { return (hears_ & what) != 0; }
    /** How its user's share is reckoned. */
    Shares::Client share() const;
    /** Ends the connection of a client whose place another one gets. */
    void letGo();

    /** Something that was subscribed to; counted instead of sent while too much waits. */
    void tell(const protocol::Message &message);

  private:
    void readRequests();
    /** @return whether the connection goes on */
    bool take(const protocol::Message &request);
    bool takeCommand(const protocol::Message &request);
    bool takeSubscription(const protocol::Message &request);
    void runCommand(const protocol::Message &request);
    void takeCancel(uint32_t id);
    void answerStatus(const protocol::Message &request);
    void fail(uint32_t id, protocol::Cause cause, std::string_view why);
    void finished(uint32_t id, const Outcome &outcome);

    void send(const protocol::Message &message);
    void writeMore();
    void tellLost();
    bool isFull() const;
    void endWith(protocol::Cause cause, std::string_view why);

    EventLoop &loop_;
    const int fd_;
    const Client client_;
    const Calls calls_;
    uint32_t hears_ = protocol::kHearNothing;
    std::map<uint32_t, Ticket> unanswered_;
    Shares::Clock::time_point lastHeardAt_ = Shares::Clock::now(); ///< or answered
    std::deque<std::string> unsent_;
    size_t unsentBytes_ = 0;
    uint32_t lost_ = 0;
    ReadWatch readWatch_;
    WriteWatch writeWatch_;
};

} // namespace host::at_server

#endif
