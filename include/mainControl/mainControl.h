/** Modem control for LTE, WCDMA and GSM routers: everything that the library offers. */
#ifndef MAINCONTROL_MAINCONTROL_H
#define MAINCONTROL_MAINCONTROL_H

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/codec.h>
#include <mainControl/host.h>
#include <mainControl/parser.h>
#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>
#include <mainControl/version.h>
#include <mainControl/wrappers.h>

#endif
