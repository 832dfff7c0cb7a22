#ifndef MAINCONTROL_PREFERENCE_TABLES_H
#define MAINCONTROL_PREFERENCE_TABLES_H

#include <cstdint>

/** How each preference mode is written to a chipset, and how what a chipset reports is read back. The two directions are
 *  no inverses of each other: chipsets know fewer modes than the API, and some modes more than one name. */
namespace mainControl {

struct ZsntValues {
    int32_t p1, p2, p3;
};
struct SysconfigMode {
    int32_t nMode, nAcqorder;
};
struct EratValues {
    int32_t rat, pref;
};

struct PreferenceRow {
    ZsntValues zsnt;
    SysconfigMode sysconfig;
    EratValues erat;
};

/** Rows 0 to 22 by preference mode; any other mode takes the last one. */
constexpr PreferenceRow kPreferences[] = {
    // ZSNT    SYSCONFIG  ERAT
    {{0, 0, 0}, {2, 0}, {2, 0}},  //  0
    {{0, 0, 1}, {2, 1}, {2, 2}},  //  1
    {{0, 0, 2}, {2, 2}, {2, 2}},  //  2
    {{1, 0, 0}, {13, 0}, {0, 0}}, //  3
    {{2, 0, 0}, {14, 0}, {1, 0}}, //  4
    {{0, 1, 2}, {2, 0}, {2, 2}},  //  5
    {{0, 0, 2}, {2, 0}, {2, 2}},  //  6
    {{0, 0, 2}, {2, 0}, {2, 2}},  //  7
    {{0, 0, 2}, {2, 0}, {2, 2}},  //  8
    {{6, 0, 0}, {17, 0}, {2, 2}}, //  9
    {{0, 0, 2}, {2, 0}, {2, 2}},  // 10
    {{7, 0, 0}, {20, 0}, {2, 2}}, // 11
    {{0, 0, 3}, {2, 0}, {2, 2}},  // 12
    {{0, 0, 2}, {15, 0}, {2, 2}}, // 13
    {{0, 0, 2}, {18, 1}, {2, 2}}, // 14
    {{0, 0, 2}, {18, 2}, {2, 2}}, // 15
    {{0, 0, 2}, {19, 4}, {2, 2}}, // 16
    {{0, 0, 2}, {19, 7}, {2, 2}}, // 17
    {{0, 0, 2}, {20, 5}, {2, 2}}, // 18
    {{0, 0, 2}, {20, 6}, {2, 2}}, // 19
    {{0, 0, 2}, {18, 0}, {2, 2}}, // 20
    {{0, 0, 2}, {2, 6}, {2, 2}},  // 21
    {{0, 0, 2}, {2, 2}, {2, 2}},  // 22
    {{0, 0, 2}, {2, 0}, {2, 2}},  // any other
};
constexpr int32_t kPreferenceModes = 23;
static_assert(sizeof kPreferences / sizeof *kPreferences == kPreferenceModes + 1);

/** A number that a chipset reports, and the mode it is read back as. */
struct ReadBack {
    int32_t reported;
    int32_t mode;
};

/** The third AT+ZSNT value, where the first is 0. */
constexpr ReadBack kModeOfZsntOrder[] = {{1, 1}, {2, 2}, {3, 12}};
constexpr int32_t kModeOfOtherZsntOrder = 0;
/** The first AT+ZSNT value, where it is not 0. Others cannot be read back. */
constexpr ReadBack kModeOfZsnt[] = {{1, 3}, {2, 4}, {6, 9}, {7, 11}};

/** The AT^SYSCONFIG values. A known mode with another order is a success that reads nothing. */
struct SysconfigReadBack {
    SysconfigMode reported;
    int32_t mode;
};
constexpr SysconfigReadBack kModeOfSysconfig[] = {
    {{2, 0}, 0},   {{2, 6}, 21},  {{2, 2}, 22},  {{13, 0}, 3},  {{14, 0}, 4},
    {{15, 0}, 13}, {{17, 0}, 9},  {{18, 1}, 14}, {{18, 2}, 15}, {{18, 0}, 20},
    {{19, 4}, 16}, {{19, 7}, 17}, {{20, 5}, 18}, {{20, 6}, 19}, {{20, 0}, 11},
};

} // namespace mainControl

#endif
