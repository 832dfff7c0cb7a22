// Whether operators are selected by hand, asked for in the way of each chipset.

#include <gtest/gtest.h>

#include "tests/mainControl/api_dialogue.h"

namespace {

using namespace dialogue;
using Values = std::vector<int32_t>;

constexpr Module api{scripted::kApiFileModule};
constexpr int32_t kAutomatic = 0;
constexpr int32_t kManual = 5;

/** The mode with its lines, and the same without a log. */
std::vector<Reader> readersOf(const char *command, const Values &platforms)
{
    return {
        {
            "KR_getNetworkSelectionMode",
            [](int32_t *const *out) { return KR_getNetworkSelectionMode(out[0]); },
            1,
            {api("KR_getNetworkSelectionMode-in")},
            command,
            5000,
            [](const std::string &, const Values &values) -> Events {
                return {api("KR_getNetworkSelectionMode-out-*pSelectionMode:%d", values[0]),
                        api("KR_getNetworkSelectionMode-return UNI_ERROR_SUCCESS")};
            },
            [](Failure) -> Events {
                return {api("KR_getNetworkSelectionMode-return UNI_ERROR_FALSE-getSlelectMode failed")};
            },
            platforms,
        },
        {
            "getSlelectMode",
            [](int32_t *const *out) { return getSlelectMode(out[0]); },
            1,
            {},
            command,
            5000,
            [](const std::string &, const Values &) { return Events{}; },
            [](Failure) { return Events{}; },
            platforms,
        },
    };
}

Reading reading(const std::string &name, const std::string &paras, int32_t mode)
{
    return {scripted::framed({(name + paras).c_str()}), paras, {mode}};
}

TEST(SelectionMode, IsThatOfTheOperatorOnMediaTekAndSpreadtrum)
{
    for (const Reader &reader : readersOf("AT+COPS?", {PF_MTK, PF_SPEADTRUM})) {
        expectReadings(reader, {
                                   reading("+COPS: ", "1,2,\"46000\",7", kManual),
                                   reading("+COPS: ", "0,2,\"46000\",7", kAutomatic),
                                   reading("+COPS: ", "2", kAutomatic),
                                   reading("+COPS: ", "3,1", kAutomatic),
                                   reading("+COPS: ", "4,2,\"46000\",7", kAutomatic),
                                   reading("+COPS: ", "-1", kAutomatic),
                                   reading("+COPS: ", "5", kAutomatic),
                                   reading("+COPS: ", "1", kManual),
                                   reading("", "1", kManual),
                                   reading("+COPS: ", "\"1\"", kManual),
                                   reading("+COPS: ", "none,1", kAutomatic),
                                   {"\r\nOK\r\n", "", {kAutomatic}},
                                   // An operator of any length does not reach what stands beside it.
                                   reading("+COPS: ", "1,0,\"" + filled(63) + "\",7", kManual),
                                   reading("+COPS: ", "0,0,\"" + filled(64) + "\",7", kAutomatic),
                                   reading("+COPS: ", "1,0,\"" + filled(255) + "\",7", kManual),
                                   reading("+COPS: ", "0,0,\"" + filled(1000) + "\",1", kAutomatic),
                                   reading("+COPS: ", "1,0,\"" + filled(1016) + "\",0", kManual),
                               });
        expectFailures(reader);
    }
}

TEST(SelectionMode, IsTheSecondNumberOnAllOthers)
{
    for (const Reader &reader : readersOf("AT+ZSNT?", {0, PF_QC_LTE, 2, PF_TSP, 7})) {
        expectReadings(reader, {
                                   reading("+ZSNT: ", "0,1,2", kManual),
                                   reading("+ZSNT: ", "1,0,1", kAutomatic),
                                   reading("+ZSNT: ", "0,2,1", kAutomatic),
                                   reading("+ZSNT: ", "1,-1,1", kAutomatic),
                                   reading("+ZSNT: ", "0,5,1", kAutomatic),
                                   reading("", "7, 1", kManual),
                                   reading("+ZSNT: ", "1", kAutomatic),
                                   reading("+ZSNT: ", "0 ,1,1", kAutomatic),
                                   reading("+ZSNT: ", "0,,1", kAutomatic),
                                   reading("+ZSNT: ", "0,\"1\",1", kAutomatic),
                                   reading("+ZSNT: ", "none", kAutomatic),
                                   {"\r\nOK\r\n", "", {kAutomatic}},
                               });
        expectFailures(reader);
    }
}

} // namespace
