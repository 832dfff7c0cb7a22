// The parser's variant for operator scans, and the split that its parameters go through.

#include <cstring>

#include <mainControl/codec.h>
#include <mainControl/parser.h>

#include "fuzz/fuzz.h"
#include "tests/support/choices.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static AtRes parsed;
    static AtParasList list;
    const std::string reply = Choices({data, size}).text();
    const OwnText text(reply);
    parsed = {};
    const uint32_t code = Bk_Parse_At_COPS5_Res(text, &parsed);
    require(code == 0 || code == 19, "a scan is parsed or is not");
    require(reply == static_cast<char *>(text), "a scan is not edited");
    list.nCount = 0;
    ATCodec_PreProc_Res_COPS5_ParaList(&list, OwnText(parsed.Paras));
    require(list.nCount >= 0 && list.nCount <= 100, "a list counts the entries it has");
    return 0;
}
