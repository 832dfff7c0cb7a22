/** The client behind the C interface: one connection, one inbox, one request at a time. */
#ifndef HOST_AT_CLIENT_CLIENT_H
#define HOST_AT_CLIENT_CLIENT_H

#include <chrono>
#include <cstdint>
#include <string>
#include <type_traits>

#include <sys/types.h>

#include "host/at_client/at_client.h"
#include "host/at_client/connection.h"
#include "host/at_client/inbox.h"

namespace host::at_client {

/** A CLIENT_... result, and what to tell people about a failure. */
struct Outcome {
    int result = CLIENT_OK;
    std::string text;

    bool isFailure() const { return result != CLIENT_OK; }
};

class Client {
  public:
    using Report = uint32_t (*)(AtClientRes *);

    Client();

    Outcome send(const char *command, int32_t timeoutMs, char *reply);
    Outcome status(char *json, size_t size);
    Outcome hear(protocol::Hear what, bool isWanted);
    /** @param outcome  out, of the connection
     *  @return how many were delivered */
    int dispatch(int32_t timeoutMs, Outcome &outcome);
    void close();
    int fd();

    void setReport(Report report) { report_ = report; }
    void setObserver(const ClientObserver &observer) { observer_ = observer; }
    /** Whether the observer is being told something in the midst of a call, in which no other call is possible. */
    bool isTelling() const { return isTelling_; }
    bool isDispatching() const { return isDispatching_; }
    /** A child of fork() leaves its parent's connection alone and begins with none. */
    void leaveToParent();

    Outcome last; ///< of the last call

  private:
    using State = Connection::State;

    Outcome connect();
    Outcome greet();
    Outcome subscribe();
    Outcome subscribeToRest(const Outcome &refusal);
    Outcome refresh();
    Outcome ensureConnected();
    State post(protocol::Message &request);
    Outcome ask(protocol::Message request, std::chrono::milliseconds itself, protocol::Message &answer);
    void giveUp(uint32_t id);
    Outcome answerTo(uint32_t id, std::chrono::milliseconds itself, protocol::Message &answer);
    template <typename... Arguments>
    void tell(void (*call)(void *, Arguments...), std::type_identity_t<Arguments>... arguments);
    Outcome drop(const Outcome &outcome);
    Outcome broken(State state);
    Outcome refusal(const protocol::Message &failure);
    bool keep(const protocol::Message &message);
    Outcome await(Clock::time_point deadline);
    State takeIn(Clock::time_point deadline);
    int deliver();
    void deliver(const Inbox::Entry &entry);

    Connection connection_;
    Readiness readiness_;
    Inbox inbox_;
    std::string path_;                   ///< of the server's socket
    std::chrono::milliseconds patience_; ///< with the server itself
    uint32_t wanted_ = protocol::kHearNothing;
    uint32_t heard_ = protocol::kHearNothing; ///< as the connection knows
    uint32_t lastId_ = 0;
    ClientObserver observer_{};
    Report report_ = nullptr;
    AtClientRes reportRecord_{}; ///< what report_ gets
    bool isTelling_ = false;
    bool isDispatching_ = false;
};

} // namespace host::at_client

#endif
