/** Puts the values of a state one behind the other, so that states can be compared by their hash. */
#ifndef TESTS_HOST_AT_SERVER_EXPLORATION_STATE_WRITER_H
#define TESTS_HOST_AT_SERVER_EXPLORATION_STATE_WRITER_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace exploration {

struct Hash {
    uint64_t high;
    uint64_t low;
    friend bool operator==(const Hash &, const Hash &) = default;
};

class StateWriter {
  public:
    template <typename... Values>
    void operator()(const Values &...values)
    {
        (write(values), ...);
    }

    void clear() { size_ = 0; }
    Hash hash() const { return {hashed(0x9E3779B97F4A7C15U), hashed(0xC2B2AE3D27D4EB4FU)}; }
    std::string_view bytes() const { return {bytes_.data(), size_}; }

  private:
    template <typename Value>
    void write(const Value &value)
    {
        if constexpr (std::is_enum_v<Value> || std::is_arithmetic_v<Value>) {
            append(&value, sizeof value);
        } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
            const std::string_view text = value;
            write(text.size());
            append(text.data(), text.size());
        } else {
            write(value.size());
            for (const auto &element : value)
                write(element);
        }
    }

    uint64_t hashed(uint64_t seed) const
    {
        uint64_t hash = seed ^ size_;
        for (size_t at = 0; at < size_; at += sizeof(uint64_t)) {
            uint64_t word = 0;
            std::memcpy(&word, bytes_.data() + at, std::min(sizeof word, size_ - at));
            hash = (hash ^ word) * 0xFF51AFD7ED558CCDU;
            hash ^= hash >> 32U;
        }
        return hash;
    }

    void append(const void *value, size_t size)
    {
        if (size > bytes_.size() - size_) std::abort(); // no state is that large
        std::memcpy(bytes_.data() + size_, value, size);
        size_ += size;
    }

    std::array<char, 8192> bytes_;
    size_t size_ = 0;
};

} // namespace exploration

#endif
