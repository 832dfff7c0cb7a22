#ifndef LIB_PUBLIC_ATPREPROCESS_REPORT_IDS_H
#define LIB_PUBLIC_ATPREPROCESS_REPORT_IDS_H

#include <cstdint>

namespace mainControl {

/** What a parse tells of a final result or report: the identifiers of both tables and of the handlers. Commands have
 *  further ones, which nothing but their table knows. */
enum ReportId : uint16_t {
    kOkResult = 1,
    kErrorResult = 2,
    kCmsErrorResult = 3,
    kCmeErrorResult = 4,
    kPromptResult = 5,
    kNotSupportResult = 6,

    kZvmailReport = 24,
    kCmtiReport = 25,
    kCdsiReport = 26,
    kCdsReport = 27,
    kCbmReport = 29,
    kArmeReport = 56,
    kZmconReport = 57,
    kZmconV6Report = 58,
    kConStatusReport = 60,
    kCregReport = 71, ///< has no row of its own: it arrives where a host adds one
    kClipReport = 89, ///< as kCregReport; an OK reply in truth where a final result directly follows
    kCusdReport = 105,

    kZclasReport = 4097,
    kZstiReport = 4105,
    kZdistReport = 4107,
    kZginkReport = 4108,
    kZginpReport = 4109,
    kZpstmReport = 4110,
    kStkpciReport = kZpstmReport, ///< which handlers take for the same
    kZendReport = 4111,
    kZsmsrReport = 4112,
    kZmTimeReport = 4113,
    kZunsupportReport = 4114,
    kTstcReport = 4115,
    kTstudReport = 4116,
    kZpasrReport = 4157,
    kZdonrReport = 4158,
    kZoperterReport = 4169,
    kPsbearerReport = 4177,
    kEusimReport = 4181,
    kEcsqReport = 4182,
    kEsmlaReport = 4183,
    kEcfuReport = 4184,
    kEspeechReport = 4185,
    kEscriReport = 4186,
    kEsimsReport = 4187,
    kEtestsimReport = 4188,
    kEciphReport = 4189,
    kEcellinfoReport = 4190,
    kEnwinfoReport = 4191,
    kCgevReport = 4193,

    kZconstatReport = 12298,
    kZgipdnsReport = 12299,
    kCeregReport = 12304,
    kCgregReport = 12305,
    kZpbicReport = 12307,
};

} // namespace mainControl

#endif
