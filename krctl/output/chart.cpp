#include "krctl/output/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace krctl {
namespace {

constexpr size_t kMostValues = 500; // more than any terminal has columns
constexpr int kLabelWidth = 9;      // "-140 dBm" and a blank
constexpr int kEighths = 8;

/** One cell of a column whose value reaches a number of eighths into it. */
std::string cell(int eighths, bool hasBlocks)
{
    static constexpr std::array<const char *, kEighths + 1> kBlocks{" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    const int filled = std::clamp(eighths, 0, kEighths);
    if (hasBlocks) return kBlocks[static_cast<size_t>(filled)];
    return filled > kEighths / 2 ? "#" : " ";
}

} // namespace

Chart::Chart(double lowest, double highest, std::string unit)
    : lowest_(lowest), highest_(highest), unit_(std::move(unit))
{
}

void Chart::add(std::optional<double> value)
{
    values_.push_back(value);
    if (values_.size() > kMostValues) values_.pop_front();
}

std::string Chart::axisLabel(int line, int height) const
{
    const auto label = [this](double value) {
        return paddedLeft(std::to_string(static_cast<int>(value)) + ' ' + unit_, kLabelWidth - 1) + ' ';
    };
    if (line == 0) return label(highest_);
    if (line == height - 1) return label(lowest_);
    return padded("", kLabelWidth);
}

std::vector<std::string> Chart::drawn(int height, const Terminal &terminal) const
{
    const auto columns = static_cast<size_t>(std::max(terminal.columns - kLabelWidth - 2, 1));
    const size_t count = std::min(values_.size(), columns);
    const double range = highest_ - lowest_;

    std::vector<std::string> lines;
    for (int line = 0; line < height; ++line) {
        std::string text = axisLabel(line, height) + (terminal.hasBlocks ? "│" : "|");
        text.append(columns - count, ' ');
        const int below = (height - 1 - line) * kEighths; // eighths of the lines under this one
        for (size_t i = values_.size() - count; i < values_.size(); ++i) {
            const double part = values_[i] ? std::clamp((*values_[i] - lowest_) / range, 0.0, 1.0) : 0;
            // A known value always shows, be it at the lower end.
            const int eighths = values_[i] ? std::max(static_cast<int>(std::lround(part * height * kEighths)), 1) : 0;
            text += cell(eighths - below, terminal.hasBlocks);
        }
        lines.push_back(text);
    }
    return lines;
}

} // namespace krctl
