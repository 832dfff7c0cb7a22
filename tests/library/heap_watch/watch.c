// Preloaded into a test program: counts what one of its shared objects takes from the heap, by itself or through the
// functions of libc that format and convert numbers, and fails the program at its end if that is anything.
// The object is the one whose file name contains what HEAP_WATCHED says.

#define _GNU_SOURCE
#include <dlfcn.h>
#include <link.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

// glibc's own names for what stands behind the interposed ones.
void *__libc_malloc(size_t);
void *__libc_calloc(size_t, size_t);
void *__libc_realloc(void *, size_t);
void *__libc_memalign(size_t, size_t);

typedef int FormatInto(char *, size_t, int, size_t, const char *, va_list);
typedef int Format(char *, int, size_t, const char *, va_list);
typedef float ToFloat(const char *, char **);

static uintptr_t firstByte, endByte; // of the watched object
static atomic_ulong takings;
static _Thread_local int depth; // calls of libc that the watched object is in

/** Whether a call comes from the watched object. */
static int isWatched(const void *caller)
{
    return (uintptr_t)caller - firstByte < endByte - firstByte;
}

static void count(const void *caller)
{
    if (depth != 0 || isWatched(caller)) atomic_fetch_add(&takings, 1);
}

static int takeRange(struct dl_phdr_info *object, size_t size, void *watched)
{
    (void)size;
    if (strstr(object->dlpi_name, watched) == NULL) return 0;
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr) *const segment = &object->dlpi_phdr[i];
        if (segment->p_type != PT_LOAD || (segment->p_flags & PF_X) == 0) continue;
        firstByte = object->dlpi_addr + segment->p_vaddr;
        endByte = firstByte + segment->p_memsz;
    }
    return 1;
}

__attribute__((constructor)) static void begin(void)
{
    char *const watched = getenv("HEAP_WATCHED");
    if (watched != NULL) dl_iterate_phdr(takeRange, watched);
}

__attribute__((destructor)) static void end(void)
{
    const unsigned long number = atomic_load(&takings);
    if (number == 0) return;
    fprintf(stderr, "%s took from the heap %lu times\n", getenv("HEAP_WATCHED"), number);
    _exit(97);
}

void *malloc(size_t size)
{
    count(__builtin_return_address(0));
    return __libc_malloc(size);
}

void *calloc(size_t number, size_t size)
{
    count(__builtin_return_address(0));
    return __libc_calloc(number, size);
}

void *realloc(void *memory, size_t size)
{
    count(__builtin_return_address(0));
    return __libc_realloc(memory, size);
}

void *aligned_alloc(size_t alignment, size_t size)
{
    count(__builtin_return_address(0));
    return __libc_memalign(alignment, size);
}

int posix_memalign(void **memory, size_t alignment, size_t size)
{
    count(__builtin_return_address(0));
    *memory = __libc_memalign(alignment, size);
    return *memory == NULL ? 12 : 0;
}

/** Notes that a function of libc begins.
 *  @return what leaves it again */
static int enter(const void *caller)
{
    const int isInside = isWatched(caller);
    depth += isInside;
    return isInside;
}

int __vsnprintf_chk(char *to, size_t most, int flag, size_t room, const char *format, va_list arguments)
{
    FormatInto *const real = __extension__(FormatInto *) dlsym(RTLD_NEXT, "__vsnprintf_chk");
    const int isInside = enter(__builtin_return_address(0));
    const int length = real(to, most, flag, room, format, arguments);
    depth -= isInside;
    return length;
}

int __vsprintf_chk(char *to, int flag, size_t room, const char *format, va_list arguments)
{
    Format *const real = __extension__(Format *) dlsym(RTLD_NEXT, "__vsprintf_chk");
    const int isInside = enter(__builtin_return_address(0));
    const int length = real(to, flag, room, format, arguments);
    depth -= isInside;
    return length;
}

float strtof(const char *text, char **end)
{
    ToFloat *const real = __extension__(ToFloat *) dlsym(RTLD_NEXT, "strtof");
    const int isInside = enter(__builtin_return_address(0));
    const float number = real(text, end);
    depth -= isInside;
    return number;
}
