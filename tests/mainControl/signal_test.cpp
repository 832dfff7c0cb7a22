// Signal values and the state of the serving cell that are read as plain numbers.

#include <gtest/gtest.h>

#include "tests/mainControl/api_dialogue.h"

namespace {

using namespace dialogue;
using scripted::framed;
using Values = std::vector<int32_t>;

constexpr Module api{scripted::kApiModule};
constexpr int32_t kMost = 2147483647;
constexpr int32_t kLeast = -2147483647 - 1;

const std::string kExtended = "KR_get4GSignalStrength";
const std::string kPlain = "KR_getSignalStrength";

Events sendOrParseFailed(const std::string &name, Failure failure)
{
    return {failure == Failure::Send ? api("%s-return UNI_ERROR_FALSE-send at failed", name)
                                     : api("%s-return UNI_ERROR_FALSE", name)};
}

const Reader kCesq = {
    "KR_get4GSignalStrength",
    [](int32_t *const *out) { return KR_get4GSignalStrength(out[0], out[1], out[2], out[3], out[4], out[5]); },
    6,
    {api("%s-in", kExtended)},
    "AT+CESQ",
    10000,
    [](const std::string &paras, const Values &) -> Events {
        return {api("%s-out OK-*pSignalStrength:%s", kExtended, paras)};
    },
    [](Failure failure) { return sendOrParseFailed(kExtended, failure); },
};

const Reader kCsq = {
    "KR_getSignalStrength",
    [](int32_t *const *out) { return KR_getSignalStrength(out[0]); },
    1,
    {api("%s-in", kPlain)},
    "AT+CSQ",
    5000,
    [](const std::string &, const Values &values) -> Events {
        return {api("%s-out OK-*pSignalStrength:%d", kPlain, values[0])};
    },
    [](Failure failure) { return sendOrParseFailed(kPlain, failure); },
};

const Reader kZltelc = {
    "KR_getZltelcInfo",
    [](int32_t *const *out) { return KR_getZltelcInfo(out[0], out[1], out[2]); },
    3,
    {api("KR_getZltelcInfo-in")},
    "AT+ZLTELC?",
    5000,
    [](const std::string &, const Values &values) -> Events {
        return {api("KR_getZltelcInfo-out-*nAction:%d", values[0]), api("KR_getZltelcInfo-out-*nUarfcn:%d", values[1]),
                api("KR_getZltelcInfo-out-*nCellParald:%d", values[2]),
                api("KR_getZltelcInfo--return UNI_ERROR_SUCCESS")};
    },
    [](Failure) -> Events { return {api("KR_getZltelcInfo-return UNI_ERROR_FALSE-sysconfigRead failed")}; },
};

/** The two arguments that are not read from the modem differ from anything in a reply. */
Reader sysinfo(Values platforms)
{
    return {
        "KR_getSysinfo",
        [](int32_t *const *out) { return KR_getSysinfo(out[0], out[1], out[2], out[3], out[4], kMost, -5); },
        5,
        {api("KR_getSysinfo-in")},
        "AT^SYSINFO",
        5000,
        [](const std::string &, const Values &values) -> Events {
            return {
                api("KR_getSysinfo-out-*nSrvstatus:%d", values[0]),  api("KR_getSysinfo-out-*nSrvdomain:%d", values[1]),
                api("KR_getSysinfo-out-*nRoamstatus:%d", values[2]), api("KR_getSysinfo-out-*nSysmode:%d", values[3]),
                api("KR_getSysinfo-out-*nSimstate:%d", values[4]),   api("KR_getSysinfo-out-nReserve:%d", kMost),
                api("KR_getSysinfo-out-nSysSubmode:%d", -5)};
        },
        [](Failure) -> Events { return {api("KR_getSysinfo-return UNI_ERROR_FALSE-sysinfoExec failed")}; },
        std::move(platforms),
    };
}

Reading reading(const std::string &name, const std::string &paras, Values values)
{
    return {framed({(name + paras).c_str()}), paras, std::move(values)};
}

TEST(ExtendedSignal, IsReadFromTheParametersAsTheyStand)
{
    const std::string tail = "," + filled(900);
    expectReadings(kCesq, {
                              reading("+CESQ: ", "1,2,3,4,5,6", {1, 2, 3, 4, 5, 6}),
                              reading("", "99,99,255,255,20,80", {99, 99, 255, 255, 20, 80}),
                              reading("+CESQ: ", "-1,+2, 3,  4,2147483647,-2147483648", {-1, 2, 3, 4, kMost, kLeast}),
                              reading("+CESQ: ", "1,2,3,4,5,6,7", {1, 2, 3, 4, 5, 6}),
                              reading("+CESQ: ", "1,2,3", {1, 2, 3, kKept, kKept, kKept}),
                              reading("+CESQ: ", "1,2,3,4,5,", {1, 2, 3, 4, 5, kKept}),
                              reading("+CESQ: ", "1 ,2", {1, kKept, kKept, kKept, kKept, kKept}),
                              reading("+CESQ: ", "1,,3", {1, kKept, kKept, kKept, kKept, kKept}),
                              reading("+CESQ: ", "\"1\",2", Values(6, kKept)),
                              reading("+CESQ: ", "none", Values(6, kKept)),
                              {"\r\nOK\r\n", "", Values(6, kKept)},
                              {framed({"+CESQ: 1,2,3", "+CESQ: 4,5,6"}), "1,2,3;4,5,6", {1, 2, 3, kKept, kKept, kKept}},
                              {framed({("+CESQ: 1,2,3,4,5,6" + tail).c_str(), ("+CESQ: 7" + tail).c_str()}),
                               "1,2,3,4,5,6" + tail + ";7" + tail,
                               {1, 2, 3, 4, 5, 6}},
                          });
}

TEST(Signal, IsTheFirstValue)
{
    expectReadings(kCsq, {
                             reading("+CSQ: ", "21,99", {21}),
                             reading("", "21,99", {21}),
                             reading("+CSQ: ", "0,0", {0}),
                             reading("+CSQ: ", "-113,99", {-113}),
                             reading("+CSQ: ", " 7 ,99", {7}),
                             reading("+CSQ: ", "31", {31}),
                             reading("+CSQ: ", ",99", {kKept}),
                             reading("+CSQ: ", "\"21\",99", {kKept}),
                             {"\r\nOK\r\n", "", {kKept}},
                             {framed({"+CSQ: 21,99", "22"}), "21,99,\"22\"", {21}},
                         });
}

TEST(CellLock, IsReadFromTheParametersAsTheyStand)
{
    expectReadings(kZltelc, {
                                reading("+ZLTELC: ", "1,1850,3", {1, 1850, 3}),
                                reading("+ZLTELC: ", "-1,2147483647,-2147483648,9", {-1, kMost, kLeast}),
                                reading("+ZLTELC: ", "1,1850", {1, 1850, kKept}),
                                reading("+ZLTELC: ", "0", {0, kKept, kKept}),
                                reading("+ZLTELC: ", "1,,3", {1, kKept, kKept}),
                                reading("+ZLTELC: ", "1 1850 3", {1, kKept, kKept}),
                                {"\r\nOK\r\n", "", Values(3, kKept)},
                            });
}

TEST(SystemInformation, IsReadBehindItsOwnNameButOnTsp)
{
    expectReadings(sysinfo({0, 1, 2, 3, 5, 7}),
                   {
                       reading("", "^SYSINFO:2,3,0,5,1", {2, 3, 0, 5, 1}),
                       reading("", "^SYSINFO:-2,\"3\", 0,2147483647,1,9", {-2, 3, 0, kMost, 1}),
                       reading("", "^SYSINFO:2,3", {2, 3, kKept, kKept, kKept}),
                       reading("", "^SYSINFO:2,3,,5,1", {2, 3, kKept, kKept, kKept}),
                       reading("", "^SYSINFO:", Values(5, kKept)),
                       reading("", "^sysinfo:2,3,0,5,1", Values(5, kKept)),
                       reading("^SYSINFO: ", "2,3,0,5,1", Values(5, kKept)),
                       reading("", "2,3,0,5,1", Values(5, kKept)),
                       {"\r\nOK\r\n", "", Values(5, kKept)},
                   });
}

TEST(SystemInformation, IsReadWithoutANameOnTsp)
{
    expectReadings(sysinfo({PF_TSP}), {
                                          reading("^SYSINFO: ", "2,3,0,5,1", {2, 3, 0, 5, 1}),
                                          reading("", "2,3,0,5,1", {2, 3, 0, 5, 1}),
                                          reading("^SYSINFO: ", "-2,\"3\", 0,2147483647,1,9", {-2, 3, 0, kMost, 1}),
                                          reading("^SYSINFO: ", "2,3", {2, 3, kKept, kKept, kKept}),
                                          reading("^SYSINFO: ", "2,3,,5,1", {2, 3, kKept, kKept, kKept}),
                                          reading("", "^SYSINFO:2,3,0,5,1", Values(5, kKept)),
                                          {"\r\nOK\r\n", "", Values(5, kKept)},
                                      });
}

TEST(SystemInformation, IsReadFromALineThatCanBeRewritten)
{
    // A line of 1024 characters keeps its commas, so only the value before the first one can be read.
    const std::string fits = "2,3,0,5,1," + filled(1013);
    const std::string exceeds = "2,3,0,5,1," + filled(1014);
    expectReadings(sysinfo({PF_TSP}), {
                                          reading("^SYSINFO: ", fits, {2, 3, 0, 5, 1}),
                                          reading("^SYSINFO: ", exceeds, {2, kKept, kKept, kKept, kKept}),
                                      });
}

TEST(SignalFailures, LeaveTheOutputs)
{
    for (const Reader &reader : {kCesq, kCsq, kZltelc, sysinfo(kPlatforms)})
        expectFailures(reader);
}

} // namespace
