/* A host written in C: it sees the public headers, supplies the six host functions, and finds in the library every name
 * of the list of exports, each declared by a header, and every record in the size that both sides agree on. */

#include <dlfcn.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/codec.h>
#include <mainControl/host.h>
#include <mainControl/mainControl.h>
#include <mainControl/parser.h>
#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>
#include <mainControl/wrappers.h>

#define COUNT(array) (sizeof(array) / sizeof(array)[0])

static int failures;

static void expect(int isTrue, const char *what, const char *name)
{
    if (isTrue) return;
    fprintf(stderr, "%s: %s\n", what, name);
    ++failures;
}

/* The host. */

static char lastCommand[1024];
static int32_t lastTimeoutMs;
static int sendResult;
static const char *nextReply = "\r\nOK\r\n";
static char lastLogFormat[128];

int ClientSendCmd(const char *command, AtClientRes *response, int32_t timeoutMs)
{
    snprintf(lastCommand, sizeof lastCommand, "%s", command);
    lastTimeoutMs = timeoutMs;
    snprintf(response->aucDataBuf, sizeof response->aucDataBuf, "%s", nextReply);
    return sendResult;
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
    snprintf(lastLogFormat, sizeof lastLogFormat, "%s", format);
}

/* What the headers declare. */

typedef void (*AnyFunction)(void);

#define FUNCTION(name)                                                                                                 \
    {                                                                                                                  \
#name, (AnyFunction)(name)                                                                                     \
    }

static const struct {
    const char *name;
    AnyFunction address;
} kFunctions[] = {
#include "exported_functions.inc"
};

#define DATA(name)                                                                                                     \
    {                                                                                                                  \
#name, &(name)                                                                                                 \
    }

static const struct {
    const char *name;
    const void *address;
} kData[] = {
#include "exported_data.inc"
};

#define RECORD(name, size)                                                                                             \
    {                                                                                                                  \
#name, sizeof(name), (size)                                                                                    \
    }

static const struct {
    const char *name;
    size_t size;
    size_t agreed;
} kRecords[] = {
    RECORD(AtClientRes, 8 + 10240),
    RECORD(AtRes, 6 + 102400),
    RECORD(AtCmdLine, 30 + 102400),
    RECORD(AtParasList, 4 + 100 * 1024),
    RECORD(AtEndFlagRow, sizeof(void *) == 8 ? 56 : 48),
    RECORD(AtCmdRow, 32),
    RECORD(PinCodePair, 40),
    RECORD(PdpContext, 156),
    RECORD(PdpContextList, 2500),
    RECORD(CregPara, 80),
    RECORD(CrsmCmd, 148),
    RECORD(CrsmRes, 8),
    RECORD(CopsPara, 76),
    RECORD(ZdonInfo, 380),
    RECORD(ZpasInfo, 136),
    RECORD(ScanNetworkInfo, 108),
    RECORD(ScanNetworkList, 10804),
    RECORD(NetworkInfo, 112),
    RECORD(SysconfigPara, 16),
    RECORD(ZrssiPara, 28),
    RECORD(CellInfo, 24),
    RECORD(ZairInfo, 8),
    {"KoraWcdma_AtEndFlgTable", sizeof KoraWcdma_AtEndFlgTable / sizeof KoraWcdma_AtEndFlgTable[0], 50},
    {"KoraWcdma_AtCmdTable", sizeof KoraWcdma_AtCmdTable / sizeof KoraWcdma_AtCmdTable[0], 276},
};

static void findEverything(void)
{
    void *const program = dlopen(NULL, RTLD_NOW);
    for (size_t i = 0; i < COUNT(kFunctions); ++i) {
        void *const exported = dlsym(program, kFunctions[i].name);
        expect(memcmp(&exported, &kFunctions[i].address, sizeof exported) == 0, "not exported", kFunctions[i].name);
    }
    for (size_t i = 0; i < COUNT(kData); ++i)
        expect(dlsym(program, kData[i].name) == kData[i].address, "not exported", kData[i].name);
    dlclose(program);
}

static void measureRecords(void)
{
    for (size_t i = 0; i < COUNT(kRecords); ++i)
        expect(kRecords[i].size == kRecords[i].agreed, "another size", kRecords[i].name);
}

static void callSome(void)
{
    static AtParasList list;
    char line[] = "1,\"my net\",,2";
    char command[32];
    char serial[16];
    int32_t row = -1;

    expect(KR_setCurrentPlatform(PF_SPEADTRUM) == UNI_ERROR_SUCCESS, "failed", "KR_setCurrentPlatform");
    expect(g_currentPlatform == PF_SPEADTRUM, "another value", "g_currentPlatform");
    expect(KR_startAT() == UNI_ERROR_SUCCESS, "failed", "KR_startAT");
    expect(strcmp(lastCommand, "AT") == 0 && lastTimeoutMs == 5000, "another command", "KR_startAT");
    expect(strcmp(lastLogFormat, "KR_startAT-return UNI_ERROR_SUCCESS") == 0, "another log", "KR_startAT");
    sendResult = -1;
    expect(KR_echo(0) == UNI_ERROR_FALSE, "a success", "KR_echo");
    sendResult = 0;
    nextReply = "\r\n861234567\r\n\r\nOK\r\n";
    expect(cgsnExec(serial) == UNI_ERROR_SUCCESS && strcmp(serial, "861234567") == 0, "another value", "cgsnExec");

    expect(_Find_Cmd_By_Name(&row, "+CREG") == UNI_ERROR_SUCCESS, "failed", "_Find_Cmd_By_Name");
    expect(row >= 0 && KoraWcdma_AtCmdTable[row].identifier == 70, "another row", "_Find_Cmd_By_Name");
    expect(_Find_Cmd_By_ID(&row, 71) == UNI_ERROR_BK_FAIL1, "a success", "_Find_Cmd_By_ID");
    expect(strcmp(KoraWcdma_AtEndFlgTable[0].flag, "\r\nOK\r\n") == 0, "another row", "KoraWcdma_AtEndFlgTable");

    ATCodec_PreProc_Res_ParaList(&list, "a;b");
    expect(list.nCount == 2 && strcmp(list.strParasLine[1], "b") == 0, "another list", "ATCodec_PreProc_Res_ParaList");
    ATCodec_PreProc_Res_ParaLine(line);
    expect(strcmp(line, "1 my\xFEnet \xFD 2") == 0, "another line", "ATCodec_PreProc_Res_ParaLine");
    expect(ATCodec_TranslateToCmdPara(command, "AT+CFUN=%d", 1) == 0 && strcmp(command, "AT+CFUN=1") == 0,
           "another text", "ATCodec_TranslateToCmdPara");
}

int main(void)
{
    findEverything();
    measureRecords();
    callSome();
    return failures == 0 ? 0 : 1;
}
