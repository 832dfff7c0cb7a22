#include "server_under_test.h"

#include <gtest/gtest.h>

using host::protocol::Cause;
using host::protocol::Type;
using processes::AtSocket;
using processes::Received;

namespace {

std::string signal(const std::string &command)
{
    return command == "AT+CSQ" ? "\r\n+CSQ: 20,99\r\n\r\nOK\r\n" : "\r\nERROR\r\n";
}

TEST(Server, HandsCommandsAndRepliesOn)
{
    const ServerUnderTest test(answering(signal));
    AtSocket client(test.socket());
    EXPECT_EQ(client.opening().type, Type::Welcome);
    const Received reply = client.run("AT+CSQ");
    EXPECT_EQ(reply.type, Type::Reply) << reply.text;
    EXPECT_EQ(reply.text, "\r\n+CSQ: 20,99\r\n\r\nOK\r\n");
    EXPECT_EQ(client.run("AT+NONE").text, "\r\nERROR\r\n");
}

} // namespace
