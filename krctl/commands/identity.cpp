#include "krctl/commands/identity.h"

#include <utility>

#include <mainControl/api.h>

#include "krctl/commands/library_value.h"
#include "krctl/readings/identity.h"

namespace krctl {
namespace {

using Getter = uint32_t (*)(int32_t, char *);

/** What the reply to a function's command tells; the library's own text where it makes one of a part of the reply. */
std::string toldBy(Getter getter, const Answer &answer, std::string written)
{
    const std::string_view reply = answer.replies.last();
    if (getter == KR_getSerialNumber) return answer.isDone() ? writtenText(std::move(written)) : "";
    if (getter == KR_getIMEI) return digitsOf(reply, 14, 17); // with check digit and version, or without
    if (getter == KR_getIMSI) return digitsOf(reply, 6, 15);
    return identityOf(reply);
}

} // namespace

std::string identity(Session &session, ItemKind kind, Getter getter, const std::string &item)
{
    std::string text(kMostText + 1, '\0');
    const Answer answer = session.ask(kind, [&] { return getter(kMostText, text.data()); });
    text = toldBy(getter, answer, std::move(text));
    session.note(item, answer.ending, !text.empty());
    return text;
}

} // namespace krctl
