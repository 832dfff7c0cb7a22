#include "tests/support/plain_port/api.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

struct Forward {
    int32_t zsnt[3];
    int32_t sysconfig[2];
    int32_t erat[2];
};

/** By preference mode; the last row is for all others. */
constexpr Forward kForward[] = {
    {{0, 0, 0}, {2, 0}, {2, 0}},  {{0, 0, 1}, {2, 1}, {2, 2}},  {{0, 0, 2}, {2, 2}, {2, 2}},
    {{1, 0, 0}, {13, 0}, {0, 0}}, {{2, 0, 0}, {14, 0}, {1, 0}}, {{0, 1, 2}, {2, 0}, {2, 2}},
    {{0, 0, 2}, {2, 0}, {2, 2}},  {{0, 0, 2}, {2, 0}, {2, 2}},  {{0, 0, 2}, {2, 0}, {2, 2}},
    {{6, 0, 0}, {17, 0}, {2, 2}}, {{0, 0, 2}, {2, 0}, {2, 2}},  {{7, 0, 0}, {20, 0}, {2, 2}},
    {{0, 0, 3}, {2, 0}, {2, 2}},  {{0, 0, 2}, {15, 0}, {2, 2}}, {{0, 0, 2}, {18, 1}, {2, 2}},
    {{0, 0, 2}, {18, 2}, {2, 2}}, {{0, 0, 2}, {19, 4}, {2, 2}}, {{0, 0, 2}, {19, 7}, {2, 2}},
    {{0, 0, 2}, {20, 5}, {2, 2}}, {{0, 0, 2}, {20, 6}, {2, 2}}, {{0, 0, 2}, {18, 0}, {2, 2}},
    {{0, 0, 2}, {2, 6}, {2, 2}},  {{0, 0, 2}, {2, 2}, {2, 2}},  {{0, 0, 2}, {2, 0}, {2, 2}},
};

const Forward &forward(int32_t mode)
{
    return kForward[mode < 0 || mode > 22 ? 23 : mode];
}

struct Backward {
    int32_t nMode;
    int32_t nAcqorder;
    int32_t mode;
};

constexpr Backward kBackward[] = {{2, 0, 0},   {2, 6, 21},  {2, 2, 22},  {13, 0, 3},  {14, 0, 4},
                                  {15, 0, 13}, {17, 0, 9},  {18, 1, 14}, {18, 2, 15}, {18, 0, 20},
                                  {19, 4, 16}, {19, 7, 17}, {20, 5, 18}, {20, 6, 19}, {20, 0, 11}};

} // namespace

uint32_t translatePrefmodeToZsnt(World & /*world*/, int32_t mode, int32_t *p1, int32_t *p2, int32_t *p3)
{
    *p1 = forward(mode).zsnt[0];
    *p2 = forward(mode).zsnt[1];
    *p3 = forward(mode).zsnt[2];
    return kSuccess;
}

uint32_t translatePrefmodeToSysconfig(World & /*world*/, int32_t mode, SysconfigPara *values)
{
    values->nMode = forward(mode).sysconfig[0];
    values->nAcqorder = forward(mode).sysconfig[1];
    values->nRoam = 1;
    values->nSrvdomain = 3;
    return kSuccess;
}

uint32_t translatePrefmodeToErat(World & /*world*/, int32_t mode, int32_t *rat, int32_t *pref)
{
    *rat = forward(mode).erat[0];
    *pref = forward(mode).erat[1];
    return kSuccess;
}

uint32_t translateZsntToPrefmode(World & /*world*/, int32_t *mode, int32_t p1, int32_t p2, int32_t p3, int32_t flag)
{
    if (flag == 1 && p2 == 1) {
        *mode = 5;
        return kSuccess;
    }
    if (p1 >= 8 || p1 < 0) return kFalse;
    switch (p1) {
    case 0:
        *mode = p3 == 1 ? 1 : p3 == 2 ? 2 : p3 == 3 ? 12 : 0;
        return kSuccess;
    case 1:
        *mode = 3;
        return kSuccess;
    case 2:
        *mode = 4;
        return kSuccess;
    case 6:
        *mode = 9;
        return kSuccess;
    case 7:
        *mode = 11;
        return kSuccess;
    default:
        return kFalse;
    }
}

uint32_t translateEratToPrefmode(World &world, int32_t *mode, int32_t rat, int32_t pref, int32_t flag)
{
    if (flag != 0) {
        CopsPara current{};
        if (copsRead(world, &current) == kSuccess && current.nMode == 1) {
            *mode = 5;
            return kSuccess;
        }
    }
    switch (rat) {
    case 0:
        *mode = 3;
        return kSuccess;
    case 1:
        *mode = 4;
        return kSuccess;
    case 2:
        *mode = pref == 2 ? 2 : 0;
        return kSuccess;
    default:
        return kFalse;
    }
}

uint32_t translateSysconfigToPrefmode(World & /*world*/, int32_t *mode, int32_t nMode, int32_t nAcqorder)
{
    bool isKnown = false;
    for (const Backward &row : kBackward) {
        if (row.nMode != nMode) continue;
        isKnown = true;
        if (row.nAcqorder == nAcqorder) *mode = row.mode;
    }
    return isKnown ? kSuccess : kFalse;
}

} // namespace plain
