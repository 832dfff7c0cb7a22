/** The AT-client library of the reference host: ClientSendCmd(), ClientInit() and SetClientProcRecvCallback() of
 *  mainControl/host.h over the socket of kr-at-server, and what a host needs besides.
 *
 *  1. The socket's path comes from the environment variable KR_AT_SERVER, otherwise it is /run/kr-at-server/at.sock.
 *  2. Connections are made when needed and made anew when lost; a lost server costs the call that runs, not the next.
 *     A connection that turns out to be dead before a command was sent is made anew within the call. A command that may
 *     have reached the modem is never sent again.
 *  3. All functions are called on one thread at a time, that of the host's API calls, except ClientInterrupt() and
 *     ClientIsSafeInQuotes(). A call
 *     that comes while another thread is in one fails with CLIENT_OTHER_THREAD at once and does nothing; functions
 *     without a result do nothing then, and ClientLastResult() tells of the call that goes on. A call needs a few KiB of
 *     stack.
 *  4. Reports are kept while calls run, at most CLIENT_MAX_REPORTS of them and CLIENT_MAX_REPORT_BYTES bytes; what comes
 *     beyond is counted and dropped. Events of the transcript have the same room once more. All are delivered only from
 *     ClientDispatch(), in the order in which they came, since the library must not parse two texts at once.
 *  5. From what ClientDispatch() calls, all functions may be called but ClientDispatch() itself, which then returns -1
 *     at once. The library asks for more: its own callbacks must not call its API, the observer's may. From the
 *     observer's waiting() and reply() none may be called but ClientInterrupt(), ClientFd(), and the two that tell the
 *     last result.
 *     What may not be called fails with CLIENT_NESTED and does nothing.
 *  6. The modem's time is the server's to measure: it starts when the command is on the wire. A server that says nothing
 *     for 15 s longer than it may take, or for as many ms as the environment variable KR_AT_PATIENCE_MS says, counts as
 *     gone (CLIENT_NO_SERVER); what it says about commands that come first extends that.
 *  7. A child of fork() has no connection, no reports and no interruption of its parent; it makes a connection of its own
 *     when it calls. Descriptors are closed by exec(). SIGPIPE is never raised, and signals end no call. */
#ifndef HOST_AT_CLIENT_AT_CLIENT_H
#define HOST_AT_CLIENT_AT_CLIENT_H

#include <stddef.h>
#include <stdint.h>

#include <mainControl/host.h>

