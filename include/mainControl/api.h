/** The modem control API.
 *
 *  Rules for callers:
 *  1. KR_setCurrentPlatform() comes before any other call.
 *  2. 0 is success. 1 is any failure of the exchange with the modem: the command could not be sent, its reply not
 *     parsed, or its final result was not OK. A function that can return more says so.
 *  3. Outputs are written on success only, unless a function says otherwise.
 *  4. Calls block until the modem has answered or its time-out has passed. Calls and reports are serialised by the
 *     caller; the library creates no thread and takes no lock.
 *  5. A call needs at most 32 KiB of stack, KR_scanNetwork() 40 KiB, the host's functions not counted.
 *  6. Every call writes its entry, its outputs and its exit to the host's log, PINs and codes included: mask them there.
 *  7. Texts handed over are terminated, and may be NULL only where a function says so. Outputs are not NULL unless a
 *     function says that they may be.
 *  8. Texts go into commands as they stand, some in quotes, some without. A quote in an APN ends it there, and with
 *     1";+CFUN=0 the rest is a second command: what comes from outside is looked at before it is handed over. In quotes
 *     printable ASCII without quote and backslash is safe, without them letters, digits, points and colons are. */
#ifndef MAINCONTROL_API_H
#define MAINCONTROL_API_H

#include <mainControl/api/frame.h>
#include <mainControl/api/identity.h>
#include <mainControl/api/network_lock.h>
#include <mainControl/api/notification.h>
#include <mainControl/api/pdp_profile.h>
#include <mainControl/api/pin.h>
#include <mainControl/api/radio_preference.h>
#include <mainControl/api/registration.h>
#include <mainControl/api/service_provider.h>
#include <mainControl/api/serving_network.h>
#include <mainControl/api/settings.h>
#include <mainControl/api/signal.h>
#include <mainControl/api/system_config.h>

#endif
