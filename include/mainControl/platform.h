/** The chipset platform that the library runs on, and the visibility of what it exports. */
#ifndef MAINCONTROL_PLATFORM_H
#define MAINCONTROL_PLATFORM_H

#include <stdint.h>

#define MAINCONTROL_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/** Chipset platforms. Any other number, 0 and 2 among them, is accepted and takes the default branch everywhere. */
typedef enum Platform {
    PF_QC_LTE = 1,   /**< Qualcomm LTE */
    PF_MTK = 3,      /**< MediaTek */
    PF_TSP = 4,      /**< TSP */
    PF_SPEADTRUM = 5 /**< Spreadtrum; hosts compile against this spelling */
} Platform;

/** The platform in force, 0 at load. Set it with KR_setCurrentPlatform() before any other call: every function that
 *  chooses by platform reads it anew on each call. */
extern MAINCONTROL_EXPORT int32_t g_currentPlatform;

#ifdef __cplusplus
}
#endif

#endif
