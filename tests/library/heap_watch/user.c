// What the watch has to notice, and what it has not.

#include "tests/library/heap_watch/user.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>

__attribute__((format(printf, 1, 2))) static int formatted(const char *format, ...)
{
    char text[100]; // whose size the compiler sees, so that it calls the checked function
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return length;
}

void takeDirectly(void)
{
    void *volatile memory = malloc(100);
    free(memory);
}

void takeByFormatting(void)
{
    formatted("%.20000f", 1.0); // more digits than libc has room for on its stack
}

void takeNothing(void)
{
    formatted("%d", 1);
}
