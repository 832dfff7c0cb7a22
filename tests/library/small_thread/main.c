/* Calls every exported function on a thread with the stack that musl gives by default, with a host that answers as a
 * modem does, refuses, or talks nonsense. */
#define _GNU_SOURCE
#include <pthread.h>
#include <stdio.h>
#include <string.h>

#include <mainControl/mainControl.h>

#include "tests/support/every_function.h"

enum { kSmallStack = 128 * 1024 };

static const char *const kReplies[] = {
    "\r\nOK\r\n", "\r\nERROR\r\n", "\r\n+CME ERROR: 10\r\n", "\r\n+X: 1,2,\"a\",3\r\n\r\nOK\r\n", "460001234567890",
};

static const char *theReply;
static size_t callsDone;

static void *callAll(void *unused)
{
    size_t count = 0;
    const EveryFunction *const rows = everyFunction(&count);
    for (size_t reply = 0; reply < sizeof kReplies / sizeof kReplies[0]; ++reply) {
        theReply = kReplies[reply];
        setEveryText(theReply);
        for (int32_t platform = 0; platform <= PF_SPEADTRUM; ++platform) {
            g_currentPlatform = platform;
            for (size_t i = 0; i < count; ++i) {
                (void)rows[i].call();
                ++callsDone;
            }
        }
    }
    return unused;
}

/* The default of the C library where that is musl, and as much elsewhere. */
static size_t giveSmallStack(pthread_attr_t *attributes)
{
    size_t size = 0;
    pthread_attr_init(attributes);
    pthread_attr_getstacksize(attributes, &size);
    if (size > kSmallStack) pthread_attr_setstacksize(attributes, kSmallStack);
    pthread_attr_getstacksize(attributes, &size);
    return size;
}

int main(void)
{
    pthread_attr_t attributes;
    const size_t stack = giveSmallStack(&attributes);
    pthread_t thread;
    if (pthread_create(&thread, &attributes, callAll, NULL) != 0 || pthread_join(thread, NULL) != 0) {
        puts("FAILED: no thread");
        return 1;
    }
    size_t count = 0;
    (void)everyFunction(&count);
    printf("%zu calls of %zu functions on a stack of %zu bytes\n", callsDone, count, stack);
    return stack == kSmallStack && callsDone >= 5 * 6 * count ? 0 : 1;
}

int ClientSendCmd(const char *command, AtClientRes *response, int32_t timeoutMs)
{
    (void)command;
    (void)timeoutMs;
    strcpy(response->aucDataBuf, theReply);
    return 0;
}

int ClientInit(const char *queueName)
{
    (void)queueName;
    return 0;
}

int SetClientProcRecvCallback(uint32_t (*callback)(AtClientRes *report))
{
    (void)callback;
    return 0;
}

int CODE_Usc2orGsm7ToAscDecode(const char *sourceHex, char *destination, int32_t zero)
{
    (void)sourceHex;
    (void)zero;
    strcpy(destination, "decoded");
    return 1;
}

int CODE_InvertNumbers(const char *source, char *destination, int32_t sourceLength)
{
    memcpy(destination, source, (size_t)sourceLength);
    return 0;
}

void kora_log_append(const char *sourceModule, int32_t line, const char *logFile, const char *format, ...)
{
    (void)sourceModule;
    (void)line;
    (void)logFile;
    (void)format;
}
