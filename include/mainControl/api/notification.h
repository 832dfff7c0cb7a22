/** Registration reports and the callbacks that hear of them. Rules for callers: mainControl/api.h. */
#ifndef MAINCONTROL_API_NOTIFICATION_H
#define MAINCONTROL_API_NOTIFICATION_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The stored callbacks, NULL at load. */
extern MAINCONTROL_EXPORT RegistrationCallback g_pFnCregNotifyCallBack;
extern MAINCONTROL_EXPORT RegistrationCallback g_pFnCeregNotifyCallBack;
extern MAINCONTROL_EXPORT RegistrationCallback g_pFnCgregNotifyCallBack;

/* The setters store the callback and, the first time, open the road for reports (setAtCallbackRegist()). If that fails the
 * callback stays stored, and the next setter tries again. */

/** Hears of circuit-switched registration (+CREG).
 *  @return 0; 1 pCallback is NULL or the road could not be opened */
MAINCONTROL_EXPORT uint32_t KR_setCregNotifyCallback(RegistrationCallback pCallback);

/** Hears of EPS registration (+CEREG).
 *  @return 0; 1 pCallback is NULL or the road could not be opened */
MAINCONTROL_EXPORT uint32_t KR_setCeregNotifyCallback(RegistrationCallback pCallback);

/** Hears of packet registration (+CGREG). Its area code comes as it stands in the rewritten line: blanks as 0xFE, the
 *  empty text as 0xFD.
 *  @return 0; 1 pCallback is NULL or the road could not be opened */
MAINCONTROL_EXPORT uint32_t KR_setCgregNotifyCallback(RegistrationCallback pCallback);

/** Initialises the AT-client library and installs ProcessMainControlAtCallback() with it, each once for the process.
 *  @return 0; 1 one of the two failed */
MAINCONTROL_EXPORT uint32_t setAtCallbackRegist(void);

/** Takes one report: what the AT-client library calls.
 *  @param pRes  its text is edited as in Bk_Parse_At_Res()
 *  @return 0 handled; 1 nothing handles this identifier; 19 or 20 as Bk_Parse_At_Res() */
MAINCONTROL_EXPORT uint32_t ProcessMainControlAtCallback(AtClientRes *pRes);

/* The handlers of parsed reports. The three of registration rewrite Paras and call their callback, on PF_TSP only if the
 * report names a place; they return 0, or 1 for NULL. CGEV_Notify() logs its name. All others do nothing and return 0. */

MAINCONTROL_EXPORT uint32_t CREG_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t CEREG_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t CGREG_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t CGEV_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ZPASR_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ZDONR_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ZOPERTER_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t PSBEARER_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t EUSIM_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ECSQ_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ESMLA_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ECFU_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ESPEECH_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ESCRI_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ESIMS_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ETESTSIM_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ECIPH_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ECELLINFO_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ENWINFO_Notify(AtRes *report);
MAINCONTROL_EXPORT uint32_t ZPBIC_Notify(AtRes *report);

#ifdef __cplusplus
}
#endif

#endif
