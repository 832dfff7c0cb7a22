/** Every record that crosses the interface of the library, each declared once and laid out naturally.
 *
 *  Sizes and offsets are part of the binary interface; the assertions at the end hold them on every machine. Texts are
 *  NUL-terminated inside their arrays unless a comment says otherwise. */
#ifndef MAINCONTROL_RECORDS_H
#define MAINCONTROL_RECORDS_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Final results of a reply, and the class of unsolicited reports: AtRes::Result and AtEndFlagRow::result. */
typedef enum AtResult {
    AT_RES_RESULT_OK = 1,
    AT_RES_RESULT_ERROR = 2,
    AT_RES_RESULT_CMS_ERROR = 3,
    AT_RES_RESULT_CME_ERROR = 4,
    AT_RES_RESULT_PROMPT = 11,
    AT_RES_RESULT_REPORT = 12,
    AT_RES_RESULT_NOT_SUPPORT = 13
} AtResult;

/** A raw reply or report. The library hands it to ClientSendCmd() zeroed whole. */
typedef struct AtClientRes {
    uint32_t header[2];     /**< belongs to the AT-client library; never read here */
    char aucDataBuf[10240]; /**< the text as the modem sent it */
} AtClientRes;

/** A parsed reply or report. Whoever hands one to the parser zeroes it first: texts are copied in unterminated. */
typedef struct AtRes {
    uint16_t CmdId;     /**< identifier of the end-flag row that matched: 1 to 6 for final results */
    uint8_t Result;     /**< its final-result class, an AtResult */
    uint16_t ParasLen;  /**< length of Paras for rows with parameters (low 16 bits); otherwise left as it was */
    char Paras[102400]; /**< parameter text; the lines of one command are joined by ";" */
} AtRes;

/** What the parser assembles from the body of an OK reply. */
typedef struct AtCmdLine {
    char CmdName[30];  /**< name of the first named line, kept to 29 characters */
    char Line[102400]; /**< the parameter text so far */
} AtCmdLine;

/** A list of parameter texts. The split functions add to it; whoever calls them zeroes it first. */
typedef struct AtParasList {
    int32_t nCount; /**< entries filled, 0 to 100 */
    /** The entries. An entry of 1024 characters is ended by the first byte of the next one. */
    char strParasLine[100][1024];
} AtParasList;

/** Handler of one report, called by unsolicitedATProcess().
 *  @param report      the parsed report
 *  @param rowFromOne  position of the row that holds the handler, counted from 1
 *  @param tableSize   rows in the table
 *  @param identifier  the report's identifier
 *  @return ignored */
typedef uint32_t (*AtReportHandler)(AtRes *report, int32_t rowFromOne, int32_t tableSize, int32_t identifier);

/** One text that ends a reply or begins a report. */
typedef struct AtEndFlagRow {
    char flag[32];           /**< the exact text, its "\r\n" included */
    int32_t result;          /**< an AtResult */
    int32_t identifier;      /**< becomes AtRes::CmdId */
    int32_t hasParas;        /**< 0: the flag is the whole line; 1: parameters follow up to the next "\r\n" */
    AtReportHandler handler; /**< NULL, or a host's handler */
} AtEndFlagRow;

/** One AT command name with its identifier. */
typedef struct AtCmdRow {
    uint16_t identifier;
    char name[30]; /**< as written behind "AT" */
} AtCmdRow;

/** Two secrets of a PIN operation: PIN, PUK or old PIN, and the new PIN (empty for none). */
typedef struct PinCodePair {
    char code[20];
    char newCode[20];
} PinCodePair;

/** One PDP context definition (3GPP TS 27.007 10.1.1). */
typedef struct PdpContext {
    int32_t cid;
    char pdpType[10]; /**< "IP", "IPV6" or "IPV4V6" */
    char apn[101];
    char pdpAddress[30];
    int32_t dComp; /**< data compression */
    int32_t hComp; /**< header compression */
} PdpContext;

typedef struct PdpContextList {
    int32_t count; /**< 0 to 16 */
    PdpContext context[16];
} PdpContextList;

/** Circuit-switched registration (3GPP TS 27.007 7.2). */
typedef struct CregPara {
    int32_t mode;    /**< report mode n in force */
    int32_t status;  /**< 1 registered at home, 5 roaming, others not registered */
    char lac[36];    /**< location area code, hexadecimal */
    char cellid[36]; /**< cell identity, hexadecimal */
} CregPara;

