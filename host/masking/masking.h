/** What must not be read in logs and records: secrets (PIN, PUK, passwords, lock codes), who the subscriber is (IMSI, IMEI,
 *  ICCID, own number), messages, and every argument of a command that is not known to be harmless. A masked text keeps its
 *  length and its shape: each hidden character becomes '*'. */
#ifndef HOST_MASKING_MASKING_H
#define HOST_MASKING_MASKING_H

#include <string>
#include <string_view>

namespace host {

enum class Hide {
    Secrets,              ///< only those
    SecretsAndIdentities, ///< both
};

/** A command, or the echo of one, without its closing carriage return. */
std::string maskedCommand(std::string_view command, Hide hide);

/** What a modem sent while a command ran: a reply, any line of it, or an echo.
 *  @param command  the command that ran, unmasked; empty if none did */
std::string maskedReply(std::string_view command, std::string_view reply, Hide hide);

/** What a modem sent by itself: a report, or the text of one, which nobody has asked for.
 *  @param command  the command that ran, unmasked; empty if none did */
std::string maskedReport(std::string_view command, std::string_view report, Hide hide);

/** One line of a log, whatever program wrote it: the library's lines such as "KR_verifyPIN-in-newPin:1234", raw
 *  commands and replies inside. */
std::string maskedLogLine(std::string_view line, Hide hide);

} // namespace host

#endif
