// The heap of the server: what is given back is overwritten, whoever had it.
#include "host/at_server/wiped_memory.h"

#include <cstdlib>
#include <new>

#include <malloc.h>

void *operator new(size_t size)
{
    void *const memory = std::malloc(size != 0 ? size : 1);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void *operator new(size_t size, const std::nothrow_t & /*whether*/) noexcept
{
    return std::malloc(size != 0 ? size : 1);
}

void operator delete(void *memory) noexcept
{
    if (memory != nullptr) explicit_bzero(memory, malloc_usable_size(memory));
    std::free(memory);
}

void operator delete(void *memory, size_t /*size*/) noexcept
{
    operator delete(memory);
}