/** Restricted SIM access (3GPP TS 27.007 8.18). */
typedef struct CrsmCmd {
    int32_t command; /**< 176 is READ BINARY */
    int32_t fileid;  /**< elementary file */
    int32_t p1;
    int32_t p2;
    int32_t p3;     /**< length */
    char data[128]; /**< hexadecimal; empty for reads */
} CrsmCmd;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic" /* standard in C, an extension of every C++ compiler we know */
typedef struct CrsmRes {
    int32_t sw1;
    int32_t sw2;
    char response[]; /**< hexadecimal; as large as whoever made the record made it */
} CrsmRes;
#pragma GCC diagnostic pop

/** Operator selection (3GPP TS 27.007 7.3). */
typedef struct CopsPara {
    int32_t nMode;   /**< 0 automatic, 1 manual, 2 deregister, 3 set the format only, 4 manual, then automatic */
    int32_t nformat; /**< 0 long name, 1 short name, 2 numeric */
    char cOper[64];  /**< operator in that format, without quotes */
    int32_t nAct;    /**< access technology */
} CopsPara;

/** Names and codes of the serving and of the home network (AT+ZDON?). */
typedef struct ZdonInfo {
    char servName[68];
    char servMcc[36];
    char servMnc[36];
    char homeName[68];
    char homeMcc[68];
    char homeMnc[68];
    char roamStatus[36]; /**< "ROAM_OFF", "ROAM_ON" or "ROAM_NONE" */
} ZdonInfo;

/** Network type and service domain (AT+ZPAS?). */
typedef struct ZpasInfo {
    char netType[68];
    char srvDomain[68]; /**< "CS_ONLY", "PS_ONLY", "CS_PS" or another text */
} ZpasInfo;

/** One operator of a scan as the modem lists it. */
typedef struct ScanNetworkInfo {
    int32_t nStatus; /**< 0 unknown, 1 available, 2 current, 3 forbidden */
    char strLongName[68];
    char strName[20]; /**< short name; up to 32 characters are read and run on into the fields behind it */
    char strCode[12]; /**< MCC and MNC */
    int32_t nAcT;     /**< access technology */
} ScanNetworkInfo;

typedef struct ScanNetworkList {
    int32_t nCount;
    ScanNetworkInfo entry[100];
} ScanNetworkList;

/** One operator of a scan as KR_scanNetwork() hands it on. */
typedef struct NetworkInfo {
    int32_t reserved; /**< 0 */
    char strCode[12];
    char strName[20];
    char strLongName[68];
    int32_t nAcT;    /**< 0 GSM family, 2 UMTS family, other values as the modem sent them */
    int32_t nStatus; /**< as in ScanNetworkInfo */
} NetworkInfo;

/** The four values of AT^SYSCONFIG. */
typedef struct SysconfigPara {
    int32_t nMode;
    int32_t nAcqorder;
    int32_t nRoam;
    int32_t nSrvdomain;
} SysconfigPara;

/** Signal figures of AT+ZRSSI as the modem reports them. */
typedef struct ZrssiPara {
    int32_t Rssi;
    int32_t ecValue; /**< Ec/Io */
    int32_t Rscp;
    int32_t rsrq;
    int32_t rsrp;
    int32_t sinr;
    int32_t networkType; /**< form of the reply: 0 one value, 1 two values, 2 four values */
} ZrssiPara;

/** The serving cell. */
typedef struct CellInfo {
    int32_t eci_lac; /**< cell identity or area code */
    int32_t pci;     /**< physical cell identity */
    char band[12];
    int32_t dlEarfcn; /**< downlink channel number */
} CellInfo;

/** Transmit power. */
typedef struct ZairInfo {
    int32_t nettype;
    float txpow;
} ZairInfo;

/** Hears of registration changes. The texts are only valid during the call. */
typedef void (*RegistrationCallback)(int32_t status, char *areaCode, char *cellId);

