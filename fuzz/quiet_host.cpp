// A host that has no modem and keeps no log, but reads every text that it is handed.

#include <cstdarg>
#include <cstdio>

#include <mainControl/host.h>

int ClientSendCmd(const char * /*command*/, AtClientRes * /*response*/, int32_t /*timeoutMs*/)
{
    return -1;
}

int ClientInit(const char * /*queueName*/)
{
    return 0;
}

int SetClientProcRecvCallback(uint32_t (* /*callback*/)(AtClientRes *))
{
    return 0;
}

int CODE_Usc2orGsm7ToAscDecode(const char * /*sourceHex*/, char * /*destination*/, int32_t /*zero*/)
{
    return 0;
}

int CODE_InvertNumbers(const char * /*source*/, char * /*destination*/, int32_t /*sourceLength*/)
{
    return -1;
}

void kora_log_append(const char * /*sourceModule*/, int32_t /*line*/, const char * /*logFile*/, const char *format, ...)
{
    char start[16];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(start, sizeof start, format, arguments);
    va_end(arguments);
}
