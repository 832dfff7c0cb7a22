#include "tests/support/guarded_text.h"

#include <cstdlib>
#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

GuardedMemory::GuardedMemory(size_t size) : size_(size)
{
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t inside = (size + page - 1) / page * page;
    mapped_ = inside + 2 * page;
    void *const pages = mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) std::abort();
    pages_ = static_cast<char *>(pages);
    if (inside > 0 && mprotect(pages_ + page, inside, PROT_READ | PROT_WRITE) != 0) std::abort();
    data_ = pages_ + page + inside - size;
}

GuardedMemory::~GuardedMemory()
{
    munmap(pages_, mapped_);
}

GuardedText::GuardedText(std::string_view text) : GuardedMemory(text.size() + 1)
{
    std::memcpy(data(), text.data(), text.size());
    data()[text.size()] = '\0';
}
