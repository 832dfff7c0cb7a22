#include "host/at/vocabulary.h"

#include <algorithm>
#include <iterator>

#include "host/at/text.h"

namespace host::at {
namespace {

/** A command that only asks, with arguments or without. */
constexpr Word query(std::string_view name, Arguments harmless = {})
{
    return {name, harmless, Right::Read, Right::Read, Right::Read, false};
}

/** A command that asks, and is answered by a text. */
constexpr Word text(std::string_view name)
{
    return {name, {}, Right::Read, Right::Read, Right::Read, true};
}

/** A command that asks and sets, or does something. */
constexpr Word state(std::string_view name, Rights change, Arguments harmless = {})
{
    return {name, harmless, Right::Read, change, change, false};
}

constexpr Word network(std::string_view name, Arguments harmless = {})
{
    return state(name, Right::Network, harmless);
}

constexpr Word settings(std::string_view name, Arguments harmless = {})
{
    return state(name, Right::Settings, harmless);
}

constexpr Word sim(std::string_view name, Arguments harmless = {})
{
    return state(name, Right::Sim, harmless);
}

constexpr Word device(std::string_view name, Arguments harmless = {})
{
    return state(name, Right::Device, harmless);
}

constexpr Word raw(std::string_view name, Arguments harmless = {})
{
    return state(name, Right::Raw, harmless);
}

/** A command that takes a code, and may lock or unlock the device. */
constexpr Word lock(std::string_view name, Arguments harmless = {})
{
    return state(name, Right::Sim | Right::Device, harmless);
}

/** A command that takes the same right in each form. */
constexpr Word guarded(std::string_view name, Right right, Arguments harmless = {})
{
    return {name, harmless, right, right, right, false};
}

constexpr Arguments kAll = Arguments::every();

template <typename... Numbers>
constexpr Arguments only(Numbers... numbers)
{
    return Arguments::of(numbers...);
}

// clang-format off
constexpr Word kWords[] = {
    // Basic commands, which their name alone sets. Whoever hides results, ends lines otherwise, changes how the port says
    // that a call ended, or goes back to what was stored once, does so to all clients.
    guarded("E", Right::Settings), guarded("L", Right::Settings), guarded("M", Right::Settings),
    guarded("P", Right::Settings), guarded("T", Right::Settings), guarded("W", Right::Settings),
    guarded("H", Right::Network), text("I"), text("&V"),
    guarded("B", Right::Device), guarded("N", Right::Device), guarded("Q", Right::Device), guarded("S", Right::Device),
    guarded("V", Right::Device), guarded("X", Right::Device), guarded("Z", Right::Device), guarded("&C", Right::Device),
    guarded("&D", Right::Device), guarded("&F", Right::Device), guarded("&K", Right::Device),
    guarded("&Q", Right::Device), guarded("&R", Right::Device), guarded("&S", Right::Device),
    guarded("&W", Right::Device), guarded("&Y", Right::Device), guarded("&Z", Right::Device),
    guarded("A", Right::Raw), guarded("D", Right::Raw), guarded("O", Right::Raw),

    // The device.
    text("+CGMI"), text("+CGMM"), text("+CGMR"), query("+CGSN"), text("+GMI"), text("+GMM"), text("+GMR"),
    query("+GSN"), text("+GOI"), text("+GCAP"), text("+CLAC"), text("+HVER"), text("^HVER"), text("^HWVER"),
    text("^VERSION"), text("+ZPCB"), query("+MEID"), query("^MEID"), text("^ZPCUIVERSION"), query("^VOLT"),
    device("+ZMSN"), device("+EGMR"), device("+SPIMEI"), device("+GCI"),

    // The subscriber and the card.
    query("+CIMI"), query("+CNUM"), query("+CCID"), query("#CCID"), query("+ICCID"), query("^ICCID"), query("+QCCID"),
    query("+ZICCID"), query("+ZGETICCID"), query("^SIMST"), query("+CARDMODE"), query("^CARDMODE"), query("+ZUSIM"),
    query("+CPINR", only(1)), query("+EPINC"), query("+XX"), query("+ZRAP"), query("+ZPINPUK"), query("+SPSPINFO"),

    // PINs, passwords and dialled codes, and the card's own language, in which a PIN is spoken as well.
    sim("+CPIN"), sim("^CPIN"), sim("#CPIN"), sim("+CPIN2"), sim("+EPIN2"), sim("+CPUK"), sim("+ZVPIN"), sim("%PINNUM"),
    sim("+ZPSWD"), sim("+CUSD"), sim("+CSIM"), sim("+CGLA"), sim("+CCHO"),
    sim("+CCHC"), sim("+CRLA"), sim("+CRSM", only(2)), sim("+CUSATW"), sim("+CUSATT"), sim("+STKENV"),
    sim("+STKTR"), sim("+CEAP"), sim("+CERP"), sim("+CACM"), sim("+CAMM"), sim("+CPUC"), sim("+CCFC"),
    sim("+CCWA"), sim("+CTFR"),

    // Locks.
    lock("+CLCK", only(1)), lock("+CPWD", only(1)), lock("+ZNCK"), lock("+ZSEC"), lock("+ZLOCK"), lock("+ESMLCK"),
    lock("+CARDLOCK"), lock("^CARDLOCK"), lock("+SIMLOCK"), lock("^SIMLOCK"), lock("+XLOCK"), lock("%ILOCKNUM"),
    query("+SPSIMLOCKINFO"), query("+ZLKLIST"),

    // Messages and the phone book.
    guarded("+CMGL", Right::Sim, only(1)), guarded("+CMGR", Right::Sim), guarded("+CMGD", Right::Sim),
    guarded("+CMSS", Right::Sim), guarded("+CSCA", Right::Sim), guarded("+CSVM", Right::Sim),
    guarded("+CPBR", Right::Sim), guarded("+CPBF", Right::Sim), guarded("+CPBW", Right::Sim),
    guarded("^CPBR", Right::Sim), guarded("^CPBW", Right::Sim), guarded("^SCPBR", Right::Sim),
    guarded("^SCPBW", Right::Sim), guarded("+ZCPBR", Right::Sim), guarded("+ZCPBW", Right::Sim),
    guarded("+ZCPBQ", Right::Sim), guarded("^HCMGL", Right::Sim), guarded("^HCMGR", Right::Sim),
    guarded("+CCMGL", Right::Sim), guarded("+CCMGR", Right::Sim), guarded("+CCMGD", Right::Sim),

    // Registration, signal, cells, calls.
    query("+CSQ"), query("+CESQ"), query("+CPAS"), query("+CBC"), query("+CEER"), query("+CLCC"), query("+COPN"),
    query("+CGPADDR"), query("+CGCONTRDP"), query("+CGSCONTRDP"), query("+CGTFTRDP"), query("+CGEQNEG"),
    query("+CGEQOSRDP"), query("+CEDRXRDP"), query("+CRCES"), query("+CNMPSD"), query("+CGAPNRC"), query("+CPNSTAT"),
    query("+CABTRDP"), query("+C5GNSSAIRDP"), query("^SYSINFO"), query("^SYSINFOEX"), query("^HCSQ"), query("^HDRCSQ"),
    query("^HRSSILVL"), query("^MODE"), query("+ZRSSI"), query("+ZCELLINFO"), query("+ZPAS"), query("+ZDON"),
    query("*ZAIRINFO"), query("%NWSTATE"), query("%IHPLMN"), query("+ZDFLOW"), query("+ZBANDI"), query("+ENBR"),
    query("+EUSIM"), query("+BGLTEPLMN"), query("+CQIUPD"),

    // Radio, selection, attachment, profiles, calls that are there. Who may set a profile's password may read it.
    device("+CFUN"), network("+COPS", only(3)), network("+CPOL", only(3)), network("+CPLS"), network("+WS46"),
    network("+CGATT"), network("*CGATT"), network("+CGACT"), network("+CGCMOD"), network("+CGCLASS", only(1)),
    network("+CGDCONT", only(2, 3, 4)), network("+CGDSCONT", only(2, 3, 4)), network("+CGTFT", kAll), network("+CGDEL"),
    network("+CGQREQ", kAll), network("+CGQMIN", kAll), network("+CGEQREQ", kAll), network("+CGEQMIN", kAll),
    network("+CGEQOS", kAll), network("+CGSMS"), network("+CEMODE"), network("+CEUS"), network("+CVDP"),
    network("+CEVDP"), network("+CASIMS"), network("+CIREG"), network("+CIREP"), network("+CNEM"),
    network("+CEDRXS", only(3)), network("+CPSMS", only(2, 3, 4, 5)), network("+CCIOTOPT"), network("+CIPCA"), network("+CMMIVT"),
    network("+CEPPI"), network("+CMICO"), network("+CABTSR"), network("+CPNET"), network("+C5GNSSAI", kAll),
    network("+C5GPNSSAI", kAll), network("+C5GUSMS"), network("+CHUP"), network("+CHLD"), network("+CVHU"),
    network("+CMOD"), network("+CBST"), network("+CRLP"), network("+CHSN"), network("+CHST"), network("+CHSR"),
    network("+CLIR"), network("+CAEMLPP"), network("+CPPS"), network("+CFCS"), network("+CAAP"), network("+CCUG"),
    network("+VTS"), network("+VTD"), network("+CHV"), network("^SYSCONFIG"), network("^SYSCFG", only(3)),
    network("^SYSCFGEX", only(1, 2, 5)), network("^PREFMODE"), network("+ZSNT"), network("+ZDSNT"),
    network("+ERAT"), network("+ZPREFBAND", only(1)), network("+BAND", kAll), network("+ZEACT"), network("+ZGAAT"),
    network("+ZGACT"), network("+ZLTELC", kAll), network("+EPSB", kAll), network("+EPBSE", kAll), network("%IPDPACT"),
    network("*CGDFLT", only(2, 3)), guarded("+CGAUTH", Right::Network),
    guarded("+XGAUTH", Right::Network), guarded("$QCPDPP", Right::Network),
    guarded("^AUTHDATA", Right::Network), guarded("+QICSGP", Right::Network),
    guarded("+EGPAU", Right::Network), guarded("%IPDPCFG", Right::Network),

    // What is reported, and how values are told.
    settings("+CMEE"), settings("+CREG"), settings("+CGREG"), settings("+CEREG"), settings("+C5GREG"),
    settings("+CGEREP"), settings("+CSCON"), settings("+CNEMIU"), settings("+CMER"), settings("+CIND"),
    settings("+CLIP"), settings("+COLP"), settings("+COLR"), settings("+CDIP"), settings("+CNAP"), settings("+CSSN"),
    settings("+CRC"), settings("+CR"), settings("+CAOC"), settings("+CCWE"), settings("+CTZR"), settings("+CTZU"),
    settings("+CCLK", only(1)), settings("+CNMI"), settings("+CCNMI"), settings("+CSMS"), settings("+CMGF"),
    settings("+CPMS", only(1, 2, 3)), settings("+CCPMS", only(1, 2, 3)), settings("+CPBS", only(1)), settings("+CSDH"),
    settings("+CSMP"), settings("+CSCB", only(2, 3)), settings("+CMMS"), settings("+CSNS"), settings("+CSTA"),
    settings("+CGPIAF"), settings("+CLVL"), settings("+CMUT"), settings("+CMVL"), settings("+CRSL"), settings("+CVIB"),
    settings("+CALM"), settings("+CLAN", only(1)), settings("+CLAE"), settings("+CSDF"), settings("+CSTF"),
    settings("+CSIL"), settings("+CSGT"), settings("+ILRR"), settings("+DR"), settings("+ER"), settings("+MR"),
    settings("^CURC"), settings("^CVOICE"), settings("+ZSET", only(1)), settings("+ZOPRT"), settings("+ZDET"),
    settings("+ZPDTYPE"), settings("$ARMEE"),

    // Reset, power, factory settings, firmware and properties of the device, and the form of the line and of texts, which
    // is the same for all clients.
    device("+CPWROFF"), device("^RESET"), device("^FLASH"), device("+FOTACTR"), device("*PROP", only(1)), device("+CMAR"),
    device("+CSCC"), device("+CSAS"), device("+CRES"), device("+CPROT"), device("+CKPD"), device("+CTSA"),
    device("+CMEC"), device("+CSCS", only(1)), device("+IPR", only(1)), device("+ICF"), device("+IFC"), device("+CMUX"),
    device("+DS"), device("+MS"), device("+EB"), device("+ES"), device("+ESR"), device("+EFCS"), device("+ETBM"),
    device("+FCLASS"),

    // What takes the line away, or asks for a text.
    raw("+CGDATA", only(1)), raw("+CMGS"), raw("+CMGW"), raw("+CMGC"), raw("+CNMA"), raw("+CGANS"), raw("+CPOS"),
    raw("^HCMGS"), raw("^HCMGW"), raw("+CCMGS"), raw("+CCMGW"),
};

/** What other arguments do. Asking is a right of its own only where nothing but asking fits the pattern. */
struct Variant {
    std::string_view name;
    std::string_view pattern; ///< fields: each one of some, '*' for any, and ".." for any number of them to the end
    Rights rights;
};

constexpr Variant kVariants[] = {
    {"V", "1", Right::Settings},
    {"Q", "0", Right::Settings},
    {"+CFUN", "0|1|4", Right::Network},
    {"+CFUN", "0|1|4,0", Right::Network},
    {"+COPS", "5", Right::Read},
    {"+COPS", "3,*", Right::Settings},
    {"+CCFC", "*,2", Right::Read},
    {"+CCWA", "*,2", Right::Read},
    {"+CCWA", "0|1", Right::Settings},
    {"+CUSD", "0|1|2", Right::Settings},
    {"+CNMA", "0", Right::Settings},
    {"+CRSM", "176|178|192|242,..", Right::Read}, // reads a file, or its state
    {"+CLCK", "*,2", Right::Read},
    {"+CLCK", "SC|FD|AO|OI|OX|AI|IR|NT|NM|NS|NA|AB|AG|AC,..", Right::Sim},
    {"+CPWD", "SC|P2|FD|AO|OI|OX|AI|IR|NT|NM|NS|NA|AB|AG|AC,..", Right::Sim},
    {"*PROP", "net.static_ip,1,*", Right::Settings},
};
// clang-format on

std::string_view withoutQuotes(std::string_view field)
{
    const bool isQuoted = field.size() > 1 && field.front() == '"' && field.back() == '"';
    return isQuoted ? field.substr(1, field.size() - 2) : field;
}

bool isOneOf(std::string_view field, std::string_view alternatives)
{
    while (true) {
        const size_t end = std::min(alternatives.find('|'), alternatives.size());
        if (isSameWithoutCase(field, alternatives.substr(0, end))) return true;
        if (end == alternatives.size()) return false;
        alternatives.remove_prefix(end + 1);
    }
}

bool matches(std::string_view parameters, std::string_view pattern)
{
    const auto given = fields(parameters);
    const auto wanted = fields(pattern);
    for (size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i] == "..") return true;
        if (i == given.size()) return false;
        if (wanted[i] != "*" && !isOneOf(withoutQuotes(given[i]), wanted[i])) return false;
    }
    return given.size() == wanted.size();
}

