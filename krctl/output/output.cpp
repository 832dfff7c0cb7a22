#include "krctl/output/output.h"

#include <cstdio>

#include <unistd.h>

#include "krctl/output/render.h"

namespace krctl {

Output::Output(Form form, bool wantsColour, bool hasBlocks)
    : form_(form), data_(Terminal::of(STDOUT_FILENO, wantsColour, hasBlocks)),
      errors_(Terminal::of(STDERR_FILENO, wantsColour, hasBlocks))
{
}

void Output::show(const Report &report) const
{
    if (report.isEmpty()) return;
    std::string text;
    switch (form_) {
    case Form::Table:
        text = asTable(report, data_);
        break;
    case Form::Json:
        text = asJson(report, command_, false);
        break;
    case Form::KeyValue:
        text = asKeyValue(report);
        break;
    }
    (void)std::fputs(text.c_str(), stdout);
}

void Output::showEvent(const Report &report) const
{
    if (form_ == Form::Json)
        (void)std::fputs(asJson(report, command_, true).c_str(), stdout);
    else if (form_ == Form::KeyValue)
        (void)std::fputs((asKeyValue(report) + '\n').c_str(), stdout);
    else
        show(report);
    (void)std::fflush(stdout);
}

std::string Output::failureText(const Failure &failure) const
{
    constexpr int kIndent = 9;
    std::string text;
    const auto add = [&](const std::string &start, const std::string &sentence) {
        std::string indent = start;
        for (const std::string &line : wrapped(printable(sentence), errors_.columns - kIndent)) {
            text += indent + line + '\n';
            indent.assign(kIndent, ' ');
        }
    };
    add(errors_.paint(Tone::Bad, "krctl: ") + "  ", failure.what);
    if (failure.exitStatus == kInterrupted) return text; // whoever pressed Ctrl-C knows the rest
    if (!failure.where.empty()) add(errors_.paint(Tone::Dim, "  where") + "  ", failure.where);
    if (!failure.next.empty()) add(errors_.paint(Tone::Dim, "  next ") + "  ", failure.next);
    return text;
}

void Output::show(const Failure &failure) const
{
    show(failure.known);
    (void)std::fflush(stdout);
    std::string text;
    switch (form_) {
    case Form::Table:
        text = failureText(failure);
        break;
    case Form::Json:
        text = asJson(failure, command_, true);
        break;
    case Form::KeyValue:
        text = asKeyValue(failure);
        break;
    }
    (void)std::fputs(text.c_str(), stderr);
}

void Output::remark(const std::string &text) const
{
    if (form_ != Form::Table || !errors_.isTerminal) return;
    (void)std::fprintf(stderr, "\r\033[K%s\n", printable(text).c_str());
}

} // namespace krctl
