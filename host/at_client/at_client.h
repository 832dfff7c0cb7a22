/** The AT-client library of the reference host: ClientSendCmd(), ClientInit() and SetClientProcRecvCallback() of
 *  mainControl/host.h over the socket of kr-at-server, and what a host needs besides.
 *
 *  1. The socket's path comes from the environment variable KR_AT_SERVER, otherwise it is /run/kr-at-server/at.sock.
 *  2. Connections are made when needed and made anew when lost; a lost server costs the call that runs, not the next.
 *  3. All functions are called on one thread, that of the host's API calls, except ClientInterrupt().
 *  4. Reports are kept while calls run, at most CLIENT_MAX_REPORTS of them; what comes beyond is counted and dropped.
 *     They are delivered only from ClientDispatch(), since the library must not parse two texts at once. */
#ifndef KR_AT_CLIENT_H
#define KR_AT_CLIENT_H

#include <stddef.h>
#include <stdint.h>

#include <mainControl/host.h>

#ifdef __cplusplus
extern "C" {
#endif

#define CLIENT_MAX_REPORTS 64

/** What ClientSendCmd(), ClientInit() and ClientStatus() return. */
enum {
    CLIENT_OK = 0,
    CLIENT_NO_SERVER = 1,      /**< nobody listens on the socket, or the server went away */
    CLIENT_REFUSED = 2,        /**< the server does not take commands from this user, or from so many */
    CLIENT_PORT_DOWN = 3,      /**< the modem's port is not open, or was closed while the command ran */
    CLIENT_TIMED_OUT = 4,      /**< the modem gave no final result in time */
    CLIENT_REPLY_TOO_LONG = 5, /**< more than 10239 characters */
    CLIENT_BAD_COMMAND = 6,    /**< empty, too long, or with a control character */
    CLIENT_INTERRUPTED = 7,    /**< by ClientInterrupt() */
    CLIENT_SERVER_BUSY = 8,    /**< too many commands wait */
    CLIENT_PROTOCOL = 9        /**< the server speaks another version */
};

/** Result of the last ClientSendCmd(), ClientInit() or ClientStatus(). The library tells its callers only that a send
 *  failed; a host that wants to know why asks here. */
int ClientLastResult(void);

/** What the last failure was, with the path or the modem's part in it, for people; "" after a success. Valid until the
 *  next call. */
const char *ClientLastError(void);

/** Delivers the reports that have come, at most for a time, to the callback of SetClientProcRecvCallback() and to the
 *  observer.
 *  @param timeoutMs  how long to wait for the first one; 0 not at all, -1 without end
 *  @return how many were delivered; -1 if the server cannot be reached (ClientLastError() says why), in which case the
 *          next call tries again; 0 as well after ClientInterrupt() */
int ClientDispatch(int32_t timeoutMs);

/** The socket, to be watched for reading by an event loop that then calls ClientDispatch(0). It changes when the client
 *  connects anew.
 *  @return -1 if there is none at present */
int ClientFd(void);

/** State of the server and the port.
 *  @param json  out, a JSON object as kr-at-server(8) describes it, cut to size with its terminator
 *  @return 0 or one of the results above */
int ClientStatus(char *json, size_t size);

/** Makes the ClientSendCmd() or ClientDispatch() that runs now return at once; without effect on later ones. The
 *  server drops or drains the command. May be called from a signal handler and from any thread. */
void ClientInterrupt(void);

/** Closes the connection and forgets reports that wait. */
void ClientClose(void);

/** Things that happen on the way, for hosts that show them. They are called from within ClientSendCmd() (waiting,
 *  reply) and ClientDispatch() (the others). Members may be NULL. */
typedef struct {
    void (*waiting)(void *user, uint32_t atMostMs); /**< other clients' commands come first */
    void (*report)(void *user, const char *text);   /**< a report in standard framing, known to the library or not */
    void (*port)(void *user, int isOpen, const char *why); /**< the modem's port came or went */
    void (*lost)(void *user, uint32_t reports);            /**< so many were dropped since the last delivery */
    void (*trace)(void *user, const char *event);          /**< one event of the transcript, after ClientTrace(1) */
    /** What the modem answered, unmasked, at the end of a ClientSendCmd() that returns CLIENT_OK: the library tells its
     *  callers only that a command failed, a host that wants to say why looks here. */
    void (*reply)(void *user, const char *command, const char *text);
    void *user;
} ClientObserver;

/** @param observer  copied; NULL for none. Reports are heard after ClientInit(). */
void ClientSetObserver(const ClientObserver *observer);

/** Asks the server for its transcript, which is delivered like reports; an event is a JSON object, with secrets and
 *  identities masked. Stays asked for when the client connects anew.
 *  @return 0 or one of the results above */
int ClientTrace(int on);

#ifdef __cplusplus
}
#endif

#endif
