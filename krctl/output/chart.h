/** A measured value over time, the newest at the right. */
#ifndef KRCTL_OUTPUT_CHART_H
#define KRCTL_OUTPUT_CHART_H

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "krctl/output/terminal.h"

namespace krctl {

class Chart {
  public:
    /** @param lowest, highest  ends of the axis, in the unit of the values */
    Chart(double lowest, double highest, std::string unit);

    /** @param value  nothing leaves a gap */
    void add(std::optional<double> value);

    /** @param height  lines of the drawing
     *  @return the lines, none wider than the terminal, with the axis at the left */
    std::vector<std::string> drawn(int height, const Terminal &terminal) const;

  private:
    std::string axisLabel(int line, int height) const;

    double lowest_;
    double highest_;
    std::string unit_;
    std::deque<std::optional<double>> values_;
};

} // namespace krctl

#endif
