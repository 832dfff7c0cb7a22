// The operator scan, down to every byte of the caller's array.

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/log_lines.h"
#include "tests/support/record_at.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::Log;
using scripted::OnPlatform;

constexpr char kPattern = 0x5A;
constexpr int32_t kScanTimeoutMs = 180000;

/** One entry of a scan, and what is handed on of it. */
struct Entry {
    std::string line;
    bool isTaken = false;
    std::string longName = {};
    std::string name = {};
    std::string code = {};
    int32_t act = 0;
    int32_t status = 0;
};

struct Scan {
    const char *name;
    std::vector<Entry> entries;
};

Entry skipped(const std::string &line)
{
    return {line};
}

const Entry kOne = {
    "2,\"China Mobile Long\",\"CMCC short\",\"460001\",7", true, "China Mobile Long", "CMCC short", "460001", 7, 2};
const Entry kTwo = {"1,\"Uni\",\"U\",\"46001\",2", true, "Uni", "U", "46001", 2, 1};
const Entry kThree = {"3,\"Tele com\",\"CT\",\"46011\",0", true, "Tele com", "CT", "46011", 0, 3};

/** The technologies as they come and as they are handed on. */
Scan technologies()
{
    Scan scan = {"technologies", {}};
    const int32_t acts[][2] = {{0, 0},
                               {1, 0},
                               {2, 2},
                               {3, 0},
                               {4, 2},
                               {5, 2},
                               {6, 2},
                               {7, 7},
                               {8, 8},
                               {9, 9},
                               {-1, -1},
                               {100, 100},
                               {INT32_MAX, INT32_MAX}};
    for (const auto &act : acts)
        scan.entries.push_back(
            {"1,\"L\",\"S\",\"46001\"," + std::to_string(act[0]), true, "L", "S", "46001", act[1], 1});
    return scan;
}

Scan many(const char *name, int entries)
{
    Scan scan = {name, {}};
    for (int i = 0; i < entries; ++i) {
        const std::string longName = "Network " + std::to_string(i);
        const std::string shortName = "Net " + std::to_string(i);
        std::string line = "1,\"";
        line.append(longName).append("\",\"").append(shortName).append("\",\"46001\",7");
        scan.entries.push_back({line, true, longName, shortName, "46001", 7, 1});
    }
    return scan;
}

const Scan kScans[] = {
    {"none", {}},
    {"one", {kOne}},
    {"three", {kOne, kTwo, kThree}},
    // A shorter text leaves the end of the longer one before it in the entry.
    {"shrinking", {kOne, kThree, kTwo}},
    {"growing", {kTwo, kThree, kOne}},
    {"gap in the middle", {kOne, skipped("0,\"X\",\"Y\",\"46002\",7"), kTwo}},
    {"gap at the start", {skipped("0,\"X\",\"Y\",\"46002\",7"), kOne}},
    {"gap at the end", {kOne, skipped("0,\"X\",\"Y\",\"46002\",7")}},
    {"gaps only", {skipped("0,\"X\",\"Y\",\"46002\",7"), skipped("1,\"X\",\"Y\",\"\",7")}},
    {"no code",
     {kOne, skipped("2,\"X\",\"Y\",\"\",7"), skipped("2,\"X\",\"Y\""), skipped("2,\"X\""), skipped("2"), kTwo}},
    {"no status", {skipped("x,\"X\",\"Y\",\"46002\",7"), kTwo}},
    {"any other status",
     {{"-1,\"X\",\"Y\",\"46002\",7", true, "X", "Y", "46002", 7, -1},
      {"4,\"X\",\"Y\",\"46002\",7", true, "X", "Y", "46002", 7, 4}}},
    {"empty names", {kOne, {"1,\"\",\"\",\"46002\",7", true, "", "", "46002", 7, 1}}},
    {"no technology", {{"1,\"X\",\"Y\",\"46002\"", true, "X", "Y", "46002", 0, 1}}},
    {"quoted separators", {{"1,\"A,B;C\",\"D\tE\",\"46002\",7", true, "A,B;C", "D\tE", "46002", 7, 1}}},
    // The code is converted after the short name and ends what ran on into it.
    {"short name of 19", {{"1,\"L\",\"" + filled(19) + "\",\"46002\",7", true, "L", filled(19), "46002", 7, 1}}},
    {"short name of 20", {kOne, {"1,\"L\",\"" + filled(20) + "\",\"46002\",7", true, "L", filled(19), "46002", 7, 1}}},
    {"short name of 32", {{"1,\"L\",\"" + filled(32) + "\",\"46002\",7", true, "L", filled(19), "46002", 7, 1}, kTwo}},
    // Behind its width a name goes on in the next field.
    {"short name of 37",
     {{"1,\"L\",\"" + filled(37) + "\",46002,7", true, "L", filled(19), filled(37).substr(32), 46002, 1}}},
    {"short name of 31 alone", {{"1,\"L\"," + filled(31), true, "L", filled(19), filled(31).substr(20), 0, 1}}},
    {"long name of 64", {{"1,\"" + filled(64) + "\",\"S\",\"46002\",7", true, filled(64), "S", "46002", 7, 1}, kTwo}},
    {"long name of 70", {{"1," + filled(70) + ",S,46002,7", true, filled(64), filled(70).substr(64), "S", 46002, 1}}},
    {"code of 10", {{"1,\"L\",\"S\",\"4600123456\",7", true, "L", "S", "4600123456", 7, 1}}},
    {"code of 12", {{"1,\"L\",\"S\",\"460012345678\",7", true, "L", "S", "4600123456", 78, 1}}},
    technologies(),
    many("a hundred", 100),
};

