// Each function of the parameter codec, over any text.

#include <cstring>
#include <iterator>

#include <mainControl/codec.h>

#include "fuzz/fuzz.h"
#include "tests/support/choices.h"

namespace {

AtParasList list;

using Split = void (*)(AtParasList *, const char *);
template <Split split>
void splitUp(const std::string &text, Choices &choices)
{
    static constexpr int32_t kPresets[] = {0, 0, 0, 1, 42, 98, 99, 100, 101, -1, INT32_MAX, INT32_MIN};
    list.nCount = kPresets[choices.below(std::size(kPresets))];
    split(&list, OwnText(text));
}

using Rewrite = void (*)(char *);
template <Rewrite rewrite>
void rewriteIt(const std::string &text, Choices & /*choices*/)
{
    const OwnText room(text);
    rewrite(room);
    require(std::strlen(room) <= text.size(), "a text stays in its room");
}

void find(const std::string &text, Choices &choices)
{
    const OwnText own(text);
    const std::string needle = choices.text();
    const char *const found = ATCodec_Find_Sub_Str(own, OwnText(needle));
    require(found == nullptr || std::strncmp(found, needle.c_str(), needle.size()) == 0, "it stands where it is found");
}

void countFields(const std::string &text, Choices &choices)
{
    const int32_t count = ATCodec_GetSubStrCountByToken(OwnText(text), OwnText(choices.text()));
    require(count >= -1 && count <= static_cast<int32_t>(text.size()) + 1, "no more fields than characters");
}

void takeField(const std::string &text, Choices &choices)
{
    const OwnText output(std::string(text.size(), 'x'));
    const auto index = static_cast<int32_t>(choices.below(65536)) - 2;
    ATCodec_FindSubStrByIndex(OwnText(text), output, index, OwnText(choices.text()));
}

void countCommas(const std::string &text, Choices & /*choices*/)
{
    int32_t count = 0;
    ATCodec_PreProc_Res_ParaList_Entend(OwnText(text), &count);
    require(count >= 0 && count <= static_cast<int32_t>(text.size()), "no more commas than characters");
}

void formatCommand(const std::string &text, Choices & /*choices*/)
{
    const OwnText output(std::string(text.size() + 16, '\0'));
    ATCodec_TranslateToCmdPara(output, "AT+X=%d,\"%s\"", -1, text.c_str());
    require(std::strlen(output) == text.size() + 10, "a command is formatted whole");
}

using Call = void (*)(const std::string &, Choices &);
constexpr Call kCalls[] = {find,
                           countFields,
                           takeField,
                           countCommas,
                           formatCommand,
                           splitUp<ATCodec_PreProc_Res_ParaList>,
                           splitUp<ATCodec_PreProc_Res_ParaList_Special>,
                           splitUp<ATCodec_PreProc_Res_Icera_ParaList>,
                           splitUp<ATCodec_PreProc_Res_COPS5_ParaList>,
                           rewriteIt<ATCodec_PreProc_Res_ParaLine>,
                           rewriteIt<ATCodec_ProcRes_ParaLineEx>,
                           rewriteIt<ATCodec_Restore_String_Para>};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Choices choices({data, size});
    const Call call = kCalls[choices.below(std::size(kCalls))];
    const std::string text = choices.text();
    call(text, choices);
    return 0;
}
