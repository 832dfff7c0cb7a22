#include <algorithm>
#include <cmath>

#include "krctl/output/render.h"

namespace krctl {
namespace {

constexpr int kGap = 2;
constexpr int kWidestBar = 30;
constexpr int kNarrowestBar = 6;
constexpr int kQualityWidth = 9; // "excellent"
constexpr int kNarrowestColumn = 6;

bool isShown(const Field &field)
{
    if (field.label.empty()) return false;
    return !field.onlyIfKnown || !std::holds_alternative<std::monostate>(field.value);
}

bool isMeasured(const Field &field)
{
    return field.quality && !field.quality->word.empty();
}

std::string shownText(const Field &field)
{
    return printable(textOf(field));
}

/** The widths that all fields of a report share. */
struct Columns {
    int label = 0;
    int measured = 0; ///< of values with a bar
};

Columns columnsOf(const Report &report)
{
    Columns columns;
    for (const Section &section : report.sections) {
        for (const Field &field : section.fields) {
            if (!isShown(field)) continue;
            columns.label = std::max(columns.label, displayWidth(field.label));
            if (isMeasured(field)) columns.measured = std::max(columns.measured, displayWidth(shownText(field)));
        }
    }
    return columns;
}

std::string meter(const Field &field, int used, const Columns &columns, const Terminal &terminal)
{
    const int room = terminal.columns - used - columns.measured - kQualityWidth - 2 * kGap;
    const int width = std::clamp(room, kNarrowestBar, kWidestBar);
    const Quality &quality = *field.quality;
    const std::string gap(kGap, ' ');
    return paddedLeft(shownText(field), columns.measured) + gap +
           terminal.paint(quality.tone, bar(quality.fraction, width, terminal)) + gap +
           terminal.paint(quality.tone, quality.word);
}

std::string fieldLines(const Field &field, const std::string &indent, const Columns &columns, const Terminal &terminal)
{
    const std::string start =
        indent + terminal.paint(Tone::Dim, padded(field.label, columns.label)) + std::string(kGap, ' ');
    const int used = static_cast<int>(indent.size()) + columns.label + kGap;
    if (isMeasured(field)) return start + meter(field, used, columns, terminal) + '\n';

    std::string lines;
    const int room = std::max(terminal.columns - used, kNarrowestColumn);
    for (const std::string &line : wrapped(shownText(field), room)) {
        lines += lines.empty() ? start : std::string(static_cast<size_t>(used), ' ');
        lines += terminal.paint(field.tone, line) + '\n';
    }
    return lines;
}

std::string fieldsText(const Section &section, const std::string &indent, const Columns &columns,
                       const Terminal &terminal)
{
    std::string text;
    for (const Field &field : section.fields)
        if (isShown(field)) text += fieldLines(field, indent, columns, terminal);
    return text;
}

std::vector<int> tableWidths(const Section &section, int room)
{
    std::vector<int> widths;
    for (const Field &field : section.rows.front())
        widths.push_back(field.label.empty() ? 0 : displayWidth(field.label));
    for (const Fields &row : section.rows)
        for (size_t i = 0; i < row.size(); ++i)
            if (!row[i].label.empty()) widths[i] = std::max(widths[i], displayWidth(shownText(row[i])));

    int total = 0;
    for (const int width : widths)
        total += width == 0 ? 0 : width + kGap;
    while (total - kGap > room) { // the widest column gives way
        int &widest = *std::max_element(widths.begin(), widths.end());
        if (widest <= kNarrowestColumn) break;
        --widest;
        --total;
    }
    return widths;
}

bool isNumber(const Field &field)
{
    return std::holds_alternative<int64_t>(field.value) || std::holds_alternative<double>(field.value);
}

std::string cell(const std::string &text, int width, bool isRight)
{
    const std::string fitting = shortened(text, width);
    return isRight ? paddedLeft(fitting, width) : padded(fitting, width);
}

std::string withoutTrailingBlanks(std::string line)
{
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string tableText(const Section &section, const std::string &indent, const Terminal &terminal)
{
    if (section.rows.empty()) return indent + section.whenEmpty + '\n';
    const std::vector<int> widths = tableWidths(section, terminal.columns - static_cast<int>(indent.size()));
    const Fields &first = section.rows.front();
    const std::string gap(kGap, ' ');

    std::string head;
    for (size_t i = 0; i < first.size(); ++i)
        if (widths[i] > 0) head += cell(first[i].label, widths[i], isNumber(first[i])) + gap;
    std::string text = indent + terminal.paint(Tone::Dim, withoutTrailingBlanks(head)) + '\n';

    for (const Fields &row : section.rows) {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i)
            if (widths[i] > 0)
                line += terminal.paint(row[i].tone, cell(shownText(row[i]), widths[i], isNumber(first[i]))) + gap;
        text += withoutTrailingBlanks(indent + line) + '\n';
    }
    return text;
}

std::string linesText(const Section &section, const std::string &indent)
{
    std::string text;
    for (const std::string &line : section.lines)
        text += indent + printable(line) + '\n';
    return text;
}

std::string sectionText(const Section &section, const Columns &columns, const Terminal &terminal)
{
    const std::string indent(section.title.empty() ? 0 : 2, ' ');
    std::string body;
    switch (section.kind) {
    case Section::Kind::Properties:
        body = fieldsText(section, indent, columns, terminal);
        break;
    case Section::Kind::Table:
        body = tableText(section, indent, terminal);
        break;
    case Section::Kind::Lines:
        body = linesText(section, indent);
        break;
    }
    if (body.empty() || section.title.empty()) return body;
    return terminal.paint(Tone::Title, section.title) + '\n' + body;
}

} // namespace

std::string bar(double fraction, int width, const Terminal &terminal)
{
    const int full = std::clamp(static_cast<int>(std::lround(fraction * width)), 0, width);
    std::string text;
    for (int i = 0; i < width; ++i) {
        if (terminal.hasBlocks)
            text += i < full ? "█" : "░";
        else
            text += i < full ? '#' : '-';
    }
    return text;
}

std::string asTable(const Report &report, const Terminal &terminal)
{
    std::string text;
    if (!report.sentence.empty())
        for (const std::string &line : wrapped(report.sentence, terminal.columns))
            text += printable(line) + '\n';
    const Columns columns = columnsOf(report);
    for (const Section &section : report.sections) {
        const std::string body = sectionText(section, columns, terminal);
        if (!body.empty() && !text.empty()) text += '\n';
        text += body;
    }
    if (!report.notes.empty() && !text.empty()) text += '\n';
    for (const std::string &note : report.notes)
        for (const std::string &line : wrapped(printable(note), terminal.columns))
            text += terminal.paint(Tone::Dim, line) + '\n';
    return text;
}

} // namespace krctl
