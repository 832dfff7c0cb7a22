#include "lib_public/AtCodec/pieces.h"
#include "lib_public/AtCodec/private_wrappers.h"
#include "lib_public/AtCodec/wrapper_support.h"

namespace mainControl {

namespace {

/** The field with an index, or nothing. */
Span fieldOrNothing(Span text, int32_t indexFromOne, Span separator)
{
    Field field{};
    return findField(text, indexFromOne, separator, field) ? field.text : Span{text.end, text.end};
}

} // namespace

Ending textExec(const char *command, int32_t size, char *output, TextHeard heard)
{
    AtExchange at;
    const Ending ending = at.end(at.send(kDefaultTimeoutMs, command));
    if (ending != Ending::Ok) return ending;
    const Span value = at.parasText();
    if (!fitsInto(size, value)) return Ending::Refused;
    std::memcpy(output, value.begin, value.size());
    heard(at.paras());
    return Ending::Ok;
}

bool cutTextExec(const char *command, char (&output)[kIdentityRoom])
{
    AtExchange at;
    if (!at.ok(command)) return false;
    const Span value = at.parasText();
    copyFitting(output, value.begin, value.size());
    return true;
}

bool takeOwnNumber(Span paras, int32_t size, char (&number)[kIdentityRoom])
{
    if (paras.empty()) return false;
    const Span quoted = fieldOrNothing(paras, 2, spanOfLiteral(",")).atMost(kIdentityRoom - 1);
    if (!fitsInto(size, quoted)) return false;
    const Span digits = fieldOrNothing(quoted, 2, spanOfLiteral("\""));
    copyFitting(number, digits.begin, digits.size());
    return true;
}

Ending cnumExec(int32_t size, char (&number)[kIdentityRoom])
{
    AtExchange at;
    const Ending ending = at.end(at.send(kDefaultTimeoutMs, "AT+CNUM"));
    if (ending != Ending::Ok) return ending;
    return takeOwnNumber(at.parasText(), size, number) ? Ending::Ok : Ending::Refused;
}

} // namespace mainControl
