// Reports: the road from the AT-client library to the host's callbacks.

#include <mainControl/api.h>
#include <mainControl/codec.h>
#include <mainControl/host.h>

#include "lib_public/ATPreprocess/reply_parser.h"
#include "lib_public/ATPreprocess/reply_room.h"
#include "lib_public/ATPreprocess/report_ids.h"
#include "lib_public/AtCodec/restore.h"
#include "lib_public/support/log.h"
#include "lib_public/support/platform_traits.h"

using namespace mainControl;

RegistrationCallback g_pFnCregNotifyCallBack = nullptr;
RegistrationCallback g_pFnCeregNotifyCallBack = nullptr;
RegistrationCallback g_pFnCgregNotifyCallBack = nullptr;

namespace {

bool isClientInitialised = false;
bool isCallbackInstalled = false;

/** Stores a callback, also if the road for reports cannot be opened yet: the next setter tries that again. */
uint32_t setCallback(RegistrationCallback &stored, RegistrationCallback callback)
{
    stored = callback;
    return setAtCallbackRegist();
}

/** The values of a registration report. */
struct Registration {
    int32_t status = 0;
    char areaCode[36] = "";
    char cellId[36] = "";
    int32_t technology = 0;
    char routingArea[36] = "";
};

uint32_t tell(RegistrationCallback callback, Registration &registration)
{
    if (callback == nullptr) return UNI_ERROR_SUCCESS;
    if (traits().reportsWithoutPlace && registration.areaCode[0] == '\0' && registration.cellId[0] == '\0')
        return UNI_ERROR_SUCCESS;
    callback(registration.status, registration.areaCode, registration.cellId);
    return UNI_ERROR_SUCCESS;
}

/** A +CREG or +CEREG report. */
uint32_t reportWithCell(char *paras, RegistrationCallback callback)
{
    Registration registration;
    ATCodec_PreProc_Res_ParaLine(paras);
    scan(paras, "%d %s %s", &registration.status, into(registration.areaCode), into(registration.cellId));
    restoreText(into(registration.areaCode));
    restoreText(into(registration.cellId));
    return tell(callback, registration);
}

/** A +CGREG report. The area code keeps the markers of the rewritten line; hosts have always got it so. */
uint32_t reportWithRoutingArea(char *paras, RegistrationCallback callback)
{
    Registration registration;
    ATCodec_PreProc_Res_ParaLine(paras);
    scan(paras, "%d %s %s %d %s", &registration.status, into(registration.areaCode), into(registration.cellId),
         &registration.technology, into(registration.routingArea));
    restoreText(into(registration.cellId));
    restoreText(into(registration.routingArea));
    return tell(callback, registration);
}

uint32_t onCreg(char *paras)
{
    return reportWithCell(paras, g_pFnCregNotifyCallBack);
}

uint32_t onCereg(char *paras)
{
    return reportWithCell(paras, g_pFnCeregNotifyCallBack);
}

uint32_t onCgreg(char *paras)
{
    return reportWithRoutingArea(paras, g_pFnCgregNotifyCallBack);
}

uint32_t onCgev(char * /*paras*/)
{
    ModuleLog<"lib_mainControl">::line("%s", "CGEV_Notify");
    return UNI_ERROR_SUCCESS;
}

uint32_t onNothingToTell(char * /*paras*/)
{
    return UNI_ERROR_SUCCESS;
}

struct Handler {
    ReportId identifier;
    uint32_t (*handle)(char *paras);
};

// The reports that are heard most come first.
constexpr Handler kHandlers[] = {
    {kCeregReport, onCereg},
    {kCgregReport, onCgreg},
    {kCregReport, onCreg},
    {kCgevReport, onCgev},
    {kZpasrReport, onNothingToTell},
    {kZdonrReport, onNothingToTell},
    {kZoperterReport, onNothingToTell},
    {kPsbearerReport, onNothingToTell},
    {kEusimReport, onNothingToTell},
    {kEcsqReport, onNothingToTell},
    {kEsmlaReport, onNothingToTell},
    {kEcfuReport, onNothingToTell},
    {kEspeechReport, onNothingToTell},
    {kEscriReport, onNothingToTell},
    {kEsimsReport, onNothingToTell},
    {kEtestsimReport, onNothingToTell},
    {kEciphReport, onNothingToTell},
    {kEcellinfoReport, onNothingToTell},
    {kEnwinfoReport, onNothingToTell},
    {kZpbicReport, onNothingToTell},
};

uint32_t handle(AtRes *report, uint32_t (*handler)(char *paras))
{
    if (report == nullptr) return UNI_ERROR_FALSE;
    return handler(report->Paras);
}

uint32_t dispatch(uint16_t identifier, char *paras)
{
    for (const Handler &handler : kHandlers) {
        if (handler.identifier == identifier) return handler.handle(paras);
    }
    return UNI_ERROR_FALSE;
}

} // namespace

