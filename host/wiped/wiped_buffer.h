/** A place for what may have a PIN in it: it is overwritten when it goes, so that nobody finds it there later. */
#ifndef HOST_WIPED_WIPED_BUFFER_H
#define HOST_WIPED_WIPED_BUFFER_H

#include <array>
#include <cstddef>

#include <string.h> // NOLINT(modernize-deprecated-headers): for explicit_bzero

namespace host {

/** Its bytes are indeterminate at first. */
template <size_t Size>
class WipedBuffer {
  public:
    WipedBuffer() = default;
    ~WipedBuffer() { wipe(); }
    WipedBuffer(const WipedBuffer &) = delete;
    WipedBuffer &operator=(const WipedBuffer &) = delete;

    void wipe() { explicit_bzero(bytes_.data(), bytes_.size()); }

    char *data() { return bytes_.data(); }
    const char *data() const { return bytes_.data(); }
    static constexpr size_t size() { return Size; }
    char &operator[](size_t at) { return bytes_[at]; }

  private:
    std::array<char, Size> bytes_; // NOLINT(cppcoreguidelines-pro-type-member-init): to be written to
};

} // namespace host

#endif
