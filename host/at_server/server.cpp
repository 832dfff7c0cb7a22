#include "host/at_server/server.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <utility>

#include <unistd.h>

#include "host/at_server/json_texts.h"
#include "host/at_server/server_log.h"
#include "host/masking/masking.h"

using namespace std::chrono_literals;

namespace host::at_server {
namespace {

using protocol::Cause;
using protocol::Message;
using protocol::Type;

constexpr std::array kEndings{SIGTERM, SIGINT, SIGQUIT, SIGALRM, SIGUSR1, SIGUSR2};

std::string nameOf(pid_t process, uid_t user)
{
    return "process " + std::to_string(process) + " of user " + std::to_string(user);
}

std::string masked(std::string_view command)
{
    return quoted(maskedCommand(command, Hide::SecretsAndIdentities));
}

/** The file of the socket has one group; members of others come in as anybody does, and are looked at then. */
Door doorFor(const std::vector<Access::Group> &groups, const std::string &ownGroup)
{
    Door door;
    for (const Access::Group &group : groups) {
        if (group.name == ownGroup)
            door.group = group.id;
        else
            door.isOpenToAll = true;
    }
    return door;
}

} // namespace

Server::Server(EventLoop &loop, const Options &options)
    : loop_(loop), options_(options), manager_(loop), shares_(geteuid(), options.idle),
      transcript_([this](std::string_view json) {
          tellAll(protocol::kHearTrace, {Type::Trace, Cause::None, 0, 0, json});
      }),
      port_(loop, options.device, options.baud, portCalls()), time_(loop),
      dialogue_(time_, {options.family, options.quiet, options.answer, options.linger, options.echo, options.capitals},
                dialogueCalls()),
      codeGate_(options.codeWait, gateCalls()), codeGateTimer_(loop, [this] { codeGate_.goOn(); }),
      listener_(loop, [this](int fd, const Peer &peer) { accepted(fd, peer); }),
      hangUp_(loop, SIGHUP, [this] { transcript_.reopen(); }), refusalsTimer_(loop, [this] { tellRefusals(); })
{
    for (const int signal : kEndings)
        endings_.emplace_back(loop, signal, [this] { stop(); });
}

std::string Server::start()
{
    std::string failure;
    const std::vector<Access::Group> groups = groupsOf(options_.group, options_.allowances, failure);
    if (!failure.empty()) return failure;
    access_ = Access(geteuid(), groups);
    failure = listener_.listen(options_.socket, doorFor(groups, options_.group));
    if (failure.empty() && !options_.record.file.empty()) failure = transcript_.open(options_.record);
    if (!failure.empty()) return failure;
    log(LogLevel::Info, {"ready on ", options_.socket});
    port_.start();
    manager_.ready();
    return {};
}

void Server::stop()
{
    log(LogLevel::Info, {"stopping"});
    manager_.stopping();
    codeGate_.failAll(Cause::Stopping, "the server is stopping");
    dialogue_.failAll(Cause::Stopping, "the server is stopping");
    loop_.stop();
}

// The port

TtyPort::Calls Server::portCalls()
{
    TtyPort::Calls calls;
    calls.opened = [this] {
        log(LogLevel::Info, {port_.why()});
        manager_.setStatus(port_.why());
        transcript_.opened(port_.why());
        tellAll(protocol::kHearReports, portMessage());
        dialogue_.portOpened();
    };
    calls.closed = [this] {
        log(LogLevel::Warning, {port_.why(), "; it is tried again"});
        manager_.setStatus(port_.why());
        transcript_.closed(port_.why());
        tellAll(protocol::kHearReports, portMessage());
        codeGate_.failAll(Cause::PortDown, port_.why());
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
        sent(bytes, client);
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

void Server::sent(std::string_view bytes, uint32_t client)
{
    transcript_.sent(bytes, client);
    const std::string_view command = bytes.substr(0, bytes.find('\r'));
    if (client == 0 || !at::rightsFor(command).has(at::Right::Sim)) return;
    const auto process = static_cast<pid_t>(client);
    const auto session = std::find_if(sessions_.begin(), sessions_.end(), [&](const ClientSession &candidate) {
        return candidate.client().pid == process;
    });
    if (session == sessions_.end()) return;
    log(LogLevel::Notice, {nameOf(process, session->client().user), " sends ", masked(command)});
}

void Server::commandFailed(std::string_view command, std::string_view why)
{
    transcript_.failed(command, why);
    log(LogLevel::Warning, {masked(command), " failed: ", why});
}

// Clients

ClientSession::Calls Server::sessionCalls(const Peer &peer)
{
    const at::Rights rights = access_.rightsOf(peer.uid, peer.groups);
    ClientSession::Calls calls;
    calls.submit = [this](Command command, CodeGate::TellHeld tellHeld) {
        return submit(std::move(command), std::move(tellHeld));
    };
    calls.withdraw = [this](Ticket ticket) {
        if (!codeGate_.withdraw(ticket)) dialogue_.withdraw(ticket);
    };
    calls.status = [this, rights] {
        findTracers();
        return status(rights);
    };
    calls.refusal = [this, rights, name = nameOf(peer.pid, peer.uid)](at::Rights needed, std::string_view what) {
        std::string why = access_.refusal(rights, needed);
        if (!why.empty()) noteRefusal(what.empty() ? name : name + ' ' + masked(what), why);
        return why;
    };
    calls.port = [this] { return portMessage(); };
    calls.gone = [this](ClientSession &session) { gone(session); };
    return calls;
}

Shares::Clients Server::clients() const
{
    Shares::Clients clients;
    for (const ClientSession &session : sessions_)
        clients.push_back(session.share());
    return clients;
}

Ticket Server::submit(Command command, CodeGate::TellHeld tellHeld)
{
    const std::string_view refusal = shares_.refusalOfCommand(command.user, clients());
    if (!refusal.empty()) {
        command.done({Cause::QueueFull, std::string(refusal)});
        return 0;
    }
    const bool isForSim = at::rightsFor(command.text).has(at::Right::Sim);
    auto code = isForSim ? codeTryIn(command.text) : std::nullopt;
    if (!code) return dialogue_.submit(std::move(command));
    const uid_t user = command.user;
    return codeGate_.submit(user, std::move(command), std::move(*code), std::move(tellHeld));
}

CodeGate::Calls Server::gateCalls()
{
    CodeGate::Calls calls;
    calls.submit = [this](Command command) { return dialogue_.submit(std::move(command)); };
    calls.withdraw = [this](Ticket ticket) { dialogue_.withdraw(ticket); };
    calls.now = &CodeGate::Clock::now;
    calls.wakeIn = [this](std::chrono::milliseconds time) { codeGateTimer_.start(time); };
    calls.refused = [](uid_t user, std::chrono::milliseconds wait) {
        log(LogLevel::Notice, {"a code of user ", std::to_string(user), " was refused; the next one waits ",
                               std::to_string(wait.count()), " ms"});
    };
    return calls;
}

void Server::letGo(uint64_t session)
{
    const auto idle = std::find_if(sessions_.begin(), sessions_.end(),
                                   [&](const ClientSession &s) { return s.share().session == session; });
    idle->letGo();
}

void Server::accepted(int fd, const Peer &peer)
{
    if (access_.rightsOf(peer.uid, peer.groups).isEmpty()) {
        refuse(fd, peer, "this user is neither root, nor that of the server, nor in a group that it allows");
        return;
    }
    const Shares::Place place = shares_.placeFor(peer.uid, clients(), Shares::Clock::now());
    if (!place.refusal.empty()) {
        refuse(fd, peer, place.refusal);
        return;
    }
    if (place.letGo) letGo(*place.letGo);
    log(LogLevel::Debug, {"connected ", nameOf(peer.pid, peer.uid)});
    const ClientSession::Client client{++lastSession_, peer.pid, peer.uid, options_.longestTimeout};
    sessions_.emplace_back(loop_, fd, client, sessionCalls(peer)).welcome();
}

void Server::refuse(int fd, const Peer &peer, std::string_view why)
{
    ClientSession::refuse(fd, why);
    noteRefusal(nameOf(peer.pid, peer.uid), why);
}

/** The first is told at once, those of the next second together. */
void Server::noteRefusal(const std::string &whom, std::string_view why)
{
    if (refusals_++ > 0) return;
    log(LogLevel::Warning, {"refused ", whom, ": ", why});
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

std::string Server::status(at::Rights rights) const
{
    Status status;
    status.device = options_.device;
    status.baud = options_.baud;
    status.isPortOpen = port_.isOpen();
    status.why = port_.why();
    if (const auto family = dialogue_.family()) status.family = nameOf(*family);
    if (const auto running = dialogue_.running())
        status.running = {rights.has(at::Right::Trace) ? maskedCommand(running->command, Hide::SecretsAndIdentities)
                                                       : std::string(),
                          running->remainingMs};
    status.isEchoed = dialogue_.isEchoEvidence();
    status.waiting = dialogue_.waiting() + codeGate_.waiting();
    status.clients = sessions_.size();
    status.commands = dialogue_.commands();
    status.reports = dialogue_.reports();
    const auto uptime = std::chrono::steady_clock::now() - startedAt_;
    status.uptimeS = static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::seconds>(uptime).count());
    status.record = options_.record.file;
    status.rights = rights;
    return jsonOf(status);
}

} // namespace host::at_server
