#include "host/masking/lines.h"

#include "host/at/command_line.h"
#include "host/at/reports.h"
#include "host/at/text.h"
#include "host/at/vocabulary.h"
#include "host/masking/commands.h"

namespace host::masking {
namespace {

bool beginsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

/** Of a command, but for what an error says. */
bool isResult(std::string_view line)
{
    constexpr std::string_view kResults[] = {
        "OK",           "BUSY",    "NO ANSWER",   "NO CARRIER",         "NO DIALTONE",
        "NO DIAL TONE", "CONNECT", "not support", "NOT SUPPORT",        "COMMAND NOT SUPPORT",
        "ABORTED",      ">",       "> ",          "TOO MANY PARAMETERS"};
    return std::find(std::begin(kResults), std::end(kResults), line) != std::end(kResults);
}

bool isError(std::string_view line)
{
    return line == "ERROR" || beginsWith(line, "ERROR:") || beginsWith(line, "+CME ERROR") ||
           beginsWith(line, "+CMS ERROR") || beginsWith(line, "CONNECT ");
}

bool isKnownName(std::string_view name)
{
    const auto words = at::allWords();
    const auto reports = at::allReports();
    const auto isSame = [&](const auto &row) { return at::isSign(row.name.front()) && at::isSameName(row.name, name); };
    return std::any_of(words.begin(), words.end(), isSame) || std::any_of(reports.begin(), reports.end(), isSame);
}

/** The rule of the name that a line begins with; nullptr if it has no name, or nothing to hide. */
const at::CommandRule *ruleOf(std::string_view line)
{
    const auto mention = at::findMention(line.substr(0, line.find(':') + 1), 0);
    const bool isName = mention && mention->begin == 0 && line.substr(mention->end, 1) == ":";
    return isName ? at::ruleFor(*mention) : nullptr;
}

bool hasTexts(const at::CommandRule *rule)
{
    return rule != nullptr && rule->hasTexts;
}

bool tellsIdentity(const at::CommandRule &rule)
{
    return rule.whenTold.kind == Kind::Identity;
}

/** Whether a command has one with a rule of some kind in it. */
template <typename Test>
bool hasRule(std::string_view command, Test test)
{
    for (auto mention = at::findMention(command, 0); mention; mention = at::findMention(command, mention->end))
        if (const at::CommandRule *const rule = at::ruleFor(*mention); rule != nullptr && test(*rule)) return true;
    return false;
}

/** Whether nothing but texts that anybody may read is asked for. */
bool tellsText(std::string_view command)
{
    const auto commands = at::commandsOf(command);
    return !commands.empty() && std::all_of(commands.begin(), commands.end(), [](const at::Command &part) {
        const at::Word *const word = at::wordNamed(part.name);
        return word != nullptr && word->tellsText && part.form != at::Form::Malformed;
    });
}

/** Whether a message follows the line, or a secret text goes on in the next one. */
bool opensText(std::string_view line)
{
    for (auto mention = at::findMention(line, 0); mention; mention = at::findMention(line, mention->end)) {
        const at::CommandRule *const rule = at::ruleFor(*mention);
        const std::string_view behind = line.substr(mention->end);
        if (rule == nullptr || behind.substr(0, 1) != ":") continue;
        const bool isOpen = std::count(behind.begin(), behind.end(), '"') % 2 != 0;
        if (rule->hasTexts || (rule->whenTold.kind == Kind::Secret && isOpen)) return true;
    }
    return false;
}

/** Calls with each line that is not empty. */
template <typename Use>
void forEachLine(const MaskedText &masked, Use use)
{
    for (size_t at = at::skip(masked.text(), kLineEnds, 0); at < masked.text().size();) {
        const Stretch line{at, masked.lineEnd(at)};
        use(line);
        at = at::skip(masked.text(), kLineEnds, line.end);
    }
}

class Lines {
  public:
    Lines(MaskedText &masked, std::string_view command, Line kind)
        : masked_(masked), kind_(kind),
          asksForMessages_(hasRule(command, [](const at::CommandRule &rule) { return rule.hasTexts; })),
          bareKind_(hasRule(command, tellsIdentity) ? Kind::Identity : Kind::Secret),
          isText_(kind == Line::Reply && !asksForMessages_ && tellsText(command))
    {
    }

    void hideIn(Stretch place)
    {
        const std::string_view line = masked_.at(place);
        if (isResult(line)) return;
        if (isError(line)) {
            if (looksPrivate(line)) masked_.hideDigits(Kind::Secret, place);
        } else if (asksForMessages_) {
            if (!hasTexts(ruleOf(line))) masked_.hide(Kind::Secret, place);
        } else if (const auto named = at::namedLine(line)) {
            const size_t colon = place.begin + named->name.size();
            if (isKnownName(named->name)) return;
            hideStrangeName(masked_, {place.begin, colon});
            hideUnknownArguments(masked_, Kind::Secret, {colon + 1, place.end});
        } else if (kind_ == Line::Reply && at::isCommandLine(line)) {
            hideCommandLine(masked_, place, Words::Hidden);
        } else if (kind_ == Line::Report && !at::isReportWord(line)) {
            masked_.hide(Kind::Secret, place);
        } else if (!isText_ && !at::isReportWord(line)) {
            hideUnknownArguments(masked_, bareKind_, place);
        }
    }

  private:
    MaskedText &masked_;
    Line kind_;
    bool asksForMessages_;
    Kind bareKind_; ///< of lines without a name
    bool isText_;
};

} // namespace

bool isFinalResult(std::string_view line)
{
    return isResult(line) || isError(line);
}

void hideLines(MaskedText &masked, std::string_view command, Line line)
{
    Lines lines(masked, command, line);
    forEachLine(masked, [&](Stretch place) { lines.hideIn(place); });
}

void hideTextsOfMessages(MaskedText &masked)
{
    bool isBehindName = false;
    forEachLine(masked, [&](Stretch place) {
        const std::string_view line = masked.at(place);
        const bool isLast = at::skip(masked.text(), kLineEnds, place.end) == masked.text().size();
        const bool isEnd = isLast && isFinalResult(line);
        if (isBehindName && !isEnd && !hasTexts(ruleOf(line))) masked.hide(Kind::Secret, place);
        isBehindName = isBehindName || opensText(line);
    });
}

} // namespace host::masking
