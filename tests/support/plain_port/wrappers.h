#ifndef TESTS_SUPPORT_PLAIN_PORT_WRAPPERS_H
#define TESTS_SUPPORT_PLAIN_PORT_WRAPPERS_H

#include <mainControl/records.h>

#include "tests/support/plain_port/world.h"

/** Every wrapper under its own name, in the world that it is to talk to. */
namespace plain {

uint32_t atStart(World &world);
uint32_t ateExec(World &world, int32_t mode);
uint32_t cmeeSet(World &world, int32_t mode);
uint32_t cgsnExec(World &world, char *serial);
uint32_t zmsnRead(World &world, char *serial);
uint32_t clckSet(World &world, const char *facility, int32_t mode, const char *password, int32_t class_,
                 int32_t *status);
uint32_t xxSet(World &world, int32_t selector, int32_t *count);
uint32_t epincRead(World &world, int32_t counts[4]);
uint32_t cardmodeExec(World &world, int32_t *mode);
uint32_t zrapRead(World &world, int32_t cardType, int32_t *pinLeft, int32_t *pukLeft);
uint32_t zpinpukTest(World &world, int32_t *pinLeft, int32_t *pukLeft);
uint32_t cpinRead(World &world, int32_t *state);
uint32_t cpinSet(World &world, PinCodePair pair);
uint32_t cpwdSet(World &world, PinCodePair pair);
uint32_t zsecRead(World &world, int32_t *status, int32_t *items);
uint32_t zlcokRead(World &world, int32_t *hardAuth, int32_t *imsiAuth);
uint32_t znckSet(World &world, const char *code);
uint32_t znckRead(World &world, int32_t *attemptsLeft);
uint32_t spsimlockinfoExec(World &world, int32_t *attemptsLeft);
uint32_t esmlckSet(World &world, int32_t category, int32_t operation, const char *code);
uint32_t esmlckRead(World &world, int32_t groupIndex, int32_t *third, int32_t *fourth, int32_t *second);
uint32_t cgdcontRead(World &world, PdpContextList *list);
uint32_t CGDCONT_ReadATResProcess(World &world, AtRes *parsed, PdpContextList *list);
uint32_t cgdcontSet(World &world, PdpContext context);
uint32_t cgdfltSet(World &world, PdpContext context);
uint32_t zoprtRead(World &world, int32_t *mode);
uint32_t zoprtSet(World &world, int32_t mode);
uint32_t zsetSet(World &world, const char *name, int32_t value, char *outState, int32_t *outMode);
uint32_t FOTACTRSet(World &world, int32_t type, int32_t *outType, int32_t *outResult);
uint32_t AtNetstaticIp(World &world, const char *address);
uint32_t AtRamdumpHostIp(World &world, const char *address);
uint32_t cfunSet(World &world, int32_t level);
uint32_t cfunRead(World &world, int32_t *level);
uint32_t cregSet(World &world, int32_t mode);
uint32_t cgregSet(World &world, int32_t mode);
uint32_t ceregSet(World &world, int32_t mode);
uint32_t zgaatSet(World &world, int32_t setting);
uint32_t cgattSet(World &world, int32_t state);
uint32_t ceregRead(World &world, int32_t *mode, int32_t *status, char *tac, char *cellId, int32_t *act);
uint32_t cgregRead(World &world, int32_t *mode, int32_t *status);
uint32_t cregRead(World &world, CregPara *record);
uint32_t crsmSet(World &world, CrsmCmd command, CrsmRes *response);
uint32_t zdonRead(World &world, ZdonInfo *info);
uint32_t zpasRead(World &world, ZpasInfo *info);
uint32_t copsSet(World &world, CopsPara operator_);
uint32_t copsRead(World &world, CopsPara *operator_);
uint32_t copsTest(World &world, ScanNetworkList *list);
uint32_t copsSet5(World &world, AtParasList **destination);
uint32_t zsntSet(World &world, int32_t p1, int32_t p2, int32_t p3);
uint32_t zsntRead(World &world, int32_t *p1, int32_t *p2, int32_t *p3);
uint32_t sysconfigRead(World &world, SysconfigPara *values);
uint32_t sysconfigSet(World &world, int32_t nMode, int32_t nAcqorder, int32_t nRoam, int32_t nSrvdomain);
uint32_t eratRead(World &world, int32_t *e1, int32_t *e2, int32_t *e3, int32_t *e4);
uint32_t eratSet(World &world, int32_t rat, int32_t preferredRat);
uint32_t zprefbandSet(World &world, int32_t band);
uint32_t sysinfoExec(World &world, int32_t *nSrvstatus, int32_t *nSrvdomain, int32_t *nRoamstatus, int32_t *nSysmode,
                     int32_t *nSimstate, int32_t nReserve, int32_t nSysSubmode);
uint32_t zrssiExec(World &world, ZrssiPara *values);
uint32_t zrssiLteRead(World &world, ZrssiPara *values);
int32_t getZrssiResParasCount(World &world, const char *text);
uint32_t zltelcRead(World &world, int32_t *nAction, int32_t *nUarfcn, int32_t *nCellParald);

} // namespace plain

#endif
