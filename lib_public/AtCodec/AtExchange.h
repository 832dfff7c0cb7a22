#ifndef LIB_PUBLIC_ATCODEC_ATEXCHANGE_H
#define LIB_PUBLIC_ATCODEC_ATEXCHANGE_H

#include <cstdarg>
#include <cstddef>
#include <cstdint>

#include <mainControl/records.h>

#include "lib_public/ATPreprocess/reply_room.h"
#include "lib_public/AtCodec/line_values.h"
#include "lib_public/support/outcome.h"
#include "lib_public/support/scan.h"
#include "lib_public/support/span.h"

namespace mainControl {

constexpr int32_t kDefaultTimeoutMs = 5000;

/** One command and its reply: the frame of every wrapper.
 *
 *      AtExchange at;
 *      if (!at.ok("AT+CGSN")) return UNI_ERROR_FALSE;
 *
 *  A wrapper that treats its failures differently takes the steps one by one: send(), parse(), result(). It lives on
 *  the stack of the wrapper and needs about 24 KiB there: the raw record, and parameters of any reply that fits it. */
class AtExchange {
  public:
    /** Sends a command as it stands, parses the reply and requires the final result OK. */
    [[nodiscard]] bool ok(const char *command);
    /** The same for a command that is formatted first. */
    [[nodiscard]] bool okFormatted(const char *format, ...) __attribute__((format(printf, 2, 3)));
    [[nodiscard]] bool okWithin(int32_t timeoutMs, const char *format, ...) __attribute__((format(printf, 3, 4)));

    /** Sends a command as it stands. One that cannot be sent whole is not sent, and counts as a failed send. */
    [[nodiscard]] bool send(int32_t timeoutMs, const char *command);
    /** Formats a command and sends it. */
    [[nodiscard]] bool sendFormatted(int32_t timeoutMs, const char *format, ...) __attribute__((format(printf, 3, 4)));

    /** Parses the reply to what was sent. */
    [[nodiscard]] bool parse();
    /** Parses it and requires the final result OK. */
    [[nodiscard]] bool parseOk();

    /** Parses the reply to a command, if that was sent, and tells how far the exchange came:
     *
     *      const Ending ending = at.end(at.send(kDefaultTimeoutMs, "AT+CGSN")); */
    [[nodiscard]] Ending end(bool isSent);

    /** The final result; 0 as long as nothing has been parsed. */
    [[nodiscard]] uint8_t result() const { return result_; }
    [[nodiscard]] bool isOk() const { return result_ == AT_RES_RESULT_OK; }

    /** The parameter text of the reply, to be read or rewritten in place. */
    [[nodiscard]] char *paras() { return paras_; }
    /** The same as the reply left it, as long as nothing has rewritten it. */
    [[nodiscard]] Span parasText() const { return {paras_, paras_ + parasSize_}; }
    /** Copies that. */
    void copyParas(char *output) const;
    /** Reads values out of it as it stands. */
    template <typename... Targets>
    [[gnu::always_inline]] void read(std::type_identity_t<ScanFormat<Targets...>> format, Targets... targets)
    {
        scan<Targets...>(paras_, format, targets...);
    }
    /** Reads values out of it as one parameter line, which may rewrite it. Texts come restored. */
    template <typename... Targets>
    [[gnu::always_inline]] void readLine(std::type_identity_t<LineFormat<Targets...>> format, Targets... targets)
    {
        scanLine<Targets...>(paras_, format, targets...);
    }

    /** Takes the reply to an operator scan whole instead of parsing it.
     *  @return false if there is no OK in it */
    [[nodiscard]] bool takeScan();
    /** The reply as it came. */
    [[nodiscard]] const char *reply() const { return raw_.aucDataBuf; }

  private:
    [[nodiscard, gnu::noinline]] bool sendList(int32_t timeoutMs, const char *format, std::va_list arguments)
        __attribute__((format(printf, 3, 0)));

    /** The longest command, with its terminator. */
    static constexpr size_t kCommandRoom = 1024;
    static_assert(kCommandRoom <= kParasRoom);

    uint8_t result_ = 0;
    size_t parasSize_ = 0;
    AtClientRes raw_;
    char paras_[kParasRoom]; // holds the command while that is sent, the parameters from the parse on
};

} // namespace mainControl

#endif
