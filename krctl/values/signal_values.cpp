#include "krctl/values/signal_values.h"

#include <algorithm>
#include <array>

namespace krctl {
namespace {

/** Code 0 is everything below the range of code 1; from there each code is one step. */
template <typename Number>
std::optional<Number> decoded(int32_t code, int32_t highestCode, Number atZero, Number step)
{
    if (code < 0 || code > highestCode) return std::nullopt;
    return static_cast<Number>(atZero + step * static_cast<Number>(code));
}

/** From which value on a measure has a word; below the last it is "very weak". */
struct Scale {
    Measure measure;
    const char *key; // of the word
    Range range;
    double excellent;
    double good;
    double fair;
    double weak;
};

constexpr std::array kScales{
    Scale{Measure::Rssi, "rssi_quality", {-113, -51}, -65, -75, -85, -95},   // dBm
    Scale{Measure::Rsrp, "rsrp_quality", {-140, -44}, -80, -90, -100, -110}, // dBm
    Scale{Measure::Rsrq, "rsrq_quality", {-20, -3}, -10, -12, -15, -18},     // dB
    Scale{Measure::Sinr, "sinr_quality", {-20, 30}, 20, 13, 3, -3},          // dB
    Scale{Measure::Rscp, "rscp_quality", {-120, -25}, -70, -85, -95, -105},  // dBm
    Scale{Measure::Ecno, "ecno_quality", {-24, 0}, -6, -10, -14, -18},       // dB
};

const Scale &scaleOf(Measure measure)
{
    return *std::find_if(kScales.begin(), kScales.end(), [&](const Scale &scale) { return scale.measure == measure; });
}

} // namespace

std::optional<int64_t> rssiDbm(int32_t csq)
{
    return decoded<int64_t>(csq, 31, -113, 2);
}

std::optional<int64_t> rxlevDbm(int32_t code)
{
    return decoded<int64_t>(code, 63, -111, 1);
}

std::optional<int64_t> rscpDbm(int32_t code)
{
    return decoded<int64_t>(code, 96, -121, 1);
}

std::optional<double> ecnoDb(int32_t code)
{
    return decoded(code, 49, -24.5, 0.5);
}

std::optional<double> rsrqDb(int32_t code)
{
    return decoded(code, 34, -20.0, 0.5);
}

std::optional<int64_t> rsrpDbm(int32_t code)
{
    return decoded<int64_t>(code, 97, -141, 1);
}

Range rangeOf(Measure measure)
{
    return scaleOf(measure).range;
}

Quality qualityOf(Measure measure, std::optional<double> value)
{
    const Scale &scale = scaleOf(measure);
    if (!value) return {.key = scale.key};
    const double fraction = (*value - scale.range.lowest) / (scale.range.highest - scale.range.lowest);
    Quality quality{
        .key = scale.key, .word = "very weak", .tone = Tone::Bad, .fraction = std::clamp(fraction, 0.0, 1.0)};
    if (*value >= scale.excellent)
        quality.word = "excellent", quality.tone = Tone::Good;
    else if (*value >= scale.good)
        quality.word = "good", quality.tone = Tone::Good;
    else if (*value >= scale.fair)
        quality.word = "fair", quality.tone = Tone::Fair;
    else if (*value >= scale.weak)
        quality.word = "weak", quality.tone = Tone::Bad;
    return quality;
}

} // namespace krctl
