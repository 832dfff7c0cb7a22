#include <algorithm>

#include "tests/support/plain_codec.h"
#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

void readContext(const std::string &line, PdpContext &scratch)
{
    Token pdpType(line);
    Token apn(line);
    Token pdpAddress(line);
    const int count = scan(line, "%d %s %s %s %d %d", &scratch.cid, static_cast<char *>(pdpType),
                           static_cast<char *>(apn), static_cast<char *>(pdpAddress), &scratch.dComp, &scratch.hComp);
    if (count >= 2) keep(scratch.pdpType, pdpType);
    if (count >= 3) keep(scratch.apn, apn);
    if (count >= 4) keep(scratch.pdpAddress, pdpAddress);
}

/** What stands behind a terminator, and between the fields, is nobody's. */
template <size_t size>
void leaveTailOpen(World &world, const char (&array)[size])
{
    const size_t length = strnlen(array, size - 1);
    world.leaveOpen(array + length + 1, size - length - 1);
}

} // namespace

uint32_t CGDCONT_ReadATResProcess(World &world, AtRes *parsed, PdpContextList *list)
{
    PdpContext scratch{};
    scratch.cid = 1;
    list->count = 0;
    std::memset(&list->context[0], 0, sizeof list->context[0]);
    ListImage lines;
    splitAt(lines, parsed->Paras, ";");
    const int32_t count = std::min<int32_t>(lines.nCount, 16);
    for (int32_t i = 0; i < count; ++i) {
        const std::string line = rewritten(lines.textOf(i));
        readContext(line, scratch);
        world.log(kSet, "%s:%s", "CGDCONT_ReadATResProcess", line.c_str());
        PdpContext &entry = list->context[i];
        entry = scratch;
        restoreIn(entry.pdpType);
        restoreIn(entry.pdpAddress);
        restoreIn(entry.apn);
        leaveTailOpen(world, entry.pdpType);
        leaveTailOpen(world, entry.apn);
        leaveTailOpen(world, entry.pdpAddress);
        world.leaveOpen(entry.pdpAddress + sizeof entry.pdpAddress,
                        offsetof(PdpContext, dComp) - offsetof(PdpContext, pdpAddress) - sizeof entry.pdpAddress);
    }
    list->count = count;
    return kSuccess;
}

uint32_t cgdcontRead(World &world, PdpContextList *list)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+CGDCONT?")) return kFalse;
    CGDCONT_ReadATResProcess(world, &exchange.record, list);
    return kSuccess;
}

uint32_t cgdcontSet(World &world, PdpContext context)
{
    const std::string command = format(R"(AT+CGDCONT=%d,"%s","%s","%s",%d,%d)", context.cid, context.pdpType,
                                       context.apn, context.pdpAddress, context.dComp, context.hComp);
    return Exchange(world).succeeds(command) ? kSuccess : kFalse;
}

uint32_t cgdfltSet(World &world, PdpContext context)
{
    const std::string command = format(R"(AT*CGDFLT=%d,"%s","%s",,1)", context.cid, context.pdpType, context.apn);
    return Exchange(world).succeeds(command) ? kSuccess : kFalse;
}

} // namespace plain
