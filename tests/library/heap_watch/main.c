// Lets the object that is watched do one thing, and takes from the heap itself.
// usage: main directly|by_formatting|nothing

#include <stdlib.h>
#include <string.h>

#include "tests/library/heap_watch/user.h"

int main(int argc, char **argv)
{
    const char *const what = argc == 2 ? argv[1] : "";
    void *volatile memory = malloc(100);
    free(memory);
    if (strcmp(what, "directly") == 0)
        takeDirectly();
    else if (strcmp(what, "by_formatting") == 0)
        takeByFormatting();
    else if (strcmp(what, "nothing") == 0)
        takeNothing();
    else
        return 2;
    return 0;
}