/** Of a command that is set. */
Rights rightsWhenSet(const Word &word, std::string_view parameters)
{
    const auto *const variant = std::find_if(std::begin(kVariants), std::end(kVariants), [&](const Variant &row) {
        return row.name == word.name && matches(parameters, row.pattern);
    });
    return variant != std::end(kVariants) ? variant->rights : word.whenSet;
}

/** "0?" of S0? */
bool asksForRegister(std::string_view parameters)
{
    const size_t mark = skip(parameters, "0123456789", 0);
    return mark > 0 && parameters.substr(mark) == "?";
}

/** A dialled code goes to the card or the network and comes back; a number takes the line, as does a code that asks for
 *  packet data. */
Rights rightsOfDialling(std::string_view number)
{
    constexpr std::string_view kCodeCharacters = "0123456789*#+";
    constexpr std::string_view kCodeMarks = "*#";
    if (!number.empty() && std::string_view("TtPp").find(number.front()) != std::string_view::npos)
        number.remove_prefix(1);
    if (number.find_first_of(kCodeMarks) == std::string_view::npos) return Right::Raw;
    const bool isCode = number.find_first_of(kCodeMarks) == 0 && number.back() == '#' &&
                        number.find_first_not_of(kCodeCharacters) == std::string_view::npos;
    const bool asksForData = number.substr(0, 3) == "*99" || number.substr(0, 3) == "*98";
    return isCode && !asksForData ? Rights(Right::Sim) : Right::Sim | Right::Raw;
}

} // namespace

std::span<const Word> allWords()
{
    return kWords;
}

const Word *wordNamed(std::string_view name)
{
    const auto *const found =
        std::find_if(std::begin(kWords), std::end(kWords), [&](const Word &word) { return word.name == name; });
    return found != std::end(kWords) ? found : nullptr;
}

Rights rightsFor(const Command &command)
{
    const Word *const word = wordNamed(command.name);
    if (word == nullptr || command.form == Form::Malformed) return Right::Raw;
    if (command.form == Form::Execute) return word->whenRun;
    if (command.form != Form::Set) return word->whenAsked;
    if (command.name == "D") return rightsOfDialling(command.parameters);
    if (command.name == "S" && asksForRegister(command.parameters)) return Right::Read;
    return rightsWhenSet(*word, command.parameters);
}

} // namespace host::at
