#include "host/at_server/server.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <utility>

#include "host/at_server/json_texts.h"
#include "host/at_server/server_log.h"
#include "host/masking/masking.h"

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

using protocol::Cause;
using protocol::Message;
using protocol::Type;

constexpr size_t kMaxClients = 32;
constexpr std::array kEndings{SIGTERM, SIGINT, SIGQUIT, SIGALRM, SIGUSR1, SIGUSR2};

} // namespace

Server::Server(EventLoop &loop, const Options &options)
    : loop_(loop), options_(options), transcript_([this](std::string_view json) {
          tellAll(protocol::kHearTrace, {Type::Trace, Cause::None, 0, 0, json});
      }),
      port_(loop, options.device, options.baud, portCalls()), time_(loop),
      dialogue_(time_, {options.family, options.quiet, options.answer, options.linger, options.echo}, dialogueCalls()),
      listener_(loop, [this](int fd, const Peer &peer) { accepted(fd, peer); }),
      hangUp_(loop, SIGHUP, [this] { transcript_.reopen(); }), refusalsTimer_(loop, [this] { tellRefusals(); })
{
    for (const int signal : kEndings)
        endings_.emplace_back(loop, signal, [this] { stop(); });
}

std::string Server::start()
{
    std::string failure = listener_.listen(options_.socket, options_.group);
    if (failure.empty() && !options_.record.empty())
        failure = transcript_.open(options_.record, options_.recordsSecrets);
    if (!failure.empty()) return failure;
    log(LogLevel::Info, {"ready on ", options_.socket});
    port_.start();
    return {};
}

void Server::stop()
{
    log(LogLevel::Info, {"stopping"});
    dialogue_.failAll(Cause::Stopping, "the server is stopping");
    loop_.stop();
}

// The port

TtyPort::Calls Server::portCalls()
{
    TtyPort::Calls calls;
    calls.opened = [this] {
        log(LogLevel::Info, {port_.why()});
        transcript_.opened(port_.why());
        tellAll(protocol::kHearReports, portMessage());
        dialogue_.portOpened();
    };
    calls.closed = [this] {
        log(LogLevel::Warning, {port_.why(), "; it is tried again"});
        transcript_.closed(port_.why());
        tellAll(protocol::kHearReports, portMessage());
        dialogue_.portClosed(port_.why());
    };
    calls.received = [this](std::string_view bytes) { dialogue_.received(bytes); };
    calls.allReceived = [this] { dialogue_.allReceived(); };
    return calls;
}

Message Server::portMessage() const
{
    return {Type::Port, Cause::None, 0, port_.isOpen() ? 1U : 0U, port_.why()};
}

// The dialogue

Dialogue::Calls Server::dialogueCalls()
{
    Dialogue::Calls calls;
    calls.send = [this](std::string_view bytes, uint32_t client) {
        transcript_.sent(bytes, client);
        port_.write(bytes);
    };
    calls.isSending = [this] { return port_.isWriting(); };
    calls.receive = [this] { port_.receive(); };
    calls.setTerminalReady = [this](bool isReady) { port_.setTerminalReady(isReady); };
    calls.report = [this](const std::string &framed) {
        tellAll(protocol::kHearReports, {Type::Report, Cause::None, 0, 0, framed});
    };
    calls.heard = [this](std::string_view raw, LineIs what, std::string_view command) { heard(raw, what, command); };
    calls.failed = [this](std::string_view command, std::string_view why) { commandFailed(command, why); };
    return calls;
}

void Server::heard(std::string_view raw, LineIs what, std::string_view command)
{
    transcript_.received(raw, what, command);
    if (what != LineIs::Discarded) return;
    log(LogLevel::Info, {"discarded ", quoted(maskedReply(command, raw, Hide::SecretsAndIdentities))});
}

void Server::commandFailed(std::string_view command, std::string_view why)
{
    transcript_.failed(command, why);
    log(LogLevel::Warning, {quoted(maskedCommand(command, Hide::SecretsAndIdentities)), " failed: ", why});
}

// Clients

ClientSession::Calls Server::sessionCalls()
{
    ClientSession::Calls calls;
    calls.submit = [this](Command command) { return dialogue_.submit(std::move(command)); };
    calls.withdraw = [this](Ticket ticket) { dialogue_.withdraw(ticket); };
    calls.status = [this] {
        findTracers();
        return status();
    };
    calls.port = [this] { return portMessage(); };
    calls.gone = [this](ClientSession &session) { gone(session); };
    return calls;
}

void Server::accepted(int fd, const Peer &peer)
{
    const std::string name = "process " + std::to_string(peer.pid) + " of user " + std::to_string(peer.uid);
    if (!peer.isAllowed) {
        refuse(fd, name, "this user is neither root, nor that of the server, nor in its group");
        return;
    }
    if (sessions_.size() >= kMaxClients) {
        refuse(fd, name, "there are too many clients");
        return;
    }
    log(LogLevel::Debug, {"connected ", name});
    const ClientSession::Client client{++lastSession_, peer.pid, options_.longestTimeout};
    sessions_.emplace_back(loop_, fd, client, sessionCalls()).welcome();
}

/** The first is told at once, those of the next second together. */
void Server::refuse(int fd, const std::string &name, std::string_view why)
{
    ClientSession::refuse(fd, why);
    if (refusals_++ > 0) return;
    log(LogLevel::Warning, {"refused ", name, ": ", why});
    refusalsTimer_.start(1s);
}

void Server::tellRefusals()
{
    const unsigned untold = std::exchange(refusals_, 0) - 1;
    if (untold > 0) log(LogLevel::Warning, {"refused ", std::to_string(untold), " more within a second"});
}

void Server::gone(ClientSession &session)
{
    const auto place =
        std::find_if(sessions_.begin(), sessions_.end(), [&](const ClientSession &s) { return &s == &session; });
    std::list<ClientSession> ended; // which still acts while it ends, and is no longer among those who are told
    ended.splice(ended.end(), sessions_, place);
    findTracers();
}

void Server::tellAll(protocol::Hear what, const Message &message)
{
    for (ClientSession &session : sessions_)
        if (session.hears(what)) session.tell(message);
}

void Server::findTracers()
{
    transcript_.setTraced(std::any_of(sessions_.begin(), sessions_.end(), [](const ClientSession &session) {
        return session.hears(protocol::kHearTrace);
    }));
}

std::string Server::status() const
{
    Status status;
    status.device = options_.device;
    status.baud = options_.baud;
    status.isPortOpen = port_.isOpen();
    status.why = port_.why();
    if (const auto family = dialogue_.family()) status.family = nameOf(*family);
    if (const auto running = dialogue_.running())
        status.running = {maskedCommand(running->command, Hide::SecretsAndIdentities), running->remainingMs};
    status.isEchoed = dialogue_.isEchoEvidence();
    status.waiting = dialogue_.waiting();
    status.clients = sessions_.size();
    status.commands = dialogue_.commands();
    status.reports = dialogue_.reports();
    const auto uptime = std::chrono::steady_clock::now() - startedAt_;
    status.uptimeS = static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::seconds>(uptime).count());
    status.record = options_.record;
    return jsonOf(status);
}

} // namespace host::at_server
