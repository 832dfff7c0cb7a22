#include "tests/library/worst_replies.h"

#include <cstring>

#include <mainControl/mainControl.h>

#include "tests/support/every_function.h"

namespace {

std::string theReply;

} // namespace

std::vector<std::string> worstReplies()
{
    const std::string end = "\r\nOK\r\n";
    std::string growing = "\r\n+X: 1\r\n";
    while (growing.size() + 3 + end.size() <= 10239)
        growing += "a\r\n";
    std::string quoted = "\r\n+X: \"";
    quoted += std::string(10000, ',') + "\"\r\n";
    std::string scan;
    while (scan.size() < 10000)
        scan += "\r\n+COPS: 2,\"" + std::string(64, 'L') + "\",\"" + std::string(40, 'S') + "\",\"46000\",7\r\n";
    return {end,
            "\r\n+CME ERROR: 10\r\n",
            growing + end,
            quoted + end,
            "\r\n" + std::string(10239 - 10, '1') + "\r\n" + end,
            std::string(10239, '\r'),
            scan + end,
            "\r\n" + std::string(10000, ';') + "\r\n" + end};
}

void setEveryReply(const std::string &reply)
{
    theReply = reply;
    setEveryText(reply.c_str());
}

int ClientSendCmd(const char *, AtClientRes *response, int32_t)
{
    std::memcpy(response->aucDataBuf, theReply.data(), theReply.size());
    return 0;
}

int ClientInit(const char *)
{
    return 0;
}

int SetClientProcRecvCallback(uint32_t (*)(AtClientRes *))
{
    return 0;
}

int CODE_Usc2orGsm7ToAscDecode(const char *, char *, int32_t)
{
    return 1;
}

int CODE_InvertNumbers(const char *, char *, int32_t)
{
    return 0;
}

void kora_log_append(const char *, int32_t, const char *, const char *, ...) {}