std::string replyTo(const Scan &scan)
{
    std::string reply;
    for (const Entry &entry : scan.entries)
        reply += "\r\n+COPS: " + entry.line + "\r\n";
    return reply + "\r\nOK\r\n";
}

/** What a scan writes into an array of a capacity, and what the API logs of it. */
struct Expected {
    std::string array;
    int32_t taken = 0;
    Log log = {};
};

void copyText(char *field, const std::string &text)
{
    std::memcpy(field, text.c_str(), text.size() + 1);
}

Expected expected(const Scan &scan, int32_t capacity)
{
    const size_t room = capacity > 0 ? static_cast<size_t>(capacity) : 0;
    Expected result = {std::string(room * sizeof(NetworkInfo), kPattern)};
    NetworkInfo work = {};
    for (size_t i = 0; i < std::min(room, scan.entries.size()); ++i) {
        const Entry &entry = scan.entries[i];
        if (!entry.isTaken) continue;
        copyText(work.strLongName, entry.longName);
        copyText(work.strName, entry.name);
        copyText(work.strCode, entry.code);
        work.nAcT = entry.act;
        work.nStatus = entry.status;
        result.log.api("KR_scanNetwork-out-info%d.strLongName:%s", result.taken, entry.longName.c_str())
            .api("KR_scanNetwork-out-info%d.strName:%s", result.taken, entry.name.c_str())
            .api("KR_scanNetwork-out-info%d.strCode:%s", result.taken, entry.code.c_str())
            .api("KR_scanNetwork-out-info%d.nAcT:%d", result.taken, entry.act)
            .api("KR_scanNetwork-out-info%d.nStatus:%d", result.taken, entry.status);
        std::memcpy(result.array.data() + i * sizeof work, &work, sizeof work);
        ++result.taken;
    }
    result.log.api("KR_scanNetwork-out-*pArraySize = %d", result.taken).api("KR_scanNetwork-return UNI_ERROR_SUCCESS");
    return result;
}

void expectScan(const std::string &reply, const Scan &scan, int32_t capacity)
{
    const Expected result = expected(scan, capacity);
    const GuardedMemory array(result.array.size());
    std::fill_n(array.data(), array.size(), kPattern);
    const GuardedRecord<int32_t> size;
    *size.get() = capacity;
    Host host;
    host.expect("AT+COPS=?", kScanTimeoutMs, reply);
    EXPECT_EQ(KR_scanNetwork(recordAt<NetworkInfo>(array.data()), size.get()), UNI_ERROR_SUCCESS);
    EXPECT_EQ(*size.get(), result.taken);
    EXPECT_EQ(std::string(array.data(), array.size()), result.array);
    EXPECT_EQ(Log::of(host, scripted::kApiModule), Log().api("KR_scanNetwork-in").then(result.log));
}

TEST(ScanNetwork, WritesTakenEntriesWhereTheyStandInTheScan)
{
    for (const Scan &scan : kScans) {
        const auto count = static_cast<int32_t>(scan.entries.size());
        for (const int32_t capacity : {INT32_MIN, -1, 0, 1, count - 1, count, count + 1, count + 4}) {
            SCOPED_TRACE(scan.name + std::string(" into ") + std::to_string(capacity));
            expectScan(replyTo(scan), scan, capacity);
        }
    }
}

TEST(ScanNetwork, HoldsNoMoreThanAHundred)
{
    for (const int32_t capacity : {99, 100, 101, 130})
        expectScan(replyTo(many("more", 104)), many("a hundred", 100), capacity);
}