#define MAINCONTROL_FIELD_AT(record, field, position)                                                                  \
    static_assert(offsetof(record, field) == (position), #record "." #field " moved")
#define MAINCONTROL_RECORD_SIZE(record, size) static_assert(sizeof(record) == (size), #record " changed its size")

MAINCONTROL_RECORD_SIZE(AtClientRes, 10248);
MAINCONTROL_FIELD_AT(AtClientRes, header, 0);
MAINCONTROL_FIELD_AT(AtClientRes, aucDataBuf, 8);
MAINCONTROL_RECORD_SIZE(AtRes, 102406);
MAINCONTROL_FIELD_AT(AtRes, CmdId, 0);
MAINCONTROL_FIELD_AT(AtRes, Result, 2);
MAINCONTROL_FIELD_AT(AtRes, ParasLen, 4);
MAINCONTROL_FIELD_AT(AtRes, Paras, 6);
MAINCONTROL_RECORD_SIZE(AtCmdLine, 102430);
MAINCONTROL_FIELD_AT(AtCmdLine, CmdName, 0);
MAINCONTROL_FIELD_AT(AtCmdLine, Line, 30);
MAINCONTROL_RECORD_SIZE(AtParasList, 102404);
MAINCONTROL_FIELD_AT(AtParasList, nCount, 0);
MAINCONTROL_FIELD_AT(AtParasList, strParasLine, 4);
MAINCONTROL_RECORD_SIZE(AtEndFlagRow, sizeof(void *) == 8 ? 56 : 48);
MAINCONTROL_FIELD_AT(AtEndFlagRow, flag, 0);
MAINCONTROL_FIELD_AT(AtEndFlagRow, result, 32);
MAINCONTROL_FIELD_AT(AtEndFlagRow, identifier, 36);
MAINCONTROL_FIELD_AT(AtEndFlagRow, hasParas, 40);
MAINCONTROL_FIELD_AT(AtEndFlagRow, handler, sizeof(void *) == 8 ? 48 : 44);
MAINCONTROL_RECORD_SIZE(AtCmdRow, 32);
MAINCONTROL_FIELD_AT(AtCmdRow, identifier, 0);
MAINCONTROL_FIELD_AT(AtCmdRow, name, 2);
MAINCONTROL_RECORD_SIZE(PinCodePair, 40);
MAINCONTROL_FIELD_AT(PinCodePair, code, 0);
MAINCONTROL_FIELD_AT(PinCodePair, newCode, 20);
MAINCONTROL_RECORD_SIZE(PdpContext, 156);
MAINCONTROL_FIELD_AT(PdpContext, cid, 0);
MAINCONTROL_FIELD_AT(PdpContext, pdpType, 4);
MAINCONTROL_FIELD_AT(PdpContext, apn, 14);
MAINCONTROL_FIELD_AT(PdpContext, pdpAddress, 115);
MAINCONTROL_FIELD_AT(PdpContext, dComp, 148);
MAINCONTROL_FIELD_AT(PdpContext, hComp, 152);
MAINCONTROL_RECORD_SIZE(PdpContextList, 2500);
MAINCONTROL_FIELD_AT(PdpContextList, count, 0);
MAINCONTROL_FIELD_AT(PdpContextList, context, 4);
MAINCONTROL_RECORD_SIZE(CregPara, 80);
MAINCONTROL_FIELD_AT(CregPara, mode, 0);
MAINCONTROL_FIELD_AT(CregPara, status, 4);
MAINCONTROL_FIELD_AT(CregPara, lac, 8);
MAINCONTROL_FIELD_AT(CregPara, cellid, 44);
MAINCONTROL_RECORD_SIZE(CrsmCmd, 148);
MAINCONTROL_FIELD_AT(CrsmCmd, command, 0);
MAINCONTROL_FIELD_AT(CrsmCmd, fileid, 4);
MAINCONTROL_FIELD_AT(CrsmCmd, p1, 8);
MAINCONTROL_FIELD_AT(CrsmCmd, p2, 12);
MAINCONTROL_FIELD_AT(CrsmCmd, p3, 16);
MAINCONTROL_FIELD_AT(CrsmCmd, data, 20);
MAINCONTROL_RECORD_SIZE(CrsmRes, 8);
MAINCONTROL_FIELD_AT(CrsmRes, sw1, 0);
MAINCONTROL_FIELD_AT(CrsmRes, sw2, 4);
MAINCONTROL_FIELD_AT(CrsmRes, response, 8);
MAINCONTROL_RECORD_SIZE(CopsPara, 76);
MAINCONTROL_FIELD_AT(CopsPara, nMode, 0);
MAINCONTROL_FIELD_AT(CopsPara, nformat, 4);
MAINCONTROL_FIELD_AT(CopsPara, cOper, 8);
MAINCONTROL_FIELD_AT(CopsPara, nAct, 72);
MAINCONTROL_RECORD_SIZE(ZdonInfo, 380);
MAINCONTROL_FIELD_AT(ZdonInfo, servName, 0);
MAINCONTROL_FIELD_AT(ZdonInfo, servMcc, 68);
MAINCONTROL_FIELD_AT(ZdonInfo, servMnc, 104);
MAINCONTROL_FIELD_AT(ZdonInfo, homeName, 140);
MAINCONTROL_FIELD_AT(ZdonInfo, homeMcc, 208);
MAINCONTROL_FIELD_AT(ZdonInfo, homeMnc, 276);
MAINCONTROL_FIELD_AT(ZdonInfo, roamStatus, 344);
MAINCONTROL_RECORD_SIZE(ZpasInfo, 136);
MAINCONTROL_FIELD_AT(ZpasInfo, netType, 0);
MAINCONTROL_FIELD_AT(ZpasInfo, srvDomain, 68);
MAINCONTROL_RECORD_SIZE(ScanNetworkInfo, 108);
MAINCONTROL_FIELD_AT(ScanNetworkInfo, nStatus, 0);
MAINCONTROL_FIELD_AT(ScanNetworkInfo, strLongName, 4);
MAINCONTROL_FIELD_AT(ScanNetworkInfo, strName, 72);
MAINCONTROL_FIELD_AT(ScanNetworkInfo, strCode, 92);
MAINCONTROL_FIELD_AT(ScanNetworkInfo, nAcT, 104);
MAINCONTROL_RECORD_SIZE(ScanNetworkList, 10804);
MAINCONTROL_FIELD_AT(ScanNetworkList, nCount, 0);
MAINCONTROL_FIELD_AT(ScanNetworkList, entry, 4);
MAINCONTROL_RECORD_SIZE(NetworkInfo, 112);
MAINCONTROL_FIELD_AT(NetworkInfo, reserved, 0);
MAINCONTROL_FIELD_AT(NetworkInfo, strCode, 4);
MAINCONTROL_FIELD_AT(NetworkInfo, strName, 16);
MAINCONTROL_FIELD_AT(NetworkInfo, strLongName, 36);
MAINCONTROL_FIELD_AT(NetworkInfo, nAcT, 104);
MAINCONTROL_FIELD_AT(NetworkInfo, nStatus, 108);
MAINCONTROL_RECORD_SIZE(SysconfigPara, 16);
MAINCONTROL_FIELD_AT(SysconfigPara, nMode, 0);
MAINCONTROL_FIELD_AT(SysconfigPara, nAcqorder, 4);
MAINCONTROL_FIELD_AT(SysconfigPara, nRoam, 8);
MAINCONTROL_FIELD_AT(SysconfigPara, nSrvdomain, 12);
MAINCONTROL_RECORD_SIZE(ZrssiPara, 28);
MAINCONTROL_FIELD_AT(ZrssiPara, Rssi, 0);
MAINCONTROL_FIELD_AT(ZrssiPara, ecValue, 4);
MAINCONTROL_FIELD_AT(ZrssiPara, Rscp, 8);
MAINCONTROL_FIELD_AT(ZrssiPara, rsrq, 12);
MAINCONTROL_FIELD_AT(ZrssiPara, rsrp, 16);
MAINCONTROL_FIELD_AT(ZrssiPara, sinr, 20);
MAINCONTROL_FIELD_AT(ZrssiPara, networkType, 24);
MAINCONTROL_RECORD_SIZE(CellInfo, 24);
MAINCONTROL_FIELD_AT(CellInfo, eci_lac, 0);
MAINCONTROL_FIELD_AT(CellInfo, pci, 4);
MAINCONTROL_FIELD_AT(CellInfo, band, 8);
MAINCONTROL_FIELD_AT(CellInfo, dlEarfcn, 20);
MAINCONTROL_RECORD_SIZE(ZairInfo, 8);
MAINCONTROL_FIELD_AT(ZairInfo, nettype, 0);
MAINCONTROL_FIELD_AT(ZairInfo, txpow, 4);

#undef MAINCONTROL_FIELD_AT
#undef MAINCONTROL_RECORD_SIZE

#ifdef __cplusplus
}
#endif

#endif
