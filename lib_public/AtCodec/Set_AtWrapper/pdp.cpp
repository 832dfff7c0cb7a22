#include <mainControl/wrappers.h>

#include "lib_public/AtCodec/pieces.h"
#include "lib_public/AtCodec/wrapper_support.h"
#include "lib_public/support/array_size.h"

using namespace mainControl;

namespace {

constexpr int32_t kContexts = arraySize(PdpContextList{}.context);

/** Takes the contexts out of a parameter text, which is left as it is. A line that supplies fewer values than a context
 *  has takes the missing ones from the line before. */
void readContexts(Span text, PdpContextList &list)
{
    PdpContext context{};
    context.cid = 1;
    list.count = 0;
    list.context[0] = {};

    Lines lines(text);
    for (char *line = lines.next(); line != nullptr && list.count < kContexts; line = lines.next()) {
        scan(line, "%d %s %s %s %d %d", &context.cid, into(context.pdpType), into(context.apn),
             into(context.pdpAddress), &context.dComp, &context.hComp);
        SetLog::line("%s:%s", "CGDCONT_ReadATResProcess", line);
        PdpContext &entry = list.context[list.count++];
        entry = context;
        restore(into(entry.pdpType), into(entry.pdpAddress), into(entry.apn));
    }
}

} // namespace

uint32_t cgdcontRead(PdpContextList *list)
{
    AtExchange at;
    if (!at.ok("AT+CGDCONT?")) return UNI_ERROR_FALSE;
    readContexts(at.parasText(), *list);
    return UNI_ERROR_SUCCESS;
}

uint32_t CGDCONT_ReadATResProcess(AtRes *parsed, PdpContextList *list)
{
    readContexts(spanOf(parsed->Paras, sizeof parsed->Paras), *list);
    return UNI_ERROR_SUCCESS;
}

uint32_t cgdcontSet(PdpContext context)
{
    AtExchange at;
    return toCode(at.okFormatted("AT+CGDCONT=%d,\"%.*s\",\"%.*s\",\"%.*s\",%d,%d", context.cid,
                                 lengthIn(context.pdpType), context.pdpType, lengthIn(context.apn), context.apn,
                                 lengthIn(context.pdpAddress), context.pdpAddress, context.dComp, context.hComp));
}

uint32_t cgdfltSet(PdpContext context)
{
    AtExchange at;
    return toCode(at.okFormatted("AT*CGDFLT=%d,\"%.*s\",\"%.*s\",,1", context.cid, lengthIn(context.pdpType),
                                 context.pdpType, lengthIn(context.apn), context.apn));
}
