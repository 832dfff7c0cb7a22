/** PINs, PUKs and codes: asked for on the terminal without echo, or read from standard input or another file. Never from
 *  the command line, which others can see. */
#ifndef KRCTL_COMMANDS_SECRET_INPUT_H
#define KRCTL_COMMANDS_SECRET_INPUT_H

#include <cstddef>
#include <string_view>

#include "host/wiped/wiped_buffer.h"
#include "krctl/commands/command.h"

namespace krctl {

/** A secret text, wiped when it is no longer used. */
class Secret {
  public:
    static constexpr size_t kMost = 63;

    Secret() { text_[0] = '\0'; }

    /** @return false if there is no room for it */
    bool add(char character);
    const char *c_str() const { return text_.data(); }
    std::string_view text() const { return {text_.data(), size_}; }

  private:
    host::WipedBuffer<kMost + 1> text_; ///< with its terminator
    size_t size_ = 0;
};

/** What a secret may look like; nothing else is sent to the modem. */
struct SecretForm {
    const char *name;   ///< "PIN"
    const char *prompt; ///< "New PIN"
    size_t fewest;
    size_t most;
    bool isDigitsOnly = true; ///< otherwise letters as well
};

constexpr SecretForm kPin{"PIN", "PIN", 4, 8};
constexpr SecretForm kOldPin{"PIN", "Old PIN", 4, 8};
constexpr SecretForm kNewPin{"new PIN", "New PIN", 4, 8};
constexpr SecretForm kPuk{"PUK", "PUK", 8, 8};
constexpr SecretForm kLockCode{"unlock code", "Unlock code", 1, 32, false};
constexpr SecretForm kFacilityPassword{"password", "Password", 1, 16, false};

constexpr Parameter kPinStdin{
    .name = "--pin-stdin", .help = "read secrets from standard input, one a line", .kind = Parameter::Kind::Flag};
constexpr Parameter kPinFd{.name = "--pin-fd",
                           .help = "read secrets from this file descriptor, one a line",
                           .kind = Parameter::Kind::Number,
                           .lowest = 0,
                           .highest = 1023};

/** Where the secrets of one command come from, as its --pin-stdin and --pin-fd say. */
class SecretInput {
  public:
    explicit SecretInput(const Arguments &arguments);
    ~SecretInput();
    SecretInput(const SecretInput &) = delete;
    SecretInput &operator=(const SecretInput &) = delete;

    /** Reads one. Throws a Failure if there is none, or if it has not its form. */
    void read(const SecretForm &form, Secret &secret) const;
    /** Same, typed in twice where it is typed in. */
    void readNew(const SecretForm &form, Secret &secret) const;

  private:
    void readLine(const char *prompt, Secret &secret) const;

    int fd_ = -1;
    bool isTerminal_ = false;
};

} // namespace krctl

#endif
