#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "krctl/commands/commands.h"
#include "krctl/commands/signal_reading.h"
#include "krctl/output/chart.h"
#include "krctl/output/output.h"
#include "krctl/output/render.h"
#include "krctl/output/time_text.h"
#include "krctl/session/interruption.h"
#include "krctl/values/signal_values.h"

namespace krctl {
namespace {

constexpr int kChartHeight = 8;
constexpr const char *kHideCursor = "\033[?25l";
constexpr const char *kShowCursor = "\033[?25h";
constexpr const char *kClearLine = "\033[K";
constexpr const char *kClearBelow = "\033[J";

/** The cursor is hidden as long as this lives. */
class HiddenCursor {
  public:
    explicit HiddenCursor(bool isTerminal) : isTerminal_(isTerminal)
    {
        if (isTerminal_) (void)std::fputs(kHideCursor, stdout);
    }
    ~HiddenCursor()
    {
        if (isTerminal_) (void)std::fputs(kShowCursor, stdout);
        (void)std::fflush(stdout);
    }
    HiddenCursor(const HiddenCursor &) = delete;
    HiddenCursor &operator=(const HiddenCursor &) = delete;

  private:
    bool isTerminal_;
};

Report reportOf(const SignalReading &signal)
{
    Report report;
    addSignal(report.addSection("", ""), signal);
    return report;
}

/** One of many readings: what was silent before is asked again, and a modem that is gone is not waited for. */
SignalReading readAnew(Session &session)
{
    session.startOver();
    const SignalReading signal = readSignal(session);
    session.throwIfGone();
    return signal;
}

/** Draws over what it drew before. */
class MovingPicture {
  public:
    void draw(const std::string &text)
    {
        std::string picture;
        if (lines_ > 0) picture = "\033[" + std::to_string(lines_) + "A\r";
        lines_ = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
        for (const char character : text) {
            if (character == '\n') picture += kClearLine;
            picture += character;
        }
        (void)std::fputs((picture + kClearBelow).c_str(), stdout);
        (void)std::fflush(stdout);
    }

  private:
    int lines_ = 0;
};

/** The measure that the chart shows: RSRP where there is one, otherwise RSSI. */
struct Drawn {
    const char *name;
    Measure measure;
};

Drawn drawnOf(const SignalReading &signal)
{
    return signal.rsrpDbm ? Drawn{"RSRP", Measure::Rsrp} : Drawn{"RSSI", Measure::Rssi};
}

std::optional<double> valueOf(const Drawn &drawn, const SignalReading &signal)
{
    const std::optional<int64_t> value = drawn.measure == Measure::Rsrp ? signal.rsrpDbm : signal.rssiDbm;
    return value ? std::optional(static_cast<double>(*value)) : std::nullopt;
}

std::string lineOf(const Report &report)
{
    std::string line = clockText();
    for (const Field &field : report.sections.front().fields) {
        const bool isUnknown = std::holds_alternative<std::monostate>(field.value);
        if (field.label.empty() || (field.onlyIfKnown && isUnknown)) continue;
        line += "  " + field.label + ' ' + textOf(field);
    }
    return line;
}

void watchAsPicture(Context &context, std::chrono::milliseconds interval)
{
    const Terminal &terminal = context.output.data();
    const HiddenCursor hidden(true);
    MovingPicture picture;
    SignalReading signal = readAnew(context.session);
    const Drawn drawn = drawnOf(signal);
    const Range range = rangeOf(drawn.measure);
    Chart chart(range.lowest, range.highest, "dBm");
    while (true) {
        chart.add(valueOf(drawn, signal));
        std::string text = asTable(reportOf(signal), terminal) + '\n' + drawn.name + " over time, every " +
                           std::to_string(interval.count()) + " ms; Ctrl-C ends\n";
        for (const std::string &line : chart.drawn(kChartHeight, terminal))
            text += line + '\n';
        picture.draw(text);
        pauseFor(interval);
        Session::throwIfInterrupted();
        signal = readAnew(context.session);
    }
}

void watchAsLines(Context &context, std::chrono::milliseconds interval, int32_t count)
{
    for (int32_t i = 0; count == 0 || i < count; ++i) {
        if (i > 0) pauseFor(interval);
        Session::throwIfInterrupted();
        Report report = reportOf(readAnew(context.session));
        if (context.output.form() == Form::Table) {
            (void)std::printf("%s\n", lineOf(report).c_str());
            (void)std::fflush(stdout);
            continue;
        }
        report.sections.front().add(textField("", "time", timeText()));
        context.output.showEvent(report);
    }
}

constexpr Parameter kWatch{
    .name = "--watch", .help = "again and again, as a moving chart on a terminal", .kind = Parameter::Kind::Flag};
constexpr Parameter kInterval{.name = "--interval",
                              .help = "milliseconds between two readings, 1000 unless given",
                              .kind = Parameter::Kind::Number,
                              .lowest = 50,
                              .highest = 3600000};
constexpr Parameter kCount{.name = "--count",
                           .help = "end after so many readings, as lines instead of a chart",
                           .kind = Parameter::Kind::Number,
                           .lowest = 1,
                           .highest = 1000000};

Report signal(Context &context)
{
    if (!context.arguments.has(kWatch.name)) {
        const SignalReading signal = readSignal(context.session);
        Report report = reportOf(signal);
        if (!context.session.isAnythingTold())
            throw context.session.failureFor("KR_getSignalStrength", "tell its signal");
        context.session.finish(report);
        return report;
    }
    const std::chrono::milliseconds interval(context.arguments.number(kInterval.name, 1000));
    const bool isPicture =
        context.output.form() == Form::Table && context.output.data().isTerminal && !context.arguments.has(kCount.name);
    if (isPicture)
        watchAsPicture(context, interval);
    else
        watchAsLines(context, interval, context.arguments.number(kCount.name));
    return {};
}

constexpr std::array kParameters{kWatch, kInterval, kCount};

constexpr std::array kCommands{
    Command{.path = "signal",
            .help = "RSSI, RSRP, RSRQ, SINR as bars; with --watch as a moving chart",
            .examples = "krctl signal\nkrctl signal --watch\nkrctl -J signal --watch --interval 5000",
            .parameters = kParameters,
            .run = signal},
};

} // namespace

std::span<const Command> signalCommands()
{
    return kCommands;
}

} // namespace krctl
