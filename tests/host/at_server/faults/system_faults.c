// Preloaded into a program, makes some of its system calls fail: FAULT="write 17 28" is the 17th write(), with errno 28. In
// place of a number stand "short", which transfers one byte, and "end", which transfers none and says so. Several are
// separated by semicolons. The standard error, where tests hear the program, and pipes, by which it hears itself of signals,
// are left alone. Tells when the last fault has come, and at the program's end how many files it has left open.

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <stdarg.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/epoll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <termios.h>
#include <unistd.h>

struct Fault {
    char call[32];
    unsigned long callsBefore;
    char how[16];
};
static struct Fault faults[4];
static int faultsLeft;
static const char *how = ""; // the last of them
static int openAtFirst;
static int pipeEnds[2] = {-1, -1};

static void tell(const char *text)
{
    (void)!syscall(SYS_write, STDERR_FILENO, text, strlen(text));
}

static int openFiles(void)
{
    int open = 0;
    for (int fd = STDERR_FILENO + 1; fd < 256; ++fd)
        open += syscall(SYS_fcntl, fd, F_GETFD) >= 0;
    return open;
}

__attribute__((constructor)) static void readFault(void)
{
    openAtFirst = openFiles();
    const char *text = getenv("FAULT");
    while (text != NULL && faultsLeft < (int)(sizeof faults / sizeof faults[0])) {
        struct Fault *const fault = &faults[faultsLeft];
        if (sscanf(text, "%31s %lu %15[^;]", fault->call, &fault->callsBefore, fault->how) != 3) break;
        --fault->callsBefore;
        ++faultsLeft;
        text = strchr(text, ';');
        if (text != NULL) ++text;
    }
}

__attribute__((destructor)) static void tellOpenFiles(void)
{
    char text[48];
    snprintf(text, sizeof text, "fault: %d files left open\n", openFiles() - openAtFirst);
    tell(text);
}

/** Whether this call is one that fails. */
static bool isFaulty(const char *call)
{
    bool isOne = false;
    for (size_t i = 0; i < sizeof faults / sizeof faults[0]; ++i) {
        if (strcmp(call, faults[i].call) != 0 || faults[i].callsBefore-- > 0) continue;
        faults[i].call[0] = '\0';
        how = faults[i].how;
        isOne = true;
    }
    if (isOne && --faultsLeft == 0) tell("fault: here it is\n");
    return isOne;
}

/** What the call then returns. */
static int fail(void)
{
    if (strcmp(how, "end") == 0) return 0;
    errno = atoi(how);
    return -1;
}

static void *real(const char *call)
{
    return dlsym(RTLD_NEXT, call);
}

static bool isOwn(int fd)
{
    return fd != STDERR_FILENO && fd != pipeEnds[0] && fd != pipeEnds[1];
}

#define CALL(name, result, parameters, arguments)                                                                      \
    result name parameters                                                                                             \
    {                                                                                                                  \
        result(*call) parameters;                                                                                      \
        *(void **)&call = real(#name);                                                                                 \
        return isFaulty(#name) ? (result)fail() : call arguments;                                                      \
    }

/** Of so many bytes, which "short" makes one. */
#define TRANSFER(name, parameters, length, arguments)                                                                  \
    ssize_t name parameters                                                                                            \
    {                                                                                                                  \
        ssize_t(*call) parameters;                                                                                     \
        *(void **)&call = real(#name);                                                                                 \
        if (isOwn(fd) && isFaulty(#name)) {                                                                            \
            if (strcmp(how, "short") != 0) return fail();                                                              \
            if ((length) > 1) (length) = 1;                                                                            \
        }                                                                                                              \
        return call arguments;                                                                                         \
    }

TRANSFER(read, (int fd, void *bytes, size_t size), size, (fd, bytes, size))
TRANSFER(pread, (int fd, void *bytes, size_t size, off_t offset), size, (fd, bytes, size, offset))
TRANSFER(write, (int fd, const void *bytes, size_t size), size, (fd, bytes, size))
TRANSFER(recv, (int fd, void *bytes, size_t size, int flags), size, (fd, bytes, size, flags))
TRANSFER(send, (int fd, const void *bytes, size_t size, int flags), size, (fd, bytes, size, flags))

CALL(socket, int, (int domain, int type, int protocol), (domain, type, protocol))
CALL(bind, int, (int fd, __CONST_SOCKADDR_ARG address, socklen_t size), (fd, address, size))
CALL(listen, int, (int fd, int backlog), (fd, backlog))
CALL(connect, int, (int fd, __CONST_SOCKADDR_ARG address, socklen_t size), (fd, address, size))
CALL(accept4, int, (int fd, __SOCKADDR_ARG address, socklen_t *size, int flags), (fd, address, size, flags))
CALL(getsockopt, int, (int fd, int level, int name, void *value, socklen_t *size), (fd, level, name, value, size))
CALL(socketpair, int, (int domain, int type, int protocol, int ends[2]), (domain, type, protocol, ends))
CALL(fstat, int, (int fd, struct stat *status), (fd, status))
CALL(lstat, int, (const char *path, struct stat *status), (path, status))
CALL(fchmod, int, (int fd, mode_t mode), (fd, mode))
CALL(ftruncate, int, (int fd, off_t size), (fd, size))
CALL(rename, int, (const char *before, const char *after), (before, after))
CALL(unlink, int, (const char *path), (path))
CALL(flock, int, (int fd, int operation), (fd, operation))
CALL(tcgetattr, int, (int fd, struct termios *settings), (fd, settings))
CALL(tcsetattr, int, (int fd, int when, const struct termios *settings), (fd, when, settings))
CALL(poll, int, (struct pollfd * files, nfds_t number, int timeout), (files, number, timeout))
CALL(epoll_create1, int, (int flags), (flags))
CALL(epoll_wait, int, (int set, struct epoll_event *events, int size, int timeout), (set, events, size, timeout))

int pipe2(int ends[2], int flags)
{
    int (*call)(int *, int);
    *(void **)&call = real("pipe2");
    const int result = isFaulty("pipe2") ? fail() : call(ends, flags);
    if (result == 0) memcpy(pipeEnds, ends, sizeof pipeEnds);
    return result;
}

int open(const char *path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    int (*call)(const char *, int, ...);
    *(void **)&call = real("open");
    return isFaulty("open") ? fail() : call(path, flags, mode);
}

int ioctl(int fd, unsigned long request, ...)
{
    va_list more;
    va_start(more, request);
    void *const value = va_arg(more, void *);
    va_end(more);
    int (*call)(int, unsigned long, ...);
    *(void **)&call = real("ioctl");
    return isFaulty("ioctl") ? fail() : call(fd, request, value);
}

/** What is to be removed from a set can be, always. */
int epoll_ctl(int set, int operation, int fd, struct epoll_event *event)
{
    int (*call)(int, int, int, struct epoll_event *);
    *(void **)&call = real("epoll_ctl");
    return operation != EPOLL_CTL_DEL && isFaulty("epoll_ctl") ? fail() : call(set, operation, fd, event);
}

/** Also when it fails, the file is closed. */
int close(int fd)
{
    int (*call)(int);
    *(void **)&call = real("close");
    const int result = call(fd);
    return isFaulty("close") ? fail() : result;
}