TEST(ScanNetwork, CopiesOutWhatALongerEntryLeftBehindAShorterOne)
{
    const GuardedRecord<NetworkInfo[2]> array(kPattern);
    int32_t size = 2;
    Host host;
    host.expect("AT+COPS=?", kScanTimeoutMs, replyTo({"", {kOne, kTwo}}));
    EXPECT_EQ(KR_scanNetwork(*array.get(), &size), UNI_ERROR_SUCCESS);
    const NetworkInfo &second = (*array.get())[1];
    using namespace std::string_literals;
    EXPECT_EQ(std::string(second.strLongName, 20), "Uni\0a Mobile Long\0\0\0"s);
    EXPECT_EQ(std::string(second.strName, sizeof second.strName), "U\0CC short\0\0\0\0\0\0\0\0\0\0"s);
    EXPECT_EQ(std::string(second.strCode, sizeof second.strCode), "46001\0\0\0\0\0\0\0"s);
    EXPECT_EQ(second.reserved, 0);
}

TEST(ScanNetwork, ReadsAShortScanInOneLineWithItsTrailingLists)
{
    // The lists come out as two further entries, of status 0.
    const Scan scan = {"", {kOne, kTwo, skipped(",0,1,2,3,4"), skipped("0,1,2")}};
    const std::string reply = framed({("+COPS: (" + kOne.line + "),(" + kTwo.line + "),,(0,1,2,3,4),(0,1,2)").c_str()});
    for (const int32_t capacity : {0, 1, 2, 3, 4, 5})
        expectScan(reply, scan, capacity);
}

TEST(ScanNetwork, TracesTheWholeScanOnEveryPlatform)
{
    const std::string line = "(" + kOne.line + "),(0,\"X\",\"Y\",\"46002\",7)";
    const std::string split = kOne.line + ";0,\"X\",\"Y\",\"46002\",7";
    const std::string reply = framed({("+COPS: " + line).c_str()});
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        NetworkInfo array[2];
        int32_t size = 2;
        Host host;
        host.expect("AT+COPS=?", kScanTimeoutMs, reply);
        EXPECT_EQ(KR_scanNetwork(array, &size), UNI_ERROR_SUCCESS);
        EXPECT_EQ(size, 1);
        EXPECT_EQ(Log::of(host), Log()
                                     .api("KR_scanNetwork-in")
                                     .network("copsTest in")
                                     .parsed(reply, line)
                                     .network("copsTest in-after parse tAtRes.Paras:%s", line.c_str())
                                     .network("copsTest in-afterATCodec_ProcRes_ParaLineEx:%s", split.c_str())
                                     .network("copsTest in-tParasList.nCount copy")
                                     .network("copsTest in-tParasList.nCount copy")
                                     .network("copsTest return success")
                                     .api("KR_scanNetwork-out-info%d.strLongName:%s", 0, "China Mobile Long")
                                     .api("KR_scanNetwork-out-info%d.strName:%s", 0, "CMCC short")
                                     .api("KR_scanNetwork-out-info%d.strCode:%s", 0, "460001")
                                     .api("KR_scanNetwork-out-info%d.nAcT:%d", 0, 7)
                                     .api("KR_scanNetwork-out-info%d.nStatus:%d", 0, 2)
                                     .api("KR_scanNetwork-out-*pArraySize = %d", 1)
                                     .api("KR_scanNetwork-return UNI_ERROR_SUCCESS"));
    }
}

TEST(ScanNetwork, FailureLeavesArrayAndSize)
{
    for (const Failure &failure : kFailures) {
        SCOPED_TRACE(failure.name);
        const GuardedRecord<NetworkInfo[2]> array(kPattern);
        int32_t size = 2;
        Host host;
        play(host, {{"AT+COPS=?", kScanTimeoutMs, failure.reply}});
        EXPECT_EQ(KR_scanNetwork(*array.get(), &size), UNI_ERROR_FALSE);
        EXPECT_EQ(size, 2);
        EXPECT_EQ(std::string(array.data(), array.size()), std::string(array.size(), kPattern));
        Log log = Log().api("KR_scanNetwork-in").network("copsTest in").failed(failure);
        if (!failure.reply) {
            log.network("copsTest in-sendcmd failed");
        } else if (failure.identifier == 0) {
            log.network("copsTest in-parse atres failed");
        } else {
            log.network("copsTest in-after parse tAtRes.Paras:%s", failure.paras.c_str());
            log.network("copsTest return false");
        }
        EXPECT_EQ(Log::of(host), log.api("KR_scanNetwork-return UNI_ERROR_FALSE-copsTest failed"));
    }
}

} // namespace
