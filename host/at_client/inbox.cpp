#include "host/at_client/inbox.h"

#include <cerrno>
#include <utility>

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "host/at_client/at_client.h"

namespace host::at_client {
namespace {

void closeOne(int &fd)
{
    if (fd >= 0) close(fd);
    fd = -1;
}

void add(int epollFd, int fd)
{
    epoll_event event{};
    event.events = EPOLLIN;
    epoll_ctl(epollFd, EPOLL_CTL_ADD, fd, &event);
}

} // namespace

void Readiness::watch(int socket)
{
    if (epollFd_ < 0) {
        epollFd_ = epoll_create1(EPOLL_CLOEXEC);
        filledFd_ = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        add(epollFd_, filledFd_);
    }
    add(epollFd_, socket);
}

void Readiness::forget(int socket) const
{
    epoll_ctl(epollFd_, EPOLL_CTL_DEL, socket, nullptr);
}

void Readiness::show(bool isFilled) const
{
    uint64_t count = 1;
    const int error = errno;
    const ssize_t done = isFilled ? write(filledFd_, &count, sizeof count) : read(filledFd_, &count, sizeof count);
    if (done < 0) errno = error; // it shows that already
}

void Readiness::close()
{
    closeOne(epollFd_);
    closeOne(filledFd_);
}

bool Inbox::takes(protocol::Type type)
{
    using protocol::Type;
    return type == Type::Report || type == Type::Port || type == Type::Lost || type == Type::Trace;
}

void Inbox::put(const protocol::Message &message)
{
    if (message.type == protocol::Type::Lost) {
        lost_ += message.value;
        return;
    }
    Budget &used = budgetOf(message.type);
    if (used.entries == CLIENT_MAX_REPORTS || used.bytes + message.text.size() > CLIENT_MAX_REPORT_BYTES) {
        ++lost_;
        return;
    }
    ++used.entries;
    used.bytes += message.text.size();
    entries_.push_back({message.type, message.value, std::string(message.text)});
}

Inbox::Entry Inbox::take()
{
    Entry entry = std::move(entries_.front());
    entries_.pop_front();
    Budget &used = budgetOf(entry.type);
    --used.entries;
    used.bytes -= entry.text.size();
    return entry;
}

void Inbox::clear()
{
    entries_.clear();
    used_ = {};
    lost_ = 0;
}

uint32_t Inbox::takeLost()
{
    return std::exchange(lost_, 0);
}

} // namespace host::at_client
