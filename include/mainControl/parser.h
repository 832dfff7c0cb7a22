/** Response parsing: from the text of a reply to a parsed record, and the two tables it works with.
 *
 *  Rules for callers:
 *  1. 0 is success. A function that fails leaves its record untouched unless its comment says otherwise.
 *  2. Records are zeroed by the caller. Texts are copied into them without a terminator, and what stood behind stays.
 *  3. A text handed over as `char *` is edited in place and never grows.
 *  4. Calls are serialised by the caller: the parser writes globals.
 *  5. Both tables may be changed at run time; the next call obeys them as they then stand. No more rows are read than
 *     the table has room for, whatever its size word says.
 *  6. No text makes the parser write outside a record: what does not fit is left out, the terminator is kept.
 *  7. No function needs more than 8 KiB of stack.
 *
 *  "Outside quotes" means behind an even number of double quotes. Where the text that is looked for begins with a quote
 *  itself, the first character of an occurrence that is passed over does not count. */
#ifndef MAINCONTROL_PARSER_H
#define MAINCONTROL_PARSER_H

#include <stdint.h>

#include <mainControl/platform.h>
#include <mainControl/records.h>
#include <mainControl/result_codes.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The texts that end a reply or begin a report, in the order of precedence at one position. */
extern MAINCONTROL_EXPORT AtEndFlagRow KoraWcdma_AtEndFlgTable[50];
/** Rows of KoraWcdma_AtEndFlgTable: 50. */
extern MAINCONTROL_EXPORT int32_t KoraWcdma_AtEndFlgTableSize;

/** AT command names by identifier. For hosts only; the library does not consult it. */
extern MAINCONTROL_EXPORT AtCmdRow KoraWcdma_AtCmdTable[276];
/** Rows of KoraWcdma_AtCmdTable: 276. */
extern MAINCONTROL_EXPORT int32_t KoraWcdma_AtCmdTableSize;

/** Characters that the current parse cuts out of the text, counted from the match position. */
extern MAINCONTROL_EXPORT int32_t g_iProcDataLen;
/** 1 at load and set to 1 by every parse that finds a flag; the no-parameter step reads an OK body only while it is not 0. */
extern MAINCONTROL_EXPORT int32_t g_bWaitingRes;
/** Neither read nor written by the library. */
extern MAINCONTROL_EXPORT int32_t g_SingleReport;

/** Finds the first command row with an identifier.
 *  @param rowIndex    out, written only on success: index of the row
 *  @param identifier  only its low 16 bits count
 *  @return 0; 19 if there is no such row or rowIndex is NULL */
MAINCONTROL_EXPORT uint32_t _Find_Cmd_By_ID(int32_t *rowIndex, uint32_t identifier);

/** Finds the first command row with a name.
 *  @param rowIndex  out, written only on success: index of the row
 *  @param name      the whole name, such as "+CREG"; case counts
 *  @return 0; 19 if there is no such row or an argument is NULL */
MAINCONTROL_EXPORT uint32_t _Find_Cmd_By_Name(int32_t *rowIndex, const char *name);

/** Parses one reply: finds the final result or report that comes first, takes its parameters, and cuts what it
 *  consumed out of the text, so that a further call takes the next one.
 *  @param text    the reply; what stood before its first line break is dropped. Without any line break outside quotes
 *                 only its last character stays
 *  @param parsed  CmdId, Result, and the parameters: the assembled lines behind OK, the rest of the line behind a
 *                 prefix (then ParasLen too), nothing behind the others
 *  @return 0; 19 no line break or no final result (parsed is untouched); 20 text or parsed is NULL */
MAINCONTROL_EXPORT uint32_t Bk_Parse_At_Res(char *text, AtRes *parsed);

/** Parses the reply of AT+COPS=5, which is kept whole.
 *  @param text    not edited
 *  @param parsed  CmdId 1, Result OK and in Paras the text, of which at most 102399 characters
 *  @return 0; 19 no "\r\nOK\r\n" outside quotes (parsed is untouched); 20 text or parsed is NULL */
MAINCONTROL_EXPORT uint32_t Bk_Parse_At_COPS5_Res(char *text, AtRes *parsed);

/** Finds a text outside quotes.
 *  @return the first occurrence, in text; NULL if there is none or an argument is NULL. An empty needle is found at
 *          the start */
MAINCONTROL_EXPORT char *_Find_Sub_Str(const char *text, const char *needle);

/** Drops what stands before the first line break and finds the end flag that comes first.
 *  @param text         edited as in Bk_Parse_At_Res()
 *  @param endPosition  out: where the flag stands; the end of the text if there is none. Untouched without a line break
 *  @param rowIndex     out: its row; -1 if there is none. Untouched without a line break
 *  @return 0; 19 no line break, no flag, or a NULL argument */
