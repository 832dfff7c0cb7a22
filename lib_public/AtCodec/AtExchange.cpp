#include "lib_public/AtCodec/AtExchange.h"

#include <cstdio>
#include <cstring>

#include <mainControl/host.h>

#include "lib_public/ATPreprocess/reply_parser.h"
#include "lib_public/support/fast_search.h"

namespace mainControl {

bool AtExchange::ok(const char *command)
{
    return send(kDefaultTimeoutMs, command) && parseOk();
}

bool AtExchange::okFormatted(const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const bool sent = sendList(kDefaultTimeoutMs, format, arguments);
    va_end(arguments);
    return sent && parseOk();
}

bool AtExchange::okWithin(int32_t timeoutMs, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const bool sent = sendList(timeoutMs, format, arguments);
    va_end(arguments);
    return sent && parseOk();
}

bool AtExchange::sendFormatted(int32_t timeoutMs, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const bool sent = sendList(timeoutMs, format, arguments);
    va_end(arguments);
    return sent;
}

bool AtExchange::sendList(int32_t timeoutMs, const char *format, std::va_list arguments)
{
    const int length = std::vsnprintf(paras_, kCommandRoom, format, arguments);
    return length >= 0 && length < static_cast<int>(kCommandRoom) && send(timeoutMs, paras_);
}

bool AtExchange::send(int32_t timeoutMs, const char *command)
{
    result_ = 0;
    raw_.header[0] = 0;
    raw_.header[1] = 0;
    clear(raw_.aucDataBuf);
    if (strnlen(command, kCommandRoom) == kCommandRoom) return false;
    if (ClientSendCmd(command, &raw_, timeoutMs) != 0) return false;
    raw_.aucDataBuf[kReplyLength] = '\0';
    return true;
}

bool AtExchange::parse()
{
    paras_[0] = '\0';
    ParsedReply parsed;
    const ParasDestination paras{paras_, sizeof paras_, ParasDestination::Kind::OwnText};
    if (parseReply(raw_.aucDataBuf, paras, parsed) != UNI_ERROR_SUCCESS) return false;
    result_ = parsed.result;
    parasSize_ = parsed.parasSize;
    return true;
}

bool AtExchange::parseOk()
{
    return parse() && isOk();
}

Ending AtExchange::end(bool isSent)
{
    if (!isSent) return Ending::NotSent;
    if (!parse()) return Ending::NotParsed;
    return isOk() ? Ending::Ok : Ending::Refused;
}

bool AtExchange::takeScan()
{
    if (findOutsideQuotes(spanOf(raw_.aucDataBuf), "\r\nOK\r\n") == nullptr) return false;
    result_ = AT_RES_RESULT_OK;
    return true;
}

void AtExchange::copyParas(char *output) const
{
    copy(output, paras_, parasSize_ + 1);
}

} // namespace mainControl
