// The steps of the parser that are exported too, called one by one with any text and any position in it.

#include <cstring>
#include <iterator>

#include <mainControl/parser.h>

#include "fuzz/fuzz.h"
#include "tests/support/choices.h"

namespace {

AtRes parsed;
AtCmdLine work;

struct Place {
    char *text;
    char *from;    ///< a position in it
    char *further; ///< a position behind that, or the same
};

size_t lengthOf(const char *text)
{
    return std::strlen(text);
}

void findFlag(const Place &place, Choices & /*choices*/)
{
    char *position = place.text;
    int32_t row = 0;
    const uint32_t code = _Parse_At_PreProcess(place.text, &position, &row);
    require(position >= place.text && position <= place.text + lengthOf(place.text), "the flag stands in the text");
    require(code != 0 || (row >= 0 && row < 50), "what is found is a row");
}

void runStep(const Place &place, Choices &choices)
{
    char *position = place.from;
    parsed.Result = static_cast<uint8_t>(choices.below(4));
    parsed.CmdId = choices.oneIn(2) ? 89 : 1;
    const auto column = static_cast<int32_t>(choices.below(3));
    // How far the parameters are behind the position is what the step before it has counted.
    g_iProcDataLen = column == 1 ? static_cast<int32_t>(place.further - place.from) : 0;
    g_bWaitingRes = choices.oneIn(8) ? 0 : 1;
    const size_t length = lengthOf(place.text);
    _Parse_At_End_Flag(place.text, &parsed, &position, &work, column);
    require(position >= place.text && position <= place.text + length, "the end position stays in the text");
}

void assembleRecord(const Place &place, Choices & /*choices*/)
{
    std::strncpy(parsed.Paras, place.text, sizeof parsed.Paras - 1);
    _Parse_At_Ok_Res(&parsed, &work);
}

void assembleBody(const Place &place, Choices & /*choices*/)
{
    char line[1024];
    const uint32_t code = _First_Parse_At_OK_Res(place.text, line, &work);
    require(code == 0 || code == 19, "a body is taken, or stopped at");
}

void addNamedLine(const Place &place, Choices & /*choices*/)
{
    char *const colon = std::strstr(place.text, ": ");
    if (colon != nullptr) ParseCmdLineWithCmdName(&work, place.text, colon);
    if (colon != nullptr) ParseCmdLineWithCmdName(&work, place.text, colon);
}

void addBareLine(const Place &place, Choices & /*choices*/)
{
    ParseCmdLineWithoutCmdName(&work, place.text, place.from);
}

void takeCaller(const Place &place, Choices & /*choices*/)
{
    ProcessClipCmd(place.from, place.further, 0, &parsed, &work);
}

void takeParameters(const Place &place, Choices & /*choices*/)
{
    _Parse_At_ParaOfTheEndColon(place.text, place.from, place.further, &parsed);
    require(parsed.ParasLen == static_cast<uint16_t>(place.further - place.from), "parameters have their length");
}

void lookUp(const Place &place, Choices &choices)
{
    int32_t row = -1;
    if (_Find_Cmd_By_Name(&row, place.text) == 0)
        require(std::strcmp(KoraWcdma_AtCmdTable[row].name, place.text) == 0, "a row with that name");
    const auto identifier = static_cast<uint32_t>(choices.below(65536));
    if (_Find_Cmd_By_ID(&row, identifier) == 0)
        require(KoraWcdma_AtCmdTable[row].identifier == identifier, "a row with that identifier");
}

using Step = void (*)(const Place &, Choices &);
constexpr Step kSteps[] = {findFlag,    runStep,    assembleRecord, assembleBody, addNamedLine,
                           addBareLine, takeCaller, takeParameters, lookUp};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Choices choices({data, size});
    const Step step = kSteps[choices.below(std::size(kSteps))];
    const size_t from = choices.below(65536);
    const size_t further = choices.below(65536);
    const OwnText text(choices.text());
    const size_t length = lengthOf(text);
    char *const begin = text + from % (length + 1);
    parsed = {};
    work = {};
    step({text, begin, begin + further % (length - from % (length + 1) + 1)}, choices);
    return 0;
}