#ifdef __cplusplus
extern "C" {
#endif

#define CLIENT_MAX_REPORTS 64
#define CLIENT_MAX_REPORT_BYTES 131072
#define CLIENT_PATIENCE_VARIABLE "KR_AT_PATIENCE_MS"

/** What ClientSendCmd(), ClientInit(), ClientStatus() and ClientTrace() return. */
enum {
    CLIENT_OK = 0,
    CLIENT_NO_SERVER = 1,      /**< nobody listens on the socket, or the server went away or fell silent */
    CLIENT_REFUSED = 2,        /**< the server does not take commands from this user, or from so many */
    CLIENT_PORT_DOWN = 3,      /**< the modem's port is not open, or was closed while the command ran */
    CLIENT_TIMED_OUT = 4,      /**< the modem gave no final result in time */
    CLIENT_REPLY_TOO_LONG = 5, /**< more than 10239 characters */
    CLIENT_BAD_COMMAND = 6,    /**< without AT at its beginning, empty, too long, or with a control character */
    CLIENT_INTERRUPTED = 7,    /**< by ClientInterrupt() */
    CLIENT_SERVER_BUSY = 8,    /**< too many commands wait */
    CLIENT_PROTOCOL = 9,       /**< the server speaks another version */
    CLIENT_NESTED = 10,        /**< called from within a callback that must not do so */
    CLIENT_OTHER_THREAD = 11,  /**< called while another thread is in a call */
    CLIENT_NOT_ALLOWED = 12,   /**< the server does not let this user do that; ClientLastError() says who may */
    CLIENT_MISMATCHED = 13     /**< the modem's answer belongs to another command */
};

/* Of the functions of mainControl/host.h:
 *
 * ClientSendCmd() writes the reply to response->aucDataBuf with its terminator and nothing else, and nothing at all when
 * it fails. It returns one of the results above, all of which but 0 mean a failed send to the library.
 *
 * ClientInit() connects and asks for reports, once; the queue's name is not needed. If it fails, reports are asked for as
 * soon as a connection is made.
 *
 * SetClientProcRecvCallback() returns 0. Each report comes in a record of its own, whose header words are 0. */

/** Result of the last call of any function that reaches for the server. The library tells its callers only that a send
 *  failed; a host that wants to know why asks here. */
int ClientLastResult(void);

/** What the last failure was, with the path or the modem's part in it, for people; "" after a success. From within
 *  waiting() it is what the call waits for, "" if that is other clients' commands. Valid until the next call. */
const char *ClientLastError(void);

/** Delivers what has come, at most what is there when it starts or comes first, to the callback of
 *  SetClientProcRecvCallback() and to the observer.
 *  @param timeoutMs  how long to wait if nothing is there; 0 not at all, -1 without end. A connection that has to be
 *                    made first takes the time that it takes
 *  @return how many reports, changes of the port, events of the transcript and numbers of lost ones were delivered;
 *          0 as well after ClientInterrupt(); -1 if nothing was there and the server cannot be reached
 *          (ClientLastError() says why): the next call tries again at once, so that the host pauses before it */
int ClientDispatch(int32_t timeoutMs);

/** A descriptor to be watched for reading by an event loop that then calls ClientDispatch(0). It can be read as long as
 *  something waits to be delivered, be it on the socket or kept from an earlier call, and stays the same when the client
 *  connects anew.
 *  @return -1 if there is no connection and nothing waits: ClientDispatch() tries to make one; also while another thread
 *          is in a call */
int ClientFd(void);

/** State of the server and the port.
 *  @param json  out, a JSON object as kr-at-server(8) describes it, cut to size with its terminator
 *  @return 0 or one of the results above */
int ClientStatus(char *json, size_t size);

/** Whether a text may stand between quotes in a command. The library formats texts into commands as they stand, so that a
 *  quote within one ends it there: behind 1";+CFUN=0 in an APN, the rest is a second command. Asks nobody, and may be
 *  called from any thread at any time.
 *  @return 1 for printable ASCII without quote and backslash that is no longer than a command can be, also for ""; 0 for
 *          anything else, and for NULL */
int ClientIsSafeInQuotes(const char *text);

/** Makes the call that runs now return at once; without effect on later ones. ClientSendCmd() returns
 *  CLIENT_INTERRUPTED, and the server drops or drains the command. May be called from a signal handler and from any
 *  thread. */
void ClientInterrupt(void);

/** Closes the connection and forgets reports that wait. What was asked for stays so, and the next call connects anew. */
void ClientClose(void);

/** Things that happen on the way, for hosts that show them. They are called from within ClientSendCmd() (waiting,
 *  reply) and ClientDispatch() (the others). Members may be NULL. Texts are valid during the call. */
typedef struct {
    void (*waiting)(void *user, uint32_t atMostMs);        /**< other clients' commands come first, or what
                                                                ClientLastError() says if it says anything */
    void (*report)(void *user, const char *text);          /**< a report in standard framing, known to the library or
                                                                not; before the library gets it */
    void (*port)(void *user, int isOpen, const char *why); /**< the modem's port came or went */
    void (*lost)(void *user, uint32_t messages);           /**< so many were dropped since the last delivery */
    void (*trace)(void *user, const char *event);          /**< one event of the transcript, after ClientTrace(1) */
    /** What the modem answered, unmasked, at the end of a ClientSendCmd() that returns CLIENT_OK: the library tells its
     *  callers only that a command failed, a host that wants to say why looks here. */
    void (*reply)(void *user, const char *command, const char *text);
    void *user;
} ClientObserver;

/** @param observer  copied; NULL for none. Reports are heard after ClientInit(). */
void ClientSetObserver(const ClientObserver *observer);

/** Asks the server for its transcript, which is delivered like reports; an event is a JSON object, with secrets and
 *  identities masked. Stays asked for when the client connects anew, unless the server then does not allow it: the call
 *  that connects fails with CLIENT_NOT_ALLOWED, and later ones go on without.
 *  @return 0 or one of the results above */
int ClientTrace(int on);

#ifdef __cplusplus
}
#endif

#endif
