/** The server: clients on one side, the dialogue with the modem on the other. */
#ifndef HOST_AT_SERVER_SERVER_H
#define HOST_AT_SERVER_SERVER_H

#include <list>
#include <string>
#include <vector>

#include <unistd.h>

#include "host/at_server/access.h"
#include "host/at_server/client_session.h"
#include "host/at_server/code_gate.h"
#include "host/at_server/dialogue.h"
#include "host/at_server/listener.h"
#include "host/at_server/options.h"
#include "host/at_server/service_manager.h"
#include "host/at_server/shares.h"
#include "host/at_server/transcript.h"
#include "host/at_server/tty_port.h"
#include "host/event_loop/event_loop.h"

namespace host::at_server {

class Server {
  public:
    Server(EventLoop &loop, const Options &options);

    /** Opens the record, the socket and the port.
     *  @return what is wrong; empty on success */
    std::string start();

  private:
    ClientSession::Calls sessionCalls(const Peer &peer);
    CodeGate::Calls gateCalls();
    Dialogue::Calls dialogueCalls();
    TtyPort::Calls portCalls();

    Shares::Clients clients() const;
    Ticket submit(Command command, CodeGate::TellHeld tellHeld);
    void letGo(uint64_t session);
    void accepted(int fd, const Peer &peer);
    void refuse(int fd, const Peer &peer, std::string_view why);
    void noteRefusal(const std::string &whom, std::string_view why);
    void tellRefusals();
    void gone(ClientSession &session);
    void tellAll(protocol::Hear what, const protocol::Message &message);
    void findTracers();
    protocol::Message portMessage() const;
    std::string status(at::Rights rights) const;
    void sent(std::string_view bytes, uint32_t client);
    void heard(std::string_view raw, LineIs what, std::string_view command);
    void commandFailed(std::string_view command, std::string_view why);
    void stop();

    EventLoop &loop_;
    const Options options_;
    const std::chrono::steady_clock::time_point startedAt_ = std::chrono::steady_clock::now();
    ServiceManager manager_;
    const Shares shares_;
    Transcript transcript_;
    TtyPort port_;
    LoopTime time_;
    Dialogue dialogue_;
    CodeGate codeGate_;
    Timer codeGateTimer_;
    Access access_{geteuid()};
    std::list<ClientSession> sessions_;
    uint64_t lastSession_ = 0;
    Listener listener_;
    std::vector<SignalWatch> endings_;
    SignalWatch hangUp_;
    unsigned refusals_ = 0; ///< that have not been told
    Timer refusalsTimer_;
};

} // namespace host::at_server

#endif
