/* Every exported function with plain arguments, for tests that hold something of all of them, also in C and without the
 * C++ runtime. What the caller owns of a function lies outside the stack. */
#ifndef TESTS_SUPPORT_EVERY_FUNCTION_H
#define TESTS_SUPPORT_EVERY_FUNCTION_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct EveryFunction {
    const char *name;
    uint32_t (*call)(void); /* its result; 0 for those that return something else or nothing */
    size_t stackLimit;      /* bytes */
} EveryFunction;

/* A row for each exported function; some stand twice with arguments that lead another way. */
const EveryFunction *everyFunction(size_t *count);

/* The text that the parser and the codec are called with, of at most 19,999 characters. */
void setEveryText(const char *text);

#ifdef __cplusplus
}

#include <span>

inline std::span<const EveryFunction> everyFunction()
{
    size_t count = 0;
    const EveryFunction *const rows = everyFunction(&count);
    return {rows, count};
}
#endif

#endif
