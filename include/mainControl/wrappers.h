/** AT command wrappers: one function for each form of a command.
 *
 *  Rules for callers:
 *  1. 0 is success. 1 is any failure: the command could not be sent, its reply not parsed, or its final result was not
 *     OK. A function that can return more says so.
 *  2. Outputs are written on success only, and only those that the reply supplies, in order up to the first that is
 *     missing. In a text that the reply lacks the markers of ATCodec_PreProc_Res_ParaLine() are undone all the same.
 *  3. Text outputs are terminated. A text that does not fit the array of a record is cut there. Where no size is stated,
 *     the caller's buffer is as large as the value can be: 13652 characters and a terminator, which is what the lines of
 *     the longest reply can come to.
 *  4. A command is sent whole or not at all: one of more than 1023 characters counts as a failed send.
 *  5. Calls block for up to the stated time-out and are serialised by the caller.
 *  6. A call needs at most 32 KiB of stack, the host's ClientSendCmd() not counted.
 *  7. Texts handed over are terminated and not NULL, records are terminated or fill their arrays. They go into commands
 *     as they stand: rule 8 of api.h says which are safe. */
#ifndef MAINCONTROL_WRAPPERS_H
#define MAINCONTROL_WRAPPERS_H

#include <mainControl/wrappers/device.h>
#include <mainControl/wrappers/network_lock.h>
#include <mainControl/wrappers/operator.h>
#include <mainControl/wrappers/pdp.h>
#include <mainControl/wrappers/pin.h>
#include <mainControl/wrappers/radio_mode.h>
#include <mainControl/wrappers/registration.h>
#include <mainControl/wrappers/settings.h>
#include <mainControl/wrappers/signal.h>

#endif
