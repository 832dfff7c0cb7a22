// The two tables as they stand at load, and the look-ups in the command table.

#include <string>

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"
#include "tests/support/saved_tables.h"
#include "tests/support/scripted_host.h"

namespace {

struct FlagRow {
    const char *flag;
    int32_t result;
    int32_t identifier;
    int32_t hasParas;
};

const FlagRow kFlags[] = {
    {"\r\nOK\r\n", 1, 1, 0},
    {"\r\nERROR\r\n", 2, 2, 0},
    {"\r\n+CMS ERROR: ", 3, 3, 1},
    {"\r\n+CME ERROR: ", 4, 4, 1},
    {"\r\n> ", 11, 5, 0},
    {"\r\nnot support\r\n", 13, 6, 0},
    {"\r\n+TSTUD: ", 12, 4116, 1},
    {"\r\n+TSTC: ", 12, 4115, 1},
    {"\r\n+Zunsupport: ", 12, 4114, 1},
    {"\r\n+ZMTime: ", 12, 4113, 1},
    {"\r\n+ZSMSR: ", 12, 4112, 1},
    {"\r\n+ZDIST: ", 12, 4107, 1},
    {"\r\n+ZSTI: ", 12, 4105, 1},
    {"\r\n+ZEND\r\n", 12, 4111, 0},
    {"\r\n+ZPSTM: ", 12, 4110, 1},
    {"\r\n+STKPCI: ", 12, 4110, 1},
    {"\r\n+ZGINP: ", 12, 4109, 1},
    {"\r\n+ZGINK: ", 12, 4108, 1},
    {"\r\n+ZCLAS: ", 12, 4097, 1},
    {"\r\n+ZVMAIL: ", 12, 24, 1},
    {"\r\n+CMTI: ", 12, 25, 1},
    {"\r\n+CDSI: ", 12, 26, 1},
    {"\r\n+CDS: ", 12, 27, 1},
    {"\r\n+CBM: ", 12, 29, 1},
    {"\r\n+CUSD: ", 12, 105, 1},
    {"\r\n+CEREG: ", 12, 12304, 1},
    {"\r\n+CGREG: ", 12, 12305, 1},
    {"\r\n+ZDONR: ", 12, 4158, 1},
    {"\r\n+ZPASR: ", 12, 4157, 1},
    {"\r\n+ZOPERTER: ", 12, 4169, 1},
    {"\r\n$ARME: ", 12, 56, 1},
    {"\r\n+ZMCON:", 12, 57, 1},
    {"\r\n+ZMCONV6:", 12, 58, 1},
    {"\r\n+CON_STATUS:", 12, 60, 1},
    {"\r\n+ZCONSTAT: ", 12, 12298, 1},
    {"\r\n+ZGIPDNS: ", 12, 12299, 1},
    {"\r\n+ZPBIC: ", 12, 12307, 1},
    {"\r\n+PSBEARER: ", 12, 4177, 1},
    {"\r\n+EUSIM: ", 12, 4181, 1},
    {"\r\n+ECSQ: ", 12, 4182, 1},
    {"\r\n+ESMLA: ", 12, 4183, 1},
    {"\r\n+ECFU: ", 12, 4184, 1},
    {"\r\n+ESPEECH: ", 12, 4185, 1},
    {"\r\n+ESCRI: ", 12, 4186, 1},
    {"\r\n+ESIMS: ", 12, 4187, 1},
    {"\r\n+ETESTSIM: ", 12, 4188, 1},
    {"\r\n+ECIPH: ", 12, 4189, 1},
    {"\r\n+ECELLINFO: ", 12, 4190, 1},
    {"\r\n+ENWINFO: ", 12, 4191, 1},
    {"\r\n+CGEV: ", 12, 4193, 1},
};

/** Every command row in order, as "identifier=name,". */
const char kCommands[] =
    "7=,8=E,9=+CSQ,10=^HDRCSQ,11=I,12=+GSN,13=+GMI,14=+GMR,15=+GMM,16=+CGMI,17=+CGMR,18=+CGMM,19=+CIMI,20=+CGSN,"
    "21=^HWVER,23=+CMGF,24=+ZVMAIL,25=+CMTI,26=+CDSI,27=+CDS,28=+CMT,29=+CBM,30=+CNMI,31=+CMGD,32=+CPMS,33=+CSCA,"
    "34=+CSAS,35=+CRES,36=+CMGS,37=+CMGW,38=+CMGL,39=+CMGR,40=+CSMS,41=+CNMA,42=+CGSMS,43=+CMMS,44=+CPWD,45=+CPIN,"
    "46=^CPIN,47=+CLCK,48=+CRSM,49=+CGDCONT,50=*CGATT,51=$ARMEE,52=+ZMCON,54=+IPv6_info,55=+IPv4_info,56=$ARME,"
    "57=+ZMCON,53=+ZMCONV6,58=+ZMCONV6,59=+CON_STATUS,60=+CON_STATUS,61=+CPBS,62=+CPBR,63=+CPBW,65=+CSCS,66=+ZPDTYPE,"
    "67=+CPOL,68=+COPS,69=+CFUN,70=+CREG,72=+CNUM,73=+CGREG,22=+CMEE,74=+CGEQREQ,75=D,76=+CDV,77=A,78=+CHUP,79=H,"
    "80=+CHV,81=+CRING,82=+RING,83=+VOICE NO CARRIER,85=+STOPRING,86=+RINGBACK,84=+VOICE CONNECT,87=+ANSWER,"
    "88=+HANGUP,89=+CLIP,90=+VTS,91=+CMUT,92=+CLVL,93=+CMVL,94=+ZECC,95=+CBST,96=+ZDET,97=%ICSCALL,98=%IGSC,"
    "99=%ILOCKNUM,101=+CCFC,102=+CCWA,103=+CHLD,104=+CUSD,105=+CUSD,100=+CLCC,4097=+ZCLAS,4098=+ZSTM,4100=*TSTMENU,"
    "4101=+ZSELM,4128=*TSTMS,4105=+ZSTI,4106=+ZSELI,4107=+ZDIST,4108=+ZGINK,4099=+ZSTKM,4102=+STKENV,4103=+STKTR,"
    "4104=+STKSMS,4109=+ZGINP,4110=+ZPSTM,4111=+ZEND,4112=+ZSMSR,4113=+ZMTime,4114=+Zunsupport,4117=+ZBK,4118=+ZINKR,"
    "4119=+ZINPR,4120=+ZDISTR,4121=+ZRSDL,4122=*TSTEV,4123=*TSTAUTO,4124=*TSTRT,4125=*TSTTONE,4126=*TSTRF,"
    "4127=*TSTPD,4128=*TSTMS,4129=*TSTMODE,4130=*TSTCR,4131=*TSTGC,4132=+ZDON,4133=%IPSYS,4134=+ZSNT,4135=+ZDSNT,"
    "4137=%NWSTATE,4136=+ZPAS,4138=%IHPLMN,4139=%IFWR,4140=+ZPCB,4141=+ZOPRT,4142=+ZSMSD,4143=+ZUSIM,4144=+ZCPBR,"
    "4145=+ZCPBW,4146=%PINNUM,4147=+ZPINPUK,4148=+ZRSSI,4149=+CQIUPD,4150=+ZDFLOW,4151=+ZSEC,4152=+ZLOCK,4153=+ZNCK,"
    "4154=+ZLKLIST,4155=+ZBANDI,8202=^SYSINFO,4156=+Zppdl,4158=+ZDONR,4157=+ZPASR,4159=+ZMSN,4160=%IPDPACT,"
    "4161=%IPDPCFG,4163=+ZPREFBAND,4164=+ZTAG,4165=+ZVPIN,4166=+ZPSWD,4167=+ZCELLINFO,4168=+ZOPERTE,4169=+ZOPERTER,"
    "4170=+EUSIM,4171=+ENBR,4172=+EPSB,4173=+EPBSE,4174=+EPINC,4175=+ERAT,4176=+ESMLCK,4177=+PSBEARER,4178=+CGPRCO,"
    "4179=+CGPADDR,4180=+CGDATA,4181=+EUSIM,4182=+ECSQ,4183=+ESMLA,4184=+ECFU,4185=+ESPEECH,4186=+ESCRI,4187=+ESIMS,"
    "4188=+ETESTSIM,4189=+ECIPH,4190=+ECELLINFO,4191=+ENWINFO,4192=+CGEREP,4193=+CGEV,4194=+ZGSWITCH,4195=+ZGINIT,"
    "4196=+ZGRUN,4197=+ZGMODE,4198=+ZGQOS,4199=+ZGFIXRATE,4200=+ZGURL,4201=+ZGTIMEINJ,4202=+zgautodown,4203=+zgquery,"
    "4204=+ZGSETDATA,4205=+zgdelet,4206=+ZGXTRA,4207=+ZGSTATE,4208=+ZGPSR,4209=+ZGPSERROR,4210=+ZGMEASURE,"
    "4211=+GPSEVENT,4212=+ZGPS_XTRA_VALID,4213=+ZGPS_XTRA_FILE_DOWN,8209=^SMMEMFULL,8210=^HCMT,8211=^HCDS,"
    "8212=^HCMGSS,8213=^HCMGSF,8214=^HSMSSS,8215=^HCMGS,8216=^HCMGW,8217=^HCMGL,8218=^HCMGR,8219=+CCMGW,8220=+CCMGL,"
    "8221=+CCMGR,8222=+CCMGD,8223=+CCNMI,8224=+CCPMS,8225=^CPBR,8226=^CPBW,8193=^CONN,8194=^CEND,8195=^HRSSILVL,"
    "8196=^MODE,8197=^SIMST,8198=^ORIG,8199=^DTMF,8200=^CVOICE,8201=^DDSETEX,8202=^SYSINFO,8203=^PREFMODE,"
    "8204=^RESET,8205=^VOLT,8206=^MEID,8207=^DSDORMANT,8208=^FLASH,106=+XX,107=^SYSCONFIG,4214=+SPECC,4215=+SIND,"
    "4216=+ECIND,108=^HVER,109=^CARDMODE,4217=*SPREADY,4218=+SPSPINFO,4219=+SPSIMLOCKINFO,12289=+ZSET,12290=+ZRAP,"
    "12291=+ZEACT,12292=+ZGAAT,12293=+CEREG,12294=+CGATT,12295=+CGACT,12296=+ZGACT,12300=+BGLTEPLMN,12301=^SCPBR,"
    "12302=^SCPBW,12303=+ZCPBQ,12304=+CEREG,12305=+CGREG,12308=+UNREADSMS,12298=+ZCONSTAT,12299=+ZGIPDNS,"
    "12307=+ZPBIC,12306=^ZPCUIVERSION,";

template <size_t Size>
bool isZeroBehind(const char (&field)[Size])
{
    const auto *const end = std::find(std::begin(field), std::end(field), '\0');
    return end != std::end(field) && std::all_of(end, std::end(field), [](char byte) { return byte == '\0'; });
}

TEST(EndFlagTable, HoldsTheseRows)
{
    ASSERT_EQ(KoraWcdma_AtEndFlgTableSize, 50);
    static_assert(std::size(kFlags) == 50 && std::size(KoraWcdma_AtEndFlgTable) == 50);
    for (size_t i = 0; i < std::size(kFlags); ++i) {
        const AtEndFlagRow &row = KoraWcdma_AtEndFlgTable[i];
        SCOPED_TRACE(i);
        ASSERT_TRUE(isZeroBehind(row.flag));
        EXPECT_STREQ(row.flag, kFlags[i].flag);
        EXPECT_EQ(row.result, kFlags[i].result);
        EXPECT_EQ(row.identifier, kFlags[i].identifier);
        EXPECT_EQ(row.hasParas, kFlags[i].hasParas);
        EXPECT_EQ(row.handler, nullptr);
    }
}

TEST(CommandTable, HoldsTheseRows)
{
    ASSERT_EQ(KoraWcdma_AtCmdTableSize, 276);
    static_assert(std::size(KoraWcdma_AtCmdTable) == 276);
    std::string rows;
    for (const AtCmdRow &row : KoraWcdma_AtCmdTable) {
        ASSERT_TRUE(isZeroBehind(row.name)) << row.identifier;
        rows += std::to_string(row.identifier) + "=" + row.name + ",";
    }
    EXPECT_EQ(rows, kCommands);
}

constexpr int32_t kUntouched = -77;

/** A look-up by identifier: its code, and the index it wrote. */
std::pair<uint32_t, int32_t> byId(uint32_t identifier)
{
    int32_t index = kUntouched;
    const uint32_t code = _Find_Cmd_By_ID(&index, identifier);
    return {code, index};
}

std::pair<uint32_t, int32_t> byName(const std::string &name)
{
    const GuardedText guarded(name);
    int32_t index = kUntouched;
    const uint32_t code = _Find_Cmd_By_Name(&index, guarded);
    return {code, index};
}

using Found = std::pair<uint32_t, int32_t>;
const Found kNotFound = {UNI_ERROR_BK_FAIL1, kUntouched};

TEST(FindById, GivesTheFirstRowOfEachIdentifier)
{
    for (int32_t i = 0; i < KoraWcdma_AtCmdTableSize; ++i) {
        const uint32_t identifier = KoraWcdma_AtCmdTable[i].identifier;
        int32_t first = 0;
        while (KoraWcdma_AtCmdTable[first].identifier != identifier)
            ++first;
        EXPECT_EQ(byId(identifier), Found(0, first)) << identifier;
        EXPECT_EQ(first == i, !((identifier == 4128 || identifier == 8202) && i > first)) << i;
    }
}

struct IdCase {
    uint32_t identifier;
    uint32_t code;
    const char *name; ///< of the row found
};

TEST(FindById, ComparesTheLowSixteenBits)
{
    const IdCase cases[] = {
        {70, 0, "+CREG"},
        {65536 + 70, 0, "+CREG"},
        {0xFFFF0046, 0, "+CREG"},
        {7, 0, ""},
        {12306, 0, "^ZPCUIVERSION"},
        {8202, 0, "^SYSINFO"},
        {4128, 0, "*TSTMS"},
        {0, 19, ""},
        {64, 19, ""},
        {71, 19, ""},
        {65536 + 71, 19, ""},
        {4162, 19, ""},
        {12297, 19, ""},
        {1, 19, ""},
        {6, 19, ""},
        {0xFFFFFFFF, 19, ""},
    };
    for (const IdCase &c : cases) {
        const Found found = byId(c.identifier);
        EXPECT_EQ(found.first, c.code) << c.identifier;
        if (c.code != 0) {
            EXPECT_EQ(found.second, kUntouched) << c.identifier;
        } else {
            EXPECT_STREQ(KoraWcdma_AtCmdTable[found.second].name, c.name);
        }
    }
}

TEST(FindByName, GivesTheFirstRowOfEachName)
{
    const std::string twice = ",+ZMCON,+ZMCONV6,+CON_STATUS,+CUSD,+EUSIM,+CEREG,+CGREG,*TSTMS,^SYSINFO,";
    for (int32_t i = 0; i < KoraWcdma_AtCmdTableSize; ++i) {
        const std::string name = KoraWcdma_AtCmdTable[i].name;
        int32_t first = 0;
        while (KoraWcdma_AtCmdTable[first].name != name)
            ++first;
        EXPECT_EQ(byName(name), Found(0, first)) << name;
        EXPECT_TRUE(first == i || twice.find("," + name + ",") != std::string::npos) << name;
    }
}

struct NameCase {
    const char *name;
    uint32_t code;
    int32_t identifier; ///< of the row found
};

TEST(FindByName, ComparesTheWholeName)
{
    const NameCase cases[] = {
        {"", 0, 7},
        {"+CEREG", 0, 12293},
        {"+CREG", 0, 70},
        {"+CGREG", 0, 73},
        {"+ZMCON", 0, 52},
        {"+ZMCONV6", 0, 53},
        {"+CUSD", 0, 104},
        {"+EUSIM", 0, 4170},
        {"+CON_STATUS", 0, 59},
        {"E", 0, 8},
        {"^ZPCUIVERSION", 0, 12306},
        {"+zgdelet", 0, 4205},
        {"+cereg", 19, 0},
        {"e", 19, 0},
        {"+CRE", 19, 0},
        {"+CREG ", 19, 0},
        {" +CREG", 19, 0},
        {"+CREGX", 19, 0},
        {"CREG", 19, 0},
        {"+ZGDELET", 19, 0},
        {"+VOICE", 19, 0},
        {"+VOICE CONNECT", 0, 84},
        {"+A NAME LONGER THAN ANY FIELD HOLDS", 19, 0},
    };
    for (const NameCase &c : cases) {
        const Found found = byName(c.name);
        EXPECT_EQ(found.first, c.code) << c.name;
        if (c.code != 0) {
            EXPECT_EQ(found.second, kUntouched) << c.name;
        } else {
            EXPECT_EQ(KoraWcdma_AtCmdTable[found.second].identifier, c.identifier) << c.name;
        }
    }
}

TEST(LookUps, LogNothing)
{
    const scripted::Host host;
    byId(70);
    byId(71);
    byName("+CREG");
    byName("+creg");
    EXPECT_EQ(host.texts(), std::vector<std::string>{});
}

TEST(LookUps, FailOnNull)
{
    int32_t index = kUntouched;
    EXPECT_EQ(_Find_Cmd_By_ID(nullptr, 70), UNI_ERROR_BK_FAIL1);
    EXPECT_EQ(_Find_Cmd_By_Name(nullptr, "+CREG"), UNI_ERROR_BK_FAIL1);
    EXPECT_EQ(_Find_Cmd_By_Name(&index, nullptr), UNI_ERROR_BK_FAIL1);
    EXPECT_EQ(_Find_Cmd_By_Name(nullptr, nullptr), UNI_ERROR_BK_FAIL1);
    EXPECT_EQ(index, kUntouched);
}

class ChangedTable : public testing::Test {
  protected:
    SavedTables saved;
};

TEST_F(ChangedTable, SizeWordEndsTheSearch)
{
    KoraWcdma_AtCmdTableSize = 2;
    EXPECT_EQ(byId(8), Found(0, 1));
    EXPECT_EQ(byName("E"), Found(0, 1));
    EXPECT_EQ(byId(9), kNotFound);
    EXPECT_EQ(byName("+CSQ"), kNotFound);
    for (const int32_t none : {0, -1, -2147483647 - 1}) {
        KoraWcdma_AtCmdTableSize = none;
        EXPECT_EQ(byId(7), kNotFound) << none;
        EXPECT_EQ(byName(""), kNotFound) << none;
    }
}

// Memory behind the array is no row, even where its bytes would match.
TEST_F(ChangedTable, SizeWordBeyondTheArrayAddsNoRow)
{
    for (const int32_t size : {277, 2000, 2147483647}) {
        KoraWcdma_AtCmdTableSize = size;
        EXPECT_EQ(byId(12306), Found(0, 275));
        EXPECT_EQ(byName("^ZPCUIVERSION"), Found(0, 275));
        EXPECT_EQ(byId(71), kNotFound);
        EXPECT_EQ(byId(0), kNotFound);
        EXPECT_EQ(byName("+NONE"), kNotFound);
    }
}

TEST_F(ChangedTable, IsObeyedByTheNextLookUp)
{
    KoraWcdma_AtCmdTable[100].identifier = 71;
    setField(KoraWcdma_AtCmdTable[100].name, "+OWN");
    EXPECT_EQ(byId(71), Found(0, 100));
    EXPECT_EQ(byName("+OWN"), Found(0, 100));
    KoraWcdma_AtCmdTable[40].identifier = 71;
    setField(KoraWcdma_AtCmdTable[40].name, "+OWN");
    EXPECT_EQ(byId(71), Found(0, 40));
    EXPECT_EQ(byName("+OWN"), Found(0, 40));
}

// The row behind begins with bytes that would lengthen a name read past its field.
TEST_F(ChangedTable, NameThatFillsItsFieldEndsWithIt)
{
    const std::string full(30, 'N');
    setField(KoraWcdma_AtCmdTable[50].name, full);
    KoraWcdma_AtCmdTable[51].identifier = 'N' * 256 + 'N';
    setField(KoraWcdma_AtCmdTable[275].name, full);
    EXPECT_EQ(byName(full), Found(0, 50));
    EXPECT_EQ(byName(full.substr(1)), kNotFound);
    EXPECT_EQ(byName(full + "N"), kNotFound);
    EXPECT_EQ(byName(full + "NN"), kNotFound);
    setField(KoraWcdma_AtCmdTable[50].name, "+X");
    EXPECT_EQ(byName(full), Found(0, 275));
}

} // namespace
