/** Parameter codec: from the parameter text of a reply to single values.
 *
 *  Rules for callers:
 *  1. A NULL argument makes a function do nothing, unless its comment says otherwise.
 *  2. Lists and output buffers are zeroed by the caller; the split functions add to what a list holds.
 *  3. A list takes 100 entries of up to 1023 characters. The piece behind the last separator of a text may have 1024,
 *     which the first byte of the entry behind it ends; in the last entry it keeps 1023. A list whose count is negative
 *     or 100 and more takes nothing.
 *  4. "Outside quotes" means what it means in mainControl/parser.h.
 *  5. No function needs more than 8 KiB of stack. */
#ifndef MAINCONTROL_CODEC_H
#define MAINCONTROL_CODEC_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Finds a text outside quotes, as _Find_Sub_Str() does.
 *  @return the first occurrence, in text; NULL if there is none or an argument is NULL */
MAINCONTROL_EXPORT char *ATCodec_Find_Sub_Str(const char *text, const char *needle);

/** Counts fields: the occurrences of the token, quoted ones included and looked for from each next character on, and
 *  one more if anything follows the first character of the last one. An empty token counts the text as one field.
 *  @return 0 for an empty text or a NULL argument */
MAINCONTROL_EXPORT int32_t ATCodec_GetSubStrCountByToken(const char *text, const char *token);

/** Copies one field; fields end at a token outside quotes.
 *  @param output        a field that ends in a token goes in without a terminator; the last one, of any length, with it
 *  @param indexFromOne  an index that no field has, 0 and negative ones too, gives the last field. Nothing is copied if
 *                       it is 100 or more, or a field of 1024 characters or more comes before, where a token follows */
MAINCONTROL_EXPORT void ATCodec_FindSubStrByIndex(const char *text, char *output, int32_t indexFromOne,
                                                  const char *token);

/** Splits a text at each ";" outside quotes. Empty pieces count, except behind a ";" at the end. Stops at a piece of
 *  1024 characters or more; of the last piece at most 1024 are kept (1023 in the last entry). */
MAINCONTROL_EXPORT void ATCodec_PreProc_Res_ParaList(AtParasList *list, const char *text);

/** The same at each ",". */
MAINCONTROL_EXPORT void ATCodec_PreProc_Res_ParaList_Special(AtParasList *list, const char *text);

/** The same at each "*STGC:", without what stands before the first one. */
MAINCONTROL_EXPORT void ATCodec_PreProc_Res_Icera_ParaList(AtParasList *list, const char *text);

/** Splits an operator scan into its lines; empty lines do not count. A closed line of 1024 characters or more runs on
 *  into the entries behind its own, not past the list; the next line overwrites what ran on. Of a last line that is not
 *  closed at most 1024 characters are kept.
 *  @param text  NULL, an empty text or one of more than 102400 characters clears the whole list */
MAINCONTROL_EXPORT void ATCodec_PreProc_Res_COPS5_ParaList(AtParasList *list, const char *text);

/** Counts the commas outside quotes.
 *  @param count  out; untouched if a field has 1024 characters or more, if nothing follows the last comma (or the text
 *                is empty), or if there are 100 commas or more */
MAINCONTROL_EXPORT void ATCodec_PreProc_Res_ParaList_Entend(const char *text, int32_t *count);

/** Rewrites one parameter line in place for reading with blank-separated conversions: quotes go, a comma outside quotes
 *  becomes a blank, an empty parameter 0xFD, a blank in quotes 0xFE, a tab in quotes 0xFC. The text keeps its room: a
 *  longer result loses its tail, a shorter one is filled up with zeros.
 *  @param text  left alone if it is empty, or it or its rewritten form has 1024 characters or more */
MAINCONTROL_EXPORT void ATCodec_PreProc_Res_ParaLine(char *text);

/** Rewrites parenthesised groups in place: "(1,2),(3,4)" becomes "1,2;3,4". What is left of the room is zeroed.
 *  @param text  left alone if it is empty or has 1024 characters or more */
MAINCONTROL_EXPORT void ATCodec_ProcRes_ParaLineEx(char *text);

/** Undoes the markers of ATCodec_PreProc_Res_ParaLine() in one text that was read from its line: 0xFD alone becomes
 *  the empty text, 0xFE a blank, 0xFC a tab. */
MAINCONTROL_EXPORT void ATCodec_Restore_String_Para(char *text);

/** Formats a command text with vsprintf().
 *  @param output  as large as the result needs
 *  @return 0 */
MAINCONTROL_EXPORT int32_t ATCodec_TranslateToCmdPara(char *output, const char *format, ...)
    __attribute__((format(printf, 2, 3)));

#ifdef __cplusplus
}
#endif

#endif
