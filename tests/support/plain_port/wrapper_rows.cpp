#include <mainControl/wrappers.h>

#include "tests/support/plain_port/rows.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

#define BOTH(function) #function, ::function, plain::function

int32_t lockMode(Round &round)
{
    return round.dice.oneIn(3) ? 2 : anyInteger(round);
}

int32_t *fourCounts(Round &round)
{
    return recordAt<int32_t>(round.memory(4 * sizeof(int32_t)));
}

int32_t *outIntegerOrNull(Round &round)
{
    return round.dice.oneIn(4) ? nullptr : outInteger(round);
}

int32_t groupIndex(Round &round)
{
    return round.dice.oneIn(4) ? anyInteger(round) : static_cast<int32_t>(round.dice.below(4));
}

AtRes *parsedContexts(Round &round)
{
    return parsedReply(round, "AT+CGDCONT?");
}

const char *commas(Round &round)
{
    return round.text(round.dice.of("1, \"-", round.dice.length()));
}

uint32_t scanInto(AtParasList *list)
{
    return ::copsSet5(&list);
}

uint32_t plainScanInto(World &world, AtParasList *list)
{
    return plain::copsSet5(world, &list);
}

} // namespace

std::vector<Row> setWrappers()
{
    return {
        row(BOTH(atStart)),
        row(BOTH(ateExec), anyInteger),
        row(BOTH(cmeeSet), anyInteger),
        row(BOTH(cgsnExec), outText),
        row(BOTH(zmsnRead), outText),
        row(BOTH(clckSet), hostText, lockMode, hostText, anyInteger, outInteger),
        row(BOTH(xxSet), anyInteger, outInteger),
        row(BOTH(epincRead), fourCounts),
        row(BOTH(cardmodeExec), outInteger),
        row(BOTH(zrapRead), anyInteger, outInteger, outInteger),
        row(BOTH(zpinpukTest), outInteger, outInteger),
        row(BOTH(cpinRead), outInteger),
        row(BOTH(cpinSet), anyPins),
        row(BOTH(cpwdSet), anyPins),
        row(BOTH(zsecRead), outInteger, outInteger),
        row(BOTH(zlcokRead), outInteger, outInteger),
        row(BOTH(znckSet), hostText),
        row(BOTH(znckRead), outInteger),
        row(BOTH(spsimlockinfoExec), outIntegerOrNull),
        row(BOTH(esmlckSet), anyInteger, anyInteger, hostText),
        row(BOTH(esmlckRead), groupIndex, outInteger, outIntegerOrNull, outIntegerOrNull),
        row(BOTH(cgdcontRead), outRecord<PdpContextList>),
        row(BOTH(CGDCONT_ReadATResProcess), parsedContexts, outRecord<PdpContextList>),
        row(BOTH(cgdcontSet), anyContext),
        row(BOTH(cgdfltSet), anyContext),
        row(BOTH(zoprtRead), outInteger),
        row(BOTH(zoprtSet), anyInteger),
        row(BOTH(zsetSet), hostText, anyInteger, outText, outInteger),
        row(BOTH(FOTACTRSet), anyInteger, outInteger, outInteger),
        row(BOTH(AtNetstaticIp), hostText),
        row(BOTH(AtRamdumpHostIp), hostText),
    };
}

std::vector<Row> networkWrappers()
{
    return {
        row(BOTH(cfunSet), anyInteger),
        row(BOTH(cfunRead), outInteger),
        row(BOTH(cregSet), anyInteger),
        row(BOTH(cgregSet), anyInteger),
        row(BOTH(ceregSet), anyInteger),
        row(BOTH(zgaatSet), anyInteger),
        row(BOTH(cgattSet), anyInteger),
        row(BOTH(ceregRead), outInteger, outInteger, outText, outText, outInteger),
        row(BOTH(cgregRead), outInteger, outInteger),
        row(BOTH(cregRead), outRecord<CregPara>),
        row(BOTH(crsmSet), anySimCommand, outSimResponse),
        row(BOTH(zdonRead), outRecord<ZdonInfo>),
        row(BOTH(zpasRead), outRecord<ZpasInfo>),
        row(BOTH(copsSet), anyOperator),
        row(BOTH(copsRead), outRecord<CopsPara>),
        row(BOTH(copsTest), outRecord<ScanNetworkList>),
        row("copsSet5", scanInto, plainScanInto, outRecord<AtParasList>),
        row(BOTH(zsntSet), anyInteger, anyInteger, anyInteger),
        row(BOTH(zsntRead), outInteger, outInteger, outInteger),
        row(BOTH(sysconfigRead), outRecord<SysconfigPara>),
        row(BOTH(sysconfigSet), anyInteger, anyInteger, anyInteger, anyInteger),
        row(BOTH(eratRead), outInteger, outInteger, outInteger, outInteger),
        row(BOTH(eratSet), anyInteger, anyInteger),
        row(BOTH(zprefbandSet), anyInteger),
        row(BOTH(sysinfoExec), outInteger, outInteger, outInteger, outInteger, outInteger, anyInteger, anyInteger),
        row(BOTH(zrssiExec), outRecord<ZrssiPara>),
        row(BOTH(zrssiLteRead), outRecord<ZrssiPara>),
        row(BOTH(getZrssiResParasCount), commas),
        row(BOTH(zltelcRead), outInteger, outInteger, outInteger),
    };
}

} // namespace plain
