#include "host/protocol/at_protocol.h"

#include <algorithm>

namespace host::protocol {
namespace {

void putNumber(char *at, size_t bytes, uint32_t number)
{
    for (size_t i = 0; i < bytes; ++i)
        at[i] = static_cast<char>(number >> (8 * i) & 0xFFU);
}

uint32_t numberAt(std::string_view packet, size_t offset, size_t bytes)
{
    uint32_t number = 0;
    for (size_t i = bytes; i-- > 0;)
        number = number << 8U | static_cast<unsigned char>(packet[offset + i]);
    return number;
}

bool isKnown(Type type)
{
    return (type >= Type::Command && type <= Type::GetStatus) || (type >= Type::Welcome && type <= Type::Trace);
}

} // namespace

Packet::Packet(const Message &message) : size_(kHeaderSize + std::min(message.text.size(), kMaxText))
{
    bytes_[0] = static_cast<char>(kVersion);
    bytes_[1] = static_cast<char>(message.type);
    putNumber(&bytes_[2], 2, static_cast<uint32_t>(message.cause));
    putNumber(&bytes_[4], 4, message.id);
    putNumber(&bytes_[8], 4, message.value);
    std::copy_n(message.text.begin(), size_ - kHeaderSize, &bytes_[kHeaderSize]);
}

std::optional<Message> decode(std::string_view packet)
{
    if (packet.size() < kHeaderSize || packet.size() > kMaxPacket) return std::nullopt;
    if (static_cast<uint8_t>(packet[0]) != kVersion) return std::nullopt;
    const auto type = static_cast<Type>(static_cast<uint8_t>(packet[1]));
    if (!isKnown(type)) return std::nullopt;
    return Message{type, static_cast<Cause>(numberAt(packet, 2, 2)), numberAt(packet, 4, 4), numberAt(packet, 8, 4),
                   packet.substr(kHeaderSize)};
}

} // namespace host::protocol
