#include "tests/host/at_server/exploration/arena.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace exploration {
namespace {

constexpr size_t kGrain = 32;
constexpr size_t kClasses = 64; ///< of blocks that are given out again; larger ones never are
constexpr size_t kSize = size_t{1} << 20U;

struct Block {
    Block *next;
};

struct Arena {
    size_t used = 0;
    std::array<Block *, kClasses> free{};
    alignas(std::max_align_t) std::array<char, kSize> bytes;
};

Arena arena;
bool isOpen = false;

size_t classOf(size_t size)
{
    return (std::max<size_t>(size, 1) + kGrain - 1) / kGrain;
}

void *take(size_t size)
{
    const size_t number = classOf(size);
    if (number < kClasses && arena.free[number] != nullptr)
        return std::exchange(arena.free[number], arena.free[number]->next);
    if (arena.used + number * kGrain > kSize) {
        std::fputs("the arena is full\n", stderr);
        std::abort();
    }
    return arena.bytes.data() + std::exchange(arena.used, arena.used + number * kGrain);
}

bool isWithin(const void *place)
{
    const auto at = reinterpret_cast<uintptr_t>(place);
    const auto begin = reinterpret_cast<uintptr_t>(arena.bytes.data());
    return at >= begin && at < begin + kSize;
}

void giveBack(void *place, size_t size)
{
    const size_t number = classOf(size);
    if (number < kClasses) arena.free[number] = new (place) Block{arena.free[number]};
}

size_t bytesToKeep()
{
    return offsetof(Arena, bytes) + arena.used;
}

} // namespace

InArena::InArena() : wasOpen_(std::exchange(isOpen, true)) {}

InArena::~InArena()
{
    isOpen = wasOpen_;
}

void save(Snapshot &snapshot)
{
    const char *const begin = reinterpret_cast<const char *>(&arena);
    snapshot.assign(begin, begin + bytesToKeep());
}

void putBack(const Snapshot &snapshot)
{
    std::memcpy(reinterpret_cast<char *>(&arena), snapshot.data(), snapshot.size());
}

} // namespace exploration

void *operator new(size_t size)
{
    void *const place = exploration::isOpen ? exploration::take(size) : std::malloc(size);
    if (place == nullptr) std::abort();
    return place;
}

void operator delete(void *place, size_t size) noexcept
{
    if (exploration::isWithin(place))
        exploration::giveBack(place, size);
    else
        std::free(place);
}

/** Of unknown size, which only blocks outside the arena may be. */
void operator delete(void *place) noexcept
{
    if (!exploration::isWithin(place)) std::free(place);
}
