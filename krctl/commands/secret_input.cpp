#include "krctl/commands/secret_input.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "krctl/output/failure.h"
#include "krctl/session/interruption.h"

namespace krctl {
namespace {

constexpr const char *kHowElse = "Use --pin-stdin or --pin-fd where nobody can type.";

/** Echo is off as long as this lives. */
class NoEcho {
  public:
    explicit NoEcho(int fd) : fd_(fd)
    {
        isChanged_ = tcgetattr(fd_, &before_) == 0;
        if (!isChanged_) return;
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(fd_, TCSAFLUSH, &silent);
    }
    ~NoEcho()
    {
        if (isChanged_) tcsetattr(fd_, TCSAFLUSH, &before_);
    }
    NoEcho(const NoEcho &) = delete;
    NoEcho &operator=(const NoEcho &) = delete;

  private:
    int fd_;
    bool isChanged_ = false;
    termios before_{};
};

void write(int fd, const std::string &text)
{
    (void)!::write(fd, text.data(), text.size());
}

bool hasForm(const SecretForm &form, std::string_view text)
{
    const auto isAllowed = [&](unsigned char character) {
        return form.isDigitsOnly ? std::isdigit(character) != 0 : std::isalnum(character) != 0;
    };
    return text.size() >= form.fewest && text.size() <= form.most && std::all_of(text.begin(), text.end(), isAllowed);
}

std::string describe(const SecretForm &form)
{
    const std::string length = form.fewest == form.most
                                   ? std::to_string(form.fewest)
                                   : std::to_string(form.fewest) + " to " + std::to_string(form.most);
    return length + (form.isDigitsOnly ? " digits" : " letters or digits");
}

} // namespace

bool Secret::add(char character)
{
    if (size_ == kMost) return false;
    text_[size_++] = character;
    text_[size_] = '\0';
    return true;
}

SecretInput::SecretInput(const Arguments &arguments)
{
    if (arguments.has(kPinFd.name)) {
        fd_ = arguments.number(kPinFd.name);
    } else if (arguments.has(kPinStdin.name)) {
        fd_ = STDIN_FILENO;
    } else {
        fd_ = open("/dev/tty", O_RDWR | O_CLOEXEC);
        isTerminal_ = true;
        if (fd_ < 0) throw usageFailure("There is no terminal to ask for a secret on.", "/dev/tty", kHowElse);
    }
}

SecretInput::~SecretInput()
{
    if (isTerminal_) close(fd_);
}

void SecretInput::readLine(const char *prompt, Secret &secret) const
{
    const std::string source = isTerminal_ ? "/dev/tty" : "file descriptor " + std::to_string(fd_);
    if (isTerminal_) write(fd_, std::string(prompt) + ": ");
    char character = 0;
    // One character at a time: the lines behind this one are for whoever reads next.
    ssize_t count = 0;
    while ((count = ::read(fd_, &character, 1)) == 1 && character != '\n') {
        if (character == '\r' || secret.add(character)) continue;
        throw usageFailure("What was given is too long for a secret.", source, kHowElse);
    }
    if (isTerminal_) write(fd_, "\n");
    if (pendingInterruption() != 0) throw interruptedFailure();
    if (count < 0)
        throw usageFailure(std::string("Cannot read a secret: ") + std::strerror(errno) + '.', source, kHowElse);
}

void SecretInput::read(const SecretForm &form, Secret &secret) const
{
    {
        const NoEcho silence(isTerminal_ ? fd_ : -1);
        readLine(form.prompt, secret);
    }
    if (hasForm(form, secret.text())) return;
    throw usageFailure("That is no " + std::string(form.name) + ": it has " + describe(form) + ".",
                       isTerminal_ ? "/dev/tty" : "file descriptor " + std::to_string(fd_),
                       "Nothing was sent to the modem; no try is lost.");
}

void SecretInput::readNew(const SecretForm &form, Secret &secret) const
{
    read(form, secret);
    if (!isTerminal_) return;
    const SecretForm again{form.name, "Once more", form.fewest, form.most, form.isDigitsOnly};
    Secret repeated;
    read(again, repeated);
    if (repeated.text() == secret.text()) return;
    throw usageFailure("The two entries differ.", "/dev/tty", "Nothing was sent to the modem; repeat the command.");
}

} // namespace krctl