uint32_t KR_setCregNotifyCallback(RegistrationCallback pCallback)
{
    constexpr ApiLog<"KR_setCregNotifyCallback"> log;
    log.in();
    if (pCallback == nullptr) return log.ret<UNI_ERROR_FALSE, "pCallback == NULL">();
    return log.outcome<"setAtCallbackRegist failed">(setCallback(g_pFnCregNotifyCallBack, pCallback));
}

uint32_t KR_setCeregNotifyCallback(RegistrationCallback pCallback)
{
    constexpr ApiLog<"KR_setCeregNotifyCallback"> log;
    log.in();
    if (pCallback == nullptr) return log.ret<UNI_ERROR_FALSE, "pCallback == NULL">();
    return log.outcome<"setAtCallbackRegist failed">(setCallback(g_pFnCeregNotifyCallBack, pCallback));
}

uint32_t KR_setCgregNotifyCallback(RegistrationCallback pCallback)
{
    constexpr ApiLog<"KR_setCgregNotifyCallback"> log;
    log.in();
    if (pCallback == nullptr) return log.ret<UNI_ERROR_FALSE, "pCallback == NULL">();
    return log.outcome<"setAtCallbackRegist failed">(setCallback(g_pFnCgregNotifyCallBack, pCallback));
}

uint32_t setAtCallbackRegist(void)
{
    if (!isClientInitialised) {
        if (ClientInit("/tmp/AT_SERVER_MSG_ID_MC") != 0) return UNI_ERROR_FALSE;
        isClientInitialised = true;
    }
    if (!isCallbackInstalled) {
        if (SetClientProcRecvCallback(ProcessMainControlAtCallback) != 0) return UNI_ERROR_FALSE;
        isCallbackInstalled = true;
    }
    return UNI_ERROR_SUCCESS;
}

uint32_t ProcessMainControlAtCallback(AtClientRes *pRes)
{
    char *const text = pRes != nullptr ? pRes->aucDataBuf : nullptr;
    if (text != nullptr && strnlen(text, sizeof pRes->aucDataBuf) > kReplyLength) text[kReplyLength] = '\0';
    ModuleLog<"lib_mainControl">::line("ProcessMainControlAtCallback-pRes->aucDataBuf = %s", text);

    char paras[kParasRoom]; // of which a parse writes what it found
    paras[0] = '\0';
    ParsedReply reply;
    const uint32_t code = parseReply(text, {paras, sizeof paras, ParasDestination::Kind::OwnText}, reply);
    if (code == UNI_ERROR_BK_INVALID_ARG) return code;
    leaveText(text, reply);
    if (code != UNI_ERROR_SUCCESS) return code;
    return dispatch(reply.cmdId, paras);
}

// The handlers of single reports, for hosts that parse for themselves.

uint32_t CREG_Notify(AtRes *report)
{
    return handle(report, onCreg);
}

uint32_t CEREG_Notify(AtRes *report)
{
    return handle(report, onCereg);
}

uint32_t CGREG_Notify(AtRes *report)
{
    return handle(report, onCgreg);
}

uint32_t CGEV_Notify(AtRes * /*report*/)
{
    return onCgev(nullptr);
}

#define MAINCONTROL_NOTHING_TO_TELL(handler)                                                                           \
    uint32_t handler(AtRes * /*report*/)                                                                               \
    {                                                                                                                  \
        return onNothingToTell(nullptr);                                                                               \
    }

MAINCONTROL_NOTHING_TO_TELL(ZPASR_Notify)
MAINCONTROL_NOTHING_TO_TELL(ZDONR_Notify)
MAINCONTROL_NOTHING_TO_TELL(ZOPERTER_Notify)
MAINCONTROL_NOTHING_TO_TELL(PSBEARER_Notify)
MAINCONTROL_NOTHING_TO_TELL(EUSIM_Notify)
MAINCONTROL_NOTHING_TO_TELL(ECSQ_Notify)
MAINCONTROL_NOTHING_TO_TELL(ESMLA_Notify)
MAINCONTROL_NOTHING_TO_TELL(ECFU_Notify)
MAINCONTROL_NOTHING_TO_TELL(ESPEECH_Notify)
MAINCONTROL_NOTHING_TO_TELL(ESCRI_Notify)
MAINCONTROL_NOTHING_TO_TELL(ESIMS_Notify)
MAINCONTROL_NOTHING_TO_TELL(ETESTSIM_Notify)
MAINCONTROL_NOTHING_TO_TELL(ECIPH_Notify)
MAINCONTROL_NOTHING_TO_TELL(ECELLINFO_Notify)
MAINCONTROL_NOTHING_TO_TELL(ENWINFO_Notify)
MAINCONTROL_NOTHING_TO_TELL(ZPBIC_Notify)
