#ifndef TESTS_LIBRARY_HEAP_WATCH_USER_H
#define TESTS_LIBRARY_HEAP_WATCH_USER_H

void takeDirectly(void);
void takeByFormatting(void);
void takeNothing(void);

#endif
