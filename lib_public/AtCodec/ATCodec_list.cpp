// Cutting a parameter text into pieces: lists of entries, single fields, and counts.

#include <mainControl/codec.h>
#include <mainControl/parser.h>

#include "lib_public/AtCodec/pieces.h"
#include "lib_public/support/array_size.h"
#include "lib_public/support/fast_search.h"

using namespace mainControl;

namespace {

constexpr int32_t kCommaLimit = 100;
constexpr size_t kScanLimit = 102400; // characters of an operator scan
constexpr size_t kScanLineLimit = 102399;

/** The entries of a list that are still to fill. */
class ListFiller {
  public:
    explicit ListFiller(AtParasList &list) : list_(list) {}

    [[nodiscard]] bool isFull() const { return list_.nCount < 0 || list_.nCount >= arraySize(list_.strParasLine); }

    /** Fills the next entry. A piece of 1024 characters or more runs on into the entries behind it, not past the
     *  list. */
    void add(Span piece)
    {
        char *const entry = list_.strParasLine[list_.nCount];
        const Span kept = piece.atMost(Span{entry, end()}.size() - 1);
        std::memcpy(entry, kept.begin, kept.size());
        entry[kept.size()] = '\0';
        ++list_.nCount;
    }

  private:
    [[nodiscard]] const char *end() const
    {
        return reinterpret_cast<const char *>(list_.strParasLine) + sizeof list_.strParasLine;
    }

    AtParasList &list_;
};

void split(AtParasList &list, Span text, Span separator)
{
    ListFiller filler(list);
    Pieces pieces(text, separator, list.nCount);
    for (Span piece{}; pieces.next(piece);)
        filler.add(piece);
}

} // namespace

char *ATCodec_Find_Sub_Str(const char *text, const char *needle)
{
    return _Find_Sub_Str(text, needle);
}

int32_t ATCodec_GetSubStrCountByToken(const char *text, const char *token)
{
    if (text == nullptr || token == nullptr) return 0;
    int32_t count = 0;
    if (*token != '\0') {
        while (const char *const at = std::strstr(text, token)) {
            ++count;
            text = at + 1;
        }
    }
    return *text != '\0' ? count + 1 : count;
}

void ATCodec_FindSubStrByIndex(const char *text, char *output, int32_t indexFromOne, const char *token)
{
    if (text == nullptr || output == nullptr || token == nullptr) return;
    Field field{};
    if (!findField(spanOf(text), indexFromOne, spanOf(token), field)) return;
    std::memmove(output, field.text.begin, field.text.size() + (field.isLast ? 1 : 0));
}

void ATCodec_PreProc_Res_ParaList(AtParasList *list, const char *text)
{
    if (list == nullptr || text == nullptr) return;
    split(*list, spanOf(text), spanOfLiteral(";"));
}

void ATCodec_PreProc_Res_ParaList_Special(AtParasList *list, const char *text)
{
    if (list == nullptr || text == nullptr) return;
    split(*list, spanOf(text), spanOfLiteral(","));
}

void ATCodec_PreProc_Res_Icera_ParaList(AtParasList *list, const char *text)
{
    if (list == nullptr || text == nullptr) return;
    constexpr Span kMarker = spanOfLiteral("*STGC:");
    Span entries = spanOf(text);
    if (const char *const first = findOutsideQuotes(entries, kMarker)) entries.begin = first + kMarker.size();
    split(*list, entries, kMarker);
}

void ATCodec_PreProc_Res_COPS5_ParaList(AtParasList *list, const char *text)
{
    if (list == nullptr) return;
    Span rest = text != nullptr ? spanOf(text) : spanOfLiteral("");
    if (rest.empty() || rest.size() > kScanLimit) {
        std::memset(list, 0, sizeof *list);
        return;
    }
    ListFiller filler(*list);
    while (const char *const lineBreak = findOutsideQuotes(rest, "\r\n")) {
        const Span line{rest.begin, lineBreak};
        rest.begin = lineBreak + 2;
        if (line.empty()) continue;
        if (filler.isFull() || line.size() > kScanLineLimit) return;
        filler.add(line);
    }
    if (!rest.empty() && !filler.isFull()) filler.add(rest.atMost(kFieldLimit));
}

void ATCodec_PreProc_Res_ParaList_Entend(const char *text, int32_t *count)
{
    if (text != nullptr && count != nullptr) countCommas(spanOf(text), *count);
}

void mainControl::countCommas(Span text, int32_t &count)
{
    Span rest = text;
    int32_t commas = 0;
    visitOutsideQuotes(text, ',', [&](const char *comma) {
        if (Span{rest.begin, comma}.size() >= kFieldLimit) return false;
        rest.begin = comma + 1;
        ++commas;
        return true;
    });
    if (rest.empty() || rest.size() >= kFieldLimit || commas >= kCommaLimit) return;
    count = commas;
}
