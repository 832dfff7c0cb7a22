#include <array>
#include <new>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/protocol/at_protocol.h"

using namespace host::protocol;

namespace {

std::string bytesOf(const Message &message)
{
    const Packet packet(message);
    return {packet.data(), packet.size()};
}

std::string headerOf(uint8_t version, uint8_t type)
{
    std::string header(kHeaderSize, '\0');
    header[0] = static_cast<char>(version);
    header[1] = static_cast<char>(type);
    return header;
}

TEST(AtProtocol, LaysOutItsHeaderInLittleEndian)
{
    const std::string bytes = bytesOf({Type::Failure, Cause::TimedOut, 0x01020304, 0xA0B0C0D0, "late"});
    EXPECT_EQ(bytes, std::string("\x01\x12\x04\x00\x04\x03\x02\x01\xD0\xC0\xB0\xA0late", 16));
}

TEST(AtProtocol, WipesAPacketThatGoes)
{
    alignas(Packet) std::array<char, sizeof(Packet)> place{};
    auto *const packet = new (place.data()) Packet({Type::Command, Cause::None, 1, 5000, "AT+CPIN=4711"});
    const std::string_view bytes(place.data(), place.size());
    EXPECT_NE(bytes.find("4711"), std::string::npos);
    packet->~Packet();
    EXPECT_EQ(bytes.find("4711"), std::string::npos);
    EXPECT_EQ(bytes.find("AT+CPIN"), std::string::npos);
}

TEST(AtProtocol, ReadsWhatItWrites)
{
    for (const Type type :
         {Type::Command, Type::Cancel, Type::Subscribe, Type::GetStatus, Type::Welcome, Type::Reply, Type::Failure,
          Type::Waiting, Type::Status, Type::Report, Type::Port, Type::Lost, Type::Trace}) {
        const Message message{type, Cause::Protocol, 0xFFFFFFFF, 0x80000000, std::string_view("a\0b", 3)};
        const std::string bytes = bytesOf(message);
        const auto decoded = decode(bytes);
        ASSERT_TRUE(decoded);
        EXPECT_EQ(*decoded, message);
    }
}

TEST(AtProtocol, CutsATextThatNoPacketHolds)
{
    const std::string longText(kMaxText + 1, 'x');
    const std::string bytes = bytesOf({Type::Reply, Cause::None, 1, 0, longText});
    ASSERT_EQ(bytes.size(), kMaxPacket);
    const auto decoded = decode(bytes);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->text, std::string(kMaxText, 'x'));
}

TEST(AtProtocol, RefusesWhatItCannotRead)
{
    const std::string good = headerOf(kVersion, static_cast<uint8_t>(Type::Reply));
    EXPECT_TRUE(decode(good));
    EXPECT_FALSE(decode(""));
    EXPECT_FALSE(decode(good.substr(1)));
    EXPECT_FALSE(decode(good + std::string(kMaxText + 1, 'x')));
    EXPECT_FALSE(decode(headerOf(kVersion + 1, static_cast<uint8_t>(Type::Reply))));
    for (const int type : {0, 5, 15, 25, 255})
        EXPECT_FALSE(decode(headerOf(kVersion, static_cast<uint8_t>(type)))) << type;
}

} // namespace
