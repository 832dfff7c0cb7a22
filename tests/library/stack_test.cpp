// How deep each exported function goes, measured on a painted thread stack with a host that uses next to none of it.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

#include <mainControl/mainControl.h>

namespace {

constexpr std::size_t kKiB = 1024;
constexpr std::size_t kRoomyStack = 512 * kKiB;
constexpr std::size_t kSmallStack = 128 * kKiB; // what musl gives a thread
constexpr unsigned char kPaint = 0xA5;

std::string theReply;

/// The bodies that make the parser work hardest within the longest reply.
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

struct Subject {
    const char *name;
    void (*call)();
    std::size_t limit;
};

// Static, so that what a caller owns does not count.
AtRes theRecord;
AtCmdLine theWork;
AtParasList theList;
char theText[20000];
char theOutput[20000];
int32_t theNumber;
int32_t numbers[8];
uint32_t theWords[3000];
PdpContextList theContexts;
CregPara theCreg;
ZdonInfo theNames;
ZpasInfo theDomains;
CopsPara theOperator;
ScanNetworkList theScan;
SysconfigPara theConfig;
ZrssiPara theSignal;
char *thePosition;

char *reply()
{
    std::memcpy(theText, theReply.c_str(), theReply.size() + 1);
    return theText;
}

AtRes *record()
{
    std::memset(&theRecord, 0, sizeof theRecord);
    return &theRecord;
}

constexpr std::size_t kFrame = 28 * kKiB;
constexpr std::size_t kShape = 8 * kKiB;

const Subject kSubjects[] = {
    {"KR_setCurrentPlatform", [] { KR_setCurrentPlatform(0); }, kFrame},
    {"KR_startAT", [] { KR_startAT(); }, kFrame},
    {"KR_echo", [] { KR_echo(1); }, kFrame},
    {"KR_setCmee", [] { KR_setCmee(2); }, kFrame},
    {"atStart", [] { atStart(); }, kFrame},
    {"ateExec", [] { ateExec(1); }, kFrame},
    {"cmeeSet", [] { cmeeSet(2); }, kFrame},
    {"cgsnExec", [] { cgsnExec(theOutput); }, kFrame},
    {"zmsnRead", [] { zmsnRead(theOutput); }, kFrame},
    {"clckSet query", [] { clckSet("SC", 2, nullptr, 7, numbers); }, kFrame},
    {"clckSet change", [] { clckSet("SC", 1, "1234", 1, numbers); }, kFrame},
    {"xxSet", [] { xxSet(0, numbers); }, kFrame},
    {"epincRead", [] { epincRead(numbers); }, kFrame},
    {"cardmodeExec", [] { cardmodeExec(numbers); }, kFrame},
    {"zrapRead", [] { zrapRead(1, numbers, numbers + 1); }, kFrame},
    {"zpinpukTest", [] { zpinpukTest(numbers, numbers + 1); }, kFrame},
    {"cpinRead", [] { cpinRead(numbers); }, kFrame},
    {"cpinSet",
     [] {
         cpinSet({"1234", "5678"});
     },
     kFrame},
    {"cpwdSet",
     [] {
         cpwdSet({"1234", "5678"});
     },
     kFrame},
    {"zsecRead", [] { zsecRead(numbers, numbers + 1); }, kFrame},
    {"zlcokRead", [] { zlcokRead(numbers, numbers + 1); }, kFrame},
    {"znckSet", [] { znckSet("12345678"); }, kFrame},
    {"znckRead", [] { znckRead(numbers); }, kFrame},
    {"spsimlockinfoExec", [] { spsimlockinfoExec(numbers); }, kFrame},
    {"esmlckSet", [] { esmlckSet(0, 1, "12345678"); }, kFrame},
    {"esmlckRead", [] { esmlckRead(2, numbers, numbers + 1, numbers + 2); }, kFrame},
    {"cgdcontRead", [] { cgdcontRead(&theContexts); }, kFrame},
    {"cgdcontSet",
     [] {
         cgdcontSet({1, "IP", "internet", "", 0, 0});
     },
     kFrame},
    {"cgdfltSet",
     [] {
         cgdfltSet({1, "IP", "internet", "", 0, 0});
     },
     kFrame},
    {"zoprtRead", [] { zoprtRead(numbers); }, kFrame},
    {"zoprtSet", [] { zoprtSet(1); }, kFrame},
    {"zsetSet", [] { zsetSet("NAME", 1, theOutput, numbers); }, kFrame},
    {"FOTACTRSet", [] { FOTACTRSet(1, numbers, numbers + 1); }, kFrame},
    {"AtNetstaticIp", [] { AtNetstaticIp("192.168.0.1"); }, kFrame},
    {"AtRamdumpHostIp", [] { AtRamdumpHostIp("192.168.0.1"); }, kFrame},
    {"cfunSet", [] { cfunSet(1); }, kFrame},
    {"cfunRead", [] { cfunRead(numbers); }, kFrame},
    {"cregSet", [] { cregSet(2); }, kFrame},
    {"cgregSet", [] { cgregSet(2); }, kFrame},
    {"ceregSet", [] { ceregSet(2); }, kFrame},
    {"zgaatSet", [] { zgaatSet(1); }, kFrame},
    {"cgattSet", [] { cgattSet(1); }, kFrame},
    {"ceregRead", [] { ceregRead(numbers, numbers + 1, theOutput, theText, numbers + 2); }, kFrame},
    {"cgregRead", [] { cgregRead(numbers, numbers + 1); }, kFrame},
    {"cregRead", [] { cregRead(&theCreg); }, kFrame},
    {"crsmSet",
     [] {
         crsmSet({176, 12258, 0, 0, 10, ""}, reinterpret_cast<CrsmRes *>(theWords));
     },
     kFrame},
    {"zdonRead", [] { zdonRead(&theNames); }, kFrame},
    {"zpasRead", [] { zpasRead(&theDomains); }, kFrame},
    {"copsSet",
     [] {
         copsSet({1, 2, "46000", 7});
     },
     kFrame},
    {"copsRead", [] { copsRead(&theOperator); }, kFrame},
    {"copsTest", [] { copsTest(&theScan); }, kFrame},
    {"copsSet5",
     [] {
         AtParasList *list = &theList;
         copsSet5(&list);
     },
     kFrame},
    {"zsntSet", [] { zsntSet(0, 0, 2); }, kFrame},
    {"zsntRead", [] { zsntRead(numbers, numbers + 1, numbers + 2); }, kFrame},
    {"sysconfigRead", [] { sysconfigRead(&theConfig); }, kFrame},
    {"sysconfigSet", [] { sysconfigSet(2, 0, 1, 3); }, kFrame},
    {"eratRead", [] { eratRead(numbers, numbers + 1, numbers + 2, numbers + 3); }, kFrame},
    {"eratSet", [] { eratSet(2, 2); }, kFrame},
    {"zprefbandSet", [] { zprefbandSet(0); }, kFrame},
    {"sysinfoExec", [] { sysinfoExec(numbers, numbers + 1, numbers + 2, numbers + 3, numbers + 4, 0, 0); }, kFrame},
    {"zrssiExec", [] { zrssiExec(&theSignal); }, kFrame},
    {"zrssiLteRead", [] { zrssiLteRead(&theSignal); }, kFrame},
    {"getZrssiResParasCount", [] { theNumber = getZrssiResParasCount(reply()); }, kShape},
    {"zltelcRead", [] { zltelcRead(numbers, numbers + 1, numbers + 2); }, kFrame},
    {"CGDCONT_ReadATResProcess",
     [] {
         std::memcpy(record()->Paras, reply(), theReply.size());
         CGDCONT_ReadATResProcess(&theRecord, &theContexts);
     },
     kShape},
    {"Bk_Parse_At_Res", [] { Bk_Parse_At_Res(reply(), record()); }, kShape},
    {"Bk_Parse_At_COPS5_Res", [] { Bk_Parse_At_COPS5_Res(reply(), record()); }, kShape},
    {"unsolicitedATProcess", [] { unsolicitedATProcess(reply()); }, kShape},
    {"_Find_Cmd_By_ID", [] { _Find_Cmd_By_ID(&theNumber, 12306); }, kShape},
    {"_Find_Cmd_By_Name", [] { _Find_Cmd_By_Name(&theNumber, "^ZPCUIVERSION"); }, kShape},
    {"_Find_Sub_Str", [] { thePosition = _Find_Sub_Str(reply(), "\r\nOK"); }, kShape},
    {"_Parse_At_PreProcess", [] { _Parse_At_PreProcess(reply(), &thePosition, &theNumber); }, kShape},
    {"_Parse_At_Ok_Res",
     [] {
         std::memcpy(record()->Paras, reply(), theReply.size());
         _Parse_At_Ok_Res(&theRecord, &theWork);
     },
     kShape},
    {"_First_Parse_At_OK_Res", [] { _First_Parse_At_OK_Res(reply() + 2, theOutput, &theWork); }, kShape},
    {"ATCodec_GetSubStrCountByToken", [] { theNumber = ATCodec_GetSubStrCountByToken(reply(), ","); }, kShape},
    {"ATCodec_FindSubStrByIndex", [] { ATCodec_FindSubStrByIndex(reply(), theOutput, 7, ","); }, kShape},
    {"ATCodec_PreProc_Res_ParaList", [] { ATCodec_PreProc_Res_ParaList(&theList, reply()); }, kShape},
    {"ATCodec_PreProc_Res_ParaList_Special", [] { ATCodec_PreProc_Res_ParaList_Special(&theList, reply()); }, kShape},
    {"ATCodec_PreProc_Res_Icera_ParaList", [] { ATCodec_PreProc_Res_Icera_ParaList(&theList, reply()); }, kShape},
    {"ATCodec_PreProc_Res_COPS5_ParaList", [] { ATCodec_PreProc_Res_COPS5_ParaList(&theList, reply()); }, kShape},
    {"ATCodec_PreProc_Res_ParaList_Entend", [] { ATCodec_PreProc_Res_ParaList_Entend(reply(), &theNumber); }, kShape},
    {"ATCodec_PreProc_Res_ParaLine",
     [] {
         reply()[1023] = '\0';
         ATCodec_PreProc_Res_ParaLine(theText);
     },
     kShape},
    {"ATCodec_ProcRes_ParaLineEx",
     [] {
         reply()[1023] = '\0';
         ATCodec_ProcRes_ParaLineEx(theText);
     },
     kShape},
    {"ATCodec_Restore_String_Para", [] { ATCodec_Restore_String_Para(reply()); }, kShape},
    {"ATCodec_TranslateToCmdPara", [] { ATCodec_TranslateToCmdPara(theOutput, "AT+CMEE=%d,%s", 2, theReply.c_str()); },
     kShape},
};

/// Runs functions on threads of their own and says how far down each of them has written.
class PaintedStack {
  public:
    explicit PaintedStack(std::size_t size)
        : size_(size), memory_(static_cast<unsigned char *>(
                           mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
    {
    }
    ~PaintedStack() { munmap(memory_, size_); }
    PaintedStack(const PaintedStack &) = delete;
    PaintedStack &operator=(const PaintedStack &) = delete;

    std::size_t depthOf(void (*call)())
    {
        call_ = call;
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        EXPECT_EQ(pthread_attr_setstack(&attributes, memory_, size_), 0);
        pthread_t thread{};
        EXPECT_EQ(pthread_create(&thread, &attributes, run, this), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
        return depth_;
    }

  private:
    static void *run(void *self)
    {
        static_cast<PaintedStack *>(self)->measure();
        return nullptr;
    }

    void measure()
    {
        // What this function itself keeps on the stack lies above the paint and counts as used.
        constexpr std::size_t kOwn = 256;
        auto *const here = static_cast<unsigned char *>(__builtin_frame_address(0));
        std::fill(memory_, here - kOwn, kPaint);
        call_();
        depth_ = static_cast<std::size_t>(
            here - std::find_if(memory_, here, [](unsigned char byte) { return byte != kPaint; }));
    }

    std::size_t size_;
    unsigned char *memory_;
    void (*call_)() = nullptr;
    std::size_t depth_ = 0;
};

/// The deepest that a function goes with any of the worst replies.
std::size_t deepest(const Subject &subject, PaintedStack &stack)
{
    std::size_t depth = 0;
    for (const std::string &worst : worstReplies()) {
        theReply = worst;
        depth = std::max(depth, stack.depthOf(subject.call));
    }
    return depth;
}

void writeTwentyKiB()
{
    volatile char room[20 * kKiB];
    for (volatile char &byte : room)
        byte = 1;
}

TEST(Stack, IsMeasured)
{
    PaintedStack stack(kRoomyStack);
    const std::size_t idle = stack.depthOf([] {});
    const std::size_t used = stack.depthOf(writeTwentyKiB);
    EXPECT_LE(idle, kKiB);
    EXPECT_GE(used, 20 * kKiB);
    EXPECT_LE(used, 21 * kKiB);
}

TEST(Stack, EveryFunctionStaysWithinItsLimit)
{
    PaintedStack stack(kRoomyStack);
    for (const Subject &subject : kSubjects) {
        const std::size_t depth = deepest(subject, stack);
        EXPECT_LE(depth, subject.limit) << subject.name;
        std::printf("%-40s %6zu bytes\n", subject.name, depth);
    }
}

TEST(Stack, EveryFunctionRunsOnASmallThread)
{
    PaintedStack stack(kSmallStack);
    for (const Subject &subject : kSubjects)
        EXPECT_LE(deepest(subject, stack), subject.limit) << subject.name;
}

} // namespace

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
