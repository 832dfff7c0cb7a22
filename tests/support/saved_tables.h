#ifndef TESTS_SUPPORT_SAVED_TABLES_H
#define TESTS_SUPPORT_SAVED_TABLES_H

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include <mainControl/parser.h>

/** Puts both tables, their size words and the parser's globals back as they were, so that a test may change them. */
class SavedTables {
  public:
    SavedTables()
    {
        std::copy(std::begin(KoraWcdma_AtEndFlgTable), std::end(KoraWcdma_AtEndFlgTable), flags_);
        std::copy(std::begin(KoraWcdma_AtCmdTable), std::end(KoraWcdma_AtCmdTable), commands_);
    }
    ~SavedTables()
    {
        std::copy(std::begin(flags_), std::end(flags_), KoraWcdma_AtEndFlgTable);
        std::copy(std::begin(commands_), std::end(commands_), KoraWcdma_AtCmdTable);
        KoraWcdma_AtEndFlgTableSize = flagCount_;
        KoraWcdma_AtCmdTableSize = commandCount_;
        g_iProcDataLen = procDataLen_;
        g_bWaitingRes = waitingRes_;
    }
    SavedTables(const SavedTables &) = delete;
    SavedTables &operator=(const SavedTables &) = delete;

  private:
    AtEndFlagRow flags_[std::size(KoraWcdma_AtEndFlgTable)];
    AtCmdRow commands_[std::size(KoraWcdma_AtCmdTable)];
    int32_t flagCount_ = KoraWcdma_AtEndFlgTableSize;
    int32_t commandCount_ = KoraWcdma_AtCmdTableSize;
    int32_t procDataLen_ = g_iProcDataLen;
    int32_t waitingRes_ = g_bWaitingRes;
};

/** Fills a text field whole: zeros behind a shorter text, no terminator where the text is as long as the field. */
template <size_t Size>
void setField(char (&field)[Size], std::string_view text)
{
    std::memset(field, 0, Size);
    std::memcpy(field, text.data(), std::min(text.size(), Size));
}

/** Makes a row without a handler. */
inline AtEndFlagRow endFlag(std::string_view flag, int32_t result, int32_t identifier, int32_t hasParas)
{
    AtEndFlagRow row = {};
    setField(row.flag, flag);
    row.result = result;
    row.identifier = identifier;
    row.hasParas = hasParas;
    return row;
}

#endif
