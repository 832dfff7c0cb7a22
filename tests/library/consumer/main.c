/* The smallest host: a modem that always says OK, and no log. It prints the version of the headers. */
#include <stdio.h>
#include <string.h>

#include <mainControl/mainControl.h>

int ClientSendCmd(const char *command, AtClientRes *response, int32_t timeoutMs)
{
    (void)command;
    (void)timeoutMs;
    strcpy(response->aucDataBuf, "\r\nOK\r\n");
    return 0;
}

int ClientInit(const char *queueName)
{
    (void)queueName;
    return -1;
}

int SetClientProcRecvCallback(uint32_t (*callback)(AtClientRes *))
{
    (void)callback;
    return -1;
}

int CODE_Usc2orGsm7ToAscDecode(const char *sourceHex, char *destination, int32_t zero)
{
    (void)sourceHex;
    (void)destination;
    (void)zero;
    return 0;
}

int CODE_InvertNumbers(const char *source, char *destination, int32_t sourceLength)
{
    (void)source;
    (void)destination;
    (void)sourceLength;
    return -1;
}

void kora_log_append(const char *sourceModule, int32_t line, const char *logFile, const char *format, ...)
{
    (void)sourceModule;
    (void)line;
    (void)logFile;
    (void)format;
}

#if MAINCONTROL_VERSION_NUMBER < MAINCONTROL_VERSION_OF(0, 1, 0) ||                                                    \
    MAINCONTROL_VERSION_OF(0, 2, 0) < MAINCONTROL_VERSION_OF(0, 1, 9)
#error "versions are not in order"
#endif

int main(void)
{
    puts(MAINCONTROL_VERSION_STRING);
    KR_setCurrentPlatform(PF_QC_LTE);
    return KR_startAT() == UNI_ERROR_SUCCESS ? 0 : 1;
}
