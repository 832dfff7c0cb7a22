// The public headers in C++: each record is plain data, each name is C.

#include <type_traits>

#include <dlfcn.h>

#include <gtest/gtest.h>

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

namespace {

template <typename... Records>
constexpr bool kArePlain = ((std::is_standard_layout_v<Records> && std::is_trivial_v<Records>)&&...);

static_assert(kArePlain<AtClientRes, AtRes, AtCmdLine, AtParasList, AtEndFlagRow, AtCmdRow, PinCodePair, PdpContext,
                        PdpContextList, CregPara, CrsmCmd, CrsmRes, CopsPara, ZdonInfo, ZpasInfo, ScanNetworkInfo,
                        ScanNetworkList, NetworkInfo, SysconfigPara, ZrssiPara, CellInfo, ZairInfo>);
static_assert(std::is_same_v<decltype(Bk_Parse_At_Res(nullptr, nullptr)), uint32_t>);
static_assert(std::is_same_v<decltype(g_currentPlatform), int32_t>);

/** Looks a name up as a host would that loads the library by hand. */
template <typename Symbol>
bool isFound(const char *name, Symbol *expected)
{
    void *const program = dlopen(nullptr, RTLD_NOW);
    void *const found = dlsym(program, name);
    dlclose(program);
    return found == reinterpret_cast<void *>(expected);
}

TEST(PublicHeaders, DeclareNamesWithCLinkage)
{
    EXPECT_TRUE(isFound("KR_setCurrentPlatform", KR_setCurrentPlatform));
    EXPECT_TRUE(isFound("ATCodec_PreProc_Res_ParaLine", ATCodec_PreProc_Res_ParaLine));
    EXPECT_TRUE(isFound("Bk_Parse_At_Res", Bk_Parse_At_Res));
    EXPECT_TRUE(isFound("cgsnExec", cgsnExec));
    EXPECT_TRUE(isFound("ClientSendCmd", ClientSendCmd));
    EXPECT_TRUE(isFound("kora_log_append", kora_log_append));
    EXPECT_TRUE(isFound("g_currentPlatform", &g_currentPlatform));
    EXPECT_TRUE(isFound("KoraWcdma_AtCmdTable", &KoraWcdma_AtCmdTable));
}

TEST(PublicHeaders, AgreeWithTheTablesOfTheLibrary)
{
    EXPECT_EQ(KoraWcdma_AtEndFlgTableSize, static_cast<int32_t>(std::size(KoraWcdma_AtEndFlgTable)));
    EXPECT_EQ(KoraWcdma_AtCmdTableSize, static_cast<int32_t>(std::size(KoraWcdma_AtCmdTable)));
    EXPECT_STREQ(KoraWcdma_AtEndFlgTable[49].flag, "\r\n+CGEV: ");
    EXPECT_EQ(KoraWcdma_AtEndFlgTable[5].result, AT_RES_RESULT_NOT_SUPPORT);
    EXPECT_STREQ(KoraWcdma_AtCmdTable[275].name, "^ZPCUIVERSION");
}

TEST(PublicHeaders, KeepTheNumbersThatHostsCompileIn)
{
    constexpr std::pair<int, int> kNumbers[] = {
        {UNI_ERROR_SUCCESS, 0},
        {UNI_ERROR_FALSE, 1},
        {UNI_ERROR_INVALID_PARAMETER, 13},
        {UNI_ERROR_STRING_SIZE_TOO_SMALL, 18},
        {UNI_ERROR_BK_FAIL1, 19},
        {UNI_ERROR_BK_INVALID_ARG, 20},
        {UNI_ERROR_SETTING_CPIN_INCORRECT_PASS, 24},
        {UNI_ERROR_SETTING_CPIN_PUKPASS_REQUIRED, 25},
        {UNI_ERROR_SETTING_SIM_FAILURE, 26},
        {UNI_ERROR_SETTING_SIM_BUSY, 27},
        {UNI_ERROR_SETTING_SIM_NOT_INSERTED, 28},
        {UNI_ERROR_SETTING_UNKNOWN, 29},
        {UNI_ERROR_COMM_FAILURE, 32},
        {AT_RES_RESULT_OK, 1},
        {AT_RES_RESULT_ERROR, 2},
        {AT_RES_RESULT_CMS_ERROR, 3},
        {AT_RES_RESULT_CME_ERROR, 4},
        {AT_RES_RESULT_PROMPT, 11},
        {AT_RES_RESULT_REPORT, 12},
        {AT_RES_RESULT_NOT_SUPPORT, 13},
        {PF_QC_LTE, 1},
        {PF_MTK, 3},
        {PF_TSP, 4},
        {PF_SPEADTRUM, 5},
        {SELECTION_MODE_AUTOMATIC, 0},
        {SELECTION_MODE_MANUAL, 5},
        {PDP_TYPE_IP, 0},
        {PDP_TYPE_IPV6, 2},
        {PDP_TYPE_IPV4V6, 3},
        {DOMAIN_NO_SERVICE, 0},
        {DOMAIN_SERVED, 1},
        {DOMAIN_NOT_SERVED, 2},
        {ROAMING_STATE_ROAMING, 0},
        {ROAMING_STATE_HOME, 1},
        {ROAMING_STATE_UNKNOWN, 2},
    };
    for (const auto &[number, agreed] : kNumbers)
        EXPECT_EQ(number, agreed);
}

TEST(PublicHeaders, NumberTheValuesOfCommandsAsModemsDo)
{
    constexpr std::pair<int, int> kNumbers[] = {
        {AT_CFUN_MINIMUM, 0},
        {AT_CFUN_FULL, 1},
        {AT_CFUN_RADIO_OFF, 4},
        {AT_CMEE_OFF, 0},
        {AT_CMEE_NUMBERS, 1},
        {AT_CMEE_TEXTS, 2},
        {AT_COPS_AUTOMATIC, 0},
        {AT_COPS_MANUAL, 1},
        {AT_COPS_DEREGISTER, 2},
        {AT_COPS_FORMAT_ONLY, 3},
        {AT_COPS_MANUAL_THEN_AUTOMATIC, 4},
        {AT_COPS_LONG_NAME, 0},
        {AT_COPS_SHORT_NAME, 1},
        {AT_COPS_NUMERIC, 2},
        {AT_OPERATOR_UNKNOWN, 0},
        {AT_OPERATOR_AVAILABLE, 1},
        {AT_OPERATOR_CURRENT, 2},
        {AT_OPERATOR_FORBIDDEN, 3},
        {AT_ACT_GSM, 0},
        {AT_ACT_GSM_COMPACT, 1},
        {AT_ACT_UTRAN, 2},
        {AT_ACT_GSM_EGPRS, 3},
        {AT_ACT_UTRAN_HSDPA, 4},
        {AT_ACT_UTRAN_HSUPA, 5},
        {AT_ACT_UTRAN_HSPA, 6},
        {AT_ACT_E_UTRAN, 7},
        {AT_REPORTS_OFF, 0},
        {AT_REPORTS_STATUS, 1},
        {AT_REPORTS_LOCATION, 2},
        {AT_REGISTRATION_NONE, 0},
        {AT_REGISTRATION_HOME, 1},
        {AT_REGISTRATION_SEARCHING, 2},
        {AT_REGISTRATION_DENIED, 3},
        {AT_REGISTRATION_UNKNOWN, 4},
        {AT_REGISTRATION_ROAMING, 5},
        {AT_CGATT_DETACHED, 0},
        {AT_CGATT_ATTACHED, 1},
        {AT_CLCK_UNLOCK, 0},
        {AT_CLCK_LOCK, 1},
        {AT_CLCK_QUERY, 2},
        {AT_CLCK_NOT_ACTIVE, 0},
        {AT_CLCK_ACTIVE, 1},
        {AT_CLCK_CLASS_VOICE, 1},
        {AT_CLCK_CLASS_DATA, 2},
        {AT_CLCK_CLASS_FAX, 4},
        {AT_CLCK_CLASS_ALL, 7},
        {AT_CRSM_READ_BINARY, 176},
        {AT_CRSM_GET_RESPONSE, 192},
        {AT_CRSM_UPDATE_BINARY, 214},
        {AT_CRSM_STATUS, 242},
        {AT_CRSM_SW1_DONE, 144},
        {AT_SIM_FILE_ICCID, 0x2FE2},
        {AT_SIM_FILE_IMSI, 0x6F07},
        {AT_SIM_FILE_PROVIDER_NAME, 0x6F46},
        {AT_SIM_FILE_ADMINISTRATIVE, 0x6FAD},
        {AT_SIM_FILE_PROVIDER_DISPLAY, 0x6FCD},
        {AT_SIGNAL_UNKNOWN, 99},
        {AT_SIGNAL_UNKNOWN_EXTENDED, 255},
    };
    for (const auto &[number, agreed] : kNumbers)
        EXPECT_EQ(number, agreed);
    EXPECT_STREQ(AT_FACILITY_SIM, "SC");
    EXPECT_STREQ(AT_FACILITY_NETWORK, "PN");
}

} // namespace
