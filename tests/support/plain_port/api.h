#ifndef TESTS_SUPPORT_PLAIN_PORT_API_H
#define TESTS_SUPPORT_PLAIN_PORT_API_H

#include <mainControl/records.h>

#include "tests/support/plain_port/world.h"

/** Every function of the API and every operation inside it that is exported, in the world that it is to talk to. */
namespace plain {

uint32_t KR_setCurrentPlatform(World &world, int32_t platform);
uint32_t KR_startAT(World &world);
uint32_t KR_echo(World &world, int32_t mode);
uint32_t KR_setCmee(World &world, int32_t mode);
uint32_t KR_getManufacturer(World &world, int32_t size, char *pString);
uint32_t KR_getModelID(World &world, int32_t size, char *pString);
uint32_t KR_getFirmwareRevision(World &world, int32_t size, char *pString);
uint32_t KR_getHardwareRevision(World &world, int32_t size, char *pString);
uint32_t KR_getIMSI(World &world, int32_t size, char *pString);
uint32_t KR_getIMEI(World &world, int32_t size, char *pIMEIString);
uint32_t KR_getSerialNumber(World &world, int32_t size, char *pSerialNumber);
uint32_t KR_getICCID(World &world, int32_t size, char *pString);
uint32_t KR_getVoiceNumber(World &world, int32_t size, char *pString);
uint32_t disposeVoiceNumber_1(World &world, AtRes *parsed, int32_t size, char *pString);
uint32_t KR_setCregNotifyCallback(World &world, RegistrationCallback pCallback);
uint32_t KR_setCeregNotifyCallback(World &world, RegistrationCallback pCallback);
uint32_t KR_setCgregNotifyCallback(World &world, RegistrationCallback pCallback);
uint32_t setAtCallbackRegist(World &world);
uint32_t ProcessMainControlAtCallback(World &world, AtClientRes *pRes);
uint32_t CREG_Notify(World &world, AtRes *report);
uint32_t CEREG_Notify(World &world, AtRes *report);
uint32_t CGREG_Notify(World &world, AtRes *report);
uint32_t CGEV_Notify(World &world, AtRes *report);
uint32_t emptyNotify(World &world, AtRes *report); ///< each of the others
uint32_t KR_getServingNetwork(World &world, int32_t *pCSDomain, int32_t *pPSDomain, int32_t *pRoaming, int32_t *pMCC,
                              int32_t *pMNC, int32_t nNameLen, char *pName, int32_t nRplmnLen, char *pRplmnName,
                              char *pPCDomain);
uint32_t KR_getServingNetworkC(World &world, int32_t *pCSDomain, int32_t *pPSDomain, int32_t *pRoaming, int32_t *pMCC,
                               int32_t *pMNC, int32_t nNameLen, char *pName, int32_t nRplmnLen, char *pRplmnName,
                               char *pPCDomain);
uint32_t KR_getHomeNetwork(World &world, int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName);
uint32_t KR_scanNetwork(World &world, NetworkInfo *pNetworks, int32_t *pArraySize);
uint32_t KR_setCops(World &world, int32_t nMode, int32_t nformat, const char *cOper, int32_t nAct);
uint32_t KR_getCops(World &world, int32_t *pMode, int32_t *pformat, char *cOper, int32_t *pAct);
uint32_t translateDomain(World &world, int32_t code, int32_t *pCSDomain, int32_t *pPSDomain);
uint32_t getZpasInfo(World &world, int32_t *pCSDomain, int32_t *pPSDomain, int32_t nNameLen, char *pName,
                     char *pPCDomain);
uint32_t getNetworkInfoByCops(World &world, int32_t *pMCC, int32_t *pMNC, int32_t nNameLen, char *pName);
uint32_t KR_setCregMode(World &world, int32_t cregType);
uint32_t KR_getCregMode(World &world, CregPara *cregPara);
uint32_t KR_setDomainAttachMode(World &world, int32_t mode);
uint32_t KR_getEPSRegisterState(World &world, int32_t *pCount, int32_t *pStat, char *cLac, char *cCi, int32_t *pAct);
uint32_t KR_setEPSRegisterState(World &world, int32_t mode);
uint32_t KR_getGPRSRegisterState(World &world, int32_t *pMode, int32_t *pStat);
uint32_t KR_setGPRSRegisterState(World &world, int32_t mode);
uint32_t KR_getSPNInfo(World &world, CrsmCmd tCrsmcmd, CrsmRes *pCrsmres);
uint32_t KR_parseSPNName(World &world, const char *pSrcSpnInfo, char *pDest);
uint32_t KR_spnFriendOperlistInvert(World &world, const char *pSrcSpnFriendOperlist, char *pDestFriendOperlist);
uint32_t KR_setNetworkPreferMode(World &world, int32_t technologyPref, int32_t supportBandSet);
uint32_t KR_getNetworkPreferMode(World &world, int32_t *pTechnologyPref);
uint32_t KR_setNetworkRegistrationMode(World &world, int32_t mode, const char *pCode, int32_t Status, int32_t dwAct,
                                       int32_t supportBandSet);
uint32_t KR_setLteNetworkPreference(World &world, int32_t technologyPref);
uint32_t SetbandByBand(World &world, const char *str);
uint32_t KR_getPlmnInfo(World &world, AtParasList *destination);
uint32_t translatePrefmodeToZsnt(World &world, int32_t mode, int32_t *p1, int32_t *p2, int32_t *p3);
uint32_t translatePrefmodeToSysconfig(World &world, int32_t mode, SysconfigPara *values);
uint32_t translatePrefmodeToErat(World &world, int32_t mode, int32_t *rat, int32_t *pref);
uint32_t translateZsntToPrefmode(World &world, int32_t *mode, int32_t p1, int32_t p2, int32_t p3, int32_t flag);
uint32_t translateEratToPrefmode(World &world, int32_t *mode, int32_t rat, int32_t pref, int32_t flag);
uint32_t translateSysconfigToPrefmode(World &world, int32_t *mode, int32_t nMode, int32_t nAcqorder);
uint32_t setPrefMode(World &world, int32_t mode, int32_t supportBandSet);
uint32_t getPrefMode(World &world, int32_t *mode, int32_t flag);
uint32_t setAutoSearchCheckNetwork(World &world);
uint32_t KR_get4GSignalStrength(World &world, int32_t *rxlev, int32_t *ber, int32_t *rscp, int32_t *ecno, int32_t *rsrq,
                                int32_t *rsrp);
uint32_t KR_getSignalStrength(World &world, int32_t *pSignalStrength);
uint32_t KR_getZRSSIInfo(World &world, ZrssiPara *pZrssiPara);
uint32_t KR_getCellInfo(World &world, CellInfo *pCellInfo);
uint32_t KR_getTxPowerInfo(World &world, ZairInfo *pZairInfo);
uint32_t KR_getSysinfo(World &world, int32_t *nSrvstatus, int32_t *nSrvdomain, int32_t *nRoamstatus, int32_t *nSysmode,
                       int32_t *nSimstate, int32_t nReserve, int32_t nSysSubmode);
uint32_t KR_getZltelcInfo(World &world, int32_t *nAction, int32_t *nUarfcn, int32_t *nCellParald);
uint32_t KR_setZgaat(World &world, int32_t nState);
uint32_t KR_getSysconfig(World &world, int32_t *nMode, int32_t *nAcqorder, int32_t *nRoam, int32_t *nSrvdomain);
uint32_t KR_setSysconfig(World &world, int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain);
uint32_t KR_setDefaultProfile(World &world, int32_t profileCid, int32_t pPDPType, const char *pIPAddress,
                              const char *pPrimaryDNS, const char *pSecondaryDNS, int32_t pAuthentication,
                              const char *pName, const char *pAPNName, const char *pDialNum, const char *pUsername,
                              const char *pPassword);
uint32_t KR_setFacilityLock(World &world, const char *strFac, int32_t iMode, const char *strPasswd, int32_t iClass,
                            int32_t *iStatus);
uint32_t KR_setPINProtection(World &world, int32_t id, int32_t bEnable, const char *pValue, int32_t iClass,
                             int32_t *iStatus, int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft);
uint32_t KR_verifyPIN(World &world, int32_t id, const char *pValue, int32_t *pVerifyRetriesLeft,
                      int32_t *pUnblockRetriesLeft);
uint32_t KR_unblockPIN(World &world, int32_t id, const char *pPUKValue, const char *pNewValue,
                       int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft);
uint32_t KR_changePIN(World &world, int32_t id, const char *pOldValue, const char *pNewValue,
                      int32_t *pVerifyRetriesLeft, int32_t *pUnblockRetriesLeft);
uint32_t KR_getPINStatus(World &world, int32_t id, int32_t *pStatus, int32_t *pVerifyRetriesLeft,
                         int32_t *pUnblockRetriesLeft);
int32_t isUSimTsp(World &world);
int32_t translatePinStateFromSettingToMts(World &world, int32_t state, uint32_t result, int32_t lockStatus);
uint32_t KR_getLockStatus(World &world, int32_t *pstatus, int32_t *pitems);
uint32_t KR_setLockCode(World &world, const char *strcode);
uint32_t KR_getLockLefttimes(World &world, int32_t *pLefttimes);
uint32_t KR_getHardLockStatus(World &world, int32_t *pHardAuth, int32_t *pImsiAuth);
uint32_t KR_setControlKeyLock(World &world, int32_t controlKeyID, int32_t opID, const char *strcode);
uint32_t KR_getControlKeyStatus(World &world, int32_t controlKeyID, int32_t *pState, int32_t *pLefttimes,
                                int32_t *pUnlockLefttimes);
uint32_t getNetLockMode_Qualcomm(World &world, int32_t *mode);
uint32_t getNetLockMode_Icera(World &world, int32_t *mode);
int32_t translateLockStatusToMode(World &world, int32_t status, int32_t items);
uint32_t KR_setPower(World &world, int32_t powerMode);
uint32_t KR_getPower(World &world, int32_t *pPowerMode);
uint32_t KR_getOperationMode(World &world, int32_t *pOperMode);
uint32_t KR_setOperationMode(World &world, int32_t operMode);
uint32_t KR_getNetworkSelectionMode(World &world, int32_t *pSelectionMode);
uint32_t getSlelectMode(World &world, int32_t *selectionMode);
uint32_t KR_setZSET(World &world, const char *iState, int32_t iMode, char *oState, int32_t *oMode);
uint32_t KR_setFOTACTR(World &world, int32_t iType, int32_t *oType, int32_t *oResult);
uint32_t KR_Sendusb0IPtoMarvell(World &world, const char *address);
uint32_t KR_SendNetgateIPtoMarvell(World &world, const char *address);

} // namespace plain

#endif
