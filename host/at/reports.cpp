#include "host/at/reports.h"

#include <algorithm>
#include <array>

namespace host::at {
namespace {

constexpr Report read(std::string_view name, ReportKind kind = ReportKind::Values)
{
    return {name, kind, true};
}

constexpr Report readWithBareColon(std::string_view name)
{
    return {name, ReportKind::Values, true, true};
}

constexpr Report other(std::string_view name, ReportKind kind = ReportKind::Values)
{
    return {name, kind};
}

using enum ReportKind;

constexpr std::array kReports{
    read("+TSTUD", Text),
    read("+TSTC", Text),
    read("+Zunsupport"),
    read("+ZMTime"),
    read("+ZSMSR"),
    read("+ZDIST", Text),
    read("+ZSTI", Text),
    read("+ZPSTM", Text),
    read("+STKPCI", Text),
    read("+ZGINP", Text),
    read("+ZGINK", Text),
    read("+ZCLAS", Text),
    read("+ZVMAIL"),
    read("+CMTI"),
    read("+CDSI"),
    read("+CDS", TextLine),
    read("+CBM", TextLine),
    read("+CUSD", Text),
    read("+CEREG", Registration),
    read("+CGREG", Registration),
    read("+ZDONR"),
    read("+ZPASR"),
    read("+ZOPERTER"),
    read("$ARME"),
    readWithBareColon("+ZMCON"),
    readWithBareColon("+ZMCONV6"),
    readWithBareColon("+CON_STATUS"),
    read("+ZCONSTAT"),
    read("+ZGIPDNS"),
    read("+ZPBIC"),
    read("+PSBEARER"),
    read("+EUSIM"),
    read("+ECSQ"),
    read("+ESMLA"),
    read("+ECFU"),
    read("+ESPEECH"),
    read("+ESCRI"),
    read("+ESIMS"),
    read("+ETESTSIM"),
    read("+ECIPH"),
    read("+ECELLINFO"),
    read("+ENWINFO"),
    read("+CGEV"),
    read("+ZEND", Word),

    other("+CREG", Registration),
    other("+C5GREG", Registration),
    other("+CMT", TextLine),
    other("+CBMI"),
    other("+CLIP"),
    other("+CNAP"),
    other("+CDIP"),
    other("+CCWA"),
    other("+CCWV"),
    other("+CRING"),
    other("+CSSI"),
    other("+CSSU"),
    other("+CIEV"),
    other("+CTZV"),
    other("+CTZE"),
    other("+CTZEU"),
    other("+CSCON"),
    other("+CIREPH"),
    other("+CIREPI"),
    other("+CNEMIU"),
    other("+CPIN"),
    other("+UNREADSMS"),
    other("+SIND"),
    other("+ECIND"),
    other("+SPECC"),
    other("*SPREADY"),
    other("^ANLEVEL"),
    other("^BOOT"),
    other("^CEND"),
    other("^CERSSI"),
    other("^CONF"),
    other("^CONN"),
    other("^CRSSI"),
    other("^DCONN"),
    other("^DEND"),
    other("^DSFLOWRPT"),
    other("^EARST"),
    other("^HCSQ"),
    other("^IMSSRVSTATUS"),
    other("^LOCCHD"),
    other("^LTERSRP"),
    other("^LWURC"),
    other("^MODE"),
    other("^NDISSTAT"),
    other("^NDISEND"),
    other("^NWTIME"),
    other("^ORIG"),
    other("^REJINFO"),
    other("^RSSI"),
    other("^RSSILVL"),
    other("^SIMST"),
    other("^SMMEMFULL"),
    other("^SRVST"),
    other("^STIN", Text),
    other("^SYSSTART"),
    other("^THERM"),
    other("^TIME"),
    other("RING", Word),
    other("+RING", Word),
    other("+STOPRING", Word),
    other("+RINGBACK", Word),
    other("+ANSWER", Word),
    other("+HANGUP", Word),
    other("NO CARRIER", Word),
    other("+VOICE NO CARRIER", Word),
    other("+VOICE CONNECT", Word),
    other("RDY", Word),
    other("Call Ready", Word),
    other("SMS Ready", Word),
    other("SMS DONE", Word),
    other("PB DONE", Word),
};

} // namespace

std::span<const Report> allReports()
{
    return kReports;
}

const Report *reportNamed(std::string_view name)
{
    const auto *const found = std::find_if(kReports.begin(), kReports.end(), [&](const Report &report) {
        return report.kind != Word && report.name == name;
    });
    return found == kReports.end() ? nullptr : found;
}

bool isReportWord(std::string_view line)
{
    return std::any_of(kReports.begin(), kReports.end(),
                       [&](const Report &report) { return report.kind == Word && report.name == line; });
}

} // namespace host::at
