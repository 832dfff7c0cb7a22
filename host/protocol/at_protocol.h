/** How a client and the AT server talk: messages over a Unix socket of type SOCK_SEQPACKET, one message a packet.
 *
 *  A message is a header of 12 bytes and a text, which is the rest of its packet. Numbers are little-endian.
 *
 *  | offset | size | field   |                                                                  |
 *  |--------|------|---------|------------------------------------------------------------------|
 *  | 0      | 1    | version | 1                                                                |
 *  | 1      | 1    | type    | Type                                                             |
 *  | 2      | 2    | cause   | Cause in a failure, otherwise 0                                  |
 *  | 4      | 4    | id      | chosen by the client for each of its requests; 0 without request |
 *  | 8      | 4    | value   | by type                                                          |
 *
 *  The server opens with a welcome, or with a failure (refused, too many clients) and the end of the connection. Then
 *  the client sends requests, each with an id that none of its unanswered requests has. A command is answered by one
 *  reply or one failure, after any number of waiting messages; a subscription or status request by a status, or a
 *  failure. Commands go to the modem one at a time; users take turns, and so do the clients of each, with their commands
 *  in the order in which they sent them. A client that closes its socket gives up all that it has asked for. One that
 *  waits for nothing may lose its place to another: a failure (refused) and the end of the connection. A message that
 *  cannot be read is answered by a failure (protocol) and the same end, and does not disturb other clients. */
#ifndef HOST_PROTOCOL_AT_PROTOCOL_H
#define HOST_PROTOCOL_AT_PROTOCOL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "host/wiped/wiped_buffer.h"

namespace host::protocol {

constexpr uint8_t kVersion = 1;
constexpr size_t kHeaderSize = 12;
constexpr size_t kMaxCommand = 1023;                    ///< characters of a command
constexpr size_t kMaxText = 10239;                      ///< characters of a reply, a report or any other text
constexpr size_t kMaxPacket = kHeaderSize + kMaxText;   ///< bytes
constexpr const char *kSocketVariable = "KR_AT_SERVER"; ///< environment variable with the path of the socket
constexpr const char *kDefaultSocket = "/run/kr-at-server/at.sock";

enum class Type : uint8_t {
    // from a client
    Command = 1,   ///< text: the command without its carriage return; value: time-out in ms from its start on the wire,
                   ///< held to what the server allows, 100 ms to an hour unless it is told otherwise
    Cancel = 2,    ///< id: of a command, which is answered by a failure (cancelled); without effect if it is done
    Subscribe = 3, ///< value: what to hear from now on, a sum of Hear
    GetStatus = 4,
    // from the server
    Welcome = 16, ///< value: process id of the server; text: its version
    Reply = 17,   ///< text: the reply in standard framing
    Failure = 18, ///< cause; text: what happened, for people
    Waiting = 19, ///< value: ms that what comes before this command may still take; told again when that has changed;
                  ///< text: what that is, unless it is other clients' commands
    Status = 20,  ///< text: a JSON object; value of a subscription's answer as asked
    Report = 21,  ///< text: one unsolicited report in standard framing
    Port = 22,    ///< value: 1 the modem's port is open, 0 it is not; text: why
    Lost = 23,    ///< value: how many messages this client has not been sent because it did not read
    Trace = 24,   ///< text: one event of the transcript as --record writes it, a JSON object, secrets masked
};

/** What a client can subscribe to. */
enum Hear : uint32_t {
    kHearNothing = 0,
    kHearReports = 1, ///< Report and Port
    kHearTrace = 2,   ///< Trace
};

enum class Cause : uint16_t {
    None = 0,
    Refused = 1,      ///< the peer is not on the allow list, there are too many, or another one wants its place
    BadCommand = 2,   ///< without AT at its beginning, with a control character, too long, or empty
    PortDown = 3,     ///< the port is not open, or went away while the command ran
    TimedOut = 4,     ///< no final result in time, or no agreement with the modem before the command's turn
    ReplyTooLong = 5, ///< more than kMaxText characters
    Cancelled = 6,
    QueueFull = 7,   ///< too many commands wait
    Stopping = 8,    ///< the server ends
    Protocol = 9,    ///< a message that cannot be read
    NotAllowed = 10, ///< the client has not the right to ask for this; the text says who has
    Mismatched = 11, ///< the modem sent what belongs to another command, or nothing that shows which one it answers
};

struct Message {
    Type type{};
    Cause cause = Cause::None;
    uint32_t id = 0;
    uint32_t value = 0;
    std::string_view text; ///< of a decoded message: within the packet

    friend bool operator==(const Message &, const Message &) = default;
};

/** One packet, ready to be sent. It is wiped when it goes, since a PIN may be in it. */
class Packet {
  public:
    /** A text beyond kMaxText is cut. */
    explicit Packet(const Message &message);

    const char *data() const { return bytes_.data(); }
    size_t size() const { return size_; }

  private:
    WipedBuffer<kMaxPacket> bytes_;
    size_t size_;
};

/** @return nothing for a packet that is too short or too long, of another version or of an unknown type */
std::optional<Message> decode(std::string_view packet);

} // namespace host::protocol

#endif
