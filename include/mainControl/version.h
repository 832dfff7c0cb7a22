/** The version, for the preprocessor. */
#ifndef MAINCONTROL_VERSION_H
#define MAINCONTROL_VERSION_H

#define MAINCONTROL_VERSION_MAJOR 0
#define MAINCONTROL_VERSION_MINOR 1
#define MAINCONTROL_VERSION_PATCH 0

/** A version as a number that grows with it: `#if MAINCONTROL_VERSION_NUMBER >= MAINCONTROL_VERSION_OF(0, 2, 0)`. */
#define MAINCONTROL_VERSION_OF(major, minor, patch) ((major)*1000000 + (minor)*1000 + (patch))
#define MAINCONTROL_VERSION_NUMBER                                                                                     \
    MAINCONTROL_VERSION_OF(MAINCONTROL_VERSION_MAJOR, MAINCONTROL_VERSION_MINOR, MAINCONTROL_VERSION_PATCH)

/** The version as text, such as "0.1.0". */
#define MAINCONTROL_VERSION_STRING                                                                                     \
    MAINCONTROL_VERSION_TEXT_OF(MAINCONTROL_VERSION_MAJOR, MAINCONTROL_VERSION_MINOR, MAINCONTROL_VERSION_PATCH)
#define MAINCONTROL_VERSION_TEXT_OF(major, minor, patch) MAINCONTROL_VERSION_TEXT(major, minor, patch)
#define MAINCONTROL_VERSION_TEXT(major, minor, patch) #major "." #minor "." #patch

#endif