MAINCONTROL_EXPORT uint32_t _Parse_At_PreProcess(char *text, char **endPosition, int32_t *rowIndex);

/** Runs the step for a row with or without parameters.
 *  @param hasParas  the row's column: 0 or 1
 *  @return what the step returns; 19 for any other column */
MAINCONTROL_EXPORT uint32_t _Parse_At_End_Flag(char *text, AtRes *parsed, char **endPosition, AtCmdLine *work,
                                               int32_t hasParas);

/** Takes the body in front of an OK: counts it into g_iProcDataLen, assembles its lines in work->Line and, from there,
 *  in parsed->Paras (all of which is cleared first), and moves the end position to the start of the text.
 *  @param parsed       its Result decides: any other than OK changes nothing
 *  @param endPosition  in/out, where the flag stands
 *  @param work         zeroed by the caller
 *  @return 0; 19 another result, no body, g_bWaitingRes is 0, or a NULL argument */
MAINCONTROL_EXPORT uint32_t _Parse_At_End_Flag_NoPara(char *text, AtRes *parsed, char **endPosition, AtCmdLine *work);

/** Takes the parameters that begin g_iProcDataLen characters behind the end position: up to the first line break
 *  outside quotes, or up to the end of a text that contains "CBM:", "CMT:", "CDS:" or "ZCLAS:".
 *  @param parsed       Paras and ParasLen are written; a CmdId of 89 tries ProcessClipCmd() first
 *  @param endPosition  in, where the flag stands
 *  @return 0; 19 the line is not closed (nothing is changed), or a NULL argument */
MAINCONTROL_EXPORT uint32_t _Parse_At_End_Flag_HavePara(char *text, AtRes *parsed, char **endPosition, AtCmdLine *work);

/** Assembles the body that stands in parsed->Paras, without its first two characters, in work.
 *  @return 0; 20 an argument is NULL, which is logged */
MAINCONTROL_EXPORT uint32_t _Parse_At_Ok_Res(AtRes *parsed, AtCmdLine *work);

/** Assembles the closed lines of a body in work. A named line ("NAME: value") adds its value, behind a ";" if it is
 *  not the first of its name; a bare line behind a named one adds itself in quotes behind a ","; a bare line before
 *  any named one adds itself, but is dropped if ": " occurs anywhere in the rest of the body. Of each line at most
 *  1024 characters are added.
 *  @param lineBuffer  1024 bytes: receives the last line taken up, zero-padded; 1024 characters fill it
 *  @return 0 all lines taken; 19 stopped at a line with another name, or a NULL argument */
MAINCONTROL_EXPORT uint32_t _First_Parse_At_OK_Res(char *body, char *lineBuffer, AtCmdLine *work);

/** Adds a named line to work.
 *  @param colonPosition  where its ": " stands, in line
 *  @return 1 taken; 0 its name differs from the stored one, or a NULL argument */
MAINCONTROL_EXPORT int32_t ParseCmdLineWithCmdName(AtCmdLine *work, char *line, char *colonPosition);

/** Adds a bare line to work.
 *  @param restOfBody  the body from this line on */
MAINCONTROL_EXPORT void ParseCmdLineWithoutCmdName(AtCmdLine *work, char *line, char *restOfBody);

/** Turns a +CLIP report that is directly followed by "\r\n\r\nOK\r\n" and the end of the text, with exactly one comma
 *  outside quotes, into an OK: its parameters go to work->Line, and they and the OK are counted into g_iProcDataLen.
 *  @return 1 done; 0 not such a report (nothing is changed), or a NULL argument */
MAINCONTROL_EXPORT int32_t ProcessClipCmd(char *paraStart, char *paraEnd, int32_t ignored, AtRes *parsed,
                                          AtCmdLine *work);

/** Counts parameters into g_iProcDataLen (with their line break, unless the text is one whose parameters run to its
 *  end) and copies them into parsed->Paras; ParasLen is their length.
 *  @return 0, also for a NULL argument, which changes nothing */
MAINCONTROL_EXPORT uint32_t _Parse_At_ParaOfTheEndColon(char *text, char *paraStart, char *paraEnd, AtRes *parsed);

/** Parses one report and calls the first handler that a row with its identifier holds. The record that the handler
 *  gets is complete, belongs to the library and is valid during the call only; a handler does not call this function.
 *  @param text  edited as in Bk_Parse_At_Res()
 *  @return 0, whether or not there was a handler; 1 the text could not be parsed */
MAINCONTROL_EXPORT uint32_t unsolicitedATProcess(char *text);

#ifdef __cplusplus
}
#endif

#endif
